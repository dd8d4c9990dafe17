#pragma once

#include "editor/IControl.h"
#include "editor/LICE_MemBitmap.h"
#include "editor/LICE_SysBitmap.h"
#include "editor/PendingParameters.h"
#include "editor/TextEntry.h"
#include "editor/Types.h"
#include "plugin/PlugEditor.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

class IParam;
class IPlugBase;
class IPopupMenu;

/// Keys that reach a control.
enum KeyCode : int {
    KeySpace = 1,
    KeyUp,
    KeyDown,
    KeyLeft,
    KeyRight,
    KeyDigit0,                   ///< to KeyDigit0 + 9
    KeyLetterA = KeyDigit0 + 10, ///< to KeyLetterA + 25
    KeyF1 = KeyLetterA + 26      ///< to KeyF1 + 11
};

/// Root of the editor: the controls, the back buffer, drawing, and the way of mouse, keys and parameter
/// values. The window itself comes from the platform's class below it. Controls are attached once, while the
/// plug-in is built; from then on everything but SetParameterFromPlug, OpenWindow and CloseWindow belongs to
/// the editor thread.
class IGraphics : public PlugEditor {
public:
    static constexpr int kDefaultFps = 25;

    /// Actions of PromptForFile.
    enum FileAction : int { FileOpen = 0, FileSave = 1 };

    IGraphics(IPlugBase& plugBase, int windowWidth, int windowHeight, int framesPerSecond = kDefaultFps);
    ~IGraphics() override;

    // Controls.

    /// Takes the control over and gives its index. Draw order is attach order.
    int AttachControl(std::unique_ptr<IControl> control);

    /// Puts an IBitmapControl of the whole window at index 0.
    void AttachBackground(int id, const std::string& fileName);

    [[nodiscard]] int ControlCount() const { return static_cast<int>(controls.size()); }
    /// Null for a bad index.
    [[nodiscard]] IControl* GetControl(int index) const;
    void HideControl(int index, bool on);
    void SetAllControlsDirty();

    /// Looks a bitmap up in the process-wide cache, or loads it. Without an image if there is none.
    [[nodiscard]] IBitmap LoadIBitmap(int id, const std::string& fileName, int nFrames = 1,
                                      bool framesAreHorizontal = false);

    // Drawing: into the back buffer, limited to what is being redrawn. False if nothing could be drawn.

    bool DrawBitmap(const IBitmap& bitmap, const IRECT& rect, int srcX, int srcY,
                    const IChannelBlend& blend = IChannelBlend());
    /// `frame` counts from 1.
    bool DrawBitmapFrame(const IBitmap& bitmap, const IRECT& rect, int frame,
                         const IChannelBlend& blend = IChannelBlend());
    bool FillIRect(const IColor& color, const IRECT& rect, const IChannelBlend& blend = IChannelBlend());
    bool DrawRect(const IColor& color, const IRECT& rect);
    bool DrawLine(const IColor& color, int x1, int y1, int x2, int y2,
                  const IChannelBlend& blend = IChannelBlend());
    bool FillTriangle(const IColor& color, int x1, int y1, int x2, int y2, int x3, int y3,
                      const IChannelBlend& blend = IChannelBlend());
    virtual bool DrawIText(const IText& text, std::string_view string, const IRECT& rect);
    bool MeasureIText(const IText& text, std::string_view string, IRECT& rect);

    /// Redraws everything if `rect` is the whole window or the background is dirty, else each dirty control
    /// with what overlaps it; then copies `rect` and what has changed to the screen.
    void Draw(const IRECT& rect);

    /// One step of the editor's clock: brings parameter values that came in meanwhile to their controls, runs
    /// the tick handler and the controls' idle work, and gives the rectangle that has to be redrawn (empty if
    /// none).
    IRECT Tick();

    /// Called at each tick before the controls are asked; for captions and the like.
    void SetTickHandler(std::function<void()> handler) { tickHandler = std::move(handler); }

    // Mouse and keys, in pixels of the window.

    void OnMouseDown(int x, int y, const IMouseMod& mod);
    void OnMouseUp(int x, int y, const IMouseMod& mod);
    void OnMouseDrag(int x, int y, int dX, int dY, const IMouseMod& mod);
    /// True if a control turned it into a mouse down, so that the window captures the mouse.
    bool OnMouseDblClick(int x, int y, const IMouseMod& mod);
    void OnMouseOver(int x, int y, const IMouseMod& mod);
    /// The mouse left the window.
    void OnMouseOut();
    void OnMouseWheel(int x, int y, const IMouseMod& mod, int d);
    /// True if the control under the mouse used the key.
    bool OnKeyDown(int x, int y, int key);

    void ReleaseMouseCapture() { mouseCapture = -1; }
    [[nodiscard]] int MouseCapture() const { return mouseCapture; }
    [[nodiscard]] int MouseOverIndex() const { return mouseOver; }
    /// Where the mouse last went down, was dragged or moved.
    [[nodiscard]] int MouseX() const { return mouseX; }
    [[nodiscard]] int MouseY() const { return mouseY; }
    void HandleMouseOver(bool on) { handleMouseOver = on; }
    void EnableTooltips(bool on) { tooltips = on; }
    [[nodiscard]] bool TooltipsEnabled() const { return tooltips; }
    void SetStrictDrawing(bool on) { strict = on; }

    /// What to tell about the control: its tooltip, or its parameter's name; empty for neither.
    [[nodiscard]] std::string TooltipText(int index) const;

    /// Notches of a raw wheel delta, of which 120 make one; rounded toward zero.
    [[nodiscard]] static int WheelNotches(int rawDelta) { return rawDelta / 120; }

    // Parameters and text entry.

    /// Any thread, with the plug-in lock held: keeps the value for the next tick. Does not wait.
    void SetParameterFromPlug(int id, double value, bool normalized) override;

    /// Brings the values kept by SetParameterFromPlug to the controls. Tick does it.
    void DeliverParameters();

    /// Asks for the value of a control's parameter: a menu where each value has a name, else a text entry
    /// over `rect`.
    void PromptUserInput(IControl& control, const IParam& param, const IRECT& rect);

    /// What the user typed for a control: goes to its parameter, or to the control itself if `param` is null.
    static void CommitTextEntry(IControl& control, const IParam* param, std::string_view entered);

    // PlugEditor.

    [[nodiscard]] int Width() const override { return width; }
    [[nodiscard]] int Height() const override { return height; }

    [[nodiscard]] int Fps() const { return fps; }
    [[nodiscard]] IPlugBase& Plug() const { return plug; }
    [[nodiscard]] LICE_SysBitmap& DrawBuffer() { return drawBitmap; }
    [[nodiscard]] LICE_MemBitmap& TmpBitmap() { return tmpBitmap; }

    // What the platform does.

    /// Ends an open text entry as if it had been cancelled.
    virtual void ForceEndUserEdit() = 0;
    /// New size of the inside; rebuilds the drawing surfaces.
    virtual void Resize(int newWidth, int newHeight);
    /// Copies a part of the back buffer to the window.
    virtual void DrawScreen(const IRECT& rect) = 0;
    virtual std::string GetHostName();
    /// `type` as in the published interface of message boxes: 0 ok, 1 ok/cancel, 3 yes/no/cancel, 4 yes/no.
    /// Gives 1 ok, 2 cancel, 6 yes, 7 no.
    virtual int ShowMessageBox(const std::string& message, const std::string& caption, int type) = 0;
    /// Shows a menu at the lower left of `rect` and waits for the choice. Gives the menu that holds the
    /// chosen row (which it stores there), null for none. Choices of earlier showings are cleared first.
    virtual IPopupMenu* CreateIPopupMenu(IPopupMenu& menu, const IRECT& rect) = 0;
    /// Opens the text entry if none is open. It ends through CommitTextEntry or without a trace.
    virtual void CreateTextEntry(IControl& control, const IText& text, const IRECT& rect,
                                 const std::string& string, const IParam* param) = 0;
    virtual std::string HostPath() = 0;   ///< folder of the host program, with the separator at the end
    virtual std::string PluginPath() = 0; ///< folder of this module
    virtual std::string DesktopPath() = 0;
    virtual std::string AppSupportPath(bool allUsers) = 0;
    /// Asks for a file. `file` and `dir` are what is offered and become what was chosen, both together the
    /// path; `file` is empty after a cancel. `extensions` is a list with blanks, such as "gw tgp fxp".
    virtual void PromptForFile(std::string& file, std::string& dir, int action,
                               const std::string& extensions) = 0;
    virtual bool PromptForColor(IColor& color, const std::string& prompt) = 0;
    virtual bool OpenURL(const std::string& url) = 0;
    /// The window's handle, null when closed. OpenWindow and CloseWindow come from PlugEditor.
    [[nodiscard]] virtual void* GetWindow() = 0;
    [[nodiscard]] virtual bool WindowIsOpen() = 0;
    virtual void HideMouseCursor() = 0;
    virtual void ShowMouseCursor() = 0;

protected:
    /// The image of a numeric id, for the cache; null if there is none. Unless said otherwise, from the data
    /// embedded in the module; file names of other kinds than PNG have none.
    virtual std::unique_ptr<LICE_IBitmap> OSLoadBitmap(int id, const std::string& fileName);

    /// The platform's font of this text, for the cache; null if it cannot be made.
    virtual std::unique_ptr<LICE_IFont> MakeFont(const IText& text);

    /// Tells the host the end of the gesture under way; harmless without one.
    void EndGesture();

private:
    [[nodiscard]] int FindControlAt(int x, int y, bool grayedToo) const;
    /// Runs `use` with the text's font while nobody else uses it; false if there is none.
    template <typename Use>
    bool WithFont(const IText& text, Use use);
    [[nodiscard]] LICE_IFont* FontOf(const IText& text);
    [[nodiscard]] bool NeedsDrawing(std::size_t index);
    void Clean(std::size_t index);
    void DrawStrict(const IRECT& rect);
    void DrawAll(const IRECT& rect);
    void DrawDirtyOnes();
    void DrawOverlapping(std::size_t dirtyOne);
    void GiveToControls(int id, double value);
    void BeginGesture(int paramIdx);
    bool PromptWithMenu(IControl& control, const IParam& param, double current, const IRECT& rect);

    IPlugBase& plug;
    std::mutex mutex; ///< of the attachment of controls
    std::vector<std::unique_ptr<IControl>> controls;
    LICE_SysBitmap drawBitmap;
    LICE_MemBitmap tmpBitmap;
    int width;
    int height;
    int fps;
    int mouseCapture = -1;
    int mouseX = 0;
    int mouseY = 0;
    int mouseOver = -1;
    bool handleMouseOver = true;
    bool strict = false;
    bool tooltips = true;
    IRECT drawRect;              ///< the whole window while nothing is being redrawn
    IRECT drawn;                 ///< what the present redraw has changed
    std::vector<bool> saidDirty; ///< by control: the last tick's question, not drawn yet
    int gestureParam = -1;       ///< of the mouse down that the host has not seen the end of
    std::function<void()> tickHandler;
    PendingParameters pending;
};

/// The graphics of this platform, without a window so far.
[[nodiscard]] std::unique_ptr<IGraphics> MakeGraphics(IPlugBase& plug, int width, int height,
                                                      int fps = IGraphics::kDefaultFps);

} // namespace Grimworks
