// Numbers shown by spreadsheet formats: the format given as text each time, compiled alone, and
// what printing the same number costs the C and the C++ library. `bench/peers/spreadsheets.cjs`
// measures the same formats with two libraries on Node.

#include <array>
#include <charconv>
#include <cstdio>

#include "zro/text/xls/XlsFormatString.h"

#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

constexpr int kNumbers = 20000;  // for one sample

struct Case {
    const char* name;
    const char16_t* format;
    double number;
};

// The rows of peers/spreadsheets.cjs, as files store them.
constexpr std::array kCases = {
    Case{"General", u"General", 1234.5},
    Case{"0.00", u"0.00", 1234.567},
    Case{"#,##0.00", u"#,##0.00", 1234567.891},
    Case{"#,##0.00;[Red]-#,##0.00", u"#,##0.00;[Red]\\-#,##0.00", -1234.5},
    Case{"0.00%", u"0.00%", 0.1234},
    Case{"0.00E+00", u"0.00E+00", 12345.678},
    Case{"# ?\?/?\?", u"#\\ ?\?/?\?", 3.14159265},
    Case{"yyyy-mm-dd", u"yyyy\\-mm\\-dd", 45000.5},
    Case{"h:mm:ss AM/PM", u"h:mm:ss\\ AM/PM", 45000.7543},
    Case{"[h]:mm:ss", u"[h]:mm:ss", 1.75},
};

/// Nanoseconds a number, over numbers that vary a little.
template <class Show>
double timeNumbers(double first, const Show& show) {
    const double all = timed(cpuNow, [&] {
        for (int index = 0; index < kNumbers; ++index) {
            show(first + index % 7);
        }
    });
    return all / kNumbers;
}

void measure(const Options& options, const Case& row) {
    const UnicodeString format(row.format);
    XlsFormatString formats;
    std::array<char, 64> buffer{};
    const std::vector<std::function<double()>> jobs = {
        [&] {
            return timeNumbers(row.number,
                               [&](double number) { keep(formats.FormatString(format, number)); });
        },
        [&] {
            return timeNumbers(row.number, [&](double) {
                FMT2 compiled;
                keep(formats.fmtget(format, &compiled));
            });
        },
        [&] {
            return timeNumbers(row.number, [&](double number) {
                keep(std::snprintf(buffer.data(), buffer.size(), "%.2f", number));
            });
        },
        [&] {
            return timeNumbers(row.number, [&](double number) {
                keep(std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                   std::chars_format::fixed, 2)
                         .ptr);
            });
        }};
    const std::array names = {"zro", "zro-compile", "snprintf", "to_chars"};
    const std::vector<Spread> times = interleave(jobs, options.rounds);
    for (std::size_t index = 0; index < names.size(); ++index) {
        Record("spreadsheet formats", row.name, names[index]).setSpread(times[index]);
    }
}

void run(const Options& options) {
    for (const Case& row : kCases) {
        measure(options, row);
    }
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
