// Bytes of a picture.
#include "editor/LICE_Png.h"
#include "tests/fuzz/Check.h"

using namespace Grimworks;
using namespace Grimworks::Fuzz;

int LLVMFuzzerTestOneInput(const unsigned char* data, unsigned long size) {
    // A few bytes can stand for a picture of gigabytes of one colour.
    int width = 0;
    int height = 0;
    if (ReadPngSize({data, size}, width, height) && width > 0 && height > (1 << 20) / width) return 0;
    const auto picture = LoadPngFromMemory(data, size);
    if (picture == nullptr) return 0;
    Check(picture->getWidth() > 0 && picture->getHeight() > 0, "a decoded picture has a size");
    const LICE_pixel* bits = picture->getBits();
    Check(bits != nullptr, "a decoded picture has pixels");
    volatile LICE_pixel last =
        bits[picture->getRowSpan() * (picture->getHeight() - 1) + picture->getWidth() - 1];
    (void)last;
    return 0;
}
