// Names from many threads at once; of most use under the thread sanitizer.

#include <atomic>
#include <utility>
#include <vector>

#include "tests/support/Test.h"
#include "tests/support/Threads.h"
#include "zro/foundation/internal/AppendNumber.h"
#include "zro/vocabulary/ZRNameTable.h"

namespace ZroCommon::testing {
namespace {

UnicodeString numbered(int number) {
    UnicodeString result(u"thread-name-of-some-length-");
    return internal::appendNumber(result, number);
}

TEST(NameThreads, OneTextHasOneNumberInAllThreads) {
    constexpr int kNames = 3000;
    const ZRNameTable* table = ZRNameTable::addRefSharedNameTable();
    const int before = table->getNameLast();
    std::atomic<int> wrong{0};
    inThreads(16, [&wrong](int thread) {
        std::vector<std::pair<const UnicodeString*, int>> held;
        for (int i = 0; i < kNames; ++i) {
            const int number = (i * 7 + thread * 131) % kNames;
            held.emplace_back(&ZRName(numbered(number)).toString(), number);
        }
        for (const auto& [text, number] : held) {
            wrong += *text == numbered(number) ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(table->getNameLast() - before, kNames);
    ZRNameTable::releaseSharedNameTable();
}

TEST(NameThreads, TextsOutliveTablesThatComeAndGo) {
    std::atomic<int> wrong{0};
    inThreads(8, [&wrong](int thread) {
        for (int round = 0; round < 400; ++round) {
            ZRNameTable::addRefSharedNameTable();
            const UnicodeString expected = numbered(thread * 100'000 + round % 10);
            const ZRName name(expected);
            const UnicodeString& text = name.toString();
            wrong += text == expected ? 0 : 1;
            ZRNameTable::releaseSharedNameTable();
            wrong += text == expected ? 0 : 1;
            // Any text or none may stand behind the number now, but a whole one.
            wrong += name.toString().length() < 64 ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
}

TEST(NameThreads, BuiltinTextsAreThereForWhoeverAsksFirst) {
    std::atomic<int> wrong{0};
    inThreads(8, [&wrong](int thread) {
        for (int i = 0; i < ZRN_LAST_BUILTIN; ++i) {
            const auto number =
                static_cast<ZRNameEnum>(1 + (i + thread / 2 * 400) % ZRN_LAST_BUILTIN);
            const UnicodeString& text = ZRNameTable::getBuiltinNameString(number);
            wrong += ZRNameTable::getBuiltinNameEnum(text) == number ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
}

TEST(NameThreads, PrivateTablesOfSeveralThreadsDoNotMix) {
    std::atomic<int> wrong{0};
    inThreads(4, [&wrong](int thread) {
        ZRNameTable table;
        for (int i = 0; i < 500; ++i) {
            const UnicodeString text = numbered(thread * 1000 + i);
            const ZRNameEnum number = table.getNameEnum(text);
            wrong += number == 1583 + i && table.getNameString(number) == text ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace ZroCommon::testing
