#pragma once

#include "editor/IBitmapControl.h"

#include <string>
#include <string_view>

namespace Grimworks {

class ThudForge;

/// A momentary button that has the instrument do something when it goes down.
class IGwActionButton : public IContactControl {
public:
    IGwActionButton(ThudForge* instrument, int x, int y, const IBitmap& strip);

    void OnMouseDown(int x, int y, const IMouseMod& mod) override;

protected:
    /// The button has just gone down.
    virtual void OnPress(const IMouseMod& mod) = 0;

    ThudForge* plug; ///< not owned
};

/// Plays the test note; the right mouse button stops it.
class IGwPlayButton final : public IGwActionButton {
public:
    static constexpr int kPlayNote = 48;

    using IGwActionButton::IGwActionButton;

protected:
    void OnPress(const IMouseMod& mod) override;
};

/// Copies attack, decay, sustain, release and duration of one envelope to the other.
class IGwArrowActionButton final : public IGwActionButton {
public:
    enum Direction : int { VolumeToFilter = 0, FilterToVolume = 1 };

    IGwArrowActionButton(ThudForge* instrument, int x, int y, const IBitmap& strip, int copyDirection);

protected:
    void OnPress(const IMouseMod& mod) override;

private:
    int direction;
};

/// Locks a rate to the host's tempo: one cycle a beat, then two with the next click, up to 32, then one
/// again.
class IGwSyncButton final : public IGwActionButton {
public:
    static constexpr int kPhaser = 3;

    /// `rateOf`: 0, 1 or 2 for an oscillator's LFO, kPhaser for the phaser.
    IGwSyncButton(ThudForge* instrument, int x, int y, const IBitmap& strip, int rateOf);

protected:
    void OnPress(const IMouseMod& mod) override;

private:
    double factor = 1.0;
    int lfo;
};

/// Opens a web address, or a second one if that fails.
class IGwUrlButton final : public IGwActionButton {
public:
    IGwUrlButton(ThudForge* instrument, int x, int y, const IBitmap& strip, std::string_view address,
                 std::string_view secondAddress);

protected:
    void OnPress(const IMouseMod& mod) override;

private:
    std::string url;
    std::string secondUrl;
};

/// Goes to the next or the previous choice of a parameter; with the right mouse button by ten, stopping at
/// the ends.
class IGwModeSwitch final : public IGwActionButton {
public:
    enum Direction : int { Previous = 0, Next = 1 };

    /// `choices`: how many the parameter has. `wrapAround`: a single step leads from one end to the other.
    IGwModeSwitch(ThudForge* instrument, int x, int y, const IBitmap& strip, int parameter, int choices,
                  int stepDirection, bool wrapAround);

protected:
    void OnPress(const IMouseMod& mod) override;

private:
    [[nodiscard]] int NextIndex(int index, bool byTen) const;

    int target; ///< id of the parameter; the button's own value is that of a button
    int steps;
    int direction;
    bool wrap;
};

} // namespace Grimworks
