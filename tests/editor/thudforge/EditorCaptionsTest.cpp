#include "editor/thudforge/EditorCaptions.h"

#include "editor/IBitmapControl.h"
#include "editor/ITextControl.h"
#include "editor/thudforge/CaptionTexts.h"
#include "tests/editor/thudforge/DisplayRig.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Grimworks {

namespace {

struct CaptionRig : DisplayRig {
    /// The text of a parameter at a value.
    std::string At(int id, double value) {
        plug.SetParameterFromHost(id, value);
        return captions.Text(id);
    }

    ITextControl& Attach(int id) {
        auto& control = graphics.Attach<ITextControl>(&plug, IRECT(10, 10, 90, 26), IText());
        captions.SetCaption(id, &control);
        return control;
    }

    EditorCaptions captions{plug};
};

} // namespace

TEST(EditorCaptions, OscillatorsShowWaveNumberBalanceAndSync) {
    CaptionRig rig;
    for (const int base : {0, 21, 42}) {
        EXPECT_EQ(rig.At(base + 1, 0.0), "01");
        EXPECT_EQ(rig.At(base + 1, 0.2), "09");
        EXPECT_EQ(rig.At(base + 1, 1.0), "41");
        EXPECT_EQ(rig.At(base + 8, 0.25), "75.0% / 25.0%");
        EXPECT_EQ(rig.At(base + 8, 1.0), "0.0% / 100.0%");
    }
}

TEST(EditorCaptions, AnLfoShowsItsDivisionOrItsRate) {
    CaptionRig rig;
    rig.Set(13, 0.5);
    EXPECT_EQ(rig.At(15, 0.0), "10.0Hz");
    EXPECT_EQ(rig.At(15, 1.0 / 9.0), "1/16x");
    EXPECT_EQ(rig.At(15, 5.0 / 9.0), "1.0x");
    EXPECT_EQ(rig.At(15, 1.0), "16.0x");
    rig.Set(127, 0.05);
    EXPECT_EQ(rig.At(139, 0.0), " 1.0Hz");
    EXPECT_EQ(rig.At(139, 4.0 / 9.0), "1/2x");
}

TEST(EditorCaptions, EnvelopesShowTimesInSecondsAndSustainInDecibels) {
    CaptionRig rig;
    for (const int base : {63, 70}) {
        EXPECT_EQ(rig.At(base + 4, 0.4), "2.000 s");
        for (const int stage : {0, 1, 3})
            EXPECT_EQ(rig.At(base + stage, 0.25), "0.500 s") << base + stage;
        EXPECT_EQ(rig.At(base + 4, 0.0), "0.005 s");
        EXPECT_EQ(rig.captions.Text(base), "0.001 s");
        EXPECT_EQ(rig.At(base + 2, 1.0), "0.0dB");
        EXPECT_EQ(rig.At(base + 2, 0.5), "-6.0dB");
        EXPECT_EQ(rig.At(base + 2, 0.0), "-oo dB");
        EXPECT_EQ(rig.At(base + 5, 0.125), "0.125");
        EXPECT_EQ(rig.At(base + 6, 0.75), "0.750");
    }
}

TEST(EditorCaptions, PitchBendShowsSemitonesAndUnisonItsVoices) {
    CaptionRig rig;
    EXPECT_EQ(rig.At(87, 0.0), "+/- 0");
    EXPECT_EQ(rig.At(87, 1.0 / 6.0), "+/- 2");
    EXPECT_EQ(rig.At(87, 1.0), "+/- 12");
    EXPECT_EQ(rig.At(93, 0.49), "1");
    EXPECT_EQ(rig.At(93, 0.5), "2");
}

TEST(EditorCaptions, TheEqualizerShowsDecibels) {
    CaptionRig rig;
    for (const int id : {96, 97, 98}) {
        EXPECT_EQ(rig.At(id, 0.0), "-24.0dB");
        EXPECT_EQ(rig.At(id, 0.5), "0.0dB");
        EXPECT_EQ(rig.At(id, 0.75), "12.0dB");
    }
    EXPECT_EQ(rig.At(99, 0.0), "100.0% LP");
    EXPECT_EQ(rig.At(99, 0.5), "0.0% HP");
    EXPECT_EQ(rig.At(99, 0.75), "50.0% HP");
}

TEST(EditorCaptions, TheDistortionNamesItsChoices) {
    CaptionRig rig;
    EXPECT_EQ(rig.At(102, 0.0), "Linear");
    EXPECT_EQ(rig.At(102, 20.0 / 41.0), "Hardcore-Fuzz1");
    const std::vector<std::string> interpolations{"[no interpolation]", "[linear interpolation]",
                                                  "[cosine interpolation]", "[cubic interpolation]"};
    const std::vector<std::string> modes{"Shaper", "Sat.Shaper", "Boost Shaper", "Boost+Sat.Shaper"};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(rig.At(104, static_cast<double>(i) / 3.0), interpolations[i]);
        EXPECT_EQ(rig.At(108, static_cast<double>(i) / 3.0), modes[i]);
    }
    EXPECT_EQ(rig.At(107, 0.0), "Sine");
    EXPECT_EQ(rig.At(107, 0.5), "Triangle");
    EXPECT_EQ(rig.At(107, 1.0), "Pulse");
    EXPECT_EQ(rig.At(103, 0.5), "");
}

TEST(EditorCaptions, AnInterpolationOutsideTheTableIsUnknown) {
    CaptionSource source;
    source.values[104] = 2.0;
    EXPECT_EQ(CaptionText(104, source), "[unknown interpolation]");
    source.values[104] = -1.0;
    EXPECT_EQ(CaptionText(104, source), "[unknown interpolation]");
}

TEST(EditorCaptions, BitsRateAndGateShowWhatTheyDo) {
    CaptionRig rig;
    EXPECT_EQ(rig.At(110, 1.0), "64.0bit");
    EXPECT_EQ(rig.At(110, 0.0), "1.0bit");
    EXPECT_EQ(rig.At(110, 0.5), "16.8bit"); // 0.25 * 63 + 1
    EXPECT_EQ(rig.At(111, 1.0), "44100Hz");
    EXPECT_EQ(rig.At(111, 0.5), "5512Hz"); // 128 of 1024 frames
    EXPECT_EQ(rig.At(111, 0.0), "86Hz");   // two of them
    EXPECT_EQ(rig.At(112, 0.5), "-24.1dB");
    EXPECT_EQ(rig.At(112, 1.0), "0.0dB");
}

TEST(EditorCaptions, AGateAtZeroHasNoDecibels) {
    CaptionRig rig;
    EXPECT_EQ(rig.At(112, 0.0), "-oodB");
}

TEST(EditorCaptions, TheFilterUnitShowsBalanceCutoffAndTransition) {
    CaptionRig rig;
    EXPECT_EQ(rig.At(115, 0.3), "70.0% / 30.0%");
    EXPECT_EQ(rig.At(116, 0.0), "10.0Hz");
    EXPECT_EQ(rig.At(116, 1.0), "22040.0Hz");
    EXPECT_EQ(rig.At(120, 0.0), "Slow");
    EXPECT_EQ(rig.At(120, 0.5), "Medium");
    EXPECT_EQ(rig.At(120, 1.0), "Fast");
}

TEST(EditorCaptions, TheRingModulatorNamesItsWaves) {
    CaptionRig rig;
    const std::vector<std::string> names{"Sine", "Pulse", "Saw", "Sine2", "Sine3"};
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(rig.At(124, static_cast<double>(i) / 4.0), names[i]);
}

TEST(EditorCaptions, OtherParametersHaveNoTextOfThisKind) {
    CaptionRig rig;
    for (const int id : {0, 3, 13, 79, 80, 85, 95, 100, 101, 113, 123, 133, 137, 140, 158, -1, 1000}) {
        EXPECT_FALSE(EditorCaptions::HasText(id)) << id;
        EXPECT_EQ(rig.captions.Text(id), "") << id;
        rig.captions.SetCaption(id, nullptr);
        rig.captions.Changed(id);
    }
    rig.captions.Update();
    for (const int id : {1, 8, 15, 22, 57, 63, 76, 87, 93, 96, 99, 102, 112, 115, 139})
        EXPECT_TRUE(EditorCaptions::HasText(id)) << id;
}

TEST(EditorCaptions, TextsAreMadeWithTheNextUpdate) {
    CaptionRig rig;
    ITextControl& caption = rig.Attach(110);
    rig.Set(110, 1.0);
    rig.captions.Update(); // the first one makes every text
    EXPECT_EQ(caption.String(), "64.0bit");
    rig.Set(110, 0.0);
    rig.captions.Update();
    EXPECT_EQ(caption.String(), "64.0bit");
    rig.captions.Changed(110);
    rig.captions.Update();
    EXPECT_EQ(caption.String(), "1.0bit");
}

TEST(EditorCaptions, ATextThatStaysIsNotDrawnAgain) {
    CaptionRig rig;
    ITextControl& caption = rig.Attach(110);
    rig.captions.Update();
    rig.graphics.Settle();
    rig.captions.Changed(110);
    rig.captions.Update();
    EXPECT_FALSE(caption.IsDirty());
}

TEST(EditorCaptions, ADurationChangesTheTextsOfItsStages) {
    CaptionRig rig;
    ITextControl& attack = rig.Attach(63);
    ITextControl& filterRelease = rig.Attach(73);
    rig.Set(63, 0.5);
    rig.Set(73, 0.5);
    for (const int id : {67, 74}) {
        rig.Set(id, 0.2);
        rig.captions.Changed(id);
    }
    rig.captions.Update();
    EXPECT_EQ(attack.String(), "0.500 s");
    EXPECT_EQ(filterRelease.String(), "0.500 s");
}

TEST(EditorCaptions, ARateChangesTheTextOfItsSync) {
    CaptionRig rig;
    ITextControl& sync = rig.Attach(36);
    ITextControl& phaser = rig.Attach(139);
    rig.Set(36, 0.0);
    rig.Set(139, 0.0);
    rig.Set(34, 0.25);
    rig.Set(127, 1.0);
    rig.captions.Update();
    EXPECT_EQ(sync.String(), " 5.0Hz");
    EXPECT_EQ(phaser.String(), "20.0Hz");
    rig.Set(34, 0.75);
    rig.Set(127, 0.5);
    rig.captions.Changed(34);
    rig.captions.Changed(127);
    rig.captions.Update();
    EXPECT_EQ(sync.String(), "15.0Hz");
    EXPECT_EQ(phaser.String(), "10.0Hz");
}

TEST(EditorCaptions, ANewBlockSizeChangesTheReducedRate) {
    CaptionRig rig;
    rig.Set(111, 0.0);
    EXPECT_EQ(rig.captions.Text(111), "86Hz");
    AEffect* const effect = rig.plug.Effect();
    bool marked = false;
    rig.plug.changedParameters.Take([](int) {});
    effect->dispatcher(effect, PlugOp::SetBlockSize, 0, 64, nullptr, 0.0F);
    rig.plug.changedParameters.Take([&marked](int id) { marked = marked || id == 111; });
    EXPECT_TRUE(marked);
    EXPECT_EQ(rig.captions.Text(111), "1378Hz");
}

TEST(EditorCaptions, TheNoteTextFollowsTheLastNote) {
    CaptionRig rig;
    auto& text = rig.graphics.Attach<ITextControl>(&rig.plug, IRECT(10, 10, 90, 26), IText());
    rig.captions.SetNoteText(&text);
    rig.captions.Update();
    EXPECT_EQ(text.String(), "");
    rig.Set(Param::NoteTransposeMode, 0.0);
    rig.NoteOn(57);
    rig.Play(1);
    rig.captions.Update();
    EXPECT_EQ(text.String(), "440.00Hz [A4]");
    rig.NoteOn(45);
    rig.Play(1);
    rig.captions.Update();
    EXPECT_EQ(text.String(), "220.00Hz [A3]");
}

TEST(EditorCaptions, ALinkThatTurnsOnTurnsTheOthersOffAndTheirControlsFollow) {
    DisplayRig rig;
    rig.plug.AttachGraphics(&rig.graphics);
    auto& second = rig.graphics.Attach<ISwitchControl>(&rig.plug, 10, 10, 35, IBitmap{nullptr, 20, 40, 2});
    rig.Set(35, 1.0);
    rig.graphics.RunTick();
    EXPECT_EQ(second.Value(), 1.0);
    rig.Set(14, 1.0);
    rig.graphics.RunTick();
    EXPECT_EQ(second.Value(), 0.0);
    EXPECT_EQ(rig.plug.GetParameterNormalized(35), 0.0);
    rig.plug.AttachGraphics(nullptr);
}

} // namespace Grimworks
