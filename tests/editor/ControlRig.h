#pragma once

#include "editor/LICE_MemBitmap.h"
#include "tests/editor/FakePlug.h"
#include "tests/editor/ScriptedGraphics.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <utility>

namespace Grimworks {

/// Bitmaps whose frames are plain colours, so that one pixel tells which frame was drawn.
class TestStrips {
public:
    /// Frame n, counted from `first` on, is opaque with red n, green 100 and blue 200.
    IBitmap Make(int frameWidth, int frameHeight, int frames, bool horizontal = false, int first = 1) {
        const int width = horizontal ? frameWidth * frames : frameWidth;
        const int height = horizontal ? frameHeight : frameHeight * frames;
        LICE_MemBitmap& pixels = bitmaps.emplace_back(width, height);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const int frame = (horizontal ? x / frameWidth : y / frameHeight) + first;
                pixels.getBits()[y * width + x] = LICE_RGBA(frame, 100, 200, 255);
            }
        }
        return {&pixels, width, height, frames, horizontal};
    }

private:
    std::deque<LICE_MemBitmap> bitmaps;
};

/// A headless editor of 300 by 200 on a plug-in, for controls that a test attaches.
struct ControlRig {
    static constexpr int kWidth = 300;
    static constexpr int kHeight = 200;
    /// A parameter without a unit, and one with "s".
    static constexpr int kPlain = 4;
    static constexpr int kWithLabel = 63;

    ControlRig() { plug.AttachGraphics(&graphics); }
    ~ControlRig() { plug.AttachGraphics(nullptr); }
    ControlRig(const ControlRig&) = delete;
    ControlRig& operator=(const ControlRig&) = delete;

    template <class Control, class... Arguments>
    Control& Attach(Arguments&&... arguments) {
        auto control = std::make_unique<Control>(&plug, std::forward<Arguments>(arguments)...);
        Control& attached = *control;
        graphics.AttachControl(std::move(control));
        return attached;
    }

    /// Draws everything on black.
    void DrawAll() {
        graphics.texts.clear();
        std::fill_n(graphics.DrawBuffer().getBits(), kWidth * kHeight, LICE_RGBA(0, 0, 0, 255));
        graphics.SetStrictDrawing(true);
        graphics.Draw(IRECT(0, 0, kWidth, kHeight));
    }

    [[nodiscard]] LICE_pixel Pixel(int x, int y) { return graphics.DrawBuffer().getBits()[y * kWidth + x]; }

    /// Frame number of what DrawAll put at x, y with a bitmap of TestStrips; 0 for none.
    [[nodiscard]] int FrameAt(int x, int y) {
        const LICE_pixel pixel = Pixel(x, y) & 0xFFFFFFU;
        const auto frame = static_cast<int>(pixel >> 16U);
        return pixel == (LICE_RGBA(frame, 100, 200, 0) & 0xFFFFFFU) ? frame : 0;
    }

    /// The value of a parameter as the plug-in has it.
    [[nodiscard]] double Get(int id) { return plug.GetParameterNormalized(id); }

    TestStrips strips;
    FakePlug plug;
    ScriptedGraphics graphics{plug, kWidth, kHeight};
};

/// Buttons and keys as the tests name them.
inline const IMouseMod kLeft{true};
inline const IMouseMod kRight{false, true};
inline const IMouseMod kLeftShift{true, false, true};
inline const IMouseMod kLeftControl{true, false, false, true};
inline const IMouseMod kNoButton{};

} // namespace Grimworks
