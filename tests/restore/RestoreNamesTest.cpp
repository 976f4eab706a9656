#include <gmock/gmock.h>

#include <functional>

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

TEST_F(RestoreNames, FolderWithAFileOfTheTemporaryName_IsRestoredWhole) {
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

// The names are those that the notes on reliability promise.
TEST_F(RestoreNames, KilledWhileAFileIsCopied_LeavesTheFirstName) {
    for (const auto* const missing : {L"Work\\a.txt", L"Work"}) {
        tree.File(L"Work\\a.txt", "whole", {2024, 1, 1, 9, 0, 0});
        BackUp(tree.Path(L"Work\\"));
        browser.ListRestoreFiles();
        SelectItem(L"Work");
        SelectCopy(L"N01");
        tree.Remove(missing);
        const bool isItemThere = Exists(tree.Path(L"Work"));
        if (isItemThere) world.boxes.Expect(kQuestion, BoxAnswer::Yes);
        world.files.DieAtNth(1, [this](const FileOperation& operation) {
            return operation.call == FileCall::Copy && operation.to.starts_with(tree.Path());
        });
        EXPECT_THROW(commands.mnuRestoreClick(), Died);
        world.files.Heal();
        const std::wstring left = isItemThere ? L"Work\\~vwr0.tmp" : L"~vwr0.tmp\\a.txt";
        EXPECT_EQ(ReadBytes(tree.Path(left)), "wh");
    }
}

// It takes the working name as soon as the restored file has left it.
TEST_F(RestoreNames, AnotherRestoreWritesThere_IsLeftAlone) {
    const std::wstring aside = tree.Path(L"Docs\\~vwr0.tmp");
    const std::function<void()> writings[] = {
        [this] {
            tree.File(L"Docs\\~vwr0.tmp", "longer than state 2", {2024, 1, 2, 9, 0, 0});
        },
        [this] {
            tree.File(L"Docs\\~vwr0.tmp", "state 9", {2024, 1, 9, 9, 0, 0});
        },
        [this] { tree.Folder(L"Docs\\~vwr0.tmp"); }};
    for (const auto& write : writings) {
        bool hasMoved = false;
        world.files.OnOperation([&](const FileOperation& operation) {
            if (operation.path != aside) return;
            if (hasMoved && operation.call == FileCall::Stat) write();
            hasMoved = operation.call == FileCall::Rename || operation.call == FileCall::Replace;
        });
        SelectCopy(L"N02");
        world.boxes.Expect(kQuestion, BoxAnswer::Yes);
        commands.mnuRestoreClick();
        world.files.Heal();
        EXPECT_THAT(world.errors.Take(), testing::IsEmpty());
        EXPECT_EQ(ReadBytes(document), "state 2");
        EXPECT_TRUE(Exists(aside));
        tree.Remove(L"Docs\\~vwr0.tmp");
    }
}

// Nothing but its kind distinguishes the folder from the restored file.
TEST_F(RestoreNames, EmptyFolderOfAnotherRestore_EmptyFileIsRestored_IsLeftAlone) {
    const DateParts date{2024, 1, 2, 9, 0, 0};
    const std::wstring empty = tree.File(L"Docs\\Empty.doc", "", date);
    BackUp(empty);
    tree.File(L"Docs\\Empty.doc", "now");
    browser.ListRestoreFiles();
    SelectItem(L"Empty");
    SelectCopy(L"N01");
    const std::wstring aside = tree.Path(L"Docs\\~vwr0.tmp");
    bool hasMoved = false;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.path != aside) return;
        if (hasMoved && operation.call == FileCall::Stat) {
            tree.Folder(L"Docs\\~vwr0.tmp");
            tree.SetDate(L"Docs\\~vwr0.tmp", date);
        }
        hasMoved = operation.call == FileCall::Replace;
    });
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_THAT(world.errors.Take(), testing::IsEmpty());
    EXPECT_EQ(ReadBytes(empty), "");
    EXPECT_TRUE(Exists(aside));
}

}  // namespace
}  // namespace vw::test
