#include "editor/thudforge/EditorCaptions.h"

#include "core/ParameterIds.h"
#include "editor/ITextControl.h"
#include "editor/thudforge/CaptionTexts.h"
#include "plugin/ThudForge.h"
#include "voice/NoteMode.h"

#include <cstddef>

namespace Grimworks {

EditorCaptions::EditorCaptions(ThudForge& instrument) : plug(instrument) {}

bool EditorCaptions::HasText(int id) {
    return HasCaptionText(id);
}

std::string EditorCaptions::Text(int id) const {
    return CaptionText(id, CaptionSource(plug));
}

void EditorCaptions::SetCaption(int id, ITextControl* control) {
    if (!HasText(id)) return;
    captions[static_cast<std::size_t>(id)] = control;
    Mark(id);
}

void EditorCaptions::Mark(int id) {
    stale[static_cast<std::size_t>(id)] = true;
    anyStale = true;
}

void EditorCaptions::MarkRange(int first, int last) {
    for (int id = first; id <= last; ++id)
        Mark(id);
}

void EditorCaptions::Changed(int id) {
    if (id < 0 || id >= kLiveParameters) return;
    Mark(id);
    if (id < Param::EnvAttack) {
        const auto parameter = static_cast<OscParam>(id % kOscParams);
        if (parameter == OscParam::LfoRate || parameter == OscParam::LfoLinkAll)
            Mark(Osc(id / kOscParams, OscParam::LfoTempoSync));
    } else if (id <= Param::EnvAmount) {
        MarkRange(Param::EnvAttack, Param::EnvAmount); // the duration stretches all stages
    } else if (id <= Param::FilterEnvAmount) {
        MarkRange(Param::FilterAttack, Param::FilterEnvAmount);
    } else if (id == Param::PhaserRate) {
        Mark(Param::PhaserTempoSync);
    }
}

void EditorCaptions::Update() {
    UpdateNote();
    if (!anyStale) return;
    anyStale = false;
    const CaptionSource source(plug);
    for (std::size_t id = 0; id < stale.size(); ++id) {
        if (stale[id] && captions[id] != nullptr)
            captions[id]->SetTextFromPlug(CaptionText(static_cast<int>(id), source));
        stale[id] = false;
    }
}

void EditorCaptions::UpdateNote() {
    const int note = plug.Voices().LastNote();
    const double frequency = plug.Voices().LastFrequency();
    if (noteText == nullptr || note < 0 || (note == shownNote && frequency == shownFrequency)) return;
    shownNote = note;
    shownFrequency = frequency;
    noteText->SetTextFromPlug(NoteFrequencyText(frequency, note));
}

} // namespace Grimworks
