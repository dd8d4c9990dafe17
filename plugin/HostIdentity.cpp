#include "plugin/HostIdentity.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace Grimworks {

namespace {

struct HostSign {
    std::string_view text;
    int host;
};

// The order decides when a product's name holds more than one of them.
constexpr std::array<HostSign, 26> kHostSigns{{
    {"cubase", 3},
    {"reaper", kHostWithParamMenu},
    {"nuendo", 4},
    {"cakewalk", 5},
    {"samplitude", 8},
    {"fruity", 7},
    {"live", 9},
    {"melodyne", 12},
    {"vstmanlib", 13},
    {"aulab", 14},
    {"garageband", 22},
    {"forte", kHostForte},
    {"chainer", 16},
    {"audition", kHostAudition},
    {"orion", kHostOrion},
    {"sawstudio", kHostSawStudio},
    {"logic", 21},
    {"digital", 23},
    {"audiomulch", 25},
    {"presonus", 26},
    {"vst3plugintesthost", 27},
    {"protools", 2},
    {"ardour", 28},
    {"openmpt", 30},
    {"renoise", 29},
    {"standalone", 24},
}};

struct HostTitle {
    int host;
    std::string_view name;
};

constexpr std::array<HostTitle, 26> kHostTitles{{
    {1, "Reaper"},
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
    {30, "OpenMPT"},
}};

char LowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

int HostFromProduct(std::string_view product) {
    std::string lower(product);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerCase);
    for (const HostSign& sign : kHostSigns) {
        if (lower.find(sign.text) != std::string::npos) return sign.host;
    }
    return kHostUnknown;
}

std::string_view HostName(int host) {
    for (const HostTitle& title : kHostTitles) {
        if (title.host == host) return title.name;
    }
    return "Unknown";
}

std::uint32_t PackHostVersion(std::int64_t version) {
    if (version < 0) return 0;
    const auto major = static_cast<std::uint32_t>(version / 10000 & 0xffff);
    const auto minor = static_cast<std::uint32_t>(version % 10000 / 100);
    const auto patch = static_cast<std::uint32_t>(version % 100);
    return major << 16U | minor << 8U | patch;
}

std::string HostInfoText(int host, std::uint32_t packedVersion) {
    std::array<char, 32> version{};
    std::snprintf(version.data(), version.size(), "v%u.%u.%u", packedVersion >> 16U,
                  packedVersion >> 8U & 0xffU, packedVersion & 0xffU);
    return "64-bit Plugin Host: " + std::string(HostName(host)) + " (" + version.data() + ")";
}

} // namespace Grimworks
