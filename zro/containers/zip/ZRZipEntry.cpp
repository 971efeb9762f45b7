#include "zro/containers/zip/ZRZipEntry.h"

#include <array>

#include "zro/containers/zip/internal/LocalHeader.h"
#include "zro/containers/zip/internal/PackageReader.h"
#include "zro/containers/zip/internal/PartFacts.h"
#include "zro/streams/ZRStrStream.h"
#include "zro/streams/compression/ZRInflaterStream.h"
#include "zro/streams/internal/RewindStream.h"

namespace ZroCommon {

using internal::PackageReader;

ZRZipEntry::ZRZipEntry(std::istream& stream)
    : m_stream(&stream), m_position(PackageReader(stream).position()), m_signature(read32()) {}

ZRZipEntry::~ZRZipEntry() = default;

unsigned int ZRZipEntry::getTypeID() const {
    return getStaticTypeID();
}

bool ZRZipEntry::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRRCObject::isA(typeID);
}

UnicodeString ZRZipEntry::getTypeName() const {
    return u"ZRZipEntry";
}

std::uint32_t ZRZipEntry::getSignature(std::istream& stream) {
    return PackageReader(stream).peek32();
}

std::uint16_t ZRZipEntry::read16() {
    std::array<char, 2> bytes{};
    PackageReader reader(*m_stream);
    return internal::FieldReader(bytes.data(), reader.read(bytes.data(), bytes.size())).at16(0);
}

std::uint32_t ZRZipEntry::read32() {
    std::array<char, 4> bytes{};
    PackageReader reader(*m_stream);
    return internal::FieldReader(bytes.data(), reader.read(bytes.data(), bytes.size())).at32(0);
}

// What the first use of an entry makes.
struct ZRZipFileEntry::Content {
    internal::StoredBytes stored;
    std::unique_ptr<ZRStrStream> compressed;
    std::unique_ptr<ZRInflaterStream> uncompressed;
};

ZRZipFileEntry::ZRZipFileEntry(std::istream& stream) : ZRZipEntry(stream) {
    PackageReader reader(stream);
    internal::LocalHeader header = internal::LocalHeader::read(reader);
    m_crc32 = header.crc32;
    m_compressedSize = header.compressedSize;
    m_uncompressedSize = header.uncompressedSize;
    m_versionNeeded = header.versionNeeded;
    m_flags = header.flags;
    m_method = header.method;
    m_time = header.time;
    m_date = header.date;
    m_nameLength = header.nameLength;
    m_extraLength = header.extraLength;
    m_fileName = std::move(header.fileName);
    reader.seekForward(std::uint64_t{m_extraLength} + m_compressedSize);
}

ZRZipFileEntry::~ZRZipFileEntry() = default;

unsigned int ZRZipFileEntry::getTypeID() const {
    return getStaticTypeID();
}

bool ZRZipFileEntry::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRZipEntry::isA(typeID);
}

UnicodeString ZRZipFileEntry::getTypeName() const {
    return u"ZRZipFileEntry";
}

std::int64_t ZRZipFileEntry::getDataPosition() const {
    const std::uint64_t behindHeader = internal::LocalHeader::kSize + m_nameLength + m_extraLength;
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(getPosition()) + behindHeader);
}

std::int64_t ZRZipFileEntry::endPosition() const {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(getDataPosition())
                                     + m_compressedSize);
}

ZRZipFileEntry::Content& ZRZipFileEntry::readCompressedData() {
    if (m_content == nullptr) {
        auto content = std::make_unique<Content>();
        if (m_stream != nullptr) {
            PackageReader reader(*m_stream);
            if (reader.seek(getDataPosition())) {
                content->stored = internal::readStored(reader, m_compressedSize);
            }
        }
        m_content = std::move(content);
    }
    return *m_content;
}

std::istream* ZRZipFileEntry::getCompressedStream(bool newStream) {
    Content& content = readCompressedData();
    const auto& [bytes, size] = content.stored;
    if (newStream) {
        return std::make_unique<ZRStrStream>(bytes.get(), size, true).release();
    }
    if (content.compressed == nullptr) {
        content.compressed = std::make_unique<ZRStrStream>(bytes.get(), size, false);
    } else {
        internal::rewindStream(*content.compressed);
    }
    return content.compressed.get();
}

std::istream* ZRZipFileEntry::getUncompressedStream(bool newStream) {
    // On purpose: data of any other method, and encrypted data, is handed out as it is stored.
    if (m_method != CMETHOD_DEFLATE) {
        return getCompressedStream(newStream);
    }
    Content& content = readCompressedData();
    const auto& [bytes, size] = content.stored;
    if (newStream) {
        return std::make_unique<ZRInflaterStream>(bytes.get(), size, true).release();
    }
    if (content.uncompressed == nullptr) {
        content.uncompressed = std::make_unique<ZRInflaterStream>(bytes.get(), size, false);
    } else {
        content.uncompressed->reset();
    }
    return content.uncompressed.get();
}

internal::PartFacts& ZRZipFileEntry::facts() {
    if (m_facts == nullptr) {
        m_facts = std::make_unique<internal::PartFacts>();
    }
    return *m_facts;
}

const internal::PartFacts& ZRZipFileEntry::knownFacts() const {
    static const internal::PartFacts s_none;
    return m_facts == nullptr ? s_none : *m_facts;
}

const UnicodeString& ZRZipFileEntry::getContentType() const {
    return knownFacts().contentType;
}

void ZRZipFileEntry::setContentType(const UnicodeString& contentType) {
    facts().contentType = contentType;
}

const ZRZipFileEntry::NameMap& ZRZipFileEntry::getRelationshipIds() const {
    return internal::relationshipsOf(knownFacts().relationships).ids;
}

const ZRZipFileEntry::NameMap& ZRZipFileEntry::getRelationshipTypes() const {
    return internal::relationshipsOf(knownFacts().relationships).types;
}

const ZRZipFileEntry::NameMap& ZRZipFileEntry::getRelationshipModes() const {
    return internal::relationshipsOf(knownFacts().relationships).modes;
}

ZRZipExtheaderEntry::ZRZipExtheaderEntry(std::istream& stream)
    : ZRZipEntry(stream),
      m_crc32(read32()),
      m_compressedSize(read32()),
      m_uncompressedSize(read32()) {}

ZRZipExtheaderEntry::~ZRZipExtheaderEntry() = default;

}  // namespace ZroCommon
