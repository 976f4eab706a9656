// What is in a list's file and is not in the window is not lost, and no list gets another's
// rows.

#include <gmock/gmock.h>

#include <atomic>
#include <future>
#include <thread>

#include "list/editing/BackupList.h"
#include "platform/NamedLock.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/list/editing/ListFixture.h"

namespace vw::test {
namespace {

using testing::ElementsAre;

/// A list is open while another one is asked for that cannot be had.
class UnopenedList : public ListFixture {
  protected:
    template <class Command>
    void ExpectTheOpenOneAfter(Command&& command) {
        const std::wstring item = tree.File(L"a.txt");
        ListFile(world.ansi.Encode(item));
        list.GetList();
        const std::wstring open = state.currentListPath;
        command();
        EXPECT_EQ(world.errors.TakeOne().number, error_number::kPathNotFound);
        EXPECT_EQ(state.currentListPath, open);
        EXPECT_THAT(Paths(), ElementsAre(item));
        state.listModified = true;
        EXPECT_TRUE(list.FileSave());
        EXPECT_FALSE(Exists(open + L".old")) << "everything in its file is shown";
    }
};

TEST_F(UnopenedList, Open_FolderIsMissing_KeepsTheOpenList) {
    ExpectTheOpenOneAfter([this] { list.FileOpen(Path(L"Unplugged\\Other.vwl")); });
}

TEST_F(UnopenedList, OpenDefault_FolderIsMissing_KeepsTheOpenList) {
    state.applicationFolder = Path(L"Unplugged");
    ExpectTheOpenOneAfter([this] { list.OpenDefaultList(); });
}

TEST_F(UnopenedList, New_FolderIsMissing_KeepsTheOpenList) {
    dialogs.Expect(Path(L"Unplugged\\New.vwl"));
    ExpectTheOpenOneAfter([this] { list.FileNew(false); });
}

TEST_F(UnopenedList, Open_AfterChangesWereGivenUp_TheyAreNotForgotten) {
    ListFile("");
    list.GetList();
    state.listModified = true;
    world.files.FillDiskFrom(1);
    world.boxes.Expect(L"could not be saved", BoxAnswer::Yes);
    list.FileOpen(Path(L"Unplugged\\Other.vwl"));
    EXPECT_EQ(world.errors.Take().size(), 2U);
    EXPECT_TRUE(state.listModified);
}

class KeptList : public ListFixture {};

TEST_F(KeptList, Save_DestinationBehindTheLastItem_KeepsTheOldFile) {
    const std::wstring a = tree.File(L"a.txt");
    const std::string text =
        world.ansi.Encode(L"BackupTo: D:\\A\r\n" + a + L"\r\nBackupTo: E:\\B\r\n");
    ListFile(text);
    list.GetList();
    state.listModified = true;
    list.FileSave();
    EXPECT_EQ(ReadBytes(state.currentListPath + L".old"), text);
}

TEST_F(KeptList, Save_FirstListCouldNotBeRead_KeepsItsFile) {
    ListFile("what nobody has seen");
    world.files.FailNth(1, error_number::kPermissionDenied, OnlyCalls({FileCall::Read}));
    list.GetList();
    EXPECT_EQ(world.errors.TakeOne().procedure, L"GetList");
    world.files.Heal();
    state.listModified = true;
    list.FileSave();
    EXPECT_EQ(ReadBytes(state.currentListPath + L".old"), "what nobody has seen");
}

TEST_F(KeptList, Save_FileIsGone_IsWrittenAnew) {
    const std::wstring a = tree.File(L"a.txt");
    ListFile(world.ansi.Encode(a + L"\r\n" + Path(L"gone.txt")));
    list.GetList();
    world.disk.RemoveFile(state.currentListPath);
    state.listModified = true;
    EXPECT_TRUE(list.FileSave());
    EXPECT_EQ(Saved(), Expected({a}));
}

// Two windows may show one list, or have one temporary file.
TEST_F(KeptList, Save_AnotherWindowIsSaving_WaitsForIt) {
    ListFile("");
    list.GetList();
    for (const std::wstring& held : {state.currentListPath, state.temporaryListPath}) {
        std::promise<void> isHeld;
        std::atomic<bool> isReleased = false;
        std::thread other([&] {
            constexpr DWORD kSaving = 200;
            NamedLock turn(L"list", held);
            EXPECT_TRUE(turn.TryTake());
            isHeld.set_value();
            Sleep(kSaving);
            isReleased = true;
        });
        isHeld.get_future().wait();
        state.listModified = true;
        EXPECT_TRUE(list.FileSave());
        EXPECT_TRUE(isReleased) << held;
        other.join();
    }
}

TEST_F(KeptList, Save_SeveralDestinations_KeepsTheOldFile) {
    const std::wstring a = tree.File(L"a.txt");
    const std::string text =
        world.ansi.Encode(L"BackupTo: D:\\A\r\n" + a + L"\r\nBackupTo: E:\\B\r\n" + a + L"\r\n");
    ListFile(text);
    list.GetList();
    state.listModified = true;
    list.FileSave();
    EXPECT_EQ(Saved(), Expected({a}));
    EXPECT_EQ(ReadBytes(state.currentListPath + L".old"), text);
}

TEST_F(KeptList, Save_OneDestination_KeepsNoOldFile) {
    ListFile(world.ansi.Encode(L"BackupTo: D:\\A\r\nBackages: 4\r\n" + tree.File(L"a.txt")));
    list.GetList();
    state.listModified = true;
    list.FileSave();
    EXPECT_FALSE(world.disk.Stat(state.currentListPath + L".old"));
}

TEST_F(KeptList, Save_AnotherWindowSavedMeanwhile_KeepsItsFile) {
    const std::wstring a = tree.File(L"a.txt");
    ListFile(world.ansi.Encode(a));
    list.GetList();
    ListFile("the edit of another window");
    state.listModified = true;
    list.FileSave();
    EXPECT_EQ(Saved(), Expected({a}));
    const std::wstring old = state.currentListPath + L".old";
    EXPECT_EQ(ReadBytes(old), "the edit of another window");
    world.disk.RemoveFile(old);
    state.listModified = true;
    list.FileSave();
    EXPECT_FALSE(world.disk.Stat(old)) << "what this window wrote itself";
}

TEST_F(KeptList, Save_ReadOnlyList_IsRefusedUnlessUnchanged) {
    const std::string text = world.ansi.Encode(tree.File(L"a.txt"));
    ListFile(text);
    SetFileAttributesW(state.currentListPath.c_str(), FILE_ATTRIBUTE_READONLY);
    list.GetList();
    state.listModified = true;
    EXPECT_FALSE(list.FileSave());
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kAccessError);
    EXPECT_EQ(Saved(), text);
    SetFileAttributesW(state.currentListPath.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(list.FileSave());
    SetFileAttributesW(state.currentListPath.c_str(), FILE_ATTRIBUTE_READONLY);
    state.listModified = true;
    EXPECT_TRUE(list.FileSave()) << "it says already what the window shows";
    SetFileAttributesW(state.currentListPath.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(KeptList, ItemOfAFailingDisk_IsKept) {
    const std::wstring a = tree.File(L"a.txt");
    ListFile(world.ansi.Encode(a));
    for (const bool silent : {false, true}) {
        state.silentRun = silent;
        world.files.FailNth(2, error_number::kPermissionDenied, OnlyCalls({FileCall::Stat}));
        list.GetList();
        EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
        EXPECT_THAT(Paths(), ElementsAre(a));
        EXPECT_EQ(View().Rows().SubItem(0, L"Size"), L"");
        EXPECT_EQ(View().Rows().SubItem(0, L"Date"), L"");
    }
}

/// A list with another item than its file, about to be saved.
class RefusedSave : public ListFixture {
  protected:
    RefusedSave() {
        ListFile(before_);
        list.GetList();
        list.Rows().AddToList(item_);
        state.listModified = true;
    }
    void RefuseReplacing(int error, bool writingToo = false) {
        world.files.FailFrom(1, error, [=, this](const FileOperation& operation) {
            return operation.call == FileCall::Replace ||
                   (writingToo && operation.call == FileCall::Write &&
                    operation.path == state.currentListPath);
        });
    }
    void ExpectNothingBeside() {
        EXPECT_FALSE(Exists(state.currentListPath + L".new"));
        EXPECT_FALSE(Exists(state.temporaryListPath));
    }

    const std::string before_ = "BackupTo: D:\\Vault\r\n";
    const std::wstring item_ = tree.File(L"a.txt");
};

TEST_F(RefusedSave, ListCannotBeReplaced_IsWrittenInPlace) {
    for (const int error : {error_number::kPermissionDenied, error_number::kAccessError}) {
        state.listModified = true;
        RefuseReplacing(error);
        EXPECT_TRUE(list.FileSave());
        world.files.Heal();
        EXPECT_EQ(Saved(), Expected({item_}));
        ExpectNothingBeside();
    }
}

TEST_F(RefusedSave, ListCannotBeWrittenEither_StaysAndIsReported) {
    RefuseReplacing(error_number::kPermissionDenied, true);
    EXPECT_FALSE(list.FileSave());
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
    world.files.Heal();
    EXPECT_EQ(Saved(), before_);
    EXPECT_FALSE(Exists(state.currentListPath + L".new"));
}

TEST_F(RefusedSave, DiskIsFull_ListStaysAndIsReported) {
    RefuseReplacing(error_number::kDiskFull);
    EXPECT_FALSE(list.FileSave());
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kDiskFull);
    world.files.Heal();
    EXPECT_EQ(Saved(), before_);
}

}  // namespace
}  // namespace vw::test
