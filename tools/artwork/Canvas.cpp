#include "tools/artwork/Canvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

#include <cairo-ft.h>
#include <ft2build.h>
#include FT_FREETYPE_H

namespace Artwork {

namespace {

constexpr int kSupersampling = 4;

Surface MakeSurface(int width, int height) {
    return Surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
}

std::uint32_t* RowOf(cairo_surface_t* surface, int y) {
    unsigned char* data = cairo_image_surface_get_data(surface);
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface);
    return reinterpret_cast<std::uint32_t*>(data + y * stride);
}

/// Mean of a square of pixels; alpha is premultiplied, so each byte may be averaged on its own.
std::uint32_t Average(cairo_surface_t* large, int x, int y) {
    std::array<std::uint32_t, 4> sums{};
    for (int row = 0; row < kSupersampling; ++row) {
        const std::uint32_t* pixels =
            RowOf(large, y * kSupersampling + row) + std::ptrdiff_t{x} * kSupersampling;
        for (int column = 0; column < kSupersampling; ++column) {
            for (unsigned byte = 0; byte < 4; ++byte)
                sums[byte] += (pixels[column] >> (8U * byte)) & 0xFFU;
        }
    }
    constexpr std::uint32_t kCount = kSupersampling * kSupersampling;
    std::uint32_t result = 0;
    for (unsigned byte = 0; byte < 4; ++byte)
        result |= ((sums[byte] + kCount / 2) / kCount) << (8U * byte);
    return result;
}

struct Fonts {
    FT_Library library = nullptr;
    std::array<FT_Face, 2> faces{};
    std::array<cairo_font_face_t*, 2> cairoFaces{};
};

Fonts& TheFonts() {
    static Fonts fonts;
    return fonts;
}

/// A context set up for small texts.
void SetFont(cairo_t* context, const TextLook& look) {
    cairo_set_font_face(context, TheFonts().cairoFaces[look.face == Face::Bold ? 1 : 0]);
    cairo_set_font_size(context, look.size);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, look.smooth ? CAIRO_HINT_STYLE_NONE : CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options,
                                        look.smooth ? CAIRO_HINT_METRICS_OFF : CAIRO_HINT_METRICS_ON);
    cairo_set_font_options(context, options);
    cairo_font_options_destroy(options);
}

double Advance(cairo_t* context, char character) {
    const std::array<char, 2> text{character, '\0'};
    cairo_text_extents_t extents;
    cairo_text_extents(context, text.data(), &extents);
    return extents.x_advance;
}

double WidthIn(cairo_t* context, std::string_view text, const TextLook& look) {
    double sum = 0.0;
    for (const char character : text)
        sum += Advance(context, character) + look.tracking;
    return text.empty() ? 0.0 : sum - look.tracking;
}

/// Left end of a line.
double PenStart(cairo_t* context, std::string_view text, double x, const TextLook& look) {
    SetFont(context, look);
    const double width = WidthIn(context, text, look);
    double pen = x;
    if (look.align == Align::Center) pen -= width / 2.0;
    if (look.align == Align::Right) pen -= width;
    return look.smooth ? pen : std::round(pen);
}

void DrawCharacters(cairo_t* context, std::string_view text, double x, double baseline,
                    const TextLook& look) {
    double pen = PenStart(context, text, x, look);
    cairo_set_source_rgba(context, look.color.r, look.color.g, look.color.b, look.color.a);
    for (const char character : text) {
        const std::array<char, 2> one{character, '\0'};
        cairo_move_to(context, pen, baseline);
        cairo_show_text(context, one.data());
        pen += Advance(context, character) + look.tracking;
    }
}

/// A number of -1..1 that depends on nothing but its two coordinates.
double Hash(int x, int y) {
    auto h = static_cast<std::uint32_t>(x) * 374761393U + static_cast<std::uint32_t>(y) * 668265263U;
    h = (h ^ (h >> 13U)) * 1274126177U;
    h ^= h >> 16U;
    return static_cast<double>(h & 0xFFFFU) / 32767.5 - 1.0;
}

/// Brushed grain: a level for each row, and streaks of different length in it.
double Grain(int x, int y) {
    const int length = 48 + static_cast<int>((Hash(7, y) + 1.0) * 60.0);
    return 0.55 * Hash(1, y) + 0.45 * Hash(x / length, y + 5000);
}

} // namespace

Color FromEditor(const Grimworks::IColor& color) {
    return {color.R / 255.0, color.G / 255.0, color.B / 255.0, color.A / 255.0};
}

Color Gray(double level, double alpha) {
    return {level, level, level, alpha};
}

Color Mix(const Color& from, const Color& to, double amount) {
    const auto mix = [amount](double a, double b) { return a + (b - a) * amount; };
    return {mix(from.r, to.r), mix(from.g, to.g), mix(from.b, to.b), mix(from.a, to.a)};
}

Canvas::Canvas(int pixelWidth, int pixelHeight)
    : width(pixelWidth), height(pixelHeight), surface(MakeSurface(pixelWidth, pixelHeight)) {}

void Canvas::Shapes(const std::function<void(cairo_t*)>& draw) {
    const Surface large = MakeSurface(width * kSupersampling, height * kSupersampling);
    {
        const Context context(cairo_create(large.get()));
        cairo_scale(context.get(), kSupersampling, kSupersampling);
        draw(context.get());
    }
    cairo_surface_flush(large.get());
    const Surface small = MakeSurface(width, height);
    for (int y = 0; y < height; ++y) {
        std::uint32_t* row = RowOf(small.get(), y);
        for (int x = 0; x < width; ++x)
            row[x] = Average(large.get(), x, y);
    }
    cairo_surface_mark_dirty(small.get());
    const Context onto(cairo_create(surface.get()));
    cairo_set_source_surface(onto.get(), small.get(), 0.0, 0.0);
    cairo_paint(onto.get());
}

void Canvas::Text(std::string_view text, double x, double baseline, const TextLook& look) {
    if (look.smooth) {
        Shapes([&](cairo_t* context) { DrawCharacters(context, text, x, baseline, look); });
        return;
    }
    const Context context(cairo_create(surface.get()));
    DrawCharacters(context.get(), text, x, baseline, look);
}

void Canvas::TextOnMiddle(std::string_view text, double x, double middle, const TextLook& look) {
    const double capitals = std::round(look.size * 1456.0 / 2048.0);
    const double baseline = look.smooth ? middle + capitals / 2.0 : std::ceil(middle + capitals / 2.0 - 0.25);
    Text(text, x, baseline, look);
}

void Canvas::Paste(const Canvas& other, int x, int y) {
    const Context context(cairo_create(surface.get()));
    cairo_set_source_surface(context.get(), other.surface.get(), x, y);
    cairo_paint(context.get());
}

void Canvas::PasteFrame(const Canvas& strip, int frames, int frame, int x, int y) {
    const int frameHeight = strip.height / frames;
    const Context context(cairo_create(surface.get()));
    cairo_rectangle(context.get(), x, y, strip.width, frameHeight);
    cairo_clip(context.get());
    cairo_set_source_surface(context.get(), strip.surface.get(), x, y - frame * frameHeight);
    cairo_paint(context.get());
}

void Canvas::Brush(double levels, int originX, int originY) {
    cairo_surface_flush(surface.get());
    for (int y = 0; y < height; ++y) {
        std::uint32_t* row = RowOf(surface.get(), y);
        for (int x = 0; x < width; ++x) {
            const auto alpha = static_cast<int>(row[x] >> 24U);
            if (alpha == 0) continue;
            const int change = static_cast<int>(
                std::lround(Grain(x + originX, y + originY) * levels * static_cast<double>(alpha) / 255.0));
            std::uint32_t pixel = static_cast<std::uint32_t>(alpha) << 24U;
            for (unsigned byte = 0; byte < 3; ++byte) {
                const int old = static_cast<int>((row[x] >> (8U * byte)) & 0xFFU);
                pixel |= static_cast<std::uint32_t>(std::clamp(old + change, 0, alpha)) << (8U * byte);
            }
            row[x] = pixel;
        }
    }
    cairo_surface_mark_dirty(surface.get());
}

std::vector<std::uint8_t> Canvas::Pixels() const {
    cairo_surface_flush(surface.get());
    std::vector<std::uint8_t> bytes;
    bytes.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4U);
    for (int y = 0; y < height; ++y) {
        const std::uint32_t* row = RowOf(surface.get(), y);
        for (int x = 0; x < width; ++x) {
            const std::uint32_t alpha = row[x] >> 24U;
            for (const unsigned shift : {16U, 8U, 0U}) {
                const std::uint32_t value = (row[x] >> shift) & 0xFFU;
                bytes.push_back(static_cast<std::uint8_t>(
                    alpha == 0U ? 0U : std::min<std::uint32_t>(255U, (value * 255U + alpha / 2U) / alpha)));
            }
            bytes.push_back(static_cast<std::uint8_t>(alpha));
        }
    }
    return bytes;
}

Canvas MakeStrip(int width, int height, int frames,
                 const std::function<void(Canvas&, int frame)>& drawFrame) {
    Canvas strip(width, height * frames);
    for (int frame = 0; frame < frames; ++frame) {
        Canvas one(width, height);
        drawFrame(one, frame);
        strip.Paste(one, 0, frame * height);
    }
    return strip;
}

void AppendText(cairo_t* context, std::string_view text, double x, double baseline, const TextLook& look) {
    double pen = PenStart(context, text, x, look);
    for (const char character : text) {
        const std::array<char, 2> one{character, '\0'};
        cairo_move_to(context, pen, baseline);
        cairo_text_path(context, one.data());
        pen += Advance(context, character) + look.tracking;
    }
}

double TextWidth(std::string_view text, const TextLook& look) {
    const Surface surface = MakeSurface(1, 1);
    const Context context(cairo_create(surface.get()));
    SetFont(context.get(), look);
    return WidthIn(context.get(), text, look);
}

void LoadFonts(const std::string& folder) {
    Fonts& fonts = TheFonts();
    if (FT_Init_FreeType(&fonts.library) != 0) throw std::runtime_error("FreeType does not start");
    const std::array<std::string, 2> files{folder + "/Editor.ttf", folder + "/Editor-Bold.ttf"};
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (FT_New_Face(fonts.library, files[i].c_str(), 0, &fonts.faces[i]) != 0) {
            throw std::runtime_error("cannot read " + files[i]);
        }
        fonts.cairoFaces[i] = cairo_ft_font_face_create_for_ft_face(fonts.faces[i], FT_LOAD_TARGET_LIGHT);
    }
}

} // namespace Artwork
