#include "editor/thudforge/Layout.h"
#include "core/Limits.h"
#include "core/ParameterIds.h"
#include "tests/editor/thudforge/FontWidths.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

const FontWidths& Font(bool bold) {
    static const FontWidths regular(std::string(THUDFORGE_SOURCE_DIR) + "/resources/fonts/Editor.ttf");
    static const FontWidths heavy(std::string(THUDFORGE_SOURCE_DIR) + "/resources/fonts/Editor-Bold.ttf");
    return bold ? heavy : regular;
}

std::string Shown(const IRECT& r) {
    std::ostringstream text;
    text << "(" << r.L << ", " << r.T << ", " << r.R << ", " << r.B << ")";
    return text.str();
}

bool Inside(const IRECT& inner, const IRECT& outer) {
    return inner.L >= outer.L && inner.T >= outer.T && inner.R <= outer.R && inner.B <= outer.B;
}

/// The pixels that a line of text can touch: from the top of its capitals to the depth of its descenders.
IRECT Ink(const std::string& text, const IRECT& rect, TextStyle style) {
    const IText look = TextOf(style);
    const FontWidths& font = Font(look.style == IText::StyleBold);
    const int width = font.Width(text, look.size);
    int left = rect.L;
    if (look.align == IText::AlignCenter) left = rect.L + (rect.W() - width) / 2;
    if (look.align == IText::AlignFar) left = rect.R - width;
    const int capitals = look.size * 5 / 7;
    const int baseline = rect.T + font.Ascent(look.size);
    return {left, baseline - capitals, left + width, baseline + look.size / 5};
}

/// Width of lettering on the artwork.
int TitleWidth(const std::string& text, int size, int tracking) {
    return Font(true).Width(text, size) + static_cast<int>(text.size()) * tracking;
}

/// The longest texts that a caption comes to show.
std::vector<std::string> LongestTexts(const PlacedControl& control) {
    static const std::map<int, std::vector<std::string>> byParam{
        {Param::FilterType, {"100.0% / 0.0%", "50.0% / 50.0%", "0.0% / 100.0%"}},
        {Param::EnvAttack, {"10.000 s"}},
        {Param::EnvDecay, {"10.000 s"}},
        {Param::EnvSustain, {"-60.0dB", "-oo dB"}},
        {Param::EnvRelease, {"10.000 s"}},
        {Param::EnvDuration, {"5.000 s"}},
        {Param::FilterAttack, {"10.000 s"}},
        {Param::FilterDecay, {"10.000 s"}},
        {Param::FilterSustain, {"-60.0dB", "-oo dB"}},
        {Param::FilterRelease, {"10.000 s"}},
        {Param::FilterDuration, {"5.000 s"}},
        {Param::PitchBendRange, {"+/- 12"}},
        {Param::UnisonVoices, {"2"}},
        {Param::BassAmount, {"-24.0dB"}},
        {Param::MidAmount, {"-24.0dB"}},
        {Param::HighAmount, {"-24.0dB"}},
        {Param::DumpExpand, {"100.0% LP", "100.0% HP"}},
        {Param::DistortionInterpMode, {"[cosine interpolation]", "[unknown interpolation]"}},
        {Param::DynShaperType, {"Triangle"}},
        {Param::DynShaperMode, {"Boost+Sat.Shaper"}},
        {Param::Quantization, {"64.0bit"}},
        {Param::SampleRate, {"192000Hz"}},
        {Param::Gate, {"-240.0dB", "-oodB"}},
        {Param::FilterCutoff, {"22050.0Hz"}},
        {Param::FilterTransition, {"Medium"}},
        {Param::RingModulationWaveForm, {"Sine3", "Pulse"}},
        {Param::PhaserTempoSync, {"1/16x", "16.0x"}},
    };
    std::vector<std::string> texts;
    const auto found = byParam.find(control.param);
    if (found != byParam.end()) texts = found->second;
    if (control.param < Param::EnvAttack) {
        const auto kind = static_cast<OscParam>(control.param % kOscParams);
        if (kind == OscParam::Waveform) texts = {"41"};
        if (kind == OscParam::FilterBalance) texts = {"100.0% / 0.0%", "50.0% / 50.0%"};
        if (kind == OscParam::LfoTempoSync) texts = {"1/16x", "16.0x"};
    }
    if (texts.empty()) {
        static const std::array<const char*, 8> byMode{"1.259",  "-60.0dB", "100.0%", "-12.000",
                                                       "-1.000", "-0.500",  "",       "20.0Hz"};
        texts = {byMode.at(static_cast<std::size_t>(control.caption.mode))};
    }
    if (*control.caption.text != '\0') texts.emplace_back(control.caption.text);
    return texts;
}

struct Part {
    std::string name;
    const Panel* panel;
    IRECT rect;
    bool backdrop = false; ///< a display or groove that others may stand on
    int param = -1;
    ControlKind kind = ControlKind::Bitmap;
};

std::string NameOf(const Panel& panel, const PlacedControl& control, const std::string& what) {
    std::ostringstream name;
    name << panel.title << " kind " << static_cast<int>(control.kind) << " parameter " << control.param
         << " bitmap " << control.bitmap << " " << what;
    return name.str();
}

void AddText(std::vector<Part>& parts, const Panel& panel, const PlacedControl& control,
             const std::string& text, const IRECT& rect, TextStyle style) {
    if (!text.empty())
        parts.push_back({NameOf(panel, control, text), &panel, Ink(text, rect, style), false, -1});
}

/// Everything that is drawn, but for whole-window backgrounds, the pictures of the about page, which are free
/// around their ink, and the drawing inside displays.
std::vector<Part> DrawnParts(Page page) {
    std::vector<Part> parts;
    for (const Panel& panel : EditorPanels()) {
        if (panel.page != page && panel.page != Page::Every) continue;
        for (const PlacedControl& control : panel.controls) {
            if (control.bitmap == Bitmap::Background || control.bitmap == Bitmap::ControlsBackground)
                continue;
            const bool textOnly = control.bitmap == Bitmap::None && *control.text != '\0';
            if (!textOnly && (control.bitmap != Bitmap::None || TakesMouse(control.kind))) {
                IRECT rect = control.rect;
                // The arc of a knob is open at the bottom.
                if (control.kind == ControlKind::Knob) rect.B -= 3;
                // The scope's frame ends above the buttons.
                if (control.bitmap == Bitmap::WaveDisplay) rect.B -= 17;
                // Only the lower part of this button is drawn.
                if (control.kind == ControlKind::FreezeButton) rect.T += 5;
                parts.push_back({NameOf(panel, control, "itself"), &panel, rect,
                                 control.kind == ControlKind::Bitmap, control.param, control.kind});
            }
            AddText(parts, panel, control, control.label.text, control.label.rect, control.label.style);
            AddText(parts, panel, control, control.text, control.rect, control.style);
            if (control.caption.rect.Empty()) continue;
            IRECT widest;
            for (const std::string& text : LongestTexts(control)) {
                widest = widest.Union(Ink(text, control.caption.rect, control.caption.style));
            }
            parts.push_back({NameOf(panel, control, "caption"), &panel, widest, false, -1});
        }
        for (const Engraving& engraving : panel.engravings) {
            if (engraving.kind != Engraving::Kind::Heading) continue;
            const int width = TitleWidth(engraving.text, kHeadingSize, kHeadingTracking);
            const int left = engraving.rect.MW() - width / 2;
            parts.push_back(
                {engraving.text, &panel, {left, engraving.rect.T + 1, left + width, engraving.rect.B - 1}});
        }
        if (*panel.title != '\0') {
            const int width = TitleWidth(panel.title, kTitleSize, kTitleTracking);
            parts.push_back({std::string("title ") + panel.title,
                             &panel,
                             {panel.titleX, panel.titleY + 2, panel.titleX + width, panel.titleY + 12}});
        }
    }
    return parts;
}

/// The arrows of a name display stand on the ends of its menu.
bool IsArrowOnItsMenu(const Part& a, const Part& b) {
    const bool menu = a.kind == ControlKind::WaveformMenu || a.kind == ControlKind::CurveMenu;
    return menu && b.kind == ControlKind::ModeSwitch && a.param == b.param;
}

bool MayOverlap(const Part& a, const Part& b) {
    if (a.backdrop && b.backdrop) return true;
    if (IsArrowOnItsMenu(a, b) || IsArrowOnItsMenu(b, a)) return true;
    // What stands on a display stands on it as a whole; arrows may cover its ends.
    if (a.backdrop) return Inside(b.rect, a.rect) || b.kind == ControlKind::PresetSwitch;
    if (b.backdrop) return MayOverlap(b, a);
    // A menu's own name, and texts without mouse over their own area.
    return false;
}

class LayoutPage : public testing::TestWithParam<Page> {};

TEST(Layout, TheFontsOfTheEditorCanBeMeasured) {
    EXPECT_TRUE(Font(false).Loaded());
    EXPECT_TRUE(Font(true).Loaded());
    // Digits are of one width, so that values do not jitter.
    for (char digit = '1'; digit <= '9'; ++digit) {
        EXPECT_EQ(Font(false).Width(std::string(1, digit), 11), Font(false).Width("0", 11));
    }
    EXPECT_GT(Font(false).Width("00", 11), Font(false).Width("0", 11));
}

TEST(Layout, PanelsStandInTheOrderOfTheirIds) {
    ASSERT_EQ(EditorPanels().size(), static_cast<std::size_t>(kPanels));
    for (int i = 0; i < kPanels; ++i) {
        EXPECT_EQ(static_cast<int>(EditorPanels()[static_cast<std::size_t>(i)].id), i);
        EXPECT_EQ(EditorPanel(static_cast<PanelId>(i)).id, static_cast<PanelId>(i));
    }
}

TEST(Layout, EveryLiveParameterHasExactlyOneControlOnTheSynthPageBesideStepButtons) {
    std::map<int, int> controls;
    std::map<int, std::set<int>> buttonDirections;
    for (const Panel& panel : EditorPanels()) {
        for (const PlacedControl& control : panel.controls) {
            if (control.param < 0) continue;
            EXPECT_EQ(panel.page, Page::Synth) << NameOf(panel, control, "");
            EXPECT_TRUE(TakesMouse(control.kind)) << NameOf(panel, control, "");
            if (control.kind != ControlKind::ModeSwitch) {
                ++controls[control.param];
            } else {
                EXPECT_TRUE(buttonDirections[control.param].insert(control.direction).second);
            }
        }
    }
    for (int id = 0; id < kLiveParameters; ++id) {
        const bool stepsOnly = id == Param::DistortionInterpMode || id == Param::DynShaperMode;
        EXPECT_EQ(controls[id], stepsOnly ? 0 : 1) << "parameter " << id;
        if (stepsOnly) {
            EXPECT_EQ(buttonDirections[id].size(), 1U) << "parameter " << id;
        }
    }
    EXPECT_EQ(controls.count(-1), 0U);
    EXPECT_LT(controls.rbegin()->first, kLiveParameters);
}

TEST(Layout, StepButtonsKnowTheLengthOfTheirList) {
    const std::map<int, int> lengths{{Param::DistortionType, kCurves},
                                     {Param::FilterMode1, 4},
                                     {Param::FilterMode2, 6},
                                     {Param::DistortionInterpMode, 4},
                                     {Param::DynShaperMode, 4},
                                     {Osc(0, OscParam::Waveform), kWaveforms},
                                     {Osc(2, OscParam::FilterTypeLeft), 5}};
    std::map<int, int> found;
    for (const Panel& panel : EditorPanels()) {
        for (const PlacedControl& control : panel.controls) {
            if (control.kind == ControlKind::ModeSwitch) found[control.param] = control.steps;
        }
    }
    for (const auto& [param, steps] : lengths)
        EXPECT_EQ(found[param], steps) << param;
}

TEST(Layout, OscillatorsTwoAndThreeAreTheFirstOneFurtherDown) {
    const Panel& first = EditorPanel(PanelId::Oscillator1);
    const int pitch = EditorPanel(PanelId::Oscillator2).frame.T - first.frame.T;
    for (int oscillator = 1; oscillator < kOscillators; ++oscillator) {
        const Panel& other =
            EditorPanel(static_cast<PanelId>(static_cast<int>(PanelId::Oscillator1) + oscillator));
        ASSERT_EQ(other.controls.size(), first.controls.size());
        const int down = other.frame.T - first.frame.T;
        EXPECT_GE(down, first.frame.H());
        EXPECT_EQ(down, oscillator * pitch);
        for (std::size_t i = 0; i < first.controls.size(); ++i) {
            const PlacedControl& a = first.controls[i];
            const PlacedControl& b = other.controls[i];
            EXPECT_EQ(b.rect, IRECT(a.rect.L, a.rect.T + down, a.rect.R, a.rect.B + down));
            EXPECT_EQ(b.kind, a.kind);
            if (a.param >= 0) {
                EXPECT_EQ(b.param, a.param + oscillator * kOscParams);
            }
            if (!a.caption.rect.Empty()) {
                EXPECT_EQ(b.caption.rect.T, a.caption.rect.T + down);
            }
            if (!a.label.rect.Empty()) {
                EXPECT_EQ(b.label.rect.T, a.label.rect.T + down);
            }
        }
    }
}

TEST(Layout, PanelsAreInsideTheWindowAndApart) {
    const IRECT window(0, 0, kEditorWidth, kEditorHeight);
    const auto& panels = EditorPanels();
    for (std::size_t i = 0; i < panels.size(); ++i) {
        EXPECT_TRUE(Inside(panels[i].frame, window)) << panels[i].title;
        for (std::size_t k = i + 1; k < panels.size(); ++k) {
            EXPECT_FALSE(panels[i].frame.Intersects(panels[k].frame))
                << panels[i].title << ", " << panels[k].title;
        }
    }
}

TEST_P(LayoutPage, EverythingIsInsideTheWindowAndClearOfItsPanelsBorder) {
    const IRECT window(0, 0, kEditorWidth, kEditorHeight);
    for (const Part& part : DrawnParts(GetParam())) {
        EXPECT_TRUE(Inside(part.rect, window)) << part.name << Shown(part.rect);
        const IRECT& frame = part.panel->frame;
        if (frame.Empty()) continue;
        // One pixel of bevel.
        const IRECT inner(frame.L + 1, frame.T + 1, frame.R - 1, frame.B - 1);
        EXPECT_TRUE(Inside(part.rect, inner)) << part.name << Shown(part.rect) << " in " << Shown(frame);
    }
}

TEST_P(LayoutPage, NothingThatIsDrawnOverlapsAnythingElse) {
    const std::vector<Part> parts = DrawnParts(GetParam());
    ASSERT_FALSE(parts.empty());
    for (std::size_t i = 0; i < parts.size(); ++i) {
        for (std::size_t k = i + 1; k < parts.size(); ++k) {
            if (!parts[i].rect.Intersects(parts[k].rect) || MayOverlap(parts[i], parts[k])) continue;
            ADD_FAILURE() << parts[i].name << " " << Shown(parts[i].rect) << " and " << parts[k].name << " "
                          << Shown(parts[k].rect);
        }
    }
}

TEST_P(LayoutPage, MouseRectanglesAreApartButForArrowsOnTheirMenu) {
    std::vector<Part> hits;
    for (const Panel& panel : EditorPanels()) {
        if (panel.page != GetParam() && panel.page != Page::Every) continue;
        for (const PlacedControl& control : panel.controls) {
            if (TakesMouse(control.kind)) {
                hits.push_back({NameOf(panel, control, "itself"), &panel, control.rect, false, control.param,
                                control.kind});
            }
            if (!control.caption.rect.Empty()) {
                EXPECT_FALSE(control.caption.hit.Empty()) << NameOf(panel, control, "caption");
                EXPECT_TRUE(Inside(control.caption.hit, control.caption.rect))
                    << NameOf(panel, control, "caption");
                hits.push_back({NameOf(panel, control, "caption"), &panel, control.caption.hit});
            }
        }
    }
    for (std::size_t i = 0; i < hits.size(); ++i) {
        EXPECT_GE(hits[i].rect.W(), 12) << hits[i].name;
        EXPECT_GE(hits[i].rect.H(), 12) << hits[i].name;
        for (std::size_t k = i + 1; k < hits.size(); ++k) {
            if (IsArrowOnItsMenu(hits[i], hits[k])) continue;
            EXPECT_FALSE(hits[i].rect.Intersects(hits[k].rect))
                << hits[i].name << " " << Shown(hits[i].rect) << " and " << hits[k].name << " "
                << Shown(hits[k].rect);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Pages, LayoutPage, testing::Values(Page::Synth, Page::Scope, Page::About));

TEST(Layout, NamesOnGlassFitTheirFieldBetweenTheArrows) {
    struct Field {
        ControlKind kind;
        int room;
        std::vector<std::string> texts;
    };
    const std::vector<Field> fields{
        {ControlKind::WaveformMenu,
         179 - 106,
         {"Brick-Breaker", "Low-Q Noise 1", "WhiteNoize", "Wave-Garden"}},
        {ControlKind::LfoModeMenu, 58, {"Sine(Pos.)", "Sine(Neg.)", "Sine(Abs.)", "Sine(Inv.)"}},
        {ControlKind::FilterMenu, 58, {"RBJ-BP1", "CH-HP12", "BW-BP12", "PK LP", "BW HP"}},
        {ControlKind::NoteModeMenu,
         109,
         {"Standard MIDI", "Drum Body 65.4Hz", "G#1 Kick 51.9Hz", "Arp. Moll Up 1/16"}},
        {ControlKind::CurveMenu, 128, {"41: Public Enemy by O:MAR", "03: Soft-Knee Compressor"}},
        {ControlKind::PresetMenu, 177, {"128: ThudForge Electronic Kick"}},
        {ControlKind::NoteText, 109, {"12543.85Hz [G#10]"}},
        {ControlKind::MaxLevelText, 210, {"MAXIMUM AUDIO LEVEL: -oo dB", "MAXIMUM AUDIO LEVEL: -123.456 dB"}},
        {ControlKind::HostInfoText,
         499,
         {"HOST SAMPLE RATE: 192000.00 Hz    TEMPO: 120.000 BPM    BLOCKSIZE: 16384 samples"}},
        {ControlKind::HostNameText,
         460,
         {"64-bit Plugin Host: Unknown (v0.0.0)", "64-bit Plugin Host: VST3PluginTestHost (v65535.255.255)"}},
        {ControlKind::ZoomText, 96, {"400 %"}},
    };
    for (const Field& field : fields) {
        int seen = 0;
        for (const Panel& panel : EditorPanels()) {
            for (const PlacedControl& control : panel.controls) {
                if (control.kind != field.kind) continue;
                ++seen;
                EXPECT_LE(field.room, control.rect.W());
                const IText look = TextOf(control.style);
                const FontWidths& font = Font(look.style == IText::StyleBold);
                for (const std::string& text : field.texts) {
                    EXPECT_LE(font.Width(text, look.size), field.room) << text;
                }
                EXPECT_LE(font.LineHeight(look.size), control.rect.H()) << NameOf(panel, control, "");
            }
        }
        EXPECT_GT(seen, 0) << static_cast<int>(field.kind);
    }
}

TEST(Layout, CaptionsFitTheirRectangleAtEveryValue) {
    for (const Panel& panel : EditorPanels()) {
        for (const PlacedControl& control : panel.controls) {
            if (control.caption.rect.Empty()) continue;
            const IText look = TextOf(control.caption.style);
            for (const std::string& text : LongestTexts(control)) {
                EXPECT_LE(Font(false).Width(text, look.size), control.caption.rect.W())
                    << NameOf(panel, control, text);
            }
            EXPECT_LE(Font(false).LineHeight(look.size), control.caption.rect.H());
        }
    }
}

TEST(Layout, PagesAreReachedByThreeTabsThatShowEverywhere) {
    std::set<int> pages;
    const Panel& header = EditorPanel(PanelId::Header);
    EXPECT_EQ(header.page, Page::Every);
    for (const PlacedControl& control : header.controls) {
        if (control.kind == ControlKind::Tab) pages.insert(control.direction);
    }
    EXPECT_EQ(pages, (std::set<int>{0, 1, 2}));
    EXPECT_EQ(header.controls.front().bitmap, Bitmap::Background);
    EXPECT_EQ(header.controls.front().rect, IRECT(0, 0, kEditorWidth, kEditorHeight));
}

/// Relative luminance and contrast as the Web Content Accessibility Guidelines define them.
double Luminance(const IColor& color) {
    const auto linear = [](int channel) {
        const double c = channel / 255.0;
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.R) + 0.7152 * linear(color.G) + 0.0722 * linear(color.B);
}

double Contrast(const IColor& a, const IColor& b) {
    const double la = Luminance(a);
    const double lb = Luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

TEST(Layout, TextsAndAccentsStandOutFromTheLightestPanelGround) {
    const IColor lightest(255, 40, 43, 47);
    for (int style = 0; style <= static_cast<int>(TextStyle::HelpName); ++style) {
        EXPECT_GE(Contrast(TextOf(static_cast<TextStyle>(style)).color, lightest), 4.5) << style;
    }
    for (int section = 0; section <= static_cast<int>(Section::Output); ++section) {
        EXPECT_GE(Contrast(SectionColor(static_cast<Section>(section)), lightest), 4.5) << section;
    }
    EXPECT_NEAR(Contrast({255, 255, 255, 255}, {255, 0, 0, 0}), 21.0, 1e-9);
}

} // namespace
} // namespace Grimworks
