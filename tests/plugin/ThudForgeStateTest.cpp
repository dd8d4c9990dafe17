#include "tests/plugin/Instrument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

using namespace Grimworks;

namespace {

constexpr int kStateSize = 4 + 8 * (kCurvePoints + kParameters);
constexpr int kCurveEnd = 4 + 8 * kCurvePoints;
constexpr std::size_t kCurveBytes = sizeof(CurvePoints);

double CurveValue(int number) {
    return static_cast<double>(number) / (kCurves - 1);
}

/// A state as it stands in a project: a drawn curve and a value for every parameter.
struct State {
    CurvePoints curve{};
    std::vector<double> values = std::vector<double>(kParameters, 0.25);

    /// Every number differs from all others. Locks and links of the LFOs stay off, since they set the rates
    /// as they are loaded.
    explicit State(unsigned seed) {
        std::mt19937 random(seed);
        const auto next = [&random] { return static_cast<double>(random()) / 4294967296.0; };
        for (double& point : curve)
            point = 2.0 * next() - 1.0;
        for (double& value : values)
            value = next();
        for (int i = 0; i < kOscillators; ++i) {
            At(Osc(i, OscParam::LfoLinkAll)) = 0.0;
            At(Osc(i, OscParam::LfoTempoSync)) = 0.0;
        }
        At(Param::PhaserTempoSync) = 0.0;
        At(Param::BassLayerAmount) = 1.2;
    }

    double& At(int id) { return values[static_cast<std::size_t>(id)]; }

    [[nodiscard]] ByteChunk Chunk() const {
        ByteChunk chunk;
        chunk.Put(std::int32_t{kCurvePoints + kParameters});
        for (const double point : curve)
            chunk.Put(point);
        for (const double value : values)
            chunk.Put(value);
        return chunk;
    }

    [[nodiscard]] ByteChunk Chunk(int length) const {
        ByteChunk cut;
        cut.Assign(Chunk().Bytes().first(static_cast<std::size_t>(length)));
        return cut;
    }
};

ByteChunk StateOf(ThudForge& plug) {
    ByteChunk chunk;
    EXPECT_TRUE(plug.SerializeState(chunk));
    return chunk;
}

std::vector<int> TakeSent(ThudForge& plug) {
    std::vector<int> sent;
    plug.changedParameters.Take([&sent](int id) { sent.push_back(id); });
    return sent;
}

std::vector<double> ValuesOf(const ThudForge& plug) {
    std::vector<double> values(kParameters);
    for (int id = 0; id < kParameters; ++id)
        values[static_cast<std::size_t>(id)] = plug.GetParameterValue(id);
    return values;
}

const CurvePoints& EditorCurve(const ThudForge& plug) {
    return plug.EditorStage().GetDistortion().Points();
}

const CurvePoints& AudioCurve(const ThudForge& plug) {
    return plug.AudioStage().GetDistortion().Points();
}

} // namespace

TEST(ThudForgeState, IsTheCountTheCurveAndAllParametersAsPlainValues) {
    Instrument instrument;
    instrument.Set(Param::BassLayerAmount, 1.0);
    instrument.Set(158, 0.5);
    const ByteChunk state = StateOf(instrument.Plug());
    ASSERT_EQ(state.Size(), 5372);
    std::int32_t count = 0;
    ASSERT_EQ(state.Get(count, 0), 4);
    EXPECT_EQ(count, 671);
    int position = 4;
    double number = 0.0;
    for (const double point : EditorCurve(instrument.Plug())) {
        position = state.Get(number, position);
        EXPECT_EQ(number, point);
    }
    for (int id = 0; id < kParameters; ++id) {
        position = state.Get(number, position);
        const double expected = id == Param::BassLayerAmount ? 1.259
                                : id == 158                  ? 0.5
                                                             : instrument.Plug().GetParameterValue(id);
        EXPECT_EQ(number, expected) << id;
    }
}

TEST(ThudForgeState, ComesBackByteForByteReservedIdsIncluded) {
    Instrument instrument;
    for (unsigned seed = 1; seed <= 5; ++seed) {
        const State state(seed);
        ASSERT_EQ(instrument.Plug().UnserializeState(state.Chunk(), 0), kStateSize);
        EXPECT_TRUE(StateOf(instrument.Plug()) == state.Chunk()) << seed;
        EXPECT_EQ(AudioCurve(instrument.Plug()), state.curve) << seed;
        for (int id = 0; id < kLiveParameters; ++id)
            EXPECT_EQ(instrument.Plug().Values()[id], state.values[static_cast<std::size_t>(id)]) << id;
    }
}

TEST(ThudForgeState, MayStandAnywhereInAChunkAndItsCountIsNotLookedAt) {
    const State state(6);
    ByteChunk chunk;
    chunk.PutBytes("noise", 5);
    chunk.PutBytes(state.Chunk().Data(), kStateSize);
    std::memset(chunk.Data() + 5, 0xFF, 4);
    chunk.PutBytes("behind", 6);
    Instrument instrument;
    EXPECT_EQ(instrument.Plug().UnserializeState(chunk, 5), 5 + kStateSize);
    EXPECT_TRUE(StateOf(instrument.Plug()) == state.Chunk());
}

TEST(ThudForgeState, TheDrawnCurveBelongsToTheTypeThatComesWithIt) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    instrument.Set(Param::DistortionType, CurveValue(5));
    const CurvePoints stockFive = EditorCurve(plug);
    State state(7);
    state.At(Param::DistortionType) = CurveValue(20);
    ASSERT_EQ(plug.UnserializeState(state.Chunk(), 0), kStateSize);
    EXPECT_EQ(plug.EditorStage().GetDistortion().CurveNumber(), 20);
    EXPECT_EQ(EditorCurve(plug), state.curve);
    instrument.Set(Param::DistortionType, CurveValue(5));
    EXPECT_EQ(EditorCurve(plug), stockFive) << "the type from before the load keeps its own curve";
    EXPECT_EQ(AudioCurve(plug), stockFive);
    instrument.Set(Param::DistortionType, CurveValue(20));
    EXPECT_EQ(EditorCurve(plug), state.curve);
    EXPECT_EQ(AudioCurve(plug), state.curve);
}

TEST(ThudForgeState, ACutBehindTheCurveLeavesTheParametersAndSendsThemAll) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    ASSERT_GT(plug.UnserializeState(State(8).Chunk(), 0), 0);
    const std::vector<double> before = ValuesOf(plug);
    const State other(9);
    for (const int length : {kCurveEnd, kCurveEnd + 7}) {
        TakeSent(plug);
        EXPECT_EQ(plug.UnserializeState(other.Chunk(length), 0), -1);
        EXPECT_EQ(ValuesOf(plug), before);
        EXPECT_EQ(EditorCurve(plug), other.curve);
        EXPECT_EQ(TakeSent(plug).size(), std::size_t{kLiveParameters});
    }
}

TEST(ThudForgeState, ACutBetweenTheParametersKeepsTheOldValuesOfTheRest) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    const State old(10);
    const State other(11);
    for (const int whole : {1, 80, 102, 158}) {
        ASSERT_GT(plug.UnserializeState(old.Chunk(), 0), 0);
        EXPECT_EQ(plug.UnserializeState(other.Chunk(kCurveEnd + 8 * whole + 3), 0), -1);
        std::vector<double> expected = old.values;
        std::copy_n(other.values.begin(), whole, expected.begin());
        EXPECT_EQ(ValuesOf(plug), expected) << whole;
    }
}

TEST(ThudForgeState, ACutInTheCurveRepeatsTheLastPoint) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    const std::vector<double> before = ValuesOf(plug);
    const State state(12);
    for (const int whole : {1, 100, kCurvePoints - 1}) {
        EXPECT_EQ(plug.UnserializeState(state.Chunk(4 + 8 * whole + 5), 0), -1);
        CurvePoints expected = state.curve;
        std::fill(expected.begin() + whole, expected.end(), expected[static_cast<std::size_t>(whole - 1)]);
        EXPECT_EQ(EditorCurve(plug), expected) << whole;
        EXPECT_EQ(AudioCurve(plug), expected) << whole;
        EXPECT_EQ(ValuesOf(plug), before);
    }
}

TEST(ThudForgeState, WithoutAnyPointTheCurveStaysAndEverythingIsSentAllTheSame) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    ASSERT_GT(plug.UnserializeState(State(13).Chunk(), 0), 0);
    const ByteChunk before = StateOf(plug);
    const State other(14);
    for (int length = 0; length < 12; ++length) {
        TakeSent(plug);
        EXPECT_EQ(plug.UnserializeState(other.Chunk(length), 0), -1) << length;
        EXPECT_TRUE(StateOf(plug) == before) << length;
        EXPECT_EQ(TakeSent(plug).size(), std::size_t{kLiveParameters});
    }
    for (const int position : {-1, kStateSize, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(plug.UnserializeState(other.Chunk(), position), -1) << position;
        EXPECT_TRUE(StateOf(plug) == before) << position;
    }
}

TEST(ThudForgeState, ValuesBeyondTheirRangeAreLimitedAndNansLeftOut) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    State state(15);
    ASSERT_GT(plug.UnserializeState(state.Chunk(), 0), 0);
    State wild = state;
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    wild.At(0) = 7.0;
    wild.At(4) = -7.0;
    wild.At(5) = kInfinity;
    wild.At(6) = -kInfinity;
    wild.At(Param::BassLayerAmount) = 1e300;
    wild.At(Param::Volume) = std::numeric_limits<double>::quiet_NaN();
    wild.At(158) = -1e300;
    EXPECT_EQ(plug.UnserializeState(wild.Chunk(), 0), kStateSize);
    state.At(0) = 1.0;
    state.At(4) = 0.0;
    state.At(5) = 1.0;
    state.At(6) = 0.0;
    state.At(Param::BassLayerAmount) = 1.259;
    state.At(158) = 0.0;
    EXPECT_EQ(ValuesOf(plug), state.values);
}

TEST(ThudForgeState, CurvePointsAreKeptToTheBitAndASoundCurveHealsWhatBadOnesDid) {
    State bad(16);
    bad.curve[100] = std::numeric_limits<double>::quiet_NaN();
    bad.curve[200] = std::numeric_limits<double>::infinity();
    bad.curve[300] = -1e300;
    bad.curve[400] = 5e-324;
    Instrument instrument;
    ASSERT_EQ(instrument.Plug().UnserializeState(bad.Chunk(), 0), kStateSize);
    EXPECT_TRUE(StateOf(instrument.Plug()) == bad.Chunk());

    instrument.ResetProgram();
    instrument.Set(Param::Distortion, 1.0);
    instrument.Set(Param::TempoDelayAmount, 0.5);
    instrument.Set(Param::TempoDelayFeedback, 0.5);
    ASSERT_EQ(instrument.Plug().UnserializeState(bad.Chunk(kCurveEnd), 0), -1);
    instrument.NoteOn(50);
    const Instrument::Audio broken = instrument.Render(4096);
    EXPECT_TRUE(std::any_of(broken.left.begin(), broken.left.end(), [](double x) { return std::isnan(x); }));
    ASSERT_EQ(instrument.Plug().UnserializeState(State(17).Chunk(kCurveEnd), 0), -1);
    const Instrument::Audio healed = instrument.Render(4096);
    for (const double x : healed.left)
        ASSERT_TRUE(std::isfinite(x));
    EXPECT_GT(healed.Peak(), 0.01);
}

TEST(ThudForgeState, ComparesWithAStateWhoseCountWasTakenOff) {
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    const State state(18);
    ASSERT_GT(plug.UnserializeState(state.Chunk(), 0), 0);
    const ByteChunk whole = state.Chunk();
    std::vector<std::uint8_t> bytes(whole.Bytes().begin() + 4, whole.Bytes().end());
    EXPECT_TRUE(plug.CompareState(bytes, 0));
    EXPECT_FALSE(plug.CompareState(whole.Bytes(), 0)) << "the count is in the way";
    EXPECT_FALSE(plug.CompareState(whole.Bytes(), 4)) << "the curve is looked for at the very start";

    std::vector<std::uint8_t> other = bytes;
    other[kCurveBytes - 8] ^= 1U;
    EXPECT_FALSE(plug.CompareState(other, 0)) << "the curve must agree to the bit";
    other = bytes;
    const double near = state.values[4] + 4e-6;
    std::memcpy(&other[kCurveBytes + 32], &near, sizeof near);
    EXPECT_TRUE(plug.CompareState(other, 0));
    const double far = state.values[4] + 2e-5;
    std::memcpy(&other[kCurveBytes + 32], &far, sizeof far);
    EXPECT_FALSE(plug.CompareState(other, 0));

    // The parameters stand behind the curve, counted from the position; the curve does not move with it.
    std::vector<std::uint8_t> gap = bytes;
    gap.insert(gap.begin() + std::ptrdiff_t{kCurveBytes}, 16, std::uint8_t{0});
    EXPECT_TRUE(plug.CompareState(gap, 16));
    EXPECT_FALSE(plug.CompareState(gap, 0));
}

TEST(ThudForgeState, ComparesWithNothingThatIsTooShort) {
    Instrument instrument;
    const ByteChunk whole = StateOf(instrument.Plug());
    const auto bytes = whole.Bytes().subspan(4);
    EXPECT_TRUE(instrument.Plug().CompareState(bytes, 0));
    EXPECT_FALSE(instrument.Plug().CompareState(bytes.first(bytes.size() - 1), 0));
    EXPECT_FALSE(instrument.Plug().CompareState({}, 0));
    for (const int position : {-1, 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        EXPECT_FALSE(instrument.Plug().CompareState(bytes, position)) << position;
}
