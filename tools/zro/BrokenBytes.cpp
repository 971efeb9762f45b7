#include "tools/zro/BrokenBytes.h"

#include "tools/zro/SourceDecoder.h"
#include "tools/zro/SourceText.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

void note(Session& session, const Input& input, std::uint64_t count) {
    auto stream = session.reopen(input);
    if (!stream) {
        return;
    }
    SourceText source(std::move(stream));
    source.moveToBroken();
    Diagnostic diagnostic;
    diagnostic.kind = Diagnostic::Kind::Note;
    diagnostic.file = input.shownName();
    diagnostic.message = "is not UTF-8: " + counted(count, "malformed sequence")
                         + (count == 1 ? "" : ", the first of them here");
    diagnostic.excerpt = source.atPosition();
    diagnostic.hint = "if it is in another encoding, the declaration has to name that: "
                      "<?xml version=\"1.0\" encoding=\"windows-1252\"?>";
    session.report(diagnostic);
}

}  // namespace

std::optional<std::uint64_t> noteBrokenBytes(Session& session, const Input& input) {
    const auto stream = session.reopen(input);
    if (!stream) {
        return std::nullopt;
    }
    const std::uint64_t count = SourceDecoder(*stream).countBroken();
    if (count != 0) {
        note(session, input, count);
    }
    return count;
}

}  // namespace zro
