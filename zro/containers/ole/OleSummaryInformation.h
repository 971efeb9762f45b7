#pragma once

#include <memory>
#include <vector>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

class OleCompFile;
class ZRValue;

/// A property-set stream of a compound file: the summary information, whose values it hands out, or
/// the document summary information, whose hyperlinks.
///
/// Only where the properties lie is kept in memory. Values are read when they are asked for, so the
/// file must stay open meanwhile, and no two objects may read from one file at the same time. A
/// stream that makes more of its bytes than it has room for is refused. No exception but
/// `std::bad_alloc` comes out.
class ZRO_API OleSummaryInformation {
public:
    OleSummaryInformation();
    OleSummaryInformation(const OleSummaryInformation&) = delete;
    OleSummaryInformation& operator=(const OleSummaryInformation&) = delete;
    /// Closes the stream.
    ~OleSummaryInformation();

    /// Opens and parses the stream "\5SummaryInformation" and settles the code page of its texts:
    /// that of property 1, and cp932 without one.
    /// \param file  open; not handed over. Null is a file without the stream
    /// \return 1, or -1 when there is no such stream or it is damaged. What was parsed ahead of the
    ///         damage can be asked for all the same.
    int initSummaryInformation(OleCompFile* file);

    /// Opens and parses the stream "\5DocumentSummaryInformation", for `getHyperLinks`.
    /// \return 1, or -1 when there is no such stream or it is damaged
    int initDocumentSummaryInformation(OleCompFile* file);

    /// Parses the open stream from where it stands, which behind `init...` is the end of its
    /// section table.
    /// \return 1, or -1 without a stream and for a damaged one
    int getSummaryInformation();

    /// \param id     1 code page, 2 title, 3 subject, 4 author, 5 keywords, 6 comments, 7 template,
    ///               8 last author, 9 revision, 14 pages, 15 words, 16 characters, 18 application,
    ///               19 security. No others are served, and none of the document summary.
    /// \param value  receives an integer or a text; of a vector the last element. A text is empty
    ///               when the code page is not known.
    /// \return 1, or -1 when there is none of a type that is served, or it is damaged. Of a vector
    ///         that is cut short `value` has the last element that was whole.
    int getProperty(unsigned long id, ZRValue& value);

    /// Appends the addresses of the property "_PID_HLINKS" that are not empty, with the places
    /// within them as entries of their own.
    /// \return 1, or -1 when there is no such property or it is damaged; what was whole of a
    /// damaged
    ///         one has been appended.
    int getHyperLinks(std::vector<UnicodeString>& links);

private:
    struct Content;

    bool openStream(OleCompFile* file, const char* name);

    std::unique_ptr<Content> m_content;  // null without a stream
};

}  // namespace ZroCommon
