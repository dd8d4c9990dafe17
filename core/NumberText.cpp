#include "core/NumberText.h"

#include <array>
#include <charconv>
#include <limits>
#include <system_error>

namespace Grimworks {

namespace {

std::string_view SkipBlanks(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
    return start == std::string_view::npos ? std::string_view{} : text.substr(start);
}

bool IsHexPrefix(std::string_view text) {
    return text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

/// Whether a number that does not fit is too large rather than too small: the place of its first digit that
/// is not 0, moved by its exponent. `digitExponent` is what one place is worth in units of the exponent.
bool IsTooLarge(std::string_view number, std::string_view exponentMarks, long digitExponent) {
    const std::size_t mark = number.find_first_of(exponentMarks);
    const std::string_view digits = number.substr(0, mark);
    long exponent = 0;
    if (mark != std::string_view::npos) {
        std::string_view power = number.substr(mark + 1);
        const bool negative = power.starts_with('-');
        if (negative || power.starts_with('+')) power.remove_prefix(1);
        const auto result = std::from_chars(power.data(), power.data() + power.size(), exponent);
        if (result.ec == std::errc::result_out_of_range) exponent = std::numeric_limits<long>::max() / 2;
        if (negative) exponent = -exponent;
    }
    const std::size_t point = digits.find('.');
    const std::size_t wholes = point == std::string_view::npos ? digits.size() : point;
    const std::size_t first = digits.find_first_not_of("0.");
    if (first == std::string_view::npos) return false;
    const long place = static_cast<long>(wholes) - static_cast<long>(first);
    return place * digitExponent + exponent > 0;
}

} // namespace

double ParseNumber(std::string_view text) {
    text = SkipBlanks(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    if (text.starts_with('-')) return 0.0;

    double value = 0.0;
    bool found = false;
    const auto read = [&value](std::string_view number, std::chars_format format) {
        return std::from_chars(number.data(), number.data() + number.size(), value, format);
    };
    const auto settle = [&](std::string_view number, std::from_chars_result result, std::string_view marks,
                            long digitExponent) {
        found = result.ec != std::errc::invalid_argument;
        if (result.ec != std::errc::result_out_of_range) return;
        const auto length = static_cast<std::size_t>(result.ptr - number.data());
        const bool large = IsTooLarge(number.substr(0, length), marks, digitExponent);
        value = large ? std::numeric_limits<double>::infinity() : 0.0;
    };
    if (IsHexPrefix(text) && text[2] != '-') {
        const std::string_view digits = text.substr(2);
        settle(digits, read(digits, std::chars_format::hex), "pP", 4);
    } else {
        settle(text, read(text, std::chars_format::general), "eE", 1);
    }
    return negative && found ? -value : value; // a lone sign is no number, so no negative zero either
}

void AppendFixed(std::string& text, double value, int decimals) {
    std::array<char, 512> buffer; // the longest double has 309 digits before the point
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    if (result.ec == std::errc{}) text.append(buffer.data(), result.ptr);
}

std::string FixedText(double value, int width, int decimals) {
    std::string text;
    AppendFixed(text, value, decimals);
    const auto wanted = static_cast<std::size_t>(width < 0 ? 0 : width);
    if (text.size() < wanted) text.insert(0, wanted - text.size(), ' ');
    return text;
}

void AppendGeneral(std::string& text, double value) {
    constexpr int kDigits = 6;
    std::array<char, 32> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::general, kDigits);
    if (result.ec == std::errc{}) text.append(buffer.data(), result.ptr);
}

} // namespace Grimworks
