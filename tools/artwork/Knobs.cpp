#include "tools/artwork/Knobs.h"

#include "tools/artwork/Style.h"

#include <array>
#include <cmath>

namespace Artwork {

namespace {

constexpr double kTurn = 270.0;

/// Measures of a knob by its size; everything is relative to the centre.
struct Measures {
    double middle;
    double arc; ///< radius of the value arc
    double arcWidth;
    double skirt; ///< radius of the dark base
    double cap;   ///< radius of the turned cap
};

Measures MeasuresOf(int size) {
    const double s = size;
    return {s / 2.0, s / 2.0 - 1.6, s >= 50 ? 2.8 : s >= 40 ? 2.5 : 2.2, s * 0.355, s * 0.295};
}

/// Angle of a position 0..1 as cairo counts: clockwise from the right.
double AngleOf(double position) {
    return (-90.0 - kTurn / 2.0 + kTurn * position) * kPi / 180.0;
}

void Arc(cairo_t* context, const Measures& m, double from, double to, const Color& color, double width) {
    if (to < from) std::swap(from, to);
    cairo_new_path(context);
    cairo_arc(context, m.middle, m.middle, m.arc, AngleOf(from), AngleOf(to));
    SetColor(context, color);
    cairo_set_line_width(context, width);
    cairo_set_line_cap(context, CAIRO_LINE_CAP_BUTT);
    cairo_stroke(context);
}

/// What the lit arc throws on the panel inside it.
void Halo(cairo_t* context, const Measures& m, double from, double to, const Color& color) {
    Measures inner = m;
    for (int i = 0; i < 3; ++i) {
        inner.arc = m.arc - 1.0 - 0.7 * i;
        Arc(context, inner, from, to, color.Alpha(0.13), m.arcWidth + 0.6);
    }
}

void FillDisc(cairo_t* context, double x, double y, double radius, double lit, double dark) {
    const Pattern pattern(
        cairo_pattern_create_linear(x - radius * 0.7, y - radius * 0.7, x + radius * 0.7, y + radius * 0.7));
    cairo_pattern_add_color_stop_rgb(pattern.get(), 0.0, lit, lit, lit * 1.02);
    cairo_pattern_add_color_stop_rgb(pattern.get(), 1.0, dark, dark, dark * 1.04);
    cairo_new_path(context);
    cairo_arc(context, x, y, radius, 0.0, 2.0 * kPi);
    cairo_set_source(context, pattern.get());
    cairo_fill(context);
}

/// The parts that do not turn: the light stays where it is.
void Body(cairo_t* context, const Measures& m) {
    const double c = m.middle;
    for (int i = 0; i < 6; ++i) {
        FillCircle(context, c + 0.9, c + 1.6, m.skirt + 2.2 - 0.45 * i, Gray(0.0, 0.11));
    }
    FillDisc(context, c, c, m.skirt, 0.34, 0.045);
    FillDisc(context, c, c, m.skirt - 0.9, 0.155, 0.06);
    FillDisc(context, c, c, m.cap, 0.46, 0.085);
    FillDisc(context, c, c, m.cap - 0.9, 0.235, 0.115);
    // Two bands where the turned face catches the light.
    for (const double angle : {-2.35, 0.79}) {
        cairo_new_path(context);
        cairo_move_to(context, c, c);
        cairo_arc(context, c, c, m.cap - 1.1, angle - 0.36, angle + 0.36);
        cairo_close_path(context);
        SetColor(context, Gray(1.0, angle < 0.0 ? 0.055 : 0.028));
        cairo_fill(context);
    }
}

void Pointer(cairo_t* context, const Measures& m, double position, const Color& accent) {
    const double angle = AngleOf(position);
    const double dx = std::cos(angle);
    const double dy = std::sin(angle);
    const auto stroke = [&](double from, double to, double width, const Color& color) {
        Line(context, m.middle + dx * from, m.middle + dy * from, m.middle + dx * to, m.middle + dy * to,
             color, width);
    };
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    const double width = m.middle >= 20.0 ? 2.3 : 2.0;
    stroke(m.cap * 0.25, m.skirt - 1.2, width + 1.8, Gray(0.0, 0.55));
    stroke(m.cap * 0.25, m.skirt - 1.2, width, Mix(accent, Gray(1.0), 0.82));
    cairo_set_line_cap(context, CAIRO_LINE_CAP_BUTT);
}

} // namespace

Canvas KnobStrip(int size, int frames, const Color& accent, ArcFrom from) {
    const Measures m = MeasuresOf(size);
    const double origin = from == ArcFrom::Middle ? 0.5 : 0.0;
    return MakeStrip(size, size, frames, [&](Canvas& canvas, int frame) {
        const double position = static_cast<double>(frame) / (frames - 1);
        canvas.Shapes([&](cairo_t* context) {
            Arc(context, m, 0.0, 1.0, Gray(0.0, 0.75), m.arcWidth + 0.8);
            Arc(context, m, 0.0, 1.0, Gray(0.215), m.arcWidth - 0.7);
            Halo(context, m, origin, position, accent);
            Arc(context, m, origin, position, accent, m.arcWidth);
            if (from == ArcFrom::Middle)
                Arc(context, m, 0.492, 0.508, Mix(accent, Gray(1.0), 0.45), m.arcWidth);
            Body(context, m);
            Pointer(context, m, position, accent);
        });
    });
}

Canvas SteppedKnobStrip(int size, int frames, const Color& accent) {
    const Measures m = MeasuresOf(size);
    return MakeStrip(size, size, frames, [&](Canvas& canvas, int frame) {
        canvas.Shapes([&](cairo_t* context) {
            for (int state = 0; state < frames; ++state) {
                const double angle = AngleOf(static_cast<double>(state) / (frames - 1));
                const double radius = frames > 6 ? 1.25 : 1.6;
                const double x = m.middle + std::cos(angle) * (m.arc - 0.3);
                const double y = m.middle + std::sin(angle) * (m.arc - 0.3);
                FillCircle(context, x, y, radius + 0.5, Gray(0.0, 0.75));
                if (state == frame) {
                    FillCircle(context, x, y, radius + 0.35, Mix(accent, Gray(1.0), 0.15));
                } else {
                    FillCircle(context, x, y, radius - 0.15, Gray(0.36));
                }
            }
            Body(context, m);
            Pointer(context, m, static_cast<double>(frame) / (frames - 1), accent);
        });
    });
}

} // namespace Artwork
