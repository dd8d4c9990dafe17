#include "plugin/IPlugVST.h"

#include "tests/plugin/TestPlug.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace Grimworks {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(IPlugVSTHost, EditsAreAnnouncedByOpcode) {
    PlugAndHost both;
    both.plug.BeginInformHostOfParamChange(5);
    EXPECT_EQ(both.host.Last().opcode, 43);
    EXPECT_EQ(both.host.Last().index, 5);
    both.plug.InformHostOfParamChange(6, 0.25);
    EXPECT_EQ(both.host.Last().opcode, 0);
    EXPECT_EQ(both.host.Last().index, 6);
    EXPECT_EQ(both.host.Last().opt, 0.25F);
    both.plug.EndInformHostOfParamChange(7);
    EXPECT_EQ(both.host.Last().opcode, 44);
    EXPECT_EQ(both.host.Last().index, 7);
    both.plug.InformHostOfProgramChange();
    EXPECT_EQ(both.host.Last().opcode, 42);
}

TEST(IPlugVSTHost, OfflineIsProcessLevelFour) {
    PlugAndHost both;
    EXPECT_FALSE(both.plug.IsRenderingOffline());
    EXPECT_EQ(both.host.Last().opcode, 23);
    both.host.processLevel = 4;
    EXPECT_TRUE(both.plug.IsRenderingOffline());
    both.host.processLevel = 2;
    EXPECT_FALSE(both.plug.IsRenderingOffline());
}

TEST(IPlugVSTHost, SamplePositionIsRoundedAndNeverNegative) {
    PlugAndHost both;
    both.host.time.samplePos = 1234.5;
    EXPECT_EQ(both.plug.GetSamplePos(), 1235);
    EXPECT_EQ(both.host.Last().opcode, 7);
    EXPECT_EQ(both.host.Last().value, 0);
    both.host.time.samplePos = 1234.4;
    EXPECT_EQ(both.plug.GetSamplePos(), 1234);
    for (const double bad : {-1.0, -0.4, kNaN}) {
        both.host.time.samplePos = bad;
        EXPECT_EQ(both.plug.GetSamplePos(), 0);
    }
    both.host.time.samplePos = 1e300;
    EXPECT_GT(both.plug.GetSamplePos(), 0);
    both.host.hasTime = false;
    EXPECT_EQ(both.plug.GetSamplePos(), 0);
}

TEST(IPlugVSTHost, TempoNeedsItsFlag) {
    PlugAndHost both;
    both.host.time.tempo = 140.0;
    EXPECT_EQ(both.plug.GetTempo(), 0.0);
    EXPECT_EQ(both.host.Last().value, 1024);
    both.host.time.flags = 0x400;
    EXPECT_EQ(both.plug.GetTempo(), 140.0);
    TempoSource& source = both.plug;
    EXPECT_EQ(source.GetTempo(), 140.0) << "the engine asks the same way";
    both.host.time.tempo = -1.0;
    EXPECT_EQ(both.plug.GetTempo(), 0.0);
    both.host.time.tempo = kNaN;
    EXPECT_TRUE(std::isnan(both.plug.GetTempo()));
    both.host.hasTime = false;
    EXPECT_EQ(both.plug.GetTempo(), 0.0);
}

TEST(IPlugVSTHost, TimeSignatureNeedsItsFlagAndSense) {
    PlugAndHost both;
    int numerator = 9;
    int denominator = 9;
    both.host.time.timeSigNumerator = 3;
    both.host.time.timeSigDenominator = 4;
    both.plug.GetTimeSig(numerator, denominator);
    EXPECT_EQ(both.host.Last().value, 8192);
    EXPECT_EQ(numerator, 0);
    EXPECT_EQ(denominator, 0);
    both.host.time.flags = 0x2000;
    both.plug.GetTimeSig(numerator, denominator);
    EXPECT_EQ(numerator, 3);
    EXPECT_EQ(denominator, 4);
    both.host.time.timeSigDenominator = -4;
    both.plug.GetTimeSig(numerator, denominator);
    EXPECT_EQ(numerator, 0);
    EXPECT_EQ(denominator, 0);
}

VstTimeInfo FullTime() {
    VstTimeInfo time{};
    time.samplePos = 1000.0;
    time.ppqPos = 1.5;
    time.tempo = 120.0;
    time.barStartPos = 1.0;
    time.cycleStartPos = 2.0;
    time.cycleEndPos = 4.0;
    time.timeSigNumerator = 7;
    time.timeSigDenominator = 8;
    time.flags = 0x2 | 0x4 | 0x200 | 0x400 | 0x800 | 0x1000 | 0x2000;
    return time;
}

TEST(IPlugVSTHost, TheWholeClockIsCopied) {
    PlugAndHost both;
    both.host.time = FullTime();
    HostTime time;
    both.plug.GetTime(time);
    EXPECT_EQ(both.host.Last().value, 15872);
    EXPECT_EQ(time.samplePos, 1000);
    EXPECT_EQ(time.ppqPos, 1.5);
    EXPECT_EQ(time.tempo, 120.0);
    EXPECT_EQ(time.barStartPos, 1.0);
    EXPECT_EQ(time.cycleStartPos, 2.0);
    EXPECT_EQ(time.cycleEndPos, 4.0);
    EXPECT_EQ(time.timeSigNumerator, 7);
    EXPECT_EQ(time.timeSigDenominator, 8);
    EXPECT_TRUE(time.playing);
    EXPECT_TRUE(time.cycling);
}

TEST(IPlugVSTHost, UnflaggedAndSenselessFieldsStayAtNothing) {
    PlugAndHost both;
    both.host.time = FullTime();
    both.host.time.flags = 0;
    HostTime time;
    time.ppqPos = 77.0;
    both.plug.GetTime(time);
    EXPECT_EQ(time.ppqPos, 0.0);
    EXPECT_EQ(time.tempo, 0.0);
    EXPECT_EQ(time.barStartPos, 0.0);
    EXPECT_EQ(time.cycleEndPos, 0.0);
    EXPECT_EQ(time.timeSigNumerator, 0);
    EXPECT_FALSE(time.playing);
    EXPECT_FALSE(time.cycling);

    both.host.time = FullTime();
    both.host.time.ppqPos = kNaN;
    both.host.time.tempo = -3.0;
    both.host.time.barStartPos = std::numeric_limits<double>::infinity();
    both.host.time.cycleEndPos = 1.0;
    both.host.time.timeSigNumerator = -1;
    both.plug.GetTime(time);
    EXPECT_EQ(time.ppqPos, 0.0);
    EXPECT_EQ(time.tempo, 0.0);
    EXPECT_EQ(time.barStartPos, 0.0);
    EXPECT_EQ(time.cycleStartPos, 0.0);
    EXPECT_EQ(time.cycleEndPos, 0.0);
    EXPECT_EQ(time.timeSigDenominator, 0);

    both.host.hasTime = false;
    time.playing = true;
    both.plug.GetTime(time);
    EXPECT_FALSE(time.playing);
}

TEST(IPlugVSTHost, TheHostIsAskedOnceWhoItIs) {
    PlugAndHost both;
    both.host.product = "REAPER Live";
    both.host.vendorVersion = 60312;
    EXPECT_EQ(both.plug.GetHost(), 1);
    EXPECT_EQ(both.plug.GetHost(), 1);
    EXPECT_EQ(both.host.Count(33), 1);
    EXPECT_EQ(both.host.Count(34), 1);
    EXPECT_EQ(both.plug.HostVersion(), 0x0006030CU);
    EXPECT_EQ(both.plug.HostInfo(), "64-bit Plugin Host: Reaper (v6.3.12)");
}

TEST(IPlugVSTHost, AnUnknownAndASilentHostDiffer) {
    PlugAndHost unknown;
    unknown.host.product = "Nobody knows me";
    EXPECT_EQ(unknown.plug.GetHost(), 0);
    PlugAndHost silent;
    silent.host.answersProduct = false;
    EXPECT_EQ(silent.plug.GetHost(), -1);
    TestPlug alone(nullptr);
    EXPECT_EQ(alone.GetHost(), -1);
    EXPECT_EQ(alone.HostInfo(), "64-bit Plugin Host: Unknown (v0.0.0)");
}

TEST(IPlugVSTHost, ALongProductStringIsNoHarm) {
    PlugAndHost both;
    both.host.product = std::string(900, 'x') + "cubase";
    EXPECT_EQ(both.plug.GetHost(), 3);
}

TEST(IPlugVSTHost, InitRunsOnceAndTellsThePlugIn) {
    PlugAndHost both;
    both.plug.HostSpecificInit();
    both.plug.HostSpecificInit();
    EXPECT_EQ(both.plug.hostIdentified, 1);
    EXPECT_EQ(both.plug.Effect()->numInputs, 0);
    EXPECT_EQ(both.plug.Effect()->numOutputs, 2);
}

TEST(IPlugVSTHost, InitBringsTheRecordInLineWithTheConnectedChannels) {
    PlugIdentity wide;
    wide.channels = "2-4";
    PlugAndHost both(wide);
    VstSpeakerArrangement inputs{};
    VstSpeakerArrangement outputs{};
    inputs.numChannels = 1;
    outputs.numChannels = 3;
    both.Dispatch(PlugOp::SetSpeakerArrangement, 0, reinterpret_cast<std::intptr_t>(&inputs), &outputs);
    EXPECT_EQ(both.plug.Effect()->numOutputs, 4);
    both.plug.HostSpecificInit();
    EXPECT_EQ(both.plug.Effect()->numInputs, 1);
    EXPECT_EQ(both.plug.Effect()->numOutputs, 3);
    VstSpeakerArrangement* toldInputs = nullptr;
    VstSpeakerArrangement* toldOutputs = nullptr;
    both.Dispatch(PlugOp::GetSpeakerArrangement, 0, reinterpret_cast<std::intptr_t>(&toldInputs),
                  &toldOutputs);
    EXPECT_EQ(toldInputs->numChannels, 1);
    EXPECT_EQ(toldOutputs->numChannels, 3);
}

TEST(IPlugVSTHost, FourHostsGetNoMoreThanStereoInputs) {
    PlugIdentity wide;
    wide.channels = "6-6";
    for (const char* product : {"Forte", "Audition", "Orion", "SawStudio"}) {
        PlugAndHost both(wide);
        both.host.product = product;
        both.plug.HostSpecificInit();
        EXPECT_EQ(both.plug.Effect()->numInputs, 2) << product;
        EXPECT_EQ(both.plug.Effect()->numOutputs, 6) << product;
    }
    PlugAndHost other(wide);
    other.host.product = "Cubase";
    other.plug.HostSpecificInit();
    EXPECT_EQ(other.plug.Effect()->numInputs, 6);
}

TEST(IPlugVSTHost, MidiGoesOutAsOneEvent) {
    PlugAndHost both;
    EXPECT_TRUE(both.plug.SendMidiMsg({17, 0x93, 60, 100}));
    EXPECT_EQ(both.host.Last().opcode, 8);
    VstMidiEvent event{};
    ASSERT_EQ(both.host.sentEvent.size(), sizeof event);
    std::memcpy(&event, both.host.sentEvent.data(), sizeof event);
    EXPECT_EQ(event.type, 1);
    EXPECT_EQ(event.byteSize, 32);
    EXPECT_EQ(event.deltaFrames, 17);
    EXPECT_EQ(static_cast<unsigned char>(event.midiData[0]), 0x93);
    EXPECT_EQ(event.midiData[1], 60);
    EXPECT_EQ(event.midiData[2], 100);
    both.host.eventsAnswer = 0;
    EXPECT_FALSE(both.plug.SendMidiMsg({0, 0x80, 60, 0}));
}

TEST(IPlugVSTHost, SystemExclusiveGoesOutAsOneEvent) {
    PlugAndHost both;
    const std::uint8_t dump[3] = {0xF0, 1, 0xF7};
    EXPECT_TRUE(both.plug.SendSysEx({5, 3, dump}));
    VstMidiSysexEvent event{};
    ASSERT_EQ(both.host.sentEvent.size(), sizeof event);
    std::memcpy(&event, both.host.sentEvent.data(), sizeof event);
    EXPECT_EQ(event.type, 6);
    EXPECT_EQ(event.byteSize, 48);
    EXPECT_EQ(event.deltaFrames, 5);
    EXPECT_EQ(event.dumpBytes, 3);
    EXPECT_EQ(reinterpret_cast<const std::uint8_t*>(event.dump), dump);
}

TEST(IPlugVSTHost, WithoutAHostEveryServiceAnswersNothing) {
    TestPlug plug(nullptr);
    plug.BeginInformHostOfParamChange(0);
    plug.InformHostOfParamChange(0, 0.5);
    plug.EndInformHostOfParamChange(0);
    plug.InformHostOfProgramChange();
    EXPECT_FALSE(plug.IsRenderingOffline());
    EXPECT_EQ(plug.GetSamplePos(), 0);
    EXPECT_EQ(plug.GetTempo(), 0.0);
    EXPECT_FALSE(plug.SendMidiMsg({}));
    EXPECT_FALSE(plug.SendSysEx({}));
    plug.SetParameterFromPlug(0, 0.5);
    EXPECT_EQ(plug.GetParameterValue(0), 0.5);
    plug.HostSpecificInit();
    EXPECT_EQ(plug.hostIdentified, 1);
}

TEST(IPlugVSTHost, AHostMayCallBackInFromItsAnswer) {
    PlugAndHost both;
    AEffect* effect = both.plug.Effect();
    both.host.reaction = [&](const TestHost::HostCall& call) {
        if (call.opcode == HostOp::Automate) effect->setParameter(effect, call.index + 1, call.opt);
    };
    both.plug.SetParameterFromPlug(20, 0.75);
    EXPECT_EQ(both.plug.GetParameterValue(21), 0.75);
    EXPECT_EQ(both.plug.changes, (std::vector<int>{20, 21}));
}

} // namespace
} // namespace Grimworks
