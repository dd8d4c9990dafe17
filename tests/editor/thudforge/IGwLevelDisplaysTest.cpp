#include "editor/thudforge/IGwLevelDisplays.h"

#include "tests/editor/thudforge/DisplayRig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

namespace Grimworks {

namespace {

const IRECT kLine{100, 100, 500, 116};

std::string LevelText(double level) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "MAXIMUM AUDIO LEVEL: %7.3f dB",
                  static_cast<double>(static_cast<float>(20.0 * std::log10(level))));
    return text.data();
}

/// A heap of notes that nothing limits.
void PlayLoud(DisplayRig& rig, double volume) {
    rig.Set(Param::LimiterMode, 0.0);
    rig.Set(Param::Volume, volume);
    for (std::uint8_t note = 36; note < 48; ++note)
        rig.NoteOn(note);
    rig.Play(20);
}

} // namespace

TEST(IGwMaxLevelText, HasNoDecibelsForSilence) {
    DisplayRig rig;
    auto& text = rig.graphics.Attach<IGwMaxLevelText>(&rig.plug, kLine, IText());
    rig.graphics.Settle();
    EXPECT_EQ(text.String(), "MAXIMUM AUDIO LEVEL: -oo dB");
    EXPECT_EQ(text.Text().color, IColor(255, 128, 255, 0));
}

TEST(IGwMaxLevelText, ShowsTheLouderChannel) {
    DisplayRig rig;
    auto& text = rig.graphics.Attach<IGwMaxLevelText>(&rig.plug, kLine, IText());
    rig.Set(Param::Pan, 0.7);
    rig.Set(Param::Volume, 0.3);
    rig.NoteOn(40);
    rig.Play(10);
    ASSERT_NE(rig.plug.PeakLeft(), rig.plug.PeakRight());
    text.OnGUIIdle();
    EXPECT_TRUE(text.IsDirty());
    EXPECT_EQ(text.String(), LevelText(std::max(rig.plug.PeakLeft(), rig.plug.PeakRight())));
    EXPECT_EQ(text.Text().color, IColor(255, 128, 255, 0));
    rig.graphics.Settle();
    rig.graphics.Tick();
    EXPECT_FALSE(text.IsDirty());
}

TEST(IGwMaxLevelText, TurnsRedAboveFullScale) {
    DisplayRig rig;
    auto& text = rig.graphics.Attach<IGwMaxLevelText>(&rig.plug, kLine, IText());
    PlayLoud(rig, 1.0);
    ASSERT_GT(rig.plug.PeakLeft(), 1.0);
    rig.graphics.RunTick();
    EXPECT_EQ(text.Text().color, IColor(255, 255, 0, 0));
    EXPECT_EQ(text.String(), LevelText(std::max(rig.plug.PeakLeft(), rig.plug.PeakRight())));
}

TEST(IGwMaxLevelText, IsNotYetRedJustBelowFullScale) {
    constexpr double kQuiet = 0.05;
    DisplayRig quiet;
    PlayLoud(quiet, kQuiet);
    const double heard = std::max(quiet.plug.PeakLeft(), quiet.plug.PeakRight());
    ASSERT_LT(heard, 1.0);
    DisplayRig rig;
    auto& text = rig.graphics.Attach<IGwMaxLevelText>(&rig.plug, kLine, IText());
    PlayLoud(rig, kQuiet * 0.98 / heard);
    const double level = std::max(rig.plug.PeakLeft(), rig.plug.PeakRight());
    ASSERT_GT(level, 0.9);
    ASSERT_LT(level, 1.0);
    rig.graphics.RunTick();
    EXPECT_EQ(text.Text().color, IColor(255, 128, 255, 0));
}

TEST(IGwResetButton, ForgetsTheLevelWithTheNextBlockOrAtOnce) {
    DisplayRig rig;
    auto& text = rig.graphics.Attach<IGwMaxLevelText>(&rig.plug, kLine, IText());
    rig.graphics.Attach<IGwResetButton>(&rig.plug, 10, 10, IBitmap{nullptr, 48, 40, 2});
    rig.NoteOn(40);
    rig.plug.OnActivate(true);
    rig.Play(5);
    rig.graphics.OnMouseDown(20, 15, kLeftDown);
    EXPECT_GT(rig.plug.PeakLeft(), 0.0);
    rig.Play(1);
    EXPECT_EQ(rig.plug.PeakLeft(), 0.0);
    rig.graphics.RunTick();
    EXPECT_EQ(text.String(), "MAXIMUM AUDIO LEVEL: -oo dB");
    rig.Play(1);
    rig.plug.OnActivate(false);
    ASSERT_GT(rig.plug.PeakLeft(), 0.0);
    rig.graphics.OnMouseDown(20, 15, kLeftDown);
    EXPECT_EQ(rig.plug.PeakLeft(), 0.0);
    EXPECT_EQ(rig.plug.PeakRight(), 0.0);
}

TEST(IGwHostInfoText, TellsRateTempoAndBlockSize) {
    const auto host = [](AEffect*, std::int32_t opcode, std::int32_t, std::intptr_t, void*,
                         float) -> std::intptr_t {
        static VstTimeInfo time{};
        time.tempo = 174.5;
        time.flags = TimeFlag::TempoValid;
        return opcode == HostOp::GetTime ? reinterpret_cast<std::intptr_t>(&time) : 0;
    };
    ThudForge plug(host);
    HeadlessGraphics graphics(plug);
    auto& text = graphics.Attach<IGwHostInfoText>(&plug, kLine, IText());
    plug.Reset();
    graphics.RunTick();
    EXPECT_EQ(text.String(),
              "HOST SAMPLE RATE: 44100.00 Hz    TEMPO: 174.500 BPM    BLOCKSIZE: 1024 samples");
    graphics.Settle();
    EXPECT_FALSE(text.IsDirty());
    AEffect* const effect = plug.Effect();
    effect->dispatcher(effect, PlugOp::SetSampleRate, 0, 0, nullptr, 96000.0F);
    effect->dispatcher(effect, PlugOp::SetBlockSize, 0, 64, nullptr, 0.0F);
    graphics.RunTick();
    EXPECT_EQ(text.String(), "HOST SAMPLE RATE: 96000.00 Hz    TEMPO: 174.500 BPM    BLOCKSIZE: 64 samples");
}

TEST(IGwHostNameText, TellsTheHostAsSoonAsItIsKnown) {
    const auto host = [](AEffect*, std::int32_t opcode, std::int32_t, std::intptr_t, void* ptr,
                         float) -> std::intptr_t {
        if (opcode == HostOp::GetVendorVersion) return 60312;
        if (opcode != HostOp::GetProductString) return 0;
        std::memcpy(ptr, "REAPER", sizeof "REAPER");
        return 1;
    };
    ThudForge plug(host);
    HeadlessGraphics graphics(plug);
    auto& text = graphics.Attach<IGwHostNameText>(&plug, kLine, IText(), "nobody");
    graphics.Settle();
    EXPECT_EQ(text.String(), "nobody");
    AEffect* const effect = plug.Effect();
    effect->dispatcher(effect, PlugOp::Open, 0, 0, nullptr, 0.0F);
    EXPECT_EQ(text.String(), "nobody"); // the host's thread touches no control
    graphics.Tick();
    EXPECT_EQ(text.String(), "64-bit Plugin Host: Reaper (v6.3.12)");
    EXPECT_TRUE(text.IsDirty());
    graphics.Settle();
    graphics.Tick();
    EXPECT_FALSE(text.IsDirty());
}

TEST(IGwVuEyeDrawer, EyesGlowWithTheLevelOfTheirChannelAndAreMirrored) {
    DisplayRig rig;
    rig.graphics.Attach<IGwVuEyeDrawer>(&rig.plug, IRECT(100, 100, 156, 140), true);
    rig.graphics.Attach<IGwVuEyeDrawer>(&rig.plug, IRECT(200, 100, 256, 140), false);
    rig.Set(Param::Pan, 0.8);
    rig.plug.SelectAboutPage();
    rig.NoteOn(40);
    rig.Play(10);
    rig.DrawAll();
    const auto left = static_cast<int>(std::floor(rig.plug.FollowerLeft() * 255.0));
    const auto right = static_cast<int>(std::floor(rig.plug.FollowerRight() * 255.0));
    ASSERT_GT(left, 5);
    ASSERT_NE(left, right);
    EXPECT_EQ(rig.Color(103, 130), Rgb(left, 0, 0));
    EXPECT_EQ(rig.Color(150, 105), kBlack);
    EXPECT_EQ(rig.Color(252, 130), Rgb(right, 0, 0));
    EXPECT_EQ(rig.Color(205, 105), kBlack);
}

TEST(IGwVuEyeDrawer, TheGlowFadesOncePerTickWhileThereIsNoAudio) {
    DisplayRig rig;
    auto& left = rig.graphics.Attach<IGwVuEyeDrawer>(&rig.plug, IRECT(100, 100, 156, 140), true);
    auto& right = rig.graphics.Attach<IGwVuEyeDrawer>(&rig.plug, IRECT(200, 100, 256, 140), false);
    rig.plug.SelectAboutPage();
    rig.NoteOn(40);
    rig.Play(10);
    const double before = rig.plug.FollowerLeft();
    rig.graphics.Tick();
    EXPECT_TRUE(left.IsDirty());
    EXPECT_TRUE(right.IsDirty());
    // A twentieth of half a second: 1102 samples.
    EXPECT_NEAR(rig.plug.FollowerLeft(), before * std::exp(-1102.0 / 22050.0), 1e-9);
}

TEST(IGwVuEyeDrawer, TheGlowStandsWhileAudioRunsOrAnotherPageIsShown) {
    DisplayRig rig;
    rig.graphics.Attach<IGwVuEyeDrawer>(&rig.plug, IRECT(100, 100, 156, 140), true);
    rig.plug.SelectAboutPage();
    rig.NoteOn(40);
    rig.Play(10);
    const double before = rig.plug.FollowerLeft();
    rig.plug.OnActivate(true);
    rig.graphics.Tick();
    EXPECT_EQ(rig.plug.FollowerLeft(), before);
    rig.plug.OnActivate(false);
    rig.plug.SelectSynthPage();
    rig.graphics.Tick();
    EXPECT_EQ(rig.plug.FollowerLeft(), before);
}

} // namespace Grimworks
