#include "zro/values/ZRTokenizer.h"

#include "zro/foundation/internal/TextView.h"
#include "zro/values/internal/ValueReader.h"

namespace ZroCommon {
ZRTokenizer::ZRTokenizer(const UnicodeString& text) {
    if (!text.isBogus()) {
        m_source = text;
    }
    m_source.append(u'\0');
}

internal::ValueReader ZRTokenizer::reader() const {
    return {internal::viewOf(m_source),
            m_position,
            {ttype, nval, internal::viewOf(sval)},
            m_isPushedBack};
}

void ZRTokenizer::takeOver(const internal::ValueReader& reader) {
    const internal::ValueToken& token = reader.token();
    ttype = token.kind;
    nval = token.number;
    if (token.text.data() != sval.getBuffer()) {
        sval.setTo(token.text.data(), static_cast<int32_t>(token.text.size()));
    }
    m_position = reader.position();
    m_isPushedBack = reader.isPushedBack();
}

int ZRTokenizer::nextToken() {
    internal::ValueReader reader = this->reader();
    reader.nextToken();
    takeOver(reader);
    return ttype;
}

ZRValue ZRTokenizer::nextTokenValue() {
    internal::ValueReader reader = this->reader();
    ZRValue value = reader.nextValue();
    takeOver(reader);
    return value;
}

ZRValue ZRTokenizer::nextTokenValueSigned() {
    internal::ValueReader reader = this->reader();
    ZRValue value = reader.nextSigned();
    takeOver(reader);
    return value;
}

ZRValue ZRTokenizer::nextTokenValueExp() {
    internal::ValueReader reader = this->reader();
    ZRValue value = reader.nextExp();
    takeOver(reader);
    return value;
}

ZRValue ZRTokenizer::nextTokenValueFunc() {
    internal::ValueReader reader = this->reader();
    ZRValue value = reader.nextFunc();
    takeOver(reader);
    return value;
}

double ZRTokenizer::nextTokenDoubleExp() {
    nextTokenValueExp();
    return nval;
}

UnicodeString ZRTokenizer::nextSeparatedValue(char16_t separator) {
    internal::ValueReader reader = this->reader();
    UnicodeString item;
    reader.nextSeparated(separator, item);
    takeOver(reader);
    return item;
}

bool ZRTokenizer::skipSeparator(char16_t separator) {
    internal::ValueReader reader = this->reader();
    const bool isThere = reader.skipSeparator(separator);
    takeOver(reader);
    return isThere;
}

bool ZRTokenizer::scanSeparator(char16_t separator) const {
    return reader().scanSeparator(separator);
}

}  // namespace ZroCommon
