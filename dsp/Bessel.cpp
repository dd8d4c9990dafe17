#include "dsp/Bessel.h"

#include <algorithm>

namespace Dsp::Bessel {

void ReversePolynomial(int order, std::span<double> coefficients) {
    std::array<double, RootFinder::kMaxDegree + 1> older{1.0};
    std::array<double, RootFinder::kMaxDegree + 1> newer{1.0, 1.0};
    for (int n = 2; n <= order; ++n) {
        std::array<double, RootFinder::kMaxDegree + 1> next{};
        for (std::size_t k = 0; k < next.size(); ++k) {
            next[k] = (2 * n - 1) * newer[k];
            if (k >= 2) next[k] += older[k - 2];
        }
        older = newer;
        newer = next;
    }
    std::copy_n((order == 0 ? older : newer).begin(), coefficients.size(), coefficients.begin());
}

} // namespace Dsp::Bessel
