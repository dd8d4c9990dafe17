#include "tools/artwork/Lettering.h"

#include "tools/artwork/Style.h"

#include <array>
#include <cmath>
#include <vector>

namespace Artwork {

namespace {

struct Point {
    double x;
    double y;
};

/// Fills the current path like polished steel: bright at the top, a dark horizon, light again below.
void FillSteel(cairo_t* context, double top, double bottom) {
    const Pattern steel(cairo_pattern_create_linear(0.0, top, 0.0, bottom));
    constexpr std::array<std::array<double, 2>, 5> kStops{
        {{0.0, 0.98}, {0.46, 0.72}, {0.54, 0.50}, {0.60, 0.62}, {1.0, 0.86}}};
    for (const auto& stop : kStops) {
        cairo_pattern_add_color_stop_rgb(steel.get(), stop[0], stop[1], stop[1] * 1.01, stop[1] * 1.03);
    }
    cairo_set_source(context, steel.get());
    cairo_fill(context);
}

void SteelText(Canvas& canvas, const char* text, double x, double baseline, const TextLook& look) {
    canvas.Shapes([&](cairo_t* context) {
        for (const double drop : {2.0, 1.0}) {
            cairo_new_path(context);
            AppendText(context, text, x + drop * 0.5, baseline + drop, look);
            SetColor(context, Gray(0.0, 0.6));
            cairo_fill(context);
        }
        cairo_new_path(context);
        AppendText(context, text, x, baseline, look);
        FillSteel(context, baseline - look.size * 0.72, baseline);
    });
}

TextLook Lettering(double size, double tracking, const Color& color, Align align = Align::Center) {
    TextLook look;
    look.size = size;
    look.tracking = tracking;
    look.color = color;
    look.align = align;
    look.smooth = size >= 16.0;
    return look;
}

void Polygon(cairo_t* context, double centerX, const std::vector<Point>& half, bool mirrored) {
    cairo_new_path(context);
    for (const Point& point : half)
        cairo_line_to(context, centerX + point.x, point.y);
    if (mirrored) {
        std::vector<Point> back(half.rbegin(), half.rend());
        for (const Point& point : back)
            cairo_line_to(context, centerX - point.x, point.y);
    }
    cairo_close_path(context);
}

void FillGradient(cairo_t* context, Point from, Point to, double lit, double dark) {
    const Pattern pattern(cairo_pattern_create_linear(from.x, from.y, to.x, to.y));
    cairo_pattern_add_color_stop_rgb(pattern.get(), 0.0, lit, lit, lit * 1.04);
    cairo_pattern_add_color_stop_rgb(pattern.get(), 1.0, dark, dark, dark * 1.05);
    cairo_set_source(context, pattern.get());
    cairo_fill_preserve(context);
}

/// The decaying stroke of a kick, to both sides of the mask.
void KickWave(cairo_t* context, double center, double middle) {
    const Color ember = Accent(Grimworks::Section::Oscillators);
    for (const double side : {-1.0, 1.0}) {
        for (int i = 0; i < 30; ++i) {
            const double distance = 142.0 + 7.4 * i;
            const double t = i / 30.0;
            const double sweep = std::abs(std::cos(2.0 * kPi * 2.3 * std::pow(t, 0.55)));
            const double height = 4.0 + 150.0 * std::exp(-2.4 * t) * (0.25 + 0.75 * sweep);
            const Box bar{center + side * distance - 2.0, middle - height / 2.0, 4.0, height};
            const Color color = Mix(ember, Accent(Grimworks::Section::Distortion), t);
            FillRounded(context, bar, 2.0, color.Alpha(0.95 * std::pow(1.0 - t, 0.8) + 0.05));
        }
    }
}

void Mask(cairo_t* context, double c) {
    const std::vector<Point> outline{{0.0, 8.0},    {58.0, 8.0},    {78.0, 22.0},   {112.0, 16.0},
                                     {126.0, 62.0}, {116.0, 118.0}, {108.0, 184.0}, {74.0, 252.0},
                                     {34.0, 290.0}, {0.0, 296.0}};
    for (int i = 0; i < 8; ++i) {
        cairo_save(context);
        cairo_translate(context, 3.0, 5.0);
        Polygon(context, c, outline, true);
        SetColor(context, Gray(0.0, 0.08));
        cairo_set_line_width(context, 16.0 - 2.0 * i);
        cairo_stroke_preserve(context);
        cairo_fill(context);
        cairo_restore(context);
    }
    Polygon(context, c, outline, true);
    FillGradient(context, {c - 110.0, 10.0}, {c + 90.0, 290.0}, 0.40, 0.07);
    SetColor(context, Gray(0.0));
    cairo_set_line_width(context, 2.0);
    cairo_stroke(context);
    // Facets: each catches the light in its own way.
    struct Facet {
        std::vector<Point> points;
        double left;
        double right;
    };
    const std::vector<Facet> facets{
        {{{0.0, 14.0}, {54.0, 14.0}, {72.0, 30.0}, {88.0, 96.0}, {20.0, 148.0}, {0.0, 150.0}}, 0.33, 0.20},
        {{{82.0, 28.0}, {107.0, 23.0}, {119.0, 62.0}, {110.0, 116.0}, {95.0, 96.0}}, 0.26, 0.10},
        {{{94.0, 106.0}, {109.0, 124.0}, {101.0, 182.0}, {70.0, 246.0}, {58.0, 200.0}, {88.0, 178.0}},
         0.24,
         0.09},
        {{{0.0, 158.0}, {14.0, 156.0}, {26.0, 196.0}, {0.0, 202.0}}, 0.30, 0.19},
        {{{0.0, 264.0}, {46.0, 256.0}, {31.0, 284.0}, {0.0, 289.0}}, 0.24, 0.12}};
    for (const Facet& facet : facets) {
        for (const double side : {-1.0, 1.0}) {
            std::vector<Point> points = facet.points;
            for (Point& point : points)
                point.x *= side;
            Polygon(context, c, points, false);
            const double level = side < 0.0 ? facet.left : facet.right;
            FillGradient(context, {c - 60.0, points.front().y}, {c + 60.0, points.front().y + 120.0},
                         level * 1.15, level * 0.6);
            SetColor(context, Gray(1.0, side < 0.0 ? 0.16 : 0.06));
            cairo_set_line_width(context, 1.0);
            cairo_stroke(context);
        }
    }
}

/// The smith's anvil on the forehead.
void Anvil(cairo_t* context, double c) {
    const std::vector<Point> outline{{-30.0, 58.0}, {24.0, 58.0}, {24.0, 61.0}, {34.0, 62.0}, {22.0, 72.0},
                                     {9.0, 74.0},   {7.0, 82.0},  {17.0, 88.0}, {17.0, 92.0}, {-17.0, 92.0},
                                     {-17.0, 88.0}, {-7.0, 82.0}, {-9.0, 74.0}, {-20.0, 71.0}};
    cairo_save(context);
    cairo_translate(context, 0.0, 1.2);
    Polygon(context, c, outline, false);
    SetColor(context, Gray(1.0, 0.14));
    cairo_fill(context);
    cairo_restore(context);
    Polygon(context, c, outline, false);
    const Color ember = Accent(Grimworks::Section::Oscillators);
    const Pattern hot(cairo_pattern_create_linear(0.0, 56.0, 0.0, 94.0));
    cairo_pattern_add_color_stop_rgb(hot.get(), 0.0, ember.r, ember.g, ember.b);
    cairo_pattern_add_color_stop_rgb(hot.get(), 1.0, 0.62, 0.16, 0.06);
    cairo_set_source(context, hot.get());
    cairo_fill(context);
}

/// Sockets of the eyes, which glow by themselves in the editor, and the grille of the mouth.
void MaskOpenings(cairo_t* context, double c) {
    for (const double side : {-1.0, 1.0}) {
        const std::vector<Point> socket{{side * 84.0, 118.0}, {side * 10.0, 172.0}, {side * 84.0, 174.0}};
        Polygon(context, c, socket, false);
        SetColor(context, Gray(0.012));
        cairo_fill_preserve(context);
        SetColor(context, Gray(1.0, side < 0.0 ? 0.12 : 0.22));
        cairo_set_line_width(context, 1.2);
        cairo_stroke(context);
        const std::vector<Point> ember{{side * 78.0, 128.0}, {side * 22.0, 168.0}, {side * 78.0, 168.0}};
        Polygon(context, c, ember, false);
        SetColor(context, {0.16, 0.02, 0.015});
        cairo_fill(context);
    }
    for (int i = -3; i <= 3; ++i) {
        const double height = 46.0 - std::abs(i) * 4.5;
        const Box slot{c + 13.0 * i - 3.5, 211.0 + std::abs(i) * 0.5, 7.0, height};
        FillVertical(context, slot.Inset(-1.0), 3.0, Gray(0.0), Gray(0.34));
        FillVertical(context, slot, 2.5, Gray(0.01),
                     Mix(Gray(0.02), Accent(Grimworks::Section::Oscillators), 0.72));
    }
}

} // namespace

Canvas ProductTitle(int width, int height) {
    Canvas canvas(width, height);
    const TextLook name = Lettering(32.0, 2.5, Gray(1.0), Align::Left);
    const double baseline = height - 5.0;
    SteelText(canvas, "THUD", 1.0, baseline, name);
    const double split = 1.0 + TextWidth("THUD", name) + name.tracking;
    const Color ember = Accent(Grimworks::Section::Oscillators);
    canvas.Shapes([&](cairo_t* context) {
        for (const double drop : {2.0, 1.0, 0.0}) {
            cairo_new_path(context);
            AppendText(context, "FORGE", split + drop * 0.5, baseline + drop, name);
            if (drop > 0.0) {
                SetColor(context, Gray(0.0, 0.6));
                cairo_fill(context);
                continue;
            }
            const Pattern hot(cairo_pattern_create_linear(0.0, baseline - 23.0, 0.0, baseline));
            const Color top = Mix(ember, Gray(1.0), 0.45);
            const Color low = Mix(ember, Accent(Grimworks::Section::Distortion), 0.55);
            cairo_pattern_add_color_stop_rgb(hot.get(), 0.0, top.r, top.g, top.b);
            cairo_pattern_add_color_stop_rgb(hot.get(), 1.0, low.r, low.g, low.b);
            cairo_set_source(context, hot.get());
            cairo_fill(context);
        }
    });
    const double right = split + TextWidth("FORGE", name) + 14.0;
    canvas.Shapes(
        [&](cairo_t* context) { Line(context, right, 6.0, right, height - 4.0, Gray(1.0, 0.22), 1.0); });
    TextLook small = Lettering(12.0, 2.0, Gray(0.86), Align::Left);
    canvas.Text("BASS KICK DESIGN TOOL", right + 13.0, 16.0, small);
    small.size = 11.0;
    small.tracking = 1.0;
    small.face = Face::Regular;
    small.color = Gray(0.64);
    canvas.Text("FREE VERSION 1.8.3", right + 13.0, 29.0, small);
    return canvas;
}

Canvas WordSizeBadge(int width, int height) {
    Canvas canvas(width, height);
    canvas.Shapes([&](cairo_t* context) {
        const Box box{0.5, 0.5, width - 1.0, height - 1.0};
        StrokeRounded(context, box, 4.0, Gray(0.52), 1.2);
    });
    canvas.TextOnMiddle("x64", width / 2.0, height / 2.0, Lettering(13.0, 1.0, Gray(0.82)));
    return canvas;
}

Canvas MakersLogo(int width, int height) {
    Canvas canvas(width, height);
    const double c = width / 2.0;
    canvas.Shapes([&](cairo_t* context) {
        KickWave(context, c, 150.0);
        Mask(context, c);
        Anvil(context, c);
        MaskOpenings(context, c);
    });
    SteelText(canvas, "GRIMWORKS", c + 4.0, 388.0, Lettering(88.0, 8.0, Gray(1.0)));
    canvas.TextOnMiddle("THUDFORGE 1.8.3  -  BASS KICK DESIGN TOOL", c, 407.0,
                        Lettering(13.0, 3.0, Mix(Accent(Grimworks::Section::Oscillators), Gray(1.0), 0.15)));
    return canvas;
}

Canvas FreeVersionText(int width, int height) {
    Canvas canvas(width, height);
    const double c = width / 2.0;
    canvas.TextOnMiddle("This is free software.", c, 20.0, Lettering(18.0, 0.5, Gray(0.95)));
    TextLook line = Lettering(14.0, 0.0, Gray(0.74));
    line.face = Face::Regular;
    canvas.TextOnMiddle("No registration, no time limit, nothing to unlock. Give it to your friends.", c,
                        height - 16.0, line);
    return canvas;
}

Canvas TeamText(int width, int height) {
    Canvas canvas(width, height);
    const double c = width / 2.0;
    canvas.TextOnMiddle("MADE BY THE GRIMWORKS TEAM", c, 10.0, Lettering(13.0, 2.0, Gray(0.92)));
    TextLook line = Lettering(14.0, 0.0, Gray(0.74));
    line.face = Face::Regular;
    const std::array<const char*, 4> lines{
        "A handful of sound smiths who like their kicks heavy, their clicks sharp",
        "and their tails long. Hammered out after dark, tested on club systems,",
        "kitchen radios and one unlucky car. Thanks to everyone who sent loops,",
        "blown speakers and honest words."};
    const double pitch = (height - 26.0) / static_cast<double>(lines.size());
    double y = 36.0;
    for (const char* text : lines) {
        canvas.TextOnMiddle(text, c, y, line);
        y += pitch;
    }
    return canvas;
}

Canvas InterfaceMark(int width, int height) {
    Canvas canvas(width, height);
    canvas.Shapes([&](cairo_t* context) {
        const Box box{0.5, 0.5, width - 1.0, height - 1.0};
        StrokeRounded(context, box, 5.0, Gray(0.42), 1.2);
        Line(context, 62.5, 9.0, 62.5, height - 9.0, Gray(0.42), 1.0);
    });
    canvas.TextOnMiddle("VST", 32.0, height / 2.0, Lettering(22.0, 1.5, Gray(0.92)));
    TextLook line = Lettering(12.0, 1.5, Gray(0.76), Align::Left);
    canvas.TextOnMiddle("INSTRUMENT", 76.0, height / 2.0 - 8.0, line);
    canvas.TextOnMiddle("INTERFACE", 76.0, height / 2.0 + 8.0, line);
    return canvas;
}

namespace {

void IconGround(cairo_t* context, int size) {
    const Box box{0.0, 0.0, static_cast<double>(size), static_cast<double>(size)};
    KeyCap(context, box, false, false, Ice());
}

} // namespace

Canvas GlobeIcon(int size) {
    Canvas canvas(size, size);
    canvas.Shapes([&](cairo_t* context) {
        IconGround(context, size);
        const double c = size / 2.0;
        const double r = size * 0.32;
        SetColor(context, Gray(0.9));
        cairo_set_line_width(context, 1.6);
        for (const double squeeze : {1.0, 0.45}) {
            cairo_save(context);
            cairo_translate(context, c, c);
            cairo_scale(context, squeeze, 1.0);
            cairo_new_path(context);
            cairo_arc(context, 0.0, 0.0, r, 0.0, 2.0 * kPi);
            cairo_restore(context);
            cairo_stroke(context);
        }
        for (const double row : {-0.5, 0.0, 0.5}) {
            const double reach = r * std::sqrt(1.0 - row * row);
            Line(context, c - reach, c + row * r, c + reach, c + row * r, Gray(0.9), 1.4);
        }
        Line(context, c, c - r, c, c + r, Gray(0.9), 1.4);
    });
    return canvas;
}

Canvas LikeIcon(int size) {
    Canvas canvas(size, size);
    canvas.Shapes([&](cairo_t* context) {
        IconGround(context, size);
        cairo_scale(context, size / 40.0, size / 40.0);
        FillRounded(context, {9.5, 18.0, 5.0, 12.5}, 1.2, Gray(0.9));
        cairo_new_path(context);
        cairo_move_to(context, 16.5, 19.0);
        cairo_line_to(context, 20.6, 9.6);
        cairo_curve_to(context, 23.6, 9.2, 24.6, 11.6, 23.6, 17.0);
        cairo_line_to(context, 29.2, 17.0);
        cairo_curve_to(context, 31.2, 17.0, 31.6, 18.6, 31.2, 20.2);
        cairo_line_to(context, 29.2, 28.6);
        cairo_curve_to(context, 28.8, 30.0, 28.0, 30.5, 26.8, 30.5);
        cairo_line_to(context, 16.5, 30.5);
        cairo_close_path(context);
        SetColor(context, Gray(0.9));
        cairo_fill(context);
    });
    return canvas;
}

} // namespace Artwork
