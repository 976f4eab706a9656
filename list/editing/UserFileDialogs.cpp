#include "list/editing/UserFileDialogs.h"

#include <algorithm>

#include "platform/CurrentFolder.h"
#include "platform/EnabledBoxOwner.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "ui/Form.h"
// The dialogs' declarations need those of the window system first.
#include <cderr.h>
#include <commdlg.h>

namespace vw {
namespace {

// Enough for a selection of some thousand files.
constexpr std::size_t kRoom = 262144;

// "name|pattern" with a NUL behind each part, as the system wants it.
std::wstring SystemFilter(const std::wstring& filter) {
    std::wstring parts = filter;
    std::replace(parts.begin(), parts.end(), L'|', L'\0');
    return parts + L'\0';
}

// What the system fills in: one path, or a folder and names with a NUL before each and two behind.
std::wstring Selection(const std::wstring& room, std::size_t nameOffset) {
    constexpr std::wstring_view kEnd(L"\0\0", 2);
    const bool isMultiple = nameOffset > 0 && room[nameOffset - 1] == L'\0';
    return room.substr(0, room.find(isMultiple ? kEnd : kEnd.substr(1)));
}

// The folder of the selection, without a "\" at its end unless it is a drive's.
std::wstring FolderOf(const std::wstring& room, std::size_t nameOffset) {
    std::wstring folder = room.substr(0, nameOffset == 0 ? 0 : nameOffset - 1);
    if (folder.ends_with(L':')) folder += L'\\';
    return folder;
}

using SystemDialog = BOOL(WINAPI*)(OPENFILENAMEW*);

std::optional<std::wstring> Show(FileDialogSetup& dialog, HWND owner, SystemDialog show) {
    const std::wstring filter = SystemFilter(dialog.filter);
    std::wstring room(kRoom, L'\0');
    std::copy(dialog.fileName.begin(), dialog.fileName.end(), room.begin());
    OPENFILENAMEW data{};
    data.lStructSize = sizeof data;
    data.hwndOwner = owner;
    data.lpstrFilter = filter.c_str();
    data.lpstrFile = room.data();
    data.nMaxFile = static_cast<DWORD>(room.size());
    if (!dialog.initialFolder.empty()) data.lpstrInitialDir = dialog.initialFolder.c_str();
    if (!dialog.title.empty()) data.lpstrTitle = dialog.title.c_str();
    if (!dialog.defaultExtension.empty()) data.lpstrDefExt = dialog.defaultExtension.c_str();
    data.Flags = dialog.flags;
    const EnabledBoxOwner enabled(owner);
    const CurrentFolderKeeper start;
    if (show(&data) != 0) {
        dialog.lastFolder = FolderOf(room, data.nFileOffset);
        return Selection(room, data.nFileOffset);
    }
    const DWORD code = CommDlgExtendedError();
    if (code == 0) return std::nullopt;
    if (code == FNERR_INVALIDFILENAME) Throw(error_number::kBadName, dialog.fileName);
    if (code == FNERR_BUFFERTOOSMALL) Throw(error_number::kOutOfMemory);
    Throw(error_number::kInvalidCall);
}

}  // namespace

std::optional<std::wstring> UserFileDialogs::ShowOpen(FileDialogSetup& dialog) {
    return Show(dialog, main_.Handle(), GetOpenFileNameW);
}

std::optional<std::wstring> UserFileDialogs::ShowSave(FileDialogSetup& dialog) {
    return Show(dialog, main_.Handle(), GetSaveFileNameW);
}

}  // namespace vw
