#include "progress/TrayIcon.h"

#include <algorithm>
#include <string_view>

namespace vw {

namespace {

// Notifications of the icon arrive as mouse moves over its window.
constexpr UINT kIconMessage = WM_MOUSEMOVE;
constexpr UINT kIconId = 1;
constexpr std::size_t kTipUnits = 64;
constexpr UINT_PTR kMaximize = 1;
constexpr UINT_PTR kExit = 2;

constexpr std::wstring_view kTipEnglish = L"Please Wait Vaultwright In Use";
constexpr std::wstring_view kTipArabic = L"الرجاء الانتظار بينما تتم عملية النسخ الاحنياطي";

}  // namespace

TrayIcon::TrayIcon(TrayHost& host, bool arabic)
    : host_(host), arabic_(arabic), taskbarCreated_(RegisterWindowMessageW(L"TaskbarCreated")) {
    Create({.className = arabic ? L"frmTrayIconAr" : L"frmTrayIconEn",
            .title = L"Vaultwright",
            .style = WS_OVERLAPPED});
    Add();
}

TrayIcon::~TrayIcon() {
    NOTIFYICONDATAW record = Record();
    if (added_) Shell_NotifyIconW(NIM_DELETE, &record);
}

NOTIFYICONDATAW TrayIcon::Record() const {
    NOTIFYICONDATAW record{};
    record.cbSize = NOTIFYICONDATAW_V1_SIZE;
    record.hWnd = Handle();
    record.uID = kIconId;
    record.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    record.uCallbackMessage = kIconMessage;
    record.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    const std::wstring_view tip = arabic_ ? kTipArabic : kTipEnglish;
    tip.copy(record.szTip, std::min(tip.size(), kTipUnits - 1));
    return record;
}

void TrayIcon::Add() noexcept {
    NOTIFYICONDATAW record = Record();
    added_ = Shell_NotifyIconW(NIM_ADD, &record) != 0;
}

void TrayIcon::ShowMenu() {
    const HMENU menu = CreatePopupMenu();
    if (menu == nullptr) return;
    AppendMenuW(menu, MF_STRING, kMaximize, L"Maximize");
    AppendMenuW(menu, MF_STRING, kExit, L"Exit");
    SetMenuDefaultItem(menu, static_cast<UINT>(kMaximize), FALSE);
    POINT cursor{};
    GetCursorPos(&cursor);
    // Without the foreground the menu would stay open when the user clicks elsewhere.
    SetForegroundWindow(Handle());
    const auto chosen = static_cast<UINT_PTR>(TrackPopupMenu(
        menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, cursor.x, cursor.y, 0, Handle(), nullptr));
    PostMessageW(Handle(), WM_NULL, 0, 0);
    DestroyMenu(menu);
    if (chosen == kExit) host_.ExitChosen();
}

LRESULT TrayIcon::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == taskbarCreated_) {
        Add();
        return 0;
    }
    switch (message) {
        case kIconMessage:
            if (LOWORD(lParam) == WM_RBUTTONDOWN) ShowMenu();
            return 0;
        case WM_CLOSE:
            host_.TrayClosing();
            return 0;
        default:
            return Window::OnMessage(message, wParam, lParam);
    }
}

}  // namespace vw
