#include "host/TempoMap.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Grimworks {

void TempoMap::AddTempo(double seconds, double microseconds) {
    const double quarter = QuarterAt(seconds);
    if (seconds <= tempos.back().seconds) {
        tempos.back().microseconds = microseconds;
    } else {
        tempos.push_back({seconds, quarter, microseconds});
    }
}

void TempoMap::AddMeter(double quarter, int numerator, int denominator) {
    if (quarter <= meters.back().quarter) {
        meters.back() = {meters.back().quarter, numerator, denominator};
    } else {
        meters.push_back({quarter, numerator, denominator});
    }
}

const TempoMap::TempoPoint& TempoMap::PointAt(double seconds) const {
    const auto after =
        std::upper_bound(tempos.begin(), tempos.end(), seconds,
                         [](double wanted, const TempoPoint& point) { return wanted < point.seconds; });
    return after == tempos.begin() ? tempos.front() : *std::prev(after);
}

double TempoMap::QuarterAt(double seconds) const {
    const TempoPoint& point = PointAt(seconds);
    return point.quarter + (seconds - point.seconds) * 1e6 / point.microseconds;
}

MusicalPosition TempoMap::At(double seconds) const {
    MusicalPosition position;
    position.quarter = QuarterAt(seconds);
    position.tempo = 60e6 / PointAt(seconds).microseconds;
    const auto after =
        std::upper_bound(meters.begin(), meters.end(), position.quarter,
                         [](double wanted, const MeterPoint& point) { return wanted < point.quarter; });
    const MeterPoint& meter = after == meters.begin() ? meters.front() : *std::prev(after);
    position.numerator = meter.numerator;
    position.denominator = meter.denominator;
    const double barLength = 4.0 * meter.numerator / meter.denominator;
    position.barStart =
        meter.quarter + std::floor((position.quarter - meter.quarter) / barLength) * barLength;
    return position;
}

} // namespace Grimworks
