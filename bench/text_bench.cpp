// Base64 through streams, both ways, against a plain loop over bytes in memory; numbers read from
// UTF-16, against what reads the same digits from bytes; and numbers as labels, against what prints
// the same numbers in decimal.

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <istream>
#include <ostream>
#include <random>
#include <streambuf>
#include <string>
#include <utility>

#include "zro/text/ZRLang.h"
#include "zro/text/ZRUtil.h"
#include "zro/vocabulary/ZRName.h"

#include "bench/support/Jobs.h"
#include "bench/support/Timing.h"

#ifdef ZRO_BENCH_FAST_FLOAT
#include <fast_float/fast_float.h>
#endif

namespace ZroCommon::bench {
namespace {

constexpr std::size_t kBytes = std::size_t{3} << 16U;
constexpr int kPasses = 40;  // over the bytes, for one sample
constexpr std::size_t kNumbers = 1000;
constexpr int kNumberPasses = 200;

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::mt19937 fixedRandom() {
    return std::mt19937(7);  // NOLINT(cert-msc51-cpp): the same data in each run
}

/// A stream's buffer over memory, which neither copies nor grows.
class FixedBuffer : public std::streambuf {
public:
    explicit FixedBuffer(std::string& bytes) {
        setg(bytes.data(), bytes.data(), bytes.data() + bytes.size());
        setp(bytes.data(), bytes.data() + bytes.size());
    }
};

// The loop that everybody writes, given room for its result.
void encodePlainly(const std::string& bytes, std::string& base64) {
    char* out = base64.data();
    for (std::size_t at = 0; at + 3 <= bytes.size(); at += 3) {
        const auto byte = [&bytes, at](std::size_t offset) {
            return std::uint32_t{static_cast<unsigned char>(bytes[at + offset])};
        };
        const std::uint32_t group = byte(0) << 16U | byte(1) << 8U | byte(2);
        for (const unsigned shift : {18U, 12U, 6U, 0U}) {
            *out++ = kAlphabet[group >> shift & 63U];
        }
    }
}

void decodePlainly(const std::string& base64, std::string& bytes) {
    static const std::string s_digits = [] {
        std::string digits(256, '\xFF');
        for (std::size_t digit = 0; digit < kAlphabet.size(); ++digit) {
            digits[static_cast<unsigned char>(kAlphabet[digit])] = static_cast<char>(digit);
        }
        return digits;
    }();
    char* out = bytes.data();
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char c : base64) {
        const char digit = s_digits[static_cast<unsigned char>(c)];
        if (digit < 0) {
            continue;
        }
        bits = bits << 6U | static_cast<std::uint32_t>(digit);
        count += 6;
        if (count >= 8) {
            count -= 8;
            *out++ = static_cast<char>(bits >> count);
        }
    }
}

template <class Action>
Job job(const char* what, const char* contender, double count, int passes, Action action) {
    return {what, contender, [count, passes, action]() mutable {
                const double all = timed(cpuNow, [&action, passes] {
                    for (int pass = 0; pass < passes; ++pass) {
                        action();
                    }
                });
                return all / passes / count;
            }};
}

void addBase64(std::vector<Job>& jobs) {
    std::string bytes(kBytes, '\0');
    std::mt19937 random = fixedRandom();
    for (char& byte : bytes) {
        byte = static_cast<char>(random());
    }
    std::string base64(kBytes / 3 * 4, '\0');
    encodePlainly(bytes, base64);
    const UnicodeString text = UnicodeString::fromUTF8(base64);
    const auto add = [&jobs](const char* what, const char* contender, auto action) {
        jobs.push_back(job(what, contender, 1, kPasses, action));
    };
    add("base64 encoded", "zro", [bytes]() mutable {
        FixedBuffer buffer(bytes);
        std::istream in(&buffer);
        keep(ZRUtil::encodeBase64(in, static_cast<int>(bytes.size())));
    });
    add("base64 encoded", "plain loop", [bytes, base64]() mutable {
        encodePlainly(bytes, base64);
        keep(base64);
    });
    add("base64 decoded", "zro", [text, bytes]() mutable {
        FixedBuffer buffer(bytes);
        std::ostream out(&buffer);
        ZRUtil::decodeBase64(text.getBuffer(), text.length(), out);
        keep(bytes);
    });
    add("base64 decoded", "plain loop", [base64, bytes]() mutable {
        decodePlainly(base64, bytes);
        keep(bytes);
    });
}

// Numbers as they stand in documents, or with as many digits as a double has.
std::vector<std::string> numbers(bool isLong) {
    std::mt19937 random = fixedRandom();
    std::vector<std::string> texts;
    while (texts.size() < kNumbers) {
        std::string text = std::to_string(random() % (isLong ? 10 : 1000));
        const auto fraction = isLong ? 16 : random() % 4;
        if (fraction > 0) {
            text += '.';
        }
        for (auto digit = fraction; digit > 0; --digit) {
            text += static_cast<char>('0' + random() % 10);
        }
        texts.push_back(text);
    }
    return texts;
}

template <class Text, class Read>
Job reading(const char* what, const char* contender, const std::vector<Text>& texts, Read read) {
    return job(what, contender, kNumbers, kNumberPasses, [texts, read] {
        for (const Text& text : texts) {
            keep(read(text));
        }
    });
}

void addNumbers(std::vector<Job>& jobs, const char* what, bool isLong) {
    const std::vector<std::string> texts = numbers(isLong);
    std::vector<std::u16string> wide;
    wide.reserve(texts.size());
    for (const std::string& text : texts) {
        wide.emplace_back(text.begin(), text.end());
    }
    jobs.push_back(reading(what, "zro", wide, [](const std::u16string& text) {
        const char16_t* end = nullptr;
        return ZRUtil::parseNumber(text.c_str(), &end);
    }));
    jobs.push_back(reading(what, "from_chars", texts, [](const std::string& text) {
        double number = 0;
        std::from_chars(text.data(), text.data() + text.size(), number);
        return number;
    }));
    jobs.push_back(reading(what, "strtod", texts, [](const std::string& text) {
        return std::strtod(text.c_str(), nullptr);
    }));
#ifdef ZRO_BENCH_FAST_FLOAT
    jobs.push_back(reading(what, "fast_float", texts, [](const std::string& text) {
        double number = 0;
        fast_float::from_chars(text.data(), text.data() + text.size(), number);
        return number;
    }));
#endif
}

struct LabelFormat {
    const char* what;
    const char16_t* format;
    const char* language;
    const char16_t* separator;
};

// Labels of 1 to 3000, as the pages and items of a book have them.
template <class Show>
Job showing(const std::string& what, const char* contender, Show show) {
    constexpr int kLabels = 3000;
    return job(what.c_str(), contender, kLabels, kNumberPasses / 4, [show] {
        for (int number = 1; number <= kLabels; ++number) {
            keep(show(number));
        }
    });
}

void addLabels(std::vector<Job>& jobs) {
    constexpr std::array kFormats = {LabelFormat{"label 1", u"1", "", u""},
                                     LabelFormat{"label 1 in groups", u"1", "", u","},
                                     LabelFormat{"label 001.", u"001.", "", u""},
                                     LabelFormat{"label i", u"i", "", u""},
                                     LabelFormat{"label (a)", u"(a)", "", u""},
                                     LabelFormat{"label a of sv", u"a", "sv", u""},
                                     LabelFormat{"label 甲子", u"甲子", "", u""}};
    for (const LabelFormat& row : kFormats) {
        const UnicodeString format(row.format);
        const UnicodeString separator(row.separator);
        const ZRLang language(row.language);
        jobs.push_back(showing(row.what, "zro", [format, separator, language](int number) {
            return ZRUtil::formatNumber(number, format, separator, 3, language, ZRN_EMPTY).length();
        }));
        jobs.push_back(showing(row.what, "snprintf", [](int number) {
            std::array<char, 16> buffer{};
            std::snprintf(buffer.data(), buffer.size(), "%d", number);
            return buffer[0];
        }));
    }
}

void run(const Options& options) {
    std::vector<Job> jobs;
    addLabels(jobs);
    addBase64(jobs);
    addNumbers(jobs, "number of a document", false);
    addNumbers(jobs, "number of 17 digits", true);
    runJobs(options, "text", std::move(jobs));
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
