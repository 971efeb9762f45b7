#pragma once

#include <istream>

#include "zro/xml/internal/LiteralReader.h"
#include "zro/xml/internal/ParserState.h"

namespace ZroCommon::internal {

/// Brings inputs to the point where their content can be read: checks streams, finds encodings by
/// bytes and by declaration, opens external entities.
class InputOpener {
public:
    InputOpener(ParserState& state, LiteralReader& literals)
        : m_state(state), m_literals(literals) {}

    /// \throws ZRError  when the innermost input has no stream, or an empty or failed one
    void checkStream();

    /// The start of the document: position and encoding.
    void startDocument();

    /// Takes an encoding's name as a preset for `startDocument`.
    void presetEncoding(const UnicodeString& name);

    /// Reads an XML declaration behind its "<?xml".
    void readXmlDeclaration();

    /// Reads an external entity from now on. One that cannot be opened is an error when it is a
    /// file, else it is empty.
    void openEntity(const UnicodeString& systemId);

private:
    enum class NameResult : unsigned char { Mode, Transcoded, Unknown };

    void sniff();
    NameResult applyName(const UnicodeString& name, EncodingMode& mode);
    bool transcode(const UnicodeString& name);
    void setMode(EncodingMode mode);
    void declareEncoding(const UnicodeString& name);
    void declareEntityEncoding(const UnicodeString& name);
    void readStandalone(bool spaceSkipped);
    void readEquals(const char16_t* name);
    void readDeclarationEnd();
    bool findTextDeclaration();
    void readTextDeclaration();

    ParserState& m_state;
    LiteralReader& m_literals;
};

}  // namespace ZroCommon::internal
