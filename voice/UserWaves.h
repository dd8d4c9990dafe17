#pragma once

#include "voice/WaveCycle.h"
#include "voice/WaveNames.h"

#include <cstddef>
#include <span>
#include <string>

namespace Grimworks {

/// Slots that user files feed, "User1" to "User13"; the last three hear the tenth file as well.
inline constexpr int kUserFileSlots = 13;
inline constexpr int kUserFiles = 10;

/// Base of the user wave folder from the environment variable THUDFORGE_WAVES, empty when it is not set.
[[nodiscard]] std::string UserWaveBaseFolder();

/// Path of user file 1 to 10: base, "waveforms" and "user01.raw" to "user10.raw". With an empty base the
/// folder stands directly under the root of the file system, or of the current drive.
[[nodiscard]] std::string UserWavePath(const std::string& baseFolder, int number);

/// Fits the bytes of a raw wave file to the cycle: little-endian 64-bit floats without header, one cycle.
/// 4096 values and more are taken as they come, fewer are stretched by linear interpolation without a wrap
/// at the end; an incomplete value at the end is ignored. Values that are not finite become 0. Without one
/// whole value the cycle stays as it is.
void TakeRawWave(std::span<const std::byte> file, WaveSpan cycle);

/// Fits a RIFF wave file to the cycle: one or two channels (averaged) of 8, 16, 24 or 32-bit integers or 32
/// or 64-bit floats, header fields at their usual places. Exactly 4096 frames replace only the even samples
/// of the cycle; any other number is resampled. Values that are not finite become 0. A file that is refused
/// leaves the cycle as it is.
void TakeWavWave(std::span<const std::byte> file, WaveSpan cycle);

/// Reads one file into a cycle: as a RIFF wave file if the path holds ".wav" anywhere, folder names included,
/// otherwise as a raw one. A file that is missing, unreadable, too large (10 MiB, RIFF only) or refused
/// leaves the cycle as it is, without a message.
void LoadUserWave(const std::string& path, WaveSpan cycle);

/// Reads the ten user files into the slots User1 to User13 among all 41 cycles and brings these thirteen to
/// their common peak, files or not. Construction only: it reads from disk.
void LoadUserWaves(const std::string& baseFolder, std::span<WaveCycle, kWaveforms> waves);

} // namespace Grimworks
