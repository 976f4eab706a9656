// The folder that the program was started in.

#include <gmock/gmock.h>

#include "tests/windows/EditingWindows.h"

namespace vw::test {
namespace {

using testing::ElementsAre;

class StartFolder : public EditingWindows {
  protected:
    StartFolder() { start.currentFolder = program.tree.Folder(L"Stick"); }

    ProgramStart start = program.With(L"");
};

TEST_F(StartFolder, ListOpenedFromIt_FolderCanBeRemoved) {
    program.List(L"Stick\\Mine.vwl", {L"BackupTo: " + Vault(), letter});
    start.arguments = L"Mine.vwl";
    DrivenProgram window(start);
    EXPECT_THAT(window.List(ID_lsvBackupList).Column(kPath), ElementsAre(letter));
    const std::wstring moved = program.tree.Path(L"Gone");
    EXPECT_TRUE(MoveFileW(start.currentFolder.c_str(), moved.c_str())) << GetLastError();
    EXPECT_TRUE(MoveFileW(moved.c_str(), start.currentFolder.c_str()));
    // Dialogs begin where the program was started, and leave nothing behind either.
    window.Begin(ID_mnuFileOpen);
    window.AnswerFileDialog(L"Mine.vwl");
    window.WaitUntilReady();
    EXPECT_EQ(program.Setting(L"RecentFile1"), program.tree.Path(L"Stick\\Mine.vwl"));
    EXPECT_TRUE(MoveFileW(start.currentFolder.c_str(), moved.c_str())) << GetLastError();
    EXPECT_TRUE(MoveFileW(moved.c_str(), start.currentFolder.c_str()));
    window.Close();
}

TEST_F(StartFolder, RelativeLinesOfAList_AreCompletedWithIt) {
    program.tree.File(L"Stick\\Plan.doc", "plan");
    program.tree.Folder(Vault());
    program.List(L"Stick\\Mine.vwl", {L"BackupTo: " + Vault(), L"Plan.doc"});
    start.arguments = L"/B Mine.vwl";
    ProgramRun run(start);
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_EQ(ReadBytes(Vault() + L"\\Plan«0001».doc"), "plan");
}

}  // namespace
}  // namespace vw::test
