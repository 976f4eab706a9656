#include "restore/CopiesBrowser.h"

#include <gmock/gmock.h>

#include "platform/RuntimeError.h"
#include "tests/restore/RestoreEnvironment.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Browser : public RestoreEnvironment {};

TEST_F(Browser, ListsNothingBeforeADriveIsChosen) {
    CopyFile(L"a«0001».txt");
    CopiesBrowser fresh = Unbound();
    fresh.ListRestoreFiles();
    EXPECT_EQ(browser.Items().Rows().Count(), 0);
    fresh.SourceChosen();
    fresh.ListRestoreFiles();
    EXPECT_EQ(browser.Items().Rows().Count(), 1);
}

TEST_F(Browser, RestoreFrom_UsesTheDriveAndCreatesItsFolder) {
    tree.Remove(vault);
    EXPECT_EQ(main.form.Text(L"cmbDestination"), drive.Name());
    EXPECT_EQ(browser.RestoreFrom(), vault);
    EXPECT_TRUE(Exists(vault)) << "looking makes it";
}

TEST_F(Browser, RestoreFrom_AbsentDrive_UsesC) {
    browser.RestoreFrom(L"Q:\\anything");
    EXPECT_EQ(main.form.Text(L"cmbDestination"), L"Q:");
    EXPECT_EQ(browser.RestoreFrom(), L"C:\\Backup");
    EXPECT_EQ(main.form.Text(L"cmbDestination"), L"C:");
}

TEST_F(Browser, CommentsOnly_ListsNothing) {
    CopyFile(L"a«0001».txt");
    browser.ListRestoreFiles();
    EXPECT_EQ(browser.Copies().Rows().Count(), 1);
    tree.Remove(vault + L"\\a«0001».txt");
    CopyFile(L"a«0001».txt.vwc");
    CopyFile(L"b«0001».vwc");
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), IsEmpty());
    EXPECT_EQ(browser.Copies().Rows().Count(), 0);
}

TEST_F(Browser, GroupsCopiesByItemAndLocation) {
    for (const auto* name : {L"Report«0001».doc", L"Report«0002».doc", L"Report«0101».doc"}) {
        CopyFile(name);
    }
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), ElementsAre(L"Report", L"Report"));
    EXPECT_THAT(Column(browser.Items(), L"Type"), ElementsAre(L".doc", L".doc"));
    EXPECT_THAT(Column(browser.Items(), L"SP"), ElementsAre(L"0", L"1"));
    EXPECT_EQ(browser.Items().Selected(), 0);
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02"));
}

TEST_F(Browser, InterleavedItems_HaveOneRowEach) {
    for (const auto* name :
         {L"Report«0001».doc", L"Report«0001».txt", L"Report«0002».doc", L"Report«0002».txt"}) {
        CopyFile(name);
    }
    browser.ListRestoreFiles();
    EXPECT_THAT(Column(browser.Items(), L"Type"), testing::UnorderedElementsAre(L".doc", L".txt"));
}

TEST_F(Browser, FolderCopy_IsShownAsAFolderWithItsSize) {
    const std::wstring letters = tree.Folder(L"Home\\Letters");
    tree.File(L"Home\\Letters\\a.txt", std::string(1000, 'a'));
    tree.File(L"Home\\Letters\\Deep\\b.txt", std::string(24, 'b'));
    BackUp(letters + L"\\");
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), ElementsAre(L"Letters"));
    EXPECT_EQ(browser.Items().Rows().At(0).icon, RowIcon::Folder);
    EXPECT_EQ(browser.Items().Rows().SubItem(0, L"Type"), L"Folder");
    EXPECT_EQ(browser.Items().Rows().SubItem(0, L"Orginal Location"), tree.Path(L"Home"));
    EXPECT_EQ(browser.Copies().Rows().SubItem(0, L"Size"), L"1024Byte");
    EXPECT_EQ(browser.Copies().Rows().SubItem(0, L"BackupName"), vault + L"\\Letters«0001»");
}

TEST_F(Browser, Labels_SafetyCopies_BeginWithU) {
    CopyFile(L"a«0002».txt");
    CopyFile(L"a«0021».txt");
    CopyFile(L"a«00ab».txt");
    browser.ListRestoreFiles();
    EXPECT_THAT(Labels(), ElementsAre(L"N00", L"N02", L"U01"));
}

TEST_F(Browser, ForeignNames_ListingContinues) {
    for (const auto* name : {L"x«abcd».txt", L"«0001»", L"«0001».txt", L"a«0001»b«0002».txt",
                             L"a«»«0001».txt", L"five«00010».txt", L"# [x]«0001».txt"}) {
        CopyFile(name);
    }
    tree.Folder(vault + L"\\twin«0001»");
    CopyFile(L"twin«0002»");
    browser.ListRestoreFiles();
    EXPECT_GE(browser.Items().Rows().Count(), 5);
    for (int row = 0; row < browser.Items().Rows().Count(); ++row) {
        browser.Items().Select(row);
        browser.lsvRestore1ItemClick(row);
    }
    SelectItem(L"# [x]");
    EXPECT_THAT(Labels(), ElementsAre(L"N01"));
}

TEST_F(Browser, ShowsLocationsAsPlainNumbers) {
    CopyFile(L"x«0501».doc");
    CopyFile(L"x«1201».doc");
    browser.ListRestoreFiles();
    EXPECT_THAT(Column(browser.Items(), L"SP"), ElementsAre(L"5", L"12"));
}

TEST_F(Browser, OtherView_ColumnsAreEmpty_LocationIsZero) {
    CopyFile(L"Docs«0101»");
    CopyFile(L"Docs«0001»");
    browser.Items().SetStyle(ViewStyle::LargeIcons);
    browser.ListRestoreFiles();
    EXPECT_THAT(Column(browser.Items(), L"SP"), ElementsAre(L"", L""));
    browser.ListCopyes(1);
    EXPECT_EQ(browser.Copies().Rows().SubItem(0, L"BackupName"), vault + L"\\Docs«0001»");
}

TEST_F(Browser, NoNewestCopy_SelectsTheFirstOfSeveral) {
    CopyFile(L"a«0002».txt");
    CopyFile(L"a«0003».txt");
    browser.ListRestoreFiles();
    EXPECT_EQ(browser.Copies().Selected(), 0);
    tree.Remove(vault + L"\\a«0002».txt");
    browser.ListRestoreFiles();
    EXPECT_EQ(browser.Copies().Selected(), -1) << "one copy that is not the newest";
}

TEST_F(Browser, ColumnClick_SortsByValueAndReverses) {
    CopyFile(L"a«0001».txt", std::string(900, 'x'));
    CopyFile(L"a«0002».txt", std::string(5000, 'x'));
    CopyFile(L"a«0003».txt", "x");
    browser.ListRestoreFiles();
    browser.lsvRestore2ColumnClick(browser.Copies().Rows().ColumnOf(L"Size"));
    EXPECT_THAT(Labels(), ElementsAre(L"N02", L"N01", L"N03"));
    browser.lsvRestore2ColumnClick(browser.Copies().Rows().ColumnOf(L"Size"));
    EXPECT_THAT(Labels(), ElementsAre(L"N03", L"N01", L"N02"));
    // The order stays for the next listing.
    browser.ListCopyes(0);
    EXPECT_THAT(Labels(), ElementsAre(L"N03", L"N01", L"N02"));
}

TEST_F(Browser, FindsTheRowOfAProtectedItem) {
    const std::wstring first = tree.File(L"One\\Report.doc");
    const std::wstring second = tree.File(L"Two\\Report.doc");
    const std::wstring work = tree.Folder(L"Work");
    tree.File(L"Work\\a.txt");
    for (const std::wstring& item : {first, second, work + L"\\"}) BackUp(item);
    browser.ListRestoreFiles();
    browser.RestoredPath(second);
    EXPECT_EQ(browser.Items().Rows().SubItem(browser.Items().Selected(), L"SP"), L"1");
    browser.RestoredPath(L"REPORT.doc");
    EXPECT_EQ(browser.Items().Rows().SubItem(browser.Items().Selected(), L"SP"), L"1")
        << "no match";
    browser.RestoredPath(work + L"\\*");
    EXPECT_EQ(browser.Items().Rows().SubItem(browser.Items().Selected(), L"Name"), L"Work");
    browser.RestoredPath(work + L"\\");
    EXPECT_EQ(browser.Copies().Rows().SubItem(0, L"BackupName"), vault + L"\\Work«0001»");
}

TEST_F(Browser, TwoRowsOfOneName_FirstIsFound) {
    for (const wchar_t* name : {L"Photos.2019", L"Photos.2020"}) {
        const std::wstring folder = tree.Folder(name);
        tree.File(folder + L"\\a.txt");
        BackUp(folder + L"\\");
    }
    browser.ListRestoreFiles();
    ASSERT_EQ(Items(), (std::vector<std::wstring>{L"Photos", L"Photos"}));
    browser.Items().Select(1);
    browser.RestoredPath(tree.Path(L"Photos"));
    EXPECT_EQ(browser.Items().Selected(), 0);
}

// A new list has no item to select.
TEST_F(Browser, RestoredPath_ItemWithoutCopies_LeavesTheLists) {
    CopyFile(L"a«0001».txt");
    browser.ListRestoreFiles();
    for (const std::wstring& item : {tree.Path(L"b.txt"), std::wstring()}) {
        browser.RestoredPath(item);
        EXPECT_EQ(browser.Items().Selected(), 0);
        EXPECT_THAT(Labels(), ElementsAre(L"N01"));
    }
}

TEST_F(Browser, NothingListed_HasNoSelection) {
    browser.ListRestoreFiles();
    EXPECT_EQ(browser.ListedRow(), -1);
    browser.SelectLast();
    EXPECT_FALSE(browser.Selection());
    Unbound().SelectLast();
    EXPECT_THAT(Status(), IsEmpty()) << "no drive was exchanged";
}

TEST_F(Browser, FolderWithAPoint_CopiesAreListed) {
    const std::wstring folder = tree.Folder(L"Projects.v2");
    tree.File(L"Projects.v2\\a.txt", "1", {2024, 1, 1, 0, 0, 0});
    BackUp(folder + L"\\");
    tree.File(L"Projects.v2\\a.txt", "2", {2024, 1, 2, 0, 0, 0});
    BackUp(folder + L"\\");
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), ElementsAre(L"Projects"));
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02"));
    browser.Items().Select(-1);
    browser.RestoredPath(folder + L"\\");
    EXPECT_EQ(browser.Items().Selected(), 0);
}

// A folder and a file of one name share their copies' numbers.
TEST_F(Browser, FolderWithAPointWasAFile_AllCopiesAreListed) {
    CopyFile(L"Projects«0001».v2\\a.txt");
    CopyFile(L"Projects«0001».v2.vwc", "comment");
    CopyFile(L"Projects«0002».v2");
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), ElementsAre(L"Projects"));
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02"));
}

TEST_F(Browser, ItemsBelowAFolderWithAPoint_CopiesAreListed) {
    const std::wstring docs = tree.Folder(L"j.smith\\My\\Docs");
    tree.File(L"j.smith\\My\\Docs\\a.txt", "1", {2024, 1, 1, 0, 0, 0});
    const std::wstring note = tree.File(L"k.jones\\Note", "n", {2024, 1, 1, 0, 0, 0});
    for (int day = 1; day <= 2; ++day) {
        tree.SetDate(L"j.smith\\My\\Docs\\a.txt", {2024, 1, day, 0, 0, 0});
        tree.SetDate(L"k.jones\\Note", {2024, 1, day, 0, 0, 0});
        BackUp(docs + L"\\");
        BackUp(note);
    }
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), ElementsAre(L"Docs", L"Note"));
    EXPECT_THAT(Column(browser.Items(), L"Type"), ElementsAre(L"Folder", L""));
    EXPECT_THAT(Column(browser.Items(), L"Orginal Location"),
                ElementsAre(tree.Path(L"j.smith\\My"), tree.Path(L"k.jones")));
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02"));
    EXPECT_EQ(browser.Copies().Rows().SubItem(1, L"BackupName"),
              vault + L"\\Docs«0002».smith\\My\\Docs");
    SelectItem(L"Note");
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02"));
    EXPECT_EQ(browser.Copies().Rows().SubItem(0, L"BackupName"),
              vault + L"\\Note«0001».jones\\Note");
    browser.RestoredPath(docs + L"\\");
    EXPECT_EQ(browser.Items().Selected(), 0);
}

TEST_F(Browser, FailedListing_IsReported_NextOneWorks) {
    CopyFile(L"a«0001».txt");
    world.files.FailNth(1, error_number::kPermissionDenied, OnlyCalls({FileCall::List}));
    browser.ListRestoreFiles();
    EXPECT_EQ(world.errors.TakeOne().procedure, L"ListRestoreFiles");
    world.files.Heal();
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), ElementsAre(L"a"));
}

TEST_F(Browser, SecondListingDuringTheFirst_HasNoEffect) {
    for (int i = 0; i < 20; ++i) CopyFile(L"a" + std::to_wstring(i) + L"«0001».txt");
    for (const int yield : {1, 5, 25, 45}) {
        world.pump.Restart();
        world.pump.AtYield(yield, [&] { browser.ListRestoreFiles(); });
        browser.ListRestoreFiles();
        EXPECT_EQ(browser.Items().Rows().Count(), 20) << yield;
    }
}

TEST_F(Browser, RowsAppearDuringAListing_NoneIsSelectedYet) {
    for (const auto* name : {L"a«0001».txt", L"b«0001».txt", L"c«0001».txt"}) CopyFile(name);
    browser.ListRestoreFiles();
    const int yields = world.pump.Yields();
    bool wasRowThere = false;
    for (int yield = 1; yield <= yields; ++yield) {
        world.pump.Restart();
        world.pump.AtYield(yield, [&] {
            const int rows = browser.Items().Rows().Count();
            if (rows == 3) return;
            wasRowThere |= rows > 0;
            EXPECT_EQ(browser.ListedRow(), -1) << yield;
        });
        browser.ListRestoreFiles();
    }
    EXPECT_TRUE(wasRowThere);
}

// A user who clicks on the next item does not wait for the copies of the one before.
TEST_F(Browser, OtherItemChosenDuringAListing_CopiesAreNotMixed) {
    for (int number = 1; number <= 5; ++number) {
        const std::wstring digits = L"«000" + std::to_wstring(number) + L"»";
        tree.File(vault + L"\\Big" + digits + L"\\x.txt", "big");
        if (number < 3) CopyFile(L"Small" + digits + L".txt", "small");
    }
    browser.ListRestoreFiles();
    ASSERT_THAT(Items(), ElementsAre(L"Big", L"Small"));
    world.pump.Restart();
    browser.ListCopyes(0);
    const int yields = world.pump.Yields();
    ASSERT_GT(yields, 5);
    for (int yield = 1; yield <= yields; ++yield) {
        world.pump.Restart();
        world.pump.AtYield(yield, [&] {
            browser.ListCopyes(1);
            SelectCopy(L"N02");
        });
        browser.ListCopyes(0);
        EXPECT_EQ(browser.Copies().Selected(), 1) << yield;
        EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02")) << yield;
        EXPECT_THAT(Column(browser.Copies(), L"BackupName"),
                    testing::Each(testing::HasSubstr(L"Small")))
            << yield;
    }
    // Or on a drive without copies.
    tree.Folder(L"C:\\Backup");
    if (!ReadTree(L"C:\\Backup").empty()) GTEST_SKIP() << "somebody keeps copies on C:";
    world.pump.Restart();
    world.pump.AtYield(2, [&] {
        browser.RestoreFrom(L"C:\\");
        browser.ListRestoreFiles();
    });
    browser.ListCopyes(0);
    EXPECT_THAT(Labels(), IsEmpty());
}

TEST_F(Browser, RowIsNotThere_ListsNoCopiesOfAnotherItem) {
    const std::wstring emptyHeading = main.form.Text(L"lblCopiesHeading");
    CopyFile(L"a«0001».txt");
    browser.ListRestoreFiles();
    ASSERT_THAT(Labels(), ElementsAre(L"N01"));
    for (const int row : {-1, 1}) {
        browser.ListCopyes(row);
        EXPECT_THAT(Labels(), IsEmpty());
        EXPECT_EQ(browser.ListedRow(), -1);
        EXPECT_FALSE(browser.Selection());
        EXPECT_EQ(main.form.Text(L"lblCopiesHeading"), emptyHeading);
    }
}

TEST_F(Browser, FoldersWithAndWithoutAPoint_HaveTheirOwnCopies) {
    const std::wstring plain = tree.Folder(L"Work\\Projects");
    const std::wstring dotted = tree.Folder(L"Work\\Projects.v2");
    tree.File(L"Work\\Projects\\a.txt");
    tree.File(L"Work\\Projects.v2\\a.txt");
    BackUp(plain + L"\\");
    BackUp(dotted + L"\\");
    browser.ListRestoreFiles();
    ASSERT_THAT(Items(), ElementsAre(L"Projects", L"Projects"));
    for (const auto& [item, copy] : {std::pair(plain, vault + L"\\Projects«0001»"),
                                     std::pair(dotted, vault + L"\\Projects«0001».v2")}) {
        browser.RestoredPath(item + L"\\");
        EXPECT_THAT(Column(browser.Copies(), L"BackupName"), ElementsAre(copy));
    }
}

// Deleting all copies of the one must not delete those of the other.
TEST_F(Browser, CopiesOfAFolderWithAPointAreGone_ListsNone) {
    for (const wchar_t* name : {L"Projects", L"Projects.v2"}) {
        const std::wstring folder = tree.Folder(std::wstring(L"Work\\") + name);
        tree.File(folder + L"\\a.txt");
        BackUp(folder + L"\\");
    }
    CopyFile(L"Projects«1».v2", "the user's own");
    browser.ListRestoreFiles();
    tree.Remove(vault + L"\\Projects«0001».v2");
    browser.RestoredPath(tree.Path(L"Work\\Projects.v2\\"));
    EXPECT_THAT(Column(browser.Copies(), L"BackupName"), IsEmpty());
}

TEST_F(Browser, SelectLast_KeepsTheSelectedCopy) {
    for (const auto* name : {L"a«0001».txt", L"a«0002».txt", L"a«0003».txt"}) CopyFile(name);
    browser.ListRestoreFiles();
    SelectCopy(L"N03");
    CopyFile(L"a«0021».txt");
    browser.SelectLast();
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02", L"N03", L"U01"));
    EXPECT_EQ(browser.Copies().Rows().SubItem(browser.Copies().Selected(), L"Name"), L"N03");
}

TEST_F(Browser, ManyCopies_AtMostThreeCallsPerComment) {
    for (int i = 0; i < 1000; ++i) {
        CopyFile(L"f" + std::to_wstring(i) + L"«0001».txt", "");
        CopyFile(L"g" + std::to_wstring(i) + L"«0001».txt", "");
        CopyFile(L"g" + std::to_wstring(i) + L"«0001».txt.vwc",
                 "+Original Location:C:\\windows\r\n");
    }
    world.files.FailNth(1000000, 0);
    browser.ListRestoreFiles();
    EXPECT_EQ(browser.Items().Rows().Count(), 2000);
    // Of each comment: whether it is a file, its text, and whether the folder still exists. Nobody
    // asks for one that the listing did not show.
    EXPECT_LT(world.files.Count(), 3 * 1000 + 30);
}

}  // namespace
}  // namespace vw::test
