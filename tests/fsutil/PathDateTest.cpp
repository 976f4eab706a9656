#include <gtest/gtest.h>

#include "fsutil/FileQueries.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/fsutil/StoredDates.h"
#include "tests/support/DiskTest.h"
#include "tests/support/EndlessFolders.h"

namespace vw::MFileDosShell {
namespace {

using test::FileCall;
using test::OnlyCalls;
using test::StoredDates;
using test::TempTree;
using test::TestEnvironment;

constexpr DateParts kOld{2001, 2, 3, 4, 5, 6};
constexpr DateParts kMiddle{2015, 6, 30, 12, 0, 0};
constexpr DateParts kNew{2024, 12, 31, 23, 59, 59};

class PathDateTest : public test::DiskTest {
  protected:
    StoredDates stored;
};

TEST_F(PathDateTest, MissingPath_ReturnsFirstDayOf1000) {
    tree.File(L"a");
    for (const std::wstring& path : {tree.Path(L"missing"), tree.Path(L"missing«0101».txt"),
                                     tree.Path(L"*"), std::wstring()}) {
        const Date date = PathDate(world.system, stored, path);
        EXPECT_EQ(date, kMissingDate);
        EXPECT_EQ(PartsOf(date), (DateParts{1000, 1, 1, 0, 0, 0}));
    }
    EXPECT_TRUE(stored.asked.empty());
}

TEST_F(PathDateTest, File_ReturnsItsOwnDate) {
    const std::wstring file = tree.File(L"ملف.txt", "x", kMiddle);
    EXPECT_EQ(PathDate(world.system, stored, file), MakeDate(kMiddle));
}

TEST_F(PathDateTest, Folder_ReturnsDateOfTheNewestFileInItsTree) {
    tree.File(L"a", "x", kMiddle);
    tree.File(L"Sub\\Deeper\\b", "x", kOld);
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kMiddle));
    tree.File(L"Sub\\Deeper\\c", "x", kNew);
    tree.SetAttributes(L"Sub\\Deeper\\c", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kNew));
    EXPECT_EQ(PathDate(world.system, stored, tree.Path() + L"\\"), MakeDate(kNew));
    EXPECT_EQ(PathDate(world.system, stored, tree.Path(L"Sub")), MakeDate(kNew));
}

TEST_F(PathDateTest, IgnoresTheDatesOfFolders) {
    tree.File(L"Sub\\a", "x", kOld);
    tree.SetDate(L"Sub", kNew);
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kOld));
}

TEST_F(PathDateTest, FolderWithoutFiles_ReturnsFirstDayOf1900) {
    tree.Folder(L"Sub\\Deeper");
    const Date date = PathDate(world.system, stored, tree.Path());
    EXPECT_EQ(date, kEmptyFolderDate);
    EXPECT_EQ(PartsOf(date), (DateParts{1900, 1, 1, 0, 0, 0}));
}

TEST_F(PathDateTest, Copy_ReturnsItsStoredDate) {
    const std::wstring file = tree.File(L"f«0101».txt", "x", kNew);
    const std::wstring folder = tree.Folder(L"Docs«0203»");
    tree.File(L"Docs«0203»\\inside", "x", kNew);
    stored.dates[file] = MakeDate(kOld);
    stored.dates[folder] = MakeDate(kMiddle);
    EXPECT_EQ(PathDate(world.system, stored, file), MakeDate(kOld));
    EXPECT_EQ(PathDate(world.system, stored, folder), MakeDate(kMiddle));
}

TEST_F(PathDateTest, FolderWithACopyFolderOnly_ReturnsItsStoredDate) {
    const std::wstring copy = tree.Folder(L"Docs«0101»");
    tree.File(L"Docs«0101»\\newer", "x", kNew);
    stored.dates[copy] = MakeDate(kMiddle);
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kMiddle));
    ASSERT_EQ(stored.asked.size(), 1U);
    EXPECT_EQ(stored.asked[0], copy);
}

TEST_F(PathDateTest, FileNamedAsACopyInAFolder_IsReadAsAFile) {
    tree.File(L"f«0101».txt", "x", kMiddle);
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kMiddle));
    EXPECT_TRUE(stored.asked.empty());
}

TEST_F(PathDateTest, RecognisesCopyMarksAnywhereInThePath) {
    const std::wstring below = tree.File(L"a«b»c\\plain.txt", "x", kNew);
    const std::wstring split = tree.Folder(L"left«\\right»");
    tree.File(L"no»order«\\x", "x", kOld);
    stored.dates[below] = MakeDate(kMiddle);
    stored.dates[split] = MakeDate(kMiddle);
    EXPECT_EQ(PathDate(world.system, stored, below), MakeDate(kMiddle));
    EXPECT_EQ(PathDate(world.system, stored, tree.Path(L"left«")), MakeDate(kMiddle))
        << "its sub-folder's path has both marks";
    EXPECT_EQ(PathDate(world.system, stored, tree.Path(L"no»order«")), MakeDate(kOld));
}

TEST_F(PathDateTest, ProcessesMessagesAfterEachFileAndSubFolder) {
    for (int i = 0; i < 6; ++i) tree.File(std::to_wstring(i));
    for (int i = 0; i < 4; ++i) tree.Folder(L"Sub" + std::to_wstring(i));
    (void)PathDate(world.system, stored, tree.Path());
    EXPECT_GE(world.pump.Yields(), 10);
}

TEST_F(PathDateTest, ListsEachFolderOnce) {
    for (int i = 0; i < 20; ++i) tree.File(L"Sub\\" + std::to_wstring(i));
    (void)PathDate(world.system, stored, tree.Path());
    EXPECT_EQ(world.files.Operations().size(), 3U) << "one look at the top, one list per folder";
}

TEST_F(PathDateTest, UnreadableSubFolder_IsLeftOut) {
    tree.File(L"a", "x", kOld);
    tree.File(L"Closed\\b", "x", kNew);
    tree.File(L"Open\\c", "x", kMiddle);
    world.files.FailNth(1, error_number::kPermissionDenied, [](const auto& operation) {
        return operation.call == FileCall::List && operation.path.ends_with(L"Closed");
    });
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kMiddle));
    EXPECT_EQ(world.files.Faults().size(), 1U);
}

TEST_F(PathDateTest, UnreadableFolder_ReturnsFirstDayOf1900) {
    tree.File(L"a", "x", kNew);
    world.files.FailFrom(1, error_number::kPermissionDenied, OnlyCalls({FileCall::List}));
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), kEmptyFolderDate);
}

TEST_F(PathDateTest, FailingDisk_IsReported) {
    world.files.FailNth(1, error_number::kPermissionDenied);
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), kMissingDate);
    const test::ToldError told = world.errors.TakeOne();
    EXPECT_EQ(told.number, 70);
    EXPECT_EQ(told.procedure, L"PathDate");
    EXPECT_EQ(told.container, L"MFileDosShell");
}

TEST_F(PathDateTest, StoredDateUnreadable_ReturnsTheNewestFound) {
    tree.File(L"a", "x", kMiddle);
    tree.Folder(L"Docs«0101»");
    stored.fails = true;
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kMiddle));
    EXPECT_EQ(world.errors.TakeOne().number, 5);
}

TEST_F(PathDateTest, WalksTreesOfThousandsOfLevels) {
    test::EndlessFolders disk(world.disk, 6000, MakeDate(kOld));
    System system = world.With(disk);
    EXPECT_EQ(PathDate(system, stored, L"X:\\d"), MakeDate(kOld) + std::chrono::seconds{6000});
}

TEST_F(PathDateTest, WalksPathsBeyond260Characters) {
    std::wstring relative = L"Top";
    for (int i = 0; i < 30; ++i) relative += L"\\مجلد طويل الاسم جدا";
    tree.File(relative + L"\\f", "x", kNew);
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kNew));
}

TEST_F(PathDateTest, WindowEndsTheWalk_PropagatesTheException) {
    for (int i = 0; i < 10; ++i) tree.File(std::to_wstring(i));
    world.pump.AtYield(5, [&] { world.programEnd.End(1223); });
    EXPECT_THROW((void)PathDate(world.system, stored, tree.Path()), test::ProgramEnded);
    EXPECT_EQ(world.pump.Yields(), 5);
}

TEST(NewestDateOf, UnreadableFolder_Throws) {
    const TempTree tree;
    tree.File(L"Work\\a.txt", "a", kOld);
    tree.File(L"Work\\Sub\\b.txt", "b", kNew);
    TestEnvironment world;
    StoredDates dates;
    EXPECT_EQ(NewestDateOf(world.system, dates, tree.Path(L"Work")), MakeDate(kNew));
    world.files.FailNth(2, error_number::kPermissionDenied, OnlyCalls({FileCall::List}));
    EXPECT_THROW(static_cast<void>(NewestDateOf(world.system, dates, tree.Path(L"Work"))),
                 RuntimeError);
}

}  // namespace
}  // namespace vw::MFileDosShell
