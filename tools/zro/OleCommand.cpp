#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <unicode/locid.h>

#include "zro/containers/ole/OleStream.h"

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/CompoundInput.h"
#include "tools/zro/OleProperties.h"
#include "tools/zro/Text.h"
#include "tools/zro/Values.h"

namespace zro {
namespace {

using ZroCommon::OleCompFile;
using ZroCommon::OleDirInfo;
using ZroCommon::OleStream;
using Json = nlohmann::ordered_json;

struct Options {
    std::string file;
    std::vector<std::string> streams;
};

// "2004-02-29 12:30" from the tenths of microseconds since 1601; empty for none.
std::string timeText(std::uint64_t ticks) {
    using namespace std::chrono;
    constexpr std::uint64_t kTicksPerMinute = 600'000'000;
    constexpr std::uint64_t kLastMinute = 4'417'546'560;  // the end of the year 9999
    const std::uint64_t minute = ticks / kTicksPerMinute;
    if (ticks == 0 || minute >= kLastMinute) {
        return "";
    }
    const sys_days start = sys_days(January / 1 / 1601);
    const sys_time<minutes> time = start + minutes(static_cast<std::int64_t>(minute));
    const auto day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss<minutes> clock(time - day);
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                  static_cast<int>(clock.minutes().count()));
    return text.data();
}

const char* typeName(const OleDirInfo& entry) {
    constexpr std::array kNames = {"unknown",    "storage",  "stream",
                                   "lock bytes", "property", "root"};
    return kNames[entry.getStorageType()];
}

// --- list

Json jsonOf(const CompoundEntry& entry, const OleDirInfo& info) {
    Json object;
    object["path"] = shownPath(entry.path);
    object["type"] = typeName(info);
    if (info.isStream()) {
        object["size"] = info.getStreamSize();
    }
    for (const auto& [key, ticks] : {std::pair("created", info.getCreateTime()),
                                     std::pair("modified", info.getModifyTime())}) {
        if (!timeText(ticks).empty()) {
            object[key] = timeText(ticks);
        }
    }
    object["entry"] = entry.index;
    object["block"] = info.getStartSect();
    return object;
}

void list(Session& session, const Options& options) {
    const auto input = openCompound(session, options.file);
    if (!input) {
        return;
    }
    for (const CompoundEntry& entry : entriesOf(*input->file)) {
        const OleDirInfo& info = *input->file->getDirInfo(entry.index);
        if (session.settings().json) {
            printLine(session, jsonOf(entry, info));
            continue;
        }
        const bool isStream = info.isStream();
        const std::string time = timeText(info.getModifyTime());
        session.out() << rightAligned(isStream ? std::to_string(info.getStreamSize()) : "-", 10)
                      << "  " << rightAligned(time, 16) << "  "
                      << std::string(2 * (entry.path.size() - 1), ' ') << printable(entry.name())
                      << (isStream ? "" : "/") << "\n";
    }
}

// --- cat

bool isSameName(const UnicodeString& left, const UnicodeString& right) {
    const icu::Locale& root = icu::Locale::getRoot();
    return UnicodeString(left).toUpper(root) == UnicodeString(right).toUpper(root);
}

bool isSamePath(const std::vector<UnicodeString>& path, const std::vector<UnicodeString>& wanted) {
    return std::equal(path.begin(), path.end(), wanted.begin(), wanted.end(), isSameName);
}

void writeStream(Session& session, const CompoundInput& input, const CompoundEntry& entry,
                 const std::string& file) {
    const std::string name = shownPath(entry.path);
    OleStream stream(input.file.get());
    input.stream->clear();  // an earlier stream may have been cut off
    if (!stream.GetStreamChain(entry.index) || stream.OLEseek(0, 0) < 0) {
        session.fail(file, "no place for " + name + ": zro ole why tells");
        return;
    }
    std::array<char, 65536> piece{};
    constexpr int kPiece = static_cast<int>(piece.size());
    for (int got = kPiece; got == kPiece && !session.isOutputLost();) {
        got = stream.OLEread(piece.data(), kPiece);
        session.out().write(piece.data(), got);
    }
    if (stream.OLEtell() != stream.GetStreamSize() && !session.isOutputLost()) {
        session.fail(file, name + " is damaged behind byte "
                               + withThousands(static_cast<std::uint64_t>(stream.OLEtell()))
                               + ": zro ole why tells");
    }
}

void cat(Session& session, const Options& options) {
    const auto input = openCompound(session, options.file);
    if (!input) {
        return;
    }
    const std::vector<CompoundEntry> entries = entriesOf(*input->file);
    for (const std::string& name : options.streams) {
        const std::vector<UnicodeString> wanted = namesIn(name);
        const auto found = std::find_if(entries.begin(), entries.end(), [&](const auto& entry) {
            return isSamePath(entry.path, wanted)
                   && input->file->getDirInfo(entry.index)->isStream();
        });
        if (found == entries.end()) {
            session.fail(options.file, "no such stream: " + printable(fromUtf8(name)));
            continue;
        }
        writeStream(session, *input, *found, options.file);
    }
}

// --- why

/// Tells what was found when the file was opened, and follows the chain of each stream.
class FileReport {
public:
    FileReport(Session& session, const CompoundInput& input)
        : m_session(session), m_input(input), m_file(*input.file) {}

    /// \return the number of streams that are not whole
    int tell() {
        tellTables();
        int damaged = 0;
        int whole = 0;
        for (const CompoundEntry& entry : entriesOf(m_file)) {
            const OleDirInfo& info = *m_file.getDirInfo(entry.index);
            const std::string fault = info.isStream() ? faultOf(info) : "";
            whole += info.isStream() && fault.empty() ? 1 : 0;
            if (!fault.empty()) {
                step("stream", shownPath(entry.path) + ": " + fault);
                ++damaged;
            }
        }
        step("streams", std::to_string(whole) + " whole, " + std::to_string(damaged) + " not");
        return damaged;
    }

private:
    void tellTables() {
        step("header", "version " + m_file.getVersion() + ", "
                           + (m_file.isLittleEndian() ? "little" : "big") + "-endian, blocks of "
                           + counted(bytes(m_file.getBytesPerBlock()), "byte") + ", mini blocks of "
                           + counted(bytes(m_file.getBytesPerMini()), "byte"));
        step("FAT", counted(bytes(m_file.getFatBlockCount()), "block"));
        step("MiniFAT", counted(bytes(m_file.getMiniFatBlockCount()), "block") + " from block "
                            + std::to_string(m_file.getMiniFatStartBlock())
                            + ", mini stream from block "
                            + std::to_string(m_file.getMiniStartSect()));
        step("directory", counted(bytes(m_file.getDirCount()), "place") + " from block "
                              + std::to_string(m_file.getDirStartBlock()));
    }

    static std::uint64_t bytes(long count) { return static_cast<std::uint64_t>(count); }

    // Why a stream cannot be read to its end; empty when it can.
    std::string faultOf(const OleDirInfo& info) {
        const long size = info.getStreamSize();
        if (size < 0) {
            return "the size is negative";
        }
        const bool isMini = size < m_file.getMiniFatCutoff();
        if (isMini && m_file.getMiniStartSect() == -1) {
            return "there is no mini stream for it";
        }
        const long perBlock = isMini ? m_file.getBytesPerMini() : m_file.getBytesPerBlock();
        const std::string fault = chainFault(info, isMini, (size + perBlock - 1) / perBlock);
        return fault.empty() ? readFault(info) : fault;
    }

    std::string chainFault(const OleDirInfo& info, bool isMini, long wanted) const {
        const std::string what = isMini ? "mini block " : "block ";
        std::vector<bool> isVisited;
        long last = -1;
        long block = info.getStartSect();
        for (long i = 0; i < wanted; ++i) {
            if (block < 0) {
                return "the chain ends with " + std::to_string(block) + " behind "
                       + (last < 0 ? "nothing" : what + std::to_string(last)) + ", "
                       + std::to_string(i) + " of " + counted(bytes(wanted), "block") + " in";
            }
            const auto place = static_cast<std::size_t>(block);
            if (place < isVisited.size() && isVisited[place]) {
                return "the chain comes to " + what + std::to_string(block)
                       + " for the second time";
            }
            const long next = m_file.getNextBlock(block, isMini);
            if (next != -1) {
                isVisited.resize(std::max(isVisited.size(), place + 1));
                isVisited[place] = true;
            }
            last = block;
            block = next;
        }
        return "";
    }

    std::string readFault(const OleDirInfo& info) {
        OleStream stream(&m_file);
        m_input.stream->clear();  // an earlier stream may have been cut off
        std::array<char, 65536> piece{};
        if (stream.GetStreamChain(info.getDirID()) && stream.OLEseek(0, 0) == 0) {
            while (stream.OLEread(piece.data(), static_cast<int>(piece.size())) > 0) {
            }
            if (stream.OLEtell() == stream.GetStreamSize()) {
                return "";
            }
        }
        return "the file ends behind byte " + std::to_string(stream.OLEtell()) + " of it";
    }

    void step(const char* what, const std::string& text) {
        if (m_session.settings().json) {
            printLine(m_session, Json{{"part", what}, {"text", text}});
            return;
        }
        m_session.out() << rowLabel(m_session, what) << text << "\n";
    }

    Session& m_session;
    const CompoundInput& m_input;
    OleCompFile& m_file;
};

void why(Session& session, const Options& options) {
    const auto input = openCompound(session, options.file);
    if (!input) {
        return;
    }
    const int damaged = FileReport(session, *input).tell();
    if (damaged > 0) {
        session.fail(options.file,
                     "not whole: " + counted(static_cast<unsigned>(damaged), "stream"));
    }
}

}  // namespace

void addOleCommand(CLI::App& program, Task& task) {
    CLI::App& command = addCommand(
        program, "ole", "Look into compound files, the office documents before XML",
        "Streams go by the names of their storages and their own, with \"/\" between them and\n"
        "capitals or not. Invisible characters can be written as they are listed: \\u{5}.",
        "  zro ole list letter.doc\n"
        "  zro ole cat letter.doc 'ObjectPool/_1/\\u{1}CompObj' > CompObj\n"
        "  zro ole props letter.doc\n"
        "  zro ole why damaged.xls\n");
    command.require_subcommand(1);
    const auto options = std::make_shared<Options>();
    const FileOperations operations(command, task, "FILE", "A compound file");
    operations.add("list", "Storages and streams as a tree, with size and time", options, list);
    CLI::App& catCommand = operations.add("cat", "Write the content of streams", options, cat);
    addOption(catCommand, "STREAM", options->streams, "...", "Paths of streams, as listed")
        ->required();
    addOlePropertyOperations(operations);
    operations.add("why", "What is wrong with a file: which check, at which block", options, why);
}

}  // namespace zro
