#include "plugin/IPlugVST.h"

#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace Grimworks {

std::intptr_t IPlugVST::AskHost(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                float opt) {
    return host != nullptr ? host(&effect, opcode, index, value, ptr, opt) : 0;
}

const VstTimeInfo* IPlugVST::AskTime(std::int32_t mask) {
    return std::bit_cast<const VstTimeInfo*>(AskHost(HostOp::GetTime, 0, mask));
}

void IPlugVST::BeginInformHostOfParamChange(int id) {
    AskHost(HostOp::BeginEdit, id);
}

void IPlugVST::InformHostOfParamChange(int id, double normalized) {
    AskHost(HostOp::Automate, id, 0, nullptr, static_cast<float>(normalized));
}

void IPlugVST::EndInformHostOfParamChange(int id) {
    AskHost(HostOp::EndEdit, id);
}

void IPlugVST::InformHostOfProgramChange() {
    AskHost(HostOp::UpdateDisplay);
}

bool IPlugVST::IsRenderingOffline() {
    return AskHost(HostOp::GetProcessLevel) == kProcessLevelOffline;
}

namespace {

std::int64_t WholeSample(double position) {
    constexpr double kLargest = 9.0e18;
    if (!(position > 0.0)) return 0;
    return static_cast<std::int64_t>(std::floor(std::fmin(position, kLargest) + 0.5));
}

bool HasFlag(const VstTimeInfo& info, std::int32_t flag) {
    return (info.flags & flag) != 0;
}

void TakeIfFinite(double& target, double given) {
    if (std::isfinite(given)) target = given;
}

void TakeTimeSig(const VstTimeInfo& info, int& numerator, int& denominator) {
    if (!HasFlag(info, TimeFlag::TimeSigValid)) return;
    if (info.timeSigNumerator < 0 || info.timeSigDenominator < 0) return;
    numerator = info.timeSigNumerator;
    denominator = info.timeSigDenominator;
}

void TakeCycle(const VstTimeInfo& info, HostTime& time) {
    if (!HasFlag(info, TimeFlag::CycleValid)) return;
    if (!std::isfinite(info.cycleStartPos) || !(info.cycleEndPos >= info.cycleStartPos)) return;
    time.cycleStartPos = info.cycleStartPos;
    TakeIfFinite(time.cycleEndPos, info.cycleEndPos);
}

} // namespace

std::int64_t IPlugVST::GetSamplePos() {
    const VstTimeInfo* info = AskTime(0);
    return info != nullptr ? WholeSample(info->samplePos) : 0;
}

double IPlugVST::GetTempo() {
    const VstTimeInfo* info = AskTime(TimeFlag::TempoValid);
    if (info == nullptr || !HasFlag(*info, TimeFlag::TempoValid) || info->tempo < 0.0) return 0.0;
    return info->tempo;
}

void IPlugVST::GetTimeSig(int& numerator, int& denominator) {
    numerator = 0;
    denominator = 0;
    const VstTimeInfo* info = AskTime(TimeFlag::TimeSigValid);
    if (info != nullptr) TakeTimeSig(*info, numerator, denominator);
}

void IPlugVST::GetTime(HostTime& time) {
    constexpr std::int32_t kMask = TimeFlag::PpqPosValid | TimeFlag::TempoValid | TimeFlag::BarStartValid |
                                   TimeFlag::CycleValid | TimeFlag::TimeSigValid;
    time = {};
    const VstTimeInfo* info = AskTime(kMask);
    if (info == nullptr) return;
    time.samplePos = WholeSample(info->samplePos);
    if (HasFlag(*info, TimeFlag::PpqPosValid)) TakeIfFinite(time.ppqPos, info->ppqPos);
    if (HasFlag(*info, TimeFlag::TempoValid) && info->tempo > 0.0) TakeIfFinite(time.tempo, info->tempo);
    if (HasFlag(*info, TimeFlag::BarStartValid)) TakeIfFinite(time.barStartPos, info->barStartPos);
    TakeCycle(*info, time);
    TakeTimeSig(*info, time.timeSigNumerator, time.timeSigDenominator);
    time.playing = HasFlag(*info, TimeFlag::TransportPlaying);
    time.cycling = HasFlag(*info, TimeFlag::TransportCycling);
}

int IPlugVST::GetHost() {
    const PlugLockGuard guard(Lock());
    if (!hostAsked) {
        hostAsked = true;
        IdentifyHost();
    }
    return hostNumber;
}

void IPlugVST::IdentifyHost() {
    std::array<char, 1024> product{}; // the interface says 64, some hosts write more
    const std::intptr_t answer = AskHost(HostOp::GetProductString, 0, 0, product.data());
    product.back() = '\0';
    if (answer == 0 && product.front() == '\0') {
        hostNumber = kHostUnasked;
        return;
    }
    hostNumber = HostFromProduct(product.data());
    hostVersion = PackHostVersion(AskHost(HostOp::GetVendorVersion));
}

namespace {

template <typename Event>
VstEvents OneEvent(Event& event) {
    return {1, 0, {reinterpret_cast<VstEvent*>(&event), nullptr}};
}

} // namespace

bool IPlugVST::SendMidiMsg(const MidiMessage& message) {
    VstMidiEvent event{};
    event.type = kMidiEvent;
    event.byteSize = static_cast<std::int32_t>(sizeof event);
    event.deltaFrames = message.offset;
    event.midiData[0] = static_cast<char>(message.status);
    event.midiData[1] = static_cast<char>(message.data1);
    event.midiData[2] = static_cast<char>(message.data2);
    VstEvents events = OneEvent(event);
    return AskHost(HostOp::ProcessEvents, 0, 0, &events) == 1;
}

bool IPlugVST::SendSysEx(const SysExMessage& message) {
    VstMidiSysexEvent event{};
    event.type = kSysExEvent;
    event.byteSize = static_cast<std::int32_t>(sizeof event);
    event.deltaFrames = message.offset;
    event.dumpBytes = message.size;
    event.dump = const_cast<char*>(reinterpret_cast<const char*>(message.data));
    VstEvents events = OneEvent(event);
    return AskHost(HostOp::ProcessEvents, 0, 0, &events) == 1;
}

} // namespace Grimworks
