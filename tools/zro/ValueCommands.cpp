// The commands on values that are given as text: value, length and link.

#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "zro/values/ZRValue.h"

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/Text.h"
#include "tools/zro/Values.h"

namespace zro {
namespace {

using ZroCommon::ZRValue;
using Json = nlohmann::ordered_json;

struct ValueOptions {
    std::vector<std::string> texts;
    bool nonNumeric = false;
    bool color = false;
    bool extended = false;

    ZRValue parse(const std::string& text) const {
        if (color || extended) {
            return ZRValue::parseColor(fromUtf8(text), extended);
        }
        return nonNumeric ? ZRValue::parseNonNumeric(fromUtf8(text))
                          : ZRValue::parse(fromUtf8(text));
    }
};

void showValues(Session& session, const ValueOptions& options) {
    for (const std::string& text : options.texts) {
        Json object;
        object["input"] = text;
        const ZRValue value = options.parse(text);
        if (session.settings().json) {
            object.update(jsonOf(value));
            printLine(session, object);
            continue;
        }
        object.update(rowsOf(value));
        if (&text != &options.texts.front()) {
            session.out() << "\n";
        }
        printRows(session, object);
    }
}

struct LengthOptions {
    std::string text;
    std::string unit;
};

// What the units of a dimension are, by any of them.
std::vector<std::string> unitsBeside(const ZRValue& value) {
    if (value.isAngle()) {
        return {"deg", "rad", "grad"};
    }
    switch (value.getUnitType()) {
    case ZroCommon::ZRValueUnitNumber:
    case ZroCommon::ZRValueUnitPercent: return {"number", "percent"};
    case ZroCommon::ZRValueUnitMs:
    case ZroCommon::ZRValueUnitS: return {"ms", "s"};
    case ZroCommon::ZRValueUnitHz:
    case ZroCommon::ZRValueUnitKHz: return {"Hz", "kHz"};
    default: return {"pt", "pc", "in", "cm", "mm", "twip"};
    }
}

void convert(Session& session, const LengthOptions& options) {
    const ZRValue value = ZRValue::parse(fromUtf8(options.text));
    Json object;
    const auto units =
        options.unit.empty() ? unitsBeside(value) : std::vector<std::string>{options.unit};
    for (const std::string& unit : units) {
        const float number = value.getRealValue(unitOf(unit));
        if (std::isnan(number)) {
            session.fail("", quoted(options.text) + " has no conversion to " + unit);
            return;
        }
        object[unit] = toUtf8(ZRValue(number, unitOf(unit)).toString());
    }
    if (session.settings().json) {
        printLine(session, object);
    } else if (options.unit.empty()) {
        printRows(session, object);
    } else {
        session.out() << object.front().get<std::string>() << "\n";
    }
}

struct LinkReader {
    const char* option;  // null for what is read without one
    const char* help;
    ZRValue (*read)(const UnicodeString& text);
};

constexpr std::array kLinkReaders = {
    LinkReader{"--xlink", "The target of an XLink, \"#name\" too",
               [](const UnicodeString& text) -> ZRValue {
                   return ZRValue::parseXlinkHref(text);
               }},
    LinkReader{"--excel", "A spreadsheet and its parameters",
               [](const UnicodeString& text) -> ZRValue {
                   return ZRValue::parseExcelOpenParameters(text);
               }},
    LinkReader{"--internal", "A destination of the same document",
               [](const UnicodeString& text) -> ZRValue {
                   return ZRValue::parseInternalDestination(text, 0);
               }},
    LinkReader{"--fragment", "Any parameters \"key=value\"; keys are lowered",
               [](const UnicodeString& text) -> ZRValue {
                   return ZRValue::parseUriFragmentParameters(text, true);
               }},
    LinkReader{"--destination", "How a destination is shown",
               [](const UnicodeString& text) -> ZRValue {
                   return ZRValue::parseDestinationType(text);
               }},
};

struct LinkOptions {
    std::string text;
    std::array<bool, kLinkReaders.size()> chosen{};

    ZRValue read() const {
        for (std::size_t index = 0; index < chosen.size(); ++index) {
            if (chosen[index]) {
                return kLinkReaders[index].read(fromUtf8(text));
            }
        }
        return ZRValue::parsePDFOpenParameters(fromUtf8(text));
    }
};

void showLink(Session& session, const LinkOptions& options) {
    const ZRValue value = options.read();
    if (session.settings().json) {
        printLine(session, jsonOf(value));
        return;
    }
    if (!value.isCompound()) {
        session.out() << (value.isNull() ? "null" : printable(value.toString())) << "\n";
        return;
    }
    printRows(session, rowsOf(value)["payload"]);
}

}  // namespace

void addValueCommand(CLI::App& program, Task& task) {
    const auto options = std::make_shared<ValueOptions>();
    CLI::App& command =
        addCommand(program, "value", "Show what the text of a property is read as",
                   "A text that is no single number, name, quoted string or colour is an unknown\n"
                   "string.",
                   "  zro value 12pt auto \"'a b'\" '#f00' '1em solid'\n"
                   "  zro value --color 'rgb(100%, 0, 0)'\n");
    addOption(command, "TEXT", options->texts, " ", "Values, each an argument")->required();
    auto* nonNumeric = command.add_flag("--non-numeric", options->nonNumeric,
                                        "Read names and quoted strings alone");
    command.add_flag("--color,--colour", options->color, "Read colours")->excludes(nonNumeric);
    command
        .add_flag("--extended", options->extended, "Read colours with icc-color(...) behind them")
        ->excludes(nonNumeric);
    setTask(command, task, options, showValues);
}

void addLengthCommand(CLI::App& program, Task& task) {
    const auto options = std::make_shared<LengthOptions>();
    CLI::App& command =
        addCommand(program, "length", "Convert a length, or a number of other units",
                   "Without --to, in every unit that it can have.",
                   "  zro length 1.5in --to pt\n"
                   "  zro length 90deg\n");
    addOption(command, "TEXT", options->text, " ", "A number with its unit")->required();
    addOption(command, "--to", options->unit, "UNIT", "pt, in, cm, mm, pc, twip, deg, ms, Hz ...")
        ->check([](const std::string& name) {
            return unitOf(name) == ZroCommon::ZRValueUnitNone ? "\"" + name + "\" is no unit"
                                                              : std::string();
        });
    setTask(command, task, options, convert);
}

void addLinkCommand(CLI::App& program, Task& task) {
    const auto options = std::make_shared<LinkOptions>();
    CLI::App& command =
        addCommand(program, "link", "Show where a link leads",
                   "Without an option, what a PDF viewer is asked for: page, view and zoom.",
                   "  zro link 'a.pdf#page=3&view=fith,1in'\n"
                   "  zro link --excel 'a.xls#sheet=2'\n");
    addOption(command, "TEXT", options->text, " ", "A reference or destination")->required();
    std::vector<CLI::Option*> readers;
    for (std::size_t index = 0; index < kLinkReaders.size(); ++index) {
        CLI::Option* const reader = command.add_flag(
            kLinkReaders[index].option, options->chosen[index], kLinkReaders[index].help);
        for (CLI::Option* const other : readers) {
            reader->excludes(other);
        }
        readers.push_back(reader->option_text(" "));
    }
    setTask(command, task, options, showLink);
}

}  // namespace zro
