// Opening items and copies from the real windows, with the programs that belong to them.

#include "tests/windows/BackupWindows.h"
#include "tests/windows/OpenedFiles.h"

namespace vw::test {
namespace {

class Opening : public BackupWindows {
  protected:
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

}  // namespace
}  // namespace vw::test
