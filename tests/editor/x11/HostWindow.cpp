#include "tests/editor/x11/HostWindow.h"

#include "editor/x11/X11Reply.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>

namespace Grimworks {

namespace {

xcb_visualid_t VisualOf(const xcb_screen_t& screen, std::uint8_t depth) {
    auto depths = xcb_screen_allowed_depths_iterator(&screen);
    for (; depths.rem > 0; xcb_depth_next(&depths)) {
        const auto visuals = xcb_depth_visuals_iterator(depths.data);
        if (depths.data->depth == depth && visuals.rem > 0) return visuals.data->visual_id;
    }
    return screen.root_visual;
}

} // namespace

HostWindow::HostWindow(int left, int top, int width, int height, std::uint8_t depth)
    : connection(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection) != 0) return;
    screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const std::uint8_t used = depth != 0 ? depth : screen->root_depth;
    const xcb_visualid_t visual = depth != 0 ? VisualOf(*screen, depth) : screen->root_visual;
    const xcb_colormap_t colors = xcb_generate_id(connection);
    xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colors, screen->root, visual);
    window = xcb_generate_id(connection);
    const std::uint32_t values[] = {
        screen->black_pixel, 0,
        XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_PROPERTY_CHANGE, colors};
    xcb_create_window(connection, used, window, screen->root, static_cast<std::int16_t>(left),
                      static_cast<std::int16_t>(top), static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP, values);
    xcb_map_window(connection, window);
    TakeFocus();
    Sync();
}

HostWindow::~HostWindow() {
    xcb_disconnect(connection);
}

void* HostWindow::Parent() const {
    // A host's interface carries the window's number as a pointer.
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(window)); // NOLINT(performance-no-int-to-ptr)
}

void HostWindow::Destroy() {
    xcb_destroy_window(connection, window);
    window = XCB_NONE;
    Sync();
}

void HostWindow::Sync() {
    const X11Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

std::vector<xcb_window_t> HostWindow::ChildrenOf(xcb_window_t parent) {
    const X11Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, parent), nullptr));
    if (tree == nullptr) return {};
    const xcb_window_t* const first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

std::vector<xcb_window_t> HostWindow::Popups() {
    std::vector<xcb_window_t> found;
    for (const xcb_window_t child : ChildrenOf(screen->root)) {
        const X11Reply<xcb_get_window_attributes_reply_t> about(xcb_get_window_attributes_reply(
            connection, xcb_get_window_attributes(connection, child), nullptr));
        const bool shown = about != nullptr && about->map_state == XCB_MAP_STATE_VIEWABLE;
        if (shown && about->override_redirect != 0) found.push_back(child);
    }
    return found;
}

IRECT HostWindow::PlaceOf(xcb_window_t which) {
    const X11Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, which), nullptr));
    const X11Reply<xcb_translate_coordinates_reply_t> at(xcb_translate_coordinates_reply(
        connection, xcb_translate_coordinates(connection, which, screen->root, 0, 0), nullptr));
    if (size == nullptr || at == nullptr) return {};
    return {at->dst_x, at->dst_y, at->dst_x + size->width, at->dst_y + size->height};
}

void HostWindow::Grab(xcb_window_t which, LICE_MemBitmap& picture) {
    const IRECT place = PlaceOf(which);
    picture.resize(0, 0);
    if (place.Empty()) return;
    const auto width = static_cast<std::uint16_t>(place.W());
    const auto height = static_cast<std::uint16_t>(place.H());
    const X11Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(
        connection, xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, which, 0, 0, width, height, ~0U),
        nullptr));
    if (image == nullptr) return;
    const auto pixels = static_cast<std::size_t>(width) * height;
    if (static_cast<std::size_t>(xcb_get_image_data_length(image.get())) < pixels * 4) return;
    picture.resize(width, height);
    std::memcpy(picture.getBits(), xcb_get_image_data(image.get()), pixels * 4);
}

std::vector<std::uint32_t> HostWindow::PixelNumbers(xcb_window_t which, int count) {
    const X11Reply<xcb_get_image_reply_t> image(
        xcb_get_image_reply(connection,
                            xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, which, 0, 0,
                                          static_cast<std::uint16_t>(count), 1, ~0U),
                            nullptr));
    if (image == nullptr) return {};
    const std::size_t size = image->depth == 16 ? 2 : 4;
    const std::uint8_t* const bytes = xcb_get_image_data(image.get());
    std::vector<std::uint32_t> numbers;
    numbers.reserve(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        std::uint32_t number = 0;
        std::memcpy(&number, bytes + i * size, size);
        numbers.push_back(number & 0xFFFFFFU);
    }
    return numbers;
}

xcb_atom_t HostWindow::Atom(const std::string& name) {
    const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
        nullptr));
    return reply != nullptr ? reply->atom : xcb_atom_t{XCB_NONE};
}

std::vector<std::uint32_t> HostWindow::Numbers(xcb_window_t which, const std::string& property) {
    const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, which, Atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 16),
        nullptr));
    if (reply == nullptr || reply->format != 32) return {};
    const auto* const first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

std::vector<int> HostWindow::Keys() {
    Sync();
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
        const int kind = event->response_type & 0x7F;
        const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
        if (kind == XCB_KEY_PRESS) keys.push_back(key.detail);
        if (kind == XCB_KEY_RELEASE) keys.push_back(-key.detail);
    }
    return keys;
}

IRECT HostWindow::Mouse() {
    const X11Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection, xcb_query_pointer(connection, screen->root), nullptr));
    return reply != nullptr ? IRECT(reply->root_x, reply->root_y, 0, 0) : IRECT();
}

xcb_window_t HostWindow::Focus() {
    const X11Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    return reply != nullptr ? reply->focus : xcb_window_t{XCB_NONE};
}

void HostWindow::MapKey(int code, xcb_keysym_t symbol) {
    xcb_change_keyboard_mapping(connection, 1, static_cast<xcb_keycode_t>(code), 1, &symbol);
    Sync();
}

void HostWindow::TakeMouse() {
    const X11Reply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
        connection,
        xcb_grab_pointer(connection, 0, window, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
        nullptr));
    EXPECT_TRUE(reply != nullptr && reply->status == XCB_GRAB_STATUS_SUCCESS);
}

void HostWindow::LetMouseGo() {
    xcb_ungrab_pointer(connection, XCB_CURRENT_TIME);
    Sync();
}

void HostWindow::Hide() {
    xcb_unmap_window(connection, window);
    Sync();
}

void HostWindow::ShowAgain() {
    xcb_map_window(connection, window);
    Sync();
}

void HostWindow::TakeFocus() {
    xcb_set_input_focus(connection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    Sync();
}

void HostWindow::OfferClipboard(const std::string& text, const std::function<bool()>& until) {
    xcb_set_selection_owner(connection, window, Atom("CLIPBOARD"), XCB_CURRENT_TIME);
    Sync();
    EXPECT_TRUE(Eventually([&] {
        while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
            if ((event->response_type & 0x7F) == XCB_SELECTION_REQUEST)
                AnswerClipboard(reinterpret_cast<const xcb_selection_request_event_t&>(*event), text);
        }
        return until();
    }));
}

void HostWindow::AnswerClipboard(const xcb_selection_request_event_t& request, const std::string& text) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                        request.target, 8, static_cast<std::uint32_t>(text.size()), text.data());
    // Events are 32 bytes long, whatever is in them.
    std::array<char, 32> sent{};
    xcb_selection_notify_event_t answer{};
    answer.response_type = XCB_SELECTION_NOTIFY;
    answer.time = request.time;
    answer.requestor = request.requestor;
    answer.selection = request.selection;
    answer.target = request.target;
    answer.property = request.property;
    std::memcpy(sent.data(), &answer, sizeof answer);
    xcb_send_event(connection, 0, request.requestor, 0, sent.data());
    Sync();
    ++clipboardAnswers;
}

bool Eventually(const std::function<bool()>& isSo) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!isSo()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

int RunProgram(const std::vector<std::string>& words) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    pid_t pid = -1;
    if (posix_spawnp(&pid, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) return -1;
    int status = -1;
    waitpid(pid, &status, 0);
    return status;
}

bool User(const std::vector<std::string>& words) {
    std::vector<std::string> all = {"/usr/bin/xdotool"}; // whatever a test makes of PATH
    all.insert(all.end(), words.begin(), words.end());
    return RunProgram(all) == 0;
}

std::vector<std::string> MoveTo(int x, int y) {
    return {"mousemove", std::to_string(x), std::to_string(y)};
}

} // namespace Grimworks
