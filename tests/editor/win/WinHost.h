#pragma once

#include "editor/Types.h"
#include "editor/win/WinApi.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

/// Runs the thread's messages until the condition holds; false if it does not within a time that is long even
/// for a busy machine.
[[nodiscard]] bool PumpUntil(const std::function<bool()>& condition);

/// A host's window: a real top-level one with its place for an editor, which writes down what comes to it.
class WinHost {
public:
    /// The inside begins at x, y of the screen.
    WinHost(int x, int y, int width, int height);
    ~WinHost();
    WinHost(const WinHost&) = delete;
    WinHost& operator=(const WinHost&) = delete;

    [[nodiscard]] HWND Window() const { return window; }
    void Destroy();

    /// The child windows in it that are editors.
    [[nodiscard]] std::vector<HWND> Editors() const;

    std::vector<std::string> keys; ///< "down 65" and so on
    std::function<void()> onKey;   ///< called when a key is pressed that comes to it
    int closes = 0;                ///< times that it was asked to close
    std::function<void()>
        onTick; ///< called 50 times a second while messages run, behind menus and dialogs too

private:
    static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window = nullptr;
};

// What a user does, through the system's own input queue. Positions are of the window's inside.

void MoveMouse(HWND window, int x, int y);
void PressButton(DWORD events);
void Wheel(int delta);
void PressKey(WORD key);
void HoldKey(WORD key, bool down);
void Type(std::string_view characters);

/// Left button down and up at a place.
void Click(HWND window, int x, int y);

/// A window of this process that is shown now and has the class, null if there is none.
[[nodiscard]] HWND FindShown(const char* className);

/// The window as the screen has it, alpha 0; empty if it cannot be read.
[[nodiscard]] std::vector<std::uint32_t> Grab(HWND window, int width, int height);

} // namespace Grimworks
