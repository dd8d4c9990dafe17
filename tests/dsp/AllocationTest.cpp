#include "tests/dsp/AllocationCounter.h"
#include "tests/dsp/FilterTestTools.h"

#include "dsp/Designs.h"

#include <array>
#include <vector>

namespace {

/// Sets, sweeps and reads a filter and counts what it allocates meanwhile.
template <class F>
long AllocationsOf(double cutoffControl) {
    F filter;
    std::array<double, 64> left{};
    std::array<double, 64> right{};
    std::array<double*, 2> channels{left.data(), right.data()};
    const long before = DspTest::Allocations();
    filter.setParams(filter.getDefaultParams());
    Dsp::Params params = filter.getParams();
    const int cutoff = filter.findParam(Dsp::ParamId::kFrequency);
    params[cutoff] = filter.getParamInfo(cutoff).toNativeValue(cutoffControl);
    filter.setParams(params);
    for (int i = 0; i < 10; ++i)
        filter.process(64, channels.data());
    filter.reset();
    return DspTest::Allocations() - before;
}

} // namespace

TEST(Allocation, TheCounterCounts) {
    const long before = DspTest::Allocations();
    std::vector<double> memory(10);
    EXPECT_EQ(memory[9], 0.0);
    EXPECT_EQ(DspTest::Allocations() - before, 1);
}

TEST(Allocation, NoFilterAllocatesInADesignOrInProcess) {
    using namespace Dsp;
    EXPECT_EQ(AllocationsOf<RbjLowPass>(0.4), 0);
    EXPECT_EQ(AllocationsOf<RbjHighPass>(0.4), 0);
    EXPECT_EQ(AllocationsOf<RbjBandPass1>(0.4), 0);
    EXPECT_EQ(AllocationsOf<RbjBandStop>(0.4), 0);
    EXPECT_EQ(AllocationsOf<ChebyshevLowPass>(0.4), 0);
    EXPECT_EQ(AllocationsOf<ChebyshevHighPass>(0.4), 0);
    EXPECT_EQ(AllocationsOf<ChebyshevLowPassI>(0.4), 0);
    EXPECT_EQ(AllocationsOf<ChebyshevHighPassI>(0.4), 0);
    EXPECT_EQ(AllocationsOf<ButterworthBandPass>(0.4), 0);
    EXPECT_EQ(AllocationsOf<ButterworthBandStop>(0.4), 0);
    EXPECT_EQ(AllocationsOf<ButterworthLowShelf>(0.4), 0);
    EXPECT_EQ(AllocationsOf<ButterworthBandShelf>(0.4), 0);
    EXPECT_EQ(AllocationsOf<ButterworthHighShelf>(0.4), 0);
    EXPECT_EQ(AllocationsOf<BesselLowPass>(0.4), 0);
    EXPECT_EQ(AllocationsOf<BesselHighPass>(0.4), 0);
}
