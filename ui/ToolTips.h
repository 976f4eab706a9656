#pragma once

#include "platform/WindowsHeader.h"

namespace vw {

/// The tool tips of a form's controls. Their texts are asked for when they show, by TTN_GETDISPINFO
/// with the control's window as idFrom.
class ToolTips {
  public:
    /// Makes them for a window, which destroys them with itself.
    explicit ToolTips(HWND owner);

    void Add(HWND control);

    /// Wraps texts wider than this.
    void SetWidth(int pixels);

    [[nodiscard]] HWND Handle() const noexcept { return tips_; }

  private:
    HWND owner_;
    HWND tips_;
};

}  // namespace vw
