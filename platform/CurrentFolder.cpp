#include "platform/CurrentFolder.h"

#include "platform/WindowsHeader.h"

namespace vw {

std::wstring CurrentFolder() {
    std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
    const DWORD length = GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data());
    folder.resize(length < folder.size() ? length : 0);
    return folder;
}

void WorkIn(const std::wstring& folder) {
    if (!folder.empty()) SetCurrentDirectoryW(folder.c_str());
}

CurrentFolderKeeper::~CurrentFolderKeeper() { WorkIn(folder_); }

}  // namespace vw
