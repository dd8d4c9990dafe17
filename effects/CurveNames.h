#pragma once

#include "core/Limits.h"

#include <array>
#include <string_view>

namespace Grimworks {

/// One selectable curve: its display name and the number of its table at the provider.
struct CurveInfo {
    std::string_view name;
    int table;
};

/// The curves in the order of the selection. The last row plays the same table as "Mova-Fuzz".
inline constexpr std::array<CurveInfo, kCurves> kCurveInfos{{
    {"Linear", 0},
    {"Compressor", 1},
    {"Soft-Knee Compressor", 2},
    {"Limiter", 3},
    {"Soft-Knee Limiter", 4},
    {"Warm Saturation", 5},
    {"Classic Saturation", 6},
    {"Hard-Overload", 7},
    {"GWSigmoid1-Drive", 19},
    {"GWSigmoid2-Drive", 20},
    {"GWSigmoid3-Drive", 21},
    {"Typhoon-Fuzz", 14},
    {"Mova-Fuzz", 13},
    {"QRX-Fuzz 1", 15},
    {"QRX-Fuzz 2", 16},
    {"Soft-Tube-Distort", 18},
    {"Tube-Distort", 17},
    {"Transistor 1", 34},
    {"Full-Clip", 8},
    {"Fuzz-Drive1", 9},
    {"Hardcore-Fuzz1", 45},
    {"Hardcore-Fuzz2", 46},
    {"Hardcore-Fuzz3", 47},
    {"Hardcore-Fuzz4", 48},
    {"Industrial-Fuzz1", 49},
    {"GrimWorks-Drive1", 41},
    {"GrimWorks-Drive2", 42},
    {"GrimWorks-Drive3", 43},
    {"GrimWorks-Drive4", 44},
    {"VoxFreak-Fuzz 1", 23},
    {"VoxFreak-Fuzz 2", 24},
    {"VoxFreak-Fuzz 3", 25},
    {"Invert-and-Drive", 38},
    {"Big-Bad-Drive", 27},
    {"Big-Fat-Drive", 28},
    {"ViciousViper", 29},
    {"AssKicking", 30},
    {"TigersBlood", 31},
    {"MadDog", 32},
    {"Public Enemy by O:MAR", 60},
    {"QRX Thrashcore", 77},
    {"More in PRO version", 13},
}};

/// Display name of a selection number; "Distortion" outside the table.
[[nodiscard]] constexpr std::string_view GetCurveName(int number) {
    if (number < 0 || number >= kCurves) return "Distortion";
    return kCurveInfos[static_cast<std::size_t>(number)].name;
}

/// Selection number of a name, compared letter by letter. "Fuzz-Drive" and "GrimWorks-Drive" are accepted as
/// short for the first of their kind; an unknown name gives 0.
[[nodiscard]] constexpr int GetCurveNumber(std::string_view name) {
    if (name == "Fuzz-Drive") name = "Fuzz-Drive1";
    if (name == "GrimWorks-Drive") name = "GrimWorks-Drive1";
    for (int number = 0; number < kCurves; ++number) {
        if (GetCurveName(number) == name) return number;
    }
    return 0;
}

} // namespace Grimworks
