#include "voice/OscFilterUnit.h"

#include "core/Choice.h"

#include <algorithm>

namespace Grimworks {

namespace {

constexpr int kRun = 64; ///< samples whose coefficients are worked out together

/// The coefficients of a run of samples, one array each, as a vector unit likes them. Only the arrays that
/// the chosen filters need are filled.
struct RunTuning {
    std::array<double, kRun> k;
    std::array<double, kRun> feedback;
    struct Butterworth {
        std::array<double, kRun> d;
        std::array<double, kRun> a1;
        std::array<double, kRun> a2;
    };
    std::array<double, kRun> tangent;
    std::array<double, kRun> cotangent;
    Butterworth highPass;
    Butterworth lowPass;
};

void TunePaulKellett(RunTuning& run, const double* cutoffs, double resonance, int frames) {
    for (int i = 0; i < frames; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const PaulKellettTuning tuning = PaulKellettTuning::Of(cutoffs[i], resonance);
        run.k[at] = tuning.k;
        run.feedback[at] = tuning.feedback;
    }
}

void FindFrequencies(RunTuning& run, const double* cutoffs, int frames) {
    for (int i = 0; i < frames; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const ButterworthFrequency frequency = ButterworthFrequencyOf(cutoffs[i]);
        run.tangent[at] = frequency.tangent;
        run.cotangent[at] = frequency.cotangent;
    }
}

template <class Design>
void TuneButterworth(RunTuning::Butterworth& butterworth, const RunTuning& run, double resonance,
                     int frames) {
    for (int i = 0; i < frames; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const ButterworthCoefficients c = Design::Of({run.tangent[at], run.cotangent[at]}, resonance);
        butterworth.d[at] = c.d;
        butterworth.a1[at] = c.a1;
        butterworth.a2[at] = c.a2;
    }
}

void TuneMoving(RunTuning& run, int left, int right, const double* cutoffs, double resonance, int frames) {
    const auto chosen = [=](int entry) { return left == entry || right == entry; };
    if (left < 3 || right < 3) TunePaulKellett(run, cutoffs, resonance, frames);
    if (left >= 3 || right >= 3) FindFrequencies(run, cutoffs, frames);
    if (chosen(3)) TuneButterworth<ButterworthHighPassDesign>(run.highPass, run, resonance, frames);
    if (chosen(4)) TuneButterworth<ButterworthLowPassDesign>(run.lowPass, run, resonance, frames);
}

/// The coefficients that these two bank entries need for a run. A cutoff that stands still is worked out
/// once.
void TuneRun(RunTuning& run, int left, int right, const double* cutoffs, double resonance, int frames) {
    const bool still = std::all_of(cutoffs, cutoffs + frames, [=](double c) { return c == cutoffs[0]; });
    TuneMoving(run, left, right, cutoffs, resonance, still ? 1 : frames);
    if (!still) return;
    const auto repeat = [=](auto&... arrays) {
        (std::fill_n(arrays.begin() + 1, frames - 1, arrays[0]), ...);
    };
    if (left < 3 || right < 3) repeat(run.k, run.feedback);
    if (left == 3 || right == 3) repeat(run.highPass.d, run.highPass.a1, run.highPass.a2);
    if (left == 4 || right == 4) repeat(run.lowPass.d, run.lowPass.a1, run.lowPass.a2);
}

/// A filter at work on a run: a copy of its state, which a compiler can keep in registers, and its
/// coefficients.
struct PaulKellettLane {
    PaulKellettState state;
    std::uint32_t mode;
    const double* k;
    const double* feedback;

    double Step(double input, int i) {
        return GwFilterPaulKellett::Step(state, mode, input, {k[i], feedback[i]});
    }
};

template <class Filter>
struct ButterworthLane {
    ButterworthState<double> state;
    const double* d;
    const double* a1;
    const double* a2;

    double Step(double input, int i) { return Filter::Step(state, input, {d[i], a1[i], a2[i]}); }
};

PaulKellettLane LaneOf(const GwFilterPaulKellett& filter, const RunTuning& run) {
    return {filter.State(), filter.Mode(), run.k.data(), run.feedback.data()};
}

template <class Filter>
ButterworthLane<Filter> LaneOf(const Filter& filter, const RunTuning::Butterworth& run) {
    return {filter.State(), run.d.data(), run.a1.data(), run.a2.data()};
}

/// Calls `use` with a bank entry's filter and its coefficients.
template <class Bank, class Use>
void WithFilter(Bank& bank, int entry, const RunTuning& run, const Use& use) {
    switch (entry) {
    case 1:
        return use(bank.highPass, run);
    case 2:
        return use(bank.bandPass, run);
    case 3:
        return use(bank.butterworthHighPass, run.highPass);
    case 4:
        return use(bank.butterworthLowPass, run.lowPass);
    default:
        return use(bank.lowPass, run);
    }
}

} // namespace

const OscFilterType& OscFilterTypeOf(double value) {
    static constexpr OscFilterType kUnknown{"Unknown Filter", "Unknown", 0};
    const int index = Choice(value, static_cast<int>(kOscFilterTypes.size()) - 1);
    if (index < 0 || index >= static_cast<int>(kOscFilterTypes.size())) return kUnknown;
    return kOscFilterTypes[static_cast<std::size_t>(index)];
}

void OscFilterUnit::SetLeftType(double value) {
    leftType = value;
    left = OscFilterTypeOf(value).bankEntry;
}

void OscFilterUnit::SetRightType(double value) {
    rightType = value;
    right = OscFilterTypeOf(value).bankEntry;
}

void OscFilterUnit::Process(double* samples, const double* cutoffs, double resonance, int frames) {
    RunTuning run;
    for (int done = 0; done < frames; done += kRun) {
        const int n = std::min(kRun, frames - done);
        TuneRun(run, left, right, cutoffs + done, resonance, n);
        WithFilter(leftBank, left, run, [&](auto& leftFilter, const auto& leftTuning) {
            WithFilter(rightBank, right, run, [&](auto& rightFilter, const auto& rightTuning) {
                auto leftLane = LaneOf(leftFilter, leftTuning);
                auto rightLane = LaneOf(rightFilter, rightTuning);
                Run(leftLane, rightLane, samples + done, n);
                leftFilter.SetState(leftLane.state);
                rightFilter.SetState(rightLane.state);
            });
        });
    }
}

template <class Left, class Right>
void OscFilterUnit::Run(Left& leftLane, Right& rightLane, double* samples, int frames) {
    Left l = leftLane;
    Right r = rightLane;
    double state = balanceState;
    for (int i = 0; i < frames; ++i) {
        const double x = samples[i];
        const double a = l.Step(x, i);
        const double b = r.Step(x, i);
        samples[i] = Balanced(state, a, b);
    }
    balanceState = state;
    leftLane = l;
    rightLane = r;
}

void OscFilterUnit::Reset() {
    for (Bank* bank : {&leftBank, &rightBank}) {
        for (IGwFilter* filter : bank->All())
            filter->Reset();
    }
}

void OscFilterUnit::SetSampleRate(double rate) {
    for (Bank* bank : {&leftBank, &rightBank}) {
        for (IGwFilter* filter : bank->All())
            filter->SetSampleRate(rate);
    }
    AudioProcessingUnit::SetSampleRate(rate);
}

} // namespace Grimworks
