#pragma once

#include <cstdint>
#include <istream>
#include <map>
#include <memory>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"
#include "zro/foundation/ZRRCObject.h"

namespace ZroCommon {

namespace internal {
struct PartFacts;
}  // namespace internal

/// How an entry is compressed. Any other number may occur; such data is handed out as it is stored.
enum CMETHOD : std::uint16_t { CMETHOD_STORED = 0, CMETHOD_DEFLATE = 8 };

/// A record of a ZIP package that begins with a signature.
///
/// It reads from the package's stream, which is not owned. Nothing reports an error: what could not
/// be read is 0. One thread at a time.
class ZRO_API ZRZipEntry : public ZRRCObject {
public:
    static constexpr std::uint32_t kLocalHeaderSignature = 0x04034B50;
    static constexpr std::uint32_t kDescriptorSignature = 0x08074B50;
    static constexpr std::uint32_t kDirectorySignature = 0x02014B50;
    static constexpr std::uint32_t kEndSignature = 0x06054B50;

    /// Reads the signature at the position of the stream.
    explicit ZRZipEntry(std::istream& stream);

    static unsigned int getStaticTypeID() { return 0xB84B5A40U; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;

    /// Where the signature stands in the stream, in bytes; -1 when the stream could not tell.
    std::int64_t getPosition() const { return m_position; }
    std::uint32_t getSignature() const { return m_signature; }

    /// The next four bytes as a signature, which stay unread. 0 with fewer bytes left, and for a
    /// stream that cannot tell its position.
    static std::uint32_t getSignature(std::istream& stream);

protected:
    ~ZRZipEntry() override;

    /// The next number, little-endian, at the position of the stream. 0 when it is not whole.
    std::uint16_t read16();
    std::uint32_t read32();

    std::istream* m_stream;  ///< null once the package is gone

private:
    std::int64_t m_position;
    std::uint32_t m_signature;
};

/// One file of a ZIP package, as its local header tells it; nothing is checked against the data.
///
/// The compressed bytes are read whole at first use and kept for the life of the entry. Streams
/// asked for with `newStream` belong to the caller and need neither entry nor package. Without it
/// there is one stream of each kind, which belongs to the entry and starts over whenever it is
/// asked for, so all its readers share one position. Data that is cut off or damaged gives what
/// came before, and then the end.
class ZRO_API ZRZipFileEntry : public ZRZipEntry {
public:
    /// Reads the header at the position of the stream and steps over the data behind it. Fields of
    /// a header that is cut off are 0.
    explicit ZRZipFileEntry(std::istream& stream);

    static unsigned int getStaticTypeID() { return 0x1E3480DFU; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;

    /// The name, read in the default code page. It is a key, not a path: it may be absolute, climb,
    /// or hold any character.
    const UnicodeString& getFileName() const { return m_fileName; }
    CMETHOD getCompressionMethod() const { return static_cast<CMETHOD>(m_method); }
    /// In bytes, as claimed.
    std::uint32_t getCompressedSize() const { return m_compressedSize; }
    /// In bytes, as claimed.
    std::uint32_t getUncompressedSize() const { return m_uncompressedSize; }
    /// As claimed; nothing verifies it.
    std::uint32_t getCrc32() const { return m_crc32; }
    /// The general purpose bits: bit 0 encrypted, bit 3 sizes in a descriptor behind the data.
    std::uint16_t getFlags() const { return m_flags; }
    /// Time and date of the last change in the form of MS-DOS.
    std::uint16_t getTime() const { return m_time; }
    std::uint16_t getDate() const { return m_date; }
    /// Where the compressed bytes begin in the package's stream.
    std::int64_t getDataPosition() const;

    /// The bytes as they are stored.
    std::istream* getCompressedStream(bool newStream);

    /// The data, expanded where the method is deflate. With any other method the bytes as they are
    /// stored, encrypted ones too.
    std::istream* getUncompressedStream(bool newStream);

protected:
    using NameMap = std::map<UnicodeString, UnicodeString>;

    ~ZRZipFileEntry() override;

    // What the package says of this entry, as far as it has been asked.
    const UnicodeString& getContentType() const;
    void setContentType(const UnicodeString& contentType);
    const NameMap& getRelationshipIds() const;    ///< identifier to target
    const NameMap& getRelationshipTypes() const;  ///< type to its first target
    const NameMap& getRelationshipModes() const;  ///< target to mode, where one is named

private:
    friend class ZRZipFile;
    struct Content;

    std::int64_t endPosition() const;
    Content& readCompressedData();
    internal::PartFacts& facts();
    const internal::PartFacts& knownFacts() const;
    void forgetStream() { m_stream = nullptr; }

    std::uint32_t m_crc32;
    std::uint32_t m_compressedSize;
    std::uint32_t m_uncompressedSize;
    std::uint16_t m_versionNeeded;
    std::uint16_t m_flags;
    std::uint16_t m_method;
    std::uint16_t m_time;
    std::uint16_t m_date;
    std::uint16_t m_nameLength;  // in bytes, as claimed
    std::uint16_t m_extraLength;
    UnicodeString m_fileName;
    std::unique_ptr<Content> m_content;            // null until first use
    std::unique_ptr<internal::PartFacts> m_facts;  // null until there are any
};

/// A data descriptor with a signature: sizes and check value behind the data of an entry.
class ZRO_API ZRZipExtheaderEntry : public ZRZipEntry {
public:
    /// Reads the 16 bytes at the position of the stream.
    explicit ZRZipExtheaderEntry(std::istream& stream);

    std::uint32_t getCrc32() const { return m_crc32; }
    std::uint32_t getCompressedSize() const { return m_compressedSize; }
    std::uint32_t getUncompressedSize() const { return m_uncompressedSize; }

protected:
    ~ZRZipExtheaderEntry() override;

private:
    std::uint32_t m_crc32;
    std::uint32_t m_compressedSize;
    std::uint32_t m_uncompressedSize;
};

}  // namespace ZroCommon
