#include "plugin/IPlugVST.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>

namespace Grimworks {

namespace {

constexpr std::intptr_t kExtensionAnswer = 0xBEEF;
constexpr std::intptr_t kExtensionCanDo = 0xBEEF0000;
constexpr unsigned kExtensionsAsked = 1U;
constexpr unsigned kViewAsConfigAsked = 2U;

/// Writes a text into a host's buffer; 1 if it is not empty, 0 if it is or there is no buffer.
std::intptr_t GiveText(void* buffer, std::string_view text, int limit) {
    if (buffer == nullptr) return 0;
    text = text.substr(0, static_cast<std::size_t>(limit));
    auto* const target = static_cast<char*>(buffer);
    std::copy(text.begin(), text.end(), target);
    target[text.size()] = '\0';
    return text.empty() ? 0 : 1;
}

/// A number from the host as an index; one that no list reaches becomes -1.
int IndexOf(std::intptr_t value) {
    return value >= 0 && value <= std::numeric_limits<std::int32_t>::max() ? static_cast<int>(value) : -1;
}

/// A host's text up to its end mark, cut at a length that no honest text has.
std::string_view HostText(const void* ptr) {
    constexpr std::size_t kLongest = 1024;
    const auto* text = static_cast<const char*>(ptr);
    std::size_t length = 0;
    while (length < kLongest && text[length] != '\0')
        ++length;
    return {text, length};
}

} // namespace

std::intptr_t IPlugVST::DispatcherEntry(AEffect* record, std::int32_t opcode, std::int32_t index,
                                        std::intptr_t value, void* ptr, float opt) noexcept {
    IPlugVST* plug = FromEffect(record);
    if (plug == nullptr) return 0;
    try {
        if (opcode == PlugOp::Close) {
            if (plug->Editor() != nullptr && !plug->Editor()->PrepareToGo()) return 1;
            { const PlugLockGuard wait(plug->Lock()); }
            const std::unique_ptr<IPlugVST> returned(plug);
            return 1;
        }
        return plug->VSTDispatcher({opcode, index, value, ptr, opt});
    } catch (...) {
        return 0; // nothing may unwind into the host
    }
}

std::intptr_t IPlugVST::VSTDispatcher(const Call& call) {
    if (call.opcode < PlugOp::Open || call.opcode > PlugOp::Last) return 0;
    // The editor's window thread takes the lock, and these two wait for that thread.
    if (call.opcode == PlugOp::EditOpen) return OpenEditor(call.ptr);
    if (call.opcode == PlugOp::EditClose) return CloseEditor();
    const HostNews guard(*this);
    return DispatchLocked(call);
}

std::intptr_t IPlugVST::DispatchLocked(const Call& call) {
    switch (call.opcode) {
    case PlugOp::Open:
    case PlugOp::SetSampleRate:
    case PlugOp::SetBlockSize:
    case PlugOp::MainsChanged:
    case PlugOp::ProcessEvents:
        return DispatchLifecycle(call);
    case PlugOp::SetProgram:
    case PlugOp::GetProgram:
    case PlugOp::SetProgramName:
    case PlugOp::GetProgramName:
    case PlugOp::GetProgramNameIndexed:
    case PlugOp::GetChunk:
    case PlugOp::SetChunk:
        return DispatchProgram(call);
    case PlugOp::GetParameterLabel:
    case PlugOp::GetParameterDisplay:
    case PlugOp::GetParameterName:
    case PlugOp::CanBeAutomated:
    case PlugOp::StringToParameter:
        return DispatchParameter(call);
    case PlugOp::GetInputProperties:
    case PlugOp::GetOutputProperties:
    case PlugOp::SetSpeakerArrangement:
    case PlugOp::GetSpeakerArrangement:
        return DispatchChannels(call);
    case PlugOp::EditGetRect:
        return GiveEditorRect(call.ptr);
    default:
        return DispatchDescription(call);
    }
}

std::intptr_t IPlugVST::DispatchLifecycle(const Call& call) {
    switch (call.opcode) {
    case PlugOp::Open:
        HostSpecificInit();
        SendAllParameters();
        return 0;
    case PlugOp::SetSampleRate:
        TakeSampleRate(call.opt);
        return 0;
    case PlugOp::SetBlockSize:
        TakeBlockSize(call.value);
        return 0;
    case PlugOp::MainsChanged:
        OnActivate(call.value != 0);
        if (call.value == 0) Reset();
        return 0;
    default:
        return TakeEvents(static_cast<const VstEvents*>(call.ptr));
    }
}

void IPlugVST::TakeSampleRate(float rate) {
    const auto wanted = static_cast<double>(rate);
    if (!(wanted >= kMinSampleRate && wanted <= kMaxSampleRate)) return;
    StoreSampleRate(wanted);
    Reset();
}

void IPlugVST::TakeBlockSize(std::intptr_t frames) {
    if (frames < 1) return;
    StoreBlockSize(static_cast<int>(std::min<std::intptr_t>(frames, kMaxBlockSize)));
    SizeScratch(GetBlockSize());
    Reset();
}

std::intptr_t IPlugVST::TakeEvents(const VstEvents* events) {
    if (events == nullptr) return 0;
    VstEvent* const* list = events->events;
    for (std::int32_t i = 0; i < events->numEvents; ++i) {
        const VstEvent* event = list[i];
        if (event == nullptr) continue;
        if (event->type == kMidiEvent) {
            const auto* midi = reinterpret_cast<const VstMidiEvent*>(event);
            ProcessMidiMsg({midi->deltaFrames, static_cast<std::uint8_t>(midi->midiData[0]),
                            static_cast<std::uint8_t>(midi->midiData[1]),
                            static_cast<std::uint8_t>(midi->midiData[2])});
        } else if (event->type == kSysExEvent) {
            const auto* dump = reinterpret_cast<const VstMidiSysexEvent*>(event);
            const int size = dump->dump != nullptr ? std::max(dump->dumpBytes, 0) : 0;
            ProcessSysEx({dump->deltaFrames, size, reinterpret_cast<const std::uint8_t*>(dump->dump)});
        }
    }
    return 1;
}

std::intptr_t IPlugVST::DispatchProgram(const Call& call) {
    switch (call.opcode) {
    case PlugOp::SetProgram:
        if (GetPreset(IndexOf(call.value)) == nullptr) return 0;
        if (Identity().stateChunks) ModifyCurrentPreset();
        RestorePreset(IndexOf(call.value));
        return 0;
    case PlugOp::GetProgram:
        return CurrentPreset();
    case PlugOp::SetProgramName:
        if (call.ptr == nullptr) return 0;
        ModifyCurrentPreset(HostText(call.ptr));
        TellProgramChange();
        return 0;
    case PlugOp::GetProgramName:
        return GiveText(call.ptr, PresetName(CurrentPreset()), kShortTextLength);
    case PlugOp::GetProgramNameIndexed:
        if (GetPreset(call.index) == nullptr) return 0;
        return GiveText(call.ptr, PresetName(call.index), kShortTextLength);
    case PlugOp::GetChunk:
        return GiveChunk(call.index == 0, call.ptr);
    default:
        return TakeChunk(call.index == 0, call.ptr, call.value);
    }
}

std::intptr_t IPlugVST::GiveChunk(bool bank, void* ptr) {
    if (ptr == nullptr) return 0;
    ByteChunk& chunk = bank ? bankChunk : programChunk;
    chunk.Clear();
    PutHeader(chunk);
    bool filled = false;
    if (bank) {
        ModifyCurrentPreset();
        filled = SerializePresets(chunk);
    } else {
        filled = SerializeState(chunk);
    }
    if (!filled) return 0;
    *static_cast<void**>(ptr) = chunk.Data();
    return chunk.Size();
}

std::intptr_t IPlugVST::TakeChunk(bool bank, const void* data, std::intptr_t size) {
    if (data == nullptr || size < 1 || size > kMaxChunkSize) return 0;
    ByteChunk& chunk = bank ? bankChunk : programChunk;
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    // A host may well hand back the very buffer that it was given.
    if (bytes != chunk.Data() || size != chunk.Size()) {
        ByteChunk copy;
        copy.Assign({bytes, static_cast<std::size_t>(size)});
        chunk = std::move(copy);
    }
    std::int32_t version = 0;
    int position = SkipHeader(chunk, 0, version);
    if (bank && version >= kFrameworkVersion) {
        position = UnserializePresets(chunk, position);
    } else {
        position = UnserializeState(chunk, position);
        ModifyCurrentPreset();
    }
    if (position < 0) return 0;
    RedrawParamControls();
    return 1;
}

std::intptr_t IPlugVST::DispatchParameter(const Call& call) {
    const IParam* param = GetParam(call.index);
    if (param == nullptr) return 0;
    switch (call.opcode) {
    case PlugOp::GetParameterLabel:
        return GiveText(call.ptr, param->LabelForHost(), kShortTextLength);
    case PlugOp::GetParameterDisplay:
        return GiveText(call.ptr, param->DisplayText(param->Value(), false, true), kShortTextLength);
    case PlugOp::GetParameterName:
        return GiveText(call.ptr, param->Name(), kShortTextLength);
    case PlugOp::CanBeAutomated:
        return param->CanAutomate() ? 1 : 0;
    default:
        return call.ptr != nullptr && SetParameterFromText(call.index, HostText(call.ptr)) ? 1 : 0;
    }
}

std::intptr_t IPlugVST::DispatchDescription(const Call& call) {
    switch (call.opcode) {
    case PlugOp::Identify:
        return kIdentifyAnswer;
    case PlugOp::GetCategory:
        return Identity().isInstrument ? kCategorySynth : kCategoryEffect;
    case PlugOp::GetEffectName:
        return GiveText(call.ptr, Identity().effectName, kLongTextLength);
    case PlugOp::GetVendorString:
        return GiveText(call.ptr, Identity().makerName, kLongTextLength);
    case PlugOp::GetProductString:
        return GiveText(call.ptr, Identity().productName, kLongTextLength);
    case PlugOp::GetVendorVersion:
        return Identity().VersionNumber();
    case PlugOp::VendorSpecific:
        return AnswerVendorSpecific(call);
    case PlugOp::CanDo:
        return call.ptr != nullptr ? AnswerCanDo(static_cast<const char*>(call.ptr)) : 0;
    case PlugOp::GetTailSize:
        return TailSize();
    case PlugOp::GetInterfaceVersion:
        return kInterfaceVersion;
    case PlugOp::GetMidiKeyName:
        return GiveKeyName(call.ptr);
    default:
        return 0;
    }
}

std::intptr_t IPlugVST::GiveKeyName(void* ptr) {
    if (ptr == nullptr) return 0;
    auto* const key = static_cast<VstMidiKeyName*>(ptr);
    key->name[0] = '\0';
    const bool named = GetMidiNoteName(key->key, key->name);
    if (!named) key->name[0] = '\0';
    return named ? 1 : 0;
}

std::intptr_t IPlugVST::AnswerVendorSpecific(const Call& call) {
    if (call.index != PlugOp::GetParameterName && call.index != PlugOp::GetParameterDisplay) {
        return VendorSpecific(call.index, call.value, call.ptr, call.opt);
    }
    const IParam* param = GetParam(IndexOf(call.value));
    if (param == nullptr) return 0;
    if (call.index == PlugOp::GetParameterName) {
        return param->GetType() == IParam::Type::Double ? kExtensionAnswer : 0;
    }
    if (call.ptr == nullptr) return 0;
    GiveText(call.ptr, param->DisplayText(static_cast<double>(call.opt), true, true), kShortTextLength);
    return kExtensionAnswer;
}

std::intptr_t IPlugVST::AnswerCanDo(const char* query) {
    const std::string_view text = HostText(query);
    if (text == "receiveVstTimeInfo") return 1;
    if (Identity().wantsMidi && (text == "sendVstEvents" || text == "sendVstMidiEvent" ||
                                 text == "receiveVstEvents" || text == "receiveVstMidiEvent")) {
        return 1;
    }
    if (text == "hasCockosExtensions") {
        hostExtensions |= kExtensionsAsked;
        return kExtensionCanDo;
    }
    if (text == "hasCockosViewAsConfig") {
        hostExtensions |= kViewAsConfigAsked;
        return kExtensionCanDo;
    }
    return HostCanDo(query);
}

} // namespace Grimworks
