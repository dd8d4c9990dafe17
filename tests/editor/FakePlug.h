#pragma once

#include "core/ParameterTable.h"
#include "core/ValueBlock.h"
#include "plugin/IPlugBase.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace Grimworks {

/// A plug-in with the real parameters and no sound, and a host that remembers what it was told.
class FakePlug : public IPlugBase {
public:
    struct Told {
        int id;
        double value;
        bool operator==(const Told&) const = default;
    };

    explicit FakePlug(const PlugIdentity& plugIdentity = {}) : IPlugBase(plugIdentity) {
        ValueBlock values;
        ConstructorValues(values);
        DefineParameters(values);
    }

    void ProcessDoubleReplacing(double**, double**, int) override {}
    void OnParamChange(int id) override {
        changes.push_back(id);
        if (onChange) onChange(id);
    }
    void BeginInformHostOfParamChange(int id) override { log.push_back("begin " + std::to_string(id)); }
    void InformHostOfParamChange(int id, double normalized) override {
        log.push_back("automate " + std::to_string(id));
        automated.push_back({id, normalized});
        if (onInform) onInform(id);
    }
    void EndInformHostOfParamChange(int id) override { log.push_back("end " + std::to_string(id)); }
    void PopupHostContextMenuForParam(int id) override { log.push_back("menu " + std::to_string(id)); }
    void InformHostOfProgramChange() override { log.emplace_back("programs"); }
    bool IsRenderingOffline() override { return false; }
    std::int64_t GetSamplePos() override { return 0; }
    double GetTempo() override { return tempo; }
    void GetTimeSig(int& numerator, int& denominator) override { numerator = denominator = 4; }
    void GetTime(HostTime& time) override { time = {}; }
    int GetHost() override { return host; }
    void AttachGraphics(PlugEditor* graphics) override { editor = graphics; }
    void ResizeGraphics(int width, int height) override { size = {width, height}; }
    void HostSpecificInit() override {}
    bool SendMidiMsg(const MidiMessage&) override { return false; }
    bool SendSysEx(const SysExMessage&) override { return false; }

    std::vector<std::string> log; ///< what the host was told, in order
    std::vector<Told> automated;
    std::vector<int> changes;
    std::function<void(int)> onChange;
    std::function<void(int)> onInform;
    std::pair<int, int> size{0, 0};
    double tempo = 120.0;
    int host = 0;
};

} // namespace Grimworks
