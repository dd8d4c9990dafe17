#pragma once

#include <array>
#include <string>
#include <string_view>

namespace Grimworks {

/// The names of one filter of the filter unit.
struct FilterName {
    std::string_view longName;  ///< menus and text programs
    std::string_view shortName; ///< the display of the panel
    std::string_view oldName;   ///< what older text programs call it
};

/// Filter 1, by number; a parameter value is number / 3.
inline constexpr std::array<FilterName, 4> kFilter1Names{{{"RBJ LowPass", "RBJ-LP", "RBJ-LP"},
                                                          {"RBJ HighPass", "RBJ-HP", "RBJ-HP"},
                                                          {"RBJ BandPass 1", "RBJ-BP1", "RBJ-BP"},
                                                          {"RBJ BandStop", "RBJ-BS", "RBJ-BS"}}};

/// Filter 2, by number; a parameter value is number / 5.
inline constexpr std::array<FilterName, 6> kFilter2Names{
    {{"Chebyshev HighPass 12dB", "CH-HP12", "HP 12dB"},
     {"Chebyshev HighPass 24dB", "CH-HP24", "HP 24dB"},
     {"Chebyshev LowPass 12dB", "CH-LP12", "LP 12dB"},
     {"Chebyshev LowPass 24dB", "CH-LP24", "LP 24dB"},
     {"Butterworth BandPass 12dB", "BW-BP12", "BP 12dB"},
     {"Butterworth BandStop 12dB", "BW-BS12", "BS 12dB"}}};

/// How fast the filters follow their knobs. The last two sound the same.
inline constexpr std::array<std::string_view, 3> kFilterTransitionNames{"Slow", "Medium", "Fast"};

/// Long and short name of a number; empty outside the table.
[[nodiscard]] std::string_view Filter1Name(int number);
[[nodiscard]] std::string_view Filter1ShortName(int number);
[[nodiscard]] std::string_view Filter2Name(int number);
[[nodiscard]] std::string_view Filter2ShortName(int number);
[[nodiscard]] std::string_view FilterTransitionName(int number);

/// Number of a name in a text program, compared whole and by case; an unknown name gives 0. Filter 1 goes by
/// all of its names, filter 2 by the long and the old one.
[[nodiscard]] int Filter1Number(std::string_view name);
[[nodiscard]] int Filter2Number(std::string_view name);

/// Caption of the balance knob, "30.0% / 70.0%": the shares of filter 1 and filter 2.
[[nodiscard]] std::string FilterBalanceText(double value);

/// Caption of a cutoff in Hz, "2000.0Hz".
[[nodiscard]] std::string FilterCutoffText(double frequency);

/// Caption of the low-pass/high-pass knob: the distance from its centre, "100.0% LP" at 0, "0.0% HP" at 0.5.
[[nodiscard]] std::string DumpExpandText(double value);

} // namespace Grimworks
