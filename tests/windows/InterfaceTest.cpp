// The two languages, views, About, help and the tools, in the real windows.

#include <gmock/gmock.h>

#include <array>

#include "platform/TextCase.h"
#include "tests/support/WineBridge.h"
#include "tests/windows/BackupWindows.h"
// Needs windows.h before it.
#include <psapi.h>

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class Interface : public BackupWindows {};

bool HasLoaded(DWORD process, std::wstring_view library) {
    const KernelHandle handle(
        OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, process));
    std::array<HMODULE, 200> modules{};
    DWORD bytes = 0;
    EnumProcessModules(handle.Get(), modules.data(), sizeof modules, &bytes);
    for (std::size_t i = 0; i < std::min(modules.size(), bytes / sizeof(HMODULE)); ++i) {
        std::array<wchar_t, MAX_PATH> name{};
        GetModuleBaseNameW(handle.Get(), modules.at(i), name.data(), MAX_PATH);
        if (EqualNoCase(name.data(), library)) return true;
    }
    return false;
}

// The system offers no way to read the names here; its service for them is what is loaded.
TEST_F(Interface, ShownWindow_NamesItsControlsForScreenReaders) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    window.WaitUntil([&] { return HasLoaded(window.Run().ProcessId(), L"oleacc.dll"); },
                     "the names of the controls");
    window.Close();
}

TEST_F(Interface, ArabicWindow_HeadersAndQuestionsAreArabic) {
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

TEST_F(Interface, SwitchLanguage_StoresTheChoiceAndEndsTheProgram) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    window.ClickMoreCopies(1);
    window.Begin(ID_mnuToolEnAr);
    EXPECT_EQ(window.Run().WaitForEnd(), 0U);
    EXPECT_EQ(program.Setting(L"Arabic"), L"-1");
    EXPECT_THAT(LinesOf(program.DefaultList()), Contains(L"Backages: 4"));
}

TEST_F(Interface, AboutBox_OpensAndCloses) {
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

TEST_F(Interface, MissingHelpPage_OpensNothing) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    window.Choose(ID_mnuHelpHelp);
    EXPECT_THAT(window.Run().Boxes(), IsEmpty());
    window.Close();
}

TEST_F(Interface, EveryView_ShowsTheSameItems) {
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

TEST_F(Interface, LowerCaseNames_AreMadeAfterAYesOnly) {
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

// With a folder for temporary files of its own; the folders of Windows are cleaned too, which is
// why a real machine is spared.
TEST_F(Interface, TemporaryFiles_AreDeletedFromTheMenu) {
    if (!UnderWine()) GTEST_SKIP() << "this would clean the machine's own temporary folders";
    for (const auto* folder : {L"Temp", L"prefetch"}) {
        program.tree.Folder(L"C:\\windows\\" + std::wstring(folder));
    }
    WriteDefaultList({letter});
    ProgramStart start = program.With(L"");
    start.temporaryFolder = program.tree.Folder(L"Temporary");
    program.tree.File(L"Temporary\\Old.tmp");
    program.tree.File(L"Temporary\\VB1.tmp");
    program.tree.File(L"Temporary\\Sub\\older.txt");
    DrivenProgram window(start);
    window.Begin(ID_mnuToolsDelTemp);
    EXPECT_FALSE(WindowText(FindControl(window.WaitForBusyDialog(), ID_lblTitle)).empty());
    window.WaitUntilBusyDialogIsGone();
    window.WaitUntilReady();
    EXPECT_THAT(window.Run().Boxes(), IsEmpty());
    EXPECT_EQ(ReadTree(start.temporaryFolder).size(), 1U);
    EXPECT_TRUE(Exists(start.temporaryFolder + L"\\VB1.tmp"));
    EXPECT_TRUE(Exists(letter));
    window.Close();
}

TEST_F(Interface, MissingDrive_IsShownAsTheListNamesIt) {
    program.List(L"Program\\FilesList.vwl", {L"BackupTo: Q:\\Backup", L"Backages: 3", letter});
    DrivenProgram window(program.With(L""));
    EXPECT_EQ(window.TextOf(ID_cmbDestination), L"Q:");
    EXPECT_THAT(LinesOf(program.DefaultList()), Contains(L"BackupTo: Q:\\Backup"));
    window.Begin(ID_mnuBackup);
    window.AnswerBox(L"فشلت العملية بسبب عدم توفر مجلد النسخ إلى:\r\nQ:\\Backup");
    EXPECT_EQ(window.Run().WaitForEnd(), 76U);
}

}  // namespace
}  // namespace vw::test
