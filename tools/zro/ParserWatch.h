#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "zro/xml/ZRXmlParser.h"

#include "tools/zro/Explain.h"
#include "tools/zro/Input.h"
#include "tools/zro/Position.h"
#include "tools/zro/Session.h"
#include "tools/zro/SourceText.h"

namespace zro {

/// Listens to a parser's errors and reports them with position, source line and advice.
///
/// Ends the parse, by throwing a `ZRError` out of the callback, after a number of errors, and
/// behind an error that leaves nothing that could be read rightly. A run of text where none may be
/// is one error, though the parser reports each character. Lives no longer than the parser.
class ParserWatch {
public:
    /// \param mostErrors  the parse ends with the error of this number; 0 means never
    ParserWatch(Session& session, const Input& input, ZroCommon::ZRXmlParser& parser,
                int mostErrors);
    ParserWatch(const ParserWatch&) = delete;
    ParserWatch& operator=(const ParserWatch&) = delete;
    ~ParserWatch();

    /// Sets who can tell which elements are open, outermost first.
    void setOpenElements(std::function<std::vector<OpenElement>()> openElements);

    /// Opens the input on the parser, within the limits of the session.
    /// \throws ZRError
    void open();

    /// Reports an error that arrived as an exception, unless it was reported already. What comes
    /// behind it is no news: it ends the parser again without a word.
    void report(const ZroCommon::ZRError& thrown);

    /// Reports that a document without an element is none. \return `hasRoot`
    bool requireRoot(bool hasRoot);

    int errorCount() const { return m_errorCount; }
    /// Whether the parse was ended on purpose.
    bool isEnded() const { return m_ended; }

private:
    static void onError(const ZroCommon::ZRError& error, void* self);

    void add(const ZroCommon::ZRError& error, const Position& position);
    bool isRepetition(const ZroCommon::ZRError& error, const Position& position);
    bool isDocument(const UnicodeString& name) const;
    std::string shownName(const UnicodeString& name) const;
    SourceText* sourceOf(const UnicodeString& name, ReadPosition position);
    std::unique_ptr<std::istream> reopen(const UnicodeString& name) const;
    std::string reason(const ZroCommon::ZRError& error);

    Session& m_session;
    const Input& m_input;
    ZroCommon::ZRXmlParser& m_parser;
    int m_mostErrors;
    std::function<std::vector<OpenElement>()> m_openElements;
    int m_errorCount = 0;
    int m_lastCode = 0;
    Position m_lastPosition;
    bool m_ended = false;
    bool m_isOver = false;                 // whatever ended it
    std::unique_ptr<SourceText> m_source;  // of the file that had the last error
    UnicodeString m_sourceName;
};

}  // namespace zro
