#include "editor/thudforge/LayoutRules.h"

#include <array>

namespace Grimworks {

namespace {

using namespace LayoutRules;

constexpr int kMiddle = kEditorWidth / 2;

void AddLink(Panel& panel, int icon, int left, int number, const char* text, const char* tooltip) {
    PlacedControl button = Plain(ControlKind::UrlButton, icon, Sized(left, 680, 40, 40), number);
    button.tooltip = tooltip;
    panel.controls.push_back(button);
    PlacedControl name = Plain(ControlKind::Text, Bitmap::None, Sized(left + 48, 692, 100, 18));
    name.text = text;
    name.style = TextStyle::Link;
    panel.controls.push_back(name);
}

struct HelpLine {
    const char* name;
    const char* text;
};

constexpr std::array<HelpLine, 6> kScopeHelp{
    {{"OUTPUT", "What leaves the instrument: the left channel above, the right channel below."},
     {"LFO 1 - 3", "The LFOs of the three oscillators, as one of the sounding notes has them."},
     {"VOL. ENV, FILTER ENV", "The two envelopes, all sounding notes together."},
     {"FREEZE", "Keeps the picture while the sound goes on."},
     {"ZOOM", "One second at 100 %. Mouse wheel or buttons; the right button takes larger steps."},
     {"FILL", "Traces as lines, half filled or filled."}}};

void AddScopeHelp(Panel& panel) {
    constexpr int kTop = 504;
    constexpr int kPitch = 28;
    for (int i = 0; i < static_cast<int>(kScopeHelp.size()); ++i) {
        const HelpLine& line = kScopeHelp[static_cast<std::size_t>(i)];
        const int top = kTop + kPitch * i;
        PlacedControl name = Plain(ControlKind::Text, Bitmap::None, Sized(kMiddle - 330, top, 160, 18));
        name.text = line.name;
        name.style = TextStyle::HelpName;
        panel.controls.push_back(name);
        PlacedControl text = Plain(ControlKind::Text, Bitmap::None, Sized(kMiddle - 154, top, 560, 18));
        text.text = line.text;
        text.style = TextStyle::Help;
        panel.controls.push_back(text);
    }
}

} // namespace

Panel HeaderPanel() {
    Panel panel;
    panel.id = PanelId::Header;
    panel.page = Page::Every;
    panel.section = Section::Output;
    panel.controls = {Picture(Bitmap::Background, 0, 0, kEditorWidth, kEditorHeight),
                      Picture(Bitmap::ControlsBackground, 0, 0, kEditorWidth, kEditorHeight),
                      Picture(Bitmap::Title, 70, 8, 380, 34),
                      Picture(Bitmap::X64, 458, 14, 40, 22),
                      Plain(ControlKind::Tab, Bitmap::TabSynth, Sized(895, 14, 85, 25), 0),
                      Plain(ControlKind::Tab, Bitmap::TabScope, Sized(981, 14, 85, 25), 1),
                      Plain(ControlKind::Tab, Bitmap::TabAbout, Sized(1067, 14, 85, 25), 2)};
    return panel;
}

Panel PresetPanel() {
    Panel panel;
    panel.id = PanelId::Presets;
    panel.section = Section::Output;
    panel.frame = IRECT(646, 546, 1152, 578);
    auto& list = panel.controls;
    list.push_back(Picture(Bitmap::PresetDisplay, 664, 551, 185, 20));
    PlacedControl menu = Plain(ControlKind::PresetMenu, Bitmap::None, {668, 554, 845, 570});
    menu.style = TextStyle::Display;
    menu.tooltip = "Factory Preset Selection";
    list.push_back(menu);
    list.push_back(Plain(ControlKind::PresetSwitch, Bitmap::Previous, Sized(647, 551, 20, 20), 0));
    list.back().tooltip = "Select Previous Program";
    list.push_back(Plain(ControlKind::PresetSwitch, Bitmap::Next, Sized(846, 551, 20, 20), 1));
    list.back().tooltip = "Select Next Program";
    list.push_back(Plain(ControlKind::RestorePreset, Bitmap::Reset, Sized(868, 551, 48, 20)));
    list.back().tooltip = "Restore Program";
    list.push_back(Plain(ControlKind::FileSelector, Bitmap::Load, Sized(916, 551, 48, 20), 0));
    list.back().tooltip = "Program Load Button";
    list.push_back(Plain(ControlKind::FileSelector, Bitmap::Save, Sized(964, 551, 48, 20), 1));
    list.back().tooltip = "Program Save Button";
    list.push_back(Plain(ControlKind::PlayButton, Bitmap::Play, Sized(1012, 551, 48, 20)));
    list.back().tooltip = "Play Test Note";
    list.push_back(Switch(Param::BypassFX, Bitmap::BypassFx, 1065, 547, 84, 30));
    return panel;
}

Panel InfoLinePanel() {
    Panel panel;
    panel.id = PanelId::InfoLine;
    panel.section = Section::Output;
    auto& list = panel.controls;
    list.push_back(Picture(Bitmap::InfoDisplay, kMiddle - 405, 786, 810, 40));
    PlacedControl level = Plain(ControlKind::MaxLevelText, Bitmap::None, Sized(221, 798, 210, 16));
    level.text = "MAXIMUM AUDIO LEVEL: -oo dB";
    level.style = TextStyle::Info;
    list.push_back(level);
    PlacedControl reset = Plain(ControlKind::ResetButton, Bitmap::Reset, Sized(436, 796, 48, 20));
    reset.tooltip = "Reset Max Signal Level";
    list.push_back(reset);
    PlacedControl host = Plain(ControlKind::HostInfoText, Bitmap::None, Sized(500, 798, 499, 16));
    host.style = TextStyle::InfoRight;
    list.push_back(host);
    return panel;
}

Panel AboutPanel() {
    Panel panel;
    panel.id = PanelId::About;
    panel.page = Page::About;
    panel.section = Section::Output;
    auto& list = panel.controls;
    list.push_back(Picture(Bitmap::Logo, kMiddle - 370, 52, 740, 450));
    list.push_back(Picture(Bitmap::FreeVersionText, kMiddle - 260, 475, 520, 60));
    list.push_back(Picture(Bitmap::TeamText, kMiddle - 260, 550, 520, 110));
    list.push_back(Picture(Bitmap::VstLogo, kMiddle - 88, 750, 176, 44));
    AddLink(panel, Bitmap::WebIcon, kMiddle - 142, 0, "Visit our site", "Visit GrimWorks");
    AddLink(panel, Bitmap::LikeIcon, kMiddle + 16, 1, "Like us on FB!", "Like GrimWorks");
    PlacedControl host = Plain(ControlKind::HostNameText, Bitmap::None, Sized(kMiddle - 230, 804, 460, 16));
    host.text = "64-bit Plugin Host: Unknown (v0.0.0)";
    host.style = TextStyle::HostName;
    list.push_back(host);
    list.push_back(Plain(ControlKind::Eye, Bitmap::None, Sized(kMiddle - 78, 180, 56, 40), 1));
    list.push_back(Plain(ControlKind::Eye, Bitmap::None, Sized(kMiddle + 22, 180, 56, 40), 0));
    return panel;
}

Panel ScopePanel() {
    Panel panel;
    panel.id = PanelId::Scope;
    panel.page = Page::Scope;
    panel.section = Section::Output;
    constexpr int kLeft = kMiddle - 520;
    auto& list = panel.controls;
    list.push_back(Picture(Bitmap::WaveDisplay, kLeft, 90, 1040, 360));
    list.push_back(Picture(Bitmap::ZoomDisplay, kLeft + 889, 435, 100, 25));
    list.push_back(Plain(ControlKind::WaveDrawer, Bitmap::None, {kLeft + 19, 110, kLeft + 1019, 430}));
    list.push_back(Plain(ControlKind::FreezeButton, Bitmap::Freeze, Sized(kLeft + 19, 430, 110, 30)));
    list.back().tooltip = "Freeze";
    PlacedControl zoom = Plain(ControlKind::ZoomText, Bitmap::None, Sized(kLeft + 891, 440, 96, 17));
    zoom.text = "100 %";
    zoom.style = TextStyle::Zoom;
    list.push_back(zoom);
    list.push_back(Plain(ControlKind::ZoomSwitch, Bitmap::Minus, Sized(kLeft + 864, 435, 25, 25), 0));
    list.back().tooltip = "Zoom Out";
    list.push_back(Plain(ControlKind::ZoomSwitch, Bitmap::Plus, Sized(kLeft + 989, 435, 25, 25), 1));
    list.back().tooltip = "Zoom In";
    constexpr std::array<int, 6> kWaves{Bitmap::ShowLfo1,      Bitmap::ShowLfo2,      Bitmap::ShowLfo3,
                                        Bitmap::ShowVolumeEnv, Bitmap::ShowFilterEnv, Bitmap::ShowOutput};
    for (int i = 0; i < 6; ++i) {
        list.push_back(Plain(ControlKind::WaveSelect, kWaves[static_cast<std::size_t>(i)],
                             Sized(kLeft + 134 + 106 * i, 435, 102, 25), i + 1));
    }
    list.push_back(Plain(ControlKind::FillModeButton, Bitmap::FillMode, Sized(kLeft + 779, 435, 64, 25)));
    list.back().tooltip = "Hollow, Half Filled, Filled";
    AddScopeHelp(panel);
    return panel;
}

} // namespace Grimworks
