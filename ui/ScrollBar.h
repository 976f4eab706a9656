#pragma once

#include "platform/WindowsHeader.h"

/// An upright scroll bar as a control for a number: its upper arrow means more. The control itself
/// counts downwards, so it holds the numbers with their signs turned.
namespace vw::ScrollBar {

/// The number it shows.
[[nodiscard]] int Value(HWND bar) noexcept;

/// Shows a number. `lowest` and `highest` are what the user can choose; a number outside them
/// widens the range for as long as it is shown. True when it was another number before.
bool SetValue(HWND bar, int value, int lowest, int highest) noexcept;

/// The number that a WM_VSCROLL asks for; the present one when it asks for none.
[[nodiscard]] int PositionFor(HWND bar, WPARAM request) noexcept;

/// Paints the label of its number anew whenever the bar gets or loses the keyboard.
void RepaintWithFocus(HWND bar, HWND label) noexcept;

}  // namespace vw::ScrollBar
