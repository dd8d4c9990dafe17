#pragma once

#include "core/RandomGenerator.h"
#include "core/SmoothedValue.h"
#include "core/StereoBuffer.h"
#include "effects/DistortionCurve.h"
#include "effects/DistortionDataProvider.h"

#include <array>
#include <span>
#include <string>
#include <vector>

namespace Grimworks {

/// What can be done to the selected curve, by the code that menus and the restore button hand over. Any other
/// code does nothing.
namespace CurveOperation {
enum Code : int {
    Restore = 0,   ///< back to the stock curve of the selection
    Normalise = 1, ///< to a peak of 1
    Smooth = 2,
    SmoothZeroCrossing = 3,
    AddNoise = 4,
    Steps = 5,
    Nothing = 6,
    Reset = 7, ///< the straight line
    NonePending = 8,
};
} // namespace CurveOperation

/// Noise numbers for one run of CurveOperation::AddNoise, one a point.
using CurveNoise = std::array<int, kCurvePoints>;

inline constexpr int kCurvePreviewPoints = 128;
inline constexpr int kSignalPreviewPoints = 120;

/// Waveshaper over a curve that the user can edit. The curve comes first and the gain after it, so the drive
/// works on the shaped signal and clips it; even at full amount half of the dry signal remains.
///
/// Every selection number keeps its own edited curve until it is restored, except the last number, which
/// shares the curve of "Mova-Fuzz". Setters, edits and previews belong under the plug-in lock.
class Distortion {
public:
    explicit Distortion(const DistortionDataProvider& curveProvider);
    virtual ~Distortion() = default;
    Distortion(const Distortion&) = delete;
    Distortion& operator=(const Distortion&) = delete;

    void SetBypass(bool on) { bypass = on; }
    /// Knob 0..1. A value that is not finite is ignored.
    void SetAmount(double value);
    /// Selects one of the 42 curves, value 0..1.
    void SetType(double value);
    /// Value 0..1: without make-up gain, with it, or with it and folded through a sine.
    void SetMode(double value);
    /// How all curves are read, value 0..1 in four steps; beyond them cubic.
    void SetInterpolation(double value);

    /// In place; `modulation` is a factor a frame for the amount, or null. Does nothing while switched off or
    /// at amount 0. Audio thread.
    void Process(StereoView io, int frames, const double* modulation);

    /// Runs an operation on the selected curve. `noise` is read by AddNoise only.
    void RunCurveOperation(int code, const CurveNoise& noise);

    /// Selection number 0..41.
    [[nodiscard]] int CurveNumber() const { return curveNumber; }
    /// The selected curve.
    [[nodiscard]] const CurvePoints& Points() const { return Current().points; }
    /// Replaces the selected curve; the stock curve and all other numbers stay.
    void SetPoints(const CurvePoints& points) { Current().points = points; }
    [[nodiscard]] double SmoothedAmount() const { return smoothedAmount.state; }

    /// Takes interpolation and points of the other's selected curve.
    void CopyCurveFrom(const Distortion& other) { Current() = other.Current(); }

    /// The selected curve as comma-separated text.
    [[nodiscard]] std::string ExportCurveText() const;
    /// Takes the selected curve from such text; false, and nothing changed, with fewer than 512 fields.
    bool ImportCurveText(const std::string& text);
    /// The same with a file whose name holds ".csv" or ".CSV"; other names are left alone and give false.
    /// Blocking file access.
    bool ExportCurveFile(const std::string& path) const;
    bool ImportCurveFile(const std::string& path);

    /// Draws the selected curve and one cycle of a full-scale sine through the whole unit for the editor.
    /// Moves the amount's smoother like any other block.
    void RenderPreview(std::span<double, kCurvePreviewPoints> curve,
                       std::span<double, kSignalPreviewPoints> signal);

private:
    enum Mode : int { kPlain = 0, kGain = 1, kFold = 2 };

    [[nodiscard]] DistortionCurve& Current() { return records[recordOf[Selected()]]; }
    [[nodiscard]] const DistortionCurve& Current() const { return records[recordOf[Selected()]]; }
    [[nodiscard]] std::size_t Selected() const { return static_cast<std::size_t>(curveNumber); }
    [[nodiscard]] double Gain(double effect, double correction) const;
    [[nodiscard]] double Shape(double dry, double gain, double mix) const;

    const DistortionDataProvider* provider;
    std::vector<DistortionCurve> records;        ///< one for each table that can be selected
    std::array<std::size_t, kCurves> recordOf{}; ///< record of a selection number
    int curveNumber = 0;
    bool bypass = false;
    int mode = kGain;
    double amount = 0.0;
    SmoothedValue smoothedAmount{0.9777, 0.0223, 0.0};
};

/// Runs a curve operation on both units. Noise is drawn once, so both get the same.
void RunCurveOperation(int code, RandomGenerator& random, Distortion& first, Distortion& second);

} // namespace Grimworks
