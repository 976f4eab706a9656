#pragma once

#include "platform/WindowsHeader.h"

namespace vw {

/// The device context of a window, or of the screen for a null window, as long as it lives.
class WindowDc {
  public:
    explicit WindowDc(HWND window) noexcept : window_(window), dc_(GetDC(window)) {}
    ~WindowDc() { ReleaseDC(window_, dc_); }
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;

    [[nodiscard]] HDC Get() const noexcept { return dc_; }

  private:
    HWND window_;
    HDC dc_;
};

/// Keeps the state of a device context: what is selected, set or clipped while it lives is undone
/// at its end.
class SavedDc {
  public:
    explicit SavedDc(HDC dc) noexcept : dc_(dc), state_(SaveDC(dc)) {}
    ~SavedDc() { RestoreDC(dc_, state_); }
    SavedDc(const SavedDc&) = delete;
    SavedDc& operator=(const SavedDc&) = delete;

  private:
    HDC dc_;
    int state_;
};

/// The font that a window shows its text in.
inline HGDIOBJ FontOf(HWND window) noexcept {
    return reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0));
}

}  // namespace vw
