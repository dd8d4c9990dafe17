#include "dsp/Designs.h"

namespace Dsp {

template class SmoothedFilterDesign<RBJ::LowPass, 2, DirectFormII>;
template class SmoothedFilterDesign<RBJ::HighPass, 2, DirectFormII>;
template class SmoothedFilterDesign<RBJ::BandPass1, 2, DirectFormII>;
template class SmoothedFilterDesign<RBJ::BandStop, 2, DirectFormII>;
template class SmoothedFilterDesign<ChebyshevI::LowPass<4>, 2, DirectFormII>;
template class SmoothedFilterDesign<ChebyshevI::HighPass<4>, 2, DirectFormII>;
template class SmoothedFilterDesign<ChebyshevI::LowPass<4>, 2, DirectFormI>;
template class SmoothedFilterDesign<ChebyshevI::HighPass<4>, 2, DirectFormI>;
template class SmoothedFilterDesign<Butterworth::BandPass<2>, 2, DirectFormII>;
template class SmoothedFilterDesign<Butterworth::BandStop<2>, 2, DirectFormII>;
template class SmoothedFilterDesign<Butterworth::LowShelf<2>, 2, DirectFormI>;
template class SmoothedFilterDesign<Butterworth::BandShelf<2>, 2, DirectFormI>;
template class SmoothedFilterDesign<Butterworth::HighShelf<2>, 2, DirectFormI>;
template class SmoothedFilterDesign<Bessel::LowPass<4>, 2, DirectFormII>;
template class SmoothedFilterDesign<Bessel::HighPass<4>, 2, DirectFormII>;

} // namespace Dsp
