#include "tools/artwork/Mock.h"

#include "core/ParameterIds.h"

#include "tools/artwork/Catalog.h"
#include "tools/artwork/Style.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <map>

namespace Artwork {

using Grimworks::ControlKind;
using Grimworks::EditorPanels;
using Grimworks::IRECT;
using Grimworks::IText;
using Grimworks::Page;
using Grimworks::Panel;
using Grimworks::PlacedControl;
using Grimworks::TextStyle;
namespace Bitmap = Grimworks::Bitmap;
namespace Param = Grimworks::Param;

namespace {

struct Drawn {
    Canvas strip;
    int frames;
};

const Drawn& BitmapOf(int id) {
    static std::map<int, Drawn> cache;
    const auto found = cache.find(id);
    if (found != cache.end()) return found->second;
    int frames = 1;
    for (const BitmapRow& row : BitmapRows()) {
        if (row.id == id) frames = row.frames;
    }
    return cache.emplace(id, Drawn{DrawBitmap(id), frames}).first->second;
}

void EditorText(Canvas& canvas, const std::string& text, const IRECT& rect, TextStyle style) {
    const IText editor = Grimworks::TextOf(style);
    TextLook look;
    look.face = editor.style == IText::StyleBold ? Face::Bold : Face::Regular;
    look.size = editor.size;
    look.color = FromEditor(editor.color);
    look.align = editor.align == IText::AlignCenter ? Align::Center
                 : editor.align == IText::AlignFar  ? Align::Right
                                                    : Align::Left;
    const double x = look.align == Align::Center  ? (rect.L + rect.R) / 2.0
                     : look.align == Align::Right ? rect.R
                                                  : rect.L;
    canvas.Text(text, x, rect.T + std::round(editor.size * 1900.0 / 2048.0), look);
}

/// A value of 0..1 that differs from control to control.
double SampleValue(const PlacedControl& control) {
    const int id = control.param < 0 ? control.bitmap + control.rect.L : control.param;
    return std::fmod(0.37 + 0.173 * id, 1.0);
}

std::string CaptionText(const PlacedControl& control, bool extreme) {
    if (*control.caption.text != '\0' && !extreme) return control.caption.text;
    const double value = SampleValue(control);
    static const std::map<int, const char*> longest{{Param::FilterType, "50.0% / 50.0%"},
                                                    {8, "50.0% / 50.0%"},
                                                    {29, "100.0% / 0.0%"},
                                                    {50, "100.0% / 0.0%"},
                                                    {1, "41"},
                                                    {22, "41"},
                                                    {43, "41"},
                                                    {Param::PitchBendRange, "+/- 12"},
                                                    {Param::UnisonVoices, "2"},
                                                    {Param::DumpExpand, "100.0% LP"},
                                                    {Param::BassAmount, "-24.0dB"},
                                                    {Param::MidAmount, "-12.4dB"},
                                                    {Param::HighAmount, "+3.0dB"},
                                                    {Param::DistortionInterpMode, "[cosine interpolation]"},
                                                    {Param::DynShaperMode, "Boost+Sat.Shaper"},
                                                    {Param::DynShaperType, "Triangle"},
                                                    {Param::Quantization, "64.0bit"},
                                                    {Param::SampleRate, "192000Hz"},
                                                    {Param::Gate, "-240.0dB"},
                                                    {Param::FilterCutoff, "22050.0Hz"},
                                                    {Param::FilterTransition, "Medium"},
                                                    {Param::RingModulationWaveForm, "Sine3"},
                                                    {Param::PhaserTempoSync, "16.0x"},
                                                    {Param::EnvAttack, "10.000 s"},
                                                    {Param::EnvDecay, "10.000 s"},
                                                    {Param::EnvSustain, "-60.0dB"},
                                                    {Param::EnvRelease, "10.000 s"},
                                                    {Param::EnvDuration, "5.000 s"}};
    const auto found = longest.find(control.param);
    if (found != longest.end()) return found->second;
    std::array<char, 40> text{};
    switch (control.caption.mode) {
    case 1:
        std::snprintf(text.data(), text.size(), "%3.1fdB", extreme ? -60.0 : 20.0 * std::log10(value));
        break;
    case 2:
        std::snprintf(text.data(), text.size(), "%3.1f%%", extreme ? 100.0 : value * 100.0);
        break;
    case 3:
        std::snprintf(text.data(), text.size(), "%4.3f", extreme ? -12.0 : value * 24.0 - 12.0);
        break;
    case 4:
        std::snprintf(text.data(), text.size(), "%4.3f", extreme ? -1.0 : value * 2.0 - 1.0);
        break;
    case 5:
        std::snprintf(text.data(), text.size(), "%4.3f", extreme ? -0.5 : value - 0.5);
        break;
    case 7:
        return extreme ? "1/16x" : "2.0x";
    default:
        std::snprintf(text.data(), text.size(), "%.3f", value);
        break;
    }
    return text.data();
}

std::string MenuText(const PlacedControl& control) {
    switch (control.kind) {
    case ControlKind::WaveformMenu:
        return control.param == 1 ? "Brick-Breaker" : "Low-Q Noise 1";
    case ControlKind::LfoModeMenu:
        return "Sine(Pos.)";
    case ControlKind::FilterMenu:
        return control.param < 63 ? "PK LP" : control.param == 118 ? "RBJ-BP1" : "CH-HP12";
    case ControlKind::NoteModeMenu:
        return "G#1 Kick 51.9Hz";
    case ControlKind::CurveMenu:
        return "40: Public Enemy by O:MAR";
    case ControlKind::PresetMenu:
        return "07: Electronic Kick";
    case ControlKind::NoteText:
        return "523.25Hz [C5]";
    case ControlKind::HostInfoText:
        return "HOST SAMPLE RATE: 44100.00 Hz    TEMPO: 120.000 BPM    BLOCKSIZE: 512 samples";
    default:
        return control.text;
    }
}

int FrameOf(const PlacedControl& control, int frames) {
    switch (control.kind) {
    case ControlKind::Knob:
    case ControlKind::TransposeKnob:
        return static_cast<int>(std::lround((frames - 1) * SampleValue(control)));
    case ControlKind::Switch:
        return static_cast<int>(SampleValue(control) * frames);
    case ControlKind::WaveSelect:
        return control.direction % 2;
    case ControlKind::FillModeButton:
        return 1;
    default:
        return 0;
    }
}

void Curve(Canvas& canvas, const PlacedControl& control) {
    const IRECT& r = control.rect;
    const double middle = r.T + r.H() / 2.0;
    canvas.Shapes([&](cairo_t* context) {
        cairo_new_path(context);
        for (int i = 0; i < r.W(); ++i) {
            const double t = static_cast<double>(i) / r.W();
            double y = std::sin(2.0 * kPi * t);
            if (control.kind == ControlKind::EnvelopePicture || control.kind == ControlKind::PitchPicture) {
                y = 2.0 * std::exp(-4.0 * t) - 1.0;
            }
            if (control.kind == ControlKind::CurveDraw) y = std::tanh(4.0 * (2.0 * t - 1.0));
            cairo_line_to(context, r.L + i + 0.5, middle - y * (r.H() / 2.0 - 0.5));
        }
        SetColor(context, Gray(0.85));
        cairo_set_line_width(context, 1.0);
        cairo_stroke(context);
    });
}

void Eye(Canvas& canvas, const PlacedControl& control) {
    const Box box = BoxOf(control.rect);
    canvas.Shapes([&](cairo_t* context) {
        cairo_move_to(context, control.direction == 1 ? box.x : box.x + box.w, box.y);
        cairo_line_to(context, box.x, box.y + box.h);
        cairo_line_to(context, box.x + box.w, box.y + box.h);
        cairo_close_path(context);
        SetColor(context, {0.9, 0.0, 0.0});
        cairo_fill(context);
    });
}

void DrawControl(Canvas& canvas, const PlacedControl& control, bool extreme, Page page) {
    if (control.bitmap != Bitmap::None) {
        const Drawn& drawn = BitmapOf(control.bitmap);
        int frame = FrameOf(control, drawn.frames);
        if (control.kind == ControlKind::Tab) frame = control.direction == static_cast<int>(page) ? 1 : 0;
        int x = control.rect.L;
        if (control.kind == ControlKind::Fader) {
            x += static_cast<int>((control.rect.W() - 14) * SampleValue(control));
        }
        canvas.PasteFrame(drawn.strip, drawn.frames, frame, x, control.rect.T);
    }
    switch (control.kind) {
    case ControlKind::WavePicture:
    case ControlKind::PitchPicture:
    case ControlKind::EnvelopePicture:
    case ControlKind::CurveDraw:
    case ControlKind::CurvePreview:
        Curve(canvas, control);
        break;
    case ControlKind::Eye:
        Eye(canvas, control);
        break;
    default:
        break;
    }
    const std::string text = MenuText(control);
    if (!text.empty()) EditorText(canvas, text, control.rect, control.style);
    if (*control.label.text != '\0')
        EditorText(canvas, control.label.text, control.label.rect, control.label.style);
    if (!control.caption.rect.Empty()) {
        EditorText(canvas, CaptionText(control, extreme), control.caption.rect, control.caption.style);
    }
}

} // namespace

Canvas MockPage(Page page, bool extreme) {
    Canvas canvas(Grimworks::kEditorWidth, Grimworks::kEditorHeight);
    for (const Panel& panel : EditorPanels()) {
        if (panel.page != page && panel.page != Page::Every) continue;
        for (const PlacedControl& control : panel.controls) {
            if (control.bitmap == Bitmap::ControlsBackground && page != Page::Synth) continue;
            DrawControl(canvas, control, extreme, page);
        }
    }
    return canvas;
}

} // namespace Artwork
