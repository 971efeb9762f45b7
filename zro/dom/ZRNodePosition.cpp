// The source position of nodes that have none of their own.
#include "zro/dom/ZRNode.h"

#include <utility>

#include "zro/dom/ZRElement.h"

namespace ZroCommon {
namespace {

/// A search for a position that runs in this thread, within the one that asked for it.
struct Search {
    const ZRNode* from;
    const ZRNode* asked;
    const Search* outer;
};

/// Makes a search the current one of the thread.
class SearchScope {
public:
    SearchScope(const Search*& current, const Search& search)
        : m_current(current), m_outer(std::exchange(current, &search)) {}
    SearchScope(const SearchScope&) = delete;
    SearchScope& operator=(const SearchScope&) = delete;
    ~SearchScope() { m_current = m_outer; }

private:
    const Search*& m_current;
    const Search* m_outer;
};

/// The innermost search for a line, and that for a column.
template <int (ZRNode::*kPosition)() const>
thread_local constinit const Search* t_search = nullptr;

/// Whether the node has to answer with its own position alone: it is the one that a search asks,
/// which would otherwise ask all nodes before and above it again, or a search from it runs already.
bool asksForOwn(const Search* search, const ZRNode& node) {
    if (search != nullptr && search->asked == &node) {
        return true;
    }
    while (search != nullptr && search->from != &node) {
        search = search->outer;
    }
    return search != nullptr;
}

template <int (ZRNode::*kPosition)() const>
int positionBefore(const ZRNode& node) {
    const Search*& current = t_search<kPosition>;
    if (asksForOwn(current, node)) {
        return -1;
    }
    Search search{&node, &node, current};
    const SearchScope scope(current, search);
    for (const ZRNode* at = &node; at != nullptr;) {
        const ZRNode* previous = at->getPreviousSibling();
        at = previous != nullptr ? previous : at->getParentNode();
        search.asked = at;
        const int found = at != nullptr ? (at->*kPosition)() : -1;
        if (found != -1) {
            return found;
        }
    }
    return -1;
}

}  // namespace

int ZRNode::getSourceLineNumber() const {
    return positionBefore<&ZRNode::getSourceLineNumber>(*this);
}

int ZRNode::getSourceColumnNumber() const {
    return positionBefore<&ZRNode::getSourceColumnNumber>(*this);
}

int ZRElement::getSourceLineNumber() const {
    return m_sourceLine != -1 ? m_sourceLine : ZRNode::getSourceLineNumber();
}

int ZRElement::getSourceColumnNumber() const {
    return m_sourceColumn != -1 ? m_sourceColumn : ZRNode::getSourceColumnNumber();
}

}  // namespace ZroCommon
