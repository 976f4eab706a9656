#pragma once

#include <string_view>

#include "app/MainWindow.h"
#include "ui/ListView.h"

namespace vw {

/// One command of the main window.
struct MainCommand {
    static constexpr int kNone = 0;

    int entry = kNone;   ///< number of its menu entry; kNone when it only has a button
    int button = kNone;  ///< number of its button; kNone when it has none
    std::wstring_view procedure;
    void (*run)(MainParts& parts);

    /// The command of a menu entry or a button; null when there is none.
    [[nodiscard]] static const MainCommand* Find(int id);

    /// The command of the toolbar's button with this key, in any letter case; null for an unknown
    /// key.
    [[nodiscard]] static const MainCommand* FindByKey(std::wstring_view key);
};

/// Shows all three lists in one way, and marks it in the menu and on its button.
void ShowLists(Form& main, ViewStyle style);

/// Arranges the icons of all three lists, and marks it in the menu.
void ArrangeLists(Form& main, ViewArrange arrange);

}  // namespace vw
