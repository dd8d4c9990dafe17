#include "host/EditWindow.h"

#include "host/HostError.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <span>

namespace Grimworks {

namespace {

struct Freed {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Owned = std::unique_ptr<T, Freed>;

struct Disconnected {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// Size limits, as window managers read them.
struct SizeHints {
    std::uint32_t flags = 0;
    std::array<std::int32_t, 4> unused{};
    std::int32_t minWidth = 0;
    std::int32_t minHeight = 0;
    std::int32_t maxWidth = 0;
    std::int32_t maxHeight = 0;
    std::array<std::int32_t, 9> others{};
};
constexpr std::uint32_t kMinAndMaxSize = 0x30;
constexpr std::uint32_t kNumberBits = 32;
constexpr std::uint32_t kLetterBits = 8;

[[noreturn]] void FailWithoutDisplay() {
    const char* name = std::getenv("DISPLAY");
    if (name == nullptr || *name == '\0')
        throw HostError("there is no display for the editor: DISPLAY is not set");
    throw HostError(std::string("the display ") + name + " cannot be opened");
}

/// Place of a colour's byte in a pixel of 32 bits, lowest first.
int ByteOf(std::uint32_t mask) {
    return std::countr_zero(mask) / 8;
}

} // namespace

class EditWindow::System {
public:
    System(const std::string& title, int width, int height);

    [[nodiscard]] xcb_window_t Window() const { return window; }
    [[nodiscard]] bool Wait(int milliseconds);
    [[nodiscard]] bool IsCovered() const { return covered; }
    [[nodiscard]] Picture Grab();

private:
    [[nodiscard]] xcb_atom_t Atom(const char* name);
    void MakeWindow();
    void Describe(const std::string& title);
    void Put(xcb_atom_t property, xcb_atom_t type, std::uint32_t bits, std::uint32_t count, const void* data);
    [[nodiscard]] bool TakeEvents();
    [[nodiscard]] const xcb_visualtype_t* Visual() const;

    std::unique_ptr<xcb_connection_t, Disconnected> connection;
    xcb_screen_t* screen = nullptr;
    int width;
    int height;
    xcb_window_t window = XCB_NONE;
    xcb_atom_t protocols = XCB_NONE;
    xcb_atom_t deleteWindow = XCB_NONE;
    bool open = true;
    bool covered = false;
};

EditWindow::System::System(const std::string& title, int insideWidth, int insideHeight)
    : width(insideWidth), height(insideHeight) {
    int number = 0;
    connection.reset(xcb_connect(nullptr, &number));
    if (xcb_connection_has_error(connection.get()) != 0) FailWithoutDisplay();
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (; number > 0 && screens.rem > 1; --number)
        xcb_screen_next(&screens);
    screen = screens.data;
    if (screen == nullptr) FailWithoutDisplay();
    protocols = Atom("WM_PROTOCOLS");
    deleteWindow = Atom("WM_DELETE_WINDOW");
    MakeWindow();
    Describe(title);
    xcb_map_window(connection.get(), window);
    xcb_flush(connection.get());
}

xcb_atom_t EditWindow::System::Atom(const char* name) {
    const auto length = static_cast<std::uint16_t>(std::strlen(name));
    const auto cookie = xcb_intern_atom(connection.get(), 0, length, name);
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection.get(), cookie, nullptr));
    return reply == nullptr ? XCB_NONE : reply->atom;
}

void EditWindow::System::MakeWindow() {
    window = xcb_generate_id(connection.get());
    const std::array<std::uint32_t, 2> values{screen->black_pixel, XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                                                       XCB_EVENT_MASK_VISIBILITY_CHANGE};
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, screen->root, 0, 0,
                      static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values.data());
}

void EditWindow::System::Put(xcb_atom_t property, xcb_atom_t type, std::uint32_t bits, std::uint32_t count,
                             const void* data) {
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, property, type,
                        static_cast<std::uint8_t>(bits), count, data);
}

void EditWindow::System::Describe(const std::string& title) {
    const auto length = static_cast<std::uint32_t>(title.size());
    Put(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, kLetterBits, length, title.data());
    Put(Atom("_NET_WM_NAME"), Atom("UTF8_STRING"), kLetterBits, length, title.data());
    constexpr std::array<char, 20> kClass{"thudforge\0ThudForge"};
    Put(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, kLetterBits, kClass.size(), kClass.data());
    Put(protocols, XCB_ATOM_ATOM, kNumberBits, 1, &deleteWindow);
    SizeHints hints;
    hints.flags = kMinAndMaxSize;
    hints.minWidth = hints.maxWidth = width;
    hints.minHeight = hints.maxHeight = height;
    Put(XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, kNumberBits, sizeof hints / sizeof(std::int32_t),
        &hints);
}

bool EditWindow::System::TakeEvents() {
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection.get())}) {
        constexpr int kSentByOthers = 0x80;
        const int kind = event->response_type & ~kSentByOthers;
        if (kind == XCB_DESTROY_NOTIFY) {
            const auto* gone = reinterpret_cast<const xcb_destroy_notify_event_t*>(event.get());
            if (gone->window == window) open = false;
        } else if (kind == XCB_VISIBILITY_NOTIFY) {
            const auto* seen = reinterpret_cast<const xcb_visibility_notify_event_t*>(event.get());
            covered = seen->state != XCB_VISIBILITY_UNOBSCURED;
        } else if (kind == XCB_CLIENT_MESSAGE) {
            const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
            if (message->type == protocols && message->data.data32[0] == deleteWindow) open = false;
        }
    }
    if (xcb_connection_has_error(connection.get()) != 0) open = false;
    return open;
}

bool EditWindow::System::Wait(int milliseconds) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (TakeEvents()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0) return true;
        pollfd watched{xcb_get_file_descriptor(connection.get()), POLLIN, 0};
        // A signal ends the wait early, so that whoever asks for the end is heard.
        if (poll(&watched, 1, static_cast<int>(left)) < 0 && errno == EINTR) return true;
    }
    return false;
}

const xcb_visualtype_t* EditWindow::System::Visual() const {
    for (auto depths = xcb_screen_allowed_depths_iterator(screen); depths.rem > 0; xcb_depth_next(&depths)) {
        const std::span visuals(xcb_depth_visuals(depths.data),
                                static_cast<std::size_t>(xcb_depth_visuals_length(depths.data)));
        const auto found =
            std::find_if(visuals.begin(), visuals.end(), [this](const xcb_visualtype_t& visual) {
                return visual.visual_id == screen->root_visual;
            });
        if (found != visuals.end()) return &*found;
    }
    return nullptr;
}

Picture EditWindow::System::Grab() {
    constexpr std::uint32_t kAllPlanes = 0xFFFFFFFF;
    const auto cookie =
        xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0,
                      static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height), kAllPlanes);
    const Owned<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection.get(), cookie, nullptr));
    if (reply == nullptr) throw HostError("the window cannot be copied: it is not whole on the screen");
    const std::span bytes(xcb_get_image_data(reply.get()),
                          static_cast<std::size_t>(xcb_get_image_data_length(reply.get())));
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    const xcb_visualtype_t* visual = Visual();
    if (visual == nullptr || reply->depth < 24 || bytes.size() < pixels * 4)
        throw HostError("the window cannot be copied: the screen does not show 24 bits of colour");
    std::array<int, 3> order{ByteOf(visual->red_mask), ByteOf(visual->green_mask), ByteOf(visual->blue_mask)};
    if (xcb_get_setup(connection.get())->image_byte_order == XCB_IMAGE_ORDER_MSB_FIRST) {
        for (int& place : order)
            place = 3 - place;
    }
    Picture picture{width, height, {}};
    picture.pixels.reserve(pixels * order.size());
    for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
        for (const int place : order)
            picture.pixels.push_back(bytes[pixel * 4 + static_cast<std::size_t>(place)]);
    }
    return picture;
}

EditWindow::EditWindow(const std::string& title, int width, int height)
    : system(std::make_unique<System>(title, width, height)) {}

EditWindow::~EditWindow() = default;

void* EditWindow::Parent() const {
    return std::bit_cast<void*>(static_cast<std::uintptr_t>(system->Window()));
}

bool EditWindow::Wait(int milliseconds) {
    return system->Wait(milliseconds);
}

bool EditWindow::IsCovered() const {
    return system->IsCovered();
}

Picture EditWindow::Grab() {
    return system->Grab();
}

} // namespace Grimworks
