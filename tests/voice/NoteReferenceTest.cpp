// The voice against a plain computation of the same formulas, over random programs.

#include "core/DenormalGuard.h"
#include "tests/voice/RandomProgram.h"
#include "tests/voice/SlowVoice.h"
#include "tests/voice/VoiceRig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace Grimworks::Testing {
namespace {

void ExpectClose(double value, double expected, const char* what, unsigned seed, int frame) {
    ASSERT_NEAR(value, expected, 1e-9 * (1.0 + std::fabs(expected)))
        << what << ", program " << seed << ", frame " << frame;
}

/// Two notes on the same voice, the first one released, in blocks of a random size; pitch wheel at rest.
/// Raises peak to the loudest sample.
void Compare(unsigned seed, double& peak) {
    const DenormalGuard guard;
    Dice dice(seed);
    const double rate = seed % 3 == 0 ? 48000.0 : 44100.0;
    const int block = 1 + dice.Below(200);
    VoiceRig rig(rate, block);
    rig.tempo.tempo = 60.0 + 200.0 * dice.Knob();
    RandomProgram(rig, dice);
    RandomGenerator noise(1); // the rig's own starts from the same seed
    SlowVoice slow(rig.values, rate, rig.tempo.tempo, noise);

    int frame = 0;
    for (const int note : {30 + dice.Below(50), 30 + dice.Below(50)}) {
        const int velocity = 1 + dice.Below(127);
        rig.bank.NoteOn(note, velocity, 0);
        slow.Start(note, velocity, 1.0);
        for (int b = 0; b < 12; ++b) {
            if (b == 8) {
                rig.bank.NoteOff(note, 0);
                slow.Release();
            }
            if (!slow.IsActive()) break;
            rig.PlayBlock(block);
            for (int i = 0; i < block; ++i)
                slow.Tick(static_cast<std::size_t>(i), 1.0);
            for (int i = 0; i < block; ++i, ++frame) {
                const auto at = static_cast<std::size_t>(frame);
                const SlowVoice::Frame expected = slow.Render(static_cast<std::size_t>(i));
                peak = std::max(peak, std::fabs(expected.left));
                ASSERT_NO_FATAL_FAILURE(ExpectClose(rig.out.left[at], expected.left, "left", seed, frame));
                ASSERT_NO_FATAL_FAILURE(ExpectClose(rig.out.right[at], expected.right, "right", seed, frame));
                ASSERT_NO_FATAL_FAILURE(ExpectClose(rig.out.sub[at], expected.sub, "sub", seed, frame));
                ASSERT_NO_FATAL_FAILURE(
                    ExpectClose(rig.out.volumeEnvelope[at], expected.gain, "volume envelope", seed, frame));
                ASSERT_NO_FATAL_FAILURE(
                    ExpectClose(rig.out.filterEnvelope[at], expected.cutoff, "filter envelope", seed, frame));
                for (std::size_t k = 0; k < kOscillators; ++k) {
                    ASSERT_NO_FATAL_FAILURE(
                        ExpectClose(rig.out.lfo[at][k], expected.lfo[k], "LFO", seed, frame));
                }
            }
        }
        ASSERT_EQ(rig.bank.ActiveVoices(), slow.IsActive() ? 1 : 0);
        if (slow.IsActive()) return; // a long release: the second note would take another voice
    }
}

TEST(NoteReference, RandomProgramsAgreeWithThePlainComputation) {
    int audible = 0;
    for (unsigned seed = 1; seed <= 150; ++seed) {
        double peak = 0.0;
        ASSERT_NO_FATAL_FAILURE(Compare(seed, peak));
        if (peak > 1e-3) ++audible;
    }
    EXPECT_GT(audible, 75);
}

} // namespace
} // namespace Grimworks::Testing
