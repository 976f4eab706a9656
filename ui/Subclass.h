#pragma once

#include "platform/WindowsHeader.h"

namespace vw {

/// Handles a message of a control before the control does; `data` is what Subclass was given.
using SubclassProcedure = LRESULT (*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      void* data);

/// Puts a procedure before that of a control of this process, until Unsubclass or the end of the
/// window. A window takes one, and its user data (GWLP_USERDATA) belongs to it. The system's own
/// subclassing looks its data up by name with each message; a list is sent thousands.
void Subclass(HWND window, SubclassProcedure procedure, void* data);

/// Takes the procedure away again. Has no effect on a window that has none.
void Unsubclass(HWND window) noexcept;

/// What the control itself does with a message. For use in a SubclassProcedure.
LRESULT CallControl(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

}  // namespace vw
