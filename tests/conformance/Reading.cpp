#include "tests/conformance/Reading.h"

#include <algorithm>
#include <sstream>
#include <vector>

#include "tests/support/Errors.h"
#include "tests/support/Sha256.h"
#include "zro/dom/ZRAttr.h"
#include "zro/dom/ZRTextNode.h"
#include "zro/dom/ZRTreeIterator.h"
#include "zro/xml/ZRXmlUtil.h"

namespace ZroCommon::testing {
namespace {

UnicodeString qualified(ZRName prefix, ZRName name) {
    return ZRXmlUtil::makeQNameStr(prefix.toString(), name.toString());
}

class FactsReader {
public:
    FactsReader(ZRXmlParser& parser, Facts& facts) : m_parser(parser), m_facts(facts) {}

    void run() {
        for (;;) {
            switch (m_parser.next()) {
            case ZRXmlParser::START_TAG: startTag(); break;
            case ZRXmlParser::TEXT: text(m_parser.getText()); break;
            case ZRXmlParser::END_DOCUMENT:
                m_facts.textSha256 = m_text.hex();
                m_facts.tagsSha256 = m_tags.hex();
                return;
            default: break;
            }
        }
    }

private:
    void startTag() {
        ++m_facts.elements;
        m_facts.maxDepth =
            std::max(m_facts.maxDepth, static_cast<std::size_t>(m_parser.getDepth()));
        m_tags.add(utf8(qualified(m_parser.getPrefix(), m_parser.getName())) + "\n");
        for (int i = 0; i < m_parser.getAttributeCount(); ++i) {
            ++m_facts.attributes;
            const auto name =
                qualified(m_parser.getAttributePrefix(i), m_parser.getAttributeName(i));
            m_tags.add(utf8(name) + "=" + utf8(m_parser.getAttributeValue(i)) + "\n");
        }
    }

    void text(const UnicodeString& text) {
        m_facts.textCharacters += static_cast<std::size_t>(text.countChar32());
        m_text.add(utf8(text));
    }

    ZRXmlParser& m_parser;
    Facts& m_facts;
    Sha256 m_text;
    Sha256 m_tags;
};

/// Line ends and tabs that came from references, which are written as they are and then read as a
/// line feed, and in a value as a blank.
std::string dumpSavedText(UnicodeString text, bool isValue) {
    for (int32_t i = 0; i < text.length(); ++i) {
        const char16_t unit = text[i];
        const bool isLineEnd =
            unit == u'\n' || unit == u'\r' || unit == u'\u0085' || unit == u'\u2028';
        if (isLineEnd || (isValue && unit == u'\t')) {
            text.setCharAt(i, isValue ? u' ' : u'\n');
        }
    }
    return utf8(text);
}

/// Saving keeps neither the order of attributes nor declarations that repeat one in force, nor
/// empty values.
std::string dumpSavedAttribute(const ZRNode& attr) {
    if (attr.getNamespaceUri() == ZRN_ns_xmlns || attr.getText().isEmpty()) {
        return {};
    }
    return " {" + utf8(attr.getNamespaceUri().toString()) + '}'
           + utf8(attr.getLocalName().toString()) + "=\"" + dumpSavedText(attr.getText(), true)
           + '"';
}

std::string dumpAttribute(const ZRNode& attr) {
    return " {" + utf8(attr.getNamespaceUri().toString()) + '}'
           + utf8(attr.getNodeName().toString()) + "=\"" + utf8(attr.getText()) + '"';
}

void dumpNode(std::ostream& out, ZRNode& node, int depth, TreeDump kind) {
    out << std::string(static_cast<std::size_t>(depth), ' ') << node.getNodeType() << ' '
        << utf8(node.getNamespaceUri().toString()) << ' ' << utf8(node.getNodeName().toString());
    if (node.isText()) {
        out << " \""
            << (kind == TreeDump::Exact ? utf8(node.getText())
                                        : dumpSavedText(node.getText(), false))
            << '"';
    }
    std::vector<std::string> attributes;
    if (ZRNamedNodeMap* map = node.getAttributes()) {
        for (ZRNode* attr = map->getFirstNode(); attr != nullptr; attr = map->getNextNode(attr)) {
            attributes.push_back(kind == TreeDump::Exact ? dumpAttribute(*attr)
                                                         : dumpSavedAttribute(*attr));
        }
    }
    if (kind == TreeDump::AsSaved) {
        std::sort(attributes.begin(), attributes.end());
    }
    for (const std::string& attribute : attributes) {
        out << attribute;
    }
    out << '\n';
}

}  // namespace

std::string describe(const ZRError& error) {
    const std::string message = utf8(error.getRawMessage());
    std::ostringstream out;
    out << "0x" << std::hex << std::uppercase << error.getErrorCode() << ' '
        << message.substr(0, message.find('\n'));
    return out.str();
}

Facts readFacts(const std::string& path, const ZRLimits& limits) {
    Facts facts;
    try {
        const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
        parser->setLimits(limits);
        parser->setInput(text(path), UnicodeString(), UnicodeString());
        FactsReader(*parser, facts).run();
    } catch (const ZRError& error) {
        facts.error = describe(error);
        facts.code = error.getErrorCode();
    }
    return facts;
}

std::string dumpTree(ZRDocument& document, TreeDump kind) {
    std::ostringstream out;
    ZRTreeIterator walk(&document, ZRTreeIterator::PRE_AND_POST_ORDER);
    int depth = 0;
    while (ZRNode* node = walk.nextNode()) {
        const bool leaves = walk.atPostVisit() && !node->isText();
        depth -= leaves ? 1 : 0;
        if (!leaves) {
            dumpNode(out, *node, depth, kind);
            depth += node->isText() ? 0 : 1;
        }
    }
    return out.str();
}

TreeOutcome loadBothWays(const std::string& path) {
    TreeOutcome outcome;
    const UnicodeString uri = text(path);
    try {
        ZRDocument whole;
        whole.load(uri);
        ZRDocument pulled;
        pulled.setPullMode(true);
        pulled.load(uri);
        outcome.pullModeIsEqual =
            dumpTree(pulled, TreeDump::Exact) == dumpTree(whole, TreeDump::Exact);
        std::ostringstream saved;
        whole.save(saved, nullptr, u"UTF-8");
        std::istringstream again(saved.str());
        ZRDocument reloaded;
        reloaded.load(again);
        outcome.savedIsEqual =
            dumpTree(reloaded, TreeDump::AsSaved) == dumpTree(whole, TreeDump::AsSaved);
    } catch (const ZRError& error) {
        outcome.error = describe(error);
    }
    return outcome;
}

}  // namespace ZroCommon::testing
