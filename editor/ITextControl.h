#pragma once

#include "editor/IControl.h"

#include <string>
#include <string_view>

namespace Grimworks {

/// A line of text.
class ITextControl : public IControl {
public:
    ITextControl(IPlugBase* plugBase, const IRECT& rectangle, const IText& style,
                 std::string_view shown = {});

    /// Shows another text; the same one again costs nothing.
    void SetTextFromPlug(std::string_view shown);

    /// True with nothing to draw.
    bool Draw(IGraphics& canvas) override;

    [[nodiscard]] const std::string& String() const { return string; }

protected:
    std::string string;
};

/// A parameter's value as text. A click asks for another value, where that is enabled.
class ICaptionControl : public ITextControl {
public:
    /// `withLabel`: the unit stands behind the value.
    ICaptionControl(IPlugBase* plugBase, const IRECT& rectangle, int parameter, const IText& style,
                    bool withLabel = false);

    void OnMouseDown(int x, int y, const IMouseMod& mod) override;
    void OnMouseDblClick(int x, int y, const IMouseMod& mod) override;
    bool Draw(IGraphics& canvas) override;

protected:
    /// What is to be shown for the present value; empty without a parameter.
    [[nodiscard]] virtual std::string Caption() const;

    bool showParamLabel;
};

} // namespace Grimworks
