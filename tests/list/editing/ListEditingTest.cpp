#include "list/editing/ListEditing.h"

#include <gmock/gmock.h>

#include <iostream>
#include <random>

#include "list/editing/SubItem.h"
#include "list/format/ListText.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "tests/list/editing/ListFixture.h"
#include "tests/support/Histories.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const std::wstring kFolderName = L"\\ChooseFolder....Don't modify this line";

class Editing : public ListFixture {
  protected:
    Editing() {
        list.GetList();
        calls.clear();
    }
};

TEST_F(Editing, AddFile_SameFileInOtherLetterCase_HasOneRow) {
    const std::wstring a = tree.File(L"a.txt");
    dialogs.Expect(a);
    dialogs.Expect(Path(L"A.TXT"));
    editing.mnuAddFileClick();
    editing.mnuAddFileClick();
    EXPECT_THAT(Paths(), ElementsAre(a));
    EXPECT_EQ(Saved(), Expected({a}));
    EXPECT_THAT(calls, Contains(L"startup on"));
    EXPECT_FALSE(dialogs.saving[0]);
}

TEST_F(Editing, AddFile_MissingFile_AddsNothing) {
    dialogs.Expect(Path(L"missing.txt"));
    editing.mnuAddFileClick();
    EXPECT_THAT(Paths(), IsEmpty());
}

TEST_F(Editing, AddFile_SeveralSelected_AreAddedLastFirst) {
    for (const auto* name : {L"a.txt", L"b.txt", L"c.txt"}) tree.File(name);
    dialogs.Expect(tree.Path() + std::wstring(L"\0a.txt\0b.txt\0c.txt", 18));
    editing.mnuAddFileClick();
    EXPECT_THAT(Paths(), ElementsAre(Path(L"c.txt"), Path(L"b.txt"), Path(L"a.txt")));
    EXPECT_THAT(calls, ElementsAre(L"startup on", L"Adding file " + Path(L"c.txt"),
                                   L"Adding file " + Path(L"b.txt"),
                                   L"Adding file " + Path(L"a.txt"), L"BusyHide(true)"));
    EXPECT_EQ(View().Selected(), 2) << "what was added last";
}

TEST_F(Editing, AddFile_Cancelled_StopsAfterTheFile) {
    for (const auto* name : {L"a.txt", L"b.txt", L"c.txt"}) tree.File(name);
    state.cancel.Request();  // of an earlier run
    onMsg = [this] { state.cancel.Request(); };
    dialogs.Expect(tree.Path() + std::wstring(L"\0a.txt\0b.txt\0c.txt", 18));
    editing.mnuAddFileClick();
    EXPECT_THAT(Paths(), ElementsAre(Path(L"c.txt")));
    EXPECT_EQ(Saved(), Expected({Path(L"c.txt")}));
}

TEST_F(Editing, AddFile_MissingFolder_AddsNothing) {
    dialogs.Expect(Path(L"Missing") + std::wstring(L"\0a.txt\0b.txt", 12));
    editing.mnuAddFileClick();
    EXPECT_THAT(Paths(), IsEmpty());
    EXPECT_THAT(calls, ElementsAre(L"startup on", L"BusyHide(true)"));
}

TEST_F(Editing, AddFile_Pattern_AddsEveryFileOfItsFolder) {
    tree.File(L"Sub\\a.txt");
    tree.File(L"Sub\\b.txt");
    tree.File(L"Sub\\Deep\\c.txt");
    state.cancel.Request();  // of an earlier run
    dialogs.Expect(Path(L"Sub\\*"));
    editing.mnuAddFileClick();
    EXPECT_THAT(Paths(), testing::UnorderedElementsAre(Path(L"Sub\\a.txt"), Path(L"Sub\\b.txt")));
    EXPECT_THAT(calls, Contains(L"Adding " + Path(L"Sub\\a.txt")));
}

TEST_F(Editing, AddFile_Folder_AddsEveryFileBelowIt) {
    tree.File(L"Sub\\a.txt");
    tree.File(L"Sub\\Deep\\Deeper\\c.txt");
    tree.Folder(L"Sub\\Empty");
    state.cancel.Request();  // of an earlier run
    dialogs.Expect(Path(L"Sub"));
    editing.mnuAddFileClick();
    EXPECT_THAT(Paths(), ElementsAre(Path(L"Sub\\a.txt"), Path(L"Sub\\Deep\\Deeper\\c.txt")));
}

TEST_F(Editing, AddFolder_AddsAFolderItem) {
    tree.File(L"Sub\\a.txt");
    dialogs.Expect(Path(L"Sub") + kFolderName);
    editing.mnuAddFolderClick();
    EXPECT_THAT(Paths(), ElementsAre(Path(L"Sub\\")));
    EXPECT_EQ(Saved(), Expected({Path(L"Sub\\")}));
    EXPECT_EQ(calls.front(), L"startup on");
    EXPECT_TRUE(dialogs.saving[0]);
    EXPECT_EQ(dialogs.shown[0].fileName, L"ChooseFolder....Don't modify this line");
}

TEST_F(Editing, AddRule_AddsARuleForTheFilesOfAFolder) {
    tree.Folder(L"Sub");
    dialogs.Expect(Path(L"Sub") + kFolderName);
    editing.AddRule();
    EXPECT_THAT(Paths(), ElementsAre(Path(L"Sub\\*")));
    EXPECT_EQ(View().Rows().SubItem(0, L"Name"), L"files in Sub");
}

TEST_F(Editing, AddFolderOrRule_DriveAlone_IsRefused) {
    for (const auto& command : {&ListEditing::mnuAddFolderClick, &ListEditing::AddRule}) {
        dialogs.Expect(L"C:" + kFolderName);
        world.boxes.Expect(L"Add sub path; not a drive");
        (editing.*command)();
    }
    EXPECT_THAT(Paths(), IsEmpty());
    EXPECT_TRUE(editing.PathIsDrive(L"D:", false));
    EXPECT_FALSE(editing.PathIsDrive(L"D:\\x", true));
}

TEST_F(Editing, CancelledDialogs_AddNothing_SwitchTheLogonStartOn) {
    for (int i = 0; i < 3; ++i) dialogs.Expect(std::nullopt);
    editing.mnuAddFileClick();
    editing.AddRule();
    editing.mnuAddFolderClick();
    EXPECT_THAT(Paths(), IsEmpty());
    EXPECT_FALSE(state.listModified);
    EXPECT_THAT(calls, ElementsAre(L"startup on", L"startup on", L"startup on"));
}

TEST_F(Editing, Drop_AddsFilesAndFolders_KeepsTheLogonStart) {
    const std::wstring a = tree.File(L"a.txt");
    tree.File(L"Sub\\b.txt");
    tree.Folder(L"Other");
    editing.lsvBackupList_OLEDragDrop({a, Path(L"Sub"), Path(L"Other\\"), Path(L"missing.txt"), a});
    EXPECT_THAT(Paths(), ElementsAre(a, Path(L"Sub\\"), Path(L"Other\\")));
    EXPECT_EQ(Saved(), Expected({a, Path(L"Sub\\"), Path(L"Other\\")}));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(Editing, SessionEndsDuringADrop_SavesTheItemsAddedSoFar) {
    const std::vector<std::wstring> files{tree.File(L"a.txt"), tree.File(L"b.txt")};
    EXPECT_EQ(SavedBehindTheFirstRow([&] { editing.lsvBackupList_OLEDragDrop(files); }),
              Expected({files[0]}));
}

TEST_F(Editing, DelItem_LastItem_SwitchesTheLogonStartOff) {
    const std::wstring a = tree.File(L"a.txt");
    const std::wstring b = tree.File(L"b.txt");
    editing.lsvBackupList_OLEDragDrop({a, b});
    View().Select(0);
    editing.DelItem();
    EXPECT_EQ(Saved(), Expected({b}));
    EXPECT_EQ(View().Selected(), 0);
    EXPECT_THAT(calls, Not(Contains(L"startup off")));
    editing.DelItem();
    EXPECT_EQ(Saved(), Expected({}));
    EXPECT_THAT(calls, Contains(L"startup off"));
    // A deleted item can be added again.
    editing.lsvBackupList_OLEDragDrop({a});
    EXPECT_THAT(Paths(), ElementsAre(a));
}

TEST_F(Editing, DelItem_SelectsTheNextItemOrTheNewLastOne) {
    std::vector<std::wstring> files;
    for (const auto* name : {L"a.txt", L"b.txt", L"c.txt"}) files.push_back(tree.File(name));
    editing.lsvBackupList_OLEDragDrop(files);
    View().Select(1);
    editing.DelItem();
    EXPECT_EQ(View().Selected(), 1);
    editing.DelItem();
    EXPECT_EQ(View().Selected(), 0);
}

TEST_F(Editing, DelItem_EmptyList_ShowsAMessage) {
    world.boxes.Expect(L"لا يوجد تحديد في قائمة النسخ");
    editing.DelItem();
    EXPECT_TRUE(world.boxes.Shown().back().rightToLeft);
    editing.mnuDelAllClick();
    EXPECT_THAT(calls, ElementsAre(L"startup off"));
}

TEST_F(Editing, DelItem_NoSelection_DeletesNothing) {
    const std::wstring a = tree.File(L"a.txt");
    editing.lsvBackupList_OLEDragDrop({a});
    View().Select(-1);
    DeleteFileW(state.currentListPath.c_str());
    editing.DelItem();
    EXPECT_FALSE(Exists(state.currentListPath)) << "there is nothing to save";
    editing.lsvBackupList_OLEDragDrop({a});
    EXPECT_THAT(Paths(), ElementsAre(a));
}

TEST_F(Editing, ColumnClick_EachClick_ReversesTheOrder) {
    const std::wstring b = tree.File(L"b.txt", "1234567890");
    const std::wstring a = tree.File(L"a.txt", "12");
    const std::wstring c = tree.File(L"c.txt", std::string(5000, 'x'));
    editing.lsvBackupList_OLEDragDrop({b, a, c});
    editing.lsvBackupListColumnClick(0);
    EXPECT_THAT(Paths(), ElementsAre(c, b, a)) << "the first click sorts downwards";
    editing.lsvBackupListColumnClick(View().Rows().ColumnOf(L"Size"));
    EXPECT_THAT(Paths(), ElementsAre(a, b, c)) << "by bytes, not by their text";
    editing.lsvBackupListColumnClick(View().Rows().ColumnOf(L"Size"));
    EXPECT_THAT(Paths(), ElementsAre(c, b, a));
}

TEST_F(Editing, SubItem_ReturnsTheTextOfKeyAndRow) {
    const std::wstring a = tree.File(L"a.txt");
    EXPECT_EQ(SubItem(View(), L"Path"), L"");
    editing.lsvBackupList_OLEDragDrop({a, tree.File(L"b.txt")});
    EXPECT_EQ(SubItem(View(), L"Path", 1), a);
    EXPECT_EQ(SubItem(View(), L"Name", 2), L"b");
    EXPECT_EQ(SubItem(View(), L"Path", 3), L"");
    EXPECT_EQ(SubItem(View(), L"Path"), Path(L"b.txt"));
    View().Select(-1);
    EXPECT_EQ(SubItem(View(), L"Path"), L"");
}

TEST_F(Editing, TwoFilesOfOneName_HaveTheirOwnLocationNumbers) {
    tree.Folder(L"Vault");
    state.BackupTo = Path(L"Vault");
    const std::wstring first = tree.File(L"One\\a.txt");
    const std::wstring second = tree.File(L"Two\\a.txt");
    engine.BackupPath(first, 0, false, false);
    editing.lsvBackupList_OLEDragDrop({first, second});
    EXPECT_EQ(View().Rows().SubItem(0, L"SP"), L"00");
    EXPECT_EQ(View().Rows().SubItem(1, L"SP"), L"01");
}

// Whatever a user does to a list, in whatever order: its file says what a simple model says.
class RandomEdits : public Editing {
  protected:
    void Step() {
        switch (Number(0, 6)) {
            case 0:
            case 1:
                Add();
                break;
            case 2:
                Delete();
                break;
            case 3:
                if (Number(0, 5) == 0) {
                    editing.mnuDelAllClick();
                    model_.clear();
                }
                break;
            case 4:
                editing.lsvBackupListColumnClick(Number(0, 6));
                model_ = Paths();
                break;
            case 5:
                list.GetList();
                break;
            default:
                Fail();
                break;
        }
    }
    void Compare() {
        state.listModified = true;
        list.FileSave();
        EXPECT_EQ(Paths(), model_);
        EXPECT_EQ(Saved(), Expected(model_));
    }
    int Number(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

    std::mt19937 random_;
    std::vector<std::wstring> model_;
    std::vector<std::wstring> choices_;

  private:
    bool Has(std::wstring_view path) {
        for (const std::wstring& item : model_) {
            if (EqualNoCase(item, path)) return true;
        }
        return false;
    }
    void Add() {
        std::vector<std::wstring> dropped;
        for (int i = Number(1, 4); i > 0; --i) {
            dropped.push_back(choices_[static_cast<std::size_t>(
                Number(0, static_cast<int>(choices_.size()) - 1))]);
        }
        editing.lsvBackupList_OLEDragDrop(dropped);
        for (const std::wstring& path : dropped) {
            const std::wstring item =
                path.find(L"Folder") != std::wstring::npos ? path + L"\\" : path;
            if (Exists(path) && !Has(item)) model_.push_back(item);
        }
    }
    void Delete() {
        if (model_.empty()) return;
        const int row = Number(0, static_cast<int>(model_.size()) - 1);
        View().Select(row);
        editing.DelItem();
        model_.erase(model_.begin() + row);
    }
    // A disk that fails while the list is saved forgets no edit.
    void Fail() {
        world.files.FailNth(Number(1, 6), error_number::kDiskFull);
        Delete();
        world.files.Heal();
        static_cast<void>(world.errors.Take());
    }
};

TEST_F(RandomEdits, RandomHistories_SavedFileEqualsTheModel) {
    for (int i = 0; i < 8; ++i) {
        choices_.push_back(tree.File(L"Files\\f" + std::to_wstring(i) + L".txt"));
        choices_.push_back(tree.Folder(L"Folder " + std::to_wstring(i)));
    }
    choices_.push_back(tree.File(L"Files\\رسالة.txt"));
    choices_.push_back(tree.File(L"Files\\A & B.txt"));
    choices_.push_back(Path(L"Files\\F1.TXT"));
    choices_.push_back(Path(L"missing.txt"));
    const auto histories = Histories::Usually(20);
    int edits = 0;
    for (unsigned seed = histories.first; seed != histories.End() && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        random_.seed(seed);
        for (int step = 0; step < 30 && !HasFailure(); ++step, ++edits) {
            Step();
            Compare();
        }
    }
    std::cout << edits << " edits compared with the model\n";
    RecordProperty("edits", edits);
}

}  // namespace
}  // namespace vw::test
