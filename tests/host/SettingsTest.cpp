#include "host/Settings.h"

#include "host/HostError.h"
#include "tests/host/FakePlugin.h"

#include <gtest/gtest.h>

#include <string>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

class SettingsTest : public testing::Test {
protected:
    std::string FaultOfSetting(const std::string& text) {
        try {
            ApplySetting(host, text);
        } catch (const HostError& fault) {
            return fault.what();
        }
        return {};
    }

    std::string FaultOfProgram(const std::string& text) {
        try {
            ChooseProgram(host, text);
        } catch (const HostError& fault) {
            return fault.what();
        }
        return {};
    }

    FakePlugin plugin;
    PluginHost host{FakePlugin::Entry, "fake.so", {}};
};

} // namespace

TEST_F(SettingsTest, AParameterIsFoundByNameInAnyCaseAndById) {
    EXPECT_EQ(FindParameter(host, "Master Volume"), 1);
    EXPECT_EQ(FindParameter(host, "mASTER vOLUME"), 1);
    EXPECT_EQ(FindParameter(host, "2"), 2);
}

TEST_F(SettingsTest, ASettingSetsTheValue) {
    EXPECT_EQ(FaultOfSetting("Cutoff=0.125"), "");
    EXPECT_EQ(plugin.parameters[0], 0.125F);
    EXPECT_EQ(FaultOfSetting(" master volume = 1 "), "");
    EXPECT_EQ(plugin.parameters[1], 1.0F);
    EXPECT_EQ(FaultOfSetting("2=0"), "");
    EXPECT_EQ(plugin.parameters[2], 0.0F);
}

TEST_F(SettingsTest, AValueOutsideItsRangeOrThatIsNoNumberIsRefused) {
    for (const char* text :
         {"Cutoff=1.01", "Cutoff=-0.1", "Cutoff=nan", "Cutoff=inf", "Cutoff=", "Cutoff=0.5x"}) {
        EXPECT_TRUE(FaultOfSetting(text).starts_with(text)) << text;
    }
    EXPECT_NE(FaultOfSetting("Cutoff"), "");
    EXPECT_NE(FaultOfSetting(""), "");
    EXPECT_EQ(plugin.parameters[0], 0.25F);
}

TEST_F(SettingsTest, AnUnknownParameterIsRefusedByName) {
    EXPECT_TRUE(FaultOfSetting("Wobble=1").starts_with("Wobble: "));
    EXPECT_TRUE(FaultOfSetting("3=1").starts_with("3: "));
    EXPECT_TRUE(FaultOfSetting("-1=1").starts_with("-1: "));
    EXPECT_NE(FaultOfSetting("=1"), "");
}

TEST_F(SettingsTest, ANameThatTwoParametersBearIsRefused) {
    plugin.parameterNames = {"Same", "Same", "Twin"};
    const std::string fault = FaultOfSetting("same=1");
    EXPECT_NE(fault.find("0 and 1"), std::string::npos) << fault;
}

TEST_F(SettingsTest, AProgramIsFoundByNumberFromOneAndByName) {
    EXPECT_EQ(FaultOfProgram("2"), "");
    EXPECT_EQ(plugin.program, 1);
    EXPECT_EQ(FaultOfProgram("#leads#"), "");
    EXPECT_EQ(plugin.program, 2);
    EXPECT_EQ(FaultOfProgram("12 Bells"), "");
    EXPECT_EQ(plugin.program, 3);
}

TEST_F(SettingsTest, AnUnknownProgramIsRefusedByName) {
    EXPECT_EQ(FaultOfProgram("0"), "0: programs are numbered from 1 to 4");
    EXPECT_EQ(FaultOfProgram("5"), "5: programs are numbered from 1 to 4");
    EXPECT_EQ(FaultOfProgram("Wobble"), "Wobble: there is no program of this name");
    EXPECT_NE(FaultOfProgram(""), "");
    EXPECT_EQ(plugin.program, 0);
}

TEST_F(SettingsTest, AProgramThatThePluginDoesNotTakeIsAFault) {
    plugin.acceptsPrograms = false;
    EXPECT_TRUE(FaultOfProgram("Bass").starts_with("Bass: "));
}

TEST_F(SettingsTest, FilesOfOtherKindsAndMissingFilesAreRefused) {
    EXPECT_TRUE(FaultOfProgram("kick.TXT").starts_with("kick.TXT: cannot be opened"));
    EXPECT_TRUE(FaultOfProgram("no such.fxp").starts_with("no such.fxp: cannot be opened"));
}
