#pragma once

#include "dsp/ParamInfo.h"

#include <complex>

namespace Dsp {

/// The shape of a filter's response.
enum class Kind { LowPass, HighPass, BandPass, BandStop, LowShelf, BandShelf, HighShelf };

/// A filter that describes its own parameters. Parameters are set under the owner's lock or on the audio
/// thread; process belongs to the audio thread. Frequencies at or above half the sample rate are taken just
/// below it.
class Filter {
public:
    virtual ~Filter() = default;

    [[nodiscard]] virtual Kind getKind() const = 0;
    [[nodiscard]] virtual const char* getName() const = 0;
    [[nodiscard]] virtual int getNumParams() const = 0;

    /// Description of one parameter. An index outside the list throws std::logic_error.
    [[nodiscard]] virtual ParamInfo getParamInfo(int index) const = 0;

    /// Highest order that the design offers.
    [[nodiscard]] virtual int getMaxOrder() const = 0;

    /// Complex response of the design last set, at a frequency as a share of the sample rate (0..0.5).
    [[nodiscard]] virtual std::complex<double> response(double normalizedFrequency) const = 0;

    [[nodiscard]] virtual int getNumChannels() const = 0;

    /// Silences all states and keeps coefficients and parameters.
    virtual void reset() = 0;

    /// Filters `frames` samples of each channel in place; `channels` holds one pointer a channel.
    virtual void process(int frames, double* const* channels) = 0;

    /// Designs the stored parameters at once, without a sweep.
    virtual void redesign() = 0;

    /// Takes a whole set of native values. An order above the maximum throws std::logic_error and changes
    /// nothing.
    virtual void setParams(const Params& target) = 0;

    /// Length of later sweeps in samples; filters that do not sweep ignore it.
    virtual void setTransition(int samples) = 0;

    [[nodiscard]] const Params& getParams() const { return params; }

    /// Index of the parameter with this id, looked for from the last to the first; -1 when there is none.
    [[nodiscard]] int findParam(int id) const;

    /// Writes one native value without a redesign: it is heard from the next setParams on. A missing id does
    /// nothing.
    void setParam(int id, double value);

    /// Sets one native value and designs with it, as setParams does. A missing id only starts the sweep anew.
    void changeParam(int id, double value);

    /// Native value of a control 0..1 by the mapping of the parameter with this id; 0 when there is none.
    [[nodiscard]] double toNativeValue(int id, double control) const;

    /// Every parameter's default, in native values.
    [[nodiscard]] Params getDefaultParams() const;

protected:
    Filter() = default;
    Filter(const Filter&) = default;
    Filter& operator=(const Filter&) = default;

    Params params;
};

} // namespace Dsp
