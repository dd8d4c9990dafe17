#include "tests/plugin/Measure.h"
#include "voice/Saturate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace Grimworks;

namespace {

constexpr int kKey = 45;
constexpr double kIncrement = 220.0 / 44100.0;

double AsFloat(double value) {
    return static_cast<double>(static_cast<float>(value));
}

/// Settings of one oscillator's way from its wave to the mix.
struct Way {
    double typeLeft = 0.0;
    double typeRight = 0.75;
    double balance = 0.0;
    double cutoff = 0.4;
    double resonance = 0.5;
    double saturation = 0.0;
    double volume = 0.5;
};

void Set(Instrument& instrument, int oscillator, const Way& way) {
    instrument.Set(Osc(oscillator, OscParam::FilterTypeLeft), way.typeLeft);
    instrument.Set(Osc(oscillator, OscParam::FilterTypeRight), way.typeRight);
    instrument.Set(Osc(oscillator, OscParam::FilterBalance), way.balance);
    instrument.Set(Osc(oscillator, OscParam::FilterCutoff), way.cutoff);
    instrument.Set(Osc(oscillator, OscParam::FilterResonance), way.resonance);
    instrument.Set(Osc(oscillator, OscParam::Saturation), way.saturation);
    instrument.Set(Osc(oscillator, OscParam::Volume), way.volume);
}

/// A dry program in which one oscillator plays a sawtooth on its way.
void SawProgram(Instrument& instrument, int oscillator, const Way& way) {
    DryProgram(instrument);
    instrument.Set(Osc(0, OscParam::OnOff), oscillator == 0 ? 1.0 : 0.0);
    instrument.Set(Osc(oscillator, OscParam::OnOff), 1.0);
    instrument.Set(Osc(oscillator, OscParam::Waveform), 1.0 / 40.0);
    Set(instrument, oscillator, way);
}

/// Plays a note whose voice has its smoothers at rest already.
Instrument::Audio PlaySettled(Instrument& instrument, int frames) {
    instrument.NoteOn(kKey);
    instrument.Render(4096);
    Silence(instrument, kKey);
    instrument.NoteOn(kKey);
    return instrument.Render(frames);
}

/// The same note worked out from the oscillator's parts.
std::vector<double> Model(const Way& way, int frames) {
    PolyBLEP wave;
    wave.waveform = PolyBLEP::kSaw;
    wave.phaseInc = kIncrement;
    OscFilterUnit filter;
    filter.SetLeftType(AsFloat(way.typeLeft));
    filter.SetRightType(AsFloat(way.typeRight));
    filter.balance = AsFloat(way.balance);
    for (int i = 0; i < 4096; ++i)
        filter.Tick(0.0, 0.0, 0.0); // the balance comes to rest
    filter.Reset();
    std::vector<double> out;
    for (int n = 0; n < frames; ++n) {
        // Both envelopes open behind the first sample.
        const double open = n == 0 ? 0.0 : 1.0;
        const double x = Saturate(wave.Next(), AsFloat(way.saturation));
        out.push_back(filter.Tick(x, open * AsFloat(way.cutoff), AsFloat(way.resonance)) *
                      AsFloat(way.volume) * open);
    }
    return out;
}

void ExpectModel(int oscillator, const Way& way) {
    SCOPED_TRACE(testing::Message() << oscillator << " types " << way.typeLeft << " " << way.typeRight
                                    << " saturation " << way.saturation);
    Instrument instrument;
    SawProgram(instrument, oscillator, way);
    const Instrument::Audio audio = PlaySettled(instrument, 2048);
    const std::vector<double> expected = Model(way, 2048);
    EXPECT_GT(audio.Peak(), 0.01);
    for (std::size_t n = 0; n < expected.size(); ++n) {
        ASSERT_NEAR(audio.left[n], expected[n], 1e-9) << n;
        ASSERT_NEAR(audio.right[n], expected[n], 1e-9) << n;
    }
}

} // namespace

TEST(ThudForgeOscillator, EveryFilterTypeIsHeardOnEitherSide) {
    for (int type = 0; type < 5; ++type) {
        Way left;
        left.typeLeft = type / 4.0;
        ExpectModel(type % kOscillators, left);
        Way right;
        right.balance = 1.0;
        right.typeRight = type / 4.0;
        ExpectModel((type + 1) % kOscillators, right);
    }
}

TEST(ThudForgeOscillator, SaturationComesBeforeTheFilter) {
    for (int i = 0; i < kOscillators; ++i) {
        for (const double saturation : {0.05, 0.2, 1.0}) {
            Way way;
            way.saturation = saturation;
            way.balance = 0.5;
            ExpectModel(i, way);
        }
    }
}

TEST(ThudForgeOscillator, TheBandPassPlaysTheHighPass) {
    Way highPass;
    highPass.typeLeft = 0.25;
    Way bandPass = highPass;
    bandPass.typeLeft = 0.5;
    Instrument::Audio renders[2];
    for (int i = 0; i < 2; ++i) {
        Instrument instrument;
        SawProgram(instrument, 0, i == 0 ? highPass : bandPass);
        renders[i] = PlaySettled(instrument, 4096);
    }
    EXPECT_TRUE(renders[0] == renders[1]);
    EXPECT_GT(renders[0].Peak(), 0.01);
}

TEST(ThudForgeOscillator, AFilterEnvelopeWithoutVelocityKeepsTheCutoffShut) {
    Way open;
    open.cutoff = 1.0;
    Way shut;
    shut.cutoff = 0.0;
    Instrument::Audio renders[2];
    for (int i = 0; i < 2; ++i) {
        Instrument instrument;
        SawProgram(instrument, 0, i == 0 ? open : shut);
        if (i == 0) instrument.Set(Param::FilterEnvVelocity, 0.0);
        renders[i] = PlaySettled(instrument, 4096);
    }
    EXPECT_TRUE(renders[0] == renders[1]);
    EXPECT_GT(renders[0].Peak(), 1e-3);
}

TEST(ThudForgeOscillator, ANoteSoundsFromItsDeltaFrameWhileItsEnvelopesRunFromTheBlock) {
    for (const int offset : {0, 1, 20, 63}) {
        Instrument instrument;
        SawProgram(instrument, 0, {});
        instrument.Set(Osc(0, OscParam::Phase), 0.25); // it does not start at phase 0, so it fades in
        instrument.NoteOn(kKey);
        instrument.Render(4096);
        Silence(instrument, kKey);
        instrument.NoteOn(kKey, 127, offset);
        const Instrument::Audio audio = instrument.Render(128);
        for (int n = 0; n < offset; ++n)
            ASSERT_EQ(audio.left[static_cast<std::size_t>(n)], 0.0) << offset << " " << n;
        const auto first = static_cast<std::size_t>(offset);
        // The fade has passed by sixteen frames into the block, also for a note that begins behind them.
        if (offset == 0) {
            EXPECT_EQ(audio.left[0], 0.0);
            EXPECT_LT(std::fabs(audio.left[1]), std::fabs(audio.left[16]));
        } else {
            EXPECT_NE(audio.left[first], 0.0);
        }
    }
}

TEST(ThudForgeOscillator, ASilentOscillatorThatIsOnFallsSilentAtOnceAndForGood) {
    Instrument instrument;
    SawProgram(instrument, 0, {});
    instrument.NoteOn(kKey);
    EXPECT_GT(instrument.Render(4096).Peak(), 0.01);
    instrument.Set(Osc(0, OscParam::Volume), 0.0);
    instrument.Render(2048);
    EXPECT_LT(instrument.Render(2048).Peak(), 1e-15);
}

TEST(ThudForgeOscillator, AClickThatIsTurnedOffInANoteRepeatsItsLastBlock) {
    Instrument instrument;
    DryProgram(instrument);
    instrument.Set(Osc(0, OscParam::OnOff), 0.0);
    instrument.Set(Param::BassLayerClick, 0.5);
    instrument.NoteOn(kKey);
    const Instrument::Audio last = instrument.Render(64);
    instrument.Set(Param::BassLayerClick, 0.0);
    EXPECT_GT(last.Peak(), 0.01);
    const Instrument::Audio again = instrument.Render(192);
    for (std::size_t n = 1; n < 192; ++n) {
        // The first sample of the note was silent, its copies are not.
        if (n % 64 == 0) continue;
        ASSERT_NEAR(again.left[n], last.left[n % 64], 1e-12) << n;
    }
}
