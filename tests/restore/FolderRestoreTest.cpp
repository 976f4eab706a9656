// A folder that is restored over itself while a folder below it is missing.

#include <gtest/gtest.h>

#include <map>

#include "tests/restore/RestoreFixture.h"
#include "tests/support/ForwardingFileSystem.h"

namespace vw::test {
namespace {

/// Notes which marks folders were given.
class NotedMarks final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    void CopyFolderInfo(std::wstring_view from, std::wstring_view to, Marks marks) override {
        given[std::wstring(to)] = marks;
        Inner().CopyFolderInfo(from, to, marks);
    }

    std::map<std::wstring, Marks> given;
};

class FolderRestore : public RestoreEnvironment {
  protected:
    FolderRestore() {
        tree.File(L"Work\\Sub\\b.txt", "b", {2024, 1, 1, 9, 0, 0});
        tree.File(L"Work\\a.txt", "a", {2024, 1, 1, 9, 0, 0});
        BackUp(tree.Path(L"Work\\"));
        browser.ListRestoreFiles();
        tree.Remove(L"Work\\Sub");
        world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    }
};

TEST_F(FolderRestore, MissingFolderAppearsMeanwhile_ItsFilesAreRestored) {
    bool isMade = false;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call != FileCall::Rename || operation.to != tree.Path(L"Work\\Sub")) return;
        isMade = true;
        tree.Folder(L"Work\\Sub");
    });
    commands.mnuRestoreClick();
    EXPECT_TRUE(isMade);
    EXPECT_EQ(ReadBytes(tree.Path(L"Work\\Sub\\b.txt")), "b");
}

// What the user has hidden or protected since the backup stays so.
TEST_F(FolderRestore, OnlyTheNewFolder_TakesTheMarksOfTheCopy) {
    NotedMarks disk(world.files);
    System system = world.With(disk);
    CPackage another(system, state, AsProgress(), AsProgram());
    RestoreCommands(system, state, main.form, browser, dialogs, dialog, AsProgress(),
                    [&]() -> CPackage& { return another; })
        .mnuRestoreClick();
    EXPECT_EQ(disk.given.at(tree.Path(L"Work")), FileSystem::Marks::Keep);
    EXPECT_EQ(disk.given.at(tree.Path(L"Work\\Sub")), FileSystem::Marks::Replace);
}

}  // namespace
}  // namespace vw::test
