#pragma once

#include <vector>

#include "tests/support/ImportHook.h"

namespace vw::test {

/// The windows that the program shows as long as this lives, in order. One object at a time.
class ShownWindows {
  public:
    ShownWindows() {
        windows_.clear();
        show_ = hook_.Original<decltype(ShowWindow)>();
    }

    [[nodiscard]] const std::vector<HWND>& All() const noexcept { return windows_; }

  private:
    static BOOL WINAPI Show(HWND window, int how) {
        if (how != SW_HIDE) windows_.push_back(window);
        return show_(window, how);
    }

    static inline std::vector<HWND> windows_;
    static inline decltype(ShowWindow)* show_ = nullptr;
    ImportHook hook_{"ShowWindow", &Show};
};

}  // namespace vw::test
