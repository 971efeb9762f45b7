// Any bytes as an office package: what it says of its parts is the same each time it is asked, from
// whichever part on, and nothing outside of it is opened.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "zro/containers/zip/ZRZipFile.h"
#include "zro/uri/ZRUri.h"

#include "fuzz/Input.h"

namespace {

using ZroCommon::UnicodeString;
using ZroCommon::ZRZipFile;
using ZroCommon::ZRZipFileEntry;
using ZroCommon::fuzzing::require;

constexpr unsigned kParts = 16;

class Refusing : public ZroCommon::ZRUriReferenceResolver {
public:
    std::istream* getStream(const UnicodeString&) override { std::abort(); }
};

std::vector<UnicodeString> askPart(const ZRZipFile& package, ZRZipFileEntry* entry) {
    std::vector<UnicodeString> answers;
    for (const char16_t* key :
         {u"rId1", u"1", u"t",
          u"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument"}) {
        for (const UnicodeString& target : {package.getRelationshipTargetFromId(key, entry),
                                            package.getRelationshipTargetFromType(key, entry)}) {
            const UnicodeString mode = package.getRelationshipTargetMode(target, entry);
            require(!mode.isEmpty() && (!target.isEmpty() || mode == u"Internal"));
            answers.push_back(target + u" " + mode);
        }
    }
    return answers;
}

std::vector<UnicodeString> askAll(const std::string& bytes, bool backwards) {
    std::istringstream stream(bytes);
    ZRZipFile package(&stream, false);
    const unsigned count =
        package.getFileEntryCount() < kParts ? package.getFileEntryCount() : kParts;
    std::vector<std::vector<UnicodeString>> parts(count + 1);
    for (unsigned i = 0; i <= count; ++i) {
        const unsigned index = backwards ? count - i : i;
        ZRZipFileEntry* const entry = index == count ? nullptr : package.getFileEntry(index);
        parts[index] = askPart(package, entry);
        parts[index].push_back(package.getContentType(entry));
        require(askPart(package, entry) == askPart(ZRZipFile(package), entry));
    }
    std::vector<UnicodeString> all;
    for (const auto& answers : parts) {
        all.insert(all.end(), answers.begin(), answers.end());
    }
    return all;
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Refusing s_refusing;
    ZroCommon::ZRUri::setUriReferenceResolver(&s_refusing);
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    require(askAll(bytes, false) == askAll(bytes, true));
    std::istringstream stream("x" + bytes);
    stream.seekg(1);
    const auto type = ZRZipFile::detectOOXDocument(&stream);
    require(stream.tellg() == std::streampos(1));
    require(ZRZipFile(&stream, false).detectOOXDocument() == type);
    return 0;
}
