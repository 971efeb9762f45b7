#pragma once

#include <cstdint>

#include "zro/foundation/Export.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

/// A name of the MathML vocabulary: 0 is the empty name, 1 to 434 are the names below. The
/// numbering is its own, beside that of `ZRName`.
enum MathMLNameEnum : std::int32_t {
    MathMLN_EMPTY = 0,
#define ZR_NAME(enumerator, text) MathMLN_##enumerator,
#include "zro/vocabulary/MathMLNames.inc"
    MathMLN_LAST = 434,
};

/// A name of the MathML vocabulary as a number, for renderers to switch on.
///
/// A small value: copy it freely. Names that are none of MathML give the empty name. A number is
/// not checked: one that stands for nothing has the empty text. Any thread may make and read names.
class ZRO_API MathMLName {
public:
    MathMLName() = default;
    MathMLName(MathMLNameEnum number) : m_number(number) {}
    /// By the text of a name, case and all.
    MathMLName(ZRName name);
    MathMLName(ZRNameEnum name) : MathMLName(ZRName(name)) {}
    /// By the text of a name or string; any other value gives the empty name.
    MathMLName(const ZRValue& value);

    bool isEmpty() const { return m_number == MathMLN_EMPTY; }
    operator MathMLNameEnum() const { return m_number; }

    /// The name of the same text in the common numbering.
    operator ZRName() const { return toZRName(m_number); }
    static ZRName toZRName(MathMLNameEnum number);

    friend bool operator==(MathMLName left, MathMLName right) {
        return left.m_number == right.m_number;
    }
    friend bool operator==(MathMLName left, MathMLNameEnum right) { return left.m_number == right; }

    /// Forgets the names: no text is one of them any more. Part of the library's `cleanup`.
    static void cleanup();

private:
    MathMLNameEnum m_number = MathMLN_EMPTY;
};

}  // namespace ZroCommon
