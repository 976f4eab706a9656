#include "tests/system/ProgramWindows.h"

#include <algorithm>
#include <array>

namespace vw::test {

namespace {

constexpr UINT kPatience = 5000;
constexpr std::wstring_view kDialogClass = L"#32770";

BOOL CALLBACK AddHandle(HWND window, LPARAM list) {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

// Asks the window itself: the system has only the titles of another process's windows.
std::wstring TextOf(HWND window) {
    std::wstring text(1U << 16, L'\0');
    DWORD_PTR length = 0;
    if (SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                            SMTO_ABORTIFHUNG, kPatience, &length) == 0) {
        length = 0;
    }
    text.resize(length);
    return text;
}

Box ReadBox(const WindowFacts& window) {
    Box box{.handle = window.handle,
            .title = window.title,
            .text = {},
            .buttons = {},
            .defaultButton = 0};
    std::vector<HWND> children;
    EnumChildWindows(window.handle, AddHandle, reinterpret_cast<LPARAM>(&children));
    for (const HWND child : children) {
        if (IsWindowVisible(child) == 0) continue;
        const std::wstring className = ClassOf(child);
        if (className == L"Button") {
            const LONG kind = GetWindowLongW(child, GWL_STYLE) & BS_TYPEMASK;
            box.buttons.push_back(GetDlgCtrlID(child));
            if (kind == BS_DEFPUSHBUTTON) box.defaultButton = box.buttons.back();
        }
        if (className == L"Static" && box.text.empty()) box.text = TextOf(child);
    }
    return box;
}

}  // namespace

std::wstring ClassOf(HWND window) {
    std::array<wchar_t, 256> name{};
    const int length = GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return {name.data(), static_cast<std::size_t>(length)};
}

std::vector<WindowFacts> WindowsOf(DWORD process) {
    std::vector<HWND> all;
    EnumWindows(AddHandle, reinterpret_cast<LPARAM>(&all));
    std::vector<WindowFacts> windows;
    for (const HWND window : all) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner != process) continue;
        std::array<wchar_t, 256> title{};
        const int length = GetWindowTextW(window, title.data(), static_cast<int>(title.size()));
        windows.push_back({.handle = window,
                           .className = ClassOf(window),
                           .title = {title.data(), static_cast<std::size_t>(length)},
                           .visible = IsWindowVisible(window) != 0});
    }
    return windows;
}

std::vector<Box> BoxesOf(DWORD process) {
    std::vector<Box> boxes;
    for (const WindowFacts& window : WindowsOf(process)) {
        if (window.visible && window.className == kDialogClass) boxes.push_back(ReadBox(window));
    }
    return boxes;
}

HWND FindWindowOf(DWORD process, std::wstring_view classBeginning) {
    const auto windows = WindowsOf(process);
    const auto found = std::find_if(windows.begin(), windows.end(), [&](const WindowFacts& window) {
        return window.className.starts_with(classBeginning);
    });
    return found == windows.end() ? nullptr : found->handle;
}

void Press(const Box& box, int button) {
    PostMessageW(box.handle, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(box.handle, button)));
}

}  // namespace vw::test
