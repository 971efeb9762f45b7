#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "zro/xml/ZRXmlUtil.h"

#include "tools/zro/BrokenBytes.h"
#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/ElementPath.h"
#include "tools/zro/ParserWatch.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::ZRError;
using ZroCommon::ZRXmlParser;
using ZroCommon::ZRXmlUtil;

struct Options {
    std::vector<std::string> inputs;
    int mostErrors = 50;
    bool quiet = false;
};

struct Verdict {
    int errors = 0;
    bool ended = false;  // by the number of errors
    std::uint64_t elements = 0;
    std::string encoding;
    std::optional<std::uint64_t> broken;  // sequences malformed in UTF-8; nothing when unknown

    bool isWellFormed() const { return errors == 0 && broken.value_or(0) == 0; }
};

std::uint64_t readAll(ZRXmlParser& parser, ElementPath& path) {
    std::uint64_t elements = 0;
    while (parser.next() != ZRXmlParser::END_DOCUMENT) {
        path.follow(parser);
        elements += parser.getEventType() == ZRXmlParser::START_TAG ? 1U : 0U;
    }
    return elements;
}

Verdict checkOne(Session& session, const Input& input, int mostErrors) {
    const auto parser = ZRXmlUtil::createXmlParser();
    ParserWatch watch(session, input, *parser, mostErrors);
    ElementPath path;
    watch.setOpenElements([&path] { return path.elements(); });
    Verdict verdict;
    try {
        watch.open();
        verdict.elements = readAll(*parser, path);
        watch.requireRoot(verdict.elements != 0);
    } catch (const ZRError& error) {
        watch.report(error);
    }
    session.end(input);
    verdict.errors = watch.errorCount();
    verdict.ended = watch.isEnded();
    verdict.encoding = toUtf8(parser->getInputEncoding());
    verdict.broken = noteBrokenBytes(session, input);
    return verdict;
}

void printVerdict(Session& session, const Input& input, const Verdict& verdict) {
    const Style& style = session.outStyle();
    session.out() << style.bold(input.shownName() + ":") << " ";
    if (verdict.errors == 0) {
        session.out() << (verdict.isWellFormed() ? style.mark("well-formed") : "no errors") << ", "
                      << counted(verdict.elements, "element") << ", " << asSize(session.bytesRead())
                      << ", " << (verdict.encoding.empty() ? "no encoding told" : verdict.encoding)
                      << "\n";
        return;
    }
    session.out() << style.error(counted(static_cast<std::uint64_t>(verdict.errors), "error"))
                  << (verdict.ended ? ", stopped there" : "") << "\n";
}

void printJson(Session& session, const Input& input, const Verdict& verdict) {
    nlohmann::ordered_json object;
    object["kind"] = "summary";
    object["file"] = input.shownName();
    object["wellFormed"] = verdict.isWellFormed();
    object["errors"] = verdict.errors;
    object["complete"] = !verdict.ended;
    object["elements"] = verdict.elements;
    object["bytes"] = session.bytesRead();
    object["encoding"] = verdict.encoding;
    if (verdict.broken) {
        object["malformedSequences"] = *verdict.broken;
    }
    session.out() << object.dump(-1, ' ', false, decltype(object)::error_handler_t::replace)
                  << "\n";
}

void check(Session& session, const Options& options) {
    std::uint64_t bad = 0;
    for (const std::string& argument : options.inputs) {
        const Input input(argument);
        const Verdict verdict = checkOne(session, input, options.mostErrors);
        bad += verdict.errors == 0 ? 0 : 1;
        if (session.settings().json) {
            printJson(session, input, verdict);
        } else if (!options.quiet) {
            printVerdict(session, input, verdict);
        }
        if (session.isOutputLost()) {
            return;
        }
    }
    if (options.inputs.size() > 1 && !options.quiet && !session.settings().json) {
        session.out() << counted(options.inputs.size(), "file") << ", " << withThousands(bad)
                      << " with errors\n";
    }
}

}  // namespace

void addCheckCommand(CLI::App& program, Task& task) {
    const auto options = std::make_shared<Options>();
    CLI::App& command =
        addCommand(program, "check", "Find all the errors of documents, not only the first",
                   "Parsing goes on behind an error, so later ones may follow from earlier ones.\n"
                   "Errors go to standard error, one line for each document to standard output.",
                   "  zro check letter.fo report.fo\n"
                   "  zro check --json *.xml 2>errors.jsonl\n"
                   "  generate | zro check -\n");
    addOption(command, "URI", options->inputs, "...",
              "Documents: paths, URIs, or - for standard input")
        ->required();
    addOption(command, "--max-errors", options->mostErrors, "N",
              "Stop a document at this number of errors (50); 0 for never")
        ->check(negativeError);
    command.add_flag("-q,--quiet", options->quiet, "Print no line for each document");
    setTask(command, task, options, check);
}

}  // namespace zro
