#include "plugin/IPlugVST.h"

#include "tests/plugin/TestPlug.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <thread>

namespace Grimworks {
namespace {

/// A host's text buffer with guard bytes behind what may be written.
struct TextBuffer {
    explicit TextBuffer(std::size_t mayWrite) : limit(mayWrite) { bytes.fill('#'); }

    [[nodiscard]] std::string Text() const {
        for (std::size_t i = limit; i < bytes.size(); ++i)
            EXPECT_EQ(bytes[i], '#') << "written past the buffer at " << i;
        const auto* end = std::find(bytes.data(), bytes.data() + limit, '\0');
        return {bytes.data(), end};
    }

    std::array<char, 256> bytes{};
    std::size_t limit;
};

std::string AskText(PlugAndHost& both, std::int32_t opcode, std::int32_t index = 0, std::size_t limit = 32) {
    TextBuffer buffer(limit);
    both.Dispatch(opcode, index, 0, buffer.bytes.data());
    return buffer.Text();
}

TEST(Dispatcher, OpenIdentifiesTheHostAndSendsEveryParameter) {
    PlugAndHost both;
    EXPECT_EQ(both.Dispatch(PlugOp::Open), 0);
    EXPECT_EQ(both.plug.hostIdentified, 1);
    ASSERT_EQ(both.plug.changes.size(), 159U);
    EXPECT_EQ(both.plug.changes[0], 0);
    EXPECT_EQ(both.plug.changes[158], 158);
    both.Dispatch(PlugOp::Open);
    EXPECT_EQ(both.plug.hostIdentified, 1) << "who the host is does not change";
    EXPECT_EQ(both.plug.changes.size(), 318U);
}

TEST(Dispatcher, CloseDestroysTheObject) {
    bool destroyed = false;
    auto owned = std::make_unique<TestPlug>(nullptr);
    owned->destroyed = &destroyed;
    AEffect* effect = owned.release()->Effect();
    EXPECT_EQ(effect->dispatcher(effect, PlugOp::Close, 0, 0, nullptr, 0.0F), 1);
    EXPECT_TRUE(destroyed);
}

TEST(Dispatcher, CloseWaitsForTheBlockThatIsPlaying) {
    bool destroyed = false;
    auto owned = std::make_unique<TestPlug>(nullptr);
    owned->destroyed = &destroyed;
    TestPlug* plug = owned.release();
    AEffect* effect = plug->Effect();
    plug->Lock().Enter();
    std::thread closer([effect] { effect->dispatcher(effect, PlugOp::Close, 0, 0, nullptr, 0.0F); });
    for (int i = 0; i < 100; ++i)
        std::this_thread::yield();
    EXPECT_FALSE(destroyed);
    plug->Lock().Leave();
    closer.join();
    EXPECT_TRUE(destroyed);
}

TEST(Dispatcher, SampleRateIsStoredAndResets) {
    PlugAndHost both;
    both.Dispatch(PlugOp::SetSampleRate, 0, 0, nullptr, 96000.0F);
    EXPECT_EQ(both.plug.GetSampleRate(), 96000.0);
    EXPECT_EQ(both.plug.resets, 1);
}

TEST(Dispatcher, SenselessSampleRatesAreIgnored) {
    PlugAndHost both;
    for (const float rate : {0.0F, -44100.0F, 1.0F, 1e30F, std::numeric_limits<float>::quiet_NaN(),
                             std::numeric_limits<float>::infinity()}) {
        both.Dispatch(PlugOp::SetSampleRate, 0, 0, nullptr, rate);
    }
    EXPECT_EQ(both.plug.GetSampleRate(), 44100.0);
    EXPECT_EQ(both.plug.resets, 0);
}

TEST(Dispatcher, BlockSizeIsStoredAndResets) {
    PlugAndHost both;
    both.Dispatch(PlugOp::SetBlockSize, 0, 17);
    EXPECT_EQ(both.plug.GetBlockSize(), 17);
    EXPECT_EQ(both.plug.resets, 1);
}

TEST(Dispatcher, SenselessBlockSizesAreIgnoredAndHugeOnesCapped) {
    PlugAndHost both;
    for (const std::intptr_t size :
         {std::intptr_t{0}, std::intptr_t{-1}, std::numeric_limits<std::intptr_t>::min()})
        both.Dispatch(PlugOp::SetBlockSize, 0, size);
    EXPECT_EQ(both.plug.GetBlockSize(), 1024);
    EXPECT_EQ(both.plug.resets, 0);
    both.Dispatch(PlugOp::SetBlockSize, 0, std::numeric_limits<std::intptr_t>::max());
    EXPECT_EQ(both.plug.GetBlockSize(), IPlugVST::kMaxBlockSize);
}

TEST(Dispatcher, SwitchingOffResetsAndSwitchingOnDoesNot) {
    PlugAndHost both;
    both.Dispatch(PlugOp::MainsChanged, 0, 1);
    EXPECT_EQ(both.plug.resets, 0);
    both.Dispatch(PlugOp::MainsChanged, 0, 0);
    EXPECT_EQ(both.plug.resets, 1);
    EXPECT_EQ(both.plug.activations, (std::vector<bool>{true, false}));
}

TEST(Dispatcher, SetProgramStoresThePresentStateFirst) {
    PlugAndHost both;
    both.plug.FillUnusedPresets("Empty");
    both.plug.SetParameterFromHost(4, 0.25);
    both.Dispatch(PlugOp::SetProgram, 0, 1);
    EXPECT_EQ(both.Dispatch(PlugOp::GetProgram), 1);
    EXPECT_NE(both.plug.GetParameterValue(4), 0.25);
    both.Dispatch(PlugOp::SetProgram, 0, 0);
    EXPECT_EQ(both.plug.GetParameterValue(4), 0.25);
    EXPECT_EQ(both.host.Count(HostOp::UpdateDisplay), 0);
}

TEST(Dispatcher, SetProgramWithTheCurrentIndexStoresAndAppliesAgain) {
    PlugAndHost both;
    both.plug.FillUnusedPresets("Empty");
    both.plug.SetParameterFromHost(4, 0.25);
    both.plug.changes.clear();
    both.Dispatch(PlugOp::SetProgram, 0, 0);
    EXPECT_EQ(both.plug.GetParameterValue(4), 0.25);
    EXPECT_EQ(both.plug.changes.size(), 159U);
    ByteChunk live;
    both.plug.SerializeState(live);
    EXPECT_TRUE(both.plug.GetPreset(0)->chunk == live);
}

TEST(Dispatcher, SetProgramOutsideTheListTouchesNothing) {
    PlugAndHost both;
    both.plug.FillUnusedPresets("Empty");
    const ByteChunk stored = both.plug.GetPreset(0)->chunk;
    both.plug.SetParameterFromHost(4, 0.25);
    both.plug.changes.clear();
    for (const std::intptr_t index : {std::intptr_t{-1}, std::intptr_t{128}, std::intptr_t{1} << 32,
                                      std::numeric_limits<std::intptr_t>::min()}) {
        EXPECT_EQ(both.Dispatch(PlugOp::SetProgram, 0, index), 0);
    }
    EXPECT_TRUE(both.plug.changes.empty());
    EXPECT_TRUE(both.plug.GetPreset(0)->chunk == stored);
    EXPECT_EQ(both.Dispatch(PlugOp::GetProgram), 0);
}

TEST(Dispatcher, ProgramNames) {
    PlugAndHost both;
    both.plug.FillUnusedPresets("Empty");
    char name[] = "A name that is far longer than thirty-one characters";
    EXPECT_EQ(both.Dispatch(PlugOp::SetProgramName, 0, 0, name), 0);
    EXPECT_EQ(both.host.Count(HostOp::UpdateDisplay), 1);
    EXPECT_EQ(both.plug.PresetName(0), name);
    EXPECT_EQ(AskText(both, PlugOp::GetProgramName), std::string(name).substr(0, 31));
    EXPECT_EQ(AskText(both, PlugOp::GetProgramNameIndexed, 0), std::string(name).substr(0, 31));
    EXPECT_EQ(AskText(both, PlugOp::GetProgramNameIndexed, 127), "Empty");
    char buffer[64];
    EXPECT_EQ(both.Dispatch(PlugOp::GetProgramNameIndexed, 127, 0, buffer), 1);
    buffer[0] = '#';
    EXPECT_EQ(both.Dispatch(PlugOp::GetProgramNameIndexed, 128, 0, buffer), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::GetProgramNameIndexed, -1, 0, buffer), 0);
    EXPECT_EQ(buffer[0], '#') << "a bad index writes nothing";
}

TEST(Dispatcher, ParameterTexts) {
    PlugAndHost both;
    both.plug.SetParameterFromHost(13, 0.5);
    EXPECT_EQ(AskText(both, PlugOp::GetParameterName, 13), "Osc1 LFO1 Freq.");
    EXPECT_EQ(AskText(both, PlugOp::GetParameterLabel, 13), "Hz");
    EXPECT_EQ(AskText(both, PlugOp::GetParameterDisplay, 13), "0.500");
    both.plug.SetParameterFromHost(80, 1.0);
    EXPECT_EQ(AskText(both, PlugOp::GetParameterDisplay, 80), "1.259");
    EXPECT_EQ(AskText(both, PlugOp::GetParameterLabel, 80), "");
    EXPECT_EQ(AskText(both, PlugOp::GetParameterName, 158), "Reserved Parameter 18");
    for (const int opcode :
         {PlugOp::GetParameterName, PlugOp::GetParameterLabel, PlugOp::GetParameterDisplay}) {
        char buffer[8] = "#######";
        EXPECT_EQ(both.Dispatch(opcode, 159, 0, buffer), 0);
        EXPECT_EQ(both.Dispatch(opcode, -1, 0, buffer), 0);
        EXPECT_STREQ(buffer, "#######");
    }
}

TEST(Dispatcher, AutomationIsForIdsInTheList) {
    PlugAndHost both;
    EXPECT_EQ(both.Dispatch(PlugOp::CanBeAutomated, 0), 1);
    EXPECT_EQ(both.Dispatch(PlugOp::CanBeAutomated, 158), 1);
    EXPECT_EQ(both.Dispatch(PlugOp::CanBeAutomated, 159), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::CanBeAutomated, -1), 0);
}

TEST(Dispatcher, ATextBecomesAValue) {
    PlugAndHost both;
    char text[] = "1.1";
    EXPECT_EQ(both.Dispatch(PlugOp::StringToParameter, 80, 0, text), 1);
    EXPECT_EQ(both.plug.GetParameterValue(80), 1.1);
    EXPECT_EQ(both.plug.changes, std::vector<int>{80});
    EXPECT_EQ(both.Dispatch(PlugOp::StringToParameter, 159, 0, text), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::StringToParameter, 80, 0, nullptr), 0);
}

TEST(Dispatcher, FixedAnswers) {
    PlugAndHost both;
    EXPECT_EQ(both.Dispatch(PlugOp::Identify), 0x4E764566);
    EXPECT_EQ(both.Dispatch(PlugOp::GetCategory), 2);
    EXPECT_EQ(both.Dispatch(PlugOp::OfflineNotify), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::GetVendorVersion), 10803);
    EXPECT_EQ(both.Dispatch(PlugOp::GetTailSize), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::GetInterfaceVersion), 2400);
    EXPECT_EQ(AskText(both, PlugOp::GetEffectName, 0, 64), "ThudForge 1.8.3 FREE");
    EXPECT_EQ(AskText(both, PlugOp::GetVendorString, 0, 64), "GrimWorks");
    EXPECT_EQ(AskText(both, PlugOp::GetProductString, 0, 64), "");
    PlugIdentity identity;
    identity.isInstrument = false;
    identity.effectName = std::string(100, 'x');
    PlugAndHost effect(identity);
    EXPECT_EQ(effect.Dispatch(PlugOp::GetCategory), 1);
    EXPECT_EQ(AskText(effect, PlugOp::GetEffectName, 0, 64), std::string(63, 'x'));
}

TEST(Dispatcher, OpcodesWithoutAMeaningAnswerZero) {
    PlugAndHost both;
    const std::vector<std::uint8_t> before = both.Chunk(true);
    both.plug.changes.clear();
    char buffer[256] = "#";
    const auto ask = [&](int opcode) { return both.Dispatch(opcode, 1, 1, buffer, 1.0F); };
    for (const int opcode : {9, 28, 43, 44, 46, 67, 68})
        EXPECT_EQ(ask(opcode), 0) << opcode;
    for (const auto& [first, last] :
         {std::pair(16, 21), std::pair(30, 32), std::pair(36, 40), std::pair(53, 57), std::pair(59, 65),
          std::pair(70, 500), std::pair(-300, -1)}) {
        for (int opcode = first; opcode <= last; ++opcode)
            EXPECT_EQ(ask(opcode), 0) << opcode;
    }
    EXPECT_EQ(ask(std::numeric_limits<int>::max()), 0);
    EXPECT_EQ(ask(std::numeric_limits<int>::min()), 0);
    EXPECT_STREQ(buffer, "#");
    EXPECT_TRUE(both.plug.changes.empty());
    EXPECT_EQ(both.plug.resets, 0);
    EXPECT_EQ(both.Chunk(true), before);
}

TEST(Dispatcher, CanDo) {
    PlugAndHost both;
    const auto ask = [](PlugAndHost& plug, std::string text) {
        return plug.Dispatch(PlugOp::CanDo, 0, 0, text.data());
    };
    PlugIdentity deafIdentity;
    deafIdentity.wantsMidi = false;
    PlugAndHost deaf(deafIdentity);
    for (const char* text :
         {"sendVstEvents", "sendVstMidiEvent", "receiveVstEvents", "receiveVstMidiEvent"}) {
        EXPECT_EQ(ask(both, text), 1) << text;
        EXPECT_EQ(ask(deaf, text), 0) << text;
    }
    EXPECT_EQ(ask(both, "receiveVstTimeInfo"), 1);
    EXPECT_EQ(ask(deaf, "receiveVstTimeInfo"), 1);
    for (const char* text : {"", "bypass", "receivevsttimeinfo", "receiveVstTimeInfo2"})
        EXPECT_EQ(ask(both, text), 0) << text;
    EXPECT_EQ(both.plug.HostExtensions(), 0U);
    EXPECT_EQ(ask(both, "hasCockosExtensions"), 0xBEEF0000);
    EXPECT_EQ(both.plug.HostExtensions(), 1U);
    EXPECT_EQ(ask(both, "hasCockosViewAsConfig"), 0xBEEF0000);
    EXPECT_EQ(both.plug.HostExtensions(), 3U);
}

TEST(Dispatcher, VendorSpecificTextAndType) {
    PlugAndHost both;
    EXPECT_EQ(both.Dispatch(PlugOp::VendorSpecific, 8, 158), 0xBEEF);
    EXPECT_EQ(both.Dispatch(PlugOp::VendorSpecific, 8, 159), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::VendorSpecific, 8, -1), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::VendorSpecific, 8, std::intptr_t{1} << 32), 0);
    TextBuffer buffer(32);
    EXPECT_EQ(both.Dispatch(PlugOp::VendorSpecific, 7, 80, buffer.bytes.data(), 1.0F), 0xBEEF);
    EXPECT_EQ(buffer.Text(), "1.259");
    EXPECT_EQ(both.Dispatch(PlugOp::VendorSpecific, 7, 80, buffer.bytes.data(), -3.4e38F), 0xBEEF);
    EXPECT_EQ(buffer.Text().size(), 31U);
    EXPECT_EQ(both.Dispatch(PlugOp::VendorSpecific, 7, 159, buffer.bytes.data(), 1.0F), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::VendorSpecific, 7, 80, nullptr, 1.0F), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::VendorSpecific, 4711, 0, nullptr, 1.0F), 17) << "goes to the plug-in";
    EXPECT_EQ(both.Dispatch(PlugOp::VendorSpecific, 9, 0, nullptr, 1.0F), 0);
}

TEST(Dispatcher, EventsReachThePlugInAndNullOnesAreSkipped) {
    PlugAndHost both;
    VstMidiEvent midi{};
    midi.type = 1;
    midi.deltaFrames = 33;
    midi.midiData[0] = static_cast<char>(0x95);
    midi.midiData[1] = 61;
    midi.midiData[2] = static_cast<char>(200);
    char bytes[2] = {1, 2};
    VstMidiSysexEvent dump{};
    dump.type = 6;
    dump.deltaFrames = 4;
    dump.dumpBytes = 2;
    dump.dump = bytes;
    VstMidiSysexEvent empty{};
    empty.type = 6;
    empty.dumpBytes = -5;
    VstMidiEvent other{};
    other.type = 3;
    struct {
        std::int32_t numEvents;
        std::intptr_t reserved;
        void* events[6];
    } list{6, 0, {nullptr, &midi, &dump, &other, &empty, nullptr}};
    static_assert(offsetof(decltype(list), events) == offsetof(VstEvents, events));
    EXPECT_EQ(both.Dispatch(PlugOp::ProcessEvents, 0, 0, &list), 1);
    ASSERT_EQ(both.plug.messages.size(), 1U);
    EXPECT_EQ(both.plug.messages[0].offset, 33);
    EXPECT_EQ(both.plug.messages[0].status, 0x95);
    EXPECT_EQ(both.plug.messages[0].data1, 61);
    EXPECT_EQ(both.plug.messages[0].data2, 200);
    ASSERT_EQ(both.plug.dumps.size(), 2U);
    EXPECT_EQ(both.plug.dumps[0].offset, 4);
    EXPECT_EQ(both.plug.dumps[0].size, 2);
    EXPECT_EQ(both.plug.dumps[0].data[1], 2);
    EXPECT_EQ(both.plug.dumps[1].size, 0);
    list.numEvents = -7;
    EXPECT_EQ(both.Dispatch(PlugOp::ProcessEvents, 0, 0, &list), 1);
    EXPECT_EQ(both.plug.messages.size(), 1U);
    EXPECT_EQ(both.Dispatch(PlugOp::ProcessEvents), 0);
}

TEST(Dispatcher, KeysHaveNoNames) {
    PlugAndHost both;
    VstMidiKeyName key{};
    key.key = 60;
    std::memset(key.name, '#', sizeof key.name);
    EXPECT_EQ(both.Dispatch(PlugOp::GetMidiKeyName, 0, 0, &key), 0);
    EXPECT_EQ(key.name[0], '\0');
    EXPECT_EQ(key.key, 60);
}

TEST(Dispatcher, PinsOfTheOutputs) {
    PlugAndHost both;
    VstPinProperties pin{};
    EXPECT_EQ(both.Dispatch(PlugOp::GetOutputProperties, 0, 0, &pin), 1);
    EXPECT_STREQ(pin.label, "Output 1");
    EXPECT_EQ(pin.flags, 3);
    EXPECT_EQ(both.Dispatch(PlugOp::GetOutputProperties, 1, 0, &pin), 1);
    EXPECT_STREQ(pin.label, "Output 2");
    EXPECT_EQ(pin.flags, 1);
    EXPECT_EQ(both.Dispatch(PlugOp::GetOutputProperties, 2, 0, &pin), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::GetOutputProperties, -1, 0, &pin), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::GetInputProperties, 0, 0, &pin), 0) << "there are no inputs";
    PlugIdentity identity;
    identity.channels = "3-1";
    PlugAndHost wide(identity);
    EXPECT_EQ(wide.Dispatch(PlugOp::GetInputProperties, 2, 0, &pin), 1);
    EXPECT_STREQ(pin.label, "Input 3");
    EXPECT_EQ(pin.flags, 1);
}

TEST(Dispatcher, SpeakersAreSetAndTold) {
    PlugAndHost both;
    VstSpeakerArrangement* inputs = nullptr;
    VstSpeakerArrangement* outputs = nullptr;
    const auto ask = [&] {
        return both.Dispatch(PlugOp::GetSpeakerArrangement, 0, reinterpret_cast<std::intptr_t>(&inputs),
                             &outputs);
    };
    ASSERT_EQ(ask(), 1);
    EXPECT_EQ(inputs->type, -1);
    EXPECT_EQ(inputs->numChannels, 0);
    EXPECT_EQ(outputs->type, 1);
    EXPECT_EQ(outputs->numChannels, 2);

    VstSpeakerArrangement wantedIn{};
    VstSpeakerArrangement wantedOut{};
    const auto set = [&](int count) {
        wantedIn.numChannels = count;
        wantedOut.numChannels = count;
        return both.Dispatch(PlugOp::SetSpeakerArrangement, 0, reinterpret_cast<std::intptr_t>(&wantedIn),
                             &wantedOut);
    };
    ASSERT_EQ(set(1), 1);
    ask();
    EXPECT_EQ(outputs->type, 0);
    EXPECT_EQ(outputs->numChannels, 1);
    for (const int count : {std::numeric_limits<int>::max(), 8, 2}) {
        ASSERT_EQ(set(count), 1);
        ask();
        EXPECT_EQ(outputs->numChannels, 2) << count;
        EXPECT_EQ(inputs->numChannels, 0);
    }
    ASSERT_EQ(set(-3), 1);
    ask();
    EXPECT_EQ(outputs->numChannels, 0);
    EXPECT_EQ(outputs->type, -1);
    EXPECT_EQ(both.Dispatch(PlugOp::SetSpeakerArrangement, 0, 0, &wantedOut), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::GetSpeakerArrangement, 0, 0, &outputs), 0);
}

TEST(Dispatcher, WithoutAnEditorItsOpcodesAnswerZero) {
    PlugAndHost both;
    ERect* rect = nullptr;
    int parent = 0;
    EXPECT_EQ(both.Dispatch(PlugOp::EditGetRect, 0, 0, &rect), 0);
    EXPECT_EQ(rect, nullptr);
    EXPECT_EQ(both.Dispatch(PlugOp::EditOpen, 0, 0, &parent), 0);
    EXPECT_EQ(both.Dispatch(PlugOp::EditClose), 0);
    EXPECT_EQ(both.plug.editorOpened + both.plug.editorClosed, 0);
}

TEST(Dispatcher, AnEditorIsMeasuredOpenedAndClosed) {
    PlugAndHost both;
    TestEditor editor;
    both.plug.AttachGraphics(&editor);
    ERect* rect = nullptr;
    ASSERT_EQ(both.Dispatch(PlugOp::EditGetRect, 0, 0, &rect), 1);
    EXPECT_EQ(rect->top, 0);
    EXPECT_EQ(rect->left, 0);
    EXPECT_EQ(rect->bottom, 835);
    EXPECT_EQ(rect->right, 1220);
    EXPECT_EQ(both.Dispatch(PlugOp::EditGetRect), 0);
    int parent = 0;
    bool lockWasFree = false;
    editor.whileOpening = [&] {
        std::thread window([&] {
            lockWasFree = both.plug.Lock().TryEnter();
            if (lockWasFree) both.plug.Lock().Leave();
        });
        window.join();
    };
    EXPECT_EQ(both.Dispatch(PlugOp::EditOpen, 0, 0, &parent), 1);
    EXPECT_TRUE(lockWasFree) << "a window thread may need it while the host waits";
    EXPECT_EQ(editor.openedIn, &parent);
    EXPECT_EQ(both.plug.editorOpened, 1);
    EXPECT_EQ(both.Dispatch(PlugOp::EditClose), 1);
    EXPECT_EQ(editor.openedIn, nullptr);
    EXPECT_EQ(both.plug.editorClosed, 1);
    EXPECT_EQ(both.Dispatch(PlugOp::EditOpen), 0) << "no parent, no window";
    editor.opens = false;
    EXPECT_EQ(both.Dispatch(PlugOp::EditOpen, 0, 0, &parent), 0);
    EXPECT_EQ(both.plug.editorOpened, 1);
}

TEST(Dispatcher, AResizedEditorShowsInTheRectangle) {
    PlugAndHost both;
    TestEditor editor;
    both.plug.AttachGraphics(&editor);
    ERect* rect = nullptr;
    both.plug.ResizeGraphics(100000, -5);
    both.Dispatch(PlugOp::EditGetRect, 0, 0, &rect);
    EXPECT_EQ(rect->right, 32767);
    EXPECT_EQ(rect->bottom, 0);
}

} // namespace
} // namespace Grimworks
