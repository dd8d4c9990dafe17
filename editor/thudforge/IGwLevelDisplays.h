#pragma once

#include "editor/ITextControl.h"
#include "editor/thudforge/IGwButtons.h"

#include <string_view>

namespace Grimworks {

class ThudForge;

/// The highest output level so far in decibels; red above full scale.
class IGwMaxLevelText final : public ITextControl {
public:
    IGwMaxLevelText(ThudForge* instrument, const IRECT& rectangle, const IText& style,
                    std::string_view first = {});

    /// Follows the level.
    void OnGUIIdle() override;
    bool Draw(IGraphics& canvas) override;

private:
    void TakeLevel();

    ThudForge* plug; ///< not owned
    double level = 0.0;
};

/// Forgets the highest level.
class IGwResetButton final : public IGwActionButton {
public:
    using IGwActionButton::IGwActionButton;

protected:
    void OnPress(const IMouseMod& mod) override;
};

/// Sample rate, tempo and block size of the host.
class IGwHostInfoText final : public ITextControl {
public:
    IGwHostInfoText(ThudForge* instrument, const IRECT& rectangle, const IText& style);

    /// Follows the host.
    void OnGUIIdle() override;
    bool Draw(IGraphics& canvas) override;

private:
    void TakeInfo();

    ThudForge* plug; ///< not owned
};

/// Name and version of the host.
class IGwHostNameText final : public ITextControl {
public:
    IGwHostNameText(ThudForge* instrument, const IRECT& rectangle, const IText& style,
                    std::string_view first = {});

    /// Tells who the host is as soon as the instrument knows.
    void OnGUIIdle() override;

private:
    ThudForge* plug; ///< not owned
};

/// One of two eyes that glow with the level of a channel.
class IGwVuEyeDrawer final : public IControl {
public:
    /// `left`: the eye of the left channel; the other one is its mirror image.
    IGwVuEyeDrawer(ThudForge* instrument, const IRECT& rectangle, bool left);

    /// Lets the glow fade while there is no audio on the page, and follows the level.
    void OnGUIIdle() override;
    bool Draw(IGraphics& canvas) override;

private:
    [[nodiscard]] int Brightness() const;

    ThudForge* plug; ///< not owned
    bool leftEye;
    int shownBrightness = -1;
};

} // namespace Grimworks
