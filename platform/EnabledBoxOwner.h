#pragma once

#include "platform/WindowsHeader.h"

namespace vw {

/// The owner of a box or dialog of the system, for the time of the call that shows it. Commands run
/// with the main window disabled. A message box returns activation only to an owner that was
/// enabled when it opened, so the owner is enabled for the call. The box disables it while it is
/// open, so the user never meets an enabled window.
class EnabledBoxOwner {
  public:
    /// `owner` may be null: a box without an owner.
    explicit EnabledBoxOwner(HWND owner) noexcept
        : disabled_(owner != nullptr && IsWindowEnabled(owner) == 0 ? owner : nullptr) {
        if (disabled_ != nullptr) EnableWindow(disabled_, TRUE);
    }
    ~EnabledBoxOwner() {
        if (disabled_ != nullptr) EnableWindow(disabled_, FALSE);
    }
    EnabledBoxOwner(const EnabledBoxOwner&) = delete;
    EnabledBoxOwner& operator=(const EnabledBoxOwner&) = delete;

  private:
    HWND disabled_;
};

}  // namespace vw
