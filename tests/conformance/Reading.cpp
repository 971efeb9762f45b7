#include "tests/conformance/Reading.h"

#include <algorithm>
#include <sstream>

#include "tests/support/Errors.h"
#include "tests/support/Sha256.h"
#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRElement.h"
#include "zro/dom/ZRNodeList.h"
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

/// Line ends and tabs as blanks: those that came from references are written as they are, and then
/// read as others.
UnicodeString withBlanks(UnicodeString text) {
    for (const char16_t space : {u'\n', u'\r', u'\t', u'\u0085', u'\u2028'}) {
        text.findAndReplace(UnicodeString(space), u" ");
    }
    return text;
}

/// Whether they have as many nodes and the same text, and are saved as the same.
bool areEqual(ZRDocument& one, ZRDocument& other) {
    return one.getDescendantNodes()->getLength() == other.getDescendantNodes()->getLength()
           && withBlanks(one.getDocumentElement()->getInnerText())
                  == withBlanks(other.getDocumentElement()->getInnerText())
           && withBlanks(one.saveXml()) == withBlanks(other.saveXml());
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
        for (ZRTreeIterator walk(&pulled); walk.nextNode() != nullptr;) {
        }
        outcome.pullModeIsEqual = areEqual(pulled, whole);
        ZRDocument reloaded;
        reloaded.loadXml(whole.saveXml());
        outcome.savedIsEqual = areEqual(reloaded, whole);
    } catch (const ZRError& error) {
        outcome.error = describe(error);
    }
    return outcome;
}

}  // namespace ZroCommon::testing
