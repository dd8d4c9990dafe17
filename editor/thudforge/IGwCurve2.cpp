#include "editor/thudforge/IGwCurve2.h"

#include "editor/IGraphics.h"
#include "editor/thudforge/CurvePainter.h"
#include "plugin/ThudForge.h"

namespace Grimworks {

namespace {

constexpr GlowLevels kBright{92.0, 163.0};
constexpr GlowLevels kDark{0.0, 78.0};
const IColor kFrame{255, 0, 0, 255};

/// The place of a row is the code of its operation; names and codes do not match everywhere, and the two file
/// rows ask for operations as well. Musicians know the rows by what they do.
void FillMenu(IPopupMenu& menu) {
    menu.AddItem("Restore Curve");
    menu.AddItem("Smooth Curve");
    menu.AddItem("Add Noise");
    menu.AddItem("Smooth Zero-Crossing");
    menu.AddItem("Reset (Restore Linear)");
    menu.AddSeparator();
    menu.AddItem("Import Curve from CSV");
    menu.AddItem("Export Curve to CSV");
}

} // namespace

IGwCurve2::IGwCurve2(ThudForge* instrument, const IRECT& rectangle, int points, int mode, bool canDraw)
    : IControl(instrument, rectangle), plug(instrument), drawable(canDraw), displayMode(mode) {
    const int halfHeight = rectangle.H() / 2;
    const double half = halfHeight;
    line = {rectangle, static_cast<double>(rectangle.W()), half, half, points, true};
    dblAsSingleClick = true; // strokes may follow each other quickly
    if (drawable) plug->SetDrawnCurveWidth(rectangle.W());
    FillMenu(menu);
}

double IGwCurve2::ValueAt(int y) const {
    return (static_cast<double>(y - rect.T) / rect.H() - 0.5) * 2.0;
}

void IGwCurve2::OnMouseDown(int x, int y, const IMouseMod& mod) {
    if (mod.R) {
        OpenMenu();
        return;
    }
    if (!mod.L || !drawable) return;
    displayMode = CurveInFront;
    plug->PressCurve(x - rect.L, ValueAt(y));
    RedrawBoth();
}

void IGwCurve2::OnMouseDrag(int x, int y, int dX, int /*dY*/, const IMouseMod& mod) {
    if (!mod.L || !drawable || x < rect.L || x >= rect.R) return;
    plug->DragCurve(x - rect.L, ValueAt(y), dX);
    RedrawBoth();
}

void IGwCurve2::RedrawBoth() {
    SetDirty(true);
    if (linkedCurve != nullptr) linkedCurve->SetDirty(true);
}

void IGwCurve2::OpenMenu() {
    if (graphics == nullptr) return;
    const IPopupMenu* const chosen = graphics->CreateIPopupMenu(menu, rect);
    if (chosen == nullptr || chosen->ChosenItem() < 0) return;
    plug->RequestCurveOperation(chosen->ChosenItem());
    RedrawBoth();
}

void IGwCurve2::DrawPoints(IGraphics& canvas, std::span<const double> points, bool bright) const {
    DrawGlowingLine(canvas, line, points, bright ? kBright : kDark);
}

bool IGwCurve2::Draw(IGraphics& canvas) {
    plug->ApplyStrokeIfSilent();
    const CurvePreview& preview = plug->Preview();
    if (displayMode == SignalInFront) {
        DrawPoints(canvas, preview.curve, false);
        DrawPoints(canvas, preview.signal, true);
    } else {
        DrawPoints(canvas, preview.signal, false);
        DrawPoints(canvas, preview.curve, displayMode == CurveInFront);
    }
    if (showFrame) canvas.DrawRect(kFrame, rect);
    return true;
}

void IGwRestoreCurveButton::OnPress(const IMouseMod& /*mod*/) {
    plug->RequestCurveOperation(CurveOperation::Restore);
}

} // namespace Grimworks
