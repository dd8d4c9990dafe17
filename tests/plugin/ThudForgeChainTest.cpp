#include "tests/plugin/Measure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

using namespace Grimworks;

namespace {

constexpr int kBlock = 64;
constexpr int kQuiet = 2560; ///< longer than the slowest sweep
constexpr int kNote = 3072;
constexpr int kChangeAt = 1024; ///< frames into the note
constexpr double kTempo = 6000.0;
constexpr double kSame = 1e-9;
constexpr double kOther = 1e-4;

enum Unit { kFilterUnit, kRing, kPhaser, kDistortion, kEqualizer, kDump, kSaturator, kDelay };
using Order = std::array<Unit, 8>;
constexpr Order kChain{kFilterUnit, kRing, kPhaser, kDistortion, kEqualizer, kDump, kSaturator, kDelay};

struct Change {
    int id;
    double value;
};

double AsFloat(double value) {
    return static_cast<double>(static_cast<float>(value));
}

/// The chain put together from its units by the test, in an order of its choosing.
class ChainModel {
public:
    explicit ChainModel(const Order& unitOrder = kChain) : order(unitOrder), curves(random), stage(curves) {
        filter.Initialise(curves);
        saturator.Initialise(curves, 0);
        delay.SetSampleRate(44100.0);
        delay.SetTempo(kTempo);
        for (const ParameterInfo& row : kParameterTable)
            Set({row.id, row.resetValue});
    }

    /// Hands a parameter to its unit.
    void Set(Change change) {
        const double v = AsFloat(change.value);
        switch (change.id) {
        case Param::BassAmount:
            return equalizer.SetBass(v);
        case Param::MidAmount:
            return equalizer.SetMid(v);
        case Param::HighAmount:
            return equalizer.SetHigh(v);
        case Param::DumpExpand:
            return dump.SetValue(v);
        case Param::DistortionOnOff:
            return stage.SetOnOff(v);
        case Param::Distortion:
            return stage.SetAmount(v);
        case Param::DistortionType:
            return stage.SetType(v);
        case Param::DistortionLoudness:
            return stage.SetMode(v);
        case Param::DistortionInterpMode:
            return stage.SetInterpolation(v);
        case Param::DynShaper:
            return stage.SetShaperAmount(v);
        case Param::DynShaperInvert:
            return stage.SetShaperInvert(v);
        case Param::DynShaperType:
            return stage.SetShaperWaveform(v);
        case Param::DynShaperMode:
            return stage.SetShaperMode(v);
        case Param::DynShaperPosNegBoth:
            return stage.SetShaperPolarity(v);
        case Param::Quantization:
            return stage.SetQuantization(v);
        case Param::SampleRate:
            return stage.SetSampleRateReduction(v);
        case Param::Gate:
            return stage.SetGate(v);
        case Param::FilterOnOff:
            return filter.SetOnOff(v);
        case Param::FilterInputDrive:
            return filter.SetDrive(v);
        case Param::FilterType:
            return filter.SetBalance(v);
        case Param::FilterCutoff:
            return filter.SetCutoff(v);
        case Param::FilterResonance:
            return filter.SetResonance(v);
        case Param::FilterMode1:
            return filter.SetFilter1Type(v);
        case Param::FilterMode2:
            return filter.SetFilter2Type(v);
        case Param::FilterTransition:
            return filter.SetTransition(v);
        case Param::ModulationOnOff:
            ring.SetBypass(v == 0.0);
            return phaser.SetBypass(v == 0.0);
        case Param::RingModulationAmount:
            return ring.SetAmount(v);
        case Param::RingModulationFrequency:
            return ring.SetFrequency(v);
        case Param::RingModulationWaveForm:
            return ring.SetWaveform(v);
        case Param::PhaserDepth:
            return phaser.SetDepth(v);
        case Param::PhaserFeedback:
            return phaser.SetFeedback(v);
        case Param::PhaserRate:
            return phaser.SetRate(v);
        case Param::TempoDelayAmount:
            return delay.SetAmount(v);
        case Param::TempoDelayFeedback:
            return delay.SetFeedback(v);
        case Param::TempoDelayDump:
            return delay.SetDump(v);
        case Param::TempoDelaySpread:
            return delay.SetSpread(v);
        case Param::Saturation:
            return saturator.SetAmount(v);
        default:
            return;
        }
    }

    /// In place, in blocks of the instrument's size. The modulations are those of one note that began with
    /// the first frame.
    void Process(Instrument::Audio& audio, std::size_t from, std::size_t to,
                 const std::vector<double>* toDistortion = nullptr,
                 const std::vector<double>* toShaper = nullptr) {
        const auto at = [](const std::vector<double>* modulation, std::size_t frame) {
            return modulation != nullptr ? modulation->data() + frame : nullptr;
        };
        for (std::size_t i = from; i < to; i += kBlock) {
            const StereoView view{audio.left.data() + i, audio.right.data() + i};
            for (const Unit unit : order)
                Run(unit, view, at(toDistortion, i), at(toShaper, i));
        }
    }

private:
    void Run(Unit unit, StereoView io, const double* toDistortion, const double* toShaper) {
        switch (unit) {
        case kFilterUnit:
            return filter.Process(io, kBlock);
        case kRing:
            return ring.Process(io, kBlock);
        case kPhaser:
            return phaser.Process(io, kBlock);
        case kDistortion:
            return stage.Process(io, kBlock, toDistortion, toShaper);
        case kEqualizer:
            return equalizer.Process(io, kBlock);
        case kDump:
            return dump.Process(io, kBlock);
        case kSaturator:
            return saturator.Process(io, kBlock);
        case kDelay:
            return delay.Process(io, kBlock);
        }
    }

    Order order;
    RandomGenerator random;
    DistortionDataProvider curves;
    FilterUnit filter;
    RingModulator ring;
    Phaser phaser;
    DistortionStage stage;
    Equalizer equalizer;
    DumpExpand dump;
    Saturator saturator;
    TempoDelay delay;
};

/// Every unit does something of its own.
const std::vector<Change>& Signature() {
    static const std::vector<Change> settings{{Param::BassAmount, 0.65},
                                              {Param::MidAmount, 0.35},
                                              {Param::HighAmount, 0.6},
                                              {Param::DumpExpand, 0.45},
                                              {Param::Distortion, 0.6},
                                              {Param::DistortionType, 20.0 / 41.0},
                                              {Param::DynShaper, 0.6},
                                              {Param::Quantization, 0.5},
                                              {Param::SampleRate, 0.9},
                                              {Param::Gate, 0.3},
                                              {Param::FilterInputDrive, 0.4},
                                              {Param::FilterType, 0.4},
                                              {Param::FilterCutoff, 0.75},
                                              {Param::FilterResonance, 0.55},
                                              {Param::FilterMode2, 0.4},
                                              {Param::ModulationOnOff, 1.0},
                                              {Param::RingModulationAmount, 0.5},
                                              {Param::RingModulationFrequency, 0.06},
                                              {Param::PhaserDepth, 0.6},
                                              {Param::PhaserFeedback, 0.4},
                                              {Param::PhaserRate, 0.3},
                                              {Param::TempoDelayAmount, 0.3},
                                              {Param::TempoDelayFeedback, 0.4},
                                              {Param::TempoDelayDump, 0.7},
                                              {Param::TempoDelaySpread, 0.7},
                                              {Param::Saturation, 0.3}};
    return settings;
}

/// A voice with a note held, with nothing behind the chain that would change it.
void Prepare(Instrument& instrument, bool isDry, const std::vector<Change>& settings) {
    instrument.SetTempo(kTempo);
    OpenProgram(instrument);
    instrument.Set(Osc(0, OscParam::Waveform), 1.0 / 40.0);
    instrument.Set(Osc(0, OscParam::Volume), 0.5);
    instrument.Set(Param::LimiterMode, 0.0);
    instrument.Set(Param::Volume, 1.0);
    instrument.Set(Param::BypassFX, isDry ? 1.0 : 0.0);
    for (const Change& setting : settings)
        instrument.Set(setting.id, setting.value);
}

/// Silence, then a note; `changes` come in the middle of the note.
Instrument::Audio PlayInstrument(bool isDry, const std::vector<Change>& settings,
                                 const std::vector<Change>& changes = {}, int notes = 1) {
    Instrument instrument(44100.0, kBlock);
    Prepare(instrument, isDry, settings);
    Instrument::Audio audio = instrument.Render(kQuiet);
    for (int i = 0; i < notes; ++i)
        instrument.NoteOn(45 + i);
    for (int i = 0; i < kNote; i += kBlock) {
        if (i == kChangeAt) {
            for (const Change& change : changes)
                instrument.Set(change.id, change.value);
        }
        instrument.Process(audio, kBlock);
    }
    return audio;
}

/// Largest difference within the note; before it the output still fades in.
double NoteDifference(const Instrument::Audio& a, const Instrument::Audio& b) {
    return LargestDifference(a, b, kQuiet);
}

/// What the chain is given by the voices. While the bypass fades in, the chain's own fading is still heard,
/// but the voices are silent then.
Instrument::Audio DryNotes(const std::vector<Change>& voiceSettings, int notes) {
    Instrument::Audio audio = PlayInstrument(true, voiceSettings, {}, notes);
    std::fill_n(audio.left.begin(), kQuiet, 0.0);
    std::fill_n(audio.right.begin(), kQuiet, 0.0);
    return audio;
}

const Instrument::Audio& DrySignal() {
    static const Instrument::Audio dry = DryNotes({}, 1);
    return dry;
}

Instrument::Audio PlayModel(const Order& order, const std::vector<Change>& settings,
                            const std::vector<Change>& changes = {}) {
    ChainModel model(order);
    for (const Change& setting : settings)
        model.Set(setting);
    Instrument::Audio audio = DrySignal();
    model.Process(audio, 0, kQuiet + kChangeAt);
    for (const Change& change : changes)
        model.Set(change);
    model.Process(audio, kQuiet + kChangeAt, audio.left.size());
    return audio;
}

} // namespace

TEST(ThudForgeChain, RunsItsUnitsInTheirOrder) {
    // Equalizer and low pass would commute as long as they stand, so both move in the middle of the note.
    const std::vector<Change> changes{
        {Param::BassAmount, 0.2}, {Param::HighAmount, 0.9}, {Param::DumpExpand, 0.3}};
    const Instrument::Audio audio = PlayInstrument(false, Signature(), changes);
    EXPECT_GT(audio.Peak(), 0.3);
    EXPECT_LT(audio.Peak(), 3.1);
    EXPECT_LT(NoteDifference(audio, PlayModel(kChain, Signature(), changes)), kSame);
    for (std::size_t i = 0; i + 1 < kChain.size(); ++i) {
        Order swapped = kChain;
        std::swap(swapped[i], swapped[i + 1]);
        EXPECT_GT(NoteDifference(audio, PlayModel(swapped, Signature(), changes)), kOther) << i;
    }
}

TEST(ThudForgeChain, EveryParameterReachesItsUnit) {
    const std::array<Change, 8> choices{{{Param::DistortionType, 27.0 / 41.0},
                                         {Param::DistortionLoudness, 1.0},
                                         {Param::DistortionInterpMode, 0.0},
                                         {Param::DynShaperType, 1.0},
                                         {Param::DynShaperMode, 1.0},
                                         {Param::FilterMode1, 1.0 / 3.0},
                                         {Param::FilterMode2, 0.8},
                                         {Param::RingModulationWaveForm, 0.25}}};
    const Instrument::Audio unchanged = PlayModel(kChain, Signature());
    for (int id = Param::BassAmount; id <= Param::Saturation; ++id) {
        if (id > Param::TempoDelaySpread && id < Param::Saturation) continue; // read by the callback
        std::vector<Change> changes{{id, 0.0}};
        const auto* const choice =
            std::find_if(choices.begin(), choices.end(), [id](const Change& c) { return c.id == id; });
        const auto setting = std::find_if(Signature().begin(), Signature().end(),
                                          [id](const Change& c) { return c.id == id; });
        if (choice != choices.end()) {
            changes[0].value = choice->value;
        } else if (setting != Signature().end()) {
            changes[0].value = setting->value > 0.5 ? setting->value - 0.3 : setting->value + 0.3;
            if (id == Param::ModulationOnOff) changes[0].value = 0.0;
        } else if (kParameterTable[static_cast<std::size_t>(id)].resetValue == 0.0) {
            changes[0].value = 1.0;
        }
        // How long a sweep takes is heard in a sweep.
        if (id == Param::FilterTransition) changes.push_back({Param::FilterCutoff, 0.3});
        SCOPED_TRACE(id);
        const Instrument::Audio audio = PlayInstrument(false, Signature(), changes);
        EXPECT_LT(NoteDifference(audio, PlayModel(kChain, Signature(), changes)), kSame);
        if (id == Param::FilterTransition) changes.erase(changes.begin());
        const bool isTransition = id == Param::FilterTransition;
        EXPECT_GT(NoteDifference(audio, isTransition ? PlayModel(kChain, Signature(), changes) : unchanged),
                  kOther);
    }
}

TEST(ThudForgeChain, ThePhasersLockSetsItsRateOnceThroughTheHost) {
    Instrument instrument;
    instrument.ResetProgram();
    instrument.SetTempo(90.0);
    instrument.Set(Param::PhaserTempoSync, 6.0 / 9.0);
    EXPECT_NEAR(instrument.Get(Param::PhaserRate), 90.0 * 2.0 / 60.0 / 20.0, 1e-7);
    EXPECT_EQ(instrument.AutomateCalls(Param::PhaserRate), 1);
    // Unlike the oscillators' LFOs it does not follow the tempo.
    instrument.SetTempo(170.0);
    instrument.Render(640);
    EXPECT_NEAR(instrument.Get(Param::PhaserRate), 90.0 * 2.0 / 60.0 / 20.0, 1e-7);
    EXPECT_EQ(instrument.AutomateCalls(Param::PhaserRate), 1);
    instrument.Set(Param::PhaserTempoSync, 0.0);
    EXPECT_NEAR(instrument.Get(Param::PhaserRate), 90.0 * 2.0 / 60.0 / 20.0, 1e-7);
}

// The envelopes as modulators.

namespace {

/// Levels of an envelope without attack and decay: closed, open, then its sustain.
std::vector<double> OpenEnvelope(double sustain, double scale) {
    std::vector<double> levels(kQuiet, 0.0);
    levels.push_back(0.0);
    levels.push_back(scale);
    levels.resize(kQuiet + kNote, sustain * scale);
    return levels;
}

/// Voices whose two envelopes stand at different levels.
std::vector<Change> ModulatingVoices() {
    return {{Osc(0, OscParam::Volume), 1.0}, {Param::EnvDecay, 0.0},    {Param::EnvSustain, 0.75},
            {Param::EnvAmount, 0.5},         {Param::FilterDecay, 0.0}, {Param::FilterSustain, 0.875}};
}

/// A chain in which only the distortion stage is at work.
std::vector<Change> ModulatedChain() {
    return {{Param::Distortion, 0.8}, {Param::DistortionType, 20.0 / 41.0}, {Param::DynShaper, 0.9}};
}

Instrument::Audio PlayModulated(double toDistortion, double toShaper, int notes) {
    std::vector<Change> settings = ModulatingVoices();
    for (const Change& setting : ModulatedChain())
        settings.push_back(setting);
    settings.push_back({Param::FilterEnvToDistortion, toDistortion});
    settings.push_back({Param::FilterEnvToDynShaper, toShaper});
    return PlayInstrument(false, settings, {}, notes);
}

Instrument::Audio PlayModulatedModel(const std::vector<double>* toDistortion,
                                     const std::vector<double>* toShaper, int notes) {
    ChainModel model;
    for (const Change& setting : ModulatedChain())
        model.Set(setting);
    Instrument::Audio audio = DryNotes(ModulatingVoices(), notes);
    model.Process(audio, 0, audio.left.size(), toDistortion, toShaper);
    return audio;
}

} // namespace

TEST(ThudForgeChain, TheVolumeEnvelopeDrivesTheDistortionAndTheFilterEnvelopeTheShaper) {
    const std::vector<double> volume = OpenEnvelope(0.75, 0.5);
    const std::vector<double> filter = OpenEnvelope(0.875, 1.0);
    for (const bool distortion : {false, true}) {
        for (const bool shaper : {false, true}) {
            SCOPED_TRACE(testing::Message() << distortion << shaper);
            // Anything above 0 is on, and how far does not matter.
            const Instrument::Audio audio = PlayModulated(distortion ? 0.01 : 0.0, shaper ? 0.3 : 0.0, 1);
            const std::vector<double>* const toDistortion = distortion ? &volume : nullptr;
            const std::vector<double>* const toShaper = shaper ? &filter : nullptr;
            EXPECT_LT(NoteDifference(audio, PlayModulatedModel(toDistortion, toShaper, 1)), kSame);
            // None of the other ways to connect them would do.
            for (const std::vector<double>* other : {&volume, &filter}) {
                if (other != toDistortion) {
                    EXPECT_GT(NoteDifference(audio, PlayModulatedModel(other, toShaper, 1)), kOther);
                }
                if (other != toShaper) {
                    EXPECT_GT(NoteDifference(audio, PlayModulatedModel(toDistortion, other, 1)), kOther);
                }
            }
        }
    }
}

TEST(ThudForgeChain, EnvelopesOfManyVoicesAddUpToOneAtMost) {
    std::vector<double> volume = OpenEnvelope(0.75, 0.5);
    std::vector<double> filter = OpenEnvelope(0.875, 1.0);
    for (std::size_t i = 0; i < volume.size(); ++i) {
        volume[i] = std::min(3.0 * volume[i], 1.0);
        filter[i] = std::min(3.0 * filter[i], 1.0);
    }
    const Instrument::Audio audio = PlayModulated(1.0, 1.0, 3);
    EXPECT_LT(audio.Peak(), 3.1);
    EXPECT_LT(NoteDifference(audio, PlayModulatedModel(&volume, &filter, 3)), kSame);
}

// The sub layer's own road.

namespace {

/// The sub layer alone, at unity, behind its filters or not.
Instrument::Audio PlaySub(double toFilter, const std::vector<Change>& filters) {
    std::vector<Change> settings{{Param::BassLayerAmount, 1.0 / 1.259},
                                 {Param::BassLayerSolo, 1.0},
                                 {Param::BassLayerToFilter, toFilter}};
    settings.insert(settings.end(), filters.begin(), filters.end());
    return PlayInstrument(false, settings);
}

} // namespace

TEST(ThudForgeChain, TheSubLayerPassesFilterAndLowPassOfItsOwn) {
    const std::vector<Change> filters{{Param::FilterInputDrive, 0.5},
                                      {Param::FilterCutoff, 0.4},
                                      {Param::FilterResonance, 0.7},
                                      {Param::DumpExpand, 0.3}};
    const Instrument::Audio raw = PlaySub(0.0, filters);
    const Instrument::Audio audio = PlaySub(1.0, filters);
    EXPECT_GT(audio.Peak(), 0.1);
    const auto model = [&](const Order& order) {
        ChainModel chain(order);
        for (const Change& setting : filters)
            chain.Set(setting);
        Instrument::Audio through = raw;
        chain.Process(through, 0, through.left.size());
        return through;
    };
    // All other units of the model are neutral: they are at rest, or flat to within the rounding of a filter.
    EXPECT_LT(NoteDifference(audio, model(kChain)), 1e-6);
    Order swapped = kChain;
    std::swap(swapped[0], swapped[5]);
    EXPECT_GT(NoteDifference(audio, model(swapped)), kOther);
    // Both channels get the left one of the filters.
    EXPECT_LT(NoteDifference(audio, {audio.right, audio.left}), 1e-12);
    // The switch counts at its very end only.
    EXPECT_EQ(NoteDifference(raw, PlaySub(0.99, filters)), 0.0);
    EXPECT_GT(NoteDifference(raw, audio), 0.01);
}

TEST(ThudForgeChain, TheSubLayerIsAddedBehindTheChainUnlessItIsAlone) {
    const std::vector<Change> chain{{Param::Distortion, 1.0}, {Param::DistortionType, 20.0 / 41.0}};
    const std::vector<Change> sub{{Param::BassLayerAmount, 0.5}};
    const auto with = [](std::vector<Change> first, const std::vector<Change>& more) {
        first.insert(first.end(), more.begin(), more.end());
        return first;
    };
    const Instrument::Audio wet = PlayInstrument(false, chain);
    const Instrument::Audio both = PlayInstrument(false, with(chain, sub));
    // A switch that is not quite at its end mixes.
    const Instrument::Audio almost =
        PlayInstrument(false, with(with(chain, sub), {{Param::BassLayerSolo, 0.99}}));
    const Instrument::Audio alone =
        PlayInstrument(false, with(with(chain, sub), {{Param::BassLayerSolo, 1.0}}));
    EXPECT_GT(alone.Peak(), 0.5);
    EXPECT_EQ(NoteDifference(both, almost), 0.0);
    for (std::size_t i = 0; i < both.left.size(); ++i) {
        ASSERT_NEAR(both.left[i], wet.left[i] + alone.left[i], 1e-12) << i;
        ASSERT_NEAR(both.right[i], wet.right[i] + alone.right[i], 1e-12) << i;
    }
}

// Flat and extreme settings, by sound.

namespace {

/// Level of a sine of this frequency with settings over its level without, in decibels.
double GainAt(double frequency, double volume, const std::vector<Change>& settings) {
    double levels[2];
    for (int with = 0; with < 2; ++with) {
        Instrument instrument(44100.0, kBlock);
        Prepare(instrument, false, {});
        instrument.Set(Osc(0, OscParam::Waveform), 0.0);
        instrument.Set(Osc(0, OscParam::Volume), volume);
        // Keys in steps of a semitone, the coarse knob between them.
        const int key = static_cast<int>(std::floor(69.0 + 12.0 * std::log2(frequency / 880.0)));
        const double rest = frequency / (880.0 * std::pow(2.0, (key - 69) / 12.0));
        instrument.Set(Osc(0, OscParam::Pitch), 0.5 + std::log2(rest) / 2.0);
        if (with == 1) {
            for (const Change& setting : settings)
                instrument.Set(setting.id, setting.value);
        }
        instrument.Render(kSettleFrames);
        instrument.NoteOn(key);
        instrument.Render(kSettleFrames);
        levels[with] = Rms(instrument.Render(kSettleFrames).left);
    }
    return 20.0 * std::log10(levels[1] / levels[0]);
}

/// Loss of a second-order Chebyshev filter with 0.01 dB of ripple in decibels, with the
/// bilinear transform's warping of frequencies.
double ChebyshevLoss(double frequency, double edge, bool isHighPass) {
    const double ripple = std::pow(10.0, 0.01 / 10.0) - 1.0;
    const double warped = std::tan(std::numbers::pi * frequency / 44100.0);
    const double warpedEdge = std::tan(std::numbers::pi * edge / 44100.0);
    const double x = isHighPass ? warpedEdge / warped : warped / warpedEdge;
    const double polynomial = 2.0 * x * x - 1.0;
    return -10.0 * std::log10((1.0 + ripple * polynomial * polynomial) / (1.0 + ripple));
}

} // namespace

TEST(ThudForgeChain, TheEqualizersKnobsReachTwentyFourDecibelsInTheirRanges) {
    for (const auto& [value, decibels] :
         std::array<std::pair<double, double>, 3>{{{0.0, -24.0}, {0.75, 12.0}, {1.0, 24.0}}}) {
        EXPECT_NEAR(GainAt(50.0, 0.02, {{Param::BassAmount, value}}), decibels, 0.3);
        EXPECT_NEAR(GainAt(2000.0, 0.02, {{Param::MidAmount, value}}), decibels, 0.3);
        EXPECT_NEAR(GainAt(15000.0, 0.02, {{Param::HighAmount, value}}), decibels, 0.3);
    }
    EXPECT_NEAR(GainAt(15000.0, 0.02, {{Param::BassAmount, 1.0}}), 0.0, 0.3);
    EXPECT_NEAR(GainAt(50.0, 0.02, {{Param::MidAmount, 1.0}}), 0.0, 0.3);
    EXPECT_NEAR(GainAt(50.0, 0.02, {{Param::HighAmount, 1.0}}), 0.0, 0.3);
}

TEST(ThudForgeChain, OneKnobClosesTheSoundFromEitherEnd) {
    // A quarter of the knob is the middle of its filter's range.
    const double middle = 10.0 * std::sqrt(2204.0);
    EXPECT_NEAR(GainAt(440.0, 0.5, {{Param::DumpExpand, 0.0}}), ChebyshevLoss(440.0, 20.0, false), 0.1);
    EXPECT_NEAR(GainAt(4700.0, 0.5, {{Param::DumpExpand, 0.25}}), ChebyshevLoss(4700.0, middle, false), 0.1);
    EXPECT_NEAR(GainAt(47.0, 0.5, {{Param::DumpExpand, 0.75}}), ChebyshevLoss(47.0, middle, true), 0.1);
    // Here the filter's own offset against denormals is nearly as loud as what is left.
    EXPECT_NEAR(GainAt(440.0, 0.5, {{Param::DumpExpand, 1.0}}), ChebyshevLoss(440.0, 21000.0, true), 2.0);
    EXPECT_NEAR(GainAt(47.0, 0.5, {{Param::DumpExpand, 0.25}}), 0.0, 0.1);
    EXPECT_NEAR(GainAt(4700.0, 0.5, {{Param::DumpExpand, 0.75}}), 0.0, 0.1);
}
