// Growth: documents that are extreme in one direction, at a tenth of the size and at full size,
// each on a stack of 256 KiB. Linear work takes about ten times as long, quadratic a hundred times.

#include <algorithm>
#include <functional>
#include <limits>
#include <malloc.h>
#include <sstream>
#include <string>

#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRElement.h"
#include "zro/xml/ZRXmlUtil.h"

#include "bench/support/MemoryBuffers.h"
#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/SmallStack.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t index = 0; index < count; ++index) {
        result += text;
    }
    return result;
}

std::string manyAttributes(std::size_t count) {
    std::string result = "<a";
    for (std::size_t index = 0; index < count; ++index) {
        result += " n" + std::to_string(index) + "='v'";
    }
    return result + "/>";
}

std::string entityUses(std::size_t count, std::string_view before, std::string_view after) {
    return "<!DOCTYPE a [<!ENTITY e 'x'>]>" + std::string(before) + repeated("&e;", count)
           + std::string(after);
}

struct Case {
    std::string name;
    std::size_t size;
    std::function<std::string(std::size_t size)> document;
};

// Sizes of content in bytes, of all else in pieces.
std::vector<Case> allCases() {
    constexpr std::size_t kMega = 1'000'000;
    return {
        {"depth", kMega,
         [](auto size) {
             return repeated("<a>", size) + repeated("</a>", size);
         }},
        {"depth, namespaces", kMega,
         [](auto size) {
             return "<p:a xmlns:p='u'>" + repeated("<p:a>", size) + repeated("</p:a>", size)
                    + "</p:a>";
         }},
        {"siblings", kMega,
         [](auto size) {
             return "<a>" + repeated("<b/>", size) + "</a>";
         }},
        {"attributes", 100'000, manyAttributes},
        {"entity in text", 300'000,
         [](auto size) {
             return entityUses(size, "<a>", "</a>");
         }},
        {"entity in attribute", 300'000,
         [](auto size) {
             return entityUses(size, "<a b='", "'/>");
         }},
        {"entity in entity", 300'000,
         [](auto size) {
             return "<!DOCTYPE a [<!ENTITY e 'x'><!ENTITY f '" + repeated("&e;", size)
                    + "'>]><a>&f;</a>";
         }},
        {"comment", 50 * kMega,
         [](auto size) {
             return "<a><!--" + std::string(size, 'c') + "--></a>";
         }},
        {"attribute value", 50 * kMega,
         [](auto size) {
             return "<a b='" + std::string(size, 'v') + "'/>";
         }},
        {"text", 50 * kMega,
         [](auto size) {
             return "<a>" + std::string(size, 't') + "</a>";
         }},
    };
}

/// Times of one document's way through the library, in nanoseconds of processor time.
struct Times {
    double pull = 0;
    double load = 0;
    double save = 0;
    double clone = 0;
    double destroy = 0;  ///< of the tree and its clone
};

double pull(std::string_view bytes) {
    ViewStream in(bytes);
    return timed(cpuNow, [&in] {
        const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
        parser->setInput(in, UnicodeString(), UnicodeString());
        while (parser->next() != ZRXmlParser::END_DOCUMENT) {
        }
    });
}

Times measureOnce(std::string_view bytes) {
    Times times;
    times.pull = pull(bytes);
    ViewStream in(bytes);
    std::string saved;
    AppendBuffer buffer(saved);
    std::ostream out(&buffer);
    ZRPtr<ZRDocument> document(new ZRDocument);
    ZRPtr<ZRNode> clone;
    times.load = timed(cpuNow, [&] { document->load(in); });
    times.save = timed(cpuNow, [&] { document->save(out); });
    times.clone = timed(cpuNow, [&] { clone = document->getDocumentElement()->cloneNode(true); });
    times.destroy = timed(cpuNow, [&] {
        clone = nullptr;
        document = nullptr;
    });
    return times;
}

/// One round: a tenth of the size and, right behind it, the whole, so that both see the machine
/// alike.
struct Round {
    Times tenth;
    Times whole;
};

std::vector<Round> measure(const Case& growing, int count) {
    const std::string tenth = growing.document(growing.size / 10);
    const std::string whole = growing.document(growing.size);
    std::vector<Round> rounds(static_cast<std::size_t>(count));
    for (Round& round : rounds) {
        onSmallStack([&] {
            round.tenth = measureOnce(tenth);
            round.whole = measureOnce(whole);
        });
    }
    return rounds;
}

template <class Figure>
double medianOf(const std::vector<Round>& rounds, Figure figure) {
    std::vector<double> samples(rounds.size());
    std::transform(rounds.begin(), rounds.end(), samples.begin(), figure);
    return spreadOf(samples).median;
}

void report(const Case& growing, const char* what, const std::vector<Round>& rounds,
            double Times::*field) {
    const auto tenth = [field](const Round& round) {
        return round.tenth.*field;
    };
    const auto whole = [field](const Round& round) {
        return round.whole.*field;
    };
    const auto ratio = [&](const Round& round) {
        return whole(round) / std::max(tenth(round), 1.0);
    };
    Record("growth", growing.name, what)
        .set("size", static_cast<double>(growing.size))
        .set("tenth_ns", medianOf(rounds, tenth))
        .set("ns", medianOf(rounds, whole))
        .set("ratio", medianOf(rounds, ratio));
}

// One arena that keeps what it has: a buffer of 100 MB which comes from the system anew each time
// costs more in page faults than the work on it, and the smaller one none.
void keepMemory() {
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

void run(const Options& options) {
    keepMemory();
    const int count = std::clamp(options.rounds / 3, 1, 5);
    for (const Case& growing : allCases()) {
        if (options.wantsCorpus(growing.name)) {
            const std::vector<Round> rounds = measure(growing, count);
            report(growing, "pull", rounds, &Times::pull);
            report(growing, "load", rounds, &Times::load);
            report(growing, "save", rounds, &Times::save);
            report(growing, "clone", rounds, &Times::clone);
            report(growing, "destroy", rounds, &Times::destroy);
        }
    }
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
