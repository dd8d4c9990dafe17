#pragma once

#include "host/TempoMap.h"
#include "plugin/vst2.h"

#include <array>
#include <cstdint>
#include <mutex>
#include <span>
#include <string>
#include <vector>

namespace Grimworks {

/// What the host settles before a plug-in plays.
struct HostSetup {
    double sampleRate = 48000.0; ///< Hz
    int blockSize = 256;         ///< most frames of one process call
    bool realTime = false;       ///< blocks are played at the pace at which they would be heard
};

/// A MIDI message with its place in the block.
struct BlockEvent {
    int offset = 0; ///< frames from the start of the block
    std::array<std::uint8_t, 3> bytes{};
};

/// One running plug-in and everything that a host does for it: answers its questions, keeps the song
/// position, hands over events and blocks. One thread may call Process while another one shows the editor and
/// reads or sets parameters; nothing else is for use from several threads.
class PluginHost {
public:
    using EntryPoint = PluginMainFunction;

    /// Makes an instance and tells it rate and block size. Throws HostError, naming `moduleName`, when the
    /// module gives none or one that no host can use.
    PluginHost(EntryPoint entry, std::string moduleName, const HostSetup& hostSetup);

    /// Switches the instance off and gives it back.
    ~PluginHost();
    PluginHost(const PluginHost&) = delete;
    PluginHost& operator=(const PluginHost&) = delete;

    /// The plug-in's record as it stands.
    [[nodiscard]] const AEffect& Record() const { return *effect; }
    [[nodiscard]] const HostSetup& Setup() const { return setup; }
    [[nodiscard]] const std::string& ModuleName() const { return name; }

    /// Calls the plug-in's dispatcher.
    std::intptr_t Dispatch(int opcode, int index = 0, std::intptr_t value = 0, void* pointer = nullptr,
                           float option = 0.0F);

    /// Asks for a text by an opcode that fills a buffer. Empty if the plug-in writes nothing.
    [[nodiscard]] std::string Text(int opcode, int index = 0);

    /// Parameters by id; an id outside 0..ParameterCount() - 1 gives 0 and an empty text.
    [[nodiscard]] int ParameterCount() const { return effect->numParams; }
    [[nodiscard]] float Parameter(int id) const;
    void SetParameter(int id, float value);
    [[nodiscard]] std::string ParameterName(int id);
    [[nodiscard]] std::string ParameterDisplay(int id);
    [[nodiscard]] std::string ParameterLabel(int id);

    /// Programs by index from 0.
    [[nodiscard]] int ProgramCount() const { return effect->numPrograms; }
    [[nodiscard]] int CurrentProgram();
    [[nodiscard]] std::string ProgramName(int index);

    /// Makes a program the current one; false if the plug-in did not go there.
    bool SelectProgram(int index);

    /// Hands over the stored state of one program; false if the plug-in refuses it.
    bool SetProgramChunk(std::span<const std::uint8_t> bytes);

    /// Has the instrument itself load or save its current program, as a program file if ".fxp" occurs in the
    /// path, else as text. False if it could not, or if it is a plug-in that does not know the request.
    bool LoadProgram(const std::string& path);
    bool SaveProgram(const std::string& path);

    /// The tempo that the plug-in is given, null for 120. It must outlive the next calls of Process.
    void FollowTempo(const TempoMap* map) { tempoMap = map; }

    /// Switches audio on or off.
    void Activate(bool active);

    /// Renders one block of 1 to Setup().blockSize frames that starts `position` frames into the song. Events
    /// come in order of offset. The sound is in Output afterwards.
    void Process(std::int64_t position, std::span<const BlockEvent> events, int frames);

    [[nodiscard]] int ChannelCount() const { return effect->numOutputs; }

    /// A channel of the last block, Setup().blockSize samples.
    [[nodiscard]] std::span<const double> Output(int channel) const;

private:
    static std::intptr_t Callback(AEffect* asker, std::int32_t opcode, std::int32_t index,
                                  std::intptr_t value, void* pointer, float option);
    static std::intptr_t AnswerAnybody(std::int32_t opcode, void* pointer);

    std::intptr_t Answer(std::int32_t opcode, void* pointer);
    std::intptr_t TellTime();
    void CheckRecord() const;
    void MakeBuffers();
    void UpdateTime(std::int64_t position);
    void SendEvents(std::span<const BlockEvent> events);
    void RenderFloats(int frames);
    [[nodiscard]] bool HasParameter(int id) const { return id >= 0 && id < effect->numParams; }

    std::string name;
    HostSetup setup;
    AEffect* effect = nullptr;
    bool running = false;
    const TempoMap* tempoMap = nullptr;
    TempoMap plainTempo;
    std::mutex timeLock;
    VstTimeInfo time{};
    std::vector<VstMidiEvent> midiEvents;
    std::vector<std::intptr_t> eventList;
    std::vector<std::vector<double>> inputs;
    std::vector<std::vector<double>> outputs;
    std::vector<std::vector<float>> floatInputs;
    std::vector<std::vector<float>> floatOutputs;
    std::vector<double*> inputPointers;
    std::vector<double*> outputPointers;
    std::vector<float*> floatInputPointers;
    std::vector<float*> floatOutputPointers;
};

} // namespace Grimworks
