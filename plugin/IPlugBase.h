#pragma once

#include "core/ValueBlock.h"
#include "plugin/ByteChunk.h"
#include "plugin/HostNews.h"
#include "plugin/HostTime.h"
#include "plugin/IParam.h"
#include "plugin/MidiMessage.h"
#include "plugin/PlugEditor.h"
#include "plugin/PlugIdentity.h"
#include "plugin/PlugLock.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

/// What every plug-in is, whatever the host speaks: one lock, a sample rate and a block size, a list of
/// parameters, a list of presets that hold state chunks, and the operations through which a format wrapper
/// drives the instrument. Public operations may be called from any thread and take the lock themselves, but
/// for those that say that they are for use under Lock(). The callbacks of the first group always run with
/// the lock held.
class IPlugBase {
public:
    static constexpr int kPresetNameLength = 255; ///< bytes kept of a preset's name
    static constexpr std::int32_t kFrameworkVersion = 0x00010000;

    /// One program: its name and, once it is initialised, its state chunk.
    struct Preset {
        bool initialized = false;
        std::string name = "empty";
        ByteChunk chunk;
    };

    explicit IPlugBase(const PlugIdentity& plugIdentity);
    virtual ~IPlugBase();
    IPlugBase(const IPlugBase&) = delete;
    IPlugBase& operator=(const IPlugBase&) = delete;

    // What the instrument overrides.

    /// The sample rate or the block size changed, or the host stopped.
    virtual void Reset() {}

    /// A parameter has a new value, or the same one is to be sent through the engine again.
    virtual void OnParamChange(int /*id*/) {}

    /// Makes one block. `frames` is 0 to BlockSize(); `outputs` has a valid channel for each output;
    /// `inputs` is null for an instrument without inputs. Audio thread.
    virtual void ProcessDoubleReplacing(double** inputs, double** outputs, int frames) = 0;

    virtual void OnEditorOpened() {}
    virtual void OnEditorClosed() {}
    virtual void OnIdle() {}

    /// The host switched the plug-in on or off.
    virtual void OnActivate(bool /*active*/) {}

    virtual void ProcessMidiMsg(const MidiMessage& /*message*/) {}
    virtual void ProcessSysEx(const SysExMessage& /*message*/) {}

    /// Writes the name that the plug-in gives to a key, at most 63 characters and the end mark; false if it
    /// has none.
    virtual bool GetMidiNoteName(int /*note*/, char* /*name*/) { return false; }

    /// Appends the whole state; true if the chunk holds something at the end. The plain form is the
    /// parameters.
    virtual bool SerializeState(ByteChunk& chunk);

    /// Takes the state that stands at `position` as far as it goes, and gives the position behind it, -1 if
    /// it was too short.
    virtual int UnserializeState(const ByteChunk& chunk, int position);

    /// Whether the live state equals the one in these bytes.
    [[nodiscard]] virtual bool CompareState(std::span<const std::uint8_t> data, int position);

    /// The host's name is known from now on.
    virtual void OnHostIdentified() {}

    // What the host does for the plug-in. The format wrapper fills these in.

    virtual void BeginInformHostOfParamChange(int id) = 0;
    virtual void InformHostOfParamChange(int id, double normalized) = 0;
    virtual void EndInformHostOfParamChange(int id) = 0;

    /// Shows the host's own menu of a parameter, for hosts that have one.
    virtual void PopupHostContextMenuForParam(int /*id*/) {}

    /// Programs or many parameters changed: the host reads its display again.
    virtual void InformHostOfProgramChange() = 0;

    [[nodiscard]] virtual bool IsRenderingOffline() = 0;

    /// Position of the transport in whole samples, 0 if the host tells none.
    [[nodiscard]] virtual std::int64_t GetSamplePos() = 0;

    /// Beats per minute, 0 if the host tells none. May be NaN if the host says so.
    [[nodiscard]] virtual double GetTempo() = 0;

    /// Both 0 if the host tells none.
    virtual void GetTimeSig(int& numerator, int& denominator) = 0;
    virtual void GetTime(HostTime& time) = 0;

    /// Number of the host, see HostIdentity.h. The first call asks the host.
    virtual int GetHost() = 0;

    /// Makes an editor known; it must outlive the plug-in's use by the host. Construction only.
    virtual void AttachGraphics(PlugEditor* graphics) = 0;

    /// The editor has a new size in pixels.
    virtual void ResizeGraphics(int width, int height) = 0;

    /// Settles what depends on who the host is; does its work once.
    virtual void HostSpecificInit() = 0;

    /// Keeps the latency in frames; a negative number counts as 0.
    virtual void SetLatency(int frames);

    /// Sends an event to the host; true if the host took it.
    virtual bool SendMidiMsg(const MidiMessage& message) = 0;
    virtual bool SendSysEx(const SysExMessage& message) = 0;

    // Description.

    [[nodiscard]] const PlugIdentity& Identity() const { return identity; }
    [[nodiscard]] PlugLock& Lock() const { return lock; }

    /// Hz and frames as the host last announced them; under Lock().
    [[nodiscard]] double GetSampleRate() const { return sampleRate; }
    [[nodiscard]] int GetBlockSize() const { return blockSize; }

    [[nodiscard]] int InputCount() const { return inputCount; }
    [[nodiscard]] int OutputCount() const { return outputCount; }
    [[nodiscard]] int Latency() const { return latency; }
    [[nodiscard]] int TailSize() const { return tailSize; }
    [[nodiscard]] PlugEditor* Editor() const { return editor; }

    /// Reads "0-1 0-2". Pairs that are not two numbers from 0 to 64 with a hyphen between are left out.
    [[nodiscard]] static std::vector<ChannelCounts> ParseChannels(std::string_view text);

    // Parameters.

    [[nodiscard]] int ParameterCount() const { return static_cast<int>(parameters.size()); }

    /// The parameter of an id, null outside the list. Its value is read and written under Lock().
    [[nodiscard]] IParam* GetParam(int id);
    [[nodiscard]] const IParam* GetParam(int id) const;

    /// Defines all parameters from the table, each with its value in `values` as value and default (the
    /// reserved ones 0). The third LFO's rate alone resets to the value of its tune amount.
    void DefineParameters(const ValueBlock& values);

    /// Value on 0..1, 0.0 for a bad id.
    [[nodiscard]] double GetParameterNormalized(int id) const;

    /// Plain value, 0.0 for a bad id.
    [[nodiscard]] double GetParameterValue(int id) const;

    /// The plug-in itself sets a parameter: it takes the value (limited to the range's top), the editor shows
    /// it, the engine follows, and the host hears of it once the lock is free (see HostNews). A bad id, a NaN
    /// or a negative infinity does nothing. Any thread, the audio thread included.
    void SetParameterFromPlug(int id, double normalized);

    /// A control sets a parameter: as above, but the editor knows already.
    void SetParameterFromGUI(int id, double normalized);

    /// The host, or a loaded program, sets a parameter: as above, but nobody tells the host.
    void SetParameterFromHost(int id, double normalized);

    /// The host sets a parameter by text. False for a bad id or a text that means NaN.
    bool SetParameterFromText(int id, std::string_view text);

    /// Sends every parameter through the engine, in id order.
    void SendAllParameters();

    /// Gives every parameter's value to the editor.
    void RedrawParamControls();

    // State.

    /// Appends every parameter's plain value; true if the chunk holds something at the end.
    bool SerializeParams(ByteChunk& chunk) const;

    /// Reads every parameter's plain value, limited to its range, then sends all through the engine. What
    /// does not fit or is NaN keeps its old value. Gives the position behind, or -1.
    int UnserializeParams(const ByteChunk& chunk, int position);

    /// Whether every parameter is within 0.00001 of the values that stand at `position`, as 32-bit floats.
    /// False when they are not all there.
    [[nodiscard]] bool CompareParams(std::span<const std::uint8_t> data, int position) const;

    /// Appends "tffp" and the framework version: what stands before a chunk outside the plug-in.
    static void PutHeader(ByteChunk& chunk);

    /// Steps over the header if there is one, and gives its version, else 0.
    static int SkipHeader(const ByteChunk& chunk, int position, std::int32_t& version);

    // Presets.

    [[nodiscard]] int PresetCount() const { return static_cast<int>(presets.size()); }
    [[nodiscard]] int CurrentPreset() const;

    /// Empty for a bad index.
    [[nodiscard]] std::string PresetName(int index) const;

    /// A preset for reading under Lock(), null for a bad index.
    [[nodiscard]] const Preset* GetPreset(int index) const;

    /// Makes a preset the current one and takes its state; one that was never used takes the live state
    /// instead and the name "user preset N". False, and nothing made current, for a bad index or a state that
    /// is too short.
    bool RestorePreset(int index);

    /// Stores the live state in the current preset, under a new name if one is given.
    void ModifyCurrentPreset(std::string_view name = {});

    /// Puts a state chunk into the first preset that was never used; nothing if there is none left.
    void MakePresetFromChunk(std::string_view name, const ByteChunk& chunk);

    /// Stores the live state in every preset that was never used.
    void FillUnusedPresets(std::string_view name);

    /// Appends the whole bank.
    bool SerializePresets(ByteChunk& chunk);

    /// Takes a bank: each preset's state passes through the engine, then the current preset is restored.
    /// Gives the position behind, -1 if the bank was too short.
    int UnserializePresets(const ByteChunk& chunk, int position);

    // Program files.

    /// Whether a path belongs to a program file: the text ".fxp" occurs in it.
    [[nodiscard]] static bool IsProgramFilePath(std::string_view path);

    /// Writes the live state under the current preset's name. An existing file stays whole until the new one
    /// is complete. False if it could not be written.
    [[nodiscard]] bool SaveProgramAsFXP(const std::string& path);

    /// Takes a program file into the current preset. False, and nothing changed, if it is none of ours.
    [[nodiscard]] bool LoadProgramFromFXP(const std::string& path);

    /// The same for a file's bytes, without telling the host.
    void MakeProgramFile(ByteChunk& file);
    [[nodiscard]] bool TakeProgramFile(const ByteChunk& file);

protected:
    /// Has the host read its display again once the lock is free (see HostNews).
    void TellProgramChange();

    /// Takes a rate in Hz; the caller sees to Reset.
    void StoreSampleRate(double rate) { sampleRate = rate; }
    void StoreBlockSize(int frames) { blockSize = frames; }

    PlugEditor* editor = nullptr;

private:
    friend class HostNews;
    struct ProgramFileHeader;

    bool StoreNormalized(int id, double normalized);
    void TellEditor(int id, double value, bool normalized);
    int CountUserPresets() const;
    [[nodiscard]] int UnserializePreset(Preset& preset, const ByteChunk& chunk, int position);
    void PutFileHeader(ByteChunk& file, std::uint32_t form, int byteSize) const;
    void TakeFileParameters(const ByteChunk& file, int position);

    PlugIdentity identity;
    mutable PlugLock lock;
    HostNews* news = nullptr; ///< the outermost one that is open; under the lock
    double sampleRate = kDefaultSampleRate;
    int blockSize = kDefaultBlockSize;
    int inputCount = 0;
    int outputCount = 0;
    int latency = 0;
    int tailSize = 0;
    std::vector<IParam> parameters;
    std::vector<Preset> presets;
    int currentPreset = 0;
};

} // namespace Grimworks
