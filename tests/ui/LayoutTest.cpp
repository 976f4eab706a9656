#include "ui/Layout.h"

#include <gtest/gtest.h>

namespace vw {

void PrintTo(const Rect& rect, std::ostream* out) {
    *out << rect.left << ',' << rect.top << ' ' << rect.Width() << 'x' << rect.Height();
}

namespace {

constexpr Size kDesign{400, 200};

TEST(Layout, Scaled_RoundsLengths) {
    EXPECT_EQ(Scaled(12, 96), 12);
    EXPECT_EQ(Scaled(12, 144), 18);
    EXPECT_EQ(Scaled(13, 144), 20);
    EXPECT_EQ(Scaled(5, 120), 6);
    EXPECT_EQ(Scaled(0, 144), 0);
    EXPECT_EQ(Scaled(-12, 144), -18);
    EXPECT_EQ(Scaled(Size{10, 20}, 192), (Size{20, 40}));
}

struct Row {
    const char* what;
    Bounds place;
    ResizeWeights flow;
    Size client;
    int dpi;
    Rect expected;
};

TEST(Layout, BoundsFor_MovesAndGrowsByTheShares) {
    const Row rows[]{
        {"as designed", {10, 20, 30, 40}, {}, kDesign, 96, {10, 20, 40, 60}},
        {"stays", {10, 20, 30, 40}, {}, {500, 300}, 96, {10, 20, 40, 60}},
        {"moves with the far corner",
         {10, 20, 30, 40},
         {.moveX = 100, .moveY = 100},
         {500, 260},
         96,
         {110, 80, 140, 120}},
        {"grows",
         {10, 20, 30, 40},
         {.growX = 100, .growY = 100},
         {500, 260},
         96,
         {10, 20, 140, 120}},
        {"takes the first half",
         {10, 20, 185, 40},
         {.growX = 50},
         {500, 200},
         96,
         {10, 20, 245, 60}},
        {"takes the second half",
         {205, 20, 185, 40},
         {.moveX = 50, .growX = 50},
         {500, 200},
         96,
         {255, 20, 490, 60}},
        {"is scaled", {10, 20, 30, 40}, {}, {600, 300}, 144, {15, 30, 60, 90}},
        {"is scaled and grows",
         {10, 20, 30, 40},
         {.growX = 100},
         {700, 300},
         144,
         {15, 30, 160, 90}},
        {"shrinks on a small screen",
         {10, 20, 300, 160},
         {.growX = 50, .growY = 100},
         {360, 180},
         96,
         {10, 20, 290, 160}},
        {"keeps two thirds of the design",
         {10, 20, 300, 160},
         {.growX = 50, .growY = 100},
         {0, 0},
         96,
         {10, 20, 243, 114}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(BoundsFor(row.place, row.flow, kDesign, row.client, row.dpi), row.expected)
            << row.what;
    }
}

TEST(Layout, BoundsFor_NeighboursMeetAtEverySize) {
    const Bounds first{7, 0, 190, 10};
    const Bounds second{197, 0, 190, 10};
    for (const int dpi : {96, 120, 144, 168, 192}) {
        for (int surplus = 0; surplus < 7; ++surplus) {
            const Size client{Scaled(kDesign.width, dpi) + surplus, Scaled(kDesign.height, dpi)};
            const Rect left = BoundsFor(first, {.growX = 50}, kDesign, client, dpi);
            const Rect right = BoundsFor(second, {.moveX = 50, .growX = 50}, kDesign, client, dpi);
            EXPECT_EQ(left.right, right.left) << dpi << " dpi, " << surplus << " more";
        }
    }
}

TEST(Layout, BoundsFor_HugeForm_DoesNotOverflow) {
    const Rect rect = BoundsFor({10, 10, 10, 10}, {.moveX = 100}, kDesign, {2000000000, 200}, 96);
    EXPECT_EQ(rect.left, 2000000000 - 400 + 10);
}

}  // namespace
}  // namespace vw
