#pragma once

#include "core/Limits.h"

#include <cstdint>
#include <string>

namespace Grimworks {

/// What a plug-in is called and made of. The defaults are the instrument's.
struct PlugIdentity {
    int parameters = kParameters;
    int programs = kPrograms;
    std::string channels = "0-1 0-2"; ///< inputs-outputs pairs, apart by blanks
    int versionMajor = 1;
    int versionMinor = 8;
    int versionPatch = 3;
    std::string effectName = "ThudForge 1.8.3 FREE";
    std::string productName;
    std::string makerName = "GrimWorks";
    std::int32_t uniqueId = 0x6172746F;       ///< "otra" in memory
    std::int32_t manufacturerId = 0x7672715A; ///< "Zqrv" in memory
    bool stateChunks = true;
    bool isInstrument = true;
    bool wantsMidi = true;

    /// The version as hosts compare it: 10803 for 1.8.3.
    [[nodiscard]] std::int32_t VersionNumber() const {
        return (versionMajor * 100 + versionMinor) * 100 + versionPatch;
    }
};

/// One pair of a channel configuration text.
struct ChannelCounts {
    int inputs;
    int outputs;
};

} // namespace Grimworks
