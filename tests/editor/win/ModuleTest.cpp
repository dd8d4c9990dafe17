#include "editor/LICE_MemBitmap.h"
#include "editor/LICE_Png.h"
#include "editor/thudforge/Layout.h"
#include "plugin/vst2.h"
#include "tests/editor/win/WinHost.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <set>

namespace Grimworks {

namespace {

constexpr int kPages = 3;

/// The module as a host of this system loads it.
class Library {
public:
    Library() : module(LoadLibraryA(THUDFORGE_MODULE)) {}
    ~Library() {
        if (module != nullptr) FreeLibrary(module);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    [[nodiscard]] HMODULE Handle() const { return module; }
    [[nodiscard]] PluginMainFunction Entry() const {
        return reinterpret_cast<PluginMainFunction>(
            reinterpret_cast<void*>(GetProcAddress(module, "VSTPluginMain")));
    }

private:
    HMODULE module;
};

std::intptr_t HostAnswers(AEffect*, std::int32_t opcode, std::int32_t, std::intptr_t, void*, float) {
    constexpr std::int32_t kVersion = 1;
    return opcode == kVersion ? kInterfaceVersion : 0;
}

/// One instance of the instrument, given back at the end.
class Instance {
public:
    explicit Instance(const Library& library) : effect(library.Entry()(HostAnswers)) { Call(PlugOp::Open); }
    ~Instance() { Call(PlugOp::Close); }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    std::intptr_t Call(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0,
                       void* pointer = nullptr) {
        return effect->dispatcher(effect, opcode, index, value, pointer, 0.0F);
    }
    void Set(int id, float value) { effect->setParameter(effect, id, value); }
    [[nodiscard]] float Parameter(int id) { return effect->getParameter(effect, id); }

    /// Ids of parameters that differ from `before`.
    [[nodiscard]] std::vector<int> Changed(const std::vector<float>& before) {
        std::vector<int> changed;
        for (int id = 0; id < effect->numParams; ++id) {
            if (Parameter(id) != before[static_cast<std::size_t>(id)]) changed.push_back(id);
        }
        return changed;
    }
    [[nodiscard]] std::vector<float> Parameters() {
        std::vector<float> all;
        for (int id = 0; id < effect->numParams; ++id)
            all.push_back(Parameter(id));
        return all;
    }

private:
    AEffect* effect;
};

const PlacedControl* FindPlaced(PanelId panel, ControlKind kind, int direction) {
    const auto& controls = EditorPanel(panel).controls;
    const auto found = std::find_if(controls.begin(), controls.end(), [&](const PlacedControl& placed) {
        return placed.kind == kind && placed.direction == direction;
    });
    return found == controls.end() ? nullptr : &*found;
}

/// The instrument's own editor in a host's window.
class ModuleWindow : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(library.Handle(), nullptr);
        instance = std::make_unique<Instance>(library);
        ASSERT_EQ(instance->Call(PlugOp::EditOpen, 0, 0, host.Window()), 1);
        ASSERT_EQ(host.Editors().size(), 1U);
        editor = host.Editors().front();
        ASSERT_TRUE(PumpUntil([this] { return ShowsThePicture(editor); }));
    }
    void TearDown() override { instance.reset(); }

    [[nodiscard]] static std::vector<std::uint32_t> Shown(HWND window) {
        return Grab(window, kEditorWidth, kEditorHeight);
    }

    static bool ShowsThePicture(HWND window) {
        constexpr std::size_t kManyColours = 500;
        const auto pixels = Shown(window);
        return std::set<std::uint32_t>(pixels.begin(), pixels.end()).size() > kManyColours;
    }

    /// Clicks on a control; the mouse stays there.
    void ClickOn(const PlacedControl& placed) { Click(editor, placed.rect.MW(), placed.rect.MH()); }

    [[nodiscard]] bool SelectPage(int page) {
        const auto before = Shown(editor);
        ClickOn(*FindPlaced(PanelId::Header, ControlKind::Tab, page));
        const auto differs = [&] {
            const auto now = Shown(editor);
            std::size_t count = 0;
            for (std::size_t i = 0; i < now.size(); ++i)
                count += now[i] != before[i] ? 1U : 0U;
            return count > now.size() / 10;
        };
        if (!PumpUntil(differs)) return false;
        // All that draws itself at its first tick.
        int ticks = 0;
        host.onTick = [&] { ++ticks; };
        const bool settled = PumpUntil([&] { return ticks > 10; });
        host.onTick = nullptr;
        return settled;
    }

    /// Leaves the picture of the window in the test's folder.
    void Save(const std::string& file) const {
        LICE_MemBitmap bitmap(kEditorWidth, kEditorHeight);
        const auto pixels = Shown(editor);
        std::copy(pixels.begin(), pixels.end(), bitmap.getBits());
        std::vector<std::uint8_t> bytes;
        ASSERT_TRUE(SavePngToMemory(bitmap, bytes));
        std::ofstream(file, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }

    /// Does something once, from inside the loop of a menu or dialog, when a window of the class is shown.
    void OnceShown(const char* className, std::function<void(HWND)> act) {
        host.onTick = [this, className, act = std::move(act)] {
            HWND shown = FindShown(className);
            if (shown == nullptr) return;
            host.onTick = [this, className, ticks = std::make_shared<int>(0)] {
                constexpr int kMostTicks = 500;
                HWND stays = FindShown(className);
                if (stays == nullptr || ++*ticks < kMostTicks) return;
                ADD_FAILURE() << className << " stays";
                EndMenu();
                EndDialog(stays, IDCANCEL);
                host.onTick = nullptr;
            };
            act(shown);
        };
    }

    Library library;
    WinHost host{10, 10, kEditorWidth, kEditorHeight};
    std::unique_ptr<Instance> instance;
    HWND editor = nullptr;
};

} // namespace

TEST_F(ModuleWindow, OpensInTheSizeThatItTells) {
    ERect* rect = nullptr;
    ASSERT_EQ(instance->Call(PlugOp::EditGetRect, 0, 0, &rect), 1);
    EXPECT_EQ(rect->right, 1220);
    EXPECT_EQ(rect->bottom, 835);
    RECT place{};
    GetClientRect(editor, &place);
    EXPECT_EQ(place.right, 1220);
    EXPECT_EQ(place.bottom, 835);
}

TEST_F(ModuleWindow, ClosesAndOpensAHundredTimes) {
    const DWORD gdiBefore = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(instance->Call(PlugOp::EditClose), 1);
        ASSERT_TRUE(host.Editors().empty());
        ASSERT_EQ(instance->Call(PlugOp::EditOpen, 0, 0, host.Window()), 1);
    }
    ASSERT_EQ(host.Editors().size(), 1U);
    editor = host.Editors().front();
    EXPECT_TRUE(PumpUntil([this] { return ShowsThePicture(editor); }));
    EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), gdiBefore + 10);
}

TEST_F(ModuleWindow, TwoInstancesShowTheirEditorsAtOnce) {
    WinHost otherHost(60, 60, kEditorWidth, kEditorHeight);
    auto other = std::make_unique<Instance>(library);
    ASSERT_EQ(other->Call(PlugOp::EditOpen, 0, 0, otherHost.Window()), 1);
    HWND otherEditor = otherHost.Editors().front();
    EXPECT_TRUE(PumpUntil([&] { return ShowsThePicture(otherEditor); }));
    instance.reset();
    EXPECT_TRUE(host.Editors().empty());
    const PlacedControl& knob = *FindPlaced(PanelId::Output, ControlKind::Knob, 0);
    const auto before = other->Parameters();
    MoveMouse(otherEditor, knob.rect.MW(), knob.rect.MH());
    PressButton(MOUSEEVENTF_LEFTDOWN);
    MoveMouse(otherEditor, knob.rect.MW(), knob.rect.MH() + 20);
    PressButton(MOUSEEVENTF_LEFTUP);
    EXPECT_TRUE(PumpUntil([&] { return other->Changed(before) == std::vector<int>{knob.param}; }));
    // One that goes with its editor open.
    other.reset();
    EXPECT_TRUE(otherHost.Editors().empty());
    WNDCLASSA record{};
    EXPECT_EQ(GetClassInfoA(library.Handle(), "IPlugWndClass", &record), FALSE);
}

TEST_F(ModuleWindow, TheTabsShowThePages) {
    std::vector<std::vector<std::uint32_t>> pages;
    for (int page = 1; page <= kPages; ++page) {
        ASSERT_TRUE(SelectPage(page % kPages)) << page;
        MoveMouse(editor, 5, 5);
        pages.push_back(Shown(editor));
        EXPECT_TRUE(ShowsThePicture(editor));
        Save("page-" + std::to_string(page % kPages) + ".png");
    }
    EXPECT_NE(pages[0], pages[1]);
    EXPECT_NE(pages[1], pages[2]);
    EXPECT_NE(pages[0], pages[2]);
}

TEST_F(ModuleWindow, AKnobFollowsDragWheelAndDoubleClick) {
    const PlacedControl& knob = *FindPlaced(PanelId::Output, ControlKind::Knob, 0);
    const int x = knob.rect.MW();
    const int y = knob.rect.MH();
    const auto before = instance->Parameters();
    const float start = instance->Parameter(knob.param);
    MoveMouse(editor, x, y);
    PressButton(MOUSEEVENTF_LEFTDOWN);
    MoveMouse(editor, x, y + 15);
    EXPECT_TRUE(PumpUntil([&] { return instance->Parameter(knob.param) < start; }));
    const float low = instance->Parameter(knob.param);
    MoveMouse(editor, x, y - 15);
    EXPECT_TRUE(PumpUntil([&] { return instance->Parameter(knob.param) > low; }));
    PressButton(MOUSEEVENTF_LEFTUP);
    EXPECT_TRUE(PumpUntil([] { return GetCapture() == nullptr; }));
    const float dragged = instance->Parameter(knob.param);
    Wheel(-120);
    EXPECT_TRUE(PumpUntil([&] { return instance->Parameter(knob.param) < dragged; }));
    const float wheeled = instance->Parameter(knob.param);
    Wheel(120);
    EXPECT_TRUE(PumpUntil([&] { return instance->Parameter(knob.param) > wheeled; }));
    Click(editor, x, y);
    Click(editor, x, y);
    EXPECT_TRUE(PumpUntil([&] { return instance->Parameter(knob.param) == start; }));
    EXPECT_TRUE(instance->Changed(before).empty());
}

TEST_F(ModuleWindow, AMenuIsAnsweredByKeyboard) {
    const PlacedControl& menu = *FindPlaced(PanelId::Oscillator1, ControlKind::LfoModeMenu, 0);
    const float start = instance->Parameter(menu.param);
    OnceShown("#32768", [](HWND) {
        for (const WORD key :
             std::array<WORD, 3>{VK_UP, VK_RIGHT, VK_RETURN}) // into its submenu, if it has one
            PressKey(key);
    });
    ClickOn(menu);
    EXPECT_TRUE(PumpUntil([&] { return instance->Parameter(menu.param) != start; }));
    EXPECT_EQ(FindShown("#32768"), nullptr);
}

TEST_F(ModuleWindow, TheFileDialogIsOpenedAndCancelled) {
    const auto before = instance->Parameters();
    bool shown = false;
    OnceShown("#32770", [&](HWND) {
        shown = true;
        PressKey(VK_ESCAPE);
    });
    ClickOn(*FindPlaced(PanelId::Presets, ControlKind::FileSelector, 0));
    EXPECT_TRUE(PumpUntil([&] { return shown && FindShown("#32770") == nullptr; }));
    EXPECT_TRUE(instance->Changed(before).empty());
    EXPECT_TRUE(ShowsThePicture(editor));
}

TEST_F(ModuleWindow, TheHostMayCloseTheEditorBehindAMenuOrADialog) {
    for (const auto& [kind, panel, className] :
         {std::tuple{ControlKind::LfoModeMenu, PanelId::Oscillator1, "#32768"},
          std::tuple{ControlKind::FileSelector, PanelId::Presets, "#32770"}}) {
        bool closed = false;
        OnceShown(className, [&](HWND) { closed = instance->Call(PlugOp::EditClose) == 1; });
        ClickOn(*FindPlaced(panel, kind, 0));
        EXPECT_TRUE(PumpUntil([&, name = className] { return closed && FindShown(name) == nullptr; }));
        EXPECT_TRUE(host.Editors().empty());
        ASSERT_EQ(instance->Call(PlugOp::EditOpen, 0, 0, host.Window()), 1);
        editor = host.Editors().front();
        ASSERT_TRUE(PumpUntil([this] { return ShowsThePicture(editor); }));
    }
}

TEST_F(ModuleWindow, AnInstanceMayGoBehindItsOwnMenu) {
    bool gone = false;
    OnceShown("#32768", [&](HWND) {
        instance.reset();
        gone = true;
    });
    ClickOn(*FindPlaced(PanelId::Oscillator1, ControlKind::LfoModeMenu, 0));
    EXPECT_TRUE(PumpUntil([&] { return gone && FindShown("#32768") == nullptr; }));
    EXPECT_TRUE(host.Editors().empty());
}

TEST_F(ModuleWindow, AutomationByTheHostMovesTheControls) {
    const PlacedControl& knob = *FindPlaced(PanelId::Output, ControlKind::Knob, 0);
    const auto inside = [&](const std::vector<std::uint32_t>& pixels) {
        std::vector<std::uint32_t> part;
        for (int y = knob.rect.T; y < knob.rect.B; ++y) {
            const auto row = pixels.begin() + static_cast<std::ptrdiff_t>(y) * kEditorWidth;
            part.insert(part.end(), row + knob.rect.L, row + knob.rect.R);
        }
        return part;
    };
    for (const float value : {1.0F, 0.0F}) {
        const auto shown = inside(Shown(editor));
        instance->Set(knob.param, value);
        EXPECT_TRUE(PumpUntil([&] { return inside(Shown(editor)) != shown; })) << value;
    }
}

} // namespace Grimworks
