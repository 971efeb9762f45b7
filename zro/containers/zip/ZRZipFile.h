#pragma once

#include <cstdint>
#include <istream>
#include <memory>
#include <vector>

#include "zro/containers/zip/ZRZipEntry.h"
#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"
#include "zro/foundation/ZRPtr.h"

namespace ZroCommon {

namespace internal {
struct Relationships;
}  // namespace internal

/// What an office document is, by the media type of its main part.
enum OOXDOCUMENT_TYPE : std::uint8_t {
    OOXDOCUMENT_NONE = 0,  ///< none of the others
    OOXDOCUMENT_DOCX,
    OOXDOCUMENT_DOCM,
    OOXDOCUMENT_DOTX,
    OOXDOCUMENT_DOTM,
    OOXDOCUMENT_XLSX,
    OOXDOCUMENT_XLSM,
    OOXDOCUMENT_XLTX,
    OOXDOCUMENT_XLTM,
    OOXDOCUMENT_XLSB,
    OOXDOCUMENT_PPTX,
    OOXDOCUMENT_PPTM,
    OOXDOCUMENT_PPSX,
    OOXDOCUMENT_PPSM,
    OOXDOCUMENT_POTX,
    OOXDOCUMENT_POTM,
    OOXDOCUMENT_THMX,
};

/// The entries of a ZIP package, found by walking the local headers from the position of a stream
/// that can seek.
///
/// The walk steps from header to header over the data, past data descriptors that have a signature,
/// and ends without an error at anything else: normally at the central directory, which is never
/// read. So an entry whose sizes stand only in a descriptor is listed as empty and hides those
/// behind it, and an archive with something ahead of its first header has no entries.
///
/// A package by the Open Packaging Conventions also tells the media types of its parts, where its
/// relationships lead and what kind of office document it is. What stands in "[Content_Types].xml"
/// and in the parts of relationships is read at the first question. Where such a part is missing or
/// damaged, what it says up to there counts. Neither opens anything outside of the package.
///
/// Copies share entries and stream; the first of them to be destroyed or opened anew deletes an
/// owned stream for all. Data that was not read while there was a stream is then empty. Nothing
/// reports an error, and no exception but `std::bad_alloc` comes out. One thread at a time.
class ZRO_API ZRZipFile {
public:
    ZRZipFile();
    /// Opens a file; see `open`.
    ZRZipFile(const UnicodeString& path);
    /// \param path  in the default code page
    ZRZipFile(const char* path);
    /// Walks a stream; see `open`.
    ZRZipFile(std::istream* stream, bool own);
    ZRZipFile(const ZRZipFile& other);
    ZRZipFile& operator=(const ZRZipFile& other);
    virtual ~ZRZipFile();

    /// Gives up the present stream, opens the file and walks it. There are no entries when it
    /// cannot be opened.
    void open(const UnicodeString& path);
    /// \param path  in the default code page; null is no file
    void open(const char* path);

    /// Gives up the present stream and walks another from where it stands.
    /// \param stream  may be null
    /// \param own     true hands it over, to be deleted with the package; with false it must live
    ///                as long as entries are read
    void open(std::istream* stream, bool own);

    unsigned int getFileEntryCount() const { return static_cast<unsigned int>(m_entries.size()); }

    /// The entry at an index in file order, or null behind the last.
    ZRZipFileEntry* getFileEntry(unsigned int index) const;

    /// The first entry of that very name, or null.
    ZRZipFileEntry* getFileEntry(const UnicodeString& name) const;

    /// Whether a stream stands at a signature of a ZIP package: that of a local header, of a
    /// central directory, or of the end of one. The position stays. Null is none.
    static bool isZipFile(std::istream* stream);
    static bool isZipFile(const UnicodeString& path);
    /// \param path  in the default code page; null is no file
    static bool isZipFile(const char* path);

    /// The media type of a part, or empty.
    /// \param entry  null has none
    /// \return a text that lives as long as the entry
    const UnicodeString& getContentType(ZRZipFileEntry* entry);

    /// Where the relationship of that identifier leads, or empty. A target inside the package comes
    /// as the name of an entry when it belongs to a part; those of the package, and addresses
    /// outside, stand as they are written.
    /// \param entry  the part that the relationship belongs to; null is the package
    UnicodeString getRelationshipTargetFromId(const UnicodeString& id, ZRZipFileEntry* entry) const;
    /// The same for the first relationship of a type.
    UnicodeString getRelationshipTargetFromType(const UnicodeString& type,
                                                ZRZipFileEntry* entry) const;
    /// "Internal" or "External", or what else the relationship says. "Internal" for an unknown one.
    /// \param target  as the other two give it
    UnicodeString getRelationshipTargetMode(const UnicodeString& target,
                                            ZRZipFileEntry* entry) const;

    /// The main part of an office document, or null.
    ZRZipFileEntry* getOfficeDocument() const;

    OOXDOCUMENT_TYPE detectOOXDocument();
    static OOXDOCUMENT_TYPE detectOOXDocument(const UnicodeString& path);
    /// \param path  in the default code page; null is no file
    static OOXDOCUMENT_TYPE detectOOXDocument(const char* path);
    /// Looks at a package from where the stream stands, which is where it stands afterwards.
    /// \param stream  has to be able to seek; null is none
    static OOXDOCUMENT_TYPE detectOOXDocument(std::istream* stream);

private:
    struct Package;

    void init();
    void giveUpStream();
    void indexNames() const;
    void setContentType();
    void makeRelationships(ZRZipFileEntry* entry) const;
    const internal::Relationships& relationshipsOf(ZRZipFileEntry* entry) const;

    std::shared_ptr<Package> m_package;  // null without a stream
    std::vector<ZRPtr<ZRZipFileEntry>> m_entries;
    mutable std::vector<ZRZipFileEntry*> m_index;  // by name; empty until it is worth its while
    mutable bool m_wasSearched = false;
    mutable std::shared_ptr<const internal::Relationships> m_relationships;  // null until read
};

}  // namespace ZroCommon
