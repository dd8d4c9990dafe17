#include "effects/Distortion.h"

#include "core/Choice.h"
#include "effects/CurveText.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

namespace Grimworks {

namespace {

constexpr double kDrive = 15.0;

/// Compressors, limiters and saturations are loud by nature; their gain is brought down.
double GainCorrection(int curveNumber) {
    switch (curveNumber) {
    case 3:
    case 5:
    case 6:
    case 7:
        return 0.777;
    case 1:
    case 2:
    case 4:
        return 0.5;
    default:
        return 1.0;
    }
}

} // namespace

Distortion::Distortion(const DistortionDataProvider& curveProvider) : provider(&curveProvider) {
    for (int number = 0; number < kCurves; ++number) {
        const auto n = static_cast<std::size_t>(number);
        const int table = kCurveInfos[n].table;
        const auto* const known =
            std::find_if(kCurveInfos.begin(), kCurveInfos.begin() + number,
                         [table](const CurveInfo& info) { return info.table == table; });
        if (known != kCurveInfos.begin() + number) {
            recordOf[n] = recordOf[static_cast<std::size_t>(known - kCurveInfos.begin())];
            continue;
        }
        recordOf[n] = records.size();
        records.emplace_back().Load(provider->GetCurveData(number));
    }
}

void Distortion::SetAmount(double value) {
    if (std::isfinite(value)) amount = value;
}

void Distortion::SetType(double value) {
    curveNumber = ClampedChoice(value, kCurves - 1);
}

void Distortion::SetMode(double value) {
    mode = ClampedChoice(value, kFold);
}

void Distortion::SetInterpolation(double value) {
    const int interpolation = Choice(value, CurveInterpolation::Cubic);
    for (DistortionCurve& record : records)
        record.interpolation = interpolation;
}

double Distortion::Gain(double effect, double correction) const {
    return mode == kPlain ? 2.0 * effect : (1.0 + effect * kDrive) * correction;
}

double Distortion::Shape(double dry, double gain, double mix) const {
    double wet = Clamp(gain * Current().LookUp(dry), -1.0, 1.0);
    if (mode == kFold) wet = 2.0 * std::sin(wet * kPi / 2.0);
    return mix * wet + (1.0 - mix) * dry;
}

void Distortion::Process(StereoView io, int frames, const double* modulation) {
    if (bypass || amount == 0.0) return;
    const double correction = GainCorrection(curveNumber);
    for (int i = 0; i < frames; ++i) {
        double effect = smoothedAmount.Step(amount);
        if (modulation != nullptr) effect = effect * modulation[i];
        const double gain = Gain(effect, correction);
        const double mix = effect / 2.0;
        io.left[i] = Shape(io.left[i], gain, mix);
        io.right[i] = Shape(io.right[i], gain, mix);
    }
}

void Distortion::RunCurveOperation(int code, const CurveNoise& noise) {
    DistortionCurve& curve = Current();
    switch (code) {
    case CurveOperation::Restore:
        curve.Load(provider->GetCurveData(curveNumber));
        break;
    case CurveOperation::Normalise:
        curve.Normalise();
        break;
    case CurveOperation::Smooth:
        curve.Smooth();
        break;
    case CurveOperation::SmoothZeroCrossing:
        curve.SmoothZeroCrossing();
        break;
    case CurveOperation::AddNoise:
        curve.AddNoise(noise);
        break;
    case CurveOperation::Steps:
        curve.MakeSteps();
        break;
    case CurveOperation::Reset:
        curve.ResetToRamp();
        break;
    default:
        break;
    }
}

std::string Distortion::ExportCurveText() const {
    return WriteCurveText(Points());
}

bool Distortion::ImportCurveText(const std::string& text) {
    std::istringstream stream(text);
    return ReadCurveText(stream, Current().points);
}

bool Distortion::ExportCurveFile(const std::string& path) const {
    if (!IsCurveFileName(path)) return false;
    std::ofstream file(path);
    file << ExportCurveText();
    file.close();
    return file.good();
}

bool Distortion::ImportCurveFile(const std::string& path) {
    if (!IsCurveFileName(path)) return false;
    std::ifstream file(path);
    return ReadCurveText(file, Current().points);
}

void Distortion::RenderPreview(std::span<double, kCurvePreviewPoints> curve,
                               std::span<double, kSignalPreviewPoints> signal) {
    for (int k = 0; k < kCurvePreviewPoints; ++k)
        curve[static_cast<std::size_t>(k)] = Current().LookUp(k * (2.0 / (kCurvePreviewPoints - 1)) - 1.0);
    for (int k = 0; k < kSignalPreviewPoints; ++k)
        signal[static_cast<std::size_t>(k)] = std::sin(2.0 * kPi * k / kSignalPreviewPoints);
    std::array<double, kSignalPreviewPoints> right{};
    std::copy(signal.begin(), signal.end(), right.begin());
    Process({signal.data(), right.data()}, kSignalPreviewPoints, nullptr);
}

void RunCurveOperation(int code, RandomGenerator& random, Distortion& first, Distortion& second) {
    CurveNoise noise{};
    if (code == CurveOperation::AddNoise) {
        for (int& draw : noise)
            draw = random.Next();
    }
    first.RunCurveOperation(code, noise);
    second.RunCurveOperation(code, noise);
}

} // namespace Grimworks
