#include "tests/editor/win/WinHost.h"

#include <array>
#include <chrono>

namespace Grimworks {

namespace {

constexpr const char* kHostClass = "ThudForgeTestHost";

void Send(INPUT& input) {
    SendInput(1, &input, sizeof(input));
}

void SendMouse(DWORD events, LONG x = 0, LONG y = 0, DWORD data = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = events;
    input.mi.dx = x;
    input.mi.dy = y;
    input.mi.mouseData = data;
    Send(input);
}

} // namespace

bool PumpUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (std::chrono::steady_clock::now() < end) {
        MSG message{};
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        if (condition()) return true;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return false;
}

WinHost::WinHost(int x, int y, int width, int height) {
    WNDCLASSA record{};
    record.lpfnWndProc = Procedure;
    record.hInstance = GetModuleHandleA(nullptr);
    record.hbrBackground = static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH));
    record.lpszClassName = kHostClass;
    RegisterClassA(&record); // fails harmlessly for all but the first
    window = CreateWindowExA(0, kHostClass, "Host", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, x, y, width,
                             height, nullptr, nullptr, GetModuleHandleA(nullptr), this);
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetForegroundWindow(window);
    constexpr UINT kTickTime = 20; // milliseconds
    SetTimer(window, 1, kTickTime, nullptr);
}

WinHost::~WinHost() {
    Destroy();
}

void WinHost::Destroy() {
    if (window != nullptr) DestroyWindow(window);
    window = nullptr;
}

std::vector<HWND> WinHost::Editors() const {
    std::vector<HWND> found;
    HWND child = nullptr;
    while ((child = FindWindowExA(window, child, "IPlugWndClass", nullptr)) != nullptr)
        found.push_back(child);
    return found;
}

LRESULT CALLBACK WinHost::Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* host = reinterpret_cast<WinHost*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
    if (host != nullptr && message == WM_KEYDOWN) {
        host->keys.push_back("down " + std::to_string(wParam));
        if (host->onKey) host->onKey();
    }
    if (host != nullptr && message == WM_KEYUP) host->keys.push_back("up " + std::to_string(wParam));
    if (host != nullptr && message == WM_TIMER && host->onTick) {
        const auto tick = host->onTick; // it may put another one in its place
        tick();
    }
    if (message == WM_CLOSE) {
        if (host != nullptr) ++host->closes;
        return 0;
    }
    return DefWindowProcA(hwnd, message, wParam, lParam);
}

void MoveMouse(HWND window, int x, int y) {
    POINT point{x, y};
    ClientToScreen(window, &point);
    const LONG width = GetSystemMetrics(SM_CXSCREEN);
    const LONG height = GetSystemMetrics(SM_CYSCREEN);
    // The system counts the screen in parts of 65536.
    SendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, (point.x * 65536 + width - 1) / width,
              (point.y * 65536 + height - 1) / height);
}

void PressButton(DWORD events) {
    SendMouse(events);
}

void Wheel(int delta) {
    SendMouse(MOUSEEVENTF_WHEEL, 0, 0, static_cast<DWORD>(delta));
}

void HoldKey(WORD key, bool down) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
    Send(input);
}

void PressKey(WORD key) {
    HoldKey(key, true);
    HoldKey(key, false);
}

void Type(std::string_view characters) {
    for (const char character : characters) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wScan = static_cast<WORD>(character);
        input.ki.dwFlags = KEYEVENTF_UNICODE;
        Send(input);
        input.ki.dwFlags |= KEYEVENTF_KEYUP;
        Send(input);
    }
}

void Click(HWND window, int x, int y) {
    MoveMouse(window, x, y);
    PressButton(MOUSEEVENTF_LEFTDOWN);
    PressButton(MOUSEEVENTF_LEFTUP);
}

HWND FindShown(const char* className) {
    struct Search {
        std::string_view name;
        HWND found = nullptr;
    } search{className};
    const auto look = [](HWND hwnd, LPARAM wanted) -> BOOL {
        auto& sought = *reinterpret_cast<Search*>(wanted);
        std::array<char, 64> name{};
        GetClassNameA(hwnd, name.data(), static_cast<int>(name.size()));
        DWORD process = 0;
        GetWindowThreadProcessId(hwnd, &process);
        if (process != GetCurrentProcessId() || IsWindowVisible(hwnd) == FALSE || sought.name != name.data())
            return TRUE;
        sought.found = hwnd;
        return FALSE;
    };
    EnumWindows(look, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::vector<std::uint32_t> Grab(HWND window, int width, int height) {
    HDC source = GetDC(window);
    HDC copy = CreateCompatibleDC(source);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HBITMAP section = CreateDIBSection(copy, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ before = SelectObject(copy, section);
    BitBlt(copy, 0, 0, width, height, source, 0, 0, SRCCOPY);
    GdiFlush();
    const auto* pixels = static_cast<const std::uint32_t*>(bits);
    std::vector<std::uint32_t> grabbed(pixels, pixels + static_cast<std::ptrdiff_t>(width) * height);
    for (std::uint32_t& pixel : grabbed)
        pixel &= 0xFFFFFFU;
    SelectObject(copy, before);
    DeleteObject(section);
    DeleteDC(copy);
    ReleaseDC(window, source);
    return grabbed;
}

} // namespace Grimworks
