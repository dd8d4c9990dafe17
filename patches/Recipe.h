#pragma once

#include "patches/SynthProgram.h"

#include <initializer_list>
#include <string_view>
#include <vector>

namespace Grimworks {

/// One parameter and the value that a program gives it.
struct Setting {
    int id;
    double value;
};

/// A list of settings, written as pairs of parameter and value between which whole lists may stand: what a
/// family of programs shares is written once and named where it is used. A later setting wins.
class Settings {
public:
    class Part {
    public:
        Part(int id, double value);
        // Lists stand between pairs without any further word.
        Part(const Settings& list); // NOLINT(google-explicit-constructor)

    private:
        friend class Settings;
        std::vector<Setting> settings;
    };

    Settings() = default;
    Settings(std::initializer_list<Part> parts);

    void Add(int id, double value);
    [[nodiscard]] const std::vector<Setting>& All() const { return settings; }

private:
    std::vector<Setting> settings;
};

/// One factory program: what it starts from, and the values in which it differs.
struct Recipe {
    std::string_view name;
    std::string_view base; ///< another program's name, or Reset
    Settings settings;
};

/// Start from the reset values.
inline constexpr std::string_view Reset{};

using Recipes = std::vector<Recipe>;

} // namespace Grimworks
