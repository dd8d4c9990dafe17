#pragma once

namespace Grimworks {

struct PanelContext;

/// Attaches the whole editor as the layout has it: what shows on every page, then the panels in their order,
/// and of each panel its pictures, names, controls and captions. Once, while the instrument is built.
void BuildPanels(PanelContext& context);

} // namespace Grimworks
