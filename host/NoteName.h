#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Grimworks {

/// The MIDI note (0..127) of a name like "C2", "F#4" or "Bb3", or of a number. Octaves count as the
/// instrument shows them: note 0 is C0, note 60 is C5 and note 127 is G10. Nothing for any other text.
[[nodiscard]] std::optional<int> NoteFromText(std::string_view text);

/// The name of a MIDI note (0..127) in the same naming, with sharps.
[[nodiscard]] std::string NoteText(int note);

} // namespace Grimworks
