#include "progress/BusyTexts.h"

#include <algorithm>
#include <utility>

#include "platform/Clock.h"
#include "platform/ProgramState.h"
#include "ui/ControlNames.h"
#include "ui/Form.h"

namespace vw {
namespace {

// Nobody reads faster than five changes a second. An update takes a twentieth of the time at most,
// however long the report has become.
constexpr std::uint64_t kIntervalMilliseconds = 200;
constexpr std::uint64_t kUpdateShare = 20;

}  // namespace

void BusyTexts::SetMessage(std::wstring_view title, std::wstring_view message,
                           std::wstring_view subMessage) {
    title_ = title;
    message_ = message;
    subMessage_ = subMessage;
}

void BusyTexts::AddLine(std::wstring_view text) {
    EndClosedRun();
    EndShownAgain();
    report_.append(text).append(L"\r\n");
}

// The last lines of a run whose dialog was closed are no part of the next one's report.
void BusyTexts::EndClosedRun() {
    if (!closedInRun_ || (state_.cancel.IsRequested() && state_.isWorking)) return;
    closedInRun_ = false;
    lastReport_ += report_;
    report_.clear();
}

void BusyTexts::EndShownAgain() {
    if (!std::exchange(shownAgain_, false)) return;
    report_.clear();
    shownUnits_ = 0;
    form_.SetText(control::txtReport, {});
    form_.SetProgress(L"ProgressBar1", 0);
}

void BusyTexts::ShowLastReport() {
    shownAgain_ = true;
    title_ = L"Done";
    report_ = lastReport_;
    UpdateControls();
}

void BusyTexts::UpdateControlsIfDue() {
    if (system_.clock.Milliseconds() >= nextUpdate_) UpdateControls();
}

void BusyTexts::UpdateControls() {
    if (!form_.IsLoaded()) return;
    const std::uint64_t begin = system_.clock.Milliseconds();
    form_.SetText(control::lblTitle, title_);
    form_.SetText(control::lblMsg, message_);
    form_.SetText(control::lblSubMsg, subMessage_);
    if (shownUnits_ < report_.size()) {
        const std::wstring_view report = report_;
        form_.Append(control::txtReport, report.substr(shownUnits_));
        shownUnits_ = report_.size();
    }
    const std::uint64_t now = system_.clock.Milliseconds();
    nextUpdate_ = now + std::max(kIntervalMilliseconds, (now - begin) * kUpdateShare);
}

void BusyTexts::OnClose() noexcept { closedInRun_ = state_.isWorking; }

void BusyTexts::OnUnload() {
    if (!report_.empty()) lastReport_ = std::exchange(report_, {});
    shownUnits_ = 0;
    SetMessage({}, {}, {});
}

}  // namespace vw
