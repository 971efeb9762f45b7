// Legacy encodings to UTF-16 and back: the library's streams against ICU's converters, which they
// rest on, fed block by block.

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include <unicode/unistr.h>

#include "tests/support/IcuConverter.h"
#include "zro/streams/transcoding/ZRTCVOStream.h"
#include "zro/streams/transcoding/ZRTCVStream.h"

#include "bench/support/Corpus.h"
#include "bench/support/MemoryBuffers.h"
#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

constexpr std::size_t kBlock = 65536;  // of what a user reads or writes, and of what ICU gets
constexpr int32_t kUnits = 2'000'000;

struct Encoding {
    const char* name;
    const char* converter;  // the one behind the name
};

constexpr std::array kEncodings = {
    Encoding{"Shift_JIS", "windows-31j"},     Encoding{"EUC-JP", "EUC-JP"},
    Encoding{"ISO-2022-JP", "ISO-2022-JP"},   Encoding{"GB18030", "GB18030"},
    Encoding{"windows-1251", "windows-1251"}, Encoding{"UTF-8", "UTF-8"},
};

std::size_t readByZro(const Encoding& encoding, const std::string& bytes) {
    ViewStream source(bytes);
    ZRTCVStream stream(&source, encoding.name);
    std::vector<char> block(kBlock);
    std::size_t total = 0;
    while (stream.read(block.data(), static_cast<std::streamsize>(block.size()))
           || stream.gcount() > 0) {
        total += static_cast<std::size_t>(stream.gcount());
        keep(block.data());
    }
    return total;
}

std::size_t readByIcu(const Encoding& encoding, const std::string& bytes) {
    const auto converter = testing::icuConverter(encoding.converter);
    std::vector<UChar> block(kBlock);
    const char* from = bytes.data();
    const char* const end = from + bytes.size();
    std::size_t total = 0;
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (from != end || status == U_BUFFER_OVERFLOW_ERROR) {
        const char* const limit = from + std::min<std::ptrdiff_t>(end - from, kBlock);
        UChar* to = block.data();
        status = U_ZERO_ERROR;
        ucnv_toUnicode(converter.getAlias(), &to, to + block.size(), &from, limit, nullptr,
                       static_cast<UBool>(limit == end), &status);
        total += static_cast<std::size_t>(to - block.data()) * 2;
        keep(block.data());
    }
    return total;
}

std::size_t writeByZro(const Encoding& encoding, const UnicodeString& text) {
    std::string bytes;
    AppendBuffer buffer(bytes);
    std::ostream target(&buffer);
    {
        ZRTCVOStream stream(&target, encoding.name, false, ZRTCVOStream::LF_CONVERT(0), false);
        stream.writeString(text);
    }
    return bytes.size();
}

std::size_t writeByIcu(const Encoding& encoding, const UnicodeString& text) {
    const auto converter = testing::icuConverter(encoding.converter);
    std::string bytes;
    std::vector<char> block(kBlock);
    const UChar* from = text.getBuffer();
    const UChar* const end = from + text.length();
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (from != end || status == U_BUFFER_OVERFLOW_ERROR) {
        char* to = block.data();
        status = U_ZERO_ERROR;
        ucnv_fromUnicode(converter.getAlias(), &to, to + block.size(), &from, end, nullptr, 1,
                         &status);
        bytes.append(block.data(), static_cast<std::size_t>(to - block.data()));
    }
    return bytes.size();
}

// The text that an encoding holds, so that neither side writes replacements.
UnicodeString held(const Encoding& encoding, const UnicodeString& text) {
    const auto converter = testing::icuConverter(encoding.converter);
    std::string bytes(static_cast<std::size_t>(text.length()) * 8, '\0');
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setSubstString(converter.getAlias(), u"?", 1, &status);
    const int32_t length =
        ucnv_fromUChars(converter.getAlias(), bytes.data(), static_cast<int32_t>(bytes.size()),
                        text.getBuffer(), text.length(), &status);
    return {bytes.data(), length, converter.getAlias(), status};
}

template <class Zro, class Icu, class Input>
void compare(const Options& options, const char* job, const Encoding& encoding, double size,
             const Input& input, Zro byZro, Icu byIcu) {
    if (byZro(encoding, input) != byIcu(encoding, input)) {
        throw std::runtime_error(std::string(job) + ": the contenders differ in " + encoding.name);
    }
    const std::vector<Spread> times =
        interleave({[&] { return timed(cpuNow, [&] { keep(byZro(encoding, input)); }); },
                    [&] {
                        return timed(cpuNow, [&] { keep(byIcu(encoding, input)); });
                    }},
                   options.rounds);
    Record(job, encoding.name, "zro").set("bytes", size).setSpread(times[0]);
    Record(job, encoding.name, "icu").set("bytes", size).setSpread(times[1]);
}

void run(const Options& options) {
    if (!hasCorpus(options, "japanese")) {
        return;
    }
    const Corpus corpus = loadCorpus(options, "japanese");
    const UnicodeString whole = UnicodeString::fromUTF8(corpus.bytes);
    for (const Encoding& encoding : kEncodings) {
        const UnicodeString text = held(encoding, whole.tempSubString(0, kUnits));
        const auto converter = testing::icuConverter(encoding.converter);
        std::string bytes(static_cast<std::size_t>(text.length()) * 8, '\0');
        UErrorCode status = U_ZERO_ERROR;
        bytes.resize(static_cast<std::size_t>(text.extract(
            bytes.data(), static_cast<int32_t>(bytes.size()), converter.getAlias(), status)));
        const auto size = static_cast<double>(bytes.size());
        compare(options, "decode", encoding, size, bytes, readByZro, readByIcu);
        compare(options, "encode", encoding, size, text, writeByZro, writeByIcu);
    }
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
