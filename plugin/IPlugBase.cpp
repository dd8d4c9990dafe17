#include "plugin/IPlugBase.h"

#include "core/ParameterTable.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Grimworks {

namespace {

constexpr int kMaxChannels = 64;

/// A whole number that fills the text; -1 otherwise.
int ChannelCount(std::string_view text) {
    int count = -1;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, count);
    return result.ec == std::errc{} && result.ptr == end && count <= kMaxChannels ? count : -1;
}

IParam::Definition DefinitionOf(int id, const ValueBlock& values) {
    if (id >= kLiveParameters) {
        return {.name = {}, .step = kReservedStep, .label = {}, .group = kReservedGroup};
    }
    const ParameterInfo& row = kParameterTable[static_cast<std::size_t>(id)];
    // Projects know the third LFO's rate by this reset value, although it is another knob's.
    const int source = id == Osc(2, OscParam::LfoRate) ? Osc(2, OscParam::LfoToTune) : id;
    return {.name = row.name,
            .defaultValue = values[source],
            .min = 0.0,
            .max = row.max,
            .step = row.step,
            .label = row.label,
            .group = row.group};
}

} // namespace

IPlugBase::IPlugBase(const PlugIdentity& plugIdentity)
    : identity(plugIdentity), parameters(static_cast<std::size_t>(std::max(plugIdentity.parameters, 0))),
      presets(static_cast<std::size_t>(std::max(plugIdentity.programs, 0))) {
    for (const ChannelCounts& counts : ParseChannels(identity.channels)) {
        inputCount = std::max(inputCount, counts.inputs);
        outputCount = std::max(outputCount, counts.outputs);
    }
}

IPlugBase::~IPlugBase() = default;

std::vector<ChannelCounts> IPlugBase::ParseChannels(std::string_view text) {
    std::vector<ChannelCounts> pairs;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        const std::string_view pair = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t hyphen = pair.find('-');
        if (hyphen == std::string_view::npos) continue;
        const ChannelCounts counts{ChannelCount(pair.substr(0, hyphen)),
                                   ChannelCount(pair.substr(hyphen + 1))};
        if (counts.inputs >= 0 && counts.outputs >= 0) pairs.push_back(counts);
    }
    return pairs;
}

void IPlugBase::SetLatency(int frames) {
    const PlugLockGuard guard(lock);
    latency = std::max(frames, 0);
}

IParam* IPlugBase::GetParam(int id) {
    return id >= 0 && id < ParameterCount() ? &parameters[static_cast<std::size_t>(id)] : nullptr;
}

const IParam* IPlugBase::GetParam(int id) const {
    return id >= 0 && id < ParameterCount() ? &parameters[static_cast<std::size_t>(id)] : nullptr;
}

void IPlugBase::DefineParameters(const ValueBlock& values) {
    const PlugLockGuard guard(lock);
    for (int id = 0; id < ParameterCount(); ++id) {
        const std::string name = ParameterName(id);
        IParam::Definition definition = DefinitionOf(id, values);
        definition.name = name;
        IParam& param = parameters[static_cast<std::size_t>(id)];
        param.InitDouble(definition);
        if (id < kLiveParameters) param.SetValue(values[id]);
    }
}

double IPlugBase::GetParameterNormalized(int id) const {
    const PlugLockGuard guard(lock);
    const IParam* param = GetParam(id);
    return param != nullptr ? param->GetNormalized() : 0.0;
}

double IPlugBase::GetParameterValue(int id) const {
    const PlugLockGuard guard(lock);
    const IParam* param = GetParam(id);
    return param != nullptr ? param->Value() : 0.0;
}

bool IPlugBase::StoreNormalized(int id, double normalized) {
    IParam* param = GetParam(id);
    return param != nullptr && param->SetNormalized(normalized);
}

void IPlugBase::TellEditor(int id, double value, bool normalized) {
    if (editor != nullptr) editor->SetParameterFromPlug(id, value, normalized);
}

void IPlugBase::SetParameterFromPlug(int id, double normalized) {
    const HostNews guard(*this);
    if (!StoreNormalized(id, normalized)) return;
    const double taken = GetParameterNormalized(id);
    TellEditor(id, taken, true);
    news->Add(id, taken);
    OnParamChange(id);
}

void IPlugBase::SetParameterFromGUI(int id, double normalized) {
    const HostNews guard(*this);
    if (!StoreNormalized(id, normalized)) return;
    news->Add(id, GetParameterNormalized(id));
    OnParamChange(id);
}

void IPlugBase::SetParameterFromHost(int id, double normalized) {
    const HostNews guard(*this);
    if (!StoreNormalized(id, normalized)) return;
    TellEditor(id, normalized, true);
    OnParamChange(id);
}

bool IPlugBase::SetParameterFromText(int id, std::string_view text) {
    const HostNews guard(*this);
    IParam* param = GetParam(id);
    if (param == nullptr) return false;
    const double plain = param->ValueOfText(text);
    if (std::isnan(plain)) return false;
    TellEditor(id, plain, false);
    param->SetValue(plain);
    OnParamChange(id);
    return true;
}

void IPlugBase::TellProgramChange() {
    const HostNews guard(*this);
    news->AddPrograms();
}

void IPlugBase::SendAllParameters() {
    const HostNews guard(*this);
    for (int id = 0; id < ParameterCount(); ++id)
        OnParamChange(id);
}

void IPlugBase::RedrawParamControls() {
    const PlugLockGuard guard(lock);
    for (int id = 0; id < ParameterCount(); ++id)
        TellEditor(id, GetParameterValue(id), false);
}

} // namespace Grimworks
