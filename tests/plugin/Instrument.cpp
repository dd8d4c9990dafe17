#include "tests/plugin/Instrument.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

double Instrument::Audio::Peak() const {
    double peak = 0.0;
    for (const std::vector<double>* channel : {&left, &right}) {
        for (const double x : *channel)
            peak = std::max(peak, std::fabs(x));
    }
    return peak;
}

Instrument::Instrument(double rate, int blockFrames)
    : blockSize(blockFrames), plug(std::make_unique<ThudForge>(&Instrument::Host)) {
    Effect()->user = this;
    Dispatch(PlugOp::Open);
    Dispatch(PlugOp::SetSampleRate, 0, nullptr, static_cast<float>(rate));
    Dispatch(PlugOp::SetBlockSize, blockFrames);
    Dispatch(PlugOp::MainsChanged, 1);
    // Envelope times are worked out for the rate of the moment, so the parameters go through once more.
    plug->SendAllParameters();
    std::fill(automated.begin(), automated.end(), 0);
}

Instrument::~Instrument() = default;

std::intptr_t Instrument::Dispatch(std::int32_t opcode, std::intptr_t value, void* ptr, float opt) {
    return Effect()->dispatcher(Effect(), opcode, 0, value, ptr, opt);
}

void Instrument::SetTempo(double beatsPerMinute) {
    hasTime = beatsPerMinute != 0.0;
    time.tempo = beatsPerMinute;
    time.flags = TimeFlag::TempoValid;
}

void Instrument::SetBlockSize(int frames) {
    blockSize = frames;
    Dispatch(PlugOp::SetBlockSize, frames);
}

void Instrument::ResetProgram() {
    for (const ParameterInfo& row : kParameterTable)
        Set(row.id, row.resetValue / row.max);
}

void Instrument::Midi(int status, int data1, int data2, int offset) {
    VstMidiEvent event{};
    event.type = kMidiEvent;
    event.byteSize = sizeof event;
    event.deltaFrames = offset;
    event.midiData[0] = static_cast<char>(status);
    event.midiData[1] = static_cast<char>(data1);
    event.midiData[2] = static_cast<char>(data2);
    VstEvents events{};
    events.numEvents = 1;
    events.events[0] = reinterpret_cast<VstEvent*>(&event);
    Dispatch(PlugOp::ProcessEvents, 0, &events);
}

void Instrument::Process(Audio& audio, int frames) {
    const std::size_t start = audio.left.size();
    audio.left.resize(start + static_cast<std::size_t>(frames));
    audio.right.resize(start + static_cast<std::size_t>(frames));
    double* outputs[] = {audio.left.data() + start, audio.right.data() + start};
    Effect()->processDoubleReplacing(Effect(), nullptr, outputs, frames);
}

Instrument::Audio Instrument::Render(int frames) {
    Audio audio;
    for (int done = 0; done < frames; done += blockSize)
        Process(audio, std::min(blockSize, frames - done));
    return audio;
}

std::intptr_t Instrument::Host(AEffect* effect, std::int32_t opcode, std::int32_t index,
                               std::intptr_t /*value*/, void* /*ptr*/, float /*opt*/) {
    if (effect == nullptr || effect->user == nullptr) return 0;
    auto& self = *static_cast<Instrument*>(effect->user);
    if (opcode == HostOp::GetTime) ++self.clockCalls;
    if (opcode == HostOp::GetTime && self.hasTime) return reinterpret_cast<std::intptr_t>(&self.time);
    if (opcode == HostOp::Automate && index >= 0 && index < kParameters) {
        ++self.automated[static_cast<std::size_t>(index)];
    }
    return 0;
}

} // namespace Grimworks
