#pragma once

#include "core/StereoBuffer.h"
#include "voice/Note.h"

#include <atomic>
#include <cstdint>
#include <vector>

namespace Grimworks {

/// The last second or so of what the instrument produced: output, LFOs and envelopes, thinned out to the
/// zoom. Written by the audio thread without waiting and read by the editor at any time; a picture may tear
/// at the write position, which a scope can bear. Clear, Blank and unfreezing write as well: under the
/// plug-in lock.
class ScopeRing {
public:
    static constexpr int kSize = 1000; ///< entries
    static constexpr int kGap = 20;    ///< blank entries that mark where the scope stood still
    static constexpr double kMinZoom = 0.1;
    static constexpr double kMaxZoom = 4.0;

    /// One point of the picture.
    struct Entry {
        double left = 0.0;
        double right = 0.0;
        double lfo1 = 0.0;
        double lfo2 = 0.0;
        double lfo3 = 0.0;
        double volumeEnv = 0.0;
        double filterEnv = 0.0;
        bool marker = false; ///< draws the point in gray; nothing sets it so far
    };

    /// What one block of the instrument has for the scope; each array has the block's frames.
    struct Block {
        StereoView output;
        const ModulationRecord* modulation;
        const double* volumeEnv;
        const double* filterEnv;
        int frames;
    };

    ScopeRing();

    /// Takes every so many samples of a block, see Step. Audio thread.
    void Feed(const Block& block, double sampleRate);

    /// Samples from one entry to the next; at zoom 1 the ring holds about a second. At least 1.
    [[nodiscard]] int Step(double sampleRate) const;

    /// Empties all entries; the write position stays.
    void Blank();

    /// Empties all entries unless frozen: for a new sample rate.
    void Clear();

    /// Stops the writing; letting it go on leaves a gap in the picture.
    void SetFrozen(bool on);

    /// `amount` steps of a tenth towards more detail or less. Zoom and percent each stop at their limits.
    /// Editor thread.
    void SetZoom(bool zoomIn, int amount);

    [[nodiscard]] bool IsFrozen() const { return frozen.load(std::memory_order_relaxed); }
    [[nodiscard]] double Zoom() const { return zoom.load(std::memory_order_relaxed); }        ///< 0.1..4
    [[nodiscard]] int ZoomPercent() const { return percent.load(std::memory_order_relaxed); } ///< 10..400

    /// Entries written so far; the oldest one is the next to be written.
    [[nodiscard]] std::uint32_t WritePos() const { return writePos.load(std::memory_order_relaxed); }

    /// The entry at a place, taken around the ring. Any thread.
    [[nodiscard]] Entry Read(std::uint32_t position) const;

private:
    struct Cell {
        std::atomic<double> left{0.0};
        std::atomic<double> right{0.0};
        std::atomic<double> lfo1{0.0};
        std::atomic<double> lfo2{0.0};
        std::atomic<double> lfo3{0.0};
        std::atomic<double> volumeEnv{0.0};
        std::atomic<double> filterEnv{0.0};
        std::atomic<bool> marker{false};
    };

    void Write(const Entry& entry);
    static void Store(Cell& cell, const Entry& entry);

    std::vector<Cell> cells;
    std::atomic<std::uint32_t> writePos{0};
    std::atomic<double> zoom{1.0};
    std::atomic<int> percent{100};
    std::atomic<bool> frozen{false};
    std::uint32_t counter = 0; ///< samples seen; audio thread
};

} // namespace Grimworks
