// The command that renames everything in a folder to lower case.

#include <gtest/gtest.h>

#include "tests/app/ApplicationFixture.h"
#include "tests/support/FileDialogHook.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

class LowerNames : public App {
  protected:
    LowerNames() {
        WriteDefaultList({});
        Start();
        dialog.answer = tree.Path(L"Names") + L"\\ChooseFolder....Don't modify this line";
    }
    [[nodiscard]] bool IsRenamed() const {
        return ReadTree(tree.Path(L"Names")).contains(L"big.txt");
    }

    FileDialogHook dialog;
    const std::wstring file = tree.File(L"Names\\BIG.TXT");
};

TEST_F(LowerNames, Confirmed_RenamesAndSaysDone) {
    world.boxes.Expect(tree.Path(L"Names"), BoxAnswer::Yes);
    world.boxes.Expect(L"Done");
    bool isAwake = false;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Rename) isAwake = IsKeptAwake();
    });
    Choose(ID_mnuToolRepair);
    EXPECT_TRUE(IsRenamed());
    EXPECT_TRUE(isAwake);
    EXPECT_FALSE(IsKeptAwake());
    EXPECT_TRUE(world.boxes.Shown().front().secondIsDefault) << "Enter renames nothing";
}

TEST_F(LowerNames, Refused_RenamesNothing) {
    world.boxes.Expect(L"cannot be undone", BoxAnswer::No);
    Choose(ID_mnuToolRepair);
    EXPECT_FALSE(IsRenamed());
}

TEST_F(LowerNames, NoFolderIsChosen_AsksNothing) {
    dialog.answer.clear();
    Choose(ID_mnuToolRepair);
    EXPECT_TRUE(world.boxes.Shown().empty());
}

TEST_F(LowerNames, ArabicWindow_AsksInArabic) {
    state.language = Language::Arabic;
    world.boxes.Expect(L"لا يمكن التراجع عن ذلك", BoxAnswer::No);
    Choose(ID_mnuToolRepair);
    EXPECT_TRUE(world.boxes.Shown().front().rightToLeft);
}

}  // namespace
}  // namespace vw::test
