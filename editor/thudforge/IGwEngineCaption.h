#pragma once

#include "editor/ITextControl.h"

#include <string>
#include <string_view>

namespace Grimworks {

/// A caption whose text comes from the engine, by SetTextFromPlug: what the parameter's value means there. A
/// click asks for another value.
class IGwEngineCaption final : public ICaptionControl {
public:
    IGwEngineCaption(IPlugBase* plugBase, const IRECT& rectangle, int parameter, const IText& style,
                     std::string_view first)
        : ICaptionControl(plugBase, rectangle, parameter, style) {
        string = first;
    }

protected:
    [[nodiscard]] std::string Caption() const override { return string; }
};

} // namespace Grimworks
