// BareWindow: shows an opening screen and then a window, with the controls of those of the program
// and nothing in them but names: a menu, a toolbar, a drop-down box, labels and three lists in
// their Details view. No icons, no fonts of its own, no list file, no look at the disk.
// scripts/bench measures how long it takes to show, as the least that windows of these controls
// cost.

#include "platform/WindowsHeader.h"
// The common controls' declarations need those of the window system first.
#include <commctrl.h>

namespace {

constexpr int kColumns[]{7, 3, 4};
constexpr int kButtons = 17;
constexpr int kLabels = 7;
constexpr int kOpeningLabels = 8;

HWND Child(HWND parent, const wchar_t* name, DWORD style, RECT place) {
    return CreateWindowExW(0, name, L"Text", style | WS_CHILD | WS_VISIBLE, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, parent, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

void MakeList(HWND parent, int columns, RECT place) {
    const HWND list = Child(parent, WC_LISTVIEWW, LVS_REPORT | LVS_OWNERDATA, place);
    for (int i = 0; i < columns; ++i) {
        wchar_t header[] = L"Header";
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.cx = 60;
        column.pszText = header;
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(&column));
    }
}

void MakeToolBar(HWND parent) {
    const HWND bar = Child(parent, TOOLBARCLASSNAMEW, TBSTYLE_FLAT | CCS_NORESIZE, {0, 0, 980, 40});
    SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    for (int i = 0; i < kButtons; ++i) {
        TBBUTTON button{};
        button.idCommand = i + 1;
        button.fsState = TBSTATE_ENABLED;
        SendMessageW(bar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
}

HMENU MakeMenu() {
    const HMENU menu = CreateMenu();
    for (int i = 0; i < 5; ++i)
        AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(i) + 100, L"Menu");
    return menu;
}

void Register(const wchar_t* name, WNDPROC procedure) {
    WNDCLASSW kind{};
    kind.lpfnWndProc = procedure;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    kind.lpszClassName = name;
    RegisterClassW(&kind);
}

HWND ShowOpeningScreen() {
    Register(L"BareOpening", DefWindowProcW);
    const HWND opening = CreateWindowExW(0, L"BareOpening", L"Bare window",
                                         WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN, 300, 300, 460,
                                         320, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    for (int i = 0; i < kOpeningLabels; ++i)
        Child(opening, WC_STATICW, 0, {24, 20 + 24 * i, 400, 40 + 24 * i});
    ShowWindow(opening, SW_SHOW);
    UpdateWindow(opening);
    return opening;
}

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE program, HINSTANCE, LPWSTR, int) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    const HWND opening = ShowOpeningScreen();
    Register(L"BareWindow", OnMessage);
    const HWND window =
        CreateWindowExW(0, L"BareWindow", L"Bare window", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 20,
                        20, 1000, 700, nullptr, MakeMenu(), program, nullptr);
    MakeToolBar(window);
    Child(window, WC_COMBOBOXW, CBS_DROPDOWNLIST, {300, 50, 400, 200});
    Child(window, WC_SCROLLBARW, SBS_VERT, {440, 50, 456, 76});
    for (int i = 0; i < kLabels; ++i)
        Child(window, WC_STATICW, 0, {10, 50 + 22 * i, 200, 70 + 22 * i});
    MakeList(window, kColumns[0], {10, 200, 480, 640});
    MakeList(window, kColumns[1], {490, 80, 980, 340});
    MakeList(window, kColumns[2], {490, 370, 980, 640});
    ShowWindow(window, SW_SHOWMAXIMIZED);
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    DestroyWindow(opening);
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
