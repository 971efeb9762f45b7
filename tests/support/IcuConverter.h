#pragma once

#include <stdexcept>
#include <string>

#include <unicode/ucnv.h>

namespace ZroCommon::testing {

/// ICU's own converter of that name, to hold the library's streams against.
inline icu::LocalUConverterPointer icuConverter(const char* name) {
    UErrorCode status = U_ZERO_ERROR;
    icu::LocalUConverterPointer converter(ucnv_open(name, &status));
    if (U_FAILURE(status) != 0) {
        throw std::runtime_error(std::string("ICU has no ") + name);
    }
    return converter;
}

}  // namespace ZroCommon::testing
