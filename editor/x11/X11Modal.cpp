#include "editor/x11/X11Modal.h"

#include "editor/x11/X11Loop.h"

namespace Grimworks {

X11Modal::X11Modal(X11Loop& itsLoop, const void* waitingFor) : loop(itsLoop), owner(waitingFor) {
    loop.PushModal(*this);
}

X11Modal::~X11Modal() {
    loop.PopModal(*this);
}

bool X11Modal::Run() {
    while (!ended && !cancelled) {
        OnStep();
        if (!ended && !cancelled) loop.Step(StepTime());
    }
    return !cancelled;
}

} // namespace Grimworks
