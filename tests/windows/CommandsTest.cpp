// Commands of the real window whose effect depends on what was done before them.

#include <gmock/gmock.h>

#include <thread>

#include "tests/windows/EditingWindows.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class Commands : public EditingWindows {
  protected:
    void BackUp(DrivenProgram& window) {
        window.Begin(ID_mnuBackup);
        window.WaitForBusyDialog();
        window.WaitUntilBusyDialogIsGone();
        window.WaitUntilReady();
    }
};

TEST_F(Commands, ClickOnTheSelectedRow_ShowsItsCopies) {
    WriteDefaultList({photo, letter});
    DrivenProgram window(program.With(L""));
    BackUp(window);
    const DrivenList items = window.List(ID_lsvBackupList);
    const DrivenList stored = window.List(ID_lsvRestore1);
    EXPECT_THAT(stored.Column(kName), ElementsAre(L"Letter", L"Photo"));
    for (const int other : {0, 0}) {
        stored.Select(other);
        window.WaitUntilReady();
        EXPECT_EQ(items.Selected(), 0);
        items.Click(0);
        window.WaitUntil([&] { return stored.Selected() == 1; }, "the copies of another item");
        window.WaitUntilReady();
        EXPECT_THAT(window.List(ID_lsvRestore2).Column(3),
                    ElementsAre(Vault() + L"\\Photo«0001».jpg"));
    }
    window.Close();
}

TEST_F(Commands, OneItemFromTheCommandLine_OtherList_EnablesTheCommands) {
    WriteDefaultList({photo, deep});
    DrivenProgram window(program.With(Quoted(letter)));
    const DrivenList items = window.List(ID_lsvBackupList);
    window.Choose(ID_mnuRecentFile_0);
    EXPECT_THAT(items.Column(kPath), ElementsAre(photo, deep));
    items.Select(0);
    items.PressKey(VK_DELETE);
    window.WaitUntil([&] { return items.Count() == 1; }, "the key does nothing");
    window.WaitUntilReady();
    items.Drop({letter});
    window.WaitUntil([&] { return items.Count() == 2; }, "the drop does nothing");
    window.WaitUntilReady();
    window.Begin(ID_Toolbar1_EditAddFile);
    window.AnswerFileDialog(photo);
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({deep, letter, photo}));
    EXPECT_THAT(LinesOf(program.SingleItemList()), Contains(letter));
    window.Close();
}

TEST_F(Commands, DriveRootDropped_IsRefused) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    // The drop ends when the box does.
    std::thread drop([&] { window.List(ID_lsvBackupList).Drop({L"C:\\", photo}); });
    window.AnswerBox(L"Add sub path; not a drive");
    drop.join();
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({letter, photo}));
    window.Close();
}

TEST_F(Commands, DriveRootOnTheCommandLine_IsReported_ProgramEnds) {
    for (const auto* root : {L"C:\\", L"C:"}) {
        ProgramRun run(program.With(root));
        const Box box = run.WaitForBox();
        EXPECT_EQ(box.text, L"Add sub path; not a drive");
        run.Answer(box, IDOK);
        EXPECT_EQ(run.WaitForEnd(), 0U) << "without a window";
        EXPECT_FALSE(Exists(program.SingleItemList()));
    }
}

TEST_F(Commands, FolderDialog_NextDialogHasItsOwnTitle) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuFileOpen);
    const std::wstring title = window.AnswerFileDialog(L"");
    window.WaitUntilReady();
    window.Begin(ID_mnuAddFolder);
    EXPECT_NE(window.AnswerFileDialog(L""), title);
    window.WaitUntilReady();
    window.Begin(ID_mnuFileOpen);
    EXPECT_EQ(window.AnswerFileDialog(L""), title);
    window.WaitUntilReady();
    window.Close();
}

// A mark beside "Activate Auto Backup" looks like protection, which it is not.
TEST_F(Commands, AutoBackupIsSet_StatusLineSaysThatItBacksNothingUp) {
    const auto says = [](const DrivenProgram& window, std::wstring_view text) {
        return window.TextOf(ID_sbrStatus).find(text) != std::wstring::npos;
    };
    WriteDefaultList({});
    {
        DrivenProgram window(program.With(L""));
        EXPECT_FALSE(says(window, L"log-on"));
        window.Begin(ID_mnuAddFolder);
        window.AnswerFileDialog(Home(L"Deep"));
        window.WaitUntilReady();
        EXPECT_TRUE(says(window, L"starts Vaultwright at log-on. That alone backs nothing up"));
        window.Choose(ID_mnuDel);
        window.Close();
    }
    program.SetSetting(L"Arabic", L"-1");
    program.SetSetting(L"ArabicPrepared", L"-1");
    DrivenProgram window(program.With(L""));
    EXPECT_FALSE(says(window, L"تسجيل الدخول"));
    window.Choose(ID_mnuOptions_0);
    EXPECT_TRUE(says(window, L"عند تسجيل الدخول. لا يُنسخ شيء عندئذٍ"));
    window.Choose(ID_mnuOptions_0);
    window.Close();
}

TEST_F(Commands, FolderTypedByItsPath_IsTheItem) {
    WriteDefaultList({});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuAddFolder);
    window.AnswerFileDialog(Home(L"Deep"));
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({Home(L"Deep") + L"\\"}));
    window.Close();
}

TEST_F(Commands, ClearAll_KeepsTheListAsOld) {
    WriteDefaultList({letter, photo});
    DrivenProgram window(program.With(L""));
    window.Choose(ID_Toolbar1_EditDelAll);
    EXPECT_EQ(ReadBytes(program.DefaultList()), FileOf({}));
    EXPECT_EQ(ReadBytes(program.DefaultList() + L".old"), FileOf({letter, photo}));
    window.Close();
}

}  // namespace
}  // namespace vw::test
