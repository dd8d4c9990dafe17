#include "editor/thudforge/EditorPictures.h"

#include "editor/thudforge/IGwCurve.h"
#include "tests/editor/thudforge/DisplayRig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace Grimworks {

namespace {

/// All six pictures, each with its control.
struct PictureRig : DisplayRig {
    PictureRig() {
        for (int i = 0; i < 3; ++i)
            pictures.SetWave(i, &Add(pictures.WavePoints(i)));
        pictures.SetEnvelope(EditorPictures::Volume, &Add(pictures.EnvelopePoints(EditorPictures::Volume)));
        pictures.SetEnvelope(EditorPictures::Filter, &Add(pictures.EnvelopePoints(EditorPictures::Filter)));
        pictures.SetPitch(&Add(pictures.PitchPoints()));
        pictures.Update();
        graphics.Settle();
    }

    IGwCurve& Add(std::span<const double> points) {
        const int top = 50 * graphics.ControlCount();
        auto& curve = graphics.Attach<IGwCurve>(&plug, IRECT(10, top, 220, top + 40), points);
        curves.push_back(&curve);
        return curve;
    }

    /// Which pictures are drawn again for a change of a parameter, by their places.
    std::vector<int> Redrawn(int id) {
        pictures.Changed(id);
        pictures.Update();
        std::vector<int> dirty;
        for (std::size_t i = 0; i < curves.size(); ++i) {
            if (curves[i]->IsDirty()) dirty.push_back(static_cast<int>(i));
        }
        graphics.Settle();
        return dirty;
    }

    EditorPictures pictures{plug};
    std::vector<IGwCurve*> curves;
};

using Places = std::vector<int>;

} // namespace

TEST(EditorPictures, HaveThePointsOfTheirCurves) {
    const PictureRig rig;
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(rig.pictures.WavePoints(i).size(), 105U);
    EXPECT_EQ(rig.pictures.EnvelopePoints(EditorPictures::Volume).size(), 116U);
    EXPECT_EQ(rig.pictures.EnvelopePoints(EditorPictures::Filter).size(), 116U);
    EXPECT_EQ(rig.pictures.PitchPoints().size(), 198U);
    EXPECT_TRUE(rig.pictures.WavePoints(3).empty());
    EXPECT_TRUE(rig.pictures.WavePoints(-1).empty());
}

TEST(EditorPictures, AWaveAndAPhaseRedrawTheirOscillator) {
    PictureRig rig;
    EXPECT_EQ(rig.Redrawn(1), (Places{0}));
    EXPECT_EQ(rig.Redrawn(2), (Places{0}));
    EXPECT_EQ(rig.Redrawn(22), (Places{1}));
    EXPECT_EQ(rig.Redrawn(44), (Places{2}));
    EXPECT_EQ(rig.Redrawn(3), (Places{}));
}

TEST(EditorPictures, EnvelopeParametersRedrawTheirEnvelope) {
    PictureRig rig;
    for (const int id : {63, 64, 65, 66, 67, 69})
        EXPECT_EQ(rig.Redrawn(id), (Places{3})) << id;
    for (const int id : {70, 71, 72, 73, 74, 76})
        EXPECT_EQ(rig.Redrawn(id), (Places{4})) << id;
    EXPECT_EQ(rig.Redrawn(79), (Places{3, 4}));
    for (const int id : {88, 89, 90, 91, 92})
        EXPECT_EQ(rig.Redrawn(id), (Places{5})) << id;
    for (const int id : {80, 87, 93, 137, -1, 158})
        EXPECT_EQ(rig.Redrawn(id), (Places{})) << id;
}

TEST(EditorPictures, AnEnvelopeStandsOnTheGroundOfItsDisplay) {
    PictureRig rig;
    rig.Set(Param::EnvAttack, 0.0);
    rig.Set(Param::EnvDecay, 0.0);
    rig.Set(Param::EnvRelease, 0.0);
    rig.Set(Param::EnvSustain, 0.5);
    rig.Set(Param::EnvAmount, 1.0);
    rig.pictures.Changed(Param::EnvSustain);
    rig.pictures.Update();
    const auto points = rig.pictures.EnvelopePoints(EditorPictures::Volume);
    EXPECT_EQ(points.front(), -1.0);
    EXPECT_EQ(points.back(), -1.0);
    EXPECT_NEAR(points[60], 0.0, 1e-9); // half of the height
}

TEST(EditorPictures, ShowTheWaveThatIsSelected) {
    PictureRig rig;
    rig.Set(Osc(0, OscParam::Waveform), 0.0); // a sine
    rig.Set(Osc(0, OscParam::Phase), 0.5);
    rig.pictures.Changed(1);
    rig.pictures.Update();
    const auto points = rig.pictures.WavePoints(0);
    for (std::size_t n = 0; n < points.size(); ++n)
        EXPECT_NEAR(points[n], std::sin(2.0 * 3.14159265358979 * static_cast<double>(n) / 105.0), 1e-3) << n;
}

} // namespace Grimworks
