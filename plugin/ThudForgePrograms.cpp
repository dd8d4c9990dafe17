#include "plugin/ThudForge.h"

#include "core/FileBytes.h"
#include "patches/FactoryBank.h"
#include "patches/TextProgram.h"
#include "plugin/vst2.h"

#include <cstdint>
#include <span>

namespace Grimworks {

/// Each program becomes a preset with the stock curve of its type, without a way through the engine. Programs
/// beyond the last free preset are dropped.
void ThudForge::PackFactoryBank(const std::vector<SynthProgram>& bank) {
    for (const SynthProgram& program : bank) {
        const std::vector<double> numbers = program.BuildPresetValues(curves);
        ByteChunk chunk;
        chunk.Put(static_cast<std::int32_t>(numbers.size()));
        for (const double number : numbers)
            chunk.Put(number);
        MakePresetFromChunk(program.name, chunk);
    }
}

bool ThudForge::SaveProgram(const std::string& path) {
    return IsProgramFilePath(path) ? SaveProgramAsFXP(path) : SaveProgramAsText(path);
}

bool ThudForge::LoadProgram(const std::string& path) {
    return IsProgramFilePath(path) ? LoadProgramFromFXP(path) : LoadProgramFromText(path);
}

bool ThudForge::SaveProgramAsText(const std::string& path) {
    const PlugLockGuard guard(Lock());
    const std::string curveText = editorStage.GetDistortion().ExportCurveText();
    const std::string waveText = waves.WaveDumpText(values[Osc(0, OscParam::Waveform)], editorRandom);
    SynthProgram program;
    program.values = values;
    program.name = PresetName(CurrentPreset());
    const std::string text = WriteTextProgram(program, curveText, waveText);
    return WriteFileBytes(path, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

/// The current preset takes the new name but keeps the sound from before the load: restoring it brings the
/// older sound back.
bool ThudForge::LoadProgramFromText(const std::string& path) {
    const HostNews guard(*this);
    SynthProgram program;
    std::string curveText;
    if (!LoadFromTextFile(path, program, curveText)) return false;
    values = program.values;
    ModifyCurrentPreset(program.name);
    for (int id = 0; id < kParameters; ++id)
        SetParameterFromHost(id, program.GetValue(id));
    if (!curveText.empty()) {
        editorStage.GetDistortion().ImportCurveText(curveText);
        audioStage.GetDistortion().ImportCurveText(curveText);
        curveChanged.store(true, std::memory_order_release);
    }
    return true;
}

std::intptr_t ThudForge::VendorSpecific(std::int32_t index, std::intptr_t value, void* ptr, float /*opt*/) {
    if (index == OwnOp::SelectPage) {
        if (value < SynthPage || value > AboutPage) return 0;
        SelectPage(static_cast<int>(value));
        return 1;
    }
    if (ptr == nullptr) return 0;
    const auto* path = static_cast<const char*>(ptr);
    switch (index) {
    case OwnOp::LoadProgramFile:
        return LoadProgram(path) ? 1 : 0;
    case OwnOp::SaveProgramFile:
        return SaveProgram(path) ? 1 : 0;
    default:
        return 0;
    }
}

} // namespace Grimworks
