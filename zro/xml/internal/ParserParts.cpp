#include "zro/xml/internal/ParserParts.h"

#include <utility>

#include "zro/vocabulary/internal/SharedNames.h"

namespace ZroCommon::internal {
namespace {

// What a thread keeps from one parser to the next.
struct Kept {
    std::unique_ptr<ParserParts> parts;

    ~Kept();
};

// Parsers of static and thread-wide objects may end behind the thread's own objects.
constinit thread_local bool s_threadEnds = false;
thread_local Kept s_kept;

Kept::~Kept() {
    s_threadEnds = true;
}

// Behind `cleanup` no text is a builtin name any more.
bool areNamesForgotten() {
    return findBuiltinName(u"xml") == ZRN_EMPTY;
}

void rest(ParserParts& parts) {
    parts.state.rest();
    parts.literals.shrink();
    parts.tags.shrink();
}

}  // namespace

std::unique_ptr<ParserParts> takeParserParts() {
    std::unique_ptr<ParserParts> parts;
    if (!s_threadEnds) {
        parts = std::move(s_kept.parts);
    }
    if (parts == nullptr || areNamesForgotten()) {
        return std::make_unique<ParserParts>();
    }
    parts->state.wake();
    return parts;
}

void giveParserParts(std::unique_ptr<ParserParts> parts) noexcept {
    try {
        rest(*parts);
    } catch (...) {
        return;  // without memory there is nothing to keep
    }
    if (!s_threadEnds && s_kept.parts == nullptr) {
        s_kept.parts = std::move(parts);
    }
}

void forgetParserParts() {
    if (!s_threadEnds) {
        s_kept.parts.reset();
    }
}

}  // namespace ZroCommon::internal
