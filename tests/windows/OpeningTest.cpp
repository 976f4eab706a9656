// Opening items and copies from the real windows, with the programs that belong to them.

#include "tests/windows/BackupWindows.h"
#include "tests/windows/OpenedFiles.h"

namespace vw::test {
namespace {

class Opening : public BackupWindows {
  protected:
    /// Makes a copy of the note; the note gets newer than that.
    void MakeOldCopy(DrivenProgram& window) {
        BackUp(window);
        program.tree.File(L"Home\\Note.opens", "a newer note|");
    }

    const OpenedFiles opened{program.tree, L".opens"};
    const std::wstring note = program.tree.File(L"Home\\Note.opens", "the note|");
    const std::wstring plan = program.tree.File(L"Home\\Plan.opens", "the plan|");
};

TEST_F(Opening, OpensTheSelectedItem) {
    WriteDefaultList({note, plan});
    DrivenProgram window(program.With(L""));
    window.List(ID_lsvBackupList).Select(1);
    window.Choose(ID_mnuOpen);
    EXPECT_EQ(opened.WaitFor(9), "the plan|");
    window.List(ID_lsvBackupList).Select(0);
    window.Choose(ID_Toolbar1_ActionOpen);
    EXPECT_EQ(opened.WaitFor(18), "the plan|the note|");
    window.Close();
}

TEST_F(Opening, EmptyList_ShowsAMessage) {
    WriteDefaultList({});
    DrivenProgram window(program.With(L""));
    for (const int command : {ID_mnuOpen, ID_Toolbar1_ActionOpen}) {
        window.Begin(command);
        EXPECT_EQ(window.AnswerBox(L"").text, L"لا يوجد تحديد في قائمة النسخ");
        window.WaitUntilReady();
    }
    window.Close();
}

TEST_F(Opening, Button_OpensTheSelectionOfTheLastUsedList) {
    WriteDefaultList({note});
    DrivenProgram window(program.With(L""));
    MakeOldCopy(window);
    window.List(ID_lsvRestore2).Click(0);
    window.Choose(ID_Toolbar1_ActionOpen);
    EXPECT_EQ(opened.WaitFor(9), "the note|");
    window.List(ID_lsvBackupList).Click(0);
    window.Choose(ID_Toolbar1_ActionOpen);
    EXPECT_EQ(opened.WaitFor(22), "the note|a newer note|");
    window.Close();
}

TEST_F(Opening, EnterInAList_OpensItsSelection) {
    WriteDefaultList({note});
    DrivenProgram window(program.With(L""));
    MakeOldCopy(window);
    window.List(ID_lsvBackupList).Click(0);
    window.List(ID_lsvBackupList).PressKey(VK_RETURN);
    EXPECT_EQ(opened.WaitFor(13), "a newer note|");
    window.WaitUntilReady();
    window.List(ID_lsvRestore2).Click(0);
    window.List(ID_lsvRestore2).PressKey(VK_RETURN);
    EXPECT_EQ(opened.WaitFor(22), "a newer note|the note|");
    window.WaitUntilReady();
    window.Close();
}

}  // namespace
}  // namespace vw::test
