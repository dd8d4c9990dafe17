#pragma once

#include "core/AudioProcessingUnit.h"
#include "core/Limits.h"
#include "core/ParameterIds.h"
#include "core/SmoothedValue.h"
#include "core/StereoBuffer.h"
#include "voice/Arpeggiator.h"
#include "voice/EnvelopeGenerator.h"
#include "voice/FmModulator.h"
#include "voice/Modulator.h"
#include "voice/Noise.h"
#include "voice/OscFilterUnit.h"
#include "voice/PolyBLEP.h"
#include "voice/VoiceContext.h"
#include "voice/WaveTableReader.h"
#include "voice/WaveformSelection.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace Grimworks {

/// Most samples that one pass over a voice's stages takes at a time: enough to run the stages in vector code,
/// few enough to stay in the first cache.
inline constexpr int kVoiceStretch = 64;

/// LFO values of one sample for the scope: those of the three oscillators, then two spare ones.
using ModulationRecord = std::array<double, kModulationRecord>;

/// Where voices add their sound. Each pointer leads to at least the rendered number of frames.
struct VoiceOutput {
    StereoView sum;                         ///< all but the sub layer
    double* subSum;                         ///< the sub layer, one channel
    double* volEnvSum = nullptr;            ///< volume envelope levels; null to skip
    double* filterEnvSum = nullptr;         ///< filter envelope levels; null to skip
    ModulationRecord* modRecords = nullptr; ///< overwritten, not added to; null to skip
};

/// One oscillator of a voice: two unison generators of both kinds, its modulator, filters and smoothers.
struct VoiceOscillator {
    double pitch = 1.0; ///< coarse ratio
    double tune = 1.0;  ///< fine ratio
    bool useBlep = false;
    NoiseKind noiseKind = NoiseKind::None;
    std::array<PolyBLEP, kUnisonGenerators> blep;
    std::array<WaveTableReader, kUnisonGenerators> wave;
    PinkNoise pink;
    Modulator lfo;
    OscFilterUnit filter;
    SmoothedValue volumeSm;
    SmoothedValue panSm;
    SmoothedValue saturationSm;
    std::vector<double> buffer; ///< raw samples of the block, later its filtered ones
};

/// One voice: three oscillators, frequency modulation, sub-oscillator, click and two envelopes.
///
/// It works in two passes. The first, Tick or Run, goes with the sample-accurate MIDI events: it advances
/// pitch and sources only and leaves raw samples in the voice's block buffers. The second, Render, runs once
/// per block over those buffers: modulation, saturation, filters, pan, volume, envelopes, and the sum. So the
/// pitch hears the LFOs one block late, and a release begins at a block's start. Audio thread; setters under
/// the plug-in lock.
class Note final : public AudioProcessingUnit {
public:
    Note();

    /// Hands over what the voice reads.
    void SetContext(const VoiceContext& newContext);

    /// Takes the host's rate in Hz; sounding generators keep their frequencies, filters are emptied. Envelope
    /// times stay as they are in samples until their parameters are set again. A rate not above 0 is ignored.
    void SetSampleRate(double rate) override;

    /// Makes room for blocks of n frames. The buffers never shrink; when they grow they are cleared.
    void SetBlockSize(int n);

    /// In use: at least one of the two envelopes is not off.
    [[nodiscard]] bool IsActive() const { return !volumeEnvelope.IsOff() || !filterEnvelope.IsOff(); }

    /// Sets up the pitch of a key and the start phases; before Start. Without effect on an active voice.
    void SetNote(int note);

    /// Starts the envelopes with this velocity, 0..127, and clears what belongs to the last note. The sound
    /// begins `offset` samples into the block; the offset is limited to 0 up to the block size.
    void Start(int velocityByte, int offset);

    /// Note off: both envelopes that are not off go into release.
    void Release();

    /// One sample of the first pass: DrawNoise(0), then Run with the present pitch bend.
    void Tick();

    /// Writes the noise of all noise oscillators for the sample `ahead` of the next one of Run. Noise is
    /// drawn apart from the rest, because its sequence goes through all voices sample by sample.
    void DrawNoise(int ahead);

    /// Whether DrawNoise has anything to do.
    [[nodiscard]] bool HasNoise() const;

    /// The first pass but for noise, over as many samples as there are pitch-bend factors.
    void Run(std::span<const double> bend);

    /// The second pass over a block of at most the block size; adds into the output.
    void Render(const VoiceOutput& output, int frames);

    /// Wave of an oscillator (0..2) from the parameter value 0..1; acts at once. Other indexes are ignored.
    void SetWaveform(int oscillator, double value);

    void SetUnisonVoices(int count) { unisonVoices = count < 2 ? 1 : 2; }
    void SetUnisonDetune(double value) { unisonDetune = value; }
    void SetFmAmount(double value) { fm.SetAmplitude(value); }

    /// A new global transpose ratio moves a sounding note at once.
    void SetGlobalTranspose(double ratio);

    /// The parts of an oscillator that parameters set; oscillator is 0..2.
    [[nodiscard]] VoiceOscillator& Oscillator(int oscillator) {
        return oscillators[static_cast<std::size_t>(oscillator)];
    }
    [[nodiscard]] const VoiceOscillator& Oscillator(int oscillator) const {
        return oscillators[static_cast<std::size_t>(oscillator)];
    }
    [[nodiscard]] EnvelopeGenerator& VolumeEnvelope() { return volumeEnvelope; }
    [[nodiscard]] const EnvelopeGenerator& VolumeEnvelope() const { return volumeEnvelope; }
    [[nodiscard]] EnvelopeGenerator& FilterEnvelope() { return filterEnvelope; }
    [[nodiscard]] const EnvelopeGenerator& FilterEnvelope() const { return filterEnvelope; }

    [[nodiscard]] int NoteNumber() const { return noteNumber; }  ///< -1 before the first note
    [[nodiscard]] double Frequency() const { return frequency; } ///< Hz, with the global transpose
    [[nodiscard]] double Velocity() const { return velocity; }   ///< 0..1
    [[nodiscard]] int BlockSize() const { return blockSize; }
    [[nodiscard]] int UnisonVoices() const { return unisonVoices; }

private:
    /// Doubles of one stretch, one per sample; left as they are until a stage fills them.
    using Stretch = std::array<double, kVoiceStretch>;

    struct PitchStretch;
    struct MixStretch;

    [[nodiscard]] double Value(int id) const { return (*context.values)[id]; }
    [[nodiscard]] double Value(int oscillator, OscParam parameter) const {
        return Value(Osc(oscillator, parameter));
    }
    [[nodiscard]] bool IsOn(int oscillator) const { return Value(oscillator, OscParam::OnOff) > 0.5; }
    [[nodiscard]] bool Sounds(int oscillator) const {
        return Value(oscillator, OscParam::Volume) > 0.0 && IsOn(oscillator);
    }

    /// The second unison generator runs at the first one's frequency over this: always below.
    [[nodiscard]] double DetuneDivisor() const { return 1.0 + kSemitoneStep * unisonDetune; }
    [[nodiscard]] double BaseFrequency(int oscillator) const;
    [[nodiscard]] std::size_t WriteIndex(int ahead) const;
    void Write(std::vector<double>& buffer, const double* samples, int count) const;

    void StartPitch();
    void RunStretch(const double* bend, int count);
    void FillSweep(PitchStretch& pitch, int count) const;
    void FillPitch(PitchStretch& pitch, const double* bend, int count);
    void TuneOscillator(int oscillator, double hz);
    void RunOscillator(int oscillator, const PitchStretch& pitch, int count);
    template <class Generators>
    void ReadUnison(Generators& generators, const PitchStretch& pitch, double base, int count,
                    Stretch& samples) const;
    void AdvanceSubPhase(const PitchStretch& pitch, int count, Stretch& phases);
    void RunSubOscillator(const PitchStretch& pitch, int count);
    void RunClick(const PitchStretch& pitch, int count);

    void RenderStretch(const VoiceOutput& output, int from, int count);
    void FillEnvelopes(MixStretch& mix, int count);
    void RenderOscillator(int oscillator, MixStretch& mix, int from, int count);
    void SaturateOscillator(int oscillator, double* samples, int count);
    void FilterOscillator(int oscillator, const MixStretch& mix, double* samples, int count);
    void PanOscillator(int oscillator, MixStretch& mix, double* samples, int count);
    void Finish(const MixStretch& mix, const VoiceOutput& output, int from, int count) const;

    VoiceContext context;
    bool ready = false;
    std::int32_t noteNumber = -1;
    std::int32_t startOffset = 0;  ///< samples from the block's start to the note's, in its first block
    std::uint32_t sampleCount = 0; ///< samples since the note started
    std::uint32_t fadeIndex = 0;   ///< place in the start fade, at its end when over
    std::int32_t blockPos = 0;     ///< next sample of the block in the first pass
    std::int32_t blockSize = 0;    ///< samples in each buffer
    int unisonVoices = 1;
    double unisonDetune = 0.0;
    double subPhase = 0.0;
    double velocity = 1.0;
    double frequency = 0.0;     ///< Hz, with the global transpose
    double noteFrequency = 0.0; ///< Hz, without
    double basePhaseInc = 0.0;  ///< noteFrequency in cycles per sample, as of the note's start
    EnvelopeGenerator volumeEnvelope{"Volume Envelope"};
    EnvelopeGenerator filterEnvelope{"Filter Envelope"};
    FmModulator fm;
    Arpeggiator arpeggiator;
    std::array<VoiceOscillator, kOscillators> oscillators;
    std::vector<double> subBuffer;
    std::vector<double> clickBuffer;
};

} // namespace Grimworks
