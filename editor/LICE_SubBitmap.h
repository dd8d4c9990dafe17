#pragma once

#include "editor/LICE_IBitmap.h"
#include "editor/Types.h"

namespace Grimworks {

/// A part of another bitmap, which must outlive it: what is drawn here at 0, 0 appears there at the part's
/// corner, and nothing is drawn outside the part. The part is limited to the other bitmap; it can be empty.
class LICE_SubBitmap final : public LICE_IBitmap {
public:
    LICE_SubBitmap(LICE_IBitmap& ofWhole, const IRECT& part) : whole(ofWhole), span(whole.getRowSpan()) {
        const IRECT inside = part.Intersect({0, 0, whole.getWidth(), whole.getHeight()});
        if (whole.getBits() == nullptr || inside.Empty()) return;
        bits = whole.getBits() + static_cast<std::ptrdiff_t>(inside.T) * span + inside.L;
        width = inside.W();
        height = inside.H();
        left = inside.L;
        top = inside.T;
    }

    LICE_pixel* getBits() override { return bits; }
    int getWidth() override { return width; }
    int getHeight() override { return height; }
    int getRowSpan() override { return span; }
    bool resize(int, int) override { return false; }

    /// That of the whole bitmap.
    void* getDC() override { return whole.getDC(); }

    /// Where the part begins in the other bitmap.
    [[nodiscard]] int Left() const { return left; }
    [[nodiscard]] int Top() const { return top; }

private:
    LICE_IBitmap& whole;
    LICE_pixel* bits = nullptr;
    int span;
    int width = 0;
    int height = 0;
    int left = 0;
    int top = 0;
};

} // namespace Grimworks
