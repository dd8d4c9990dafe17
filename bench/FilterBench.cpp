#include "dsp/Designs.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>

namespace {

constexpr int kFrames = 256;

/// A stereo block that is filled anew from a lively source before every run.
struct Block {
    std::array<double, kFrames> source;
    std::array<double, kFrames> left;
    std::array<double, kFrames> right;
    std::array<double*, 2> channels{left.data(), right.data()};

    Block() {
        for (std::size_t i = 0; i < kFrames; ++i)
            source[i] = std::sin(0.37 * static_cast<double>(i * i % 1013));
        Fill();
    }
    void Fill() { left = right = source; }
};

Dsp::Params WithOrder(const Dsp::Filter& filter, int order) {
    Dsp::Params params = filter.getDefaultParams();
    const int index = filter.findParam(Dsp::ParamId::kOrder);
    if (index >= 0) params[index] = order;
    return params;
}

/// Time per stereo frame at rest.
template <class Filter>
void AtRest(benchmark::State& state) {
    Filter filter;
    filter.setParams(WithOrder(filter, static_cast<int>(state.range(0))));
    Block block;
    for (auto _ : state) {
        block.Fill();
        filter.process(kFrames, block.channels.data());
        benchmark::DoNotOptimize(block.left.data());
    }
    state.SetItemsProcessed(state.iterations() * kFrames);
}

/// Time per stereo frame while every frame has a design of its own; all swept parameters move.
template <class Filter>
void InASweep(benchmark::State& state) {
    Filter filter;
    filter.setTransition(kFrames);
    const Dsp::Params low = WithOrder(filter, static_cast<int>(state.range(0)));
    Dsp::Params high = low;
    for (int i = 1; i < filter.getNumParams(); ++i) {
        if (filter.getParamInfo(i).id != Dsp::ParamId::kOrder) high[i] = low[i] * 1.5;
    }
    filter.setParams(low);
    Block block;
    bool up = true;
    for (auto _ : state) {
        filter.setParams(up ? high : low);
        up = !up;
        block.Fill();
        filter.process(kFrames, block.channels.data());
        benchmark::DoNotOptimize(block.left.data());
    }
    state.SetItemsProcessed(state.iterations() * kFrames);
}

} // namespace

#define FILTER_BENCHMARK(Filter, order)                                                                      \
    BENCHMARK(AtRest<Dsp::Filter>)->Name("Filter/" #Filter "/rest")->Arg(order);                             \
    BENCHMARK(InASweep<Dsp::Filter>)->Name("Filter/" #Filter "/sweep")->Arg(order)

FILTER_BENCHMARK(RbjLowPass, 2);
FILTER_BENCHMARK(RbjBandStop, 2);
FILTER_BENCHMARK(ChebyshevLowPass, 2);
FILTER_BENCHMARK(ChebyshevLowPass, 4);
FILTER_BENCHMARK(ChebyshevHighPassI, 2);
FILTER_BENCHMARK(ButterworthBandPass, 2);
FILTER_BENCHMARK(ButterworthBandStop, 2);
FILTER_BENCHMARK(ButterworthLowShelf, 2);
FILTER_BENCHMARK(ButterworthBandShelf, 2);
FILTER_BENCHMARK(ButterworthHighShelf, 2);
FILTER_BENCHMARK(BesselLowPass, 4);
