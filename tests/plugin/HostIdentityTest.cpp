#include "plugin/HostIdentity.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace Grimworks {
namespace {

TEST(HostIdentity, EachSignNamesItsHost) {
    constexpr std::array<std::pair<const char*, int>, 26> kExpected{
        {{"Cubase 12", 3},   {"REAPER", 1},      {"Nuendo", 4},
         {"Cakewalk", 5},    {"Samplitude", 8},  {"Fruity Wrapper", 7},
         {"Live 11", 9},     {"Melodyne", 12},   {"vstmanlib", 13},
         {"AULab", 14},      {"GarageBand", 22}, {"Forte", 15},
         {"Chainer", 16},    {"Audition", 17},   {"Orion", 18},
         {"SawStudio", 20},  {"Logic Pro", 21},  {"Digital Performer", 23},
         {"AudioMulch", 25}, {"PreSonus", 26},   {"VST3PluginTestHost", 27},
         {"ProTools", 2},    {"Ardour", 28},     {"OpenMPT", 30},
         {"Renoise", 29},    {"Standalone", 24}}};
    for (const auto& [product, host] : kExpected)
        EXPECT_EQ(HostFromProduct(product), host) << product;
}

TEST(HostIdentity, TheFirstSignInTheListDecides) {
    EXPECT_EQ(HostFromProduct("reaper live"), 1);
    EXPECT_EQ(HostFromProduct("Live in Reaper"), 1);
    EXPECT_EQ(HostFromProduct("Live Cubase"), 3);
    EXPECT_EQ(HostFromProduct("standalone renoise"), 29);
}

TEST(HostIdentity, OthersAreUnknown) {
    EXPECT_EQ(HostFromProduct(""), kHostUnknown);
    EXPECT_EQ(HostFromProduct("Some Host"), kHostUnknown);
    EXPECT_EQ(HostFromProduct("reape r"), kHostUnknown);
}

TEST(HostIdentity, NamesByNumber) {
    constexpr std::array<std::pair<int, const char*>, 26> kExpected{{{1, "Reaper"},
                                                                     {2, "ProTools"},
                                                                     {3, "Cubase"},
                                                                     {4, "Nuendo"},
                                                                     {5, "Sonar"},
                                                                     {6, "Vegas"},
                                                                     {7, "FLStudio"},
                                                                     {8, "Samplitude"},
                                                                     {9, "Live"},
                                                                     {13, "VSTScanner"},
                                                                     {14, "AULab"},
                                                                     {15, "Forte"},
                                                                     {16, "Chainer"},
                                                                     {17, "Audition"},
                                                                     {18, "Orion"},
                                                                     {20, "SAWStudio"},
                                                                     {21, "Logic"},
                                                                     {22, "GarageBand"},
                                                                     {23, "DigitalPerformer"},
                                                                     {24, "Standalone"},
                                                                     {25, "AudioMulch"},
                                                                     {26, "StudioOne"},
                                                                     {27, "VST3PluginTestHost"},
                                                                     {28, "Ardour"},
                                                                     {29, "Renoise"},
                                                                     {30, "OpenMPT"}}};
    for (const auto& [host, name] : kExpected)
        EXPECT_EQ(HostName(host), name) << host;
    for (const int host : {-1, 0, 10, 11, 12, 19, 31, 1000})
        EXPECT_EQ(HostName(host), "Unknown") << host;
}

TEST(HostIdentity, VersionsArePackedByDecimalPairs) {
    EXPECT_EQ(PackHostVersion(10203), 0x00010203U);
    EXPECT_EQ(PackHostVersion(59799), (5U << 16U) | (97U << 8U) | 99U);
    EXPECT_EQ(PackHostVersion(99), 99U);
    EXPECT_EQ(PackHostVersion(0), 0U);
    EXPECT_EQ(PackHostVersion(-1), 0U);
}

TEST(HostIdentity, TheInfoLine) {
    EXPECT_EQ(HostInfoText(1, PackHostVersion(60312)), "64-bit Plugin Host: Reaper (v6.3.12)");
    EXPECT_EQ(HostInfoText(kHostUnasked, 0), "64-bit Plugin Host: Unknown (v0.0.0)");
}

} // namespace
} // namespace Grimworks
