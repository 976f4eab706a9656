#pragma once

#include <algorithm>
#include <string>

#include "platform/WindowsHeader.h"
#include "tests/support/ImportHook.h"
// The dialogs' declarations need those of the window system first.
#include <cderr.h>
#include <commdlg.h>

// The system's dialogs are in a library that loads late.
extern "C" {
extern void* __imp_GetOpenFileNameW;      // NOLINT(clang-diagnostic-reserved-identifier)
extern void* __imp_GetSaveFileNameW;      // NOLINT(clang-diagnostic-reserved-identifier)
extern void* __imp_CommDlgExtendedError;  // NOLINT(clang-diagnostic-reserved-identifier)
}

namespace vw::test {

/// Takes the place of the system's file dialogs, as long as it lives: notes what a dialog was
/// given, and answers it. One object at a time.
class FileDialogHook {
  public:
    FileDialogHook() { current_ = this; }
    FileDialogHook(const FileDialogHook&) = delete;
    FileDialogHook& operator=(const FileDialogHook&) = delete;
    ~FileDialogHook() = default;

    std::wstring answer;   ///< the path that is chosen; none cancels the dialog, or fails
    DWORD error = 0;       ///< what it fails with; 0 for a cancel
    std::wstring movesTo;  ///< makes this folder the current one, as dialogs may

    DWORD flags = 0;
    bool isOwnerEnabled = false;

  private:
    static BOOL WINAPI Show(OPENFILENAMEW* dialog) {
        current_->flags = dialog->Flags;
        current_->isOwnerEnabled = IsWindowEnabled(dialog->hwndOwner) != 0;
        if (!current_->movesTo.empty()) SetCurrentDirectoryW(current_->movesTo.c_str());
        if (current_->answer.empty()) return FALSE;
        const std::wstring& path = current_->answer;
        *std::copy(path.begin(), path.end(), dialog->lpstrFile) = L'\0';
        dialog->nFileOffset = static_cast<WORD>(path.rfind(L'\\') + 1);
        return TRUE;
    }
    static DWORD WINAPI Error() { return current_->error; }

    static inline FileDialogHook* current_ = nullptr;
    ImportHook open_{__imp_GetOpenFileNameW, &Show};
    ImportHook save_{__imp_GetSaveFileNameW, &Show};
    ImportHook end_{__imp_CommDlgExtendedError, &Error};
};

}  // namespace vw::test
