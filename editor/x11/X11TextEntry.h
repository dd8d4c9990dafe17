#pragma once

#include "editor/LICE_IFont.h"
#include "editor/LICE_MemBitmap.h"
#include "editor/TextEntry.h"
#include "editor/x11/X11Surface.h"
#include "editor/x11/X11TextField.h"

#include <memory>
#include <string>

namespace Grimworks {

class IControl;
class IParam;

/// The field in which the value of a control is typed: a child of the editor's window, above the picture. It
/// only notes how it ended; the window's clock does what follows. Editor thread only.
class X11TextEntry final : public X11Surface {
public:
    /// `itsParam` may be null, then everything may be typed. Control and parameter are not owned.
    X11TextEntry(X11Loop& itsLoop, IControl& itsControl, const IText& text, const IParam* itsParam);

    /// Shows the field with a text, all of it selected, and takes the keyboard. False without a window.
    bool Open(xcb_window_t parent, const IRECT& rect, const std::string& string);

    void OnEvent(const xcb_generic_event_t& event) override;
    void OnKey(const X11KeyPress& press);

    /// One tick: the caret blinks.
    void Tick();

    /// Ends the entry at the next tick.
    void Commit() { state = TextEntryState::Commit; }
    void Cancel() { state = TextEntryState::Cancel; }

    [[nodiscard]] TextEntryState State() const { return state; }
    [[nodiscard]] IControl& Control() const { return control; }
    [[nodiscard]] const IParam* Param() const { return param; }
    [[nodiscard]] std::string EnteredText() const { return field.Text(); }

private:
    void OnFocus(bool got, std::uint8_t mode, std::uint8_t detail);
    void OnMouse(int x, bool select);
    void Redraw();

    IControl& control;
    const IParam* param;
    std::unique_ptr<LICE_IFont> font;
    X11TextFieldLook look;
    X11TextField field;
    LICE_MemBitmap picture;
    TextEntryState state = TextEntryState::None;
    int ticks = 0;
    bool selecting = false;
};

} // namespace Grimworks
