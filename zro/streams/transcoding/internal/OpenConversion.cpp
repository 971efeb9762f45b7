#include "zro/streams/transcoding/internal/OpenConversion.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

#include <unicode/locid.h>

#include "zro/platform/internal/NativeFile.h"
#include "zro/vocabulary/ZRNameTable.h"

namespace ZroCommon::internal {
namespace {

// Where the tables of the application lie.
class Tables {
public:
    void set(std::string path) {
        const std::lock_guard guard(m_lock);
        m_path = std::move(path);
    }

    std::string get() {
        const std::lock_guard guard(m_lock);
        return m_path;
    }

private:
    std::mutex m_lock;
    std::string m_path;
};

Tables& tables() {
    static Tables s_tables;
    return s_tables;
}

// The name of the library of conversions for a name in use; null for one that is passed on.
const char* libraryName(const char* encoding) {
    UnicodeString upper = UnicodeString::fromUTF8(encoding);
    upper.toUpper(icu::Locale::getRoot());
    switch (ZRNameTable::getBuiltinNameEnum(upper)) {
    case ZRN_BIG5:
    case ZRN_CHINESEBIG5: return "ChineseBIG5";
    case ZRN_CHINESEGBK:
    case ZRN_GB2312:
    case ZRN_GBK: return "ChineseGBK";
    case ZRN_EUC_JP: return "EUC-JP";
    case ZRN_ISO_2022_JP: return "ISO-2022-JP";
    case ZRN_ISO_IR_149:
    case ZRN_KOREAN:
    case ZRN_KOREANKSC:
    case ZRN_KS_C_5601_1987: return "KoreanKSC";
    case ZRN_SHIFT_JIS_hyphen:
    case ZRN_SHIFT_JIS:
    case ZRN_WINDOWS31J:
    case ZRN_WINDOWS_31J: return "WINDOWS31J";
    default: return nullptr;
    }
}

}  // namespace

void setConversionTables(const UnicodeString& path) {
    tables().set(path.isEmpty() ? std::string() : nativeFileName(path).value_or(std::string()));
}

std::unique_ptr<CodeConverter> openReadingConversion(const char* encoding) {
    if (encoding == nullptr) {
        return nullptr;
    }
    const char* name = libraryName(encoding);
    return CodeConverter::openReader(name != nullptr ? name : encoding, tables().get());
}

// On purpose: what reading takes for a larger set is written as the name says.
std::unique_ptr<CodeConverter> openWritingConversion(const char* encoding,
                                                     const WriterOptions& options) {
    return CodeConverter::openWriter(encoding, tables().get(), options);
}

}  // namespace ZroCommon::internal
