#include "platform/CCommonAPI.h"

namespace vw {

void CCommonAPI::LayoutRTL(HWND window, bool on) {
    LONG_PTR style = GetWindowLongPtrW(window, GWL_EXSTYLE);
    style = on ? style | WS_EX_LAYOUTRTL : style & ~static_cast<LONG_PTR>(WS_EX_LAYOUTRTL);
    SetWindowLongPtrW(window, GWL_EXSTYLE, style);
    const RECT rectangle{1, 0, 0, 0};
    InvalidateRect(window, &rectangle, FALSE);
}

}  // namespace vw
