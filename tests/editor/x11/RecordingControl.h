#pragma once

#include "editor/IControl.h"
#include "editor/IGraphics.h"

#include <algorithm>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

/// What the editor thread did, for the test's thread to read.
class Record {
public:
    void Add(const std::string& line) {
        const std::lock_guard guard(mutex);
        lines.push_back(line);
    }
    [[nodiscard]] std::vector<std::string> Lines() const {
        const std::lock_guard guard(mutex);
        return lines;
    }
    [[nodiscard]] bool Has(std::string_view line) const {
        const std::lock_guard guard(mutex);
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }
    [[nodiscard]] int CountOf(std::string_view begin) const {
        const std::lock_guard guard(mutex);
        return static_cast<int>(std::count_if(lines.begin(), lines.end(), [begin](const std::string& line) {
            return line.starts_with(begin);
        }));
    }
    void Clear() {
        const std::lock_guard guard(mutex);
        lines.clear();
    }

private:
    mutable std::mutex mutex;
    std::vector<std::string> lines;
};

/// A control of one colour that writes down all that happens to it.
class RecordingControl : public IControl {
public:
    RecordingControl(IPlugBase* plugBase, const IRECT& rectangle, Record& itsRecord,
                     const IColor& itsColor = IColor(255, 90, 40, 160), int parameter = -1)
        : IControl(plugBase, rectangle, parameter), record(itsRecord), color(itsColor) {}

    void OnMouseDown(int x, int y, const IMouseMod& mod) override {
        record.Add("down " + Point(x, y) + Held(mod));
        if (onDown) onDown(*this);
    }
    void OnMouseUp(int x, int y, const IMouseMod& mod) override {
        record.Add("up " + Point(x, y) + Held(mod));
        if (onUp) onUp(*this);
    }
    void OnMouseDrag(int x, int y, int dX, int dY, const IMouseMod& mod) override {
        record.Add("drag " + Point(x, y) + Held(mod));
        draggedX += dX;
        draggedY += dY;
        record.Add("dragged by " + Point(draggedX, draggedY));
        if (onDrag) onDrag(*this);
    }
    void OnMouseDblClick(int x, int y, const IMouseMod& mod) override {
        record.Add("double " + Point(x, y) + Held(mod));
    }
    void OnMouseWheel(int x, int y, const IMouseMod& mod, int d) override {
        record.Add("wheel " + Point(x, y) + Held(mod) + " " + std::to_string(d));
    }
    bool OnKeyDown(int, int, int key) override {
        record.Add("key " + std::to_string(key));
        return usesKeys;
    }
    void OnMouseOver(int x, int y, const IMouseMod&) override { record.Add("over " + Point(x, y)); }
    void OnMouseOut() override { record.Add("out"); }
    void TextFromTextEntry(std::string_view entered) override {
        record.Add("text " + std::string(entered));
        if (onText) onText(*this);
    }
    void SetValueFromUserInput(double newValue) override {
        record.Add("value " + std::to_string(newValue));
        IControl::SetValueFromUserInput(newValue);
    }
    void SetValueFromPlug(double newValue) override {
        IControl::SetValueFromPlug(newValue);
        record.Add("from plug " + std::to_string(newValue));
    }
    void OnGUIIdle() override {
        record.Add("tick");
        if (onTick) onTick(*this);
    }
    bool Draw(IGraphics& itsGraphics) override {
        record.Add("draw");
        if (onDraw) {
            onDraw(itsGraphics);
            return true;
        }
        return itsGraphics.FillIRect(color, rect);
    }

    [[nodiscard]] static std::string Point(int x, int y) {
        return std::to_string(x) + "," + std::to_string(y);
    }

    std::function<void(RecordingControl&)> onDown;
    std::function<void(RecordingControl&)> onUp;
    std::function<void(RecordingControl&)> onDrag;
    std::function<void(RecordingControl&)> onText;
    std::function<void(RecordingControl&)> onTick;
    std::function<void(IGraphics&)> onDraw; ///< draws in place of the one colour
    bool usesKeys = false;

private:
    [[nodiscard]] static std::string Held(const IMouseMod& mod) {
        std::string text;
        if (mod.L) text += " L";
        if (mod.R) text += " R";
        if (mod.S) text += " S";
        if (mod.C) text += " C";
        if (mod.A) text += " A";
        return text;
    }

    Record& record;
    IColor color;
    int draggedX = 0;
    int draggedY = 0;
};

} // namespace Grimworks
