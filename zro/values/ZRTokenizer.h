#pragma once

#include <cstddef>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"
#include "zro/values/ZRValue.h"

namespace ZroCommon {

namespace internal {
class ValueReader;
}

/// Scans the text of a property value or the like, token by token or value by value, with one token
/// of push-back.
///
/// It has a copy of the text, which ends at the first U+0000. White space is U+0020, U+0009, U+000A
/// and U+000D; a name begins with a name start character of XML other than ":", and quotes know no
/// escapes. Any text can be read to its end; nothing is thrown. A copy goes on from the same place.
class ZRO_API ZRTokenizer {
public:
    /// A bogus text counts as empty.
    ZRTokenizer(const UnicodeString& text);

    /// The kind of the last token: -1 the end, -2 a number, -3 a name, -4 nothing read yet, -5 a
    /// quoted string, -6 a colour such as #F00; from 0 up the code unit that is the token.
    int ttype = -4;
    /// The number of a number token, the RGB of a colour.
    double nval = 0;
    /// The text of a name or string; the unit of a number, "%" too.
    UnicodeString sval;

    /// Reads a token and answers with its kind. A number of more than 98 integer digits is read
    /// digit by digit, as characters.
    int nextToken();
    /// The next read gives the last token once more.
    void pushBack() { m_isPushedBack = true; }
    /// The text that is not read yet, up to its U+0000; it lives as long as this object does not
    /// change.
    const char16_t* getPtr() const { return m_source.getBuffer() + m_position; }

    /// A token as a value: null at the end, a character as an integer of that unit. Where the unit
    /// of a number is none, it is given back, so that "10foo" is the number 10 and the name "foo".
    ZRValue nextTokenValue();
    /// The same with a sign before a number.
    ZRValue nextTokenValueSigned();
    /// The same with an exponent behind a number: "1e2pt".
    ZRValue nextTokenValueExp();
    /// The same, with a function call "name(...)" or a group "(...)" as a string of unit none that
    /// holds the text as it stands. What is not closed ends with the text.
    ZRValue nextTokenValueFunc();
    /// The number that `nextTokenValueExp` would read, not cut to a float; of a number with a unit
    /// the number alone, and 0 for what is none.
    double nextTokenDoubleExp();

    /// The next item of a list, without the quotes around it or around its parts. Pieces between
    /// blanks are joined by one blank. Empty at the end, with the kind -1, and for an empty item.
    UnicodeString nextSeparatedValue(char16_t separator);
    /// Steps over white space, then over the separator and the white space behind it if it is
    /// there. False, without a step, after `pushBack`.
    bool skipSeparator(char16_t separator);
    /// Whether `skipSeparator` would find it.
    bool scanSeparator(char16_t separator) const;

private:
    internal::ValueReader reader() const;
    void takeOver(const internal::ValueReader& reader);

    UnicodeString m_source;  // with a U+0000 of its own, so that copies have one too
    std::size_t m_position = 0;
    bool m_isPushedBack = false;
};

}  // namespace ZroCommon
