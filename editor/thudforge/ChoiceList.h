#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

/// The choices of a parameter as a menu shows them: the names in the parameter's order, each in a group of
/// its kind.
struct ChoiceList {
    struct Entry {
        std::string longName;  ///< in the menu
        std::string shortName; ///< on the display
        int group = 0;
    };

    std::vector<Entry> entries;
    std::vector<std::string> groups;

    /// Appends a choice; a group that is not there yet comes behind the others.
    void Add(std::string_view longName, std::string_view shortName, std::string_view group);

    [[nodiscard]] int Count() const { return static_cast<int>(entries.size()); }

    /// Index of a parameter value 0..1, limited to the list; 0 for an empty one.
    [[nodiscard]] int IndexOf(double value) const;

    /// Parameter value of an index.
    [[nodiscard]] double ValueOf(int index) const;
};

[[nodiscard]] ChoiceList WaveformChoices();
[[nodiscard]] ChoiceList LfoWaveChoices();
[[nodiscard]] ChoiceList NoteModeChoices();

/// The filters that a filter type parameter chooses from: those of filter 1 or 2 of the filter unit, or, for
/// any other parameter, those of an oscillator.
[[nodiscard]] ChoiceList FilterChoicesOf(int parameter);

[[nodiscard]] ChoiceList CurveChoices();

} // namespace Grimworks
