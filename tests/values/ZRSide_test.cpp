#include "zro/values/ZRSide.h"

#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

std::string shown(ZRName name) {
    return name.isEmpty() ? "-" : utf8(name.toString());
}

ZRName named(const std::string& name) {
    return text(name);
}

// What becomes of all eight sides, by their first letters; "-" for the empty name.
template <class Turn>
std::string turned(Turn turn) {
    std::string letters;
    for (int index = 0; index < 8; ++index) {
        letters += shown(turn(ZRSide(index)).getName())[0];
    }
    return letters;
}

TEST(ZRSide, KnowsItsKind) {
    EXPECT_EQ(turned([](ZRSide side) { return side; }), "basetblr");
    for (int index = 0; index < 8; ++index) {
        const ZRSide side(index);
        EXPECT_EQ(side.getIndex(), index);
        EXPECT_TRUE(side.isRelative() == (index < 4) && side.isAbsolute() == (index >= 4));
        EXPECT_TRUE(side.isBlock() == (index / 2 == 0) && side.isInline() == (index / 2 == 1));
        EXPECT_TRUE(side.isVertical() == (index / 2 == 2)
                    && side.isHorizontal() == (index / 2 == 3));
        const ZRValue value = side;
        EXPECT_EQ(ZRSide(value.getNameValue()).getIndex(), index);
    }
}

TEST(ZRSide, Turns) {
    EXPECT_EQ(turned([](ZRSide side) { return side.toOpposite(); }), "abesbtrl");
    EXPECT_EQ(turned([](ZRSide side) { return side.rotate(0); }), "basetblr");
    EXPECT_EQ(turned([](ZRSide side) { return side.rotate(90); }), "baselrbt");
    EXPECT_EQ(turned([](ZRSide side) { return side.rotate(270); }), "baserltb");
}

// On purpose: a quarter turn leaves the relative sides alone.
TEST(ZRSide, HalfATurnSwapsRelativeSidesToo) {
    EXPECT_EQ(turned([](ZRSide side) { return side.rotate(180); }), "abesbtrl");
    EXPECT_EQ(ZRSide(ZRN_start).rotate(90), ZRN_start);
}

TEST(ZRSide, GoesFromTextToPageAndBack) {
    const char* absolute[] = {"tblr", "tbrl", "rltb", "rlbt", "btlr", "btrl", "lrtb", "lrbt"};
    for (int mode = 0; mode < 8; ++mode) {
        EXPECT_EQ(turned([mode](ZRSide side) { return side.toAbsolute(mode); }),
                  absolute[mode] + std::string("tblr"));
        EXPECT_EQ(turned([mode](ZRSide side) {
                      return side.toAbsolute(mode).toRelative(mode);
                  }).substr(0, 4),
                  "base");
    }
    EXPECT_EQ(turned([](ZRSide side) { return side.toRelative(ZRN_tb_rl); }), "baseseab");
    EXPECT_EQ(turned([](ZRSide side) { return side.toAbsolute(8); }), "tblrtblr");
    EXPECT_EQ(turned([](ZRSide side) { return side.toAbsolute(-1); }), "tblrtblr");
}

TEST(ZRSide, ANameThatIsNoSideHasNoAnswers) {
    for (const ZRSide& side : {ZRSide(ZRN_auto), ZRSide(), ZRSide(8), ZRSide(-1)}) {
        EXPECT_EQ(side.getIndex(), -1);
        EXPECT_FALSE(side.isAbsolute() || side.isRelative());
        EXPECT_EQ(side.toOpposite(), ZRN_EMPTY);
        EXPECT_EQ(side.rotate(180), ZRN_EMPTY);
        EXPECT_EQ(side.toAbsolute(0), ZRN_EMPTY);
        EXPECT_EQ(side.toRelative(0), ZRN_EMPTY);
        EXPECT_EQ(side.concatName(ZRN_padding), ZRN_EMPTY);
        EXPECT_EQ(side.rotate(90), side.getName());
        EXPECT_EQ(side.rotate(0), side.getName());
    }
    EXPECT_EQ(ZRSide(ZRN_auto).getName(), ZRN_auto);
}

TEST(ZRSide, NamesItsProperties) {
    const auto property = [](const std::string& pair) {
        const std::string side = pair.substr(0, pair.find(' '));
        const std::string base = pair.substr(side.size() + 1);
        const ZRName name = ZRSide(named(side)).concatName(named(base));
        if (!name.isEmpty()) {
            EXPECT_EQ(shown(ZRSide::getSideFromName(name)), side);
            EXPECT_EQ(shown(ZRSide::removeSideFromName(name)), base);
        }
        return shown(name);
    };
    expectTexts(property,
                {"after border-color -> border-after-color", "top border-precedence -> -",
                 "right border-style -> border-right-style", "bottom padding -> padding-bottom",
                 "start border-width -> border-start-width", "before padding -> padding-before",
                 "end border-precedence -> border-end-precedence", "left margin -> margin-left",
                 "start space -> space-start", "top position -> top-position",
                 "start position -> -", "after region -> region-after", "top region -> -",
                 "top color -> -", "top no-name-of-ours -> -"});
}

// On purpose: relative margins are called spaces, absolute spaces margins.
TEST(ZRSide, MarginAndSpaceAreOneFamily) {
    EXPECT_EQ(ZRSide(ZRN_before).concatName(ZRN_margin), ZRN_space_before);
    EXPECT_EQ(ZRSide(ZRN_top).concatName(ZRN_space), ZRN_margin_top);
    EXPECT_EQ(ZRSide::removeSideFromName(ZRN_space_before), ZRN_space);
    EXPECT_EQ(ZRSide::removeSideFromName(ZRN_margin_top), ZRN_margin);
}

TEST(ZRSide, NamesWithoutASideHaveNoParts) {
    for (const char* name : {"", "margin", "region-body", "border-top", "space-after-punctuation",
                             "background-position", "auto", "border-top-nonsense"}) {
        EXPECT_EQ(shown(ZRSide::getSideFromName(named(name))), "-") << name;
        EXPECT_EQ(shown(ZRSide::removeSideFromName(named(name))), "-") << name;
    }
    EXPECT_EQ(shown(ZRSide::getSideFromName(static_cast<ZRNameEnum>(-1))), "-");
}

TEST(ZRSide, NamesPropertiesByModeOfWriting) {
    const auto names = [](const std::string& pair) {
        const std::size_t blank = pair.find(' ');
        const ZRName name = named(pair.substr(0, blank));
        const ZRWritingMode writing(named(pair.substr(blank + 1)));
        return shown(ZRSide::toRelativeName(name, writing)) + " "
               + shown(ZRSide::toAbsoluteName(name, writing));
    };
    expectLines(names, R"(
min-width lr-tb -> inline-progression-dimension -
width tb-rl -> block-progression-dimension -
max-height lr-tb -> block-progression-dimension -
height tb-rl -> inline-progression-dimension -
inline-progression-dimension lr-tb -> - width
inline-progression-dimension tb-rl -> - height
block-progression-dimension lr-tb -> - height
block-progression-dimension bt-lr -> - width
margin-top lr-tb -> space-before margin-top
space-before tb-rl -> space-before margin-right
padding-start rl-tb -> padding-start padding-right
border-left-color tb-rl -> border-after-color border-left-color
border-start-precedence lr-tb -> border-start-precedence -
region-before lr-tb -> region-before -
top-position lr-tb -> - top-position
color lr-tb -> - -)");
}

}  // namespace
}  // namespace ZroCommon::testing
