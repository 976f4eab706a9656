// Items whose own names have the marks of copies in them, and items with the system attribute:
// what is backed up must be found, put back and deleted like any other.

#include <gmock/gmock.h>

#include "tests/restore/RestoreFixture.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MarkedNames : public RestoreEnvironment {};

TEST_F(MarkedNames, File_BackedUpTwice_IsRestoredAndDeleted) {
    for (const std::wstring name : {L"Rapport «final».doc", L"«Brief»", L"x«.txt", L"y».txt",
                                    L"Plan «2024».doc", L"Note 1.«vieux»"}) {
        SCOPED_TRACE(std::string(name.begin(), name.end()));
        tree.Remove(vault);
        tree.Folder(vault);
        const std::wstring item = tree.File(L"Docs\\" + name, "one", {2024, 1, 1, 9, 0, 0});
        BackUp(item);
        tree.File(L"Docs\\" + name, "two!", {2024, 1, 2, 9, 0, 0});
        BackUp(item);
        tree.File(L"Docs\\" + name, "unsaved", {2024, 1, 3, 9, 0, 0});
        browser.ListRestoreFiles();
        browser.RestoredPath(item);
        ASSERT_THAT(Labels(), ElementsAre(L"N01", L"N02"));
        EXPECT_EQ(browser.Items().Rows().Count(), 1);
        SelectCopy(L"N02");
        world.boxes.Expect(kQuestion + item, BoxAnswer::Yes);
        commands.mnuRestoreClick();
        EXPECT_EQ(ReadBytes(item), "one");
        ASSERT_THAT(Labels(), ElementsAre(L"N01", L"N02", L"U01"));
        SelectCopy(L"U01");
        world.boxes.Expect(kQuestion + item, BoxAnswer::Yes);
        commands.mnuRestoreClick();
        EXPECT_EQ(ReadBytes(item), "unsaved");
        EXPECT_EQ(ReadTree(tree.Path(L"Docs")).size(), 1U);
        world.boxes.Expect(L"", BoxAnswer::Yes);
        commands.mnuDelCopiesClick();
        EXPECT_THAT(ReadTree(vault), IsEmpty());
        tree.Remove(L"Docs");
    }
}

TEST_F(MarkedNames, Folder_BackedUp_IsRestoredUnderItsName) {
    for (const std::wstring name : {L"Dossier «vieux»", L"«»", L"Archive «2023»"}) {
        SCOPED_TRACE(std::string(name.begin(), name.end()));
        const std::wstring folder = tree.Path(L"Docs\\" + name);
        tree.File(folder + L"\\a.txt", "a", {2024, 1, 1, 9, 0, 0});
        const Tree before = ReadTree(folder);
        BackUp(folder + L"\\");
        tree.Remove(L"Docs");
        tree.Folder(L"Docs");
        browser.ListRestoreFiles();
        browser.RestoredPath(folder + L"\\");
        ASSERT_THAT(Labels(), ElementsAre(L"N01"));
        commands.mnuRestoreClick();
        EXPECT_EQ(ReadTree(folder), before);
        tree.Remove(L"Docs");
    }
}

TEST_F(MarkedNames, TwoItems_OnePlainOneMarked_KeepApart) {
    const std::wstring plain = tree.File(L"Docs\\Rapport .doc", "plain", {2024, 1, 1, 9, 0, 0});
    const std::wstring marked =
        tree.File(L"Docs\\Rapport «final».doc", "marked", {2024, 1, 2, 9, 0, 0});
    BackUp(plain);
    BackUp(marked);
    browser.ListRestoreFiles();
    EXPECT_EQ(browser.Items().Rows().Count(), 2);
    for (const std::wstring& item : {plain, marked}) {
        tree.Remove(item);
        browser.RestoredPath(item);
        commands.mnuRestoreClick();
        EXPECT_EQ(ReadBytes(item), item == plain ? "plain" : "marked");
    }
}

TEST_F(MarkedNames, SystemFile_IsListedRestoredAndDeleted) {
    const std::wstring item = tree.File(L"Docs\\desk.ini", "one", {2024, 1, 1, 9, 0, 0});
    tree.SetAttributes(L"Docs\\desk.ini", FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_HIDDEN);
    BackUp(item);
    tree.SetAttributes(L"Docs\\desk.ini", FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_HIDDEN, false);
    tree.File(L"Docs\\desk.ini", "unsaved", {2024, 1, 2, 9, 0, 0});
    tree.SetAttributes(L"Docs\\desk.ini", FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_HIDDEN);
    browser.ListRestoreFiles();
    ASSERT_THAT(Labels(), ElementsAre(L"N01"));
    world.boxes.Expect(kQuestion + item, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(item), "one");
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"U01"));
    SelectCopy(L"U01");
    world.boxes.Expect(kQuestion + item, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(item), "unsaved");
    world.boxes.Expect(L"", BoxAnswer::Yes);
    commands.mnuDelCopiesClick();
    EXPECT_THAT(ReadTree(vault), IsEmpty());
}

TEST_F(Restore, ClickBesideTheRows_CommandsActOnTheListedItem) {
    tree.File(L"Other\\Report.doc", "other", {2024, 1, 1, 9, 0, 0});
    BackUp(tree.Path(L"Other\\Report.doc"));
    browser.ListRestoreFiles();
    const std::wstring second = tree.Path(L"Other\\Report.doc");
    browser.RestoredPath(second);
    tree.File(L"Other\\Report.doc", "unsaved", {2024, 2, 1, 9, 0, 0});
    browser.Items().Select(-1);
    world.boxes.Expect(kQuestion + second, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(second), "other");
    EXPECT_EQ(ReadBytes(vault + L"\\Report«0121».doc"), "unsaved") << "in its own series";
    browser.Items().Select(-1);
    world.boxes.Expect(L"[N01]", BoxAnswer::Yes);
    SelectCopy(L"N01");
    commands.mnuDelCopyClick();
    EXPECT_FALSE(Exists(vault + L"\\Report«0101».doc"));
    EXPECT_TRUE(Exists(vault + L"\\Report«0001».doc"));
}

}  // namespace
}  // namespace vw::test
