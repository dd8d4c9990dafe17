#include "editor/thudforge/IGwWaveDrawer.h"

#include "core/Maths.h"
#include "editor/IGraphics.h"
#include "plugin/ThudForge.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>

namespace Grimworks {

namespace {

struct WaveColors {
    IColor line;
    IColor fill;
};

const std::array<WaveColors, IGwWaveDrawer::kWaves> kColors{{
    {{255, 0, 100, 255}, {255, 0, 50, 127}},
    {{255, 0, 220, 255}, {255, 0, 100, 127}},
    {{255, 0, 255, 100}, {255, 0, 127, 50}},
    {{255, 127, 127, 127}, {255, 32, 32, 32}},
    {{255, 127, 127, 255}, {255, 40, 0, 224}},
    {{255, 255, 250, 250}, {255, 127, 127, 127}},
}};
const IColor kMarker{127, 63, 63, 63};
const IColor kCenterLine{127, 255, 255, 255};
const IColor kFrame{255, 255, 0, 0};
const IChannelBlend kHalf{IChannelBlend::BlendNone, 0.5F};

/// What a signal shows in the upper and in the lower half.
struct Pair {
    double upper;
    double lower;
};

Pair ValuesOf(const ScopeRing::Entry& entry, int wave) {
    switch (wave) {
    case IGwWaveDrawer::Lfo1:
        return {entry.lfo1, entry.lfo1};
    case IGwWaveDrawer::Lfo2:
        return {entry.lfo2, entry.lfo2};
    case IGwWaveDrawer::Lfo3:
        return {entry.lfo3, entry.lfo3};
    case IGwWaveDrawer::VolumeEnv:
        return {entry.volumeEnv, entry.volumeEnv};
    case IGwWaveDrawer::FilterEnv:
        return {entry.filterEnv, entry.filterEnv};
    default:
        return {entry.left, entry.right};
    }
}

} // namespace

/// One entry of the ring on its way to the screen.
struct IGwWaveDrawer::Column {
    int x;
    bool first; ///< only starts the trace
    IColor line;
    IColor fill;
};

IGwWaveDrawer::IGwWaveDrawer(ThudForge* instrument, const IRECT& rectangle)
    : IControl(instrument, rectangle), plug(instrument), scaleY(rectangle.H() / 4.0),
      centerY1(rectangle.H() / 4.0), centerY2(rectangle.H() * 3.0 / 4.0) {}

void IGwWaveDrawer::OnMouseWheel(int /*x*/, int /*y*/, const IMouseMod& /*mod*/, int d) {
    plug->SetScopeZoom(d >= 1, std::abs(d));
}

bool IGwWaveDrawer::IsDirty() {
    return !hide || IControl::IsDirty();
}

bool IGwWaveDrawer::Shows(int wave) const {
    return wave >= 0 && wave < kWaves && shown[static_cast<std::size_t>(wave)];
}

void IGwWaveDrawer::Show(int wave, bool on) {
    if (wave >= 0 && wave < kWaves) shown[static_cast<std::size_t>(wave)] = on;
}

bool IGwWaveDrawer::Draw(IGraphics& canvas) {
    for (const double center : {centerY1, centerY2}) {
        const int y = rect.T + static_cast<int>(center);
        canvas.DrawLine(kCenterLine, rect.L, y, rect.R - 1, y, kHalf);
    }
    for (int wave = 0; wave < kWaves; ++wave) {
        if (Shows(wave)) DrawWave(canvas, wave);
    }
    if (showFrame) canvas.DrawRect(kFrame, rect);
    return true;
}

void IGwWaveDrawer::DrawWave(IGraphics& canvas, int wave) const {
    const ScopeRing& ring = plug->Scope();
    const WaveColors& colors = kColors[static_cast<std::size_t>(wave)];
    const std::uint32_t oldest = ring.WritePos();
    int upper = 0;
    int lower = 0;
    for (int c = 0; c < ScopeRing::kSize && rect.L + c < rect.R; ++c) {
        const ScopeRing::Entry entry = ring.Read(oldest + static_cast<std::uint32_t>(c));
        const Column column{rect.L + c, c == 0, entry.marker ? kMarker : colors.line, colors.fill};
        const Pair values = ValuesOf(entry, wave);
        DrawHalf(canvas, column, values.upper, centerY1, upper);
        DrawHalf(canvas, column, values.lower, centerY2, lower);
    }
}

/// `previous` is where the trace stands, and becomes where it goes on from.
void IGwWaveDrawer::DrawHalf(IGraphics& canvas, const Column& column, double sample, double centerY,
                             int& previous) const {
    const double height = std::isnan(sample) ? 0.0 : Grimworks::Clamp(sample, -1.0, 1.0) * scaleY;
    const auto pixel = [this, centerY](double up) {
        return std::min(static_cast<int>(rect.T + centerY - up), rect.B - 1);
    };
    const int y = pixel(height);
    if (!column.first) {
        if (fillMode == Filled) {
            canvas.DrawLine(column.line, column.x, pixel(-height), column.x, y);
        } else {
            if (fillMode == HalfFilled) canvas.DrawLine(column.fill, column.x, pixel(0.0), column.x, y);
            canvas.DrawLine(column.line, column.x, previous, column.x, y);
        }
    }
    previous = y;
}

} // namespace Grimworks
