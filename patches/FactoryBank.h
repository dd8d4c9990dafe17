#pragma once

#include "core/Limits.h"
#include "patches/Recipe.h"
#include "patches/SynthProgram.h"

#include <array>
#include <string_view>
#include <vector>

namespace Grimworks {

/// The programs of one kind, which stand together in the bank.
struct FactorySection {
    std::string_view title;
    int first; ///< number of the first program, counted from 1
    int last;
    int note;     ///< a key in the middle of what its programs are for
    bool melodic; ///< the key decides the pitch
};

inline constexpr std::array<FactorySection, 8> kFactorySections{{
    {"Basic kicks", 1, 14, 60, false},
    {"Hardcore bass drums", 15, 61, 60, false},
    {"Drums and effects", 62, 71, 60, false},
    {"Basses", 72, 81, 36, true},
    {"String instruments", 82, 86, 60, true},
    {"Wind instruments", 87, 92, 60, true},
    {"Pads", 93, 99, 60, true},
    {"Synth sounds", 100, kPrograms, 60, true},
}};

/// The 128 programs that a new instance offers, in the order of the menu. Names that begin and end with "#"
/// head a section of the menu; they are programs like the others. Allocates; construction only.
[[nodiscard]] std::vector<SynthProgram> MakeFactoryBank();

/// The same as the designers wrote them down.
[[nodiscard]] Recipes FactoryRecipes();

} // namespace Grimworks
