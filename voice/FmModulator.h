#pragma once

#include "voice/Modulator.h"

namespace Grimworks {

/// The sine that frequency-modulates the oscillators of a voice at the pitch of its note. Silent until an
/// amount is set as its amplitude.
class FmModulator final : public Modulator {
public:
    FmModulator() : Modulator(0.0, 10000.0, 0.1) {}
};

} // namespace Grimworks
