#pragma once

#include "editor/Types.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <cairo.h>

namespace Artwork {

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

struct ContextDeleter {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using Context = std::unique_ptr<cairo_t, ContextDeleter>;

struct PatternDeleter {
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};
using Pattern = std::unique_ptr<cairo_pattern_t, PatternDeleter>;

/// A colour of 0..1 each.
struct Color {
    double r = 0.0;
    double g = 0.0;
    double b = 0.0;
    double a = 1.0;

    [[nodiscard]] Color Alpha(double alpha) const { return {r, g, b, alpha}; }
};

[[nodiscard]] Color FromEditor(const Grimworks::IColor& color);
[[nodiscard]] Color Gray(double level, double alpha = 1.0);
[[nodiscard]] Color Mix(const Color& from, const Color& to, double amount);

enum class Face { Regular, Bold };
enum class Align { Left, Center, Right };

struct TextLook {
    Face face = Face::Bold;
    double size = 11.0;
    Color color;
    Align align = Align::Center;
    double tracking = 0.0; ///< pixels added to each advance
    bool smooth = false;   ///< for large lettering: drawn as shapes, not as hinted glyphs
};

/// One image. Shapes are drawn larger and averaged down; small texts are drawn in place, with hinting, so
/// that they come out as crisp as the editor's own.
class Canvas {
public:
    Canvas(int pixelWidth, int pixelHeight);

    [[nodiscard]] int Width() const { return width; }
    [[nodiscard]] int Height() const { return height; }

    /// Draws in coordinates of this image, supersampled, over what is there.
    void Shapes(const std::function<void(cairo_t*)>& draw);

    /// A line of text; `x` is its left end, centre or right end, `baseline` where its letters stand.
    void Text(std::string_view text, double x, double baseline, const TextLook& look);

    /// The same with the capitals centred on `middle`.
    void TextOnMiddle(std::string_view text, double x, double middle, const TextLook& look);

    /// Copies another image over this one.
    void Paste(const Canvas& other, int x, int y);
    /// Copies one frame of a vertical strip.
    void PasteFrame(const Canvas& strip, int frames, int frame, int x, int y);

    /// Adds a brushed metal grain of about `levels` of 255 where the image is not transparent. The grain
    /// depends on the window position of the image, so that neighbours match.
    void Brush(double levels, int originX = 0, int originY = 0);

    /// Rows of red, green, blue, alpha, not premultiplied.
    [[nodiscard]] std::vector<std::uint8_t> Pixels() const;

    [[nodiscard]] cairo_surface_t* Handle() const { return surface.get(); }

private:
    int width;
    int height;
    Surface surface;
};

/// A strip of frames from top to bottom.
[[nodiscard]] Canvas MakeStrip(int width, int height, int frames,
                               const std::function<void(Canvas&, int frame)>& drawFrame);

/// Adds the outline of a line of text to the path of a context inside Shapes().
void AppendText(cairo_t* context, std::string_view text, double x, double baseline, const TextLook& look);

/// Width of a line as Text() draws it.
[[nodiscard]] double TextWidth(std::string_view text, const TextLook& look);

/// Where the fonts are; to be called once before any text.
void LoadFonts(const std::string& folder);

/// Writes the smallest PNG found for the pixels of the image, without loss. False if the file cannot be
/// written.
bool WritePng(const Canvas& canvas, const std::string& path);

} // namespace Artwork
