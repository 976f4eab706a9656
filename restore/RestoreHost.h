#pragma once

#include <string_view>

namespace vw {

class CPackage;

/// What restoring needs of the program above it.
class RestoreHost {
  public:
    RestoreHost() = default;
    RestoreHost(const RestoreHost&) = delete;
    RestoreHost& operator=(const RestoreHost&) = delete;
    virtual ~RestoreHost() = default;

    /// Shows a sentence in the status line of the main window, in the window's language, until the
    /// next one or the end of the next run; an empty one withdraws it.
    virtual void ShowStatus(std::wstring_view text) = 0;

    /// The engine; made on first use.
    [[nodiscard]] virtual CPackage& Engine() = 0;

    /// Shows in the busy dialog what is being restored, and ends that.
    virtual void Msg(std::wstring_view title, std::wstring_view message) = 0;
    virtual void BusyHide(bool pause) = 0;
    /// Whether the busy dialog is there, also behind its icon.
    [[nodiscard]] virtual bool IsBusyShown() const = 0;

    /// Begins or ends work on copies that a user may cancel by closing the busy dialog. The dialog
    /// stays closed then while the work comes to its end.
    virtual void Restoring(bool works) = 0;
};

}  // namespace vw
