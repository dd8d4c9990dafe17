#pragma once

#include "editor/thudforge/EditorCaptions.h"
#include "editor/thudforge/EditorPictures.h"

#include <array>
#include <vector>

namespace Grimworks {

class IControl;
class IGraphics;
class IGwCurve2;
class IGwWaveDrawer;
class ThudForge;

/// The instrument's editor: its panels, the pages that they stand on, and what brings the state of the engine
/// to them. Built with the instrument and gone before it. Editor thread but for construction.
class ThudForgeEditor {
public:
    static constexpr int kPages = 3;

    /// Attaches all controls to the graphics and leaves the first page shown.
    ThudForgeEditor(ThudForge& instrument, IGraphics& canvas);
    virtual ~ThudForgeEditor() = default;
    ThudForgeEditor(const ThudForgeEditor&) = delete;
    ThudForgeEditor& operator=(const ThudForgeEditor&) = delete;

    // What the builders of the panels hand over. Nothing is owned.

    /// A control that is shown on one page only, by its index; a page outside 0..2 does nothing.
    void AddToPage(int page, int index);

    /// The tab of a page.
    void SetTab(int page, IControl* tab);

    /// The two displays of the distortion's curve.
    void SetCurves(IGwCurve2* drawArea, IGwCurve2* preview);

    /// The scope, for its buttons.
    void SetWaveDrawer(IGwWaveDrawer* drawer) { waveDrawer = drawer; }
    [[nodiscard]] IGwWaveDrawer* WaveDrawer() const { return waveDrawer; }

    [[nodiscard]] EditorCaptions& Captions() { return captions; }
    [[nodiscard]] EditorPictures& Pictures() { return pictures; }

    /// Indices of the controls of a page; empty for a bad page.
    [[nodiscard]] const std::vector<int>& PageControls(int page) const;

    /// The page whose controls are shown.
    [[nodiscard]] int ShownPage() const { return shownPage; }

    /// Shows the controls of a page, hides those of the others and presses its tab; a bad page does nothing.
    void ShowPage(int page);

    /// Brings pages, captions, pictures and curves up to date. IGraphics calls it at each tick.
    void Tick();

private:
    ThudForge& plug;
    IGraphics& graphics;
    EditorCaptions captions;
    EditorPictures pictures;
    std::array<std::vector<int>, kPages> pages;
    std::array<IControl*, kPages> tabs{};
    std::array<IGwCurve2*, 2> curves{};
    IGwWaveDrawer* waveDrawer = nullptr;
    int shownPage = 0;
};

} // namespace Grimworks
