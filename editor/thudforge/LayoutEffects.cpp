#include "editor/thudforge/LayoutRules.h"

#include "core/Limits.h"
#include "effects/FilterNames.h"

#include <array>

namespace Grimworks {

namespace {

using namespace LayoutRules;

/// A panel whose unit can be switched off: the switch stands before the title.
Panel Switched(PanelId id, Section section, const IRECT& frame, const char* title, int onOff) {
    Panel panel = Framed(id, section, frame, title);
    panel.controls.push_back(OnOff(onOff, frame.L + 6, frame.T + 3));
    panel.titleX = frame.L + 31;
    panel.titleY = frame.T + 6;
    return panel;
}

void AddFilterType(Panel& panel, const char* label, int param, int types, int left, const char* tooltip) {
    auto& list = panel.controls;
    list.push_back(Picture(Bitmap::FilterTypeDisplay, left, 308, 62, 19));
    PlacedControl menu =
        Placed(ControlKind::FilterMenu, param, Bitmap::None, Sized(left, 311, 62, 16), tooltip);
    menu.label = {label, Sized(left, 294, 62, 16), TextStyle::Label};
    menu.style = TextStyle::SmallName;
    list.push_back(menu);
    list.push_back(
        Step(param, Bitmap::NextFilter, Sized(left + 7, 333, 48, 20), types, 1, true, "Select Next Filter"));
}

} // namespace

Panel FilterUnitPanel() {
    Panel panel = Switched(PanelId::FilterUnit, Section::Filters, {646, 195, 891, 366}, "FILTER UNIT",
                           Param::FilterOnOff);
    auto& list = panel.controls;
    list.push_back(Knob("Drive", 650, 229, 30, Param::FilterInputDrive, Bitmap::FilterDriveKnob));
    list.push_back(Knob("Cutoff", 708, 218, 40, Param::FilterCutoff, Bitmap::FilterKnob));
    list.push_back(Knob("Reso/BW", 765, 218, 40, Param::FilterResonance, Bitmap::ResonanceKnob));
    list.push_back(Knob("Speed", 823, 229, 30, Param::FilterTransition, Bitmap::FilterTransitionKnob));
    list.push_back(Picture(Bitmap::Slider104, 717, 311, 104, 14));
    PlacedControl fader =
        Placed(ControlKind::Fader, Param::FilterType, Bitmap::SliderHandle, Sized(717, 311, 104, 14));
    fader.caption.rect = Sized(717, 336, 104, 16);
    fader.caption.hit = Sized(724, 336, 90, 14);
    list.push_back(fader);
    AddFilterType(panel, "Filter 1", Param::FilterMode1, static_cast<int>(kFilter1Names.size()), 651,
                  "Filter 1 Type Selection");
    AddFilterType(panel, "Filter 2", Param::FilterMode2, static_cast<int>(kFilter2Names.size()), 825,
                  "Filter 2 Type Selection");
    return panel;
}

Panel ModulationPanel() {
    Panel panel = Switched(PanelId::ModulationEffects, Section::Modulation, {893, 195, 1152, 366},
                           "MODULATION EFFECTS", Param::ModulationOnOff);
    constexpr int kSmall = 30;
    auto& list = panel.controls;
    list.push_back(Knob("Rate", 903, 220, kSmall, Param::RingModulationFrequency, Bitmap::ModFxKnob));
    list.push_back(
        Knob("Waveform", 963, 220, kSmall, Param::RingModulationWaveForm, Bitmap::ModFxWaveformKnob));
    list.push_back(Knob("Amount", 963, 278, kSmall, Param::RingModulationAmount, Bitmap::ModFxAmountKnob));
    list.push_back(Knob("Rate", 1030, 220, kSmall, Param::PhaserRate, Bitmap::ModFxKnob));
    list.push_back(Knob("Feedb.", 1090, 220, kSmall, Param::PhaserFeedback, Bitmap::ModFxKnob));
    list.push_back(Knob("Sync.", 1030, 278, kSmall, Param::PhaserTempoSync, Bitmap::ModFxSyncKnob, 7));
    list.push_back(Knob("Amount", 1090, 278, kSmall, Param::PhaserDepth, Bitmap::ModFxAmountKnob));
    // The panel's captions stand one pixel higher than elsewhere, to part the two rows.
    for (PlacedControl& control : list) {
        if (control.kind != ControlKind::Knob) continue;
        --control.caption.rect.T;
        --control.caption.rect.B;
        control.caption.hit.B = control.caption.hit.T + 13;
    }
    PlacedControl sync = Plain(ControlKind::SyncButton, Bitmap::Sync, Sized(1096, 343, 48, 20));
    sync.tooltip = "Phaser Rate To Tempo";
    list.push_back(sync);
    panel.engravings = {Line(1026, 222, 1026, 360, panel.section),
                        Heading("RING MODULATOR", 903, 346, 118, panel.section),
                        Heading("PHASER", 1032, 346, 60, panel.section)};
    return panel;
}

namespace {

void AddCurve(Panel& panel) {
    auto& list = panel.controls;
    list.push_back(Picture(Bitmap::CurveDisplay, 837, 391, 128, 128));
    list.push_back(Picture(Bitmap::PreviewDisplay, 653, 390, 120, 36));
    PlacedControl draw = Plain(ControlKind::CurveDraw, Bitmap::None, {837, 391, 965, 519}, 128);
    draw.tooltip = "Distortion Curve Draw Area";
    list.push_back(draw);
    PlacedControl preview = Plain(ControlKind::CurvePreview, Bitmap::None, {653, 390, 773, 426}, 120);
    preview.tooltip = "Distortion Curve Signal Preview";
    list.push_back(preview);
    PlacedControl name = Plain(ControlKind::Text, Bitmap::None, {653, 432, 782, 448});
    name.text = "Curve Preview";
    list.push_back(name);
    list.push_back(Picture(Bitmap::CurveNameDisplay, 834, 521, 135, 20));
    PlacedControl menu = Placed(ControlKind::CurveMenu, Param::DistortionType, Bitmap::None,
                                {837, 525, 965, 541}, "Distortion Curve Selection");
    menu.style = TextStyle::SmallName;
    list.push_back(menu);
    list.push_back(Step(Param::DistortionType, Bitmap::Previous, Sized(837, 370, 20, 20), kCurves, 0, false,
                        "Select Previous Curve"));
    list.push_back(Step(Param::DistortionType, Bitmap::Next, Sized(945, 370, 20, 20), kCurves, 1, false,
                        "Select Next Curve"));
}

/// The knobs that crush the signal before the curve, and how much of the curve is heard.
void AddCrushers(Panel& panel) {
    auto& list = panel.controls;
    constexpr std::array<const char*, 3> kLabels{"BitCrash", "SmpRate", "Gate"};
    constexpr std::array<const char*, 3> kFirstTexts{"64 bit", "44100 Hz", "-oo dB"};
    constexpr std::array<int, 3> kBitmaps{Bitmap::BitCrashKnob, Bitmap::SampleRateKnob, Bitmap::GateKnob};
    for (int i = 0; i < 3; ++i) {
        const auto k = static_cast<std::size_t>(i);
        PlacedControl knob = Knob(kLabels[k], 639 + 44 * i, 481, 30, Param::Quantization + i, kBitmaps[k]);
        knob.label.style = TextStyle::LabelNarrow;
        knob.caption.text = kFirstTexts[k];
        list.push_back(knob);
    }
    list.push_back(Knob("Amount", 776, 470, 40, Param::Distortion, Bitmap::DistoKnob));
    list.back().rect = Sized(786, 485, 40, 40);
}

/// Buttons of the curve stage; the shaper's stand with it.
void AddCurveButtons(Panel& panel) {
    auto& list = panel.controls;
    list.push_back(Switch(Param::DistortionLoudness, Bitmap::DistoMode, 654, 454, 62, 20));
    PlacedControl restore = Plain(ControlKind::RestoreCurve, Bitmap::Restore, Sized(724, 454, 48, 20));
    restore.tooltip = "Restore Original Curve";
    list.push_back(restore);
    PlacedControl pre = Switch(Param::FilterEnvToDistortion, Bitmap::Pre, 783, 407, 48, 20);
    pre.label = {"Filter Env.", LabelRect(777, 390), TextStyle::Label};
    list.push_back(pre);
    list.push_back(Switch(Param::FilterEnvToDynShaper, Bitmap::Post, 783, 431, 48, 20));
    PlacedControl interp = Step(Param::DistortionInterpMode, Bitmap::InterpMode, Sized(976, 391, 48, 20), 4,
                                1, true, "Distortion Curve Interpolation");
    interp.caption.rect = Sized(1028, 394, 120, 16);
    interp.caption.hit = Sized(1028, 394, 116, 14);
    interp.caption.style = TextStyle::ValueLeft;
    list.push_back(interp);
}

void AddShaper(Panel& panel) {
    auto& list = panel.controls;
    PlacedControl mode = Step(Param::DynShaperMode, Bitmap::ShaperMode, Sized(976, 440, 48, 20), 4, 1, true,
                              "Dynamic Shaper Mode");
    mode.caption.rect = Sized(1028, 443, 120, 16);
    mode.caption.hit = Sized(1028, 443, 116, 14);
    mode.caption.style = TextStyle::ValueLeft;
    list.push_back(mode);
    list.push_back(Knob("Amount", 964, 471, 35, Param::DynShaper, Bitmap::DynShaperKnob));
    list.back().rect = Sized(977, 485, 35, 35);
    list.back().caption = Caption(964, 525);
    list.push_back(Knob("Wave", 1025, 471, 40, Param::DynShaperType, Bitmap::DynShaperTypeKnob));
    list.back().caption = Caption(1025, 525);
    list.push_back(Switch(Param::DynShaperInvert, Bitmap::Invert, 1094, 482, 48, 20));
    list.push_back(Switch(Param::DynShaperPosNegBoth, Bitmap::Polarity, 1094, 506, 48, 20));
}

} // namespace

Panel DistortionPanel() {
    Panel panel = Switched(PanelId::Distortion, Section::Distortion, {646, 368, 1152, 544}, "DISTORTION",
                           Param::DistortionOnOff);
    panel.controls.front().rect = Sized(652, 369, 20, 20);
    panel.titleY = 372;
    AddCurve(panel);
    AddCrushers(panel);
    AddCurveButtons(panel);
    AddShaper(panel);
    panel.engravings = {Heading("CURVE", 859, 374, 84, panel.section),
                        Line(976, 420, 1144, 420, panel.section),
                        Heading("DYNAMIC SHAPER", 976, 424, 168, panel.section)};
    return panel;
}

Panel EqualizerPanel() {
    Panel panel = Framed(PanelId::Equalizer, Section::EqualizerDelay, {859, 580, 1152, 665}, "EQUALIZER");
    panel.titleY = panel.frame.T + 2;
    struct Band {
        const char* label;
        int left;
        int param;
        int bitmap;
    };
    constexpr std::array<Band, 4> kBands{{{"Low", 861, Param::BassAmount, Bitmap::EqLowKnob},
                                          {"Mid", 911, Param::MidAmount, Bitmap::EqMidKnob},
                                          {"High", 961, Param::HighAmount, Bitmap::EqHighKnob},
                                          {"LP/HP", 1011, Param::DumpExpand, Bitmap::DumpExpandKnob}}};
    auto& list = panel.controls;
    list.push_back(Picture(Bitmap::EqDisplay, 1073, 591, 72, 44));
    list.push_back(Picture(Bitmap::DumpExpandDisplay, 1073, 641, 31, 20));
    for (const Band& band : kBands) {
        // Values stand over these knobs and names below them.
        PlacedControl knob = Knob(band.label, band.left, 598, 35, band.param, band.bitmap);
        knob.label.rect = LabelRect(band.left, 647);
        knob.caption = Caption(band.left, 597);
        knob.caption.hit.B = knob.rect.T;
        list.push_back(knob);
    }
    return panel;
}

Panel TempoDelayPanel() {
    Panel panel = Framed(PanelId::TempoDelay, Section::EqualizerDelay, {646, 667, 857, 778}, "TEMPO DELAY");
    panel.titleY = panel.frame.T + 2;
    constexpr std::array<const char*, 4> kLabels{"Tempo", "Feedb.", "Dump", "Spread"};
    for (int i = 0; i < 4; ++i) {
        PlacedControl knob = Knob(kLabels[static_cast<std::size_t>(i)], 637 + 50 * i, 684, 35,
                                  Param::TempoDelayAmount + i, Bitmap::TempoDelayKnob);
        panel.controls.push_back(knob);
    }
    return panel;
}

Panel OutputPanel() {
    Panel panel = Framed(PanelId::Output, Section::Output, {859, 667, 1152, 778}, "OUTPUT");
    panel.titleY = panel.frame.T + 2;
    auto& list = panel.controls;
    list.push_back(Knob("Pan", 872, 684, 35, Param::Pan, Bitmap::PanKnob));
    list.push_back(Knob("Sat.", 922, 684, 35, Param::Saturation, Bitmap::SaturationKnob));
    list.push_back(Knob("Dry/Wet", 972, 684, 35, Param::DryWet, Bitmap::DryWetKnob));
    list.push_back(Knob("Threshold", 1022, 684, 35, Param::LimiterLevel, Bitmap::LimiterKnob));
    PlacedControl limiter = Plain(ControlKind::Text, Bitmap::None, LabelRect(1022, 672));
    limiter.text = "Limiter";
    list.push_back(limiter);
    list.push_back(Knob("Volume", 1079, 669, 50, Param::Volume, Bitmap::VolumeKnob));
    list.push_back(Switch(Param::LimiterMode, Bitmap::LimiterMode, 1027, 753, 48, 20));
    return panel;
}

} // namespace Grimworks
