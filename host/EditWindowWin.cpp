#include "host/EditWindow.h"

#include "host/HostError.h"

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <chrono>

namespace Grimworks {

namespace {

constexpr const char* kClass = "ThudForgeEditWindow";
constexpr DWORD kStyle = WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;

/// A bitmap in memory that is drawn into, for as long as it lives.
class Copy {
public:
    Copy(HDC like, int width, int height) : context(CreateCompatibleDC(like)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height; // rows from top to bottom
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* memory = nullptr;
        section = CreateDIBSection(context, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
        if (section == nullptr) return;
        before = SelectObject(context, section);
        if (BitBlt(context, 0, 0, width, height, like, 0, 0, SRCCOPY) != FALSE)
            bytes = static_cast<const std::uint8_t*>(memory);
        GdiFlush();
    }
    ~Copy() {
        if (section != nullptr) {
            SelectObject(context, before);
            DeleteObject(section);
        }
        DeleteDC(context);
    }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;

    /// Blue, green, red and nothing of each pixel; null if it could not be copied.
    [[nodiscard]] const std::uint8_t* Bytes() const { return bytes; }

private:
    HDC context;
    HBITMAP section = nullptr;
    HGDIOBJ before = nullptr;
    const std::uint8_t* bytes = nullptr;
};

} // namespace

class EditWindow::System {
public:
    System(const std::string& title, int insideWidth, int insideHeight)
        : width(insideWidth), height(insideHeight) {
        WNDCLASSA record{};
        record.lpfnWndProc = Procedure;
        record.hInstance = GetModuleHandleA(nullptr);
        record.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512)); // the arrow
        record.hIcon = LoadIconA(record.hInstance, MAKEINTRESOURCEA(1));
        record.lpszClassName = kClass;
        RegisterClassA(&record);
        RECT rect{0, 0, width, height};
        AdjustWindowRect(&rect, kStyle, FALSE);
        window = CreateWindowExA(0, kClass, title.c_str(), kStyle, CW_USEDEFAULT, CW_USEDEFAULT,
                                 rect.right - rect.left, rect.bottom - rect.top, nullptr, nullptr,
                                 record.hInstance, this);
        if (window == nullptr) throw HostError("no window for the editor could be made");
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        ShowWindow(window, SW_SHOW);
    }
    ~System() {
        if (window != nullptr) DestroyWindow(window);
        UnregisterClassA(kClass, GetModuleHandleA(nullptr));
    }
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    [[nodiscard]] HWND Window() const { return window; }

    [[nodiscard]] bool Wait(int milliseconds) {
        using Clock = std::chrono::steady_clock;
        const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
        while (open) {
            MSG message{};
            while (open && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
                if (message.message == WM_QUIT) open = false;
                TranslateMessage(&message);
                DispatchMessageA(&message);
            }
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
            if (left <= 0) break;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(left), QS_ALLINPUT);
        }
        return open;
    }

    [[nodiscard]] Picture Grab() {
        HDC shown = GetDC(window);
        const Copy copy(shown, width, height);
        ReleaseDC(window, shown);
        if (copy.Bytes() == nullptr) throw HostError("the window cannot be copied");
        const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        Picture picture{width, height, {}};
        picture.pixels.reserve(pixels * 3);
        for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
            const std::uint8_t* blue = copy.Bytes() + pixel * 4;
            picture.pixels.insert(picture.pixels.end(), {blue[2], blue[1], blue[0]});
        }
        return picture;
    }

private:
    static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* system = reinterpret_cast<System*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
        if (system != nullptr && message == WM_CLOSE) {
            // The editor closes first.
            system->open = false;
            return 0;
        }
        if (system != nullptr && message == WM_DESTROY) {
            system->open = false;
            system->window = nullptr;
        }
        return DefWindowProcA(hwnd, message, wParam, lParam);
    }

    int width;
    int height;
    HWND window = nullptr;
    bool open = true;
};

EditWindow::EditWindow(const std::string& title, int width, int height)
    : system(std::make_unique<System>(title, width, height)) {}

EditWindow::~EditWindow() = default;

void* EditWindow::Parent() const {
    return system->Window();
}

bool EditWindow::Wait(int milliseconds) {
    return system->Wait(milliseconds);
}

bool EditWindow::IsCovered() const {
    // The system keeps what each window shows, also under others.
    return false;
}

Picture EditWindow::Grab() {
    return system->Grab();
}

} // namespace Grimworks
