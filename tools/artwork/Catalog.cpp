#include "tools/artwork/Catalog.h"

#include "tools/artwork/Backgrounds.h"
#include "tools/artwork/Buttons.h"
#include "tools/artwork/Displays.h"
#include "tools/artwork/Knobs.h"
#include "tools/artwork/Lettering.h"
#include "tools/artwork/Style.h"

#include <functional>
#include <map>
#include <stdexcept>

namespace Artwork {

namespace {

using Grimworks::Section;
namespace Bitmap = Grimworks::Bitmap;
using Drawing = std::function<Canvas()>;
using Drawings = std::map<int, Drawing>;

constexpr int kTurningFrames = 128;

void AddKnobs(Drawings& all) {
    struct Row {
        int id;
        int size;
        Section section;
        ArcFrom from;
    };
    const std::vector<Row> rows{{Bitmap::AdsrFilterKnob, 30, Section::Envelopes, ArcFrom::Left},
                                {Bitmap::AdsrVolumeKnob, 30, Section::Envelopes, ArcFrom::Left},
                                {Bitmap::SubOscKnob, 35, Section::Oscillators, ArcFrom::Left},
                                {Bitmap::ClickKnob, 35, Section::Oscillators, ArcFrom::Left},
                                {Bitmap::BitCrashKnob, 30, Section::Distortion, ArcFrom::Left},
                                {Bitmap::SampleRateKnob, 30, Section::Distortion, ArcFrom::Left},
                                {Bitmap::GateKnob, 30, Section::Distortion, ArcFrom::Left},
                                {Bitmap::DistoKnob, 40, Section::Distortion, ArcFrom::Left},
                                {Bitmap::DynShaperKnob, 35, Section::Distortion, ArcFrom::Left},
                                {Bitmap::DryWetKnob, 35, Section::Output, ArcFrom::Left},
                                {Bitmap::LimiterKnob, 35, Section::Output, ArcFrom::Left},
                                {Bitmap::PanKnob, 35, Section::Output, ArcFrom::Middle},
                                {Bitmap::SaturationKnob, 35, Section::Output, ArcFrom::Left},
                                {Bitmap::VolumeKnob, 50, Section::Output, ArcFrom::Left},
                                {Bitmap::DumpExpandKnob, 35, Section::EqualizerDelay, ArcFrom::Middle},
                                {Bitmap::EqHighKnob, 35, Section::EqualizerDelay, ArcFrom::Middle},
                                {Bitmap::EqLowKnob, 35, Section::EqualizerDelay, ArcFrom::Middle},
                                {Bitmap::EqMidKnob, 35, Section::EqualizerDelay, ArcFrom::Middle},
                                {Bitmap::TempoDelayKnob, 35, Section::EqualizerDelay, ArcFrom::Left},
                                {Bitmap::FilterDriveKnob, 30, Section::Filters, ArcFrom::Left},
                                {Bitmap::FilterKnob, 40, Section::Filters, ArcFrom::Left},
                                {Bitmap::ResonanceKnob, 40, Section::Filters, ArcFrom::Left},
                                {Bitmap::FmKnob, 40, Section::Modulation, ArcFrom::Left},
                                {Bitmap::ModFxAmountKnob, 30, Section::Modulation, ArcFrom::Left},
                                {Bitmap::ModFxKnob, 30, Section::Modulation, ArcFrom::Left},
                                {Bitmap::LfoKnob, 30, Section::Modulation, ArcFrom::Left},
                                {Bitmap::OscPanKnob, 30, Section::Oscillators, ArcFrom::Middle},
                                {Bitmap::OscPitchKnob, 30, Section::Oscillators, ArcFrom::Middle},
                                {Bitmap::OscTuneKnob, 30, Section::Oscillators, ArcFrom::Middle},
                                {Bitmap::OscSaturationKnob, 30, Section::Oscillators, ArcFrom::Left},
                                {Bitmap::OscVolumeKnob, 30, Section::Oscillators, ArcFrom::Left},
                                {Bitmap::PitchKnob, 40, Section::Envelopes, ArcFrom::Left},
                                {Bitmap::UnisonKnob, 40, Section::Oscillators, ArcFrom::Left}};
    for (const Row& row : rows) {
        all[row.id] = [row] { return KnobStrip(row.size, kTurningFrames, Accent(row.section), row.from); };
    }
}

void AddSteppedKnobs(Drawings& all) {
    struct Row {
        int id;
        int size;
        int frames;
        Section section;
    };
    const std::vector<Row> rows{{Bitmap::DynShaperTypeKnob, 40, 3, Section::Distortion},
                                {Bitmap::FilterTransitionKnob, 30, 3, Section::Filters},
                                {Bitmap::ModFxSyncKnob, 30, 10, Section::Modulation},
                                {Bitmap::ModFxWaveformKnob, 30, 5, Section::Modulation},
                                {Bitmap::LfoSyncKnob, 30, 10, Section::Modulation},
                                {Bitmap::UnisonVoicesKnob, 40, 2, Section::Oscillators}};
    for (const Row& row : rows) {
        all[row.id] = [row] { return SteppedKnobStrip(row.size, row.frames, Accent(row.section)); };
    }
}

void AddToggles(Drawings& all) {
    struct Row {
        int id;
        int width;
        int height;
        const char* off;
        const char* on;
        Color accent;
    };
    const Color osc = Accent(Section::Oscillators);
    const std::vector<Row> rows{
        {Bitmap::BypassFx, 84, 30, "BYPASS FX", "BYPASSED", Accent(Section::Distortion)},
        {Bitmap::ToFilter, 48, 20, "FILTER", "FILTER", Accent(Section::Filters)},
        {Bitmap::ToFm, 48, 20, "FM", "FM", Accent(Section::Modulation)},
        {Bitmap::Solo, 48, 20, "SOLO", "SOLO", osc},
        {Bitmap::Invert, 48, 20, "INVERT", "INVERT", Accent(Section::Distortion)},
        {Bitmap::LfoLink, 54, 20, "LFO LINK", "LFO LINK", Accent(Section::Modulation)},
        {Bitmap::LimiterMode, 48, 20, "CLIP", "LIMIT", Accent(Section::Output)},
        {Bitmap::ShowLfo1, 102, 25, "LFO 1", "LFO 1", FromEditor({255, 60, 140, 255})},
        {Bitmap::ShowLfo2, 102, 25, "LFO 2", "LFO 2", FromEditor({255, 0, 220, 255})},
        {Bitmap::ShowLfo3, 102, 25, "LFO 3", "LFO 3", FromEditor({255, 0, 255, 100})},
        {Bitmap::ShowVolumeEnv, 102, 25, "VOL. ENV", "VOL. ENV", FromEditor({255, 170, 170, 170})},
        {Bitmap::ShowFilterEnv, 102, 25, "FILTER ENV", "FILTER ENV", FromEditor({255, 127, 127, 255})},
        {Bitmap::ShowOutput, 102, 25, "OUTPUT", "OUTPUT", FromEditor({255, 255, 250, 250})}};
    for (const Row& row : rows) {
        all[row.id] = [row] { return ToggleStrip(row.width, row.height, row.off, row.on, row.accent); };
    }
    all[Bitmap::OnOff] = [] { return PowerStrip(20); };
    all[Bitmap::Freeze] = [] { return FreezeStrip(110, 30, 5); };
    all[Bitmap::Pre] = [] { return LevelStrip(48, 20, "PRE", 3, Accent(Section::Envelopes)); };
    all[Bitmap::Post] = [] { return LevelStrip(48, 20, "POST", 3, Accent(Section::Envelopes)); };
    all[Bitmap::Polarity] = [] { return PolarityStrip(48, 20, Accent(Section::Distortion)); };
    all[Bitmap::FillMode] = [] { return FillModeStrip(64, 25, Ice()); };
    all[Bitmap::DistoMode] = [] {
        return ChoiceStrip(62, 20, {"LIGHT", "DRIVE", "FOLD"}, Accent(Section::Distortion));
    };
    all[Bitmap::ClipperMode] = [] {
        return ChoiceStrip(62, 25, {"CLIP 1", "CLIP 2", "CLIP 3", "CLIP 4"}, Accent(Section::Output));
    };
    all[Bitmap::TabSynth] = [] { return TabStrip(85, 25, "SYNTH"); };
    all[Bitmap::TabScope] = [] { return TabStrip(85, 25, "SCOPE"); };
    all[Bitmap::TabAbout] = [] { return TabStrip(85, 25, "ABOUT"); };
}

void AddMomentary(Drawings& all) {
    struct Row {
        int id;
        const char* legend;
        Color accent;
    };
    const std::vector<Row> rows{{Bitmap::InterpMode, "INTERP.", Accent(Section::Distortion)},
                                {Bitmap::ShaperMode, "MODE", Accent(Section::Distortion)},
                                {Bitmap::Load, "LOAD", Ice()},
                                {Bitmap::Save, "SAVE", Ice()},
                                {Bitmap::Reset, "RESET", Ice()},
                                {Bitmap::Restore, "RESTORE", Accent(Section::Distortion)},
                                {Bitmap::Sync, "SYNC", Accent(Section::Modulation)}};
    for (const Row& row : rows)
        all[row.id] = [row] { return MomentaryStrip(48, 20, row.legend, row.accent); };
    all[Bitmap::ArrowLeft] = [] { return ArrowKeyStrip(48, 20, false, Accent(Section::Envelopes)); };
    all[Bitmap::ArrowRight] = [] { return ArrowKeyStrip(48, 20, true, Accent(Section::Envelopes)); };
    all[Bitmap::Play] = [] { return PlayStrip(48, 20); };
    all[Bitmap::NextFilter] = [] { return NextStrip(48, 20, Accent(Section::Filters)); };
    all[Bitmap::Next] = [] { return StepStrip(20, true, Ice()); };
    all[Bitmap::Previous] = [] { return StepStrip(20, false, Ice()); };
    all[Bitmap::Plus] = [] { return ZoomStrip(25, true); };
    all[Bitmap::Minus] = [] { return ZoomStrip(25, false); };
}

void AddDisplays(Drawings& all) {
    const Color osc = Accent(Section::Oscillators);
    const Color env = Accent(Section::Envelopes);
    const Color dist = Accent(Section::Distortion);
    const Color eq = Accent(Section::EqualizerDelay);
    all[Bitmap::CurveDisplay] = [dist] { return FlushGridDisplay(128, 128, dist, 8, 8); };
    all[Bitmap::PreviewDisplay] = [dist] { return FlushGridDisplay(120, 36, dist, 8, 2); };
    all[Bitmap::CurveNameDisplay] = [dist] { return GlassDisplay(135, 20, dist); };
    all[Bitmap::DumpExpandDisplay] = [eq] { return DumpExpandDisplay(31, 20, eq); };
    all[Bitmap::EqDisplay] = [eq] { return EqDisplay(72, 44, eq); };
    all[Bitmap::FilterTypeDisplay] = [] { return GlassDisplay(62, 19, Accent(Section::Filters)); };
    all[Bitmap::FilterEnvDisplay] = [env] { return GridDisplay(120, 45, env, 10, 4, 4); };
    all[Bitmap::VolumeEnvDisplay] = [env] { return GridDisplay(120, 45, env, 10, 4, 4); };
    for (const int id : {Bitmap::Osc1Display, Bitmap::Osc2Display, Bitmap::Osc3Display}) {
        all[id] = [osc] { return GridDisplay(117, 46, osc, 8, 4, 3); };
    }
    all[Bitmap::PitchEnvDisplay] = [env] { return GridDisplay(220, 80, env, 16, 4, 6); };
    all[Bitmap::PresetDisplay] = [] { return GlassDisplay(185, 20, Ice()); };
    all[Bitmap::InfoDisplay] = [] { return GlassDisplay(810, 40, Ice()); };
    all[Bitmap::WaveNameDisplay] = [osc] { return GlassDisplay(117, 20, osc); };
    all[Bitmap::WaveDisplay] = [] { return ScopeDisplay(1040, 360, 344); };
    all[Bitmap::ZoomDisplay] = [] { return GlassDisplay(100, 25, Ice()); };
    all[Bitmap::Slider104] = [] { return SliderGroove(104, 14); };
    all[Bitmap::Slider82] = [] { return SliderGroove(82, 14); };
    all[Bitmap::SliderHandle] = [] { return SliderHandle(14, 14); };
}

void AddPictures(Drawings& all) {
    all[Bitmap::Title] = [] { return ProductTitle(380, 34); };
    all[Bitmap::X64] = [] { return WordSizeBadge(40, 22); };
    all[Bitmap::FreeVersionText] = [] { return FreeVersionText(520, 60); };
    all[Bitmap::Logo] = [] { return MakersLogo(740, 450); };
    all[Bitmap::TeamText] = [] { return TeamText(520, 110); };
    all[Bitmap::VstLogo] = [] { return InterfaceMark(176, 44); };
    all[Bitmap::WebIcon] = [] { return GlobeIcon(40); };
    all[Bitmap::LikeIcon] = [] { return LikeIcon(40); };
    all[Bitmap::Background] = [] { return Chassis(); };
    all[Bitmap::ControlsBackground] = [] { return ControlsPlate(); };
}

} // namespace

const std::vector<BitmapRow>& BitmapRows() {
    static const std::vector<BitmapRow> rows{
#define BITMAP(id, file, frames) {id, file, frames},
#include "resources/Bitmaps.inc"
#undef BITMAP
    };
    return rows;
}

Canvas DrawBitmap(int id) {
    static const Drawings all = [] {
        Drawings drawings;
        AddKnobs(drawings);
        AddSteppedKnobs(drawings);
        AddToggles(drawings);
        AddMomentary(drawings);
        AddDisplays(drawings);
        AddPictures(drawings);
        return drawings;
    }();
    const auto found = all.find(id);
    if (found == all.end()) throw std::runtime_error("no drawing for bitmap " + std::to_string(id));
    return found->second();
}

} // namespace Artwork
