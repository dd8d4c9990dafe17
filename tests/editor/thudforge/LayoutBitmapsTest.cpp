#include "core/ParameterIds.h"
#include "editor/EmbeddedFiles.h"
#include "editor/thudforge/Layout.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

/// The placed control of a parameter, step buttons apart; null if there is none.
const PlacedControl* ControlOf(int param) {
    for (const Panel& panel : EditorPanels()) {
        for (const PlacedControl& control : panel.controls) {
            if (control.param == param && control.kind != ControlKind::ModeSwitch) return &control;
        }
    }
    return nullptr;
}

std::string FileOf(int bitmap) {
    const BitmapInfo* const info = FindBitmap(bitmap);
    return info == nullptr ? std::string() : std::string(info->file);
}

struct Dressed {
    int param;
    const char* file;
};

void ExpectFiles(const std::vector<Dressed>& dressed) {
    for (const Dressed& known : dressed) {
        const PlacedControl* const control = ControlOf(known.param);
        ASSERT_NE(control, nullptr) << known.param;
        EXPECT_EQ(FileOf(control->bitmap), known.file) << known.param;
    }
}

TEST(LayoutBitmaps, KnobsOfOscillatorsWearTheirKind) {
    for (int oscillator = 0; oscillator < 3; ++oscillator) {
        const auto id = [&](OscParam param) { return Osc(oscillator, param); };
        ExpectFiles({{id(OscParam::OnOff), "switches/GW_on_off_20px.png"},
                     {id(OscParam::Pitch), "knobs/GW_Osc_Pitch_Tune_Knob_30px.png"},
                     {id(OscParam::Tune), "knobs/GW_Osc_Pitch_Tune_Knob_30px.png"},
                     {id(OscParam::LfoRate), "knobs/GW_LFO_Knob_30px.png"},
                     {id(OscParam::FilterCutoff), "knobs/GW_Filter_Knob_40px.png"},
                     {id(OscParam::FilterResonance), "knobs/GW_Resonance_Knob_40px.png"},
                     {id(OscParam::FilterBalance), "slider_handle_14px_14px.png"},
                     {id(OscParam::LfoToVolume), "knobs/GW_LFO_Knob_30px.png"},
                     {id(OscParam::Pan), "knobs/GW_Osc_Pan_Knob_30px.png"},
                     {id(OscParam::Saturation), "knobs/GW_Osc_Saturation_Knob_30px.png"},
                     {id(OscParam::Volume), "knobs/GW_Osc_Volume_Knob_30px.png"},
                     {id(OscParam::LfoLinkAll), "buttons/lfo_link_button.png"},
                     {id(OscParam::LfoTempoSync), "knobs/GW_LFO_Sync_Knob_30px.png"}});
    }
}

TEST(LayoutBitmaps, EnvelopesAndVoicesWearTheirKind) {
    for (int id = Param::PitchAmount; id <= Param::PitchDown; ++id)
        ExpectFiles({{id, "knobs/GW_Pitch_Knob_40px.png"}});
    for (int id = Param::EnvAttack; id <= Param::EnvAmount; ++id)
        ExpectFiles({{id, "knobs/GW_ADSR_Volume_Knob_30px.png"}});
    for (int id = Param::FilterAttack; id <= Param::FilterEnvAmount; ++id)
        ExpectFiles({{id, "knobs/GW_ADSR_Filter_Knob_30px.png"}});
    ExpectFiles({{Param::AdsrShape, "knobs/GW_ADSR_Volume_Knob_30px.png"},
                 {Param::PitchOnOff, "switches/GW_on_off_20px.png"},
                 {Param::UnisonVoices, "knobs/GW_Unison_Knob_2_states_40px.png"},
                 {Param::UnisonDetune, "knobs/GW_Unison_Knob_40px.png"},
                 {Param::FmAmount, "knobs/GW_Fm_Modulation_Knob_40px.png"},
                 {Param::BassLayerClick, "knobs/GW_Click_Knob_35px.png"},
                 {Param::BassLayerAmount, "knobs/GW_Bass-Layer_Knob_35px.png"},
                 {Param::BassLayerSolo, "buttons/solo_button_48x40.png"},
                 {Param::BassLayerToFilter, "buttons/filter_button_48x40.png"},
                 {Param::BassLayerToFm, "buttons/fm_button_48x40.png"}});
}

TEST(LayoutBitmaps, EffectsWearTheirKind) {
    ExpectFiles({{Param::FilterOnOff, "switches/GW_on_off_20px.png"},
                 {Param::FilterInputDrive, "knobs/GW_Filter_InputDrive_Knob_30px.png"},
                 {Param::FilterCutoff, "knobs/GW_Filter_Knob_40px.png"},
                 {Param::FilterResonance, "knobs/GW_Resonance_Knob_40px.png"},
                 {Param::FilterTransition, "knobs/GW_Filter_Transition_Knob_30px.png"},
                 {Param::RingModulationWaveForm, "knobs/GW_ModFx_Waveform_Knob_30px.png"},
                 {Param::PhaserTempoSync, "knobs/GW_ModFx_10_states_30px.png"},
                 {Param::Quantization, "knobs/GW_Disto_BitCrash_30px.png"},
                 {Param::SampleRate, "knobs/GW_Disto_SmpRate_30px.png"},
                 {Param::Gate, "knobs/GW_Disto_Gate_30px.png"},
                 {Param::Distortion, "knobs/GW_Disto_Knob_40px.png"},
                 {Param::DistortionLoudness, "buttons/disto_mode_button_3_states.png"},
                 {Param::DynShaper, "knobs/GW_DynShaper_Width_35px.png"},
                 {Param::DynShaperType, "knobs/GW_DynShaper_Type_3_states_40px.png"},
                 {Param::DynShaperInvert, "buttons/invert_button_48x40.png"},
                 {Param::DynShaperPosNegBoth, "buttons/signal_pos_neg_both_48x60.png"},
                 {Param::FilterEnvToDistortion, "buttons/pre_on_off.png"},
                 {Param::FilterEnvToDynShaper, "buttons/post_on_off.png"},
                 {Param::BassAmount, "knobs/GW_EQ_Low_Knob_35px.png"},
                 {Param::MidAmount, "knobs/GW_EQ_Mid_Knob_35px.png"},
                 {Param::HighAmount, "knobs/GW_EQ_High_Knob_35px.png"},
                 {Param::DumpExpand, "knobs/GW_DumpExp_Knob_35px.png"}});
    for (int id = Param::TempoDelayAmount; id <= Param::TempoDelaySpread; ++id)
        ExpectFiles({{id, "knobs/GW_TempoDelay_Knob_35px.png"}});
}

TEST(LayoutBitmaps, OutputWearsItsKind) {
    ExpectFiles({{Param::Pan, "knobs/GW_Pan_Knob_35px.png"},
                 {Param::Saturation, "knobs/GW_Saturation_Knob_35px.png"},
                 {Param::DryWet, "knobs/GW_Dry_Wet_Knob_35px.png"},
                 {Param::LimiterLevel, "knobs/GW_Limiter_Knob_35px.png"},
                 {Param::Volume, "knobs/GW_Volume_Knob_50px.png"},
                 {Param::BypassFX, "buttons/bypass_fx_button_84x60.png"},
                 {Param::LimiterMode, "buttons/limiter_mode_button.png"}});
}

TEST(LayoutBitmaps, CaptionsHaveTheirNumberFormatAndFirstText) {
    const auto modeOf = [](OscParam param) { return ControlOf(Osc(0, param))->caption.mode; };
    EXPECT_EQ(modeOf(OscParam::Pitch), 2);
    EXPECT_EQ(modeOf(OscParam::Tune), 3);
    EXPECT_EQ(modeOf(OscParam::Phase), 3);
    EXPECT_EQ(modeOf(OscParam::LfoRate), 5);
    EXPECT_EQ(modeOf(OscParam::Pan), 4);
    EXPECT_EQ(modeOf(OscParam::Saturation), 1);
    EXPECT_EQ(modeOf(OscParam::LfoTempoSync), 7);
    EXPECT_TRUE(ControlOf(Osc(0, OscParam::FilterCutoff))->caption.showLabel);
    EXPECT_TRUE(ControlOf(Osc(0, OscParam::FilterResonance))->caption.showLabel);
    EXPECT_FALSE(ControlOf(Osc(0, OscParam::Pitch))->caption.showLabel);
    EXPECT_STREQ(ControlOf(Param::Quantization)->caption.text, "64 bit");
    EXPECT_STREQ(ControlOf(Param::SampleRate)->caption.text, "44100 Hz");
    EXPECT_STREQ(ControlOf(Param::Gate)->caption.text, "-oo dB");
}

TEST(LayoutBitmaps, FreeTextsStandWhereTheyHaveAlwaysStood) {
    struct FreeText {
        const char* text;
        IRECT rect;
    };
    const std::vector<FreeText> known{{"Curve Preview", {653, 432, 782, 448}},
                                      {"Sub-Osc Target:", {347, 711, 467, 727}}};
    for (const FreeText& wanted : known) {
        int seen = 0;
        for (const Panel& panel : EditorPanels()) {
            for (const PlacedControl& control : panel.controls) {
                if (std::string(control.text) != wanted.text) continue;
                ++seen;
                EXPECT_EQ(control.rect, wanted.rect) << wanted.text;
            }
        }
        EXPECT_EQ(seen, 1) << wanted.text;
    }
}

TEST(LayoutBitmaps, ATextBeingTypedIsLightOnADarkGround) {
    for (const TextStyle style :
         {TextStyle::Value, TextStyle::ValueLeft, TextStyle::Display, TextStyle::Number}) {
        const IText text = TextOf(style);
        EXPECT_GE(text.textEntryFGColor.R, 240);
        EXPECT_LE(text.textEntryBGColor.R, 60);
        EXPECT_LE(text.textEntryBGColor.G, 60);
        EXPECT_LE(text.textEntryBGColor.B, 60);
    }
}

} // namespace
} // namespace Grimworks
