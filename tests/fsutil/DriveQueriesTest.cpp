#include <gtest/gtest.h>

#include "fsutil/FileQueries.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/support/DiskTest.h"
#include "tests/support/ErrorNumber.h"

namespace vw::MFileDosShell {
namespace {

using test::DiskTest;
using test::ErrorOf;
using test::Exists;
using test::FileCall;
using test::OnlyCalls;
using test::OnlyChanges;
using test::ToldError;

// A drive of any kind and size.
class OtherDrive : public test::ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    DriveType DriveTypeOf(std::wstring_view) override { return kind; }
    std::uint64_t FreeSpace(std::wstring_view) override { return free; }

    DriveType kind = DriveType::Unknown;
    std::uint64_t free = 0;
};

class DriveQueriesTest : public DiskTest {
  protected:
    OtherDrive drive{world.disk};
    System system = world.With(drive);
};

using FolderOnFixedDriveTest = DriveQueriesTest;
using FolderFreeSpaceTest = DriveQueriesTest;

TEST_F(FolderOnFixedDriveTest, ReturnsTrueForFixedDisksOnly) {
    drive.kind = DriveType::Fixed;
    EXPECT_TRUE(FolderOnFixedDrive(system, L"X:\\Store"));
    for (const DriveType kind : {DriveType::Removable, DriveType::Network, DriveType::Optical,
                                 DriveType::Memory, DriveType::Unknown}) {
        drive.kind = kind;
        EXPECT_FALSE(FolderOnFixedDrive(system, L"X:\\Store"));
    }
}

TEST_F(FolderOnFixedDriveTest, FailingDisk_IsReported) {
    world.files.FailNth(1, error_number::kNotReady);
    EXPECT_FALSE(FolderOnFixedDrive(world.system, L"C:\\"));
    EXPECT_EQ(world.errors.TakeOne().procedure, L"FolderOnFixedDrive");
}

// The folder for temporary files is everyone's, so the tests use a name that is theirs alone.
class TempPathTest : public DiskTest {
  protected:
    TempPathTest() : name_(L"vwtest «مؤقت» " + std::to_wstring(GetCurrentProcessId())) {}
    ~TempPathTest() override { tree.Remove(Folder()); }

    std::wstring Folder() const {
        const std::wstring path = tree.Path();
        return path.substr(0, path.rfind(L'\\') + 1) + name_;
    }

    std::wstring name_;
};

TEST_F(TempPathTest, NoName_ReturnsTempFolder_DeletesNothing) {
    wchar_t buffer[MAX_PATH + 1] = {};
    GetTempPathW(MAX_PATH + 1, buffer);
    std::wstring expected = buffer;
    expected.pop_back();
    const std::wstring canary = tree.File(L"canary.txt");
    // Should it delete after all, then nothing of value.
    world.files.DieAtNth(1, OnlyChanges());
    EXPECT_EQ(TempPath(world.system, L"", false), expected);
    EXPECT_EQ(TempPath(world.system, L"", true), expected);
    EXPECT_TRUE(Exists(canary));
}

TEST_F(TempPathTest, CreatesTheNamedFolder) {
    EXPECT_FALSE(Exists(Folder()));
    EXPECT_EQ(TempPath(world.system, name_, false), Folder());
    EXPECT_TRUE(Exists(Folder()));
}

TEST_F(TempPathTest, KeepsTheContentsUnlessAskedToStartEmpty) {
    tree.File(Folder() + L"\\Sub\\old.txt");
    EXPECT_EQ(TempPath(world.system, name_, false), Folder());
    EXPECT_TRUE(Exists(Folder() + L"\\Sub\\old.txt"));
    EXPECT_EQ(TempPath(world.system, name_, true), Folder());
    EXPECT_TRUE(Exists(Folder()));
    EXPECT_TRUE(test::ReadTree(Folder()).empty());
}

TEST_F(TempPathTest, StartEmpty_FileOfThatName_IsReplaced) {
    tree.File(Folder(), "a file");
    EXPECT_EQ(TempPath(world.system, name_, true), Folder());
    world.files.CreateFolder(Folder() + L"\\is a folder");
}

TEST_F(TempPathTest, FileInTheWay_IsReported) {
    tree.File(Folder(), "a file");
    EXPECT_EQ(TempPath(world.system, name_, false), Folder());
    ToldError told = world.errors.TakeOne();
    EXPECT_EQ(told.number, error_number::kAlreadyExists);
    EXPECT_EQ(told.procedure, L"TempPath");
    EXPECT_EQ(told.path, Folder());

    tree.Remove(Folder());
    world.files.FailNth(1, error_number::kPermissionDenied, OnlyCalls({FileCall::CreateFolder}));
    EXPECT_EQ(TempPath(world.system, name_, true), Folder());
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
}

TEST_F(TempPathTest, RefusesToEmptyTheTemporaryFolderItself) {
    for (const wchar_t* name : {L".", L"..", L"x\\..", L"..\\..", L"\\"}) {
        world.files.DieAtNth(1, OnlyChanges());
        EXPECT_EQ(TempPath(world.system, name, true), L"");
        EXPECT_EQ(world.errors.TakeOne().number, error_number::kBadName);
        EXPECT_EQ(world.files.Count(), 0);
    }
}

TEST_F(FolderFreeSpaceTest, AcceptsExactlyTheSpaceNeeded) {
    drive.free = 123456;
    EXPECT_EQ(FolderFreeSpace(system, L"X:\\Store", 123456), 123456);
    EXPECT_EQ(FolderFreeSpace(system, L"X:\\Store", 0), 123456);
    EXPECT_EQ(FolderFreeSpace(system, L"X:\\Store", -1), 123456);
}

TEST_F(FolderFreeSpaceTest, ThrowsWhenOneByteIsMissing) {
    drive.free = 123456;
    const RuntimeError error =
        ErrorOf([&] { return FolderFreeSpace(system, L"X:\\Store", 123457); });
    EXPECT_EQ(error.Number(), 1004);
    EXPECT_EQ(error.Description(), L"لا توجد مساحة كافية على القرص\r\nX");
    EXPECT_EQ(error.Path(), L"X:\\Store");
    EXPECT_TRUE(world.errors.All().empty()) << "telling it is up to the caller";
}

TEST_F(FolderFreeSpaceTest, ServerPath_MessageNamesNoDrive) {
    const RuntimeError error =
        ErrorOf([&] { return FolderFreeSpace(system, L"\\\\server\\share\\Store", 1); });
    EXPECT_EQ(error.Description(), L"لا توجد مساحة كافية على القرص\r\n");
}

TEST_F(FolderFreeSpaceTest, FailingDisk_IsReported_NotAsFull) {
    world.files.FailNth(1, error_number::kNotReady);
    EXPECT_EQ(FolderFreeSpace(world.system, L"C:\\", 1000), 0);
    const ToldError told = world.errors.TakeOne();
    EXPECT_EQ(told.number, 71);
    EXPECT_EQ(told.procedure, L"FolderFreeSpace");
}

}  // namespace
}  // namespace vw::MFileDosShell
