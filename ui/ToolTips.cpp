#include "ui/ToolTips.h"

#include "platform/SystemError.h"
#include "ui/Layout.h"

namespace vw {

namespace {

constexpr int kWidth = 420;

}  // namespace

ToolTips::ToolTips(HWND owner)
    : owner_(owner),
      tips_(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                            WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                            CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr, GetModuleHandleW(nullptr),
                            nullptr)) {
    if (tips_ == nullptr) RaiseLast({});
}

void ToolTips::Add(HWND control, Mouse mouse) {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | (mouse == Mouse::Watched ? TTF_SUBCLASS : 0U);
    tool.hwnd = owner_;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

// A tool of its own that belongs to no control.
TTTOOLINFOW ToolTips::TrackedTool() const noexcept {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
    tool.hwnd = owner_;
    return tool;
}

void ToolTips::ShowBeside(const RECT& area, bool atLeft, std::wstring_view text) {
    Hide();
    tracked_ = text;
    if (tracked_.empty()) return;
    TTTOOLINFOW tool = TrackedTool();
    tool.lpszText = tracked_.data();
    SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    const auto width = static_cast<LONG>(
        LOWORD(SendMessageW(tips_, TTM_GETBUBBLESIZE, 0, reinterpret_cast<LPARAM>(&tool))));
    const LONG left = atLeft ? area.left - width : area.right;
    SendMessageW(tips_, TTM_TRACKPOSITION, 0, MAKELPARAM(left, area.top));
    SendMessageW(tips_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::Hide() noexcept {
    if (tracked_.empty()) return;
    TTTOOLINFOW tool = TrackedTool();
    SendMessageW(tips_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
    SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    tracked_.clear();
}

void ToolTips::UseDpi(int dpi) { SendMessageW(tips_, TTM_SETMAXTIPWIDTH, 0, Scaled(kWidth, dpi)); }

}  // namespace vw
