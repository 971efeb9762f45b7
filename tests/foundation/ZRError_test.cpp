#include "zro/foundation/ZRError.h"

#include <exception>
#include <new>
#include <stdexcept>

#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

ZRError errorAt(int line, int column, const UnicodeString& uri) {
    return {0x1801, u"bad", u"place", line, column, uri};
}

class Mute : public std::exception {
public:
    const char* what() const noexcept override { return nullptr; }
};

TEST(ZRError, IsNoErrorAtFirst) {
    const ZRError error;
    EXPECT_EQ(error.getErrorCode(), 0);
    EXPECT_EQ(error.getLineNumber(), -1);
    EXPECT_EQ(error.getColumnNumber(), -1);
    EXPECT_EQ(utf8(error.getMessage() + error.getSource() + error.getUri()), "");
    error.throwFatalError();
}

TEST(ZRError, DescribesWhatIsKnownOfThePosition) {
    for (const auto& [line, column, uri, description] :
         Rows<int, int, const char16_t*, const char*>{
             {12, 7, u"file.xml", "Line 12, Col 7, file.xml"},
             {-1, -1, u"file.xml", "file.xml"},
             {-1, -1, u"", ""},
             {3, -1, u"", "Line 3, "},
             {-1, 0, u"", "Col 0, "},
             {0, -2, u"", "Line 0, Col -2, "},
         }) {
        const ZRError error = errorAt(line, column, uri);
        EXPECT_EQ(utf8(error.getPositionDescription()), description);
        EXPECT_EQ(utf8(error.getMessage()),
                  *description == '\0' ? "bad" : "bad\n" + std::string(description));
    }
}

TEST(ZRError, AMessageSetBackGathersNoSecondPosition) {
    ZRError error = errorAt(12, 7, u"file.xml");
    error.setMessage(error.getMessage());
    EXPECT_EQ(utf8(error.getRawMessage()), "bad");
    error.setMessage(u"worse\nLine 1, Col 7, file.xml");
    EXPECT_EQ(utf8(error.getRawMessage()), "worse\nLine 1, Col 7, file.xml");
    error.setRawMessage(error.getMessage());
    EXPECT_EQ(utf8(error.getRawMessage()),
              "worse\nLine 1, Col 7, file.xml\nLine 12, Col 7, file.xml");
}

TEST(ZRError, AppendsLines) {
    ZRError error;
    error.appendMessage(u"");
    error.appendMessage(u"one");
    error.appendMessage(u"two");
    error.appendMessage(u"");
    EXPECT_EQ(utf8(error.getRawMessage()), "one\ntwo");
}

TEST(ZRError, TheCategoryIsTheTopOfTheCode) {
    EXPECT_EQ(ZRError(0x1E06, u"").getErrorCategory(), ZRErrorCodeXML);
    EXPECT_EQ(ZRError(0x1003, u"").getErrorCategory(), ZRErrorCodeIO);
    EXPECT_EQ(ZRError(0x0FFF, u"").getErrorCategory(), ZRErrorCodeZROLIB);
    EXPECT_EQ(int{ZRError(0xFFFF, u"").getErrorCategory()}, 0xF800);
}

TEST(ZRError, ThrowsUnlessRecoverable) {
    for (const auto& [code, thrown] : Rows<unsigned short, const char*>{
             {0x0000, "nothing"},
             {0x1806, "0x1806 text []"},
             {0x1E06, "nothing"},
             {0x0900, "0x0900 text []"},
             {0x0C00, "nothing"},
             {0x0001, "0x0001 text []"},
         }) {
        const ZRError error(code, u"text");
        EXPECT_EQ(errorOf([&error] { error.throwFatalError(); }), thrown);
    }
}

TEST(ZRError, TakesOverOtherExceptions) {
    std::bad_alloc noMemory;
    std::runtime_error foreign("what \xC3\xA4");
    Mute mute;
    EXPECT_EQ(errorOf([&] { throw ZRError(noMemory, u"here"); }), "0x0801 Out of memory. [here]");
    EXPECT_EQ(errorOf([&] { throw ZRError(foreign, u"here"); }),
              "0x0802 C++ exception: what \xC3\xA4 [here]");
    EXPECT_EQ(errorOf([&] { throw ZRError(mute, u"here"); }), "0x0802 C++ exception:  [here]");
}

}  // namespace
}  // namespace ZroCommon::testing
