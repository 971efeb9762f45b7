#include "zro/streams/ZRTempFile.h"

#include <array>
#include <cstdint>
#include <exception>
#include <ostream>
#include <span>
#include <string>
#include <system_error>

#include "zro/foundation/ZRLock.h"
#include "zro/foundation/internal/Raise.h"
#include "zro/platform/internal/NativeFile.h"
#include "zro/platform/internal/RandomBytes.h"
#include "zro/platform/internal/TempFile.h"
#include "zro/streams/compression/internal/InflateState.h"

namespace ZroCommon {
namespace {

constexpr int kCreateTries = 100;
constexpr int kRemoveTries = 10;

UnicodeString textOf(const char* bytes) {
    return bytes == nullptr ? UnicodeString() : UnicodeString::fromUTF8(bytes);
}

void appendHex(UnicodeString& text, unsigned number, int leastDigits) {
    std::array<char16_t, 8> digits{};
    int count = 0;
    for (; number != 0 || count < leastDigits; number >>= 4U) {
        digits[digits.size() - static_cast<std::size_t>(++count)] =
            u"0123456789abcdef"[number & 0xFU];
    }
    text.append(digits.data() + digits.size() - count, count);
}

// The part of a name that differs from file to file. The caller holds the library's lock.
UnicodeString nextNumber() {
    static const std::uint32_t s_start = [] {
        std::array<std::byte, 4> bytes{};
        internal::fillWithRandomBytes(bytes);
        std::uint32_t start = 0;
        for (const std::byte byte : bytes) {
            start = start << 8U | std::to_integer<std::uint32_t>(byte);
        }
        return start >> 1U;
    }();
    static std::uint32_t s_made = 0;
    UnicodeString text;
    appendHex(text, internal::processNumber(), 3);
    text.append(u'_');
    appendHex(text, s_start + s_made++, 4);
    return text;
}

[[noreturn]] void throwCannotCreate(const UnicodeString& name, const char16_t* what,
                                    const std::error_code& error) {
    internal::throwIOError(internal::IOError::CannotCreateTempFile, internal::ErrorSite::TempFile,
                           name + what + UnicodeString::fromUTF8(error.message()));
}

// Tries again at once what did not succeed. \return the last error
std::error_code removeStubbornly(const UnicodeString& name) {
    std::error_code error;
    if (internal::fileExists(name)) {
        int tries = 0;
        do {
            error = internal::removeFile(name);
        } while (error && ++tries < kRemoveTries);
    }
    return error;
}

// The caller holds the library's lock.
const UnicodeString& temporaryFolder() {
    struct Folder {
        UnicodeString path = internal::temporaryFolder();
    };
    // It is asked for in destructors of static objects too, so it outlives them.
    static const Folder& s_folder = *new Folder;
    return s_folder.path;
}

UnicodeString makeTempFile(const UnicodeString& dir, const UnicodeString& prefix,
                           const UnicodeString& suffix) {
    const ZRMutex guard;
    const UnicodeString start = (dir.isEmpty() ? temporaryFolder() : dir) + prefix;
    for (int tries = 0;;) {
        UnicodeString name = start + nextNumber() + suffix;
        const std::error_code error = internal::makeNewFile(name);
        if (!error) {
            return name;
        }
        if (error == std::errc::file_exists) {
            continue;
        }
        if (const std::error_code kept = removeStubbornly(name)) {
            throwCannotCreate(name, u" (cannot remove)\n", kept);
        }
        if (++tries == kCreateTries) {
            throwCannotCreate(name, u" (cannot create)\n", error);
        }
    }
}

}  // namespace

ZRTempFile::ZRTempFile(const UnicodeString& dir, const UnicodeString& prefix,
                       const UnicodeString& suffix)
    : m_fileName(makeTempFile(dir, prefix, suffix)) {}

ZRTempFile::ZRTempFile(const char* dir, const char* prefix, const char* suffix)
    : m_fileName(makeTempFile(textOf(dir), textOf(prefix), textOf(suffix))) {}

ZRTempFile::~ZRTempFile() noexcept(false) {
    if (std::uncaught_exceptions() == 0) {
        remove();
        return;
    }
    try {
        removeTempFile(m_fileName);
    } catch (...) {  // NOLINT(bugprone-empty-catch): the exception under way tells more
    }
}

ZRCStr ZRTempFile::releaseFileName() {
    ZRCStr name = m_fileName;
    m_fileName.remove();
    return name;
}

ZRCStr ZRTempFile::setFileName(const UnicodeString& name) {
    remove();
    m_fileName = name;
    return m_fileName;
}

ZRCStr ZRTempFile::setFileName(const char* name) {
    return setFileName(textOf(name));
}

ZRCStr ZRTempFile::setFileName(const UnicodeString& dir, const UnicodeString& prefix,
                               const UnicodeString& suffix) {
    remove();
    m_fileName = makeTempFile(dir, prefix, suffix);
    return m_fileName;
}

ZRCStr ZRTempFile::setFileName(const char* dir, const char* prefix, const char* suffix) {
    return setFileName(textOf(dir), textOf(prefix), textOf(suffix));
}

void ZRTempFile::remove() const {
    if (isTempFile() && !removeTempFile(m_fileName)) {
        internal::throwIOError(internal::IOError::CannotRemoveTempFile,
                               internal::ErrorSite::TempFile, m_fileName + u"\n");
    }
}

bool ZRTempFile::inflate(const unsigned char* data, unsigned int size) const {
    const auto file = internal::openOutputFile(m_fileName);
    return file != nullptr && inflate(*file, data, size) && file->flush();
}

bool ZRTempFile::inflate(std::ostream& stream, const unsigned char* data, unsigned int size) {
    internal::InflateState state;
    if (!state.isReady()) {
        return false;
    }
    state.setInput({reinterpret_cast<const char*>(data), size}, true);
    std::array<char, 16384> piece;  // NOLINT(cppcoreguidelines-pro-type-member-init)
    while (const std::size_t made = state.expand(piece)) {
        stream.write(piece.data(), static_cast<std::streamsize>(made));
    }
    return state.isComplete() && !stream.fail();
}

ZRCStr ZRTempFile::getTempDirectory() {
    const ZRMutex guard;
    return temporaryFolder();
}

ZRCStr ZRTempFile::getTempFile(const UnicodeString& dir, const UnicodeString& prefix,
                               const UnicodeString& suffix) {
    return makeTempFile(dir, prefix, suffix);
}

ZRCStr ZRTempFile::getTempFile(const char* dir, const char* prefix, const char* suffix) {
    return getTempFile(textOf(dir), textOf(prefix), textOf(suffix));
}

bool ZRTempFile::removeTempFile(const UnicodeString& name) {
    return !removeStubbornly(name);
}

bool ZRTempFile::removeTempFile(const char* name) {
    return removeTempFile(textOf(name));
}

}  // namespace ZroCommon
