#include "plugin/ThudForge.h"

#include <algorithm>
#include <array>
#include <span>

namespace Grimworks {

namespace {

constexpr std::int32_t kStateDoubles = kCurvePoints + kParameters;
constexpr int kCurveBytes = kCurvePoints * static_cast<int>(sizeof(double));
constexpr int kParameterBytes = kParameters * static_cast<int>(sizeof(double));

/// Reads the curve of a state as far as it goes: the last point that is there fills the rest. False if there
/// was none at all. The position becomes -1 when the curve was cut.
bool ReadCurve(const ByteChunk& chunk, int& position, CurvePoints& points) {
    double last = 0.0;
    bool any = false;
    for (double& point : points) {
        if (position >= 0) {
            position = chunk.Get(last, position);
            any = any || position >= 0;
        }
        point = last;
    }
    return any;
}

} // namespace

/// A state is the count of its numbers, the drawn curve and all parameters as plain values.
bool ThudForge::SerializeState(ByteChunk& chunk) {
    const PlugLockGuard guard(Lock());
    chunk.Put(kStateDoubles);
    chunk.PutBytes(editorStage.GetDistortion().Points().data(), kCurveBytes);
    return SerializeParams(chunk);
}

/// The count is stepped over unread: the size is known. The curve waits until the parameters have chosen the
/// record that it belongs to, so that it never lands under the curve type of the state before.
int ThudForge::UnserializeState(const ByteChunk& chunk, int position) {
    const PlugLockGuard guard(Lock());
    position = chunk.Skip(static_cast<int>(sizeof kStateDoubles), position);
    CurvePoints points{};
    const bool hasCurve = ReadCurve(chunk, position, points);
    position = UnserializeParams(chunk, position);
    if (hasCurve) {
        editorStage.GetDistortion().SetPoints(points);
        audioStage.GetDistortion().SetPoints(points);
        curveChanged.store(true, std::memory_order_release);
    }
    return position;
}

/// The curve is compared from the very first byte, so the data must come without their count; the parameters
/// stand behind the curve, counted from `position`.
bool ThudForge::CompareState(std::span<const std::uint8_t> data, int position) {
    const PlugLockGuard guard(Lock());
    const auto needed = static_cast<std::size_t>(kCurveBytes) + static_cast<std::size_t>(kParameterBytes);
    if (position < 0 || data.size() < needed || data.size() - needed < static_cast<std::size_t>(position)) {
        return false;
    }
    // Byte by byte: a NaN that was stored as it is equals itself.
    const auto live = std::as_bytes(std::span(editorStage.GetDistortion().Points()));
    const bool sameCurve = std::ranges::equal(live, std::as_bytes(data.first(kCurveBytes)));
    return CompareParams(data, position + kCurveBytes) && sameCurve;
}

} // namespace Grimworks
