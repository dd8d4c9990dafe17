#include "plugin/IPlugVST.h"

#include <benchmark/benchmark.h>

#include <array>
#include <vector>

namespace Grimworks {
namespace {

/// A plug-in that costs nothing, so that what is left is the shell.
class SilentPlug final : public IPlugVST {
public:
    SilentPlug() : IPlugVST(nullptr) {}
    void ProcessDoubleReplacing(double**, double**, int) override {}
};

template <typename Sample>
struct StereoOut {
    std::array<std::vector<Sample>, 2> channels{std::vector<Sample>(1024), std::vector<Sample>(1024)};
    std::array<Sample*, 2> pointers{channels[0].data(), channels[1].data()};
};

/// One process call of this many frames, 32-bit.
void FloatCall(benchmark::State& state) {
    SilentPlug plug;
    AEffect* effect = plug.Effect();
    StereoOut<float> out;
    const auto frames = static_cast<std::int32_t>(state.range(0));
    for (auto _ : state)
        effect->processReplacing(effect, nullptr, out.pointers.data(), frames);
    state.SetItemsProcessed(state.iterations() * frames);
}
BENCHMARK(FloatCall)->Arg(64)->Arg(512);

/// The same in doubles, which go straight into the host's buffers.
void DoubleCall(benchmark::State& state) {
    SilentPlug plug;
    AEffect* effect = plug.Effect();
    StereoOut<double> out;
    const auto frames = static_cast<std::int32_t>(state.range(0));
    for (auto _ : state)
        effect->processDoubleReplacing(effect, nullptr, out.pointers.data(), frames);
    state.SetItemsProcessed(state.iterations() * frames);
}
BENCHMARK(DoubleCall)->Arg(64)->Arg(512);

/// One parameter set by the host.
void SetParameter(benchmark::State& state) {
    SilentPlug plug;
    AEffect* effect = plug.Effect();
    float value = 0.0F;
    for (auto _ : state) {
        value = 1.0F - value;
        effect->setParameter(effect, 7, value);
    }
}
BENCHMARK(SetParameter);

/// One event call with sixteen notes.
void ProcessEvents(benchmark::State& state) {
    SilentPlug plug;
    AEffect* effect = plug.Effect();
    VstMidiEvent note{};
    note.type = kMidiEvent;
    struct {
        std::int32_t numEvents = 16;
        std::intptr_t reserved = 0;
        std::array<VstMidiEvent*, 16> events{};
    } list;
    list.events.fill(&note);
    for (auto _ : state)
        benchmark::DoNotOptimize(effect->dispatcher(effect, PlugOp::ProcessEvents, 0, 0, &list, 0.0F));
}
BENCHMARK(ProcessEvents);

} // namespace
} // namespace Grimworks
