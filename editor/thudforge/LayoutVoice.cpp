#include "editor/thudforge/LayoutRules.h"

#include <array>

namespace Grimworks {

namespace {

using namespace LayoutRules;

/// A knob of an envelope by its place in the volume envelope; the filter envelope has the same further right.
struct EnvelopeKnob {
    const char* label;
    int left;
    int top;
    int offset; ///< from the envelope's first parameter
};

constexpr int kFilterEnvelopeShift = 315;

constexpr std::array<EnvelopeKnob, 7> kEnvelopeKnobs{{
    {"Attack", 85, 582, 0},
    {"Decay", 133, 582, 1},
    {"Sustain", 181, 582, 2},
    {"Release", 229, 582, 3},
    {"Duration", 229, 518, 4},
    {"Velocity", 277, 518, 5},
    {"Amount", 277, 582, 6},
}};

constexpr int kEnvelopeLabelAbove = 13;
constexpr int kEnvelopeKnobSize = 30;

PlacedControl EnvelopeKnobAt(const char* label, int left, int top, int param, int bitmap) {
    const int labelLeft = left - (kLabelWidth - kEnvelopeKnobSize) / 2;
    PlacedControl knob = Knob(label, labelLeft, top - kEnvelopeLabelAbove, kEnvelopeKnobSize, param, bitmap);
    knob.rect = Sized(left, top, kEnvelopeKnobSize, kEnvelopeKnobSize);
    return knob;
}

void AddEnvelope(Panel& panel, int shift, int firstParam, int display, int knobBitmap) {
    auto& list = panel.controls;
    list.push_back(Picture(display, 85 + shift, 512, 120, 45));
    list.push_back(Plain(ControlKind::EnvelopePicture, Bitmap::None, Sized(90 + shift, 516, 110, 37),
                         shift == 0 ? 0 : 1));
    for (const EnvelopeKnob& row : kEnvelopeKnobs) {
        list.push_back(
            EnvelopeKnobAt(row.label, row.left + shift, row.top, firstParam + row.offset, knobBitmap));
    }
}

} // namespace

Panel PitchEnvelopePanel() {
    Panel panel = Framed(PanelId::PitchEnvelope, Section::Envelopes, {646, 107, 1152, 194}, "PITCH ENVELOPE");
    panel.titleX = 677;
    panel.titleY = 110;
    auto& list = panel.controls;
    list.push_back(Picture(Bitmap::PitchEnvDisplay, 915, 110, 220, 80));
    list.push_back(Plain(ControlKind::PitchPicture, Bitmap::None, Sized(921, 116, 208, 68)));
    list.push_back(OnOff(Param::PitchOnOff, 652, 108));
    constexpr std::array<const char*, 4> kLabels{"Amount", "Duration", "Power", "Down"};
    for (int i = 0; i < 4; ++i) {
        PlacedControl knob = Knob(kLabels[static_cast<std::size_t>(i)], 653 + 56 * i, 125, 40,
                                  Param::PitchAmount + i, Bitmap::PitchKnob);
        const int left = knob.caption.rect.L;
        knob.caption.rect = LabelRect(left, 176);
        knob.caption.hit.T = knob.rect.B;
        knob.caption.hit.B = 192;
        list.push_back(knob);
    }
    return panel;
}

Panel VolumeEnvelopePanel() {
    Panel panel = Framed(PanelId::VolumeEnvelope, Section::Envelopes, {70, 485, 388, 642}, "VOLUME ENVELOPE");
    AddEnvelope(panel, 0, Param::EnvAttack, Bitmap::VolumeEnvDisplay, Bitmap::AdsrVolumeKnob);
    auto& list = panel.controls;
    list.push_back(EnvelopeKnobAt("ADSR Shape", 340, 582, Param::AdsrShape, Bitmap::AdsrVolumeKnob));
    PlacedControl toFilter = Plain(ControlKind::ArrowButton, Bitmap::ArrowRight, Sized(332, 507, 48, 20), 0);
    toFilter.label = {"ADSR Copy", LabelRect(326, 490), TextStyle::Label};
    toFilter.tooltip = "Copy Volume Envelope To Filter Envelope";
    list.push_back(toFilter);
    PlacedControl toVolume = Plain(ControlKind::ArrowButton, Bitmap::ArrowLeft, Sized(332, 530, 48, 20), 1);
    toVolume.tooltip = "Copy Filter Envelope To Volume Envelope";
    list.push_back(toVolume);
    panel.engravings = {Line(320, 494, 320, 634, panel.section)};
    return panel;
}

Panel FilterEnvelopePanel() {
    Panel panel =
        Framed(PanelId::FilterEnvelope, Section::Envelopes, {390, 485, 644, 642}, "FILTER ENVELOPE");
    AddEnvelope(panel, kFilterEnvelopeShift, Param::FilterAttack, Bitmap::FilterEnvDisplay,
                Bitmap::AdsrFilterKnob);
    return panel;
}

Panel UnisonPanel() {
    Panel panel = Framed(PanelId::Unison, Section::Oscillators, {646, 580, 857, 665}, "UNISON");
    panel.titleY = panel.frame.T + 2;
    panel.controls.push_back(Knob("Voices", 711, 594, 40, Param::UnisonVoices, Bitmap::UnisonVoicesKnob));
    panel.controls.push_back(Knob("Detune", 785, 594, 40, Param::UnisonDetune, Bitmap::UnisonKnob));
    return panel;
}

Panel FmPanel() {
    Panel panel = Framed(PanelId::Fm, Section::Modulation, {532, 644, 644, 778}, "FM");
    panel.controls.push_back(Knob("Amount", 558, 682, 40, Param::FmAmount, Bitmap::FmKnob));
    return panel;
}

Panel NoteTransposePanel() {
    Panel panel =
        Framed(PanelId::NoteTranspose, Section::Oscillators, {646, 50, 1012, 105}, "NOTE / TRANSPOSE");
    auto& list = panel.controls;
    list.push_back(Picture(Bitmap::WaveNameDisplay, 655, 75, 117, 20));
    PlacedControl menu = Placed(ControlKind::NoteModeMenu, Param::NoteTransposeMode, Bitmap::None,
                                Sized(659, 78, 109, 16), "Note Mode Selection");
    menu.style = TextStyle::Display;
    list.push_back(menu);
    list.push_back(Picture(Bitmap::WaveNameDisplay, 777, 75, 117, 20));
    PlacedControl note = Plain(ControlKind::NoteText, Bitmap::None, Sized(781, 78, 109, 16));
    note.style = TextStyle::Display;
    list.push_back(note);
    PlacedControl knob = Placed(ControlKind::TransposeKnob, Param::GlobalTranspose, Bitmap::OscTuneKnob,
                                Sized(908, 69, 30, 30));
    knob.label = {"Transpose", Sized(945, 69, 60, 16), TextStyle::LabelLeft};
    knob.caption.rect = Sized(945, 84, 60, 16);
    knob.caption.hit = Sized(945, 84, 60, 14);
    knob.caption.style = TextStyle::ValueLeft;
    list.push_back(knob);
    return panel;
}

Panel SubOscillatorPanel() {
    Panel panel = Framed(PanelId::SubOscillator, Section::Oscillators, {70, 644, 530, 778}, "SUB-OSCILLATOR");
    auto& list = panel.controls;
    list.push_back(Knob("Click", 170, 684, 35, Param::BassLayerClick, Bitmap::ClickKnob));
    list.push_back(Knob("Sub-Osc", 220, 684, 35, Param::BassLayerAmount, Bitmap::SubOscKnob));
    list.push_back(Switch(Param::BassLayerSolo, Bitmap::Solo, 292, 709, 48, 20));
    PlacedControl target = Plain(ControlKind::Text, Bitmap::None, {347, 711, 467, 727});
    target.text = "Sub-Osc Target:";
    target.style = TextStyle::Label;
    list.push_back(target);
    list.push_back(Switch(Param::BassLayerToFilter, Bitmap::ToFilter, 466, 697, 48, 20));
    list.push_back(Switch(Param::BassLayerToFm, Bitmap::ToFm, 466, 721, 48, 20));
    return panel;
}

Panel PitchBendPanel() {
    Panel panel = Framed(PanelId::PitchBend, Section::Oscillators, {1014, 50, 1152, 105}, "PITCH BEND");
    PlacedControl knob =
        Placed(ControlKind::Knob, Param::PitchBendRange, Bitmap::OscVolumeKnob, Sized(1026, 69, 30, 30));
    knob.label = {"Range", Sized(1063, 69, 60, 16), TextStyle::LabelLeft};
    knob.caption.rect = Sized(1063, 84, 60, 16);
    knob.caption.hit = Sized(1063, 84, 60, 14);
    knob.caption.style = TextStyle::ValueLeft;
    panel.controls.push_back(knob);
    return panel;
}

} // namespace Grimworks
