#pragma once

#include "plugin/vst2.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace Grimworks::Testing {

/// One command of a reference case: acts before the block of its number.
struct ReferenceCommand {
    enum class Kind { State, Midi, Parameter };

    Kind kind;
    int block;
    int offset;              ///< frames, MIDI only
    std::uint8_t message[3]; ///< MIDI only
    int parameter;           ///< set-parameter only
    float value;             ///< set-parameter only
    std::vector<char> chunk; ///< state only
};

/// A recorded session of a host with the figures that an independent slow computation gave for it.
struct ReferenceCase {
    double rate = 44100.0;
    int blockSize = 64;
    double tempo = 0.0; ///< 0: the host gives no time
    int blocks = 0;
    std::vector<ReferenceCommand> commands;
    std::vector<double> expected; ///< interleaved, from frame kFirstFrame on
};

/// The figures start behind the frames in which sweeps and smoothers come to rest.
inline constexpr int kFirstFrame = 8192;

/// Names of all cases in tests/data/reference.
[[nodiscard]] std::vector<std::string> ReferenceCaseNames(const std::filesystem::path& folder);

/// Reads one case; throws std::runtime_error if its files are not whole.
[[nodiscard]] ReferenceCase LoadReferenceCase(const std::filesystem::path& folder, const std::string& name);

/// Plays a case as a host does, through an entry point, dispatcher and process call, and gives all frames
/// interleaved.
[[nodiscard]] std::vector<double> PlayReferenceCase(const ReferenceCase& reference, PluginMainFunction make);

/// Largest difference between a render and the figures; NaN if the render holds one.
[[nodiscard]] double WorstDifference(const ReferenceCase& reference, const std::vector<double>& rendered);

} // namespace Grimworks::Testing
