#pragma once

#include <cstddef>
#include <vector>

#include "zro/xml/internal/LiteralReader.h"
#include "zro/xml/internal/ParserState.h"

namespace ZroCommon::internal {

/// Reads start and end tags, with their attributes and namespaces.
class TagScanner {
public:
    TagScanner(ParserState& state, LiteralReader& literals)
        : m_state(state), m_literals(literals) {}

    /// Reads a start tag behind its "<".
    void readStartTag();
    /// Reads an end tag behind its "</".
    void readEndTag();

    /// Gives the memory of deep documents and large tags back.
    void shrink();

private:
    void readNewName(QName& name);
    void noteOpenName();
    bool readExpectedEndTag();
    void readAttributes();
    bool readPlainAttributes();
    const char16_t* readPlainAttribute(const char16_t* name, const char16_t* end,
                                       KnownName*& before);
    KnownName* findPlainName(const char16_t* name, const char16_t* end) const;
    void readAttribute();
    void declareNamespace(Attribute& attribute);
    void readTagEnd(char32_t c);
    void declareRootConveniences(ZRName local);
    void resolveElement(const QName& name);
    void noteRoot(const QName& name);
    void resolveAttributes();
    void reportAttributes();
    bool resolvePrefix(Attribute& attribute);
    void findDuplicates();
    void findDuplicatesAmongMany();

    ParserState& m_state;
    LiteralReader& m_literals;
    std::vector<const KnownName*> m_openNames;  // by depth; a guess at what ends the element
    std::vector<std::size_t> m_duplicates;
    std::vector<std::size_t> m_order;
};

}  // namespace ZroCommon::internal
