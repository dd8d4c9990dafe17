#include "editor/thudforge/Panels.h"

#include "editor/EmbeddedFiles.h"
#include "editor/IGraphics.h"
#include "editor/ITextControl.h"
#include "editor/thudforge/PanelContext.h"
#include "editor/thudforge/ThudForgeEditor.h"
#include "plugin/ThudForge.h"

#include <string>
#include <utility>

namespace Grimworks {

namespace {

constexpr const char* kImages = "resources/img/grimworks/";

/// One panel on its way to the window.
class PanelBuilder {
public:
    PanelBuilder(PanelContext& panelContext, Page panelPage) : context(panelContext), page(panelPage) {}

    void Attach(const PlacedControl& placed) {
        AttachLabel(placed.label);
        MadeControl control = Make(placed);
        control->SetTooltip(placed.tooltip);
        // What only shows something is no obstacle for the mouse on its way to what lies below.
        if (!TakesMouse(placed.kind)) control->SetTargetRect(IRECT());
        Keep(std::move(control), PageOf(placed));
        if (!placed.caption.rect.Empty()) AttachCaption(placed);
    }

private:
    [[nodiscard]] MadeControl Make(const PlacedControl& placed) const {
        if (MadeControl control = MakeParameterControl(context, placed)) return control;
        if (MadeControl control = MakeButton(context, placed)) return control;
        return MakeDisplay(context, placed);
    }

    void AttachLabel(const PlacedLabel& label) {
        if (label.rect.Empty()) return;
        auto control =
            std::make_unique<ITextControl>(&context.instrument, label.rect, TextOf(label.style), label.text);
        control->SetTargetRect(IRECT());
        Keep(std::move(control), page);
    }

    void AttachCaption(const PlacedControl& placed) {
        MadeControl caption = MakeCaption(context, placed);
        caption->SetTargetRect(placed.caption.hit);
        Keep(std::move(caption), page);
    }

    /// The plate with the panels' frames and titles belongs to the page of the panels.
    [[nodiscard]] Page PageOf(const PlacedControl& placed) const {
        return placed.bitmap == Bitmap::ControlsBackground ? Page::Synth : page;
    }

    void Keep(MadeControl control, Page shownOn) {
        const int index = context.graphics.AttachControl(std::move(control));
        if (shownOn != Page::Every) context.editor.AddToPage(static_cast<int>(shownOn), index);
    }

    PanelContext& context;
    Page page;
};

} // namespace

IBitmap PlacedBitmap(PanelContext& context, const PlacedControl& placed) {
    const BitmapInfo* const info = FindBitmap(placed.bitmap);
    IBitmap bitmap;
    if (info != nullptr)
        bitmap = context.graphics.LoadIBitmap(info->id, std::string(kImages) + info->file, info->frames);
    if (bitmap.data == nullptr) {
        bitmap.W = placed.rect.W();
        bitmap.H = placed.rect.H() * bitmap.N;
    }
    return bitmap;
}

void BuildPanels(PanelContext& context) {
    for (const Panel& panel : EditorPanels()) {
        PanelBuilder builder(context, panel.page);
        for (const PlacedControl& placed : panel.controls)
            builder.Attach(placed);
    }
}

} // namespace Grimworks
