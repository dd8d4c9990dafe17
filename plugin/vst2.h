#pragma once

#include <cstddef>
#include <cstdint>

/// The binary interface between hosts and the module: plain records and numbers, 64-bit, natural alignment,
/// little-endian. Names of opcodes are our own; the numbers and layouts are what hosts were built with.
namespace Grimworks {

struct AEffect;

/// The host's own entry point. A plug-in may be handed a null one.
using audioMasterCallback = std::intptr_t (*)(AEffect* effect, std::int32_t opcode, std::int32_t index,
                                              std::intptr_t value, void* ptr, float opt);

using DispatcherFunction = std::intptr_t (*)(AEffect* effect, std::int32_t opcode, std::int32_t index,
                                             std::intptr_t value, void* ptr, float opt);
using ProcessFunction = void (*)(AEffect* effect, float** inputs, float** outputs, std::int32_t frames);
using ProcessDoubleFunction = void (*)(AEffect* effect, double** inputs, double** outputs,
                                       std::int32_t frames);
using SetParameterFunction = void (*)(AEffect* effect, std::int32_t index, float value);
using GetParameterFunction = float (*)(AEffect* effect, std::int32_t index);

/// A module's exported entry point.
using PluginMainFunction = AEffect* (*)(audioMasterCallback host);

inline constexpr std::int32_t kEffectMagic = 0x56737450; ///< "PtsV" in memory
inline constexpr std::int32_t kInterfaceVersion = 2400;

/// What a plug-in is to the host.
struct AEffect {
    std::int32_t magic;
    DispatcherFunction dispatcher;
    ProcessFunction process; ///< adds to the outputs
    SetParameterFunction setParameter;
    GetParameterFunction getParameter;
    std::int32_t numPrograms;
    std::int32_t numParams;
    std::int32_t numInputs;
    std::int32_t numOutputs;
    std::int32_t flags;
    std::intptr_t reservedForHost1;
    std::intptr_t reservedForHost2;
    std::int32_t initialDelay; ///< frames
    std::int32_t realQualities;
    std::int32_t offlineQualities;
    float ioRatio;
    void* object; ///< the plug-in's own pointer
    void* user;   ///< the host's own pointer
    std::int32_t uniqueID;
    std::int32_t version;
    ProcessFunction processReplacing;
    ProcessDoubleFunction processDoubleReplacing;
    char reserved[56];
};
static_assert(sizeof(AEffect) == 192);
static_assert(offsetof(AEffect, magic) == 0);
static_assert(offsetof(AEffect, dispatcher) == 8);
static_assert(offsetof(AEffect, process) == 16);
static_assert(offsetof(AEffect, setParameter) == 24);
static_assert(offsetof(AEffect, getParameter) == 32);
static_assert(offsetof(AEffect, numPrograms) == 40);
static_assert(offsetof(AEffect, numParams) == 44);
static_assert(offsetof(AEffect, numInputs) == 48);
static_assert(offsetof(AEffect, numOutputs) == 52);
static_assert(offsetof(AEffect, flags) == 56);
static_assert(offsetof(AEffect, reservedForHost1) == 64);
static_assert(offsetof(AEffect, reservedForHost2) == 72);
static_assert(offsetof(AEffect, initialDelay) == 80);
static_assert(offsetof(AEffect, realQualities) == 84);
static_assert(offsetof(AEffect, offlineQualities) == 88);
static_assert(offsetof(AEffect, ioRatio) == 92);
static_assert(offsetof(AEffect, object) == 96);
static_assert(offsetof(AEffect, user) == 104);
static_assert(offsetof(AEffect, uniqueID) == 112);
static_assert(offsetof(AEffect, version) == 116);
static_assert(offsetof(AEffect, processReplacing) == 120);
static_assert(offsetof(AEffect, processDoubleReplacing) == 128);
static_assert(offsetof(AEffect, reserved) == 136);

/// Bits of AEffect::flags.
namespace EffectFlag {
enum : std::int32_t {
    HasEditor = 0x1,
    MonoInput = 0x8,
    CanReplacing = 0x10,
    Chunks = 0x20,
    Instrument = 0x100,
    CanDoubleReplacing = 0x1000,
};
} // namespace EffectFlag

/// What a host asks of a plug-in through AEffect::dispatcher.
namespace PlugOp {
enum : std::int32_t {
    Open = 0,
    Close = 1,
    SetProgram = 2,
    GetProgram = 3,
    SetProgramName = 4,
    GetProgramName = 5,
    GetParameterLabel = 6,
    GetParameterDisplay = 7,
    GetParameterName = 8,
    SetSampleRate = 10,
    SetBlockSize = 11,
    MainsChanged = 12,
    EditGetRect = 13,
    EditOpen = 14,
    EditClose = 15,
    Identify = 22,
    GetChunk = 23,
    SetChunk = 24,
    ProcessEvents = 25,
    CanBeAutomated = 26,
    StringToParameter = 27,
    GetProgramNameIndexed = 29,
    GetInputProperties = 33,
    GetOutputProperties = 34,
    GetCategory = 35,
    OfflineNotify = 41,
    SetSpeakerArrangement = 42,
    GetEffectName = 45,
    GetVendorString = 47,
    GetProductString = 48,
    GetVendorVersion = 49,
    VendorSpecific = 50,
    CanDo = 51,
    GetTailSize = 52,
    GetInterfaceVersion = 58,
    GetMidiKeyName = 66,
    GetSpeakerArrangement = 69,
    Last = 69,
};
} // namespace PlugOp

/// The instrument's own requests: VendorSpecific with one of these as index and the path of a file, UTF-8
/// with its end mark, as pointer. The current program is loaded or saved, as a program file if ".fxp" occurs
/// in the path, else as text. The answer is 1 when it was done, else 0, as with plug-ins that do not know the
/// request.
namespace OwnOp {
enum : std::int32_t {
    LoadProgramFile = 0x54466C64, ///< "TFld"
    SaveProgramFile = 0x54467376, ///< "TFsv"
    SelectPage = 0x54467067,      ///< "TFpg": the editor's page, 0 synth, 1 scope, 2 about, as value
};
} // namespace OwnOp

/// What a plug-in asks of its host.
namespace HostOp {
enum : std::int32_t {
    Automate = 0,
    WantMidi = 6,
    GetTime = 7,
    ProcessEvents = 8,
    GetProcessLevel = 23,
    GetProductString = 33,
    GetVendorVersion = 34,
    UpdateDisplay = 42,
    BeginEdit = 43,
    EndEdit = 44,
};
} // namespace HostOp

inline constexpr std::intptr_t kProcessLevelOffline = 4;
inline constexpr std::intptr_t kCategoryEffect = 1;
inline constexpr std::intptr_t kCategorySynth = 2;
inline constexpr std::intptr_t kIdentifyAnswer = 0x4E764566;

/// The host's clock. Each field behind sampleRate counts only with its flag set.
struct VstTimeInfo {
    double samplePos;
    double sampleRate;  ///< Hz
    double nanoSeconds; ///< system time
    double ppqPos;      ///< quarter notes
    double tempo;       ///< beats per minute
    double barStartPos; ///< quarter notes
    double cycleStartPos;
    double cycleEndPos;
    std::int32_t timeSigNumerator;
    std::int32_t timeSigDenominator;
    std::int32_t smpteOffset;
    std::int32_t smpteFrameRate;
    std::int32_t samplesToNextClock;
    std::int32_t flags;
};
static_assert(sizeof(VstTimeInfo) == 88);
static_assert(offsetof(VstTimeInfo, tempo) == 32);
static_assert(offsetof(VstTimeInfo, cycleEndPos) == 56);
static_assert(offsetof(VstTimeInfo, timeSigNumerator) == 64);
static_assert(offsetof(VstTimeInfo, flags) == 84);

/// Bits of VstTimeInfo::flags, and the mask in which a plug-in names what it wants to know.
namespace TimeFlag {
enum : std::int32_t {
    TransportPlaying = 0x2,
    TransportCycling = 0x4,
    PpqPosValid = 0x200,
    TempoValid = 0x400,
    BarStartValid = 0x800,
    CycleValid = 0x1000,
    TimeSigValid = 0x2000,
};
} // namespace TimeFlag

/// One event of any kind: all kinds begin with the same four numbers.
struct VstEvent {
    std::int32_t type;
    std::int32_t byteSize;
    std::int32_t deltaFrames;
    std::int32_t flags;
    char data[16];
};
static_assert(sizeof(VstEvent) == 32);
static_assert(offsetof(VstEvent, data) == 16);

inline constexpr std::int32_t kMidiEvent = 1;
inline constexpr std::int32_t kSysExEvent = 6;

struct VstMidiEvent {
    std::int32_t type;
    std::int32_t byteSize;
    std::int32_t deltaFrames;
    std::int32_t flags;
    std::int32_t noteLength;
    std::int32_t noteOffset;
    char midiData[4];
    char detune;
    char noteOffVelocity;
    char reserved1;
    char reserved2;
};
static_assert(sizeof(VstMidiEvent) == 32);
static_assert(offsetof(VstMidiEvent, midiData) == 24);

struct VstMidiSysexEvent {
    std::int32_t type;
    std::int32_t byteSize;
    std::int32_t deltaFrames;
    std::int32_t flags;
    std::int32_t dumpBytes;
    std::intptr_t reserved1;
    char* dump;
    std::intptr_t reserved2;
};
static_assert(sizeof(VstMidiSysexEvent) == 48);
static_assert(offsetof(VstMidiSysexEvent, dumpBytes) == 16);
static_assert(offsetof(VstMidiSysexEvent, dump) == 32);

/// A list of events. The array goes on past its declared end: numEvents says how far.
struct VstEvents {
    std::int32_t numEvents;
    std::intptr_t reserved;
    VstEvent* events[2];
};
static_assert(offsetof(VstEvents, events) == 16);

/// A window's size, in pixels.
struct ERect {
    std::int16_t top;
    std::int16_t left;
    std::int16_t bottom;
    std::int16_t right;
};
static_assert(sizeof(ERect) == 8);

struct VstPinProperties {
    char label[64];
    std::int32_t flags;
    std::int32_t arrangementType;
    char shortLabel[8];
    char reserved[48];
};
static_assert(sizeof(VstPinProperties) == 128);
static_assert(offsetof(VstPinProperties, flags) == 64);
static_assert(offsetof(VstPinProperties, shortLabel) == 72);

namespace PinFlag {
enum : std::int32_t {
    Active = 0x1,
    StereoPair = 0x2,
};
} // namespace PinFlag

struct VstSpeaker {
    float azimuth;
    float elevation;
    float radius;
    float reserved;
    char name[64];
    std::int32_t type;
    char future[28];
};
static_assert(sizeof(VstSpeaker) == 112);
static_assert(offsetof(VstSpeaker, name) == 16);
static_assert(offsetof(VstSpeaker, type) == 80);

struct VstSpeakerArrangement {
    std::int32_t type;
    std::int32_t numChannels;
    VstSpeaker speakers[8];
};
static_assert(sizeof(VstSpeakerArrangement) == 904);
static_assert(offsetof(VstSpeakerArrangement, speakers) == 8);

namespace ArrangementType {
enum : std::int32_t {
    User = -2,
    Empty = -1,
    Mono = 0,
    Stereo = 1,
};
} // namespace ArrangementType

/// The name that a plug-in gives to one key.
struct VstMidiKeyName {
    std::int32_t program;
    std::int32_t key;
    char name[64];
    std::int32_t reserved;
    std::int32_t flags;
};
static_assert(sizeof(VstMidiKeyName) == 80);
static_assert(offsetof(VstMidiKeyName, name) == 8);

// How much of a host's text buffer is ever written, the end mark not counted. The interface allots 8 bytes to
// parameter texts and 24 to program names, but hosts hand over at least 32.
inline constexpr int kShortTextLength = 31; ///< program and parameter texts
inline constexpr int kLongTextLength = 63;  ///< effect, vendor, product and pin texts

} // namespace Grimworks
