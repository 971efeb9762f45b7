#include "tools/zro/CompoundInput.h"

#include <array>
#include <cstdlib>
#include <utility>

#include "tools/zro/Opening.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::JZStreamIOobj;
using ZroCommon::OleCheck;
using ZroCommon::OleCompFile;
using ZroCommon::OleDirInfo;
using ZroCommon::OleRefusal;

struct Reason {
    OleCheck check;
    const char* before;  // of the number
    const char* after;
};

constexpr const char* kNotInFile = ", which is not wholly in the file";
constexpr const char* kTwice = " for the second time";

constexpr std::array kReasons = {
    Reason{OleCheck::BlockShift, "the header gives 2^", " bytes for a block"},
    Reason{OleCheck::MiniShift, "the header gives 2^", " bytes for a mini block"},
    Reason{OleCheck::DirectoryStart, "the header gives block ", " as the directory's first"},
    Reason{OleCheck::MiniFatStart, "the header gives block ", " as the MiniFAT's first"},
    Reason{OleCheck::IndirectFatStart, "the header gives block ",
           " as first in the list of the FAT"},
    Reason{OleCheck::IndirectFatRead, "the list of the FAT leads to block ", kNotInFile},
    Reason{OleCheck::IndirectFatLoop, "the list of the FAT leads to block ", kTwice},
    Reason{OleCheck::IndirectFatCapacity, "blocks of 2^",
           " bytes have no room for a list of the FAT"},
    Reason{OleCheck::FatRead, "the FAT has block ", kNotInFile},
    Reason{OleCheck::FatCapacity, "blocks of 2^", " bytes have no room for a number of the FAT"},
    Reason{OleCheck::MiniFatRead, "the MiniFAT leads to block ", kNotInFile},
    Reason{OleCheck::MiniFatLength, "the MiniFAT has ", " blocks, more than the FAT can lead to"},
    Reason{OleCheck::DirectoryRead, "the directory leads to block ", kNotInFile},
    Reason{OleCheck::DirectoryLoop, "the directory leads to block ", kTwice},
    Reason{OleCheck::DirectoryCapacity, "blocks of 2^",
           " bytes have no room for a directory entry"},
    Reason{OleCheck::DirectoryName, "the directory's block ", " has a name longer than 64 bytes"},
};

/// Goes through the directory without regard to how deep it claims to be.
class DirectoryWalk {
public:
    explicit DirectoryWalk(const OleCompFile& file)
        : m_file(file), m_isVisited(file.getDirVec().size()) {}

    std::vector<CompoundEntry> entries() {
        const OleDirInfo* const root = m_file.getDirInfo(0);
        await(root == nullptr ? -1 : root->getChildID(), {});
        while (!m_waiting.empty()) {
            Step step = std::move(m_waiting.back());
            m_waiting.pop_back();
            const OleDirInfo& entry = *m_file.getDirInfo(step.entry.index);
            if (!step.isLeftDone) {
                takeApart(entry, step);
                continue;
            }
            const std::vector<UnicodeString> path = step.entry.path;
            m_entries.push_back(std::move(step.entry));
            await(entry.getChildID(), path);
        }
        return std::move(m_entries);
    }

private:
    struct Step {
        CompoundEntry entry;
        bool isLeftDone;
    };

    void await(long index, std::vector<UnicodeString> path) {
        const OleDirInfo* const entry = m_file.getDirInfo(index);
        if (entry == nullptr || m_isVisited[static_cast<std::size_t>(index)]) {
            return;
        }
        m_isVisited[static_cast<std::size_t>(index)] = true;
        path.push_back(entry->getName());
        m_waiting.push_back({{index, std::move(path)}, false});
    }

    // Left siblings come first, right ones last.
    void takeApart(const OleDirInfo& entry, Step& step) {
        std::vector<UnicodeString> parent = step.entry.path;
        parent.pop_back();
        await(entry.getRightSiblingID(), parent);
        step.isLeftDone = true;
        m_waiting.push_back(std::move(step));
        await(entry.getLeftSiblingID(), parent);
    }

    const OleCompFile& m_file;
    std::vector<bool> m_isVisited;
    std::vector<Step> m_waiting;
    std::vector<CompoundEntry> m_entries;
};

}  // namespace

std::optional<CompoundInput> openCompound(Session& session, const std::string& name) {
    const Input input(name);
    CompoundInput result;
    result.stream = openSeekableInput(session, input);
    if (result.stream == nullptr) {
        return std::nullopt;
    }
    result.bytes = std::make_unique<JZStreamIOobj>(result.stream.get());
    result.file = std::make_unique<OleCompFile>();
    if (!result.file->OLEopen(result.bytes.get())) {
        session.fail(input.shownName(), reasonOf(result.file->getRefusal()));
        return std::nullopt;
    }
    return result;
}

std::string reasonOf(const OleRefusal& refusal) {
    for (const auto& [check, before, after] : kReasons) {
        if (check == refusal.check) {
            return before + std::to_string(refusal.number) + after;
        }
    }
    switch (refusal.check) {
    case OleCheck::HeaderSize: return "is too short for a compound file";
    case OleCheck::Signature: return "is no compound file";
    case OleCheck::Memory: return "out of memory";
    default: return "cannot be read";
    }
}

std::vector<CompoundEntry> entriesOf(const OleCompFile& file) {
    return DirectoryWalk(file).entries();
}

std::string shownPath(const std::vector<UnicodeString>& path) {
    std::string shown;
    for (const UnicodeString& name : path) {
        shown += (shown.empty() ? "" : "/") + printable(name);
    }
    return shown;
}

std::vector<UnicodeString> namesIn(const std::string& path) {
    std::vector<UnicodeString> names(1);
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t close = path.compare(at, 3, "\\u{") == 0 ? path.find('}', at) : path.npos;
        if (close != path.npos) {
            const unsigned long number = std::strtoul(path.c_str() + at + 3, nullptr, 16);
            names.back().append(static_cast<UChar32>(number));
            at = close + 1;
            continue;
        }
        const std::size_t end = std::min(path.find_first_of("/\\", at + 1), path.size());
        if (path[at] == '/') {
            names.emplace_back();
            ++at;
            continue;
        }
        names.back() += fromUtf8(std::string_view(path).substr(at, end - at));
        at = end;
    }
    return names;
}

}  // namespace zro
