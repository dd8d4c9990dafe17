#pragma once

#include "editor/IControl.h"
#include "plugin/ScopeRing.h"

#include <array>

namespace Grimworks {

class ThudForge;

/// The oscilloscope: the chosen signals of the instrument's ring, oldest on the left, one pixel an entry. The
/// output has its left channel in the upper half and its right one in the lower; all others are in both.
class IGwWaveDrawer final : public IControl {
public:
    /// Signals in the order in which they are drawn.
    enum Wave : int { Lfo1, Lfo2, Lfo3, VolumeEnv, FilterEnv, Output };
    static constexpr int kWaves = 6;

    enum FillMode : int { Hollow = 0, HalfFilled = 1, Filled = 2 };

    IGwWaveDrawer(ThudForge* instrument, const IRECT& rectangle);

    void OnMouseWheel(int x, int y, const IMouseMod& mod, int d) override;
    bool Draw(IGraphics& canvas) override;

    /// As long as it is shown: the picture moves on.
    bool IsDirty() override;

    /// Whether a signal is shown; a number outside Wave gives false and changes nothing.
    [[nodiscard]] bool Shows(int wave) const;
    void Show(int wave, bool on);

    [[nodiscard]] int GetFillMode() const { return fillMode; }
    /// Hollow, half filled, filled, hollow.
    void NextFillMode() { fillMode = (fillMode + 1) % 3; }

    void ShowFrame(bool on) { showFrame = on; }

private:
    struct Column;

    void DrawWave(IGraphics& canvas, int wave) const;
    void DrawHalf(IGraphics& canvas, const Column& column, double sample, double centerY,
                  int& previous) const;

    ThudForge* plug; ///< not owned
    int fillMode = HalfFilled;
    std::array<bool, kWaves> shown{true, true, true, false, false, true};
    double scaleY;
    double centerY1;
    double centerY2;
    bool showFrame = false;
};

} // namespace Grimworks
