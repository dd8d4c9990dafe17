#pragma once

#include "dsp/Bessel.h"
#include "dsp/Butterworth.h"
#include "dsp/ChebyshevI.h"
#include "dsp/RBJ.h"
#include "dsp/SmoothedFilterDesign.h"

/// The sweeping stereo filters of the instrument, compiled once.
namespace Dsp {

template <class Design>
using SmoothedI = SmoothedFilterDesign<Design, 2, DirectFormI>;
template <class Design>
using SmoothedII = SmoothedFilterDesign<Design, 2, DirectFormII>;

using RbjLowPass = SmoothedII<RBJ::LowPass>;
using RbjHighPass = SmoothedII<RBJ::HighPass>;
using RbjBandPass1 = SmoothedII<RBJ::BandPass1>;
using RbjBandStop = SmoothedII<RBJ::BandStop>;
using ChebyshevLowPass = SmoothedII<ChebyshevI::LowPass<4>>;
using ChebyshevHighPass = SmoothedII<ChebyshevI::HighPass<4>>;
using ChebyshevLowPassI = SmoothedI<ChebyshevI::LowPass<4>>;
using ChebyshevHighPassI = SmoothedI<ChebyshevI::HighPass<4>>;
using ButterworthBandPass = SmoothedII<Butterworth::BandPass<2>>;
using ButterworthBandStop = SmoothedII<Butterworth::BandStop<2>>;
using ButterworthLowShelf = SmoothedI<Butterworth::LowShelf<2>>;
using ButterworthBandShelf = SmoothedI<Butterworth::BandShelf<2>>;
using ButterworthHighShelf = SmoothedI<Butterworth::HighShelf<2>>;
using BesselLowPass = SmoothedII<Bessel::LowPass<4>>;
using BesselHighPass = SmoothedII<Bessel::HighPass<4>>;

extern template class SmoothedFilterDesign<RBJ::LowPass, 2, DirectFormII>;
extern template class SmoothedFilterDesign<RBJ::HighPass, 2, DirectFormII>;
extern template class SmoothedFilterDesign<RBJ::BandPass1, 2, DirectFormII>;
extern template class SmoothedFilterDesign<RBJ::BandStop, 2, DirectFormII>;
extern template class SmoothedFilterDesign<ChebyshevI::LowPass<4>, 2, DirectFormII>;
extern template class SmoothedFilterDesign<ChebyshevI::HighPass<4>, 2, DirectFormII>;
extern template class SmoothedFilterDesign<ChebyshevI::LowPass<4>, 2, DirectFormI>;
extern template class SmoothedFilterDesign<ChebyshevI::HighPass<4>, 2, DirectFormI>;
extern template class SmoothedFilterDesign<Butterworth::BandPass<2>, 2, DirectFormII>;
extern template class SmoothedFilterDesign<Butterworth::BandStop<2>, 2, DirectFormII>;
extern template class SmoothedFilterDesign<Butterworth::LowShelf<2>, 2, DirectFormI>;
extern template class SmoothedFilterDesign<Butterworth::BandShelf<2>, 2, DirectFormI>;
extern template class SmoothedFilterDesign<Butterworth::HighShelf<2>, 2, DirectFormI>;
extern template class SmoothedFilterDesign<Bessel::LowPass<4>, 2, DirectFormII>;
extern template class SmoothedFilterDesign<Bessel::HighPass<4>, 2, DirectFormII>;

} // namespace Dsp
