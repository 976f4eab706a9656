#pragma once

#include <exception>
#include <functional>
#include <vector>

#include "platform/ErrorTrap.h"
#include "platform/System.h"
#include "progress/ShellIcon.h"
#include "ui/EscapedError.h"
#include "ui/Form.h"

namespace vw {

class ProgramControl;
struct ProgramState;

/// frmTrayIcon: never shown, it carries the animated icon in the notification area while the
/// program works without windows, and keeps a silent run alive while it is loaded.
class TrayIcon final : private FormEvents {
  public:
    /// Returns every form that is loaded, the icon's own included.
    using Forms = std::function<std::vector<Form*>()>;

    TrayIcon(System& system, ProgramState& state, Language language, ProgramControl& program,
             Forms loadedForms, ShellIcon::Shell shell = &Shell_NotifyIconW);

    /// Puts the icon into the notification area and hides every window; once more while it is
    /// loaded, it only hides them. While the shell does not take the icon the windows stay, and the
    /// timer tries again.
    void Load();

    /// Takes the icon away.
    void Unload();

    /// The icon without animation, with the program's name as its tip.
    void cbStatic_Click();
    /// The icon with animation.
    void cbAnimated_Click();
    void cbEnd_Click();
    void mnuPropAction_Click();

    /// Takes the icon away, except in a silent run.
    void MaximizeApp();

    /// Whether the icon is there for the user to reach.
    [[nodiscard]] bool IsReachable() const noexcept { return icon_.IsAdded(); }

    /// The icon in the notification area.
    [[nodiscard]] ShellIcon& Icon() noexcept { return icon_; }

    [[nodiscard]] Form& Window() noexcept { return form_; }
    [[nodiscard]] const Form& Window() const noexcept { return form_; }

  private:
    void OnControl(Form& form, const ControlEvent& event) override;
    void OnLoad(Form& form) override;
    bool OnQueryUnload(Form& form, UnloadReason reason) override;
    void OnMouseMove(Form& form, int x, int y) override;
    void OnTaskbarCreated(Form& form) override;
    void OnEscaped(Form&, const std::exception_ptr& error) noexcept override {
        ReportEscaped(error, trap_);
    }

    void HideWindows();
    void Timer1_Timer();

    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmTrayIcon"};
    ProgramState& state_;
    ProgramControl& program_;
    Forms loadedForms_;
    Form form_;
    ShellIcon icon_;
    int frame_ = 1;
    bool animating_ = false;
};

}  // namespace vw
