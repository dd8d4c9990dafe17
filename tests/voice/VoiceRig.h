#pragma once

#include "core/Limits.h"
#include "core/ParameterIds.h"
#include "core/ParameterTable.h"
#include "core/RandomGenerator.h"
#include "core/TempoSource.h"
#include "core/ValueBlock.h"
#include "voice/MultiSampler.h"
#include "voice/NoteMode.h"
#include "voice/PitchEnvelope.h"
#include "voice/StoredWaves.h"
#include "voice/VoiceBank.h"
#include "voice/WaveformProvider.h"

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace Grimworks::Testing {

/// A host that knows a tempo and nothing else.
class FixedTempo final : public TempoSource {
public:
    double tempo = 120.0;
    double GetTempo() override { return tempo; }
};

/// The stored waves, generated once for all tests.
inline const WaveformProvider& SharedWaves() {
    static RandomGenerator random;
    static const auto provider = [] {
        auto made = std::make_unique<WaveformProvider>(random, std::string());
        made->GenerateWaves();
        made->BuildSets();
        return made;
    }();
    return *provider;
}

inline const MultiSampler& SharedClicks() {
    static const MultiSampler clicks = [] {
        std::array<std::span<const double>, kStoredClicks> stored;
        for (int i = 0; i < kStoredClicks; ++i)
            stored[static_cast<std::size_t>(i)] = StoredClick(i);
        return MakeClickSamples(stored);
    }();
    return clicks;
}

/// What a block of voices leaves behind, over the whole life of a rig.
struct Recording {
    std::vector<double> left, right, sub, volumeEnvelope, filterEnvelope;
    std::vector<ModulationRecord> lfo;
};

/// The voices of an instrument with everything around them that they read, played block by block.
class VoiceRig {
public:
    ValueBlock values;
    FixedTempo tempo;
    PitchEnvelope pitchEnvelope;
    RandomGenerator random{1};
    VoiceBank bank;
    Recording out;

    explicit VoiceRig(double sampleRate = 44100.0, int block = 64) : blockSize(block) {
        bank.SetContext(Context());
        bank.SetSampleRate(sampleRate);
        bank.SetBlockSize(block);
        ResetValues(values);
        for (int id = 0; id < kLiveParameters; ++id)
            Set(id, values[id]);
    }

    VoiceRig(const VoiceRig&) = delete;
    VoiceRig& operator=(const VoiceRig&) = delete;

    [[nodiscard]] VoiceContext Context() {
        return {&values, nullptr, &SharedWaves(), &pitchEnvelope, &SharedClicks(), &random, &tempo};
    }

    /// Sets a parameter as the instrument does.
    void Set(int id, double value) {
        values[id] = value;
        if (id < Param::EnvAttack) {
            SetOscillator(id / kOscParams, static_cast<OscParam>(id % kOscParams), value);
        } else {
            SetVoice(id, value);
        }
    }
    void Set(int oscillator, OscParam parameter, double value) { Set(Osc(oscillator, parameter), value); }

    /// A waveform by its index.
    void SetWave(int oscillator, int index) { Set(oscillator, OscParam::Waveform, index / 40.0); }

    /// An event that happens `at` this frame, counted from the rig's first one; offsets within the block are
    /// worked out.
    void NoteOn(int frame, int note, int velocity = 127) {
        events.emplace(frame, [this, note, velocity](int offset) { bank.NoteOn(note, velocity, offset); });
    }
    void NoteOff(int frame, int note) {
        events.emplace(frame, [this, note](int) { bank.NoteOff(note, 0); });
    }
    void PitchBend(int frame, double value) {
        events.emplace(frame, [this, value](int offset) { bank.PitchBend(offset, value); });
    }

    /// Plays blocks until this many more frames are recorded, the last block being shorter where needed.
    void Play(int frames) {
        while (frames > 0) {
            const int count = frames < blockSize ? frames : blockSize;
            PlayBlock(count);
            frames -= count;
        }
    }

    void PlayBlock(int count) {
        const auto start = static_cast<int>(out.left.size());
        for (int i = 0; i < count; ++i) {
            const auto due = events.equal_range(start + i);
            for (auto event = due.first; event != due.second; ++event)
                event->second(i);
            bank.Tick();
        }
        const std::size_t size = out.left.size() + static_cast<std::size_t>(count);
        for (std::vector<double>* channel :
             {&out.left, &out.right, &out.sub, &out.volumeEnvelope, &out.filterEnvelope})
            channel->resize(size, 0.0);
        out.lfo.resize(size, ModulationRecord{});
        bank.Render({{out.left.data() + start, out.right.data() + start},
                     out.sub.data() + start,
                     out.volumeEnvelope.data() + start,
                     out.filterEnvelope.data() + start,
                     out.lfo.data() + start},
                    count);
    }

private:
    void SetOscillator(int oscillator, OscParam parameter, double value) {
        switch (parameter) {
        case OscParam::Waveform:
            return bank.SetWaveform(oscillator, value);
        case OscParam::Tune:
            return bank.SetOscTune(oscillator, value);
        case OscParam::Pitch:
            return bank.SetOscPitch(oscillator, value);
        case OscParam::FilterTypeLeft:
            return bank.SetFilterTypeLeft(oscillator, value);
        case OscParam::FilterTypeRight:
            return bank.SetFilterTypeRight(oscillator, value);
        case OscParam::LfoRate:
            return bank.SetLfoRate(oscillator, value);
        case OscParam::LfoMode:
            return bank.SetLfoMode(oscillator, value);
        default:
            return;
        }
    }

    void SetVoice(int id, double value) {
        static constexpr std::array<EnvelopeSetter, 5> kSetters{
            &EnvelopeGenerator::SetAttack, &EnvelopeGenerator::SetDecay, &EnvelopeGenerator::SetSustain,
            &EnvelopeGenerator::SetRelease, &EnvelopeGenerator::SetDuration};
        if (id <= Param::EnvDuration) {
            bank.SetVolumeEnvelope(kSetters[static_cast<std::size_t>(id - Param::EnvAttack)], value);
        } else if (id >= Param::FilterAttack && id <= Param::FilterDuration) {
            bank.SetFilterEnvelope(kSetters[static_cast<std::size_t>(id - Param::FilterAttack)], value);
        }
        switch (id) {
        case Param::AdsrShape:
            return bank.SetShape(value);
        case Param::GlobalTranspose:
            values.transposeRatio = PitchRatio(value);
            return bank.SetGlobalTranspose(values.transposeRatio);
        case Param::PitchBendRange:
            return bank.SetBendRange(PitchBendSemitones(value));
        case Param::PitchOnOff:
            return pitchEnvelope.SetOnOff(value);
        case Param::PitchAmount:
            return pitchEnvelope.SetAmount(value);
        case Param::PitchDuration:
            return pitchEnvelope.SetDuration(value);
        case Param::PitchPower:
            return pitchEnvelope.SetPower(value);
        case Param::PitchDown:
            return pitchEnvelope.SetDown(value);
        case Param::UnisonVoices:
            return bank.SetUnisonVoices(value);
        case Param::UnisonDetune:
            return bank.SetUnisonDetune(value);
        case Param::FmAmount:
            return bank.SetFmAmount(value);
        default:
            return;
        }
    }

    int blockSize;
    std::multimap<int, std::function<void(int)>> events;
};

/// The program of most tests: one sine oscillator in the usual tuning, at full level for as long as the key
/// is held, all modulation off.
class PlainRig : public VoiceRig {
public:
    explicit PlainRig(double sampleRate = 44100.0, int block = 64) : VoiceRig(sampleRate, block) {
        for (const int id : {Param::EnvAttack, Param::EnvRelease, Param::FilterAttack, Param::FilterRelease})
            Set(id, 0.0);
        Set(Param::EnvSustain, 1.0);
        Set(Param::FilterSustain, 1.0);
        Set(Param::NoteTransposeMode, 1.0 / 9.0);
        Set(Param::PitchOnOff, 0.0);
    }
};

} // namespace Grimworks::Testing
