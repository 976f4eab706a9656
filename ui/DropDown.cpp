#include "ui/DropDown.h"

#include "ui/PrivateMessages.h"
#include "ui/Subclass.h"

namespace vw {

namespace {

// Every key that selects an entry of a closed box.
bool ChoosesByItself(WPARAM key) noexcept {
    switch (key) {
        case VK_UP:
        case VK_DOWN:
        case VK_LEFT:
        case VK_RIGHT:
        case VK_PRIOR:
        case VK_NEXT:
        case VK_HOME:
        case VK_END:
            return true;
        default:
            return false;
    }
}

// Opens the list and marks the next entry that begins with the letter.
void MarkEntry(HWND box, wchar_t letter) noexcept {
    const wchar_t text[]{letter, L'\0'};
    const LRESULT from = SendMessageW(box, CB_GETCURSEL, 0, 0);
    const LRESULT found =
        SendMessageW(box, CB_FINDSTRING, static_cast<WPARAM>(from), reinterpret_cast<LPARAM>(text));
    if (found == CB_ERR) return;
    SendMessageW(box, CB_SHOWDROPDOWN, TRUE, 0);
    SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(found), 0);
}

}  // namespace

DropDown::DropDown(HWND box) : box_(box) { Subclass(box_, OnControlMessage, this); }

DropDown::~DropDown() {
    if (box_ != nullptr) Unsubclass(box_);
}

// The order of the notifications at the end of an open list differs: the change of the selection
// may come before or after the others. The message that is posted comes after all of them.
bool DropDown::OnNotification(int code) {
    switch (code) {
        case CBN_DROPDOWN:
            former_ = SendMessageW(box_, CB_GETCURSEL, 0, 0);
            open_ = true;
            confirmed_ = false;
            return false;
        case CBN_SELENDOK:
            confirmed_ = true;
            return false;
        case CBN_SELENDCANCEL:
            confirmed_ = false;
            return false;
        case CBN_CLOSEUP:
            PostMessageW(GetParent(box_), kDropDownClosed, 0, reinterpret_cast<LPARAM>(box_));
            return false;
        case CBN_SELCHANGE:
            return !open_;
        default:
            return false;
    }
}

bool DropDown::OnClosed() {
    // It may have been opened again meanwhile.
    if (!open_ || SendMessageW(box_, CB_GETDROPPEDSTATE, 0, 0) != 0) return false;
    open_ = false;
    if (!confirmed_) SendMessageW(box_, CB_SETCURSEL, static_cast<WPARAM>(former_), 0);
    return confirmed_;
}

LRESULT DropDown::OnControlMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   void* data) {
    const auto isClosed = [&] { return SendMessageW(window, CB_GETDROPPEDSTATE, 0, 0) == 0; };
    switch (message) {
        case WM_MOUSEWHEEL:
            if (isClosed()) return 0;
            break;
        case WM_KEYDOWN:
            if (ChoosesByItself(wParam) && isClosed()) {
                SendMessageW(window, CB_SHOWDROPDOWN, TRUE, 0);
                return 0;
            }
            break;
        case WM_CHAR:
            if (wParam <= VK_SPACE) break;
            MarkEntry(window, static_cast<wchar_t>(wParam));
            return 0;
        case WM_NCDESTROY:
            static_cast<DropDown*>(data)->box_ = nullptr;
            break;
        default:
            break;
    }
    return CallControl(window, message, wParam, lParam);
}

}  // namespace vw
