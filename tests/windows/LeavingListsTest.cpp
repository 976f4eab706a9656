// What becomes of unsaved changes when another list takes the window, or a backup begins.

#include <gmock/gmock.h>

#include "tests/windows/EditingWindows.h"

namespace vw::test {
namespace {

using testing::ElementsAre;

class LeavingLists : public EditingWindows {
  protected:
    /// Lets nobody else write the file.
    static FileHandle Hold(const std::wstring& file) {
        return FileHandle(CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    }
};

TEST_F(LeavingLists, CancelledDialogs_UnsavedCount_SaveNothing) {
    WriteDefaultList({letter, L"Z:\\unplugged.txt"});
    const std::string before = ReadBytes(program.DefaultList());
    DrivenProgram window(program.With(L""));
    window.ClickMoreCopies(2);
    for (const int command : {ID_mnuFileNew, ID_mnuFileOpen}) {
        window.Begin(command);
        window.AnswerFileDialog(L"");
        window.WaitUntilReady();
        EXPECT_EQ(ReadBytes(program.DefaultList()), before) << command;
    }
    EXPECT_FALSE(Exists(program.DefaultList() + L".old"));
    window.Close();
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({letter}, 5));
}

TEST_F(LeavingLists, ConfirmedDialogs_UnsavedCount_SaveTheFormerList) {
    WriteDefaultList({letter});
    const std::wstring other =
        program.List(L"Other.vwl", {L"BackupTo: " + Vault(), L"Backages: 3", photo});
    DrivenProgram window(program.With(L""));
    window.ClickMoreCopies(2);
    window.Begin(ID_mnuFileOpen);
    window.AnswerFileDialog(other);
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({letter}, 5));
    EXPECT_EQ(window.TextOf(ID_lblBackages), L"3");
    window.ClickMoreCopies(1);
    window.Begin(ID_mnuFileNew);
    window.AnswerFileDialog(program.tree.Path(L"New.vwl"));
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(other), FileOf({photo}, 4));
    window.Close();
}

TEST_F(LeavingLists, CopiesCountChanged_IsSavedBeforeAnotherListOpens) {
    WriteDefaultList({photo});
    const std::wstring first = program.List(L"First.vwl", {L"BackupTo: " + Vault(), letter});
    DrivenProgram window(program.With(Quoted(first)));
    window.ClickMoreCopies(1);
    window.Choose(ID_mnuRecentFile_0);
    EXPECT_THAT(window.List(ID_lsvBackupList).Column(kPath), ElementsAre(photo));
    EXPECT_EQ(ReadBytes(first), FileOf({letter}, 4));
    window.Close();
}

TEST_F(LeavingLists, ListCannotBeSaved_OtherListOpensAfterAYesOnly) {
    WriteDefaultList({photo});
    const std::wstring first = program.List(L"First.vwl", {L"BackupTo: " + Vault(), letter});
    DrivenProgram window(program.With(Quoted(first)));
    window.ClickMoreCopies(1);
    const FileHandle held = Hold(first);
    for (const int answer : {IDNO, IDYES}) {
        EXPECT_THAT(window.List(ID_lsvBackupList).Column(kPath), ElementsAre(letter));
        window.Begin(ID_mnuRecentFile_0);
        window.AnswerBox(L"in procedure FileSave of Form frmMain");
        window.AnswerBox(L"could not be saved", answer);
        window.WaitUntilReady();
    }
    EXPECT_THAT(window.List(ID_lsvBackupList).Column(kPath), ElementsAre(photo));
    window.Close();
}

}  // namespace
}  // namespace vw::test
