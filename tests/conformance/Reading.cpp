#include "tests/conformance/Reading.h"

#include <algorithm>
#include <sstream>
#include <vector>

#include "tests/support/Errors.h"
#include "tests/support/Sha256.h"
#include "zro/dom/ZRAttr.h"
#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRTextNode.h"
#include "zro/dom/ZRTreeIterator.h"
#include "zro/xml/ZRXmlUtil.h"

namespace ZroCommon::testing {
namespace {

std::string qualified(ZRName prefix, ZRName name) {
    return utf8(ZRXmlUtil::makeQNameStr(prefix.toString(), name.toString()));
}

// "0x180E Unexpected text at top level of the document: U+0078 (x)"; the message's first line.
std::string describe(const ZRError& error) {
    const std::string message = utf8(error.getRawMessage());
    std::ostringstream out;
    out << "0x" << std::hex << std::uppercase << error.getErrorCode() << ' '
        << message.substr(0, message.find('\n'));
    return out.str();
}

void readTag(const ZRXmlParser& parser, Facts& facts, Sha256& tags) {
    ++facts.elements;
    facts.maxDepth = std::max(facts.maxDepth, static_cast<std::size_t>(parser.getDepth()));
    tags.add(qualified(parser.getPrefix(), parser.getName()) + "\n");
    for (int i = 0; i < parser.getAttributeCount(); ++i) {
        ++facts.attributes;
        tags.add(qualified(parser.getAttributePrefix(i), parser.getAttributeName(i)) + "="
                 + utf8(parser.getAttributeValue(i)) + "\n");
    }
}

void readAll(ZRXmlParser& parser, Facts& facts) {
    Sha256 text;
    Sha256 tags;
    for (auto event = parser.next(); event != ZRXmlParser::END_DOCUMENT; event = parser.next()) {
        if (event == ZRXmlParser::START_TAG) {
            readTag(parser, facts, tags);
        } else if (event == ZRXmlParser::TEXT) {
            facts.textCharacters += static_cast<std::size_t>(parser.getText().countChar32());
            text.add(utf8(parser.getText()));
        }
    }
    facts.textSha256 = text.hex();
    facts.tagsSha256 = tags.hex();
}

/// Every node of a tree with its names, attributes and text, one a line.
///
/// As it is saved, without what saving does not keep: the order of attributes, declarations that
/// repeat one in force, empty values, and line ends and tabs that came from references, which are
/// written as they are and then read as a line feed, and in a value as a blank.
class Dump {
public:
    Dump(ZRDocument& document, bool asSaved) : m_asSaved(asSaved) {
        ZRTreeIterator walk(&document, ZRTreeIterator::PRE_AND_POST_ORDER);
        int depth = 0;
        while (ZRNode* node = walk.nextNode()) {
            const bool leaves = walk.atPostVisit() && !node->isText();
            depth -= leaves ? 1 : 0;
            if (!leaves) {
                add(*node, depth);
                depth += node->isText() ? 0 : 1;
            }
        }
    }

    std::string text() const { return m_out.str(); }

private:
    void add(ZRNode& node, int depth) {
        m_out << std::string(static_cast<std::size_t>(depth), ' ') << node.getNodeType() << ' '
              << utf8(node.getNamespaceUri().toString()) << ' '
              << utf8(node.getNodeName().toString());
        if (node.isText()) {
            m_out << " \"" << kept(node.getText(), false) << '"';
        }
        std::vector<std::string> attributes;
        if (ZRNamedNodeMap* map = node.getAttributes()) {
            for (ZRNode* attr = map->getFirstNode(); attr != nullptr;
                 attr = map->getNextNode(attr)) {
                attributes.push_back(attribute(*attr));
            }
        }
        if (m_asSaved) {
            std::sort(attributes.begin(), attributes.end());
        }
        for (const std::string& attribute : attributes) {
            m_out << attribute;
        }
        m_out << '\n';
    }

    std::string attribute(const ZRNode& attr) const {
        if (m_asSaved && (attr.getNamespaceUri() == ZRN_ns_xmlns || attr.getText().isEmpty())) {
            return {};
        }
        const ZRName name = m_asSaved ? attr.getLocalName() : attr.getNodeName();
        return " {" + utf8(attr.getNamespaceUri().toString()) + '}' + utf8(name.toString()) + "=\""
               + kept(attr.getText(), true) + '"';
    }

    std::string kept(UnicodeString text, bool isValue) const {
        for (int32_t i = 0; i < text.length() && m_asSaved; ++i) {
            const char16_t unit = text[i];
            const bool isLineEnd =
                unit == u'\n' || unit == u'\r' || unit == u'\u0085' || unit == u'\u2028';
            if (isLineEnd || (isValue && unit == u'\t')) {
                text.setCharAt(i, isValue ? u' ' : u'\n');
            }
        }
        return utf8(text);
    }

    bool m_asSaved;
    std::ostringstream m_out;
};

bool areEqual(ZRDocument& one, ZRDocument& other, bool asSaved) {
    return Dump(one, asSaved).text() == Dump(other, asSaved).text();
}

}  // namespace

Facts readFacts(const std::string& path, const ZRLimits& limits) {
    Facts facts;
    try {
        const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
        parser->setLimits(limits);
        parser->setInput(text(path), UnicodeString(), UnicodeString());
        readAll(*parser, facts);
    } catch (const ZRError& error) {
        facts.error = describe(error);
        facts.code = error.getErrorCode();
    }
    return facts;
}

TreeOutcome loadBothWays(const std::string& path) {
    TreeOutcome outcome;
    try {
        ZRDocument whole;
        whole.load(text(path));
        ZRDocument pulled;
        pulled.setPullMode(true);
        pulled.load(text(path));
        outcome.pullModeIsEqual = areEqual(pulled, whole, false);
        std::ostringstream saved;
        whole.save(saved, nullptr, u"UTF-8");
        std::istringstream again(saved.str());
        ZRDocument reloaded;
        reloaded.load(again);
        outcome.savedIsEqual = areEqual(reloaded, whole, true);
    } catch (const ZRError& error) {
        outcome.error = describe(error);
    }
    return outcome;
}

}  // namespace ZroCommon::testing
