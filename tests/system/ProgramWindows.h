#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/WindowsHeader.h"

namespace vw::test {

/// A top-level window of another process.
struct WindowFacts {
    HWND handle = nullptr;
    std::wstring className;
    std::wstring title;
    bool visible = false;
};

/// A message box of another process.
struct Box {
    HWND handle = nullptr;
    std::wstring title;
    std::wstring text;
    std::vector<int> buttons;  ///< ids from the first to the last: IDOK, IDYES...
    int defaultButton = 0;     ///< the one that Enter presses
};

/// The top-level windows of a process, hidden ones too.
[[nodiscard]] std::vector<WindowFacts> WindowsOf(DWORD process);

/// Its message boxes that are shown.
[[nodiscard]] std::vector<Box> BoxesOf(DWORD process);

/// Its first window whose class begins like this ("frmTrayIcon" for either language); null when it
/// has none.
[[nodiscard]] HWND FindWindowOf(DWORD process, std::wstring_view classBeginning);

/// The name of a window's class.
[[nodiscard]] std::wstring ClassOf(HWND window);

/// Presses a button of a box.
void Press(const Box& box, int button);

}  // namespace vw::test
