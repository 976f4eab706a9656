// Days of use in short: whatever a user does, in any order, again and again in one process, which
// must not keep more and more of the system for itself.

#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>
#include <random>

#include "tests/support/Histories.h"
#include "tests/support/WineBridge.h"
#include "tests/windows/BackupWindows.h"
#include "tests/windows/ProcessCounts.h"

namespace vw::test {
namespace {

// Files of a backup that is hardly ever over before it is cancelled.
constexpr int kLongBackup = 1200;

// What may differ between two moments without anything being lost: a file that the system keeps
// open a while, a cursor or a font made at its first use, memory that is free but kept.
constexpr int kHandlesApart = 5;
constexpr int kDrawingApart = 8;
constexpr int kWindowsApart = 8;
constexpr std::size_t kMemoryApart = 1U << 20U;

// Wine keeps a handle and a window of each file dialog that was confirmed, and a window of each
// icon, whatever program they belong to. A round has one of each.
int LostByTheSystem(int inEachRound, unsigned rounds) {
    return UnderWine() ? inEachRound * static_cast<int>(rounds) : 0;
}

class Soak : public BackupWindows {
  protected:
    Soak() {
        program.SetSetting(L"ArabicPrepared", L"-1");
        program.tree.File(L"Home\\Docs\\a.txt", "a");
        program.tree.File(L"Home\\Docs\\Deep\\b.txt", "b");
        MakeManyFiles(kLongBackup);
        WriteDefaultList({letter, Home(L"Docs") + L"\\", Home(L"Docs") + L"\\*"});
    }

    // A command that comes while the one before is still going to its end is not taken up.
    static void BeginSurely(DrivenProgram& window, int id) {
        for (int tries = 0; tries < 5 && IsWindowEnabled(window.Main()) != 0; ++tries) {
            window.Begin(id);
            for (int i = 0; i < 50 && IsWindowEnabled(window.Main()) != 0; ++i) Sleep(20);
        }
    }

    void Edit(DrivenProgram& window) {
        BeginSurely(window, ID_mnuAddFile);
        window.AnswerFileDialog(program.tree.File(L"Home\\Added.txt", "added"));
        window.WaitUntilReady();
        window.List(ID_lsvBackupList).Select(window.List(ID_lsvBackupList).Count() - 1);
        window.Choose(ID_mnuDel);
        window.List(ID_lsvBackupList).Drop({Home(L"Docs")});
        window.WaitUntilReady();
        window.List(ID_lsvBackupList).ClickColumn(Number(0, 5));
        window.WaitUntilReady();
    }

    void BackUpAChange(DrivenProgram& window) {
        Change(L"Letter.txt");
        Change(L"Docs\\a.txt");
        BeginSurely(window, ID_mnuBackup);
        window.WaitForBusyDialog();
        EndLongBackup(window);
    }

    void CancelABackup(DrivenProgram& window) {
        const HWND busy = BeginLongBackup(window);
        PostMessageW(busy, WM_COMMAND, MAKEWPARAM(ID_cmdCancel, BN_CLICKED),
                     reinterpret_cast<LPARAM>(FindControl(busy, ID_cmdCancel)));
        EndLongBackup(window);
        const std::wstring outcome = window.TextOf(ID_sbrStatus);
        for (const wchar_t* const word : {L"cancelled", L"أُلغي"}) {
            wasCancelled_ = wasCancelled_ || outcome.find(word) != std::wstring::npos;
        }
    }

    void BackUpBehindTheIcon(DrivenProgram& window) {
        PostMessageW(BeginLongBackup(window), WM_SYSCOMMAND, SC_MINIMIZE, 0);
        const HWND icon = window.Run().WaitForWindow(L"frmTrayIcon");
        Sleep(static_cast<DWORD>(Number(0, 300)));
        PostMessageW(icon, WM_COMMAND, ID_mnuProp1Maximize, 0);
        EndLongBackup(window);
    }

    void Restore(DrivenProgram& window) {
        window.List(ID_lsvRestore1).Select(window.List(ID_lsvRestore1).Count() - 1);
        window.WaitUntilReady();
        window.List(ID_lsvRestore2).Select(window.List(ID_lsvRestore2).Count() - 1);
        BeginSurely(window, ID_mnuRestore);
        Press(window.Run().WaitForBox(), IDYES);
        window.WaitForBusyDialog();
        window.WaitUntilBusyDialogIsGone();
        window.WaitUntilReady();
    }

    void DeleteACopy(DrivenProgram& window) {
        window.List(ID_lsvRestore2).Select(window.List(ID_lsvRestore2).Count() - 1);
        BeginSurely(window, ID_mnuDelCopy);
        Press(window.Run().WaitForBox(), IDYES);
        window.WaitUntilReady();
    }

    void LookAround(DrivenProgram& window) {
        for (const int command : {ID_mnuViewMethod_0, ID_mnuViewMethod_2, ID_mnuViewMethod_3}) {
            window.Choose(command);
        }
        BeginSurely(window, ID_mnuHelpAbout);
        const HWND about = window.Run().WaitForVisibleWindow(L"frmAbout");
        PostMessageW(about, WM_CLOSE, 0, 0);
        window.WaitUntilReady();
    }

    void Minimise(DrivenProgram& window) {
        PostMessageW(window.Main(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
        window.WaitUntil([&] { return IsIconic(window.Main()) != 0; }, "not minimised");
        PostMessageW(window.Main(), WM_SYSCOMMAND, SC_RESTORE, 0);
        window.WaitUntil([&] { return IsIconic(window.Main()) == 0; }, "not restored");
        window.WaitUntilReady();
    }

    void StartTheOtherLanguage(DrivenProgram& window) {
        const bool isArabic = ClassOf(window.Main()) == L"frmMainAr";
        program.SetSetting(L"Arabic", isArabic ? L"0" : L"-1");
        DrivenProgram other(program.With(Quoted(letter)));
        EXPECT_EQ(ClassOf(other.Main()), isArabic ? L"frmMainEn" : L"frmMainAr");
        EXPECT_EQ(other.Close(), 0U);
        window.WaitUntilReady();
    }

    /// Every one of these, in an order by chance.
    void Round(DrivenProgram& window) {
        struct Step {
            const char* name;
            void (Soak::*take)(DrivenProgram&);
        };
        std::vector<Step> steps{
            {"edit", &Soak::Edit},         {"back up", &Soak::BackUpAChange},
            {"restore", &Soak::Restore},   {"cancel", &Soak::CancelABackup},
            {"look", &Soak::LookAround},   {"icon", &Soak::BackUpBehindTheIcon},
            {"minimise", &Soak::Minimise}, {"start", &Soak::StartTheOtherLanguage},
        };
        std::shuffle(steps.begin(), steps.end(), random);
        for (const Step& step : steps) {
            (this->*step.take)(window);
            (taken += step.name) += ", ";
            if (HasFailure()) throw std::runtime_error("no answer after: " + taken);
            ++done;
        }
        // Safety copies would grow without an end, and with them the lists of the window.
        while (window.List(ID_lsvRestore2).Count() > 3) DeleteACopy(window);
    }

    /// One process, counted after the first rounds and after these many more.
    void StaysAsItIs(unsigned firstRounds, unsigned rounds) {
        done = 0;
        wasCancelled_ = false;
        DrivenProgram window(program.With(L""));
        BackUp(window);
        // What is made once and kept.
        for (unsigned i = 0; i < firstRounds; ++i) Round(window);
        const ProcessCounts before = ProcessCounts::Of(window.Run().ProcessId());
        for (unsigned i = 0; i < rounds; ++i) Round(window);
        const ProcessCounts after = ProcessCounts::Of(window.Run().ProcessId());
        std::cout << done << " steps in the windows: " << before << "; in the end " << after
                  << "\n";
        EXPECT_GT(before.handles, 0);
        EXPECT_GT(before.drawing, 0);
        EXPECT_GT(before.windows, 0);
        EXPECT_LE(after.handles, before.handles + kHandlesApart + LostByTheSystem(1, rounds));
        EXPECT_LE(after.drawing, before.drawing + kDrawingApart);
        EXPECT_LE(after.windows, before.windows + kWindowsApart + LostByTheSystem(2, rounds));
        EXPECT_LE(after.memory, before.memory + kMemoryApart);
        EXPECT_EQ(window.Close(), wasCancelled_ ? 1223U : 0U);
    }

    int Number(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random); }

    std::mt19937 random;
    int done = 0;
    std::string taken;  ///< the steps so far, for whoever has to find out

  private:
    void Change(std::wstring_view name) {
        ++day_;
        program.tree.File(L"Home\\" + std::wstring(name), std::to_string(day_),
                          {2000 + day_ / 336, 1 + day_ / 28 % 12, 1 + day_ % 28, 12, 0, 0});
    }

    // The many files are an item only for as long as such a run needs them.
    HWND BeginLongBackup(DrivenProgram& window) {
        window.List(ID_lsvBackupList).Drop({Home(L"Many")});
        window.WaitUntilReady();
        Change(L"Many\\f0.txt");
        BeginSurely(window, ID_mnuBackup);
        return window.WaitForBusyDialog();
    }

    void EndLongBackup(DrivenProgram& window) {
        window.WaitUntilBusyDialogIsGone();
        window.WaitUntil([&] { return IsWindowVisible(window.Main()) != 0; }, "no main window");
        window.WaitUntilReady();
    }

    int day_ = 0;
    bool wasCancelled_ = false;  ///< a run, since the process began
};

TEST_F(Soak, LeaksNoHandlesObjectsOrMemory) {
    const auto histories = Histories::Usually(1);
    random.seed(histories.first);
    const bool isShort = histories.count == 1;
    for (const wchar_t* const language : {L"-1", L"0"}) {
        program.SetSetting(L"Arabic", language);
        StaysAsItIs(isShort ? 1 : 2, histories.count);
        if (isShort || HasFailure()) break;
    }
}

}  // namespace
}  // namespace vw::test
