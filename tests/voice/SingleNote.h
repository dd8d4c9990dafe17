#pragma once

#include "core/Limits.h"
#include "tests/voice/VoiceRig.h"
#include "voice/Note.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

namespace Grimworks::Testing {

/// One voice outside of a bank, with a plain sine, for what the bank keeps to itself.
class SingleNote {
public:
    PlainRig rig; // lends its program
    double bend = 1.0;
    Note note;
    std::vector<double> left, right, sub, volume, filter;

    SingleNote() {
        note.SetContext(Context());
        for (int i = 0; i < kOscillators; ++i)
            note.SetWaveform(i, 0.0);
        for (EnvelopeGenerator* envelope : {&note.VolumeEnvelope(), &note.FilterEnvelope()})
            envelope->SetSustain(1.0);
    }

    [[nodiscard]] VoiceContext Context() {
        VoiceContext context = rig.Context();
        context.pitchBendFactor = &bend;
        return context;
    }

    void Start(int key, int velocity = 127, int offset = 0) {
        note.SetNote(key);
        note.Start(velocity, offset);
    }

    void Tick(int count) {
        for (int i = 0; i < count; ++i)
            note.Tick();
    }

    void Render(int frames) {
        for (std::vector<double>* channel : {&left, &right, &sub, &volume, &filter})
            channel->assign(static_cast<std::size_t>(std::max(frames, 1)), 0.0);
        note.Render({{left.data(), right.data()}, sub.data(), volume.data(), filter.data()}, frames);
    }

    void Block(int frames) {
        Tick(frames);
        Render(frames);
    }
};

/// Largest absolute value.
inline double Peak(std::span<const double> signal) {
    double peak = 0.0;
    for (const double x : signal)
        peak = std::max(peak, std::fabs(x));
    return peak;
}

inline std::span<const double> Part(const std::vector<double>& signal, int from, int count) {
    return std::span<const double>(signal).subspan(static_cast<std::size_t>(from),
                                                   static_cast<std::size_t>(count));
}

} // namespace Grimworks::Testing
