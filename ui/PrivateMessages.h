#pragma once

#include "platform/WindowsHeader.h"

namespace vw {

/// From a list view to its form: a key was let go (wParam: virtual key, lParam: the list view).
inline constexpr UINT kListKeyUp = WM_APP + 1;

/// From a list view to its form: files were dropped (wParam: HDROP, lParam: the list view).
inline constexpr UINT kListDrop = WM_APP + 2;

}  // namespace vw
