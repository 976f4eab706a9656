// What the windows say when a run is over: boxes, status line, report.

#include <gmock/gmock.h>

#include "tests/windows/BackupWindows.h"

namespace vw::test {
namespace {

using testing::HasSubstr;

class Outcome : public BackupWindows {};

TEST_F(Outcome, ManyLockedFiles_FourBoxesInAll) {
    std::vector<FileHandle> locks;
    for (int i = 0; i < 25; ++i) {
        const std::wstring path =
            program.tree.File(L"Home\\Many\\f" + std::to_wstring(i) + L".txt");
        locks.emplace_back(
            CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    }
    program.tree.File(L"Home\\Many\\free.txt");
    WriteDefaultList({Home(L"Many") + L"\\", letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    for (int i = 0; i < 3; ++i) {
        const Box box = window.AnswerBox(L"Error 70 in line ");
        EXPECT_THAT(box.text, HasSubstr(L"Another program has this file open. The older copies are "
                                        L"unchanged; close the program and back up again."));
    }
    window.AnswerBox(L"There were 25 errors.");
    window.WaitUntilReady();
    EXPECT_THAT(window.TextOf(ID_sbrStatus), HasSubstr(L": 1 copied, 0 unchanged, 1 failed"));
    window.Close();
}

TEST_F(Outcome, StatusLine_ClickedWithTheMouse_ShowsTheReport) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    BackUp(window);
    EXPECT_THAT(window.TextOf(ID_sbrStatus), HasSubstr(L": 1 copied, 0 unchanged, 0 failed"));
    const HWND line = window.Control(ID_sbrStatus);
    PostMessageW(line, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 8));
    PostMessageW(line, WM_LBUTTONUP, 0, MAKELPARAM(20, 8));
    const HWND busy = window.WaitForBusyDialog();
    EXPECT_THAT(WindowText(FindControl(busy, ID_txtReport)), HasSubstr(L"Backing: " + letter));
    EXPECT_TRUE(IsWindowEnabled(window.Main()));
    PostMessageW(busy, WM_CLOSE, 0, 0);
    window.WaitUntilBusyDialogIsGone();
    window.Close();
}

TEST_F(Outcome, ArabicWindow_ItemsThatAreNotThere_AreNamedInTheStatusLine) {
    program.SetSetting(L"Arabic", L"-1");
    program.SetSetting(L"ArabicPrepared", L"-1");
    WriteDefaultList({letter, Home(L"Gone.doc")});
    DrivenProgram window(program.With(L""));
    EXPECT_THAT(window.TextOf(ID_sbrStatus), HasSubstr(L"غير موجود الآن: " + Home(L"Gone.doc")));
    window.Close();
}

}  // namespace
}  // namespace vw::test
