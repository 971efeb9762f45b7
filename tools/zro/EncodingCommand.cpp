#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "zro/streams/ZRMemStream.h"
#include "zro/streams/transcoding/ZRTCVOStream.h"
#include "zro/streams/transcoding/ZRTCVStream.h"
#include "zro/uri/ZRUri.h"

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/Explain.h"
#include "tools/zro/Text.h"
#include "tools/zro/Values.h"

namespace zro {
namespace {

using ZroCommon::ZRMemStream;
using ZroCommon::ZRTCVOStream;
using ZroCommon::ZRTCVStream;
using ZroCommon::ZRUri;

constexpr std::size_t kDetectionBytes = 2048;  // more are not looked at

void fail(Session& session, const std::string& file, const std::string& message,
          const std::string& hint = "") {
    Diagnostic diagnostic;
    diagnostic.file = file;
    diagnostic.message = message;
    diagnostic.hint = hint;
    session.report(diagnostic);
}

/// The bytes of an input, of which the first can be looked at before all are read.
class Bytes {
public:
    Bytes(Session& session, const Input& input);

    bool isOpen() const { return m_source != nullptr; }

    /// The name of the encoding, or nothing.
    std::optional<std::string> detect();

    std::istream& all() { return m_all; }

private:
    std::unique_ptr<std::istream> m_opened;
    std::istream* m_source = nullptr;
    std::istringstream m_head;
    ZRMemStream m_all;
};

Bytes::Bytes(Session& session, const Input& input) {
    session.begin(input);
    if (input.isStandardInput()) {
        m_source = &session.standardInput();
    } else {
        UnicodeString reason;
        const ZRUri uri(input.uri(), ZroCommon::URISTR_PATH_OR_URI_CSS);
        m_opened.reset(uri.getStream(nullptr, &reason));
        m_source = m_opened.get();
        if (m_source == nullptr) {
            session.end(input);
            const std::string advice = input.path().empty() ? "" : adviceOnFile(input.path());
            fail(session, input.shownName(), "cannot be opened",
                 reason.isEmpty() ? advice : printable(reason));
            return;
        }
    }
    std::string head(kDetectionBytes, '\0');
    m_source->read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(m_source->gcount()));
    m_head.str(head);
    m_all.setKeepMemory(false);
    m_all.setSource(&m_head, false);
    m_all.setSource(m_source, false);
}

std::optional<std::string> Bytes::detect() {
    std::istringstream head(m_head.str());
    UnicodeString name;
    bool flag = false;
    if (!ZRTCVStream::detectEncoding(&head, name, flag)) {
        return std::nullopt;
    }
    return toUtf8(name);
}

void failToDetect(Session& session, const Input& input) {
    fail(session, input.shownName(), "the encoding is not recognised",
         "in short or binary files it cannot be");
}

void detect(Session& session, const std::vector<std::string>& inputs) {
    for (const std::string& argument : inputs) {
        const Input input(argument);
        Bytes bytes(session, input);
        if (!bytes.isOpen()) {
            continue;
        }
        const std::optional<std::string> name = bytes.detect();
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

// Conversion.

struct Options {
    std::string input;
    std::string output = "-";
    std::string from;
    std::string to = "UTF-8";
    std::size_t limit = 0;
};

/// How a text went from one stream to another.
struct Passage {
    std::size_t malformed = 0;  // characters U+FFFD, which stand for malformed bytes
    bool isCut = false;
    std::size_t written = 0;
};

/// Hands UTF-16LE on, but for a byte order mark at its start.
Passage passOn(std::istream& text, ZRTCVOStream& output) {
    Passage passage;
    std::array<char, 8192> block{};
    bool isStart = true;
    while (!passage.isCut && (text.read(block.data(), block.size()) || text.gcount() > 0)) {
        const std::string_view bytes(block.data(), static_cast<std::size_t>(text.gcount()));
        for (std::size_t index = 0; index < bytes.size(); index += 2) {
            passage.malformed += bytes.substr(index, 2) == "\xFD\xFF" ? 1U : 0U;
        }
        const std::size_t mark = isStart && bytes.starts_with("\xFF\xFE") ? 2 : 0;
        output.write(bytes.data() + mark, static_cast<std::streamsize>(bytes.size() - mark));
        isStart = false;
        passage.isCut = output.isLimitOver();
    }
    passage.written = output.getOutputLength();
    return passage;
}

void note(Session& session, const std::string& file, const std::string& message) {
    Diagnostic diagnostic;
    diagnostic.kind = Diagnostic::Kind::Note;
    diagnostic.file = file;
    diagnostic.message = message;
    session.report(diagnostic);
}

void convertTo(Session& session, const Options& options, const Input& input, ZRTCVStream& text,
               std::ostream& target) {
    Passage passage;
    {
        ZRTCVOStream output(&target, options.to.c_str(), false, ZRTCVOStream::LF_CONVERT(0), false);
        if (!output.is_open()) {
            fail(session, "", "unknown encoding: " + printable(fromUtf8(options.to)));
            return;
        }
        output.setLimit(options.limit);
        passage = passOn(text, output);
    }
    session.end(input);
    if (passage.malformed != 0) {
        note(session, input.shownName(),
             counted(passage.malformed, "character") + " U+FFFD, as malformed bytes give");
    }
    if (passage.isCut) {
        note(session, input.shownName(), "cut at " + withThousands(options.limit) + " bytes");
    }
    if (!target.flush() && !session.isOutputLost()) {
        fail(session, options.output, "cannot be written");
    }
}

void convert(Session& session, const Options& options) {
    const Input input(options.input);
    Bytes bytes(session, input);
    if (!bytes.isOpen()) {
        return;
    }
    const std::optional<std::string> from =
        options.from.empty() ? bytes.detect() : std::optional(options.from);
    if (!from) {
        failToDetect(session, input);
        return;
    }
    ZRTCVStream text(&bytes.all(), from->c_str());
    if (!text.is_open()) {
        fail(session, "", "unknown encoding: " + printable(fromUtf8(*from)));
        return;
    }
    if (options.output == "-") {
        convertTo(session, options, input, text, session.out());
        return;
    }
    const UnicodeString name = absoluteName(options.output);
    std::error_code ignored;
    if (std::filesystem::equivalent(localPath(name), input.path(), ignored)) {
        fail(session, options.output, "cannot be written", "this is the file that is read");
        return;
    }
    const std::unique_ptr<std::ostream> target(ZRUri().createOStream(name));
    if (target == nullptr) {
        fail(session, options.output, "cannot be written", adviceOnOutput(localPath(name)));
        return;
    }
    convertTo(session, options, input, text, *target);
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
    const auto options = std::make_shared<Options>();
    CLI::App& app = addCommand(
        command, "convert", "Write a text in another encoding",
        "Names are those of ICU and the IANA register. On reading, malformed bytes become\n"
        "U+FFFD; on writing, what the encoding does not hold becomes U+3013 or \"?\". A byte\n"
        "order mark at the start is dropped.",
        "  zro encoding convert old.txt new.txt --from Shift_JIS\n"
        "  zro encoding convert letter.txt --to EUC-JP --limit 1000\n");
    addOption(app, "IN", options->input, " ", "A path, a URI, or - for standard input")->required();
    addOption(app, "OUT", options->output, " ",
              "Where to write: a path, or - for standard output (the default)");
    addOption(app, "--from", options->from, "NAME", "The encoding; without it, it is guessed");
    addOption(app, "--to", options->to, "NAME", "The other encoding, UTF-8 without it");
    addOption(app, "--limit", options->limit, "BYTES",
              "Write no more than that; no character is divided");
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
