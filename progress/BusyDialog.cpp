#include "progress/BusyDialog.h"

#include <utility>

#include "platform/Clock.h"
#include "platform/ErrorTrap.h"
#include "platform/MessagePump.h"
#include "platform/ProgramControl.h"
#include "platform/ProgramState.h"
#include "progress/TaskbarProgress.h"
#include "ui/ControlNames.h"
#include "ui/Forms.h"
#include "ui/resource.h"

namespace vw {

namespace {
constexpr int kMessageSeconds = 2;
constexpr int kBarStep = 10;
constexpr unsigned kWaitMilliseconds = 50;

}  // namespace

BusyDialog::BusyDialog(System& system, ProgramState& state, Language language, Surroundings around)
    : system_(system),
      state_(state),
      around_(std::move(around)),
      form_(BusyForm(), language, *this),
      texts_(system, state, form_) {}

void BusyDialog::Msg(std::wstring_view title, std::wstring_view message,
                     std::wstring_view subMessage, bool wait, bool close, bool showReport) {
    trap_(L"Msg", [&] {
        texts_.SetMessage(title, message, subMessage);
        std::wstring line;
        line.append(title).append(L": ").append(message).append(L" - ").append(subMessage);
        Report(line, false);
        if (showReport || !messageShown_) texts_.UpdateControls();
        form_.ShowControl(control::txtReport, showReport);
        messageShown_ = true;
        if (form_.IsChecked(control::chkDontHide)) return;
        if (wait) Wait(kMessageSeconds);
        if (close) form_.Unload();
    });
}

void BusyDialog::Report(std::wstring_view text, bool wait) {
    trap_(L"Report", [&] {
        texts_.AddLine(text);
        SendView();
        // In a run the lines follow each other, one for each item; the end of the run waits for
        // all of them.
        if (wait && form_.IsVisible() && !state_.isWorking) Wait(kMessageSeconds);
    });
}

void BusyDialog::ShowLastReport() {
    trap_(L"Report", [&] {
        texts_.EndClosedRun();
        if (texts_.LastReport().empty() || state_.silentRun) return;
        if (!form_.IsVisible()) {
            form_.Load();
            texts_.ShowLastReport();
            form_.SetProgress(L"ProgressBar1", kProgressMaximum);
            form_.ShowControl(control::txtReport, true);
            form_.SetDefaultButton(control::cmdCancel);
        }
        form_.Show(ShowHow::Activate);
    });
}

void BusyDialog::SendView() {
    trap_(L"SendView", [&] {
        if (state_.silentRun) {
            form_.Load();
            return;
        }
        if (texts_.IsClosedInRun()) return;
        if (!form_.IsVisible()) {
            form_.Load();
            texts_.UpdateControls();
            // What was minimised comes back as its button of the task bar.
            form_.Show(minimised_ ? ShowHow::MinimisedKeepFocus : ShowHow::Activate);
            form_.Repaint();
        }
        form_.EnableTimer(L"tmrBusy", true);
        // Enter closes a report, but cancels no work.
        form_.SetDefaultButton({});
        texts_.UpdateControlsIfDue();
    });
}

void BusyDialog::BusyHide(bool pause) {
    ErrorTrap(system_.errors, L"Module", L"MVaultwright")(L"BusyHide", [&] {
        if (!IsShown()) return;
        Msg(L"Done", {}, {}, false, false, true);
        form_.EnableTimer(L"tmrBusy", false);
        form_.SetProgress(L"ProgressBar1", kProgressMaximum);
        ShowBusyInTaskbar(form_.Handle(), false);
        form_.SetDefaultButton(control::cmdCancel);
        if (pause) Wait(kMessageSeconds);
        if (!form_.IsChecked(control::chkDontHide)) {
            form_.Unload();
        } else if (minimised_) {
            LeaveIcon();
        }
    });
}

bool BusyDialog::IsShown() const { return form_.IsLoaded() && (form_.IsVisible() || minimised_); }

// A cancel that was there before, such as that of an earlier run, does not count.
void BusyDialog::Wait(int seconds) {
    ErrorTrap(system_.errors, L"Module", L"MBusyDialog")(L"Wait", [&] {
        texts_.UpdateControls();
        const bool before = state_.cancel.IsRequested();
        const std::uint64_t end =
            system_.clock.Milliseconds() + static_cast<std::uint64_t>(seconds) * 1000;
        while (system_.clock.Milliseconds() < end) {
            system_.pump.WaitForMessages(kWaitMilliseconds);
            if (!form_.IsLoaded() || (state_.cancel.IsRequested() && !before)) break;
        }
    });
}

void BusyDialog::Repaint() {
    texts_.UpdateControls();
    form_.Repaint();
}

bool BusyDialog::KeepsReport() const {
    return form_.IsVisible() && form_.IsChecked(control::chkDontHide);
}

void BusyDialog::OnLoad(Form&) {
    minimised_ = false;
    messageShown_ = false;
}

void BusyDialog::OnUnload(Form&) { texts_.OnUnload(); }

void BusyDialog::OnResize(Form&, WindowState state) {
    trap_(L"Form_Resize", [&] {
        const bool before = std::exchange(minimised_, state == WindowState::Minimised);
        if (minimised_) {
            around_.showIcon(true);
        } else if (before) {
            // The user has clicked its button of the task bar.
            LeaveIcon();
        }
    });
}

// The windows come back from behind the icon; the dialog keeps its report for the user.
void BusyDialog::LeaveIcon() {
    around_.showIcon(false);
    around_.showMainWindow();
    minimised_ = false;
    form_.Show(ShowHow::Normal);
}

// The order matters: the wish to keep the report would keep the main window disabled.
bool BusyDialog::OnQueryUnload(Form& form, UnloadReason reason) {
    trap_(L"Form_QueryUnload", [&] {
        texts_.OnClose();
        if (reason == UnloadReason::SessionEnd) state_.endRequested = true;
        state_.cancel.Request();
        if (minimised_) around_.showIcon(false);
        form.Check(control::chkDontHide, false);
        around_.program.Ready(true);
        if (minimised_) around_.showMainWindow();
    });
    return true;
}

void BusyDialog::OnTaskbarButtonCreated(Form& form) {
    if (form.IsTimerEnabled(L"tmrBusy")) ShowBusyInTaskbar(form.Handle(), true);
}

void BusyDialog::OnControl(Form& form, const ControlEvent& event) {
    if (event.id == ID_tmrBusy) {
        trap_(L"tmrBusy_Timer", [&] {
            if (texts_.Message() == L"End") form.Unload();
            texts_.UpdateControls();
            form.SetProgress(L"ProgressBar1",
                             (form.Progress(L"ProgressBar1") + kBarStep) % kProgressMaximum);
        });
    } else if (event.id == ID_cmdCancel && event.kind == EventKind::Click) {
        trap_(L"cmdCancel_Click", [&] { form.Unload(); });
    }
}

}  // namespace vw
