#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/ErrorTrap.h"
#include "platform/ProgressReporter.h"
#include "platform/System.h"
#include "ui/EscapedError.h"
#include "ui/Form.h"

namespace vw {

class ProgramControl;
struct ProgramState;

/// frmBusyDialog: shows what the program is working on and keeps the report of it. Closing the
/// dialog cancels the run. It has no effect once the run has finished.
///
/// Texts and report lines are kept here and handed to the controls through a time gate, so that a
/// run of 100,000 files is not held up by windows that repaint themselves.
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

    /// Hands texts that wait to the controls and paints them, without processing other messages:
    /// for the time of one long file.
    void Repaint();

    /// Whether the dialog is kept open for its report.
    [[nodiscard]] bool KeepsReport() const;

    /// Everything reported so far, since the dialog was last loaded.
    [[nodiscard]] const std::wstring& ReportText() const noexcept { return report_; }

    [[nodiscard]] Form& Window() noexcept { return form_; }
    [[nodiscard]] const Form& Window() const noexcept { return form_; }

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

    void tmrBusy_Timer();
    void LeaveIcon();
    void ForgetClosedRun();
    void ForgetShownAgain();
    void AddLine(std::wstring_view text);
    void UpdateControls();
    void HandOverIfDue();

    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmBusyDialog"};
    ProgramState& state_;
    Surroundings around_;
    Form form_;
    std::wstring title_;
    std::wstring message_;
    std::wstring subMessage_;
    std::wstring report_;
    std::wstring lastReport_;     ///< of the dialog that was closed last
    std::size_t handedOver_ = 0;  ///< of the report, to its control
    std::uint64_t nextHandOver_ = 0;
    bool minimised_ = false;
    bool messageShown_ = false;  ///< the first one does not wait for the gate
    bool shownAgain_ = false;    ///< what the dialog shows is the report of an earlier run
    bool closedInRun_ = false;   ///< it must not flash up again while the run comes to its end
};

}  // namespace vw
