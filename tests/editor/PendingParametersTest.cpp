#include "editor/PendingParameters.h"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <thread>
#include <vector>

namespace Grimworks {
namespace {

struct Taken {
    bool any = false;
    double last = -1.0;
    bool first = false;
    double firstValue = -1.0;
};

Taken TakeFrom(PendingParameters& pending, int id) {
    Taken taken;
    taken.any = pending.Take(id, taken.last, taken.first, taken.firstValue);
    return taken;
}

TEST(PendingParameters, NothingIsPendingAtFirst) {
    PendingParameters pending;
    EXPECT_FALSE(pending.TakeAny());
    for (int id = 0; id < kParameters; ++id)
        EXPECT_FALSE(TakeFrom(pending, id).any);
}

TEST(PendingParameters, TheLastValueStandsAndTheFirstIsKept) {
    PendingParameters pending;
    pending.Put(7, 0.25);
    pending.Put(7, 0.5);
    pending.Put(7, 0.75);
    EXPECT_TRUE(pending.TakeAny());
    const Taken taken = TakeFrom(pending, 7);
    EXPECT_TRUE(taken.any);
    EXPECT_EQ(taken.last, 0.75);
    EXPECT_TRUE(taken.first);
    EXPECT_EQ(taken.firstValue, 0.25);
    EXPECT_FALSE(TakeFrom(pending, 7).any);
    EXPECT_FALSE(pending.TakeAny());
}

TEST(PendingParameters, OnlyTheFirstTakeIsTheFirst) {
    PendingParameters pending;
    pending.Put(7, 0.25);
    TakeFrom(pending, 7);
    pending.Put(7, 0.5);
    const Taken taken = TakeFrom(pending, 7);
    EXPECT_TRUE(taken.any);
    EXPECT_FALSE(taken.first);
    EXPECT_EQ(taken.last, 0.5);
    EXPECT_EQ(taken.firstValue, 0.25);
}

TEST(PendingParameters, IdsAreIndependent) {
    PendingParameters pending;
    pending.Put(0, 0.25);
    pending.Put(kParameters - 1, 0.5);
    EXPECT_EQ(TakeFrom(pending, kParameters - 1).last, 0.5);
    EXPECT_EQ(TakeFrom(pending, 0).last, 0.25);
    EXPECT_FALSE(TakeFrom(pending, 1).any);
}

TEST(PendingParameters, BadIdsAndNoNumbersAreIgnored) {
    PendingParameters pending;
    for (const int bad :
         {-1, kParameters, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        pending.Put(bad, 0.5);
        EXPECT_FALSE(TakeFrom(pending, bad).any);
    }
    pending.Put(3, std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(pending.TakeAny());
    EXPECT_FALSE(TakeFrom(pending, 3).any);
}

TEST(PendingParameters, ThreadsPutWhileTheEditorTakesAndTheLastValueArrives) {
    constexpr int kWriters = 3;
    constexpr int kRounds = 2000;
    PendingParameters pending;
    std::atomic<int> running{kWriters};
    std::vector<std::thread> writers;
    writers.reserve(kWriters);
    for (int writer = 0; writer < kWriters; ++writer) {
        writers.emplace_back([&, writer] {
            // Each has ids of its own, and all share the last one.
            for (int round = 1; round <= kRounds; ++round) {
                for (int id = writer; id < kParameters - 1; id += kWriters)
                    pending.Put(id, round + id / 1000.0);
                pending.Put(kParameters - 1, round);
            }
            --running;
        });
    }
    std::vector<double> last(kParameters, 0.0);
    std::vector<int> firsts(kParameters, 0);
    int backwards = 0;
    bool done = false;
    while (!done) {
        done = running == 0;
        if (!pending.TakeAny()) continue;
        for (int id = 0; id < kParameters; ++id) {
            const Taken taken = TakeFrom(pending, id);
            if (!taken.any) continue;
            const auto at = static_cast<std::size_t>(id);
            if (taken.first) ++firsts[at];
            if (id < kParameters - 1) {
                EXPECT_EQ(taken.firstValue, 1 + id / 1000.0);
                if (taken.last < last[at]) ++backwards;
            }
            last[at] = taken.last;
        }
    }
    for (std::thread& writer : writers)
        writer.join();
    EXPECT_EQ(backwards, 0);
    EXPECT_EQ(firsts, std::vector<int>(kParameters, 1));
    for (int id = 0; id < kParameters - 1; ++id)
        EXPECT_EQ(last[static_cast<std::size_t>(id)], kRounds + id / 1000.0) << id;
}

} // namespace
} // namespace Grimworks
