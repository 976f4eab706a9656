// "Restore to" for a folder, whose dialog opens the folder that is named in it.

#include <gmock/gmock.h>

#include "tests/restore/RestoreFixture.h"

namespace vw::test {
namespace {

class RestoreFolderTo : public RestoreEnvironment {
  protected:
    RestoreFolderTo() {
        tree.File(L"Docs\\Work\\a.txt", "kept", {2024, 1, 1, 9, 0, 0});
        BackUp(tree.Path(L"Docs\\Work\\"));
        browser.ListRestoreFiles();
        tree.Folder(L"Elsewhere\\Work");
    }
    void RestoreTo(std::wstring_view relative) {
        dialogs.Expect(tree.Path(relative));
        commands.mnuRestoreToClick();
    }
};

TEST_F(RestoreFolderTo, NameInsideTheOpenedFolder_MeansTheFolderItself) {
    world.boxes.Expect(tree.Path(L"Elsewhere\\Work"), BoxAnswer::Yes);
    RestoreTo(L"Elsewhere\\Work\\anything");
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Work\\a.txt")), "kept");
    EXPECT_FALSE(Exists(tree.Path(L"Elsewhere\\Work\\Work")));
}

TEST_F(RestoreFolderTo, NameInAnotherFolder_MeansThatFolder) {
    RestoreTo(L"Elsewhere\\anything");
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Work\\a.txt")), "kept");
}

}  // namespace
}  // namespace vw::test
