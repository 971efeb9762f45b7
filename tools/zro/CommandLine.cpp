#include "tools/zro/CommandLine.h"

namespace zro {

CLI::App& addCommand(CLI::App& parent, const std::string& name, const std::string& summary,
                     const std::string& notes, const std::string& examples) {
    CLI::App* command = parent.add_subcommand(name, summary);
    command->fallthrough();
    std::string footer = notes.empty() ? "" : notes + "\n\n";
    footer += examples.empty() ? "" : "Examples:\n" + examples + "\n";
    command->footer(footer
                    + "Options of every command (--json, --color, --limits and more): zro --help");
    return *command;
}

std::string negativeError(const std::string& number) {
    return number.starts_with('-') ? number + " is below 0" : "";
}

void addInput(CLI::App& command, const std::string& name, std::string& value) {
    addOption(command, name, value, " ", "A document: a path, a URI, or - for standard input")
        ->required();
}

}  // namespace zro
