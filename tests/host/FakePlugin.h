#pragma once

#include "plugin/vst2.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace Grimworks::Testing {

/// A plug-in made for looking at hosts: it notes down what reaches it, and turns every note on into a single
/// sample of velocity / 127 and every note off into one of -0.25, so that a render shows where each message
/// went.
class FakePlugin {
public:
    struct Call {
        std::int32_t opcode;
        std::int32_t index;
        std::intptr_t value;
        float option;
    };

    FakePlugin() {
        Current() = this;
        record.magic = kEffectMagic;
        record.dispatcher = Dispatch;
        record.setParameter = SetParameter;
        record.getParameter = GetParameter;
        record.processReplacing = ProcessFloats;
        record.processDoubleReplacing = ProcessDoubles;
        record.numPrograms = 4;
        record.numParams = 3;
        record.numOutputs = 2;
        record.flags = EffectFlag::CanReplacing | EffectFlag::CanDoubleReplacing;
        record.uniqueID = 0x6172746F;
        record.object = this;
    }
    ~FakePlugin() { Current() = nullptr; }
    FakePlugin(const FakePlugin&) = delete;
    FakePlugin& operator=(const FakePlugin&) = delete;

    /// The entry point; gives the record of the fake that lives at the moment.
    static AEffect* Entry(audioMasterCallback callback) {
        FakePlugin& self = *Current();
        self.host = callback;
        self.versionAtBirth = callback(nullptr, 1, 0, 0, nullptr, 0.0F);
        return &self.record;
    }

    /// Puts a question to the host.
    std::intptr_t Ask(std::int32_t opcode, void* pointer = nullptr) {
        return host(&record, opcode, 0, 0, pointer, 0.0F);
    }

    AEffect record{};
    audioMasterCallback host = nullptr;
    std::intptr_t versionAtBirth = 0;
    std::vector<Call> calls;
    std::vector<VstTimeInfo> times;       ///< what the host said at the start of every block
    std::vector<std::int32_t> blockSizes; ///< frames of every block
    std::array<float, 3> parameters{0.25F, 0.5F, 0.75F};
    std::array<std::string, 3> parameterNames{"Cutoff", "Master Volume", "Twin"};
    std::array<std::string, 4> programNames{"Kick", "Bass", "#LEADS#", "12 Bells"};
    std::intptr_t program = 0;
    std::vector<std::uint8_t> chunk;
    bool acceptsChunk = true;
    bool acceptsPrograms = true;
    std::string programName;
    ERect editorRect{0, 0, 60, 80};
    bool tellsEditorSize = true;
    bool opensEditor = true;
    void* editorParent = nullptr;
    std::intptr_t lastPage = 1;  ///< pages of the editor are 0 to this one
    std::int64_t echoFrames = 0; ///< each note sounds once more after so many frames
    std::int64_t nanAt = -1;     ///< the frame that is no number

private:
    struct Hit {
        std::int64_t frame;
        double level;
    };

    static FakePlugin*& Current() {
        static FakePlugin* current = nullptr;
        return current;
    }
    static FakePlugin& Self(AEffect* effect) { return *static_cast<FakePlugin*>(effect->object); }

    static std::intptr_t Dispatch(AEffect* effect, std::int32_t opcode, std::int32_t index,
                                  std::intptr_t value, void* pointer, float option) {
        FakePlugin& self = Self(effect);
        self.calls.push_back({opcode, index, value, option});
        const auto slot = static_cast<std::size_t>(index);
        switch (opcode) {
        case PlugOp::SetProgram:
            if (self.acceptsPrograms) self.program = value;
            return 0;
        case PlugOp::GetProgram:
            return self.program;
        case PlugOp::SetProgramName:
            self.programName = static_cast<const char*>(pointer);
            return 0;
        case PlugOp::GetParameterName:
            return Print(pointer, self.parameterNames.at(slot));
        case PlugOp::GetParameterDisplay:
            return Print(pointer, std::to_string(static_cast<int>(self.parameters.at(slot) * 100.0F)));
        case PlugOp::GetParameterLabel:
            return Print(pointer, slot == 0 ? "%" : "");
        case PlugOp::GetProgramNameIndexed:
            return Print(pointer, self.programNames.at(slot));
        case PlugOp::SetChunk:
            self.chunk.assign(static_cast<std::uint8_t*>(pointer),
                              static_cast<std::uint8_t*>(pointer) + value);
            return self.acceptsChunk && index == 1 ? 1 : 0;
        case PlugOp::EditGetRect:
            if (!self.tellsEditorSize) return 0;
            *static_cast<ERect**>(pointer) = &self.editorRect;
            return 1;
        case PlugOp::EditOpen:
            self.editorParent = pointer;
            return self.opensEditor ? 1 : 0;
        case PlugOp::VendorSpecific:
            return index == OwnOp::SelectPage && value <= self.lastPage ? 1 : 0;
        case PlugOp::ProcessEvents:
            self.Take(*static_cast<VstEvents*>(pointer));
            return 1;
        default:
            return 0;
        }
    }

    static std::intptr_t Print(void* buffer, const std::string& text) {
        std::snprintf(static_cast<char*>(buffer), 32, "%s", text.c_str());
        return 1;
    }

    static void SetParameter(AEffect* effect, std::int32_t id, float value) {
        Self(effect).parameters.at(static_cast<std::size_t>(id)) = value;
    }

    static float GetParameter(AEffect* effect, std::int32_t id) {
        return Self(effect).parameters.at(static_cast<std::size_t>(id));
    }

    void Take(const VstEvents& events) {
        VstEvent* const* list = events.events;
        for (std::int32_t i = 0; i < events.numEvents; ++i) {
            VstMidiEvent event{};
            std::memcpy(&event, list[i], sizeof event);
            const int kind = (event.midiData[0] >> 4) & 0x0F;
            const bool on = kind == 9 && event.midiData[2] != 0;
            if (event.type != kMidiEvent || (kind != 8 && kind != 9)) continue;
            hits.push_back({now + event.deltaFrames, on ? event.midiData[2] / 127.0 : -0.25});
            if (on && echoFrames > 0) hits.push_back({now + event.deltaFrames + echoFrames, 0.5});
        }
    }

    static void ProcessDoubles(AEffect* effect, double**, double** outputs, std::int32_t frames) {
        Self(effect).Render(outputs, frames);
    }

    static void ProcessFloats(AEffect* effect, float**, float** outputs, std::int32_t frames) {
        Self(effect).Render(outputs, frames);
    }

    template <typename Sample>
    void Render(Sample** outputs, std::int32_t frames) {
        if (const auto answer = Ask(HostOp::GetTime); answer != 0) {
            times.push_back(*std::bit_cast<const VstTimeInfo*>(answer));
        }
        blockSizes.push_back(frames);
        for (int channel = 0; channel < record.numOutputs; ++channel) {
            std::fill_n(outputs[channel], frames, Sample{0});
            for (const Hit& hit : hits) {
                if (hit.frame < now || hit.frame >= now + frames) continue;
                outputs[channel][hit.frame - now] += static_cast<Sample>(hit.level);
            }
            if (nanAt >= now && nanAt < now + frames) {
                outputs[channel][nanAt - now] = std::numeric_limits<Sample>::quiet_NaN();
            }
        }
        now += frames;
    }

    std::int64_t now = 0;
    std::vector<Hit> hits;
};

} // namespace Grimworks::Testing
