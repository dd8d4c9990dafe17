#include "editor/IBitmapControl.h"
#include "editor/ITextControl.h"
#include "editor/thudforge/IGwCaptionControl.h"
#include "editor/thudforge/IGwCurve.h"
#include "editor/thudforge/IGwCurve2.h"
#include "editor/thudforge/IGwEngineCaption.h"
#include "editor/thudforge/IGwLevelDisplays.h"
#include "editor/thudforge/IGwScopeButtons.h"
#include "editor/thudforge/IGwWaveDrawer.h"
#include "editor/thudforge/PanelContext.h"
#include "editor/thudforge/ThudForgeEditor.h"
#include "plugin/ThudForge.h"

#include <utility>

namespace Grimworks {

namespace {

MadeControl MakeText(PanelContext& context, const PlacedControl& placed) {
    auto text =
        std::make_unique<ITextControl>(&context.instrument, placed.rect, TextOf(placed.style), placed.text);
    if (placed.kind == ControlKind::NoteText) context.editor.Captions().SetNoteText(text.get());
    return text;
}

MadeControl MakeWavePicture(PanelContext& context, const PlacedControl& placed) {
    EditorPictures& pictures = context.editor.Pictures();
    const int oscillator = placed.direction;
    auto curve =
        std::make_unique<IGwCurve>(&context.instrument, placed.rect, pictures.WavePoints(oscillator));
    pictures.SetWave(oscillator, curve.get());
    return curve;
}

MadeControl MakeEnvelopePicture(PanelContext& context, const PlacedControl& placed) {
    EditorPictures& pictures = context.editor.Pictures();
    const auto envelope = placed.direction == 0 ? EditorPictures::Volume : EditorPictures::Filter;
    auto curve =
        std::make_unique<IGwCurve>(&context.instrument, placed.rect, pictures.EnvelopePoints(envelope));
    pictures.SetEnvelope(envelope, curve.get());
    return curve;
}

MadeControl MakePitchPicture(PanelContext& context, const PlacedControl& placed) {
    EditorPictures& pictures = context.editor.Pictures();
    auto curve = std::make_unique<IGwCurve>(&context.instrument, placed.rect, pictures.PitchPoints());
    pictures.SetPitch(curve.get());
    return curve;
}

/// The curve that can be drawn on is placed first; the preview moves with it.
MadeControl MakeCurve(PanelContext& context, const PlacedControl& placed) {
    const bool canDraw = placed.kind == ControlKind::CurveDraw;
    const int mode = canDraw ? IGwCurve2::CurveInFront : IGwCurve2::SignalInFront;
    auto curve =
        std::make_unique<IGwCurve2>(&context.instrument, placed.rect, placed.direction, mode, canDraw);
    if (canDraw) {
        context.drawArea = curve.get();
    } else {
        context.editor.SetCurves(context.drawArea, curve.get());
    }
    return curve;
}

MadeControl MakeScope(PanelContext& context, const PlacedControl& placed) {
    auto drawer = std::make_unique<IGwWaveDrawer>(&context.instrument, placed.rect);
    context.editor.SetWaveDrawer(drawer.get());
    return drawer;
}

/// Texts and pictures that follow the sound.
MadeControl MakeMeter(PanelContext& context, const PlacedControl& placed) {
    ThudForge* const instrument = &context.instrument;
    const IText look = TextOf(placed.style);
    switch (placed.kind) {
    case ControlKind::MaxLevelText:
        return std::make_unique<IGwMaxLevelText>(instrument, placed.rect, look, placed.text);
    case ControlKind::HostInfoText:
        return std::make_unique<IGwHostInfoText>(instrument, placed.rect, look);
    case ControlKind::HostNameText:
        return std::make_unique<IGwHostNameText>(instrument, placed.rect, look, placed.text);
    case ControlKind::ZoomText:
        return std::make_unique<IZoomTextControl>(instrument, placed.rect, look, placed.text);
    case ControlKind::Eye:
        return std::make_unique<IGwVuEyeDrawer>(instrument, placed.rect, placed.direction != 0);
    case ControlKind::WaveDrawer:
        return MakeScope(context, placed);
    default:
        return nullptr;
    }
}

/// What the engine makes of a value, or the value itself.
MadeControl MakeCaptionText(PanelContext& context, const PlacedControl& placed) {
    const PlacedCaption& caption = placed.caption;
    const IText look = TextOf(caption.style);
    if (EditorCaptions::HasText(placed.param)) {
        auto text = std::make_unique<IGwEngineCaption>(&context.instrument, caption.rect, placed.param, look,
                                                       caption.text);
        context.editor.Captions().SetCaption(placed.param, text.get());
        return text;
    }
    return std::make_unique<IGwCaptionControl>(&context.instrument, caption.rect, placed.param, look,
                                               caption.mode, caption.showLabel);
}

} // namespace

MadeControl MakeDisplay(PanelContext& context, const PlacedControl& placed) {
    switch (placed.kind) {
    case ControlKind::Bitmap:
        return std::make_unique<IBitmapControl>(&context.instrument, placed.rect.L, placed.rect.T, -1,
                                                PlacedBitmap(context, placed));
    case ControlKind::Text:
    case ControlKind::NoteText:
        return MakeText(context, placed);
    case ControlKind::WavePicture:
        return MakeWavePicture(context, placed);
    case ControlKind::EnvelopePicture:
        return MakeEnvelopePicture(context, placed);
    case ControlKind::PitchPicture:
        return MakePitchPicture(context, placed);
    case ControlKind::CurveDraw:
    case ControlKind::CurvePreview:
        return MakeCurve(context, placed);
    default:
        return MakeMeter(context, placed);
    }
}

MadeControl MakeCaption(PanelContext& context, const PlacedControl& placed) {
    MadeControl caption = MakeCaptionText(context, placed);
    caption->EnablePrompt(true);
    return caption;
}

} // namespace Grimworks
