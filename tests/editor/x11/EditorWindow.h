#pragma once

#include "editor/IGraphics.h"
#include "tests/editor/FakePlug.h"
#include "tests/editor/x11/HostWindow.h"
#include "tests/editor/x11/RecordingControl.h"
#include "tests/editor/x11/XServer.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace Grimworks {

/// An editor of 400 by 300 pixels with a background and a control of 100..300 by 100..200, in a host's window
/// at 200, 150 of a display of its own.
class EditorWindow : public ::testing::Test {
protected:
    static constexpr int kLeft = 200;
    static constexpr int kTop = 150;
    static constexpr int kWidth = 400;
    static constexpr int kHeight = 300;

    EditorWindow() : graphics(MakeEditor()), host(kLeft, kTop, kWidth + 100, kHeight + 100) {}

    void SetUp() override {
        ASSERT_TRUE(server.Runs());
        ASSERT_TRUE(host.Works());
    }

    /// Before anything that the controls' actions use is gone.
    void TearDown() override {
        if (graphics != nullptr) graphics->CloseWindow();
    }

    /// A point of the editor on the screen.
    [[nodiscard]] static std::vector<std::string> At(int x, int y) { return MoveTo(kLeft + x, kTop + y); }

    /// Moves the mouse to a point of the editor and waits until the editor has seen it there.
    [[nodiscard]] bool PointAt(int x, int y) {
        const std::string seen = "over " + RecordingControl::Point(x, y);
        return User(At(x + 5, y)) && User(At(x, y)) &&
               Eventually([&] { return record.Has(seen) || groundRecord.Has(seen); });
    }

    [[nodiscard]] bool Open() { return graphics->OpenWindow(host.Parent()); }

    /// Waits for a line of the control's record.
    [[nodiscard]] bool Recorded(const std::string& line) {
        const bool came = Eventually([&] { return record.Has(line); });
        if (!came) {
            for (const std::string& there : record.Lines())
                if (there != "tick" && there != "draw") ADD_FAILURE() << "recorded: " << there;
        }
        return came;
    }

    /// Waits until so many further ticks have passed.
    [[nodiscard]] bool Ticks(int count) {
        const int before = record.CountOf("tick");
        return Eventually([&] { return record.CountOf("tick") >= before + count; });
    }

    XServer server;
    FakePlug plug;
    Record record;
    Record groundRecord;
    RecordingControl* ground = nullptr;
    RecordingControl* control = nullptr;
    std::unique_ptr<IGraphics> graphics;
    HostWindow host;

private:
    std::unique_ptr<IGraphics> MakeEditor() {
        auto made = MakeGraphics(plug, kWidth, kHeight);
        auto below = std::make_unique<RecordingControl>(&plug, IRECT(0, 0, kWidth, kHeight), groundRecord,
                                                        IColor(255, 20, 30, 40));
        ground = below.get();
        made->AttachControl(std::move(below));
        auto attached = std::make_unique<RecordingControl>(&plug, IRECT(100, 100, 300, 200), record);
        control = attached.get();
        made->AttachControl(std::move(attached));
        return made;
    }
};

} // namespace Grimworks
