#pragma once

#include "plugin/ThudForge.h"
#include "tools/SoundMeasure.h"

#include <algorithm>
#include <memory>

namespace Grimworks {

/// Plays the factory programs of one instrument under a host with a clock of 120 beats a minute, one after
/// the other, each as if it were the first.
class ProgramPlayer {
public:
    static constexpr int kBlock = 256;
    static constexpr int kVelocity = 100;

    ProgramPlayer() : plug(std::make_unique<ThudForge>(&ProgramPlayer::Host)) {
        time.tempo = 120.0;
        time.flags = TimeFlag::TempoValid;
        Effect()->user = this;
        Dispatch(PlugOp::SetSampleRate, 0, nullptr, static_cast<float>(kSoundRate));
        Dispatch(PlugOp::SetBlockSize, kBlock);
        Dispatch(PlugOp::Open);
    }
    ~ProgramPlayer() = default;
    ProgramPlayer(const ProgramPlayer&) = delete;
    ProgramPlayer& operator=(const ProgramPlayer&) = delete;

    [[nodiscard]] ThudForge& Plug() { return *plug; }

    /// Programs by index from 0. Empties the delay and lets every smoother come to rest.
    void Choose(int program) {
        Dispatch(PlugOp::SetProgram, program);
        Dispatch(PlugOp::MainsChanged, 0);
        Dispatch(PlugOp::MainsChanged, 1);
        Sound rest;
        for (int i = 0; i < 16; ++i)
            Block(rest);
    }

    /// A key held for some seconds, then the rest of the sound: until no voice is left and half a second
    /// stayed 80 dB below the loudest sample, at most `tailSeconds`.
    Sound Play(int note, double heldSeconds = 1.0, double tailSeconds = 12.0) {
        Sound sound;
        Midi(0x90, note, kVelocity);
        const auto held = static_cast<std::size_t>(heldSeconds * kSoundRate);
        while (sound.Frames() < held)
            Block(sound);
        Midi(0x80, note, 0);
        const auto most = sound.Frames() + static_cast<std::size_t>(tailSeconds * kSoundRate);
        std::size_t quiet = 0;
        double peak = 0.0;
        while (sound.Frames() < most &&
               (IsSounding() || quiet < static_cast<std::size_t>(kSoundRate / 2.0))) {
            const std::size_t start = sound.Frames();
            Block(sound);
            peak = std::max(peak, PeakFrom(sound, quiet == 0 && peak == 0.0 ? 0 : start));
            quiet = PeakFrom(sound, start) > peak * 1e-4 ? 0 : quiet + kBlock;
        }
        return sound;
    }

    [[nodiscard]] bool IsSounding() const { return plug->Voices().ActiveVoices() > 0; }

private:
    AEffect* Effect() { return plug->Effect(); }

    void Dispatch(std::int32_t opcode, std::intptr_t value = 0, void* ptr = nullptr, float opt = 0.0F) {
        Effect()->dispatcher(Effect(), opcode, 0, value, ptr, opt);
    }

    void Midi(int status, int data1, int data2) {
        VstMidiEvent event{};
        event.type = kMidiEvent;
        event.byteSize = sizeof event;
        event.midiData[0] = static_cast<char>(status);
        event.midiData[1] = static_cast<char>(data1);
        event.midiData[2] = static_cast<char>(data2);
        VstEvents events{};
        events.numEvents = 1;
        events.events[0] = reinterpret_cast<VstEvent*>(&event);
        Dispatch(PlugOp::ProcessEvents, 0, &events);
    }

    void Block(Sound& sound) {
        const std::size_t start = sound.Frames();
        sound.left.resize(start + kBlock);
        sound.right.resize(start + kBlock);
        double* outputs[] = {sound.left.data() + start, sound.right.data() + start};
        Effect()->processDoubleReplacing(Effect(), nullptr, outputs, kBlock);
    }

    [[nodiscard]] static double PeakFrom(const Sound& sound, std::size_t start) {
        double peak = 0.0;
        for (std::size_t i = start; i < sound.Frames(); ++i)
            peak = std::max({peak, std::fabs(sound.left[i]), std::fabs(sound.right[i])});
        return peak;
    }

    static std::intptr_t Host(AEffect* effect, std::int32_t opcode, std::int32_t, std::intptr_t, void*,
                              float) {
        if (opcode != HostOp::GetTime || effect == nullptr || effect->user == nullptr) return 0;
        return reinterpret_cast<std::intptr_t>(&static_cast<ProgramPlayer*>(effect->user)->time);
    }

    VstTimeInfo time{};
    std::unique_ptr<ThudForge> plug;
};

} // namespace Grimworks
