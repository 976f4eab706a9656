#include <gtest/gtest.h>

#include "tests/restore/RestoreFixture.h"

// Files and folders that have the names under which a restore writes.

namespace vw::test {
namespace {

class RestoreNames : public Restore {};

TEST_F(RestoreNames, FileNamedAsTheTemporaryOne_IsLeftAlone) {
    const std::wstring first = tree.File(L"Docs\\~vwr0.tmp", "somebody's");
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 2");
    EXPECT_EQ(ReadBytes(first), "somebody's");
    EXPECT_EQ(ReadTree(tree.Path(L"Docs")).size(), 2U);
}

TEST_F(RestoreNames, FolderThatAKilledRestoreLeft_IsLeftAlone) {
    tree.File(L"Docs\\~vwr0.tmp\\a.txt", "left");
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 2");
    EXPECT_EQ(ReadBytes(tree.Path(L"Docs\\~vwr0.tmp\\a.txt")), "left");
    EXPECT_EQ(ReadTree(tree.Path(L"Docs")).size(), 3U);
}

TEST_F(RestoreNames, FolderWithAFileNamedAsTheTemporaryOne_ComesBackWhole) {
    for (const bool isGone : {false, true}) {
        const std::wstring folder = tree.Path(L"Odd");
        tree.File(L"Odd\\~vwr0.tmp", "odd");
        tree.File(L"Odd\\a.txt", "a");
        BackUp(folder + L"\\");
        browser.ListRestoreFiles();
        SelectItem(L"Odd");
        SelectCopy(L"N01");
        if (isGone) {
            tree.Remove(folder);
        } else {
            world.boxes.Expect(kQuestion, BoxAnswer::Yes);
        }
        commands.mnuRestoreClick();
        EXPECT_EQ(ReadBytes(folder + L"\\~vwr0.tmp"), "odd");
        EXPECT_EQ(ReadBytes(folder + L"\\a.txt"), "a");
        EXPECT_EQ(ReadTree(folder).size(), 2U);
    }
}

TEST_F(RestoreNames, FileNamedAsTheTemporaryOneIsMissing_ComesBack) {
    const std::wstring folder = tree.Path(L"Odd");
    const std::wstring odd = tree.File(L"Odd\\~vwr0.tmp", "odd");
    tree.File(L"Odd\\a.txt", "a");
    BackUp(folder + L"\\");
    browser.ListRestoreFiles();
    tree.Remove(L"Odd\\~vwr0.tmp");
    SelectItem(L"Odd");
    SelectCopy(L"N01");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(odd), "odd");
    EXPECT_EQ(ReadTree(folder).size(), 2U);
}

}  // namespace
}  // namespace vw::test
