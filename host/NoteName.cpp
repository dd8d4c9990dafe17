#include "host/NoteName.h"

#include <array>
#include <charconv>

namespace Grimworks {

namespace {

constexpr std::string_view kLetters = "CDEFGAB";
constexpr std::array<int, 7> kSemitones{0, 2, 4, 5, 7, 9, 11};
constexpr std::array<std::string_view, 12> kNames{"C",  "C#", "D",  "D#", "E",  "F",
                                                  "F#", "G",  "G#", "A",  "A#", "B"};
constexpr int kNotes = 128;
constexpr std::size_t kMaxDigits = 3;

std::optional<int> NumberFromText(std::string_view text) {
    int number = 0;
    const char* end = text.data() + text.size();
    const bool digits = !text.empty() && text.size() <= kMaxDigits && text.front() != '-';
    const auto [stop, fault] = std::from_chars(text.data(), end, number);
    if (!digits || fault != std::errc() || stop != end) return std::nullopt;
    return number;
}

std::optional<int> InRange(int note) {
    if (note < 0 || note >= kNotes) return std::nullopt;
    return note;
}

} // namespace

std::optional<int> NoteFromText(std::string_view text) {
    if (const auto number = NumberFromText(text)) return InRange(*number);
    if (text.empty()) return std::nullopt;
    const char letter = text.front() >= 'a' ? static_cast<char>(text.front() - 'a' + 'A') : text.front();
    const std::size_t index = kLetters.find(letter);
    if (index == std::string_view::npos) return std::nullopt;
    text.remove_prefix(1);
    int semitone = kSemitones[index];
    if (text.starts_with('#')) {
        ++semitone;
        text.remove_prefix(1);
    } else if (text.starts_with('b')) {
        --semitone;
        text.remove_prefix(1);
    }
    const auto octave = NumberFromText(text);
    if (!octave) return std::nullopt;
    return InRange(*octave * 12 + semitone);
}

std::string NoteText(int note) {
    return std::string(kNames.at(static_cast<std::size_t>(note % 12))) + std::to_string(note / 12);
}

} // namespace Grimworks
