#pragma once

namespace Grimworks {

/// One-pole smoother, run once per sample: state = pole * state + input * target, with pole + input = 1.
/// The two numbers are fixed for each place of use and deliberately not scaled by the sample rate, so glides
/// are shorter at higher rates. The state starts at 0: the instrument fades in on its first block.
struct SmoothedValue {
    double pole = 0.9777;
    double input = 0.0223;
    double state = 0.0;

    /// Steps towards the target and gives the new state.
    double Step(double target) {
        state = pole * state + input * target;
        return state;
    }
};

} // namespace Grimworks
