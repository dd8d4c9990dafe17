#pragma once

#include "editor/ITextControl.h"

#include <string>
#include <string_view>

namespace Grimworks {

/// A parameter's value in the form that suits its knob.
class IGwCaptionControl : public ICaptionControl {
public:
    /// What is made of the value v of 0..1.
    enum DisplayMode : int {
        ParameterText = 0, ///< the parameter's own text
        Decibels = 1,      ///< "-6.0dB": v as a gain, "-oodB" for 0
        Percent = 2,       ///< "50.0%"
        Semitones = 3,     ///< "-12.000" to "12.000"
        Bipolar = 4,       ///< "-1.000" to "1.000"
        Centred = 5,       ///< "-0.500" to "0.500"
        ScaledFine = 6,    ///< v * scale + offset with three decimals and a unit
        Scaled = 7         ///< the same with one decimal
    };

    /// A mode outside DisplayMode shows the parameter's own text.
    IGwCaptionControl(IPlugBase* plugBase, const IRECT& rectangle, int parameter, const IText& style,
                      int mode = ParameterText, bool withLabel = false);

    /// For the scaled modes.
    void SetScale(double factor, double added, std::string_view unitText);

protected:
    [[nodiscard]] std::string Caption() const override;

private:
    int displayMode;
    double scale = 1.0;
    double offset = 0.0;
    std::string unit;
};

} // namespace Grimworks
