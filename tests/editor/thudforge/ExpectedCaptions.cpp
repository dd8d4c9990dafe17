#include "tests/editor/thudforge/ExpectedCaptions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace Grimworks {

namespace {

[[gnu::format(printf, 1, 2)]] std::string Print(const char* format, ...) {
    std::array<char, 64> text{};
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    return text.data();
}

int Choice(double v, int last) {
    return static_cast<int>(std::floor(v * last + 0.5));
}

template <std::size_t N>
std::string Name(const std::array<const char*, N>& names, double v) {
    return names.at(static_cast<std::size_t>(Choice(v, static_cast<int>(N) - 1)));
}

/// How often a beat a tempo-locked rate swings, or the rate in Hz where it is not locked.
std::string SyncText(double v, double rate) {
    static constexpr std::array<const char*, 10> kFactors{"off",  "1/16x", "1/8x", "1/4x", "1/2x",
                                                          "1.0x", "2.0x",  "4.0x", "8.0x", "16.0x"};
    if (v > 0.0) return Name(kFactors, v);
    return Print("%4.1fHz", rate * 20.0);
}

std::string Seconds(double v, double duration) {
    return Print("%3.3f s", v * 5.0 * std::max(duration, 0.001));
}

std::string Balance(double v) {
    return Print("%3.1f%% / %3.1f%%", (1.0 - v) * 100.0, v * 100.0);
}

std::string Oscillator(int oscillator, int offset, double v, const CaptionSetting& setting) {
    switch (offset) {
    case 1:
        return Print("%2.2d", Choice(v, 40) + 1);
    case 2:
    case 3:
        return Print("%4.3f", v * 24.0 - 12.0);
    case 5:
        return v <= 0.0 ? "-oodB" : Print("%3.1fdB", 20.0 * std::log10(v));
    case 6:
        return Print("%4.3f", v * 2.0 - 1.0);
    case 7:
        return Print("%3.1f%%", v * 100.0);
    case 8:
        return Balance(v);
    case 9:
    case 10:
        return Print("%.3f ", v); // with its unit, which is empty
    case 13:
        return Print("%4.3f", v - 0.5);
    case 15:
        return SyncText(v, setting.oscillatorRates[oscillator]);
    case 4:
    case 17:
    case 18:
    case 19:
    case 20:
        return Print("%.3f", v);
    default:
        return {}; // switches and menus
    }
}

std::string Envelope(int offset, double v, double duration) {
    switch (offset) {
    case 2:
        return v <= 0.0 ? "-oo dB" : Print("%3.1fdB", 20.0 * std::log10(v));
    case 4:
        return Print("%3.3f s", 5.0 * std::max(v, 0.001));
    case 5:
    case 6:
        return Print("%3.3f", v);
    default:
        return Seconds(v, duration);
    }
}

std::string BitCrash(double v) {
    const double q = v * v;
    return Print("%2.1fbit", q == 1.0 ? 64.0 : q * 63.0 + 1.0);
}

std::string ReducedRate(double v, const CaptionSetting& setting) {
    double kept = std::trunc(setting.blockSize * v * v * v);
    if (kept < 2.0) kept = 2.0;
    return Print("%dHz", static_cast<int>(kept / setting.blockSize * setting.sampleRate));
}

std::string Distortion(int id, double v, const CaptionSetting& setting) {
    switch (id) {
    case 104:
        return Name(std::array<const char*, 4>{"[no interpolation]", "[linear interpolation]",
                                               "[cosine interpolation]", "[cubic interpolation]"},
                    v);
    case 107:
        return Name(std::array<const char*, 3>{"Sine", "Triangle", "Pulse"}, v);
    case 108:
        return Name(std::array<const char*, 4>{"Shaper", "Sat.Shaper", "Boost Shaper", "Boost+Sat.Shaper"},
                    v);
    case 110:
        return BitCrash(v);
    case 111:
        return ReducedRate(v, setting);
    case 112:
        return v == 0.0 ? "-oodB" : Print("%3.1fdB", 20.0 * std::log10(v * v * v * v));
    case 101:
    case 105:
        return Print("%.3f", v);
    default:
        return {};
    }
}

std::string Effect(int id, double v, const CaptionSetting& setting) {
    switch (id) {
    case 96:
    case 97:
    case 98:
        return Print("%3.1fdB", 48.0 * v - 24.0);
    case 99:
        return Print("%1.1f%% %s", std::fabs(v - 0.5) * 200.0, v < 0.5 ? "LP" : "HP");
    case 115:
        return Balance(v);
    case 116:
        return Print("%.1fHz", 10.0 * std::pow(2204.0, v));
    case 120:
        return Name(std::array<const char*, 3>{"Slow", "Medium", "Fast"}, v);
    case 123:
        return Print("%.1f", v); // steps of a tenth
    case 124:
        return Name(std::array<const char*, 5>{"Sine", "Pulse", "Saw", "Sine2", "Sine3"}, v);
    case 139:
        return SyncText(v, setting.phaserRate);
    case 113:
    case 118:
    case 119:
    case 121:
    case 132:
    case 133:
        return {};
    default:
        return Print("%.3f", v);
    }
}

} // namespace

std::string ExpectedCaption(int id, double v, const CaptionSetting& setting) {
    if (id < 63) return Oscillator(id / 21, id % 21, v, setting);
    if (id < 70) return Envelope(id - 63, v, setting.volumeDuration);
    if (id < 77) return Envelope(id - 70, v, setting.filterDuration);
    if (id >= 100 && id <= 112) return Distortion(id, v, setting);
    if (id >= 96) return Effect(id, v, setting);
    switch (id) {
    case 80:
        return Print("%.3f", v * 1.259); // the one range that goes beyond 1
    case 87:
        return Print("+/- %1.0f", 2.0 * Choice(v, 6));
    case 93:
        return Print("%d", static_cast<int>(std::floor(v + 0.5)) + 1);
    case 77:
    case 78:
    case 81:
    case 82:
    case 83:
    case 86:
    case 88:
        return {};
    default:
        return Print("%.3f", v);
    }
}

} // namespace Grimworks
