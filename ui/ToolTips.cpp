#include "ui/ToolTips.h"

// The common controls' declarations need those of the window system first.
#include <commctrl.h>

#include "platform/SystemError.h"

namespace vw {

ToolTips::ToolTips(HWND owner)
    : owner_(owner),
      tips_(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                            WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                            CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr, GetModuleHandleW(nullptr),
                            nullptr)) {
    if (tips_ == nullptr) RaiseLast({});
}

void ToolTips::Add(HWND control) {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = owner_;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::SetWidth(int pixels) { SendMessageW(tips_, TTM_SETMAXTIPWIDTH, 0, pixels); }

}  // namespace vw
