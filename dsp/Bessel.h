#pragma once

#include "dsp/Filter.h"
#include "dsp/Layout.h"
#include "dsp/Order.h"
#include "dsp/ParamInfo.h"
#include "dsp/RootFinder.h"
#include "dsp/Transforms.h"

#include <array>
#include <complex>
#include <cstddef>
#include <span>

/// Bessel filters, after filter textbooks: the flattest group delay. The poles are the roots of the reverse
/// Bessel polynomial as they stand, so the delay at 0 is one in units of the edge and the attenuation there
/// depends on the order.
namespace Dsp::Bessel {

/// Coefficients of the reverse Bessel polynomial, constant first, by the recurrence
/// theta[n] = (2n - 1) theta[n - 1] + s^2 theta[n - 2]. `coefficients` holds order + 1 numbers.
void ReversePolynomial(int order, std::span<double> coefficients);

/// The s-plane poles, kept while the order stays the same.
template <int MaxOrder>
class LowPassPrototype {
public:
    const Layout<MaxOrder>& Design(int newOrder) {
        if (newOrder != order) PlacePoles(newOrder);
        return layout;
    }

private:
    static_assert(MaxOrder <= static_cast<int>(RootFinder::kMaxDegree));

    void PlacePoles(int n) {
        const auto count = static_cast<std::size_t>(n);
        std::array<double, MaxOrder + 1> polynomial{};
        std::array<Complex, MaxOrder> roots;
        ReversePolynomial(n, std::span(polynomial).first(count + 1));
        RootFinder::Solve(std::span(polynomial).first(count + 1), std::span(roots).first(count));
        for (int k = 0; k < n / 2; ++k) {
            layout[k].poles = RootPair::Conjugate(roots[static_cast<std::size_t>(k)]);
            layout[k].zeros = RootPair::Twice(kInfiniteRoot);
        }
        if (n % 2 != 0) {
            layout[n / 2].poles = RootPair::Twice({roots[count / 2].real(), 0.0});
            layout[n / 2].zeros = RootPair::Twice(kInfiniteRoot);
        }
        layout.numPoles = n;
        layout.normalW = 0.0;
        layout.normalGain = 1.0;
        order = n;
    }

    int order = 0;
    Layout<MaxOrder> layout;
};

/// What both edges share. Parameters: rate, order, cutoff.
template <int MaxOrder>
struct EdgeDesign {
    static constexpr int kMaxOrder = MaxOrder;
    static constexpr int kMaxStages = (MaxOrder + 1) / 2;
    static constexpr std::array kParams{kSampleRateInfo, OrderInfo(MaxOrder), kCutoffInfo};
    Cascade<kMaxStages> cascade;

protected:
    void Set(EdgeTransform (*make)(double), const Params& params) {
        transform.Place(make, NormalisedFrequency(params[2], params[0]));
        transform.Apply(digital, prototype.Design(OrderOf(params[1], MaxOrder)));
        SetLayout(cascade, digital);
    }

private:
    EdgeTransform transform;
    LowPassPrototype<MaxOrder> prototype;
    Layout<MaxOrder> digital;
};

/// Unity at 0.
template <int MaxOrder>
struct LowPass : EdgeDesign<MaxOrder> {
    static constexpr Kind kKind = Kind::LowPass;
    static constexpr const char* kName = "Bessel Low Pass";
    void setParams(const Params& params) { this->Set(&EdgeTransform::LowPass, params); }
};

/// Unity at half the sample rate.
template <int MaxOrder>
struct HighPass : EdgeDesign<MaxOrder> {
    static constexpr Kind kKind = Kind::HighPass;
    static constexpr const char* kName = "Bessel High Pass";
    void setParams(const Params& params) { this->Set(&EdgeTransform::HighPass, params); }
};

} // namespace Dsp::Bessel
