#include "progress/BusyDialog.h"

#include <algorithm>
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
// Five times a second is as fast as anyone reads, and painting costs more than telling. Handing
// over takes a twentieth of the time at most, however long the report has become.
constexpr std::uint64_t kGateMilliseconds = 200;
constexpr std::uint64_t kGateShare = 20;

}  // namespace

BusyDialog::BusyDialog(System& system, ProgramState& state, Language language, Surroundings around)
    : system_(system),
      state_(state),
      around_(std::move(around)),
      form_(BusyForm(), language, *this) {}

void BusyDialog::Msg(std::wstring_view title, std::wstring_view message,
                     std::wstring_view subMessage, bool wait, bool close, bool showReport) {
    trap_(L"Msg", [&] {
        title_ = title;
        message_ = message;
        subMessage_ = subMessage;
        std::wstring line;
        line.reserve(title.size() + message.size() + subMessage.size() + 5);
        line.append(title).append(L": ").append(message).append(L" - ").append(subMessage);
        Report(line, false);
        if (showReport || !messageShown_) UpdateControls();
        form_.ShowControl(control::txtReport, showReport);
        messageShown_ = true;
        if (form_.IsChecked(control::chkDontHide)) return;
        if (wait) Wait(kMessageSeconds);
        if (close) form_.Unload();
    });
}

void BusyDialog::Report(std::wstring_view text, bool wait) {
    trap_(L"Report", [&] {
        ForgetClosedRun();
        ForgetShownAgain();
        AddLine(text);
        SendView();
        // In a run the lines follow each other, one for each item; the end of the run waits for
        // all of them.
        if (wait && form_.IsVisible() && !state_.isWorking) Wait(kMessageSeconds);
    });
}

// The last lines of a run whose dialog was closed are no part of the next one's report.
void BusyDialog::ForgetClosedRun() {
    if (!closedInRun_ || (state_.cancel.IsRequested() && state_.isWorking)) return;
    closedInRun_ = false;
    lastReport_ += report_;
    report_.clear();
}

// The report of the work that begins replaces the one that was shown once more.
void BusyDialog::ForgetShownAgain() {
    if (!std::exchange(shownAgain_, false)) return;
    report_.clear();
    handedOver_ = 0;
    form_.SetText(control::txtReport, {});
    form_.SetProgress(L"ProgressBar1", 0);
}

void BusyDialog::ShowLastReport() {
    trap_(L"Report", [&] {
        ForgetClosedRun();
        if (lastReport_.empty() || state_.silentRun) return;
        if (!form_.IsVisible()) {
            form_.Load();
            shownAgain_ = true;
            title_ = L"Done";
            report_ = lastReport_;
            UpdateControls();
            form_.SetProgress(L"ProgressBar1", kProgressMaximum);
            form_.ShowControl(control::txtReport, true);
            form_.SetDefaultButton(control::cmdCancel);
        }
        form_.Show(ShowHow::Activate);
    });
}

void BusyDialog::AddLine(std::wstring_view text) { report_.append(text).append(L"\r\n"); }

void BusyDialog::SendView() {
    trap_(L"SendView", [&] {
        if (state_.silentRun) {
            form_.Load();
            return;
        }
        if (closedInRun_) return;
        if (!form_.IsVisible()) {
            form_.Load();
            UpdateControls();
            // What was minimised comes back as its button of the task bar.
            form_.Show(minimised_ ? ShowHow::MinimisedKeepFocus : ShowHow::Activate);
            form_.Repaint();
        }
        form_.EnableTimer(L"tmrBusy", true);
        // Enter closes a report, but cancels no work.
        form_.SetDefaultButton({});
        HandOverIfDue();
    });
}

void BusyDialog::BusyHide(bool pause) {
    ErrorTrap(system_.errors, L"Module", L"MVaultwright")(L"BusyHide", [&] {
        if (!IsShown()) return;
        Msg(L"Done", {}, {}, false, false, true);
        UpdateControls();
        form_.EnableTimer(L"tmrBusy", false);
        form_.SetProgress(L"ProgressBar1", kProgressMaximum);
        ShowBusyInTaskbar(form_.Handle(), false);
        form_.SetDefaultButton(control::cmdCancel);
        if (pause) Wait(kMessageSeconds);
        if (!form_.IsLoaded()) return;
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
        UpdateControls();
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
    UpdateControls();
    form_.Repaint();
}

bool BusyDialog::KeepsReport() const {
    return form_.IsVisible() && form_.IsChecked(control::chkDontHide);
}

void BusyDialog::HandOverIfDue() {
    if (system_.clock.Milliseconds() >= nextHandOver_) UpdateControls();
}

void BusyDialog::UpdateControls() {
    if (!form_.IsLoaded()) return;
    const std::uint64_t begin = system_.clock.Milliseconds();
    form_.SetText(control::lblTitle, title_);
    form_.SetText(control::lblMsg, message_);
    form_.SetText(control::lblSubMsg, subMessage_);
    if (handedOver_ < report_.size()) {
        const std::wstring_view report = report_;
        form_.Append(control::txtReport, report.substr(handedOver_));
        handedOver_ = report_.size();
    }
    const std::uint64_t now = system_.clock.Milliseconds();
    nextHandOver_ = now + std::max(kGateMilliseconds, (now - begin) * kGateShare);
}

void BusyDialog::OnLoad(Form&) {
    // The labels of the layout have no borders; the report of an earlier time is gone.
    nextHandOver_ = 0;
    minimised_ = false;
    messageShown_ = false;
}

void BusyDialog::OnUnload(Form&) {
    if (!report_.empty()) lastReport_ = std::move(report_);
    shownAgain_ = false;
    report_.clear();
    handedOver_ = 0;
    title_.clear();
    message_.clear();
    subMessage_.clear();
}

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
        closedInRun_ = state_.isWorking;
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
        tmrBusy_Timer();
    } else if (event.id == ID_cmdCancel && event.kind == EventKind::Click) {
        trap_(L"cmdCancel_Click", [&] { form.Unload(); });
    }
}

void BusyDialog::tmrBusy_Timer() {
    trap_(L"tmrBusy_Timer", [this] {
        if (message_ == L"End") {
            form_.Unload();
            return;
        }
        UpdateControls();
        form_.SetProgress(L"ProgressBar1",
                          (form_.Progress(L"ProgressBar1") + kBarStep) % kProgressMaximum);
    });
}

}  // namespace vw
