#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "list/editing/RecentOrder.h"
#include "list/format/Settings.h"
#include "platform/ErrorTrap.h"

namespace vw {

class ErrorSink;
struct ProgramState;

/// One of the elements 1 to 3 of the File menu's recent lists.
struct RecentFileEntry {
    std::wstring caption;  ///< as it reads; a menu needs its "&" doubled
    bool visible = false;

    friend bool operator==(const RecentFileEntry&, const RecentFileEntry&) = default;
};

/// Elements 1, 2 and 3 of the menu, in this order. Element 0 is fixed: the default list.
using RecentFileMenu = std::array<RecentFileEntry, 3>;

/// What the recent lists use of the main window and of the commands on lists.
struct RecentFileActions {
    /// Disables the main window and shows the hourglass (false), or gives it back (true).
    std::function<void(bool)> ready;
    /// Opens a list file and makes it the one in use.
    std::function<void(std::wstring_view path)> open;
    /// Opens the list that the program starts with and makes it the one in use.
    std::function<void()> openDefault;
    /// Shows in the main window's caption which list is in use.
    std::function<void()> showCaption;
    /// Gives the recent lists of the File menu their captions.
    std::function<void(const RecentFileMenu&)> showMenu;
};

namespace MRecentFiles {

/// The lists opened last, kept in the settings and shown in the File menu.
class RecentFiles {
  public:
    RecentFiles(ErrorSink& errors, SettingsStore& settings, ProgramState& state,
                RecentFileActions actions);

    /// Entry 1 (the most recent) to 4; empty when there is none.
    [[nodiscard]] std::wstring RecentFile(int index) const;

    /// Puts a path at the top and refreshes the menu. Nothing happens while the default list is in
    /// use. Throws 4000 "Index <> 1" to the caller for any other index.
    void RecentFile(int index, std::wstring_view path);

    /// Position 1 to 4 of a path, 0 when it is not in the list.
    [[nodiscard]] int IsRecentFile(std::wstring_view path) const;

    /// Gives the menu the base names of entries 1 to 3; an entry without one is hidden.
    void UpdateRecentFiles();

    /// Opens entry 1 to 3, or for 0 the default list.
    void mnuRecentFileClick(int index);

  private:
    [[nodiscard]] RecentPaths Paths() const;

    ErrorTrap trap_;
    SettingsStore& settings_;
    ProgramState& state_;
    RecentFileActions actions_;
};

}  // namespace MRecentFiles
}  // namespace vw
