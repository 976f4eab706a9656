// What the rows of the backup list show, and which paths become rows.

#include "list/editing/ListRows.h"

#include <gmock/gmock.h>

#include "platform/WindowsHeader.h"
#include "tests/list/editing/ListFixture.h"

// Behind the header above, which it builds on.
#include <commctrl.h>

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

const std::wstring kFolderName = L"\\ChooseFolder....Don't modify this line";

class ListRowsTest : public ListFixture {
  protected:
    ListRowsTest() {
        list.GetList();
        calls.clear();
    }

    /// Whether the header of a column shows a direction of sorting.
    bool IsSortMarked(std::wstring_view column) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        const auto header =
            reinterpret_cast<HWND>(SendMessageW(View().Handle(), LVM_GETHEADER, 0, 0));
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(View().Rows().ColumnOf(column)),
                     reinterpret_cast<LPARAM>(&item));
        return (item.fmt & (HDF_SORTUP | HDF_SORTDOWN)) != 0;
    }
};

TEST_F(ListRowsTest, Add_FolderWithoutSeparator_ShowsTypeFolder) {
    list.Rows().AddToList(tree.Folder(L"Sub"));
    EXPECT_EQ(View().Rows().SubItem(0, L"Type"), L"Folder");
}

TEST_F(ListRowsTest, Add_FileWithSeparator_ShowsNoTypeAndNoSize) {
    const std::wstring file = tree.File(L"a.txt", "1234");
    list.Rows().AddToList(file + L"\\");
    if (View().Rows().Count() == 0) GTEST_SKIP() << "this system finds no file by such a path";
    EXPECT_EQ(View().Rows().SubItem(0, L"Type"), L"");
    EXPECT_EQ(View().Rows().SubItem(0, L"Size"), L"");
}

TEST_F(ListRowsTest, Add_Rule_ShowsItsFolderAsLocation) {
    list.Rows().AddToList(tree.Folder(L"Sub") + L"\\*");
    EXPECT_EQ(View().Rows().SubItem(0, L"Location"), Path(L"Sub"));
    EXPECT_EQ(View().Rows().SubItem(0, L"SP"), L"00");
}

TEST_F(ListRowsTest, Add_AfterSorting_RemovesTheSortMark) {
    editing.lsvBackupList_OLEDragDrop({tree.File(L"a.txt"), tree.File(L"b.txt")});
    editing.lsvBackupListColumnClick(0);
    ASSERT_TRUE(IsSortMarked(L"Name"));
    list.Rows().AddToList(tree.File(L"c.txt"));
    EXPECT_FALSE(IsSortMarked(L"Name"));
}

TEST_F(ListRowsTest, AddFolder_TextIsAlreadyShown_AddsNothing) {
    View().Add(tree.Folder(L"Sub") + L"\\", RowIcon::Folder);
    dialogs.Expect(Path(L"Sub") + kFolderName);
    editing.mnuAddFolderClick();
    EXPECT_EQ(View().Rows().Count(), 1);
    View().Add(Path(L"Other") + L"\\more", RowIcon::Folder);
    dialogs.Expect(tree.Folder(L"Other") + kFolderName);
    editing.mnuAddFolderClick();
    EXPECT_EQ(View().Rows().Count(), 3) << "another text that begins with the path";
}

TEST_F(ListRowsTest, AddFolder_RootOfADrive_AddsNothing) {
    dialogs.Expect(L"C:\\" + kFolderName);
    editing.mnuAddFolderClick();
    EXPECT_EQ(View().Rows().Count(), 0);
}

TEST_F(ListRowsTest, AddFilesOfFolder_CancelledInASubFolder_StopsThere) {
    tree.File(L"Sub\\a.txt");
    tree.File(L"Sub\\Deep\\b.txt");
    tree.File(L"Sub\\Deep\\c.txt");
    tree.File(L"Sub\\Last\\d.txt");
    onMsg = [this] {
        if (View().Rows().Count() == 1) state.cancel.Request();
    };
    dialogs.Expect(Path(L"Sub"));
    editing.mnuAddFileClick();
    EXPECT_THAT(Paths(), ElementsAre(Path(L"Sub\\a.txt"), Path(L"Sub\\Deep\\b.txt")));
}

}  // namespace
}  // namespace vw::test
