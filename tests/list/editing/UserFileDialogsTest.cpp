// The system's own dialogs, answered from inside the process.

#include "list/editing/UserFileDialogs.h"

#include "list/editing/Filter.h"
#include "platform/CurrentFolder.h"
#include "platform/WindowsHeader.h"
#include "tests/list/editing/ListFixture.h"
// The dialogs' controls need the declarations of the window system first.
#include <dlgs.h>

namespace vw::test {
namespace {

std::wstring typed;

// Types a name into the open dialog, and confirms.
void CALLBACK Confirm(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND dialog = GetForegroundWindow();
    const HWND field =
        GetDlgItem(dialog, cmb13) != nullptr ? GetDlgItem(dialog, cmb13) : GetDlgItem(dialog, edt1);
    if (field == nullptr) return;
    KillTimer(nullptr, timer);
    SetWindowTextW(field, typed.c_str());
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
}

class UserFileDialogs : public ListFixture {
  protected:
    vw::UserFileDialogs system{main.form};
    FileDialogSetup setup;
};

TEST_F(UserFileDialogs, BeginsInTheFolderOfTheLastFile) {
    const std::wstring start = CurrentFolder();
    const std::wstring folder = tree.Folder(L"On a stick");
    typed = tree.File(L"On a stick\\Mine.vwl");
    MRecentFiles::Filter(setup, FileDialogKind::OpenList, L"");
    EXPECT_EQ(setup.initialFolder, start);
    main.form.Show();
    SetTimer(nullptr, 0, 200, Confirm);
    EXPECT_EQ(system.ShowOpen(setup), typed);
    MRecentFiles::Filter(setup, FileDialogKind::OpenList, L"");
    EXPECT_EQ(setup.initialFolder, folder);
}

}  // namespace
}  // namespace vw::test
