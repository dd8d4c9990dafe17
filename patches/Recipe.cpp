#include "patches/Recipe.h"

namespace Grimworks {

Settings::Part::Part(int id, double value) {
    settings.push_back({id, value});
}

Settings::Part::Part(const Settings& list) : settings(list.settings) {}

Settings::Settings(std::initializer_list<Part> parts) {
    for (const Part& part : parts) {
        for (const Setting& setting : part.settings)
            settings.push_back(setting);
    }
}

void Settings::Add(int id, double value) {
    settings.push_back({id, value});
}

} // namespace Grimworks
