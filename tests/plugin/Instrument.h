#pragma once

#include "core/ParameterTable.h"
#include "plugin/ThudForge.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace Grimworks {

/// A whole instrument under a small host that knows a tempo: events and parameters go in, audio comes out,
/// all through the AEffect record.
class Instrument {
public:
    struct Audio {
        std::vector<double> left;
        std::vector<double> right;

        [[nodiscard]] double Peak() const;
        friend bool operator==(const Audio&, const Audio&) = default;
    };

    explicit Instrument(double rate = 44100.0, int blockFrames = 64);
    ~Instrument();
    Instrument(const Instrument&) = delete;
    Instrument& operator=(const Instrument&) = delete;

    [[nodiscard]] ThudForge& Plug() { return *plug; }
    [[nodiscard]] AEffect* Effect() { return plug->Effect(); }
    std::intptr_t Dispatch(std::int32_t opcode, std::intptr_t value = 0, void* ptr = nullptr,
                           float opt = 0.0F);

    /// What the host's clock says from now on; 0 for no clock.
    void SetTempo(double beatsPerMinute);
    [[nodiscard]] int AutomateCalls(int id) const { return automated[static_cast<std::size_t>(id)]; }

    /// How often the instrument has looked at the clock.
    [[nodiscard]] int ClockCalls() const { return clockCalls; }

    void SetBlockSize(int frames);
    void Set(int id, double normalized) {
        Effect()->setParameter(Effect(), id, static_cast<float>(normalized));
    }
    [[nodiscard]] double Get(int id) { return static_cast<double>(Effect()->getParameter(Effect(), id)); }

    /// The blank program: one plain oscillator, all effects neutral.
    void ResetProgram();

    void Midi(int status, int data1, int data2, int offset = 0);
    void NoteOn(int note, int velocity = 127, int offset = 0) { Midi(0x90, note, velocity, offset); }
    void NoteOff(int note, int offset = 0) { Midi(0x80, note, 0, offset); }

    /// Runs one process call of this many frames and appends them.
    void Process(Audio& audio, int frames);

    /// Renders this many frames in calls of the block size, the last one shorter.
    Audio Render(int frames);

private:
    static std::intptr_t Host(AEffect* effect, std::int32_t opcode, std::int32_t index, std::intptr_t value,
                              void* ptr, float opt);

    VstTimeInfo time{};
    bool hasTime = false;
    int clockCalls = 0;
    std::vector<int> automated = std::vector<int>(kParameters, 0);
    int blockSize;
    std::unique_ptr<ThudForge> plug;
};

} // namespace Grimworks
