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
