#pragma once

#include "core/Limits.h"

#include <array>
#include <string>

namespace Grimworks {

class ITextControl;
class ThudForge;

/// The texts under the controls that tell more than the parameter's number: what the engine makes of it. The
/// editor's tick makes them, a text is replaced only when it differs. Editor thread.
class EditorCaptions {
public:
    explicit EditorCaptions(ThudForge& instrument);

    /// Whether a parameter has a text of this kind; all others show their own number.
    [[nodiscard]] static bool HasText(int id);

    /// The text of a parameter as it stands; empty for one without. Takes the plug-in lock for a moment.
    [[nodiscard]] std::string Text(int id) const;

    /// The control that shows a parameter's text; not owned, null for none. An id without a text does
    /// nothing.
    void SetCaption(int id, ITextControl* control);

    /// The control that shows frequency and key of the last note; not owned.
    void SetNoteText(ITextControl* control) { noteText = control; }

    /// A parameter has changed: its text is out of date, and those that depend on it.
    void Changed(int id);

    /// Makes all texts that are out of date, and follows the notes.
    void Update();

private:
    void Mark(int id);
    void MarkRange(int first, int last);
    void UpdateNote();

    ThudForge& plug;
    std::array<ITextControl*, kParameters> captions{};
    std::array<bool, kParameters> stale{};
    bool anyStale = false;
    ITextControl* noteText = nullptr;
    int shownNote = -1;
    double shownFrequency = 0.0;
};

} // namespace Grimworks
