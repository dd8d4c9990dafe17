// Draws the nine attack samples of the click layer, 44100 Hz, from low thumps to bright ticks.
//
//     draw_clicks data/clicks
//
// Each begins at zero, peaks at 1 within the first 5 ms and dies away without a step at the end. They are
// made of what real attacks are made of: a skin that is pressed down and springs back (falling sines), shells
// and sticks (a few damped, inharmonic modes), and the air of the stroke (filtered noise).

#include "tools/RawTable.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using Drawing::kPi;
using Drawing::Table;

constexpr double kRate = 44100.0;

double Seconds(std::size_t sample) {
    return static_cast<double>(sample) / kRate;
}

/// A sine that falls exponentially from `high` to `low` Hz, dying away with the time constant `decay`.
struct Drop {
    double level;
    double high;
    double low;
    double fall;
    double decay;
};

void Add(Table& table, const Drop& drop) {
    double phase = 0.5 * drop.high / kRate;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const double t = Seconds(i);
        table[i] += drop.level * std::exp(-t / drop.decay) * std::sin(2.0 * kPi * phase);
        phase += (drop.low + (drop.high - drop.low) * std::exp(-t / drop.fall)) / kRate;
    }
}

/// A damped mode of a shell or stick.
struct Mode {
    double level;
    double frequency;
    double decay;
    double phase = 0.0; ///< in cycles
};

void Add(Table& table, const std::vector<Mode>& modes) {
    for (const Mode& mode : modes) {
        for (std::size_t i = 0; i < table.size(); ++i) {
            const double t = Seconds(i);
            table[i] += mode.level * std::exp(-t / mode.decay) *
                        std::sin(2.0 * kPi * (mode.frequency * t + mode.phase));
        }
    }
}

/// Noise through a band of two poles and two zeros (at 0 Hz and half the rate), run twice for steeper sides.
class Band {
public:
    Band(double frequency, double q) {
        const double w = 2.0 * kPi * frequency / kRate;
        const double alpha = std::sin(w) / (2.0 * q);
        gain = alpha / (1.0 + alpha);
        a1 = -2.0 * std::cos(w) / (1.0 + alpha);
        a2 = (1.0 - alpha) / (1.0 + alpha);
    }

    double Process(double x) {
        const double y = gain * (x - x2) - a1 * y1 - a2 * y2;
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        return y;
    }

private:
    double gain, a1, a2;
    double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;
};

/// A burst of noise in a band: two decays, the hit and what rings on.
struct Burst {
    double level;
    double frequency;
    double q;
    double decay;
    double tailLevel;
    double tailDecay;
    std::uint64_t seed;
};

void Add(Table& table, const Burst& burst) {
    constexpr int kSettle = 400;
    Drawing::Noise noise(burst.seed);
    Band first(burst.frequency, burst.q);
    Band second(burst.frequency, burst.q);
    for (int i = 0; i < kSettle; ++i)
        static_cast<void>(second.Process(first.Process(noise.Next())));
    for (std::size_t i = 0; i < table.size(); ++i) {
        const double t = Seconds(i);
        const double envelope = std::exp(-t / burst.decay) + burst.tailLevel * std::exp(-t / burst.tailDecay);
        table[i] += burst.level * envelope * second.Process(first.Process(noise.Next()));
    }
}

/// Soft clipping from peak 1: more body for the same peak.
void Drive(Table& table, double amount) {
    Drawing::NormaliseToOne(table);
    for (double& v : table)
        v = std::tanh(amount * v) / std::tanh(amount);
}

/// Rises from just above zero within `attack` samples, lets the end run out smoothly, and brings the peak
/// to 1.
Table Finished(Table table, double attack) {
    const auto size = static_cast<double>(table.size());
    constexpr double kFade = 0.35;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const double place = static_cast<double>(i) + 0.5;
        const double left = (size - place) / size;
        if (place < attack) table[i] *= std::sin(0.5 * kPi * place / attack);
        if (left < kFade) table[i] *= std::pow(std::sin(0.5 * kPi * left / kFade), 2.0);
    }
    Drawing::NormaliseToOne(table);
    return table;
}

/// 1: a short, soft thump: four and a quarter cycles from 700 Hz down.
Table Thump() {
    Table table(436);
    for (std::size_t i = 0; i < table.size(); ++i) {
        const double u = (static_cast<double>(i) + 0.5) / static_cast<double>(table.size());
        const double phase = 4.25 * (1.0 - std::pow(1.0 - u, 1.9));
        table[i] = std::exp(-2.6 * u) * std::sin(2.0 * kPi * phase);
    }
    return Finished(table, 4.0);
}

/// 2: a deep punch: a driven fall from 900 to 95 Hz.
Table Punch() {
    Table table(1460);
    Add(table, Drop{1.0, 900.0, 95.0, 0.0038, 0.011});
    Drive(table, 2.2);
    return Finished(table, 5.0);
}

/// 3: a felt beater on a large skin.
Table FeltBeater() {
    Table table(1953);
    Add(table, Drop{1.0, 1400.0, 150.0, 0.0022, 0.010});
    Add(table, Burst{1.1, 900.0, 0.8, 0.0018, 0.04, 0.010, 31});
    Drive(table, 1.4);
    return Finished(table, 5.0);
}

/// 4: a wooden knock.
Table WoodKnock() {
    Table table(1604);
    Add(table, std::vector<Mode>{{1.0, 420.0, 0.009}, {0.8, 890.0, 0.0055}, {0.5, 1530.0, 0.0032}});
    Add(table, Burst{1.6, 2400.0, 0.7, 0.0007, 0.0, 1.0, 41});
    Drive(table, 2.0);
    return Finished(table, 4.0);
}

/// 5: a hard plastic beater: a quick fall with a knuckle of a knock on top.
Table PlasticBeater() {
    Table table(2336);
    Add(table, Drop{0.9, 5200.0, 900.0, 0.0016, 0.006});
    Add(table, std::vector<Mode>{{0.55, 1180.0, 0.010}, {0.35, 2070.0, 0.006}});
    Add(table, Burst{1.0, 3600.0, 0.7, 0.0009, 0.0, 1.0, 53});
    Drive(table, 2.0);
    return Finished(table, 3.0);
}

/// 6: a rim shot: the hoop's inharmonic modes and the crack of the stick.
Table RimShot() {
    Table table(4174);
    Add(table, std::vector<Mode>{{0.5, 510.0, 0.006},
                                 {0.9, 1720.0, 0.013, 0.10},
                                 {0.7, 2610.0, 0.011, 0.35},
                                 {0.45, 3990.0, 0.008, 0.60},
                                 {0.3, 5480.0, 0.005, 0.85}});
    Add(table, Burst{2.2, 4200.0, 0.6, 0.0011, 0.02, 0.012, 61});
    Drive(table, 1.6);
    return Finished(table, 3.0);
}

/// 7: a stick on the edge of a cymbal stand: a dry, narrow tick.
Table StickTick() {
    Table table(2464);
    Add(table, Burst{3.0, 5200.0, 1.4, 0.0010, 0.06, 0.007, 71});
    Add(table, std::vector<Mode>{{0.4, 3350.0, 0.0035, 0.2}, {0.35, 6120.0, 0.0045, 0.7}});
    Drive(table, 3.0);
    return Finished(table, 3.0);
}

/// 8: a noisy snap with a short room behind it.
Table Snap() {
    Table table(5030);
    Add(table, Burst{3.0, 6200.0, 0.9, 0.0012, 0.16, 0.014, 83});
    Add(table, Burst{0.8, 9500.0, 1.0, 0.0040, 0.05, 0.020, 89});
    Drive(table, 3.5);
    return Finished(table, 3.0);
}

/// 9: bright air: a tick that opens into a hiss, for attacks that cut through anything.
Table AirTick() {
    Table table(8224);
    Add(table, Burst{3.0, 8800.0, 0.8, 0.0008, 0.20, 0.024, 97});
    Add(table, Burst{1.0, 12500.0, 0.9, 0.0030, 0.22, 0.034, 101});
    Drive(table, 3.5);
    return Finished(table, 2.0);
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: draw_clicks FOLDER\n");
        return 2;
    }
    const std::array<Table, 9> clicks{Thump(),   Punch(),     FeltBeater(), WoodKnock(), PlasticBeater(),
                                      RimShot(), StickTick(), Snap(),       AirTick()};
    for (std::size_t i = 0; i < clicks.size(); ++i) {
        const std::string name = "/click" + std::to_string(i + 1) + ".raw";
        if (!Drawing::WriteRaw(arguments[1] + name, clicks[i])) return 1;
    }
    return 0;
}
