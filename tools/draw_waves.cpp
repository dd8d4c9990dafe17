// Draws the stored single-cycle waves: the five plain shapes and the sixteen user waves.
//
//     draw_waves data/waves
//
// Each wave has 4096 points, peak 1 and no mean. The user waves begin at a rising zero crossing, just below
// zero, and end just below it, so that a note starts without a step; 6 and 14 run from 1 to -1 instead.

#include "tools/RawTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <functional>
#include <string>

namespace {

using Drawing::kPi;
using Drawing::Table;

constexpr int kSize = 4096;

struct Partial {
    double harmonic;
    double level;
    double phase = 0.0; ///< in cycles
};

/// A bump of the spectral envelope: centre and width in harmonics.
struct Formant {
    double centre;
    double width;
    double level;
};

Table Sample(const std::function<double(double)>& shape) {
    Table table(kSize);
    for (int i = 0; i < kSize; ++i)
        table[static_cast<std::size_t>(i)] = shape(static_cast<double>(i) / kSize);
    return table;
}

double Mean(const Table& table) {
    double sum = 0.0;
    for (const double v : table)
        sum += v;
    return sum / static_cast<double>(table.size());
}

/// Takes the mean out, turns the cycle so that it begins at its calmest rising zero crossing, and brings the
/// peak to 1.
Table Finished(Table table) {
    const double mean = Mean(table);
    for (double& v : table)
        v -= mean;
    const std::size_t size = table.size();
    std::size_t best = 0;
    double bestEdge = 1e9;
    for (std::size_t i = 0; i < size; ++i) {
        const double before = table[(i + size - 1) % size];
        const double here = table[i];
        if (!(here < 0.0) || !(table[(i + 1) % size] > 0.0) || !(before < 0.0)) continue;
        if (std::fabs(before) < bestEdge) {
            bestEdge = std::fabs(before);
            best = i;
        }
    }
    std::rotate(table.begin(), table.begin() + static_cast<std::ptrdiff_t>(best), table.end());
    Drawing::NormaliseToOne(table);
    return table;
}

Table Additive(const std::vector<Partial>& partials) {
    return Finished(Sample([&](double x) {
        double sum = 0.0;
        for (const Partial& p : partials)
            sum += p.level * std::sin(2.0 * kPi * (p.harmonic * x + p.phase));
        return sum;
    }));
}

/// A pulse train of the glottis, falling by `tilt` per harmonic, through the resonances of a mouth.
template <std::size_t N>
Table Voice(const std::array<Formant, N>& formants, double tilt) {
    std::vector<Partial> partials;
    for (int h = 1; h <= 40; ++h) {
        double level = 0.0;
        for (const Formant& f : formants) {
            const double distance = (h - f.centre) / f.width;
            level += f.level / (1.0 + distance * distance);
        }
        // Resonances turn the phase as they pass: half a cycle over the whole voice keeps it from peaking.
        partials.push_back({static_cast<double>(h), level * std::pow(h, -tilt), 0.012 * h * h});
    }
    return Additive(partials);
}

// The plain shapes.

Table Pulse() {
    return Sample([](double x) { return x < 0.5 ? 1.0 : -1.0; });
}

Table QuadPulse() {
    return Sample([](double x) { return x < 0.25 ? 1.0 : -1.0; });
}

Table Triangle() {
    return Sample([](double x) { return x < 0.25 ? 4.0 * x : x < 0.75 ? 2.0 - 4.0 * x : 4.0 * (x - 1.0); });
}

double TrapezAt(double x) {
    if (x >= 0.5) return -TrapezAt(x - 0.5);
    return std::min({1.0, 8.0 * x, 8.0 * (0.5 - x)});
}

/// The trapezium with a v-shaped notch in the middle of each flat part.
double NotchedTrapezAt(double x) {
    if (x >= 0.5) return -NotchedTrapezAt(x - 0.5);
    const double notch = std::min(1.0, 0.2 + 12.8 * std::fabs(x - 0.25));
    return std::min(notch, TrapezAt(x));
}

// The user waves.

/// 1: full drawbars, from the fundamental up to the whistling ones.
Table Organ() {
    return Additive({{1, 1.0}, {2, 0.9}, {3, 0.75}, {4, 0.6}, {6, 0.4}, {8, 0.45}, {10, 0.15}, {12, 0.2}});
}

/// 2: a reed: a narrow, rounded puff of air with a nasal resonance.
Table Reed() {
    std::vector<Partial> partials;
    for (int h = 1; h <= 48; ++h) {
        const double nasal = 1.0 + 1.8 * std::exp(-0.5 * std::pow((h - 7.0) / 2.5, 2.0));
        const double even = h % 2 == 0 ? 0.45 : 1.0;
        partials.push_back({static_cast<double>(h), even * nasal * std::pow(h, -1.15), 0.02 * h});
    }
    return Additive(partials);
}

/// 3: the vowel "ah".
Table VowelAh() {
    return Voice(std::array{Formant{6.5, 1.6, 1.0}, Formant{10.0, 1.8, 0.75}, Formant{22.0, 3.0, 0.35},
                            Formant{1.0, 1.5, 0.5}},
                 0.35);
}

/// 4: the vowel "oh", darker and rounder.
Table VowelOh() {
    return Voice(std::array{Formant{3.6, 0.9, 1.0}, Formant{6.6, 1.0, 0.55}, Formant{20.0, 2.5, 0.12},
                            Formant{1.0, 1.2, 0.9}},
                 0.3);
}

/// 5: a bell: hum, prime, minor third, fifth, nominal and the upper clang, on a common very low root.
Table Bell() {
    return Additive({{2, 0.45, 0.1},
                     {4, 0.9},
                     {5, 0.8, 0.3},
                     {6, 0.45, 0.55},
                     {8, 0.7, 0.2},
                     {11, 0.35, 0.7},
                     {13, 0.3, 0.4},
                     {16, 0.18, 0.9},
                     {21, 0.12, 0.15}});
}

/// 6: a hard-synchronised falling saw whose slave slows down over the cycle. Runs from 1 to -1.
Table SyncSweep() {
    constexpr double kTeeth = 5.0;
    constexpr double kBend = 0.62;
    Table table(kSize);
    Table bow(kSize);
    for (std::size_t i = 0; i < kSize; ++i) {
        const double x = static_cast<double>(i) / (kSize - 1);
        const double position = kTeeth * std::pow(x, kBend);
        const double tooth = std::min(std::floor(position), kTeeth - 1.0);
        bow[i] = std::pow(std::sin(kPi * x), 2.0);
        table[i] = (1.0 - 2.0 * (position - tooth)) * (1.0 - 0.2 * bow[i]);
    }
    const double lift = Mean(table) / Mean(bow);
    for (std::size_t i = 0; i < kSize; ++i)
        table[i] -= lift * bow[i];
    table.front() = 1.0;
    table.back() = -1.0;
    return table;
}

/// 7: a growl: a fundamental that modulates its own phase at two rates.
Table Growl() {
    return Finished(Sample([](double x) {
        const double throat = 2.4 * std::sin(4.0 * kPi * x + 0.6) + 1.1 * std::sin(10.0 * kPi * x);
        return std::sin(2.0 * kPi * x + throat) + 0.35 * std::sin(2.0 * kPi * x);
    }));
}

/// 8: a hollow square: odd harmonics with the third held back and rounded edges.
Table HollowSquare() {
    std::vector<Partial> partials;
    for (int h = 1; h <= 31; h += 2) {
        const double round = std::sin(kPi * h / 33.0) / (kPi * h / 33.0);
        partials.push_back({static_cast<double>(h), (h == 3 ? 0.3 : 1.0) * round / h});
    }
    return Additive(partials);
}

/// 9: saws at the root, the octave and the twelfth, stacked out of step: one-finger power chord.
Table StackedSaws() {
    const auto saw = [](double x) { return 2.0 * (x - std::floor(x)) - 1.0; };
    return Finished(Sample(
        [&](double x) { return saw(x + 0.5) + 0.7 * saw(2.0 * x + 0.37) + 0.55 * saw(3.0 * x + 0.81); }));
}

/// 10: the alarm lead of early hardcore: a rising saw cut up by narrowing gates.
Table Screech() {
    return Finished(Sample([](double x) {
        const double gate = std::sin(2.0 * kPi * (9.0 * x - 3.0 * x * x));
        const double cut = 0.5 + 0.5 * std::tanh(6.0 * gate);
        return (2.0 * x - 1.0) * (0.35 + 0.65 * cut) + 0.25 * std::tanh(3.0 * gate) * std::sin(kPi * x);
    }));
}

/// 11: struck metal: clusters of close, mostly prime harmonics over a thin root.
Table Metal() {
    return Additive({{1, 0.35},
                     {7, 0.8, 0.15},
                     {8, 0.55, 0.62},
                     {11, 0.75, 0.33},
                     {13, 0.6, 0.8},
                     {17, 0.4, 0.05},
                     {19, 0.35, 0.47},
                     {23, 0.25, 0.9},
                     {29, 0.2, 0.27}});
}

/// 12: a sine driven far beyond a wave folder's rails.
Table FoldedSine() {
    return Finished(Sample(
        [](double x) { return std::sin(7.6 * std::sin(2.0 * kPi * x) + 0.55 * std::sin(4.0 * kPi * x)); }));
}

/// 13: a warm, overdriven sine, softer above than below: body for basses and kick tails.
Table WarmDrive() {
    return Finished(Sample([](double x) {
        const double v = std::sin(2.0 * kPi * x) + 0.18 * std::sin(4.0 * kPi * x + 0.9);
        return std::tanh(2.6 * v + 0.45) + 0.12 * std::sin(2.0 * kPi * x);
    }));
}

/// 14: a falling saw that sets off a ringing filter. Runs from 1 to -1.
Table ResonantSaw() {
    constexpr double kRing = 9.0;
    Table table(kSize);
    Table bow(kSize);
    for (std::size_t i = 0; i < kSize; ++i) {
        const double x = static_cast<double>(i) / (kSize - 1);
        const double fade = std::exp(-3.2 * x) * (1.0 - x);
        const double ramp = (1.0 - 2.0 * x) * (1.0 - 0.45 * std::sin(kPi * x));
        bow[i] = std::pow(std::sin(kPi * x), 2.0);
        table[i] = ramp - 0.5 * fade * std::sin(2.0 * kPi * kRing * x) * (1.0 - std::exp(-14.0 * x));
    }
    const double lift = Mean(table) / Mean(bow);
    for (std::size_t i = 0; i < kSize; ++i)
        table[i] -= lift * bow[i];
    table.front() = 1.0;
    table.back() = -1.0;
    return table;
}

/// 15: a zap: 109 cycles that slow down over the wave, loud first; high sizzle at bass notes. The phase
/// stands half a point early, so that the wave begins just below zero and crosses it 218 times.
Table Zap() {
    constexpr double kCycles = 109.0;
    Table table(kSize);
    Table bow(kSize);
    for (std::size_t i = 0; i < kSize; ++i) {
        const double x = (static_cast<double>(i) - 0.02) / kSize;
        const double position = kCycles * (1.0 - std::pow(1.0 - x, 1.7));
        bow[i] = std::sin(kPi * std::fabs(x));
        table[i] = std::sin(2.0 * kPi * position) * (0.12 + std::exp(-2.5 * x)) * std::sqrt(bow[i]);
    }
    const double lift = Mean(table) / Mean(bow);
    for (std::size_t i = 0; i < kSize; ++i)
        table[i] -= lift * bow[i];
    Drawing::NormaliseToOne(table);
    return table;
}

/// 16: breathing glass: a soft spectrum in scattered phases, for pads.
Table Glass() {
    Drawing::Noise scatter(20161);
    std::vector<Partial> partials;
    for (int h = 1; h <= 24; ++h) {
        const double comb = 0.35 + 0.65 * std::pow(std::cos(kPi * h / 5.0), 2.0);
        partials.push_back({static_cast<double>(h), comb * std::pow(h, -0.8), scatter.Next()});
    }
    return Additive(partials);
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: draw_waves FOLDER\n");
        return 2;
    }
    const std::array<std::pair<const char*, Table>, 21> waves{{
        {"pulse", Pulse()},
        {"quad-pulse", QuadPulse()},
        {"triangle", Triangle()},
        {"trapez", Sample(TrapezAt)},
        {"x-trapez", Sample(NotchedTrapezAt)},
        {"user01", Organ()},
        {"user02", Reed()},
        {"user03", VowelAh()},
        {"user04", VowelOh()},
        {"user05", Bell()},
        {"user06", SyncSweep()},
        {"user07", Growl()},
        {"user08", HollowSquare()},
        {"user09", StackedSaws()},
        {"user10", Screech()},
        {"user11", Metal()},
        {"user12", FoldedSine()},
        {"user13", WarmDrive()},
        {"user14", ResonantSaw()},
        {"user15", Zap()},
        {"user16", Glass()},
    }};
    for (const auto& [name, table] : waves) {
        if (!Drawing::WriteRaw(std::string(arguments[1]) + "/" + name + ".raw", table)) return 1;
    }
    return 0;
}
