#include "zro/containers/ole/OleCompFile.h"

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include "zro/containers/ole/internal/NameKey.h"

namespace ZroCommon {
namespace {

using internal::NameKey;

constexpr long kNotFound = -1;

/// Searches entries that hang together as siblings: first an entry itself, then all under its left
/// sibling, then all under its right one. The order by which the tree was built is not relied on.
class SiblingSearch {
public:
    explicit SiblingSearch(const OleCompFile& file) : m_file(file) {}

    /// \return the index that the entry found bears, or -1
    long find(long first, const char* name) {
        const NameKey key(name);
        m_isVisited.assign(m_file.getDirVec().size(), false);
        m_waiting.assign(1, first);
        while (!m_waiting.empty()) {
            const long index = m_waiting.back();
            m_waiting.pop_back();
            const OleDirInfo* const entry = visit(index);
            if (entry == nullptr) {
                continue;
            }
            if (key.matches(entry->getName())) {
                return entry->getDirID();
            }
            m_waiting.push_back(entry->getRightSiblingID());
            m_waiting.push_back(entry->getLeftSiblingID());
        }
        return kNotFound;
    }

private:
    // Null outside of the directory, and for an entry that was searched before with all under it.
    const OleDirInfo* visit(long index) {
        const OleDirInfo* const entry = m_file.getDirInfo(index);
        if (entry == nullptr || m_isVisited[static_cast<std::size_t>(index)]) {
            return nullptr;
        }
        m_isVisited[static_cast<std::size_t>(index)] = true;
        return entry;
    }

    const OleCompFile& m_file;
    std::vector<bool> m_isVisited;
    std::vector<long> m_waiting;
};

bool isPath(const OleDirPath* path) {
    if (path == nullptr || path->count < 1
        || path->count > static_cast<int>(std::size(path->names))) {
        return false;
    }
    return std::all_of(path->names, path->names + path->count,
                       [](const char* name) { return name != nullptr; });
}

long childOf(const OleDirInfo* entry) {
    return entry == nullptr ? kNotFound : entry->getChildID();
}

// On purpose: among right siblings alone, and the last one when none has the name.
const OleDirInfo* findPresentation(const OleCompFile& file, long first) {
    const NameKey key("\2OlePres000");
    const OleDirInfo* found = nullptr;
    std::vector<bool> isVisited(file.getDirVec().size());
    for (long index = first; file.getDirInfo(index) != nullptr;
         index = found->getRightSiblingID()) {
        if (isVisited[static_cast<std::size_t>(index)]) {
            break;
        }
        isVisited[static_cast<std::size_t>(index)] = true;
        found = file.getDirInfo(index);
        if (key.matches(found->getName())) {
            break;
        }
    }
    return found;
}

}  // namespace

long OleCompFile::getDirIndex(OleDirPath* path) {
    try {
        if (!isPath(path)) {
            return kNotFound;
        }
        SiblingSearch search(*this);
        long level = childOf(getDirInfo(0));
        for (int i = 0; i + 1 < path->count; ++i) {
            const long storage = search.find(level, path->names[i]);
            if (storage < 0) {
                return 0;  // On purpose: the root, not a failure. It is no stream, so none opens.
            }
            level = childOf(getDirInfo(storage));
        }
        return search.find(level, path->names[path->count - 1]);
    } catch (...) {
        return kNotFound;
    }
}

OleStream* OleCompFile::OLEopenStream(OleDirPath* path) {
    return openStreamAt(getDirIndex(path));
}

OleStream* OleCompFile::OLEopenObject(OleDirPath* path) {
    try {
        const long first = childOf(getDirInfo(getDirIndex(path)));
        const OleDirInfo* const entry = findPresentation(*this, first);
        return entry == nullptr ? nullptr : openStreamAt(entry->getDirID());
    } catch (...) {
        return nullptr;
    }
}

OleStream* OleCompFile::openStreamAt(long index) {
    try {
        auto stream = std::make_unique<OleStream>(this);
        const bool isOpen = stream->GetStreamChain(index) && stream->OLEseek(0, 0) >= 0;
        return isOpen ? stream.release() : nullptr;
    } catch (...) {
        return nullptr;
    }
}

void OleCompFile::OLEcloseStream(OleStream* stream) {
    delete stream;
}

}  // namespace ZroCommon
