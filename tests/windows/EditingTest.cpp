// The backup list worked through the real window: what the user does, and what the list file says
// after each step.

#include <gmock/gmock.h>

#include "tests/windows/EditingWindows.h"

namespace vw::test {
namespace {

using testing::HasSubstr;

class Editing : public EditingWindows {};

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
