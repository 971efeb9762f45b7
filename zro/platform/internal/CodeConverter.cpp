#include "zro/platform/internal/CodeConverter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/utf16.h>

namespace ZroCommon::internal {
namespace {

struct Closer {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, Closer>;

constexpr std::size_t kUnitBytes = 2;

constexpr std::string_view kMarks = "-_.:+,=() ";  // none of which begins a name

// Names come from documents, and ICU makes file names of them.
bool isName(std::string_view name) {
    const auto isPlain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    };
    return !name.empty() && isPlain(name.front())
           && std::all_of(name.begin(), name.end(), [isPlain](char c) {
                  return isPlain(c) || kMarks.find(c) != std::string_view::npos;
              });
}

Converter open(const char* name) {
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(name, &status));
    return U_SUCCESS(status) != 0 ? std::move(converter) : nullptr;
}

struct Alias {
    std::string_view name;
    const char* converter;
};

// Names that are usual for these sets and that ICU does not know.
constexpr auto kAliases = std::to_array({
    Alias{"ChineseBIG5", "windows-950"},
    Alias{"ChineseGBK", "windows-936"},
    Alias{"KoreanKSC", "windows-949"},
    Alias{"WINDOWS31J", "windows-31j"},
});

const char* converterOf(const char* encoding) {
    const auto* const alias =
        std::find_if(kAliases.begin(), kAliases.end(),
                     [encoding](const Alias& row) { return row.name == encoding; });
    return alias == kAliases.end() ? encoding : alias->converter;
}

Converter openTable(const std::string& tables, const char* name) {
    const std::size_t last = tables.find_last_not_of('/');
    if (last == std::string::npos) {
        return nullptr;
    }
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_openPackage(tables.substr(0, last + 1).c_str(), name, &status));
    return U_SUCCESS(status) != 0 ? std::move(converter) : nullptr;
}

Converter openNamed(const char* encoding, const std::string& tables) {
    if (encoding == nullptr || !isName(encoding)) {
        return nullptr;
    }
    Converter converter = openTable(tables, encoding);
    return converter != nullptr ? std::move(converter) : open(converterOf(encoding));
}

Converter cloneOf(const UConverter* converter, UErrorCode& status) {
#if U_ICU_VERSION_MAJOR_NUM >= 71
    return Converter(ucnv_clone(converter, &status));
#else
    return Converter(ucnv_safeClone(converter, nullptr, nullptr, &status));
#endif
}

bool isCalled(const UConverter* converter, std::string_view name) {
    UErrorCode status = U_ZERO_ERROR;
    const char* own = ucnv_getName(converter, &status);
    return own != nullptr && name == own;
}

// Or back.
void turnToLittleEndian(UChar* units, std::size_t count) {
    if constexpr (std::endian::native == std::endian::big) {
        std::transform(units, units + count, units,
                       [](UChar unit) { return static_cast<UChar>(unit << 8 | unit >> 8); });
    }
}

bool hasGoneOn(UErrorCode status) {
    return U_SUCCESS(status) != 0 || status == U_BUFFER_OVERFLOW_ERROR;
}

// ICU's own callback writes U+001A for some bytes, which no document may hold.
void writeReplacementCharacter(const void* /*context*/, UConverterToUnicodeArgs* args,
                               const char* /*bytes*/, int32_t /*length*/,
                               UConverterCallbackReason reason, UErrorCode* status) {
    if (reason <= UCNV_IRREGULAR) {
        *status = U_ZERO_ERROR;
        const UChar replacement = 0xFFFD;
        ucnv_cbToUWriteUChars(args, &replacement, 1, 0, status);
    }
}

// ICU's own callback leaves out what it thinks nobody would miss.
void writeSubstitute(const void* /*context*/, UConverterFromUnicodeArgs* args,
                     const UChar* /*units*/, int32_t /*length*/, UChar32 /*character*/,
                     UConverterCallbackReason reason, UErrorCode* status) {
    if (reason <= UCNV_IRREGULAR) {
        *status = U_ZERO_ERROR;
        ucnv_cbFromUWriteSub(args, 0, status);
    }
}

class Reader final : public CodeConverter {
public:
    /// \param findsMark  a byte order mark at the start decides about the order of UTF-16
    Reader(Converter converter, bool findsMark);

    bool convert(ConversionBlock& block, bool atEnd) override;

private:
    void use(Converter converter);
    void readMark(ConversionBlock& block);

    Converter m_converter;
    bool m_findsMark;
};

Reader::Reader(Converter converter, bool findsMark) : m_findsMark(findsMark) {
    use(std::move(converter));
}

void Reader::use(Converter converter) {
    m_converter = std::move(converter);
    if (m_converter == nullptr) {
        return;
    }
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setToUCallBack(m_converter.get(), writeReplacementCharacter, nullptr, nullptr, nullptr,
                        &status);
}

void Reader::readMark(ConversionBlock& block) {
    const std::string_view start(block.in + block.inPos, block.inLength - block.inPos);
    const bool isReverse = start.starts_with("\xFE\xFF");
    if (isReverse) {
        use(open("UTF-16BE"));
    }
    block.inPos += isReverse || start.starts_with("\xFF\xFE") ? kUnitBytes : 0;
    m_findsMark = false;
}

bool Reader::convert(ConversionBlock& block, bool atEnd) {
    if (m_findsMark) {
        if (block.inLength - block.inPos < kUnitBytes && !atEnd) {
            return true;
        }
        readMark(block);
    }
    if (m_converter == nullptr) {
        return false;
    }
    const char* from = block.in + block.inPos;
    auto* const units = static_cast<UChar*>(static_cast<void*>(block.out + block.outLength));
    UChar* to = units;
    UErrorCode status = U_ZERO_ERROR;
    ucnv_toUnicode(m_converter.get(), &to, to + (block.outCapacity - block.outLength) / kUnitBytes,
                   &from, block.in + block.inLength, nullptr, static_cast<UBool>(atEnd), &status);
    block.inPos = static_cast<std::size_t>(from - block.in);
    const auto made = static_cast<std::size_t>(to - units);
    turnToLittleEndian(units, made);
    block.outLength += made * kUnitBytes;
    return hasGoneOn(status);
}

class Writer final : public CodeConverter {
public:
    Writer(Converter converter, const WriterOptions& options);

    bool convert(ConversionBlock& block, bool atEnd) override;

private:
    bool endsInHalfAPair() const;
    void loadUnits(const ConversionBlock& block);
    bool canEncode(UChar unit);
    std::size_t sureUnits(std::size_t room) const;
    bool convertSure(ConversionBlock& block);
    bool convertOne(ConversionBlock& block);
    bool convertInto(UConverter* converter, ConversionBlock& block, std::size_t count, bool flush);

    Converter m_converter;
    std::size_t m_maxBytes;
    UChar m_substitute = 0;
    std::array<UChar, 2048> m_units{};
    std::size_t m_count = 0;  // units that were loaded
    std::size_t m_at = 0;
};

Writer::Writer(Converter converter, const WriterOptions& options)
    : m_converter(std::move(converter)),
      m_maxBytes(static_cast<std::size_t>(ucnv_getMaxCharSize(m_converter.get()))) {
    const auto* const best =
        std::find_if(std::begin(options.replacements), std::end(options.replacements) - 1,
                     [this](UChar unit) { return canEncode(unit); });
    UErrorCode status = U_ZERO_ERROR;
    m_substitute = *best;
    ucnv_setSubstString(m_converter.get(), best, 1, &status);
    status = U_ZERO_ERROR;  // without a substitute ICU's own one stays
    ucnv_setFromUCallBack(m_converter.get(), writeSubstitute, nullptr, nullptr, nullptr, &status);
}

bool Writer::canEncode(UChar unit) {
    std::array<char, 32> bytes{};
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setFromUCallBack(m_converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                          &status);
    ucnv_fromUChars(m_converter.get(), bytes.data(), static_cast<int32_t>(bytes.size()), &unit, 1,
                    &status);
    ucnv_reset(m_converter.get());
    return U_SUCCESS(status) != 0;
}

bool Writer::endsInHalfAPair() const {
    if (m_count == 0 || !U16_IS_SURROGATE(m_units[m_count - 1])) {
        return false;
    }
    return m_count == 1 || !U16_IS_LEAD(m_units[m_count - 2])
           || !U16_IS_TRAIL(m_units[m_count - 1]);
}

void Writer::loadUnits(const ConversionBlock& block) {
    m_at = 0;
    m_count = std::min((block.inLength - block.inPos) / kUnitBytes, m_units.size());
    std::memcpy(m_units.data(), block.in + block.inPos, m_count * kUnitBytes);
    turnToLittleEndian(m_units.data(), m_count);
    // ICU would wait for what follows half a pair, and give nothing for now.
    const bool isAll = block.inLength - block.inPos < (m_count + 1) * kUnitBytes;
    if (isAll && endsInHalfAPair()) {
        m_units[m_count - 1] = m_substitute;
    }
}

// ICU asks for ten units more, for escapes.
std::size_t Writer::sureUnits(std::size_t room) const {
    const std::size_t units = room / m_maxBytes;
    return units > 10 ? units - 10 : 0;
}

bool Writer::convertInto(UConverter* converter, ConversionBlock& block, std::size_t count,
                         bool flush) {
    const UChar* from = m_units.data() + m_at;
    char* to = block.out + block.outLength;
    UErrorCode status = U_ZERO_ERROR;
    ucnv_fromUnicode(converter, &to, block.out + block.outCapacity, &from, from + count, nullptr,
                     static_cast<UBool>(flush), &status);
    const auto taken = static_cast<std::size_t>(from - m_units.data()) - m_at;
    m_at += taken;
    block.inPos += taken * kUnitBytes;
    block.outLength = static_cast<std::size_t>(to - block.out);
    return hasGoneOn(status);
}

// As much as fits whatever the characters are.
bool Writer::convertSure(ConversionBlock& block) {
    while (m_at < m_count) {
        std::size_t count =
            std::min(m_count - m_at, sureUnits(block.outCapacity - block.outLength));
        const bool divides = count != 0 && m_at + count < m_count
                             && U16_IS_LEAD(m_units[m_at + count - 1])
                             && U16_IS_TRAIL(m_units[m_at + count]);
        count -= divides ? 1 : 0;
        if (count == 0) {
            return true;
        }
        if (!convertInto(m_converter.get(), block, count, false)) {
            return false;
        }
    }
    return true;
}

// The next character, if there is room for it: ICU would divide it.
bool Writer::convertOne(ConversionBlock& block) {
    const bool isPair =
        m_at + 1 < m_count && U16_IS_LEAD(m_units[m_at]) && U16_IS_TRAIL(m_units[m_at + 1]);
    UErrorCode status = U_ZERO_ERROR;
    Converter trial = cloneOf(m_converter.get(), status);
    if (U_FAILURE(status) != 0) {
        return false;
    }
    std::array<char, 64> bytes{};
    ConversionBlock one{.out = bytes.data(), .outCapacity = bytes.size()};
    const std::size_t before = m_at;
    const bool isSound = convertInto(trial.get(), one, isPair ? 2 : 1, false);
    if (!isSound || one.outLength > block.outCapacity - block.outLength) {
        m_at = before;
        return false;
    }
    m_converter = std::move(trial);
    std::copy_n(bytes.data(), one.outLength, block.out + block.outLength);
    block.outLength += one.outLength;
    block.inPos += one.inPos;
    return true;
}

bool Writer::convert(ConversionBlock& block, bool atEnd) {
    const std::size_t before = block.outLength;
    loadUnits(block);
    if (!convertSure(block)) {
        return false;
    }
    if (block.outLength == before) {
        while (m_at < m_count && convertOne(block)) {
        }
    }
    return !atEnd || m_at < m_count || convertInto(m_converter.get(), block, 0, true);
}

}  // namespace

std::unique_ptr<CodeConverter> CodeConverter::openReader(const char* encoding,
                                                         const std::string& tables) {
    Converter converter = openNamed(encoding, tables);
    if (converter == nullptr) {
        return nullptr;
    }
    const bool findsMark = isCalled(converter.get(), "UTF-16");
    return std::make_unique<Reader>(findsMark ? open("UTF-16LE") : std::move(converter), findsMark);
}

std::unique_ptr<CodeConverter> CodeConverter::openWriter(const char* encoding,
                                                         const std::string& tables,
                                                         const WriterOptions& options) {
    Converter converter = openNamed(encoding, tables);
    if (converter != nullptr && isCalled(converter.get(), "UTF-16")) {
        converter = open("UTF-16LE");
    } else if (converter != nullptr && isCalled(converter.get(), "UTF-32")) {
        converter = open("UTF-32BE");
    }
    // With a substitute of its own, ICU releases tables of this one twice.
    if (converter == nullptr || isCalled(converter.get(), "x11-compound-text")) {
        return nullptr;
    }
    return std::make_unique<Writer>(std::move(converter), options);
}

}  // namespace ZroCommon::internal
