#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "zro/dom/ZRDocument.h"
#include "zro/vocabulary/ZRName.h"
#include "zro/xml/ZRXmlParser.h"

namespace zro {

/// What a tree is made of.
class TreeStatistics {
public:
    struct Namespace {
        ZroCommon::ZRName prefix;  ///< the first one that stood for it
        std::uint64_t elements = 0;
        std::uint64_t attributes = 0;
    };

    /// \param depth  of the node, 1 for the document element
    void add(ZroCommon::ZRNode& node, std::uint64_t depth);

    std::uint64_t elements() const { return m_elements; }
    std::uint64_t attributes() const { return m_attributes; }
    /// Attributes that declare a namespace; they are counted among the attributes too.
    std::uint64_t declarations() const { return m_declarations; }
    std::uint64_t texts() const { return m_texts; }
    std::uint64_t textUnits() const { return m_textUnits; }
    std::uint64_t depth() const { return m_depth; }

    /// Distinct local names of elements and attributes.
    std::uint64_t names() const { return m_names.size(); }
    /// Those of them that are not builtin.
    std::uint64_t newNames() const;

    ZroCommon::ZRName rootNamespace() const { return m_rootNamespace; }
    ZroCommon::ZRName rootPrefix() const { return m_rootPrefix; }
    ZroCommon::ZRName rootName() const { return m_rootName; }

    /// In the order of their first use.
    const std::vector<std::pair<ZroCommon::ZRName, Namespace>>& namespaces() const {
        return m_namespaces;
    }

    /// Properties of formatting objects by number of uses, the most used first.
    std::vector<std::pair<ZroCommon::ZRName, std::uint64_t>> properties(std::size_t most) const;

private:
    void addElement(ZroCommon::ZRNode& element);
    void addAttribute(const ZroCommon::ZRNode& attribute, bool isFormattingObject);
    Namespace& namespaceOf(ZroCommon::ZRName uri, ZroCommon::ZRName prefix);

    std::uint64_t m_elements = 0;
    std::uint64_t m_attributes = 0;
    std::uint64_t m_declarations = 0;
    std::uint64_t m_texts = 0;
    std::uint64_t m_textUnits = 0;
    std::uint64_t m_depth = 0;
    ZroCommon::ZRName m_rootNamespace;
    ZroCommon::ZRName m_rootPrefix;
    ZroCommon::ZRName m_rootName;
    std::unordered_set<std::int32_t> m_names;
    std::vector<std::pair<ZroCommon::ZRName, Namespace>> m_namespaces;
    std::unordered_map<std::int32_t, std::size_t> m_namespaceIndex;
    std::unordered_map<std::int32_t, std::uint64_t> m_properties;
};

/// What a tree hides: counted by a pass over the tokens of the document.
struct TokenStatistics {
    std::uint64_t comments = 0;
    std::uint64_t processingInstructions = 0;
    std::uint64_t cdataSections = 0;
    std::uint64_t references = 0;
};

/// Walks over the whole tree.
TreeStatistics statisticsOf(ZroCommon::ZRDocument& document);

/// Walks over the tree as it is loaded, and lets go of every node that has been seen.
TreeStatistics consume(ZroCommon::ZRDocument& document);

/// Reads the tokens that are left in a parser with its input set.
TokenStatistics countTokens(ZroCommon::ZRXmlParser& parser);

}  // namespace zro
