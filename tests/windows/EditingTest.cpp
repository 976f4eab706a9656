// The backup list worked through the real window: what the user does, and what the list file says
// after each step.

#include <gmock/gmock.h>

#include "tests/windows/EditingWindows.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Editing : public EditingWindows {};

TEST_F(Editing, DefaultList_IsShownWithItsColumns) {
    WriteDefaultList({letter, Home(L"Deep") + L"\\", Home(L"*")});
    DrivenProgram window(program.With(L""));
    EXPECT_EQ(window.Caption(), L"Vaultwright ");
    const DrivenList list = window.List(ID_lsvBackupList);
    EXPECT_THAT(list.Headers(),
                ElementsAre(L"Name", L"Path", L"Type", L"Size", L"Date", L"SP", L"Location"));
    EXPECT_THAT(list.Column(kName), ElementsAre(L"Letter", L"Deep", L"files in Home"));
    EXPECT_THAT(list.Column(kPath), ElementsAre(letter, Home(L"Deep") + L"\\", Home(L"*")));
    EXPECT_THAT(list.Column(kType), ElementsAre(L".txt", L"Folder", L"Rule"));
    EXPECT_EQ(list.Text(0, 3), L"8Byte");
    EXPECT_EQ(list.Text(2, 3), L"");
    EXPECT_THAT(list.Column(5), ElementsAre(L"00", L"00", L"00"));
    EXPECT_EQ(list.Selected(), 0);
    EXPECT_EQ(window.TextOf(ID_cmbDestination), Drive());
    EXPECT_EQ(window.TextOf(ID_lblBackages), L"3");
    EXPECT_EQ(window.Close(), 0U);
}

TEST_F(Editing, FileTypedIntoTheDialog_IsAdded) {
    WriteDefaultList({});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuAddFile);
    window.AnswerFileDialog(letter);
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({letter}));
    // The same file in other letters stays one row.
    window.Begin(ID_mnuAddFile);
    window.AnswerFileDialog(Home(L"LETTER.TXT"));
    window.WaitUntilReady();
    EXPECT_EQ(window.List(ID_lsvBackupList).Count(), 1);
    window.Close();
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({letter}));
}

TEST_F(Editing, SeveralFiles_AreAddedLastFirst) {
    WriteDefaultList({});
    program.tree.File(L"Home\\a.txt");
    program.tree.File(L"Home\\b.txt");
    program.tree.File(L"Home\\c.txt");
    // Dialogs begin in the current folder.
    ProgramStart start = program.With(L"");
    start.currentFolder = program.tree.Path(L"Home");
    DrivenProgram window(start);
    window.Begin(ID_Toolbar1_EditAddFile);
    EXPECT_EQ(window.AnswerFileDialog(L"\"a.txt\" \"b.txt\" \"c.txt\""), L"إضافة");
    window.WaitUntilReady();
    EXPECT_THAT(window.List(ID_lsvBackupList).Column(kPath),
                ElementsAre(Home(L"c.txt"), Home(L"b.txt"), Home(L"a.txt")));
    window.Close();
    EXPECT_EQ(ReadBytes(program.DefaultList()),
              FileOf({Home(L"c.txt"), Home(L"b.txt"), Home(L"a.txt")}));
}

TEST_F(Editing, FolderChosenWithTheSaveDialog_IsAdded) {
    WriteDefaultList({});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuAddFolder);
    EXPECT_EQ(window.AnswerFileDialog(Home(L"Deep\\ChooseFolder....Don't modify this line")),
              L"إضافة مجلد: (افتح المجلد المطلوب اضافته ثم اختر حفظ)");
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({Home(L"Deep") + L"\\"}));
    window.Begin(ID_mnuAddFiles);
    window.AnswerFileDialog(Home(L"ChooseFolder....Don't modify this line"));
    window.WaitUntilReady();
    window.Close();
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({Home(L"Deep") + L"\\", Home(L"*")}));
}

TEST_F(Editing, CancelledDialog_AddsNothing) {
    WriteDefaultList({letter});
    const std::string before = ReadBytes(program.DefaultList());
    DrivenProgram window(program.With(L""));
    for (const int command :
         {ID_mnuAddFile, ID_mnuAddFiles, ID_mnuAddFolder, ID_mnuFileNew, ID_mnuFileOpen}) {
        window.Begin(command);
        window.AnswerFileDialog(L"");
        window.WaitUntilReady();
    }
    EXPECT_EQ(window.List(ID_lsvBackupList).Count(), 1);
    window.Close();
    EXPECT_EQ(ReadBytes(program.DefaultList()), before);
}

TEST_F(Editing, DroppedFolders_AreFolderItems) {
    WriteDefaultList({});
    DrivenProgram window(program.With(L""));
    window.List(ID_lsvBackupList).Drop({letter, Home(L"Deep")});
    window.WaitUntil([&] { return window.List(ID_lsvBackupList).Count() == 2; }, "nothing came");
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({letter, Home(L"Deep") + L"\\"}));
    window.Close();
}

TEST_F(Editing, DeleteOnAnEmptyList_ShowsAMessage) {
    WriteDefaultList({});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuDel);
    window.AnswerBox(L"لا يوجد تحديد في قائمة النسخ");
    window.WaitUntilReady();
    window.Choose(ID_mnuDelAll);
    window.Close();
}

TEST_F(Editing, ClearAll_EmptiesTheList) {
    WriteDefaultList({letter, photo});
    DrivenProgram window(program.With(L""));
    window.Choose(ID_Toolbar1_EditDelAll);
    EXPECT_EQ(window.List(ID_lsvBackupList).Count(), 0);
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({}));
    window.Close();
}

TEST_F(Editing, CopiesCount_IsSavedWhenTheWindowCloses) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    window.ClickMoreCopies(2);
    EXPECT_EQ(window.TextOf(ID_lblBackages), L"5");
    EXPECT_EQ(window.Close(), 0U);
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({letter}, 5));
}

TEST_F(Editing, CloseInTheMenu_SavesNothing) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    window.ClickMoreCopies(2);
    window.Begin(ID_mnuFileClose);
    EXPECT_EQ(window.Run().WaitForEnd(), 0U);
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({letter}, 3));
}

TEST_F(Editing, ChosenDrive_IsTheDestinationAtOnce) {
    program.List(L"Program\\FilesList.vwl", {L"BackupTo: C:\\Backup", L"Backages: 3", letter});
    DrivenProgram window(program.With(L""));
    EXPECT_EQ(window.TextOf(ID_cmbDestination), L"C:");
    window.ChooseDrive(Drive());
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({letter}));
    EXPECT_EQ(program.Setting(L"BackupTo"), Vault());
    EXPECT_TRUE(Exists(Vault())) << "looking for copies makes the folder";
    window.Close();
}

TEST_F(Editing, Open_OtherCopiesCount_ListIsModified) {
    // The first change of the count belongs to the start of the window.
    WriteDefaultList({letter}, 3);
    const std::wstring other = program.List(
        L"Other.vwl", {L"BackupTo: " + Vault(), L"Backages: 7", letter, L"Z:\\gone.txt"});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuFileOpen);
    window.AnswerFileDialog(other);
    window.WaitUntilReady();
    EXPECT_EQ(window.TextOf(ID_lblBackages), L"7");
    window.Close();
    EXPECT_EQ(ReadBytes(other), FileOf({letter}, 7));
    // What the save lost is kept.
    EXPECT_THAT(ReadBytes(other + L".old"), HasSubstr("gone.txt"));
}

TEST_F(Editing, NewList_NameWithoutExtension_IsCompleted) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuFileNew);
    window.AnswerFileDialog(program.tree.Path(L"Mine"));
    window.WaitUntilReady();
    EXPECT_EQ(window.Caption(), L"Vaultwright- مهمة نسخ يدوي [Mine.vwl]");
    EXPECT_EQ(window.List(ID_lsvBackupList).Count(), 0);
    EXPECT_EQ(window.Close(), 0U);
    EXPECT_EQ(ReadBytes(program.tree.Path(L"Mine.vwl")), FileOf({}));
    EXPECT_EQ(program.Setting(L"RecentFile1"), program.tree.Path(L"Mine.vwl"));
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({letter}));
}

TEST_F(Editing, SaveAs_KeepsTheItems) {
    WriteDefaultList({letter, photo});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuFileSaveAs);
    window.AnswerFileDialog(program.tree.Path(L"Second.vwl"));
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(program.tree.Path(L"Second.vwl")), FileOf({letter, photo}));
    EXPECT_EQ(window.List(ID_lsvBackupList).Count(), 2);
    window.Close();
}

TEST_F(Editing, RecentLists_AreOpenedFromTheMenu) {
    WriteDefaultList({letter});
    const std::wstring first = program.List(L"First & last.vwl", {L"BackupTo: " + Vault(), photo});
    {
        DrivenProgram window(program.With(Quoted(first)));
        EXPECT_EQ(window.Caption(), L"Vaultwright- مهمة نسخ يدوي [First & last.vwl]");
        window.Begin(ID_mnuFileOpen);
        window.AnswerFileDialog(first);
        window.WaitUntilReady();
        EXPECT_EQ(program.Setting(L"RecentFile1"), first);
        window.Choose(ID_mnuRecentFile_0);
        EXPECT_EQ(window.Caption(), L"Vaultwright ");
        EXPECT_THAT(window.List(ID_lsvBackupList).Column(kPath), ElementsAre(letter));
        window.Choose(ID_mnuRecentFile_1);
        EXPECT_THAT(window.List(ID_lsvBackupList).Column(kPath), ElementsAre(photo));
        window.Close();
    }
    DrivenProgram again(program.With(L""));
    again.Choose(ID_mnuRecentFile_1);
    EXPECT_THAT(again.List(ID_lsvBackupList).Column(kPath), ElementsAre(photo));
    again.Close();
}

TEST_F(Editing, FolderAddedToTheDefaultList_SwitchesTheLogonStartOn) {
    WriteDefaultList({});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuAddFolder);
    window.AnswerFileDialog(Home(L"Deep\\ChooseFolder....Don't modify this line"));
    window.WaitUntilReady();
    EXPECT_EQ(program.LogonCommand(), program.Path() + L" /S");
    EXPECT_EQ(program.Setting(L"Startup"), L"-1");
    // Without items there is nothing to back up.
    window.Choose(ID_mnuDel);
    EXPECT_EQ(program.LogonCommand(), std::nullopt);
    EXPECT_EQ(program.Setting(L"Startup"), L"0");
    // The option does the same.
    window.Choose(ID_mnuOptions_0);
    EXPECT_EQ(program.Setting(L"Startup"), L"-1");
    EXPECT_NE(program.LogonCommand(), std::nullopt);
    window.Choose(ID_mnuOptions_0);
    EXPECT_EQ(program.LogonCommand(), std::nullopt);
    window.Close();
}

TEST_F(Editing, FolderAddedToAnotherList_KeepsTheLogonStart) {
    const std::wstring other = program.List(L"Other.vwl", {L"BackupTo: " + Vault()});
    DrivenProgram window(program.With(Quoted(other)));
    window.Begin(ID_mnuAddFolder);
    window.AnswerFileDialog(Home(L"Deep\\ChooseFolder....Don't modify this line"));
    window.WaitUntilReady();
    window.Choose(ID_mnuOptions_0);
    EXPECT_EQ(program.LogonCommand(), std::nullopt);
    window.Close();
}

TEST_F(Editing, LockedList_IsReported_SavedAtTheNextChance) {
    WriteDefaultList({letter, photo});
    const std::string before = ReadBytes(program.DefaultList());
    DrivenProgram window(program.With(L""));
    {
        const FileHandle held(CreateFileW(program.DefaultList().c_str(), GENERIC_READ,
                                          FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
        window.Begin(ID_mnuDel);
        const Box box = window.AnswerBox(L"in procedure FileSave of Form frmMain");
        EXPECT_THAT(box.text, testing::StartsWith(L"Error 70 in line "));
        EXPECT_THAT(box.text, HasSubstr(L"Permission denied"));
        EXPECT_THAT(box.text, HasSubstr(program.DefaultList()));
        window.WaitUntilReady();
        EXPECT_EQ(ReadBytes(program.DefaultList()), before);
        EXPECT_EQ(window.List(ID_lsvBackupList).Count(), 1);
    }
    window.Close();
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({photo}));
}

TEST_F(Editing, ColumnClick_SortsRows_NextSaveKeepsTheOrder) {
    program.tree.File(L"Home\\big.txt", std::string(9000, 'x'));
    program.tree.File(L"Home\\Small.txt", "x");
    WriteDefaultList({letter, Home(L"big.txt"), Home(L"Small.txt")});
    DrivenProgram window(program.With(L""));
    const DrivenList list = window.List(ID_lsvBackupList);
    list.ClickColumn(3);
    window.WaitUntil([&] { return list.Text(0, kPath) == Home(L"big.txt"); }, "not sorted");
    EXPECT_THAT(list.Column(kPath), ElementsAre(Home(L"big.txt"), letter, Home(L"Small.txt")));
    list.ClickColumn(kName);
    window.WaitUntil(
        [&] {
            return list.Text(0, kPath) != Home(L"Small.txt") &&
                   list.Text(2, kPath) == Home(L"Small.txt");
        },
        "not sorted again");
    EXPECT_THAT(list.Column(kName), ElementsAre(L"big", L"Letter", L"Small"));
    EXPECT_EQ(ReadBytes(program.DefaultList()),
              FileOf({letter, Home(L"big.txt"), Home(L"Small.txt")}));
    list.Select(2);
    window.Choose(ID_mnuDel);
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({Home(L"big.txt"), letter}));
    window.Close();
}

TEST_F(Editing, OneItemFromTheCommandLine_CannotBeEdited) {
    DrivenProgram window(program.With(Quoted(letter)));
    EXPECT_THAT(window.List(ID_lsvBackupList).Column(kPath), ElementsAre(letter));
    for (const int command : {ID_mnuAddFile, ID_mnuDel, ID_mnuAddFolder, ID_Toolbar1_FileNew,
                              ID_Toolbar1_FileOpen, ID_Toolbar1_FileSave}) {
        window.Choose(command);
    }
    window.List(ID_lsvBackupList).PressKey(VK_DELETE);
    window.WaitUntilReady();
    EXPECT_THAT(window.List(ID_lsvBackupList).Column(kPath), ElementsAre(letter));
    EXPECT_THAT(LinesOf(program.SingleItemList()), testing::Contains(letter));
    EXPECT_THAT(window.Run().Boxes(), IsEmpty());
    window.Close();
}

}  // namespace
}  // namespace vw::test
