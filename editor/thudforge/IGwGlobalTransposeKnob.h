#pragma once

#include "editor/IKnobControl.h"

namespace Grimworks {

/// A knob whose double click goes on to the next quarter of its range, and from the end back to 0: half
/// octaves of the transpose.
class IGwGlobalTransposeKnob : public IKnobMultiControl {
public:
    using IKnobMultiControl::IKnobMultiControl;

    void OnMouseDblClick(int x, int y, const IMouseMod& mod) override;
};

} // namespace Grimworks
