#pragma once

#include "dsp/FilterDesign.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Dsp {

/// A filter whose parameters sweep to a new set over a number of samples. The path is the straight line in
/// native units (hertz, decibels), with a full design at every sample and the state kept throughout. The
/// first four parameters take part; the others jump at the end. The first set of parameters acts at once.
///
/// The design of the target is made on the thread that calls setParams; the sweep uses a second design of its
/// own on the audio thread.
template <class Design, int Channels, class State>
class SmoothedFilterDesign final : public FilterDesign<Design, Channels, State> {
public:
    SmoothedFilterDesign() : current(this->params) {}

    void setParams(const Params& target) override {
        this->CheckOrder(target);
        if (remainingSamples < 0) {
            remainingSamples = 0;
            current = target;
        } else {
            remainingSamples = std::max(0, transitionSamples);
            if (remainingSamples == 0) current = target;
        }
        this->params = target;
        this->design.setParams(target);
    }

    void setTransition(int samples) override { transitionSamples = samples; }

    /// Designs the stored parameters and ends a sweep that is under way.
    void redesign() override {
        remainingSamples = std::min(remainingSamples, 0);
        current = this->params;
        this->design.setParams(current);
    }

    void process(int frames, double* const* channels) override {
        const int count = std::max(0, std::min(frames, remainingSamples));
        if (count > 0) Sweep(count, channels);
        if (count < frames) this->Run(this->design.cascade, count, frames, channels);
        this->DropNonFinite();
    }

    /// Samples that the present sweep still takes; -1 before the first set of parameters.
    [[nodiscard]] int getRemainingSamples() const { return remainingSamples; }

    /// Where the sweep stands.
    [[nodiscard]] const Params& getCurrentParams() const { return current; }

private:
    static constexpr int kSweptParams = 4;

    void Sweep(int count, double* const* channels) {
        std::array<double, kSweptParams> delta{};
        bool still = true;
        for (std::size_t k = 0; k < kSweptParams; ++k) {
            delta[k] = (this->params.value[k] - current.value[k]) / remainingSamples;
            still = still && delta[k] == 0.0;
        }
        if (still) {
            swept.setParams(current); // every sample would give this same design
            this->Run(swept.cascade, 0, count, channels);
        } else {
            Move(delta, count, channels);
        }
        remainingSamples -= count;
        if (remainingSamples == 0) current = this->params;
    }

    void Move(const std::array<double, kSweptParams>& delta, int count, double* const* channels) {
        for (int i = 0; i < count; ++i) {
            for (std::size_t k = 0; k < kSweptParams; ++k)
                current.value[k] += delta[k];
            swept.setParams(current);
            this->Run(swept.cascade, i, i + 1, channels);
        }
    }

    Design swept;
    Params current;
    int transitionSamples = 512;
    int remainingSamples = -1;
};

} // namespace Dsp
