#pragma once

#include <memory>
#include <string>
#include <utility>

#include <CLI/CLI.hpp>

#include "tools/zro/Session.h"

namespace zro {

/// Adds a command whose options can be mixed with those of the program.
/// \param notes     what the command's help says behind its options
/// \param examples  command lines, each with two blanks before and a line feed behind it; may be
///                  empty
CLI::App& addCommand(CLI::App& parent, const std::string& name, const std::string& summary,
                     const std::string& notes, const std::string& examples);

/// When the user chooses `command`, `task` becomes `run(session, options)`.
template <class Options, class Run>
void setTask(CLI::App& command, Task& task, const std::shared_ptr<Options>& options, Run run) {
    command.callback([&task, options, run] {
        task = [options, run](Session& session) {
            run(session, *options);
        };
    });
}

/// Adds the argument that names a document.
void addInput(CLI::App& command, const std::string& name, std::string& value);

/// Adds an option with a value, named in the help by what it stands for.
template <class Value>
CLI::Option* addOption(CLI::App& command, const std::string& names, Value& value,
                       const std::string& placeholder, const std::string& help) {
    return command.add_option(names, value, help)->option_text(placeholder);
}

/// Refuses numbers below 0, which the conversion to a number without a sign would let pass.
std::string negativeError(const std::string& number);

/// Adds to a command the operations on files of one kind, each a command of its own.
class FileOperations {
public:
    /// \param argument  how the help calls the file
    /// \param kind      what it says that the file is: "A ZIP package"
    FileOperations(CLI::App& command, Task& task, std::string argument, std::string kind)
        : m_command(command),
          m_task(task),
          m_argument(std::move(argument)),
          m_kind(std::move(kind)) {}

    /// \param options  `file` takes the name of the file
    template <class Options, class Run>
    CLI::App& add(const std::string& name, const std::string& summary,
                  const std::shared_ptr<Options>& options, Run run) const {
        CLI::App& operation = addCommand(m_command, name, summary, "", "");
        addOption(operation, m_argument, options->file, " ",
                  m_kind + ": a path, a URI, or - for standard input")
            ->required();
        setTask(operation, m_task, options, run);
        return operation;
    }

private:
    CLI::App& m_command;
    Task& m_task;
    std::string m_argument;
    std::string m_kind;
};

}  // namespace zro
