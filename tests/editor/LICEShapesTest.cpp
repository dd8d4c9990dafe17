#include "editor/LICE_Draw.h"
#include "tests/editor/Canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <set>
#include <utility>

namespace Grimworks {
namespace {

using Rows = std::vector<std::string>;
using Points = std::set<std::pair<int, int>>;

/// A line's pixels worked out one by one in real numbers, wherever they lie.
Points LinePixels(int x1, int y1, int x2, int y2) {
    Points points;
    const int dx = x2 - x1;
    const int dy = y2 - y1;
    const int steps = std::max(std::abs(dx), std::abs(dy));
    for (int i = 0; i <= steps; ++i) {
        const double part = steps == 0 ? 0.0 : static_cast<double>(i) / steps;
        // Halves go away from the start.
        const auto moved = [part](int distance) {
            const auto whole = static_cast<int>(std::floor(std::abs(distance) * part + 0.5));
            return distance < 0 ? -whole : whole;
        };
        points.insert({x1 + moved(dx), y1 + moved(dy)});
    }
    return points;
}

Points DrawnPixels(Canvas& canvas) {
    Points points;
    for (int y = 0; y < (*canvas).getHeight(); ++y) {
        for (int x = 0; x < (*canvas).getWidth(); ++x) {
            if (canvas.At(x, y) != kBlack) points.insert({x, y});
        }
    }
    return points;
}

Points Inside(const Points& points, int width, int height) {
    Points inside;
    std::copy_if(points.begin(), points.end(), std::inserter(inside, inside.end()), [=](const auto& point) {
        return point.first >= 0 && point.first < width && point.second >= 0 && point.second < height;
    });
    return inside;
}

TEST(LICE_Line, DrawsBothEndsAndOnePixelAStep) {
    Canvas canvas(6, 3);
    LICE_Line(canvas.Get(), 0, 0, 5, 2, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{"##....", "..##..", "....##"}));
}

TEST(LICE_Line, LevelAndUprightLinesAreStraight) {
    Canvas canvas(4, 4);
    LICE_Line(canvas.Get(), 3, 0, 0, 0, kRed);
    LICE_Line(canvas.Get(), 1, 3, 1, 2, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{"####", "....", ".#..", ".#.."}));
}

TEST(LICE_Line, OfOnePointIsOnePixel) {
    Canvas canvas(3, 3);
    LICE_Line(canvas.Get(), 1, 1, 1, 1, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{"...", ".#.", "..."}));
}

TEST(LICE_Line, ClippingLeavesExactlyThePixelsOfTheWholeLineThatLieInside) {
    constexpr int kWidth = 5;
    constexpr int kHeight = 4;
    for (int x1 = -6; x1 <= 10; x1 += 2) {
        for (int y1 = -5; y1 <= 8; ++y1) {
            for (int x2 = -7; x2 <= 11; ++x2) {
                for (int y2 = -6; y2 <= 9; y2 += 3) {
                    Canvas canvas(kWidth, kHeight);
                    LICE_Line(canvas.Get(), x1, y1, x2, y2, kRed);
                    ASSERT_EQ(DrawnPixels(canvas), Inside(LinePixels(x1, y1, x2, y2), kWidth, kHeight))
                        << x1 << ',' << y1 << ' ' << x2 << ',' << y2;
                    ASSERT_TRUE(canvas.IsMarginWhole());
                }
            }
        }
    }
}

TEST(LICE_Line, LongLinesAreClippedExactlyToo) {
    std::mt19937 random(17);
    std::uniform_int_distribution<int> place(-3000, 3000);
    constexpr int kSize = 64;
    for (int i = 0; i < 300; ++i) {
        const int x1 = place(random);
        const int y1 = place(random);
        // Through the bitmap more often than not.
        const int x2 = 32 - x1 + place(random) / 50;
        const int y2 = 32 - y1 + place(random) / 50;
        Canvas canvas(kSize, kSize);
        LICE_Line(canvas.Get(), x1, y1, x2, y2, kRed);
        ASSERT_EQ(DrawnPixels(canvas), Inside(LinePixels(x1, y1, x2, y2), kSize, kSize));
        ASSERT_TRUE(canvas.IsMarginWhole());
    }
}

TEST(LICE_Line, ClipAtTheEdgesLeavesNoWrappedPixels) {
    Canvas canvas(4, 4);
    LICE_Line(canvas.Get(), 2, 1, 9, 1, kRed);
    LICE_Line(canvas.Get(), -9, 3, 0, 3, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{"....", "..##", "....", "#..."}));
    EXPECT_TRUE(canvas.IsMarginWhole());
}

TEST(LICE_Line, FarthestEndsDrawWhatLiesBetween) {
    constexpr int kMax = std::numeric_limits<int>::max();
    constexpr int kMin = std::numeric_limits<int>::min();
    Canvas canvas(3, 3);
    LICE_Line(canvas.Get(), kMin, 1, kMax, 1, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{"...", "###", "..."}));
    LICE_Clear(canvas.Get(), kBlack);
    LICE_Line(canvas.Get(), kMin, kMin, kMax, kMax, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{"#..", ".#.", "..#"}));
    LICE_Line(canvas.Get(), kMax, kMin, kMax, kMax, kRed);
    LICE_Line(canvas.Get(), kMin, kMin, kMax, kMin, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{"#..", ".#.", "..#"}));
    EXPECT_TRUE(canvas.IsMarginWhole());
}

TEST(LICE_Line, BlendsEachPixelOnce) {
    Canvas canvas(5, 5);
    LICE_Line(canvas.Get(), 0, 0, 4, 3, LICE_RGBA(255, 255, 255, 51));
    for (const auto& [x, y] : DrawnPixels(canvas))
        EXPECT_EQ(canvas.At(x, y), LICE_RGBA(51, 51, 51, 255));
    EXPECT_EQ(DrawnPixels(canvas).size(), 5U);
}

TEST(LICE_Line, SmoothedLineSharesItsColourBetweenTwoPixels) {
    Canvas canvas(5, 2);
    LICE_Line(canvas.Get(), 0, 0, 4, 1, kWhite, 1.0F, LICE_UseAlpha, true);
    EXPECT_EQ(canvas.At(0, 0), kWhite);
    EXPECT_EQ(canvas.At(4, 1), kWhite);
    EXPECT_EQ(canvas.At(2, 0), LICE_RGBA(128, 128, 128, 255)) << "half of 256 weights 255 as 127.5";
    EXPECT_EQ(canvas.At(2, 1), LICE_RGBA(128, 128, 128, 255));
    EXPECT_EQ(canvas.At(1, 0), LICE_RGBA(191, 191, 191, 255)) << "three quarters";
    EXPECT_EQ(canvas.At(1, 1), LICE_RGBA(64, 64, 64, 255)) << "one quarter";
}

TEST(LICE_Line, SmoothedLineIsClippedLikeTheWholeOne) {
    Canvas whole(40, 40);
    LICE_Line(whole.Get(), 1, 3, 38, 20, kWhite, 1.0F, LICE_UseAlpha, true);
    for (int left = 0; left <= 33; ++left) {
        for (int top = 0; top <= 35; ++top) {
            Canvas part(7, 5);
            LICE_Line(part.Get(), 1 - left, 3 - top, 38 - left, 20 - top, kWhite, 1.0F, LICE_UseAlpha, true);
            for (int y = 0; y < 5; ++y) {
                for (int x = 0; x < 7; ++x)
                    ASSERT_EQ(part.At(x, y), whole.At(x + left, y + top)) << left << ' ' << top;
            }
            ASSERT_TRUE(part.IsMarginWhole());
        }
    }
}

TEST(LICE_FillTriangle, RightTriangleIsAStair) {
    Canvas canvas(5, 5);
    LICE_FillTriangle(canvas.Get(), 0, 0, 0, 4, 4, 4, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{"#....", "##...", "###..", "####.", "#####"}));
}

TEST(LICE_FillTriangle, OrderOfTheCornersDoesNotMatter) {
    const std::pair<int, int> corners[] = {{1, 0}, {8, 3}, {3, 9}};
    int order[] = {0, 1, 2};
    Canvas first(10, 10);
    LICE_FillTriangle(first.Get(), 1, 0, 8, 3, 3, 9, kRed);
    while (std::next_permutation(std::begin(order), std::end(order))) {
        Canvas canvas(10, 10);
        const auto& [a, b] = corners[order[0]];
        const auto& [c, d] = corners[order[1]];
        const auto& [e, f] = corners[order[2]];
        LICE_FillTriangle(canvas.Get(), a, b, c, d, e, f, kRed);
        EXPECT_EQ(Shape(*canvas), Shape(*first));
    }
}

TEST(LICE_FillTriangle, CoversWhatLiesInsideAndLittleMore) {
    // Against the half-plane test of every pixel's middle: no pixel that is well inside is missed, none that
    // is well outside is drawn.
    std::mt19937 random(5);
    std::uniform_int_distribution<int> place(-5, 25);
    for (int i = 0; i < 200; ++i) {
        const int x[] = {place(random), place(random), place(random)};
        const int y[] = {place(random), place(random), place(random)};
        Canvas canvas(20, 20);
        LICE_FillTriangle(canvas.Get(), x[0], y[0], x[1], y[1], x[2], y[2], kRed);
        const auto area = [](double ax, double ay, double bx, double by, double px, double py) {
            return (bx - ax) * (py - ay) - (by - ay) * (px - ax);
        };
        const double turn = area(x[0], y[0], x[1], y[1], x[2], y[2]);
        if (std::fabs(turn) < 1.0) continue;
        for (int py = 0; py < 20; ++py) {
            for (int px = 0; px < 20; ++px) {
                double nearest = std::numeric_limits<double>::infinity();
                for (int edge = 0; edge < 3; ++edge) {
                    const int next = (edge + 1) % 3;
                    const double length = std::hypot(x[next] - x[edge], y[next] - y[edge]);
                    const double side = area(x[edge], y[edge], x[next], y[next], px, py) / length;
                    nearest = std::min(nearest, turn > 0.0 ? side : -side);
                }
                const bool drawn = canvas.At(px, py) != kBlack;
                if (nearest > 0.75) {
                    ASSERT_TRUE(drawn) << px << ' ' << py;
                }
                if (nearest < -0.75) {
                    ASSERT_FALSE(drawn) << px << ' ' << py;
                }
            }
        }
        ASSERT_TRUE(canvas.IsMarginWhole());
    }
}

TEST(LICE_FillTriangle, BlendsEachPixelOnce) {
    Canvas canvas(9, 9);
    LICE_FillTriangle(canvas.Get(), 0, 0, 8, 2, 3, 8, LICE_RGBA(255, 255, 255, 51));
    for (const auto& [x, y] : DrawnPixels(canvas))
        EXPECT_EQ(canvas.At(x, y), LICE_RGBA(51, 51, 51, 255));
}

TEST(LICE_FillTriangle, ClippedTriangleIsAPartOfTheWholeOne) {
    Canvas whole(60, 60);
    LICE_FillTriangle(whole.Get(), 5, 2, 55, 20, 18, 57, kRed);
    for (int left = 0; left < 50; left += 7) {
        for (int top = 0; top < 50; top += 7) {
            Canvas part(10, 10);
            LICE_FillTriangle(part.Get(), 5 - left, 2 - top, 55 - left, 20 - top, 18 - left, 57 - top, kRed);
            for (int y = 0; y < 10; ++y) {
                for (int x = 0; x < 10; ++x)
                    ASSERT_EQ(part.At(x, y), whole.At(x + left, y + top));
            }
            ASSERT_TRUE(part.IsMarginWhole());
        }
    }
}

TEST(LICE_FillTriangle, WithoutAreaIsALineOrAPoint) {
    Canvas canvas(5, 3);
    LICE_FillTriangle(canvas.Get(), 0, 1, 4, 1, 2, 1, kRed);
    LICE_FillTriangle(canvas.Get(), 2, 2, 2, 2, 2, 2, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{".....", "#####", "..#.."}));
}

TEST(LICE_FillTriangle, FarthestCornersDoNotOverflow) {
    constexpr int kMax = std::numeric_limits<int>::max();
    constexpr int kMin = std::numeric_limits<int>::min();
    Canvas canvas(3, 3);
    LICE_FillTriangle(canvas.Get(), kMin, kMin, kMax, kMin, 0, kMax, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{"###", "###", "###"}));
    LICE_Clear(canvas.Get(), kBlack);
    LICE_FillTriangle(canvas.Get(), kMax, kMax, kMax, kMin, kMax, 0, kRed);
    EXPECT_EQ(Shape(*canvas), (Rows{"...", "...", "..."}));
    EXPECT_TRUE(canvas.IsMarginWhole());
}

} // namespace
} // namespace Grimworks
