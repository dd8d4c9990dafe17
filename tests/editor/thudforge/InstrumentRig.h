#pragma once

#include "plugin/ThudForge.h"
#include "tests/editor/ControlRig.h"

#include <memory>
#include <utility>
#include <vector>

namespace Grimworks {

/// A whole instrument under a small host, with a headless editor of 300 by 200 for controls that a test
/// attaches.
struct InstrumentRig {
    struct HostCall {
        std::int32_t opcode;
        std::int32_t index;
        float value;
    };

    InstrumentRig() : plug(&InstrumentRig::Host) {
        plug.Effect()->user = this;
        plug.AttachGraphics(&graphics);
    }
    ~InstrumentRig() { plug.AttachGraphics(nullptr); }
    InstrumentRig(const InstrumentRig&) = delete;
    InstrumentRig& operator=(const InstrumentRig&) = delete;

    template <class Control, class... Arguments>
    Control& Attach(Arguments&&... arguments) {
        auto control = std::make_unique<Control>(&plug, std::forward<Arguments>(arguments)...);
        Control& attached = *control;
        graphics.AttachControl(std::move(control));
        return attached;
    }

    /// A click on the middle of a control.
    void Click(const IControl& control, const IMouseMod& mod = kLeft) {
        graphics.OnMouseDown(control.Rect().MW(), control.Rect().MH(), mod);
        graphics.OnMouseUp(control.Rect().MW(), control.Rect().MH(), mod);
    }

    void DrawAll() {
        graphics.texts.clear();
        graphics.SetStrictDrawing(true);
        graphics.Draw(IRECT(0, 0, graphics.Width(), graphics.Height()));
    }

    [[nodiscard]] double Get(int id) { return plug.GetParameterNormalized(id); }
    void Set(int id, double value) { plug.SetParameterFromHost(id, value); }

    [[nodiscard]] int Count(std::int32_t opcode) const {
        int count = 0;
        for (const HostCall& call : calls)
            count += call.opcode == opcode ? 1 : 0;
        return count;
    }

    VstTimeInfo time{};
    std::vector<HostCall> calls;
    TestStrips strips;
    ThudForge plug;
    ScriptedGraphics graphics{plug, 300, 200};

private:
    static std::intptr_t Host(AEffect* effect, std::int32_t opcode, std::int32_t index,
                              std::intptr_t /*value*/, void* /*ptr*/, float opt) {
        if (effect == nullptr || effect->user == nullptr) return 0;
        auto& self = *static_cast<InstrumentRig*>(effect->user);
        self.calls.push_back({opcode, index, opt});
        return opcode == HostOp::GetTime ? reinterpret_cast<std::intptr_t>(&self.time) : 0;
    }
};

} // namespace Grimworks
