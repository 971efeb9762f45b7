#include "zro/vocabulary/ZRNameTable.h"

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <utility>
#include <vector>

#include "tests/support/Skips.h"
#include "tests/support/Test.h"
#include "tests/support/Threads.h"
#include "zro/foundation/ZRPtr.h"
#include "zro/foundation/internal/AppendNumber.h"

namespace ZroCommon::testing {
namespace {

UnicodeString numbered(int number) {
    UnicodeString result(u"name-of-some-length-");
    return internal::appendNumber(result, number);
}

// Drops the shared table if nobody holds it: the next one numbers from 1583.
void restartSharedTable() {
    ZRNameTable::addRefSharedNameTable();
    ZRNameTable::releaseSharedNameTable();
}

ZRNameEnum enumOf(int number) {
    return static_cast<ZRNameEnum>(number);
}

TEST(ZRNameTable, FindsEveryBuiltinNameBothWays) {
    for (int number = 1; number <= ZRN_LAST_BUILTIN; ++number) {
        const UnicodeString& name = ZRNameTable::getBuiltinNameString(enumOf(number));
        ASSERT_FALSE(name.isEmpty()) << number;
        ASSERT_EQ(int{ZRNameTable::getBuiltinNameEnum(name)}, number) << utf8(name);
        ASSERT_EQ(int{ZRNameTable::getBuiltinNameEnum(UnicodeString(name).append(u'_'))}, 0);
    }
    for (const int number : {-1, 0, 1583, 0x7FFFFFFF}) {
        EXPECT_EQ(utf8(ZRNameTable::getBuiltinNameString(enumOf(number))), "") << number;
    }
    EXPECT_EQ(ZRNameTable::getBuiltinNameEnum(u""), ZRN_EMPTY);
}

TEST(ZRNameTable, BuiltinNamesAreTheRowsOfTheVocabulary) {
    std::ifstream rows(ZRO_TEST_DATA_DIR "/builtin-names.tsv");
    if (!rows) {
        GTEST_SKIP() << noData(ZRO_TEST_DATA_DIR "/builtin-names.tsv");
    }
    int count = 0;
    for (std::string row; std::getline(rows, row); ++count) {
        const std::size_t tab = row.find('\t');
        const ZRNameEnum number = enumOf(std::stoi(row.substr(0, tab)));
        EXPECT_EQ(utf8(ZRNameTable::getBuiltinNameString(number)), row.substr(tab + 1));
    }
    EXPECT_EQ(count, int{ZRN_LAST_BUILTIN});
}

TEST(ZRNameTable, NumbersNewNamesInTheOrderOfFirstUse) {
    restartSharedTable();
    for (const auto& [name, number] :
         {std::pair(u"early", 1583), {u"more", 1584}, {u"early", 1583}}) {
        EXPECT_EQ(int{ZRNameTable::getSharedNameEnum(name)}, number);
    }
    const UnicodeString& held = ZRNameTable::getSharedNameString(enumOf(1583));
    EXPECT_EQ(utf8(ZRNameTable::getSharedNameString(enumOf(1584))), "more");
    EXPECT_EQ(utf8(ZRNameTable::getSharedNameString(enumOf(1585))), "");
    EXPECT_EQ(int{ZRNameTable::getSharedNameTable()->getNameLast()}, 1584);
    restartSharedTable();
    EXPECT_EQ(utf8(ZRNameTable::getSharedNameString(enumOf(1583))), "");
    EXPECT_EQ(ZRNameTable::getSharedNameTable()->lookupName(u"early"), ZRN_EMPTY);
    EXPECT_EQ(int{ZRNameTable::getSharedNameEnum(u"late")}, 1583);
    EXPECT_EQ(utf8(held), "early") << "old texts stay";
}

TEST(ZRNameTable, AReferenceKeepsTheNumbering) {
    restartSharedTable();
    ZRNameTable* table = ZRNameTable::addRefSharedNameTable();
    EXPECT_EQ(ZRNameTable::getSharedNameTable(), table);
    EXPECT_EQ(table->getRefCount(), 1);
    const ZRNameEnum number = ZRNameTable::getSharedNameEnum(u"kept");
    restartSharedTable();
    EXPECT_EQ(ZRNameTable::getSharedNameEnum(u"kept"), number);
    ZRNameTable::releaseSharedNameTable();
    ZRNameTable::releaseSharedNameTable();  // there is no table any more: nothing happens
}

TEST(ZRNameTable, TablesShareTheBuiltinNamesAlone) {
    ZRNameTable one;
    ZRNameTable other;
    EXPECT_EQ(one.lookupName(u"mine"), ZRN_EMPTY);
    EXPECT_EQ(int{one.getNameLast()}, 1582) << "looking adds nothing";
    EXPECT_EQ(one.getNameEnum(u"mine"), other.getNameEnum(u"yours"));
    EXPECT_EQ(utf8(one.getNameString(enumOf(1583))), "mine");
    EXPECT_EQ(utf8(other.getNameString(enumOf(1583))), "yours");
    EXPECT_EQ(int{one.lookupName(u"mine")}, 1583);
    EXPECT_TRUE(one.getNameEnum(u"auto") == ZRN_auto && one.lookupName(u"auto") == ZRN_auto);
    EXPECT_TRUE(one.getNameEnum(u"") == ZRN_EMPTY && one.lookupName(u"") == ZRN_EMPTY);
    EXPECT_EQ(int{one.getNameLast()}, 1583);
    for (const int number : {-5, 0, 1584}) {
        EXPECT_EQ(utf8(one.getNameString(enumOf(number))), "") << number;
    }
}

TEST(ZRNameTable, TextsNeverMove) {
    ZRNameTable table;
    std::vector<const UnicodeString*> texts;
    constexpr int kCount = 50'000;
    for (int i = 0; i < kCount; ++i) {
        const ZRNameEnum number = table.getNameEnum(numbered(i));
        ASSERT_EQ(int{number}, 1583 + i);
        texts.push_back(&table.getNameString(number));
    }
    for (int i = 0; i < kCount; ++i) {
        ASSERT_EQ(&table.getNameString(enumOf(1583 + i)), texts[static_cast<std::size_t>(i)]);
        ASSERT_EQ(*texts[static_cast<std::size_t>(i)], numbered(i));
        ASSERT_EQ(int{table.lookupName(numbered(i))}, 1583 + i);
    }
}

TEST(ZRNameTable, TellsItsType) {
    const ZRPtr<ZRNameTable> table(new ZRNameTable);
    EXPECT_EQ(utf8(table->getTypeName()), "ZRNameTable");
    EXPECT_EQ(table->getTypeID(), 0x31FB5B85U);
    EXPECT_TRUE(table->isA(0x31FB5B85U) && table->isA(0x90AF0240U) && table->isA(0xA4EBD8C4U));
    EXPECT_FALSE(table->isA(0xE7D947B0U));
}

// In a process of its own, which exits with what is right.
[[noreturn]] void cleanUpAndLook() {
    ZRNameTable::addRefSharedNameTable();
    ZRNameTable::getSharedNameEnum(u"a name");
    ZRNameTable::cleanup();
    const bool forgets = ZRNameTable::getBuiltinNameEnum(u"auto") == ZRN_EMPTY;
    const bool keeps = ZRNameTable::getBuiltinNameString(ZRN_auto) == UnicodeString(u"auto");
    const bool isNew = ZRNameTable::getSharedNameString(enumOf(1583)).isEmpty();
    ZRNameTable::cleanup();
    std::exit((forgets ? 1 : 0) + (keeps ? 2 : 0) + (isNew ? 4 : 0));
}

TEST(ZRNameTableDeathTest, CleanupForgetsBuiltinNamesAndTheSharedTable) {
    EXPECT_EXIT(cleanUpAndLook(), ::testing::ExitedWithCode(7), "");
}

// Names from many threads at once; of most use under the thread sanitizer.

// Runs `work(thread, isRight)`, which says of each thing it sees whether it is right.
template <class Work>
void expectRight(int threads, Work work) {
    std::atomic<int> wrong{0};
    inThreads(threads, [&](int thread) {
        work(thread, [&wrong](bool isRight) { wrong += isRight ? 0 : 1; });
    });
    EXPECT_EQ(wrong, 0);
}

TEST(NameThreads, OneTextHasOneNumberInAllThreads) {
    constexpr int kNames = 3000;
    const ZRNameTable* table = ZRNameTable::addRefSharedNameTable();
    const int before = table->getNameLast();
    expectRight(16, [](int thread, auto isRight) {
        std::vector<std::pair<const UnicodeString*, int>> held;
        for (int i = 0; i < kNames; ++i) {
            const int number = (i * 7 + thread * 131) % kNames;
            held.emplace_back(&ZRName(numbered(number)).toString(), number);
        }
        for (const auto& [text, number] : held) {
            isRight(*text == numbered(number));
        }
    });
    EXPECT_EQ(table->getNameLast() - before, kNames);
    ZRNameTable::releaseSharedNameTable();
}

TEST(NameThreads, TextsOutliveTablesThatComeAndGo) {
    expectRight(8, [](int thread, auto isRight) {
        for (int round = 0; round < 400; ++round) {
            ZRNameTable::addRefSharedNameTable();
            const UnicodeString expected = numbered(thread * 100'000 + round % 10);
            const ZRName name(expected);
            const UnicodeString& text = name.toString();
            isRight(text == expected);
            ZRNameTable::releaseSharedNameTable();
            isRight(text == expected);
            // Any text or none may stand behind the number now, but a whole one.
            isRight(name.toString().length() < 64);
        }
    });
}

TEST(NameThreads, BuiltinTextsAreThereForWhoeverAsksFirst) {
    expectRight(8, [](int thread, auto isRight) {
        for (int i = 0; i < ZRN_LAST_BUILTIN; ++i) {
            const auto number =
                static_cast<ZRNameEnum>(1 + (i + thread / 2 * 400) % ZRN_LAST_BUILTIN);
            const UnicodeString& text = ZRNameTable::getBuiltinNameString(number);
            isRight(ZRNameTable::getBuiltinNameEnum(text) == number);
        }
    });
}

}  // namespace
}  // namespace ZroCommon::testing
