#pragma once

#include "editor/thudforge/Layout.h"
#include "tools/artwork/Canvas.h"

namespace Artwork {

/// The look that everything shares: near-black metal, one light from the top left, an accent for each
/// section.

inline constexpr double kPi = 3.14159265358979323846;

[[nodiscard]] Color Accent(Grimworks::Section section);

/// Bright neutral of what is lit without belonging to a section.
[[nodiscard]] Color Ice();
[[nodiscard]] Color LegendOff(); ///< legend of a button that is not lit
[[nodiscard]] Color Glass();

struct Box {
    double x = 0.0;
    double y = 0.0;
    double w = 0.0;
    double h = 0.0;

    [[nodiscard]] Box Inset(double by) const { return {x + by, y + by, w - 2.0 * by, h - 2.0 * by}; }
    [[nodiscard]] Box Moved(double dx, double dy) const { return {x + dx, y + dy, w, h}; }
};

[[nodiscard]] Box BoxOf(const Grimworks::IRECT& rect);

void SetColor(cairo_t* context, const Color& color);
void RoundedPath(cairo_t* context, const Box& box, double radius);
void FillRounded(cairo_t* context, const Box& box, double radius, const Color& color);
void StrokeRounded(cairo_t* context, const Box& box, double radius, const Color& color,
                   double lineWidth = 1.0);
/// Fills from the top colour to the bottom one.
void FillVertical(cairo_t* context, const Box& box, double radius, const Color& top, const Color& bottom);
/// Fills with the light from the top left.
void FillDiagonal(cairo_t* context, const Box& box, double radius, const Color& lit, const Color& dark);
void FillCircle(cairo_t* context, double x, double y, double radius, const Color& color);
void Line(cairo_t* context, double x1, double y1, double x2, double y2, const Color& color, double lineWidth);
/// A soft round spot that fades to nothing at `radius`.
void Glow(cairo_t* context, double x, double y, double radius, const Color& color);
/// Soft shadow of a rounded box, fading over `reach` pixels.
void Shadow(cairo_t* context, const Box& box, double radius, double reach, double strength);

/// A sunken pane of dark glass with a bezel, filling `box`.
void GlassPane(cairo_t* context, const Box& box, double radius, const Color& accent);

/// A raised key; pressed ones are sunken and darker. Lit ones carry a rim of the accent.
void KeyCap(cairo_t* context, const Box& box, bool pressed, bool lit, const Color& accent);

/// The same glass without reflection, for large panes.
void DullGlassPane(cairo_t* context, const Box& box, double radius, const Color& accent);

/// A triangle that points right (or left), centred on x, y.
void Chevron(cairo_t* context, double x, double y, double size, bool right, const Color& color);

} // namespace Artwork
