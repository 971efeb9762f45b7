#pragma once

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

class OleCompFile;

/// The four texts by which a legacy office document introduces itself, read from its summary
/// information.
///
/// What a document does not state stays empty. Nothing here reports an error, and no exception but
/// `std::bad_alloc` comes out. One thread at a time, and none beside it at the file.
class ZRO_API OlePropertySet {
public:
    /// Reads the texts that the file states. The others keep what they have, so take a new object
    /// for each file.
    /// \param file  open; not used any more behind the call. Null is a file without properties
    void init(OleCompFile* file);

    const UnicodeString& getTitle() const { return m_title; }
    const UnicodeString& getSubject() const { return m_subject; }
    const UnicodeString& getAuthor() const { return m_author; }
    const UnicodeString& getKeywords() const { return m_keywords; }

private:
    UnicodeString m_title;
    UnicodeString m_subject;
    UnicodeString m_author;
    UnicodeString m_keywords;
};

}  // namespace ZroCommon
