#include "ui/ColumnWidths.h"

#include <gmock/gmock.h>

#include <numeric>

namespace vw {
namespace {

using testing::ElementsAre;

constexpr ColumnNeed kName{.ideal = 200, .least = 120, .givesWay = GivesWay::Last};
constexpr ColumnNeed kPath{.ideal = 400, .least = 80, .givesWay = GivesWay::First};
constexpr ColumnNeed kDate{.ideal = 130};
constexpr ColumnNeed kLocation{.ideal = 240, .least = 80, .givesWay = GivesWay::First};

TEST(FittedWidthsTest, EnoughRoom_EachGetsWhatItLikes) {
    EXPECT_THAT(FittedWidths({kName, kPath, kDate, kLocation}, 1000),
                ElementsAre(200, 400, 130, 240));
}

TEST(FittedWidthsTest, LittleRoom_PathsGiveWayInProportion) {
    const std::vector<int> widths = FittedWidths({kName, kPath, kDate, kLocation}, 730);
    EXPECT_EQ(widths[0], 200);
    EXPECT_EQ(widths[2], 130);
    EXPECT_EQ(widths[1] + widths[3], 400);
    EXPECT_EQ(widths[1], 240) << "it can spare twice as much";
}

TEST(FittedWidthsTest, EveryRoomDownToTheLeast_IsFilledExactly) {
    for (int room = 410; room <= 970; ++room) {
        const std::vector<int> widths = FittedWidths({kName, kPath, kDate, kLocation}, room);
        EXPECT_EQ(std::accumulate(widths.begin(), widths.end(), 0), room);
    }
}

TEST(FittedWidthsTest, TooLittleRoom_EdgeFallsBetweenColumns) {
    for (int room = 200; room < 410; ++room) {
        const std::vector<int> widths = FittedWidths({kName, kPath, kDate, kLocation}, room);
        EXPECT_EQ(widths[0] + widths[1] + (room < 330 ? 0 : widths[2]), room);
        EXPECT_EQ(widths[0], 120);
        EXPECT_EQ(widths[2], 130);
        EXPECT_EQ(widths[3], 80);
    }
}

TEST(FittedWidthsTest, TooLittleRoom_StopsAtTheLeast) {
    EXPECT_THAT(FittedWidths({kName, kPath, kDate, kLocation}, 100), ElementsAre(120, 80, 130, 80));
}

}  // namespace
}  // namespace vw
