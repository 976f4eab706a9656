#include "platform/CurrentFolder.h"

#include "platform/WindowsHeader.h"

namespace vw {

std::wstring CurrentFolder() {
    std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
    const DWORD length = GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data());
    folder.resize(length < folder.size() ? length : 0);
    return folder;
}

FolderToStayIn::~FolderToStayIn() {
    if (!folder_.empty()) SetCurrentDirectoryW(folder_.c_str());
}

}  // namespace vw
