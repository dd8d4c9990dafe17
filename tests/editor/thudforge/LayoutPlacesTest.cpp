#include "core/ParameterIds.h"
#include "editor/thudforge/Layout.h"

#include <array>
#include <map>
#include <vector>

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

/// Positions that songs, manuals and hands rely on.
struct Known {
    int param;
    int left;
    int top;
    IRECT caption; ///< empty: not checked
};

class LayoutPlace : public testing::TestWithParam<Known> {};

TEST_P(LayoutPlace, ControlIsWhereItHasAlwaysBeen) {
    const Known& known = GetParam();
    int seen = 0;
    for (const Panel& panel : EditorPanels()) {
        for (const PlacedControl& control : panel.controls) {
            if (control.param != known.param || control.kind == ControlKind::ModeSwitch) continue;
            ++seen;
            EXPECT_EQ(control.rect.L, known.left) << known.param;
            EXPECT_EQ(control.rect.T, known.top) << known.param;
            if (!known.caption.Empty()) {
                EXPECT_EQ(control.caption.rect, known.caption) << known.param;
            }
        }
    }
    EXPECT_EQ(seen, 1) << known.param;
}

const std::array<Known, 66> kKnown{{
    {Param::PitchAmount, 663, 139, {653, 176, 713, 192}},
    {Param::PitchDuration, 719, 139, {709, 176, 769, 192}},
    {Param::PitchPower, 775, 139, {765, 176, 825, 192}},
    {Param::PitchDown, 831, 139, {821, 176, 881, 192}},
    {Osc(0, OscParam::OnOff), 78, 56, {}},
    {Osc(0, OscParam::Waveform), 90, 127, {}},
    {Osc(0, OscParam::Pitch), 212, 83, {197, 113, 257, 129}},
    {Osc(0, OscParam::Tune), 252, 83, {237, 113, 297, 129}},
    {Osc(0, OscParam::Phase), 212, 146, {197, 176, 257, 192}},
    {Osc(0, OscParam::LfoRate), 436, 83, {421, 113, 481, 129}},
    {Osc(0, OscParam::FilterCutoff), 313, 90, {303, 131, 363, 147}},
    {Osc(0, OscParam::FilterResonance), 368, 90, {358, 131, 418, 147}},
    {Osc(0, OscParam::FilterBalance), 318, 146, {}},
    {Osc(0, OscParam::LfoToVolume), 476, 83, {461, 113, 521, 129}},
    {Osc(0, OscParam::LfoToTune), 516, 83, {501, 113, 561, 129}},
    {Osc(0, OscParam::LfoToFilter), 556, 83, {541, 113, 601, 129}},
    {Osc(0, OscParam::LfoToPan), 596, 83, {581, 113, 641, 129}},
    {Osc(0, OscParam::Pan), 516, 146, {501, 176, 561, 192}},
    {Osc(0, OscParam::Saturation), 556, 146, {541, 176, 601, 192}},
    {Osc(0, OscParam::Volume), 596, 146, {581, 176, 641, 192}},
    {Osc(0, OscParam::LfoLinkAll), 83, 166, {}},
    {Osc(0, OscParam::LfoMode), 143, 169, {}},
    {Osc(0, OscParam::LfoTempoSync), 476, 146, {461, 176, 521, 192}},
    {Osc(0, OscParam::FilterTypeLeft), 254, 169, {}},
    {Osc(0, OscParam::FilterTypeRight), 402, 169, {}},
    {Param::EnvAttack, 85, 582, {}},
    {Param::EnvDecay, 133, 582, {}},
    {Param::EnvSustain, 181, 582, {}},
    {Param::EnvRelease, 229, 582, {}},
    {Param::EnvDuration, 229, 518, {}},
    {Param::EnvVelocity, 277, 518, {}},
    {Param::EnvAmount, 277, 582, {}},
    {Param::AdsrShape, 340, 582, {}},
    {Param::FilterAttack, 400, 582, {}},
    {Param::FilterDecay, 448, 582, {}},
    {Param::FilterSustain, 496, 582, {}},
    {Param::FilterRelease, 544, 582, {}},
    {Param::FilterDuration, 544, 518, {}},
    {Param::FilterEnvVelocity, 592, 518, {}},
    {Param::FilterEnvAmount, 592, 582, {}},
    {Param::FilterInputDrive, 665, 243, {650, 273, 710, 289}},
    {Param::FilterResonance, 775, 232, {765, 273, 825, 289}},
    {Param::UnisonDetune, 795, 608, {785, 649, 845, 665}},
    {Param::RingModulationAmount, 978, 292, {963, 321, 1023, 337}},
    {Param::RingModulationFrequency, 918, 234, {903, 263, 963, 279}},
    {Param::RingModulationWaveForm, 978, 234, {}},
    {Param::PhaserRate, 1045, 234, {}},
    {Param::PhaserFeedback, 1105, 234, {}},
    {Param::PhaserTempoSync, 1045, 292, {}},
    {Param::PhaserDepth, 1105, 292, {}},
    {Param::Quantization, 654, 495, {639, 525, 699, 541}},
    {Param::SampleRate, 698, 495, {683, 525, 743, 541}},
    {Param::Gate, 742, 495, {727, 525, 787, 541}},
    {Param::Distortion, 786, 485, {}},
    {Param::DistortionType, 837, 525, {}},
    {Param::DynShaper, 977, 485, {}},
    {Param::DynShaperType, 1035, 485, {}},
    {Param::TempoDelayAmount, 649, 698, {637, 733, 697, 749}},
    {Param::TempoDelayFeedback, 699, 698, {687, 733, 747, 749}},
    {Param::TempoDelayDump, 749, 698, {737, 733, 797, 749}},
    {Param::TempoDelaySpread, 799, 698, {787, 733, 847, 749}},
    {Param::Pan, 884, 698, {872, 733, 932, 749}},
    {Param::Saturation, 934, 698, {922, 733, 982, 749}},
    {Param::DryWet, 984, 698, {972, 733, 1032, 749}},
    {Param::LimiterLevel, 1034, 698, {1022, 733, 1082, 749}},
    {Param::Volume, 1084, 683, {1079, 733, 1139, 749}},
}};

INSTANTIATE_TEST_SUITE_P(Synth, LayoutPlace, testing::ValuesIn(kKnown));

struct KnownLabel {
    int param;
    const char* text;
    IRECT rect;
};

TEST(LayoutPlaces, LabelsStandWhereTheyHaveAlwaysStood) {
    const std::vector<KnownLabel> known{
        {Osc(0, OscParam::Pitch), "Pitch", {197, 69, 257, 85}},
        {Osc(0, OscParam::Tune), "Tune", {237, 69, 297, 85}},
        {Osc(0, OscParam::Phase), "Phase", {197, 132, 257, 148}},
        {Osc(0, OscParam::LfoRate), "Freq.", {421, 69, 481, 85}},
        {Osc(0, OscParam::FilterCutoff), "Cutoff", {303, 76, 363, 92}},
        {Osc(0, OscParam::FilterResonance), "Reso/BW", {358, 76, 418, 92}},
        {Osc(0, OscParam::LfoToTune), "Tune", {501, 69, 561, 85}},
        {Osc(0, OscParam::LfoToFilter), "Filter", {541, 69, 601, 85}},
        {Osc(0, OscParam::LfoTempoSync), "Sync.", {461, 132, 521, 148}},
        {Osc(0, OscParam::LfoMode), "LFO Mode", {143, 151, 205, 167}},
        {Param::EnvAmount, "Amount", {262, 569, 322, 585}},
        {Param::AdsrShape, "ADSR Shape", {325, 569, 385, 585}},
        {Param::BassLayerClick, "Click", {170, 684, 230, 700}},
        {Param::BassLayerAmount, "Sub-Osc", {220, 684, 280, 700}},
        {Param::RingModulationAmount, "Amount", {963, 278, 1023, 294}},
        {Param::RingModulationFrequency, "Rate", {903, 220, 963, 236}},
        {Param::RingModulationWaveForm, "Waveform", {963, 220, 1023, 236}},
        {Param::PhaserRate, "Rate", {1030, 220, 1090, 236}},
        {Param::PhaserFeedback, "Feedb.", {1090, 220, 1150, 236}},
        {Param::PhaserTempoSync, "Sync.", {1030, 278, 1090, 294}},
        {Param::PhaserDepth, "Amount", {1090, 278, 1150, 294}},
        {Param::Distortion, "Amount", {776, 470, 836, 486}},
        {Param::HighAmount, "High", {961, 647, 1021, 663}},
        {Param::DumpExpand, "LP/HP", {1011, 647, 1071, 663}},
    };
    std::map<int, PlacedLabel> labels;
    for (const Panel& panel : EditorPanels()) {
        for (const PlacedControl& control : panel.controls) {
            if (control.param >= 0 && *control.label.text != '\0') labels[control.param] = control.label;
        }
    }
    for (const KnownLabel& label : known) {
        EXPECT_STREQ(labels[label.param].text, label.text);
        EXPECT_EQ(labels[label.param].rect, label.rect) << label.text << " of " << label.param;
    }
}

struct KnownPlace {
    ControlKind kind;
    int direction;
    IRECT rect;
};

TEST(LayoutPlaces, DisplaysAndButtonsStandWhereTheyHaveAlwaysStood) {
    const std::vector<KnownPlace> known{
        {ControlKind::WavePicture, 0, {90, 80, 195, 120}},
        {ControlKind::CurveDraw, 128, {837, 391, 965, 519}},
        {ControlKind::CurvePreview, 120, {653, 390, 773, 426}},
        {ControlKind::PresetSwitch, 0, {647, 551, 667, 571}},
        {ControlKind::PresetSwitch, 1, {846, 551, 866, 571}},
        {ControlKind::RestorePreset, 0, {868, 551, 916, 571}},
        {ControlKind::FileSelector, 0, {916, 551, 964, 571}},
        {ControlKind::FileSelector, 1, {964, 551, 1012, 571}},
        {ControlKind::PlayButton, 0, {1012, 551, 1060, 571}},
        {ControlKind::WaveDrawer, 0, {109, 110, 1109, 430}},
        {ControlKind::FreezeButton, 0, {109, 430, 219, 460}},
        {ControlKind::ZoomSwitch, 0, {954, 435, 979, 460}},
        {ControlKind::ZoomSwitch, 1, {1079, 435, 1104, 460}},
        {ControlKind::WaveSelect, 1, {224, 435, 326, 460}},
        {ControlKind::HostNameText, 0, {380, 804, 840, 820}},
    };
    for (const KnownPlace& place : known) {
        int seen = 0;
        for (const Panel& panel : EditorPanels()) {
            for (const PlacedControl& control : panel.controls) {
                if (control.kind != place.kind || control.direction != place.direction) continue;
                ++seen;
                EXPECT_EQ(control.rect, place.rect) << static_cast<int>(place.kind);
            }
        }
        EXPECT_EQ(seen, 1) << static_cast<int>(place.kind);
    }
}

} // namespace
} // namespace Grimworks
