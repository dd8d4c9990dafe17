#include "plugin/IPlugVST.h"

#include <algorithm>
#include <array>
#include <limits>

namespace Grimworks {

namespace {

std::int32_t ArrangementOf(int channels) {
    switch (channels) {
    case 0:
        return ArrangementType::Empty;
    case 1:
        return ArrangementType::Mono;
    case 2:
        return ArrangementType::Stereo;
    default:
        return ArrangementType::User;
    }
}

std::int16_t PixelCount(int pixels) {
    constexpr int kLargest = std::numeric_limits<std::int16_t>::max();
    return static_cast<std::int16_t>(std::clamp(pixels, 0, kLargest));
}

} // namespace

IPlugVST::IPlugVST(audioMasterCallback audioMaster, const PlugIdentity& plugIdentity)
    : IPlugBase(plugIdentity), host(audioMaster), inputChannels(static_cast<std::size_t>(InputCount())),
      outputChannels(static_cast<std::size_t>(OutputCount())),
      inputPointers(static_cast<std::size_t>(InputCount())),
      outputPointers(static_cast<std::size_t>(OutputCount())) {
    FillEffect();
    SizeScratch(kDefaultBlockSize);
    RefreshSpeakers();
}

IPlugVST::~IPlugVST() = default;

IPlugVST* IPlugVST::FromEffect(AEffect* record) {
    if (record == nullptr || record->magic != kEffectMagic) return nullptr;
    return static_cast<IPlugVST*>(record->object);
}

void IPlugVST::FillEffect() {
    effect.magic = kEffectMagic;
    effect.dispatcher = DispatcherEntry;
    effect.process = ProcessEntry;
    effect.setParameter = SetParameterEntry;
    effect.getParameter = GetParameterEntry;
    effect.processReplacing = ProcessReplacingEntry;
    effect.processDoubleReplacing = ProcessDoubleReplacingEntry;
    effect.numPrograms = std::max(PresetCount(), 1);
    effect.numParams = ParameterCount();
    effect.numInputs = InputCount();
    effect.numOutputs = OutputCount();
    effect.flags = EffectFlag::CanReplacing | EffectFlag::CanDoubleReplacing;
    if (Identity().stateChunks) effect.flags |= EffectFlag::Chunks;
    if (Identity().isInstrument) effect.flags |= EffectFlag::Instrument;
    const auto pairs = ParseChannels(Identity().channels);
    if (std::any_of(pairs.begin(), pairs.end(), [](const ChannelCounts& p) { return p.inputs == 1; })) {
        effect.flags |= EffectFlag::MonoInput;
    }
    effect.ioRatio = 1.0F;
    effect.object = this;
    effect.uniqueID = Identity().uniqueId;
    effect.version = Identity().VersionNumber();
}

void IPlugVST::SizeScratch(int frames) {
    for (std::vector<Channel>* channels : {&inputChannels, &outputChannels}) {
        for (Channel& channel : *channels)
            channel.scratch.assign(static_cast<std::size_t>(frames), 0.0);
    }
}

int IPlugVST::ConnectedCount(const std::vector<Channel>& channels) {
    return static_cast<int>(
        std::count_if(channels.begin(), channels.end(), [](const Channel& c) { return c.connected; }));
}

void IPlugVST::RefreshSpeakers() {
    inputSpeakers.numChannels = ConnectedCount(inputChannels);
    inputSpeakers.type = ArrangementOf(inputSpeakers.numChannels);
    outputSpeakers.numChannels = ConnectedCount(outputChannels);
    outputSpeakers.type = ArrangementOf(outputSpeakers.numChannels);
}

void IPlugVST::HostSpecificInit() {
    const PlugLockGuard guard(Lock());
    if (hostInitDone) return;
    hostInitDone = true;
    const int number = GetHost();
    constexpr std::array<int, 4> kStereoHosts{kHostForte, kHostAudition, kHostOrion, kHostSawStudio};
    if (std::find(kStereoHosts.begin(), kStereoHosts.end(), number) != kStereoHosts.end()) {
        for (std::size_t i = 2; i < inputChannels.size(); ++i)
            inputChannels[i].connected = false;
        for (std::size_t i = 2; i < outputChannels.size(); ++i)
            outputChannels[i].connected = true;
    }
    effect.numInputs = ConnectedCount(inputChannels);
    effect.numOutputs = ConnectedCount(outputChannels);
    RefreshSpeakers();
    OnHostIdentified();
}

void IPlugVST::AttachGraphics(PlugEditor* graphics) {
    const PlugLockGuard guard(Lock());
    editor = graphics;
    if (editor == nullptr) {
        effect.flags &= ~EffectFlag::HasEditor;
        return;
    }
    effect.flags |= EffectFlag::HasEditor;
    ResizeGraphics(editor->Width(), editor->Height());
}

void IPlugVST::ResizeGraphics(int width, int height) {
    const PlugLockGuard guard(Lock());
    editorRect = {0, 0, PixelCount(height), PixelCount(width)};
}

std::string IPlugVST::HostInfo() const {
    const PlugLockGuard guard(Lock());
    return HostInfoText(hostNumber, hostVersion);
}

void IPlugVST::SetParameterEntry(AEffect* record, std::int32_t index, float value) noexcept {
    IPlugVST* plug = FromEffect(record);
    if (plug == nullptr) return;
    try {
        plug->SetParameterFromHost(index, static_cast<double>(value));
    } catch (...) {
        return; // nothing may unwind into the host
    }
}

float IPlugVST::GetParameterEntry(AEffect* record, std::int32_t index) noexcept {
    const IPlugVST* plug = FromEffect(record);
    return plug != nullptr ? static_cast<float>(plug->GetParameterNormalized(index)) : 0.0F;
}

} // namespace Grimworks
