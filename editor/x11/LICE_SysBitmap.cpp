#include "editor/LICE_SysBitmap.h"

#include <algorithm>

namespace Grimworks {

namespace {

std::size_t PixelsOf(LICE_MemBitmap& bitmap) {
    return static_cast<std::size_t>(bitmap.getWidth()) * static_cast<std::size_t>(bitmap.getHeight());
}

} // namespace

LICE_SysBitmap::~LICE_SysBitmap() = default;

LICE_pixel* LICE_SysBitmap::getBits() {
    return lent != nullptr ? lent : own.getBits();
}

int LICE_SysBitmap::getWidth() {
    return own.getWidth();
}

int LICE_SysBitmap::getHeight() {
    return own.getHeight();
}

bool LICE_SysBitmap::resize(int newWidth, int newHeight) {
    if (newWidth == own.getWidth() && newHeight == own.getHeight()) return true;
    lent = nullptr;
    return own.resize(newWidth, newHeight);
}

void* LICE_SysBitmap::getDC() {
    return nullptr;
}

bool LICE_SysBitmap::Lend(LICE_pixel* memory) {
    if (memory == nullptr || own.getBits() == nullptr) return false;
    if (memory != getBits()) std::copy_n(getBits(), PixelsOf(own), memory);
    lent = memory;
    return true;
}

void LICE_SysBitmap::TakeBack() {
    if (lent == nullptr) return;
    std::copy_n(lent, PixelsOf(own), own.getBits());
    lent = nullptr;
}

bool LICE_SysBitmap::IsLent() const {
    return lent != nullptr;
}

} // namespace Grimworks
