#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace Dsp {

/// What a parameter means, the same in every filter. The number 6 is free.
namespace ParamId {
enum Id : int {
    kSampleRate = 0,
    kFrequency = 1,
    kQ = 2,
    kBandwidth = 3,
    kBandwidthHz = 4,
    kGain = 5,
    kOrder = 7,
    kRippleDb = 8,
};
} // namespace ParamId

inline constexpr int kMaxParams = 8;

/// Native values of one filter, in the order of its own parameter list; slots past the list are 0.
struct Params {
    std::array<double, kMaxParams> value{};

    double& operator[](int index) { return value[static_cast<std::size_t>(index)]; }
    const double& operator[](int index) const { return value[static_cast<std::size_t>(index)]; }
    friend bool operator==(const Params&, const Params&) = default;
};

/// How a control 0..1 is spread over a parameter's range.
enum class Mapping {
    Linear, ///< straight line from min to max
    Log,    ///< equal ratios, for frequencies
    Pow2,   ///< min and max are exponents of two
    Integer ///< straight line, rounded to the nearest integer
};

/// Everything about one parameter of a filter, returned by value. Native units are Hz, dB, or plain numbers.
struct ParamInfo {
    int id;
    const char* slug;
    const char* name;
    double min;
    double max;
    double defaultValue; ///< native
    Mapping mapping;

    /// Control value for a native one; the inverse of toNativeValue. Outside the range it extrapolates.
    [[nodiscard]] double toControlValue(double native) const;

    /// Native value for a control of 0..1; outside it extrapolates.
    [[nodiscard]] double toNativeValue(double control) const;

    /// Display text of a native value: a whole number for orders, whole hertz for frequencies, decibels for
    /// gain and ripple, three decimals else. Allocates; not for the audio thread.
    [[nodiscard]] std::string toString(double native) const;
};

inline constexpr ParamInfo kSampleRateInfo{
    ParamId::kSampleRate, "Fs", "Sample Rate", 11025.0, 192000.0, 44100.0, Mapping::Linear};
inline constexpr ParamInfo kCutoffInfo{ParamId::kFrequency, "Fc", "Cutoff Frequency", 10.0, 22040.0, 2000.0,
                                       Mapping::Log};
inline constexpr ParamInfo kCentreInfo{ParamId::kFrequency, "Fc", "Center Frequency", 10.0, 22040.0, 2000.0,
                                       Mapping::Log};
inline constexpr ParamInfo kResonanceInfo{ParamId::kQ, "", "Resonance", -4.0, 4.0, 1.0, Mapping::Pow2};
inline constexpr ParamInfo kBandwidthInfo{ParamId::kBandwidth, "BW", "Bandwidth (Octaves)", -4.0, 4.0, 1.0,
                                          Mapping::Pow2};
inline constexpr ParamInfo kBandwidthHzInfo{
    ParamId::kBandwidthHz, "BW", "Bandwidth (Hz)", 10.0, 22040.0, 1720.0, Mapping::Log};
inline constexpr ParamInfo kGainInfo{ParamId::kGain, "Gain", "Gain", -24.0, 24.0, -6.0, Mapping::Linear};
inline constexpr ParamInfo kRippleInfo{ParamId::kRippleDb, "Ripple", "Ripple dB", 0.001, 12.0, 0.01,
                                       Mapping::Linear};

/// The order of a design that goes up to `maxOrder`.
[[nodiscard]] constexpr ParamInfo OrderInfo(int maxOrder) {
    return {ParamId::kOrder, "Order", "Order", 1.0, static_cast<double>(maxOrder), 2.0, Mapping::Integer};
}

} // namespace Dsp
