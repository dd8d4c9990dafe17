#pragma once

#include "editor/IControl.h"

#include <string>
#include <string_view>

namespace Grimworks {

/// A button that asks for a file.
class IFileSelectorControl : public IControl {
public:
    enum State : int { None = 0, Selecting = 1, Done = 2 };

    /// `fileAction`: one of IGraphics::FileAction. `folder` is where the first selection starts.
    IFileSelectorControl(IPlugBase* plugBase, int x, int y, int parameter, const IBitmap& strip,
                         int fileAction, std::string_view folder = {},
                         std::string_view extensionList = "gw tgp fxp");

    void OnMouseDown(int x, int y, const IMouseMod& mod) override;
    /// The bitmap while a file is being selected, else nothing.
    bool Draw(IGraphics& canvas) override;
    /// The end of a selection asks for one more redraw.
    bool IsDirty() override;

    /// What was chosen last; both together are the path. `File` is empty after a cancel.
    [[nodiscard]] const std::string& File() const { return file; }
    [[nodiscard]] const std::string& Dir() const { return dir; }
    [[nodiscard]] int SelectionState() const { return state; }

protected:
    /// A selection has ended.
    virtual void OnSelected() {}

    IBitmap bitmap;
    std::string file;
    std::string dir;
    std::string extensions;
    int action;
    int state = None;
};

} // namespace Grimworks
