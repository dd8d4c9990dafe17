#include "dsp/RBJ.h"

#include "dsp/Transforms.h"

#include <cmath>
#include <numbers>

namespace Dsp::RBJ {

Design::Terms Design::TermsOf(const Params& params) {
    const double w0 = 2.0 * std::numbers::pi * NormalisedFrequency(params[1], params[0]);
    return {std::cos(w0), std::sin(w0) / (2.0 * params[2])};
}

void Design::Set(const Terms& terms, double b0, double b1, double b2) {
    const double a0 = 1.0 + terms.alpha;
    cascade.numStages = 1;
    Stage& stage = cascade[0];
    stage.a1 = -2.0 * terms.cosine / a0;
    stage.a2 = (1.0 - terms.alpha) / a0;
    stage.b0 = b0 / a0;
    stage.b1 = b1 / a0;
    stage.b2 = b2 / a0;
}

void LowPass::setParams(const Params& params) {
    const Terms terms = TermsOf(params);
    const double rest = 1.0 - terms.cosine;
    Set(terms, rest / 2.0, rest, rest / 2.0);
}

void HighPass::setParams(const Params& params) {
    const Terms terms = TermsOf(params);
    const double rest = 1.0 + terms.cosine;
    Set(terms, rest / 2.0, -rest, rest / 2.0);
}

void BandPass1::setParams(const Params& params) {
    const Terms terms = TermsOf(params);
    const double edge = terms.alpha * params[2];
    Set(terms, edge, 0.0, -edge);
}

void BandStop::setParams(const Params& params) {
    const Terms terms = TermsOf(params);
    Set(terms, 1.0, -2.0 * terms.cosine, 1.0);
}

} // namespace Dsp::RBJ
