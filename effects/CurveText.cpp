#include "effects/CurveText.h"

#include "core/NumberText.h"

#include <istream>

namespace Grimworks {

namespace {

constexpr int kDecimals = 10;

} // namespace

std::string WriteCurveText(const CurvePoints& points) {
    std::string text;
    for (const double point : points) {
        if (!text.empty()) text += ',';
        AppendFixed(text, point, kDecimals);
    }
    return text;
}

bool ReadCurveText(std::istream& text, CurvePoints& points) {
    CurvePoints read{};
    std::string field;
    for (double& point : read) {
        if (!std::getline(text, field, ',')) return false;
        point = ParseNumber(field);
    }
    points = read;
    return true;
}

bool IsCurveFileName(const std::string& path) {
    return path.find(".csv") != std::string::npos || path.find(".CSV") != std::string::npos;
}

} // namespace Grimworks
