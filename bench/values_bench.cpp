// Property values: texts to typed values, colours, printing and copying; against what reads the
// same number from bytes, and Qt's colours.

#include <charconv>
#include <cstdlib>
#include <string>

#include "zro/values/ZRColor.h"
#include "zro/values/ZRValue.h"

#include "bench/support/Jobs.h"
#include "bench/support/Timing.h"

#ifdef ZRO_BENCH_QT
#include <QColor>
#include <QString>
#endif
#ifdef ZRO_BENCH_FAST_FLOAT
#include <fast_float/fast_float.h>
#endif

namespace ZroCommon::bench {
namespace {

constexpr int kCalls = 200'000;  // for one sample

/// A job that calls `action` many times.
template <class Action>
Job job(const char* what, const char* contender, Action action) {
    return {what, contender, [action] {
                const double all = timed(cpuNow, [&action] {
                    for (int call = 0; call < kCalls; ++call) {
                        action();
                    }
                });
                return all / kCalls;
            }};
}

Job parsing(const char* what, const char16_t* text) {
    return job(what, "zro", [source = UnicodeString(text)] {
        keep(source);
        keep(ZRValue::parse(source));
    });
}

Job colorParsing(const char* what, const char16_t* text) {
    return job(what, "zro", [source = UnicodeString(text)] {
        keep(source);
        keep(ZRValue::parseColor(source, false));
    });
}

Job printing(const char* what, const ZRValue& value) {
    return job(what, "zro", [value] {
        keep(value);
        keep(value.toString());
    });
}

Job copying(const char* what, const ZRValue& value) {
    return job(what, "zro", [value] {
        keep(value);
        const ZRValue copy(value);
        keep(copy);
    });
}

/// What the others do with the digits of a length, all that they can do with it.
void addNumberReaders(std::vector<Job>& jobs, const char* what, const std::string& digits) {
    jobs.push_back(job(what, "from_chars", [digits] {
        keep(digits);
        double number = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
        keep(number);
    }));
    jobs.push_back(job(what, "strtod", [digits] {
        keep(digits);
        keep(std::strtod(digits.c_str(), nullptr));
    }));
#ifdef ZRO_BENCH_FAST_FLOAT
    jobs.push_back(job(what, "fast_float", [digits] {
        keep(digits);
        double number = 0;
        fast_float::from_chars(digits.data(), digits.data() + digits.size(), number);
        keep(number);
    }));
#endif
}

void addQtColors([[maybe_unused]] std::vector<Job>& jobs) {
#ifdef ZRO_BENCH_QT
    for (const char* text : {"#ff0000", "cornflowerblue"}) {
        jobs.push_back(job(text, "qt", [source = QString::fromLatin1(text)] {
            keep(source);
            keep(QColor(source));
        }));
    }
#endif
}

std::vector<Job> allJobs() {
    std::vector<Job> jobs = {
        parsing("12pt", u"12pt"),
        parsing("0.1234567em", u"0.1234567em"),
        parsing("auto", u"auto"),
        parsing("#ff0000", u"#ff0000"),
        parsing("Times New Roman, serif", u"Times New Roman, serif"),
        colorParsing("rgb(1,2,3)", u"rgb(1,2,3)"),
        job("cornflowerblue", "zro",
            [source = UnicodeString(u"cornflowerblue")] {
                keep(source);
                keep(ZRColor(ZRValue::parseColor(source, false).getNameValue()).getRGB());
            }),
        printing("print 12pt", ZRValue::parse(u"12pt")),
        printing("print 12.375pt", ZRValue::parse(u"12.375pt")),
        printing("print #ff0000", ZRValue::parse(u"#ff0000")),
        copying("copy 12pt", ZRValue::parse(u"12pt")),
        copying("copy a string", ZRValue(u"Times New Roman, serif")),
    };
    addNumberReaders(jobs, "12pt", "12");
    addNumberReaders(jobs, "0.1234567em", "0.1234567");
    addQtColors(jobs);
    return jobs;
}

void run(const Options& options) {
    runJobs(options, "values", allJobs());
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
