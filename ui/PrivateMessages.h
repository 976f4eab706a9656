#pragma once

#include "platform/WindowsHeader.h"

namespace vw {

/// From a list view to its form: a key was released (wParam: virtual key, lParam: the list view).
inline constexpr UINT kListKeyUp = WM_APP + 1;

/// From a list view to its form: files were dropped (wParam: HDROP, lParam: the list view).
inline constexpr UINT kListDrop = WM_APP + 2;

/// From a drop-down list to its form: the list was closed (lParam: the drop-down list).
inline constexpr UINT kDropDownClosed = WM_APP + 3;

/// Timer of a form that was shown: it is over as soon as the program waits for its user.
inline constexpr UINT_PTR kShownTimer = 1;

}  // namespace vw
