// The bank with its put-off first pass against plain stepping, sample by sample and voice by voice.

#include "core/DenormalGuard.h"
#include "tests/voice/RandomProgram.h"
#include "tests/voice/SlowVoice.h"
#include "tests/voice/VoiceRig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace Grimworks::Testing {
namespace {

struct Event {
    enum Kind { kNoteOn, kNoteOff, kBend };
    Kind kind;
    int note;
    int velocity;
    double value;
};

struct Block {
    int frames;
    std::vector<std::vector<Event>> events; ///< by sample
};

/// Blocks of all sizes, short ones and ones of many stretches, with notes that start, end and change places
/// at the same sample, and wheel moves.
std::vector<Block> RandomSession(Dice& dice, int blocks, int mostNotes) {
    std::vector<Block> session;
    std::vector<int> held;
    int started = 0;
    for (int b = 0; b < blocks; ++b) {
        static constexpr int kSizes[] = {1, 17, 63, 64, 65, 128, 200, 500};
        Block block{kSizes[dice.Below(8)], {}};
        block.events.resize(static_cast<std::size_t>(block.frames));
        for (int i = dice.Below(4); i > 0; --i) {
            auto& here = block.events[static_cast<std::size_t>(dice.Below(block.frames))];
            if (!held.empty() && dice.Knob() < 0.5) {
                here.push_back({Event::kNoteOff, held.back(), 0, 0.0});
                held.pop_back();
            }
            if (started < mostNotes && dice.Knob() < 0.7) {
                held.push_back(30 + started++);
                here.push_back({Event::kNoteOn, held.back(), 1 + dice.Below(127), 0.0});
            }
            if (dice.Knob() < 0.3) here.push_back({Event::kBend, 0, 0, 2.0 * dice.Knob() - 1.0});
        }
        session.push_back(std::move(block));
    }
    return session;
}

void Send(VoiceBank& bank, const Event& event, int offset) {
    if (event.kind == Event::kNoteOn) bank.NoteOn(event.note, event.velocity, offset);
    if (event.kind == Event::kNoteOff) bank.NoteOff(event.note, 0);
    if (event.kind == Event::kBend) bank.PitchBend(offset, event.value);
}

/// Plays a block. `eager` brings all voices up to date after each sample, as any setter does.
Recording PlayBlock(VoiceRig& rig, const Block& block, bool eager) {
    for (int i = 0; i < block.frames; ++i) {
        for (const Event& event : block.events[static_cast<std::size_t>(i)])
            Send(rig.bank, event, i);
        rig.bank.Tick();
        if (eager) rig.bank.SetUnisonDetune(rig.values[Param::UnisonDetune]);
    }
    const auto size = static_cast<std::size_t>(block.frames);
    Recording out;
    for (std::vector<double>* channel :
         {&out.left, &out.right, &out.sub, &out.volumeEnvelope, &out.filterEnvelope})
        channel->resize(size);
    out.lfo.resize(size);
    rig.bank.Render({{out.left.data(), out.right.data()},
                     out.sub.data(),
                     out.volumeEnvelope.data(),
                     out.filterEnvelope.data(),
                     out.lfo.data()},
                    block.frames);
    return out;
}

/// As many plain voices as a session needs, stepped one after the other within each sample.
class SlowBank {
public:
    SlowBank(const VoiceRig& rig, double rate, int count, RandomGenerator& noise)
        : range(PitchBendSemitones(rig.values[Param::PitchBendRange])) {
        voices.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            voices.push_back({SlowVoice(rig.values, rate, rig.tempo.tempo, noise)});
    }

    Recording Play(const Block& block) {
        for (int i = 0; i < block.frames; ++i) {
            for (const Event& event : block.events[static_cast<std::size_t>(i)])
                Take(event, i);
            Tick();
        }
        return Render(block.frames);
    }

    [[nodiscard]] bool Idle() const {
        return std::none_of(voices.begin(), voices.end(), [](const Voice& v) { return v.sound.IsActive(); });
    }

private:
    struct Voice {
        SlowVoice sound;
        int note = -1;
        std::size_t position = 0;
        std::size_t offset = 0;
    };
    struct Bend {
        bool waiting = false;
        int wait = 0;
        double value = 0.0;
    };

    void Take(const Event& event, int at) {
        if (event.kind == Event::kBend) {
            const auto slot =
                std::find_if(bends.begin(), bends.end(), [](const Bend& bend) { return !bend.waiting; });
            if (slot != bends.end()) *slot = {true, at, event.value};
        }
        if (event.kind == Event::kNoteOff) {
            for (Voice& voice : voices) {
                if (voice.sound.IsActive() && voice.note == event.note) voice.sound.Release();
            }
        }
        if (event.kind != Event::kNoteOn) return;
        for (Voice& voice : voices) {
            if (voice.sound.IsActive()) continue;
            voice.note = event.note;
            voice.position = 0;
            voice.offset = static_cast<std::size_t>(at);
            voice.sound.Start(event.note, event.velocity, factor);
            return;
        }
    }

    void Tick() {
        for (Bend& bend : bends) {
            if (!bend.waiting || bend.wait-- > 0) continue;
            target = std::pow(kSemitone, range * bend.value);
            bend.waiting = false;
        }
        for (Voice& voice : voices) {
            if (voice.sound.IsActive()) voice.sound.Tick(voice.position++ + voice.offset, factor);
        }
        factor = 0.9777 * factor + 0.0223 * target;
    }

    Recording Render(int frames) {
        const auto size = static_cast<std::size_t>(frames);
        Recording out;
        for (std::vector<double>* channel :
             {&out.left, &out.right, &out.sub, &out.volumeEnvelope, &out.filterEnvelope})
            channel->resize(size);
        out.lfo.resize(size);
        for (Voice& voice : voices) {
            if (!voice.sound.IsActive()) continue;
            voice.position = voice.offset = 0;
            for (std::size_t n = 0; n < size; ++n) {
                const SlowVoice::Frame frame = voice.sound.Render(n);
                out.left[n] += frame.left;
                out.right[n] += frame.right;
                out.sub[n] += frame.sub;
                out.volumeEnvelope[n] += frame.gain;
                out.filterEnvelope[n] += frame.cutoff;
                std::copy(frame.lfo.begin(), frame.lfo.end(), out.lfo[n].begin());
            }
        }
        return out;
    }

    std::vector<Voice> voices;
    std::array<Bend, kDeferredEvents> bends;
    double range;
    double target = 1.0;
    double factor = 1.0;
};

/// Noise on some oscillators of most programs, so that the order of draws matters.
void AddNoise(VoiceRig& rig, Dice& dice) {
    for (int i = 0; i < kOscillators; ++i) {
        if (dice.Knob() < 0.4) rig.SetWave(i, 8 + dice.Below(2));
    }
}

constexpr double kRate = 44100.0;

void ExpectClose(const std::vector<double>& values, const std::vector<double>& expected, const char* what) {
    for (std::size_t i = 0; i < expected.size(); ++i)
        ASSERT_NEAR(values[i], expected[i], 1e-9 * (1.0 + std::fabs(expected[i]))) << what << " " << i;
}

/// Raises peak to the loudest sample.
void CompareWithSlowBank(unsigned seed, double& peak) {
    constexpr int kMostNotes = 12;
    const DenormalGuard guard;
    Dice dice(seed);
    VoiceRig rig(kRate);
    rig.tempo.tempo = 60.0 + 200.0 * dice.Knob();
    RandomProgram(rig, dice);
    AddNoise(rig, dice);
    RandomGenerator noise(1); // the rig's own starts from the same seed
    SlowBank slow(rig, kRate, kMostNotes, noise);
    const std::vector<Block> session = RandomSession(dice, 16, kMostNotes);
    for (std::size_t b = 0; b < session.size(); ++b) {
        SCOPED_TRACE(testing::Message() << "program " << seed << ", block " << b);
        const Recording expected = slow.Play(session[b]);
        const Recording out = PlayBlock(rig, session[b], false);
        for (const double x : expected.left)
            peak = std::max(peak, std::fabs(x));
        ASSERT_NO_FATAL_FAILURE(ExpectClose(out.left, expected.left, "left"));
        ASSERT_NO_FATAL_FAILURE(ExpectClose(out.right, expected.right, "right"));
        ASSERT_NO_FATAL_FAILURE(ExpectClose(out.sub, expected.sub, "sub"));
        ASSERT_NO_FATAL_FAILURE(ExpectClose(out.volumeEnvelope, expected.volumeEnvelope, "volume envelope"));
        ASSERT_NO_FATAL_FAILURE(ExpectClose(out.filterEnvelope, expected.filterEnvelope, "filter envelope"));
        for (std::size_t i = 0; i < expected.lfo.size(); ++i) {
            for (std::size_t k = 0; k < kOscillators; ++k)
                ASSERT_NEAR(out.lfo[i][k], expected.lfo[i][k], 1e-9) << i;
        }
        ASSERT_EQ(rig.bank.ActiveVoices() == 0, slow.Idle());
    }
}

TEST(VoiceBankReference, RandomSessionsAgreeWithPlainVoicesInTurn) {
    int audible = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        double peak = 0.0;
        ASSERT_NO_FATAL_FAILURE(CompareWithSlowBank(seed, peak));
        if (peak > 1e-3) ++audible;
    }
    EXPECT_GT(audible, 40);
}

/// A host that turns knobs of the instrument from within its answer to the tempo question, which each note on
/// asks in the middle of a block.
class MeddlingHost final : public TempoSource {
public:
    MeddlingHost(VoiceRig& target, unsigned seed) : rig(target), dice(seed) {}

    double GetTempo() override {
        Turn(6);
        return 40.0 + 200.0 * dice.Knob();
    }

    void Turn(int knobs) {
        for (; knobs > 0; --knobs) {
            const int id = dice.Below(Param::BassAmount);
            const bool resonance =
                id < Param::EnvAttack && static_cast<OscParam>(id % kOscParams) == OscParam::FilterResonance;
            rig.Set(id, resonance ? 0.6 * dice.Knob() : dice.Landmark());
        }
    }

private:
    VoiceRig& rig;
    Dice dice;
};

bool Same(const Recording& a, const Recording& b) {
    return a.left == b.left && a.right == b.right && a.sub == b.sub && a.volumeEnvelope == b.volumeEnvelope &&
           a.filterEnvelope == b.filterEnvelope && a.lfo == b.lfo;
}

TEST(VoiceBankReference, KnobsTurnedBetweenBlocksAndFromWithinANoteOnActAsIfEverySampleWereStepped) {
    const DenormalGuard guard;
    double peak = 0.0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        Dice dice(seed);
        const std::vector<Block> session = RandomSession(dice, 24, 60);
        std::vector<Recording> renders[2];
        for (const bool eager : {false, true}) {
            Dice programDice(seed + 1000);
            VoiceRig rig(kRate);
            MeddlingHost host(rig, seed);
            VoiceContext context = rig.Context();
            context.tempo = &host;
            rig.bank.SetContext(context);
            RandomProgram(rig, programDice);
            AddNoise(rig, programDice);
            for (const Block& block : session) {
                host.Turn(2);
                renders[eager ? 1 : 0].push_back(PlayBlock(rig, block, eager));
            }
        }
        for (std::size_t b = 0; b < session.size(); ++b) {
            ASSERT_TRUE(Same(renders[0][b], renders[1][b])) << seed << " " << b;
            for (const double x : renders[0][b].left)
                peak = std::max(peak, std::fabs(x));
        }
    }
    EXPECT_GT(peak, 0.1);
}

} // namespace
} // namespace Grimworks::Testing
