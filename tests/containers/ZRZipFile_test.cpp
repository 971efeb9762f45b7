#include "zro/containers/zip/ZRZipFile.h"

#include <memory>
#include <sstream>

#include "tests/containers/Listing.h"
#include "tests/support/Streams.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"
#include "tests/support/ZipBuilder.h"
#include "zro/streams/ZRMemStream.h"

namespace ZroCommon::testing {
namespace {

std::string listed(const std::string& bytes) {
    return listing(opened(bytes));
}

std::string shortPackage() {
    return ZipBuilder().stored("a", "one").deflated("b/c.xml", "two").stored("b/", "").package();
}

TEST(ZRZipFile, WalksFromHeaderToHeader) {
    const ZipBuilder one = ZipBuilder().stored("a", "1");
    for (const auto& [what, bytes, entries] : Rows<const char*, std::string, const char*>{
             {"nothing", "", ""},
             {"three bytes", "PK\3", ""},
             {"a whole package", shortPackage(), "a=one b/c.xml=two b/="},
             {"no directory", one.records(), "a=1"},
             {"only an end record", ZipBuilder().package(), ""},
             {"an extra field",
              ZipBuilder().add({.name = "a", .data = "1", .extra = "PK\3\4"}).package(), "a=1"},
             {"descriptors",
              ZipBuilder(one).descriptor(1, 1).descriptor(9, 9).stored("b", "2").package(),
              "a=1 b=2"},
             {"a descriptor without signature", ZipBuilder(one).raw("abcdefghijkl").package(),
              "a=1"},
             {"a size of 4 GiB",
              ZipBuilder()
                  .add({.name = "z", .data = "12", .compressedSize = 0xFFFFFFFF})
                  .package()
                  .substr(0, 33),
              "z=12"},
         }) {
        EXPECT_EQ(listed(bytes), entries) << "for: " << what;
    }
}

// On purpose: headers are read from the start on, and nothing else.
TEST(ZRZipFile, SomethingAheadOfTheFirstHeaderHidesAll) {
    EXPECT_EQ(listed("#!/bin/sh\n" + ZipBuilder().stored("a", "1").package()), "");
}

// On purpose: without its size, the data is where the next signature should stand.
TEST(ZRZipFile, SizesThatStandInADescriptorAloneHideWhatFollows) {
    const ZipMember streamed{.name = "s", .data = "xyz", .flags = 8, .compressedSize = 0};
    EXPECT_EQ(listed(ZipBuilder().add(streamed).descriptor(3, 3).stored("lost", "").package()),
              "s=");
}

// On purpose: it is for the caller to make sense of them.
TEST(ZRZipFile, OtherMethodsAndEncryptedDataAreHandedOutAsStored) {
    const ZipMember other{.name = "x", .data = "raw", .method = 93};
    const ZipMember encrypted{.name = "e", .data = "@#!", .flags = 1};
    EXPECT_EQ(listed(ZipBuilder().add(other).add(encrypted).package()), "x=raw e=@#!");
}

// On purpose: a name is read in the default code page.
TEST(ZRZipFile, TheFlagForNamesInUtf8IsNotLookedAt) {
    for (const char* name : {"\xC3\xA4", "\x84"}) {
        const ZRZipFile package =
            opened(ZipBuilder().add({.name = name}).add({.name = name, .flags = 0x800}).package());
        EXPECT_EQ(package.getFileEntry(1)->getFileName(), UnicodeString(name));
        EXPECT_EQ(package.getFileEntry(0)->getFileName(), UnicodeString(name));
    }
}

TEST(ZRZipFile, FindsTheFirstEntryOfAName) {
    for (const unsigned others : {0U, 100U}) {  // without an index, and with one
        ZipBuilder builder;
        builder.stored("a", "1").stored("a", "2").stored("dir\\x", "3").stored("", "4");
        for (unsigned i = 0; i < others; ++i) {
            builder.stored(std::to_string(i), "");
        }
        const ZRZipFile package = opened(builder.package());
        EXPECT_EQ(package.getFileEntryCount(), 4 + others);
        EXPECT_EQ(package.getFileEntry(4 + others), nullptr);
        EXPECT_EQ(package.getFileEntry(u"a"), package.getFileEntry(0)) << others;
        EXPECT_EQ(package.getFileEntry(u""), package.getFileEntry(3)) << others;
        for (const char16_t* missing : {u"A", u"dir/x", u"b", u"DIR\\x"}) {
            EXPECT_EQ(package.getFileEntry(missing), nullptr) << utf8(missing) << " " << others;
        }
    }
}

TEST(ZRZipFile, TellsWhatTheHeaderSays) {
    std::istringstream stream("junk" + ZipBuilder().deflated("a", std::string(500, 'x')).package());
    stream.seekg(4);
    const ZRZipFile package(&stream, false);
    const ZRZipFileEntry& entry = *package.getFileEntry(0);
    EXPECT_EQ(entry.getCompressionMethod(), CMETHOD_DEFLATE);
    EXPECT_EQ(entry.getUncompressedSize(), 500U);
    EXPECT_LT(entry.getCompressedSize(), 20U);
    EXPECT_EQ(entry.getCrc32(), 0x0AB2CE51U);
    EXPECT_EQ(entry.getDate(), 0x5921);
    EXPECT_EQ(entry.getPosition(), 4);
    EXPECT_EQ(entry.getDataPosition(), 4 + 30 + 1);
    EXPECT_EQ(entry.getSignature(), 0x04034B50U);
}

TEST(ZRZipFile, EntriesKnowTheirTypes) {
    std::istringstream stream(ZipBuilder().stored("a", "").descriptor(7, 8).package());
    const ZRPtr<ZRZipEntry> file(new ZRZipFileEntry(stream));
    const ZRPtr<ZRZipExtheaderEntry> descriptor(new ZRZipExtheaderEntry(stream));
    EXPECT_EQ(file->getTypeID(), 0x1E3480DFU);
    EXPECT_EQ(utf8(file->getTypeName()), "ZRZipFileEntry");
    EXPECT_EQ(descriptor->getTypeID(), 0xB84B5A40U);
    EXPECT_EQ(utf8(descriptor->getTypeName()), "ZRZipEntry");
    for (const unsigned id : {0x1E3480DFU, 0xB84B5A40U, 0x90AF0240U, 0xA4EBD8C4U, 0U}) {
        EXPECT_EQ(file->isA(id), id != 0) << id;
        EXPECT_EQ(descriptor->isA(id), id != 0 && id != 0x1E3480DFU) << id;
    }
    EXPECT_EQ(descriptor->getCompressedSize(), 7U);
    EXPECT_EQ(descriptor->getUncompressedSize(), 8U);
}

TEST(ZRZipFile, TheSharedStreamStartsOver) {
    const ZRZipFile package = opened(shortPackage());
    for (const unsigned index : {0U, 1U}) {
        ZRZipFileEntry& entry = *package.getFileEntry(index);
        std::istream* shared = entry.getUncompressedStream(false);
        const std::string data = restOf(*shared);
        shared->get();
        EXPECT_EQ(entry.getUncompressedStream(false), shared);
        EXPECT_EQ(restOf(*shared), data) << "after its end";
        const std::string packed = restOf(*entry.getCompressedStream(false));
        EXPECT_EQ(packed, index == 0 ? "one" : deflated("two"));
        EXPECT_EQ(restOf(*entry.getCompressedStream(false)), packed);
    }
}

TEST(ZRZipFile, PrivateStreamsOutliveThePackage) {
    auto package = std::make_unique<ZRZipFile>(new std::istringstream(shortPackage()), true);
    const std::unique_ptr<std::istream> stored(
        package->getFileEntry(0)->getUncompressedStream(true));
    const std::unique_ptr<std::istream> packed(
        package->getFileEntry(1)->getUncompressedStream(true));
    const std::unique_ptr<std::istream> raw(package->getFileEntry(1)->getCompressedStream(true));
    EXPECT_NE(stored.get(), package->getFileEntry(0)->getUncompressedStream(false));
    package.reset();
    EXPECT_EQ(restOf(*stored), "one");
    EXPECT_EQ(restOf(*packed), "two");
    EXPECT_EQ(restOf(*raw), deflated("two"));
}

TEST(ZRZipFile, OpensFilesAndOpensAnew) {
    const TempFolder folder;
    const UnicodeString path = folder.write("p.zip", shortPackage());
    const UnicodeString other = folder.write("q.zip", ZipBuilder().stored("q", "q").package());
    ZRZipFile package(path);
    EXPECT_EQ(listing(package), "a=one b/c.xml=two b/=");
    package.open(utf8(other).c_str());
    EXPECT_EQ(listing(package), "q=q");
    EXPECT_EQ(package.getFileEntry(u"q"), package.getFileEntry(0));
    for (const UnicodeString& missing :
         {folder.file("missing"), text(folder.path()), UnicodeString()}) {
        package.open(missing);
        EXPECT_EQ(package.getFileEntryCount(), 0U) << utf8(missing);
    }
    package.open(nullptr, true);
    package.open(static_cast<const char*>(nullptr));
    EXPECT_EQ(listing(package), "");
}

TEST(ZRZipFile, KnowsAPackageByItsSignature) {
    const TempFolder folder;
    const Rows<const char*, bool> cases = {{"PK\3\4", true},   {"PK\1\2..", true}, {"PK\5\6", true},
                                           {"PK\7\10", false}, {"PK\3", false},    {"", false},
                                           {"KP\3\4", false}};
    for (const auto& [bytes, isZip] : cases) {
        std::istringstream stream("ab" + std::string(bytes));
        stream.seekg(2);
        EXPECT_EQ(ZRZipFile::isZipFile(&stream), isZip) << bytes;
        EXPECT_EQ(stream.tellg(), std::streampos(2)) << bytes;
        const UnicodeString path = folder.write("a", bytes);
        EXPECT_EQ(ZRZipFile::isZipFile(path), isZip) << bytes;
        EXPECT_EQ(ZRZipFile::isZipFile(utf8(path).c_str()), isZip) << bytes;
    }
    EXPECT_FALSE(ZRZipFile::isZipFile(folder.file("missing")));
    EXPECT_FALSE(ZRZipFile::isZipFile(static_cast<std::istream*>(nullptr)));
}

TEST(ZRZipFile, TheFirstOfItsCopiesToGoDeletesTheStream) {
    bool isGone = false;
    ZRPtr<ZRZipFileEntry> kept;
    ZRZipFile copy;
    {
        const ZRZipFile package(new WatchedStream(shortPackage(), isGone), true);
        copy = package;
        EXPECT_EQ(copy.getFileEntry(u"a"), package.getFileEntry(u"a"));
        EXPECT_EQ(restOf(*copy.getFileEntry(0)->getUncompressedStream(false)), "one");
    }
    EXPECT_TRUE(isGone);
    EXPECT_EQ(listing(copy), "a=one b/c.xml= b/=") << "what was read stays, the rest is empty";
    kept = copy.getFileEntry(2);
    copy = ZRZipFile();
    EXPECT_EQ(restOf(*kept->getUncompressedStream(false)), "");
}

TEST(ZRZipFile, EntriesForgetAStreamThatIsNotOwnedWithTheLastCopy) {
    ZRPtr<ZRZipFileEntry> kept;
    {
        std::istringstream stream(shortPackage());
        auto package = std::make_unique<ZRZipFile>(&stream, false);
        const ZRZipFile copy(*package);
        package.reset();
        kept = copy.getFileEntry(1);
        EXPECT_EQ(listing(copy), "a=one b/c.xml=two b/=");
        const ZRZipFile other(&stream, false);
        kept = copy.getFileEntry(2);
    }
    EXPECT_EQ(restOf(*kept->getCompressedStream(false)), "");
}

}  // namespace
}  // namespace ZroCommon::testing
