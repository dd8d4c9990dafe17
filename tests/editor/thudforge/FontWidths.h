#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Widths of texts in one of the editor's fonts, from the file's own tables: what a renderer that rounds each
/// advance to whole pixels needs.
class FontWidths {
public:
    /// `path` of a TrueType file; Loaded() tells whether it could be read.
    explicit FontWidths(const std::string& path);

    [[nodiscard]] bool Loaded() const { return unitsPerEm > 0; }

    /// Pixels of one line of Latin-1 or ASCII text with an em of `size` pixels.
    [[nodiscard]] int Width(std::string_view text, int size) const;

    [[nodiscard]] int Ascent(int size) const;     ///< from the top of a line to the baseline
    [[nodiscard]] int LineHeight(int size) const; ///< rounded up

private:
    [[nodiscard]] int At8(std::size_t position) const;
    [[nodiscard]] int At16(std::size_t position) const;
    [[nodiscard]] std::size_t Table(std::string_view tag) const;
    [[nodiscard]] int GlyphOf(int character) const;

    std::vector<std::uint8_t> bytes;
    std::size_t cmap = 0;
    std::size_t hmtx = 0;
    int metrics = 0;
    int unitsPerEm = 0;
    int ascender = 0;
    int descender = 0;
};
