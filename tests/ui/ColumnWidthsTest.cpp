#include "ui/ColumnWidths.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <numeric>

namespace vw {
namespace {

using testing::ElementsAre;

constexpr ColumnNeed kName{.ideal = 200, .least = 120, .shrinks = Shrinks::Last};
constexpr ColumnNeed kPath{.ideal = 400, .least = 80, .shrinks = Shrinks::First};
constexpr ColumnNeed kDate{.ideal = 130};
constexpr ColumnNeed kLocation{.ideal = 240, .least = 80, .shrinks = Shrinks::First};

TEST(FittedWidthsTest, EnoughRoom_EachHasItsPreferredWidth) {
    EXPECT_THAT(FittedWidths({kName, kPath, kDate, kLocation}, 1000),
                ElementsAre(200, 400, 130, 240));
}

TEST(FittedWidthsTest, LittleRoom_PathsShrinkInProportion) {
    const std::vector<int> widths = FittedWidths({kName, kPath, kDate, kLocation}, 730);
    EXPECT_EQ(widths[0], 200);
    EXPECT_EQ(widths[2], 130);
    EXPECT_EQ(widths[1] + widths[3], 400);
    EXPECT_EQ(widths[1], 240) << "it can spare twice as much";
}

TEST(FittedWidthsTest, EveryWidthDownToTheLeast_IsFilledExactly) {
    for (int room = 410; room <= 970; ++room) {
        const std::vector<int> widths = FittedWidths({kName, kPath, kDate, kLocation}, room);
        EXPECT_EQ(std::accumulate(widths.begin(), widths.end(), 0), room);
    }
}

TEST(FittedWidthsTest, TooLittleRoom_EdgeFallsBetweenColumns) {
    for (int room = 200; room < 410; ++room) {
        const std::vector<int> widths = FittedWidths({kName, kPath, kDate, kLocation}, room);
        const int date = room < 330 ? 0 : 130;
        EXPECT_EQ(widths[0] + widths[1] + date, room);
        EXPECT_EQ(widths[0], std::min(200, room - date - 80)) << "a name is not cut for nothing";
        EXPECT_EQ(widths[2], 130);
        EXPECT_EQ(widths[3], 240);
    }
}

TEST(FittedWidthsTest, TooLittleRoom_StopsAtTheLeast) {
    EXPECT_THAT(FittedWidths({kName, kPath, kDate, kLocation}, 100),
                ElementsAre(120, 400, 130, 240));
}

// The list of the items: its number and its location are of less use than the paths.
constexpr ColumnNeed kItemPath{
    .ideal = 400, .least = 80, .readable = 150, .shrinks = Shrinks::First};
constexpr ColumnNeed kNumber{.ideal = 50, .mayHide = true};
constexpr ColumnNeed kHidingLocation{
    .ideal = 240, .least = 80, .readable = 150, .shrinks = Shrinks::First, .mayHide = true};

std::vector<int> ItemWidths(int room) {
    return FittedWidths({kName, kItemPath, kDate, kNumber, kHidingLocation}, room);
}

TEST(FittedWidthsTest, PathIsReadable_AllColumnsShareTheRoom) {
    const std::vector<int> widths = ItemWidths(700);
    EXPECT_EQ(std::accumulate(widths.begin(), widths.end(), 0), 700);
    EXPECT_GE(widths[1], 150);
}

TEST(FittedWidthsTest, PathWouldBeNarrow_LocationHides) {
    EXPECT_THAT(ItemWidths(620), ElementsAre(200, 240, 130, 50, 240));
}

TEST(FittedWidthsTest, PathIsNarrowStill_NumberHidesToo) {
    EXPECT_THAT(ItemWidths(530), ElementsAre(200, 150, 130, 50, 240));
    EXPECT_THAT(ItemWidths(529), ElementsAre(200, 199, 130, 50, 240));
}

TEST(FittedWidthsTest, OthersNeverHide_ForAReadablePath) {
    EXPECT_THAT(ItemWidths(420), ElementsAre(140, 150, 130, 50, 240)) << "the name is cut first";
    EXPECT_THAT(ItemWidths(340), ElementsAre(120, 90, 130, 50, 240));
}

TEST(FittedWidthsTest, ShortPath_IsReadableAtItsOwnWidth) {
    constexpr ColumnNeed kShort{
        .ideal = 100, .least = 80, .readable = 150, .shrinks = Shrinks::First};
    EXPECT_THAT(FittedWidths({kName, kShort, kDate, kNumber}, 480), ElementsAre(200, 100, 130, 50));
}

}  // namespace
}  // namespace vw
