#pragma once

#include "voice/WaveCycle.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace Grimworks {

/// A RIFF wave file in memory, read the way user waves are: header fields are expected at their usual places,
/// only the data chunk is searched for. Values come without scaling, as waves are brought to a common peak
/// afterwards. Not owning: the bytes must outlive the object.
class WavFile {
public:
    explicit WavFile(std::span<const std::byte> file);

    /// Frames that can be read; 0 for a file that is refused: under 44 bytes, without the RIFF and WAVE
    /// marks, more than two channels, an unusual sample width, or without sample data. Never more than the
    /// file holds, whatever its header says.
    [[nodiscard]] std::size_t Frames() const { return frames; }

    /// One frame, channels averaged: 8-bit samples as -128..127, 16-bit and 32-bit ones as signed integers,
    /// 24-bit ones in the upper bytes of a 32-bit integer, floats as they are. A format without a rule of its
    /// own (64-bit integers, short floats) and values that are not finite give 0. index is below Frames().
    [[nodiscard]] double Frame(std::size_t index) const;

    /// Fills the cycle with the whole file by linear interpolation, through one second-order low-pass on the
    /// side that has more points. The cycle begins two points into the resampled wave; it stays
    /// as it is without a frame.
    void ResampleTo(WaveSpan cycle) const;

private:
    [[nodiscard]] std::uint32_t Word(std::size_t offset, std::size_t bytes) const;
    [[nodiscard]] bool HasMark(std::size_t offset, const char (&mark)[5]) const;
    [[nodiscard]] std::size_t FindData() const;
    [[nodiscard]] bool ReadFormat();
    [[nodiscard]] double Sample(std::size_t offset) const;

    std::span<const std::byte> bytes;
    bool isFloat = false;
    std::size_t channels = 0;
    std::size_t sampleBytes = 0;
    std::size_t start = 0;
    std::size_t frames = 0;
};

} // namespace Grimworks
