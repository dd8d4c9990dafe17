#include "editor/IGraphics.h"
#include "editor/LICE_IFont.h"

#include "tests/editor/Canvas.h"
#include "tests/editor/FakePlug.h"
#include "tests/editor/HeadlessGraphics.h"

#include <gtest/gtest.h>

#include <thread>

namespace Grimworks {
namespace {

using Rows = std::vector<std::string>;

/// A control that draws what the test tells it to.
class Painter final : public IControl {
public:
    using Paint = std::function<void(IGraphics&)>;

    Painter(IPlugBase* plugBase, const IRECT& rectangle, Paint work)
        : IControl(plugBase, rectangle), paint(std::move(work)) {}
    bool Draw(IGraphics& canvas) override {
        if (paint) paint(canvas);
        return true;
    }

private:
    Paint paint;
};

/// An image whose pixel at x, y is told by its red and green, in `frames` frames.
struct Strip {
    Strip(int width, int height, int frames, bool horizontal = false) : image(width, height) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x)
                image.getBits()[y * width + x] = LICE_RGBA(x + 1, y + 1, 0, 255);
        }
        bitmap.data = &image;
        bitmap.W = width;
        bitmap.H = height;
        bitmap.N = frames;
        bitmap.framesAreHorizontal = horizontal;
    }

    LICE_MemBitmap image;
    IBitmap bitmap;
};

class IGraphicsDraw : public testing::Test {
protected:
    IGraphicsDraw() : graphics(plug, 12, 8) { LICE_Clear(&graphics.DrawBuffer(), kBlack); }

    Rows Drawn() { return Shape(graphics.DrawBuffer()); }

    /// Runs a draw with the redraw limited to a control of this rectangle.
    void Within(const IRECT& rect, const Painter::Paint& paint) {
        graphics.Attach<Painter>(&plug, IRECT(0, 0, 12, 8), nullptr);
        auto& control = graphics.Attach<Painter>(&plug, rect, paint);
        graphics.Settle();
        LICE_Clear(&graphics.DrawBuffer(), kBlack);
        control.SetDirty(false);
        graphics.RunTick();
    }

    FakePlug plug;
    HeadlessGraphics graphics;
    const IColor red{255, 255, 0, 0};
};

TEST_F(IGraphicsDraw, BitmapIsCopiedIntoTheRectangle) {
    Strip strip(5, 5, 1);
    EXPECT_TRUE(graphics.DrawBitmap(strip.bitmap, {2, 1, 4, 4}, 1, 2));
    EXPECT_EQ(graphics.Pixel(2, 1), LICE_RGBA(2, 3, 0, 255));
    EXPECT_EQ(graphics.Pixel(3, 3), LICE_RGBA(3, 5, 0, 255));
    EXPECT_EQ(Drawn()[1], "..##........");
    EXPECT_EQ(Drawn()[4], "............");
}

TEST_F(IGraphicsDraw, ClippingMovesTheSourceWithIt) {
    Strip strip(6, 6, 1);
    Within({4, 3, 8, 6}, [&](IGraphics& canvas) { canvas.DrawBitmap(strip.bitmap, {2, 2, 8, 8}, 0, 0); });
    EXPECT_EQ(Drawn(), (Rows{"............", "............", "............", "....####....", "....####....",
                             "....####....", "............", "............"}));
    EXPECT_EQ(graphics.Pixel(4, 3), LICE_RGBA(3, 2, 0, 255));
    EXPECT_EQ(graphics.Pixel(7, 5), LICE_RGBA(6, 4, 0, 255));
}

TEST_F(IGraphicsDraw, RectangleOutsideOrEmptyAndMissingImageDrawNothing) {
    Strip strip(6, 6, 1);
    EXPECT_FALSE(graphics.DrawBitmap(strip.bitmap, {20, 20, 25, 25}, 0, 0));
    EXPECT_FALSE(graphics.DrawBitmap(strip.bitmap, {}, 0, 0));
    EXPECT_FALSE(graphics.DrawBitmap(IBitmap(), {0, 0, 5, 5}, 0, 0));
    EXPECT_FALSE(graphics.DrawBitmapFrame(IBitmap(), {0, 0, 5, 5}, 1));
    EXPECT_FALSE(graphics.FillIRect(red, {}));
    EXPECT_FALSE(graphics.FillIRect(red, {-5, -5, 0, 8}));
    EXPECT_EQ(Drawn(), Rows(8, "............"));
}

TEST_F(IGraphicsDraw, FramesAreStackedFromOne) {
    Strip strip(2, 12, 4);
    for (int frame = 1; frame <= 4; ++frame) {
        graphics.DrawBitmapFrame(strip.bitmap, {0, 0, 2, 3}, frame);
        EXPECT_EQ(graphics.Pixel(0, 0), LICE_RGBA(1, 3 * (frame - 1) + 1, 0, 255)) << frame;
    }
}

TEST_F(IGraphicsDraw, FramesSideBySide) {
    Strip strip(12, 2, 4, true);
    graphics.DrawBitmapFrame(strip.bitmap, {0, 0, 3, 2}, 3);
    EXPECT_EQ(graphics.Pixel(0, 0), LICE_RGBA(7, 1, 0, 255));
    EXPECT_EQ(graphics.Pixel(2, 1), LICE_RGBA(9, 2, 0, 255));
}

TEST_F(IGraphicsDraw, FrameOffsetIsRounded) {
    // 10 pixels in 4 frames: frame 2 begins at 2.5, rounded up to 3, frame 4 at 7.5, rounded up to 8.
    Strip strip(1, 10, 4);
    for (const auto& [frame, offset] : {std::pair{1, 0}, {2, 3}, {3, 5}, {4, 8}}) {
        graphics.DrawBitmapFrame(strip.bitmap, {0, 0, 1, 1}, frame);
        EXPECT_EQ(graphics.Pixel(0, 0), LICE_RGBA(1, offset + 1, 0, 255)) << frame;
    }
}

TEST_F(IGraphicsDraw, OneFrameIsAlwaysDrawnFromOffsetZero) {
    Strip strip(1, 6, 1);
    for (const int frame : {-3, 0, 1, 2, 5}) {
        LICE_Clear(&graphics.DrawBuffer(), kBlack);
        graphics.DrawBitmapFrame(strip.bitmap, {0, 0, 1, 6}, frame);
        EXPECT_EQ(graphics.Pixel(0, 0), LICE_RGBA(1, 1, 0, 255)) << frame;
    }
}

TEST_F(IGraphicsDraw, FrameZeroIsTheFirst) {
    Strip strip(1, 6, 3);
    EXPECT_TRUE(graphics.DrawBitmapFrame(strip.bitmap, {0, 0, 1, 2}, 0));
    EXPECT_EQ(graphics.Pixel(0, 0), LICE_RGBA(1, 1, 0, 255));
}

TEST_F(IGraphicsDraw, BlendAndWeightReachThePixels) {
    Strip strip(1, 1, 1);
    strip.image.getBits()[0] = kWhite;
    graphics.DrawBitmap(strip.bitmap, {0, 0, 1, 1}, 0, 0, IChannelBlend(IChannelBlend::BlendNone, 0.25F));
    EXPECT_EQ(graphics.Pixel(0, 0), LICE_RGBA(64, 64, 64, 255));
    graphics.DrawBitmap(strip.bitmap, {0, 0, 1, 1}, 0, 0, IChannelBlend(IChannelBlend::BlendAdd));
    EXPECT_EQ(graphics.Pixel(0, 0), kWhite);
}

TEST_F(IGraphicsDraw, EverythingIsLimitedToWhatIsBeingRedrawn) {
    const IText text(8, red, IText::AlignNear);
    Within({3, 2, 7, 5}, [&](IGraphics& canvas) {
        canvas.FillIRect(red, {0, 0, 4, 3});
        canvas.DrawLine(red, 0, 4, 11, 4);
        canvas.DrawRect(red, {0, 0, 7, 8});
        canvas.FillTriangle(red, 0, 0, 11, 0, 5, 7);
        canvas.DrawIText(text, "MMMM", {0, 0, 12, 8});
    });
    EXPECT_NE(Drawn(), Rows(8, "............"));
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 12; ++x) {
            if (x >= 3 && x < 7 && y >= 2 && y < 5) continue;
            EXPECT_EQ(graphics.Pixel(x, y), kBlack) << x << ' ' << y;
        }
    }
}

TEST_F(IGraphicsDraw, LineIsTheSameHoweverItIsCut) {
    graphics.DrawLine(red, 1, 0, 10, 7);
    const Rows whole = Drawn();
    Within({4, 1, 9, 6}, [&](IGraphics& canvas) { canvas.DrawLine(red, 1, 0, 10, 7); });
    for (std::size_t y = 1; y < 6; ++y)
        EXPECT_EQ(Drawn()[y].substr(4, 5), whole[y].substr(4, 5));
}

TEST_F(IGraphicsDraw, RectangleIsFourLinesInsideIt) {
    EXPECT_TRUE(graphics.DrawRect({51, 255, 0, 0}, {1, 1, 6, 5}));
    EXPECT_EQ(Drawn(), (Rows{"............", ".#####......", ".#...#......", ".#...#......", ".#####......",
                             "............", "............", "............"}));
    EXPECT_EQ(graphics.Pixel(1, 1), LICE_RGBA(51, 0, 0, 255)) << "corners are drawn once";
}

TEST_F(IGraphicsDraw, ColoursAlphaAndBlendCount) {
    graphics.FillIRect({51, 255, 255, 255}, {0, 0, 1, 1});
    EXPECT_EQ(graphics.Pixel(0, 0), LICE_RGBA(51, 51, 51, 255));
    graphics.FillIRect(red, {1, 0, 2, 1}, IChannelBlend(IChannelBlend::BlendNone, 0.25F));
    EXPECT_EQ(graphics.Pixel(1, 0), LICE_RGBA(64, 0, 0, 255));
    graphics.FillIRect({255, 300, -5, 0}, {2, 0, 3, 1});
    EXPECT_EQ(graphics.Pixel(2, 0), LICE_RGBA(255, 0, 0, 255)) << "limited to 0..255";
}

TEST_F(IGraphicsDraw, EmptyTextDrawsNothingAndKeepsTheRectangle) {
    const IText text(8, red);
    IRECT rect(1, 2, 3, 4);
    EXPECT_TRUE(graphics.DrawIText(text, "", {0, 0, 12, 8}));
    EXPECT_TRUE(graphics.MeasureIText(text, "", rect));
    EXPECT_EQ(rect, IRECT(1, 2, 3, 4));
    EXPECT_EQ(text.cached, nullptr);
    EXPECT_EQ(Drawn(), Rows(8, "............"));
}

TEST_F(IGraphicsDraw, TextWithoutAFontIsFalse) {
    const IText text(0, red);
    IRECT rect(1, 2, 3, 4);
    EXPECT_FALSE(graphics.DrawIText(text, "A", {0, 0, 12, 8}));
    EXPECT_FALSE(graphics.MeasureIText(text, "A", rect));
    EXPECT_EQ(rect, IRECT(1, 2, 3, 4));
}

TEST_F(IGraphicsDraw, MeasuringAlignsInTheOldRectangle) {
    IText text(8, red, IText::AlignNear);
    IRECT near(10, 20, 110, 60);
    ASSERT_TRUE(graphics.MeasureIText(text, "Level", near));
    const int width = near.W();
    const int height = near.H();
    EXPECT_GT(width, 10);
    EXPECT_GE(height, 8);
    EXPECT_EQ(near, IRECT(10, 20, 10 + width, 20 + height));
    text.align = IText::AlignCenter;
    IRECT centre(10, 20, 110, 60);
    ASSERT_TRUE(graphics.MeasureIText(text, "Level", centre));
    EXPECT_EQ(centre.W(), width);
    EXPECT_NEAR(centre.L + centre.R, 120, 1);
    text.align = IText::AlignFar;
    IRECT far(10, 20, 110, 60);
    ASSERT_TRUE(graphics.MeasureIText(text, "Level", far));
    EXPECT_EQ(far, IRECT(110 - width, 20, 110, 20 + height));
    EXPECT_EQ(Drawn(), Rows(8, "............")) << "measuring draws nothing";
}

TEST_F(IGraphicsDraw, TextIsDrawnWhereItWasMeasured) {
    HeadlessGraphics wide(plug, 120, 40);
    for (const int align : {IText::AlignNear, IText::AlignCenter, IText::AlignFar}) {
        const IText text(14, {255, 255, 255, 255}, align);
        LICE_Clear(&wide.DrawBuffer(), kBlack);
        IRECT rect(10, 5, 110, 30);
        wide.DrawIText(text, "HIH", rect);
        wide.MeasureIText(text, "HIH", rect);
        IRECT ink;
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 120; ++x) {
                if (wide.Pixel(x, y) != kBlack) ink = ink.Union({x, y, x + 1, y + 1});
            }
        }
        EXPECT_FALSE(ink.Empty());
        EXPECT_EQ(ink.Union(rect), rect) << align;
        EXPECT_GE(ink.W(), rect.W() - 3) << align;
    }
}

/// Remembers how it was asked to draw.
class RecordingFont final : public LICE_IFont {
public:
    explicit RecordingFont(std::vector<unsigned>& askedFlags) : asked(askedFlags) {}
    void SetTextColor(LICE_pixel) override {}
    [[nodiscard]] int LineHeight() const override { return 1; }
    int DrawText(LICE_IBitmap*, std::string_view, IRECT&, unsigned flags) override {
        asked.push_back(flags);
        return 1;
    }

private:
    std::vector<unsigned>& asked;
};

TEST_F(IGraphicsDraw, AlignmentAndTranslucenceReachTheFont) {
    // The cache keeps the font for good, and so its record.
    static std::vector<unsigned> asked;
    class RecordingGraphics final : public HeadlessGraphics {
    public:
        using HeadlessGraphics::HeadlessGraphics;

    protected:
        std::unique_ptr<LICE_IFont> MakeFont(const IText&) override {
            return std::make_unique<RecordingFont>(asked);
        }
    };
    asked.clear();
    RecordingGraphics recording(plug, 12, 8);
    IText text(8, red);
    text.font = "Recorded";
    for (const int align : {IText::AlignNear, IText::AlignCenter, IText::AlignFar}) {
        text.align = align;
        recording.DrawIText(text, "A", {0, 0, 12, 8});
    }
    text.align = IText::AlignNear;
    text.color.A = 254;
    recording.DrawIText(text, "A", {0, 0, 12, 8});
    IRECT rect(0, 0, 12, 8);
    recording.MeasureIText(text, "A", rect);
    const unsigned native = LICE_TextNative;
    EXPECT_EQ(asked, (std::vector<unsigned>{native, native | LICE_TextCenter, native | LICE_TextRight,
                                            native | LICE_TextWantAlpha,
                                            native | LICE_TextWantAlpha | LICE_TextCalcRect}));
}

TEST_F(IGraphicsDraw, FontsAreSharedByAllEditors) {
    FakePlug otherPlug;
    HeadlessGraphics other(otherPlug, 12, 8);
    const IText first(9, red);
    const IText second(9, IColor(255, 0, 0, 255), IText::AlignFar);
    graphics.DrawIText(first, "A", {0, 0, 12, 8});
    other.DrawIText(second, "A", {0, 0, 12, 8});
    ASSERT_NE(first.cached, nullptr);
    EXPECT_EQ(first.cached, second.cached);
    IText bold = second;
    bold.style = IText::StyleBold;
    other.DrawIText(bold, "A", {0, 0, 12, 8});
    EXPECT_NE(bold.cached, second.cached) << "a copy that looks different gets a font of its own";
    bold.style = IText::StyleNormal;
    other.DrawIText(bold, "A", {0, 0, 12, 8});
    EXPECT_EQ(bold.cached, second.cached);
}

TEST_F(IGraphicsDraw, BitmapsAreSharedByAllEditors) {
    FakePlug otherPlug;
    HeadlessGraphics other(otherPlug, 12, 8);
    const std::string name = "resources/img/grimworks/knobs/GW_Filter_Knob_40px.png";
    const IBitmap first = graphics.LoadIBitmap(3034, name, 128);
    const IBitmap second = other.LoadIBitmap(3034, name, 128);
    EXPECT_NE(first.data, nullptr);
    EXPECT_EQ(first.data, second.data);
    EXPECT_EQ(first.W, 40);
    EXPECT_EQ(first.H, 5120);
    EXPECT_EQ(first.FrameHeight(), 40);
    EXPECT_EQ(first.FrameWidth(), 40);
    EXPECT_EQ(first.N, 128);
}

TEST_F(IGraphicsDraw, SuffixTellsTheFormatWhateverItsCase) {
    EXPECT_NE(graphics.LoadIBitmap(3035, "any/name.PnG").data, nullptr);
    EXPECT_EQ(graphics.LoadIBitmap(3036, "any/name.bmp").data, nullptr);
    EXPECT_EQ(graphics.LoadIBitmap(3036, "png").data, nullptr) << "no dot";
    EXPECT_EQ(graphics.LoadIBitmap(3036, "").data, nullptr);
    EXPECT_NE(graphics.LoadIBitmap(3036, "a.b.png").data, nullptr) << "asked again under a right name";
}

TEST_F(IGraphicsDraw, MissingBitmapHasNoImage) {
    const IBitmap missing = graphics.LoadIBitmap(4711, "missing.png", 7);
    EXPECT_EQ(missing.data, nullptr);
    EXPECT_EQ(missing.W, 0);
    EXPECT_EQ(missing.H, 0);
    EXPECT_FALSE(graphics.DrawBitmapFrame(missing, {0, 0, 5, 5}, 3));
}

TEST_F(IGraphicsDraw, EditorsOnSeveralThreadsShareFontsAndBitmaps) {
    std::vector<std::thread> threads;
    std::vector<Rows> drawn(3);
    threads.reserve(drawn.size());
    for (Rows& rows : drawn) {
        threads.emplace_back([&rows] {
            FakePlug ownPlug;
            HeadlessGraphics own(ownPlug, 60, 40);
            for (int round = 0; round < 20; ++round) {
                LICE_Clear(&own.DrawBuffer(), kBlack);
                own.DrawBitmapFrame(own.LoadIBitmap(3037, "knob.png", 128), {0, 10, 30, 40}, round + 1);
                const IText text(11 + round % 3, {255, 255, 255, 255}, IText::AlignNear);
                own.DrawIText(text, "Round " + std::to_string(round), {0, 0, 60, 12});
            }
            rows = Shape(own.DrawBuffer());
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_NE(drawn[0], Rows(40, std::string(60, '.')));
    EXPECT_EQ(drawn[0], drawn[1]);
    EXPECT_EQ(drawn[0], drawn[2]);
}

} // namespace
} // namespace Grimworks
