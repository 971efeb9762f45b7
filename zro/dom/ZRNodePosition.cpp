// The source position of nodes that have none of their own.
#include "zro/dom/ZRNode.h"

#include <utility>

#include "zro/dom/ZRElement.h"

namespace ZroCommon {
namespace {

// While a search for a position runs, a node answers with its own one alone. Otherwise each node
// that is asked would ask all nodes before and above it again.
thread_local constinit bool t_askingForOwn = false;

class OwnOnly {
public:
    OwnOnly() : m_before(std::exchange(t_askingForOwn, true)) {}
    OwnOnly(const OwnOnly&) = delete;
    OwnOnly& operator=(const OwnOnly&) = delete;
    ~OwnOnly() { t_askingForOwn = m_before; }

private:
    bool m_before;
};

int positionBefore(const ZRNode& node, int (ZRNode::*position)() const) {
    if (t_askingForOwn) {
        return -1;
    }
    const OwnOnly own;
    for (const ZRNode* at = &node; at != nullptr;) {
        const ZRNode* previous = at->getPreviousSibling();
        at = previous != nullptr ? previous : at->getParentNode();
        const int found = at != nullptr ? (at->*position)() : -1;
        if (found != -1) {
            return found;
        }
    }
    return -1;
}

}  // namespace

int ZRNode::getSourceLineNumber() const {
    return positionBefore(*this, &ZRNode::getSourceLineNumber);
}

int ZRNode::getSourceColumnNumber() const {
    return positionBefore(*this, &ZRNode::getSourceColumnNumber);
}

int ZRElement::getSourceLineNumber() const {
    return m_sourceLine != -1 ? m_sourceLine : ZRNode::getSourceLineNumber();
}

int ZRElement::getSourceColumnNumber() const {
    return m_sourceColumn != -1 ? m_sourceColumn : ZRNode::getSourceColumnNumber();
}

}  // namespace ZroCommon
