#include <memory>
#include <string>

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/DocumentReader.h"

namespace zro {
namespace {

struct Options {
    std::string input;
    std::string output = "-";
    std::string encoding = "UTF-8";
    std::string docType;
    bool noGenerator = false;
};

void format(Session& session, const Options& options) {
    const Input input(options.input);
    DocumentReader reader(session, input);
    const bool loaded = reader.attempt([&reader] { reader.load(); });
    session.end(input);
    if (!loaded || !reader.requireRoot(reader.document().getDocumentElement() != nullptr)) {
        return;
    }
    if (options.noGenerator) {
        reader.document().getSerializer()->setGenerator(UnicodeString());
    }
    saveDocument(session, reader.document(), options.output, options.encoding, options.docType);
}

}  // namespace

void addFormatCommand(CLI::App& program, Task& task) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = addCommand(
        program, "format", "Load a document and write it again",
        "The tree keeps elements, attributes and text. Comments, processing instructions,\n"
        "the DOCTYPE and empty attributes are not written; entities are written as what\n"
        "they stand for. OUT may be IN: the whole document is loaded first.",
        "  zro format letter.fo -\n"
        "  zro format old.xml new.xml --encoding Shift_JIS\n");
    addInput(command, "IN", options->input);
    addOption(command, "OUT", options->output, " ",
              "Where to write: a path, or - for standard output (the default)");
    addOption(command, "--encoding", options->encoding, "NAME", "UTF-8 (the default) or Shift_JIS")
        ->check(CLI::IsMember({"UTF-8", "Shift_JIS"}, CLI::ignore_case));
    addOption(command, "--doctype", options->docType, "TEXT",
              "Write this between <!DOCTYPE and >; without it there is no DOCTYPE");
    command.add_flag("--no-generator", options->noGenerator,
                     "Leave out the comment that names the library");
    setTask(command, task, options, format);
}

}  // namespace zro
