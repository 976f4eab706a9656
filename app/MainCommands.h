#pragma once

#include <string_view>

#include "app/MainWindow.h"

namespace vw {

/// One command of the main window.
struct MainCommand {
    std::wstring_view menu;  ///< its menu entry; empty when it only has a button
    std::wstring_view key;   ///< of its button; empty when it has none
    int buttonIndex = 0;     ///< what the button means where the entry is an array
    std::wstring_view procedure;
    void (MainWindow::*handler)(int index);

    /// The command of a menu entry, or for an empty name that of a button's key, which is compared
    /// without regard to case; nothing when there is none.
    [[nodiscard]] static const MainCommand* Find(std::wstring_view menu, std::wstring_view key);
};

}  // namespace vw
