#include "progress/ShellIcon.h"

#include <algorithm>

#include "ui/Form.h"

namespace vw {
namespace {

constexpr UINT kIconId = 1;
// Notifications of the icon arrive as mouse moves over its window.
constexpr UINT kIconMessage = WM_MOUSEMOVE;
constexpr std::size_t kTipUnits = 64;

}  // namespace

NOTIFYICONDATAW ShellIcon::InitIconStruct() const {
    NOTIFYICONDATAW record{};
    record.cbSize = NOTIFYICONDATAW_V1_SIZE;
    record.hWnd = form_.Handle();
    record.uID = kIconId;
    record.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    record.uCallbackMessage = kIconMessage;
    record.hIcon = form_.Icon();
    tip_.copy(record.szTip, std::min(tip_.size(), kTipUnits - 1));
    return record;
}

void ShellIcon::Request(DWORD request) {
    NOTIFYICONDATAW record = InitIconStruct();
    lastStatus_ = shell_(request, &record) != 0;
}

void ShellIcon::Add() {
    Request(NIM_ADD);
    added_ = added_ || lastStatus_;
}

void ShellIcon::AddAgain() {
    Add();
    if (added_) return;
    Modify();
    added_ = lastStatus_;
}

void ShellIcon::Modify() { Request(NIM_MODIFY); }

void ShellIcon::Remove() {
    Request(NIM_DELETE);
    added_ = false;
}

}  // namespace vw
