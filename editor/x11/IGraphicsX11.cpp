#include "editor/x11/IGraphicsX11.h"

#include <chrono>
#include <utility>

namespace Grimworks {

namespace {

/// How an open call went, for a caller that may no longer wait.
struct OpenCall {
    std::atomic<bool> opened{false};
};

} // namespace

std::unique_ptr<IGraphics> MakeGraphics(IPlugBase& plug, int width, int height, int fps) {
    return std::make_unique<IGraphicsX11>(plug, width, height, fps);
}

IGraphicsX11::IGraphicsX11(IPlugBase& plugBase, int windowWidth, int windowHeight, int framesPerSecond)
    : IGraphics(plugBase, windowWidth, windowHeight, framesPerSecond), gate(std::make_shared<X11Gate>()) {}

IGraphicsX11::~IGraphicsX11() {
    if (PrepareToGo()) return;
    // Whoever owns this was told to keep it. The window is left to the editor thread, which finds the gate
    // shut from its next visit on.
    gate->Shut(X11Thread::kPatience);
    static_cast<void>(window.release());
}

bool IGraphicsX11::OpenWindow(void* parent) {
    const auto parentWindow = static_cast<xcb_window_t>(reinterpret_cast<std::uintptr_t>(parent));
    if (parentWindow == XCB_NONE) return false;
    const std::lock_guard guard(hostCalls);
    if (!CloseIfOpen()) return false;
    thread = X11Thread::Acquire();
    if (thread == nullptr) return false;
    const auto call = std::make_shared<OpenCall>();
    const auto open = [this, call, parentWindow, itsGate = gate, &loop = thread->Loop()] {
        const X11Gate::Visit visit(*itsGate);
        if (visit) MakeWindow(loop, parentWindow);
        call->opened = visit && window != nullptr;
        return true;
    };
    const bool inTime = thread->IsThisThread() ? open() : thread->Call(open);
    if (inTime && call->opened) return true;
    CloseIfOpen();
    return false;
}

void IGraphicsX11::MakeWindow(X11Loop& loop, xcb_window_t parent) {
    window = std::make_unique<X11Window>(loop, *this, gate, windowId);
    if (!window->Open(parent)) window.reset();
}

void IGraphicsX11::CloseWindow() {
    const std::lock_guard guard(hostCalls);
    CloseIfOpen();
}

bool IGraphicsX11::PrepareToGo() {
    const std::lock_guard guard(hostCalls);
    return CloseIfOpen();
}

bool IGraphicsX11::CloseIfOpen() {
    if (thread == nullptr) return true;
    const auto close = [this, itsGate = gate] {
        if (itsGate->IsShut()) return true;
        return DropWindow();
    };
    if (thread->IsThisThread()) {
        // A call from within a handler of this or another editor: what is on the stack ends first.
        if (!close()) {
            thread->Post(close);
            return false;
        }
    } else if (!thread->Call(close)) {
        return false;
    }
    thread.reset();
    return true;
}

bool IGraphicsX11::DropWindow() {
    if (window == nullptr) return true;
    window->Close();
    if (gate->Inside() > 0) return false;
    window.reset();
    return true;
}

void IGraphicsX11::DrawScreen(const IRECT& rect) {
    if (window != nullptr) window->Put(DrawBuffer(), rect);
}

void IGraphicsX11::Resize(int newWidth, int newHeight) {
    if (newWidth == Width() && newHeight == Height()) return;
    IGraphics::Resize(newWidth, newHeight);
    if (window == nullptr) return;
    window->Resize(newWidth, newHeight);
    SetAllControlsDirty();
}

void* IGraphicsX11::GetWindow() {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the interface carries the window's number as a pointer
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(windowId.load()));
}

void IGraphicsX11::HideMouseCursor() {
    if (window != nullptr) window->HideCursor();
}

void IGraphicsX11::ShowMouseCursor() {
    if (window != nullptr) window->ShowCursor();
}

void IGraphicsX11::CreateTextEntry(IControl& control, const IText& text, const IRECT& rect,
                                   const std::string& string, const IParam* param) {
    if (window == nullptr) return;
    window->OpenEntry(control, text, rect, string, param);
    // The field takes the release of the click that opened it.
    if (window->IsEditing()) ReleaseMouseCapture();
}

void IGraphicsX11::ForceEndUserEdit() {
    if (window != nullptr) window->CancelEntry();
}

} // namespace Grimworks
