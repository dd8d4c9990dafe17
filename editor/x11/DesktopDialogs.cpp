#include "editor/x11/DesktopDialogs.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>

namespace Grimworks::DesktopDialogs {

namespace {

/// "*.gw *.fxp" for the extensions.
std::string PatternsOf(const FileQuestion& question) {
    std::string patterns;
    for (const std::string& extension : question.extensions)
        patterns += (patterns.empty() ? "*." : " *.") + extension;
    return patterns;
}

/// A number of hexadecimal digits, scaled to 0..255; -1 for other characters.
int HexPart(std::string_view digits) {
    unsigned value = 0;
    const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (parsed.ec != std::errc() || parsed.ptr != digits.data() + digits.size()) return -1;
    return static_cast<int>(digits.size() == 4 ? value >> 8U : value);
}

std::optional<IColor> Checked(int r, int g, int b) {
    const auto isPart = [](int part) { return part >= 0 && part <= 255; };
    if (!isPart(r) || !isPart(g) || !isPart(b)) return std::nullopt;
    return IColor(255, r, g, b);
}

} // namespace

std::vector<std::string> ZenityFile(const FileQuestion& question) {
    std::vector<std::string> words = {"zenity", "--file-selection", "--title=" + question.title,
                                      "--filename=" + question.dir + question.file};
    if (!question.extensions.empty()) {
        const std::string patterns = PatternsOf(question);
        words.push_back("--file-filter=" + patterns + " | " + patterns);
        words.emplace_back("--file-filter=* | *");
    }
    if (question.save) {
        words.emplace_back("--save");
        words.emplace_back("--confirm-overwrite");
    }
    return words;
}

std::vector<std::string> KdialogFile(const FileQuestion& question) {
    std::vector<std::string> words = {"kdialog", "--title", question.title,
                                      question.save ? "--getsavefilename" : "--getopenfilename",
                                      question.dir + question.file};
    if (!question.extensions.empty()) words.push_back(PatternsOf(question) + "|" + PatternsOf(question));
    return words;
}

std::vector<std::string> ZenityColor(const IColor& color, const std::string& title) {
    return {"zenity", "--color-selection", "--title=" + title, "--color=" + TextOfColor(color)};
}

std::vector<std::string> KdialogColor(const IColor& color, const std::string& title) {
    return {"kdialog", "--title", title, "--getcolor", "--default", TextOfColor(color)};
}

bool PrefersKdialog() {
    const char* const desktop = std::getenv("XDG_CURRENT_DESKTOP");
    return desktop != nullptr && std::string_view(desktop).find("KDE") != std::string_view::npos;
}

std::string TextOfColor(const IColor& color) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", static_cast<unsigned>(color.R) & 0xFFU,
                  static_cast<unsigned>(color.G) & 0xFFU, static_cast<unsigned>(color.B) & 0xFFU);
    return text.data();
}

std::optional<IColor> ColorOfText(std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == ' '))
        text.remove_suffix(1);
    if (text.starts_with("#")) {
        const std::size_t part = text.size() == 13 ? 4 : 2;
        if (text.size() != 7 && text.size() != 13) return std::nullopt;
        return Checked(HexPart(text.substr(1, part)), HexPart(text.substr(1 + part, part)),
                       HexPart(text.substr(1 + 2 * part, part)));
    }
    int r = -1;
    int g = -1;
    int b = -1;
    const std::string copy(text);
    const bool read = std::sscanf(copy.c_str(), "rgb(%d,%d,%d", &r, &g, &b) == 3 || // NOLINT(cert-err34-c)
                      std::sscanf(copy.c_str(), "rgba(%d,%d,%d", &r, &g, &b) == 3;  // NOLINT(cert-err34-c)
    return read ? Checked(r, g, b) : std::nullopt;
}

void SplitPath(const std::string& path, std::string& dir, std::string& file) {
    const std::size_t slash = path.rfind('/');
    const std::size_t begin = slash == std::string::npos ? 0 : slash + 1;
    dir = path.substr(0, begin);
    file = path.substr(begin);
}

std::vector<std::string> WordsOf(std::string_view list) {
    std::vector<std::string> words;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(' '), list.size());
        if (end > 0)
            words.emplace_back(list.substr(0, end)); // NOLINT(performance-inefficient-vector-operation)
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return words;
}

} // namespace Grimworks::DesktopDialogs
