#include "editor/LICE_Draw.h"
#include "editor/x11/X11PixelFormat.h"
#include "tests/editor/x11/EditorWindow.h"

#include <array>
#include <vector>

namespace Grimworks {

namespace {

X11PixelFormat TrueColor(int depth, int bits, std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    X11PixelFormat format;
    format.depth = depth;
    format.bitsPerPixel = bits;
    format.redMask = red;
    format.greenMask = green;
    format.blueMask = blue;
    return format;
}

std::vector<std::uint8_t> Converted(const X11PixelFormat& format, std::vector<LICE_pixel> pixels) {
    std::vector<std::uint8_t> bytes(format.Stride(static_cast<int>(pixels.size())), 0xEE);
    format.ConvertRow(pixels.data(), bytes.data(), static_cast<int>(pixels.size()));
    return bytes;
}

/// Opens an editor on a display and gives the bytes that the window shows at a pixel of the control.
class OtherDisplay : public ::testing::Test {
protected:
    /// True if the control's corner shows up as `expected` in the window's own numbers.
    static bool Shows(std::uint32_t expected) {
        FakePlug plug;
        Record record;
        const auto graphics = MakeGraphics(plug, 64, 48);
        graphics->AttachControl(
            std::make_unique<RecordingControl>(&plug, IRECT(0, 0, 64, 48), record, IColor(255, 90, 40, 160)));
        HostWindow host(10, 10, 64, 48);
        if (!host.Works() || !graphics->OpenWindow(host.Parent())) return false;
        const bool seen = Eventually([&] {
            const auto numbers = host.PixelNumbers(host.Editors().front(), 3);
            return numbers == std::vector<std::uint32_t>(3, expected);
        });
        graphics->CloseWindow();
        return seen;
    }
};

} // namespace

TEST(X11PixelFormat, RowsOfTheUsualDisplayAreThePixelsThemselvesMadeOpaque) {
    const auto format = TrueColor(24, 32, 0xFF0000, 0xFF00, 0xFF);
    EXPECT_TRUE(format.IsNative());
    EXPECT_EQ(Converted(format, {0x00112233U, 0x80A0B0C0U}),
              (std::vector<std::uint8_t>{0x33, 0x22, 0x11, 0xFF, 0xC0, 0xB0, 0xA0, 0xFF}));
}

TEST(X11PixelFormat, SixteenBitRowsKeepTheUpperBitsAndArePadded) {
    const auto format = TrueColor(16, 16, 0xF800, 0x07E0, 0x001F);
    EXPECT_FALSE(format.IsNative());
    EXPECT_EQ(format.Stride(3), 8U);
    // Red 0xFF, green 0x84 and blue 0x10 are 31, 33 and 2: 0xFC22.
    EXPECT_EQ(Converted(format, {0xFFFF8410U, 0xFF000000U}),
              (std::vector<std::uint8_t>{0x22, 0xFC, 0x00, 0x00}));
}

TEST(X11PixelFormat, BytesGoTheOtherWayWhereTheDisplayWantsThat) {
    auto format = TrueColor(24, 32, 0xFF0000, 0xFF00, 0xFF);
    format.msbFirst = true;
    EXPECT_FALSE(format.IsNative());
    EXPECT_EQ(Converted(format, {0xFF112233U}), (std::vector<std::uint8_t>{0x00, 0x11, 0x22, 0x33}));
}

TEST(X11PixelFormat, ThreeBytePixelsFollowEachOther) {
    const auto format = TrueColor(24, 24, 0xFF0000, 0xFF00, 0xFF);
    EXPECT_EQ(format.Stride(2), 8U);
    const auto bytes = Converted(format, {0xFF112233U, 0xFF445566U});
    EXPECT_EQ((std::vector<std::uint8_t>(bytes.begin(), bytes.begin() + 6)),
              (std::vector<std::uint8_t>{0x33, 0x22, 0x11, 0x66, 0x55, 0x44}));
}

TEST(X11PixelFormat, DeepColoursAndTransparencyAreServed) {
    // Ten bits a colour: 0x80 becomes 0x200.
    const auto deep = TrueColor(30, 32, 0x3FF00000, 0xFFC00, 0x3FF);
    EXPECT_EQ(Converted(deep, {0xFF000080U}), (std::vector<std::uint8_t>{0x00, 0x02, 0x00, 0x00}));
    // Red and blue the other way round, with alpha.
    const auto turned = TrueColor(32, 32, 0xFF, 0xFF00, 0xFF0000);
    EXPECT_EQ(Converted(turned, {0x00112233U}), (std::vector<std::uint8_t>{0x11, 0x22, 0x33, 0xFF}));
}

TEST(X11PixelFormat, FormsWithoutPlainColoursAreOfNoUse) {
    EXPECT_FALSE(TrueColor(8, 8, 0, 0, 0).IsUsable());
    EXPECT_FALSE(TrueColor(24, 32, 0, 0, 0).IsUsable());
    EXPECT_TRUE(TrueColor(24, 32, 0xFF0000, 0xFF00, 0xFF).IsUsable());
}

TEST_F(OtherDisplay, WithoutSharedMemoryPixelsTravelInTheRequests) {
    const XServer server("800x600x24", {"-extension", "MIT-SHM"});
    EXPECT_TRUE(Shows(0x5A28A0U));
}

TEST_F(OtherDisplay, WithSixteenBitsTheColoursAreTheNearestBelow) {
    const XServer server("800x600x16");
    // 0x5A, 0x28 and 0xA0 in 5, 6 and 5 bits are 11, 10 and 20.
    EXPECT_TRUE(Shows((11U << 11U) | (10U << 5U) | 20U));
}

TEST_F(OtherDisplay, ADisplayWithoutTrueColoursIsRefusedWithoutHarm) {
    const XServer server("800x600x8");
    FakePlug plug;
    const auto graphics = MakeGraphics(plug, 64, 48);
    const HostWindow host(10, 10, 64, 48);
    ASSERT_TRUE(host.Works());
    EXPECT_FALSE(graphics->OpenWindow(host.Parent()));
}

} // namespace Grimworks
