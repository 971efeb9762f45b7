#pragma once

#include <zro/ZroCommon.h>

/// What a client's static constructor saw of the library before `main`.
struct Early {
    Early();

    bool emptyIsEmpty;
    bool bogusIsBogus;
    icu::UnicodeString builtinName;
    ZroCommon::ZRNameEnum builtinNumber;
    ZroCommon::ZRNameEnum ownNumber;
};

const Early& early();
