#pragma once

#include "editor/Types.h"
#include "editor/thudforge/BitmapIds.h"

#include <vector>

namespace Grimworks {

/// Geometry of the whole editor as data. The panel builders attach what stands here, in this order; the
/// artwork tool draws frames, titles and legends from the same table. Positions are pixels of the window.

inline constexpr int kEditorWidth = 1220;
inline constexpr int kEditorHeight = 835;
inline constexpr int kEditorFps = 25;
inline constexpr double kKnobGearing = 4.0;

/// Lettering of the panels' titles: bold, em and extra space after each letter in pixels.
inline constexpr int kTitleSize = 11;
inline constexpr int kTitleTracking = 1;
/// The same for the headings inside the panels.
inline constexpr int kHeadingSize = 10;
inline constexpr int kHeadingTracking = 1;

enum class Page : int { Synth = 0, Scope = 1, About = 2, Every = 3 };

/// The sections of the instrument; each has one accent colour.
enum class Section : int { Oscillators, Envelopes, Filters, Distortion, Modulation, EqualizerDelay, Output };

/// In the order in which the panels are built. `Header` holds what shows on every page and comes first.
enum class PanelId : int {
    Header,
    PitchEnvelope,
    Oscillator1,
    Oscillator2,
    Oscillator3,
    VolumeEnvelope,
    FilterEnvelope,
    Unison,
    Fm,
    NoteTranspose,
    SubOscillator,
    PitchBend,
    FilterUnit,
    ModulationEffects,
    Distortion,
    Equalizer,
    TempoDelay,
    Output,
    Presets,
    InfoLine,
    About,
    Scope,
};
inline constexpr int kPanels = 22;

/// What a placed thing becomes, and what `direction` and `steps` mean for it (elsewhere they are 0).
enum class ControlKind : int {
    Bitmap,          ///< IBitmapControl without parameter: takes no mouse
    Text,            ///< ITextControl with `text`: takes no mouse
    Knob,            ///< IKnobMultiControl, vertical, gearing kKnobGearing
    TransposeKnob,   ///< IGwGlobalTransposeKnob
    Switch,          ///< ISwitchControl over all its frames
    Fader,           ///< IFaderControl of length rect.W(); its groove is the Bitmap placed just before
    ModeSwitch,      ///< IGwModeSwitch; direction 1 next, 0 previous; steps, wrap
    WaveformMenu,    ///< IGwWaveformPresetMenu
    LfoModeMenu,     ///< IGwLfoSignalTypePresetMenu
    FilterMenu,      ///< IGwFilterUnitMenu; the parameter tells which list of names
    NoteModeMenu,    ///< IGwNoteModePresetMenu
    CurveMenu,       ///< IGwDistoPresetMenu
    PresetMenu,      ///< IGwPresetMenu; fills its rectangle with DisplayColor()
    NoteText,        ///< ITextControl: frequency and key of the last note; takes no mouse
    WavePicture,     ///< IGwCurve of an oscillator's wave preview; direction is the oscillator, 0..2
    PitchPicture,    ///< IGwCurve of the pitch envelope
    EnvelopePicture, ///< IGwCurve of an envelope; direction 0 volume, 1 filter
    CurveDraw,       ///< IGwCurve2 that is drawn on; direction is its point count, 128
    CurvePreview,    ///< IGwCurve2 of the preview; direction is its point count, 120
    SyncButton,      ///< IGwSyncButton of the phaser's rate
    ArrowButton,     ///< IGwArrowActionButton; direction 0 copies volume to filter, 1 filter to volume
    RestoreCurve,    ///< IGwRestoreCurveButton
    PresetSwitch,    ///< IGwPresetSwitch; direction 1 next, 0 previous
    RestorePreset,   ///< IGwRestorePresetButton
    FileSelector,    ///< IGwFileSelector; direction is the action: 0 load, 1 save
    PlayButton,      ///< IGwPlayButton
    ResetButton,     ///< IGwResetButton
    MaxLevelText,    ///< IGwMaxLevelText, first text `text`; takes no mouse
    HostInfoText,    ///< IGwHostInfoText; takes no mouse
    HostNameText,    ///< IGwHostNameText, first text `text`; takes no mouse
    WaveDrawer,      ///< IGwWaveDrawer
    FreezeButton,    ///< IGwFreezeButton
    ZoomText,        ///< IZoomTextControl, first text `text`
    ZoomSwitch,      ///< IGwZoomSwitch; direction 1 zooms in, 0 out
    WaveSelect,      ///< IGwScopeWaveSelectionButton; direction is its number, 1..6
    FillModeButton,  ///< IGwScopeHollowFilledSelectionButton
    UrlButton,       ///< IGwUrlButton; direction 0 the maker's site, 1 the other one
    Eye, ///< IGwVuEyeDrawer; direction 1 the left eye (apex at its top left), 0 the right one (top right)
    Tab, ///< IGwTabButton; direction is the page
};

/// Looks of the editor's texts.
enum class TextStyle : int {
    Label,       ///< name of a control, over it
    LabelNarrow, ///< the same where knobs stand close
    LabelLeft,   ///< the same, beside it
    Value,       ///< caption with a control's value, under it
    ValueLeft,   ///< the same, beside it
    Display,     ///< names on dark glass
    SmallName,   ///< short names on dark glass: filter types, LFO modes
    Number,      ///< number of a wave, at the right edge of its title
    Info,        ///< info line, left
    InfoRight,   ///< info line, right
    HostName,    ///< the host, on the about page
    Zoom,        ///< zoom in percent
    Link,        ///< web links
    Help,        ///< explanations below the scope
    HelpName,    ///< what they explain
};

/// Colour of the glass inside the displays.
[[nodiscard]] IColor DisplayColor();

/// An ITextControl with the name of a control. Takes no mouse, and is attached before its control, so that
/// the knob under it keeps its edge.
struct PlacedLabel {
    const char* text = "";
    IRECT rect;
    TextStyle style = TextStyle::Label;
};

/// An IGwCaptionControl of the same parameter. No caption if `rect` is empty.
struct PlacedCaption {
    IRECT rect;
    int mode = 0; ///< IGwCaptionControl's number format
    bool showLabel = false;
    const char* text = ""; ///< first text; most are empty
    TextStyle style = TextStyle::Value;
    /// Mouse rectangle: `rect` without what the control above and its neighbours need.
    IRECT hit;
};

/// One control with its label and its caption.
struct PlacedControl {
    ControlKind kind = ControlKind::Bitmap;
    int param = -1; ///< -1 for none
    int bitmap = Bitmap::None;
    IRECT rect; ///< one frame of the bitmap, at L, T; is the mouse rectangle too
    PlacedLabel label;
    PlacedCaption caption;
    const char* tooltip = ""; ///< empty: the window shows the parameter's name
    int direction = 0;
    int steps = 0;
    bool wrap = false;
    const char* text = ""; ///< first text of text controls
    TextStyle style = TextStyle::Label;
};

/// Text and strokes that belong to a panel's artwork: no controls.
struct Engraving {
    enum class Kind : int { Heading, Line };
    Kind kind = Kind::Heading;
    IRECT rect; ///< a heading is centred in it; a line runs from L, T to R, B
    const char* text = "";
    Section section = Section::Oscillators;
};

struct Panel {
    PanelId id = PanelId::Header;
    Page page = Page::Synth;
    Section section = Section::Oscillators;
    IRECT frame;            ///< outer edge of the bevel; empty for none
    const char* title = ""; ///< drawn by the artwork
    int titleX = 0;         ///< left edge and top of a line of 14 pixels
    int titleY = 0;
    std::vector<PlacedControl> controls; ///< in the order in which they are attached
    std::vector<Engraving> engravings;
};

/// All panels, by PanelId. Built at first use, fixed from then on. Any thread.
[[nodiscard]] const std::vector<Panel>& EditorPanels();
[[nodiscard]] const Panel& EditorPanel(PanelId id);

[[nodiscard]] IColor SectionColor(Section section);

/// Size, colour, weight and alignment of a style. Sizes are the em in pixels.
[[nodiscard]] IText TextOf(TextStyle style);

/// True for kinds that react to the mouse.
[[nodiscard]] bool TakesMouse(ControlKind kind);

} // namespace Grimworks
