// Compares two PNG files of the same size: picture_difference A.png B.png SHARE. Fails if more than this
// share of the pixels, in percent, differ clearly.

#include "editor/LICE_Png.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <vector>

using namespace Grimworks;

namespace {

constexpr int kClearly = 48; ///< of 255, in one colour

std::unique_ptr<LICE_MemBitmap> Load(const char* path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
    auto picture = LoadPngFromMemory(bytes.data(), bytes.size());
    if (picture == nullptr) std::printf("%s is no picture\n", path);
    return picture;
}

bool DifferClearly(LICE_pixel a, LICE_pixel b) {
    for (unsigned shift = 0; shift < 24U; shift += 8U) {
        const int one = static_cast<int>((a >> shift) & 255U);
        const int other = static_cast<int>((b >> shift) & 255U);
        if (std::abs(one - other) > kClearly) return true;
    }
    return false;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::puts("usage: picture_difference A.png B.png PERCENT");
        return 2;
    }
    const auto a = Load(argv[1]);
    const auto b = Load(argv[2]);
    if (a == nullptr || b == nullptr) return 1;
    if (a->getWidth() != b->getWidth() || a->getHeight() != b->getHeight()) {
        std::printf("%d x %d against %d x %d pixels\n", a->getWidth(), a->getHeight(), b->getWidth(),
                    b->getHeight());
        return 1;
    }
    const int count = a->getWidth() * a->getHeight();
    int differ = 0;
    for (int i = 0; i < count; ++i)
        differ += DifferClearly(a->getBits()[i], b->getBits()[i]) ? 1 : 0;
    const double percent = 100.0 * differ / count;
    std::printf("%.3f %% of the pixels differ\n", percent);
    return percent <= std::atof(argv[3]) ? 0 : 1;
}
