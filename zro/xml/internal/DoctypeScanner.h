#pragma once

#include <string_view>

#include "zro/xml/internal/InputOpener.h"
#include "zro/xml/internal/LiteralReader.h"
#include "zro/xml/internal/ParserState.h"

namespace ZroCommon::internal {

/// Reads a document type declaration and the declarations in its subsets, for their entities. All
/// other declarations are stepped over by counting angle brackets.
class DoctypeScanner {
public:
    DoctypeScanner(ParserState& state, LiteralReader& literals, InputOpener& opener)
        : m_state(state), m_literals(literals), m_opener(opener) {}

    /// Reads a document type behind its "<!DOCTYPE", and loads its external subset.
    void readDoctype();

    /// Reads a declaration of an external subset behind its "<!".
    void readSubsetDeclaration();
    /// Reads a character between the declarations of an external subset; a known parameter entity
    /// is replaced.
    void readSubsetText();

private:
    enum class Subset : unsigned char { Internal, External };
    struct ExternalId {
        UnicodeString publicId;
        UnicodeString systemId;
    };

    ExternalId readHead();
    ExternalId readExternalId(const UnicodeString& head);
    void readPublicId(const UnicodeString& head, ExternalId& id);
    void adoptEntities(const ExternalId& id);
    void loadSubset(const UnicodeString& systemId);

    void scanToEnd(Subset subset);
    void appendPlainRun();
    bool scanMarkup(char32_t c, Subset subset, int& depth);
    void scanString(char32_t quote);
    void scanTo(std::u16string_view ending);
    void skipIgnored();
    void replaceParameter(Subset subset);
    void openParameter(ZRName name);

    void readEntity();
    void readInternalEntity(EntityTable::Kind kind, ZRName name, char32_t quote);
    void readExternalEntity(EntityTable::Kind kind, ZRName name);
    bool readEntityPublicId(const UnicodeString& head);
    void readNotation(const UnicodeString& head);
    void readDeclarationEnd();

    bool skipSpace();
    bool requireSpace(const UnicodeString& behind);
    char32_t peek();
    bool nextIsQuote();

    ParserState& m_state;
    LiteralReader& m_literals;
    InputOpener& m_opener;
    bool m_reachedEnd = false;
};

}  // namespace ZroCommon::internal
