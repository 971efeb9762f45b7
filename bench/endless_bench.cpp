// A document of a gigabyte, made while it is read, is walked in pull mode; each finished child of
// the flow is removed. What counts is the peak of resident memory.

#include <algorithm>
#include <istream>
#include <stdexcept>
#include <streambuf>

#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRElement.h"

#include "bench/support/Memory.h"
#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

constexpr std::string_view kFront =
    R"xml(<?xml version="1.0"?>
<fo:root xmlns:fo="http://www.w3.org/1999/XSL/Format"><fo:page-sequence master-reference="body">
<fo:flow flow-name="xsl-region-body">)xml";
constexpr std::string_view kSection = R"xml(
  <fo:block space-before.optimum="1em" space-before.minimum="0.8em" space-before.maximum="1.2em">
    <fo:block font-family="sans-serif" font-weight="bold" keep-with-next="always">On paper</fo:block>
    <fo:block text-align="justify">A page of a long report is set, and once it is, nobody needs the
      <fo:inline font-style="italic">nodes</fo:inline> that it came from: they are removed, and the
      next ones are read.</fo:block>
    <fo:list-block provisional-distance-between-starts="1.5em"><fo:list-item>
      <fo:list-item-label end-indent="label-end()"><fo:block>&#x2022;</fo:block></fo:list-item-label>
      <fo:list-item-body start-indent="body-start()"><fo:block>one &amp; two</fo:block>
      </fo:list-item-body></fo:list-item></fo:list-block>
  </fo:block>)xml";
constexpr std::string_view kBack = "</fo:flow></fo:page-sequence></fo:root>";

/// Serves the front once, the section as often as the size asks for, and the back once.
class EndlessBuffer : public std::streambuf {
public:
    explicit EndlessBuffer(double bytes)
        : m_sections(static_cast<std::uint64_t>(bytes / static_cast<double>(kSection.size()))) {}

    std::uint64_t sections() const { return m_sections; }

protected:
    int_type underflow() override {
        const std::string_view piece = nextPiece();
        char* begin = const_cast<char*>(piece.data());  // the get area is only read
        setg(begin, begin, begin + piece.size());
        return piece.empty() ? traits_type::eof() : traits_type::to_int_type(piece.front());
    }

private:
    std::string_view nextPiece() {
        const std::uint64_t turn = m_turn++;
        if (turn == 0) {
            return kFront;
        }
        if (turn <= m_sections) {
            return kSection;
        }
        return turn == m_sections + 1 ? kBack : std::string_view();
    }

    std::uint64_t m_sections;
    std::uint64_t m_turn = 0;
};

/// Visits a whole subtree, which loads it.
std::uint64_t walk(ZRNode& top) {
    std::uint64_t count = 1;
    ZRNode* node = top.getFirstChild();
    while (node != nullptr) {
        ++count;
        ZRNode* next = node->getFirstChild();
        while (next == nullptr && node != &top) {
            next = node->getNextSibling();
            node = next == nullptr ? node->getParentNode() : node;
        }
        node = next;
    }
    return count;
}

std::uint64_t walkAndRemove(ZRNode& flow) {
    std::uint64_t count = 0;
    ZRNode* child = flow.getFirstChild();
    while (child != nullptr) {
        count += walk(*child);
        ZRNode* next = child->getNextSibling();
        flow.removeChild(child);
        child = next;
    }
    return count;
}

std::uint64_t readAll(std::istream& in) {
    const ZRPtr<ZRDocument> document(new ZRDocument);
    document->setPullMode(true);
    document->load(in);
    ZRNode* flow = document->getDocumentElement()->getFirstChild()->getFirstChild();
    while (!flow->isElementNode()) {
        flow = flow->getNextSibling();
    }
    return walkAndRemove(*flow);
}

void run(const Options& options) {
    const double bytes = options.megabytes * 1024 * 1024;
    EndlessBuffer buffer(bytes);
    std::istream in(&buffer);
    std::uint64_t nodes = 0;
    resetPeakResident();
    const double time = timed(cpuNow, [&] { nodes = readAll(in); });
    if (nodes < 10 * buffer.sections()) {
        throw std::runtime_error("the walk ended early");
    }
    Record("endless", "stream", "zro")
        .set("bytes", bytes)
        .set("ns", time)
        .set("nodes", static_cast<double>(nodes))
        .set("peak", peakResident());
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
