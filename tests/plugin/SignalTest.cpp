#include "plugin/Signal.h"

#include <gtest/gtest.h>

#include <vector>

namespace Grimworks {
namespace {

struct Listener {
    std::vector<int>* heard;
    int mark;

    void Hear(int x) { heard->push_back(mark + x); }
    void HearDouble(int x) { heard->push_back(mark + 2 * x); }
};

TEST(Signal, CallsAllSlotsInTheOrderOfConnection) {
    std::vector<int> heard;
    Listener first{&heard, 100};
    Listener second{&heard, 200};
    Signal<int> signal;
    signal.Connect<&Listener::Hear>(&second);
    signal.Connect<&Listener::Hear>(&first);
    signal.Connect<&Listener::HearDouble>(&second);
    signal(7);
    EXPECT_EQ(heard, (std::vector<int>{207, 107, 214}));
}

TEST(Signal, APairIsOnlyThereOnce) {
    std::vector<int> heard;
    Listener listener{&heard, 0};
    Signal<int> signal;
    signal.Connect<&Listener::Hear>(&listener);
    signal.Connect<&Listener::Hear>(&listener);
    EXPECT_EQ(signal.SlotCount(), 1);
    signal(3);
    EXPECT_EQ(heard, std::vector<int>{3});
}

TEST(Signal, WithoutSlotsNothingHappens) {
    const Signal<int> signal;
    signal(1);
    EXPECT_EQ(signal.SlotCount(), 0);
}

} // namespace
} // namespace Grimworks
