#include "tests/plugin/Measure.h"
#include "tests/plugin/TestPlug.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>
#include <vector>

using namespace Grimworks;

namespace {

constexpr int kFirstEffect = Param::BassAmount;

/// What earlier notes leave behind: the wide open filter of the chain has a pole next to half the sample rate
/// that takes a second to forget.
constexpr double kRest = 1e-5;

/// Whether a predicate holds for all 64 voices.
bool AllVoices(Instrument& instrument, const std::function<bool(const Note&)>& holds) {
    for (int i = 0; i < kVoices; ++i) {
        if (!holds(instrument.Plug().Voices().Voice(i))) return false;
    }
    return true;
}

struct Change {
    int id;
    double normalized;
};

/// A program in which every parameter of the voices has something to act on.
std::vector<Change> BusyProgram() {
    std::vector<Change> settings;
    const std::array waves{1.0 / 40.0, 16.0 / 40.0, 5.0 / 40.0};
    for (int i = 0; i < kOscillators; ++i) {
        const std::array<double, kOscParams> values{1.0,  waves[static_cast<std::size_t>(i)],
                                                    0.3,  0.55,
                                                    0.5,  0.2,
                                                    0.4,  0.6,
                                                    0.5,  0.6,
                                                    0.3,  0.0,
                                                    0.75, 0.3,
                                                    0.0,  0.0,
                                                    0.0,  0.3,
                                                    0.3,  0.3,
                                                    0.3};
        for (int k = 0; k < kOscParams; ++k)
            settings.push_back({i * kOscParams + k, values[static_cast<std::size_t>(k)]});
    }
    const std::array<double, kFirstEffect - Param::EnvAttack> others{
        0.01, 0.2, 0.5,       0.02, 0.05, 0.9, 0.9, // volume envelope
        0.01, 0.2, 0.5,       0.02, 0.05, 0.9, 0.9, // filter envelope
        0.0,  0.0,                                  // its ways to distortion and shaper
        0.3,                                        // shape
        0.3,  0.0, 0.0,       0.0,  0.5,            // sub-oscillator and click
        0.55, 0.0, 1.0 / 6.0,                       // transpose, mode, bend range
        1.0,  0.2, 0.1,       0.3,  0.1,            // pitch envelope
        1.0,  0.4, 0.3};                            // unison, frequency modulation
    for (std::size_t k = 0; k < others.size(); ++k)
        settings.push_back({Param::EnvAttack + static_cast<int>(k), others[k]});
    settings.push_back({Param::Distortion, 0.4});
    settings.push_back({Param::DynShaper, 0.4});
    return settings;
}

/// A value that is clearly another setting than the busy program's.
double OtherValue(int id, double value) {
    if (id < Param::EnvAttack) {
        switch (static_cast<OscParam>(id % kOscParams)) {
        case OscParam::OnOff:
            return 0.0;
        case OscParam::Waveform:
            return 20.0 / 40.0;
        case OscParam::FilterTypeLeft:
            return 0.25;
        case OscParam::FilterTypeRight:
        case OscParam::LfoMode:
            return 1.0;
        case OscParam::LfoTempoSync:
            return 7.0 / 9.0;
        default:
            break;
        }
    }
    switch (id) {
    case Param::NoteTransposeMode:
        return 3.0 / 9.0;
    case Param::PitchOnOff:
    case Param::UnisonVoices:
        return 0.0;
    case Param::PitchBendRange:
    case Param::BassLayerSolo:
    case Param::BassLayerToFilter:
    case Param::BassLayerToFm:
        return 1.0;
    default:
        return value > 0.5 ? value - 0.4 : value + 0.4;
    }
}

bool IsLink(int id) {
    return id < Param::EnvAttack && static_cast<OscParam>(id % kOscParams) == OscParam::LfoLinkAll;
}

/// Plays one note of the busy program with one setting changed, on the first voice or on the last: then the
/// other 63 are kept busy, without a sound, until the note has found its voice.
class BusyPlayer {
public:
    explicit BusyPlayer(bool onLastVoice) : lastVoice(onLastVoice) {
        instrument.SetTempo(174.0);
        instrument.ResetProgram();
        instrument.Midi(0xE0, 0, 100);
        instrument.Render(kSettleFrames);
    }

    Instrument::Audio Play(Change change) {
        for (const Change& setting : BusyProgram())
            instrument.Set(setting.id, setting.normalized);
        instrument.Midi(0xE0, 0, 100);
        instrument.Render(kPause);
        Note(); // the smoothers of the voice come to rest
        instrument.Render(kPause);
        return Note(change);
    }

    [[nodiscard]] bool PlayedWhereItShould() const { return rightVoice; }

private:
    static constexpr int kKey = 50;
    static constexpr int kHeld = 1024;
    static constexpr int kReleased = 512;
    static constexpr int kPause = 1536; // longer than any release of the busy program

    Instrument::Audio Note(Change change = {Param::FirstReserved, 0.0}) {
        OccupyVoices();
        instrument.Set(change.id, change.normalized);
        instrument.Midi(0xE0, 0, 100);
        rightVoice = rightVoice && instrument.Plug().Voices().ActiveVoices() == (lastVoice ? 63 : 0);
        instrument.NoteOn(kKey, 100);
        Instrument::Audio audio;
        for (int done = 0; done < kHeld + kReleased; done += 64) {
            if (done == kHeld) instrument.NoteOff(kKey);
            instrument.Process(audio, 64);
        }
        rightVoice = rightVoice && instrument.Plug().Voices().Voice(lastVoice ? 63 : 0).NoteNumber() == kKey;
        return audio;
    }

    void OccupyVoices() {
        instrument.Set(Param::EnvAmount, 0.0);
        instrument.Set(Param::EnvRelease, 0.0);
        if (lastVoice) {
            for (int key = 0; key < 63; ++key)
                instrument.NoteOn(key, 1);
        }
        instrument.Render(64);
        if (lastVoice) {
            for (int key = 0; key < 63; ++key)
                instrument.NoteOff(key);
        }
        instrument.Render(64);
        for (const Change& setting : BusyProgram()) {
            if (setting.id == Param::EnvAmount || setting.id == Param::EnvRelease) {
                instrument.Set(setting.id, setting.normalized);
            }
        }
    }

    bool lastVoice;
    bool rightVoice = true;
    Instrument instrument;
};

} // namespace

TEST(ThudForgeVoiceParameters, EachActsAndReachesTheLastVoiceAsTheFirst) {
    BusyPlayer first(false);
    BusyPlayer last(true);
    const Instrument::Audio unchanged = first.Play({Param::FirstReserved, 0.0});
    last.Play({Param::FirstReserved, 0.0});
    EXPECT_GT(unchanged.Peak(), 0.01);
    for (const Change& setting : BusyProgram()) {
        // A link is heard only when a rate moves.
        if (setting.id >= kFirstEffect || IsLink(setting.id)) continue;
        const Change change{setting.id, OtherValue(setting.id, setting.normalized)};
        const Instrument::Audio audio = first.Play(change);
        EXPECT_GT(LargestDifference(audio, unchanged), 1e-4) << setting.id;
        const Instrument::Audio other = last.Play(change);
        // What the callback itself reads also hears the envelopes of the other 63.
        if (setting.id == Param::FilterEnvToDynShaper) continue;
        EXPECT_LT(LargestDifference(audio, other), kRest) << setting.id;
    }
    EXPECT_TRUE(first.PlayedWhereItShould());
    EXPECT_TRUE(last.PlayedWhereItShould());
}

TEST(ThudForgeVoiceParameters, OscillatorSettingsStandInAllVoices) {
    Instrument instrument;
    for (int i = 0; i < kOscillators; ++i) {
        instrument.Set(Osc(i, OscParam::Pitch), 0.75);
        instrument.Set(Osc(i, OscParam::Tune), 0.25);
        instrument.Set(Osc(i, OscParam::Waveform), 3.0 / 40.0);
        instrument.Set(Osc(i, OscParam::FilterTypeLeft), 0.5);
        instrument.Set(Osc(i, OscParam::FilterTypeRight), 1.0);
        instrument.Set(Osc(i, OscParam::LfoRate), 0.125 * (i + 1));
        instrument.Set(Osc(i, OscParam::LfoMode), 0.75);
        EXPECT_TRUE(AllVoices(instrument, [i](const Note& note) {
            const VoiceOscillator& oscillator = note.Oscillator(i);
            return std::fabs(oscillator.pitch - std::sqrt(2.0)) < 1e-12 &&
                   std::fabs(oscillator.tune * (1.0 + 0.5 * 0.05946309435929531) - 1.0) < 1e-12 &&
                   oscillator.useBlep && oscillator.blep[0].pulseWidth == 0.25 &&
                   oscillator.blep[1].offset == -0.5 && oscillator.filter.LeftType() == 0.5 &&
                   oscillator.filter.RightType() == 1.0 && oscillator.lfo.Rate() == 0.125 * (i + 1) &&
                   oscillator.lfo.Mode() == 3;
        })) << i;
    }
}

TEST(ThudForgeVoiceParameters, TheMiddleOfACentredKnobIsARatioOfExactlyOne) {
    Instrument instrument;
    for (int i = 0; i < kOscillators; ++i) {
        instrument.Set(Osc(i, OscParam::Pitch), 0.9);
        instrument.Set(Osc(i, OscParam::Tune), 0.9);
        instrument.Set(Osc(i, OscParam::Pitch), 0.5);
        instrument.Set(Osc(i, OscParam::Tune), 0.5);
        EXPECT_TRUE(AllVoices(instrument, [i](const Note& note) {
            return note.Oscillator(i).pitch == 1.0 && note.Oscillator(i).tune == 1.0;
        }));
    }
    instrument.Set(Param::GlobalTranspose, 0.9);
    instrument.Set(Param::GlobalTranspose, 0.5);
    EXPECT_EQ(instrument.Plug().Values().transposeRatio, 1.0);
}

TEST(ThudForgeVoiceParameters, UnisonSwitchesAtTheMiddle) {
    Instrument instrument;
    for (const auto& [value, count] :
         std::array<std::pair<double, int>, 4>{{{0.0, 1}, {0.49, 1}, {0.5, 2}, {1.0, 2}}}) {
        instrument.Set(Param::UnisonVoices, value);
        EXPECT_TRUE(AllVoices(instrument, [count = count](const Note& note) {
            return note.UnisonVoices() == count;
        })) << value;
    }
}

TEST(ThudForgeVoiceParameters, EveryWaveIsFiniteOverTheKeyboard) {
    Instrument instrument;
    OpenProgram(instrument);
    for (int wave = 0; wave < kWaveforms; ++wave) {
        instrument.Set(Osc(0, OscParam::Waveform), wave / 40.0);
        for (const int note : {0, 24, 60, 96, 127}) {
            instrument.NoteOn(note);
            const Instrument::Audio audio = instrument.Render(1024);
            EXPECT_TRUE(IsFinite(audio)) << wave << " " << note;
            // The limiter lets 0.79 through, and a whole cycle of note 0 is longer than this.
            EXPECT_LT(audio.Peak(), 0.8) << wave << " " << note;
            EXPECT_GT(audio.Peak(), 1e-3) << wave << " " << note;
            Silence(instrument, note);
        }
    }
}

TEST(ThudForgeVoiceParameters, TheStartPhaseOfEveryKnobPlaceIsHeard) {
    // A dry sine of 65.4 Hz from phase d: its second sample stands at sin(2 pi (d + increments)).
    Instrument instrument;
    DryProgram(instrument);
    instrument.Set(Param::NoteTransposeMode, 7.0 / 9.0);
    instrument.NoteOn(60);
    instrument.Render(4096);
    Silence(instrument, 60);
    const double increment = 65.4 / 44100.0;
    for (const double knob : {0.0, 0.25, 0.5, 0.75, 1.0}) {
        instrument.Set(Osc(0, OscParam::Phase), knob);
        instrument.NoteOn(60);
        const Instrument::Audio audio = instrument.Render(64);
        const double phase = knob - 0.5 + 32.0 * increment;
        EXPECT_NEAR(audio.left[32], std::sin(2.0 * std::numbers::pi * phase), 1e-3) << knob;
        Silence(instrument, 60);
    }
}

// Envelopes.

namespace {

/// The recursion of an envelope stage, by its length in samples and how far beyond its end it aims.
double StageCoefficient(double samples, double beyond) {
    return samples > 0.0 ? std::exp(-std::log((1.0 + beyond) / beyond) / samples) : 0.0;
}

double AttackAim(double shape) {
    return std::max(shape * shape * shape * 20.0 + 1.9800523e-6, 1e-9);
}

double DecayAim(double shape) {
    return std::max(shape * shape * shape * 4.0 + 1.9800523e-6, 1e-9);
}

} // namespace

TEST(ThudForgeVoiceParameters, TheVolumeEnvelopeIsHeardAsItsRecursion) {
    for (const double shape : {0.1, 0.3, 0.8}) {
        Instrument instrument;
        HoldLevel(instrument);
        instrument.NoteOn(60);
        const double full = instrument.Render(8192).left.back(); // the voice's own smoothers come to rest
        Silence(instrument, 60);
        instrument.Set(Param::AdsrShape, shape);
        instrument.Set(Param::EnvDuration, 0.1); // half a second
        instrument.Set(Param::EnvAttack, 0.05);
        instrument.Set(Param::EnvDecay, 0.2);
        instrument.Set(Param::EnvSustain, 0.4);
        instrument.Set(Param::EnvRelease, 0.1);
        instrument.NoteOn(60);
        Instrument::Audio audio = instrument.Render(64 * 100);
        instrument.NoteOff(60);
        instrument.Process(audio, 64);
        for (int i = 0; i < 40; ++i)
            instrument.Process(audio, 64);

        const double unit = 5.0 * static_cast<double>(0.1F) * 44100.0;
        const double up = StageCoefficient(static_cast<double>(0.05F) * unit, AttackAim(shape));
        const double down = StageCoefficient(static_cast<double>(0.2F) * unit, DecayAim(shape));
        const double off = StageCoefficient(static_cast<double>(0.1F) * unit, DecayAim(shape));
        const double sustain = static_cast<double>(0.4F);
        double level = 0.0;
        int stage = 1;
        for (std::size_t i = 0; i < audio.left.size(); ++i) {
            if (i == 6400) stage = 4;
            // The oscillator's filter takes some samples to reach the pulse's level.
            if (i >= 16) {
                ASSERT_NEAR(audio.left[i], full * level, 1e-6) << shape << " " << i;
            }
            if (stage == 1) {
                level = (1.0 - up) * (1.0 + AttackAim(shape)) + level * up;
                if (level >= 1.0) {
                    level = 1.0;
                    stage = 2;
                }
            } else if (stage == 2) {
                level = (sustain - DecayAim(shape)) * (1.0 - down) + level * down;
                if (level <= sustain) {
                    level = sustain;
                    stage = 3;
                }
            } else if (stage == 4) {
                level = std::max(0.0, (1.0 - off) * -DecayAim(shape) + level * off);
            }
        }
    }
}

TEST(ThudForgeVoiceParameters, DurationsReachVoicesAndDisplays) {
    Instrument instrument;
    instrument.Set(Param::EnvDuration, 0.5);
    instrument.Set(Param::FilterDuration, 0.25);
    EXPECT_TRUE(AllVoices(instrument, [](const Note& note) {
        return note.VolumeEnvelope().Duration() == 2.5 && note.FilterEnvelope().Duration() == 1.25;
    }));
    EXPECT_EQ(instrument.Plug().VolumeDisplay().Duration(), 2.5);
    EXPECT_EQ(instrument.Plug().FilterDisplay().Duration(), 1.25);
    instrument.Set(Param::EnvDuration, 0.0);
    EXPECT_TRUE(
        AllVoices(instrument, [](const Note& note) { return note.VolumeEnvelope().Duration() == 0.005; }));
}

TEST(ThudForgeVoiceParameters, TheDisplaysFollowEveryStageAtTheRateTheyWereMadeWith) {
    for (const double rate : {44100.0, 96000.0}) {
        Instrument instrument(rate);
        instrument.ResetProgram();
        EnvelopeGenerator expected;
        const std::array<std::pair<int, EnvelopeSetter>, 5> setters{{{0, &EnvelopeGenerator::SetAttack},
                                                                     {1, &EnvelopeGenerator::SetDecay},
                                                                     {2, &EnvelopeGenerator::SetSustain},
                                                                     {3, &EnvelopeGenerator::SetRelease},
                                                                     {4, &EnvelopeGenerator::SetDuration}}};
        for (const ParameterInfo& row : kParameterTable) {
            if (row.id < Param::EnvAttack || row.id > Param::EnvDuration) continue;
            const auto& setter = setters[static_cast<std::size_t>(row.id - Param::EnvAttack)].second;
            (expected.*setter)(static_cast<double>(static_cast<float>(row.resetValue)));
        }
        for (const auto& [offset, setter] : setters) {
            const double value = 0.125 * (offset + 1);
            instrument.Set(Param::EnvAttack + offset, value);
            instrument.Set(Param::FilterAttack + offset, value);
            (expected.*setter)(value);
        }
        instrument.Set(Param::AdsrShape, 0.75);
        expected.SetShape(0.75);
        std::array<double, kEnvelopeCurvePoints> want{};
        std::array<double, kEnvelopeCurvePoints> volume{};
        std::array<double, kEnvelopeCurvePoints> filter{};
        expected.DrawCurve(want, 1.0);
        instrument.Plug().VolumeDisplay().DrawCurve(volume, 1.0);
        instrument.Plug().FilterDisplay().DrawCurve(filter, 1.0);
        for (std::size_t i = 0; i < want.size(); ++i) {
            EXPECT_NEAR(volume[i], want[i], 1e-6) << rate << " " << i;
            EXPECT_NEAR(filter[i], want[i], 1e-6) << rate << " " << i;
        }
    }
}

TEST(ThudForgeVoiceParameters, TheShapeKnobSetsTheTimeBaseOfTheVoicesFilterEnvelopes) {
    Instrument instrument;
    instrument.Set(Param::FilterDuration, 0.25);
    instrument.Set(Param::AdsrShape, 0.5);
    EXPECT_TRUE(
        AllVoices(instrument, [](const Note& note) { return note.FilterEnvelope().Duration() == 2.5; }));
    EXPECT_EQ(instrument.Plug().FilterDisplay().Duration(), 1.25);
    instrument.Set(Param::FilterDuration, 0.125);
    EXPECT_TRUE(
        AllVoices(instrument, [](const Note& note) { return note.FilterEnvelope().Duration() == 0.625; }));
    // A whole program goes through in id order, so the shape has the last word.
    instrument.ResetProgram();
    const double expected = 5.0 * static_cast<double>(0.3F);
    EXPECT_TRUE(AllVoices(
        instrument, [expected](const Note& note) { return note.FilterEnvelope().Duration() == expected; }));
}

TEST(ThudForgeVoiceParameters, TheFilterEnvelopesKeepTheirCurveWhateverTheShape) {
    Instrument instrument;
    OpenProgram(instrument);
    instrument.Set(Param::AdsrShape, 1.0);
    instrument.Set(Param::FilterDuration, 0.1);
    instrument.Set(Param::FilterAttack, 0.5);
    instrument.NoteOn(60);
    instrument.Render(640);
    const double samples = static_cast<double>(0.1F) * 5.0 * 44100.0 * 0.5;
    const double aim = AttackAim(0.3);
    const double expected = (1.0 + aim) * (1.0 - std::pow(StageCoefficient(samples, aim), 640.0));
    EXPECT_NEAR(instrument.Plug().Voices().Voice(0).FilterEnvelope().Output(), expected, 1e-9);
}

TEST(ThudForgeVoiceParameters, VelocityActsSquared) {
    Instrument instrument;
    HoldLevel(instrument);
    instrument.NoteOn(60, 127);
    const double full = instrument.Render(8192).left.back();
    Silence(instrument, 60);
    instrument.NoteOn(60, 64);
    EXPECT_NEAR(instrument.Render(1024).left.back() / full, 64.0 * 64.0 / (127.0 * 127.0), 1e-9);
    instrument.Set(Param::EnvVelocity, 0.0);
    EXPECT_EQ(instrument.Render(128).left.back(), 0.0);
}

// Links between the LFOs.

namespace {

constexpr int kRates[] = {Osc(0, OscParam::LfoRate), Osc(1, OscParam::LfoRate), Osc(2, OscParam::LfoRate)};
constexpr int kLinks[] = {Osc(0, OscParam::LfoLinkAll), Osc(1, OscParam::LfoLinkAll),
                          Osc(2, OscParam::LfoLinkAll)};

} // namespace

TEST(ThudForgeVoiceParameters, LinksExcludeEachOtherThroughTheHostsSetter) {
    Instrument instrument;
    TestEditor editor;
    instrument.Plug().AttachGraphics(&editor);
    for (int on = 0; on < kOscillators; ++on) {
        instrument.ResetProgram();
        const int other = (on + 1) % kOscillators;
        const int third = (on + 2) % kOscillators;
        instrument.Set(kLinks[other], 0.25); // anything above 0 counts
        std::array<int, kOscillators> before{};
        for (std::size_t i = 0; i < before.size(); ++i)
            before[i] = instrument.AutomateCalls(kLinks[i]);
        editor.told.clear();
        instrument.Set(kLinks[on], 1.0);
        EXPECT_EQ(instrument.Get(kLinks[on]), 1.0);
        EXPECT_EQ(instrument.Get(kLinks[other]), 0.0);
        EXPECT_EQ(instrument.AutomateCalls(kLinks[other]), before[static_cast<std::size_t>(other)] + 1);
        EXPECT_EQ(instrument.AutomateCalls(kLinks[on]), before[static_cast<std::size_t>(on)]);
        EXPECT_EQ(instrument.AutomateCalls(kLinks[third]), before[static_cast<std::size_t>(third)]);
        // The second switch follows on the screen.
        EXPECT_TRUE(std::any_of(editor.told.begin(), editor.told.end(), [&](const TestEditor::Told& told) {
            return told.id == kLinks[other] && told.value == 0.0 && told.normalized;
        }));
        // Switching off asks nothing of the others.
        instrument.Set(kLinks[on], 0.0);
        EXPECT_EQ(instrument.AutomateCalls(kLinks[other]), before[static_cast<std::size_t>(other)] + 1);
    }
}

TEST(ThudForgeVoiceParameters, ALinkedRatePassesOnceToEachOther) {
    for (int master = 0; master < kOscillators; ++master) {
        Instrument instrument;
        instrument.ResetProgram();
        instrument.Set(kLinks[master], 1.0);
        instrument.Set(kRates[master], 0.25);
        for (int i = 0; i < kOscillators; ++i) {
            EXPECT_EQ(instrument.Get(kRates[i]), 0.25);
            EXPECT_EQ(instrument.AutomateCalls(kRates[i]), i == master ? 0 : 1) << master << i;
            EXPECT_TRUE(AllVoices(
                instrument, [i](const Note& note) { return note.Oscillator(i).lfo.Frequency() == 5.0; }));
        }
        // One that is not the master moves alone.
        const int other = (master + 1) % kOscillators;
        instrument.Set(kRates[other], 0.5);
        EXPECT_EQ(instrument.Get(kRates[master]), 0.25);
        EXPECT_EQ(instrument.Get(kRates[(master + 2) % kOscillators]), 0.25);
    }
}

TEST(ThudForgeVoiceParameters, AHalfHeartedLinkExcludesButPassesNothing) {
    Instrument instrument;
    instrument.ResetProgram();
    instrument.Set(kLinks[1], 0.4);
    instrument.Set(kRates[1], 0.75);
    EXPECT_EQ(instrument.Get(kRates[0]), 0.0);
    EXPECT_EQ(instrument.AutomateCalls(kRates[0]), 0);
    instrument.Set(kLinks[1], 0.5);
    instrument.Set(kRates[1], 0.75);
    EXPECT_EQ(instrument.Get(kRates[0]), 0.75);
}

TEST(ThudForgeVoiceParameters, ASyncOfTheMasterTakesAllLfosAlong) {
    Instrument instrument;
    instrument.SetTempo(90.0);
    instrument.ResetProgram();
    instrument.Set(kLinks[2], 1.0);
    instrument.Set(Osc(2, OscParam::LfoTempoSync), 6.0 / 9.0);
    for (const int rate : kRates) {
        EXPECT_NEAR(instrument.Get(rate), 90.0 * 2.0 / 60.0 / 20.0, 1e-7);
        EXPECT_EQ(instrument.AutomateCalls(rate), 1);
    }
}

TEST(ThudForgeVoiceParameters, ASyncedRateIsOverwrittenAtEveryTempoChangeAndOnlyThen) {
    Instrument instrument;
    instrument.SetTempo(100.0);
    instrument.ResetProgram();
    instrument.Set(Osc(0, OscParam::LfoTempoSync), 5.0 / 9.0);
    instrument.Render(64);
    const int calls = instrument.AutomateCalls(kRates[0]);
    instrument.Set(kRates[0], 0.9); // free to move until the tempo does
    instrument.Render(640);
    EXPECT_NEAR(instrument.Get(kRates[0]), 0.9, 1e-7);
    EXPECT_EQ(instrument.AutomateCalls(kRates[0]), calls);
    for (const double tempo : {60.0, 174.0}) {
        instrument.SetTempo(tempo);
        instrument.Render(640);
        EXPECT_NEAR(instrument.Get(kRates[0]), tempo / 60.0 / 20.0, 1e-7);
    }
    EXPECT_EQ(instrument.AutomateCalls(kRates[0]), calls + 2);
    instrument.Set(Osc(0, OscParam::LfoTempoSync), 0.0); // the rate stays as it was
    instrument.SetTempo(80.0);
    instrument.Render(640);
    EXPECT_NEAR(instrument.Get(kRates[0]), 174.0 / 60.0 / 20.0, 1e-7);
}

TEST(ThudForgeVoiceParameters, ASyncBeyondTheRangeStopsAtTheTop) {
    Instrument instrument;
    instrument.SetTempo(120.0);
    instrument.Set(Osc(1, OscParam::LfoTempoSync), 1.0);
    EXPECT_EQ(instrument.Get(kRates[1]), 1.0);
    EXPECT_TRUE(
        AllVoices(instrument, [](const Note& note) { return note.Oscillator(1).lfo.Frequency() == 20.0; }));
}
