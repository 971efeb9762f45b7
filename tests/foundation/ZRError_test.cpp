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

TEST(ZRError, IsNoErrorAtFirst) {
    ZRError error;
    EXPECT_EQ(error.getErrorCode(), 0);
    EXPECT_EQ(utf8(error.getPositionDescription() + error.getSource()), "");
    error.throwFatalError();
    for (const char16_t* line : {u"", u"one", u"two", u""}) {
        error.appendMessage(line);
    }
    EXPECT_EQ(utf8(error.getMessage()), "one\ntwo");
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

TEST(ZRError, TheTopOfTheCodeTellsTheCategoryAndWhetherItIsFatal) {
    for (const auto& [code, category, thrown] : Rows<unsigned short, int, const char*>{
             {0x0000, 0, "nothing"},
             {0x0001, 0, "0x0001 text []"},
             {0x0900, ZRErrorCodeZROLIB, "0x0900 text []"},
             {0x0FFF, ZRErrorCodeZROLIB, "nothing"},
             {0x1003, ZRErrorCodeIO, "0x1003 text []"},
             {0x1806, ZRErrorCodeXML, "0x1806 text []"},
             {0x1E06, ZRErrorCodeXML, "nothing"},
             {0xFFFF, 0xF800, "nothing"},
         }) {
        const ZRError error(code, u"text");
        EXPECT_EQ(int{error.getErrorCategory()}, category) << std::hex << code;
        EXPECT_EQ(errorOf([&error] { error.throwFatalError(); }), thrown);
    }
}

TEST(ZRError, TakesOverOtherExceptions) {
    class Mute : public std::exception {
        const char* what() const noexcept override { return nullptr; }
    };
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
