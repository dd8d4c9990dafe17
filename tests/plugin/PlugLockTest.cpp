#include "plugin/PlugLock.h"

#include <gtest/gtest.h>

#include <thread>

namespace Grimworks {
namespace {

bool OtherThreadGets(PlugLock& lock) {
    bool got = false;
    std::thread other([&] {
        got = lock.TryEnter();
        if (got) lock.Leave();
    });
    other.join();
    return got;
}

TEST(PlugLock, IsHeldUntilTheOutermostGuardEnds) {
    PlugLock lock;
    {
        const PlugLockGuard outer(lock);
        {
            const PlugLockGuard inner(lock);
            EXPECT_FALSE(OtherThreadGets(lock));
        }
        EXPECT_FALSE(OtherThreadGets(lock));
    }
    EXPECT_TRUE(OtherThreadGets(lock));
}

TEST(PlugLock, TheSameThreadMayTryAgain) {
    PlugLock lock;
    ASSERT_TRUE(lock.TryEnter());
    ASSERT_TRUE(lock.TryEnter());
    lock.Leave();
    EXPECT_FALSE(OtherThreadGets(lock));
    lock.Leave();
    EXPECT_TRUE(OtherThreadGets(lock));
}

TEST(PlugLock, TwoThreadsNeverShareTheGuardedSection) {
    PlugLock lock;
    int counter = 0;
    const auto work = [&] {
        for (int i = 0; i < 20000; ++i) {
            const PlugLockGuard guard(lock);
            ++counter;
        }
    };
    std::thread first(work);
    std::thread second(work);
    first.join();
    second.join();
    EXPECT_EQ(counter, 40000);
}

} // namespace
} // namespace Grimworks
