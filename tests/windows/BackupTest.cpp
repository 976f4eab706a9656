// Backing up and restoring through the real windows: menus, busy dialog, boxes, icon.

#include <gmock/gmock.h>

#include "tests/windows/DrivenProgram.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int kName = 0;
constexpr int kTrayMessage = 512;

class Windows : public WindowsTest {
  protected:
    std::wstring Home(std::wstring_view name) const {
        return program.tree.Path(L"Home\\" + std::wstring(name));
    }
    void BackUp(DrivenProgram& window) {
        window.Begin(ID_mnuBackup);
        window.WaitForBusyDialog();
        window.WaitUntilBusyDialogIsGone();
        window.WaitUntilReady();
    }
    /// Enough files for a run that is still going on when the test looks.
    void MakeManyFiles() {
        for (int i = 0; i < 400; ++i) {
            program.tree.File(L"Home\\Many\\f" + std::to_wstring(i) + L".txt",
                              std::string(20000, 'x'));
        }
    }
    std::vector<std::wstring> InVault() const {
        std::vector<std::wstring> names;
        for (const auto& [path, node] : ReadTree(Vault())) {
            if (path.find(L'\\') == std::wstring::npos) names.push_back(path);
        }
        return names;
    }

    const std::wstring letter =
        program.tree.File(L"Home\\Letter.txt", "first", {2024, 1, 1, 12, 0, 0});
};

class Backup : public Windows {};

TEST_F(Backup, OfAnEmptyListSaysSoAndDoesNotTouchTheFile) {
    const std::wstring list = WriteDefaultList({});
    const std::string before = ReadBytes(list);
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    window.AnswerBox(L"لا يوجد تحديد في قائمة النسخ");
    window.WaitUntilReady();
    window.Close();
    EXPECT_EQ(ReadBytes(list), before);
}

TEST_F(Backup, ShowsItsCopiesAfterwards) {
    program.tree.File(L"Home\\Deep\\Inner.doc");
    WriteDefaultList({letter, Home(L"Deep") + L"\\"});
    DrivenProgram window(program.With(L""));
    EXPECT_EQ(window.List(ID_lsvRestore1).Count(), 0);
    BackUp(window);
    EXPECT_THAT(window.List(ID_lsvRestore1).Column(kName), ElementsAre(L"Deep", L"Letter"));
    EXPECT_THAT(window.List(ID_lsvRestore1).Column(1), ElementsAre(L"Folder", L".txt"));
    EXPECT_THAT(window.List(ID_lsvRestore1).Column(2), ElementsAre(L"0", L"0"));
    EXPECT_THAT(window.List(ID_lsvRestore2).Column(kName), ElementsAre(L"N01"));
    EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
    // A click on an item of the list shows its copies.
    window.List(ID_lsvBackupList).Select(1);
    window.List(ID_lsvBackupList).Select(0);
    window.WaitUntilReady();
    EXPECT_EQ(window.List(ID_lsvRestore1).Selected(), 1);
    EXPECT_THAT(window.List(ID_lsvRestore2).Column(3),
                ElementsAre(Vault() + L"\\Letter«0001».txt"));
    window.Close();
}

TEST_F(Backup, IsCancelledByTheBusyDialog) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\", letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_Toolbar1_ActionBackup);
    const HWND busy = window.WaitForBusyDialog();
    EXPECT_FALSE(IsWindowEnabled(window.Main()));
    EXPECT_EQ(WindowText(busy), L"Vault wright – please wait:");
    EXPECT_EQ(WindowText(FindControl(busy, ID_lblTitle)), L"Backing:");
    // A second command while one runs does nothing.
    window.Begin(ID_mnuBackup);
    window.Begin(ID_mnuDelAll);
    PostMessageW(busy, WM_COMMAND, MAKEWPARAM(ID_cmdCancel, BN_CLICKED),
                 reinterpret_cast<LPARAM>(FindControl(busy, ID_cmdCancel)));
    window.WaitUntilBusyDialogIsGone();
    window.WaitUntilReady();
    EXPECT_EQ(window.List(ID_lsvBackupList).Count(), 2);
    EXPECT_THAT(InVault(), testing::Not(Contains(L"Letter«0001».txt")));
    BackUp(window);
    EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
    window.Close();
}

TEST_F(Backup, KeepsItsReportWhenTheBoxIsTicked) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\", letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    const HWND busy = window.WaitForBusyDialog();
    SendMessageW(FindControl(busy, ID_chkDontHide), BM_CLICK, 0, 0);
    const HWND report = FindControl(busy, ID_txtReport);
    window.WaitUntil([&] { return WindowText(report).ends_with(L"Done:  - \r\n"); }, "no end");
    EXPECT_NE(WindowText(report).find(L"Backing:: " + letter + L" - \r\n"), std::wstring::npos);
    EXPECT_TRUE(IsWindowVisible(report));
    Sleep(3000);
    EXPECT_TRUE(IsWindowVisible(busy));
    EXPECT_FALSE(IsWindowEnabled(window.Main())) << "until the report is closed";
    PostMessageW(busy, WM_CLOSE, 0, 0);
    window.WaitUntilBusyDialogIsGone();
    window.WaitUntilReady();
    window.Close();
}

TEST_F(Backup, GoesOnBehindItsIconWhenTheDialogIsMinimised) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\", letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    const HWND busy = window.WaitForBusyDialog();
    PostMessageW(busy, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    EXPECT_NE(window.Run().WaitForWindow(L"frmTrayIcon"), nullptr);
    window.WaitUntilBusyDialogIsGone();
    window.WaitUntil([&] { return IsWindowVisible(window.Main()) != 0; }, "no main window");
    window.WaitUntilReady();
    EXPECT_EQ(FindWindowOf(window.Run().ProcessId(), L"frmTrayIcon"), nullptr);
    EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
    window.Close();
}

TEST_F(Backup, IsCancelledByTheMenuOfTheIcon) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\", letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    PostMessageW(window.WaitForBusyDialog(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    const HWND icon = window.Run().WaitForWindow(L"frmTrayIcon");
    PostMessageW(icon, WM_COMMAND, ID_mnuProp1Cancel, 0);
    window.WaitUntil([&] { return IsWindowVisible(window.Main()) != 0; }, "it goes on");
    window.WaitUntilReady();
    EXPECT_THAT(InVault(), testing::Not(Contains(L"Letter«0001».txt")));
    window.Close();
}

TEST_F(Backup, ExitOfTheIconEndsTheProgramAtOnce) {
    MakeManyFiles();
    const std::wstring list = WriteDefaultList({Home(L"Many") + L"\\", letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    PostMessageW(window.WaitForBusyDialog(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    const HWND icon = window.Run().WaitForWindow(L"frmTrayIcon");
    PostMessageW(icon, WM_COMMAND, ID_mnuProp1Exit, 0);
    EXPECT_EQ(window.Run().WaitForEnd(), 1223U);
    EXPECT_THAT(InVault(), testing::Not(Contains(L"Many«0001»"))) << "half a copy";
}

TEST_F(Backup, AClickOnTheIconOfIdleWindowsBringsThemBack) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\"});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    const HWND busy = window.WaitForBusyDialog();
    SendMessageW(FindControl(busy, ID_chkDontHide), BM_CLICK, 0, 0);
    const HWND report = FindControl(busy, ID_txtReport);
    window.WaitUntil([&] { return WindowText(report).ends_with(L"Done:  - \r\n"); }, "no end");
    PostMessageW(busy, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    const HWND icon = window.Run().WaitForWindow(L"frmTrayIcon");
    window.WaitUntil([&] { return IsWindowVisible(window.Main()) == 0; }, "not hidden");
    PostMessageW(icon, kTrayMessage, 1, WM_LBUTTONUP);
    window.WaitUntil([&] { return IsWindowVisible(window.Main()) != 0; }, "locked out");
    window.WaitUntil([&] { return IsWindowVisible(busy) != 0; }, "no report");
    PostMessageW(busy, WM_CLOSE, 0, 0);
    window.WaitUntilReady();
    window.Close();
}

TEST_F(Backup, TheEndOfTheSessionSavesTheListAndAsksNothing) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\"});
    DrivenProgram window(program.With(L""));
    window.ClickMoreCopies(1);
    window.Begin(ID_mnuBackup);
    window.WaitForBusyDialog();
    EXPECT_NE(SendMessageW(window.Main(), WM_QUERYENDSESSION, 0, 0), 0);
    PostMessageW(window.Main(), WM_ENDSESSION, TRUE, 0);
    window.Run().WaitForEnd();
    EXPECT_THAT(LinesOf(program.DefaultList()), Contains(L"Backages: 4"));
    EXPECT_THAT(window.Run().Boxes(), IsEmpty());
    EXPECT_THAT(InVault(), testing::Not(Contains(L"Many«0001»")));
}

TEST_F(Backup, ClosingTheMainWindowInARunSavesTheListAndEnds) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\"});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    window.WaitForBusyDialog();
    PostMessageW(window.Main(), WM_CLOSE, 0, 0);
    EXPECT_EQ(window.Run().WaitForEnd(), 1223U);
    EXPECT_THAT(LinesOf(program.DefaultList()), Contains(Home(L"Many") + L"\\"));
}

class Restoring : public Windows {
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

TEST_F(Restoring, BringsAnOldCopyBack) {
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    window.List(ID_lsvRestore2).Select(2);
    window.Begin(ID_mnuRestore);
    const Box box = window.AnswerBox(question, IDYES);
    EXPECT_EQ(box.text, question);
    window.WaitUntilBusyDialogIsGone();
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(letter), "first");
    EXPECT_EQ(ReadDate(letter), MakeDate({2024, 1, 1, 12, 0, 0}));
    // The third state is stored as N01, so nothing else had to be kept.
    EXPECT_THAT(window.List(ID_lsvRestore2).Column(kName), ElementsAre(L"N01", L"N02", L"N03"));
    EXPECT_EQ(window.List(ID_lsvRestore2).Selected(), 2);
    window.Close();
}

TEST_F(Restoring, KeepsAStateThatNoCopyHas) {
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

TEST_F(Restoring, ANoLeavesEverythingAsItIs) {
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

TEST_F(Restoring, GoesToAChosenFolderUnderItsOwnName) {
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

TEST_F(Restoring, ACancelledDialogRestoresNothing) {
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    window.Begin(ID_mnuRestoreTo);
    window.AnswerFileDialog(L"");
    window.WaitUntilReady();
    EXPECT_THAT(window.Run().Boxes(), IsEmpty());
    window.Close();
}

TEST_F(Restoring, WithoutACopyEachCommandSaysSoAndDoesNothingElse) {
    DrivenProgram window(program.With(L""));
    for (const int command :
         {ID_mnuRestore, ID_mnuRestoreTo, ID_mnuOpenCopy, ID_mnuDelCopy, ID_mnuDelCopies}) {
        window.Begin(command);
        window.AnswerBox(L"لا يوجد ملفات في قائمة الاستعادة");
        window.WaitUntilReady();
    }
    window.Close();
}

TEST_F(Restoring, DeletingOneCopyRebuildsTheCopies) {
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

TEST_F(Restoring, DeletingAllCopiesAsksOnceAndRemovesTheItem) {
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    window.Begin(ID_mnuDelCopies);
    window.AnswerBox(L"هل تريد بالتأكيد حذف كافة النسخ الاحتياطية العائدة للملف:\r\nLetter", IDYES);
    window.WaitUntilReady();
    EXPECT_EQ(window.List(ID_lsvRestore1).Count(), 0);
    EXPECT_EQ(window.List(ID_lsvRestore2).Count(), 0);
    EXPECT_THAT(ReadTree(Vault()), IsEmpty());
    EXPECT_EQ(ReadBytes(letter), "third");
    window.Close();
}

TEST_F(Restoring, ACopyThatSomebodyElseDeletedIsToldAndNothingIsOverwritten) {
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    program.tree.Remove(Vault() + L"\\Letter«0003».txt");
    window.List(ID_lsvRestore2).Select(2);
    window.Begin(ID_mnuRestore);
    window.AnswerBox(L"in procedure DoRestore of Form frmMain");
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(letter), "third");
    window.Close();
}

class Interface : public Windows {};

TEST_F(Interface, TheArabicWindowHasArabicHeadersAndAsksInArabic) {
    program.SetSetting(L"Arabic", L"-1");
    program.SetSetting(L"ArabicPrepared", L"-1");
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    EXPECT_EQ(ClassOf(window.Main()), L"frmMainAr");
    EXPECT_EQ(window.List(ID_lsvBackupList).Headers()[0], L"الاسم");
    EXPECT_NE(GetWindowLongW(window.Main(), GWL_EXSTYLE) & WS_EX_LAYOUTRTL, 0);
    window.Begin(ID_mnuDelCopy);
    window.AnswerBox(L"لا يوجد تحديد في قائمة الاستعادة");
    window.WaitUntilReady();
    BackUp(window);
    EXPECT_THAT(window.List(ID_lsvRestore2).Column(kName), ElementsAre(L"N01"));
    window.Close();
}

TEST_F(Interface, SwitchingTheLanguageEndsTheProgramAndStoresTheChoice) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    window.ClickMoreCopies(1);
    window.Begin(ID_mnuToolEnAr);
    EXPECT_EQ(window.Run().WaitForEnd(), 0U);
    EXPECT_EQ(program.Setting(L"Arabic"), L"-1");
    EXPECT_THAT(LinesOf(program.DefaultList()), Contains(L"Backages: 4"));
}

TEST_F(Interface, TheAboutBoxOpensAndCloses) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuHelpAbout);
    const HWND about = window.Run().WaitForVisibleWindow(L"frmAboutEn");
    EXPECT_EQ(WindowText(FindControl(about, ID_lblVer)), L"1.2");
    EXPECT_EQ(WindowText(FindControl(about, ID_lblRevision)), L"133");
    EXPECT_FALSE(IsWindowEnabled(window.Main()));
    PostMessageW(about, WM_COMMAND, MAKEWPARAM(ID_cmdClose, BN_CLICKED),
                 reinterpret_cast<LPARAM>(FindControl(about, ID_cmdClose)));
    window.WaitUntilReady();
    window.Close();
}

TEST_F(Interface, AMissingHelpPageOpensNothing) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    window.Choose(ID_mnuHelpHelp);
    EXPECT_THAT(window.Run().Boxes(), IsEmpty());
    window.Close();
}

TEST_F(Interface, EveryViewShowsTheSameItems) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    for (const int command :
         {ID_mnuViewMethod_0, ID_mnuViewMethod_1, ID_mnuViewMethod_2, ID_Toolbar1_ViewDetails,
          ID_mnuViewAlign_0, ID_mnuViewAlign_1, ID_mnuViewAlign_2}) {
        window.Choose(command);
        EXPECT_THAT(window.List(ID_lsvBackupList).Column(kName), ElementsAre(L"Letter"));
    }
    window.Close();
}

TEST_F(Interface, ALowerCaseNameForEveryFileOfAFolderAfterAQuestion) {
    WriteDefaultList({letter});
    program.tree.File(L"Home\\Loud\\NAME.TXT");
    DrivenProgram window(program.With(L""));
    for (const int answer : {IDNO, IDYES}) {
        window.Begin(ID_mnuToolRepair);
        window.AnswerFileDialog(Home(L"Loud\\ChooseFolder....Don't modify this line"));
        const Box box = window.AnswerBox(Home(L"Loud"), answer);
        EXPECT_EQ(box.defaultButton, IDNO);
        if (answer == IDYES) window.AnswerBox(L"Done");
        window.WaitUntilReady();
        const auto names = ReadTree(Home(L"Loud"));
        EXPECT_EQ(names.contains(L"NAME.TXT"), answer == IDNO);
    }
    window.Close();
}

TEST_F(Interface, AMissingDriveGivesWayToC) {
    program.List(L"Program\\FilesList.vwl", {L"BackupTo: Q:\\Backup", L"Backages: 3", letter});
    DrivenProgram window(program.With(L""));
    EXPECT_EQ(window.TextOf(ID_cmbDestination), L"C:");
    EXPECT_THAT(LinesOf(program.DefaultList()), Contains(L"BackupTo: Q:\\Backup"));
    window.Begin(ID_mnuBackup);
    window.AnswerBox(L"فشلت العملية بسبب عدم توفر مجلد النسخ إلى:\r\nQ:\\Backup");
    EXPECT_EQ(window.Run().WaitForEnd(), 76U);
}

}  // namespace
}  // namespace vw::test
