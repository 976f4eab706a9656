#pragma once

#include "platform/WindowsHeader.h"
// The shell's declarations need those of the window system first.
#include <shellapi.h>

#include "ui/Window.h"

namespace vw {

/// What the notification icon asks of the program.
class TrayHost {
  public:
    TrayHost() = default;
    TrayHost(const TrayHost&) = delete;
    TrayHost& operator=(const TrayHost&) = delete;
    virtual ~TrayHost() = default;

    /// "Exit" was chosen in the icon's menu.
    virtual void ExitChosen() = 0;

    /// The icon's window is being closed from outside.
    virtual void TrayClosing() = 0;
};

/// The window frmTrayIcon, never shown: it carries the icon in the notification area that tells of
/// work without windows, and keeps the process while it is loaded.
class TrayIcon final : private Window {
  public:
    TrayIcon(TrayHost& host, bool arabic);
    ~TrayIcon() override;

    /// Whether the icon is there for the user to reach.
    [[nodiscard]] bool IsReachable() const noexcept { return added_; }

  private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] NOTIFYICONDATAW Record() const;
    void Add() noexcept;
    void ShowMenu();

    TrayHost& host_;
    bool arabic_;
    bool added_ = false;
    UINT taskbarCreated_;
};

}  // namespace vw
