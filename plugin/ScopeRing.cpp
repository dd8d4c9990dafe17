#include "plugin/ScopeRing.h"

#include "core/Maths.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace Grimworks {

namespace {

constexpr auto kRelaxed = std::memory_order_relaxed;
constexpr double kEntriesASecond = 1000.0;
constexpr double kZoomStep = 0.1;
constexpr int kManySteps = 1000; // from one limit to the other and far beyond
constexpr int kMinPercent = 10;
constexpr int kMaxPercent = 400;

/// The mean of a sample and the next one; the last of a block stands alone.
double Mean(const double* samples, int i, int frames) {
    return i + 1 < frames ? (samples[i] + samples[i + 1]) * 0.5 : samples[i];
}

} // namespace

ScopeRing::ScopeRing() : cells(kSize) {}

int ScopeRing::Step(double sampleRate) const {
    const double step = std::floor(std::floor(Zoom() * sampleRate) / kEntriesASecond);
    return std::max(static_cast<int>(step), 1);
}

void ScopeRing::Feed(const Block& block, double sampleRate) {
    const auto step = static_cast<std::uint32_t>(Step(sampleRate));
    for (int i = 0; i < block.frames; ++i, ++counter) {
        if (counter % step != 0 || IsFrozen()) continue;
        const ModulationRecord& lfos = block.modulation[i];
        Write({Mean(block.output.left, i, block.frames), Mean(block.output.right, i, block.frames), lfos[0],
               lfos[1], lfos[2], block.volumeEnv[i], block.filterEnv[i], false});
    }
}

void ScopeRing::Write(const Entry& entry) {
    const std::uint32_t position = WritePos();
    Store(cells[position % kSize], entry);
    writePos.store(position + 1, kRelaxed);
}

void ScopeRing::Store(Cell& cell, const Entry& entry) {
    cell.left.store(entry.left, kRelaxed);
    cell.right.store(entry.right, kRelaxed);
    cell.lfo1.store(entry.lfo1, kRelaxed);
    cell.lfo2.store(entry.lfo2, kRelaxed);
    cell.lfo3.store(entry.lfo3, kRelaxed);
    cell.volumeEnv.store(entry.volumeEnv, kRelaxed);
    cell.filterEnv.store(entry.filterEnv, kRelaxed);
    cell.marker.store(entry.marker, kRelaxed);
}

ScopeRing::Entry ScopeRing::Read(std::uint32_t position) const {
    const Cell& cell = cells[position % kSize];
    return {cell.left.load(kRelaxed),      cell.right.load(kRelaxed), cell.lfo1.load(kRelaxed),
            cell.lfo2.load(kRelaxed),      cell.lfo3.load(kRelaxed),  cell.volumeEnv.load(kRelaxed),
            cell.filterEnv.load(kRelaxed), cell.marker.load(kRelaxed)};
}

void ScopeRing::Blank() {
    for (Cell& cell : cells)
        Store(cell, {});
}

void ScopeRing::Clear() {
    if (!IsFrozen()) Blank();
}

void ScopeRing::SetFrozen(bool on) {
    frozen.store(on, kRelaxed);
    for (int i = 0; !on && i < kGap; ++i)
        Write({});
}

void ScopeRing::SetZoom(bool zoomIn, int amount) {
    const double change = std::clamp(amount, -kManySteps, kManySteps) * kZoomStep;
    const int percentChange = static_cast<int>(std::floor(change * 100.0));
    zoom.store(Clamp(zoomIn ? Zoom() - change : Zoom() + change, kMinZoom, kMaxZoom), kRelaxed);
    const int shown = zoomIn ? ZoomPercent() + percentChange : ZoomPercent() - percentChange;
    percent.store(std::clamp(shown, kMinPercent, kMaxPercent), kRelaxed);
}

} // namespace Grimworks
