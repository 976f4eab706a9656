#include <gtest/gtest.h>

#include "fsutil/FileQueries.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/fsutil/StoredDates.h"
#include "tests/support/EndlessFolders.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestEnvironment.h"

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

TEST(PathDate, MissingPath_ReturnsFirstDayOf1000) {
    const TempTree tree;
    tree.File(L"a");
    TestEnvironment world;
    StoredDates stored;
    for (const std::wstring& path : {tree.Path(L"missing"), tree.Path(L"missing«0101».txt"),
                                     tree.Path(L"*"), std::wstring()}) {
        const Date date = PathDate(world.system, stored, path);
        EXPECT_EQ(date, kMissingDate);
        EXPECT_EQ(PartsOf(date), (DateParts{1000, 1, 1, 0, 0, 0}));
    }
    EXPECT_TRUE(stored.asked.empty());
}

TEST(PathDate, File_ReturnsItsOwnDate) {
    const TempTree tree;
    const std::wstring file = tree.File(L"ملف.txt", "x", kMiddle);
    TestEnvironment world;
    StoredDates stored;
    EXPECT_EQ(PathDate(world.system, stored, file), MakeDate(kMiddle));
}

TEST(PathDate, Folder_ReturnsDateOfTheNewestFileInItsTree) {
    const TempTree tree;
    tree.File(L"a", "x", kMiddle);
    tree.File(L"Sub\\Deeper\\b", "x", kOld);
    TestEnvironment world;
    StoredDates stored;
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kMiddle));
    tree.File(L"Sub\\Deeper\\c", "x", kNew);
    tree.SetAttributes(L"Sub\\Deeper\\c", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kNew));
    EXPECT_EQ(PathDate(world.system, stored, tree.Path() + L"\\"), MakeDate(kNew));
    EXPECT_EQ(PathDate(world.system, stored, tree.Path(L"Sub")), MakeDate(kNew));
}

TEST(PathDate, IgnoresTheDatesOfFolders) {
    const TempTree tree;
    tree.File(L"Sub\\a", "x", kOld);
    tree.SetDate(L"Sub", kNew);
    TestEnvironment world;
    StoredDates stored;
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kOld));
}

TEST(PathDate, FolderWithoutFiles_ReturnsFirstDayOf1900) {
    const TempTree tree;
    tree.Folder(L"Sub\\Deeper");
    TestEnvironment world;
    StoredDates stored;
    const Date date = PathDate(world.system, stored, tree.Path());
    EXPECT_EQ(date, kEmptyFolderDate);
    EXPECT_EQ(PartsOf(date), (DateParts{1900, 1, 1, 0, 0, 0}));
}

TEST(PathDate, Copy_ReturnsItsStoredDate) {
    const TempTree tree;
    const std::wstring file = tree.File(L"f«0101».txt", "x", kNew);
    const std::wstring folder = tree.Folder(L"Docs«0203»");
    tree.File(L"Docs«0203»\\inside", "x", kNew);
    TestEnvironment world;
    StoredDates stored;
    stored.dates[file] = MakeDate(kOld);
    stored.dates[folder] = MakeDate(kMiddle);
    EXPECT_EQ(PathDate(world.system, stored, file), MakeDate(kOld));
    EXPECT_EQ(PathDate(world.system, stored, folder), MakeDate(kMiddle));
}

TEST(PathDate, FolderWithACopyFolderOnly_ReturnsItsStoredDate) {
    const TempTree tree;
    const std::wstring copy = tree.Folder(L"Docs«0101»");
    tree.File(L"Docs«0101»\\newer", "x", kNew);
    TestEnvironment world;
    StoredDates stored;
    stored.dates[copy] = MakeDate(kMiddle);
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kMiddle));
    ASSERT_EQ(stored.asked.size(), 1U);
    EXPECT_EQ(stored.asked[0], copy);
}

TEST(PathDate, FileNamedAsACopyInAFolder_IsReadAsAFile) {
    const TempTree tree;
    tree.File(L"f«0101».txt", "x", kMiddle);
    TestEnvironment world;
    StoredDates stored;
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kMiddle));
    EXPECT_TRUE(stored.asked.empty());
}

TEST(PathDate, RecognisesCopyMarksAnywhereInThePath) {
    const TempTree tree;
    const std::wstring below = tree.File(L"a«b»c\\plain.txt", "x", kNew);
    const std::wstring split = tree.Folder(L"left«\\right»");
    tree.File(L"no»order«\\x", "x", kOld);
    TestEnvironment world;
    StoredDates stored;
    stored.dates[below] = MakeDate(kMiddle);
    stored.dates[split] = MakeDate(kMiddle);
    EXPECT_EQ(PathDate(world.system, stored, below), MakeDate(kMiddle));
    EXPECT_EQ(PathDate(world.system, stored, tree.Path(L"left«")), MakeDate(kMiddle))
        << "its sub-folder's path has both marks";
    EXPECT_EQ(PathDate(world.system, stored, tree.Path(L"no»order«")), MakeDate(kOld));
}

TEST(PathDate, ProcessesMessagesAfterEachFileAndSubFolder) {
    const TempTree tree;
    for (int i = 0; i < 6; ++i) tree.File(std::to_wstring(i));
    for (int i = 0; i < 4; ++i) tree.Folder(L"Sub" + std::to_wstring(i));
    TestEnvironment world;
    StoredDates stored;
    (void)PathDate(world.system, stored, tree.Path());
    EXPECT_GE(world.pump.Yields(), 10);
}

TEST(PathDate, ListsEachFolderOnce) {
    const TempTree tree;
    for (int i = 0; i < 20; ++i) tree.File(L"Sub\\" + std::to_wstring(i));
    TestEnvironment world;
    StoredDates stored;
    (void)PathDate(world.system, stored, tree.Path());
    EXPECT_EQ(world.files.Operations().size(), 3U) << "one look at the top, one list per folder";
}

TEST(PathDate, UnreadableSubFolder_IsLeftOut) {
    const TempTree tree;
    tree.File(L"a", "x", kOld);
    tree.File(L"Closed\\b", "x", kNew);
    tree.File(L"Open\\c", "x", kMiddle);
    TestEnvironment world;
    StoredDates stored;
    world.files.FailNth(1, error_number::kPermissionDenied, [](const auto& operation) {
        return operation.call == FileCall::List && operation.path.ends_with(L"Closed");
    });
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kMiddle));
    EXPECT_EQ(world.files.Faults().size(), 1U);
}

TEST(PathDate, UnreadableFolder_ReturnsFirstDayOf1900) {
    const TempTree tree;
    tree.File(L"a", "x", kNew);
    TestEnvironment world;
    StoredDates stored;
    world.files.FailFrom(1, error_number::kPermissionDenied, OnlyCalls({FileCall::List}));
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), kEmptyFolderDate);
}

TEST(PathDate, FailingDisk_IsReported) {
    const TempTree tree;
    TestEnvironment world;
    StoredDates stored;
    world.files.FailNth(1, error_number::kPermissionDenied);
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), kMissingDate);
    const test::ToldError told = world.errors.TakeOne();
    EXPECT_EQ(told.number, 70);
    EXPECT_EQ(told.procedure, L"PathDate");
    EXPECT_EQ(told.container, L"MFileDosShell");
}

TEST(PathDate, StoredDateUnreadable_ReturnsTheNewestFound) {
    const TempTree tree;
    tree.File(L"a", "x", kMiddle);
    tree.Folder(L"Docs«0101»");
    TestEnvironment world;
    StoredDates stored;
    stored.fails = true;
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kMiddle));
    EXPECT_EQ(world.errors.TakeOne().number, 5);
}

TEST(PathDate, WalksTreesOfThousandsOfLevels) {
    TestEnvironment world;
    StoredDates stored;
    test::EndlessFolders disk(world.disk, 6000, MakeDate(kOld));
    System system = world.With(disk);
    EXPECT_EQ(PathDate(system, stored, L"X:\\d"), MakeDate(kOld) + std::chrono::seconds{6000});
}

TEST(PathDate, WalksPathsBeyond260Characters) {
    const TempTree tree;
    std::wstring relative = L"Top";
    for (int i = 0; i < 30; ++i) relative += L"\\مجلد طويل الاسم جدا";
    tree.File(relative + L"\\f", "x", kNew);
    TestEnvironment world;
    StoredDates stored;
    EXPECT_EQ(PathDate(world.system, stored, tree.Path()), MakeDate(kNew));
}

TEST(PathDate, WindowEndsTheWalk_PropagatesTheException) {
    const TempTree tree;
    for (int i = 0; i < 10; ++i) tree.File(std::to_wstring(i));
    TestEnvironment world;
    StoredDates stored;
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
