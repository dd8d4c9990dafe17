#include "editor/thudforge/IGwCaptionControl.h"

#include "core/NumberText.h"

#include <cmath>
#include <cstddef>

namespace Grimworks {

namespace {

/// A number with a point in every locale, filled up with blanks on the left.
std::string Fixed(double number, std::size_t width, int decimals) {
    std::string text;
    AppendFixed(text, number, decimals);
    if (text.size() < width) text.insert(0, width - text.size(), ' ');
    return text;
}

std::string DecibelText(double gain) {
    return gain <= 0.0 ? "-oodB" : Fixed(20.0 * std::log10(gain), 3, 1) + "dB";
}

} // namespace

IGwCaptionControl::IGwCaptionControl(IPlugBase* plugBase, const IRECT& rectangle, int parameter,
                                     const IText& style, int mode, bool withLabel)
    : ICaptionControl(plugBase, rectangle, parameter, style, withLabel), displayMode(mode) {}

void IGwCaptionControl::SetScale(double factor, double added, std::string_view unitText) {
    scale = factor;
    offset = added;
    unit = unitText;
    SetDirty(false);
}

std::string IGwCaptionControl::Caption() const {
    switch (displayMode) {
    case Decibels:
        return DecibelText(value);
    case Percent:
        return Fixed(value * 100.0, 3, 1) + "%";
    case Semitones:
        return Fixed(value * 24.0 - 12.0, 4, 3);
    case Bipolar:
        return Fixed(value * 2.0 - 1.0, 4, 3);
    case Centred:
        return Fixed(value - 0.5, 4, 3);
    case ScaledFine:
        return Fixed(value * scale + offset, 4, 3) + unit;
    case Scaled:
        return Fixed(value * scale + offset, 4, 1) + unit;
    default:
        return ICaptionControl::Caption();
    }
}

} // namespace Grimworks
