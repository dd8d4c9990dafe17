#include "editor/thudforge/ThudForgeEditor.h"

#include "editor/IGraphics.h"
#include "editor/thudforge/IGwCurve2.h"
#include "editor/thudforge/PanelContext.h"
#include "editor/thudforge/Panels.h"
#include "plugin/ThudForge.h"

#include <cstddef>

namespace Grimworks {

ThudForgeEditor::ThudForgeEditor(ThudForge& instrument, IGraphics& canvas)
    : plug(instrument), graphics(canvas), captions(instrument), pictures(instrument) {
    PanelContext context{*this, plug, graphics};
    BuildPanels(context);
    ShowPage(ThudForge::SynthPage);
    graphics.SetTickHandler([this] { Tick(); });
}

void ThudForgeEditor::AddToPage(int page, int index) {
    if (page >= 0 && page < kPages) pages[static_cast<std::size_t>(page)].push_back(index);
}

void ThudForgeEditor::SetTab(int page, IControl* tab) {
    if (page >= 0 && page < kPages) tabs[static_cast<std::size_t>(page)] = tab;
}

void ThudForgeEditor::SetCurves(IGwCurve2* drawArea, IGwCurve2* preview) {
    curves = {drawArea, preview};
    if (drawArea != nullptr) drawArea->SetLinkedCurve(preview);
}

const std::vector<int>& ThudForgeEditor::PageControls(int page) const {
    static const std::vector<int> kNone;
    return page >= 0 && page < kPages ? pages[static_cast<std::size_t>(page)] : kNone;
}

void ThudForgeEditor::ShowPage(int page) {
    if (page < 0 || page >= kPages) return;
    shownPage = page;
    for (int p = 0; p < kPages; ++p) {
        const auto place = static_cast<std::size_t>(p);
        for (const int index : pages[place])
            graphics.HideControl(index, p != page);
        if (tabs[place] != nullptr) tabs[place]->SetValueFromUserInput(p == page ? 1.0 : 0.0);
    }
}

void ThudForgeEditor::Tick() {
    plug.changedParameters.Take([this](int id) {
        captions.Changed(id);
        pictures.Changed(id);
    });
    if (plug.CurrentPage() != shownPage) ShowPage(plug.CurrentPage());
    captions.Update();
    pictures.Update();
    if (!plug.RefreshCurveDisplay()) return;
    for (IGwCurve2* curve : curves) {
        if (curve != nullptr) curve->SetDirty(false);
    }
}

} // namespace Grimworks
