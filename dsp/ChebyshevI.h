#pragma once

#include "dsp/Filter.h"
#include "dsp/Layout.h"
#include "dsp/Order.h"
#include "dsp/ParamInfo.h"
#include "dsp/Transforms.h"

#include <array>
#include <cmath>
#include <numbers>

/// Chebyshev filters of the first kind, after the pole formulas of filter textbooks: equal ripple in the pass
/// band, whose edge is where the response leaves the ripple for the last time.
namespace Dsp::ChebyshevI {

/// A ripple of nothing would need infinitely large poles; anything below this many dB is taken as this.
inline constexpr double kSmallestRipple = 1e-9;

/// The s-plane poles, kept while order and ripple stay the same, so that a sweep of the cutoff costs only the
/// transform.
template <int MaxOrder>
class LowPassPrototype {
public:
    /// The prototype for an order of 1..MaxOrder and a ripple in dB.
    const Layout<MaxOrder>& Design(int newOrder, double newRipple) {
        if (newOrder != order) SetAngles(newOrder);
        if (newOrder != order || newRipple != ripple) {
            order = newOrder;
            ripple = newRipple;
            PlacePoles();
        }
        return layout;
    }

private:
    void SetAngles(int n) {
        for (int k = 0; k < n / 2; ++k) {
            const double angle = (2 * k + 1 - n) * std::numbers::pi / (2 * n);
            directions[static_cast<std::size_t>(k)] = {std::cos(angle), std::sin(angle)};
        }
    }

    /// With e^mu the n-th root of 1/eps + sqrt(1/eps^2 + 1), both hyperbolic functions come from one number.
    void PlacePoles() {
        const double depth = ripple >= kSmallestRipple ? ripple : kSmallestRipple;
        const double floorPower = std::exp(-depth * 0.1 * std::numbers::ln10);
        const double eps = std::sqrt(1.0 / floorPower - 1.0);
        const double growth = Root(1.0 / eps + std::sqrt(1.0 / (eps * eps) + 1.0));
        const double sn = -(growth - 1.0 / growth) * 0.5;
        const double cs = (growth + 1.0 / growth) * 0.5;
        layout.numPoles = order;
        layout.normalW = 0.0;
        layout.normalGain = order % 2 != 0 ? 1.0 : std::sqrt(floorPower);
        for (int k = 0; k < order / 2; ++k) {
            const Complex& direction = directions[static_cast<std::size_t>(k)];
            layout[k].poles = RootPair::Conjugate({direction.real() * sn, direction.imag() * cs});
            layout[k].zeros = RootPair::Twice(kInfiniteRoot);
        }
        if (order % 2 != 0) {
            layout[order / 2].poles = RootPair::Twice({sn, 0.0});
            layout[order / 2].zeros = RootPair::Twice(kInfiniteRoot);
        }
    }

    [[nodiscard]] double Root(double value) const {
        if (order == 1) return value;
        if (order == 2) return std::sqrt(value);
        if (order == 4) return std::sqrt(std::sqrt(value));
        return std::exp(std::log(value) / order);
    }

    int order = 0;
    double ripple = 0.0;
    std::array<Complex, (MaxOrder + 1) / 2> directions;
    Layout<MaxOrder> layout;
};

/// What both edges share: prototype, transform, sections. Parameters: rate, order, cutoff, ripple.
template <int MaxOrder>
struct EdgeDesign {
    static constexpr int kMaxOrder = MaxOrder;
    static constexpr int kMaxStages = (MaxOrder + 1) / 2;
    static constexpr std::array kParams{kSampleRateInfo, OrderInfo(MaxOrder), kCutoffInfo, kRippleInfo};
    Cascade<kMaxStages> cascade;

protected:
    void Set(EdgeTransform (*make)(double), const Params& params) {
        transform.Place(make, NormalisedFrequency(params[2], params[0]));
        const Layout<MaxOrder>& analog = prototype.Design(OrderOf(params[1], MaxOrder), params[3]);
        transform.Apply(digital, analog);
        SetLayout(cascade, digital);
    }

private:
    EdgeTransform transform;
    LowPassPrototype<MaxOrder> prototype;
    Layout<MaxOrder> digital;
};

/// An even order starts at the foot of the ripple, an odd one at unity.
template <int MaxOrder>
struct LowPass : EdgeDesign<MaxOrder> {
    static constexpr Kind kKind = Kind::LowPass;
    static constexpr const char* kName = "Chebyshev I Low Pass";
    void setParams(const Params& params) { this->Set(&EdgeTransform::LowPass, params); }
};

/// The mirror image: the same gain at half the sample rate.
template <int MaxOrder>
struct HighPass : EdgeDesign<MaxOrder> {
    static constexpr Kind kKind = Kind::HighPass;
    static constexpr const char* kName = "Chebyshev I High Pass";
    void setParams(const Params& params) { this->Set(&EdgeTransform::HighPass, params); }
};

} // namespace Dsp::ChebyshevI
