#include "tools/artwork/Backgrounds.h"

#include "tools/artwork/Style.h"

#include <array>
#include <cmath>

namespace Artwork {

using Grimworks::EditorPanels;
using Grimworks::Engraving;
using Grimworks::kEditorHeight;
using Grimworks::kEditorWidth;
using Grimworks::Page;
using Grimworks::Panel;
using Grimworks::PlacedControl;
namespace Bitmap = Grimworks::Bitmap;

namespace {

constexpr double kHeaderHeight = 46.0;
constexpr double kEarWidth = 58.0;

void Screw(cairo_t* context, double x, double y) {
    for (int i = 0; i < 4; ++i)
        FillCircle(context, x + 0.8, y + 1.2, 10.5 - i * 0.6, Gray(0.0, 0.2));
    FillCircle(context, x, y, 9.0, Gray(0.02));
    const Box head{x - 8.0, y - 8.0, 16.0, 16.0};
    FillDiagonal(context, head, 8.0, Gray(0.34), Gray(0.09));
    FillDiagonal(context, head.Inset(1.4), 6.6, Gray(0.19), Gray(0.13));
    cairo_new_path(context);
    for (int i = 0; i < 6; ++i) {
        const double angle = i * kPi / 3.0 + 0.3 + x * 0.01;
        cairo_line_to(context, x + 3.9 * std::cos(angle), y + 3.9 * std::sin(angle));
    }
    cairo_close_path(context);
    SetColor(context, Gray(0.015));
    cairo_fill_preserve(context);
    SetColor(context, Gray(1.0, 0.10));
    cairo_set_line_width(context, 0.8);
    cairo_stroke(context);
}

void Ear(cairo_t* context, double x) {
    const Box ear{x, 0.0, kEarWidth, static_cast<double>(kEditorHeight)};
    FillVertical(context, ear, 0.0, Gray(0.098), Gray(0.062));
    const double edge = x < 1.0 ? kEarWidth : x;
    Line(context, edge + 0.5, 0.0, edge + 0.5, kEditorHeight, Gray(0.0, 0.85), 1.0);
    Line(context, edge - 0.5, 0.0, edge - 0.5, kEditorHeight, Gray(1.0, 0.055), 1.0);
    const double middle = x + kEarWidth / 2.0;
    for (const double y : {26.0, kEditorHeight - 26.0})
        Screw(context, middle, y);
    // Cooling slots.
    for (int i = 0; i < 26; ++i) {
        for (const double from : {92.0, 560.0}) {
            const Box slot{middle - 15.0, from + 7.0 * i, 30.0, 3.0};
            FillVertical(context, slot, 1.5, Gray(0.0), Gray(0.17));
            FillRounded(context, {slot.x + 0.5, slot.y + 0.2, slot.w - 1.0, slot.h - 1.0}, 1.0, Gray(0.012));
        }
    }
}

void EarLettering(Canvas& canvas, const char* text, double x, double angle) {
    TextLook look;
    look.size = 17.0;
    look.tracking = 6.0;
    look.smooth = true;
    canvas.Shapes([&](cairo_t* context) {
        cairo_translate(context, x, kEditorHeight / 2.0);
        cairo_rotate(context, angle);
        cairo_new_path(context);
        AppendText(context, text, 0.0, 7.0, look);
        SetColor(context, Gray(0.0));
        cairo_fill(context);
        AppendText(context, text, 0.0, 6.0, look);
        SetColor(context, Gray(0.56));
        cairo_fill(context);
    });
}

void PanelPlate(cairo_t* context, const Panel& panel) {
    const Box box = BoxOf(panel.frame);
    const Color accent = Accent(panel.section);
    Shadow(context, box.Moved(0.6, 1.2), 5.0, 1.6, 0.75);
    FillVertical(context, box, 5.0, Mix(Gray(0.138), accent, 0.012), Mix(Gray(0.098), accent, 0.006));
    // Light from the top left on the bevel.
    StrokeRounded(context, box, 5.0, Gray(0.0, 0.9));
    cairo_save(context);
    RoundedPath(context, box.Inset(1.0), 4.0);
    cairo_clip(context);
    Line(context, box.x, box.y + 1.5, box.x + box.w, box.y + 1.5, Gray(1.0, 0.13), 1.0);
    Line(context, box.x + 1.5, box.y, box.x + 1.5, box.y + box.h, Gray(1.0, 0.055), 1.0);
    Line(context, box.x, box.y + box.h - 1.5, box.x + box.w, box.y + box.h - 1.5, Gray(0.0, 0.35), 1.0);
    cairo_restore(context);
}

/// A strip of light in the section's colour along the top edge, fading to the right.
void AccentEdge(cairo_t* context, const Panel& panel) {
    const Box box = BoxOf(panel.frame);
    const Color accent = Accent(panel.section);
    const double length = std::min(box.w - 12.0, 200.0);
    constexpr int kSteps = 40;
    for (int i = 0; i < kSteps; ++i) {
        const double fade = 1.0 - static_cast<double>(i) / kSteps;
        const double x = box.x + 6.0 + length * i / kSteps;
        Line(context, x, box.y + 1.0, x + length / kSteps, box.y + 1.0, accent.Alpha(0.95 * fade * fade),
             2.0);
    }
}

void PanelTitle(Canvas& canvas, const Panel& panel) {
    if (*panel.title == '\0') return;
    TextLook look;
    look.size = Grimworks::kTitleSize;
    look.tracking = Grimworks::kTitleTracking;
    look.align = Align::Left;
    look.color = Gray(0.0, 0.7);
    canvas.TextOnMiddle(panel.title, panel.titleX, panel.titleY + 8.0, look);
    look.color = Mix(Accent(panel.section), Gray(1.0), 0.12);
    canvas.TextOnMiddle(panel.title, panel.titleX, panel.titleY + 7.0, look);
}

void Heading(Canvas& canvas, const Engraving& engraving) {
    TextLook look;
    look.size = Grimworks::kHeadingSize;
    look.tracking = Grimworks::kHeadingTracking;
    look.color = Mix(Accent(engraving.section), Gray(0.62), 0.42);
    const Box box = BoxOf(engraving.rect);
    const double middle = box.y + box.h / 2.0;
    const double center = box.x + box.w / 2.0;
    const double reach = TextWidth(engraving.text, look) / 2.0 + 6.0;
    canvas.Shapes([&](cairo_t* context) {
        const double y = std::floor(middle) + 0.5;
        const Color line = Accent(engraving.section).Alpha(0.34);
        if (center - reach - box.x < 4.0) return;
        Line(context, box.x, y, center - reach, y, line, 1.0);
        Line(context, center + reach, y, box.x + box.w, y, line, 1.0);
        Line(context, box.x + 0.5, y, box.x + 0.5, y + 4.0, line, 1.0);
        Line(context, box.x + box.w - 0.5, y, box.x + box.w - 0.5, y + 4.0, line, 1.0);
    });
    canvas.TextOnMiddle(engraving.text, center, middle, look);
}

/// A groove that parts or connects.
void Groove(Canvas& canvas, const Engraving& engraving) {
    const Box box = BoxOf(engraving.rect);
    canvas.Shapes([&](cairo_t* context) {
        const bool upright = engraving.rect.L == engraving.rect.R;
        const double dx = upright ? 1.0 : 0.0;
        Line(context, box.x + 0.5, box.y + 0.5, box.x + box.w + 0.5, box.y + box.h + 0.5,
             Mix(Gray(0.0), Accent(engraving.section), 0.36), 1.0);
        Line(context, box.x + 0.5 + dx, box.y + 1.5 - dx, box.x + box.w + 0.5 + dx, box.y + box.h + 1.5 - dx,
             Gray(1.0, 0.05), 1.0);
    });
}

/// Edges of panes that the editor draws up to their border.
void PaneEdges(Canvas& canvas, const Panel& panel) {
    for (const PlacedControl& control : panel.controls) {
        if (control.bitmap != Bitmap::CurveDisplay && control.bitmap != Bitmap::PreviewDisplay) continue;
        canvas.Shapes([&](cairo_t* context) {
            const Box box = BoxOf(control.rect).Inset(-2.0);
            FillVertical(context, box, 2.5, Gray(0.0), Gray(0.23));
            FillRounded(context, box.Inset(1.0), 1.5, Gray(0.015));
        });
    }
}

/// The road of the sub-oscillator: from the knobs to the effects or to frequency modulation.
void SubOscillatorRoad(Canvas& canvas) {
    const Color accent = Accent(Grimworks::Section::Oscillators);
    canvas.Shapes([&](cairo_t* context) {
        const Color line = accent.Alpha(0.5);
        const double y = 719.0;
        Line(context, 274.0, y, 288.0, y, line, 1.5);
        Line(context, 342.0, y, 360.0, y, line, 1.5);
        Line(context, 452.0, y, 458.0, y, line, 1.5);
        Line(context, 458.0, 706.5, 458.0, 731.5, line, 1.5);
        for (const double end : {707.0, 731.0})
            Line(context, 457.3, end, 464.0, end, line, 1.5);
        // A decaying sub wave, as it leaves the knobs.
        cairo_new_path(context);
        for (int i = 0; i <= 120; ++i) {
            const double t = i / 120.0;
            const double x = 84.0 + 80.0 * t;
            const double wave = std::sin(2.0 * kPi * 3.2 * std::pow(t, 0.62)) * std::exp(-2.2 * t);
            cairo_line_to(context, x, 716.0 - 26.0 * wave);
        }
        SetColor(context, accent.Alpha(0.10));
        cairo_set_line_width(context, 6.0);
        cairo_stroke_preserve(context);
        SetColor(context, accent.Alpha(0.62));
        cairo_set_line_width(context, 1.6);
        cairo_stroke(context);
        Line(context, 82.0, 716.0, 164.0, 716.0, Gray(1.0, 0.16), 1.0);
    });
}

/// Two voices of one note, a little apart.
void UnisonSign(cairo_t* context) {
    const Color accent = Accent(Grimworks::Section::Oscillators);
    for (int voice = 0; voice < 2; ++voice) {
        cairo_new_path(context);
        for (int i = 0; i <= 60; ++i) {
            const double t = i / 60.0;
            const double cycles = voice == 0 ? 2.0 : 2.45;
            cairo_line_to(context, 661.0 + 44.0 * t, 628.0 - 11.0 * std::sin(2.0 * kPi * cycles * t));
        }
        SetColor(context, accent.Alpha(voice == 0 ? 0.62 : 0.32));
        cairo_set_line_width(context, 1.4);
        cairo_stroke(context);
    }
}

/// The echoes of the tempo delay, and the sign of ring modulation.
void SmallSigns(Canvas& canvas) {
    canvas.Shapes([&](cairo_t* context) {
        UnisonSign(context);
        const Color delay = Accent(Grimworks::Section::EqualizerDelay);
        for (int i = 0; i < 12; ++i) {
            const double height = 16.0 * std::pow(0.80, i);
            const Box bar{662.0 + 15.6 * i, 771.0 - height, 6.0, height};
            FillRounded(context, bar, 1.0, delay.Alpha(0.62 * std::pow(0.86, i) + 0.08));
        }
        const Color ring = Accent(Grimworks::Section::Modulation).Alpha(0.5);
        cairo_new_path(context);
        cairo_arc(context, 933.0, 307.0, 13.0, 0.0, 2.0 * kPi);
        SetColor(context, ring);
        cairo_set_line_width(context, 1.5);
        cairo_stroke(context);
        const double r = 13.0 * std::sqrt(0.5);
        Line(context, 933.0 - r, 307.0 - r, 933.0 + r, 307.0 + r, ring, 1.5);
        Line(context, 933.0 - r, 307.0 + r, 933.0 + r, 307.0 - r, ring, 1.5);
        Line(context, 951.0, 307.0, 964.0, 307.0, ring, 1.5);
    });
}

} // namespace

Canvas Chassis() {
    Canvas canvas(kEditorWidth, kEditorHeight);
    canvas.Shapes([](cairo_t* context) {
        FillVertical(context, {0.0, 0.0, kEditorWidth, kEditorHeight}, 0.0, Gray(0.078), Gray(0.043));
        FillVertical(context, {0.0, 0.0, kEditorWidth, kHeaderHeight}, 0.0, Gray(0.125), Gray(0.075));
        Line(context, 0.0, kHeaderHeight - 0.5, kEditorWidth, kHeaderHeight - 0.5, Gray(0.0), 1.0);
        Line(context, 0.0, kHeaderHeight + 0.5, kEditorWidth, kHeaderHeight + 0.5, Gray(1.0, 0.05), 1.0);
        Ear(context, 0.0);
        Ear(context, kEditorWidth - kEarWidth);
    });
    canvas.Brush(2.6);
    EarLettering(canvas, "GRIMWORKS", kEarWidth / 2.0, -kPi / 2.0);
    EarLettering(canvas, "THUDFORGE", kEditorWidth - kEarWidth / 2.0, kPi / 2.0);
    return canvas;
}

Canvas ControlsPlate() {
    Canvas canvas(kEditorWidth, kEditorHeight);
    canvas.Shapes([](cairo_t* context) {
        for (const Panel& panel : EditorPanels()) {
            if (panel.page == Page::Synth && !panel.frame.Empty()) PanelPlate(context, panel);
        }
    });
    canvas.Brush(2.6);
    canvas.Shapes([](cairo_t* context) {
        for (const Panel& panel : EditorPanels()) {
            if (panel.page == Page::Synth && !panel.frame.Empty()) AccentEdge(context, panel);
        }
    });
    for (const Panel& panel : EditorPanels()) {
        if (panel.page != Page::Synth) continue;
        PanelTitle(canvas, panel);
        PaneEdges(canvas, panel);
        for (const Engraving& engraving : panel.engravings) {
            if (engraving.kind == Engraving::Kind::Heading) {
                Heading(canvas, engraving);
            } else {
                Groove(canvas, engraving);
            }
        }
    }
    SubOscillatorRoad(canvas);
    SmallSigns(canvas);
    return canvas;
}

} // namespace Artwork
