#pragma once

#include <string>
#include <string_view>

#include "list/editing/RecentOrder.h"
#include "list/format/Settings.h"
#include "platform/ErrorTrap.h"

namespace vw {

class ErrorSink;
class RecentFilesHost;
struct ProgramState;

namespace MRecentFiles {

/// The lists opened last, kept in the settings and shown in the File menu.
class RecentFiles {
  public:
    RecentFiles(ErrorSink& errors, SettingsStore& settings, ProgramState& state,
                RecentFilesHost& host);

    /// Entry 1 (the most recent) to 4; empty when there is none.
    [[nodiscard]] std::wstring RecentFile(int index) const;

    /// Puts a path at the top and refreshes the menu. Nothing happens while the default list is in
    /// use. Raises 4000 "Index <> 1" to the caller for any other index.
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
    RecentFilesHost& host_;
};

}  // namespace MRecentFiles
}  // namespace vw
