// What an add command takes, refuses and selects.

#include <gmock/gmock.h>

#include "tests/list/editing/ListFixture.h"

// Behind the header of Windows, which it builds on.
#include <commctrl.h>

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::wstring kFolderName = L"\\ChooseFolder....Don't modify this line";

class Adding : public ListFixture {
  protected:
    Adding() { list.GetList(); }
    void Drop(const std::vector<std::wstring>& paths) { editing.lsvBackupList_OLEDragDrop(paths); }

    const std::wstring a = tree.File(L"a.txt");
    const std::wstring b = tree.File(L"b.txt");
    const std::wstring sub = tree.Folder(L"Sub");
};

TEST_F(Adding, ItemThatIsThere_SelectsItsRow) {
    Drop({a, b, sub});
    EXPECT_EQ(View().Selected(), 2);
    Drop({Path(L"A.TXT")});
    EXPECT_EQ(View().Selected(), 0);
    dialogs.Expect(b);
    editing.mnuAddFileClick();
    EXPECT_EQ(View().Selected(), 1);
    dialogs.Expect(sub + kFolderName);
    editing.mnuAddFolderClick();
    EXPECT_EQ(View().Selected(), 2);
    EXPECT_EQ(View().Rows().Count(), 3);
}

TEST_F(Adding, OneOfSeveralIsNew_SelectsTheNewRow) {
    Drop({a, b});
    const std::wstring c = tree.File(L"c.txt");
    Drop({c, a});
    EXPECT_EQ(View().Selected(), 2);
}

TEST_F(Adding, NewRowOfALongList_BecomesVisible) {
    std::vector<std::wstring> files;
    for (int i = 0; i < 80; ++i) files.push_back(tree.File(L"f" + std::to_wstring(i)));
    Drop(files);
    View().EnsureVisible(0);
    dialogs.Expect(a);
    editing.mnuAddFileClick();
    EXPECT_GT(SendMessageW(View().Handle(), LVM_GETTOPINDEX, 0, 0), 0);
}

TEST_F(Adding, LongNames_ColumnFitsThem) {
    const std::wstring folder = tree.Folder(std::wstring(60, L'W'));
    const auto load = [&] {
        ListFile(world.ansi.Encode(a));
        list.GetList();
    };
    const auto width = [&] { return SendMessageW(View().Handle(), LVM_GETCOLUMNWIDTH, 0, 0); };
    load();
    const auto shortOnes = width();
    Drop({folder});
    EXPECT_GT(width(), shortOnes);
    load();
    EXPECT_EQ(width(), shortOnes);
    dialogs.Expect(folder + kFolderName);
    editing.mnuAddFolderClick();
    EXPECT_GT(width(), shortOnes);
    load();
    dialogs.Expect(tree.File(std::wstring(60, L'W') + L".txt"));
    editing.mnuAddFileClick();
    EXPECT_GT(width(), shortOnes);
}

TEST_F(Adding, ManyDroppedFiles_WindowsWorkMeanwhile) {
    std::vector<std::wstring> files;
    for (int i = 0; i < 40; ++i) files.push_back(tree.File(L"f" + std::to_wstring(i)));
    world.pump.Restart();
    Drop(files);
    EXPECT_GE(world.pump.Yields(), 40);
}

TEST_F(Adding, NothingCouldBeAdded_LeavesTheSelection) {
    Drop({a, b});
    View().Select(1);
    Drop({Path(L"missing.txt")});
    EXPECT_EQ(View().Selected(), 1);
}

TEST_F(Adding, DroppedDriveRoots_AreRefusedWithOneBox) {
    world.boxes.Expect(L"Add sub path; not a drive");
    Drop({L"C:\\", a, L"Z:\\", L"C:"});
    EXPECT_THAT(Paths(), ElementsAre(a));
    EXPECT_EQ(Saved(), Expected({a}));
}

TEST_F(Adding, FolderTypedByItsPath_IsAdded) {
    const std::wstring deep = tree.Folder(L"Sub\\Deep");
    dialogs.Expect(deep);
    editing.mnuAddFolderClick();
    dialogs.Expect(deep + L"\\");
    editing.AddRule();
    EXPECT_THAT(Paths(), ElementsAre(deep + L"\\", deep + L"\\*"));
}

TEST_F(Adding, DriveTypedByItsPath_IsRefused) {
    for (const auto* typed : {L"C:\\", L"C:"}) {
        dialogs.Expect(typed);
        world.boxes.Expect(L"Add sub path; not a drive");
        editing.mnuAddFolderClick();
    }
    EXPECT_THAT(Paths(), IsEmpty());
}

TEST_F(Adding, FolderDialog_NextDialogHasItsOwnTitle) {
    using enum FileDialogKind;
    for (const FileDialogKind kind : {AddFiles, AddFolder, AddRule, ChooseDestination}) {
        dialogs.Expect(std::nullopt);
        EXPECT_EQ(editing.GetFileFolder(kind), L"");
        EXPECT_NE(dialogs.shown.back().title, L"");
        for (const bool saving : {true, false}) {
            dialogs.Expect(std::nullopt);
            saving ? list.FileNew(false) : list.FileOpen();
            EXPECT_EQ(dialogs.shown.back().title, L"");
        }
    }
}

TEST_F(Adding, LastItemRemoved_IsSavedBeforeTheLogonStartEnds) {
    Drop({a});
    calls.clear();
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.path == state.temporaryListPath && operation.call == FileCall::Write) {
            calls.emplace_back(L"save");
        }
    });
    editing.DelItem();
    EXPECT_THAT(calls, ElementsAre(L"save", L"startup off"));
}

TEST_F(Adding, ClearAll_IsSavedAfterTheLogonStartEnds) {
    Drop({a, b});
    calls.clear();
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.path == state.temporaryListPath && operation.call == FileCall::Write) {
            calls.emplace_back(L"save");
        }
    });
    editing.mnuDelAllClick();
    EXPECT_THAT(calls, ElementsAre(L"startup off", L"save"));
}

TEST_F(Adding, ClearAll_KeepsTheListAsOld) {
    Drop({a, b});
    const std::string before = Saved();
    editing.mnuDelAllClick();
    EXPECT_EQ(Saved(), Expected({}));
    EXPECT_EQ(ReadBytes(state.currentListPath + L".old"), before);
    // An empty list is nothing to keep.
    editing.mnuDelAllClick();
    EXPECT_EQ(ReadBytes(state.currentListPath + L".old"), before);
}

TEST_F(Adding, ClearAll_OneItem_KeepsTheListAsOld) {
    Drop({a});
    const std::string before = Saved();
    editing.mnuDelAllClick();
    EXPECT_EQ(ReadBytes(state.currentListPath + L".old"), before);
}

TEST_F(Adding, Pattern_CancelledWhileTheFirstIsAdded_StopsThere) {
    for (const auto* name : {L"c", L"d", L"e"}) tree.File(std::wstring(L"Sub\\") + name);
    state.cancel.Begin();
    world.pump.Restart();
    world.pump.AtEachYield([this] {
        if (View().Rows().Count() == 1) state.cancel.Request();
    });
    dialogs.Expect(sub + L"\\*");
    editing.mnuAddFileClick();
    EXPECT_EQ(View().Rows().Count(), 1);
}

TEST_F(Adding, FilesOfFolders_CancelledInAnEmptyOne_Stops) {
    tree.Folder(L"Sub\\Empty");
    tree.File(L"Sub\\Full\\c.txt");
    world.pump.Restart();
    world.pump.AtYield(1, [this] { state.cancel.Request(); });
    dialogs.Expect(sub);
    editing.mnuAddFileClick();
    EXPECT_THAT(Paths(), IsEmpty());
}

TEST_F(Adding, FilesOfFolders_LinkIsNotFollowed) {
    tree.File(L"Other\\c.txt");
    if (!tree.Link(L"Sub\\Link", Path(L"Other"))) GTEST_SKIP() << "no links here";
    const std::wstring d = tree.File(L"Sub\\d.txt");
    dialogs.Expect(sub);
    editing.mnuAddFileClick();
    EXPECT_THAT(Paths(), ElementsAre(d));
}

TEST_F(Adding, SessionEndsBetweenTwoFiles_FirstOneIsSaved) {
    dialogs.Expect(tree.Path() + L'\0' + L"a.txt" + L'\0' + L"b.txt");
    EXPECT_EQ(SavedBehindTheFirstRow([this] { editing.mnuAddFileClick(); }), Expected({b}));
    EXPECT_EQ(View().Rows().Count(), 2);
}

}  // namespace
}  // namespace vw::test
