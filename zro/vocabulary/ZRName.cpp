#include "zro/vocabulary/ZRName.h"

#include "zro/foundation/internal/AppendNumber.h"
#include "zro/vocabulary/ZRNameTable.h"

namespace ZroCommon {

ZRName::ZRName(const UnicodeString& text) : m_number(ZRNameTable::getSharedNameEnum(text)) {}

const UnicodeString& ZRName::toString() const {
    return ZRNameTable::getSharedNameString(m_number);
}

ZRName ZRName::generateID(const UnicodeString& prefix) {
    // On purpose: nobody looks whether the text is new.
    UnicodeString text = prefix.isEmpty() ? UnicodeString(u'N') : prefix;
    internal::appendNumber(text.append(u'-'), ZRNameTable::getSharedNameTable()->getNameLast() + 1);
    return {text};
}

}  // namespace ZroCommon
