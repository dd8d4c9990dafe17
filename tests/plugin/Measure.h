#pragma once

#include "tests/plugin/Instrument.h"

#include <cstddef>
#include <vector>

namespace Grimworks {

/// Long enough for every smoother and every sweep of the instrument to stand.
inline constexpr int kSettleFrames = 8192;

/// The blank program in the standard tuning, with envelopes that are open from the first samples on and shut
/// at once behind a note.
void OpenProgram(Instrument& instrument);

/// The open program with the voices led past the chain, at unity: what comes out is their plain sum. All
/// smoothers stand.
void DryProgram(Instrument& instrument);

/// A held level of 1 instead of a wave, in a dry program: a pulse whose pitch falls to nothing within the
/// first millisecond. Whatever acts on the level of a voice can be read off directly.
void HoldLevel(Instrument& instrument);

/// Ends all sounding voices of an open program.
void Silence(Instrument& instrument, int note);

/// Places between samples where the signal rises through a level, in samples from `from` on.
[[nodiscard]] std::vector<double> UpwardCrossings(const std::vector<double>& x, double level,
                                                  std::size_t from, std::size_t to);

/// Frequency of a steady tone in Hz over part of a signal, by its upward zero crossings; 0 with fewer than
/// three of them.
[[nodiscard]] double FrequencyOf(const std::vector<double>& x, double rate, std::size_t from, std::size_t to);

/// Amplitude of the sine of this frequency in Hz in a stretch of the signal.
[[nodiscard]] double AmplitudeAt(const std::vector<double>& x, double rate, double frequency,
                                 std::size_t from, std::size_t to);

[[nodiscard]] double Rms(const std::vector<double>& x, std::size_t from = 0);
[[nodiscard]] bool IsFinite(const Instrument::Audio& audio);
[[nodiscard]] double LargestDifference(const Instrument::Audio& a, const Instrument::Audio& b,
                                       std::size_t from = 0);

} // namespace Grimworks
