#include "editor/LICE_SysBitmap.h"

#include "editor/win/WinApi.h"

#include <utility>

namespace Grimworks {

LICE_SysBitmap::~LICE_SysBitmap() {
    Free();
}

LICE_pixel* LICE_SysBitmap::getBits() {
    return fb;
}

int LICE_SysBitmap::getWidth() {
    return width;
}

int LICE_SysBitmap::getHeight() {
    return height;
}

bool LICE_SysBitmap::resize(int newWidth, int newHeight) {
    if (fb != nullptr && newWidth == width && newHeight == height) return true;
    Free();
    const auto possible = [](int side) { return side > 0 && side <= LICE_MemBitmap::kMaxSize; };
    if (!possible(newWidth) || !possible(newHeight)) return newWidth == 0 && newHeight == 0;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = newWidth;
    info.bmiHeader.biHeight = -newHeight; // rows from top to bottom
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    section = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (section == nullptr || bits == nullptr) {
        Free();
        return false;
    }
    fb = static_cast<LICE_pixel*>(bits);
    width = newWidth;
    height = newHeight;
    return true;
}

/// The system takes a context away when the thread that made it ends, and hosts build an editor on another
/// thread than they show it on. So it is made where it is first used, and again where another thread asks.
void* LICE_SysBitmap::getDC() {
    if (section == nullptr) return nullptr;
    const unsigned long thread = GetCurrentThreadId();
    if (context != nullptr && contextThread == thread) return context;
    FreeContext();
    context = CreateCompatibleDC(nullptr);
    if (context == nullptr) return nullptr;
    contextThread = thread;
    oldBitmap = SelectObject(static_cast<HDC>(context), static_cast<HBITMAP>(section));
    if (oldBitmap == nullptr) FreeContext();
    return context;
}

bool LICE_SysBitmap::Lend(LICE_pixel* /*memory*/) {
    return false;
}

void LICE_SysBitmap::TakeBack() {}

bool LICE_SysBitmap::IsLent() const {
    return false;
}

void LICE_SysBitmap::FreeContext() {
    if (context == nullptr) return;
    if (oldBitmap != nullptr) SelectObject(static_cast<HDC>(context), static_cast<HBITMAP>(oldBitmap));
    DeleteDC(static_cast<HDC>(context));
    context = nullptr;
    oldBitmap = nullptr;
}

void LICE_SysBitmap::Free() {
    FreeContext();
    if (section != nullptr) DeleteObject(static_cast<HBITMAP>(section));
    section = nullptr;
    fb = nullptr;
    width = 0;
    height = 0;
}

} // namespace Grimworks
