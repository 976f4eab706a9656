#include "platform/CCommonAPI.h"

namespace vw {

HWND CCommonAPI::FindWindow(std::wstring_view className, std::wstring_view title) {
    return trap_.Or(HWND{nullptr}, L"FindWindow", [&] {
        const std::wstring classText(className);
        const std::wstring titleText(title);
        // Left out rather than empty: no window has a class without a name.
        return FindWindowExW(nullptr, nullptr, classText.empty() ? nullptr : classText.c_str(),
                             titleText.empty() ? nullptr : titleText.c_str());
    });
}

void CCommonAPI::DestroyWindowVB(HWND window) {
    trap_(L"DestroyWindowVB", [&] { DestroyWindow(window); });
}

void CCommonAPI::TopMost(HWND form) {
    trap_(L"TopMost",
          [&] { SetWindowPos(form, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE); });
}

void CCommonAPI::ActiveWindow(HWND form) {
    trap_(L"ActiveWindow", [&] { SetActiveWindow(form); });
}

}  // namespace vw
