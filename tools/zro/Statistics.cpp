#include "tools/zro/Statistics.h"

#include <algorithm>

#include "zro/dom/ZRNodeList.h"
#include "zro/dom/ZRTreeIterator.h"

#include "tools/zro/Names.h"

namespace zro {

using ZroCommon::ZRDocument;
using ZroCommon::ZRN_ns_fo;
using ZroCommon::ZRN_ns_xmlns;
using ZroCommon::ZRName;
using ZroCommon::ZRNamedNodeMap;
using ZroCommon::ZRNameEnum;
using ZroCommon::ZRNode;
using ZroCommon::ZRTreeIterator;
using ZroCommon::ZRXmlParser;

void TreeStatistics::add(ZRNode& node, std::uint64_t depth) {
    if (node.isElementNode()) {
        m_depth = std::max(m_depth, depth);
        addElement(node);
    } else if (node.isText()) {
        ++m_texts;
        m_textUnits += static_cast<std::uint64_t>(node.getText().length());
    }
}

void TreeStatistics::addElement(ZRNode& element) {
    const ZRName uri = element.getNamespaceUri();
    if (m_elements++ == 0) {
        m_rootNamespace = uri;
        m_rootPrefix = element.getPrefix();
        m_rootName = element.getLocalName();
    }
    m_names.insert(ZRNameEnum{element.getLocalName()});
    ++namespaceOf(uri, element.getPrefix()).elements;
    if (!element.hasAttributes()) {
        return;
    }
    ZRNamedNodeMap& map = *element.getAttributes();
    for (ZRNode* node = map.getFirstNode(); node != nullptr; node = map.getNextNode(node)) {
        addAttribute(*node, uri == ZRN_ns_fo);
    }
}

void TreeStatistics::addAttribute(const ZRNode& attribute, bool isFormattingObject) {
    const ZRName uri = attribute.getNamespaceUri();
    const ZRName name = attribute.getLocalName();
    ++m_attributes;
    if (uri == ZRN_ns_xmlns) {
        ++m_declarations;
        return;
    }
    m_names.insert(ZRNameEnum{name});
    if (!uri.isEmpty()) {
        ++namespaceOf(uri, attribute.getPrefix()).attributes;
    } else if (isFormattingObject && isPropertyName(name)) {
        ++m_properties[ZRNameEnum{name}];
    }
}

TreeStatistics::Namespace& TreeStatistics::namespaceOf(ZRName uri, ZRName prefix) {
    const auto [place, isNew] = m_namespaceIndex.try_emplace(ZRNameEnum{uri}, m_namespaces.size());
    if (isNew) {
        m_namespaces.push_back({uri, {prefix}});
    }
    return m_namespaces[place->second].second;
}

std::uint64_t TreeStatistics::newNames() const {
    return static_cast<std::uint64_t>(
        std::count_if(m_names.begin(), m_names.end(), [](std::int32_t number) {
            return !ZRName(static_cast<ZRNameEnum>(number)).isBuiltin();
        }));
}

std::vector<std::pair<ZRName, std::uint64_t>> TreeStatistics::properties(std::size_t most) const {
    std::vector<std::pair<ZRName, std::uint64_t>> result;
    for (const auto& [number, uses] : m_properties) {
        result.emplace_back(static_cast<ZRNameEnum>(number), uses);
    }
    std::sort(result.begin(), result.end(), [](const auto& left, const auto& right) {
        return left.second != right.second ? left.second > right.second
                                           : left.first.toString() < right.first.toString();
    });
    result.resize(std::min(most, result.size()));
    return result;
}

TreeStatistics statisticsOf(ZRDocument& document) {
    TreeStatistics statistics;
    ZRTreeIterator iterator(&document, ZRTreeIterator::PRE_AND_POST_ORDER);
    std::uint64_t depth = 0;
    while (ZRNode* node = iterator.nextNode()) {
        const bool isParent = node->isElementNode();
        if (isParent && iterator.atPostVisit()) {
            --depth;
            continue;
        }
        depth += isParent ? 1 : 0;
        if (node != &document) {
            statistics.add(*node, depth);
        }
    }
    return statistics;
}

TreeStatistics consume(ZRDocument& document) {
    TreeStatistics statistics;
    std::uint64_t depth = 0;
    ZRNode* parent = &document;
    ZRNode* node = document.getFirstChild();
    while (node != nullptr || parent != &document) {
        if (node == nullptr) {  // the parent's content has been seen
            node = parent;
            parent = node->getParentNode();
            --depth;
        } else {
            statistics.add(*node, depth + 1);
            if (ZRNode* child = node->getFirstChild()) {
                ++depth;
                parent = node;
                node = child;
                continue;
            }
        }
        ZRNode* next = node->getNextSibling();
        parent->removeChild(node);
        node = next;
    }
    return statistics;
}

TokenStatistics countTokens(ZRXmlParser& parser) {
    TokenStatistics statistics;
    for (;;) {
        switch (parser.nextToken()) {
        case ZRXmlParser::COMMENT: ++statistics.comments; break;
        case ZRXmlParser::PROCESSING_INSTRUCTION: ++statistics.processingInstructions; break;
        case ZRXmlParser::CDSECT: ++statistics.cdataSections; break;
        case ZRXmlParser::ENTITY_REF: ++statistics.references; break;
        case ZRXmlParser::END_DOCUMENT: return statistics;
        default: break;
        }
    }
}

}  // namespace zro
