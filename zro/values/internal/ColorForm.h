#pragma once

#include <optional>

#include "zro/values/ZRColor.h"
#include "zro/values/internal/ValueReader.h"

namespace ZroCommon::internal {

/// Reads the arguments of `icc-color(` up to its ")": "#CMYK, 1, 0, 0, 0", "#GRAYSCALE, 0.5",
/// "#SEPARATION, 'Gold', 0.5" and an optional CMYK, "#REGISTRATION, 0.5", or the name of a profile
/// and its components. Commas are optional.
/// \param rgb  the colour that they stand beside; without, it is computed from the components
/// \return  nothing when they do not fit
std::optional<ZRColor> readColorForm(ValueReader& reader, const std::optional<ZRColor>& rgb);

}  // namespace ZroCommon::internal
