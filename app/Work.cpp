#include "app/Work.h"

#include <string>
#include <utility>

#include "app/KeepAwake.h"
#include "app/WindowSet.h"
#include "engine/CPackage.h"
#include "engine/RunTexts.h"
#include "fsutil/PathText.h"
#include "list/editing/RowWarnings.h"
#include "list/format/ListText.h"
#include "platform/Clock.h"
#include "platform/ExitStatus.h"
#include "platform/FileSystem.h"
#include "platform/LocalTime.h"
#include "platform/MessageBoxes.h"
#include "platform/MessagePump.h"
#include "platform/ProgramState.h"
#include "platform/RuntimeError.h"
#include "platform/Scoped.h"
#include "progress/SilentReport.h"

namespace vw {

namespace {

// Of the errors of one piece of work. A run in the evening shall not wait for an answer until the
// morning.
constexpr int kMostBoxes = 3;

}  // namespace

Work::Work(System& system, ProgramState& state, SilentReport& report, EngineProvider engine)
    : system_(system), state_(state), report_(report), engine_(std::move(engine)) {}

ProgressReporter& Work::Shown() {
    if (state_.silentRun) return report_;
    return windows_->frmBusyDialog;
}

void Work::Run(const std::function<void()>& work) {
    const KeepAwake awake;
    const ScopedFlag running(isRunning_);
    const ScopedFlag working(state_.isWorking);
    boxLimit_.emplace(system_.errors, kMostBoxes);
    work();
    EndErrors();
}

void Work::BackUp(std::wstring_view path, int items, const std::function<void()>& work) {
    // A report that is looked at shows how the run ended beside the name of the list; a log needs
    // to say where the list is.
    run_.Begin(state_.silentRun ? std::wstring(path) : MFileDosShell::CFileName(path), items);
    runBegan_ = LocalNow();
    Run([&] {
        work();
        EndRun();
    });
}

// A silent run has no rows. The file says the same but for the dates of the items, which the run
// finds out item by item.
void Work::ReportWarningsOfList() {
    try {
        const std::wstring text =
            DecodeList(system_.files.Read(state_.currentListPath), system_.ansi);
        const auto exists = [this](const std::wstring& line) {
            return system_.files.Stat(line).has_value();
        };
        for (const auto& [path, warning] : WarningsOfList(text, state_.BackupTo, exists)) {
            Report(WarningText(warning, state_.language), false);
            Report(path, false);
        }
    } catch (const RuntimeError&) {
        // The run itself reports why the list cannot be read.
    }
}

void Work::BackUpCurrentList() {
    const int items = state_.silentRun ? 0 : windows_->list.Rows().Count();
    BackUp(state_.currentListPath, items, [this] {
        if (state_.silentRun) {
            ReportWarningsOfList();
        } else {
            for (const std::wstring& line : windows_->list.Rows().Warnings()) Report(line, false);
        }
        engine_().BackupAll();
    });
}

void Work::BackUpItem(std::wstring_view path) {
    BackUp(path, 1, [&] { engine_().BackupItem(path); });
}

void Work::Abort() {
    if (!isRunning_) return;
    system_.exitStatus.Note(error_number::kCancelled);
    state_.cancel.Request();
    if (state_.silentRun) {
        report_.Failure(state_.IsArabic() ? L"أُلغيت العملية"
                                          : DescriptionOf(error_number::kCancelled));
    }
    EndRun();
}

// Before the busy dialog closes: the line belongs to its report.
void Work::EndRun() {
    if (!run_.IsOpen()) return;
    run_.End(state_.cancel.IsRequested());
    const Date now = LocalNow();
    Report(run_.ReportLine(state_.language, now), false);
    windows_->status.ShowOutcome(run_.StatusText(state_.language, now), run_.HasFailures());
}

// The box shows a user that there were more errors than the first ones.
void Work::EndErrors() {
    if (!boxLimit_) return;
    const int reported = boxLimit_->End();
    boxLimit_.reset();
    if (reported <= kMostBoxes || state_.silentRun) return;
    const std::wstring count = std::to_wstring(reported);
    system_.boxes.Show({.text = state_.IsArabic()
                                    ? L"عدد الأخطاء في هذه العملية: " + count +
                                          L". ظهرت الأخطاء الأولى في رسائل، وهي كلها في التقرير."
                                    : L"There were " + count +
                                          L" errors. The first ones were shown, all of them are "
                                          L"in the report.",
                        .rightToLeft = state_.IsArabic()});
}

// An error of the report itself has no report to go to.
void Work::NoteError(std::wstring_view details) {
    if (isRunning_) run_.NoteFailure();
    if (!isRunning_ || state_.silentRun || isNoting_ || details.empty()) return;
    const ScopedFlag noting(isNoting_);
    windows_->frmBusyDialog.Report(details, false);
}

void Work::Msg(std::wstring_view title, std::wstring_view message) {
    Shown().Msg(title, message);
    windows_->silent.ShowWindowsIfDue();
}

void Work::Report(std::wstring_view text, bool wait) {
    Shown().Report(text, wait);
    windows_->silent.ShowWindowsIfDue();
}

void Work::Failure(std::wstring_view text) {
    Notice(text);
    if (state_.silentRun) report_.Failure(text);
}

// The two lines that the report has of such an item mean nothing to a reader of the errors alone.
void Work::OnItem(ItemEvent event, std::wstring_view path, const ItemSize&) {
    run_.OnItem(event);
    if (!state_.silentRun) return;
    if (event == ItemEvent::Missing) {
        report_.Failure(RunLine(run_text::kMissing, state_.language, path));
    } else if (event == ItemEvent::Refused) {
        report_.Failure(RunLine(run_text::kRefused, state_.language, path));
    }
}

void Work::OnItemStats(std::wstring_view path, std::uint64_t bytes, Date newest) {
    if (!state_.silentRun) {
        windows_->list.Rows().Refresh(path, bytes, newest);
    } else if (IsInFuture(newest, runBegan_)) {
        Report(WarningText(RowWarning::FutureDate, state_.language), false);
        Report(path, false);
    }
}

// The system's copy call reports its progress far more often than anybody can see.
void Work::DuringCopy() {
    constexpr std::uint64_t kMilliseconds = 50;
    if (system_.clock.Milliseconds() < nextPainting_) return;
    nextPainting_ = system_.clock.Milliseconds() + kMilliseconds;
    if (!state_.silentRun) windows_->frmBusyDialog.Repaint();
    // A cancel is noted now and acts after the file; the end of the session does not wait for it.
    system_.pump.ProcessMessages();
}

void Work::BusyHide(bool pause) {
    EndRun();
    EndErrors();
    Shown().BusyHide(pause);
}

bool Work::IsShown() const { return windows_ != nullptr && windows_->frmBusyDialog.IsShown(); }

}  // namespace vw
