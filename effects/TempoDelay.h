#pragma once

#include "core/AudioProcessingUnit.h"
#include "core/StereoBuffer.h"
#include "voice/GwFilterPaulKellett.h"

#include <vector>

namespace Grimworks {

/// Stereo feedback delay of one beat with a low-pass in the loop and a spread that pulls the two channels'
/// lengths apart. Lengths jump, without a glide, with tempo and spread; they end at four seconds.
class TempoDelay : public AudioProcessingUnit {
public:
    TempoDelay();

    /// Hz. Makes room for four seconds and empties the delay; allocates, so never during a block. A rate that
    /// is not above 0 is ignored.
    void SetSampleRate(double rate) override;

    /// Beats per minute. Anything not above 0 is ignored: the delay keeps its length.
    void SetTempo(double beatsPerMinute);

    /// Knobs 0..1. Values that are not finite are ignored. Amount is the level of the repeats, which are
    /// added to the dry signal; the feedback may be 1; dump is the low-pass, open at 1; spread is centred at
    /// 0.5 and shortens the left side below it.
    void SetAmount(double value);
    void SetFeedback(double value);
    void SetDump(double value);
    void SetSpread(double value);

    [[nodiscard]] double Tempo() const { return tempo; }

    /// Delay of each side in frames as the next block will have it.
    [[nodiscard]] int LengthLeft() const { return Limit(left); }
    [[nodiscard]] int LengthRight() const { return Limit(right); }

    /// In place. Audio thread.
    void Process(StereoView io, int frames);

private:
    /// One channel. Reading and writing share a slot, which makes the delay as long as the used part.
    struct Line {
        std::vector<double> samples;
        std::size_t position = 0;
        double spread = 1.0; ///< length factor
        GwFilterPaulKellett filter;

        double Tick(double input, double feedback, double cutoff, std::size_t limit);
        void Resize(std::size_t frames);
    };

    [[nodiscard]] int Limit(const Line& line) const;

    double beatSeconds = 0.5;
    double tempo = 120.0;
    double feedback = 0.0;
    double amount = 0.0;
    double cutoff = 0.75;
    Line left;
    Line right;
};

} // namespace Grimworks
