// Makes the icon of the Windows programs from the mask on the editor's about page.
//
//     build/release/tools/draw_icon resources/img/grimworks/GrimWorks_logo_txt_740x450.png
//     resources/ThudForge.ico

#include "editor/LICE_Png.h"
#include "editor/Types.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <vector>

using namespace Grimworks;

namespace {

/// The mask in the picture: a square, of which the sides show the waves next to it.
const IRECT kSquare(225, 7, 515, 297);
const IRECT kMask(238, 7, 502, 297);

constexpr std::array<int, 5> kSizes{16, 24, 32, 48, 64};

using Bytes = std::vector<std::uint8_t>;

void Put(Bytes& bytes, std::uint32_t number, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
}

/// Mean of the picture's pixels over a rectangle, with the parts of those on its edge.
class Mean {
public:
    void Add(LICE_pixel pixel, double part) {
        const double alpha = part * (pixel >> 24U);
        for (std::size_t i = 0; i < sums.size(); ++i)
            sums[i] += alpha * ((pixel >> (8U * static_cast<unsigned>(i))) & 255U);
        alphas += alpha;
        parts += part;
    }

    [[nodiscard]] LICE_pixel Get() const {
        if (!(alphas > 0.0)) return 0;
        const auto rounded = [](double x) { return static_cast<int>(std::lround(x)); };
        return LICE_RGBA(rounded(sums[2] / alphas), rounded(sums[1] / alphas), rounded(sums[0] / alphas),
                         rounded(alphas / parts));
    }

private:
    std::array<double, 3> sums{};
    double alphas = 0.0;
    double parts = 0.0;
};

/// How much of the pixel at `place` lies between two edges.
double Part(int place, double from, double to) {
    return std::max(0.0, std::min(to, place + 1.0) - std::max(from, static_cast<double>(place)));
}

LICE_pixel PixelAt(LICE_IBitmap& picture, double left, double top, double side) {
    Mean mean;
    for (int y = static_cast<int>(top); y < top + side; ++y) {
        for (int x = static_cast<int>(left); x < left + side; ++x) {
            const LICE_pixel pixel =
                kMask.Contains(x, y) ? picture.getBits()[y * picture.getRowSpan() + x] : 0;
            mean.Add(pixel, Part(x, left, left + side) * Part(y, top, top + side));
        }
    }
    return mean.Get();
}

/// One image of an icon: a header, the pixels from the bottom to the top, and an unused mask.
Bytes ImageOf(LICE_IBitmap& picture, int size) {
    Bytes image;
    Put(image, 40, 4);
    Put(image, static_cast<std::uint32_t>(size), 4);
    Put(image, static_cast<std::uint32_t>(2 * size), 4); // pixels and mask together
    Put(image, 1, 2);
    Put(image, 32, 2);
    for (int i = 0; i < 6; ++i)
        Put(image, 0, 4);
    const double side = static_cast<double>(kSquare.W()) / size;
    for (int y = size - 1; y >= 0; --y) {
        for (int x = 0; x < size; ++x)
            Put(image, PixelAt(picture, kSquare.L + x * side, kSquare.T + y * side, side), 4);
    }
    const int maskRow = (size + 31) / 32 * 4;
    image.resize(image.size() + static_cast<std::size_t>(maskRow * size));
    return image;
}

Bytes IconOf(LICE_IBitmap& picture) {
    Bytes icon;
    Put(icon, 0, 2);
    Put(icon, 1, 2);
    Put(icon, static_cast<std::uint32_t>(kSizes.size()), 2);
    Bytes images;
    for (const int size : kSizes) {
        const Bytes image = ImageOf(picture, size);
        Put(icon, static_cast<std::uint32_t>(size | size << 8), 4); // width, height, no palette
        Put(icon, 1, 2);
        Put(icon, 32, 2);
        Put(icon, static_cast<std::uint32_t>(image.size()), 4);
        Put(icon, static_cast<std::uint32_t>(6 + 16 * kSizes.size() + images.size()), 4);
        images.insert(images.end(), image.begin(), image.end());
    }
    icon.insert(icon.end(), images.begin(), images.end());
    return icon;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: draw_icon PICTURE.png ICON.ico\n", stderr);
        return 2;
    }
    std::ifstream file(argv[1], std::ios::binary);
    const Bytes bytes(std::istreambuf_iterator<char>(file), {});
    const auto picture = LoadPngFromMemory(bytes.data(), bytes.size());
    if (picture == nullptr || picture->getWidth() < kSquare.R || picture->getHeight() < kSquare.B) {
        std::fprintf(stderr, "%s is not the picture that holds the mask\n", argv[1]);
        return 1;
    }
    const Bytes icon = IconOf(*picture);
    std::ofstream out(argv[2], std::ios::binary);
    out.write(reinterpret_cast<const char*>(icon.data()), static_cast<std::streamsize>(icon.size()));
    return out.flush() ? 0 : 1;
}
