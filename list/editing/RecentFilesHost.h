#pragma once

#include <array>
#include <string>
#include <string_view>

namespace vw {

/// One of the elements 1 to 3 of the File menu's recent lists.
struct RecentFileEntry {
    std::wstring caption;  ///< as it reads; a menu needs its "&" doubled
    bool visible = false;

    friend bool operator==(const RecentFileEntry&, const RecentFileEntry&) = default;
};

/// Elements 1, 2 and 3 of the menu, in this order. Element 0 is fixed: the default list.
using RecentFileMenu = std::array<RecentFileEntry, 3>;

/// What the recent lists need of the main window and of the commands on lists.
class RecentFilesHost {
  public:
    RecentFilesHost() = default;
    RecentFilesHost(const RecentFilesHost&) = delete;
    RecentFilesHost& operator=(const RecentFilesHost&) = delete;
    virtual ~RecentFilesHost() = default;

    /// Disables the main window and shows the hourglass (false), or gives it back (true).
    virtual void Ready(bool flag) = 0;

    /// Opens a list file and makes it the one in use.
    virtual void FileOpen(std::wstring_view path) = 0;

    /// Opens the list that the program starts with and makes it the one in use.
    virtual void OpenDefaultList() = 0;

    /// Shows in the main window's caption which list is in use.
    virtual void SetCaption() = 0;

    /// Gives the recent lists of the File menu their captions.
    virtual void ShowRecentFiles(const RecentFileMenu& menu) = 0;
};

}  // namespace vw
