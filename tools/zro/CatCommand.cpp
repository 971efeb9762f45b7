#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>

#include "zro/streams/compression/ZRGzipStream.h"
#include "zro/uri/ZRUri.h"

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/Opening.h"
#include "tools/zro/Target.h"
#include "tools/zro/TextPassage.h"

namespace zro {
namespace {

using ZroCommon::ZRGzipStream;
using ZroCommon::ZRUri;

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

/// What is packed in other bytes.
class Unpacked : public std::istream {
public:
    explicit Unpacked(std::unique_ptr<PeekedBytes> packed)
        : std::istream(nullptr), m_packed(std::move(packed)), m_stream(m_packed->all()) {
        rdbuf(m_stream.rdbuf());
    }

private:
    std::unique_ptr<PeekedBytes> m_packed;
    ZRGzipStream m_stream;
};

// Of a file the library reads all that is packed in it, of a stream the first member.
std::unique_ptr<std::istream> unpacked(Session& session, const Input& input,
                                       std::unique_ptr<PeekedBytes> packed) {
    if (!packed->head().starts_with("\x1F\x8B")) {
        session.end(input);
        session.fail(input.shownName(), "is no gzip data");
        return nullptr;
    }
    if (input.size() != 0) {
        const ZRUri uri(input.uri(), ZroCommon::URISTR_PATH_OR_URI_CSS);
        std::unique_ptr<std::istream> file(uri.getGzipStream());
        return file != nullptr ? session.counted(input, std::move(file)) : nullptr;
    }
    return std::make_unique<Unpacked>(std::move(packed));
}

std::unique_ptr<std::istream> openBytes(Session& session, const Options& options,
                                        const Input& input) {
    auto stream = openInput(session, input);
    if (stream == nullptr || !options.gunzip) {
        return stream;
    }
    return unpacked(session, input, std::make_unique<PeekedBytes>(std::move(stream)));
}

void cat(Session& session, const Options& options) {
    const Input input(options.input);
    auto stream = openBytes(session, options, input);
    if (stream == nullptr) {
        return;
    }
    if (!options.to.empty()) {
        PeekedBytes bytes(std::move(stream));
        convertText(session, input, bytes, {options.from, options.to, 0, options.output});
        return;
    }
    auto target = Target::open(session, options.output, input);
    if (!target) {
        return;
    }
    passOn(session, *stream, target->stream());
    session.end(input);
    target->finish();
}

}  // namespace

void addCatCommand(CLI::App& program, Task& task) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = addCommand(
        program, "cat", "Write what any name leads to: a file, an entry of packages, an address",
        "Opens what the library opens: paths, file:, http: and https: addresses, jar: entries,\n"
        "also of packages in packages, and data: URIs. Bytes are written as they come.\n"
        "With --gunzip, damaged data ends where the damage is.",
        "  zro cat jar:file:///tmp/book.epub!/META-INF/container.xml\n"
        "  zro cat --gunzip letters.txt.gz --to-encoding EUC-JP -o letters.txt\n"
        "  zro cat http://127.0.0.1:8000/big.iso -o big.iso\n");
    addOption(command, "URI", options->input, " ", "A path, a URI, or - for standard input")
        ->required();
    command.add_flag("--gunzip", options->gunzip, "Unpack gzip data");
    auto* to =
        addOption(command, "--to-encoding", options->to, "NAME", "Write the text in this encoding");
    addOption(command, "--from-encoding", options->from, "NAME",
              "The encoding of the text; without it, it is guessed")
        ->needs(to);
    addOption(command, "-o,--output", options->output, "FILE",
              "Write here; to standard output without it");
    setTask(command, task, options, cat);
}

}  // namespace zro
