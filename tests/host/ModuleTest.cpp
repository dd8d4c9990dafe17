#include "host/Module.h"

#include "host/Files.h"
#include "host/PluginHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// The built module as a host meets it: through its entry point and nothing else.

using namespace Grimworks;

namespace {

constexpr double kLoudest = 3.1622777;

/// One instance made straight from the entry point, with no host behind it.
class Instance {
public:
    explicit Instance(const Module& module, audioMasterCallback callback = nullptr)
        : effect(module.Entry()(callback)) {}
    ~Instance() {
        if (effect != nullptr) Call(PlugOp::Close);
    }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    std::intptr_t Call(int opcode, int index = 0, std::intptr_t value = 0, void* pointer = nullptr,
                       float option = 0.0F) {
        return effect->dispatcher(effect, opcode, index, value, pointer, option);
    }

    void Start(float rate, int block) {
        Call(PlugOp::SetSampleRate, 0, 0, nullptr, rate);
        Call(PlugOp::SetBlockSize, 0, block);
        Call(PlugOp::Open);
        Call(PlugOp::MainsChanged, 0, 1);
    }

    void Send(int offset, int status, int data1, int data2) {
        VstMidiEvent event{};
        event.type = kMidiEvent;
        event.byteSize = sizeof event;
        event.deltaFrames = offset;
        event.midiData[0] = static_cast<char>(status);
        event.midiData[1] = static_cast<char>(data1);
        event.midiData[2] = static_cast<char>(data2);
        VstEvents events{};
        events.numEvents = 1;
        events.events[0] = reinterpret_cast<VstEvent*>(&event);
        Call(PlugOp::ProcessEvents, 0, 0, &events);
    }

    /// Renders one block of doubles; left and right come one after the other.
    std::vector<double> Render(int frames) {
        const auto count = static_cast<std::size_t>(std::max(frames, 0));
        std::vector<double> sound(2 * count + 2);
        std::array<double*, 2> outputs{sound.data(), sound.data() + count};
        effect->processDoubleReplacing(effect, nullptr, outputs.data(), frames);
        sound.resize(2 * count);
        return sound;
    }

    AEffect* effect;
};

class ModuleTest : public testing::Test {
protected:
    Module module{PathFromText(THUDFORGE_MODULE)};
};

double Peak(const std::vector<double>& sound) {
    double peak = 0.0;
    for (const double sample : sound)
        peak = std::isfinite(sample) ? std::max(peak, std::abs(sample)) : sample;
    return peak;
}

/// Opcodes that end the instance, or that take the address of something in an argument other than the
/// pointer.
bool TakesNoRubbish(int opcode) {
    return opcode == PlugOp::Close || opcode == PlugOp::SetChunk || opcode == PlugOp::EditOpen ||
           opcode == PlugOp::SetSpeakerArrangement || opcode == PlugOp::GetSpeakerArrangement;
}

} // namespace

TEST_F(ModuleTest, TheRecordSaysWhatTheInstrumentIs) {
    const Instance instance(module);
    const AEffect* effect = instance.effect;
    ASSERT_NE(effect, nullptr);
    EXPECT_EQ(std::memcmp(&effect->magic, "PtsV", 4), 0);
    EXPECT_EQ(std::memcmp(&effect->uniqueID, "otra", 4), 0);
    EXPECT_EQ(effect->version, 10803);
    EXPECT_EQ(effect->numParams, 159);
    EXPECT_EQ(effect->numPrograms, 128);
    EXPECT_EQ(effect->numInputs, 0);
    EXPECT_EQ(effect->numOutputs, 2);
    EXPECT_EQ(effect->flags & ~EffectFlag::HasEditor, 0x1130);
    EXPECT_EQ(effect->initialDelay, 0);
    EXPECT_EQ(effect->ioRatio, 1.0F);
    EXPECT_NE(effect->object, nullptr);
    EXPECT_NE(effect->dispatcher, nullptr);
    EXPECT_NE(effect->process, nullptr);
    EXPECT_NE(effect->setParameter, nullptr);
    EXPECT_NE(effect->getParameter, nullptr);
    EXPECT_NE(effect->processReplacing, nullptr);
    EXPECT_NE(effect->processDoubleReplacing, nullptr);
}

TEST_F(ModuleTest, TextsAndNumbersAreAnswered) {
    PluginHost host(module.Entry(), "ThudForge", {});
    EXPECT_EQ(host.Text(PlugOp::GetEffectName), "ThudForge 1.8.3 FREE");
    EXPECT_EQ(host.Text(PlugOp::GetVendorString), "GrimWorks");
    EXPECT_EQ(host.Text(PlugOp::GetProductString), "");
    EXPECT_EQ(host.Dispatch(PlugOp::GetVendorVersion), 10803);
    EXPECT_EQ(host.Dispatch(PlugOp::GetInterfaceVersion), 2400);
    EXPECT_EQ(host.Dispatch(PlugOp::GetCategory), 2);
    EXPECT_EQ(host.Dispatch(PlugOp::GetTailSize), 0);
    EXPECT_EQ(host.Dispatch(PlugOp::Identify), 0x4E764566);
    EXPECT_EQ(host.Dispatch(PlugOp::CanBeAutomated), 1);
    EXPECT_EQ(host.Dispatch(PlugOp::OfflineNotify), 0);
}

TEST_F(ModuleTest, CanDoAnswersByTheTable) {
    Instance instance(module);
    const auto canDo = [&instance](std::string question) {
        return instance.Call(PlugOp::CanDo, 0, 0, question.data());
    };
    for (const char* question : {"receiveVstTimeInfo", "sendVstEvents", "sendVstMidiEvent",
                                 "receiveVstEvents", "receiveVstMidiEvent"}) {
        EXPECT_EQ(canDo(question), 1) << question;
    }
    for (const char* question : {"", "bypass", "offline", "receivevstevents", "receiveVstEventsx"}) {
        EXPECT_EQ(canDo(question), 0) << question;
    }
}

TEST_F(ModuleTest, BothEntryPointsMakeAnInstrument) {
    for (const char* name : {"VSTPluginMain", "main"}) {
        const auto entry = module.EntryNamed(name);
        ASSERT_NE(entry, nullptr) << name;
        AEffect* effect = entry(nullptr);
        ASSERT_NE(effect, nullptr) << name;
        EXPECT_EQ(effect->numParams, 159) << name;
        EXPECT_EQ(effect->dispatcher(effect, PlugOp::Close, 0, 0, nullptr, 0.0F), 1) << name;
    }
}

TEST_F(ModuleTest, EveryParameterHasAUniqueNameAndAValueFromZeroToOne) {
    PluginHost host(module.Entry(), "ThudForge", {});
    std::set<std::string> names;
    for (int id = 0; id < host.ParameterCount(); ++id) {
        EXPECT_FALSE(host.ParameterName(id).empty()) << id;
        EXPECT_LE(host.ParameterName(id).size(), 31U) << id;
        EXPECT_LE(host.ParameterDisplay(id).size(), 31U) << id;
        EXPECT_GE(host.Parameter(id), 0.0F) << id;
        EXPECT_LE(host.Parameter(id), 1.0F) << id;
        names.insert(host.ParameterName(id));
    }
    EXPECT_EQ(names.size(), 159U);
}

TEST_F(ModuleTest, AParameterKeepsWhatItIsGiven) {
    PluginHost host(module.Entry(), "ThudForge", {});
    for (int id = 0; id < 140; ++id) {
        for (const float value : {0.0F, 0.25F, 1.0F}) {
            host.SetParameter(id, value);
            EXPECT_EQ(host.Parameter(id), value) << id;
        }
    }
}

TEST_F(ModuleTest, ParametersOutsideTheTableAndValuesThatAreNoNumbersChangeNothing) {
    Instance instance(module);
    AEffect* effect = instance.effect;
    const float before = effect->getParameter(effect, 4);
    for (const int id : {-1, 159, 160, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        effect->setParameter(effect, id, 0.5F);
        EXPECT_EQ(effect->getParameter(effect, id), 0.0F) << id;
    }
    effect->setParameter(effect, 4, std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(effect->getParameter(effect, 4), before);
    for (int id = 0; id < 159; ++id) {
        for (const float value : {-1e30F, 1e30F, std::numeric_limits<float>::infinity(),
                                  -std::numeric_limits<float>::infinity(), -0.5F, 1.5F}) {
            effect->setParameter(effect, id, value);
            EXPECT_GE(effect->getParameter(effect, id), 0.0F) << id;
            EXPECT_LE(effect->getParameter(effect, id), 1.0F) << id;
        }
    }
}

TEST_F(ModuleTest, EveryOpcodeTakesNullPointers) {
    Instance instance(module);
    for (int opcode = -3; opcode < 200; ++opcode) {
        if (opcode == PlugOp::Close) continue;
        for (const int index :
             {0, -1, 158, 159, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
            instance.Call(opcode, index);
            if (TakesNoRubbish(opcode)) continue;
            instance.Call(opcode, index, 7, nullptr, 0.5F);
        }
    }
    for (const int opcode : {PlugOp::GetProgramName,
                             PlugOp::GetParameterLabel,
                             PlugOp::GetParameterDisplay,
                             PlugOp::GetParameterName,
                             PlugOp::SetProgramName,
                             PlugOp::EditGetRect,
                             PlugOp::EditOpen,
                             PlugOp::GetChunk,
                             PlugOp::SetChunk,
                             PlugOp::ProcessEvents,
                             PlugOp::StringToParameter,
                             PlugOp::GetProgramNameIndexed,
                             PlugOp::GetInputProperties,
                             PlugOp::GetOutputProperties,
                             PlugOp::SetSpeakerArrangement,
                             PlugOp::GetEffectName,
                             PlugOp::GetVendorString,
                             PlugOp::GetProductString,
                             PlugOp::CanDo,
                             PlugOp::GetSpeakerArrangement}) {
        EXPECT_EQ(instance.Call(opcode), 0) << opcode;
    }
    EXPECT_EQ(instance.Call(PlugOp::GetVendorVersion), 10803) << "the instance is still whole";
}

TEST_F(ModuleTest, EveryOpcodeTakesAbsurdIndexesAndValues) {
    Instance instance(module);
    constexpr auto kMost = std::numeric_limits<std::intptr_t>::max();
    constexpr auto kLeast = std::numeric_limits<std::intptr_t>::min();
    for (int opcode = -3; opcode < 200; ++opcode) {
        if (TakesNoRubbish(opcode)) continue;
        for (const int index :
             {-1, 159, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
            for (const std::intptr_t value : {std::intptr_t{-1}, std::intptr_t{159}, kMost, kLeast}) {
                std::vector<std::intptr_t> buffer(256, 0);
                instance.Call(opcode, index, value, buffer.data(), -1.0F);
            }
        }
    }
    EXPECT_EQ(instance.Call(PlugOp::GetVendorVersion), 10803);
    EXPECT_LE(Peak(instance.Render(64)), kLoudest);
}

TEST_F(ModuleTest, OpcodesOutsideTheTableGiveZero) {
    Instance instance(module);
    std::array<char, 256> buffer{};
    for (const int opcode : {-1,
                             9,
                             16,
                             21,
                             28,
                             30,
                             32,
                             36,
                             40,
                             43,
                             44,
                             46,
                             53,
                             57,
                             59,
                             65,
                             67,
                             68,
                             70,
                             71,
                             99,
                             10000,
                             std::numeric_limits<int>::max(),
                             std::numeric_limits<int>::min()}) {
        EXPECT_EQ(instance.Call(opcode, 0, 0, buffer.data()), 0) << opcode;
    }
}

TEST_F(ModuleTest, TextsStayWithinTheRoomThatHostsGive) {
    Instance instance(module);
    for (int opcode = 0; opcode < 70; ++opcode) {
        const bool isShort = (opcode >= 5 && opcode <= 8) || opcode == PlugOp::GetProgramNameIndexed;
        const bool isLong = opcode == 45 || opcode == 47 || opcode == 48;
        if (!isShort && !isLong) continue;
        const std::size_t room = isShort ? 32 : 64;
        for (int index = -1; index < 160; ++index) {
            std::array<char, 256> buffer{};
            buffer.fill('\x55');
            instance.Call(opcode, index, 0, buffer.data());
            const auto untouched = [](char c) { return c == '\x55'; };
            const bool anything = !untouched(buffer[0]);
            EXPECT_TRUE(
                std::all_of(buffer.begin() + static_cast<std::ptrdiff_t>(room), buffer.end(), untouched))
                << opcode << " " << index;
            if (anything) {
                EXPECT_NE(std::memchr(buffer.data(), 0, room), nullptr) << opcode << " " << index;
            }
        }
    }
}

TEST_F(ModuleTest, OutputsAreDescribedAndInputsAreNone) {
    Instance instance(module);
    VstPinProperties pin{};
    EXPECT_EQ(instance.Call(PlugOp::GetInputProperties, 0, 0, &pin), 0);
    EXPECT_EQ(instance.Call(PlugOp::GetOutputProperties, 0, 0, &pin), 1);
    EXPECT_STREQ(pin.label, "Output 1");
    EXPECT_EQ(pin.flags, PinFlag::Active | PinFlag::StereoPair);
    EXPECT_EQ(instance.Call(PlugOp::GetOutputProperties, 1, 0, &pin), 1);
    EXPECT_STREQ(pin.label, "Output 2");
    EXPECT_EQ(pin.flags, PinFlag::Active);
    for (const int index : {-1, 2, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(instance.Call(PlugOp::GetOutputProperties, index, 0, &pin), 0) << index;
    }
}

TEST_F(ModuleTest, ProcessingBeforeRateAndBlockSizeIsHarmless) {
    Instance instance(module);
    instance.Send(0, 0x90, 24, 127);
    EXPECT_LE(Peak(instance.Render(64)), kLoudest);
    EXPECT_LE(Peak(instance.Render(5000)), kLoudest);
}

TEST_F(ModuleTest, AbsurdFrameCountsAreHarmless) {
    Instance instance(module);
    instance.Start(48000.0F, 64);
    instance.Send(0, 0x90, 24, 127);
    std::array<double*, 2> none{};
    std::array<float*, 2> noFloats{};
    AEffect* effect = instance.effect;
    for (const int frames : {0, -1, -64, std::numeric_limits<int>::min()}) {
        effect->processDoubleReplacing(effect, nullptr, none.data(), frames);
        effect->processReplacing(effect, nullptr, noFloats.data(), frames);
        effect->process(effect, nullptr, noFloats.data(), frames);
    }
    EXPECT_GT(Peak(instance.Render(64)), 0.0);
}

TEST_F(ModuleTest, NullChannelsAndNullLists) {
    Instance instance(module);
    instance.Start(48000.0F, 256);
    instance.Send(0, 0x90, 24, 127);
    AEffect* effect = instance.effect;
    std::array<double*, 2> none{};
    std::array<float*, 2> noFloats{};
    effect->processDoubleReplacing(effect, nullptr, none.data(), 256);
    effect->processReplacing(effect, nullptr, noFloats.data(), 256);
    effect->process(effect, nullptr, noFloats.data(), 256);
    effect->processDoubleReplacing(effect, nullptr, nullptr, 256);
    effect->processReplacing(effect, nullptr, nullptr, 256);
    effect->process(effect, nullptr, nullptr, 256);
    std::vector<double> left(256);
    std::array<double*, 2> onlyLeft{left.data(), nullptr};
    effect->processDoubleReplacing(effect, nullptr, onlyLeft.data(), 256);
    EXPECT_GT(Peak(left), 0.0);
    EXPECT_LE(Peak(left), kLoudest);
}

TEST_F(ModuleTest, ACallAboveTheAnnouncedSizeEqualsCallsOfThatSize) {
    Instance whole(module);
    Instance sliced(module);
    for (Instance* instance : {&whole, &sliced}) {
        instance->Start(48000.0F, 64);
        instance->Send(0, 0x90, 24, 127);
        instance->Send(700, 0x90, 31, 90);
        instance->Send(1500, 0x80, 24, 0);
    }
    const std::vector<double> sound = whole.Render(2048);
    EXPECT_GT(Peak(sound), 0.0);
    for (std::size_t start = 0; start < 2048; start += 64) {
        const std::vector<double> part = sliced.Render(64);
        for (std::size_t i = 0; i < 64; ++i) {
            ASSERT_EQ(sound[start + i], part[i]) << start + i;
            ASSERT_EQ(sound[2048 + start + i], part[64 + i]) << start + i;
        }
    }
}

TEST_F(ModuleTest, TheThreeProcessFunctionsAgree) {
    Instance doubles(module);
    Instance floats(module);
    Instance adding(module);
    std::vector<float> replaced(512);
    std::vector<float> added(512, 1.0F);
    std::array<float*, 2> replacedOutputs{replaced.data(), replaced.data() + 256};
    std::array<float*, 2> addedOutputs{added.data(), added.data() + 256};
    for (Instance* instance : {&doubles, &floats, &adding}) {
        instance->Start(48000.0F, 256);
        instance->Send(10, 0x90, 24, 127);
    }
    const std::vector<double> sound = doubles.Render(256);
    floats.effect->processReplacing(floats.effect, nullptr, replacedOutputs.data(), 256);
    adding.effect->process(adding.effect, nullptr, addedOutputs.data(), 256);
    EXPECT_GT(Peak(sound), 0.0);
    for (std::size_t i = 0; i < sound.size(); ++i) {
        ASSERT_EQ(replaced[i], static_cast<float>(sound[i])) << i;
        ASSERT_FLOAT_EQ(added[i], 1.0F + replaced[i]) << i;
    }
}

TEST_F(ModuleTest, ANoteIsSilentUpToTheSampleOfItsOffset) {
    Instance played(module);
    Instance untouched(module);
    for (Instance* instance : {&played, &untouched})
        instance->Start(48000.0F, 512);
    played.Send(200, 0x90, 24, 127);
    const std::vector<double> sound = played.Render(512);
    // The idle chain is not exactly 0, as the curve may bend there, but below -100 dBFS.
    const std::vector<double> silence = untouched.Render(512);
    EXPECT_LT(Peak(silence), 1e-5);
    for (std::size_t i = 0; i <= 200; ++i)
        ASSERT_EQ(sound[i], silence[i]) << i;
    EXPECT_GT(Peak(sound), 1e-3);
}

TEST_F(ModuleTest, TwoFreshInstancesRenderTheSame) {
    Instance first(module);
    Instance second(module);
    for (Instance* instance : {&first, &second}) {
        instance->Start(44100.0F, 512);
        instance->Send(0, 0x90, 24, 127);
        instance->Send(100, 0xE0, 0, 96);
    }
    for (int block = 0; block < 20; ++block)
        ASSERT_EQ(first.Render(512), second.Render(512)) << block;
}

TEST_F(ModuleTest, EventListsWithRubbishAreSurvived) {
    Instance instance(module);
    instance.Start(48000.0F, 128);
    VstEvent unknown{};
    unknown.type = 99;
    VstMidiSysexEvent exclusive{};
    exclusive.type = kSysExEvent;
    exclusive.byteSize = sizeof exclusive;
    exclusive.dumpBytes = std::numeric_limits<std::int32_t>::max();
    std::array<std::intptr_t, 8> list{};
    auto* events = reinterpret_cast<VstEvents*>(list.data());
    events->numEvents = 4;
    list[3] = reinterpret_cast<std::intptr_t>(&unknown);
    list[4] = reinterpret_cast<std::intptr_t>(&exclusive);
    EXPECT_EQ(instance.Call(PlugOp::ProcessEvents, 0, 0, list.data()), 1);
    events->numEvents = -5;
    instance.Call(PlugOp::ProcessEvents, 0, 0, list.data());
    for (const int offset : {-1000000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        instance.Send(offset, 0x90, 200, 255);
        instance.Send(offset, 0x90, 40, 100);
        instance.Send(offset, 0xE0, 0, 127);
    }
    for (int block = 0; block < 10; ++block)
        EXPECT_LE(Peak(instance.Render(128)), kLoudest);
}

TEST_F(ModuleTest, AHostThatAnswersNothingIsEnough) {
    const auto silent = [](AEffect*, std::int32_t, std::int32_t, std::intptr_t, void*,
                           float) -> std::intptr_t { return 0; };
    Instance instance(module, silent);
    ASSERT_NE(instance.effect, nullptr);
    instance.Start(48000.0F, 256);
    instance.Send(0, 0x90, 24, 127);
    EXPECT_GT(Peak(instance.Render(256)), 0.0);
}

TEST_F(ModuleTest, SenselessRatesAndBlockSizesChangeNothing) {
    Instance tried(module);
    Instance plain(module);
    tried.Start(48000.0F, 256);
    plain.Start(48000.0F, 256);
    for (const float rate : {0.0F, -48000.0F, std::numeric_limits<float>::quiet_NaN()}) {
        tried.Call(PlugOp::SetSampleRate, 0, 0, nullptr, rate);
    }
    for (const std::intptr_t size :
         {std::intptr_t{0}, std::intptr_t{-1}, std::numeric_limits<std::intptr_t>::min()}) {
        tried.Call(PlugOp::SetBlockSize, 0, size);
    }
    for (Instance* instance : {&tried, &plain})
        instance->Send(0, 0x90, 24, 127);
    EXPECT_EQ(tried.Render(256), plain.Render(256));
}

TEST_F(ModuleTest, ManyInstancesLiveSideBySide) {
    std::vector<std::unique_ptr<Instance>> instances;
    for (int i = 0; i < 4; ++i) {
        instances.push_back(std::make_unique<Instance>(module));
        instances.back()->Start(48000.0F, 128);
        instances.back()->Send(0, 0x90, 24, 127);
    }
    const std::vector<double> first = instances.front()->Render(128);
    for (std::size_t i = 1; i < instances.size(); ++i)
        EXPECT_EQ(instances[i]->Render(128), first);
}
