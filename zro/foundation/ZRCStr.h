#pragma once

#include <string>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

/// A text that also hands out a narrow form in the default code page (UTF-8 on this platform), for
/// C library and operating-system calls. One thread at a time: the narrow form is made on demand.
class ZRO_API ZRCStr : public UnicodeString {
public:
    ZRCStr() = default;
    ZRCStr(const UnicodeString& text) : UnicodeString(text) {}
    ZRCStr(const ZRCStr&) = default;
    ~ZRCStr() override;
    ZRCStr& operator=(const ZRCStr&) = default;
    ZRCStr& operator=(const UnicodeString& text) {
        UnicodeString::operator=(text);
        return *this;
    }

    /// The narrow form, ended by a NUL. It lives until the next call or until this object dies.
    const char* c_str() const;  // NOLINT(readability-identifier-naming)
    operator const char*() const { return c_str(); }

protected:
    /// Makes the narrow form; the base class uses the default code page.
    virtual std::string toNarrow() const;

private:
    mutable std::string m_narrow;
};

/// The same with UTF-8 as the narrow form, whatever the code page.
class ZRO_API ZRUtfStr : public ZRCStr {
public:
    ZRUtfStr() = default;
    ZRUtfStr(const UnicodeString& text) : ZRCStr(text) {}
    ZRUtfStr(const ZRUtfStr&) = default;
    ~ZRUtfStr() override;
    ZRUtfStr& operator=(const ZRUtfStr&) = default;
    ZRUtfStr& operator=(const UnicodeString& text) {
        ZRCStr::operator=(text);
        return *this;
    }

protected:
    std::string toNarrow() const override;
};

}  // namespace ZroCommon
