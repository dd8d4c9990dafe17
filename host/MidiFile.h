#pragma once

#include "host/Song.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace Grimworks {

/// Reader of Standard MIDI files of type 0 and 1 ("Standard MIDI Files 1.0", MIDI Manufacturers Association).
///
/// Division by quarter notes and by film frames are both understood; tempo changes and time signatures are
/// taken from every track. System exclusive messages and other meta events are passed over. A track must lie
/// in the file with its full length, so a file that was cut off anywhere is refused.
class MidiFile {
public:
    static constexpr std::size_t kMaxBytes = 16U << 20U;
    static constexpr std::size_t kMaxTracks = 1024;
    static constexpr double kMaxSeconds = 24.0 * 3600.0;

    /// Reads a file. Throws HostError with one line that names the file and the fault.
    [[nodiscard]] static Song Load(const std::filesystem::path& path);

    /// Reads a file that is already in memory; `name` stands for it in messages.
    [[nodiscard]] static Song Parse(std::span<const std::uint8_t> bytes, const std::string& name);
};

} // namespace Grimworks
