#pragma once

#include "core/Limits.h"
#include "core/ValueBlock.h"
#include "effects/DistortionCurve.h"
#include "plugin/ThudForge.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Grimworks::Testing {

using Bytes = std::vector<std::uint8_t>;

/// A sound as it travels: the drawn curve and the plain values.
struct Sound {
    CurvePoints curve{};
    std::array<double, kParameters> values{};

    /// Every number differs from those of other seeds, and all links and tempo locks are off.
    static Sound Random(unsigned seed);

    [[nodiscard]] Bytes Chunk() const;

    /// Reads the state at `at` as far as it goes: the position behind, or nothing if it was too short.
    std::optional<std::size_t> Read(const Bytes& bytes, std::size_t at);

    /// Whether no parameter moves another one as it is loaded.
    [[nodiscard]] bool IsUnlocked() const;
    /// Takes over what a lock or a link may have moved.
    void TakeMovable(const Sound& other);

    [[nodiscard]] bool HasTameCurve() const;
};

/// What an instrument must hold after bytes came in, worked out from the layouts alone.
class HostileModel {
public:
    explicit HostileModel(ThudForge& instrument);

    /// The host hands over a chunk; what the dispatcher must answer.
    bool TakeChunk(bool bank, const Bytes& bytes);

    /// A program file of either form; whether it must be taken.
    bool TakeFile(const Bytes& bytes);

    /// A text program.
    void TakeText(const std::string& text);

    /// What is wrong with the instrument, empty if nothing is. `whole` compares all presets, otherwise the
    /// current one and all names. When an LFO's lock or link has been on, which moves the rates of others,
    /// the rates and links are only looked at for their ranges, and presets are taken over.
    [[nodiscard]] std::string Difference(bool whole);

    /// How often Difference could compare all of it.
    [[nodiscard]] int ExactComparisons() const { return exact; }

    [[nodiscard]] const Sound& Live() const { return live; }

private:
    struct Preset {
        std::string name;
        Bytes chunk;
    };

    bool TakeBank(const Bytes& bytes, std::size_t at);
    void Restore();
    void Store(const std::string& name);
    void TakeFileValues(const Bytes& bytes);
    void Apply(const ValueBlock& record, const std::string& curveText);
    [[nodiscard]] std::string RangeFault() const;
    [[nodiscard]] std::string PresetFault(bool whole) const;

    ThudForge* plug;
    Sound live;
    std::vector<Preset> presets;
    std::size_t current;
    bool moved = false;        ///< a lock or link was on since the last comparison
    bool curveUnknown = false; ///< the curve is the one that its type had last
    int exact = 0;
};

/// The bytes of a program file around a state or around normalised values, written from the layout.
Bytes ChunkFile(const std::string& name, const Bytes& chunk);
Bytes ParameterFile(const std::string& name, const std::vector<float>& values);

/// A bank in which only some presets have a sound.
Bytes BankChunk(const std::vector<std::string>& names, const std::vector<std::optional<Sound>>& sounds);

Bytes WithHeader(const Bytes& chunk);
Bytes StateOf(ThudForge& plug);

/// Hands a chunk over as a host does.
bool SetChunk(ThudForge& plug, bool bank, Bytes bytes);
bool TakeProgramFile(ThudForge& plug, const Bytes& bytes);

} // namespace Grimworks::Testing
