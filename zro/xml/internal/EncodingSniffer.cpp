#include "zro/xml/internal/EncodingSniffer.h"

namespace ZroCommon::internal {
namespace {

constexpr int kNone = -1;

class Sniffer {
public:
    Sniffer(ByteSource& bytes, Encoding& encoding) : m_bytes(bytes), m_encoding(encoding) {}

    Sniffed run();

private:
    void sniffZero();
    void sniffLessThan();
    void sniffLittleEndianMark();

    int next() { return m_bytes.get(); }
    void putBack(int byte) {
        if (byte != kNone) {
            m_bytes.giveBack(1);
        }
    }
    // A character of two bytes; nothing when the second is missing.
    void push(int high, int low) {
        if (high != kNone && low != kNone) {
            m_result.characters[m_result.characterCount++] =
                static_cast<char32_t>(high * 256 + low);
        }
    }
    void set(EncodingMode mode, bool bom);

    ByteSource& m_bytes;
    Encoding& m_encoding;
    Sniffed m_result;
};

void Sniffer::set(EncodingMode mode, bool bom) {
    m_encoding.mode = mode;
    m_encoding.bomSeen = bom;
    switch (mode) {
    case EncodingMode::Utf16LE: m_encoding.name = bom ? u"UTF-16" : u"UTF-16LE"; break;
    case EncodingMode::Utf16BE: m_encoding.name = bom ? u"UTF-16" : u"UTF-16BE"; break;
    case EncodingMode::Utf32LE: m_encoding.name = bom ? u"UTF-32" : u"UTF-32LE"; break;
    case EncodingMode::Utf32BE: m_encoding.name = bom ? u"UTF-32" : u"UTF-32BE"; break;
    default: m_encoding.name = u"UTF-8"; break;
    }
}

Sniffed Sniffer::run() {
    const int first = next();
    switch (first) {
    case kNone: break;
    case 0x00: sniffZero(); break;
    case 0x3C: sniffLessThan(); break;
    case 0xEF:
        m_result.isValid = next() == 0xBB && next() == 0xBF;
        if (m_result.isValid) {
            set(EncodingMode::Utf8, true);
        }
        break;
    case 0xFE:
        m_result.isValid = next() == 0xFF;
        if (m_result.isValid) {
            set(EncodingMode::Utf16BE, true);
        }
        break;
    case 0xFF: sniffLittleEndianMark(); break;
    default: putBack(first); break;
    }
    return m_result;
}

void Sniffer::sniffZero() {
    const int second = next();
    if (second != 0) {
        set(EncodingMode::Utf16BE, false);
        push(0, second);
        return;
    }
    const int third = next();
    const int fourth = next();
    const bool bom = third == 0xFE && fourth == 0xFF;
    set(EncodingMode::Utf32BE, bom);
    if (!bom) {
        push(third, fourth);
    }
}

void Sniffer::sniffLessThan() {
    const EncodingMode mode = m_encoding.mode;
    if (mode != EncodingMode::Unknown && mode != EncodingMode::Utf16Unknown
        && mode != EncodingMode::Utf32Unknown) {
        return putBack(u'<');
    }
    push(0, u'<');
    const int second = next();
    if (second != 0) {
        set(EncodingMode::Utf8, false);
        return putBack(second);
    }
    const int third = next();
    if (third != 0) {
        set(EncodingMode::Utf16LE, false);
        return putBack(third);
    }
    const int fourth = next();
    if (fourth == 0) {
        return set(EncodingMode::Utf32LE, false);
    }
    set(EncodingMode::Utf16LE, false);
    push(fourth, 0);
}

void Sniffer::sniffLittleEndianMark() {
    m_result.isValid = next() == 0xFE;
    if (!m_result.isValid) {
        return;
    }
    const int third = next();
    const int fourth = next();
    const bool wide = third == 0 && fourth == 0;
    set(wide ? EncodingMode::Utf32LE : EncodingMode::Utf16LE, true);
    if (!wide) {
        push(fourth, third);
    }
}

}  // namespace

Sniffed sniffEncoding(ByteSource& bytes, Encoding& encoding) {
    return Sniffer(bytes, encoding).run();
}

}  // namespace ZroCommon::internal
