#pragma once

#include "editor/LICE_IBitmap.h"
#include "editor/LICE_MemBitmap.h"

namespace Grimworks {

/// A bitmap that the system can copy to the screen: on Windows a DIB section with a device context, elsewhere
/// memory that the window layer may lend, such as a segment shared with the display server. Rows follow each
/// other without gaps.
class LICE_SysBitmap final : public LICE_IBitmap {
public:
    LICE_SysBitmap() = default;
    LICE_SysBitmap(int startWidth, int startHeight) { LICE_SysBitmap::resize(startWidth, startHeight); }
    ~LICE_SysBitmap() override;

    LICE_pixel* getBits() override;
    int getWidth() override;
    int getHeight() override;
    int getRowSpan() override { return getWidth(); }

    /// A change of the size goes back to memory of the bitmap's own.
    bool resize(int newWidth, int newHeight) override;

    /// The HDC on Windows, null elsewhere.
    void* getDC() override;

    /// From now on the pixels live in `memory`, which has room for width * height of them and stays until
    /// TakeBack or a resize; the picture moves there. False, and nothing changed, for an empty bitmap, null,
    /// or where the system brings its own memory.
    bool Lend(LICE_pixel* memory);

    /// The picture moves back from lent memory; harmless without.
    void TakeBack();

    /// Whether the pixels are in lent memory.
    [[nodiscard]] bool IsLent() const;

private:
#ifdef _WIN32
    void Free();
    void FreeContext();

    LICE_pixel* fb = nullptr;
    int width = 0;
    int height = 0;
    void* context = nullptr; ///< HDC
    unsigned long contextThread = 0;
    void* section = nullptr;   ///< HBITMAP
    void* oldBitmap = nullptr; ///< what the context held before
#else
    LICE_MemBitmap own;
    LICE_pixel* lent = nullptr;
#endif
};

} // namespace Grimworks
