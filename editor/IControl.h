#pragma once

#include "editor/Types.h"

#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

class IGraphics;
class IParam;
class IPlugBase;
class ITextControl;

/// Root of everything on the editor's window: a rectangle, at most one parameter, optional auxiliary
/// parameters, and a value of 0..1. Belongs to the IGraphics that it is attached to. Editor thread only.
class IControl {
public:
    /// A second parameter that a control shows.
    struct AuxParam {
        double value = 0.0;
        int paramIdx = -1;
    };

    /// `paramIdx` -1 stands for no parameter.
    IControl(IPlugBase* plugBase, const IRECT& rectangle, int parameter = -1,
             IChannelBlend blending = IChannelBlend());
    virtual ~IControl() = default;
    IControl(const IControl&) = delete;
    IControl& operator=(const IControl&) = delete;

    /// The right button asks for a value, see PromptUserInput.
    virtual void OnMouseDown(int x, int y, const IMouseMod& mod);
    virtual void OnMouseUp(int x, int y, const IMouseMod& mod);
    virtual void OnMouseDrag(int x, int y, int dX, int dY, const IMouseMod& mod);
    /// Back to the default value, the first one that the plug-in sent.
    virtual void OnMouseDblClick(int x, int y, const IMouseMod& mod);
    /// `d` in notches, positive away from the user.
    virtual void OnMouseWheel(int x, int y, const IMouseMod& mod, int d);
    /// True if the key was used; `key` is a KeyCode of IGraphics.h.
    virtual bool OnKeyDown(int x, int y, int key);
    virtual void OnMouseOver(int x, int y, const IMouseMod& mod);
    virtual void OnMouseOut();

    /// Draws the whole control; IGraphics clips to what is being redrawn. The result is what the last draw
    /// operation gave.
    virtual bool Draw(IGraphics& graphics) = 0;

    /// The plug-in tells a value. The first one becomes the default too.
    virtual void SetValueFromPlug(double newValue);
    /// The user entered a value: it goes to the plug-in.
    virtual void SetValueFromUserInput(double newValue);
    /// The user entered a text for a control without a parameter.
    virtual void TextFromTextEntry(std::string_view entered);

    virtual void Hide(bool on);
    /// A grayed control is drawn at a quarter of its weight and takes no mouse.
    virtual void GrayOut(bool on);
    [[nodiscard]] virtual bool IsHit(int x, int y) const;

    /// Limits the value, asks for a redraw, gives the value to the plug-in if told so, and brings the
    /// attached value and name displays up to date.
    virtual void SetDirty(bool pushToPlug = true);
    /// Done after drawing: what asked for a redraw meanwhile stays dirty for the next one.
    virtual void SetClean();
    /// Asked at each tick, also of hidden controls; may refresh the control.
    virtual bool IsDirty();
    /// Called at each tick.
    virtual void OnGUIIdle();
    /// A new value of an auxiliary parameter, by its place in AuxParams(); a bad place does nothing.
    virtual void SetAuxParamValueFromPlug(int index, double newValue);

    /// Asks the user for the parameter's value, by menu or text entry. Nothing without a parameter or with
    /// the prompt disabled (as it is until EnablePrompt).
    void PromptUserInput();

    void AddAuxParam(int parameter) { auxParams.push_back({0.0, parameter}); }
    [[nodiscard]] const std::vector<AuxParam>& AuxParams() const { return auxParams; }

    [[nodiscard]] int ParamIdx() const { return paramIdx; }
    [[nodiscard]] double Value() const { return value; }
    [[nodiscard]] double DefaultValue() const { return defaultValue; } ///< below 0: none yet
    [[nodiscard]] const IRECT& Rect() const { return rect; }
    [[nodiscard]] const IRECT& TargetRect() const { return targetRect; }
    void SetTargetRect(const IRECT& target) { targetRect = target; }
    [[nodiscard]] bool IsHidden() const { return hide; }
    [[nodiscard]] bool IsGrayed() const { return grayed; }
    [[nodiscard]] bool DblAsSingleClick() const { return dblAsSingleClick; }
    [[nodiscard]] bool MouseOverWhenDisabled() const { return mouseOverWhenDisabled; }
    void SetMouseOverWhenDisabled(bool on) { mouseOverWhenDisabled = on; }
    void EnablePrompt(bool on) { disablePrompt = !on; }
    void Clamp(double lo, double hi);
    [[nodiscard]] const IText& Text() const { return text; }
    void SetText(const IText& newText) { text = newText; }
    [[nodiscard]] int TextEntryLength() const { return textEntryLength; }
    void SetTextEntryLength(int characters) { textEntryLength = characters; }
    [[nodiscard]] const std::string& Tooltip() const { return tooltip; }
    void SetTooltip(std::string_view shown) { tooltip = shown; }
    [[nodiscard]] const IChannelBlend& Blend() const { return blend; }

    /// Text controls that are to show the parameter's display text and its name; not owned, may be null.
    void SetValueDisplayControl(ITextControl* control) { valueDisplayControl = control; }
    void SetNameDisplayControl(ITextControl* control) { nameDisplayControl = control; }

    /// Set when the control is attached.
    void SetGraphics(IGraphics* owner) { graphics = owner; }
    [[nodiscard]] IGraphics* Graphics() const { return graphics; }

protected:
    /// The text style as it is drawn: a grayed control's text is a quarter as strong.
    [[nodiscard]] IText ShownText() const;

    /// A parameter's display text, a blank and its unit.
    [[nodiscard]] static std::string TextWithLabel(const IParam& param, double normalized);

    int textEntryLength = 7;
    IText text;
    IPlugBase* plug;               ///< not owned
    IGraphics* graphics = nullptr; ///< not owned
    IRECT rect;
    IRECT targetRect;
    int paramIdx;
    std::vector<AuxParam> auxParams;
    double value = 0.0;
    double defaultValue = -1.0;
    double clampLo = 0.0;
    double clampHi = 1.0;
    bool dirty = true;
    bool hide = false;
    bool grayed = false;
    bool redraw = false;
    bool disablePrompt = true;
    bool dblAsSingleClick = false;
    bool mouseOverWhenDisabled = false;
    IChannelBlend blend;
    ITextControl* valueDisplayControl = nullptr;
    ITextControl* nameDisplayControl = nullptr;
    std::string tooltip;

private:
    void TellSiblings();
    void RefreshDisplays();
};

/// Frame, counted from 1, that shows a value of 0..1 in a strip.
[[nodiscard]] int FrameOfValue(const IBitmap& bitmap, double value);

} // namespace Grimworks
