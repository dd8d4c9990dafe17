#include "plugin/IPlugVST.h"

#include "tests/plugin/AllocationCounter.h"
#include "tests/plugin/TestPlug.h"

#include <gtest/gtest.h>

#include <thread>

namespace Grimworks {
namespace {

template <typename Sample>
struct Buffers {
    explicit Buffers(int frames, Sample fill = 0)
        : left(static_cast<std::size_t>(frames), fill),
          right(static_cast<std::size_t>(frames), fill), pointers{left.data(), right.data()} {}
    Buffers(const Buffers&) = delete;
    Buffers& operator=(const Buffers&) = delete;

    std::vector<Sample> left;
    std::vector<Sample> right;
    Sample* pointers[2];
};

template <typename Sample>
void ExpectSound(const Buffers<Sample>& out, int from, Sample offset = 0) {
    for (std::size_t i = 0; i < out.left.size(); ++i) {
        const int frame = from + static_cast<int>(i);
        ASSERT_EQ(out.left[i], offset + static_cast<Sample>(TestPlug::SoundAt(frame, 0))) << i;
        ASSERT_EQ(out.right[i], offset + static_cast<Sample>(TestPlug::SoundAt(frame, 1))) << i;
    }
}

TEST(IPlugVSTProcess, DoublesAreTheHostsOwnBuffers) {
    PlugAndHost both;
    AEffect* effect = both.plug.Effect();
    Buffers<double> out(300, 9.0);
    effect->processDoubleReplacing(effect, nullptr, out.pointers, 300);
    ExpectSound(out, 0);
}

TEST(IPlugVSTProcess, FloatsAreReplaced) {
    PlugAndHost both;
    AEffect* effect = both.plug.Effect();
    Buffers<float> out(300, 9.0F);
    effect->processReplacing(effect, nullptr, out.pointers, 300);
    ExpectSound(out, 0);
}

TEST(IPlugVSTProcess, TheAccumulatingFormAdds) {
    PlugAndHost both;
    AEffect* effect = both.plug.Effect();
    Buffers<float> out(300, 4.0F);
    effect->process(effect, nullptr, out.pointers, 300);
    ExpectSound(out, 0, 4.0F);
}

TEST(IPlugVSTProcess, LongCallsAreCutIntoBlocksOfTheAnnouncedSize) {
    PlugAndHost both;
    both.Dispatch(PlugOp::SetBlockSize, 0, 64);
    AEffect* effect = both.plug.Effect();
    Buffers<double> doubles(150);
    effect->processDoubleReplacing(effect, nullptr, doubles.pointers, 150);
    ExpectSound(doubles, 0);
    Buffers<float> floats(129);
    effect->processReplacing(effect, nullptr, floats.pointers, 129);
    ExpectSound(floats, 150);
    std::vector<int> lengths;
    for (const auto& block : both.plug.blocks)
        lengths.push_back(block.frames);
    EXPECT_EQ(lengths, (std::vector<int>{64, 64, 22, 64, 64, 1}));
}

TEST(IPlugVSTProcess, BeforeAnySizeTheBlocksAre1024Frames) {
    PlugAndHost both;
    AEffect* effect = both.plug.Effect();
    Buffers<float> out(2500);
    effect->processReplacing(effect, nullptr, out.pointers, 2500);
    ExpectSound(out, 0);
    ASSERT_EQ(both.plug.blocks.size(), 3U);
    EXPECT_EQ(both.plug.blocks[0].frames, 1024);
    EXPECT_EQ(both.plug.blocks[2].frames, 452);
}

TEST(IPlugVSTProcess, ABlockOfNoFramesIsStillABlock) {
    PlugAndHost both;
    AEffect* effect = both.plug.Effect();
    Buffers<float> out(4, 9.0F);
    effect->processReplacing(effect, nullptr, out.pointers, 0);
    effect->processDoubleReplacing(effect, nullptr, nullptr, 0);
    ASSERT_EQ(both.plug.blocks.size(), 2U);
    EXPECT_EQ(both.plug.blocks[0].frames, 0);
    EXPECT_EQ(out.left[0], 9.0F);
}

TEST(IPlugVSTProcess, NegativeFramesPlayNothing) {
    PlugAndHost both;
    AEffect* effect = both.plug.Effect();
    Buffers<float> out(4, 9.0F);
    effect->processReplacing(effect, nullptr, out.pointers, -1);
    effect->process(effect, nullptr, out.pointers, std::numeric_limits<int>::min());
    EXPECT_TRUE(both.plug.blocks.empty());
    EXPECT_EQ(out.left[0], 9.0F);
}

TEST(IPlugVSTProcess, MissingBuffersStillLetTheEngineRun) {
    PlugAndHost both;
    AEffect* effect = both.plug.Effect();
    effect->processReplacing(effect, nullptr, nullptr, 100);
    effect->processDoubleReplacing(effect, nullptr, nullptr, 100);
    effect->process(effect, nullptr, nullptr, 100);
    std::vector<float> right(100);
    float* halfFloats[2] = {nullptr, right.data()};
    effect->processReplacing(effect, nullptr, halfFloats, 100);
    EXPECT_EQ(right[0], static_cast<float>(TestPlug::SoundAt(300, 1)));
    std::vector<double> left(2000);
    double* halfDoubles[2] = {left.data(), nullptr};
    effect->processDoubleReplacing(effect, nullptr, halfDoubles, 2000);
    EXPECT_EQ(left[1999], TestPlug::SoundAt(400 + 1999, 0));
    EXPECT_EQ(both.plug.played, 2400);
}

TEST(IPlugVSTProcess, AnInstrumentWithoutInputsNeverTouchesWhatTheHostPasses) {
    PlugAndHost both;
    AEffect* effect = both.plug.Effect();
    Buffers<float> out(8);
    auto* wild =
        reinterpret_cast<float**>(std::uintptr_t{1}); // NOLINT(performance-no-int-to-ptr): wild on purpose
    effect->processReplacing(effect, wild, out.pointers, 8);
    EXPECT_FALSE(both.plug.blocks[0].hadInputs);
}

TEST(IPlugVSTProcess, InputsArriveAsDoublesAndMissingOnesAsSilence) {
    PlugIdentity identity;
    identity.channels = "2-2";
    PlugAndHost both(identity);
    both.Dispatch(PlugOp::SetBlockSize, 0, 4);
    AEffect* effect = both.plug.Effect();
    Buffers<float> in(8, 0.5F);
    in.left[4] = 0.75F;
    Buffers<float> out(8);
    effect->processReplacing(effect, in.pointers, out.pointers, 8);
    effect->processReplacing(effect, nullptr, out.pointers, 4);
    Buffers<double> doubles(4, 0.125);
    effect->processDoubleReplacing(effect, doubles.pointers, doubles.pointers, 4);
    ASSERT_EQ(both.plug.blocks.size(), 4U);
    EXPECT_TRUE(both.plug.blocks[0].hadInputs);
    EXPECT_EQ(both.plug.blocks[0].firstInput, 0.5);
    EXPECT_EQ(both.plug.blocks[1].firstInput, 0.75);
    EXPECT_EQ(both.plug.blocks[2].firstInput, 0.0);
    EXPECT_EQ(both.plug.blocks[3].firstInput, 0.125) << "also when the host works in place";
}

TEST(IPlugVSTProcess, MidiIsWantedAgainAtEveryCall) {
    PlugAndHost both;
    AEffect* effect = both.plug.Effect();
    Buffers<float> out(8);
    Buffers<double> doubles(8);
    effect->processReplacing(effect, nullptr, out.pointers, 8);
    effect->process(effect, nullptr, out.pointers, 8);
    effect->processDoubleReplacing(effect, nullptr, doubles.pointers, 8);
    EXPECT_EQ(both.host.Count(HostOp::WantMidi), 3);
    EXPECT_EQ(both.host.calls[0].value, 1);

    PlugIdentity deaf;
    deaf.wantsMidi = false;
    PlugAndHost other(deaf);
    other.plug.Effect()->processReplacing(other.plug.Effect(), nullptr, out.pointers, 8);
    EXPECT_EQ(other.host.Count(HostOp::WantMidi), 0);
}

TEST(IPlugVSTProcess, DenormalsAreFlushedForTheCallOnly) {
    PlugAndHost both;
    AEffect* effect = both.plug.Effect();
    Buffers<double> out(8);
    effect->processDoubleReplacing(effect, nullptr, out.pointers, 8);
    EXPECT_TRUE(both.plug.blocks[0].denormalsFlushed);
    volatile double smallest = 2.2250738585072014e-308;
    EXPECT_NE(smallest * 0.5, 0.0);
}

TEST(IPlugVSTProcess, TheLockIsHeldForTheWholeCall) {
    PlugAndHost both;
    bool gotIt = true;
    both.plug.inBlock = [&] {
        std::thread other([&] {
            gotIt = both.plug.Lock().TryEnter();
            if (gotIt) both.plug.Lock().Leave();
        });
        other.join();
    };
    both.plug.Effect()->processReplacing(both.plug.Effect(), nullptr, nullptr, 8);
    EXPECT_FALSE(gotIt);
}

TEST(IPlugVSTProcess, ACutChannelGoesToScratchAndLeavesTheHostsBufferAlone) {
    PlugAndHost both;
    VstSpeakerArrangement none{};
    VstSpeakerArrangement mono{};
    mono.numChannels = 1;
    EXPECT_EQ(both.Dispatch(PlugOp::SetSpeakerArrangement, 0, reinterpret_cast<std::intptr_t>(&none), &mono),
              1);
    AEffect* effect = both.plug.Effect();
    Buffers<float> out(16, 9.0F);
    effect->processReplacing(effect, nullptr, out.pointers, 16);
    EXPECT_EQ(out.left[15], static_cast<float>(TestPlug::SoundAt(15, 0)));
    EXPECT_EQ(out.right[15], 9.0F);
    std::vector<double> left(16);
    double* onlyOne[1] = {left.data()};
    effect->processDoubleReplacing(effect, nullptr, onlyOne, 16);
    EXPECT_EQ(left[15], TestPlug::SoundAt(31, 0));

    VstSpeakerArrangement stereo{};
    stereo.numChannels = 2;
    both.Dispatch(PlugOp::SetSpeakerArrangement, 0, reinterpret_cast<std::intptr_t>(&none), &stereo);
    effect->processReplacing(effect, nullptr, out.pointers, 16);
    ExpectSound(out, 32);
}

TEST(IPlugVSTProcess, NothingIsAllocatedInACall) {
    PlugAndHost both;
    both.plug.keepsRecords = false;
    both.host.keepsCalls = false;
    both.Dispatch(PlugOp::SetBlockSize, 0, 64);
    AEffect* effect = both.plug.Effect();
    Buffers<float> floats(500);
    Buffers<double> doubles(500);
    const long before = AllocationCount();
    effect->processReplacing(effect, nullptr, floats.pointers, 500);
    effect->process(effect, nullptr, floats.pointers, 500);
    effect->processDoubleReplacing(effect, nullptr, doubles.pointers, 500);
    EXPECT_EQ(AllocationCount(), before);
    EXPECT_EQ(before > 0, kCountsAllocations);
}

TEST(IPlugVSTProcess, AnExceptionInsideStopsAtTheDoor) {
    PlugAndHost both;
    both.plug.inBlock = [] { throw 1; };
    AEffect* effect = both.plug.Effect();
    effect->processReplacing(effect, nullptr, nullptr, 8);
    effect->process(effect, nullptr, nullptr, 8);
    effect->processDoubleReplacing(effect, nullptr, nullptr, 8);
    EXPECT_EQ(both.plug.played, 0);
    std::thread other([&] {
        EXPECT_TRUE(both.plug.Lock().TryEnter()) << "and the lock is free again";
        both.plug.Lock().Leave();
    });
    other.join();
}

} // namespace
} // namespace Grimworks
