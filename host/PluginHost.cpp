#include "host/PluginHost.h"

#include "host/HostError.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

namespace Grimworks {

namespace {

constexpr std::string_view kVendor = "GrimWorks";
constexpr std::string_view kProduct = "ThudForge Standalone";
constexpr std::intptr_t kVendorVersion = 10803;
constexpr int kMaxChannels = 64;
constexpr int kMaxParameters = 1 << 16;
constexpr int kMaxPrograms = 1 << 16;
constexpr std::size_t kTextRoom = 256;

// Questions of plug-ins at large, which this instrument does not put.
namespace AnyHostOp {
enum : std::int32_t {
    Version = 1,
    GetSampleRate = 16,
    GetBlockSize = 17,
    GetVendorString = 32,
    CanDo = 37,
    GetLanguage = 38,
};
} // namespace AnyHostOp

constexpr std::intptr_t kEnglish = 1;
constexpr std::intptr_t kProcessLevelRealTime = 2;

std::intptr_t CopyText(void* buffer, std::string_view text) {
    if (buffer == nullptr) return 0;
    auto* letters = static_cast<char*>(buffer);
    letters[text.copy(letters, kLongTextLength)] = '\0';
    return 1;
}

std::intptr_t CanDo(const char* question) {
    if (question == nullptr) return 0;
    constexpr std::array<std::string_view, 3> kAnswers{"sendVstEvents", "sendVstMidiEvent",
                                                       "sendVstTimeInfo"};
    return std::find(kAnswers.begin(), kAnswers.end(), question) != kAnswers.end() ? 1 : 0;
}

template <typename Sample>
void MakeChannels(std::vector<std::vector<Sample>>& channels, std::vector<Sample*>& pointers, int count,
                  int frames) {
    channels.assign(static_cast<std::size_t>(count), std::vector<Sample>(static_cast<std::size_t>(frames)));
    pointers.clear();
    for (auto& channel : channels)
        pointers.push_back(channel.data());
}

} // namespace

PluginHost::PluginHost(EntryPoint entry, std::string moduleName, const HostSetup& hostSetup)
    : name(std::move(moduleName)), setup(hostSetup), effect(entry(&PluginHost::Callback)) {
    CheckRecord();
    effect->user = this;
    MakeBuffers();
    UpdateTime(0);
    // Rate and block size come first, so that opening sends every parameter at the right rate.
    Dispatch(PlugOp::SetSampleRate, 0, 0, nullptr, static_cast<float>(setup.sampleRate));
    Dispatch(PlugOp::SetBlockSize, 0, setup.blockSize);
    Dispatch(PlugOp::Open);
}

PluginHost::~PluginHost() {
    Activate(false);
    Dispatch(PlugOp::Close);
}

void PluginHost::CheckRecord() const {
    if (effect == nullptr) throw HostError(name + ": the module gives no instrument");
    if (effect->magic != kEffectMagic || effect->dispatcher == nullptr || effect->setParameter == nullptr ||
        effect->getParameter == nullptr || effect->processReplacing == nullptr) {
        throw HostError(name + ": the module does not speak this plug-in interface");
    }
    const bool sensible = effect->numInputs >= 0 && effect->numInputs <= kMaxChannels &&
                          effect->numOutputs > 0 && effect->numOutputs <= kMaxChannels &&
                          effect->numParams >= 0 && effect->numParams <= kMaxParameters &&
                          effect->numPrograms >= 0 && effect->numPrograms <= kMaxPrograms;
    if (!sensible) {
        effect->dispatcher(effect, PlugOp::Close, 0, 0, nullptr, 0.0F);
        throw HostError(name + ": the module counts channels, parameters or programs that cannot be");
    }
}

void PluginHost::MakeBuffers() {
    MakeChannels(inputs, inputPointers, effect->numInputs, setup.blockSize);
    MakeChannels(outputs, outputPointers, effect->numOutputs, setup.blockSize);
    MakeChannels(floatInputs, floatInputPointers, effect->numInputs, setup.blockSize);
    MakeChannels(floatOutputs, floatOutputPointers, effect->numOutputs, setup.blockSize);
}

std::intptr_t PluginHost::Callback(AEffect* asker, std::int32_t opcode, std::int32_t index,
                                   std::intptr_t value, void* pointer, float option) {
    static_cast<void>(index);
    static_cast<void>(value);
    static_cast<void>(option);
    // While the module makes the instance there is none yet that could be asked for its host.
    if (asker == nullptr || asker->user == nullptr) return AnswerAnybody(opcode, pointer);
    return static_cast<PluginHost*>(asker->user)->Answer(opcode, pointer);
}

std::intptr_t PluginHost::AnswerAnybody(std::int32_t opcode, void* pointer) {
    switch (opcode) {
    case AnyHostOp::Version:
        return kInterfaceVersion;
    case HostOp::WantMidi:
        return 1;
    case HostOp::GetProcessLevel:
        return kProcessLevelOffline;
    case AnyHostOp::GetVendorString:
        return CopyText(pointer, kVendor);
    case HostOp::GetProductString:
        return CopyText(pointer, kProduct);
    case HostOp::GetVendorVersion:
        return kVendorVersion;
    case AnyHostOp::CanDo:
        return CanDo(static_cast<const char*>(pointer));
    case AnyHostOp::GetLanguage:
        return kEnglish;
    default:
        return 0;
    }
}

std::intptr_t PluginHost::Answer(std::int32_t opcode, void* pointer) {
    switch (opcode) {
    case HostOp::GetTime:
        return TellTime();
    case HostOp::GetProcessLevel:
        return setup.realTime ? kProcessLevelRealTime : kProcessLevelOffline;
    case AnyHostOp::GetSampleRate:
        return static_cast<std::intptr_t>(setup.sampleRate);
    case AnyHostOp::GetBlockSize:
        return setup.blockSize;
    default:
        return AnswerAnybody(opcode, pointer);
    }
}

std::intptr_t PluginHost::TellTime() {
    // An editor asks from its own thread while blocks are played: each thread is told in a record of its own.
    thread_local VstTimeInfo told;
    const std::lock_guard guard(timeLock);
    told = time;
    return std::bit_cast<std::intptr_t>(&told);
}

std::intptr_t PluginHost::Dispatch(int opcode, int index, std::intptr_t value, void* pointer, float option) {
    return effect->dispatcher(effect, opcode, index, value, pointer, option);
}

std::string PluginHost::Text(int opcode, int index) {
    std::array<char, kTextRoom> buffer{};
    Dispatch(opcode, index, 0, buffer.data());
    buffer.back() = '\0';
    return {buffer.data()};
}

float PluginHost::Parameter(int id) const {
    return HasParameter(id) ? effect->getParameter(effect, id) : 0.0F;
}

void PluginHost::SetParameter(int id, float value) {
    if (HasParameter(id)) effect->setParameter(effect, id, value);
}

std::string PluginHost::ParameterName(int id) {
    return HasParameter(id) ? Text(PlugOp::GetParameterName, id) : std::string();
}

std::string PluginHost::ParameterDisplay(int id) {
    return HasParameter(id) ? Text(PlugOp::GetParameterDisplay, id) : std::string();
}

std::string PluginHost::ParameterLabel(int id) {
    return HasParameter(id) ? Text(PlugOp::GetParameterLabel, id) : std::string();
}

int PluginHost::CurrentProgram() {
    return static_cast<int>(Dispatch(PlugOp::GetProgram));
}

std::string PluginHost::ProgramName(int index) {
    return Text(PlugOp::GetProgramNameIndexed, index);
}

bool PluginHost::SelectProgram(int index) {
    Dispatch(PlugOp::SetProgram, 0, index);
    return CurrentProgram() == index;
}

bool PluginHost::SetProgramChunk(std::span<const std::uint8_t> bytes) {
    constexpr int kOneProgram = 1;
    // The interface asks for a pointer that could be written to.
    std::vector<std::uint8_t> copy(bytes.begin(), bytes.end());
    return Dispatch(PlugOp::SetChunk, kOneProgram, static_cast<std::intptr_t>(copy.size()), copy.data()) != 0;
}

bool PluginHost::LoadProgram(const std::string& path) {
    std::string copy = path;
    return Dispatch(PlugOp::VendorSpecific, OwnOp::LoadProgramFile, 0, copy.data()) == 1;
}

bool PluginHost::SaveProgram(const std::string& path) {
    std::string copy = path;
    return Dispatch(PlugOp::VendorSpecific, OwnOp::SaveProgramFile, 0, copy.data()) == 1;
}

void PluginHost::Activate(bool active) {
    if (active == running) return;
    running = active;
    Dispatch(PlugOp::MainsChanged, 0, active ? 1 : 0);
}

void PluginHost::UpdateTime(std::int64_t position) {
    const TempoMap& map = tempoMap == nullptr ? plainTempo : *tempoMap;
    const MusicalPosition music = map.At(static_cast<double>(position) / setup.sampleRate);
    const std::lock_guard guard(timeLock);
    time.samplePos = static_cast<double>(position);
    time.sampleRate = setup.sampleRate;
    time.ppqPos = music.quarter;
    time.tempo = music.tempo;
    time.barStartPos = music.barStart;
    time.timeSigNumerator = music.numerator;
    time.timeSigDenominator = music.denominator;
    time.flags =
        TimeFlag::PpqPosValid | TimeFlag::TempoValid | TimeFlag::BarStartValid | TimeFlag::TimeSigValid;
    if (running) time.flags |= TimeFlag::TransportPlaying;
}

void PluginHost::SendEvents(std::span<const BlockEvent> events) {
    if (events.empty()) return;
    constexpr std::size_t kListHead = offsetof(VstEvents, events) / sizeof(std::intptr_t);
    midiEvents.assign(events.size(), VstMidiEvent{});
    eventList.assign(kListHead + events.size(), 0);
    for (std::size_t i = 0; i < events.size(); ++i) {
        VstMidiEvent& event = midiEvents[i];
        event.type = kMidiEvent;
        event.byteSize = sizeof(VstMidiEvent);
        event.deltaFrames = events[i].offset;
        std::memcpy(event.midiData, events[i].bytes.data(), events[i].bytes.size());
        eventList[kListHead + i] = std::bit_cast<std::intptr_t>(&event);
    }
    const auto count = static_cast<std::int32_t>(events.size());
    std::memcpy(eventList.data(), &count, sizeof count);
    Dispatch(PlugOp::ProcessEvents, 0, 0, eventList.data());
}

void PluginHost::Process(std::int64_t position, std::span<const BlockEvent> events, int frames) {
    UpdateTime(position);
    SendEvents(events);
    if ((effect->flags & EffectFlag::CanDoubleReplacing) != 0 && effect->processDoubleReplacing != nullptr) {
        effect->processDoubleReplacing(effect, inputPointers.data(), outputPointers.data(), frames);
    } else {
        RenderFloats(frames);
    }
}

void PluginHost::RenderFloats(int frames) {
    effect->processReplacing(effect, floatInputPointers.data(), floatOutputPointers.data(), frames);
    for (std::size_t channel = 0; channel < outputs.size(); ++channel) {
        std::copy_n(floatOutputs[channel].begin(), frames, outputs[channel].begin());
    }
}

std::span<const double> PluginHost::Output(int channel) const {
    return outputs.at(static_cast<std::size_t>(channel));
}

} // namespace Grimworks
