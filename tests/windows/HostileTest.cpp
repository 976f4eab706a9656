// Ill will met by the real windows: recent entries and settings that nobody stored, a comment that
// names another folder, and programs that bear the names of the system's own.

#include <gmock/gmock.h>

#include <array>
#include <iostream>
#include <random>

#include "tests/support/Histories.h"
#include "tests/support/ScratchRegistry.h"
#include "tests/system/HostileValues.h"
#include "tests/windows/BackupWindows.h"

namespace vw::test {
namespace {

class Hostile : public BackupWindows {
  protected:
    /// Answers boxes until the main window is open; null when the program has ended instead.
    /// A start that failed leaves the opening screen, to be closed.
    static HWND OpenMain(ProgramRun& run) {
        ULONGLONG quietSince = GetTickCount64();
        while (!run.HasEnded()) {
            if (AnswerAll(run)) quietSince = GetTickCount64();
            const HWND screen = FindWindowOf(run.ProcessId(), L"frmAbout");
            if (screen != nullptr && GetTickCount64() - quietSince > 3000) {
                PostMessageW(screen, WM_CLOSE, 0, 0);
                quietSince = GetTickCount64();
            }
            const HWND main = FindWindowOf(run.ProcessId(), L"frmMain");
            if (main != nullptr && IsWindowVisible(main) != 0 && IsWindowEnabled(main) != 0) {
                return main;
            }
            static_cast<void>(run.StaysFor(10));
        }
        return nullptr;
    }

    static bool AnswerAll(ProgramRun& run) {
        const std::vector<Box> boxes = BoxesOf(run.ProcessId());
        for (const Box& box : boxes) Press(box, box.buttons.empty() ? IDOK : box.buttons.back());
        return !boxes.empty();
    }
};

TEST_F(Hostile, SettingsAndRecentEntries_DoNotCrash) {
    const auto histories = Histories::Usually(3);
    const std::wstring canary = program.tree.Folder(L"Precious");
    program.tree.File(L"Precious\\a.txt", "precious");
    const Tree before = ReadTree(canary);
    for (unsigned seed = histories.first; seed != histories.End() && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        WriteDefaultList({letter});
        for (int i = 0; i < 6; ++i) {
            WriteValue(HKEY_CURRENT_USER, program.SettingsKey(), HostileSettingName(random),
                       HostileValue(random));
        }
        ProgramStart start = program.With(L"");
        // A destination may be any text, a relative path too.
        start.currentFolder = program.tree.Folder(L"Current");
        ProgramRun run(start);
        const HWND main = OpenMain(run);
        if (main != nullptr) {
            for (const int id : {ID_mnuRecentFile_0, ID_mnuRecentFile_1, ID_mnuRecentFile_2,
                                 ID_mnuRecentFile_3, ID_mnuHelpHelp, ID_mnuFileSave}) {
                PostMessageW(main, WM_COMMAND, MAKEWPARAM(id, 0), 0);
                if (run.StaysFor(100)) OpenMain(run);
            }
            PostMessageW(main, WM_CLOSE, 0, 0);
        }
        EXPECT_LT(run.WaitForEnd(), 0x8000'0000U) << "crashed";
        EXPECT_EQ(ReadTree(canary), before);
        DeleteKey(HKEY_CURRENT_USER, program.SettingsKey());
        program.SetSetting(L"Arabic", L"0");
    }
    std::cout << histories.count << " hostile starts of the windows\n";
}

TEST_F(Hostile, CommentNamesAnotherFolder_QuestionNamesIt) {
    const std::wstring precious = program.tree.File(L"Precious\\Letter.txt", "precious");
    program.tree.File(Vault() + L"\\Letter«0001».txt", "theirs", {2024, 1, 2, 3, 4, 5});
    program.tree.File(Vault() + L"\\Letter«0001».txt.vwc",
                      "Backed Files Date Last Modified:02/01/2024-03:04:05+Original Location:" +
                          ToBytes(program.tree.Path(L"Precious")) + "\r\n");
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuRestore);
    window.AnswerBox(precious, IDNO);
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(precious), "precious");
    window.Close();
}

// Beside the program, in the current folder, beside the list and beside the item.
TEST_F(Hostile, ProgramsNamedAsSystemTools_AreNotStarted) {
    const std::wstring built = BuiltProgram();
    const std::wstring canary = built.substr(0, built.rfind(L'\\')) + L"\\..\\tests\\canary.exe";
    const std::array<std::wstring, 4> folders{program.Folder(), program.tree.Folder(L"Current"),
                                              program.tree.Folder(L"Lists"),
                                              program.tree.Folder(L"Home")};
    std::vector<std::wstring> planted;
    for (const std::wstring& folder : folders) {
        for (const wchar_t* const name :
             {L"rundll32.exe", L"cmd.exe", L"explorer.exe", L"msinfo32.exe", L"notepad.exe",
              L"hh.exe", L"rundll32.com", L"url.dll"}) {
            planted.push_back(folder + L"\\" + name);
            ASSERT_NE(CopyFileW(canary.c_str(), planted.back().c_str(), FALSE), 0)
                << "no canary.exe beside the tests";
        }
    }
    // They do run when they are meant.
    EXPECT_EQ(ProgramRun({.program = planted[0], .arguments = L""}).WaitForEnd(), 0U);
    ASSERT_TRUE(Exists(planted[0] + L".ran"));
    program.tree.Remove(planted[0] + L".ran");

    const std::wstring odd = program.tree.File(L"Home\\Letter.nobodyopens", "x");
    const std::wstring list =
        program.List(L"Lists\\Mine.vwl", {L"BackupTo: " + Vault(), odd, odd + L"other"});
    ProgramStart start = program.With(Quoted(list));
    start.currentFolder = folders[1];
    DrivenProgram window(start);
    BackUp(window);
    for (const int command : {ID_mnuOpen, ID_mnuOpenCopy, ID_mnuHelpHelp, ID_Toolbar1_ActionOpen}) {
        window.Choose(command);
    }
    EXPECT_TRUE(window.Run().StaysFor(1500));
    window.Close();
    for (const std::wstring& path : planted) EXPECT_FALSE(Exists(path + L".ran")) << "started";
}

}  // namespace
}  // namespace vw::test
