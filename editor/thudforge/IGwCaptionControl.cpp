#include "editor/thudforge/IGwCaptionControl.h"

#include "core/NumberText.h"
#include "editor/thudforge/CaptionTexts.h"

namespace Grimworks {

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
        return DecibelText(value, "-oodB");
    case Percent:
        return FixedText(value * 100.0, 3, 1) + "%";
    case Semitones:
        return FixedText(value * 24.0 - 12.0, 4, 3);
    case Bipolar:
        return FixedText(value * 2.0 - 1.0, 4, 3);
    case Centred:
        return FixedText(value - 0.5, 4, 3);
    case ScaledFine:
        return FixedText(value * scale + offset, 4, 3) + unit;
    case Scaled:
        return FixedText(value * scale + offset, 4, 1) + unit;
    default:
        return ICaptionControl::Caption();
    }
}

} // namespace Grimworks
