#include "tests/plugin/Measure.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace Grimworks {

void OpenProgram(Instrument& instrument) {
    instrument.ResetProgram();
    instrument.Set(Param::NoteTransposeMode, 0.0);
    for (const int id : {Param::EnvAttack, Param::EnvRelease, Param::FilterAttack, Param::FilterRelease})
        instrument.Set(id, 0.0);
    instrument.Set(Param::EnvSustain, 1.0);
    instrument.Set(Param::FilterSustain, 1.0);
}

void DryProgram(Instrument& instrument) {
    OpenProgram(instrument);
    instrument.Set(Param::LimiterMode, 0.0);
    instrument.Set(Param::BypassFX, 1.0);
    instrument.Set(Param::Volume, 1.0);
    instrument.Render(kSettleFrames);
}

void HoldLevel(Instrument& instrument) {
    DryProgram(instrument);
    instrument.Set(Osc(0, OscParam::Waveform), 2.0 / 40.0);
    instrument.Set(Param::NoteTransposeMode, 3.0 / 9.0);
    instrument.Set(Param::PitchOnOff, 1.0);
    instrument.Set(Param::PitchDown, 1.0);
}

void Silence(Instrument& instrument, int note) {
    instrument.NoteOff(note);
    instrument.Render(256);
}

std::vector<double> UpwardCrossings(const std::vector<double>& x, double level, std::size_t from,
                                    std::size_t to) {
    std::vector<double> places;
    for (std::size_t i = from + 1; i < std::min(to, x.size()); ++i) {
        const double before = x[i - 1] - level;
        const double after = x[i] - level;
        if (before < 0.0 && after >= 0.0) {
            places.push_back(static_cast<double>(i - 1 - from) + before / (before - after));
        }
    }
    return places;
}

double FrequencyOf(const std::vector<double>& x, double rate, std::size_t from, std::size_t to) {
    const std::vector<double> places = UpwardCrossings(x, 0.0, from, to);
    if (places.size() < 3) return 0.0;
    return static_cast<double>(places.size() - 1) / (places.back() - places.front()) * rate;
}

double AmplitudeAt(const std::vector<double>& x, double rate, double frequency, std::size_t from,
                   std::size_t to) {
    std::complex<double> sum = 0.0;
    double weights = 0.0;
    const double length = static_cast<double>(to - from);
    for (std::size_t i = from; i < to; ++i) {
        const double place = static_cast<double>(i - from);
        // The window keeps neighbours of the frequency out.
        const double weight = 0.5 - 0.5 * std::cos(2.0 * std::numbers::pi * place / length);
        sum += weight * x[i] * std::polar(1.0, -2.0 * std::numbers::pi * frequency / rate * place);
        weights += weight;
    }
    return 2.0 * std::abs(sum) / weights;
}

double Rms(const std::vector<double>& x, std::size_t from) {
    double sum = 0.0;
    for (std::size_t i = from; i < x.size(); ++i)
        sum += x[i] * x[i];
    return std::sqrt(sum / static_cast<double>(x.size() - from));
}

bool IsFinite(const Instrument::Audio& audio) {
    const auto finite = [](double x) { return std::isfinite(x); };
    return std::all_of(audio.left.begin(), audio.left.end(), finite) &&
           std::all_of(audio.right.begin(), audio.right.end(), finite);
}

double LargestDifference(const Instrument::Audio& a, const Instrument::Audio& b, std::size_t from) {
    double largest = 0.0;
    for (std::size_t i = from; i < a.left.size(); ++i) {
        const double left = std::fabs(a.left[i] - b.left[i]);
        const double right = std::fabs(a.right[i] - b.right[i]);
        // A difference that is not a number must not pass for a small one.
        if (!(left <= largest)) largest = left;
        if (!(right <= largest)) largest = right;
        if (std::isnan(largest)) return largest;
    }
    return largest;
}

} // namespace Grimworks
