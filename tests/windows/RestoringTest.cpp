// Restoring and deleting copies through the real windows, boxes and dialogs.

#include <gmock/gmock.h>

#include "tests/windows/BackupWindows.h"

namespace vw::test {
namespace {

using testing::ElementsAre;

class Restoring : public BackupWindows {
  protected:
    Restoring() { WriteDefaultList({letter}); }

    /// Backs up three states of the letter; the window shows them.
    void MakeCopies(DrivenProgram& window) {
        BackUp(window);
        program.tree.File(L"Home\\Letter.txt", "second", {2024, 1, 2, 12, 0, 0});
        BackUp(window);
        program.tree.File(L"Home\\Letter.txt", "third", {2024, 1, 3, 12, 0, 0});
        BackUp(window);
        EXPECT_THAT(window.List(ID_lsvRestore2).Column(kName), ElementsAre(L"N01", L"N02", L"N03"));
    }
    const std::wstring question =
        L"هل تريد بالتأكيد حذف الملف التالي واستبداله بالنسخة الاحتياطية:\r\n" + letter;
};

TEST_F(Restoring, RestoresAnOldCopy) {
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    window.List(ID_lsvRestore2).Select(2);
    window.Begin(ID_mnuRestore);
    const Box box = window.AnswerBox(question, IDYES);
    EXPECT_EQ(box.text, question);
    EXPECT_THAT(box.buttons, ElementsAre(IDYES, IDNO));
    window.WaitUntilBusyDialogIsGone();
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(letter), "first");
    EXPECT_EQ(ReadDate(letter), MakeDate({2024, 1, 1, 12, 0, 0}));
    // The third state is stored as N01, so nothing else had to be kept.
    EXPECT_THAT(window.List(ID_lsvRestore2).Column(kName), ElementsAre(L"N01", L"N02", L"N03"));
    EXPECT_EQ(window.List(ID_lsvRestore2).Selected(), 2);
    window.Close();
}

TEST_F(Restoring, RestoreTo_UsesTheChosenFolderAndItsOwnName) {
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    program.tree.Folder(L"Elsewhere");
    window.List(ID_lsvRestore2).Select(2);
    window.Begin(ID_mnuRestoreTo);
    window.AnswerFileDialog(program.tree.Path(L"Elsewhere\\Other name.txt"));
    window.WaitForBusyDialog();
    window.WaitUntilBusyDialogIsGone();
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(program.tree.Path(L"Elsewhere\\Letter.txt")), "first");
    EXPECT_EQ(ReadBytes(letter), "third");
    window.Close();
}

}  // namespace
}  // namespace vw::test
