// Compound files: what opens, what is refused and why, and how entries are found.
#include <new>
#include <vector>

#include "tests/containers/OleFile.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

OleBuilder sample(const OleLayout& layout = {}) {
    return OleBuilder(layout)
        .stream(u"Small", oleData(100))
        .stream(u"Large", oleData(5000, 2))
        .storage(u"Folder")
        .stream(u"\5Inner", oleData(70, 3), 3)
        .stream(u"Other", oleData(9001, 4), 3);
}

TEST(OleCompFile, ReadsWhateverTheLayout) {
    for (const auto& [what, layout] : Rows<const char*, OleLayout>{
             {"plain", {}},
             {"big-endian", {.bigEndian = true}},
             {"backward", {.backward = true}},
             {"mini blocks of 32", {.miniShift = 5}},
             {"mini blocks of 512", {.miniShift = 9}},
             {"no mini stream", {.miniCutoff = 0}},
             {"mini stream alone", {.miniCutoff = 100000}},
             {"blocks of 128", {.blockShift = 7}},
             {"blocks of 4096 behind 512 bytes", {.blockShift = 12}},
             {"one indirect block", {.fatBlocks = 110}},
             {"three indirect blocks", {.fatBlocks = 109 + 127 + 127 + 1}},
         }) {
        OleFile file(sample(layout).build().bytes);
        EXPECT_TRUE(file.isOpen()) << what;
        EXPECT_EQ(file->isLittleEndian(), !layout.bigEndian) << what;
        EXPECT_TRUE(file.read({"Small"}) == oleData(100)) << what;
        EXPECT_TRUE(file.read({"Large"}) == oleData(5000, 2)) << what;
        EXPECT_TRUE(file.read({"Folder", "\5Inner"}, 7) == oleData(70, 3)) << what;
        EXPECT_TRUE(file.read({"Folder", "Other"}, 65536) == oleData(9001, 4)) << what;
    }
}

// On purpose: blocks start behind the first 512 bytes, and those of 4096 bytes are no exception.
TEST(OleCompFile, BlocksOf4096BytesAreMisread) {
    OleFile file(sample({.blockShift = 12, .wholeHeaderBlock = true}).build().bytes);
    EXPECT_NE(file.read({"Large"}), oleData(5000, 2));
}

// On purpose: any other mark than that of little-endian files means big-endian.
TEST(OleCompFile, AnyOtherByteOrderMarkMeansBigEndian) {
    OleFile file(sample({.bigEndian = true}).build().header(28, 0x1234, 2).bytes);
    EXPECT_FALSE(file->isLittleEndian());
    EXPECT_TRUE(file.read({"Large"}) == oleData(5000, 2));
}

// What the file tells of its layout, in the order of the header.
std::vector<long> layoutOf(const OleCompFile& file) {
    return {file.getBlockShift(false),       file.getBlockShift(true),    file.getBytesPerBlock(),
            file.getBytesPerMini(),          file.getMinisPerBlock(),     file.getLongsPerBlock(),
            file.getMiniFatCutoff(),         file.getFatBlockCount(),     file.getDirStartBlock(),
            file.getIndirectFatBlockCount(), file.getMiniFatBlockCount(), file.getDirCount(),
            file.getNextBlock(0, false),     file.getNextBlock(0, true)};
}

TEST(OleCompFile, TellsItsFields) {
    using Fields = std::vector<long>;
    const OleImage image = sample({.miniShift = 7, .fatBlocks = 110}).build();
    OleFile file(image.bytes);
    const auto directory = static_cast<long>(image.directoryStart);
    // Entries without a name count, too.
    EXPECT_EQ(layoutOf(*file),
              (Fields{9, 7, 512, 128, 4, 128, 4096, 110, directory, 1, 1, 8, 1, -2}));
    EXPECT_EQ(layoutOf(OleCompFile()),
              (Fields{9, 6, 512, 128, 4, 128, 64, 0, -1, 0, 0, 0, -1, -1}));
    EXPECT_EQ(file->getIndirectFatStartBlock(), static_cast<long>(image.blocks) - 1);
    EXPECT_EQ(file->getMiniFatStartBlock(), static_cast<long>(image.miniFatStart));
    EXPECT_EQ(file->getMiniStartSect(), static_cast<long>(image.miniStreamStart));
    EXPECT_EQ(file->getVersion(), "03 00");
    for (const long beyond : {-1L, 110L * 128, 1L << 40}) {
        EXPECT_EQ(file->getNextBlock(beyond, false), -1) << beyond;
    }
}

TEST(OleCompFile, TellsTheFieldsOfAnEntry) {
    for (const bool bigEndian : {false, true}) {
        OleFile file(sample({.bigEndian = bigEndian}).build().bytes);
        const OleDirInfo& folder = *file->getDirInfo(3);
        EXPECT_EQ(utf8(folder.getName()), "Folder");
        EXPECT_TRUE(folder.isStorage());
        EXPECT_EQ(folder.getClsid()[0], 'D');
        EXPECT_EQ(folder.getStateBits(), 3U);
        EXPECT_EQ(folder.getCreateTime(), 3U);
        EXPECT_EQ(folder.getModifyTime(), 4U);
        EXPECT_EQ(folder.getStartSect(), -1);
        const OleDirInfo& small = *file->getDirInfo(1);
        EXPECT_TRUE(small.isStream());
        EXPECT_EQ(small.getStreamSize(), 100);
        EXPECT_EQ(small.getRightSiblingID(), 2);
        EXPECT_EQ(small.getLeftSiblingID(), -1);
        EXPECT_EQ(small.getModifyTime(), 0U) << "streams have none";
        EXPECT_TRUE(file->getDirInfo(0)->isRoot());
        EXPECT_EQ(file->getDirInfo(0)->getChildID(), 1);
        EXPECT_EQ(file->getDirInfo(8), nullptr);
        EXPECT_EQ(file->getDirInfo(-1), nullptr);
    }
}

TEST(OleDirInfo, KeepsAllUnitsOfANameButZeros) {
    std::string bytes(128, '\0');
    bytes.replace(0, 8, std::string("\0\0a\0\0\0b\0", 8));
    const auto parse = [&](unsigned length, unsigned type) {
        OleDirInfo entry;
        bytes[64] = static_cast<char>(length);
        bytes[66] = static_cast<char>(type);
        const bool isGood = entry.parse(reinterpret_cast<const unsigned char*>(bytes.data()), true);
        return std::pair(isGood ? utf8(entry.getName()) : "refused", entry.getStorageType());
    };
    EXPECT_EQ(parse(64, 2), std::pair(std::string("ab"), OLESTORAGE_STREAM));
    EXPECT_EQ(parse(7, 6), std::pair(std::string("a"), OLESTORAGE_UNKNOWN));
    EXPECT_EQ(parse(0, 5), std::pair(std::string(), OLESTORAGE_ROOT));
    EXPECT_EQ(parse(65, 5).first, "refused");
}

TEST(OleCompFile, IsRefusedByTheFirstCheckThatFails) {
    for (const auto& [check, number, at, value, size] :
         Rows<OleCheck, std::int64_t, std::size_t, std::int64_t, std::size_t>{
             {OleCheck::Signature, 0, 7, 0xE0, 1},
             {OleCheck::BlockShift, 32, 30, 32, 2},
             {OleCheck::BlockShift, 0xFFFF, 30, 0xFFFF, 2},
             {OleCheck::MiniShift, 32, 32, 32, 2},
             {OleCheck::DirectoryStart, -1, 48, -1, 4},
             {OleCheck::DirectoryStart, -2, 48, -2, 4},
             {OleCheck::MiniFatStart, -1, 60, -1, 4},
             {OleCheck::IndirectFatStart, -1, 68, -1, 4},
             {OleCheck::IndirectFatStart, -2, 44, 110, 4},
             {OleCheck::FatRead, 1000, 76, 1000, 4},
             {OleCheck::FatRead, -1, 76, -1, 4},
             {OleCheck::FatCapacity, 1, 30, 1, 2},
             {OleCheck::MiniFatRead, -2, 64, 2, 4},
             {OleCheck::MiniFatLength, 130, 64, 130, 4},
             {OleCheck::DirectoryRead, 1000, 48, 1000, 4},
             {OleCheck::DirectoryCapacity, 6, 30, 6, 2},
             {OleCheck::Passed, 0, 26, 0, 2},
             {OleCheck::Passed, 0, 72, -1, 4},
             {OleCheck::Passed, 0, 32, 31, 2},
         }) {
        OleFile file(sample().build().header(at, value, size).bytes);
        EXPECT_EQ(file.refusedBy(), check) << "header at " << at;
        EXPECT_EQ(file->getRefusal().number, number) << "header at " << at;
        EXPECT_EQ(file.isOpen(), check == OleCheck::Passed) << "header at " << at;
    }
}

TEST(OleCompFile, IsRefusedByItsDirectory) {
    const OleImage image = sample().build();
    for (const int end : {-1, -3, -4}) {
        OleFile file(OleImage(image).fat(image.directoryStart + 1, end).bytes);
        EXPECT_EQ(file.refusedBy(), OleCheck::DirectoryRead) << end;
        EXPECT_EQ(file->getRefusal().number, end);
    }
    EXPECT_EQ(OleFile(OleImage(image).entry(2, 64, 65, 2).bytes).refusedBy(),
              OleCheck::DirectoryName);
    EXPECT_EQ(OleFile(image.bytes.substr(0, 511)).refusedBy(), OleCheck::HeaderSize);
    EXPECT_EQ(OleFile(image.bytes.substr(0, 512)).refusedBy(), OleCheck::FatRead);
    EXPECT_FALSE(OleCompFile().OLEopen("/no/such/file"));
}

TEST(OleCompFile, FindsEntriesByPath) {
    OleFile file(sample().stream(u"Stra\u00DFe", "").build().bytes);
    const struct {
        std::initializer_list<const char*> path;
        long index = -1;
    } cases[] = {
        {{"Small"}, 1},
        {{"LARGE"}, 2},
        {{"folder", "other"}, 5},
        {{"Folder", "\5INNER"}, 4},
        {{"Inner"}, -1},
        {{"strasse"}, 6},
        {{"STRA\u00DFE"}, 6},
        {{"Folder", "Small"}, -1},
        {{"Small", "Folder"}, -1},
        {{}, -1},
    };
    for (const auto& [names, index] : cases) {
        OleDirPath path = olePath(names);
        EXPECT_EQ(file->getDirIndex(&path), index) << (path.count > 0 ? path.names[0] : "");
    }
    OleDirPath tooLong{5, {"a", "b", "c", "d"}};
    EXPECT_EQ(file->getDirIndex(&tooLong), -1);
    EXPECT_EQ(file->getDirIndex(nullptr), -1);
}

// On purpose: the root is what is found where a storage is missing, and it is no stream.
TEST(OleCompFile, AMissingStorageGivesTheRoot) {
    OleFile file(sample().build().bytes);
    OleDirPath path = olePath({"missing", "Small"});
    EXPECT_EQ(file->getDirIndex(&path), 0);
    EXPECT_EQ(file->OLEopenStream(&path), nullptr);
}

// Of two entries with one name, the first by this order is found.
TEST(OleCompFile, SearchesAllUnderTheLeftSiblingFirst) {
    OleBuilder builder;
    for (const char16_t* name : {u"top", u"right", u"left", u"x", u"x"}) {
        builder.stream(name, "1");
    }
    OleImage image = builder.build();  // top: left (its right is 4), right (its left is 5)
    image.fat(image.directoryStart + 1, -2);
    for (std::size_t i = 1; i <= 3; ++i) {
        image.entry(i, OleBuilder::kRight, i == 1 ? 2 : -1);
    }
    image.entry(1, OleBuilder::kLeft, 3).entry(2, OleBuilder::kLeft, 5);
    image.entry(3, OleBuilder::kRight, 4);
    OleFile file(
        image.fat(image.directoryStart, static_cast<long>(image.directoryStart) + 1).bytes);
    ASSERT_TRUE(file.isOpen());
    OleDirPath path = olePath({"X"});
    EXPECT_EQ(file->getDirIndex(&path), 4);
}

// On purpose: a presentation is looked for among right siblings alone, and the last one is taken
// when none has the name.
TEST(OleCompFile, PresentationsAreTheNamedOrTheLastOfRightSiblings) {
    OleBuilder builder;
    builder.storage(u"Object").stream(u"a", "first", 1).stream(u"\2OlePres000", "picture", 1);
    builder.stream(u"z", "last", 1);
    const auto presentation = [](const OleImage& image, std::initializer_list<const char*> names) {
        OleFile file(image.bytes);
        OleDirPath path = olePath(names);
        const std::unique_ptr<OleStream> stream(file->OLEopenObject(&path));
        return stream ? OleFile::restOf(*stream) : "none";
    };
    const OleImage image = builder.build();
    EXPECT_EQ(presentation(image, {"Object"}), "picture");
    EXPECT_EQ(presentation(image, {"missing", "b"}), "none") << "the root has a storage alone";
    EXPECT_EQ(presentation(image, {"Object", "a"}), "none");
    OleImage renamed = image;
    EXPECT_EQ(presentation(renamed.entry(3, 0, 'x', 2), {"OBJECT"}), "last");
    EXPECT_EQ(presentation(renamed.entry(2, OleBuilder::kRight, 2), {"Object"}), "first");
    EXPECT_EQ(presentation(renamed.entry(2, OleBuilder::kRight, 900), {"Object"}), "first");
}

TEST(OleCompFile, CopiesShareBytesAndTables) {
    const TempFolder folder;
    folder.write("f", sample().build().bytes);
    OleCompFile copy;
    {
        OleCompFile file;
        ASSERT_TRUE(file.OLEopen((folder.path() + "/f").c_str()));
        copy = file;
    }
    OleDirPath path = olePath({"Large"});
    const std::unique_ptr<OleStream> stream(copy.OLEopenStream(&path));
    EXPECT_TRUE(OleFile::restOf(*stream) == oleData(5000, 2));
    EXPECT_FALSE(copy.OLEopen(folder.path().c_str())) << "a directory";
    EXPECT_EQ(copy.getDirCount(), 0);
}

TEST(OleCompFile, DetectsTheKindOfDocument) {
    constexpr const char16_t* kDual = u"PP97_DUALSTORAGE";
    const std::string user(20, 'u');
    const auto withUser = [](OleBuilder builder, const std::string& data, std::size_t parent) {
        return builder.stream(u"Current User", data, parent)
            .stream(u"PowerPoint Document", "", parent);
    };
    const Rows<OLEDOCUMENT_TYPE, OleBuilder> cases = {
        {OLEDOCUMENT_NONE, sample()},
        {OLEDOCUMENT_WORD, OleBuilder().stream(u"WORKBOOK", "").stream(u"wordDOCUMENT", "")},
        {OLEDOCUMENT_NONE, OleBuilder().storage(u"WordDocument")},
        {OLEDOCUMENT_EXCEL, OleBuilder().stream(u"Workbook", "")},
        {OLEDOCUMENT_POWERPOINT, withUser(OleBuilder(), user, 0)},
        {OLEDOCUMENT_NONE, OleBuilder().stream(u"PowerPoint Document", "")},
        {OLEDOCUMENT_NONE, withUser(OleBuilder(), "short", 0)},
        {OLEDOCUMENT_POWERPOINT, withUser(OleBuilder().storage(kDual), "short", 1)},
        {OLEDOCUMENT_NONE,
         withUser(OleBuilder().storage(kDual).stream(u"Current User", user, 1), user, 0)},
        {OLEDOCUMENT_DOCUMENT_VIEW_STYLES, OleBuilder().stream(u"DocumentViewStyles", "")},
    };
    const TempFolder folder;
    for (const auto& [type, builder] : cases) {
        const std::string bytes = builder.build().bytes;
        std::istringstream stream(bytes);
        EXPECT_EQ(OleCompFile::detectOLEDocument(stream), type) << static_cast<int>(type);
        const ZRUri uri(folder.write("f", bytes), URISTR_PATH_OR_URI_CSS);
        EXPECT_EQ(OleCompFile::detectOLEDocument(uri), type);
        EXPECT_TRUE(OleCompFile::isOLEUri(uri));
    }
}

TEST(OleCompFile, IsToldByItsFirst512Bytes) {
    const std::string bytes = sample().build().bytes;
    std::istringstream stream("abc" + bytes);
    stream.seekg(3);
    EXPECT_TRUE(OleCompFile::isOLEUri(stream)) << "from where it stands";
    EXPECT_EQ(stream.tellg(), 515) << "and is left behind them";
    EXPECT_FALSE(OleCompFile::isOLEUri(stream));
    std::istringstream shortOne(bytes.substr(0, 511));
    EXPECT_FALSE(OleCompFile::isOLEUri(shortOne));
    EXPECT_EQ(OleCompFile::detectOLEDocument(shortOne), OLEDOCUMENT_NONE);
    std::istringstream failed(bytes);
    failed.setstate(std::ios_base::failbit);
    EXPECT_FALSE(OleCompFile::isOLEUri(failed));
    const ZRUri missing(u"/no/such/file", URISTR_PATH_OR_URI_CSS);
    EXPECT_FALSE(OleCompFile::isOLEUri(missing));
    EXPECT_EQ(OleCompFile::detectOLEDocument(missing), OLEDOCUMENT_NONE);
}

TEST(OleCompFile, IsNotWhereMemoryRunsOut) {
    struct : ZRUriReferenceResolver {
        std::istream* getStream(const UnicodeString& /*uri*/) override { throw std::bad_alloc(); }
    } exhausted;
    ZRUriReferenceResolver* const before = ZRUri::setUriReferenceResolver(&exhausted);
    const ZRUri uri(u"my:file", URISTR_PATH_OR_URI_CSS);
    EXPECT_NO_THROW(EXPECT_FALSE(OleCompFile::isOLEUri(uri)));
    EXPECT_NO_THROW(EXPECT_EQ(OleCompFile::detectOLEDocument(uri), OLEDOCUMENT_NONE));
    ZRUri::setUriReferenceResolver(before);
}

}  // namespace
}  // namespace ZroCommon::testing
