#include "editor/thudforge/IGwWaveDrawer.h"

#include "tests/editor/thudforge/DisplayRig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace Grimworks {

namespace {

const IRECT kRect{109, 110, 1109, 430};
constexpr int kLeft = 109;
constexpr int kUpperCenter = 190; // a quarter of 320 below the top
constexpr int kLowerCenter = 350;

/// Upper and lower row of a value of an entry.
int UpperRow(double value) {
    return static_cast<int>(190.0 - std::clamp(value, -1.0, 1.0) * 80.0);
}
int LowerRow(double value) {
    return std::min(static_cast<int>(350.0 - std::clamp(value, -1.0, 1.0) * 80.0), 429);
}

/// A scope over an instrument that has played for a while.
struct ScopeRig : DisplayRig {
    explicit ScopeRig(int blocks = 60) {
        Set(Osc(0, OscParam::OnOff), 1.0);
        Set(Osc(0, OscParam::LfoRate), 0.35);
        Set(Osc(1, OscParam::OnOff), 1.0);
        Set(Osc(1, OscParam::LfoRate), 0.6);
        Set(Osc(2, OscParam::OnOff), 1.0);
        Set(Osc(2, OscParam::LfoRate), 0.9);
        Set(Param::Pan, 0.3);
        plug.SelectScopePage();
        NoteOn(40);
        Play(blocks);
    }

    void ShowOnly(int wave) {
        for (int w = 0; w < IGwWaveDrawer::kWaves; ++w)
            drawer.Show(w, w == wave);
    }

    void SetFillMode(int mode) {
        while (drawer.GetFillMode() != mode)
            drawer.NextFillMode();
    }

    [[nodiscard]] ScopeRing::Entry At(int column) const {
        return plug.Scope().Read(plug.Scope().WritePos() + static_cast<std::uint32_t>(column));
    }

    /// Whether all rows from a to b of a column have the colour.
    [[nodiscard]] bool IsRun(int column, int a, int b, LICE_pixel color) {
        for (int y = std::min(a, b); y <= std::max(a, b); ++y) {
            if (Color(kLeft + column, y) != color) return false;
        }
        return true;
    }

    IGwWaveDrawer& drawer = graphics.Attach<IGwWaveDrawer>(&plug, kRect);
};

const LICE_pixel kLfo1 = Rgb(0, 100, 255);
const LICE_pixel kLfo1Fill = Rgb(0, 50, 127);

} // namespace

TEST(IGwWaveDrawer, StartsHalfFilledWithLfosAndOutput) {
    const ScopeRig rig(0);
    EXPECT_EQ(rig.drawer.GetFillMode(), 1);
    const std::array<bool, 6> expected{true, true, true, false, false, true};
    for (int wave = 0; wave < 6; ++wave)
        EXPECT_EQ(rig.drawer.Shows(wave), expected[static_cast<std::size_t>(wave)]) << wave;
    EXPECT_FALSE(rig.drawer.Shows(-1));
    EXPECT_FALSE(rig.drawer.Shows(6));
}

TEST(IGwWaveDrawer, FillModesGoAround) {
    ScopeRig rig(0);
    for (const int expected : {2, 0, 1, 2}) {
        rig.drawer.NextFillMode();
        EXPECT_EQ(rig.drawer.GetFillMode(), expected);
    }
}

TEST(IGwWaveDrawer, TwoFaintLinesMarkTheCenters) {
    ScopeRig rig(0);
    rig.ShowOnly(-1);
    rig.DrawAll();
    for (const int row : {kUpperCenter, kLowerCenter}) {
        for (const int x : {109, 600, 1108}) {
            const LICE_pixel color = rig.Color(x, row);
            const auto level = static_cast<int>(color & 0xFFU); // 255 * 127 / 255 * 0.5
            EXPECT_NEAR(level, 63, 1) << x;
            EXPECT_EQ(color, Gray(level));
        }
        EXPECT_EQ(rig.Color(600, row + 1), kBlack);
        EXPECT_EQ(rig.Color(1109, row), kBlack);
    }
}

TEST(IGwWaveDrawer, HollowWavesAreLinesFromRowToRow) {
    ScopeRig rig;
    rig.ShowOnly(IGwWaveDrawer::Lfo1);
    rig.SetFillMode(IGwWaveDrawer::Hollow);
    rig.DrawAll();
    double highest = 0.0;
    for (int c = 1; c < 1000; ++c) {
        const double before = rig.At(c - 1).lfo1;
        const double now = rig.At(c).lfo1;
        highest = std::max(highest, now);
        ASSERT_TRUE(rig.IsRun(c, UpperRow(before), UpperRow(now), kLfo1)) << c;
        ASSERT_TRUE(rig.IsRun(c, LowerRow(before), LowerRow(now), kLfo1)) << c;
        const int above = std::min(UpperRow(before), UpperRow(now)) - 1;
        if (above == kUpperCenter) continue;
        ASSERT_EQ(rig.Color(kLeft + c, above), kBlack) << c;
    }
    EXPECT_GT(highest, 0.9);
}

TEST(IGwWaveDrawer, TheFirstColumnOnlyStartsTheTrace) {
    ScopeRig rig(44); // the ring is full, and its oldest entry is not 0
    ASSERT_GT(std::fabs(rig.At(0).lfo1), 0.05);
    rig.ShowOnly(IGwWaveDrawer::Lfo1);
    for (int mode = 0; mode < 3; ++mode) {
        rig.SetFillMode(mode);
        rig.DrawAll();
        for (int y = 110; y < 430; ++y) {
            if (y == kUpperCenter || y == kLowerCenter) continue;
            ASSERT_EQ(rig.Color(kLeft, y), kBlack) << y;
        }
    }
}

TEST(IGwWaveDrawer, HalfFilledWavesStandOnTheirCenter) {
    ScopeRig rig;
    rig.ShowOnly(IGwWaveDrawer::Lfo1);
    rig.DrawAll();
    int filled = 0;
    for (int c = 1; c < 1000; ++c) {
        const int before = UpperRow(rig.At(c - 1).lfo1);
        const int now = UpperRow(rig.At(c).lfo1);
        ASSERT_TRUE(rig.IsRun(c, before, now, kLfo1)) << c;
        if (now > kUpperCenter - 3) continue;
        const int below = std::max(before, now) + 1;
        if (below > kUpperCenter) continue;
        ASSERT_TRUE(rig.IsRun(c, below, kUpperCenter, kLfo1Fill)) << c;
        ++filled;
    }
    EXPECT_GT(filled, 200);
}

TEST(IGwWaveDrawer, FilledWavesAreMirroredAroundTheirCenter) {
    ScopeRig rig;
    rig.ShowOnly(IGwWaveDrawer::Lfo1);
    rig.SetFillMode(IGwWaveDrawer::Filled);
    rig.DrawAll();
    for (int c = 1; c < 1000; ++c) {
        const double value = rig.At(c).lfo1;
        ASSERT_TRUE(rig.IsRun(c, UpperRow(value), UpperRow(-value), kLfo1)) << c;
        ASSERT_TRUE(rig.IsRun(c, LowerRow(value), LowerRow(-value), kLfo1)) << c;
        ASSERT_EQ(rig.Color(kLeft + c, std::min(UpperRow(value), UpperRow(-value)) - 1), kBlack) << c;
    }
}

TEST(IGwWaveDrawer, EveryWaveHasItsColors) {
    ScopeRig rig;
    struct Look {
        int wave;
        LICE_pixel line;
        LICE_pixel fill;
        double ScopeRing::Entry::*signal;
    };
    const std::array<Look, 6> looks{{
        {IGwWaveDrawer::Lfo1, Rgb(0, 100, 255), Rgb(0, 50, 127), &ScopeRing::Entry::lfo1},
        {IGwWaveDrawer::Lfo2, Rgb(0, 220, 255), Rgb(0, 100, 127), &ScopeRing::Entry::lfo2},
        {IGwWaveDrawer::Lfo3, Rgb(0, 255, 100), Rgb(0, 127, 50), &ScopeRing::Entry::lfo3},
        {IGwWaveDrawer::VolumeEnv, Rgb(127, 127, 127), Rgb(32, 32, 32), &ScopeRing::Entry::volumeEnv},
        {IGwWaveDrawer::FilterEnv, Rgb(127, 127, 255), Rgb(40, 0, 224), &ScopeRing::Entry::filterEnv},
        {IGwWaveDrawer::Output, Rgb(255, 250, 250), Rgb(127, 127, 127), &ScopeRing::Entry::left},
    }};
    for (const Look& look : looks) {
        rig.ShowOnly(look.wave);
        rig.DrawAll();
        int filled = 0;
        for (int c = 1; c < 1000; ++c) {
            const int before = UpperRow(rig.At(c - 1).*look.signal);
            const int now = UpperRow(rig.At(c).*look.signal);
            ASSERT_TRUE(rig.IsRun(c, before, now, look.line)) << look.wave << " " << c;
            if (std::max(before, now) + 1 >= kUpperCenter) continue;
            ASSERT_EQ(rig.Color(kLeft + c, kUpperCenter - 1), look.fill) << look.wave << " " << c;
            ++filled;
        }
        EXPECT_GT(filled, 0) << look.wave;
    }
}

TEST(IGwWaveDrawer, TheOutputHasLeftAboveAndRightBelow) {
    ScopeRig rig;
    rig.ShowOnly(IGwWaveDrawer::Output);
    rig.SetFillMode(IGwWaveDrawer::Hollow);
    rig.DrawAll();
    const LICE_pixel line = Rgb(255, 250, 250);
    double apart = 0.0;
    for (int c = 1; c < 1000; ++c) {
        const ScopeRing::Entry before = rig.At(c - 1);
        const ScopeRing::Entry now = rig.At(c);
        apart = std::max(apart, std::fabs(now.left - now.right));
        ASSERT_TRUE(rig.IsRun(c, UpperRow(before.left), UpperRow(now.left), line)) << c;
        ASSERT_TRUE(rig.IsRun(c, LowerRow(before.right), LowerRow(now.right), line)) << c;
    }
    EXPECT_GT(apart, 0.05);
}

TEST(IGwWaveDrawer, AGapOfTwentyColumnsMarksThePause) {
    ScopeRig rig;
    rig.plug.SetScopeFrozen(true);
    rig.plug.SetScopeFrozen(false);
    rig.ShowOnly(IGwWaveDrawer::VolumeEnv);
    rig.SetFillMode(IGwWaveDrawer::Filled);
    rig.DrawAll();
    for (int c = 980; c < 1000; ++c)
        EXPECT_EQ(rig.Color(kLeft + c, kUpperCenter - 1), kBlack) << c;
    EXPECT_EQ(rig.Color(kLeft + 980, kUpperCenter), Rgb(127, 127, 127)); // a point on the center
    EXPECT_NE(rig.Color(kLeft + 979, kUpperCenter - 1), kBlack);
}

TEST(IGwWaveDrawer, ItsFrameIsRed) {
    ScopeRig rig(0);
    rig.drawer.ShowFrame(true);
    rig.DrawAll();
    EXPECT_EQ(rig.Color(109, 110), Rgb(255, 0, 0));
    EXPECT_EQ(rig.Color(1108, 300), Rgb(255, 0, 0));
    EXPECT_EQ(rig.Color(500, 429), Rgb(255, 0, 0));
}

TEST(IGwWaveDrawer, StaysDirtyAsLongAsItIsShown) {
    ScopeRig rig(0);
    rig.graphics.RunTick();
    EXPECT_TRUE(rig.drawer.IsDirty());
    rig.drawer.Hide(true);
    rig.graphics.RunTick();
    rig.graphics.RunTick();
    EXPECT_FALSE(rig.drawer.IsDirty());
}

TEST(IGwWaveDrawer, TheWheelZooms) {
    ScopeRig rig(0);
    rig.graphics.OnMouseWheel(500, 200, IMouseMod(), 1);
    EXPECT_DOUBLE_EQ(rig.plug.Scope().Zoom(), 0.9);
    EXPECT_EQ(rig.plug.Scope().ZoomPercent(), 110);
    rig.graphics.OnMouseWheel(500, 200, IMouseMod(), -1);
    EXPECT_DOUBLE_EQ(rig.plug.Scope().Zoom(), 1.0);
    EXPECT_EQ(rig.plug.Scope().ZoomPercent(), 100);
    rig.graphics.OnMouseWheel(500, 200, IMouseMod(), 2);
    EXPECT_DOUBLE_EQ(rig.plug.Scope().Zoom(), 0.8);
    EXPECT_EQ(rig.plug.Scope().ZoomPercent(), 120);
    rig.graphics.OnMouseWheel(500, 200, IMouseMod(), -3);
    EXPECT_DOUBLE_EQ(rig.plug.Scope().Zoom(), 1.1);
    rig.graphics.OnMouseWheel(500, 200, IMouseMod(), 0);
    EXPECT_DOUBLE_EQ(rig.plug.Scope().Zoom(), 1.1);
}

} // namespace Grimworks
