#pragma once

#include "editor/IGraphics.h"
#include "editor/win/IGraphicsWin.h"
#include "tests/editor/FakePlug.h"
#include "tests/editor/win/WinHost.h"
#include "tests/editor/x11/RecordingControl.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace Grimworks {

/// An editor of 400 by 300 pixels with a background and a control of 100..300 by 100..200, in a host's
/// window.
class EditorWindow : public ::testing::Test {
protected:
    static constexpr int kWidth = 400;
    static constexpr int kHeight = 300;

    EditorWindow() : host(200, 150, kWidth + 100, kHeight + 100) {
        graphics.AttachControl(std::make_unique<RecordingControl>(&plug, IRECT(0, 0, kWidth, kHeight),
                                                                  groundRecord, IColor(255, 20, 30, 40)));
        auto attached = std::make_unique<RecordingControl>(&plug, IRECT(100, 100, 300, 200), record);
        control = attached.get();
        graphics.AttachControl(std::move(attached));
    }

    void SetUp() override {
        ASSERT_NE(host.Window(), nullptr);
        ASSERT_TRUE(graphics.OpenWindow(host.Window()));
        editor = static_cast<HWND>(graphics.GetWindow());
        ASSERT_TRUE(PumpUntil([this] { return record.Has("draw"); }));
        // The mouse comes to rest in a corner where no test expects it.
        MoveMouse(editor, kWidth + 50, kHeight + 50);
        ASSERT_TRUE(Ticks(1));
    }

    /// Waits for a line of the control's record.
    [[nodiscard]] bool Recorded(const std::string& line) {
        const bool came = PumpUntil([&] { return record.Has(line); });
        if (!came) {
            for (const std::string& there : record.Lines())
                if (there != "tick" && there != "draw") ADD_FAILURE() << "recorded: " << there;
        }
        return came;
    }

    /// Waits until so many further ticks have passed.
    [[nodiscard]] bool Ticks(int count) {
        const int before = record.CountOf("tick");
        return PumpUntil([&] { return record.CountOf("tick") >= before + count; });
    }

    /// The edit box that is open, null if none.
    [[nodiscard]] HWND EditBox() const { return FindWindowExA(editor, nullptr, "EDIT", nullptr); }

    FakePlug plug;
    Record record;
    Record groundRecord;
    RecordingControl* control = nullptr;
    WinHost host;
    IGraphicsWin graphics{plug, kWidth, kHeight};
    HWND editor = nullptr;
};

} // namespace Grimworks
