#pragma once

#include "core/AudioProcessingUnit.h"
#include "core/StereoBuffer.h"

namespace Grimworks {

/// A unit of filters in a row that is heard in full or not at all: while a toggle's fade runs, the filters go
/// on over a copy and the signal stays dry; a block that begins with the fade complete is wet.
class LateSwitchUnit : public AudioProcessingUnit {
public:
    /// Grows the work buffer; longer blocks pass unfiltered. Allocates; host thread.
    void SetBlockSize(int frames) { work.Grow(frames); }

    /// In place; audio thread.
    void Process(StereoView io, int frames);

protected:
    /// Runs the filters over one pointer a channel.
    virtual void RunFilters(int frames, double* const* channels) = 0;

private:
    StereoBuffer work;
};

} // namespace Grimworks
