// The program `zro`: the library's work on documents and URIs, from the command line.

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <functional>
#include <iostream>
#include <map>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "zro/foundation/ZRResourceLimits.h"

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/Diagnostic.h"
#include "tools/zro/Output.h"
#include "tools/zro/Session.h"
#include "tools/zro/Usage.h"

namespace {

using zro::External;
using zro::Session;
using zro::Settings;
using zro::When;
using ZroCommon::ZRLimits;
using ZroCommon::ZRResourceLimits;

struct CommonOptions {
    Settings settings;
    std::string color = "auto";
    bool noExternal = false;
    bool allowRemote = false;
    std::vector<std::string> limits;
};

const char* const kProgramHelp =
    "What it does with documents and URIs is what the library ZroCommon does.\n\n"
    "Results go to standard output, errors to standard error. Exit status: 0 all is well,\n"
    "1 the input has errors or something could not be read or written, 2 wrong usage.\n\n"
    "A document may bring in a DTD and external entities. Local files are read; anything\n"
    "else is not fetched, reads as empty, and a note says so. See --no-external and\n"
    "--allow-remote. `zro COMMAND --help` tells more and has examples.";

// One word of --limits: "strict", "none", "depth=100", "nesting=8", "expansion=50".
bool applyLimit(const std::string& word, ZRLimits& limits) {
    const std::size_t equals = word.find('=');
    const std::string name = word.substr(0, equals);
    if (equals == std::string::npos) {
        limits = name == "strict" ? ZRLimits::strict() : ZRLimits();
        return name == "strict" || name == "none";
    }
    std::uint32_t number = 0;
    if (!CLI::detail::lexical_cast(word.substr(equals + 1), number)) {
        return false;
    }
    static const std::map<std::string, std::uint32_t ZRLimits::*> s_limits = {
        {"depth", &ZRLimits::elementDepth},
        {"nesting", &ZRLimits::inputNesting},
        {"expansion", &ZRLimits::entityExpansionFactor},
    };
    const auto limit = s_limits.find(name);
    if (limit == s_limits.end()) {
        return false;
    }
    limits.*(limit->second) = number;
    return true;
}

std::string limitError(const std::string& word) {
    ZRLimits ignored;
    return applyLimit(word, ignored) ? "" : "\"" + word + "\" is no limit";
}

void addCommonOptions(CLI::App& program, CommonOptions& options) {
    program.add_flag("--json", options.settings.json,
                     "Results and errors as JSON, one object a line");
    zro::addOption(program, "--color", options.color, "WHEN",
                   "Colours: auto (on a terminal, the default), always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}));
    zro::addOption(program, "--limits", options.limits, "LIMITS",
                   "Guards against hostile documents: strict, none, or any of depth=N\n"
                   "(open elements), nesting=N (inputs inside one another; 40 by default),\n"
                   "expansion=N (entity text, times the input; 100 by default), joined by commas")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(CLI::Validator(limitError, ""));
    auto* noExternal = program
                           .add_flag("--no-external", options.noExternal,
                                     "Fetch no DTD and no external entity, not even local ones")
                           ->option_text(" ");
    program
        .add_flag("--allow-remote", options.allowRemote,
                  "Let documents fetch DTDs and entities from the network too")
        ->option_text(" ")
        ->excludes(noExternal);
}

Settings settingsOf(const CommonOptions& options) {
    Settings settings = options.settings;
    if (options.color != "auto") {
        settings.color = options.color == "always" ? When::Always : When::Never;
    }
    for (const std::string& word : options.limits) {
        applyLimit(word, settings.limits);
    }
    if (options.noExternal) {
        settings.external = External::None;
    } else if (options.allowRemote) {
        settings.external = External::Remote;
    }
    return settings;
}

// Whatever is opened goes by these, be it a document or what it brings in.
void limitResources(const CommonOptions& options) {
    bool isStrict = false;
    for (const std::string& word : options.limits) {
        isStrict = word == "strict" || (isStrict && word != "none");
    }
    if (isStrict) {
        ZRResourceLimits::setCurrent(ZRResourceLimits::strict());
    }
}

// Wrong usage may end the reading of the command line before it comes to the option.
bool asksForJson(int argc, char** argv) {
    char** const end = std::find(argv, argv + argc, std::string_view("--"));
    return std::find(argv, end, std::string_view("--json")) != end;
}

void complain(bool json, const std::string& message, const std::string& hint = "") {
    zro::Diagnostic diagnostic;
    diagnostic.message = message;
    diagnostic.hint = hint;
    std::cerr << (json ? asJson(diagnostic) : asText(diagnostic, zro::Style()));
}

// Help and version are results as well: they too have to arrive.
int tellAboutItself(const CLI::App& program, const CLI::ParseError& what) {
    zro::OutputBuffer buffer;
    std::ostream out(&buffer);
    program.exit(what, out, std::cerr);
    buffer.finish();
    return Session::kGood;
}

int run(const Settings& settings, const zro::Task& task) {
    Session session(settings);
    task(session);
    session.finish();
    return session.status();
}

// CLI11 has exit codes of its own for every kind of mistake; to users there is one.
int parseAndRun(CLI::App& program, int argc, char** argv, const CommonOptions& options,
                const zro::Task& task) {
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            return tellAboutItself(program, error);
        }
        const zro::Complaint complaint = zro::complaintOn(program, error);
        complain(asksForJson(argc, argv), complaint.message, complaint.hint);
        return Session::kWrongUsage;
    }
    limitResources(options);
    return run(settingsOf(options), task);
}

int statusOf(bool json, const std::function<int()>& work) {
    try {
        return work();
    } catch (const zro::OutputFailure& failure) {
        if (failure.isBrokenPipe()) {
            return Session::kGood;
        }
        complain(json, failure.what());
    } catch (const std::bad_alloc&) {
        complain(json, "out of memory");
    } catch (const std::exception& error) {
        complain(json, error.what());
    }
    return Session::kErrors;
}

int run(int argc, char** argv) {
    CLI::App program("Companion program of ZroCommon, the library under an XSL-FO formatter.",
                     "zro");
    program.set_version_flag("--version", "zro " ZRO_VERSION);
    program.require_subcommand(1);
    program.footer(kProgramHelp);
    CommonOptions options;
    addCommonOptions(program, options);
    zro::Task task;
    zro::addLoadCommand(program, task);
    zro::addEventsCommand(program, task);
    zro::addTreeCommand(program, task);
    zro::addFormatCommand(program, task);
    zro::addCheckCommand(program, task);
    zro::addCatCommand(program, task);
    zro::addUriCommand(program, task);
    zro::addEncodingCommand(program, task);
    zro::addValueCommand(program, task);
    zro::addColorCommand(program, task);
    zro::addLengthCommand(program, task);
    zro::addLinkCommand(program, task);
    zro::addNumberCommand(program, task);
    zro::addKansujiCommand(program, task);
    zro::addCellCommand(program, task);
    zro::addZipCommand(program, task);
    zro::addOoxmlCommand(program, task);
    zro::addOfficeCommand(program, task);
    zro::addOleCommand(program, task);
    return parseAndRun(program, argc, argv, options, task);
}

}  // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);  // a reader that goes away is told by the write
    return statusOf(asksForJson(argc, argv), [&] { return run(argc, argv); });
}
