#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/PackageInput.h"
#include "tools/zro/Text.h"
#include "tools/zro/Values.h"

namespace zro {
namespace {

using ZroCommon::ZRPtr;
using ZroCommon::ZRZipEntry;
using ZroCommon::ZRZipFileEntry;
using Json = nlohmann::ordered_json;

struct Options {
    std::string file;
    std::vector<std::string> entries;
    bool stored = false;
};

// MS-DOS counts years from 1980 and seconds in twos.
std::string dateOf(const ZRZipFileEntry& entry) {
    const unsigned date = entry.getDate();
    const unsigned time = entry.getTime();
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04u-%02u-%02u %02u:%02u", 1980 + (date >> 9U),
                  date >> 5U & 15U, date & 31U, time >> 11U, time >> 5U & 63U);
    return text.data();
}

std::string nameOf(const ZRZipFileEntry& entry) {
    return printable(entry.getFileName());
}

Json jsonOf(const ZRZipFileEntry& entry) {
    Json object;
    object["name"] = toUtf8(entry.getFileName());
    object["size"] = entry.getUncompressedSize();
    object["packed"] = entry.getCompressedSize();
    object["method"] = methodName(entry);
    object["date"] = dateOf(entry);
    object["crc32"] = asHex(entry.getCrc32());
    object["encrypted"] = (entry.getFlags() & 1U) != 0;
    object["offset"] = entry.getPosition();
    return object;
}

constexpr int kDescriptorSize = 16;
constexpr const char* kOutOfReach =
    "has no directory where its walk ends: entries may be out of reach";

struct Signature {
    std::uint32_t number;
    const char* meaning;
};

constexpr std::array kSignatures = {
    Signature{ZRZipEntry::kLocalHeaderSignature, "an entry that --limits keeps out of reach"},
    Signature{ZRZipEntry::kDirectorySignature, "the central directory"},
    Signature{ZRZipEntry::kEndSignature, "the end record"},
    Signature{0x08064B50, "an archive extra data record"},
    Signature{0x06064B50, "a ZIP64 end record"},
    Signature{0x30304B50, "the marker of a split archive"},
    Signature{0, "nothing, or noughts"},
};

std::string meaningOf(std::uint32_t signature) {
    for (const auto& [number, meaning] : kSignatures) {
        if (number == signature) {
            return meaning;
        }
    }
    return "no signature: " + asHex(signature);
}

bool isSound(std::uint32_t signature) {
    return signature == ZRZipEntry::kDirectorySignature || signature == ZRZipEntry::kEndSignature;
}

// Whether the directory stands where the walk ends.
bool isWhole(PackageInput& input) {
    std::int64_t position = 0;
    if (input.entries() > 0) {
        const ZRZipFileEntry& last = input.entry(input.entries() - 1);
        position = last.getDataPosition() + last.getCompressedSize();
    }
    for (;; position += kDescriptorSize) {
        const std::uint32_t signature = signatureAt(*input.stream, position);
        if (signature != ZRZipEntry::kDescriptorSignature) {
            return isSound(signature);
        }
    }
}

void list(Session& session, const Options& options) {
    auto input = openPackage(session, options.file);
    for (unsigned i = 0; input && i < input->entries(); ++i) {
        const ZRZipFileEntry& entry = input->entry(i);
        if (session.settings().json) {
            printLine(session, jsonOf(entry));
            continue;
        }
        session.out() << rightAligned(std::to_string(entry.getUncompressedSize()), 10) << ' '
                      << rightAligned(std::to_string(entry.getCompressedSize()), 10) << "  "
                      << leftAligned(methodName(entry), 9) << dateOf(entry) << "  " << nameOf(entry)
                      << "\n";
    }
    if (input && !isWhole(*input)) {
        session.note(options.file, kOutOfReach, "zro zip why tells where and why");
    }
}

// What is wrong with the data of an entry, once they have been written; see `faultOfData`.
std::string writeEntry(std::ostream& out, PackageInput& input, ZRZipFileEntry& entry,
                       bool isStored) {
    if (!isStored) {
        return faultOfData(*input.stream, entry,
                           checksumOf(*entry.getUncompressedStream(false), &out));
    }
    const Checksum sum = checksumOf(*entry.getCompressedStream(false), &out);
    const std::uint32_t size = entry.getCompressedSize();
    return sum.size() < size ? damagedBehind(sum.size(), size) : "";
}

void cat(Session& session, const Options& options) {
    auto input = openPackage(session, options.file);
    for (const std::string& name : options.entries) {
        if (!input) {
            return;
        }
        ZRZipFileEntry* const entry = input->package.getFileEntry(fromUtf8(name));
        if (entry == nullptr) {
            session.fail(options.file, "no such entry: " + printable(fromUtf8(name)));
            continue;
        }
        const std::string fault = writeEntry(session.out(), *input, *entry, options.stored);
        if (!fault.empty() && !session.isOutputLost()) {
            session.fail(options.file, nameOf(*entry) + " " + fault);
        }
    }
}

/// Tells step by step how the library goes through a package.
class WalkReport {
public:
    WalkReport(Session& session, PackageInput& input) : m_session(session), m_input(input) {
        input.stream->clear();
        input.stream->seekg(0, std::ios_base::end);
        m_size = input.stream->tellg();
    }

    /// \return whether the walk ended where a sound package does
    bool tellWalk() {
        for (unsigned i = 0; i < m_input.entries(); ++i) {
            const ZRZipFileEntry& entry = m_input.entry(i);
            tellDescriptors();
            tellEntry(entry);
            m_position = entry.getDataPosition() + entry.getCompressedSize();
            m_last = &entry;
        }
        tellDescriptors();
        const std::uint32_t signature = signatureHere();
        step("end", reasonFor(signature));
        return isSound(signature);
    }

    /// The number of entries that are not as their headers say.
    unsigned damaged() const { return m_damaged; }

private:
    std::uint32_t signatureHere() {
        return m_position < m_size ? signatureAt(*m_input.stream, m_position) : 0;
    }

    // Reads the data by an entry of its own, which lets go of them.
    std::string faultOf(const ZRZipFileEntry& entry) const {
        std::istream& package = *m_input.stream;
        package.clear();
        package.seekg(entry.getPosition());
        const ZRPtr<ZRZipFileEntry> own(new ZRZipFileEntry(package));
        return faultOfData(package, *own, checksumOf(*own->getUncompressedStream(false), nullptr));
    }

    void tellEntry(const ZRZipFileEntry& entry) {
        const std::string fault = isSizeBehindData(entry) ? "" : faultOf(entry);
        step("entry", nameOf(entry) + ", " + methodName(entry) + ", "
                          + counted(entry.getCompressedSize(), "byte")
                          + (fault.empty() ? "" : ", " + fault));
        m_damaged += fault.empty() ? 0U : 1U;
    }

    void tellDescriptors() {
        while (signatureHere() == ZRZipEntry::kDescriptorSignature) {
            step("descriptor", "stepped over, its sizes correct nothing");
            m_position += kDescriptorSize;
        }
    }

    std::string reasonFor(std::uint32_t signature) const {
        if (isSound(signature)) {
            return meaningOf(signature);
        }
        if (m_last != nullptr && m_last->getCompressedSize() == kInZip64Field) {
            return "nothing: the size of \"" + nameOf(*m_last) + "\" is too large for its header";
        }
        if (m_last != nullptr && m_position > m_size) {
            return "the file ends "
                   + counted(static_cast<std::uint64_t>(m_position - m_size), "byte") + " before \""
                   + nameOf(*m_last) + "\" does";
        }
        if (m_last != nullptr && isSizeBehindData(*m_last)) {
            return "data: the size of \"" + nameOf(*m_last)
                   + "\" stands only in a descriptor behind it";
        }
        return m_size - m_position < 4 ? "the end of the file, without a directory"
                                       : meaningOf(signature);
    }

    void step(const char* what, const std::string& text) {
        if (m_session.settings().json) {
            Json object;
            object["offset"] = m_position;
            object["record"] = what;
            object["text"] = text;
            printLine(m_session, object);
            return;
        }
        m_session.out() << rightAligned(std::to_string(m_position), 10) << "  "
                        << rowLabel(m_session, what) << text << "\n";
    }

    Session& m_session;
    PackageInput& m_input;
    std::int64_t m_size = 0;
    std::int64_t m_position = 0;
    const ZRZipFileEntry* m_last = nullptr;
    unsigned m_damaged = 0;
};

void why(Session& session, const Options& options) {
    auto input = openPackage(session, options.file);
    if (!input) {
        return;
    }
    WalkReport report(session, *input);
    if (!report.tellWalk()) {
        session.fail(options.file, kOutOfReach);
    }
    if (report.damaged() > 0) {
        session.fail(options.file,
                     "not wholly readable: " + counted(report.damaged(), "entry", "entries"));
    }
}

}  // namespace

void addZipCommand(CLI::App& program, Task& task) {
    CLI::App& command = addCommand(
        program, "zip", "Look into ZIP packages, such as office documents and books",
        "Packages are read by their local headers from the start on, never by their directory.\n"
        "So an entry whose size is not in its header hides those behind it; `why` tells.",
        "  zro zip list book.epub\n"
        "  zro zip cat book.epub META-INF/container.xml\n"
        "  zro zip why streamed.zip\n"
        "  zro zip list 'jar:file:///tmp/outer.zip!/inner.zip'\n");
    command.require_subcommand(1);
    const auto options = std::make_shared<Options>();
    const FileOperations operations(command, task, "PACKAGE", "A ZIP package");
    operations.add("list", "The entries, with size, packed size, method and date", options, list);
    CLI::App& catCommand = operations.add("cat", "Write the data of entries", options, cat);
    addOption(catCommand, "ENTRY", options->entries, "...", "Names of entries, exactly as listed")
        ->required();
    catCommand.add_flag("--stored", options->stored, "Write the bytes as they are stored");
    operations.add("why", "Record by record, which data are damaged and why the walk ends", options,
                   why);
}

}  // namespace zro
