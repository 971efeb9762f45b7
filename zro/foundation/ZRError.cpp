#include "zro/foundation/ZRError.h"

#include "zro/foundation/internal/AppendNumber.h"

namespace ZroCommon {
namespace {

constexpr unsigned short kOutOfMemory = 0x0801;
constexpr unsigned short kForeignException = 0x0802;
constexpr unsigned kSeverityMask = 0x0700;
constexpr unsigned kRecoverable = 0x0400;

UnicodeString foreignMessage(const char* what) {
    UnicodeString message(u"C++ exception: ");
    if (what != nullptr) {
        message.append(UnicodeString(what));  // in the default code page
    }
    return message;
}

}  // namespace

ZRError::ZRError(unsigned short code, const UnicodeString& message, const UnicodeString& source,
                 int line, int column, const UnicodeString& uri)
    : m_code(code),
      m_rawMessage(message),
      m_source(source),
      m_lineNumber(line),
      m_columnNumber(column),
      m_uri(uri) {}

ZRError::ZRError(std::bad_alloc& /*error*/, const UnicodeString& source)
    : ZRError(kOutOfMemory, u"Out of memory.", source) {}

ZRError::ZRError(std::exception& error, const UnicodeString& source)
    : ZRError(kForeignException, foreignMessage(error.what()), source) {}

UnicodeString ZRError::getPositionDescription() const {
    UnicodeString description;
    if (m_lineNumber != -1) {
        internal::appendNumber(description.append(u"Line "), m_lineNumber).append(u", ");
    }
    if (m_columnNumber != -1) {
        internal::appendNumber(description.append(u"Col "), m_columnNumber).append(u", ");
    }
    // On purpose: with a position and no URI the text ends in ", ".
    return description.append(m_uri);
}

UnicodeString ZRError::getMessage() const {
    const UnicodeString position = getPositionDescription();
    if (position.isEmpty()) {
        return m_rawMessage;
    }
    return UnicodeString(m_rawMessage).append(u'\n').append(position);
}

void ZRError::setMessage(const UnicodeString& message) {
    m_rawMessage = message;
    const UnicodeString position = getPositionDescription();
    if (position.isEmpty()) {
        return;
    }
    const UnicodeString ending = UnicodeString(u'\n').append(position);
    if (m_rawMessage.endsWith(ending)) {
        m_rawMessage.truncate(m_rawMessage.length() - ending.length());
    }
}

void ZRError::appendMessage(const UnicodeString& message) {
    if (message.isEmpty()) {
        return;
    }
    if (!m_rawMessage.isEmpty()) {
        m_rawMessage.append(u'\n');
    }
    m_rawMessage.append(message);
}

void ZRError::throwFatalError() const {
    if (m_code == 0) {
        return;
    }
    const unsigned severity = m_code & kSeverityMask;
    if ((severity & kRecoverable) != 0) {
        return;
    }
    throw *this;
}

}  // namespace ZroCommon
