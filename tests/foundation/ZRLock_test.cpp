#include "zro/foundation/ZRLock.h"

#include <chrono>
#include <future>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/Threads.h"

namespace ZroCommon::testing {
namespace {

using namespace std::chrono_literals;

// Takes and gives back the lock in another thread.
std::future<void> taker(ZRLock& lock) {
    return std::async(std::launch::async, [&lock] { const ZRMutex guard(lock); });
}

// The same of a lock that is taken, so that the other thread waits.
std::future<void> waitingTaker(ZRLock& lock) {
    std::future<void> result = taker(lock);
    EXPECT_EQ(result.wait_for(30ms), std::future_status::timeout);
    return result;
}

bool ends(const std::future<void>& task) {
    return task.wait_for(20s) == std::future_status::ready;
}

TEST(ZRMutex, KeepsOtherThreadsOut) {
    ZRLock lock;
    int ours = 0;
    int ofTheLibrary = 0;
    int atomic = 0;
    inThreads(8, [&](int thread) {
        for (int round = 0; round < 2000; ++round) {
            const ZRMutex guard(lock);
            ++ours;
        }
        for (int round = 0; round < 2000; ++round) {
            const ZRMutex guard;
            ++ofTheLibrary;
        }
        for (int round = 0; round < 2000; ++round) {
            thread < 5 ? ZRMutex::interlockedIncrement(atomic)
                       : ZRMutex::interlockedDecrement(atomic);
        }
    });
    EXPECT_EQ(ours, 16'000);
    EXPECT_EQ(ofTheLibrary, 16'000);
    EXPECT_EQ(ZRMutex::interlockedIncrement(atomic), 4001);
    EXPECT_EQ(ZRMutex::interlockedDecrement(atomic), 4000);
}

TEST(ZRMutex, AThreadMayTakeALockAgain) {
    ZRLock lock;
    std::future<void> waiting;
    {
        const ZRMutex outer(lock);
        { const ZRMutex inner(&lock); }
        waiting = waitingTaker(lock);
    }
    EXPECT_TRUE(ends(waiting));
}

// On purpose: an assignment takes and gives up nothing, so the first lock stays taken.
TEST(ZRMutex, AssignmentCopiesThePointerAlone) {
    ZRLock kept;
    ZRLock given;
    ZRMutex later(static_cast<ZRLock*>(nullptr));
    {
        ZRMutex first(kept);
        later = first;
        const ZRMutex second(given);
        first = second;
    }
    EXPECT_TRUE(ends(taker(given))) << "unlocked by the first of two guards";
    const std::future<void> waiting = waitingTaker(kept);
    {
        ZRMutex release(static_cast<ZRLock*>(nullptr));
        release = later;
    }
    EXPECT_TRUE(ends(waiting));
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
        waiting = waitingTaker(lock);
    }
    EXPECT_TRUE(ends(waiting));
}

TEST(ZRLock, AssignmentCopiesNothing) {
    ZRLock held;
    ZRLock other;
    const ZRMutex guard(held);
    other = held;
    EXPECT_TRUE(ends(taker(other)));
}

}  // namespace
}  // namespace ZroCommon::testing
