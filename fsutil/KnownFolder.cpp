#include "fsutil/KnownFolder.h"

#include <array>
#include <cstddef>

#include "platform/WindowsHeader.h"

// Behind the header above, which they build on.
#include <knownfolders.h>
#include <objbase.h>
#include <shlobj.h>

namespace vw {

std::wstring KnownFolderOfNumber(int number) {
    // In the order in which the collection numbers them.
    static const std::array<const KNOWNFOLDERID*, 18> kFolders = {
        &FOLDERID_PublicDesktop, &FOLDERID_CommonStartMenu, &FOLDERID_CommonPrograms,
        &FOLDERID_CommonStartup, &FOLDERID_Desktop,         &FOLDERID_RoamingAppData,
        &FOLDERID_PrintHood,     &FOLDERID_Templates,       &FOLDERID_Fonts,
        &FOLDERID_NetHood,       &FOLDERID_Desktop,         &FOLDERID_StartMenu,
        &FOLDERID_SendTo,        &FOLDERID_Recent,          &FOLDERID_Startup,
        &FOLDERID_Favorites,     &FOLDERID_Documents,       &FOLDERID_Programs};
    if (number < 0 || static_cast<std::size_t>(number) >= kFolders.size()) return {};
    PWSTR text = nullptr;
    const HRESULT result = SHGetKnownFolderPath(*kFolders[static_cast<std::size_t>(number)],
                                                KF_FLAG_DEFAULT, nullptr, &text);
    std::wstring path = SUCCEEDED(result) && text != nullptr ? text : L"";
    CoTaskMemFree(text);
    return path;
}

}  // namespace vw
