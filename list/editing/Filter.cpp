#include "list/editing/Filter.h"

#include <string>

#include "platform/WindowsHeader.h"

namespace vw::MRecentFiles {
namespace {

std::wstring CurrentFolder() {
    std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
    const DWORD length = GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data());
    folder.resize(length < folder.size() ? length : 0);
    return folder;
}

}  // namespace

void Filter(FileDialogSetup& dialog, FileDialogKind kind, std::wstring_view defaultFolder) {
    SetUpFileDialog(dialog, kind, CurrentFolder(), defaultFolder);
}

}  // namespace vw::MRecentFiles
