#pragma once

#include <cstdint>

#include "zro/foundation/Export.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

/// A name of the SVG vocabulary: 0 is the empty name, 1 to 134 are the names below. The numbering
/// is its own, beside that of `ZRName`.
enum SVGNameEnum : std::int32_t {
    SVGN_EMPTY = 0,
#define ZR_NAME(enumerator, text) SVGN_##enumerator,
#include "zro/vocabulary/SVGNames.inc"
    SVGN_LAST = 134,
};

/// A name of the SVG vocabulary as a number, for renderers to switch on.
///
/// A small value: copy it freely. Names that are none of SVG give the empty name. A number is not
/// checked: one that stands for nothing has the empty text. Any thread may make and read names.
class ZRO_API SVGName {
public:
    SVGName() = default;
    SVGName(SVGNameEnum number) : m_number(number) {}
    /// By the text of a name, case and all.
    SVGName(ZRName name);
    SVGName(ZRNameEnum name) : SVGName(ZRName(name)) {}
    /// By the text of a name or string; any other value gives the empty name.
    SVGName(const ZRValue& value);

    bool isEmpty() const { return m_number == SVGN_EMPTY; }
    operator SVGNameEnum() const { return m_number; }

    /// The name of the same text in the common numbering.
    operator ZRName() const { return toZRName(m_number); }
    static ZRName toZRName(SVGNameEnum number);

    friend bool operator==(SVGName left, SVGName right) { return left.m_number == right.m_number; }
    friend bool operator==(SVGName left, SVGNameEnum right) { return left.m_number == right; }

    /// Forgets the names: no text is one of them any more. Part of the library's `cleanup`.
    static void cleanup();

private:
    SVGNameEnum m_number = SVGN_EMPTY;
};

}  // namespace ZroCommon
