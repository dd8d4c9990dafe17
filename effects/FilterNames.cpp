#include "effects/FilterNames.h"

#include "core/NumberText.h"

#include <cmath>
#include <cstddef>

namespace Grimworks {

namespace {

template <std::size_t N>
const FilterName& Find(const std::array<FilterName, N>& table, int number) {
    static constexpr FilterName kNone{};
    return number >= 0 && number < static_cast<int>(N) ? table[static_cast<std::size_t>(number)] : kNone;
}

} // namespace

std::string_view Filter1Name(int number) {
    return Find(kFilter1Names, number).longName;
}

std::string_view Filter1ShortName(int number) {
    return Find(kFilter1Names, number).shortName;
}

std::string_view Filter2Name(int number) {
    return Find(kFilter2Names, number).longName;
}

std::string_view Filter2ShortName(int number) {
    return Find(kFilter2Names, number).shortName;
}

std::string_view FilterTransitionName(int number) {
    return number >= 0 && number < 3 ? kFilterTransitionNames[static_cast<std::size_t>(number)] : "";
}

int Filter1Number(std::string_view name) {
    for (std::size_t i = 0; i < kFilter1Names.size(); ++i) {
        const FilterName& row = kFilter1Names[i];
        if (name == row.longName || name == row.shortName || name == row.oldName) return static_cast<int>(i);
    }
    return 0;
}

int Filter2Number(std::string_view name) {
    for (std::size_t i = 0; i < kFilter2Names.size(); ++i) {
        const FilterName& row = kFilter2Names[i];
        if (name == row.longName || name == row.oldName) return static_cast<int>(i);
    }
    return 0;
}

std::string FilterBalanceText(double value) {
    std::string text;
    AppendFixed(text, (1.0 - value) * 100.0, 1);
    text += "% / ";
    AppendFixed(text, value * 100.0, 1);
    return text += '%';
}

std::string FilterCutoffText(double frequency) {
    std::string text;
    AppendFixed(text, frequency, 1);
    return text += "Hz";
}

std::string DumpExpandText(double value) {
    std::string text;
    AppendFixed(text, std::fabs(value - 0.5) * 2.0 * 100.0, 1);
    return text += value < 0.5 ? "% LP" : "% HP";
}

} // namespace Grimworks
