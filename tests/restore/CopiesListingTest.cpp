// Which entries of the copy folder the two lists of the restore view show, and in which order.

#include <gmock/gmock.h>

#include <utility>
#include <vector>

#include "platform/TextDirection.h"
#include "tests/restore/RestoreEnvironment.h"
#include "tests/support/ForwardingFileSystem.h"

// Behind the header of Windows, which it builds on.
#include <commctrl.h>

namespace vw::test {
namespace {

using testing::ElementsAre;

class CopiesListing : public RestoreEnvironment {};

/// Notes which rows of a list are scrolled to. Some systems scroll to the selected row as well, so
/// the rows that are visible do not show it.
class ScrolledRows {
  public:
    explicit ScrolledRows(ListView& list) : list_(list.Handle()) {
        SetWindowSubclass(list_, Subclass, 1, reinterpret_cast<DWORD_PTR>(this));
    }
    ~ScrolledRows() { RemoveWindowSubclass(list_, Subclass, 1); }
    ScrolledRows(const ScrolledRows&) = delete;
    ScrolledRows& operator=(const ScrolledRows&) = delete;

    std::vector<int> rows;

  private:
    static LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR, DWORD_PTR data) {
        if (message == LVM_ENSUREVISIBLE) {
            reinterpret_cast<ScrolledRows*>(data)->rows.push_back(static_cast<int>(wParam));
        }
        return DefSubclassProc(window, message, wParam, lParam);
    }

    HWND list_;
};

TEST_F(CopiesListing, ItemsColumnClick_TurnsTheOrder) {
    CopyFile(L"a«0001».txt");
    CopyFile(L"b«0001».txt");
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), ElementsAre(L"a", L"b"));
    browser.lsvRestore1ColumnClick(0);
    EXPECT_THAT(Items(), ElementsAre(L"b", L"a"));
    browser.lsvRestore1ColumnClick(0);
    EXPECT_THAT(Items(), ElementsAre(L"a", L"b"));
}

TEST_F(CopiesListing, OrderOfItems_StaysForTheNextListing) {
    CopyFile(L"a«0001».txt");
    CopyFile(L"b«0001».txt");
    browser.ListRestoreFiles();
    browser.lsvRestore1ColumnClick(0);
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), ElementsAre(L"b", L"a"));
}

TEST_F(CopiesListing, DateColumn_SortsByTimeNotByText) {
    tree.File(vault + L"\\a«0001».txt", "x", {2024, 11, 2, 9, 0, 0});
    tree.File(vault + L"\\a«0002».txt", "x", {2023, 12, 30, 9, 0, 0});
    tree.File(vault + L"\\a«0003».txt", "x", {2024, 2, 11, 21, 0, 0});
    browser.ListRestoreFiles();
    const int column = browser.Copies().Rows().ColumnOf(L"Date");
    browser.lsvRestore2ColumnClick(column);
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N03", L"N02")) << "the first click sorts downwards";
    browser.lsvRestore2ColumnClick(column);
    EXPECT_THAT(Labels(), ElementsAre(L"N02", L"N03", L"N01"));
}

TEST_F(CopiesListing, Copies_HaveTheIconOfTheirKind) {
    tree.File(vault + L"\\Home«0001»\\a.txt");
    CopyFile(L"Note«0001».txt");
    browser.ListRestoreFiles();
    SelectItem(L"Home");
    EXPECT_EQ(browser.Copies().Rows().At(0).icon, RowIcon::Folder);
    SelectItem(L"Note");
    EXPECT_EQ(browser.Copies().Rows().At(0).icon, RowIcon::File);
}

TEST_F(CopiesListing, FoldersWithAPoint_TwoLocations_AreSeparate) {
    tree.File(vault + L"\\Projects«0001».v2\\a.txt");
    tree.File(vault + L"\\Projects«0101».v2\\a.txt");
    browser.ListRestoreFiles();
    ASSERT_EQ(browser.Items().Rows().Count(), 2);
    for (int row = 0; row < 2; ++row) {
        browser.Items().Select(row);
        browser.ListCopyes(row);
        const std::wstring name = row == 0 ? L"\\Projects«0001».v2" : L"\\Projects«0101».v2";
        EXPECT_THAT(Column(browser.Copies(), L"BackupName"), ElementsAre(vault + name));
    }
}

TEST_F(CopiesListing, FilesWithoutExtension_TwoLocations_AreSeparate) {
    CopyFile(L"README«0001»");
    CopyFile(L"README«0101»");
    browser.ListRestoreFiles();
    ASSERT_EQ(browser.Items().Rows().Count(), 2);
    for (int row = 0; row < 2; ++row) {
        browser.ListCopyes(row);
        const std::wstring name = row == 0 ? L"\\README«0001»" : L"\\README«0101»";
        EXPECT_THAT(Column(browser.Copies(), L"BackupName"), ElementsAre(vault + name));
    }
}

TEST_F(CopiesListing, ClickOnAnItem_MakesItsRowVisible) {
    CopyFile(L"a«0001».txt");
    CopyFile(L"b«0001».txt");
    browser.ListRestoreFiles();
    const ScrolledRows scrolled(browser.Items());
    for (const int row : {1, 0}) {
        browser.Items().Select(row);
        browser.lsvRestore1ItemClick(row);
    }
    EXPECT_THAT(scrolled.rows, ElementsAre(1, 0));
}

TEST_F(CopiesListing, SelectLast_OnlyCopyIsOlder_StaysSelected) {
    CopyFile(L"a«0002».txt");
    browser.ListRestoreFiles();
    browser.SelectLast();
    EXPECT_EQ(browser.Copies().Selected(), -1) << "nobody selected it";
    SelectCopy(L"N02");
    browser.SelectLast();
    EXPECT_EQ(browser.Copies().Selected(), 0);
}

TEST_F(CopiesListing, SelectLast_SelectedCopyIsGone_SelectsTheNewest) {
    CopyFile(L"a«0001».txt");
    const std::wstring second = CopyFile(L"a«0002».txt");
    browser.ListRestoreFiles();
    SelectCopy(L"N02");
    tree.Remove(second);
    browser.SelectLast();
    EXPECT_EQ(browser.Copies().Selected(), 0);
}

TEST_F(CopiesListing, SelectLast_CopyFarDown_IsVisible) {
    for (int number = 10; number < 90; ++number) {
        CopyFile(L"a«00" + std::to_wstring(number) + L"».txt");
    }
    browser.ListRestoreFiles();
    const int last = browser.Copies().Rows().Count() - 1;
    browser.Copies().Select(last);
    const ScrolledRows scrolled(browser.Copies());
    browser.SelectLast();
    EXPECT_EQ(browser.Copies().Selected(), last);
    EXPECT_THAT(scrolled.rows, ElementsAre(last));
}

TEST_F(CopiesListing, ListAnew_ItemFarDown_StaysSelectedAndVisible) {
    for (int number = 10; number < 90; ++number) {
        CopyFile(L"item" + std::to_wstring(number) + L"«0001».txt");
    }
    browser.ListRestoreFiles();
    SelectItem(L"item88");
    const int row = browser.Items().Selected();
    const ScrolledRows scrolled(browser.Items());
    browser.ListAnew();
    EXPECT_EQ(browser.Items().Selected(), row);
    EXPECT_EQ(browser.Copies().Rows().SubItem(0, L"BackupName"), vault + L"\\item88«0001».txt");
    EXPECT_THAT(scrolled.rows, ElementsAre(row));
    browser.ListRestoreFiles();
    EXPECT_THAT(scrolled.rows, ElementsAre(row, 0));
}

// As copies of files of unknown folders are.
TEST_F(CopiesListing, ListAnew_TwoRowsAlike_FirstStaysSelected) {
    CopyFile(L"a«0001».txt");
    CopyFile(L"a«0101».txt");
    browser.ListRestoreFiles();
    browser.ListAnew();
    EXPECT_EQ(browser.Items().Selected(), 0);
}

// Its row shows nothing outside the details view, like a row that is not there.
TEST_F(CopiesListing, ListAnew_DotFileIsGone_SelectsTheFirst) {
    const std::wstring copy = CopyFile(L"«0001».gitignore");
    CopyFile(L"a«0001»");
    browser.Items().SetStyle(ViewStyle::LargeIcons);
    browser.ListRestoreFiles();
    SelectItem(L"");
    tree.Remove(copy);
    browser.ListAnew();
    EXPECT_EQ(browser.Items().Selected(), 0);
    EXPECT_THAT(Labels(), ElementsAre(L"N01"));
}

TEST_F(CopiesListing, Columns_FitTheRows) {
    CopyFile(L"a«0001».txt");
    browser.ListRestoreFiles();
    for (ListView* list : {&browser.Items(), &browser.Copies()}) {
        const auto widths = [list] {
            std::vector<LRESULT> found;
            for (WPARAM column = 0; column < 4; ++column) {
                found.push_back(SendMessageW(list->Handle(), LVM_GETCOLUMNWIDTH, column, 0));
            }
            return found;
        };
        const auto before = widths();
        list->Columns().Fit();
        EXPECT_EQ(widths(), before);
    }
}

TEST_F(CopiesListing, ListedAnew_FormerRowsAreForgotten) {
    CopyFile(L"a«0001».txt");
    browser.ListRestoreFiles();
    browser.ListRestoreFiles();
    EXPECT_EQ(browser.Items().Rows().At(0).tag, 0U);
    EXPECT_EQ(browser.Copies().Rows().At(0).tag, 0U);
}

TEST_F(CopiesListing, ListAnew_NamesAlike_KeepsTheItemOfTheSameType) {
    for (const auto* name : {L"a«0001».doc", L"a«0001».txt", L"b«0001».txt"}) CopyFile(name);
    browser.ListRestoreFiles();
    for (int row = 0; row < 3; ++row) {
        browser.Items().Select(row);
        browser.ListCopyes(row);
        browser.ListAnew();
        EXPECT_EQ(browser.Items().Selected(), row);
    }
}

TEST_F(CopiesListing, ListAnew_ItemIsGone_SelectsTheFirst) {
    CopyFile(L"a«0001».txt");
    CopyFile(L"b«0001».txt");
    const std::wstring last = CopyFile(L"c«0001».txt");
    browser.ListRestoreFiles();
    SelectItem(L"c");
    tree.Remove(last);
    browser.ListAnew();
    EXPECT_EQ(browser.Items().Selected(), 0);
    EXPECT_EQ(browser.Copies().Rows().SubItem(0, L"BackupName"), vault + L"\\a«0001».txt");
}

TEST_F(CopiesListing, ListAnew_NothingWasShown_ListsWhatIsThere) {
    browser.SourceChosen();
    browser.ListAnew();
    EXPECT_THAT(Items(), testing::IsEmpty());
    CopyFile(L"a«0001».txt");
    browser.ListAnew();
    EXPECT_THAT(Items(), ElementsAre(L"a"));
}

/// A drive that lists a folder in another order than that of the names, as some formats do.
class UnsortedDrive final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    void List(std::wstring_view folder, const EntryVisitor& visitor) override {
        std::vector<std::pair<FileInfo, std::wstring>> entries;
        Inner().List(folder,
                     [&](const FolderEntry& entry) { entries.emplace_back(entry, entry.name); });
        for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
            visitor({entry->first, entry->second});
        }
    }
};

TEST_F(CopiesListing, UnsortedDrive_RowIsThatOfTheNewestCopy) {
    for (int state = 1; state <= 2; ++state) {
        BackUp(tree.File(L"Docs\\Letter.txt", "x", {2024, 1, state, 9, 0, 0}));
    }
    UnsortedDrive unsorted(world.files);
    System system{unsorted,         world.pump,       world.boxes, world.errors,
                  world.exitStatus, world.programEnd, world.clock, world.ansi};
    CopiesBrowser there(system, main.form, statusLine, Engine());
    there.RestoreFrom(vault);
    there.SourceChosen();
    there.ListRestoreFiles();
    EXPECT_EQ(browser.Items().Rows().SubItem(0, L"Orginal Location"), tree.Path(L"Docs"));
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02"));
}

TEST_F(CopiesListing, ListLoaded_ShowsTheItemsOfTheDestination) {
    CopyFile(L"a«0001».txt");
    browser.SourceChosen();
    browser.RestoreFrom(L"C:\\");
    browser.ListLoaded(vault);
    EXPECT_EQ(main.form.Text(L"cmbDestination"), drive.Name());
    EXPECT_THAT(Items(), ElementsAre(L"a"));
}

TEST_F(CopiesListing, Shows_TheSelectedItemWhoseCopiesAreListed) {
    const std::wstring first = tree.File(L"Docs\\a.txt");
    const std::wstring second = tree.File(L"Docs\\b.txt");
    BackUp(first);
    BackUp(second);
    browser.ListRestoreFiles();
    EXPECT_TRUE(browser.Shows(first));
    EXPECT_FALSE(browser.Shows(second));
    EXPECT_FALSE(browser.Shows(tree.Path(L"Docs\\c.txt")));
    browser.Items().Select(1);
    EXPECT_FALSE(browser.Shows(first)) << "it is not selected";
    EXPECT_FALSE(browser.Shows(second)) << "its copies are not listed";
    browser.ListCopyes(1);
    EXPECT_TRUE(browser.Shows(second));
}

TEST_F(CopiesListing, Heading_NamesItemAndLocation) {
    const std::wstring name = L"تقرير 2.txt";
    BackUp(tree.File(L"Docs\\" + name));
    browser.ListRestoreFiles();
    EXPECT_EQ(main.form.Text(L"lblCopiesHeading"),
              L"Copies of " + name + L", " + tree.Path(L"Docs"));
    ASSERT_NE(MarkName(name), name);
    LoadedForm arabic(MainForm(), Language::Arabic);
    StatusLine status(arabic.form);
    CopiesBrowser there(world.system, arabic.form, status, Engine());
    there.RestoreFrom(vault);
    there.SourceChosen();
    there.ListRestoreFiles();
    EXPECT_EQ(arabic.form.Text(L"lblCopiesHeading"),
              L"نسخ " + MarkName(name) + L"\u200F، " + MarkPath(tree.Path(L"Docs")));
}

TEST_F(CopiesListing, Heading_UnknownLocation_NamesTheItem) {
    CopyFile(L"a«0001».txt");
    browser.ListRestoreFiles();
    EXPECT_EQ(main.form.Text(L"lblCopiesHeading"), L"Copies of a.txt");
}

TEST_F(CopiesListing, TwoCopiesOfOneLabel_HaveOneRow) {
    CopyFile(L"a«00ab».txt");
    CopyFile(L"a«00cd».txt");
    browser.ListRestoreFiles();
    EXPECT_THAT(Labels(), testing::ElementsAre(L"N00"));
}

TEST_F(CopiesListing, EmptyFile_HasASize) {
    CopyFile(L"a«0001».txt", "");
    browser.ListRestoreFiles();
    EXPECT_EQ(browser.Copies().Rows().SubItem(0, L"Size"), L"0Byte");
}

TEST_F(CopiesListing, EachEntryAndEachCopy_Yields) {
    for (int number = 1; number <= 5; ++number) {
        CopyFile(L"a«000" + std::to_wstring(number) + L"».txt");
        CopyFile(L"other" + std::to_wstring(number) + L".txt");
    }
    browser.ListRestoreFiles();
    world.pump.Restart();
    browser.ListCopyes(0);
    EXPECT_GE(world.pump.Yields(), 5);
    world.pump.Restart();
    browser.ListRestoreFiles();
    const int withOthers = world.pump.Yields();
    for (int number = 1; number <= 5; ++number) {
        tree.Remove(vault + L"\\other" + std::to_wstring(number) + L".txt");
    }
    world.pump.Restart();
    browser.ListRestoreFiles();
    EXPECT_EQ(withOthers - world.pump.Yields(), 5);
}

TEST_F(CopiesListing, EachItem_Yields) {
    const auto yieldsOf = [this](const std::vector<std::wstring>& names) {
        tree.Remove(vault);
        tree.Folder(vault);
        for (const std::wstring& name : names) CopyFile(name);
        world.pump.Restart();
        browser.ListRestoreFiles();
        return world.pump.Yields();
    };
    // The copies of the first item are listed, too.
    const int ofTwo = yieldsOf({L"a«0001».txt", L"b«0001».txt", L"b«0002».txt", L"b«0003».txt"});
    const int ofFour = yieldsOf({L"a«0001».txt", L"b«0001».txt", L"c«0001».txt", L"d«0001».txt"});
    EXPECT_EQ(ofFour - ofTwo, 2);
}

// One folder, one question: it is not known for the second item either.
TEST_F(CopiesListing, FolderOfTwoItemsCannotBeAskedAbout_BothAreOfUnknownPlace) {
    for (const auto* name : {L"Home\\A.txt", L"Home\\B.txt"}) BackUp(tree.File(name, "x"));
    world.files.FailNth(1, error_number::kNotReady, [&](const FileOperation& operation) {
        return operation.call == FileCall::Stat && operation.path == tree.Path(L"Home");
    });
    browser.ListRestoreFiles();
    world.files.Heal();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kNotReady);
    EXPECT_THAT(Column(browser.Items(), L"Orginal Location"), ElementsAre(L"??", L"??"));
}

}  // namespace
}  // namespace vw::test
