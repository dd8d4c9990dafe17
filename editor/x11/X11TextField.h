#pragma once

#include "editor/LICE_IBitmap.h"
#include "editor/Types.h"
#include "editor/x11/X11Keyboard.h"

#include <functional>
#include <string>
#include <string_view>

namespace Grimworks {

class LICE_IFont;

/// A line of text that is edited: characters, caret and selection. Knows nothing of windows.
class X11TextField {
public:
    /// What a key did.
    enum class Outcome { Nothing, Changed, Commit, Cancel, Paste };

    /// Whether a character may be typed.
    using Filter = std::function<bool(char32_t)>;

    /// Starts with a text, which stays as it is, all of it selected. What is typed then goes through the
    /// filter, and is refused where there are `mostCharacters` already.
    void Start(std::string_view text, int mostCharacters, Filter typed = {});

    /// The text in UTF-8.
    [[nodiscard]] std::string Text() const;

    Outcome OnKey(const X11KeyPress& press);

    /// Puts characters in place of the selection; line ends and what the filter refuses is left out, and so
    /// is what is too long.
    void Insert(std::u32string_view characters);

    /// Puts the caret before a character; with `select` the selection reaches from where it began.
    void MoveCaret(int place, bool select);
    void SelectAll();

    [[nodiscard]] int Caret() const { return caret; }
    [[nodiscard]] int SelectionBegin() const { return caret < anchor ? caret : anchor; }
    [[nodiscard]] int SelectionEnd() const { return caret < anchor ? anchor : caret; }
    [[nodiscard]] int Length() const { return static_cast<int>(characters.size()); }

    /// The text before a place, in UTF-8.
    [[nodiscard]] std::string Before(int place) const;

private:
    Outcome OnControlKey(const X11KeyPress& press);
    void DeleteSelection();
    void DeleteTowards(int place);

    std::u32string characters;
    int caret = 0;
    int anchor = 0;
    int limit = 0;
    Filter filter;
};

/// How a text field looks.
struct X11TextFieldLook {
    LICE_IFont* font = nullptr; ///< not owned; without one only the ground is drawn
    LICE_pixel ground = 0;
    LICE_pixel ink = 0;
    int align = IText::AlignNear;
    int margin = 3;
};

/// Where the text begins, so that the caret is in the rectangle.
[[nodiscard]] int X11TextFieldLeft(const X11TextField& field, const X11TextFieldLook& look,
                                   const IRECT& rect);

/// Draws the field into the rectangle, the selection inverted.
void DrawX11TextField(LICE_IBitmap& bitmap, const X11TextField& field, const X11TextFieldLook& look,
                      const IRECT& rect, bool caretShown);

/// The place in the text that is nearest to a pixel column.
[[nodiscard]] int X11TextFieldPlaceAt(const X11TextField& field, const X11TextFieldLook& look,
                                      const IRECT& rect, int x);

} // namespace Grimworks
