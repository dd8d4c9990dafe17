#pragma once

#include "editor/LICE_MemBitmap.h"
#include "editor/x11/X11Modal.h"
#include "editor/x11/X11Surface.h"
#include "editor/x11/X11TextField.h"

#include <string>
#include <vector>

namespace Grimworks {

/// What a dialog says and asks.
struct X11Question {
    struct Button {
        std::string label;
        int result = 0;
    };

    std::string title;
    std::string message;
    std::vector<Button> buttons; ///< the first is what the return key presses
    int cancelled = 0;           ///< result of the escape key, or when the window closes
    bool hasField = false;       ///< whether a text is asked for
    std::string fieldText;
    int fieldLimit = 1024; ///< characters
};

/// A message with buttons, and a text field if asked, on top of the editor's window. The window takes no
/// mouse and no keys meanwhile. Editor thread only.
class X11Dialog final : public X11Surface {
public:
    /// `overWindow` is the editor's window of this size; `waitingFor` whose handler waits.
    X11Dialog(X11Loop& itsLoop, const void* waitingFor, xcb_window_t overWindow, const IRECT& windowSize);

    /// Shows the question until it is answered; gives the result of the button.
    int Ask(const X11Question& asked);

    /// What stands in the field.
    [[nodiscard]] std::string FieldText() const { return field.Text(); }

    void OnEvent(const xcb_generic_event_t& event) override;

private:
    class Waiting;

    void LayOut();
    void Redraw();
    void DrawButton(std::size_t index);
    void OnKey(const X11KeyPress& press);
    void OnFieldKey(const X11KeyPress& press);
    void OnPress(const xcb_button_press_event_t& event);
    void OnRelease(const xcb_button_release_event_t& event);
    void Press(std::size_t button);
    void Finish(int value);
    void MoveFocus(int step);
    [[nodiscard]] int ButtonAt(int x, int y) const;
    [[nodiscard]] X11TextFieldLook FieldLook();

    const void* owner;
    xcb_window_t over;
    IRECT overSize;
    X11Question question;
    std::vector<std::string> lines;
    std::vector<IRECT> buttonRects;
    IRECT fieldRect;
    IRECT size;
    LICE_MemBitmap picture;
    X11TextField field;
    X11Modal* waiting = nullptr;
    std::size_t focused = 0;
    int pressed = -1;
    int result = 0;
};

} // namespace Grimworks
