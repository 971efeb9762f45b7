#include "zro/foundation/ZRLock.h"

#include <chrono>
#include <future>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/Threads.h"

namespace ZroCommon::testing {
namespace {

// Takes and gives back the lock in another thread.
std::future<void> takenElsewhere(ZRLock& lock) {
    return std::async(std::launch::async, [&lock] { const ZRMutex guard(lock); });
}

bool isDone(const std::future<void>& task, std::chrono::milliseconds wait) {
    return task.wait_for(wait) == std::future_status::ready;
}

constexpr std::chrono::milliseconds kShort(30);
constexpr std::chrono::seconds kLong(20);

TEST(ZRMutex, KeepsOtherThreadsOut) {
    ZRLock lock;
    int count = 0;
    inThreads(8, [&](int) {
        for (int round = 0; round < 2000; ++round) {
            const ZRMutex guard(lock);
            ++count;
        }
    });
    EXPECT_EQ(count, 16'000);
}

TEST(ZRMutex, AThreadMayTakeALockAgain) {
    ZRLock lock;
    std::future<void> waiting;
    {
        const ZRMutex outer(lock);
        { const ZRMutex inner(&lock); }
        waiting = takenElsewhere(lock);
        EXPECT_FALSE(isDone(waiting, kShort)) << "the inner guard gave up the outer one's lock";
    }
    EXPECT_TRUE(isDone(waiting, kLong));
}

TEST(ZRMutex, ANullLockMakesAnInertGuard) {
    const ZRMutex guard(static_cast<ZRLock*>(nullptr));
    ZRMutex other(static_cast<ZRLock*>(nullptr));
    other = guard;
}

TEST(ZRMutex, WithoutALockTakesTheOneOfTheLibrary) {
    int count = 0;
    const auto step = [&count] {
        for (int round = 0; round < 2000; ++round) {
            const ZRMutex guard;
            ++count;
        }
    };
    std::thread other(step);
    step();
    other.join();
    EXPECT_EQ(count, 4000);
}

// On purpose: an assignment takes and gives up nothing, so the first lock stays taken.
TEST(ZRMutex, AssignmentCopiesThePointerAlone) {
    ZRLock kept;
    ZRLock given;
    ZRMutex later(static_cast<ZRLock*>(nullptr));
    std::future<void> waiting;
    {
        ZRMutex first(kept);
        later = first;
        const ZRMutex second(given);
        first = second;
    }
    EXPECT_TRUE(isDone(takenElsewhere(given), kLong)) << "unlocked by the first of two guards";
    waiting = takenElsewhere(kept);
    EXPECT_FALSE(isDone(waiting, kShort));
    {
        ZRMutex release(static_cast<ZRLock*>(nullptr));
        release = later;
    }
    EXPECT_TRUE(isDone(waiting, kLong));
}

TEST(ZRMutex, AGuardCopiedToAnotherThreadUnlocksNothing) {
    ZRLock lock;
    std::future<void> waiting;
    {
        const ZRMutex held(lock);
        std::thread([&held] {
            ZRMutex copy(static_cast<ZRLock*>(nullptr));
            copy = held;
        }).join();
        waiting = takenElsewhere(lock);
        EXPECT_FALSE(isDone(waiting, kShort));
    }
    EXPECT_TRUE(isDone(waiting, kLong));
}

TEST(ZRLock, AssignmentCopiesNothing) {
    ZRLock held;
    ZRLock other;
    const ZRMutex guard(held);
    other = held;
    EXPECT_TRUE(isDone(takenElsewhere(other), kLong));
}

TEST(ZRMutex, StepsAtomically) {
    int count = 0;
    std::thread other([&count] {
        for (int i = 0; i < 5000; ++i) {
            ZRMutex::interlockedIncrement(count);
        }
    });
    for (int i = 0; i < 4000; ++i) {
        ZRMutex::interlockedDecrement(count);
    }
    other.join();
    EXPECT_EQ(ZRMutex::interlockedIncrement(count), 1001);
    EXPECT_EQ(ZRMutex::interlockedDecrement(count), 1000);
}

}  // namespace
}  // namespace ZroCommon::testing
