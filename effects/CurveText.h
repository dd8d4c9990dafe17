#pragma once

#include "effects/DistortionCurve.h"

#include <iosfwd>
#include <string>

namespace Grimworks {

/// A curve as text: 512 numbers with ten decimals in the "C" number format, separated by single commas, no
/// line end. The content of curve files and of the curve line in text programs.
[[nodiscard]] std::string WriteCurveText(const CurvePoints& points);

/// Reads a curve from comma-separated text. A field that does not start with a number counts as 0; line ends
/// belong to their field; text behind the 512th field is left unread. False, and `points` as they were, when
/// there are fewer fields. Allocates; not for the audio thread.
[[nodiscard]] bool ReadCurveText(std::istream& text, CurvePoints& points);

/// Whether a file name is taken for a curve file: it holds ".csv" or ".CSV".
[[nodiscard]] bool IsCurveFileName(const std::string& path);

} // namespace Grimworks
