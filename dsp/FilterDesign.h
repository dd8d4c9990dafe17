#pragma once

#include "dsp/Cascade.h"
#include "dsp/DirectForm.h"
#include "dsp/Filter.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <stdexcept>

namespace Dsp {

/// What a filter is apart from its audio state: the parameters and the `Design` that turns them into
/// sections.
template <class Design>
class FilterDesignBase : public Filter {
public:
    FilterDesignBase() {
        for (std::size_t i = 0; i < Design::kParams.size(); ++i)
            params.value[i] = Design::kParams[i].defaultValue;
        design.setParams(params);
    }

    [[nodiscard]] Kind getKind() const override { return Design::kKind; }
    [[nodiscard]] const char* getName() const override { return Design::kName; }
    [[nodiscard]] int getNumParams() const override { return static_cast<int>(Design::kParams.size()); }

    [[nodiscard]] ParamInfo getParamInfo(int index) const override {
        if (index < 0 || index >= getNumParams()) throw std::logic_error("invalid usage of ParamInfo");
        return Design::kParams[static_cast<std::size_t>(index)];
    }

    [[nodiscard]] int getMaxOrder() const override { return Design::kMaxOrder; }

    [[nodiscard]] std::complex<double> response(double normalizedFrequency) const override {
        return design.cascade.response(normalizedFrequency);
    }

    void redesign() override { design.setParams(params); }

    void setParams(const Params& target) override {
        CheckOrder(target);
        params = target;
        design.setParams(params);
    }

    void setTransition(int /*samples*/) override {}

    /// The sections last designed.
    [[nodiscard]] const auto& getCascade() const { return design.cascade; }

protected:
    static void CheckOrder(const Params& target) {
        for (std::size_t i = 0; i < Design::kParams.size(); ++i) {
            if (Design::kParams[i].id == ParamId::kOrder && std::trunc(target.value[i]) > Design::kMaxOrder)
                throw std::logic_error("order is above the maximum of the design");
        }
    }

    Design design;
};

/// A design with the audio state of `Channels` channels in the given direct form. A new set of parameters
/// acts at once.
template <class Design, int Channels, class State>
class FilterDesign : public FilterDesignBase<Design> {
public:
    [[nodiscard]] int getNumChannels() const override { return Channels; }

    void reset() override {
        for (Channel& channel : states)
            channel.stages.fill(State{});
    }

    void process(int frames, double* const* channels) override {
        Run(this->design.cascade, 0, frames, channels);
        DropNonFinite();
    }

protected:
    /// Filters the frames from..to-1. Section after section over the whole stretch gives the same numbers as
    /// sample after sample, and the channels advance side by side.
    template <class SectionCascade>
    void Run(const SectionCascade& cascade, int from, int to, double* const* channels) {
        for (int stage = 0; stage < cascade.numStages; ++stage)
            RunStage(cascade[stage], stage, from, to, channels);
    }

    /// A state that has become infinite or not a number would never recover: that channel starts anew.
    void DropNonFinite() {
        for (Channel& channel : states) {
            bool finite = true;
            for (const State& stage : channel.stages)
                finite = finite && stage.isFinite();
            if (!finite) channel.stages.fill(State{});
        }
    }

private:
    struct Channel {
        std::array<State, Design::kMaxStages> stages;
        double vsa = kAntiDenormal;
    };

    void RunStage(const Stage& source, int stage, int from, int to, double* const* channels) {
        const auto slot = static_cast<std::size_t>(stage);
        const Stage section = source;
        std::array<State, Channels> local;
        std::array<double, Channels> vsa;
        std::array<double*, Channels> samples;
        for (std::size_t c = 0; c < Channels; ++c) {
            local[c] = states[c].stages[slot];
            vsa[c] = states[c].vsa;
            samples[c] = channels[c];
        }
        if (stage == 0) {
            for (int i = from; i < to; ++i) {
                for (std::size_t c = Channels; c-- > 0;) {
                    vsa[c] = -vsa[c];
                    samples[c][i] = local[c].process(samples[c][i], section, vsa[c]);
                }
            }
        } else {
            for (int i = from; i < to; ++i) {
                for (std::size_t c = Channels; c-- > 0;)
                    samples[c][i] = local[c].process(samples[c][i], section);
            }
        }
        for (std::size_t c = 0; c < Channels; ++c) {
            states[c].stages[slot] = local[c];
            states[c].vsa = vsa[c];
        }
    }

    std::array<Channel, Channels> states;
};

} // namespace Dsp
