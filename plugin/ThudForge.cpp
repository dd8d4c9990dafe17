#include "plugin/ThudForge.h"

#include "editor/IGraphics.h"
#include "editor/thudforge/Layout.h"
#include "editor/thudforge/ThudForgeEditor.h"
#include "patches/FactoryBank.h"
#include "voice/StoredWaves.h"

#include <array>
#include <cstddef>
#include <span>

namespace Grimworks {

namespace {

constexpr std::int32_t kOutputSaturation = 0; // type of saturator curve
constexpr double kFollowerAttack = 0.01;      // seconds
constexpr double kFollowerRelease = 0.5;

MultiSampler LoadClicks() {
    std::array<std::span<const double>, kStoredClicks> clicks;
    for (int i = 0; i < kStoredClicks; ++i)
        clicks[static_cast<std::size_t>(i)] = StoredClick(i);
    return MakeClickSamples(clicks);
}

template <typename T>
void GrowCleared(std::vector<T>& buffer, int frames) {
    const auto size = static_cast<std::size_t>(frames);
    if (size > buffer.size()) buffer.assign(size, T{});
}

} // namespace

ThudForge::ThudForge(audioMasterCallback audioMaster)
    : IPlugVST(audioMaster), voiceContext{&values, nullptr, &waves, &pitchEnvelope, &clicks, &random, this},
      voices(voiceContext), waves(random), clicks(LoadClicks()), curves(random), editorStage(curves),
      audioStage(curves) {
    GrowBuffers(kDefaultBlockSize);
    // The curves have drawn their noise by now; the waves follow, and live noise goes on from there.
    waves.GenerateWaves();
    waves.BuildSets();
    filterUnit.Initialise(curves);
    bassFilterUnit.Initialise(curves);
    saturator.Initialise(curves, kOutputSaturation);
    follower.SetTimes(kFollowerAttack, kFollowerRelease);
    const std::vector<SynthProgram> bank = MakeFactoryBank();
    values = bank.front().values;
    DefineParameters(values);
    ConnectMidi();
    PackFactoryBank(bank);
    BuildEditor();
    RestorePreset(0);
}

/// The panels stand before the graphics are known to the host's side, so that the first values of all
/// parameters reach all controls.
void ThudForge::BuildEditor() {
    graphics = MakeGraphics(*this, kEditorWidth, kEditorHeight, kEditorFps);
    panels = std::make_unique<ThudForgeEditor>(*this, *graphics);
    AttachGraphics(graphics.get());
}

ThudForge::~ThudForge() {
    if (graphics == nullptr) return;
    graphics->CloseWindow();
    AttachGraphics(nullptr);
}

void ThudForge::ConnectMidi() {
    midi.noteOn.Connect<&VoiceBank::NoteOn>(&voices);
    midi.noteOff.Connect<&VoiceBank::NoteOff>(&voices);
    midi.pitchBend.Connect<&VoiceBank::PitchBend>(&voices);
    midi.controlChange.Connect<&VoiceBank::ControlChange>(&voices);
}

void ThudForge::Reset() {
    const PlugLockGuard guard(Lock());
    scope.Clear();
    GrowBuffers(GetBlockSize());
    voices.SetSampleRate(GetSampleRate());
    pitchEnvelope.SetSampleRate(GetSampleRate());
    voices.ResetDeferredEvents();
    voices.SetBlockSize(GetBlockSize());
    midi.Resize(GetBlockSize());
    ResetEffects();
    changedParameters.Mark(Param::SampleRate); // its caption tells a rate
    resetDone = true;
}

void ThudForge::ResetEffects() {
    const double rate = GetSampleRate();
    const int frames = GetBlockSize();
    ringModulator.SetSampleRate(rate);
    phaser.SetSampleRate(rate);
    for (DistortionStage* stage : {&editorStage, &audioStage}) {
        stage->SetSampleRate(rate);
        stage->SetBlockSize(frames);
    }
    for (FilterUnit* unit : {&filterUnit, &bassFilterUnit}) {
        unit->SetSampleRate(rate);
        unit->SetBlockSize(frames);
        unit->Reset();
    }
    equalizer.SetSampleRate(rate);
    equalizer.SetBlockSize(frames);
    equalizer.Reset();
    for (DumpExpand* unit : {&dumpExpand, &bassDumpExpand}) {
        unit->SetSampleRate(rate);
        unit->SetBlockSize(frames);
        unit->Reset();
    }
    tempoDelay.SetSampleRate(rate);
    tempoDelay.SetTempo(AskTempo());
    follower.SetSampleRate(rate);
    hqFilterUnit.SetSampleRate(rate);
}

void ThudForge::GrowBuffers(int frames) {
    voiceOut.Grow(frames);
    fxOut.Grow(frames);
    subOut.Grow(frames);
    GrowCleared(volEnvSum, frames);
    GrowCleared(filterEnvSum, frames);
    GrowCleared(modSamples, frames);
}

void ThudForge::OnActivate(bool active) {
    const PlugLockGuard guard(Lock());
    activeFlag = active;
    if (active) {
        RefreshTempo();
        return;
    }
    // No block will come to see to what the editor has asked for meanwhile.
    RunPendingCurve();
    ApplyStroke();
    if (peakResetPending) ResetMaxLevel();
}

void ThudForge::OnParamChange(int id) {
    if (id < 0 || id >= kLiveParameters) return;
    const PlugLockGuard guard(Lock());
    const double value = GetParameterValue(id);
    if (id == Param::DistortionType) ApplyStroke(); // it belongs to the curve that it was drawn on
    if (id < Param::BassAmount) {
        ApplyVoiceParameter(id, value);
    } else {
        ApplyEffectParameter(id, value);
    }
    changedParameters.Mark(id);
    if (id == Param::DistortionType) curveChanged.store(true, std::memory_order_release);
    if (id >= Param::DistortionOnOff && id <= Param::DistortionInterpMode) {
        previewChanged.store(true, std::memory_order_release);
    }
}

/// Poly and channel pressure and program change have no meaning here; control changes are queued and then
/// change nothing.
void ThudForge::ProcessMidiMsg(const MidiMessage& message) {
    switch (message.Kind()) {
    case MidiKind::NoteOff:
    case MidiKind::NoteOn:
    case MidiKind::ControlChange:
    case MidiKind::PitchWheel:
        midi.Add(message);
        break;
    default:
        break;
    }
}

} // namespace Grimworks
