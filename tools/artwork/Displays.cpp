#include "tools/artwork/Displays.h"

#include "tools/artwork/Style.h"

#include <cmath>

namespace Artwork {

namespace {

Box Whole(int width, int height) {
    return {0.0, 0.0, static_cast<double>(width), static_cast<double>(height)};
}

void Grid(cairo_t* context, const Box& box, int columns, int rows, const Color& accent, bool axis = true) {
    for (int i = 0; i <= columns; ++i) {
        const bool middle = axis && i * 2 == columns;
        const double x = std::floor(box.x + box.w * i / columns) + 0.5;
        Line(context, x, box.y, x, box.y + box.h, accent.Alpha(middle ? 0.30 : 0.10), 1.0);
    }
    for (int i = 0; i <= rows; ++i) {
        const bool middle = axis && i * 2 == rows;
        const double y = std::floor(box.y + box.h * i / rows) + 0.5;
        Line(context, box.x, y, box.x + box.w, y, accent.Alpha(middle ? 0.30 : 0.10), 1.0);
    }
}

/// A curve over 0..1 in both directions.
template <class Curve>
void Plot(cairo_t* context, const Box& box, Curve curve, const Color& color, double lineWidth, bool fill) {
    constexpr int kSteps = 60;
    cairo_new_path(context);
    for (int i = 0; i <= kSteps; ++i) {
        const double t = static_cast<double>(i) / kSteps;
        const double y = box.y + box.h * (1.0 - curve(t));
        if (i == 0) {
            cairo_move_to(context, box.x, y);
        } else {
            cairo_line_to(context, box.x + t * box.w, y);
        }
    }
    SetColor(context, color);
    cairo_set_line_width(context, lineWidth);
    if (fill) {
        cairo_line_to(context, box.x + box.w, box.y + box.h);
        cairo_line_to(context, box.x, box.y + box.h);
        cairo_close_path(context);
        cairo_fill(context);
    } else {
        cairo_stroke(context);
    }
}

} // namespace

Canvas GlassDisplay(int width, int height, const Color& accent) {
    Canvas canvas(width, height);
    canvas.Shapes([&](cairo_t* context) { GlassPane(context, Whole(width, height), 3.5, accent); });
    return canvas;
}

Canvas GridDisplay(int width, int height, const Color& accent, int columns, int rows, int margin) {
    Canvas canvas = GlassDisplay(width, height, accent);
    canvas.Shapes([&](cairo_t* context) {
        Box box = Whole(width, height).Inset(margin);
        box.w -= 1.0;
        box.h -= 1.0;
        Grid(context, box, columns, rows, accent);
    });
    return canvas;
}

Canvas FlushGridDisplay(int width, int height, const Color& accent, int columns, int rows) {
    Canvas canvas(width, height);
    canvas.Shapes([&](cairo_t* context) {
        FillVertical(context, Whole(width, height), 0.0, Mix(Glass(), Gray(0.0), 0.35),
                     Mix(Glass(), accent, 0.045));
        Grid(context, {0.0, 0.0, width - 1.0, height - 1.0}, columns, rows, accent);
    });
    return canvas;
}

Canvas EqDisplay(int width, int height, const Color& accent) {
    Canvas canvas = GlassDisplay(width, height, accent);
    const Box plot{5.0, 6.0, width - 10.0, height - 22.0};
    canvas.Shapes([&](cairo_t* context) {
        Grid(context, plot, 6, 2, accent);
        const auto bell = [](double at, double wide) {
            return
                [at, wide](double t) { return 0.5 + 0.42 * std::exp(-(t - at) * (t - at) / (wide * wide)); };
        };
        const auto low = [](double t) { return 0.5 + 0.36 / (1.0 + std::exp((t - 0.27) * 22.0)); };
        const auto high = [](double t) { return 0.5 + 0.36 / (1.0 + std::exp((0.76 - t) * 22.0)); };
        Plot(context, plot, low, Mix(accent, Gray(1.0), 0.1).Alpha(0.75), 1.3, false);
        Plot(context, plot, bell(0.55, 0.11), accent, 1.5, false);
        Plot(context, plot, high, Mix(accent, Gray(1.0), 0.1).Alpha(0.75), 1.3, false);
    });
    TextLook look;
    look.face = Face::Regular;
    look.size = 10.0;
    look.color = Mix(accent, Gray(0.85), 0.5);
    const double base = height - 6.0;
    canvas.Text("400", 14.0, base, look);
    canvas.Text("2k", width * 0.56, base, look);
    canvas.Text("4k", width - 12.0, base, look);
    return canvas;
}

Canvas DumpExpandDisplay(int width, int height, const Color& accent) {
    Canvas canvas = GlassDisplay(width, height, accent);
    canvas.Shapes([&](cairo_t* context) {
        const Box plot{4.0, 5.0, width - 8.0, height - 10.0};
        const auto lowPass = [](double t) { return 1.0 / (1.0 + std::exp((t - 0.62) * 18.0)); };
        const auto highPass = [](double t) { return 1.0 / (1.0 + std::exp((0.38 - t) * 18.0)); };
        Plot(context, plot, highPass, Gray(0.55), 1.2, false);
        Plot(context, plot, lowPass, accent, 1.5, false);
    });
    return canvas;
}

Canvas ScopeDisplay(int width, int height, int frameHeight) {
    Canvas canvas(width, height);
    // The traces run from 19 to 1019 and from 20 to 340.
    constexpr double kLeft = 19.0;
    constexpr double kTop = 20.0;
    const Box screen{kLeft - 3.0, kTop - 3.0, 1006.0, 326.0};
    const Color accent{0.45, 0.75, 0.85};
    canvas.Shapes([&](cairo_t* context) {
        const Box frame{0.0, 0.0, static_cast<double>(width), static_cast<double>(frameHeight)};
        FillVertical(context, frame, 6.0, Gray(0.145), Gray(0.085));
        StrokeRounded(context, frame, 6.0, Gray(0.0, 0.9));
        StrokeRounded(context, frame.Inset(1.0), 5.0, Gray(1.0, 0.07));
    });
    canvas.Brush(2.0);
    canvas.Shapes([&](cairo_t* context) {
        DullGlassPane(context, screen, 3.5, accent);
        const Box grid{kLeft, kTop, 999.0, 319.0};
        Grid(context, grid, 20, 8, accent, false);
        Grid(context, grid, 10, 2, accent, false);
        Line(context, kLeft, kTop + 160.5, kLeft + 1000.0, kTop + 160.5, Gray(0.0), 3.0);
        Line(context, kLeft, kTop + 160.5, kLeft + 1000.0, kTop + 160.5, accent.Alpha(0.45), 1.0);
    });
    TextLook look;
    look.size = 11.0;
    look.tracking = 1.0;
    look.color = Gray(0.74);
    canvas.TextOnMiddle("L", 8.0, kTop + 80.0, look);
    canvas.TextOnMiddle("R", 8.0, kTop + 240.0, look);
    look.align = Align::Left;
    look.color = Gray(0.9);
    canvas.TextOnMiddle("OSCILLOSCOPE", kLeft, 9.0, look);
    return canvas;
}

Canvas SliderGroove(int width, int height) {
    Canvas canvas(width, height);
    canvas.Shapes([&](cairo_t* context) {
        const double middle = height / 2.0;
        for (int i = 0; i <= 10; ++i) {
            const double x = 7.0 + (width - 14.0) * i / 10.0;
            const double reach = i % 5 == 0 ? 6.5 : 5.0;
            Line(context, x, middle - reach, x, middle + reach, Gray(1.0, i % 5 == 0 ? 0.42 : 0.20), 1.0);
        }
        const Box groove{1.0, middle - 3.0, width - 2.0, 6.0};
        FillVertical(context, groove, 3.0, Gray(0.0), Gray(0.26));
        FillRounded(context, groove.Inset(1.0), 2.0, Glass());
    });
    return canvas;
}

Canvas SliderHandle(int width, int height) {
    Canvas canvas(width, height);
    canvas.Shapes([&](cairo_t* context) {
        const Box all = Whole(width, height);
        FillRounded(context, all.Inset(0.5), 2.5, Gray(0.0, 0.8));
        const Box cap = all.Inset(1.2);
        FillDiagonal(context, cap, 2.0, Gray(0.50), Gray(0.16));
        FillDiagonal(context, cap.Inset(1.0), 1.5, Gray(0.30), Gray(0.20));
        Line(context, width / 2.0, 2.0, width / 2.0, height - 2.0, Gray(0.0, 0.7), 3.4);
        Line(context, width / 2.0, 2.4, width / 2.0, height - 2.4, Ice(), 1.8);
    });
    return canvas;
}

} // namespace Artwork
