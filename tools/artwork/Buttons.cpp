#include "tools/artwork/Buttons.h"

#include "tools/artwork/Style.h"

#include <cmath>

namespace Artwork {

namespace {

Box FrameBox(int width, int height) {
    return {0.0, 0.0, static_cast<double>(width), static_cast<double>(height)};
}

TextLook Legend(double size, bool lit) {
    TextLook look;
    look.size = size;
    look.color = lit ? Gray(1.0) : LegendOff();
    look.tracking = size >= 12.0 ? 1.0 : 0.0;
    return look;
}

double LegendSize(int height) {
    return height >= 28 ? 12.0 : height >= 25 ? 11.0 : 10.0;
}

void Lamp(cairo_t* context, const Box& box, bool lit, const Color& accent) {
    FillRounded(context, box.Inset(-0.6), 1.6, Gray(0.0, 0.9));
    if (!lit) {
        FillRounded(context, box, 1.2, Gray(0.17));
        return;
    }
    Glow(context, box.x + box.w / 2.0, box.y + box.h / 2.0, box.h * 0.9, accent.Alpha(0.55));
    FillVertical(context, box, 1.2, Mix(accent, Gray(1.0), 0.55), accent);
}

void Down(Canvas& canvas, bool pressed, bool lit, const Color& accent) {
    canvas.Shapes([&](cairo_t* context) {
        KeyCap(context, FrameBox(canvas.Width(), canvas.Height()), pressed, lit, accent);
    });
}

} // namespace

Canvas ToggleStrip(int width, int height, std::string_view off, std::string_view on, const Color& accent) {
    return MakeStrip(width, height, 2, [&](Canvas& canvas, int frame) {
        const bool lit = frame == 1;
        Down(canvas, lit, lit, accent);
        const double lampHeight = height - 10.0;
        canvas.Shapes([&](cairo_t* context) { Lamp(context, {5.0, 5.0, 3.0, lampHeight}, lit, accent); });
        canvas.TextOnMiddle(lit ? on : off, (width + 8.0) / 2.0, height / 2.0 + (lit ? 0.5 : 0.0),
                            Legend(LegendSize(height), lit));
    });
}

Canvas MomentaryStrip(int width, int height, std::string_view legend, const Color& accent) {
    return MakeStrip(width, height, 2, [&](Canvas& canvas, int frame) {
        const bool held = frame == 1;
        Down(canvas, held, held, accent);
        TextLook look = Legend(LegendSize(height), held);
        if (!held) look.color = Gray(0.82);
        canvas.TextOnMiddle(legend, width / 2.0, height / 2.0 + (held ? 1.0 : 0.0), look);
    });
}

Canvas ChoiceStrip(int width, int height, const std::vector<std::string>& legends, const Color& accent) {
    const int frames = static_cast<int>(legends.size());
    return MakeStrip(width, height, frames, [&](Canvas& canvas, int frame) {
        Down(canvas, false, false, accent);
        const double gap = 3.0;
        const double lamp = (height - 8.0 - gap * (frames - 1)) / frames;
        canvas.Shapes([&](cairo_t* context) {
            for (int i = 0; i < frames; ++i) {
                Lamp(context, {5.0, 4.0 + i * (lamp + gap), 4.0, lamp}, i == frame, accent);
            }
        });
        TextLook look = Legend(LegendSize(height), true);
        look.color = Mix(accent, Gray(1.0), 0.6);
        canvas.TextOnMiddle(legends[static_cast<std::size_t>(frame)], (width + 9.0) / 2.0, height / 2.0,
                            look);
    });
}

Canvas LevelStrip(int width, int height, std::string_view legend, int frames, const Color& accent) {
    return MakeStrip(width, height, frames, [&](Canvas& canvas, int frame) {
        Down(canvas, frame > 0, frame > 0, accent);
        const int lamps = frames - 1;
        const double gap = 2.5;
        const double lamp = (height - 8.0 - gap * (lamps - 1)) / lamps;
        canvas.Shapes([&](cairo_t* context) {
            for (int i = 0; i < lamps; ++i) {
                Lamp(context, {5.0, 4.0 + (lamps - 1 - i) * (lamp + gap), 4.0, lamp}, i < frame, accent);
            }
        });
        canvas.TextOnMiddle(legend, (width + 9.0) / 2.0, height / 2.0, Legend(LegendSize(height), frame > 0));
    });
}

Canvas ArrowKeyStrip(int width, int height, bool right, const Color& accent) {
    return MakeStrip(width, height, 2, [&](Canvas& canvas, int frame) {
        const bool held = frame == 1;
        Down(canvas, held, held, accent);
        canvas.Shapes([&](cairo_t* context) {
            const Color color = held ? Gray(1.0) : Mix(accent, Gray(0.85), 0.55);
            const double dir = right ? 1.0 : -1.0;
            const double x = width / 2.0;
            const double y = height / 2.0 + (held ? 0.5 : 0.0);
            Line(context, x - dir * 12.0, y, x + dir * 5.0, y, color, 2.0);
            Chevron(context, x + dir * 7.0, y, 8.0, right, color);
        });
    });
}

Canvas StepStrip(int size, bool right, const Color& accent) {
    return MakeStrip(size, size, 2, [&](Canvas& canvas, int frame) {
        const bool held = frame == 1;
        canvas.Shapes([&](cairo_t* context) {
            KeyCap(context, FrameBox(size, size).Inset(1.0), held, held, accent);
            Chevron(context, size / 2.0, size / 2.0, 7.0, right, held ? Gray(1.0) : Gray(0.8));
        });
    });
}

Canvas ZoomStrip(int size, bool plus) {
    return MakeStrip(size, size, 2, [&](Canvas& canvas, int frame) {
        const bool held = frame == 1;
        Down(canvas, held, held, Ice());
        canvas.Shapes([&](cairo_t* context) {
            const double c = size / 2.0;
            const Color color = held ? Gray(1.0) : Gray(0.82);
            Line(context, c - 5.0, c, c + 5.0, c, color, 2.0);
            if (plus) Line(context, c, c - 5.0, c, c + 5.0, color, 2.0);
        });
    });
}

Canvas NextStrip(int width, int height, const Color& accent) {
    return MakeStrip(width, height, 2, [&](Canvas& canvas, int frame) {
        const bool held = frame == 1;
        Down(canvas, held, held, accent);
        TextLook look = Legend(10.0, held);
        if (!held) look.color = Gray(0.82);
        canvas.TextOnMiddle("NEXT", 19.0, height / 2.0, look);
        canvas.Shapes([&](cairo_t* context) {
            Chevron(context, 38.0, height / 2.0, 6.0, true, held ? Gray(1.0) : accent);
        });
    });
}

Canvas PlayStrip(int width, int height) {
    const Color accent{0.36, 0.86, 0.47};
    return MakeStrip(width, height, 2, [&](Canvas& canvas, int frame) {
        const bool held = frame == 1;
        Down(canvas, held, held, accent);
        TextLook look = Legend(10.0, held);
        if (!held) look.color = Gray(0.82);
        canvas.TextOnMiddle("PLAY", 29.0, height / 2.0, look);
        canvas.Shapes([&](cairo_t* context) {
            Chevron(context, 10.5, height / 2.0, 8.0, true, held ? Gray(1.0) : accent);
        });
    });
}

Canvas PowerStrip(int size) {
    return MakeStrip(size, size, 2, [&](Canvas& canvas, int frame) {
        const bool on = frame == 1;
        canvas.Shapes([&](cairo_t* context) {
            const double c = size / 2.0;
            if (on) Glow(context, c, c, c, Ice().Alpha(0.5));
            FillCircle(context, c, c, c - 2.0, Gray(0.0, 0.9));
            FillCircle(context, c, c + 0.4, c - 2.6, Gray(0.22));
            FillCircle(context, c, c, c - 3.0, on ? Ice() : Gray(0.085));
            const Color glyph = on ? Gray(0.05) : LegendOff();
            cairo_new_path(context);
            cairo_arc(context, c, c + 0.4, 3.5, -kPi / 2.0 + 0.75, 1.5 * kPi - 0.75);
            SetColor(context, glyph);
            cairo_set_line_width(context, 1.4);
            cairo_stroke(context);
            Line(context, c, c - 4.4, c, c + 0.2, glyph, 1.5);
        });
    });
}

Canvas TabStrip(int width, int height, std::string_view legend) {
    return MakeStrip(width, height, 2, [&](Canvas& canvas, int frame) {
        const bool on = frame == 1;
        Down(canvas, on, false, Ice());
        canvas.Shapes([&](cairo_t* context) {
            if (!on) return;
            FillVertical(context, {2.0, height - 4.0, width - 4.0, 2.0}, 1.0, Gray(1.0), Ice().Alpha(0.8));
            Glow(context, width / 2.0, height - 3.0, 30.0, Ice().Alpha(0.16));
        });
        TextLook look = Legend(12.0, on);
        canvas.TextOnMiddle(legend, width / 2.0 + 0.5, height / 2.0 - (on ? 0.5 : 0.0), look);
    });
}

namespace {

/// One cycle of a sine between two places; `half` 0 fills both half-waves, 1 the upper, 2 the lower.
void WaveGlyph(cairo_t* context, const Box& box, int half, const Color& accent) {
    const double middle = box.y + box.h / 2.0;
    for (int side = 0; side < 2; ++side) {
        const bool upper = side == 0;
        const bool filled = half == 0 || (half == 1) == upper;
        const double from = box.x + (upper ? 0.0 : box.w / 2.0);
        cairo_new_path(context);
        cairo_move_to(context, from, middle);
        for (int i = 1; i <= 16; ++i) {
            const double t = i / 16.0;
            const double y = middle + (upper ? -1.0 : 1.0) * std::sin(kPi * t) * box.h / 2.0;
            cairo_line_to(context, from + t * box.w / 2.0, y);
        }
        SetColor(context, filled ? accent : Gray(0.45));
        if (filled) cairo_fill_preserve(context);
        cairo_set_line_width(context, 1.2);
        cairo_stroke(context);
    }
    Line(context, box.x - 1.5, middle, box.x + box.w + 1.5, middle, Gray(0.55), 1.0);
}

} // namespace

Canvas PolarityStrip(int width, int height, const Color& accent) {
    return MakeStrip(width, height, 3, [&](Canvas& canvas, int frame) {
        Down(canvas, false, false, accent);
        canvas.Shapes([&](cairo_t* context) {
            WaveGlyph(context, {6.0, 5.0, 18.0, height - 10.0}, frame, accent);
        });
        TextLook look = Legend(11.0, true);
        look.color = Mix(accent, Gray(1.0), 0.6);
        canvas.TextOnMiddle(frame == 0 ? "+/-" : frame == 1 ? "+" : "-", 35.5, height / 2.0, look);
    });
}

Canvas FillModeStrip(int width, int height, const Color& accent) {
    return MakeStrip(width, height, 3, [&](Canvas& canvas, int frame) {
        Down(canvas, false, false, accent);
        canvas.Shapes([&](cairo_t* context) {
            const double middle = height / 2.0;
            const auto shape = [&](double scale) {
                cairo_new_path(context);
                for (int i = 0; i <= 48; ++i) {
                    const double t = i / 48.0;
                    const double y = middle - scale * 7.0 * std::sin(2.0 * kPi * t * 2.0) * (1.0 - 0.55 * t);
                    if (i == 0) {
                        cairo_move_to(context, 9.0 + t * (width - 18.0), y);
                    } else {
                        cairo_line_to(context, 9.0 + t * (width - 18.0), y);
                    }
                }
            };
            if (frame == 1) {
                shape(1.0);
                cairo_line_to(context, width - 9.0, middle);
                cairo_line_to(context, 9.0, middle);
                cairo_close_path(context);
                SetColor(context, accent.Alpha(0.38));
                cairo_fill(context);
            }
            if (frame == 2) {
                for (const double sign : {1.0, -1.0}) {
                    shape(sign);
                    SetColor(context, accent);
                    cairo_fill(context);
                }
            }
            shape(1.0);
            SetColor(context, accent);
            cairo_set_line_width(context, 1.4);
            cairo_stroke(context);
            Line(context, 7.0, middle, width - 7.0, middle, Gray(1.0, 0.35), 1.0);
        });
    });
}

Canvas FreezeStrip(int width, int height, int emptyRows) {
    const int keyHeight = height - emptyRows;
    const Canvas key = ToggleStrip(width, keyHeight, "FREEZE", "FROZEN", {0.55, 0.86, 1.0});
    return MakeStrip(width, height, 2,
                     [&](Canvas& canvas, int frame) { canvas.PasteFrame(key, 2, frame, 0, emptyRows); });
}

} // namespace Artwork
