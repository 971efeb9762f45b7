#include "zro/containers/zip/ZRZipFile.h"

#include <algorithm>
#include <utility>

#include "zro/containers/zip/internal/PackageReader.h"
#include "zro/foundation/ZRResourceLimits.h"
#include "zro/platform/internal/NativeFile.h"

namespace ZroCommon {
namespace {

UnicodeString pathOf(const char* path) {
    return path == nullptr ? UnicodeString() : UnicodeString(path);
}

bool isBefore(const ZRZipFileEntry* entry, const UnicodeString& name) {
    return entry->getFileName() < name;
}

}  // namespace

// The stream as all copies of a package have it.
struct ZRZipFile::Package {
    std::istream* stream = nullptr;
    std::unique_ptr<std::istream> owner;  // null when the stream is the caller's
};

ZRZipFile::ZRZipFile() = default;

ZRZipFile::ZRZipFile(const UnicodeString& path) {
    open(path);
}

ZRZipFile::ZRZipFile(const char* path) {
    open(path);
}

ZRZipFile::ZRZipFile(std::istream* stream, bool own) {
    open(stream, own);
}

ZRZipFile::ZRZipFile(const ZRZipFile& other) = default;

ZRZipFile& ZRZipFile::operator=(const ZRZipFile& other) {
    if (this == &other) {
        return *this;
    }
    if (m_package != other.m_package && m_package.use_count() == 1) {
        giveUpStream();
    }
    m_package = other.m_package;
    m_entries = other.m_entries;
    m_index = other.m_index;
    m_wasSearched = other.m_wasSearched;
    m_relationships = other.m_relationships;
    return *this;
}

ZRZipFile::~ZRZipFile() {
    giveUpStream();
}

void ZRZipFile::open(const UnicodeString& path) {
    open(internal::openInputFile(path).release(), true);
}

void ZRZipFile::open(const char* path) {
    open(pathOf(path));
}

void ZRZipFile::open(std::istream* stream, bool own) {
    std::unique_ptr<std::istream> owner(own ? stream : nullptr);
    giveUpStream();
    m_package = std::make_shared<Package>(Package{stream, std::move(owner)});
    init();
}

// Entries may live longer than the package, so they must not keep a stream that goes with it.
void ZRZipFile::giveUpStream() {
    if (m_package != nullptr && (m_package->owner != nullptr || m_package.use_count() == 1)) {
        for (const auto& entry : m_entries) {
            entry->forgetStream();
        }
        m_package->stream = nullptr;
        m_package->owner.reset();
    }
    m_package.reset();
}

void ZRZipFile::init() {
    m_entries.clear();
    m_index.clear();
    m_wasSearched = false;
    m_relationships.reset();
    if (m_package->stream == nullptr) {
        return;
    }
    std::istream& stream = *m_package->stream;
    const std::uint32_t most = ZRResourceLimits::getCurrent().packageEntries;
    while (most == 0 || m_entries.size() < most) {
        const std::uint32_t signature = ZRZipEntry::getSignature(stream);
        if (signature == ZRZipEntry::kLocalHeaderSignature) {
            m_entries.push_back(ZRPtr<ZRZipFileEntry>(new ZRZipFileEntry(stream)));
            // Where stepping over the data has failed, the stream stands at the data. Going on
            // there would list the entries of a package inside this one.
            if (internal::PackageReader(stream).position() != m_entries.back()->endPosition()) {
                return;
            }
        } else if (signature == ZRZipEntry::kDescriptorSignature) {
            // On purpose: it corrects nothing, so an entry without sizes of its own ends the walk.
            const ZRPtr<ZRZipEntry> dropped(new ZRZipExtheaderEntry(stream));
        } else {
            return;  // On purpose: no look for a header farther on, nor for the directory.
        }
    }
}

ZRZipFileEntry* ZRZipFile::getFileEntry(unsigned int index) const {
    return index < m_entries.size() ? m_entries[index].get() : nullptr;
}

void ZRZipFile::indexNames() const {
    std::vector<ZRZipFileEntry*> index(m_entries.begin(), m_entries.end());
    std::stable_sort(index.begin(), index.end(), [](const auto* left, const auto* right) {
        return isBefore(left, right->getFileName());
    });
    m_index = std::move(index);
}

ZRZipFileEntry* ZRZipFile::getFileEntry(const UnicodeString& name) const {
    const auto hasName = [&name](const ZRZipFileEntry* entry) {
        return entry->getFileName() == name;
    };
    constexpr std::size_t kFew = 32;
    // Many packages are opened for one entry.
    if (m_entries.size() <= kFew || !std::exchange(m_wasSearched, true)) {
        const auto found = std::find_if(m_entries.begin(), m_entries.end(), hasName);
        return found == m_entries.end() ? nullptr : found->get();
    }
    if (m_index.empty()) {
        indexNames();
    }
    const auto found = std::lower_bound(m_index.begin(), m_index.end(), name, isBefore);
    return found != m_index.end() && hasName(*found) ? *found : nullptr;
}

bool ZRZipFile::isZipFile(std::istream* stream) {
    if (stream == nullptr) {
        return false;
    }
    const std::uint32_t signature = ZRZipEntry::getSignature(*stream);
    return signature == ZRZipEntry::kDirectorySignature
           || signature == ZRZipEntry::kLocalHeaderSignature
           || signature == ZRZipEntry::kEndSignature;
}

bool ZRZipFile::isZipFile(const UnicodeString& path) {
    const auto file = internal::openInputFile(path);
    return isZipFile(file.get());
}

bool ZRZipFile::isZipFile(const char* path) {
    return isZipFile(pathOf(path));
}

}  // namespace ZroCommon
