#include "editor/thudforge/Layout.h"

#include "editor/thudforge/LayoutRules.h"

#include <algorithm>
#include <cstddef>

namespace Grimworks {

namespace LayoutRules {

namespace {

constexpr int kKnobBelowLabel = 14;
constexpr int kCaptionTextHeight = 14;
constexpr int kCaptionReach = 20; ///< from the centre to either side, for the mouse

/// From a label's top to the caption of its knob.
int CaptionBelowLabel(int knobSize) {
    return kKnobBelowLabel + knobSize + (knobSize == 40 ? 1 : 0);
}

} // namespace

IRECT LabelRect(int left, int top) {
    return {left, top, left + kLabelWidth, top + kLabelHeight};
}

IRECT Sized(int left, int top, int width, int height) {
    return {left, top, left + width, top + height};
}

PlacedCaption Caption(int left, int top, int mode, const char* firstText) {
    PlacedCaption caption;
    caption.rect = LabelRect(left, top);
    caption.mode = mode;
    caption.text = firstText;
    const int middle = caption.rect.MW();
    caption.hit = IRECT(middle - kCaptionReach, top, middle + kCaptionReach, top + kCaptionTextHeight);
    return caption;
}

PlacedControl Knob(const char* label, int left, int top, int size, int param, int bitmap, int captionMode) {
    PlacedControl knob;
    knob.kind = ControlKind::Knob;
    knob.param = param;
    knob.bitmap = bitmap;
    knob.rect = Sized(left + (kLabelWidth - size) / 2, top + kKnobBelowLabel, size, size);
    knob.label = {label, LabelRect(left, top), TextStyle::Label};
    knob.caption = Caption(left, top + CaptionBelowLabel(size), captionMode);
    return knob;
}

PlacedControl Plain(ControlKind kind, int bitmap, const IRECT& rect, int direction) {
    PlacedControl control;
    control.kind = kind;
    control.bitmap = bitmap;
    control.rect = rect;
    control.direction = direction;
    return control;
}

PlacedControl Picture(int bitmap, int left, int top, int width, int height) {
    return Plain(ControlKind::Bitmap, bitmap, Sized(left, top, width, height));
}

PlacedControl Placed(ControlKind kind, int param, int bitmap, const IRECT& rect, const char* tooltip) {
    PlacedControl control = Plain(kind, bitmap, rect);
    control.param = param;
    control.tooltip = tooltip;
    return control;
}

PlacedControl Switch(int param, int bitmap, int left, int top, int width, int height) {
    return Placed(ControlKind::Switch, param, bitmap, Sized(left, top, width, height));
}

PlacedControl OnOff(int param, int left, int top) {
    return Switch(param, Bitmap::OnOff, left, top, 20, 20);
}

PlacedControl Step(int param, int bitmap, const IRECT& rect, int steps, int direction, bool wrap,
                   const char* tooltip) {
    PlacedControl control = Placed(ControlKind::ModeSwitch, param, bitmap, rect, tooltip);
    control.steps = steps;
    control.direction = direction;
    control.wrap = wrap;
    return control;
}

Panel Framed(PanelId id, Section section, const IRECT& frame, const char* title) {
    Panel panel;
    panel.id = id;
    panel.section = section;
    panel.frame = frame;
    panel.title = title;
    panel.titleX = frame.L + 9;
    panel.titleY = frame.T + 4;
    return panel;
}

Engraving Heading(const char* text, int left, int top, int width, Section section) {
    return {Engraving::Kind::Heading, Sized(left, top, width, 12), text, section};
}

Engraving Line(int fromX, int fromY, int toX, int toY, Section section) {
    return {Engraving::Kind::Line, IRECT(fromX, fromY, toX, toY), "", section};
}

} // namespace LayoutRules

const std::vector<Panel>& EditorPanels() {
    static const std::vector<Panel> panels = [] {
        std::vector<Panel> all{
            HeaderPanel(),      PitchEnvelopePanel(),  OscillatorPanel(0),    OscillatorPanel(1),
            OscillatorPanel(2), VolumeEnvelopePanel(), FilterEnvelopePanel(), UnisonPanel(),
            FmPanel(),          NoteTransposePanel(),  SubOscillatorPanel(),  PitchBendPanel(),
            FilterUnitPanel(),  ModulationPanel(),     DistortionPanel(),     EqualizerPanel(),
            TempoDelayPanel(),  OutputPanel(),         PresetPanel(),         InfoLinePanel(),
            AboutPanel(),       ScopePanel()};
        return all;
    }();
    return panels;
}

const Panel& EditorPanel(PanelId id) {
    const std::vector<Panel>& panels = EditorPanels();
    return panels[static_cast<std::size_t>(std::clamp(static_cast<int>(id), 0, kPanels - 1))];
}

IColor DisplayColor() {
    return {255, 9, 12, 15};
}

IColor SectionColor(Section section) {
    switch (section) {
    case Section::Oscillators:
        return {255, 255, 162, 46};
    case Section::Envelopes:
        return {255, 62, 222, 160};
    case Section::Filters:
        return {255, 72, 170, 255};
    case Section::Distortion:
        return {255, 255, 92, 72};
    case Section::Modulation:
        return {255, 190, 144, 255};
    case Section::EqualizerDelay:
        return {255, 182, 222, 66};
    case Section::Output:
        return {255, 236, 239, 242};
    }
    return {255, 236, 239, 242};
}

namespace {

IText LookOf(TextStyle style) {
    const IColor labelColor{255, 176, 184, 192};
    const IColor valueColor{255, 230, 234, 238};
    const IColor glassColor{255, 214, 226, 234};
    switch (style) {
    case TextStyle::Label:
        return {12, labelColor, IText::AlignCenter};
    case TextStyle::LabelNarrow:
        return {11, labelColor, IText::AlignCenter};
    case TextStyle::LabelLeft:
        return {12, labelColor, IText::AlignNear};
    case TextStyle::Value:
        return {11, valueColor, IText::AlignCenter};
    case TextStyle::ValueLeft:
        return {11, valueColor, IText::AlignNear};
    case TextStyle::Display:
        return {12, glassColor, IText::AlignCenter};
    case TextStyle::SmallName:
        return {11, glassColor, IText::AlignCenter};
    case TextStyle::Number:
        return {11, valueColor, IText::AlignFar};
    case TextStyle::Info:
        return {13, glassColor, IText::AlignNear};
    case TextStyle::InfoRight:
        return {13, glassColor, IText::AlignFar};
    case TextStyle::HostName:
        return {13, labelColor, IText::AlignCenter};
    case TextStyle::Zoom:
        return {13, glassColor, IText::AlignCenter, IText::StyleBold};
    case TextStyle::Help:
        return {14, labelColor, IText::AlignNear};
    case TextStyle::HelpName:
        return {14, valueColor, IText::AlignFar, IText::StyleBold};
    case TextStyle::Link:
        return {14, valueColor, IText::AlignNear};
    }
    return {};
}

} // namespace

IText TextOf(TextStyle style) {
    IText text = LookOf(style);
    // What is typed stands on a ground that is lighter than glass, as dark as the panels otherwise.
    text.textEntryBGColor = {255, 46, 51, 58};
    text.textEntryFGColor = {255, 255, 255, 255};
    return text;
}

bool TakesMouse(ControlKind kind) {
    switch (kind) {
    case ControlKind::Bitmap:
    case ControlKind::Text:
    case ControlKind::NoteText:
    case ControlKind::MaxLevelText:
    case ControlKind::HostInfoText:
    case ControlKind::HostNameText:
    case ControlKind::WavePicture:
    case ControlKind::PitchPicture:
    case ControlKind::EnvelopePicture:
    case ControlKind::Eye:
        return false;
    default:
        return true;
    }
}

} // namespace Grimworks
