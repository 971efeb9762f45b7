#include <chrono>
#include <iostream>
#include <memory>
#include <string>
#include <sys/resource.h>

#include "zro/uri/ZRUri.h"
#include "zro/xml/ZRXmlUtil.h"

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/DocumentReader.h"
#include "tools/zro/LoadReport.h"
#include "tools/zro/Text.h"
#include "tools/zro/ValueSurvey.h"

namespace zro {
namespace {

using ZroCommon::ZRDocument;
using ZroCommon::ZRError;
using ZroCommon::ZRUri;
using ZroCommon::ZRXmlParser;
using ZroCommon::ZRXmlUtil;

struct Options {
    std::string input;
    std::string output;
    bool pull = false;
    bool values = false;
    std::size_t properties = 8;
};

class Stopwatch {
public:
    double seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

std::uint64_t peakMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::uint64_t>(usage.ru_maxrss) * 1024U;
}

// In pull mode the first element is there when it has been asked for; the rest follows at once or
// node by node.
void read(DocumentReader& reader, LoadReport& report, bool keepTree) {
    ZRDocument& document = reader.document();
    document.setPullMode(true);
    const Stopwatch watch;
    reader.load();
    document.getDocumentElement();
    report.firstElementSeconds = watch.seconds();
    if (report.pulled && !keepTree) {
        report.tree = consume(document);
    } else if (report.pulled) {
        report.tree = statisticsOf(document);
    } else {
        document.getLastChild();
    }
    report.totalSeconds = watch.seconds();
    report.peakMemory = peakMemory();
}

// What references in the document resolve against.
UnicodeString baseOf(const Input& input) {
    return input.isStandardInput()
               ? input.baseUri()
               : ZRUri(input.uri(), ZroCommon::URISTR_PATH_OR_URI_CSS).getBaseString();
}

void ignoreError(const ZRError& /*error*/, void* /*data*/) {}

std::optional<TokenStatistics> tokensOf(Session& session, const Input& input) {
    const auto stream = session.reopen(input);
    if (!stream) {
        return std::nullopt;
    }
    const auto parser = ZRXmlUtil::createXmlParser();
    parser->setLimits(session.settings().limits);
    parser->setFeature(ZRXmlParser::FEATURE_SKIP_EXTERNAL_SUBSET, true);
    parser->setFeature(ZRXmlParser::FEATURE_EMPTY_UNDEFINED_ENTITY, true);
    parser->setCallbackError(&ignoreError, nullptr);  // the document itself has been loaded
    try {
        parser->setInput(*stream, UnicodeString(), baseOf(input));
        return countTokens(*parser);
    } catch (const ZRError&) {
        return std::nullopt;
    }
}

void save(Session& session, DocumentReader& reader, const Options& options, LoadReport& report) {
    const Stopwatch watch;
    if (saveDocument(session, reader.document(), options.output, "UTF-8", "")) {
        report.savedTo = options.output;
        report.saveSeconds = watch.seconds();
    }
}

// A document that goes to standard output has it for itself.
void print(Session& session, const LoadReport& report, bool outputIsTaken) {
    std::ostream& out = outputIsTaken ? std::cerr : session.out();
    if (session.settings().json) {
        printJson(out, report);
    } else {
        printText(out, report, outputIsTaken ? Style() : session.outStyle());
    }
}

void load(Session& session, const Options& options) {
    const Input input(options.input);
    DocumentReader reader(session, input);
    LoadReport report;
    report.file = input.shownName();
    report.pulled = options.pull;
    report.shownProperties = options.properties;
    const bool isRead = reader.attempt([&] { read(reader, report, !options.output.empty()); });
    session.end(input);
    if (!isRead) {
        return;
    }
    if (!options.pull) {
        report.tree = statisticsOf(reader.document());
    }
    if (!reader.requireRoot(report.tree.elements() != 0)) {
        return;
    }
    report.bytes = session.bytesRead();
    report.encoding = toUtf8(reader.document().getParser()->getInputEncoding());
    report.tokens = tokensOf(session, input);
    if (!options.output.empty()) {
        save(session, reader, options, report);
    }
    print(session, report, options.output == "-");
    if (options.values) {
        printSurvey(session, report.file, ValueSurvey(reader.document()));
    }
}

}  // namespace

void addLoadCommand(CLI::App& program, Task& task) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = addCommand(
        program, "load", "Load a document and report on it",
        "Reports the root, namespaces, counts of nodes, depth, names, the XSL-FO properties\n"
        "used most (attributes without a namespace, on formatting objects, that the library\n"
        "knows), size, times and memory. Elements, attributes and texts are those of the\n"
        "tree, entities replaced; the rest is counted by a second pass over the tokens.\n"
        "With --pull the report's own work is part of the time, and memory stays small\n"
        "however large the document, unless it is saved.",
        "  zro load letter.fo\n"
        "  zro load --pull huge.fo\n"
        "  zro load report.fo --save copy.fo --json\n");
    addInput(command, "URI", options->input);
    auto* pull =
        command.add_flag("--pull", options->pull,
                         "Walk the tree while it is loaded, and let go of what has been seen");
    auto* output = addOption(command, "--save", options->output, "OUT",
                             "Write the tree here; with - the report goes to standard error");
    command
        .add_flag("--values", options->values,
                  "List what the properties are read as, and which values are unknown")
        ->excludes(pull)
        ->excludes(output);
    addOption(command, "--properties", options->properties, "N",
              "Number of XSL-FO properties to list (8)")
        ->check(negativeError);
    setTask(command, task, options, load);
}

}  // namespace zro
