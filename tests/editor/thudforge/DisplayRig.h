#pragma once

#include "plugin/ThudForge.h"
#include "tests/editor/HeadlessGraphics.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace Grimworks {

/// An instrument that a test plays, and a black window for the displays that it attaches.
struct DisplayRig {
    static constexpr int kFrames = 1024;

    DisplayRig() { plug.Reset(); }

    /// Renders blocks of kFrames.
    void Play(int blocks) {
        std::vector<double> left(kFrames);
        std::vector<double> right(kFrames);
        std::array<double*, 2> outputs{left.data(), right.data()};
        for (int i = 0; i < blocks; ++i)
            plug.ProcessDoubleReplacing(nullptr, outputs.data(), kFrames);
    }

    void NoteOn(std::uint8_t note) { plug.ProcessMidiMsg({0, 0x90, note, 127}); }
    void Set(int id, double value) { plug.SetParameterFromHost(id, value); }

    /// Draws everything on black.
    void DrawAll() {
        LICE_Clear(&graphics.DrawBuffer(), LICE_RGBA(0, 0, 0, 255));
        graphics.SetStrictDrawing(true);
        graphics.Draw(IRECT(0, 0, graphics.Width(), graphics.Height()));
    }

    /// The colour of a pixel, without its alpha.
    [[nodiscard]] LICE_pixel Color(int x, int y) { return graphics.Pixel(x, y) & 0xFFFFFFU; }

    ThudForge plug{nullptr};
    HeadlessGraphics graphics{plug};
};

[[nodiscard]] inline LICE_pixel Rgb(int r, int g, int b) {
    return LICE_RGBA(r, g, b, 0);
}
[[nodiscard]] inline LICE_pixel Gray(int level) {
    return Rgb(level, level, level);
}

inline const LICE_pixel kBlack = Rgb(0, 0, 0);
inline const LICE_pixel kWhite = Rgb(255, 255, 255);
inline const IMouseMod kLeftDown{true};
inline const IMouseMod kRightDown{false, true};

} // namespace Grimworks
