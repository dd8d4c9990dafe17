#include "editor/LICE_Png.h"

#include "tests/editor/Canvas.h"
#include "tests/editor/PngFiles.h"

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <thread>

namespace Grimworks {
namespace {

using Bytes = std::vector<std::uint8_t>;

std::string NameOf(const PngKind& kind) {
    return "type " + std::to_string(kind.colorType) + " depth " + std::to_string(kind.bitDepth) +
           (kind.interlaced ? " interlaced" : "") + (kind.transparency ? " with tRNS" : "");
}

/// A chunk with its length and check sum, as it stands in a file.
Bytes Chunk(const char* name, const Bytes& data) {
    Bytes chunk;
    const auto put = [&chunk](std::uint32_t number) {
        for (int shift = 24; shift >= 0; shift -= 8)
            chunk.push_back(static_cast<std::uint8_t>(number >> static_cast<unsigned>(shift)));
    };
    put(static_cast<std::uint32_t>(data.size()));
    chunk.insert(chunk.end(), name, name + 4);
    chunk.insert(chunk.end(), data.begin(), data.end());
    std::uint32_t sum = 0xFFFFFFFFU;
    for (std::size_t i = 4; i < chunk.size(); ++i) {
        sum ^= chunk[i];
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum & 1U) != 0 ? 0xEDB88320U ^ (sum >> 1U) : sum >> 1U;
    }
    put(sum ^ 0xFFFFFFFFU);
    return chunk;
}

/// The beginning of a file with a picture of this size, and nothing of the picture.
Bytes HeaderOnly(std::uint32_t width, std::uint32_t height) {
    Bytes file{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    Bytes data;
    for (const std::uint32_t side : {width, height}) {
        for (int shift = 24; shift >= 0; shift -= 8)
            data.push_back(static_cast<std::uint8_t>(side >> static_cast<unsigned>(shift)));
    }
    data.insert(data.end(), {8, PNG_COLOR_TYPE_RGB_ALPHA, 0, 0, 0});
    const Bytes chunk = Chunk("IHDR", data);
    file.insert(file.end(), chunk.begin(), chunk.end());
    return file;
}

TEST(LoadPngFromMemory, EveryColourTypeAndDepthBecomesFourChannelsOfEightBits) {
    constexpr int kWidth = 19;
    constexpr int kHeight = 11;
    for (const PngKind& kind : AllPngKinds()) {
        const Bytes file = MakePng(kind, kWidth, kHeight);
        const auto bitmap = LoadPngFromMemory(file.data(), file.size());
        ASSERT_NE(bitmap, nullptr) << NameOf(kind);
        ASSERT_EQ(bitmap->getWidth(), kWidth) << NameOf(kind);
        ASSERT_EQ(bitmap->getHeight(), kHeight) << NameOf(kind);
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                ASSERT_EQ(LICE_GetPixel(bitmap.get(), x, y), PngPixel(kind, x, y))
                    << NameOf(kind) << " at " << x << ',' << y;
            }
        }
    }
}

TEST(LoadPngFromMemory, EverySizeFromOneToNineOfAnInterlacedPicture) {
    const PngKind kind{PNG_COLOR_TYPE_RGB_ALPHA, 8, true, false};
    for (int width = 1; width <= 9; ++width) {
        for (int height = 1; height <= 9; ++height) {
            const Bytes file = MakePng(kind, width, height);
            const auto bitmap = LoadPngFromMemory(file.data(), file.size());
            ASSERT_NE(bitmap, nullptr);
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x)
                    ASSERT_EQ(LICE_GetPixel(bitmap.get(), x, y), PngPixel(kind, x, y));
            }
        }
    }
}

TEST(LoadPngFromMemory, FewerThanEightBytesAreRefused) {
    const Bytes file = MakePng({PNG_COLOR_TYPE_RGB, 8}, 4, 4);
    for (std::size_t size = 0; size < 8; ++size)
        EXPECT_EQ(LoadPngFromMemory(file.data(), size), nullptr) << size;
    EXPECT_EQ(LoadPngFromMemory(nullptr, 100), nullptr);
}

TEST(LoadPngFromMemory, WrongSignatureIsRefused) {
    const Bytes file = MakePng({PNG_COLOR_TYPE_RGB, 8}, 4, 4);
    for (std::size_t i = 0; i < 8; ++i) {
        Bytes broken = file;
        broken[i] ^= 1U;
        EXPECT_EQ(LoadPngFromMemory(broken.data(), broken.size()), nullptr) << i;
    }
}

TEST(LoadPngFromMemory, FileCutAnywhereGivesNothing) {
    for (const PngKind& kind : AllPngKinds()) {
        const Bytes file = MakePng(kind, 9, 7);
        for (std::size_t size = 0; size < file.size(); ++size) {
            const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
            ASSERT_EQ(LoadPngFromMemory(cut.data(), cut.size()), nullptr) << NameOf(kind) << " at " << size;
        }
    }
}

TEST(LoadPngFromMemory, BrokenFileGivesNothingOrAPictureOfItsSize) {
    std::mt19937 random(42);
    int refused = 0;
    int taken = 0;
    for (const PngKind& kind : AllPngKinds()) {
        const Bytes file = MakePng(kind, 9, 7);
        for (int i = 0; i < 60; ++i) {
            Bytes broken = file;
            const std::size_t changes = 1 + random() % 4;
            for (std::size_t change = 0; change < changes; ++change)
                broken[8 + random() % (broken.size() - 8)] = static_cast<std::uint8_t>(random());
            const auto bitmap = LoadPngFromMemory(broken.data(), broken.size());
            if (bitmap == nullptr) {
                ++refused;
                continue;
            }
            ++taken;
            EXPECT_EQ(PixelsOf(*bitmap).size(), static_cast<std::size_t>(bitmap->getWidth()) *
                                                    static_cast<std::size_t>(bitmap->getHeight()));
        }
    }
    EXPECT_GT(refused, 1000);
    EXPECT_GT(refused + taken, 2000);
}

TEST(LoadPngFromMemory, BytesInTheHeaderThatAreConsistentButAbsurdGiveNothing) {
    // With a right check sum: sizes, depths, types and methods that do not exist.
    const Bytes file = MakePng({PNG_COLOR_TYPE_RGB, 8}, 4, 4);
    for (std::size_t i = 0; i < 13; ++i) {
        for (const int value : {0x00, 0x05, 0x7F, 0x80, 0xFF}) {
            Bytes header(file.begin() + 16, file.begin() + 29);
            if (header[i] == value) continue;
            header[i] = static_cast<std::uint8_t>(value);
            const Bytes chunk = Chunk("IHDR", header);
            Bytes broken = file;
            std::copy(chunk.begin(), chunk.end(), broken.begin() + 8);
            const auto bitmap = LoadPngFromMemory(broken.data(), broken.size());
            // A smaller height is a picture with rows left over, which libpng lets pass.
            if (i == 7 && value < 4) continue;
            EXPECT_EQ(bitmap, nullptr) << i << ' ' << value;
        }
    }
}

TEST(LoadPngFromMemory, PicturesBeyondTheLimitAreRefusedBeforeMemoryIsTaken) {
    for (const auto& [width, height] :
         {std::pair{32769U, 1U}, {1U, 32769U}, {0x7FFFFFFFU, 0x7FFFFFFFU}, {0U, 1U}, {1U, 0U}}) {
        const Bytes file = HeaderOnly(width, height);
        EXPECT_EQ(LoadPngFromMemory(file.data(), file.size()), nullptr) << width << ' ' << height;
        int w = -1;
        int h = -1;
        EXPECT_FALSE(ReadPngSize(file, w, h));
        EXPECT_EQ(w, -1);
    }
}

TEST(ReadPngSize, NeedsTheHeaderOnly) {
    const Bytes file = HeaderOnly(32768, 3);
    int width = 0;
    int height = 0;
    ASSERT_TRUE(ReadPngSize(file, width, height));
    EXPECT_EQ(width, 32768);
    EXPECT_EQ(height, 3);
    for (std::size_t size = 0; size < 24; ++size)
        EXPECT_FALSE(ReadPngSize(std::span(file).first(size), width, height)) << size;
    Bytes other = file;
    other[12] = 'J';
    EXPECT_FALSE(ReadPngSize(other, width, height)) << "the first chunk is no header";
}

TEST(LICE_PngBitmap, KnowsItsSizeAndDecodesWhenAsked) {
    const PngKind kind{PNG_COLOR_TYPE_RGB_ALPHA, 8};
    const Bytes file = MakePng(kind, 6, 5);
    LICE_PngBitmap bitmap(file);
    EXPECT_EQ(bitmap.getWidth(), 6);
    EXPECT_EQ(bitmap.getHeight(), 5);
    EXPECT_EQ(bitmap.getRowSpan(), 6);
    ASSERT_NE(bitmap.getBits(), nullptr);
    EXPECT_EQ(bitmap.getBits(), bitmap.getBits()) << "once";
    EXPECT_EQ(LICE_GetPixel(&bitmap, 5, 4), PngPixel(kind, 5, 4));
    EXPECT_FALSE(bitmap.resize(3, 3));
    EXPECT_EQ(bitmap.getWidth(), 6);
}

TEST(LICE_PngBitmap, BrokenPictureHasNoPixels) {
    Bytes file = MakePng({PNG_COLOR_TYPE_RGB_ALPHA, 8}, 6, 5);
    file.resize(file.size() / 2);
    LICE_PngBitmap broken(file);
    EXPECT_EQ(broken.getWidth(), 6) << "the layout stays what it was";
    EXPECT_EQ(broken.getBits(), nullptr);
    EXPECT_EQ(broken.getBits(), nullptr);
    LICE_PngBitmap none(std::span<const std::uint8_t>{});
    EXPECT_EQ(none.getWidth(), 0);
    EXPECT_EQ(none.getHeight(), 0);
    EXPECT_EQ(none.getBits(), nullptr);
}

TEST(LICE_PngBitmap, SeveralThreadsMayAskForThePixels) {
    const PngKind kind{PNG_COLOR_TYPE_RGB, 8};
    const Bytes file = MakePng(kind, 100, 100);
    LICE_PngBitmap bitmap(file);
    std::vector<LICE_pixel*> seen(4);
    std::vector<std::thread> threads;
    threads.reserve(seen.size());
    for (LICE_pixel*& pixels : seen)
        threads.emplace_back([&pixels, &bitmap] { pixels = bitmap.getBits(); });
    for (std::thread& thread : threads)
        thread.join();
    for (const LICE_pixel* pixels : seen)
        EXPECT_EQ(pixels, bitmap.getBits());
    EXPECT_EQ(LICE_GetPixel(&bitmap, 99, 99), PngPixel(kind, 99, 99));
}

TEST(SavePngToMemory, WhatWasWrittenIsReadAgainWithoutTransparency) {
    LICE_MemBitmap bitmap(7, 3);
    for (int i = 0; i < 21; ++i)
        bitmap.getBits()[i] = LICE_RGBA(i * 12, 255 - i, i, i * 3);
    Bytes file;
    ASSERT_TRUE(SavePngToMemory(bitmap, file));
    const auto read = LoadPngFromMemory(file.data(), file.size());
    ASSERT_NE(read, nullptr);
    for (int i = 0; i < 21; ++i)
        EXPECT_EQ(read->getBits()[i], LICE_RGBA(i * 12, 255 - i, i, 255));
}

TEST(SavePngToMemory, EmptyBitmapIsNoFile) {
    LICE_MemBitmap empty;
    Bytes file{1, 2, 3};
    EXPECT_FALSE(SavePngToMemory(empty, file));
    EXPECT_EQ(file, (Bytes{1, 2, 3}));
}

} // namespace
} // namespace Grimworks
