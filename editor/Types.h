#pragma once

#include <algorithm>
#include <string>
#include <tuple>

namespace Grimworks {

class LICE_IBitmap;
class LICE_IFont;

/// A rectangle of pixels: L and T belong to it, R and B do not. All zero means empty.
struct IRECT {
    int L = 0;
    int T = 0;
    int R = 0;
    int B = 0;

    IRECT() = default;
    IRECT(int l, int t, int r, int b) : L(l), T(t), R(r), B(b) {}

    [[nodiscard]] bool Empty() const { return L == 0 && T == 0 && R == 0 && B == 0; }
    [[nodiscard]] int W() const { return R - L; }
    [[nodiscard]] int H() const { return B - T; }
    [[nodiscard]] int MW() const { return (L + R) / 2; }
    [[nodiscard]] int MH() const { return (T + B) / 2; }

    /// An empty rectangle holds no point, not even 0, 0.
    [[nodiscard]] bool Contains(int x, int y) const { return !Empty() && x >= L && x < R && y >= T && y < B; }

    /// The part that both have; empty if there is none.
    [[nodiscard]] IRECT Intersect(const IRECT& other) const {
        const IRECT both(std::max(L, other.L), std::max(T, other.T), std::min(R, other.R),
                         std::min(B, other.B));
        return both.L < both.R && both.T < both.B ? both : IRECT();
    }

    [[nodiscard]] bool Intersects(const IRECT& other) const { return !Intersect(other).Empty(); }

    /// The smallest rectangle around both; an empty one adds nothing.
    [[nodiscard]] IRECT Union(const IRECT& other) const {
        if (Empty()) return other;
        if (other.Empty()) return *this;
        return {std::min(L, other.L), std::min(T, other.T), std::max(R, other.R), std::max(B, other.B)};
    }

    bool operator==(const IRECT&) const = default;
};

/// A colour, 0..255 each.
struct IColor {
    int A = 255;
    int R = 0;
    int G = 0;
    int B = 0;

    IColor() = default;
    IColor(int a, int r, int g, int b) : A(a), R(r), G(g), B(b) {}
    bool operator==(const IColor&) const = default;
};

/// How pixels meet those below: source-over, or one of the two that change brightness; the weight 0..1 is
/// applied to the alpha.
struct IChannelBlend {
    enum Method : int { BlendNone = 0x10000, BlendAdd = 0x10001, BlendMultiply = 0x10002 };

    int method = BlendNone;
    float weight = 1.0F;

    IChannelBlend() = default;
    explicit IChannelBlend(int blendMethod, float blendWeight = 1.0F)
        : method(blendMethod), weight(blendWeight) {}
};

/// Buttons and keys that are held: left, right, shift, control, alt.
struct IMouseMod {
    bool L = false;
    bool R = false;
    bool S = false;
    bool C = false;
    bool A = false;

    IMouseMod() = default;
    explicit IMouseMod(bool l, bool r = false, bool s = false, bool c = false, bool a = false)
        : L(l), R(r), S(s), C(c), A(a) {}
};

/// What tells one font from another.
struct FontKey {
    std::string face;
    int height = 0;
    int style = 0;
    int orientation = 0;

    bool operator==(const FontKey&) const = default;
    bool operator<(const FontKey& other) const {
        return std::tie(face, height, style, orientation) <
               std::tie(other.face, other.height, other.style, other.orientation);
    }
};

/// Look of a text. Font names keep at most 31 bytes.
struct IText {
    enum Style : int { StyleNormal = 0, StyleBold = 1, StyleItalic = 2 };
    enum Align : int { AlignNear = 0, AlignCenter = 1, AlignFar = 2 };
    enum Quality : int {
        QualityDefault = 0,
        QualityNonAntiAliased = 1,
        QualityAntiAliased = 2,
        QualityClearType = 3
    };

    std::string font = "Verdana";
    int size = 12; ///< height in pixels
    IColor color{255, 0, 0, 0};
    IColor textEntryBGColor{255, 255, 255, 255};
    IColor textEntryFGColor{255, 0, 0, 0};
    int style = StyleNormal;
    int align = AlignCenter;
    int orientation = 0; ///< degrees, against the clock
    int quality = QualityDefault;
    /// The font of this text, from the process-wide cache; filled at first use by the editor thread.
    mutable LICE_IFont* cached = nullptr;
    mutable FontKey cachedKey; ///< what `cached` was made for: copies of a text may change their look

    IText() = default;
    IText(int height, const IColor& textColor, int alignment = AlignCenter, int textStyle = StyleNormal)
        : size(height), color(textColor), style(textStyle), align(alignment) {}
};

/// An image of N equal frames, from the process-wide cache, which owns it. Without an image (`data` null)
/// everything drawn with it is nothing.
struct IBitmap {
    LICE_IBitmap* data = nullptr;
    int W = 0; ///< of the whole image
    int H = 0;
    int N = 1;
    bool framesAreHorizontal = false;

    [[nodiscard]] int FrameWidth() const { return framesAreHorizontal && N > 1 ? W / N : W; }
    [[nodiscard]] int FrameHeight() const { return !framesAreHorizontal && N > 1 ? H / N : H; }
};

} // namespace Grimworks
