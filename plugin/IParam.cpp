#include "plugin/IParam.h"

#include "core/Maths.h"
#include "core/NumberText.h"

#include <algorithm>
#include <cmath>

namespace Grimworks {

namespace {

std::string Shortened(std::string_view text) {
    return std::string(text.substr(0, static_cast<std::size_t>(IParam::kTextLength)));
}

int PrecisionOf(double step) {
    int precision = 0;
    double x = step;
    while (x != std::floor(x) && precision < IParam::kMaxPrecision) {
        ++precision;
        x *= 10.0;
    }
    return precision;
}

int Truncated(double x) {
    constexpr double kIntLimit = 2147483647.0;
    if (std::isnan(x)) return 0;
    return static_cast<int>(Clamp(x, -kIntLimit, kIntLimit));
}

std::string Formatted(double x, int precision) {
    std::string text;
    if (precision == 0) {
        text = std::to_string(Truncated(x));
    } else {
        AppendFixed(text, x, precision);
    }
    return Shortened(text);
}

} // namespace

void IParam::InitDouble(const Definition& definition) {
    if (type == Type::None) type = Type::Double;
    name = Shortened(definition.name);
    label = Shortened(definition.label);
    group = Shortened(definition.group);
    value = definition.defaultValue;
    defaultValue = definition.defaultValue;
    min = definition.min;
    max = definition.max;
    step = definition.step;
    displayPrecision = PrecisionOf(step);
    shape = 1.0;
}

void IParam::SetDisplayText(int forValue, std::string_view text) {
    displayTexts.push_back({forValue, Shortened(text)});
}

double IParam::ToNormalized(double plain) const {
    return std::pow((Clamp(plain, min, max) - min) / (max - min), 1.0 / shape);
}

double IParam::GetNormalized() const {
    return ToNormalized(value);
}

double IParam::FromNormalized(double normalized) const {
    double v = std::pow(normalized, shape) * (max - min) + min;
    if (type != Type::Double) v = std::floor(v / step + 0.5) * step;
    return v > max ? max : v;
}

bool IParam::SetNormalized(double normalized) {
    const double plain = FromNormalized(normalized);
    if (!std::isfinite(plain)) return false;
    value = plain;
    return true;
}

void IParam::SetValue(double plain) {
    if (std::isnan(plain)) return;
    value = Clamp(plain, min, max);
}

const IParam::TextOfValue* IParam::FindDisplayText(double shown) const {
    const int whole = Truncated(shown);
    const auto found = std::find_if(displayTexts.begin(), displayTexts.end(), [whole](const TextOfValue& t) {
        return t.value == whole && !t.text.empty();
    });
    return found == displayTexts.end() ? nullptr : &*found;
}

std::string IParam::DisplayText(double shown, bool isNormalized, bool useDisplayTexts) const {
    const double plain = isNormalized ? FromNormalized(shown) : shown;
    if (useDisplayTexts) {
        if (const TextOfValue* found = FindDisplayText(plain)) return found->text;
    }
    return Formatted(negateDisplay ? -plain : plain, displayPrecision);
}

std::string_view IParam::LabelOf(double plain) const {
    return FindDisplayText(plain) != nullptr ? std::string_view() : std::string_view(label);
}

double IParam::ValueOfText(std::string_view text) const {
    const auto found = std::find_if(displayTexts.begin(), displayTexts.end(),
                                    [text](const TextOfValue& t) { return t.text == text; });
    if (found != displayTexts.end()) return Clamp(found->value, min, max);
    const double number = ParseNumber(text);
    return Clamp(negateDisplay ? -number : number, min, max);
}

} // namespace Grimworks
