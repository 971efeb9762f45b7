#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace zro {

/// What to tell of a command line that was not understood.
struct Complaint {
    std::string message;
    std::string hint = "zro --help lists the commands, zro COMMAND --help their options";
};

/// Names a command that there is none of, and the one that may be meant, where CLI11 only says that
/// one is required.
Complaint complaintOn(const CLI::App& program, const CLI::ParseError& error);

}  // namespace zro
