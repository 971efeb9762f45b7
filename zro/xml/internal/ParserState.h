#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "zro/foundation/ZRPtr.h"
#include "zro/xml/ZRXmlParser.h"
#include "zro/xml/internal/AttributeList.h"
#include "zro/xml/internal/CharReader.h"
#include "zro/xml/internal/EntityTable.h"
#include "zro/xml/internal/NameReader.h"
#include "zro/xml/internal/NamespaceManager.h"
#include "zro/xml/internal/ParserReport.h"
#include "zro/xml/internal/Scan.h"
#include "zro/xml/internal/TextBuffer.h"

namespace ZroCommon::internal {

/// The token that is known to follow, its first characters being read already.
enum class Lookahead : std::uint8_t {
    None,
    ForcedEnd,  ///< after an error that was thrown
    EmptyElementEnd,
    StartTag,  ///< behind "<"
    EndTag,    ///< behind "</"
    Text,
    Reference,    ///< behind "&"
    Instruction,  ///< behind "<?"
    Declaration,  ///< behind "<!"
    End,
};

/// What the scanners of one parser share: where they read, what they write, and how they report.
class ParserState {
public:
    using EventType = ZRXmlParser::EventType;
    using Callback = void (*)(const ZRError&, void*);

    ParserState();

    /// As before the first input, features, callback and limits excepted.
    void reset();

    /// At the end of a parser: as new, but for memory and for the texts of names, and without a
    /// hold on the numbers of names, until `wake`.
    void rest();
    /// At the beginning of another parser.
    void wake();

    bool feature(ZRXmlParser::Feature which) const;
    void setFeature(ZRXmlParser::Feature which, bool on);

    /// Reports an error: the callback gets it and parsing goes on, or it is thrown with the
    /// position and the next event will be the end.
    void report(XmlError code, const UnicodeString& first = UnicodeString(),
                const UnicodeString& second = UnicodeString());
    /// The same with a character as the argument.
    void reportCharacter(XmlError code, char32_t c);
    /// Throws whether there is a callback or not.
    [[noreturn]] void fail(XmlError code, const UnicodeString& first);

    /// "TEXT, 'a.xml', Line 1, Col 2."
    UnicodeString positionDescription() const;

    /// The next character must be this one. What stands there is used up in any case.
    /// \return whether it was; an `UnexpectedCharacter` was reported otherwise
    bool expect(char32_t wanted);

    /// Classifies what follows, if that is not done yet.
    Lookahead peekType() {
        if (lookahead == Lookahead::None || lookahead == Lookahead::EmptyElementEnd) {
            const Lookahead tag = plainTag();
            lookahead = tag != Lookahead::None ? tag : findType();
        }
        return lookahead;
    }

    int depth() const { return namespaces->depth(); }

    /// The general entity's text; empty for an external one and, if so wished, for an unknown one;
    /// otherwise null.
    const UnicodeString* generalEntity(ZRName name) const;

    std::u16string_view eventText() const {
        return plainText.data() != nullptr ? plainText : text.view(textStart);
    }
    /// Copies what lies in the window of an input that is about to go.
    void keepEvent();

    EventType event = ZRXmlParser::START_DOCUMENT;
    Lookahead lookahead = Lookahead::None;
    bool docTypeSeen = false;
    bool rootSeen = false;

    TextBuffer text;
    std::size_t textStart = 0;
    std::u16string_view plainText;  ///< of the event, in the window; of no data when `text` has it
    ZRName entityName;
    AttributeList attributes;

    CharReader reader;
    NameReader names{reader};
    EntityTable entities;
    ZRPtr<NamespaceManager> namespaces;

    Callback callback = nullptr;
    void* callbackData = nullptr;
    /// True while foreign code runs that might call the parser: its callback, a resolver.
    bool isBusy = false;

private:
    // A tag that begins in the current run; None for whatever takes a closer look.
    Lookahead plainTag() {
        const Run& run = reader.currentRun();
        if (run.end - run.at < 2 || *run.at != u'<') {
            return Lookahead::None;
        }
        const char16_t next = run.at[1];
        if (next == u'/') {
            reader.moveTo(run.at + 2);
            return Lookahead::EndTag;
        }
        if (!isAsciiNameUnit(next)) {
            return Lookahead::None;
        }
        reader.moveBefore(run.at + 1);
        return Lookahead::StartTag;
    }
    Lookahead findType();
    Lookahead markupType();
    [[noreturn]] void throwError(XmlError code, UnicodeString message);

    std::array<bool, 6> m_features{};
};

/// Marks a state as busy for the time of a call to foreign code.
class BusyScope {
public:
    explicit BusyScope(ParserState& state) : m_state(state), m_before(state.isBusy) {
        state.isBusy = true;
    }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;
    ~BusyScope() { m_state.isBusy = m_before; }

private:
    ParserState& m_state;
    bool m_before;
};

/// "prefix:local", or the local name alone.
UnicodeString qualifiedName(ZRName prefix, ZRName local);

}  // namespace ZroCommon::internal
