#include "voice/OscFilterUnit.h"

#include "tests/voice/OscFilterResponses.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace Grimworks {
namespace {

/// The plain formulas, one filter of the bank: types 0 and 1 the four-pole low and high pass, 3 and 4 the
/// Butterworth high and low pass.
class PlainFilter {
public:
    explicit PlainFilter(int type) : kind(type) {}

    double Process(double x, double c, double r) { return kind < 3 ? FourPole(x, c, r) : Biquad(x, c, r); }

private:
    double FourPole(double x, double c, double r) {
        const double k = c < 0.01 ? 0.01 : c > 0.99 ? 0.99 : c;
        const double feedback = r / (1.0 - k) + r;
        if (x == 0.0) return 0.0;
        s[0] = ((s[0] - s[1]) * feedback + (x - s[0])) * k + s[0];
        for (std::size_t i = 1; i < 4; ++i)
            s[i] = (s[i - 1] - s[i]) * k + s[i];
        return kind == 0 ? s[3] : x - s[3];
    }

    double Biquad(double x, double c, double r) {
        constexpr double kRoot2 = 1.414213562373095;
        const double tangent = std::tan(kPi * std::fmax(0.0001, c * 0.5 * 0.957));
        const double sign = kind == 3 ? 1.0 : -1.0;
        const double w = kind == 3 ? tangent : 1.0 / tangent;
        const double q = (kRoot2 - (kind == 3 ? r : r * 0.99) * kRoot2) * w;
        const double d = 1.0 / (q + 1.0 + w * w);
        const double a1 = sign * 2.0 * (w * w - 1.0) * d;
        const double a2 = (1.0 - q + w * w) * d;
        const double y = d * x - sign * 2.0 * d * s[0] + d * s[1] - a1 * s[2] - a2 * s[3];
        s = {x, s[0], y, s[2]};
        return y;
    }

    int kind;
    std::array<double, 4> s{};
};

/// Types 0..4 of both sides.
OscFilterUnit Unit(int left, int right, double balance) {
    OscFilterUnit unit;
    unit.SetLeftType(left / 4.0);
    unit.SetRightType(right / 4.0);
    unit.balance = balance;
    return unit;
}

/// The balance glides; a silent run brings it to rest.
OscFilterUnit SettledUnit(int left, int right, double balance) {
    OscFilterUnit unit = Unit(left, right, balance);
    for (int n = 0; n < 20000; ++n)
        unit.Tick(0.0, 0.5, 0.0);
    unit.Reset();
    return unit;
}

double Saw(int n) {
    return 2.0 * std::fmod(n * 0.0123 + 0.0004, 1.0) - 1.0;
}

double Sweep(int n) {
    return 0.5 + 0.5 * std::sin(n * 0.0007);
}

int Selected(int type) {
    return type == 2 ? 1 : type;
}

TEST(OscFilterUnit, EveryPairOfTypesFollowsThePlainFormulas) {
    for (int left = 0; left < 5; ++left) {
        for (int right = 0; right < 5; ++right) {
            OscFilterUnit unit = Unit(left, right, 0.3);
            PlainFilter plainLeft(Selected(left));
            PlainFilter plainRight(Selected(right));
            double balance = 0.0;
            for (int n = 0; n < 9000; ++n) {
                const double resonance = 0.9 * std::fabs(std::sin(n * 0.0003));
                const double a = plainLeft.Process(Saw(n), Sweep(n), resonance);
                const double b = plainRight.Process(Saw(n), Sweep(n), resonance);
                balance = 0.99 * balance + 0.010000000000000009 * 0.3;
                ASSERT_NEAR(unit.Tick(Saw(n), Sweep(n), resonance), (1.0 - balance) * a + balance * b, 1e-9)
                    << left << " " << right << " " << n;
            }
        }
    }
}

TEST(OscFilterUnit, AKickSweepOfTheLowPassStaysWithinABillionthOfThePlainFormulas) {
    for (const double resonance : {0.0, 0.5, 0.9, 0.97}) {
        OscFilterUnit unit = SettledUnit(4, 4, 1.0);
        PlainFilter plain(4);
        for (int n = 0; n < 40000; ++n) {
            const double cutoff = std::exp(-n / 4000.0);
            ASSERT_NEAR(unit.Tick(Saw(n), cutoff, resonance), plain.Process(Saw(n), cutoff, resonance), 1e-9)
                << resonance << " " << n;
        }
    }
}

TEST(OscFilterUnit, ARunIsTickToTheBit) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> value(0.0, 1.0);
    for (int left = 0; left < 5; ++left) {
        for (int right = 0; right < 5; ++right) {
            OscFilterUnit byTick = Unit(left, right, 0.7);
            OscFilterUnit byRun = byTick;
            for (const int frames : {0, 1, 63, 64, 65, 200, 17}) {
                std::vector<double> samples;
                std::vector<double> cutoffs;
                const bool still = frames == 200 || frames == 63;
                for (int i = 0; i < frames; ++i) {
                    samples.push_back(i % 9 == 4 ? 0.0 : value(random) - 0.5);
                    cutoffs.push_back(still ? 0.25 : value(random));
                }
                std::vector<double> filtered = samples;
                byRun.Process(filtered.data(), cutoffs.data(), 0.6, frames);
                for (std::size_t i = 0; i < samples.size(); ++i) {
                    ASSERT_EQ(filtered[i], byTick.Tick(samples[i], cutoffs[i], 0.6))
                        << left << " " << right << " " << frames << " " << i;
                }
            }
        }
    }
}

TEST(OscFilterUnit, ResponsesOfAllTypesOnBothSides) {
    for (int type = 0; type < 5; ++type) {
        for (const bool rightSide : {false, true}) {
            for (const double f : {0.01, 0.1, 0.3}) {
                OscFilterUnit unit =
                    SettledUnit(rightSide ? 0 : type, rightSide ? type : 0, rightSide ? 1.0 : 0.0);
                const Complex measured =
                    MeasuredBySine([&](double x) { return unit.Tick(x, 0.3, 0.4); }, f, 4000, 30);
                const Complex wanted = type >= 3 ? Responses::Butterworth(type == 3, 0.3, 0.4, f)
                                                 : Responses::PaulKellett(Selected(type), 0.3, 0.4, f);
                EXPECT_LT(std::abs(measured - wanted), 1e-6) << type << " " << rightSide << " " << f;
            }
        }
    }
}

TEST(OscFilterUnit, StartsOnTheFourPoleLowPassAndTheButterworthHighPass) {
    OscFilterUnit unit;
    EXPECT_EQ(unit.balance, 1.0);
    EXPECT_EQ(unit.LeftType(), 0.0);
    EXPECT_EQ(unit.RightType(), 0.75);
    OscFilterUnit chosen = Unit(0, 3, 1.0);
    for (int n = 0; n < 300; ++n)
        EXPECT_EQ(unit.Tick(Saw(n), 0.4, 0.2), chosen.Tick(Saw(n), 0.4, 0.2));
}

TEST(OscFilterUnit, TheBalanceGlidesFromLeftToRight) {
    // On a constant 1 the open low pass is at 1 and the high pass at 0, so the output shows the balance.
    OscFilterUnit unit = Unit(0, 3, 0.0);
    for (int n = 0; n < 3000; ++n)
        unit.Tick(1.0, 0.9, 0.0);
    unit.balance = 1.0;
    for (int n = 1; n <= 500; ++n)
        EXPECT_NEAR(unit.Tick(1.0, 0.9, 0.0), std::pow(0.99, n), 1e-9);
}

TEST(OscFilterUnit, AtBalanceZeroTheRightFilterRunsUnheard) {
    OscFilterUnit unit = SettledUnit(4, 3, 0.0);
    PlainFilter left(4);
    PlainFilter right(3);
    for (int n = 0; n < 500; ++n) {
        right.Process(Saw(n), 0.2, 0.5);
        EXPECT_NEAR(unit.Tick(Saw(n), 0.2, 0.5), left.Process(Saw(n), 0.2, 0.5), 1e-12);
    }
    unit.balance = 1.0;
    double balance = 0.0;
    for (int n = 500; n < 600; ++n) {
        balance = 0.99 * balance + 0.010000000000000009;
        const double a = left.Process(Saw(n), 0.2, 0.5);
        const double b = right.Process(Saw(n), 0.2, 0.5);
        EXPECT_NEAR(unit.Tick(Saw(n), 0.2, 0.5), (1.0 - balance) * a + balance * b, 1e-12);
    }
}

TEST(OscFilterUnit, TheSameTypeOnBothSidesHasTwoStates) {
    OscFilterUnit unit = SettledUnit(0, 3, 0.0);
    for (int n = 0; n < 200; ++n)
        unit.Tick(1.0, 0.05, 0.0); // only the left low pass fills
    unit.SetRightType(0.0);
    unit.balance = 1.0;
    PlainFilter full(0);
    PlainFilter empty(0);
    for (int n = 0; n < 200; ++n)
        full.Process(1.0, 0.05, 0.0);
    double balance = 0.0;
    for (int n = 0; n < 100; ++n) {
        balance = 0.99 * balance + 0.010000000000000009;
        const double a = full.Process(1.0, 0.05, 0.0);
        const double b = empty.Process(1.0, 0.05, 0.0);
        EXPECT_NEAR(unit.Tick(1.0, 0.05, 0.0), (1.0 - balance) * a + balance * b, 1e-12);
    }
}

TEST(OscFilterUnit, BandPassAndHighPassChoicesSoundTheSame) {
    OscFilterUnit highPass = Unit(1, 1, 0.5);
    OscFilterUnit bandPass = Unit(2, 2, 0.5);
    for (int n = 0; n < 1000; ++n)
        EXPECT_EQ(highPass.Tick(Saw(n), Sweep(n), 0.7), bandPass.Tick(Saw(n), Sweep(n), 0.7));
    // Even the state is shared: a switch between the two goes unheard.
    bandPass.SetLeftType(0.25);
    highPass.SetRightType(0.5);
    for (int n = 0; n < 100; ++n)
        EXPECT_EQ(highPass.Tick(Saw(n), 0.3, 0.7), bandPass.Tick(Saw(n), 0.3, 0.7));
}

TEST(OscFilterUnit, AFilterGoesOnFromItsOwnOldStateWhenChosenAgain) {
    OscFilterUnit unit = SettledUnit(0, 3, 0.0);
    PlainFilter lowPass(0);
    for (int n = 0; n < 100; ++n) {
        unit.Tick(1.0, 0.05, 0.0);
        lowPass.Process(1.0, 0.05, 0.0);
    }
    unit.SetLeftType(1.0);
    for (int n = 0; n < 50; ++n)
        unit.Tick(-1.0, 0.05, 0.0);
    unit.SetLeftType(0.0);
    EXPECT_NEAR(unit.Tick(1.0, 0.05, 0.0), lowPass.Process(1.0, 0.05, 0.0), 1e-12);
}

TEST(OscFilterUnit, ATypeOutsideTheTablePlaysTheFirst) {
    for (const double value : {-1.0, 1.5, 100.0}) {
        OscFilterUnit unit = Unit(0, 0, 0.0);
        unit.SetLeftType(value);
        OscFilterUnit first = Unit(0, 0, 0.0);
        for (int n = 0; n < 100; ++n)
            EXPECT_EQ(unit.Tick(Saw(n), 0.5, 0.5), first.Tick(Saw(n), 0.5, 0.5)) << value;
        EXPECT_EQ(unit.LeftType(), value);
    }
}

TEST(OscFilterUnit, ResetEmptiesAllFiltersAndLeavesTheBalance) {
    for (int type = 0; type < 5; ++type) {
        OscFilterUnit used = SettledUnit(type, type, 0.6);
        OscFilterUnit fresh = SettledUnit(type, type, 0.6);
        for (int n = 0; n < 500; ++n)
            used.Tick(Saw(n), 0.3, 0.5);
        used.Reset();
        for (int n = 0; n < 100; ++n)
            EXPECT_NEAR(used.Tick(Saw(n), 0.3, 0.5), fresh.Tick(Saw(n), 0.3, 0.5), 1e-14) << type;
    }
}

TEST(OscFilterUnit, ASampleRateIsOnlyStored) {
    OscFilterUnit unit = Unit(0, 4, 0.5);
    OscFilterUnit other = unit;
    other.SetSampleRate(192000.0);
    EXPECT_EQ(other.SampleRate(), 192000.0);
    for (int n = 0; n < 200; ++n)
        EXPECT_EQ(unit.Tick(Saw(n), 0.3, 0.5), other.Tick(Saw(n), 0.3, 0.5));
}

TEST(OscFilterUnit, EveryPairStaysBoundedBelowFullResonance) {
    for (int left = 0; left < 5; ++left) {
        for (int right = 0; right < 5; ++right) {
            for (const double cutoff : {0.0, 0.01, 0.5, 1.0}) {
                for (const double resonance : {0.0, 0.5, 0.99}) {
                    OscFilterUnit unit = Unit(left, right, 0.5);
                    double peak = 0.0;
                    for (int n = 0; n < 3000; ++n)
                        peak = std::max(peak, std::fabs(unit.Tick(Saw(n), cutoff, resonance)));
                    ASSERT_LT(peak, 200.0) << left << " " << right << " " << cutoff << " " << resonance;
                }
            }
        }
    }
}

TEST(OscFilterUnit, NaNPassesAndIsGoneAfterReset) {
    OscFilterUnit unit = Unit(0, 4, 0.5);
    EXPECT_TRUE(std::isnan(unit.Tick(std::nan(""), 0.5, 0.5)));
    unit.Reset();
    EXPECT_TRUE(std::isfinite(unit.Tick(1.0, 0.5, 0.5)));
}

TEST(OscFilterTypes, NamesFollowTheTable) {
    EXPECT_STREQ(OscFilterTypeOf(0.0).name, "Paul Kellett LP");
    EXPECT_STREQ(OscFilterTypeOf(0.0).shortName, "PK LP");
    EXPECT_STREQ(OscFilterTypeOf(0.25).name, "Paul Kellett HP");
    EXPECT_STREQ(OscFilterTypeOf(0.25).shortName, "PK HP");
    EXPECT_STREQ(OscFilterTypeOf(0.5).name, "Paul Kellett BP");
    EXPECT_STREQ(OscFilterTypeOf(0.5).shortName, "PK BP");
    EXPECT_STREQ(OscFilterTypeOf(0.75).name, "Butterworth HP");
    EXPECT_STREQ(OscFilterTypeOf(0.75).shortName, "BW HP");
    EXPECT_STREQ(OscFilterTypeOf(1.0).name, "Butterworth LP");
    EXPECT_STREQ(OscFilterTypeOf(1.0).shortName, "BW LP");
    EXPECT_STREQ(OscFilterTypeOf(1.2).name, "Unknown Filter");
    EXPECT_STREQ(OscFilterTypeOf(-0.5).shortName, "Unknown");
}

} // namespace
} // namespace Grimworks
