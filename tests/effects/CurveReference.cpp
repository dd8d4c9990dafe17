#include "tests/effects/CurveReference.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace Grimworks::Testing {

namespace {

using Real = long double;
using Shape = std::function<Real(int, Real)>;

constexpr Real kPi = 3.14159265358979323846264338327950288L;

Real X(int i) {
    return (2 * i + 1) / 511.0L;
}

/// Sine and cosine of half turns; the sine is exactly 0 where it should be.
Real S(Real turns) {
    return std::sin(kPi * std::remainder(turns, 2.0L));
}

Real C(Real turns) {
    return std::cos(kPi * turns);
}

Real Limit(Real v, Real low, Real high) {
    return std::max(low, std::min(high, v));
}

/// Finishes are letters in their order: S smooth, N normalise, C clamp.
void Finish(std::vector<Real>& c, const std::string& finish) {
    for (const char step : finish) {
        if (step == 'C') {
            for (Real& v : c)
                v = Limit(v, -1, 1);
        } else if (step == 'N') {
            Real peak = 0;
            for (const Real v : c)
                peak = std::max(peak, std::fabs(v));
            for (Real& v : c)
                v /= peak;
        } else {
            Real s = (c.front() - 1) / 4;
            for (Real& v : c)
                v = s = Limit((s + v) / 2, -1, 1);
            s = (c.back() + 1) / 4;
            for (std::size_t k = c.size(); k-- > 0;)
                c[k] = s = Limit((s + c[k]) / 2, -1, 1);
        }
    }
}

std::vector<Real> Assemble(const std::vector<Real>& positive, const std::vector<Real>& negative,
                           const std::string& finish) {
    std::vector<Real> curve(negative.rbegin(), negative.rend());
    curve.insert(curve.end(), positive.begin(), positive.end());
    Finish(curve, finish);
    return curve;
}

std::vector<Real> Half(const Shape& shape) {
    std::vector<Real> half;
    half.reserve(256);
    for (int i = 0; i < 256; ++i)
        half.push_back(shape(i, X(i)));
    return half;
}

std::vector<Real> Negated(std::vector<Real> half) {
    for (Real& v : half)
        v = -v;
    return half;
}

struct Recipe {
    Shape positive;
    Shape negative; ///< none for an odd curve
    std::string finish;
};

Real Sigmoid1(int, Real x) {
    return Limit(x + 0.4L * S(2 * x) + 0.1L * (1 - x) * S(7.77L * x) + 0.2L * (1 - x) * C(21 * x), 0, 1);
}

Real Sigmoid2(int, Real x) {
    return x + 0.3777L * std::sin(2 * kPi * x - 1.0084512418023237L) + 0.3L * (1 - x) * C(7 * x) -
           0.15L * (1 - x) * S(17 * x);
}

Real Typhoon(int i, Real x) {
    const Real bump = i < 25 ? S(i / 25.0L) * S(i / 25.0L) : 0;
    return Limit(x - 0.4777L * S(2.5L * x) + 0.144L * S(25 * x) - 0.1777L * C(77.7L * x) + bump, 0, 1);
}

Real KneeLimiter(int i, Real x) {
    while (x >= 0.6L)
        x = X(--i);
    return x < 0.4L ? x : x - 0.75L * (x - 0.4L) * (x - 0.4L) / 0.4L;
}

Real KneeCompressor(int, Real x) {
    if (x < 0.6L) return x;
    if (x < 0.7999999999999999L) return x - 0.75L * (x - 0.6L) * (x - 0.6L) / 0.4L;
    return (x - 0.7L) / 4 + 0.7L;
}

Real Transistor(int, Real x) {
    return x < 0.8L ? x - 0.2L * std::pow(S(x / 0.8L), 3.0L) : x - 0.8L * (x - 0.8L);
}

/// Sign that is + on the first step and turns after steps 0, 32, 64 and so on.
Real KickSign(int i) {
    return ((i + 31) / 32) % 2 == 0 ? 1 : -1;
}

/// + for step 0, - for 1 to 25, then stripes of 25 steps that begin with +.
Real TigerSign(int i) {
    if (i == 0) return 1;
    if (i <= 25) return -1;
    return ((i - 26) / 25) % 2 == 0 ? 1 : -1;
}

Real Qrx(int, Real x) {
    return x + 0.35777L * S(4 * x);
}

std::map<int, Recipe> PlainRecipes() {
    return {
        {0, {[](int, Real x) { return x; }, nullptr, ""}},
        {1, {[](int, Real x) { return x < 0.6L ? x : (x - 0.6L) / 4 + 0.6L; }, nullptr, ""}},
        {2, {KneeCompressor, nullptr, ""}},
        {3, {[](int, Real x) { return std::min(x, 0.5L); }, nullptr, ""}},
        {4, {KneeLimiter, nullptr, ""}},
        {5, {[](int, Real x) { return S(x / 2); }, nullptr, ""}},
        {6, {[](int, Real x) { return std::atan(std::min(1.0L, 1.777L * x)) * 4 / kPi; }, nullptr, ""}},
        {7, {[](int, Real x) { return 70.68609865470853L * x / (69.68609865470853L * x + 1); }, nullptr, ""}},
        {8, {[](int i, Real) { return i < 2 ? 0.0L : 1.0L; }, nullptr, ""}},
        {9, {[](int i, Real x) { return i == 0 ? 0 : std::log(x * 256) / std::log(256.0L); }, nullptr, ""}},
        {13, {[](int i, Real x) { return (i % 179 / 179.0L - 0.288L) * (1 - x) + x; }, nullptr, "S"}},
        {14, {Typhoon, nullptr, "S"}},
        {15, {Qrx, nullptr, "S"}},
        {16, {Qrx, [](int i, Real x) { return 0.1777L * C(3 * x) - Qrx(i, x); }, "S"}},
        {17,
         {[](int i, Real x) { return i < 128 ? 1.94L * x : 0.7275L + 0.2425L * (256 - i) / 128; }, nullptr,
          ""}},
        {18, {[](int, Real x) { return S(x) * (1 - x) + x; }, nullptr, ""}},
        {34, {Transistor, nullptr, ""}},
        {38, {[](int i, Real) { return (255 - i) / 255.0L; }, nullptr, ""}},
        {79, {[](int, Real x) { return std::min(1.0L, 1.16L * S(x / 2)); }, nullptr, ""}},
        {81,
         {[](int, Real x) { return S(2 * x) * (1 - x) + x - x * C(3 * x) - x * x * C(6 * x); }, nullptr,
          "N"}},
    };
}

std::map<int, Recipe> WildRecipes() {
    const auto square = [](Real v) { return v * v; };
    return {
        {19, {Sigmoid1, nullptr, "SN"}},
        {20, {Sigmoid2, nullptr, "SN"}},
        {21, {Sigmoid1, [](int i, Real x) { return -Sigmoid2(i, x); }, "SN"}},
        {29, {[](int i, Real x) { return (i % 32 - 15.5L) / 31 * (1 - x) + x; }, nullptr, "N"}},
        {30,
         {[](int i, Real x) { return x + 0.2L + (1 - x) / 2 * KickSign(i); },
          [](int i, Real x) { return -x - (1 - x) / 2 * KickSign(i); }, "N"}},
        {31,
         {[square](int i, Real x) { return S(x / 2) + square(1 - x) * TigerSign(i); },
          [square](int i, Real x) { return -x - square(1 - x) * TigerSign(i); }, "N"}},
        {32,
         {[](int, Real x) { return 1.25L * S(4 * x) * (1 - x) + x; },
          [square](int, Real x) { return -1.5L * S(8 * x) * square(1 - x) - x; }, "C"}},
        {41, {[](int, Real x) { return (C(8 * x) + S(16 * x)) / 2 * (1 - x) + x; }, nullptr, "N"}},
        {42,
         {[](int, Real x) { return (C(6 * x) + S(12 * x) + C(24 * x)) / 2 * (1 - x) + x; }, nullptr, "N"}},
        {43,
         {[square](int, Real x) { return (S(15 * x) + C(5 * x) + S(25 * x)) / 2 * square(1 - x) + x; },
          nullptr, "N"}},
        {44,
         {[square](int, Real x) {
              return (S(12 * x) + C(4 * x) + C(16 * x) + C(20 * x)) / 2 * square(1 - x) + x;
          },
          nullptr, "N"}},
    };
}

/// The congruential generator, written out.
class Draws {
public:
    Real operator()() {
        state = static_cast<std::uint32_t>(state * std::uint64_t{214013} + 2531011);
        return (state / 65536 % 32768) / 32767.0L;
    }

private:
    std::uint32_t state = 1600;
};

using Halves = std::map<char, std::vector<Real>>;

Halves VoxHalves(Draws& draw) {
    Halves halves;
    Real a = 0;
    Real b = 0;
    for (int i = 0; i < 256; ++i) {
        const Real x = X(i);
        if (i % 4 == 0) a = 2 * draw() - 1;
        if (i % 2 == 0) b = 2 * draw() - 1;
        const Real c = draw();
        draw();
        a = a / 2 + x + (i < 25 ? 0.5L * S(3 * i / 25.0L) : 0);
        b = 0.6L * b + x + (i < 32 ? 0.5L * S(i / 16.0L) * S(i / 16.0L) : 0);
        b *= 1 - x;
        halves['a'].push_back(a);
        halves['b'].push_back(b);
        halves['e'].push_back(0.5L * (1 - x) * S(10 * x) + 0.7L * (2 * c - 1) + x);
    }
    return halves;
}

Halves BigHalves(Draws& draw) {
    Halves halves;
    Real g = 0;
    for (int i = 0; i < 256; ++i) {
        const Real x = X(i);
        const Real grit = 0.44L * (2 * draw() - 1);
        if (i % 2 == 1) g = (2 * draw() - 1) * x;
        g *= 0.777L;
        const Real s = S(2 * x);
        const Real t = S(4 * x);
        Real fat = 0.25L * C(10 * x) + 0.75L * x - 0.4L * (1 - x) * S(12 * x) + g;
        if (t > 0) fat += t * (1 - x);
        if (s > 0) fat += 1.25L * s * s * (1 - x) + grit;
        halves['f'].push_back(fat);
        halves['b'].push_back(0.25L * S(8 * x) + grit + x + t);
    }
    return halves;
}

std::vector<Real> NoiseCurve(int table) {
    Draws draw;
    const Halves vox = VoxHalves(draw);
    const Halves big = BigHalves(draw);
    switch (table) {
    case 23:
        return Assemble(vox.at('a'), Negated(vox.at('b')), "CS");
    case 24:
        return Assemble(vox.at('b'), Negated(vox.at('e')), "CS");
    case 25:
        return Assemble(vox.at('e'), Negated(vox.at('a')), "CS");
    case 27:
        return Assemble(big.at('b'), Negated(big.at('b')), "CS");
    default:
        return Assemble(big.at('f'), Negated(big.at('f')), "CS");
    }
}

Real HardcoreShape(int h, int i) {
    const Real t = i / 256.0L;
    const Real saw = i % 42 / 42.0L * (i / 42 % 2 == 0 ? 1 : -1) * 1.5L * (1 - t);
    const Real ramp = i % 64 / 64.0L * 1.75L * (1 - t);
    switch (h) {
    case 0:
        return t + 0.2L * S(t) + 0.1L * std::fabs(S(4 * t));
    case 1:
        return t + 0.25L * S(t) + 0.15L * std::fabs(S(6 * t));
    case 2:
        return t + 0.25L * S(t) + 0.15L * std::fabs(S(10 * t));
    case 3:
        return t + 0.2L * S(t) + 0.25L * std::fabs(S(8 * t));
    case 4:
        return t - 0.2L * S(t) + saw;
    case 5:
        return t - 0.1L * S(t) + saw;
    case 6:
        return t + 0.1L * S(2 * t) + ramp;
    default:
        return t + 0.2L * S(2 * t) + ramp;
    }
}

bool Within(int j, int first, int last) {
    return j >= first && j <= last;
}

/// The carved shapes entry by entry: the last cut that reaches an entry decides.
Real CarvedShape(int h, int j) {
    if (h == 0) {
        if (Within(j, 7, 43) || Within(j, 100, 116) || Within(j, 200, 216)) return 1;
        if (Within(j, 5, 54)) return 0;
        return HardcoreShape(0, Within(j, 55, 154) ? 74 : j);
    }
    if (h == 1) {
        if (Within(j, 7, 43) || Within(j, 200, 216)) return 0;
        if (Within(j, 150, 199)) return 1;
        return HardcoreShape(1, j);
    }
    if (h == 2) {
        Real v = HardcoreShape(2, j);
        if (Within(j, 55, 154)) v = HardcoreShape(2, 74) + 0.01L * (j - 55) + (j > 74 ? 0.19L : 0);
        if (Within(j, 25, 74)) v = 0.01L * (j - 25);
        return Within(j, 17, 53) ? v / 10 : v;
    }
    if (h == 3) {
        if (Within(j, 150, 199)) return 0;
        return Within(j, 17, 53) ? 1 : HardcoreShape(3, j);
    }
    return HardcoreShape(h, j);
}

std::vector<Real> HardcoreCurve(int table) {
    const int h = 2 * (table - 45);
    const std::string finish[] = {"C", "C", "N", "NS"};
    return Assemble(Half([h](int i, Real) { return CarvedShape(h, i); }),
                    Half([h](int i, Real) { return -CarvedShape(h + 1, i); }), finish[table - 45]);
}

std::vector<Real> IndustrialCurve() {
    std::vector<Real> positive;
    std::vector<Real> negative;
    Real bounce[2] = {0, 0};
    Real step[2] = {0.0108025L, -0.00025L};
    const Real change[2] = {-0.00525L, 0.0005L};
    for (int i = 0; i < 256; ++i) {
        if (std::fabs(bounce[0]) > 0.2L) step[0] = -step[0];
        if (std::fabs(bounce[1]) > 0.2L) step[1] = -step[1];
        for (int side = 0; side < 2; ++side) {
            bounce[side] += step[side];
            step[side] += change[side];
        }
        Real up = X(i) + bounce[0];
        Real down = -(X(i) + bounce[1]);
        if (Within(i, 75, 174)) up /= 4;
        if (Within(i, 100, 116)) up /= 4;
        if (Within(i, 25, 74)) down /= 10;
        if (Within(i, 200, 216)) down /= 4;
        positive.push_back(up);
        negative.push_back(down);
    }
    return Assemble(positive, negative, "C");
}

} // namespace

std::vector<int> ReferenceCurveTables() {
    std::vector<int> tables{23, 24, 25, 27, 28, 45, 46, 47, 48, 49};
    for (const auto& recipes : {PlainRecipes(), WildRecipes()}) {
        for (const auto& [table, recipe] : recipes)
            tables.push_back(table);
    }
    std::sort(tables.begin(), tables.end());
    return tables;
}

std::vector<long double> ReferenceCurve(int table) {
    if (table >= 23 && table <= 28) return NoiseCurve(table);
    if (table >= 45 && table <= 48) return HardcoreCurve(table);
    if (table == 49) return IndustrialCurve();
    for (const auto& recipes : {PlainRecipes(), WildRecipes()}) {
        const auto found = recipes.find(table);
        if (found == recipes.end()) continue;
        const Recipe& recipe = found->second;
        const std::vector<Real> positive = Half(recipe.positive);
        return Assemble(positive, recipe.negative ? Half(recipe.negative) : Negated(positive), recipe.finish);
    }
    return {};
}

} // namespace Grimworks::Testing
