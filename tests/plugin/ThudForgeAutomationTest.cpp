#include "tests/plugin/AllocationCounter.h"
#include "tests/plugin/Measure.h"
#include "tests/support/SlowBuild.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

using namespace Grimworks;

namespace {

constexpr int kBlock = 64;
constexpr int kSweepBlocks = 2 * 44100 / kBlock;

struct Setting {
    int id;
    double value;
};

/// How rough a sound is: the largest second difference against the running level of both channels. A sine of
/// 220 Hz has 0.001; a click of a hundredth of the level has 0.01 and more.
class ClickDetector {
public:
    void Hear(const Instrument::Audio& audio) {
        for (std::size_t i = 0; i < audio.left.size(); ++i) {
            const std::array<double, 2> now{audio.left[i], audio.right[i]};
            level = std::max({level * kDecay, std::fabs(now[0]), std::fabs(now[1])});
            for (std::size_t c = 0; c < now.size() && heard >= 2; ++c) {
                const double bend = std::fabs(now[c] - 2.0 * before[c] + earlier[c]);
                roughest = std::max(roughest, bend / std::max(level, kSilence));
            }
            earlier = before;
            before = now;
            ++heard;
        }
    }

    [[nodiscard]] double Roughest() const { return roughest; }

private:
    static constexpr double kDecay = 0.9995; ///< a twentieth of a second
    static constexpr double kSilence = 0.02;

    std::array<double, 2> before{};
    std::array<double, 2> earlier{};
    double level = 0.0;
    double roughest = 0.0;
    int heard = 0;
};

/// What the parameter needs around it so that it can be heard on a sine.
std::vector<Setting> Surroundings(int id) {
    if (id >= Param::DistortionOnOff && id <= Param::DistortionInterpMode) return {{Param::Distortion, 0.3}};
    if (id >= Param::DynShaper && id <= Param::DynShaperPosNegBoth) return {{Param::DynShaper, 0.7}};
    if (id >= Param::FilterOnOff && id <= Param::FilterTransition) {
        return {{Param::FilterCutoff, 0.6},
                {Param::FilterResonance, 0.5},
                {Param::FilterType, 0.5},
                {Param::FilterMode2, 0.4}};
    }
    if (id >= Param::ModulationOnOff && id <= Param::RingModulationWaveForm) {
        return {{Param::ModulationOnOff, 1.0},
                {Param::RingModulationAmount, 0.5},
                {Param::RingModulationFrequency, 0.02}};
    }
    if ((id >= Param::PhaserDepth && id <= Param::PhaserRate) || id == Param::PhaserTempoSync) {
        return {{Param::ModulationOnOff, 1.0},
                {Param::PhaserDepth, 0.7},
                {Param::PhaserFeedback, 0.5},
                {Param::PhaserRate, 0.05}};
    }
    if (id >= Param::TempoDelayAmount && id <= Param::TempoDelaySpread) {
        return {{Param::TempoDelayAmount, 0.5}, {Param::TempoDelayFeedback, 0.5}};
    }
    if (id == Param::LimiterLevel || id == Param::LimiterMode) {
        return {{Param::LimiterMode, 1.0}, {Param::LimiterLevel, 0.3}};
    }
    return {};
}

/// A held sine in these surroundings, its parameter at a value, everything at rest.
void HoldSine(Instrument& instrument, const std::vector<Setting>& surroundings, Setting start, int key = 45) {
    instrument.SetTempo(240.0);
    OpenProgram(instrument);
    instrument.Set(Osc(0, OscParam::Volume), 0.6);
    instrument.Set(Param::LimiterMode, 0.0);
    instrument.Set(Param::Volume, 1.0);
    for (const Setting& setting : surroundings)
        instrument.Set(setting.id, setting.value);
    instrument.Set(start.id, start.value);
    instrument.Render(kSettleFrames);
    instrument.NoteOn(key);
    instrument.Render(2 * kSettleFrames);
}

/// The roughest of the sounds that the parameter makes at rest, at so many of its values.
double RoughestAtRest(const std::vector<Setting>& surroundings, Setting from, double to, int values,
                      int key = 45) {
    Instrument instrument;
    HoldSine(instrument, surroundings, from, key);
    double roughest = 0.0;
    for (int k = 0; k < values; ++k) {
        instrument.Set(from.id, from.value + (to - from.value) * k / (values - 1));
        // The delay is the one that remembers longest.
        instrument.Render(from.id == Param::TempoDelaySpread ? 4 * 11025 : 4096);
        ClickDetector detector;
        detector.Hear(instrument.Render(2048));
        roughest = std::max(roughest, detector.Roughest());
    }
    return roughest;
}

double Bound(double atRest) {
    return 1.25 * atRest + 0.003;
}

/// Parameters that step, each with two of its values and the reason.
struct Step {
    int id;
    double one;
    double other;
    int blocks; ///< between two steps
    int key;
    std::vector<Setting> surroundings;
    const char* reason;
};

const std::vector<Step>& Steps() {
    static const std::vector<Setting> shaper{{Param::DynShaper, 0.7}};
    static const std::vector<Setting> ring{{Param::ModulationOnOff, 1.0},
                                           {Param::RingModulationAmount, 0.8},
                                           {Param::RingModulationFrequency, 0.02}};
    static const std::vector<Setting> phaser{{Param::ModulationOnOff, 1.0}, {Param::PhaserDepth, 0.7}};
    static const std::vector<Setting> quiet{{Osc(0, OscParam::Volume), 0.25}, {Param::Distortion, 0.15}};
    static const std::vector<Step> steps{
        {Param::DistortionOnOff, 0.0, 1.0, 5, 45, quiet, "the waveshaper is cut without a fade"},
        {Param::Distortion, 0.0, 0.15, 5, 45, quiet, "amount 0 is a switch"},
        {Param::DistortionType, 0.0, 1.0 / 41.0, 5, 45, quiet, "another curve is another curve at once"},
        {Param::DistortionLoudness, 0.0, 1.0, 5, 45, quiet, "another formula at once"},
        {Param::DynShaper, 0.0, 0.7, 5, 45, {}, "amount 0 is a switch"},
        {Param::DynShaperInvert, 0.0, 1.0, 5, 45, shaper, "the bump turns over at once"},
        {Param::DynShaperType, 0.0, 1.0, 5, 45, shaper, "another shape at once"},
        {Param::DynShaperMode, 0.0, 1.0, 5, 45, shaper, "another formula at once"},
        {Param::DynShaperPosNegBoth, 0.5, 1.0, 5, 45, shaper, "another half of the wave at once"},
        {Param::FilterMode1,
         0.0,
         1.0,
         5,
         45,
         {{Param::FilterCutoff, 0.3}},
         "another filter with a state of its own"},
        {Param::FilterMode2,
         0.0,
         0.4,
         5,
         45,
         {{Param::FilterCutoff, 0.3}, {Param::FilterType, 1.0}},
         "another filter with a state of its own"},
        {Param::FilterInputDrive, 0.0, 0.5, 5, 45, {}, "amount 0 is a switch"},
        {Param::RingModulationAmount, 0.0, 0.8, 5, 45, ring, "amount 0 is a switch"},
        {Param::RingModulationFrequency, 0.0, 0.02, 5, 45, ring, "frequency 0 is a switch"},
        {Param::RingModulationWaveForm, 0.0, 1.0, 5, 45, ring, "another wave at once"},
        {Param::PhaserDepth, 0.0, 0.7, 5, 45, phaser, "depth 0 is a switch"},
        {Param::TempoDelayAmount, 0.0, 0.7, 5, 45, {{Param::TempoDelaySpread, 0.3}}, "a plain factor"},
        {Param::TempoDelaySpread,
         0.2,
         0.8,
         5,
         45,
         {{Param::TempoDelayAmount, 0.5}},
         "the length jumps, without a glide"},
        {Param::LimiterMode, 0.0, 1.0, 5, 45, {{Param::LimiterLevel, 0.3}}, "a switch without a fade"},
        {Param::Saturation, 0.0, 0.3, 5, 45, {}, "amount 0 is a switch"}};
    return steps;
}

/// Where a sweep would pass one of the steps above it is left out or begins behind it.
struct Sweep {
    int id;
    double from;
    double to;
};

std::vector<Sweep> Sweeps() {
    std::vector<Sweep> sweeps;
    for (int id = Param::BassAmount; id < kLiveParameters; ++id) {
        switch (id) {
        case Param::DistortionType:
        case Param::DistortionLoudness:
        case Param::DynShaperInvert:
        case Param::DynShaperType:
        case Param::DynShaperMode:
        case Param::DynShaperPosNegBoth:
        case Param::FilterMode1:
        case Param::FilterMode2:
        case Param::RingModulationWaveForm:
        case Param::TempoDelaySpread:
        case Param::LimiterMode:
            break; // steps throughout, see there
        case Param::DistortionOnOff:
        case Param::RingModulationFrequency:
            sweeps.push_back({id, 0.001, 1.0}); // 0 is a switch
            break;
        case Param::FilterResonance: // next to no ripple at all a corner flies off to the top
        case Param::LimiterLevel:    // at 0 nearly nothing is left to compare with
            sweeps.push_back({id, 0.05, 1.0});
            break;
        default:
            sweeps.push_back({id, 0.0, 1.0});
            break;
        }
    }
    return sweeps;
}

} // namespace

TEST(ThudForgeAutomation, SweepsOverTwoSecondsDoNotClick) {
    for (const Sweep& sweep : Sweeps()) {
        const std::vector<Setting> surroundings = Surroundings(sweep.id);
        const double bound = Bound(RoughestAtRest(surroundings, {sweep.id, sweep.from}, sweep.to, 9));
        for (const bool isDown : {false, true}) {
            if (isDown && kSlowBuild) continue; // the plain build sweeps both ways
            const double from = isDown ? sweep.to : sweep.from;
            const double to = isDown ? sweep.from : sweep.to;
            Instrument instrument;
            HoldSine(instrument, surroundings, {sweep.id, from});
            ClickDetector detector;
            for (int block = 0; block <= kSweepBlocks; ++block) {
                instrument.Set(sweep.id, from + (to - from) * block / kSweepBlocks);
                detector.Hear(instrument.Render(kBlock));
            }
            EXPECT_LT(detector.Roughest(), bound) << sweep.id << (isDown ? " down" : " up");
        }
    }
}

TEST(ThudForgeAutomation, WhatStepsByDesignIsHeardToStep) {
    for (const Step& step : Steps()) {
        Instrument instrument;
        HoldSine(instrument, step.surroundings, {step.id, step.one}, step.key);
        ClickDetector detector;
        for (int block = 0; block < 441; ++block) {
            instrument.Set(step.id, block / step.blocks % 2 == 0 ? step.one : step.other);
            detector.Hear(instrument.Render(kBlock));
        }
        const double atRest = RoughestAtRest(step.surroundings, {step.id, step.one}, step.other, 2, step.key);
        EXPECT_GT(detector.Roughest(), Bound(atRest)) << step.id << ": " << step.reason;
    }
}

TEST(ThudForgeAutomation, TheMidGainWaitsForTheEndOfItsSweep) {
    Instrument instrument;
    HoldSine(instrument, {}, {Param::MidAmount, 0.5}, 84); // 2093 Hz
    const double flat = instrument.Render(512).Peak();
    instrument.Set(Param::MidAmount, 0.75);
    EXPECT_NEAR(instrument.Render(512).Peak() / flat, 1.0, 1e-3);
    // Half a millisecond later it is all there.
    instrument.Render(64);
    const double decibels = 20.0 * std::log10(instrument.Render(512).Peak() / flat);
    EXPECT_NEAR(decibels, 12.0, 0.3);
    // The outer bands glide.
    Instrument bass;
    HoldSine(bass, {}, {Param::BassAmount, 0.5}, 33);
    const double level = bass.Render(1024).Peak();
    bass.Set(Param::BassAmount, 0.7);
    EXPECT_GT(bass.Render(512).Peak() / level, 1.2);
}

// Allocations.

namespace {

/// A host that moves parameters from inside the process call: whenever it is asked for the time.
struct MeddlingHost {
    int next = 0;
    int calls = 0;
    VstTimeInfo time{};

    static std::intptr_t Answer(AEffect* effect, std::int32_t opcode, std::int32_t /*index*/,
                                std::intptr_t /*value*/, void* /*ptr*/, float /*opt*/) {
        if (effect == nullptr || effect->user == nullptr || opcode != HostOp::GetTime) return 0;
        auto& host = *static_cast<MeddlingHost*>(effect->user);
        host.time.flags = TimeFlag::TempoValid;
        host.time.tempo = 60.0 + host.calls % 100;
        if (++host.calls % 2 == 0) {
            host.next = (host.next + 1) % kParameters;
            const bool isSync = host.next == Param::PhaserTempoSync ||
                                (host.next < Param::EnvAttack &&
                                 static_cast<OscParam>(host.next % kOscParams) == OscParam::LfoTempoSync);
            // A lock asks for the time again, and that without an end.
            if (!isSync) effect->setParameter(effect, host.next, static_cast<float>(host.calls % 7) / 6.0F);
        }
        return reinterpret_cast<std::intptr_t>(&host.time);
    }
};

} // namespace

TEST(ThudForgeAutomation, NeitherProcessingNorSettingAllocates) {
    Instrument instrument(44100.0, 256);
    instrument.SetTempo(100.0);
    OpenProgram(instrument);
    std::vector<float> floats(256);
    std::vector<double> doubles(256);
    float* floatOutputs[] = {floats.data(), floats.data()};
    double* doubleOutputs[] = {doubles.data(), doubles.data()};
    AEffect* const effect = instrument.Effect();
    instrument.Render(256);

    const long before = AllocationCount();
    for (int i = 0; i < 3 * kParameters; ++i) {
        // As many messages as the queue has room for.
        for (int k = 0; k < 60; ++k) {
            instrument.Midi(k % 3 == 2 ? 0xE0 : k % 2 == 0 ? 0x90 : 0x80, 20 + (i + k) % 90, 100, k * 4);
        }
        instrument.Set(i % kParameters, (i % 5) / 4.0);
        switch (i % 3) {
        case 0:
            effect->process(effect, nullptr, floatOutputs, 256);
            break;
        case 1:
            effect->processReplacing(effect, nullptr, floatOutputs, 256);
            break;
        default:
            effect->processDoubleReplacing(effect, nullptr, doubleOutputs, 256);
            break;
        }
        instrument.SetTempo(60.0 + i % 100);
    }
    EXPECT_EQ(AllocationCount(), before);
    EXPECT_EQ(before > 0, kCountsAllocations);
}

TEST(ThudForgeAutomation, SettingFromInsideTheProcessCallAllocatesNothingAndEnds) {
    MeddlingHost host;
    ThudForge plug(&MeddlingHost::Answer);
    AEffect* const effect = plug.Effect();
    effect->dispatcher(effect, PlugOp::Open, 0, 0, nullptr, 0.0F);
    effect->dispatcher(effect, PlugOp::SetBlockSize, 0, 64, nullptr, 0.0F);
    effect->dispatcher(effect, PlugOp::MainsChanged, 0, 1, nullptr, 0.0F);
    effect->user = &host;
    std::vector<double> left(64);
    std::vector<double> right(64);
    double* outputs[] = {left.data(), right.data()};
    const long before = AllocationCount();
    for (int i = 0; i < 400; ++i)
        effect->processDoubleReplacing(effect, nullptr, outputs, 64);
    EXPECT_EQ(AllocationCount(), before);
    EXPECT_GT(host.calls, kParameters);
}
