#pragma once

#include "core/RandomGenerator.h"
#include "core/SmoothedValue.h"
#include "core/StereoBuffer.h"
#include "core/ValueBlock.h"
#include "effects/DistortionDataProvider.h"
#include "effects/DistortionStage.h"
#include "effects/DumpExpand.h"
#include "effects/EnvFollower.h"
#include "effects/Equalizer.h"
#include "effects/FilterUnit.h"
#include "effects/HqFilterUnit.h"
#include "effects/OutputLimiter.h"
#include "effects/Phaser.h"
#include "effects/RingModulator.h"
#include "effects/Saturator.h"
#include "effects/TempoDelay.h"
#include "patches/SynthProgram.h"
#include "plugin/ChangedParameters.h"
#include "plugin/DrawnCurve.h"
#include "plugin/IPlugVST.h"
#include "plugin/MidiReceiver.h"
#include "plugin/PlayRequest.h"
#include "plugin/ScopeRing.h"
#include "voice/EnvelopeGenerator.h"
#include "voice/MultiSampler.h"
#include "voice/PitchEnvelope.h"
#include "voice/VoiceBank.h"
#include "voice/VoiceContext.h"
#include "voice/WaveformProvider.h"

#include <array>
#include <atomic>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace Grimworks {

class IGraphics;
class ThudForgeEditor;

/// The distortion's picture: the selected curve, and one cycle of a sine through the unit.
struct CurvePreview {
    std::array<double, kCurvePreviewPoints> curve{};
    std::array<double, kSignalPreviewPoints> signal{};
};

/// The instrument: owns every unit of the engine by value and turns a host's process call into sound. All
/// operations run under the plug-in lock, which the host shell takes; ProcessDoubleReplacing and what it
/// calls belong to the audio thread and neither allocate nor wait.
class ThudForge final : public IPlugVST {
public:
    /// Pages of the editor.
    enum Page : int { SynthPage = 0, ScopePage = 1, AboutPage = 2 };

    /// Builds the whole instrument at 44100 Hz and 1024 frames; `audioMaster` may be null.
    explicit ThudForge(audioMasterCallback audioMaster);

    /// Takes the window away first, if it is still open.
    ~ThudForge() override;

    /// Takes over sample rate and block size. Buffers grow and never shrink; the delay is emptied.
    void Reset() override;

    /// Brings the value of one parameter to the engine; ids outside 0..139 do nothing.
    void OnParamChange(int id) override;

    /// Renders one block of at most the announced size into two channels, both of which must be
    /// there; a null input channel is skipped.
    void ProcessDoubleReplacing(double** inputs, double** outputs, int frames) override;

    /// Stores the flag and, when switched on, brings the tempo to everything that is locked to it.
    void OnActivate(bool active) override;

    /// Queues note off, note on, control change and pitch wheel; everything else is dropped.
    void ProcessMidiMsg(const MidiMessage& message) override;

    /// The editor takes the host's name at its next tick.
    void OnHostIdentified() override { hostIdentified.store(true, std::memory_order_release); }

    bool SerializeState(ByteChunk& chunk) override;
    int UnserializeState(const ByteChunk& chunk, int position) override;
    [[nodiscard]] bool CompareState(std::span<const std::uint8_t> data, int position) override;

    /// Saves or loads the current program: as a program file when ".fxp" occurs in the path, else as text.
    /// Paths are UTF-8. False if the file could not be written, or is none that can be read.
    [[nodiscard]] bool SaveProgram(const std::string& path);
    [[nodiscard]] bool LoadProgram(const std::string& path);

    /// Writes the live values as a text program. An existing file stays whole until the new one is complete.
    [[nodiscard]] bool SaveProgramAsText(const std::string& path);

    /// Takes the values, the name and, if the file has one, the curve of a text program. False, and nothing
    /// changed, if the file cannot be read. The audio waits for the length of the load.
    [[nodiscard]] bool LoadProgramFromText(const std::string& path);

    /// Runs the effect chain over `dry` and leaves the result in fxOut.
    virtual void ProcessEffects(StereoView dry, int frames);

    /// The instrument's own requests, see OwnOp: to save or load the current program by its path.
    std::intptr_t VendorSpecific(std::int32_t index, std::intptr_t value, void* ptr, float opt) override;

    [[nodiscard]] const ValueBlock& Values() const { return values; }
    [[nodiscard]] const VoiceBank& Voices() const { return voices; }
    [[nodiscard]] const WaveformProvider& Waves() const { return waves; }
    [[nodiscard]] const DistortionStage& EditorStage() const { return editorStage; }
    [[nodiscard]] const DistortionStage& AudioStage() const { return audioStage; }
    [[nodiscard]] const FilterUnit& MainFilter() const { return filterUnit; }

    /// The envelopes as the editor draws them; they stay at 44100 Hz.
    [[nodiscard]] const EnvelopeGenerator& VolumeDisplay() const { return volumeDisplay; }
    [[nodiscard]] const EnvelopeGenerator& FilterDisplay() const { return filterDisplay; }

    /// Highest absolute output since the last reset of the level display; any thread.
    [[nodiscard]] double PeakLeft() const { return peakLeft.load(std::memory_order_relaxed); }
    [[nodiscard]] double PeakRight() const { return peakRight.load(std::memory_order_relaxed); }

    /// Whether the host has switched the instrument on; any thread.
    [[nodiscard]] bool IsAudioActive() const { return activeFlag; }

    /// The host's tempo when the instrument last asked for it; any thread.
    [[nodiscard]] double ShownTempo() const { return shownTempo.load(std::memory_order_relaxed); }

    /// True once after the host became known; any thread.
    [[nodiscard]] bool TakeHostIdentified() {
        return hostIdentified.exchange(false, std::memory_order_acquire);
    }

    /// Chooses what the callback leaves for the displays and blanks the scope when its page comes up; a
    /// number outside Page does nothing. The editor follows at its next tick. Any thread.
    void SelectPage(int page);
    void SelectSynthPage() { SelectPage(SynthPage); }
    void SelectScopePage() { SelectPage(ScopePage); }
    void SelectAboutPage() { SelectPage(AboutPage); }
    [[nodiscard]] int CurrentPage() const { return currentPage.load(std::memory_order_relaxed); }

    // The scope, see ScopeRing. Editor thread.

    [[nodiscard]] const ScopeRing& Scope() const { return scope; }
    void SetScopeZoom(bool zoomIn, int amount) { scope.SetZoom(zoomIn, amount); }
    void SetScopeFrozen(bool frozen);

    // Levels.

    /// Forgets the highest output: at once while the audio stands still, else with the next block. Any
    /// thread.
    void ResetMaxLevel();

    /// Lets the level display of the about page fall while no audio does it.
    void FollowSilence();

    /// Levels of the about page, 0..1; any thread.
    [[nodiscard]] double FollowerLeft() const { return followerLeft.load(std::memory_order_relaxed); }
    [[nodiscard]] double FollowerRight() const { return followerRight.load(std::memory_order_relaxed); }

    // The distortion's curve.

    /// Runs a curve operation on both distortion stages: at once while the audio stands still, else at the
    /// start of the next block. The last request before a block stands. Any thread.
    void RequestCurveOperation(int code);

    /// True once after the selected curve was replaced or edited by other means than drawing; the editor then
    /// draws it anew. Any thread.
    [[nodiscard]] bool TakeCurveChanged() { return curveChanged.exchange(false, std::memory_order_acquire); }

    /// Gives the drawing one value a pixel of the control's width, and the selected curve as its picture.
    void SetDrawnCurveWidth(int width);

    /// The strokes of DrawnCurve, on the picture of the curve that is selected now. They are heard at the end
    /// of the next block, or from the next ApplyStroke on while the audio stands still. Editor thread.
    void PressCurve(int x, double v);
    void DragCurve(int x, double v, int dX);

    /// The drawing as it stands; editor thread.
    [[nodiscard]] const DrawnCurve& Drawing() const { return drawnCurve; }

    /// Moves the drawing to both distortion stages.
    void ApplyDrawnCurve();

    /// Applies a waiting stroke, unless a running callback does it. True if there was one. Editor thread.
    bool ApplyStrokeIfSilent();

    /// Reads the selected curve back into the drawing and renders the preview. Editor thread.
    void UpdateCurveDisplay();

    /// Brings drawing and preview up to date; true if anything was to do. Editor thread.
    bool RefreshCurveDisplay();

    /// What the curve controls show. Editor thread.
    [[nodiscard]] const CurvePreview& Preview() const { return curvePreview; }

    // Pictures of waves and envelopes. Editor thread.

    /// The wave of an oscillator 0..2 from its start phase on; other numbers leave the points alone.
    void RenderWave(int oscillator, std::span<double, kWavePreviewPoints> points);
    /// An envelope of height 0..1 times its amount.
    void RenderVolumeEnvelope(std::array<double, kEnvelopeCurvePoints>& points) const;
    void RenderFilterEnvelope(std::array<double, kEnvelopeCurvePoints>& points) const;
    void RenderPitchEnvelope(std::array<double, kPitchCurvePoints>& points) const;

    /// What the editor asks of the next block, and what it is told; any thread.
    PlayRequest playRequest;
    ChangedParameters changedParameters;
    std::atomic<bool> peakResetPending{false};

private:
    void BuildEditor();
    void ConnectMidi();
    void PackFactoryBank(const std::vector<SynthProgram>& bank);
    void GrowBuffers(int frames);
    void ResetEffects();

    void ApplyVoiceParameter(int id, double value);
    void ApplyOscillatorParameter(int oscillator, OscParam parameter, double value);
    void ApplyLfoRate(int oscillator, double value);
    void ApplyLfoLink(int oscillator, double value);
    void ApplyLfoTempoSync(int oscillator, double value);
    void ApplyEnvelopeParameter(int id, double value);
    void ApplyEffectParameter(int id, double value);
    void ApplyEqualizer(int id, double value);
    static void ApplyDistortion(DistortionStage& stage, int id, double value);
    static void ApplyFilterUnit(FilterUnit& unit, int id, double value);
    void ApplyModulation(int id, double value);
    void ApplyTempoDelay(int id, double value);
    void ApplyOutput(int id, double value);

    double AskTempo();
    void RefreshTempo();
    void CheckTempo();

    static void ClearInputs(double** inputs, int frames);
    void ClearSums(int frames);
    void QueueTestNote();
    void RunWaveEdit();
    void TickVoices(int frames);
    void RenderVoices(int frames);
    void ClampEnvelopeSums(int frames);
    void RunPendingCurve();
    void MixDryWetAndPan(StereoView fx, StereoView dry, int frames);
    void FilterSubLayer(int frames);
    void MixSubLayer(StereoView out, int frames);
    void Limit(StereoView out, int frames);
    void MixBypass(StereoView out, int frames);
    void ApplyVolumeAndPan(StereoView out, int frames);
    void ClipAndMeasure(StereoView out, int frames);
    void FeedDisplays(StereoView out, int frames);
    void KeepFollower();
    void RunCurveOperationNow(int code);
    void ApplyStroke();
    void RenderCurvePreview();

    // The units stand in the order in which they are built, which is that in which sound passes.
    RandomGenerator random;       ///< construction, live noise
    RandomGenerator editorRandom; ///< previews and text dumps, so that a look at a wave changes no sound
    ValueBlock values;
    StereoBuffer voiceOut;
    StereoBuffer fxOut;
    StereoBuffer subOut;
    std::vector<double> volEnvSum;
    std::vector<double> filterEnvSum;
    std::vector<ModulationRecord> modSamples;
    MidiReceiver midi;
    VoiceContext voiceContext;
    VoiceBank voices;
    SmoothedValue subAmountSm{0.9777, 0.0223};
    SmoothedValue panSm{0.9777, 0.0223};
    SmoothedValue volumeSm{0.9777, 0.0223};
    SmoothedValue dryWetSm{0.99, 0.01};
    SmoothedValue bypassSm{0.988, 0.012};
    double bypassMix = 0.0; ///< last state of bypassSm, read by the next block's chain
    WaveformProvider waves;
    MultiSampler clicks;
    PitchEnvelope pitchEnvelope;
    FilterUnit filterUnit;
    FilterUnit bassFilterUnit; ///< of the sub layer
    RingModulator ringModulator;
    Phaser phaser;
    DistortionDataProvider curves;
    DistortionStage editorStage; ///< keeps curve and settings for the editor's pictures
    DistortionStage audioStage;
    Equalizer equalizer;
    DumpExpand dumpExpand;
    DumpExpand bassDumpExpand; ///< of the sub layer
    TempoDelay tempoDelay;
    EnvFollower follower; ///< level display of the about page
    Saturator saturator;
    HqFilterUnit hqFilterUnit; ///< holds its filter for programs to come; nothing runs it
    OutputLimiter limiter;
    EnvelopeGenerator volumeDisplay{"Volume Envelope"};
    EnvelopeGenerator filterDisplay{"Filter Envelope"};
    std::atomic<double> peakLeft{0.0};
    std::atomic<double> peakRight{0.0};
    std::atomic<double> followerLeft{0.0};
    std::atomic<double> followerRight{0.0};
    std::atomic<int> currentPage{SynthPage};
    ScopeRing scope;
    DrawnCurve drawnCurve;
    CurvePreview curvePreview; ///< editor thread
    WaveCycle waveDrawing{};   ///< for a drawing board of waves to come: nothing sets the flag so far
    double editedWave = 0.0;
    std::atomic<bool> waveEditPending{false};
    double lastTempo = 120.0;
    std::atomic<double> shownTempo{120.0};
    std::atomic<int> pendingCurve{CurveOperation::NonePending};
    std::atomic<bool> curveChanged{false};
    std::atomic<bool> previewChanged{false};
    std::atomic<bool> activeFlag{false};
    std::atomic<bool> hostIdentified{false};
    bool resetDone = false;
    std::unique_ptr<IGraphics> graphics;
    std::unique_ptr<ThudForgeEditor> panels; ///< after the graphics: it goes first
};

} // namespace Grimworks
