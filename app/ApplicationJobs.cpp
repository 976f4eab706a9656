#include "app/Application.h"
#include "app/KeepAwake.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "list/editing/RowWarnings.h"
#include "list/format/ListText.h"
#include "platform/FileSystem.h"
#include "platform/Like.h"
#include "platform/LocalTime.h"
#include "platform/MsgBox.h"
#include "platform/RuntimeError.h"
#include "progress/SilentReport.h"

// What the start procedure starts.

namespace vw {

namespace {

// Of the errors of one piece of work. A run in the evening shall not wait for an answer until the
// morning.
constexpr int kMostBoxes = 3;

}  // namespace

// An Arabic window needs the keyboard and the digits to go with it.
void Application::MakeWindows() {
    const bool again = windows_ && windows_->frmMain.IsLoaded();
    if (again) {
        // It saves its list, and the program does not end with it.
        rebuilding_ = true;
        windows_->frmMain.Unload();
        rebuilding_ = false;
    }
    language_.PrepareArabicOnce(api_);
    windows_ = std::make_unique<WindowSet>(system_, state_, settings_, logonStart_, language_,
                                           WindowHosts{*this, *this, *this, *this, *this, *this});
    if (again) ShowMainWindow();
}

void Application::LoadTrayIcon() {
    state_.silentRun ? windows_->silent.Begin() : windows_->frmTrayIcon.Load();
}

// The dialog is painted while one large file is copied; a system that takes the program for hung
// would hide it behind a picture of itself.
void Application::ShowOpeningScreen() {
    DisableProcessWindowsGhosting();
    windows_->frmAbout.ShowOpeningScreen();
}

// A silent run loads it and nobody sees it.
void Application::ShowMainWindow() {
    if (unloading_) return;
    windows_->frmMain.Load();
    if (state_.silentRun) return;
    windows_->frmMain.Show();
    if (openingScreenEnds_) windows_->frmAbout.Unload();
    openingScreenEnds_ = false;
}

template <class Work>
void Application::Working(Work&& work) {
    const KeepAwake awake;
    boxLimit_.emplace(system_.errors, kMostBoxes);
    working_ = true;
    work();
    EndErrors();
    working_ = false;
}

template <class Work>
void Application::BackUp(std::wstring_view path, int items, Work&& work) {
    // A report that is looked at shows how the run ended beside the name of the list; a log needs
    // to say where the list is.
    run_.Begin(state_.silentRun ? std::wstring(path) : MFileDosShell::CFileName(path), items);
    runBegan_ = LocalNow();
    Working([&] {
        work();
        EndRun();
    });
}

// A silent run has no rows. The file says the same but for the dates of the items, which the run
// finds out item by item.
void Application::ReportWarningsOfList() {
    try {
        const std::wstring text =
            DecodeList(system_.files.Read(state_.currentListPath), system_.ansi);
        const auto exists = [this](const std::wstring& line) {
            return system_.files.Look(line).has_value();
        };
        for (const auto& [path, warning] : WarningsOfList(text, state_.BackupTo, exists)) {
            Report(WarningText(warning, state_.arabic), false);
            Report(path, false);
        }
    } catch (const RuntimeError&) {
        // The run itself reports why the list cannot be read.
    }
}

void Application::BackUpCurrentList() {
    const int items = state_.silentRun ? 0 : windows_->list.Rows().Count();
    BackUp(state_.currentListPath, items, [this] {
        if (state_.silentRun) {
            ReportWarningsOfList();
        } else {
            for (const std::wstring& line : windows_->list.Rows().Warnings()) Report(line, false);
        }
        Engine().BackupAll();
    });
}

void Application::BackUpItem(std::wstring_view path) {
    BackUp(path, 1, [&] { Engine().BackupItem(path); });
}

// Before the busy dialog closes: the line belongs to its report.
void Application::EndRun() {
    if (!run_.IsOpen()) return;
    run_.End(state_.cancelRequested);
    const Date now = LocalNow();
    Report(run_.ReportLine(state_.arabic, now), false);
    report_.Flush();
    if (state_.silentRun) return;
    windows_->main.Status().ShowOutcome(run_.StatusText(state_.arabic, now), run_.HasFailures());
}

// Whoever was spared the boxes learns that there was more than the first of them said.
void Application::EndErrors() {
    if (!boxLimit_) return;
    const int told = boxLimit_->End();
    boxLimit_.reset();
    if (told <= kMostBoxes || state_.silentRun) return;
    const std::wstring count = std::to_wstring(told);
    system_.boxes.MsgBox({.text = state_.arabic
                                      ? L"عدد الأخطاء في هذه العملية: " + count +
                                            L". ظهر أولها في رسائل، وهي كلها في التقرير."
                                      : L"There were " + count +
                                            L" errors. The first ones were shown, all of them are "
                                            L"in the report.",
                          .rightToLeft = state_.arabic});
}

void Application::ShowCopies(std::wstring_view itemOrCopy) {
    Engine().GetBackupTo();
    windows_->frmMain.Load();
    const bool isCopy = Like(itemOrCopy, kCopyNamePattern);
    windows_->browser.RestoreFrom(isCopy ? itemOrCopy
                                         : std::wstring_view(state_.defaultDestination));
    windows_->browser.ListRestoreFiles();
    windows_->browser.RestoredPath(isCopy ? ParseCopyName(itemOrCopy).origin
                                          : std::wstring(itemOrCopy));
}

void Application::DeleteTemporaryFiles() {
    Working([this] {
        MFileDosShell::DellTemp(system_, state_, shell_, api_.IsWinNT(),
                                static_cast<CleaningHost&>(*this));
    });
}

void Application::LoadCurrentList() {
    windows_->frmMain.Load();
    windows_->list.GetList();
    windows_->main.SetCaption();
}

void Application::LoadSingleItem(std::wstring_view path) {
    LoadCurrentList();
    windows_->list.Rows().AddToList(path);
    windows_->list.Rows().List().FitColumns();
    windows_->list.Rows().List().Select(0);
    state_.listModified = true;
    windows_->list.FileSave();
    windows_->main.KeepToOneItem();
    RestoredPath(path);
}

}  // namespace vw
