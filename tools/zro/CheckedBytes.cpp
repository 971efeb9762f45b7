#include "tools/zro/CheckedBytes.h"

#include <chrono>
#include <cstdint>
#include <utility>

#include "zro/foundation/ZRResourceLimits.h"

#include "tools/zro/Checksum.h"
#include "tools/zro/Opening.h"
#include "tools/zro/PackageInput.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::ZRResourceLimits;
using ZroCommon::ZRUri;

constexpr char16_t kSeparator[] = u"!/";

// Whoever made a package may have packed a giant in it.
constexpr std::size_t kMostHeld = std::size_t{256} * 1024 * 1024;

/// The data of a package entry.
class EntryBuffer : public BlockBuffer {
public:
    explicit EntryBuffer(std::unique_ptr<std::istream> source) : m_source(std::move(source)) {}

    bool isAtEnd() const { return m_isAtEnd; }
    const Checksum& sum() const { return m_sum; }

protected:
    std::size_t readBlock(std::span<char> room) override {
        const std::size_t count = readReady(*m_source->rdbuf(), room);
        m_sum.add({room.data(), count});
        m_isAtEnd = count == 0;
        return count;
    }
    std::streamsize showmanyc() override { return m_source->rdbuf()->in_avail(); }

private:
    std::unique_ptr<std::istream> m_source;
    Checksum m_sum;
    bool m_isAtEnd = false;
};

// Finds the header in the package, which the library reads by itself when it opens the entry.
std::string faultOfEntry(Session& session, const UnicodeString& uri, const EntryBuffer& entry) {
    const int32_t end = uri.lastIndexOf(kSeparator);
    const auto package = seekable(session.openFreely(UnicodeString(uri, 0, end)), kMostHeld);
    if (!entry.isAtEnd() || package == nullptr) {
        return "";
    }
    const ZroCommon::ZRZipFile entries(package.get(), false);
    const auto* const header = entries.getFileEntry(UnicodeString(uri, end + 2));
    return header == nullptr ? "" : faultOfData(*package, *header, entry.sum());
}

CheckedBytes entryOf(Session& session, const UnicodeString& uri,
                     std::unique_ptr<std::istream> source) {
    auto stream = std::make_unique<OwningStream<EntryBuffer>>(std::move(source));
    const EntryBuffer& entry = stream->buffer();
    return {std::move(stream), [&session, uri, &entry] {
                return faultOfEntry(session, uri, entry);
            }};
}

/// The answer of an address. The library does not say how long it should have been, nor what ended
/// it; of the limits it can be seen whether they were reached.
class AnswerBuffer : public BlockBuffer {
public:
    explicit AnswerBuffer(std::unique_ptr<std::istream> source) : m_source(std::move(source)) {}

    std::string fault() const {
        return m_isLimited ? "may be cut by --limits behind byte " + withThousands(m_total) : "";
    }

protected:
    std::size_t readBlock(std::span<char> room) override {
        const auto before = Clock::now();
        const std::size_t count = readReady(*m_source->rdbuf(), room);
        m_total += count;
        m_isLimited = count == 0 && isLimited(Clock::now() - m_start, Clock::now() - before);
        return count;
    }

private:
    using Clock = std::chrono::steady_clock;

    bool isLimited(Clock::duration whole, Clock::duration last) const {
        constexpr std::uint64_t kPiece =
            std::uint64_t{256} * 1024;  // of which the first is missing
        const auto limits = ZRResourceLimits::getCurrent();
        return (limits.fetchedBytes != 0 && m_total + kPiece > limits.fetchedBytes)
               || isOver(whole, limits.fetchSeconds) || isOver(last, limits.idleSeconds);
    }

    static bool isOver(Clock::duration time, std::uint32_t seconds) {
        return seconds != 0 && time >= std::chrono::seconds(seconds);
    }

    std::unique_ptr<std::istream> m_source;
    Clock::time_point m_start = Clock::now();
    std::uint64_t m_total = 0;
    bool m_isLimited = false;
};

}  // namespace

CheckedBytes openChecked(Session& session, const Input& input) {
    auto source = openInput(session, input);
    const ZRUri uri(input.uri(), ZroCommon::URISTR_PATH_OR_URI_CSS);
    if (source == nullptr || input.isStandardInput() || !input.path().empty()) {
        return {std::move(source), [] {
                    return std::string();
                }};
    }
    if (uri.isJarScheme() && isLocal(uri.toString())) {
        return entryOf(session, uri.toString(), std::move(source));
    }
    auto stream = std::make_unique<OwningStream<AnswerBuffer>>(std::move(source));
    const AnswerBuffer& answer = stream->buffer();
    return {std::move(stream), [&answer] {
                return answer.fault();
            }};
}

}  // namespace zro
