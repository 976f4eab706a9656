#pragma once

#include <cstdint>
#include <string_view>

namespace vw {

class CopyDates;

/// What the commands on backup lists need of the main window and of the program above them.
class ListHost {
  public:
    ListHost() = default;
    ListHost(const ListHost&) = delete;
    ListHost& operator=(const ListHost&) = delete;
    virtual ~ListHost() = default;

    /// Disables the main window and shows the hourglass (false), or gives it back (true).
    virtual void Ready(bool flag) = 0;

    /// Shows in the main window's caption which list is in use.
    virtual void SetCaption() = 0;

    /// Switches start at log-on, if the default list is in use.
    virtual void ApplicationSartup(bool flag) = 0;

    /// The location number of an item in the destination in use.
    [[nodiscard]] virtual std::int16_t LocationID(std::wstring_view path) = 0;

    /// Tells the dates that are stored with copies.
    [[nodiscard]] virtual CopyDates& StoredDates() = 0;

    /// Shows in the busy dialog what is being added, and takes it away.
    virtual void Msg(std::wstring_view title, std::wstring_view message) = 0;
    virtual void BusyHide() = 0;

    /// Shows a sentence in the status line of the main window, in the window's language, until the
    /// next one or the end of the next run; an empty one withdraws it.
    virtual void ShowStatus(std::wstring_view text) = 0;

    /// A list was loaded: the copies of its destination are shown, and those of its selected item.
    virtual void ListLoaded() = 0;

    /// Lists the copies of the destination's drive anew.
    virtual void ListRestoreFiles() = 0;

    /// Shows the copies of an item of the list.
    virtual void RestoredPath(std::wstring_view path) = 0;

    /// Unloads every window and ends the program.
    virtual void frmUnload() = 0;
};

}  // namespace vw
