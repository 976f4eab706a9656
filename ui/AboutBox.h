#pragma once

#include <exception>

#include "platform/ErrorTrap.h"
#include "platform/System.h"
#include "ui/EscapedError.h"
#include "ui/Form.h"

namespace vw {

/// frmAbout: the opening screen of the program and the box of the Help menu.
class AboutBox final : private FormEvents {
  public:
    AboutBox(System& system, Language language);

    /// Shows it with its button before `owner` and returns when it was closed.
    void AsAbout(Form& owner);

    /// Shows it without waiting, while the program starts.
    void ShowOpeningScreen();

    /// Takes it away; nothing happens when it is not there.
    void Unload();

    [[nodiscard]] Form& Window() noexcept { return form_; }

  private:
    void OnLoad(Form& form) override;
    void OnControl(Form& form, const ControlEvent& event) override;
    void OnEscaped(Form& form, const std::exception_ptr& error) noexcept override;

    void lblWS_Click();

    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmAbout"};
    Form form_;
    bool openedFromAnother_ = false;  ///< a click anywhere closes it then
};

}  // namespace vw
