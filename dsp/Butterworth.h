#pragma once

#include "dsp/Filter.h"
#include "dsp/Layout.h"
#include "dsp/Order.h"
#include "dsp/ParamInfo.h"
#include "dsp/Transforms.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

/// Butterworth filters, after the pole formulas of filter textbooks: maximally flat, poles on a circle.
namespace Dsp::Butterworth {

/// The s-plane poles of an order, kept while it stays the same. A shelf moves them inwards to the radius 1/g
/// and puts zeros at the radius g, with g^(2n) the gain, so that the corner has half of the decibels.
template <int MaxOrder>
class Prototype {
public:
    /// All zeros at infinity, unity at 0.
    const Layout<MaxOrder>& LowPass(int newOrder) {
        if (newOrder != order) {
            SetAngles(newOrder);
            PlaceRoots(1.0, [](const Complex&) { return kInfiniteRoot; });
            layout.normalW = 0.0;
        }
        return layout;
    }

    /// The gain in dB at 0, unity at infinity.
    const Layout<MaxOrder>& LowShelf(int newOrder, double newGainDb) {
        if (newOrder == order && newGainDb == gainDb) return layout;
        if (newOrder != order) SetAngles(newOrder);
        gainDb = newGainDb;
        const double g = std::exp(gainDb / 20.0 * std::numbers::ln10 / (2.0 * order));
        PlaceRoots(1.0 / g, [g](const Complex& direction) { return direction * g; });
        layout.normalW = std::numbers::pi;
        return layout;
    }

private:
    void SetAngles(int n) {
        order = n;
        for (int k = 0; k < n / 2; ++k) {
            const double angle = std::numbers::pi / 2 + (2 * k + 1) * std::numbers::pi / (2 * n);
            directions[static_cast<std::size_t>(k)] = {std::cos(angle), std::sin(angle)};
        }
    }

    template <class ZeroAlong>
    void PlaceRoots(double radius, ZeroAlong zeroAlong) {
        layout.numPoles = order;
        layout.normalGain = 1.0;
        for (int k = 0; k < order / 2; ++k) {
            const Complex& direction = directions[static_cast<std::size_t>(k)];
            layout[k].poles = RootPair::Conjugate(direction * radius);
            layout[k].zeros = RootPair::Conjugate(zeroAlong(direction));
        }
        if (order % 2 != 0) {
            const Complex direction{-1.0, 0.0};
            layout[order / 2].poles = RootPair::Twice(direction * radius);
            layout[order / 2].zeros = RootPair::Twice(zeroAlong(direction));
        }
    }

    int order = 0;
    double gainDb = 0.0;
    std::array<Complex, (MaxOrder + 1) / 2> directions;
    Layout<MaxOrder> layout;
};

/// The band filters: twice the order in poles. Parameters: rate, order, centre, bandwidth in Hz.
template <int MaxOrder>
struct BandDesign {
    static constexpr int kMaxOrder = MaxOrder;
    static constexpr int kMaxStages = MaxOrder;
    Cascade<kMaxStages> cascade;

protected:
    void Set(const BandTransform& transform, const Layout<MaxOrder>& analog) {
        transform.Apply(digital, analog);
        SetLayout(cascade, digital);
    }

    Prototype<MaxOrder> prototype;

private:
    Layout<2 * MaxOrder> digital;
};

/// Unity at the centre, -3 dB at both edges of the band.
template <int MaxOrder>
struct BandPass : BandDesign<MaxOrder> {
    static constexpr Kind kKind = Kind::BandPass;
    static constexpr const char* kName = "Butterworth Band Pass";
    static constexpr std::array kParams{kSampleRateInfo, OrderInfo(MaxOrder), kCentreInfo, kBandwidthHzInfo};
    void setParams(const Params& params) {
        this->Set(BandTransform::Pass(NormalisedFrequency(params[2], params[0]),
                                      NormalisedFrequency(params[3], params[0])),
                  this->prototype.LowPass(OrderOf(params[1], MaxOrder)));
    }
};

/// Nothing at the centre, -3 dB at both edges of the band, unity at 0 and at half the sample rate.
template <int MaxOrder>
struct BandStop : BandDesign<MaxOrder> {
    static constexpr Kind kKind = Kind::BandStop;
    static constexpr const char* kName = "Butterworth Band Stop";
    static constexpr std::array kParams{kSampleRateInfo, OrderInfo(MaxOrder), kCentreInfo, kBandwidthHzInfo};
    void setParams(const Params& params) {
        this->Set(BandTransform::Stop(NormalisedFrequency(params[2], params[0]),
                                      NormalisedFrequency(params[3], params[0])),
                  this->prototype.LowPass(OrderOf(params[1], MaxOrder)));
    }
};

/// The gain at the centre, half of it in dB at both edges of the band, unity at 0 and at half the rate.
template <int MaxOrder>
struct BandShelf : BandDesign<MaxOrder> {
    static constexpr Kind kKind = Kind::BandShelf;
    static constexpr const char* kName = "Butterworth Band Shelf";
    static constexpr std::array kParams{kSampleRateInfo, OrderInfo(MaxOrder), kCentreInfo, kBandwidthHzInfo,
                                        kGainInfo};
    void setParams(const Params& params) {
        this->Set(BandTransform::Pass(NormalisedFrequency(params[2], params[0]),
                                      NormalisedFrequency(params[3], params[0])),
                  this->prototype.LowShelf(OrderOf(params[1], MaxOrder), params[4]));
    }
};

/// What the two shelves at the ends share. Parameters: rate, order, cutoff, gain.
template <int MaxOrder>
struct ShelfDesign {
    static constexpr int kMaxOrder = MaxOrder;
    static constexpr int kMaxStages = (MaxOrder + 1) / 2;
    static constexpr std::array kParams{kSampleRateInfo, OrderInfo(MaxOrder), kCutoffInfo, kGainInfo};
    Cascade<kMaxStages> cascade;

protected:
    void Set(EdgeTransform (*make)(double), const Params& params) {
        transform.Place(make, NormalisedFrequency(params[2], params[0]));
        transform.Apply(digital, prototype.LowShelf(OrderOf(params[1], MaxOrder), params[3]));
        SetLayout(cascade, digital);
    }

private:
    EdgeTransform transform;
    Prototype<MaxOrder> prototype;
    Layout<MaxOrder> digital;
};

/// The gain at 0, half of it in dB at the cutoff, unity at half the sample rate.
template <int MaxOrder>
struct LowShelf : ShelfDesign<MaxOrder> {
    static constexpr Kind kKind = Kind::LowShelf;
    static constexpr const char* kName = "Butterworth Low Shelf";
    void setParams(const Params& params) { this->Set(&EdgeTransform::LowPass, params); }
};

/// The gain at half the sample rate, half of it in dB at the cutoff, unity at 0.
template <int MaxOrder>
struct HighShelf : ShelfDesign<MaxOrder> {
    static constexpr Kind kKind = Kind::HighShelf;
    static constexpr const char* kName = "Butterworth High Shelf";
    void setParams(const Params& params) { this->Set(&EdgeTransform::HighPass, params); }
};

} // namespace Dsp::Butterworth
