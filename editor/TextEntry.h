#pragma once

#include "plugin/IParam.h"

namespace Grimworks {

/// States of the text entry of a window; they change at its clock's ticks.
enum class TextEntryState : int { None = 0, Editing = 1, Update = 2, Cancel = 3, Commit = 4 };

/// Whether a text entry takes a character: everything for a control without a parameter; for a parameter
/// digits and signs, and the point too if it has decimals. Backspace always passes.
[[nodiscard]] bool TextEntryTakes(const IParam* param, char character);

/// The most characters that are read from a text entry.
inline constexpr int kTextEntryMaxLength = 32;

} // namespace Grimworks
