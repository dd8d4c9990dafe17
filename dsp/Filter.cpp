#include "dsp/Filter.h"

namespace Dsp {

int Filter::findParam(int id) const {
    for (int i = getNumParams() - 1; i >= 0; --i) {
        if (getParamInfo(i).id == id) return i;
    }
    return -1;
}

void Filter::setParam(int id, double value) {
    const int index = findParam(id);
    if (index >= 0) params[index] = value;
}

void Filter::changeParam(int id, double value) {
    Params target = params;
    const int index = findParam(id);
    if (index >= 0) target[index] = value;
    setParams(target);
}

double Filter::toNativeValue(int id, double control) const {
    const int index = findParam(id);
    return index >= 0 ? getParamInfo(index).toNativeValue(control) : 0.0;
}

Params Filter::getDefaultParams() const {
    Params defaults;
    for (int i = 0; i < getNumParams(); ++i)
        defaults[i] = getParamInfo(i).defaultValue;
    return defaults;
}

} // namespace Dsp
