// Restoring and deleting copies through the real windows, boxes and dialogs.

#include <gmock/gmock.h>

#include "tests/windows/BackupWindows.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

TEST_F(Restoring, StateIsNotStored_MakesASafetyCopy) {
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    program.tree.File(L"Home\\Letter.txt", "unsaved", {2024, 1, 4, 12, 0, 0});
    window.List(ID_lsvRestore2).Select(1);
    window.Begin(ID_Toolbar1_ActionRestore);
    window.AnswerBox(question, IDYES);
    window.WaitUntilBusyDialogIsGone();
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(letter), "second");
    EXPECT_THAT(window.List(ID_lsvRestore2).Column(kName),
                ElementsAre(L"N01", L"N02", L"N03", L"U01"));
    EXPECT_EQ(ReadBytes(Vault() + L"\\Letter«0021».txt"), "unsaved");
    window.Close();
}

TEST_F(Restoring, AnswerIsNo_ChangesNothing) {
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    window.List(ID_lsvRestore2).Select(1);
    window.Begin(ID_mnuRestore);
    window.AnswerBox(question, IDNO);
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(letter), "third");
    PostMessageW(window.WaitForBusyDialog(), WM_CLOSE, 0, 0);
    window.WaitUntilBusyDialogIsGone();
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

TEST_F(Restoring, CancelledDialog_RestoresNothing) {
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    window.Begin(ID_mnuRestoreTo);
    window.AnswerFileDialog(L"");
    window.WaitUntilReady();
    EXPECT_THAT(window.Run().Boxes(), IsEmpty());
    window.Close();
}

TEST_F(Restoring, NoCopy_EachCommandShowsAMessage) {
    DrivenProgram window(program.With(L""));
    for (const int command :
         {ID_mnuRestore, ID_mnuRestoreTo, ID_mnuOpenCopy, ID_mnuDelCopy, ID_mnuDelCopies}) {
        window.Begin(command);
        const Box box = window.AnswerBox(L"");
        EXPECT_EQ(box.text, L"لا يوجد ملفات في قائمة الاستعادة");
        EXPECT_EQ(box.title, L"Vaultwright");
        window.WaitUntilReady();
    }
    window.Close();
}

TEST_F(Restoring, DeleteOneCopy_ListsTheRest) {
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    window.List(ID_lsvRestore2).Select(1);
    window.List(ID_lsvRestore2).PressKey(VK_DELETE);
    const Box box =
        window.AnswerBox(L"هل تريد بالتأكيد حذف النسخة رقم [N02]من الملف:\r\nLetter", IDYES);
    EXPECT_THAT(box.buttons, ElementsAre(IDYES, IDNO));
    window.WaitUntilReady();
    EXPECT_THAT(window.List(ID_lsvRestore2).Column(kName), ElementsAre(L"N01", L"N03"));
    EXPECT_FALSE(Exists(Vault() + L"\\Letter«0002».txt"));
    window.Close();
}

TEST_F(Restoring, DeleteAllCopies_AsksOnceAndRemovesTheItem) {
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    // The Delete key of the upper list asks for all copies; a no keeps them.
    for (const int answer : {IDNO, IDYES}) {
        window.List(ID_lsvRestore1).PressKey(VK_DELETE);
        const Box box = window.AnswerBox(L"", answer);
        EXPECT_EQ(box.text, L"هل تريد بالتأكيد حذف كافة النسخ الاحتياطية العائدة للملف:\r\nLetter");
        window.WaitUntilReady();
        EXPECT_EQ(Exists(Vault() + L"\\Letter«0001».txt"), answer == IDNO);
    }
    window.WaitUntilReady();
    EXPECT_EQ(window.List(ID_lsvRestore1).Count(), 0);
    EXPECT_EQ(window.List(ID_lsvRestore2).Count(), 0);
    EXPECT_THAT(ReadTree(Vault()), IsEmpty());
    EXPECT_EQ(ReadBytes(letter), "third");
    window.Close();
}

TEST_F(Restoring, CopyDeletedMeanwhile_IsReported_NothingOverwritten) {
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    program.tree.Remove(Vault() + L"\\Letter«0003».txt");
    window.List(ID_lsvRestore2).Select(2);
    window.Begin(ID_mnuRestore);
    window.AnswerBox(L"in procedure DoRestore of Form frmMain");
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(letter), "third");
    EXPECT_THAT(window.List(ID_lsvRestore2).Column(kName), ElementsAre(L"N01", L"N02"));
    window.Close();
}

}  // namespace
}  // namespace vw::test
