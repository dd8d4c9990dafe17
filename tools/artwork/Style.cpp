#include "tools/artwork/Style.h"

namespace Artwork {

namespace {

void AddStop(const Pattern& pattern, double offset, const Color& color) {
    cairo_pattern_add_color_stop_rgba(pattern.get(), offset, color.r, color.g, color.b, color.a);
}

void FillBetween(cairo_t* context, const Box& box, double radius, const Color& from, const Color& to,
                 double toX, double toY) {
    const Pattern pattern(cairo_pattern_create_linear(box.x, box.y, toX, toY));
    AddStop(pattern, 0.0, from);
    AddStop(pattern, 1.0, to);
    RoundedPath(context, box, radius);
    cairo_set_source(context, pattern.get());
    cairo_fill(context);
}

} // namespace

Color Accent(Grimworks::Section section) {
    return FromEditor(Grimworks::SectionColor(section));
}

Color Ice() {
    return {0.93, 0.96, 0.98};
}

Color LegendOff() {
    return {0.63, 0.66, 0.69};
}

Color Glass() {
    return FromEditor(Grimworks::DisplayColor());
}

Box BoxOf(const Grimworks::IRECT& rect) {
    return {static_cast<double>(rect.L), static_cast<double>(rect.T), static_cast<double>(rect.W()),
            static_cast<double>(rect.H())};
}

void SetColor(cairo_t* context, const Color& color) {
    cairo_set_source_rgba(context, color.r, color.g, color.b, color.a);
}

void RoundedPath(cairo_t* context, const Box& box, double radius) {
    cairo_new_sub_path(context);
    cairo_arc(context, box.x + box.w - radius, box.y + radius, radius, -kPi / 2.0, 0.0);
    cairo_arc(context, box.x + box.w - radius, box.y + box.h - radius, radius, 0.0, kPi / 2.0);
    cairo_arc(context, box.x + radius, box.y + box.h - radius, radius, kPi / 2.0, kPi);
    cairo_arc(context, box.x + radius, box.y + radius, radius, kPi, 1.5 * kPi);
    cairo_close_path(context);
}

void FillRounded(cairo_t* context, const Box& box, double radius, const Color& color) {
    RoundedPath(context, box, radius);
    SetColor(context, color);
    cairo_fill(context);
}

void StrokeRounded(cairo_t* context, const Box& box, double radius, const Color& color, double lineWidth) {
    RoundedPath(context, box.Inset(lineWidth / 2.0), radius);
    SetColor(context, color);
    cairo_set_line_width(context, lineWidth);
    cairo_stroke(context);
}

void FillVertical(cairo_t* context, const Box& box, double radius, const Color& top, const Color& bottom) {
    FillBetween(context, box, radius, top, bottom, box.x, box.y + box.h);
}

void FillDiagonal(cairo_t* context, const Box& box, double radius, const Color& lit, const Color& dark) {
    FillBetween(context, box, radius, lit, dark, box.x + box.w, box.y + box.h);
}

void FillCircle(cairo_t* context, double x, double y, double radius, const Color& color) {
    cairo_new_path(context);
    cairo_arc(context, x, y, radius, 0.0, 2.0 * kPi);
    SetColor(context, color);
    cairo_fill(context);
}

void Line(cairo_t* context, double x1, double y1, double x2, double y2, const Color& color,
          double lineWidth) {
    cairo_move_to(context, x1, y1);
    cairo_line_to(context, x2, y2);
    SetColor(context, color);
    cairo_set_line_width(context, lineWidth);
    cairo_stroke(context);
}

void Glow(cairo_t* context, double x, double y, double radius, const Color& color) {
    const Pattern pattern(cairo_pattern_create_radial(x, y, 0.0, x, y, radius));
    AddStop(pattern, 0.0, color);
    AddStop(pattern, 0.5, color.Alpha(color.a * 0.3));
    AddStop(pattern, 1.0, color.Alpha(0.0));
    cairo_new_path(context);
    cairo_arc(context, x, y, radius, 0.0, 2.0 * kPi);
    cairo_set_source(context, pattern.get());
    cairo_fill(context);
}

void Shadow(cairo_t* context, const Box& box, double radius, double reach, double strength) {
    const int steps = static_cast<int>(reach * 2.0);
    for (int i = 0; i < steps; ++i) {
        const double out = reach * (1.0 - static_cast<double>(i) / steps);
        RoundedPath(context, box.Inset(-out), radius + out);
        SetColor(context, Gray(0.0, strength / steps));
        cairo_fill(context);
    }
}

namespace {

/// The cut edge and the pane; leaves the context clipped to the pane.
Box BeginPane(cairo_t* context, const Box& box, double radius, const Color& accent) {
    // The edge is dark above and has a hair of light below, as the light comes from above.
    FillVertical(context, box, radius, Gray(0.0), Gray(0.21));
    FillRounded(context, box.Inset(1.0), radius - 0.5, Gray(0.02));
    const Box pane = box.Inset(1.5);
    const Color glass = Glass();
    FillVertical(context, pane, radius - 1.0, Mix(glass, Gray(0.0), 0.35), Mix(glass, accent, 0.045));
    cairo_save(context);
    RoundedPath(context, pane, radius - 1.0);
    cairo_clip(context);
    // Shadow of the edge on the glass.
    for (int i = 0; i < 4; ++i) {
        Line(context, pane.x, pane.y + 0.5 + i, pane.x + pane.w, pane.y + 0.5 + i, Gray(0.0, 0.34 - 0.08 * i),
             1.0);
    }
    return pane;
}

} // namespace

void DullGlassPane(cairo_t* context, const Box& box, double radius, const Color& accent) {
    BeginPane(context, box, radius, accent);
    cairo_restore(context);
}

void GlassPane(cairo_t* context, const Box& box, double radius, const Color& accent) {
    const Box pane = BeginPane(context, box, radius, accent);
    const Pattern shine(cairo_pattern_create_linear(pane.x, pane.y, pane.x + pane.h * 0.8, pane.y + pane.h));
    AddStop(shine, 0.0, Gray(1.0, 0.055));
    AddStop(shine, 0.55, Gray(1.0, 0.018));
    AddStop(shine, 0.56, Gray(1.0, 0.0));
    cairo_rectangle(context, pane.x, pane.y, pane.w, pane.h);
    cairo_set_source(context, shine.get());
    cairo_fill(context);
    cairo_restore(context);
}

void KeyCap(cairo_t* context, const Box& box, bool pressed, bool lit, const Color& accent) {
    constexpr double kRadius = 3.5;
    const Box well = box;
    FillVertical(context, well, kRadius, Gray(0.0, 0.85), Gray(0.19, 0.9));
    const Box cap = well.Inset(1.0);
    if (pressed) {
        FillVertical(context, cap, kRadius - 1.0, Gray(0.035), Gray(0.082));
        FillVertical(context, {cap.x, cap.y, cap.w, 5.0}, kRadius - 1.0, Gray(0.0, 0.6), Gray(0.0, 0.0));
    } else {
        FillVertical(context, cap, kRadius - 1.0, Gray(0.185), Gray(0.095));
        cairo_save(context);
        RoundedPath(context, cap, kRadius - 1.0);
        cairo_clip(context);
        Line(context, cap.x, cap.y + 0.5, cap.x + cap.w, cap.y + 0.5, Gray(1.0, 0.2), 1.0);
        Line(context, cap.x + 0.5, cap.y, cap.x + 0.5, cap.y + cap.h, Gray(1.0, 0.07), 1.0);
        Line(context, cap.x, cap.y + cap.h - 0.5, cap.x + cap.w, cap.y + cap.h - 0.5, Gray(0.0, 0.45), 1.0);
        cairo_restore(context);
    }
    if (lit) {
        FillVertical(context, cap, kRadius - 1.0, accent.Alpha(0.17), accent.Alpha(0.05));
        StrokeRounded(context, cap, kRadius - 1.0, accent.Alpha(0.85), 1.0);
    }
}

void Chevron(cairo_t* context, double x, double y, double size, bool right, const Color& color) {
    const double dir = right ? 1.0 : -1.0;
    cairo_move_to(context, x - dir * size * 0.45, y - size * 0.6);
    cairo_line_to(context, x + dir * size * 0.55, y);
    cairo_line_to(context, x - dir * size * 0.45, y + size * 0.6);
    cairo_close_path(context);
    SetColor(context, color);
    cairo_fill(context);
}

} // namespace Artwork
