#include "core/Limits.h"
#include "core/RandomGenerator.h"
#include "editor/thudforge/IGwPresetButtons.h"
#include "tests/editor/thudforge/EditorRig.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

std::vector<LICE_pixel> Pixels(LICE_IBitmap& bitmap) {
    const LICE_pixel* bits = bitmap.getBits();
    return {bits, bits + static_cast<std::ptrdiff_t>(bitmap.getRowSpan()) * bitmap.getHeight()};
}

/// The picture as it is when everything is drawn anew.
std::vector<LICE_pixel> WholePicture(EditorRig& rig) {
    rig.graphics.SetAllControlsDirty();
    rig.graphics.Draw(IRECT(0, 0, kEditorWidth, kEditorHeight));
    return Pixels(rig.graphics.screen);
}

/// The first place where two pictures differ, as text; empty for none.
std::string Difference(const std::vector<LICE_pixel>& a, const std::vector<LICE_pixel>& b) {
    const auto found = std::mismatch(a.begin(), a.end(), b.begin());
    if (found.first == a.end()) return {};
    const auto place = found.first - a.begin();
    return std::to_string(place % kEditorWidth) + ", " + std::to_string(place / kEditorWidth);
}

TEST(PanelsRedraw, PieceByPieceGivesTheSamePictureAsAWhole) {
    EditorRig rig;
    rig.graphics.Settle();
    WholePicture(rig);
    RandomGenerator random(42);
    for (int round = 0; round < 40; ++round) {
        for (int i = 0; i < 5; ++i)
            rig.plug.SetParameterFromHost(random.Next() % kLiveParameters, random.Next() / 32767.0);
        rig.graphics.Settle();
        const std::vector<LICE_pixel> pieces = Pixels(rig.graphics.screen);
        ASSERT_EQ(Difference(pieces, WholePicture(rig)), "") << "round " << round;
    }
}

TEST(PanelsRedraw, AnotherProgramIsDrawnWhole) {
    EditorRig rig;
    rig.graphics.Settle();
    WholePicture(rig);
    for (const int program : {18, 61, 127, 0}) {
        RecallPreset(rig.plug, program);
        rig.graphics.Settle();
        const std::vector<LICE_pixel> pieces = Pixels(rig.graphics.screen);
        ASSERT_EQ(Difference(pieces, WholePicture(rig)), "") << "program " << program;
    }
}

TEST(PanelsRedraw, APageLeavesNothingOfTheOneBefore) {
    EditorRig rig;
    for (const int page : {2, 0, 2}) {
        rig.ShowPage(page);
        rig.graphics.Settle();
        const std::vector<LICE_pixel> pieces = Pixels(rig.graphics.screen);
        ASSERT_EQ(Difference(pieces, WholePicture(rig)), "") << "page " << page;
    }
}

TEST(PanelsRedraw, AQuietEditorDrawsNothing) {
    EditorRig rig;
    rig.graphics.Settle();
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(rig.graphics.RunTick().Empty()) << i;
}

TEST(PanelsRedraw, AKnobThatMovesCostsItsOwnPlaceOnly) {
    EditorRig rig;
    rig.graphics.Settle();
    rig.plug.SetParameterFromHost(Param::UnisonDetune, 0.6);
    const IRECT drawn = rig.graphics.RunTick();
    const IRECT panel = EditorPanel(PanelId::Unison).frame;
    EXPECT_FALSE(drawn.Empty());
    EXPECT_EQ(drawn.Union(panel), panel);
}

} // namespace
} // namespace Grimworks
