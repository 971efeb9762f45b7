#include "tools/zro/TextPassage.h"

#include <array>
#include <string_view>
#include <utility>

#include "zro/streams/transcoding/ZRTCVOStream.h"
#include "zro/streams/transcoding/ZRTCVStream.h"

#include "tools/zro/Target.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::ZRTCVOStream;
using ZroCommon::ZRTCVStream;

/// How a text went from one stream to another.
struct Passage {
    std::size_t malformed = 0;  // characters U+FFFD, which stand for malformed bytes
    bool isCut = false;
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
    return passage;
}

Passage write(ZRTCVStream& text, const Conversion& conversion, std::ostream& target) {
    ZRTCVOStream output(&target, conversion.to.c_str(), false, ZRTCVOStream::LF_CONVERT(0), false);
    output.setLimit(conversion.limit);
    return passOn(text, output);
}

std::string lackOf(const std::string& encoding) {
    return "no converter for the encoding \"" + encoding + "\"";
}

}  // namespace

PeekedBytes::PeekedBytes(std::istream& source) {
    m_headBytes.resize(kHead);
    source.read(m_headBytes.data(), kHead);
    m_headBytes.resize(static_cast<std::size_t>(source.gcount()));
    m_head.str(m_headBytes);
    m_all.setKeepMemory(false);
    m_all.setSource(&m_head, false);
    m_all.setSource(&source, false);
}

std::optional<std::string> PeekedBytes::detectEncoding() const {
    std::istringstream head(m_headBytes);
    UnicodeString name;
    bool flag = false;
    if (!ZRTCVStream::detectEncoding(&head, name, flag)) {
        return std::nullopt;
    }
    return toUtf8(name);
}

std::string sourceEncodingError(const std::string& name) {
    std::istringstream nothing;
    return ZRTCVStream(&nothing, name.c_str()).is_open() ? "" : lackOf(name);
}

std::string targetEncodingError(const std::string& name) {
    std::ostringstream nowhere;
    const ZRTCVOStream stream(&nowhere, name.c_str(), false, ZRTCVOStream::LF_CONVERT(0), false);
    return stream.is_open() ? "" : lackOf(name);
}

void failToDetect(Session& session, const Input& input) {
    session.fail(input.shownName(), "the encoding is not recognised",
                 "in short or binary files it cannot be");
}

void convertText(Session& session, const Input& input, PeekedBytes& bytes,
                 const Conversion& conversion) {
    const std::optional<std::string> from =
        conversion.from.empty() ? bytes.detectEncoding() : std::optional(conversion.from);
    if (!from) {
        failToDetect(session, input);
        return;
    }
    ZRTCVStream text(&bytes.all(), from->c_str());
    if (!text.is_open()) {
        session.fail("", lackOf(*from));
        return;
    }
    auto target = Target::open(session, conversion.output, input);
    if (!target) {
        return;
    }
    const Passage passage = write(text, conversion, target->stream());
    session.end(input);
    if (passage.malformed != 0) {
        session.note(input.shownName(),
                     counted(passage.malformed, "character") + " U+FFFD, as malformed bytes give");
    }
    if (passage.isCut) {
        session.note(input.shownName(), "cut at " + withThousands(conversion.limit) + " bytes");
    }
    target->finish();
}

}  // namespace zro
