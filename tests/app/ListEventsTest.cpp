// Keys, clicks and drops in the lists of the main window.

#include <gmock/gmock.h>

#include "tests/app/ApplicationFixture.h"
#include "tests/app/StartedCommands.h"
#include "ui/resource.h"

// Behind the header of Windows, which they build on.
#include <commctrl.h>
#include <shlobj.h>

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

/// A window with one item, which has a copy.
class ListEvents : public App {
  protected:
    ListEvents() {
        WriteDefaultList({letter});
        Start();
        Choose(ID_mnuBackup);
        Main().List(L"lsvBackupList").Select(0);
    }
    /// A message of a list to its window.
    void Notify(const wchar_t* list, int id, UINT code, int row) {
        NMITEMACTIVATE message{};
        message.hdr = {Main().Control(list), static_cast<UINT_PTR>(id), code};
        message.iItem = row;
        SendMessageW(Main().Handle(), WM_NOTIFY, static_cast<WPARAM>(id),
                     reinterpret_cast<LPARAM>(&message));
        Rethrow();
    }
    /// The heading of the first column.
    void ClickHeading(const wchar_t* list, int id) {
        NMLISTVIEW message{};
        message.hdr = {Main().Control(list), static_cast<UINT_PTR>(id), LVN_COLUMNCLICK};
        message.iItem = -1;
        SendMessageW(Main().Handle(), WM_NOTIFY, static_cast<WPARAM>(id),
                     reinterpret_cast<LPARAM>(&message));
        Rethrow();
    }
    /// Selects a row as the user does.
    void Select(const wchar_t* list, int row) {
        LVITEMW change{};
        change.stateMask = LVIS_SELECTED;
        for (const UINT selected : {0U, static_cast<UINT>(LVIS_SELECTED)}) {
            change.state = selected;
            SendMessageW(Main().Control(list), LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(&change));
        }
    }
    void Press(const wchar_t* list, WPARAM key) {
        SendMessageW(Main().Control(list), WM_KEYDOWN, key, 0);
        SendMessageW(Main().Control(list), WM_KEYUP, key, 0);
        Rethrow();
    }
    /// What `work` opens.
    [[nodiscard]] std::vector<std::wstring> Opened(const std::function<void()>& work) {
        const StartedCommands started;
        work();
        static_cast<void>(world.errors.Take());
        return started.Lines();
    }

    const std::wstring copy = drive.Backup() + L"\\Letter«0001».txt";
};

TEST_F(ListEvents, OpenButton_OpensWhatIsSelectedWhereTheFocusIs) {
    const struct {
        const wchar_t* list;
        bool isCopySelected;
        std::wstring opened;
    } rows[] = {
        {L"lsvBackupList", true, letter}, {L"lsvRestore1", true, copy},
        {L"lsvRestore2", true, copy},     {L"lsvRestore1", false, letter},
        {L"lsvRestore2", false, letter},
    };
    for (const auto& row : rows) {
        ListView& copies = Main().List(L"lsvRestore2");
        copies.Select(row.isCopySelected ? 0 : -1);
        SetFocus(Main().Control(row.list));
        EXPECT_THAT(Opened([this] { Choose(ID_Toolbar1_ActionOpen); }),
                    ElementsAre(EndsWith(L" " + row.opened)))
            << row.isCopySelected;
    }
}

TEST_F(ListEvents, DoubleClick_OpensItemOrCopy) {
    EXPECT_THAT(Opened([this] { Notify(L"lsvBackupList", ID_lsvBackupList, LVN_ITEMACTIVATE, 0); }),
                ElementsAre(EndsWith(L" " + letter)));
    EXPECT_THAT(Opened([this] { Notify(L"lsvRestore2", ID_lsvRestore2, LVN_ITEMACTIVATE, 0); }),
                ElementsAre(EndsWith(L" " + copy)));
    EXPECT_THAT(Opened([this] { Notify(L"lsvRestore1", ID_lsvRestore1, LVN_ITEMACTIVATE, 0); }),
                IsEmpty());
}

TEST_F(ListEvents, ClickOnAHeading_SortsThatListAlone) {
    tree.File(drive.Backup() + L"\\Zoo«0001».txt");
    Windows().browser.ListRestoreFiles();
    Windows().list.Rows().AddToList(tree.File(L"Zebra.txt"));
    const struct {
        const wchar_t* name;
        int id;
    } lists[] = {{L"lsvBackupList", ID_lsvBackupList}, {L"lsvRestore1", ID_lsvRestore1}};
    const auto first = [this](const wchar_t* list) {
        return Main().List(list).Rows().At(0).cells[0].text;
    };
    for (const auto& clicked : lists) {
        for (int clicks = 0; clicks < 2; ++clicks) {
            std::vector<std::wstring> before;
            for (const auto& list : lists) before.push_back(first(list.name));
            ClickHeading(clicked.name, clicked.id);
            const bool isItems = clicked.id == ID_lsvBackupList;
            EXPECT_NE(first(clicked.name), before[isItems ? 0 : 1]);
            EXPECT_EQ(first(lists[isItems ? 1 : 0].name), before[isItems ? 1 : 0]);
        }
    }
}

TEST_F(ListEvents, ClickOnAHeadingOfTheCopies_SortsThem) {
    tree.File(drive.Backup() + L"\\Letter«0002».txt");
    Windows().browser.ListRestoreFiles();
    Windows().browser.RestoredPath(letter);
    ListView& copies = Main().List(L"lsvRestore2");
    ASSERT_EQ(copies.Rows().Count(), 2);
    const std::wstring before = copies.Rows().SubItem(0, L"BackupName");
    std::vector<std::wstring> firsts;
    for (int clicks = 0; clicks < 2; ++clicks) {
        ClickHeading(L"lsvRestore2", ID_lsvRestore2);
        firsts.push_back(copies.Rows().SubItem(0, L"BackupName"));
    }
    EXPECT_NE(firsts[0], firsts[1]);
}

TEST_F(ListEvents, DeleteKey_Items_RemovesTheItemAndOpensNothing) {
    world.boxes.AnswerAll(BoxAnswer::Yes);
    EXPECT_THAT(Opened([this] { Press(L"lsvBackupList", VK_DELETE); }), IsEmpty());
    EXPECT_THAT(Paths(), IsEmpty());
    EXPECT_TRUE(Exists(copy));
}

TEST_F(ListEvents, DeleteKey_StoredItems_AsksForAllCopies) {
    world.boxes.Expect(L"كافة النسخ", BoxAnswer::No);
    Press(L"lsvRestore1", VK_DELETE);
}

TEST_F(ListEvents, DeleteKey_Copies_AsksForTheOne) {
    world.boxes.Expect(L"[N01]", BoxAnswer::No);
    Press(L"lsvRestore2", VK_DELETE);
}

TEST_F(ListEvents, OtherKeys_ChangeAndOpenNothing) {
    for (const auto* list : {L"lsvBackupList", L"lsvRestore1", L"lsvRestore2"}) {
        EXPECT_THAT(Opened([&] { Press(list, VK_F9); }), IsEmpty());
    }
    EXPECT_THAT(Paths(), ElementsAre(letter));
}

TEST_F(ListEvents, DeleteKey_ListOfOneItem_KeepsIt) {
    Windows().main.KeepToOneItem();
    Press(L"lsvBackupList", VK_DELETE);
    EXPECT_THAT(Paths(), ElementsAre(letter));
}

// The view may show the copies of another item meanwhile.
TEST_F(ListEvents, ClickOnTheSelectedItem_ShowsItsCopies) {
    tree.File(drive.Backup() + L"\\Aaa«0001».txt");
    Windows().browser.ListRestoreFiles();
    ListView& stored = Main().List(L"lsvRestore1");
    ASSERT_EQ(stored.Rows().SubItem(stored.Selected(), L"Name"), L"Aaa");
    Notify(L"lsvBackupList", ID_lsvBackupList, NM_CLICK, 0);
    EXPECT_EQ(stored.Rows().SubItem(stored.Selected(), L"Name"), L"Letter");
    EXPECT_FALSE(Windows().frmBusyDialog.Window().IsVisible()) << "only the status line shows it";
}

TEST_F(ListEvents, ClickBesideTheRows_ChangesNothing) {
    Notify(L"lsvBackupList", ID_lsvBackupList, NM_CLICK, -1);
    EXPECT_EQ(Main().List(L"lsvBackupList").Selected(), 0);
}

TEST_F(ListEvents, ClickOnTheItemWhoseCopiesAreShown_KeepsTheChosenCopy) {
    tree.File(drive.Backup() + L"\\Letter«0002».txt");
    Windows().browser.ListRestoreFiles();
    Windows().browser.RestoredPath(letter);
    ListView& copies = Main().List(L"lsvRestore2");
    ASSERT_EQ(copies.Rows().Count(), 2);
    copies.Select(1);
    Notify(L"lsvBackupList", ID_lsvBackupList, NM_CLICK, 0);
    EXPECT_EQ(copies.Selected(), 1);
}

TEST_F(ListEvents, DoubleClick_LeavesTheOrderOfTheRows) {
    Windows().list.Rows().AddToList(tree.File(L"Zebra.txt"));
    Windows().list.Rows().AddToList(tree.File(L"Ant.txt"));
    const auto before = Paths();
    static_cast<void>(
        Opened([this] { Notify(L"lsvBackupList", ID_lsvBackupList, LVN_ITEMACTIVATE, 0); }));
    EXPECT_EQ(Paths(), before);
}

TEST_F(ListEvents, ClickOnAHeading_SavesNothing) {
    DeleteFileW(state.currentListPath.c_str());
    ClickHeading(L"lsvBackupList", ID_lsvBackupList);
    EXPECT_FALSE(Exists(state.currentListPath));
}

// The number of that row is the code of the Delete key.
TEST_F(ListEvents, SelectionOfTheRowWithTheNumberOfTheDeleteKey_DeletesNothing) {
    for (int i = 0; i < VK_DELETE + 1; ++i) {
        Windows().list.Rows().AddToList(tree.File(L"Many\\f" + std::to_wstring(i) + L".txt"));
    }
    const auto before = Paths();
    Select(L"lsvBackupList", VK_DELETE);
    EXPECT_EQ(Paths(), before);
}

TEST_F(ListEvents, SelectionOfAStoredItem_ShowsItsCopies) {
    tree.File(drive.Backup() + L"\\Zoo«0001».txt");
    Windows().browser.ListRestoreFiles();
    ListView& copies = Main().List(L"lsvRestore2");
    ASSERT_EQ(copies.Rows().SubItem(0, L"BackupName"), copy);
    Select(L"lsvRestore1", 1);
    EXPECT_EQ(copies.Rows().SubItem(0, L"BackupName"), drive.Backup() + L"\\Zoo«0001».txt");
}

TEST_F(ListEvents, SelectionOfAStoredItemFarDown_MakesItsRowVisible) {
    for (int i = 0; i < 60; ++i) {
        tree.File(drive.Backup() + L"\\Note" + std::to_wstring(i) + L"«0001».txt");
    }
    Choose(ID_mnuBackup);
    ListView& stored = Main().List(L"lsvRestore1");
    const int last = stored.Rows().Count() - 1;
    Select(L"lsvRestore1", last);
    RECT row{};
    row.left = LVIR_BOUNDS;
    SendMessageW(Main().Control(L"lsvRestore1"), LVM_GETITEMRECT, static_cast<WPARAM>(last),
                 reinterpret_cast<LPARAM>(&row));
    RECT area{};
    GetClientRect(Main().Control(L"lsvRestore1"), &area);
    EXPECT_LE(row.bottom, area.bottom);
}

TEST_F(ListEvents, DroppedFile_IsAdded) {
    const std::wstring file = tree.File(L"Dropped.txt");
    const std::size_t bytes = sizeof(DROPFILES) + (file.size() + 2) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GHND, bytes);
    auto* const drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    drop->fWide = TRUE;
    std::copy(file.begin(), file.end(), reinterpret_cast<wchar_t*>(drop + 1));
    GlobalUnlock(memory);
    SendMessageW(Main().Control(L"lsvBackupList"), WM_DROPFILES, reinterpret_cast<WPARAM>(memory),
                 0);
    EXPECT_THAT(Paths(), ElementsAre(letter, file));
}

TEST_F(ListEvents, SelectionOfAnItem_ShowsItsCopies) {
    tree.File(drive.Backup() + L"\\Aaa«0001».txt");
    Windows().browser.ListRestoreFiles();
    Main().List(L"lsvBackupList").Select(-1);
    Select(L"lsvBackupList", 0);
    ASSERT_EQ(Main().List(L"lsvBackupList").Selected(), 0);
    ListView& stored = Main().List(L"lsvRestore1");
    EXPECT_EQ(stored.Rows().SubItem(stored.Selected(), L"Name"), L"Letter");
}

}  // namespace
}  // namespace vw::test
