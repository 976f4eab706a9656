#pragma once

#include "platform/WindowsHeader.h"

namespace vw {

/// A drop-down list in which only a confirmed choice counts. While it is closed the wheel does
/// nothing and the keys that would choose an entry open the list; Esc, Tab and a click elsewhere
/// take back what was marked in the open list. A selection that a program reports for the closed
/// box counts at once.
class DropDown {
  public:
    /// Takes over a box, which has to outlive this object or be destroyed with its form.
    explicit DropDown(HWND box);
    ~DropDown();
    DropDown(const DropDown&) = delete;
    DropDown& operator=(const DropDown&) = delete;

    /// Handles a notification of the box (CBN_...); true when its selection counts now.
    [[nodiscard]] bool OnNotification(int code);

    /// Handles kDropDownClosed; true when the selection was confirmed. Otherwise the entry of
    /// before is selected again.
    [[nodiscard]] bool OnClosed();

  private:
    static LRESULT OnControlMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    void* data);

    HWND box_;
    LRESULT former_ = CB_ERR;  ///< selected before the list was opened
    bool open_ = false;        ///< until kDropDownClosed has been handled
    bool confirmed_ = false;
};

}  // namespace vw
