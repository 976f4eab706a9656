#include "ui/Picture.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/Handle.h"
#include "ui/Icons.h"
#include "ui/resource.h"

namespace vw {
namespace {

constexpr int kSide = 20;

/// What is on a white ground after something was drawn on it.
template <class Drawing>
std::vector<std::uint32_t> Drawn(int side, const Drawing& draw) {
    const Bitmap ground(side, side);
    const auto count = static_cast<std::size_t>(side * side);
    std::fill(ground.Pixels(), ground.Pixels() + count, 0x00FFFFFF);
    {
        const BitmapDc dc(ground.Get());
        draw(dc.Get());
    }
    GdiFlush();
    std::vector<std::uint32_t> pixels(ground.Pixels(), ground.Pixels() + count);
    for (std::uint32_t& pixel : pixels) pixel &= 0x00FFFFFF;
    return pixels;
}

/// The most that two pictures differ by in a colour of a pixel.
int Difference(const std::vector<std::uint32_t>& one, const std::vector<std::uint32_t>& other) {
    int most = 0;
    for (std::size_t i = 0; i < one.size(); ++i) {
        for (int shift = 0; shift < 24; shift += 8) {
            const auto part = [shift](std::uint32_t pixel) {
                return static_cast<int>(pixel >> shift & 0xFF);
            };
            most = std::max(most, std::abs(part(one[i]) - part(other[i])));
        }
    }
    return most;
}

class PictureOf : public testing::TestWithParam<int> {};

// 20 pixels are in the resources; 21 are stretched by the system.
INSTANTIATE_TEST_SUITE_P(Sizes, PictureOf, testing::Values(kSide, kSide + 1));

TEST_P(PictureOf, Icon_HasThePixelsOfTheIcon) {
    const int side = GetParam();
    const auto picture = Drawn(side, [&](HDC dc) { Picture(IDI_Folder, side).Draw(dc, 0, 0); });
    const auto icon = Drawn(side, [&](HDC dc) {
        DrawIconEx(dc, 0, 0, LoadPicture(IDI_Folder, side).Get(), side, side, 0, nullptr,
                   DI_NORMAL);
    });
    EXPECT_NE(picture, Drawn(side, [](HDC) {})) << "something was drawn";
    EXPECT_LE(Difference(picture, icon), 2) << "but for rounding";
}

TEST(Picture, FadedPicture_IsGreyAndPale) {
    const auto faded =
        Drawn(kSide, [](HDC dc) { Picture(IDI_Folder, kSide).Faded().Draw(dc, 0, 0); });
    EXPECT_NE(faded, Drawn(kSide, [](HDC) {})) << "something was drawn";
    for (const std::uint32_t pixel : faded) {
        EXPECT_EQ(pixel & 0xFF, pixel >> 8 & 0xFF);
        EXPECT_EQ(pixel & 0xFF, pixel >> 16 & 0xFF);
        EXPECT_GE(pixel & 0xFF, 0x90U);
    }
}

TEST(Picture, MissingIcon_DrawsNothing) {
    constexpr int kNoIcon = 9999;
    const Picture missing(kNoIcon, kSide);
    EXPECT_TRUE(missing.IsEmpty());
    EXPECT_TRUE(missing.Faded().IsEmpty());
    EXPECT_EQ(Drawn(kSide, [&](HDC dc) { missing.Draw(dc, 0, 0); }), Drawn(kSide, [](HDC) {}));
}

TEST(Picture, DrawnAtAPlace_ChangesNothingBesideIt) {
    constexpr int kGround = 3 * kSide;
    const auto ground =
        Drawn(kGround, [](HDC dc) { Picture(IDI_Folder, kSide).Draw(dc, kSide, kSide); });
    for (int y = 0; y < kGround; ++y) {
        for (int x = 0; x < kGround; ++x) {
            const bool inside = x >= kSide && x < 2 * kSide && y >= kSide && y < 2 * kSide;
            if (inside) continue;
            EXPECT_EQ(ground[static_cast<std::size_t>(y * kGround + x)], 0x00FFFFFFU);
        }
    }
}

}  // namespace
}  // namespace vw
