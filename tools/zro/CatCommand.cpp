#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>

#include "tools/zro/CheckedBytes.h"
#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/Target.h"
#include "tools/zro/TextPassage.h"

namespace zro {
namespace {

struct Options {
    std::string input;
    std::string from;
    std::string to;
    std::string output = "-";
    bool gunzip = false;
};

// Takes what is there, and passes it on before it waits for more.
void passOn(Session& session, std::istream& stream, std::ostream& target) {
    std::streambuf& source = *stream.rdbuf();
    std::array<char, 65536> block{};
    const auto room = static_cast<std::streamsize>(block.size());
    while (target && !session.isOutputLost()
           && source.sgetc() != std::streambuf::traits_type::eof()) {
        const std::streamsize ready = std::clamp<std::streamsize>(source.in_avail(), 1, room);
        target.write(block.data(), source.sgetn(block.data(), ready));
        if (source.in_avail() <= 0) {
            target.flush();
        }
    }
}

CheckedBytes openBytes(Session& session, const Options& options, const Input& input) {
    CheckedBytes bytes = openChecked(session, input);
    if (bytes.stream == nullptr || !options.gunzip) {
        return bytes;
    }
    bytes = unpacked(std::move(bytes));
    if (bytes.stream == nullptr) {
        session.end(input);
        session.fail(input.shownName(), "is no gzip data");
    }
    return bytes;
}

void convert(Session& session, const Options& options, const Input& input, std::istream& stream) {
    PeekedBytes bytes(stream);
    convertText(session, input, bytes, {options.from, options.to, 0, options.output});
}

void write(Session& session, const Options& options, const Input& input, std::istream& stream) {
    if (auto target = Target::open(session, options.output, input)) {
        passOn(session, stream, target->stream());
        session.end(input);
        target->finish();
    }
}

void cat(Session& session, const Options& options) {
    const Input input(options.input);
    const CheckedBytes bytes = openBytes(session, options, input);
    if (bytes.stream == nullptr) {
        return;
    }
    if (options.to.empty()) {
        write(session, options, input, *bytes.stream);
    } else {
        convert(session, options, input, *bytes.stream);
    }
    if (const std::string fault = bytes.fault(); !fault.empty()) {
        session.fail(input.shownName(), fault);
    }
}

}  // namespace

void addCatCommand(CLI::App& program, Task& task) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = addCommand(
        program, "cat", "Write what any name leads to: a file, an entry of packages, an address",
        "Opens what the library opens: paths, file:, http: and https: addresses, jar: entries,\n"
        "also of packages in packages, and data: URIs. Bytes are written as they come.\n"
        "Data that is damaged is written as far as it goes.",
        "  zro cat jar:file:///tmp/book.epub!/META-INF/container.xml\n"
        "  zro cat --gunzip letters.txt.gz --to-encoding EUC-JP -o letters.txt\n"
        "  zro cat http://127.0.0.1:8000/big.iso -o big.iso\n");
    addOption(command, "URI", options->input, " ", "A path, a URI, or - for standard input")
        ->required();
    command.add_flag("--gunzip", options->gunzip, "Unpack gzip data");
    auto* to =
        addOption(command, "--to-encoding", options->to, "NAME", "Write the text in this encoding")
            ->check(targetEncodingError);
    addOption(command, "--from-encoding", options->from, "NAME",
              "The encoding of the text; without it, it is guessed")
        ->needs(to)
        ->check(sourceEncodingError);
    addOption(command, "-o,--output", options->output, "FILE",
              "Write here; to standard output without it");
    setTask(command, task, options, cat);
}

}  // namespace zro
