#include "editor/thudforge/LayoutRules.h"

#include "core/Limits.h"
#include "voice/OscFilterUnit.h"

#include <array>
#include <cstddef>

namespace Grimworks {

namespace {

using namespace LayoutRules;

/// From one oscillator's row to the next.
constexpr int kRowPitch = 145;

constexpr std::array<int, 3> kWaveDisplays{Bitmap::Osc1Display, Bitmap::Osc2Display, Bitmap::Osc3Display};
constexpr std::array<const char*, 3> kTitles{"OSCILLATOR 1", "OSCILLATOR 2", "OSCILLATOR 3"};

/// A knob of 30 or 40 pixels by its label's place in the first row.
struct KnobRow {
    const char* label;
    int left;
    int top;
    int size;
    OscParam param;
    int bitmap;
    int captionMode;
};

constexpr std::array<KnobRow, 14> kKnobs{{
    {"Pitch", 197, 69, 30, OscParam::Pitch, Bitmap::OscPitchKnob, 2},
    {"Tune", 237, 69, 30, OscParam::Tune, Bitmap::OscTuneKnob, 3},
    {"Phase", 197, 132, 30, OscParam::Phase, Bitmap::OscTuneKnob, 3},
    {"Freq.", 421, 69, 30, OscParam::LfoRate, Bitmap::LfoKnob, 5},
    {"Cutoff", 303, 76, 40, OscParam::FilterCutoff, Bitmap::FilterKnob, 0},
    {"Reso/BW", 358, 76, 40, OscParam::FilterResonance, Bitmap::ResonanceKnob, 0},
    {"Volume", 461, 69, 30, OscParam::LfoToVolume, Bitmap::LfoKnob, 0},
    {"Tune", 501, 69, 30, OscParam::LfoToTune, Bitmap::LfoKnob, 0},
    {"Filter", 541, 69, 30, OscParam::LfoToFilter, Bitmap::LfoKnob, 0},
    {"Pan", 581, 69, 30, OscParam::LfoToPan, Bitmap::LfoKnob, 0},
    {"Sync.", 461, 132, 30, OscParam::LfoTempoSync, Bitmap::LfoSyncKnob, 7},
    {"Pan", 501, 132, 30, OscParam::Pan, Bitmap::OscPanKnob, 4},
    {"Sat.", 541, 132, 30, OscParam::Saturation, Bitmap::OscSaturationKnob, 1},
    {"Volume", 581, 132, 30, OscParam::Volume, Bitmap::OscVolumeKnob, 0},
}};

void AddWave(Panel& panel, int oscillator, int y) {
    const int wave = Osc(oscillator, OscParam::Waveform);
    auto& list = panel.controls;
    list.push_back(Picture(kWaveDisplays[static_cast<std::size_t>(oscillator)], 84, y + 77, 117, 46));
    list.push_back(Plain(ControlKind::WavePicture, Bitmap::None, {90, y + 80, 195, y + 120}, oscillator));
    list.push_back(Picture(Bitmap::WaveNameDisplay, 84, y + 124, 117, 20));
    PlacedControl menu = Placed(ControlKind::WaveformMenu, wave, Bitmap::None, {90, y + 127, 195, y + 143},
                                "Waveform Selection");
    menu.style = TextStyle::Display;
    menu.caption.rect = IRECT(175, y + 59, 199, y + 75);
    menu.caption.hit = IRECT(179, y + 59, 199, y + 73);
    menu.caption.style = TextStyle::Number;
    list.push_back(menu);
    list.push_back(OnOff(Osc(oscillator, OscParam::OnOff), 78, y + 56));
    list.push_back(Step(wave, Bitmap::Previous, Sized(86, y + 124, 20, 20), kWaveforms, 0, false,
                        "Select Previous Waveform"));
    list.push_back(
        Step(wave, Bitmap::Next, Sized(179, y + 124, 20, 20), kWaveforms, 1, false, "Select Next Waveform"));
}

void AddFilterSide(Panel& panel, int param, int y, int menuLeft, int nextLeft, const char* tooltip) {
    auto& list = panel.controls;
    list.push_back(Picture(Bitmap::FilterTypeDisplay, menuLeft, y + 166, 62, 19));
    PlacedControl menu =
        Placed(ControlKind::FilterMenu, param, Bitmap::None, Sized(menuLeft, y + 169, 62, 16), tooltip);
    menu.style = TextStyle::SmallName;
    list.push_back(menu);
    list.push_back(Step(param, Bitmap::NextFilter, Sized(nextLeft, y + 143, 48, 20),
                        static_cast<int>(kOscFilterTypes.size()), 1, true, "Select Next Filter"));
}

void AddFilter(Panel& panel, int oscillator, int y) {
    panel.controls.push_back(Picture(Bitmap::Slider82, 318, y + 146, 82, 14));
    PlacedControl fader = Placed(ControlKind::Fader, Osc(oscillator, OscParam::FilterBalance),
                                 Bitmap::SliderHandle, Sized(318, y + 146, 82, 14));
    fader.caption.rect = IRECT(317, y + 170, 401, y + 186);
    fader.caption.hit = IRECT(320, y + 170, 398, y + 184);
    panel.controls.push_back(fader);
    AddFilterSide(panel, Osc(oscillator, OscParam::FilterTypeLeft), y, 254, 261,
                  "Left Filter Type Selection");
    AddFilterSide(panel, Osc(oscillator, OscParam::FilterTypeRight), y, 402, 409,
                  "Right Filter Type Selection");
}

void AddLfoSwitches(Panel& panel, int oscillator, int y) {
    panel.controls.push_back(
        Switch(Osc(oscillator, OscParam::LfoLinkAll), Bitmap::LfoLink, 83, y + 166, 54, 20));
    panel.controls.push_back(Picture(Bitmap::FilterTypeDisplay, 143, y + 166, 62, 19));
    PlacedControl mode = Placed(ControlKind::LfoModeMenu, Osc(oscillator, OscParam::LfoMode), Bitmap::None,
                                Sized(143, y + 169, 62, 16), "LFO Signal Mode Selection");
    mode.label = {"LFO Mode", Sized(143, y + 151, 62, 16), TextStyle::Label};
    mode.style = TextStyle::SmallName;
    panel.controls.push_back(mode);
}

} // namespace

Panel OscillatorPanel(int oscillator) {
    const int y = oscillator * kRowPitch;
    Panel panel;
    panel.id = static_cast<PanelId>(static_cast<int>(PanelId::Oscillator1) + oscillator);
    panel.section = Section::Oscillators;
    panel.frame = IRECT(70, y + 50, 644, y + 193);
    panel.title = kTitles[static_cast<std::size_t>(oscillator)];
    panel.titleX = 103;
    panel.titleY = y + 59;
    AddWave(panel, oscillator, y);
    for (const KnobRow& row : kKnobs) {
        PlacedControl knob = Knob(row.label, row.left, y + row.top, row.size, Osc(oscillator, row.param),
                                  row.bitmap, row.captionMode);
        knob.caption.showLabel = row.size == 40;
        panel.controls.push_back(knob);
    }
    AddFilter(panel, oscillator, y);
    AddLfoSwitches(panel, oscillator, y);
    panel.engravings = {Heading("TUNING", 217, y + 56, 60, panel.section),
                        Heading("FILTER", 318, y + 56, 85, Section::Filters),
                        Heading("LFO", 436, y + 56, 30, Section::Modulation),
                        Heading("LFO TO", 476, y + 56, 150, Section::Modulation)};
    return panel;
}

} // namespace Grimworks
