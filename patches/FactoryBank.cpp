#include "patches/FactoryBank.h"

#include "core/ParameterTable.h"
#include "patches/BankSections.h"

#include <algorithm>
#include <iterator>

namespace Grimworks {

namespace {

/// Writes a program from its recipe, the recipe it is built on first.
void Cook(const Recipe& recipe, const Recipes& all, ValueBlock& values) {
    const auto base =
        std::find_if(all.begin(), all.end(), [&recipe](const Recipe& r) { return r.name == recipe.base; });
    if (base != all.end()) {
        Cook(*base, all, values);
    } else {
        ResetValues(values);
    }
    for (const Setting& setting : recipe.settings.All())
        values[setting.id] = setting.value;
}

} // namespace

Recipes FactoryRecipes() {
    Recipes all;
    for (Recipes section :
         {BasicKickRecipes(), HardcoreKickRecipes(), HeavyKickRecipes(), DrumAndFxRecipes(), BassRecipes(),
          StringAndWindRecipes(), PadRecipes(), SynthRecipes(), LeadRecipes()}) {
        std::move(section.begin(), section.end(), std::back_inserter(all));
    }
    return all;
}

std::vector<SynthProgram> MakeFactoryBank() {
    const Recipes all = FactoryRecipes();
    std::vector<SynthProgram> bank;
    bank.reserve(all.size());
    SynthProgram program;
    // The first program is the one that a record has from birth; only its name is its own.
    program.name = all.front().name;
    bank.push_back(program);
    for (auto recipe = std::next(all.begin()); recipe != all.end(); ++recipe) {
        Cook(*recipe, all, program.values);
        program.name = recipe->name;
        bank.push_back(program);
    }
    return bank;
}

} // namespace Grimworks
