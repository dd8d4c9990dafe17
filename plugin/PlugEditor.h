#pragma once

namespace Grimworks {

/// What the plug-in needs of an editor, whoever draws it.
class PlugEditor {
public:
    virtual ~PlugEditor() = default;

    /// Size of the window's inside in pixels.
    [[nodiscard]] virtual int Width() const = 0;
    [[nodiscard]] virtual int Height() const = 0;

    /// Makes the window inside the host's. Called without the plug-in lock, so that a window thread may take
    /// it while this call waits. False if there is no window.
    virtual bool OpenWindow(void* parent) = 0;

    /// Takes the window away; harmless without one. Called without the plug-in lock.
    virtual void CloseWindow() = 0;

    /// The plug-in is about to go, and the window with it. False if a thread of the editor is inside a call
    /// that could not be waited for: then plug-in and editor must stay in memory. Called without the lock.
    virtual bool PrepareToGo() {
        CloseWindow();
        return true;
    }

    /// A parameter has a new value: plain, or 0..1 if `normalized`. Called from any thread, the audio thread
    /// included, with the plug-in lock held: it must neither wait nor draw.
    virtual void SetParameterFromPlug(int id, double value, bool normalized) = 0;

protected:
    PlugEditor() = default;
    PlugEditor(const PlugEditor&) = default;
    PlugEditor& operator=(const PlugEditor&) = default;
};

} // namespace Grimworks
