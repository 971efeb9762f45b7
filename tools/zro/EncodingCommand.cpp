#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/Opening.h"
#include "tools/zro/Text.h"
#include "tools/zro/TextPassage.h"
#include "tools/zro/Values.h"

namespace zro {
namespace {

void detect(Session& session, const std::vector<std::string>& inputs) {
    for (const std::string& argument : inputs) {
        const Input input(argument);
        auto stream = openInput(session, input);
        if (stream == nullptr) {
            continue;
        }
        const std::optional<std::string> name = PeekedBytes(*stream).detectEncoding();
        session.end(input);
        if (!name) {
            failToDetect(session, input);
        } else if (session.settings().json) {
            printLine(session, {{"file", input.shownName()}, {"encoding", *name}});
        } else {
            session.out() << printable(fromUtf8(input.shownName())) << ": " << *name << "\n";
        }
    }
}

struct ConvertOptions {
    std::string input;
    Conversion conversion;
};

void convert(Session& session, const ConvertOptions& options) {
    const Input input(options.input);
    if (auto stream = openInput(session, input)) {
        PeekedBytes bytes(*stream);
        convertText(session, input, bytes, options.conversion);
    }
}

void addDetect(CLI::App& command, Task& task) {
    const auto inputs = std::make_shared<std::vector<std::string>>();
    CLI::App& app = addCommand(
        command, "detect", "Guess the encoding of texts by their first 2048 bytes",
        "The name is one that --from understands. A text in no encoding that can be told is\n"
        "an error.",
        "  zro encoding detect letter.txt\n");
    addOption(app, "IN", *inputs, " ", "Texts: paths, URIs, or - for standard input")->required();
    setTask(app, task, inputs, detect);
}

void addConvert(CLI::App& command, Task& task) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App& app = addCommand(
        command, "convert", "Write a text in another encoding",
        "Names are those of ICU and the IANA register. On reading, malformed bytes become\n"
        "U+FFFD; on writing, what the encoding does not hold becomes U+3013 or \"?\". A byte\n"
        "order mark at the start is dropped.",
        "  zro encoding convert old.txt new.txt --from Shift_JIS\n"
        "  zro encoding convert letter.txt --to EUC-JP --limit 1000\n");
    addOption(app, "IN", options->input, " ", "A path, a URI, or - for standard input")->required();
    addOption(app, "OUT", options->conversion.output, " ",
              "Where to write: a path, or - for standard output (the default)");
    addOption(app, "--from", options->conversion.from, "NAME",
              "The encoding; without it, it is guessed")
        ->check(sourceEncodingError);
    addOption(app, "--to", options->conversion.to, "NAME", "The other encoding, UTF-8 without it")
        ->check(targetEncodingError);
    addOption(app, "--limit", options->conversion.limit, "BYTES",
              "Write no more than that; no character is divided. 0, the default, is no limit")
        ->check(negativeError);
    setTask(app, task, options, convert);
}

}  // namespace

void addEncodingCommand(CLI::App& program, Task& task) {
    CLI::App& command =
        addCommand(program, "encoding", "Detect and convert encodings of texts", "", "");
    command.require_subcommand(1);
    addDetect(command, task);
    addConvert(command, task);
}

}  // namespace zro
