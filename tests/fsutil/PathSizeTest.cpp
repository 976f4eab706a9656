#include <gtest/gtest.h>

#include "fsutil/FileQueries.h"
#include "fsutil/WorkingName.h"
#include "platform/WindowsHeader.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/DiskTest.h"
#include "tests/support/EndlessFolders.h"

namespace vw::MFileDosShell {
namespace {

using test::FileCall;
using test::OnlyCalls;

using PathSizeTest = test::DiskTest;
using CPathSizeTest = test::DiskTest;

// Files of one and more gibibytes, without a disk that holds them.
class HugeFiles : public test::ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    std::optional<FileInfo> Stat(std::wstring_view path) override {
        FileInfo facts;
        facts.isFolder = !path.ends_with(L".bin");
        facts.size = facts.isFolder ? 0 : kSize;
        return facts;
    }
    void List(std::wstring_view, const EntryVisitor& visitor) override {
        for (const std::wstring_view name : {L"a.bin", L"b.bin"}) {
            FolderEntry entry;
            entry.name = name;
            entry.size = kSize;
            visitor(entry);
        }
    }
    static constexpr std::uint64_t kSize = 3'000'000'000U;
};

std::wstring WithLocalSign(std::wstring text) {
    wchar_t sign[8] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, sign, 8);
    const std::size_t point = text.find(L'.');
    if (point != std::wstring::npos) text[point] = sign[0];
    return text;
}

TEST_F(PathSizeTest, File_ReturnsItsLength) {
    tree.File(L"ملف.txt", "12345");
    tree.File(L"empty", "");
    EXPECT_EQ(PathSize(world.system, tree.Path(L"ملف.txt")), 5);
    EXPECT_EQ(PathSize(world.system, tree.Path(L"ملف.txt"), true), 5);
    EXPECT_EQ(PathSize(world.system, tree.Path(L"empty")), 0);
}

TEST_F(PathSizeTest, Folder_CountsItsOwnFilesOrTheWholeTree) {
    tree.File(L"a", "1");
    tree.File(L"b", "22");
    tree.File(L"Sub\\c", "333");
    tree.File(L"Sub\\Deeper\\d", "4444");
    tree.SetAttributes(L"Sub\\Deeper", FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(PathSize(world.system, tree.Path()), 3);
    EXPECT_EQ(PathSize(world.system, tree.Path(), false), 3);
    EXPECT_EQ(PathSize(world.system, tree.Path(), true), 10);
    EXPECT_EQ(PathSize(world.system, tree.Path() + L"\\", true), 10);
    EXPECT_EQ(PathSize(world.system, tree.Path(L"Sub"), false), 3);
}

TEST_F(PathSizeTest, MissingPath_ReturnsMinusOne) {
    tree.File(L"a");
    EXPECT_EQ(PathSize(world.system, tree.Path(L"missing")), -1);
    EXPECT_EQ(PathSize(world.system, tree.Path(L"missing"), true), -1);
    EXPECT_EQ(PathSize(world.system, tree.Path(L"*")), -1);
    EXPECT_EQ(PathSize(world.system, L""), -1);
}

TEST_F(PathSizeTest, EmptyFolder_ReturnsZero) {
    EXPECT_EQ(PathSize(world.system, tree.Path()), 0);
    EXPECT_EQ(PathSize(world.system, tree.Path(), true), 0);
}

TEST_F(PathSizeTest, ReturnsSizesBeyondTwoGibibytes) {
    HugeFiles disk(world.disk);
    System system = world.With(disk);
    EXPECT_EQ(PathSize(system, L"X:\\a.bin"), 3'000'000'000);
    EXPECT_EQ(PathSize(system, L"X:\\Top"), 6'000'000'000);
    EXPECT_EQ(PathSize(system, L"X:\\Top", true), 6'000'000'000);
}

TEST_F(PathSizeTest, ProcessesMessagesAfterEachFile) {
    for (int i = 0; i < 10; ++i) tree.File(std::to_wstring(i));
    (void)PathSize(world.system, tree.Path());
    EXPECT_GE(world.pump.Yields(), 10);
    world.pump.Restart();
    (void)PathSize(world.system, tree.Path(), true);
    EXPECT_GE(world.pump.Yields(), 10);
}

TEST_F(PathSizeTest, ListsEachFolderOnce) {
    for (int i = 0; i < 10; ++i) tree.File(L"Sub\\" + std::to_wstring(i));
    (void)PathSize(world.system, tree.Path(), true);
    EXPECT_EQ(world.files.Operations().size(), 3U) << "one look at the top, one list per folder";
}

TEST_F(PathSizeTest, UnreadableSubFolder_IsLeftOut) {
    tree.File(L"a", "1");
    tree.File(L"Closed\\b", "22");
    tree.File(L"Open\\c", "333");
    world.files.FailNth(1, error_number::kPermissionDenied, [](const auto& operation) {
        return operation.call == FileCall::List && operation.path.ends_with(L"Closed");
    });
    EXPECT_EQ(PathSize(world.system, tree.Path(), true), 4);
    EXPECT_EQ(world.files.Faults().size(), 1U);
}

TEST_F(PathSizeTest, UnreadableFolder_ReturnsZero) {
    tree.File(L"a", "1");
    for (const bool wholeTree : {false, true}) {
        world.files.FailFrom(1, error_number::kPermissionDenied, OnlyCalls({FileCall::List}));
        EXPECT_EQ(PathSize(world.system, tree.Path(), wholeTree), 0);
    }
}

TEST_F(PathSizeTest, FailingDisk_IsReported) {
    world.files.FailNth(1, error_number::kNotReady);
    EXPECT_EQ(PathSize(world.system, tree.Path()), -1);
    const test::ToldError told = world.errors.TakeOne();
    EXPECT_EQ(told.number, 71);
    EXPECT_EQ(told.procedure, L"PathSize");
    EXPECT_EQ(told.container, L"MFileDosShell");
}

TEST_F(PathSizeTest, WalksTreesOfThousandsOfLevels) {
    test::EndlessFolders disk(world.disk, 5000, kNoDate);
    System system = world.With(disk);
    EXPECT_EQ(PathSize(system, L"X:\\d", true), 5000);
    EXPECT_EQ(disk.listings, 5000);
}

TEST_F(PathSizeTest, DriveLetterAlone_MeansItsCurrentFolder) {
    tree.File(L"a", "1");
    tree.File(L"Sub\\b", "22");
    const test::CurrentFolder current(tree.Path());
    EXPECT_EQ(PathSize(world.system, tree.Path().substr(0, 2), true), 3);
}

TEST_F(CPathSizeTest, FileOrWholeTreeOfAFolder_IsWrittenWithItsUnit) {
    const std::wstring file = tree.File(L"a", std::string(1076, 'x'));
    tree.File(L"Sub\\b", std::string(460, 'x'));
    EXPECT_EQ(CPathSize(world.system, file), WithLocalSign(L"1.1KByte"));
    EXPECT_EQ(CPathSize(world.system, tree.Path()), WithLocalSign(L"1.5KByte"));
    EXPECT_EQ(CPathSize(world.system, tree.Folder(L"empty")), L"0Byte");
}

TEST_F(CPathSizeTest, MissingPath_ReturnsEmptyText) {
    EXPECT_EQ(CPathSize(world.system, tree.Path(L"missing")), L"");
    EXPECT_EQ(CPathSize(world.system, tree.Path(L"*")), L"");
    EXPECT_EQ(CPathSize(world.system, L""), L"");
}

TEST_F(CPathSizeTest, FailingDisk_IsReported) {
    world.files.FailNth(1, error_number::kPermissionDenied);
    EXPECT_EQ(CPathSize(world.system, tree.Path()), L"");
    EXPECT_EQ(world.errors.TakeOne().procedure, L"CPathSize");
}

TEST_F(PathSizeTest, LeavesOutTheProgramsOwnEntries) {
    tree.File(L"a", "1");
    tree.File(std::wstring(kLockFileName), "22");
    EXPECT_EQ(PathSize(world.system, tree.Path(), false), 1);
    EXPECT_EQ(PathSize(world.system, tree.Path(), true), 1);
}

TEST(CSize, UsesTheDecimalSignOfTheUser) {
    wchar_t usual[8] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, usual, 8);
    ASSERT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, L";"));
    const std::wstring size = CSize(1536);
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, usual);
    EXPECT_EQ(size, L"1;5KByte");
}

}  // namespace
}  // namespace vw::MFileDosShell
