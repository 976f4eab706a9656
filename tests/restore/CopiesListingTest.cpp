// Which entries of the copy folder the two lists of the restore view show, and in which order.

#include <gmock/gmock.h>

#include "tests/restore/RestoreEnvironment.h"

// Behind the header of Windows, which it builds on.
#include <commctrl.h>

namespace vw::test {
namespace {

using testing::ElementsAre;

class CopiesListing : public RestoreEnvironment {};

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
    for (int i = 100; i < 180; ++i) CopyFile(L"f" + std::to_wstring(i) + L"«0001».txt");
    browser.ListRestoreFiles();
    const int last = browser.Items().Rows().Count() - 1;
    browser.Items().Select(last);
    browser.Items().EnsureVisible(0);
    browser.lsvRestore1ItemClick(last);
    const HWND items = browser.Items().Handle();
    const auto top = SendMessageW(items, LVM_GETTOPINDEX, 0, 0);
    const auto page = SendMessageW(items, LVM_GETCOUNTPERPAGE, 0, 0);
    ASSERT_LT(page, last);
    EXPECT_GT(top + page, last);
}

TEST_F(CopiesListing, ClickOnTheFirstItem_MakesItsRowVisible) {
    for (int i = 100; i < 180; ++i) CopyFile(L"f" + std::to_wstring(i) + L"«0001».txt");
    browser.ListRestoreFiles();
    browser.Items().Select(0);
    browser.Items().EnsureVisible(browser.Items().Rows().Count() - 1);
    const HWND items = browser.Items().Handle();
    ASSERT_GT(SendMessageW(items, LVM_GETTOPINDEX, 0, 0), 0);
    browser.lsvRestore1ItemClick(0);
    EXPECT_EQ(SendMessageW(items, LVM_GETTOPINDEX, 0, 0), 0);
}

}  // namespace
}  // namespace vw::test
