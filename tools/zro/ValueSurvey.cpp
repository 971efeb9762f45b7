#include "tools/zro/ValueSurvey.h"

#include <algorithm>

#include "zro/dom/ZRNodeList.h"
#include "zro/dom/ZRTreeIterator.h"
#include "zro/values/ZRValue.h"

#include "tools/zro/Names.h"
#include "tools/zro/Text.h"
#include "tools/zro/Values.h"

namespace zro {

using ZroCommon::ZRN_ns_fo;
using ZroCommon::ZRNamedNodeMap;
using ZroCommon::ZRNode;
using ZroCommon::ZRTreeIterator;
using ZroCommon::ZRValue;
using Json = nlohmann::ordered_json;

namespace {

bool isColorProperty(const UnicodeString& name) {
    return name.endsWith(u"color", 5);
}

// "name", "integer", "color", "unknown"; a real by its unit.
std::string kindOf(const ZRValue& value) {
    if (value.isColor() || value.isReal() || value.isString()) {
        return unitName(value);
    }
    return typeName(value);
}

}  // namespace

ValueSurvey::ValueSurvey(ZroCommon::ZRDocument& document) {
    ZRTreeIterator iterator(&document, ZRTreeIterator::PRE_ORDER);
    while (ZRNode* node = iterator.nextNode()) {
        if (node->isElementNode() && node->getNamespaceUri() == ZRN_ns_fo
            && node->hasAttributes()) {
            addElement(*node);
        }
    }
}

void ValueSurvey::addElement(ZRNode& element) {
    ZRNamedNodeMap& map = *element.getAttributes();
    for (ZRNode* node = map.getFirstNode(); node != nullptr; node = map.getNextNode(node)) {
        if (node->getNamespaceUri().isEmpty() && isPropertyName(node->getLocalName())) {
            addProperty(element, *node);
        }
    }
}

void ValueSurvey::addProperty(const ZRNode& element, const ZRNode& attribute) {
    const UnicodeString& name = attribute.getLocalName().toString();
    const UnicodeString text = attribute.getText();
    const ZRValue value =
        isColorProperty(name) ? ZRValue::parseColor(text, true) : ZRValue::parse(text);
    ++m_properties[toUtf8(name)][kindOf(value)];
    if (value.isUnknownString()) {
        m_strays.push_back({element.getSourceLineNumber(),
                            qualifiedName(element.getPrefix(), element.getLocalName()),
                            toUtf8(name), toUtf8(text)});
    }
}

namespace {

void printJson(Session& session, const std::string& file, const ValueSurvey& survey) {
    for (const auto& [property, kinds] : survey.properties()) {
        printLine(session, {{"kind", "property"}, {"property", property}, {"values", Json(kinds)}});
    }
    for (const ValueSurvey::Stray& stray : survey.strays()) {
        printLine(session, {{"kind", "unknown"},
                            {"file", file},
                            {"line", stray.line},
                            {"element", stray.element},
                            {"property", stray.property},
                            {"text", stray.text}});
    }
}

std::string listed(const ValueSurvey::Kinds& kinds) {
    std::string list;
    for (const auto& [kind, uses] : kinds) {
        list += (list.empty() ? "" : ", ") + kind + " " + withThousands(uses);
    }
    return list;
}

void printText(Session& session, const std::string& file, const ValueSurvey& survey) {
    std::size_t width = 0;
    for (const auto& [property, kinds] : survey.properties()) {
        width = std::max(width, property.size());
    }
    session.out() << "\n";
    for (const auto& [property, kinds] : survey.properties()) {
        session.out() << session.outStyle().faint(property
                                                  + std::string(width - property.size() + 2, ' '))
                      << listed(kinds) << "\n";
    }
    session.out() << "\n" << counted(survey.strays().size(), "unknown string") << "\n";
    for (const ValueSurvey::Stray& stray : survey.strays()) {
        session.out() << file << ":" << stray.line << ": " << stray.element << " " << stray.property
                      << "=\"" << escaped(fromUtf8(stray.text)) << "\"\n";
    }
}

}  // namespace

void printSurvey(Session& session, const std::string& file, const ValueSurvey& survey) {
    if (session.settings().json) {
        printJson(session, file, survey);
    } else {
        printText(session, file, survey);
    }
}

}  // namespace zro
