#pragma once

#include "platform/WindowsHeader.h"

namespace vw {

/// The owner of a box or dialog of the system, for the time of the call that shows it. A command
/// keeps its window disabled; but a box gives the front and the keys back only to an owner that it
/// found enabled, and to another program's window else. The box disables it for as long as it
/// stands, so the user meets no enabled window in between.
class BoxOwner {
  public:
    /// `owner` may be null: a box without an owner.
    explicit BoxOwner(HWND owner) noexcept
        : disabled_(owner != nullptr && IsWindowEnabled(owner) == 0 ? owner : nullptr) {
        if (disabled_ != nullptr) EnableWindow(disabled_, TRUE);
    }
    ~BoxOwner() {
        if (disabled_ != nullptr) EnableWindow(disabled_, FALSE);
    }
    BoxOwner(const BoxOwner&) = delete;
    BoxOwner& operator=(const BoxOwner&) = delete;

  private:
    HWND disabled_;
};

}  // namespace vw
