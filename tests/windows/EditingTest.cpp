// The backup list worked through the real window: what the user does, and what the list file says
// after each step.

#include <gmock/gmock.h>

#include "tests/windows/EditingWindows.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

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

}  // namespace
}  // namespace vw::test
