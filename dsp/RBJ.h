#pragma once

#include "dsp/Cascade.h"
#include "dsp/Filter.h"
#include "dsp/ParamInfo.h"

#include <array>

/// The second-order sections of the Audio EQ Cookbook. The third parameter acts as Q in all four, the
/// bandwidth of the band filters included.
namespace Dsp::RBJ {

/// The parts that all four formulas share.
struct Design {
    static constexpr int kMaxOrder = 2;
    static constexpr int kMaxStages = 1;
    Cascade<kMaxStages> cascade;

protected:
    /// Cosine of the angular frequency and the cookbook's alpha = sin(w0) / (2 Q).
    struct Terms {
        double cosine;
        double alpha;
    };

    /// The terms of a parameter set of sample rate, frequency and Q.
    static Terms TermsOf(const Params& params);

    /// Sets the section, dividing all by a0 = 1 + alpha.
    void Set(const Terms& terms, double b0, double b1, double b2);
};

/// -12 dB an octave above the cutoff, unity at 0 Hz, gain Q at the cutoff.
struct LowPass : Design {
    static constexpr Kind kKind = Kind::LowPass;
    static constexpr const char* kName = "RBJ Low Pass";
    static constexpr std::array kParams{kSampleRateInfo, kCutoffInfo, kResonanceInfo};
    void setParams(const Params& params);
};

/// -12 dB an octave below the cutoff, unity at half the sample rate, gain Q at the cutoff.
struct HighPass : Design {
    static constexpr Kind kKind = Kind::HighPass;
    static constexpr const char* kName = "RBJ High Pass";
    static constexpr std::array kParams{kSampleRateInfo, kCutoffInfo, kResonanceInfo};
    void setParams(const Params& params);
};

/// Constant skirt gain: the peak gain is Q.
struct BandPass1 : Design {
    static constexpr Kind kKind = Kind::BandPass;
    static constexpr const char* kName = "RBJ Band Pass 1";
    static constexpr std::array kParams{kSampleRateInfo, kCentreInfo, kBandwidthInfo};
    void setParams(const Params& params);
};

/// Nothing at the centre, unity at both ends.
struct BandStop : Design {
    static constexpr Kind kKind = Kind::BandStop;
    static constexpr const char* kName = "RBJ Band Stop";
    static constexpr std::array kParams{kSampleRateInfo, kCentreInfo, kBandwidthInfo};
    void setParams(const Params& params);
};

} // namespace Dsp::RBJ
