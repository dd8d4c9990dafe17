#pragma once

#include "core/TempoSource.h"
#include "plugin/HostIdentity.h"
#include "plugin/IPlugBase.h"
#include "plugin/vst2.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Grimworks {

/// The plug-in as a host sees it: holds the AEffect record, answers the dispatcher, cuts the host's process
/// calls into blocks of the announced size and asks the host for its services. The only class that knows
/// the host. Hosts are not trusted: null pointers, absurd indexes and calls in any order get 0 or nothing.
class IPlugVST : public IPlugBase, public TempoSource {
public:
    static constexpr int kMaxBlockSize = 65536;      ///< larger announcements are taken as this, and sliced
    static constexpr double kMinSampleRate = 1000.0; ///< Hz; rates outside are ignored
    static constexpr double kMaxSampleRate = 1536000.0; ///< Hz
    static constexpr int kMaxChunkSize = 1 << 26;       ///< bytes that a host may hand over as state

    /// `audioMaster` may be null: every service then answers 0.
    explicit IPlugVST(audioMasterCallback audioMaster, const PlugIdentity& plugIdentity = {});
    ~IPlugVST() override;

    /// What the entry point gives to the host.
    [[nodiscard]] AEffect* Effect() { return &effect; }

    /// The plug-in of a record, null for a null or foreign one. The close opcode destroys the object, which
    /// must then be one that a std::unique_ptr released.
    [[nodiscard]] static IPlugVST* FromEffect(AEffect* record);

    /// The line of the about page about the host.
    [[nodiscard]] std::string HostInfo() const;

    /// Version of the host, packed as by PackHostVersion; under Lock().
    [[nodiscard]] std::uint32_t HostVersion() const { return hostVersion; }

    /// Bits 1 and 2: the host asked for the extensions of one maker; under Lock().
    [[nodiscard]] unsigned HostExtensions() const { return hostExtensions; }

    void BeginInformHostOfParamChange(int id) override;
    void InformHostOfParamChange(int id, double normalized) override;
    void EndInformHostOfParamChange(int id) override;
    void InformHostOfProgramChange() override;
    bool IsRenderingOffline() override;
    std::int64_t GetSamplePos() override;
    double GetTempo() override;
    void GetTimeSig(int& numerator, int& denominator) override;
    void GetTime(HostTime& time) override;
    int GetHost() override;
    void AttachGraphics(PlugEditor* graphics) override;
    void ResizeGraphics(int width, int height) override;
    void HostSpecificInit() override;
    bool SendMidiMsg(const MidiMessage& message) override;
    bool SendSysEx(const SysExMessage& message) override;

    /// What the plug-in answers to a vendor-specific call, and to a can-do question, that nobody else knows.
    virtual std::intptr_t VendorSpecific(std::int32_t /*index*/, std::intptr_t /*value*/, void* /*ptr*/,
                                         float /*opt*/) {
        return 0;
    }
    virtual std::intptr_t HostCanDo(const char* /*query*/) { return 0; }

private:
    /// One channel: where its samples go, and the buffers that stand in for the host's.
    struct Channel {
        bool connected = true;
        std::vector<double> scratch;
    };

    /// What a dispatcher call carries.
    struct Call {
        std::int32_t opcode;
        std::int32_t index;
        std::intptr_t value;
        void* ptr;
        float opt;
    };

    static std::intptr_t DispatcherEntry(AEffect* record, std::int32_t opcode, std::int32_t index,
                                         std::intptr_t value, void* ptr, float opt) noexcept;
    static void ProcessEntry(AEffect* record, float** inputs, float** outputs, std::int32_t frames) noexcept;
    static void ProcessReplacingEntry(AEffect* record, float** inputs, float** outputs,
                                      std::int32_t frames) noexcept;
    static void ProcessDoubleReplacingEntry(AEffect* record, double** inputs, double** outputs,
                                            std::int32_t frames) noexcept;
    static void SetParameterEntry(AEffect* record, std::int32_t index, float value) noexcept;
    static float GetParameterEntry(AEffect* record, std::int32_t index) noexcept;

    void FillEffect();
    void SizeScratch(int frames);
    [[nodiscard]] static int ConnectedCount(const std::vector<Channel>& channels);

    std::intptr_t AskHost(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0,
                          void* ptr = nullptr, float opt = 0.0F);
    [[nodiscard]] const VstTimeInfo* AskTime(std::int32_t mask);
    void IdentifyHost();
    void RefreshSpeakers();

    std::intptr_t VSTDispatcher(const Call& call);
    std::intptr_t DispatchLocked(const Call& call);
    std::intptr_t DispatchLifecycle(const Call& call);
    std::intptr_t DispatchProgram(const Call& call);
    std::intptr_t DispatchParameter(const Call& call);
    std::intptr_t DispatchDescription(const Call& call);
    std::intptr_t DispatchChannels(const Call& call);
    std::intptr_t OpenEditor(void* parent);
    std::intptr_t CloseEditor();
    std::intptr_t GiveEditorRect(void* ptr);

    void TakeSampleRate(float rate);
    void TakeBlockSize(std::intptr_t frames);
    std::intptr_t GiveChunk(bool bank, void* ptr);
    std::intptr_t TakeChunk(bool bank, const void* data, std::intptr_t size);
    std::intptr_t TakeEvents(const VstEvents* events);
    std::intptr_t GiveParameterText(const Call& call);
    std::intptr_t GiveKeyName(void* ptr);
    std::intptr_t SetSpeakers(const Call& call);
    std::intptr_t GiveSpeakers(const Call& call);
    std::intptr_t GivePin(const Call& call, bool input);
    std::intptr_t AnswerVendorSpecific(const Call& call);
    std::intptr_t AnswerCanDo(const char* query);

    /// Runs a host's call in blocks of at most the announced size; `deliver` takes the sound of each from the
    /// scratch buffers to the host's.
    template <typename Sample, typename Deliver>
    void ProcessInBlocks(Sample** inputs, std::int32_t frames, Deliver deliver);
    template <typename Sample>
    double** FillInputs(Sample** inputs, std::int32_t start, int frames);
    template <typename Deliver>
    void ProcessFloats(float** inputs, float** outputs, std::int32_t frames, Deliver deliver);
    void ProcessDoubles(double** inputs, double** outputs, std::int32_t frames);

    audioMasterCallback host;
    AEffect effect{};
    std::vector<Channel> inputChannels;
    std::vector<Channel> outputChannels;
    std::vector<double*> inputPointers;
    std::vector<double*> outputPointers;
    VstSpeakerArrangement inputSpeakers{};
    VstSpeakerArrangement outputSpeakers{};
    ERect editorRect{};
    ByteChunk bankChunk;
    ByteChunk programChunk;
    int hostNumber = kHostUnknown;
    std::uint32_t hostVersion = 0;
    bool hostAsked = false;
    bool hostInitDone = false;
    unsigned hostExtensions = 0;
};

} // namespace Grimworks
