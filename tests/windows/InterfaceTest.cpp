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

}  // namespace
}  // namespace vw::test
