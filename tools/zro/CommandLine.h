#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace zro {

/// Adds a command whose options can be mixed with those of the program.
/// \param notes     what the command's help says behind its options
/// \param examples  command lines, each with two blanks before and a line feed behind it; may be
///                  empty
CLI::App& addCommand(CLI::App& parent, const std::string& name, const std::string& summary,
                     const std::string& notes, const std::string& examples);

/// Adds the argument that names a document.
void addInput(CLI::App& command, const std::string& name, std::string& value);

/// Adds an option with a value, named in the help by what it stands for.
template <class Value>
CLI::Option* addOption(CLI::App& command, const std::string& names, Value& value,
                       const std::string& placeholder, const std::string& help) {
    return command.add_option(names, value, help)->option_text(placeholder);
}

}  // namespace zro
