#pragma once

#include "patches/Recipe.h"

namespace Grimworks {

/// The factory bank in the order of its programs, section by section.
[[nodiscard]] Recipes BasicKickRecipes();     ///< 1 to 14
[[nodiscard]] Recipes HardcoreKickRecipes();  ///< 15 to 39
[[nodiscard]] Recipes HeavyKickRecipes();     ///< 40 to 61
[[nodiscard]] Recipes DrumAndFxRecipes();     ///< 62 to 71
[[nodiscard]] Recipes BassRecipes();          ///< 72 to 81
[[nodiscard]] Recipes StringAndWindRecipes(); ///< 82 to 92
[[nodiscard]] Recipes PadRecipes();           ///< 93 to 99
[[nodiscard]] Recipes SynthRecipes();         ///< 100 to 115
[[nodiscard]] Recipes LeadRecipes();          ///< 116 to 128

} // namespace Grimworks
