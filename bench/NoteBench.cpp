#include "core/DenormalGuard.h"
#include "tests/voice/VoiceRig.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

// Every row plays held notes in blocks of 64 frames at 44.1 kHz and reports
//   ns/voice/sample  time of one voice for one sample, and
//   core             share of one core that the row's voices take at 44.1 kHz.

namespace Grimworks {
namespace {

using Testing::VoiceRig;

constexpr int kBlock = 64;
constexpr double kRate = 44100.0;

struct Buffers {
    std::vector<double> left = std::vector<double>(kBlock), right = left, sub = left, volume = left,
                        filter = left;
    std::vector<ModulationRecord> records = std::vector<ModulationRecord>(kBlock);

    [[nodiscard]] VoiceOutput Output() {
        return {{left.data(), right.data()}, sub.data(), volume.data(), filter.data(), records.data()};
    }
};

void Hold(VoiceRig& rig) {
    rig.Set(Param::EnvSustain, 0.7);
    rig.Set(Param::FilterSustain, 0.7);
    rig.Set(Param::EnvDuration, 0.2);
    rig.Set(Param::AdsrShape, 0.3);
}

void SwitchOn(VoiceRig& rig, int count, int wave) {
    for (int i = 0; i < kOscillators; ++i) {
        rig.Set(i, OscParam::OnOff, i < count ? 1.0 : 0.0);
        rig.SetWave(i, wave);
        rig.Set(i, OscParam::Volume, 0.5);
    }
}

void ModulateAll(VoiceRig& rig) {
    rig.Set(Param::UnisonVoices, 1.0);
    rig.Set(Param::UnisonDetune, 0.3);
    rig.Set(Param::FmAmount, 0.4);
    rig.Set(Param::BassLayerAmount, 0.5);
    rig.Set(Param::BassLayerClick, 0.55);
    for (int i = 0; i < kOscillators; ++i) {
        rig.Set(i, OscParam::Phase, 0.3);
        rig.Set(i, OscParam::Saturation, 0.4);
        rig.Set(i, OscParam::FilterBalance, 0.5);
        rig.Set(i, OscParam::FilterCutoff, 0.7);
        rig.Set(i, OscParam::FilterResonance, 0.4);
        rig.Set(i, OscParam::FilterTypeLeft, 0.75);
        rig.Set(i, OscParam::FilterTypeRight, 1.0);
        rig.Set(i, OscParam::LfoRate, 0.2 + 0.1 * i);
        for (const OscParam amount :
             {OscParam::LfoToVolume, OscParam::LfoToTune, OscParam::LfoToFilter, OscParam::LfoToPan})
            rig.Set(i, amount, 0.4);
    }
}

void PlayVoices(benchmark::State& state, VoiceRig& rig, int voices) {
    const DenormalGuard guard;
    for (int i = 0; i < voices; ++i)
        rig.bank.NoteOn(36 + i % 48, 100, 0);
    Buffers buffers;
    for (auto _ : state) {
        for (int i = 0; i < kBlock; ++i)
            rig.bank.Tick();
        rig.bank.Render(buffers.Output(), kBlock);
        benchmark::DoNotOptimize(buffers.left.data());
    }
    const auto samples = static_cast<double>(state.iterations()) * kBlock;
    state.counters["ns/voice/sample"] = benchmark::Counter(
        samples * voices * 1e-9, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["core"] =
        benchmark::Counter(samples / kRate, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

/// One oscillator of one source kind; the argument is the waveform index.
void BM_OneOscillator(benchmark::State& state) {
    VoiceRig rig(kRate, kBlock);
    Hold(rig);
    SwitchOn(rig, 1, static_cast<int>(state.range(0)));
    PlayVoices(state, rig, 1);
}
BENCHMARK(BM_OneOscillator)->ArgName("wave")->Arg(0)->Arg(1)->Arg(2)->Arg(5)->Arg(8)->Arg(9)->Arg(20);

/// Three oscillators without modulation; the argument is the waveform index.
void BM_64Voices(benchmark::State& state) {
    VoiceRig rig(kRate, kBlock);
    Hold(rig);
    SwitchOn(rig, 3, static_cast<int>(state.range(0)));
    PlayVoices(state, rig, kVoices);
}
BENCHMARK(BM_64Voices)->ArgName("wave")->Arg(0)->Arg(1)->Arg(8)->Arg(20);

/// Three oscillators with two unison generators each, both Butterworth filters, saturation, three LFOs on all
/// targets, frequency modulation, sub-oscillator and click.
void BM_64VoicesWithEverything(benchmark::State& state) {
    VoiceRig rig(kRate, kBlock);
    Hold(rig);
    SwitchOn(rig, 3, static_cast<int>(state.range(0)));
    ModulateAll(rig);
    PlayVoices(state, rig, kVoices);
}
BENCHMARK(BM_64VoicesWithEverything)->ArgName("wave")->Arg(0)->Arg(1)->Arg(8)->Arg(20);

/// The same in the middle of an endless pitch sweep.
void BM_64VoicesWithEverythingInASweep(benchmark::State& state) {
    VoiceRig rig(kRate, kBlock);
    Hold(rig);
    SwitchOn(rig, 3, 1);
    ModulateAll(rig);
    rig.Set(Param::PitchOnOff, 1.0);
    rig.Set(Param::PitchAmount, 0.3);
    rig.pitchEnvelope.SetDuration(1e6);
    rig.Set(Param::PitchPower, 0.4);
    PlayVoices(state, rig, kVoices);
}
BENCHMARK(BM_64VoicesWithEverythingInASweep);

/// A note on and the release that ends it, without a block between them.
void BM_NoteOn(benchmark::State& state) {
    VoiceRig rig(kRate, kBlock);
    rig.Set(Param::EnvRelease, 0.0);
    rig.Set(Param::FilterRelease, 0.0);
    Buffers buffers;
    for (auto _ : state) {
        rig.bank.NoteOn(60, 100, 0);
        rig.bank.NoteOff(60, 0);
        rig.bank.Tick();
        rig.bank.Render(buffers.Output(), 1);
    }
}
BENCHMARK(BM_NoteOn);

/// A setter over all voices: three exponentials each.
void BM_SetShape(benchmark::State& state) {
    VoiceRig rig(kRate, kBlock);
    double value = 0.0;
    for (auto _ : state) {
        value = value < 1.0 ? value + 0.01 : 0.0;
        rig.bank.SetShape(value);
    }
}
BENCHMARK(BM_SetShape);

} // namespace
} // namespace Grimworks
