#include "fsutil/NewestDate.h"

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "tests/support/DiskTest.h"

namespace vw {
namespace {

using test::FileCall;

using NewestFileDateTest = test::DiskTest;

constexpr DateParts kOld{2001, 2, 3, 4, 5, 6};
constexpr DateParts kNew{2024, 12, 31, 23, 59, 59};

TEST_F(NewestFileDateTest, ReturnsTheDateOfTheFileOrNewestInTheTree) {
    tree.File(L"Docs«0101»\\a", "x", kOld);
    tree.File(L"Docs«0101»\\Sub\\ب", "x", kNew);
    int yields = 0;
    const auto yield = [&] { ++yields; };
    EXPECT_EQ(NewestFileDate(world.files, tree.Path(L"Docs«0101»\\a"), yield), MakeDate(kOld));
    EXPECT_EQ(yields, 0);
    EXPECT_EQ(NewestFileDate(world.files, tree.Path(L"Docs«0101»"), yield), MakeDate(kNew));
    EXPECT_EQ(yields, 3);
}

TEST_F(NewestFileDateTest, NoFile_ReturnsTheMissingDate) {
    tree.Folder(L"Sub\\Deeper");
    EXPECT_EQ(NewestFileDate(world.files, tree.Path(L"missing"), [] {}), kMissingDate);
    EXPECT_EQ(NewestFileDate(world.files, tree.Path(), [] {}), kMissingDate);
}

TEST_F(NewestFileDateTest, UnreadableSubFolder_IsLeftOut) {
    tree.File(L"Closed\\a", "x", kNew);
    tree.File(L"Open\\b", "x", kOld);
    world.files.FailNth(1, error_number::kPermissionDenied, [](const auto& operation) {
        return operation.call == FileCall::List && operation.path.ends_with(L"Closed");
    });
    EXPECT_EQ(NewestFileDate(world.files, tree.Path(), [] {}), MakeDate(kOld));
}

TEST(NewestDates, FilesHaveTwoDates_ReturnsTheNewestByEitherRule) {
    NewestDates dates;
    EXPECT_FALSE(dates.IsAfter(kMissingDate));
    dates.Take({.lastWrite = YearBegin(2000), .lastWriteByPresentRules = YearBegin(2010)});
    dates.Take({.lastWrite = YearBegin(2005), .lastWriteByPresentRules = YearBegin(2008)});
    EXPECT_TRUE(dates.HasDate(YearBegin(2005)));
    EXPECT_TRUE(dates.HasDate(YearBegin(2010)));
    EXPECT_FALSE(dates.HasDate(YearBegin(2008)));
    EXPECT_TRUE(dates.IsAfter(YearBegin(2005) - std::chrono::seconds{1}));
    EXPECT_FALSE(dates.IsAfter(YearBegin(2005)));
}

TEST(NewestDates, NewerByOneRuleAlone_IsNotAfter) {
    NewestDates dates;
    dates.Take({.lastWrite = YearBegin(2010), .lastWriteByPresentRules = YearBegin(2000)});
    EXPECT_FALSE(dates.IsAfter(YearBegin(2005)));
}

}  // namespace
}  // namespace vw
