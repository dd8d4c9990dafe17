#pragma once

#include <vector>

namespace Grimworks {

/// Where a piece of music is at one moment, in musical terms.
struct MusicalPosition {
    double quarter = 0.0;  ///< quarter notes since the start
    double tempo = 120.0;  ///< quarter notes per minute
    double barStart = 0.0; ///< quarter note at which the present bar began
    int numerator = 4;     ///< of the time signature
    int denominator = 4;   ///< of the time signature
};

/// The tempo and time signature of a piece of music over its length. 120 and 4/4 until something else is
/// added.
class TempoMap {
public:
    /// From `seconds` on, a quarter note lasts `microseconds` (above 0). Calls come in rising order of time;
    /// a second tempo at the same moment replaces the first.
    void AddTempo(double seconds, double microseconds);

    /// From quarter note `quarter` on, the music counts in `numerator`/`denominator` (both above 0). Calls
    /// come in rising order.
    void AddMeter(double quarter, int numerator, int denominator);

    /// Quarter notes since the start at a time in seconds.
    [[nodiscard]] double QuarterAt(double seconds) const;

    /// Everything that a host tells its plug-ins at a time in seconds.
    [[nodiscard]] MusicalPosition At(double seconds) const;

private:
    struct TempoPoint {
        double seconds;
        double quarter;
        double microseconds;
    };
    struct MeterPoint {
        double quarter;
        int numerator;
        int denominator;
    };

    [[nodiscard]] const TempoPoint& PointAt(double seconds) const;

    std::vector<TempoPoint> tempos{{0.0, 0.0, 500000.0}};
    std::vector<MeterPoint> meters{{0.0, 4, 4}};
};

} // namespace Grimworks
