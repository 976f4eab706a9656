#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/ErrorTrap.h"
#include "platform/ProgressReporter.h"
#include "platform/System.h"
#include "progress/BusyTexts.h"
#include "ui/EscapedError.h"
#include "ui/Form.h"

namespace vw {

class ProgramControl;
struct ProgramState;

/// frmBusyDialog: shows what the program is working on and keeps the report of it. Closing the
/// dialog cancels the run. It has no effect once the run has finished.
class BusyDialog final : public ProgressReporter, private FormEvents {
  public:
    /// What the dialog uses of the program around it.
    struct Surroundings {
        ProgramControl& program;
        /// Puts the notification icon in place of the minimised dialog (true), or takes it away.
        std::function<void(bool)> showIcon;
        /// Shows the main window, if it is loaded, after it was hidden with the dialog.
        std::function<void()> showMainWindow;
    };

    BusyDialog(System& system, ProgramState& state, Language language, Surroundings around);

    /// Shows a message and adds "title: message - subMessage" to the report. With `wait` it is
    /// shown for two seconds, with `close` the dialog is unloaded then; neither while the user
    /// wants to keep the report. `showReport` opens the report, or closes it.
    void Msg(std::wstring_view title, std::wstring_view message, std::wstring_view subMessage,
             bool wait, bool close, bool showReport);

    void Msg(std::wstring_view title, std::wstring_view message) override {
        Msg(title, message, {}, false, false, false);
    }
    void Report(std::wstring_view text, bool wait) override;

    /// Brings the dialog up; in a silent run it is only loaded.
    void SendView();

    /// Whether the user has the dialog before him, or its icon in its place.
    [[nodiscard]] bool IsShown() const override;

    /// Ends the busy state when the dialog is shown: the report opens with "Done" at its end and,
    /// after two seconds with `pause`, the dialog goes unless the user wants to keep the report.
    /// The main window comes back from behind the icon in both cases.
    void BusyHide(bool pause) override;

    /// Shows the report of the last run once more, until the user closes it or the next work
    /// begins. Nothing happens while the dialog is there, or when there was no run.
    void ShowLastReport();

    /// Waits with the windows alive; a cancel, or the end of the dialog, ends the wait early.
    void Wait(int seconds);

    /// Updates the controls and paints them, without processing other messages: for the time of
    /// one long file.
    void Repaint();

    /// Whether the dialog is kept open for its report.
    [[nodiscard]] bool KeepsReport() const;

    /// Everything reported so far, since the dialog was last loaded.
    [[nodiscard]] const std::wstring& ReportText() const noexcept { return texts_.Report(); }

    [[nodiscard]] Form& Window() noexcept { return form_; }

  private:
    void OnControl(Form& form, const ControlEvent& event) override;
    void OnLoad(Form& form) override;
    bool OnQueryUnload(Form& form, UnloadReason reason) override;
    void OnUnload(Form& form) override;
    void OnResize(Form& form, WindowState state) override;
    void OnTaskbarButtonCreated(Form& form) override;
    void OnEscaped(Form&, const std::exception_ptr& error) noexcept override {
        ReportEscaped(error, trap_);
    }

    void LeaveIcon();

    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmBusyDialog"};
    ProgramState& state_;
    Surroundings around_;
    Form form_;
    BusyTexts texts_;
    bool minimised_ = false;
    bool messageShown_ = false;  ///< the first message is shown at once
};

}  // namespace vw
