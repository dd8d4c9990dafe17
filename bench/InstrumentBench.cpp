#include "core/ParameterTable.h"
#include "plugin/ThudForge.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <vector>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

// The whole instrument behind its AEffect record. Rows that process report
//   core        share of one core at 44.1 kHz, and
//   real_time   how many times faster than real time,
// both by processor time.

namespace Grimworks {
namespace {

constexpr double kRate = 44100.0;

/// An instrument as a host holds it, with the blank program.
class Rig {
public:
    explicit Rig(int blockFrames)
        : left(static_cast<std::size_t>(blockFrames)), right(left), block(blockFrames) {
        Dispatch(PlugOp::Open, 0, 0.0F);
        Dispatch(PlugOp::SetSampleRate, 0, static_cast<float>(kRate));
        Dispatch(PlugOp::SetBlockSize, blockFrames, 0.0F);
        Dispatch(PlugOp::MainsChanged, 1, 0.0F);
        for (const ParameterInfo& row : kParameterTable)
            Set(row.id, row.resetValue / row.max);
    }

    void Set(int id, double normalized) {
        plug->Effect()->setParameter(plug->Effect(), id, static_cast<float>(normalized));
    }

    void NoteOn(int note) { plug->ProcessMidiMsg({0, 0x90, static_cast<std::uint8_t>(note), 100}); }

    void Process() {
        double* outputs[] = {left.data(), right.data()};
        plug->Effect()->processDoubleReplacing(plug->Effect(), nullptr, outputs, block);
        benchmark::DoNotOptimize(left.data());
    }

    /// Until sweeps have ended and smoothers stand.
    void Settle() {
        for (int done = 0; done < 8192; done += block)
            Process();
    }

    [[nodiscard]] const VoiceBank& Voices() const { return plug->Voices(); }

private:
    void Dispatch(std::int32_t opcode, std::intptr_t value, float opt) {
        plug->Effect()->dispatcher(plug->Effect(), opcode, 0, value, nullptr, opt);
    }

    std::unique_ptr<ThudForge> plug = std::make_unique<ThudForge>(nullptr);
    std::vector<double> left;
    std::vector<double> right;
    int block;
};

void Report(benchmark::State& state, int block) {
    const double seconds = static_cast<double>(state.iterations()) * block / kRate;
    state.counters["real_time"] = benchmark::Counter(seconds, benchmark::Counter::kIsRate);
    state.counters["core"] =
        benchmark::Counter(seconds, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void HoldNotes(Rig& rig, int count) {
    rig.Set(Param::NoteTransposeMode, 0.0);
    rig.Set(Param::EnvSustain, 0.7);
    rig.Set(Param::FilterSustain, 0.7);
    for (int i = 0; i < count; ++i)
        rig.NoteOn(24 + i);
}

/// Every unit of the chain at work, the sub layer's road included.
void SwitchChainOn(Rig& rig) {
    for (const int id : {Param::BassLayerToFilter, Param::ModulationOnOff})
        rig.Set(id, 1.0);
    for (const int id : {Param::BassLayerAmount,
                         Param::BassAmount,
                         Param::HighAmount,
                         Param::Distortion,
                         Param::DynShaper,
                         Param::Quantization,
                         Param::SampleRate,
                         Param::FilterInputDrive,
                         Param::FilterType,
                         Param::FilterCutoff,
                         Param::FilterResonance,
                         Param::FilterMode2,
                         Param::RingModulationAmount,
                         Param::RingModulationFrequency,
                         Param::PhaserDepth,
                         Param::PhaserFeedback,
                         Param::PhaserRate,
                         Param::TempoDelayAmount,
                         Param::TempoDelayFeedback,
                         Param::Saturation,
                         Param::FilterEnvToDistortion,
                         Param::FilterEnvToDynShaper})
        rig.Set(id, 0.6);
    rig.Set(Param::DistortionType, 20.0 / 41.0);
    rig.Set(Param::DistortionLoudness, 1.0);
    rig.Set(Param::Gate, 0.1);
    rig.Set(Param::DumpExpand, 0.45);
}

/// Three oscillators with both filters, saturation and an LFO on everything, two unison generators each.
void SwitchVoicesOn(Rig& rig, int wave) {
    for (int i = 0; i < kOscillators; ++i) {
        rig.Set(Osc(i, OscParam::OnOff), 1.0);
        rig.Set(Osc(i, OscParam::Waveform), wave / 40.0);
        rig.Set(Osc(i, OscParam::Volume), 0.3);
        rig.Set(Osc(i, OscParam::Phase), 0.3);
        rig.Set(Osc(i, OscParam::Saturation), 0.3);
        rig.Set(Osc(i, OscParam::FilterBalance), 0.5);
        rig.Set(Osc(i, OscParam::FilterCutoff), 0.7);
        rig.Set(Osc(i, OscParam::FilterResonance), 0.4);
        rig.Set(Osc(i, OscParam::FilterTypeLeft), 1.0);
        rig.Set(Osc(i, OscParam::LfoRate), 0.2 + 0.1 * i);
        for (const OscParam amount :
             {OscParam::LfoToVolume, OscParam::LfoToTune, OscParam::LfoToFilter, OscParam::LfoToPan})
            rig.Set(Osc(i, amount), 0.4);
    }
    rig.Set(Param::UnisonVoices, 1.0);
    rig.Set(Param::UnisonDetune, 0.3);
}

void BM_Construct(benchmark::State& state) {
    for (auto _ : state) {
        auto plug = std::make_unique<ThudForge>(nullptr);
        plug->FillUnusedPresets("Empty"); // as the module's entry point does
        benchmark::DoNotOptimize(plug.get());
    }
}
BENCHMARK(BM_Construct)->Unit(benchmark::kMillisecond);

#if defined(__GLIBC__)

double HeapMegabytes() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd) / 1048576.0;
}

/// What an instance has taken from the heap, itself included, once a host has set rate and block size; the
/// argument is the rate.
void BM_Memory(benchmark::State& state) {
    double megabytes = 0.0;
    for (auto _ : state) {
        const double before = HeapMegabytes();
        ThudForge* const plug = std::make_unique<ThudForge>(nullptr).release();
        plug->FillUnusedPresets("Empty");
        AEffect* const effect = plug->Effect();
        effect->dispatcher(effect, PlugOp::SetSampleRate, 0, 0, nullptr, static_cast<float>(state.range(0)));
        effect->dispatcher(effect, PlugOp::SetBlockSize, 0, 1024, nullptr, 0.0F);
        megabytes = HeapMegabytes() - before;
        effect->dispatcher(effect, PlugOp::Close, 0, 0, nullptr, 0.0F);
    }
    state.counters["MB"] = megabytes;
}
BENCHMARK(BM_Memory)->Arg(44100)->Arg(192000)->Unit(benchmark::kMillisecond)->Iterations(3);

#endif

/// Nothing sounds: what an instance costs by being there. The argument is the block size.
void BM_Idle(benchmark::State& state) {
    const int block = static_cast<int>(state.range(0));
    Rig rig(block);
    rig.Settle();
    for (auto _ : state)
        rig.Process();
    Report(state, block);
}
BENCHMARK(BM_Idle)->ArgName("block")->Arg(16)->Arg(64)->Arg(512);

/// The same with all effects bypassed, so that the chain does not run.
void BM_IdleBypassed(benchmark::State& state) {
    Rig rig(64);
    rig.Set(Param::BypassFX, 1.0);
    rig.Settle();
    for (auto _ : state)
        rig.Process();
    Report(state, 64);
}
BENCHMARK(BM_IdleBypassed);

/// One note through the neutral chain.
void BM_OneNote(benchmark::State& state) {
    Rig rig(64);
    HoldNotes(rig, 1);
    rig.Settle();
    for (auto _ : state)
        rig.Process();
    Report(state, 64);
}
BENCHMARK(BM_OneNote);

/// One note through the chain with every unit at work.
void BM_OneNoteChainOn(benchmark::State& state) {
    Rig rig(64);
    SwitchChainOn(rig);
    HoldNotes(rig, 1);
    rig.Settle();
    for (auto _ : state)
        rig.Process();
    Report(state, 64);
}
BENCHMARK(BM_OneNoteChainOn);

/// The same while the parameters of all filters move with every block, so that every filter is designed anew
/// with every sample.
void BM_OneNoteChainSwept(benchmark::State& state) {
    Rig rig(64);
    SwitchChainOn(rig);
    HoldNotes(rig, 1);
    rig.Settle();
    int step = 0;
    for (auto _ : state) {
        const double value = 0.3 + 0.4 * (++step % 1000) / 1000.0;
        for (const int id : {Param::FilterCutoff, Param::FilterResonance, Param::BassAmount, Param::MidAmount,
                             Param::HighAmount, Param::DumpExpand})
            rig.Set(id, value);
        rig.Process();
    }
    Report(state, 64);
}
BENCHMARK(BM_OneNoteChainSwept);

/// 64 voices of three oscillators with two unison generators each, both filters, saturation and LFOs, and the
/// whole chain at work. The argument is the waveform: sawtooth and a table.
void BM_64VoicesChainOn(benchmark::State& state) {
    Rig rig(64);
    SwitchChainOn(rig);
    SwitchVoicesOn(rig, static_cast<int>(state.range(0)));
    HoldNotes(rig, kVoices);
    rig.Settle();
    if (rig.Voices().ActiveVoices() != kVoices) state.SkipWithError("not all voices are sounding");
    for (auto _ : state)
        rig.Process();
    Report(state, 64);
}
BENCHMARK(BM_64VoicesChainOn)->ArgName("wave")->Arg(1)->Arg(20)->Unit(benchmark::kMicrosecond);

/// One parameter that is pushed to all 64 voices, and one that restarts a sweep.
void BM_SetParameter(benchmark::State& state) {
    Rig rig(64);
    const int id = static_cast<int>(state.range(0));
    int step = 0;
    for (auto _ : state)
        rig.Set(id, (++step % 100) / 100.0);
}
BENCHMARK(BM_SetParameter)->ArgName("id")->Arg(Param::AdsrShape)->Arg(Param::FilterCutoff);

} // namespace
} // namespace Grimworks
