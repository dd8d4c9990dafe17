#include "editor/x11/X11Image.h"

#include "editor/x11/X11Reply.h"

#include <algorithm>
#include <sys/ipc.h>
#include <sys/shm.h>

namespace Grimworks {

namespace {

const LICE_pixel* RowOf(LICE_IBitmap& bitmap, int x, int y) {
    return bitmap.getBits() + static_cast<std::ptrdiff_t>(y) * bitmap.getRowSpan() + x;
}

} // namespace

X11Image::X11Image(X11Connection& itsConnection, const X11PixelFormat& pixelFormat, int imageWidth,
                   int imageHeight)
    : connection(itsConnection), format(pixelFormat), width(imageWidth), height(imageHeight) {
    if (connection.SharesMemory() && !Share()) connection.StopSharingMemory();
}

X11Image::~X11Image() {
    WaitUntilRead();
    if (segment != XCB_NONE) xcb_shm_detach(connection.Get(), segment);
    if (shared != nullptr) shmdt(shared);
}

bool X11Image::Share() {
    const std::size_t size = format.Stride(width) * static_cast<std::size_t>(height);
    const int id = shmget(IPC_PRIVATE, size, IPC_CREAT | 0600);
    if (id < 0) return false;
    void* const memory = shmat(id, nullptr, 0);
    bool attached = false;
    const bool mapped = reinterpret_cast<std::intptr_t>(memory) != -1;
    if (mapped) {
        shared = memory;
        segment = xcb_generate_id(connection.Get());
        const X11Reply<xcb_generic_error_t> refused(
            xcb_request_check(connection.Get(), xcb_shm_attach_checked(connection.Get(), segment,
                                                                       static_cast<std::uint32_t>(id), 1)));
        attached = refused == nullptr && !connection.Lost();
    }
    // The memory goes as soon as nobody is attached any more, even if this process is killed.
    shmctl(id, IPC_RMID, nullptr);
    if (!attached) segment = XCB_NONE;
    return attached;
}

void X11Image::WaitUntilRead() {
    if (!beingRead) return;
    beingRead = false;
    const X11Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection.Get(), readMark, nullptr));
}

void X11Image::Put(LICE_IBitmap& bitmap, const IRECT& part, xcb_drawable_t drawable, xcb_gcontext_t context) {
    const IRECT whole(0, 0, std::min(width, bitmap.getWidth()), std::min(height, bitmap.getHeight()));
    const IRECT inside = part.Intersect(whole);
    if (inside.Empty() || bitmap.getBits() == nullptr || connection.Lost()) return;
    if (IsShared()) {
        PutShared(bitmap, inside, drawable, context);
    } else {
        PutInRequests(bitmap, inside, drawable, context);
    }
}

void X11Image::PutShared(LICE_IBitmap& bitmap, const IRECT& part, xcb_drawable_t drawable,
                         xcb_gcontext_t context) {
    WaitUntilRead();
    const std::size_t stride = format.Stride(width);
    const auto pixelBytes = static_cast<std::size_t>(format.bitsPerPixel / 8);
    auto* const memory = static_cast<std::uint8_t*>(shared);
    for (int y = part.T; y < part.B; ++y) {
        std::uint8_t* const row = memory + static_cast<std::size_t>(y) * stride;
        format.ConvertRow(RowOf(bitmap, part.L, y), row + static_cast<std::size_t>(part.L) * pixelBytes,
                          part.W());
    }
    xcb_shm_put_image(connection.Get(), drawable, context, static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(height), static_cast<std::uint16_t>(part.L),
                      static_cast<std::uint16_t>(part.T), static_cast<std::uint16_t>(part.W()),
                      static_cast<std::uint16_t>(part.H()), static_cast<std::int16_t>(part.L),
                      static_cast<std::int16_t>(part.T), static_cast<std::uint8_t>(format.depth),
                      XCB_IMAGE_FORMAT_Z_PIXMAP, 0, segment, 0);
    // The answer to this question comes when the server is through with the picture; it is read before the
    // memory is written again, which is a tick later and mostly needs no waiting.
    readMark = xcb_get_input_focus(connection.Get());
    beingRead = true;
}

void X11Image::PutInRequests(LICE_IBitmap& bitmap, const IRECT& part, xcb_drawable_t drawable,
                             xcb_gcontext_t context) {
    constexpr std::size_t kRequestHead = 64;
    const std::size_t stride = format.Stride(part.W());
    const std::size_t most = std::size_t{4} * xcb_get_maximum_request_length(connection.Get()) - kRequestHead;
    const int band = std::max(1, static_cast<int>(std::min<std::size_t>(most / stride, 1U << 14U)));
    for (int top = part.T; top < part.B; top += band) {
        const int bottom = std::min(top + band, part.B);
        rows.assign(stride * static_cast<std::size_t>(bottom - top), 0);
        for (int y = top; y < bottom; ++y) {
            format.ConvertRow(RowOf(bitmap, part.L, y),
                              rows.data() + stride * static_cast<std::size_t>(y - top), part.W());
        }
        xcb_put_image(connection.Get(), XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, context,
                      static_cast<std::uint16_t>(part.W()), static_cast<std::uint16_t>(bottom - top),
                      static_cast<std::int16_t>(part.L), static_cast<std::int16_t>(top), 0,
                      static_cast<std::uint8_t>(format.depth), static_cast<std::uint32_t>(rows.size()),
                      rows.data());
    }
}

} // namespace Grimworks
