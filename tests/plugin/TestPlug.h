#pragma once

#include "core/ParameterTable.h"
#include "plugin/IPlugVST.h"
#include "tests/plugin/TestHost.h"

#include <array>
#include <cmath>
#include <functional>
#include <memory>
#include <vector>

namespace Grimworks {

/// The smallest complete plug-in: a payload of 512 numbers beside its parameters, a sawtooth of the frames
/// played so far as its sound, and a record of all that the framework asks of it.
class TestPlug final : public IPlugVST {
public:
    struct Block {
        int frames;
        bool hadInputs;
        double firstInput;
        bool denormalsFlushed;
    };

    explicit TestPlug(audioMasterCallback master, const PlugIdentity& plugIdentity = {})
        : IPlugVST(master, plugIdentity) {
        ValueBlock values;
        ConstructorValues(values);
        DefineParameters(values);
    }

    ~TestPlug() override {
        if (destroyed != nullptr) *destroyed = true;
    }

    void Reset() override { ++resets; }

    void OnParamChange(int id) override {
        if (keepsRecords) changes.push_back(id);
    }

    void ProcessDoubleReplacing(double** inputs, double** outputs, int frames) override {
        volatile double smallest = 2.2250738585072014e-308;
        const bool flushed = smallest * 0.5 == 0.0;
        if (keepsRecords) {
            const bool readable = inputs != nullptr && frames > 0;
            blocks.push_back({frames, inputs != nullptr, readable ? inputs[0][0] : 0.0, flushed});
        }
        if (inBlock) inBlock();
        for (int i = 0; i < frames; ++i) {
            for (int c = 0; c < OutputCount(); ++c)
                outputs[c][i] = SoundAt(played, c);
            ++played;
        }
    }

    /// What frame number `frame` sounds like on a channel; exact as a 32-bit float.
    static double SoundAt(int frame, int channel) { return (frame % 4096 + 1) / 8192.0 * (channel + 1); }

    void OnEditorOpened() override { ++editorOpened; }
    void OnEditorClosed() override { ++editorClosed; }
    void OnActivate(bool active) override { activations.push_back(active); }
    void ProcessMidiMsg(const MidiMessage& message) override { messages.push_back(message); }
    void ProcessSysEx(const SysExMessage& message) override { dumps.push_back(message); }
    void OnHostIdentified() override { ++hostIdentified; }

    bool SerializeState(ByteChunk& chunk) override {
        chunk.Put(static_cast<std::int32_t>(payload.size()) + ParameterCount());
        for (const double x : payload)
            chunk.Put(x);
        return SerializeParams(chunk);
    }

    int UnserializeState(const ByteChunk& chunk, int position) override {
        position = chunk.Skip(4, position);
        for (double& x : payload)
            position = chunk.Get(x, position);
        return UnserializeParams(chunk, position);
    }

    std::intptr_t VendorSpecific(std::int32_t index, std::intptr_t, void*, float) override {
        return index == 4711 ? 17 : 0;
    }

    std::vector<int> changes;
    std::vector<Block> blocks;
    std::vector<MidiMessage> messages;
    std::vector<SysExMessage> dumps;
    std::vector<bool> activations;
    std::array<double, 512> payload{};
    std::function<void()> inBlock;
    bool keepsRecords = true;
    int resets = 0;
    int editorOpened = 0;
    int editorClosed = 0;
    int hostIdentified = 0;
    int played = 0;
    bool* destroyed = nullptr;
};

/// A test plug-in with its host, as most tests want them.
struct PlugAndHost {
    explicit PlugAndHost(const PlugIdentity& identity = {}) : plug(TestHost::AudioMaster, identity) {
        host.Attach(plug.Effect());
    }

    std::intptr_t Dispatch(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0,
                           void* ptr = nullptr, float opt = 0.0F) {
        return plug.Effect()->dispatcher(plug.Effect(), opcode, index, value, ptr, opt);
    }

    /// The live state as a host gets it.
    std::vector<std::uint8_t> Chunk(bool bank) {
        void* data = nullptr;
        const std::intptr_t size = Dispatch(PlugOp::GetChunk, bank ? 0 : 1, 0, &data);
        const auto* bytes = static_cast<const std::uint8_t*>(data);
        return {bytes, bytes + size};
    }

    std::intptr_t GiveChunk(bool bank, std::vector<std::uint8_t> bytes) {
        return Dispatch(PlugOp::SetChunk, bank ? 0 : 1, static_cast<std::intptr_t>(bytes.size()),
                        bytes.data());
    }

    TestHost host;
    TestPlug plug;
};

/// An editor that only remembers.
class TestEditor final : public PlugEditor {
public:
    struct Told {
        int id;
        double value;
        bool normalized;
    };

    [[nodiscard]] int Width() const override { return 1220; }
    [[nodiscard]] int Height() const override { return 835; }
    bool OpenWindow(void* parent) override {
        if (whileOpening) whileOpening();
        openedIn = parent;
        return opens;
    }
    void CloseWindow() override { openedIn = nullptr; }
    void SetParameterFromPlug(int id, double value, bool normalized) override {
        told.push_back({id, value, normalized});
    }

    std::vector<Told> told;
    void* openedIn = nullptr;
    bool opens = true;
    std::function<void()> whileOpening;
};

} // namespace Grimworks
