#pragma once

#include <string>
#include <string_view>

#include "platform/WindowsHeader.h"
// The common controls' declarations need those of the window system first.
#include <commctrl.h>

namespace vw {

/// The tool tips of a form's controls. Their texts are asked for when they show, by TTN_GETDISPINFO
/// with the control's window as idFrom.
class ToolTips {
  public:
    /// Makes them for a window, which destroys them with itself.
    explicit ToolTips(HWND owner);

    /// How the tips get the mouse messages of a control: they watch it, or it relays them with
    /// TTM_RELAYEVENT.
    enum class Mouse { Watched, Relayed };
    void Add(HWND control, Mouse mouse = Mouse::Watched);

    /// Shows a text to the left or right of an area of the screen until Hide is called.
    void ShowBeside(const RECT& area, bool atLeft, std::wstring_view text);
    void Hide() noexcept;

    /// Wraps long texts at the width that suits this resolution of the screen.
    void UseDpi(int dpi);

    [[nodiscard]] HWND Handle() const noexcept { return tips_; }

  private:
    [[nodiscard]] TTTOOLINFOW TrackedTool() const noexcept;

    HWND owner_;
    HWND tips_;
    std::wstring tracked_;  ///< the text beside an area; empty while none is shown
};

}  // namespace vw
