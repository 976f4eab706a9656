#pragma once

#include <string>
#include <string_view>

#include "platform/WindowsHeader.h"
// The shell's declarations need those of the window system first.
#include <shellapi.h>

namespace vw {

class Form;

/// The icon of a form in the notification area. It shows the form's own icon.
class ShellIcon {
  public:
    /// Receives the requests for icons. Only tests replace the system's function.
    using Shell = BOOL(WINAPI*)(DWORD request, NOTIFYICONDATAW* icon);

    ShellIcon(const Form& form, Shell shell) : form_(form), shell_(shell) {}

    /// Sets the text that is shown while the mouse rests on the icon, from its next addition or
    /// change on.
    void SetTip(std::wstring_view tip) { tip_ = tip; }

    /// The notification record of the form's present state.
    [[nodiscard]] NOTIFYICONDATAW InitIconStruct() const;

    void Add();

    /// Adds an icon that the shell refused before. When the shell accepted it after the refusal, it
    /// can be changed and counts as added.
    void AddAgain();

    /// Shows the form's present icon and the tip.
    void Modify();

    /// Removes the icon, also one whose addition was not confirmed.
    void Remove();

    /// Notes that the shell has lost the icon.
    void OnLost() noexcept { added_ = false; }

    /// Whether the shell shows the icon.
    [[nodiscard]] bool IsAdded() const noexcept { return added_; }

    /// The shell's answer to the last request.
    [[nodiscard]] bool LastStatus() const noexcept { return lastStatus_; }

  private:
    void Request(DWORD request);

    const Form& form_;
    Shell shell_;
    std::wstring tip_;
    bool added_ = false;
    bool lastStatus_ = false;
};

}  // namespace vw
