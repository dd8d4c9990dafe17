#pragma once

#include "core/ParameterIds.h"
#include "editor/thudforge/Layout.h"

namespace Grimworks::LayoutRules {

/// What the files of the layout share: the placement rule of knobs, and the panels' makers.

inline constexpr int kLabelWidth = 60;
inline constexpr int kLabelHeight = 16;

/// A rectangle of the size of a label.
[[nodiscard]] IRECT LabelRect(int left, int top);

/// Rectangle by position and size.
[[nodiscard]] IRECT Sized(int left, int top, int width, int height);

/// A caption at this place, limited for the mouse to 40 pixels around its centre and the height of its text.
[[nodiscard]] PlacedCaption Caption(int left, int top, int mode = 0, const char* firstText = "");

/// A knob of 30, 35, 40 or 50 pixels under its label: centred, 14 pixels below the label's top, its caption
/// right under it.
[[nodiscard]] PlacedControl Knob(const char* label, int left, int top, int size, int param, int bitmap,
                                 int captionMode = 0);

[[nodiscard]] PlacedControl Picture(int bitmap, int left, int top, int width, int height);
[[nodiscard]] PlacedControl Switch(int param, int bitmap, int left, int top, int width, int height);
[[nodiscard]] PlacedControl OnOff(int param, int left, int top);

/// A button without parameter; also what only draws.
[[nodiscard]] PlacedControl Plain(ControlKind kind, int bitmap, const IRECT& rect, int direction = 0);

/// A menu, a step button or another control of one parameter.
[[nodiscard]] PlacedControl Placed(ControlKind kind, int param, int bitmap, const IRECT& rect,
                                   const char* tooltip = "");
[[nodiscard]] PlacedControl Step(int param, int bitmap, const IRECT& rect, int steps, int direction,
                                 bool wrap, const char* tooltip);

/// A panel of the synth page with its title at the top left of its frame.
[[nodiscard]] Panel Framed(PanelId id, Section section, const IRECT& frame, const char* title);

[[nodiscard]] Engraving Heading(const char* text, int left, int top, int width, Section section);
[[nodiscard]] Engraving Line(int fromX, int fromY, int toX, int toY, Section section);

} // namespace Grimworks::LayoutRules

namespace Grimworks {

[[nodiscard]] Panel HeaderPanel();
[[nodiscard]] Panel PitchEnvelopePanel();
[[nodiscard]] Panel OscillatorPanel(int oscillator); ///< 0, 1 or 2
[[nodiscard]] Panel VolumeEnvelopePanel();
[[nodiscard]] Panel FilterEnvelopePanel();
[[nodiscard]] Panel UnisonPanel();
[[nodiscard]] Panel FmPanel();
[[nodiscard]] Panel NoteTransposePanel();
[[nodiscard]] Panel SubOscillatorPanel();
[[nodiscard]] Panel PitchBendPanel();
[[nodiscard]] Panel FilterUnitPanel();
[[nodiscard]] Panel ModulationPanel();
[[nodiscard]] Panel DistortionPanel();
[[nodiscard]] Panel EqualizerPanel();
[[nodiscard]] Panel TempoDelayPanel();
[[nodiscard]] Panel OutputPanel();
[[nodiscard]] Panel PresetPanel();
[[nodiscard]] Panel InfoLinePanel();
[[nodiscard]] Panel AboutPanel();
[[nodiscard]] Panel ScopePanel();

} // namespace Grimworks
