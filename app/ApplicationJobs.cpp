#include "app/Application.h"
#include "app/KeepAwake.h"
#include "engine/CopyName.h"
#include "list/editing/SubItem.h"
#include "platform/Like.h"
#include "platform/WindowsHeader.h"

// What the start procedure starts.

namespace vw {

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
    working_ = true;
    work();
    working_ = false;
}

void Application::BackUpCurrentList() {
    Working([this] { Engine().BackupAll(); });
}

void Application::BackUpItem(std::wstring_view path) {
    Working([&] { Engine().BackupItem(path); });
}

void Application::ShowCopies(std::wstring_view itemOrCopy) {
    Engine().GetBackupTo();
    windows_->frmMain.Load();
    const bool isCopy = Like(itemOrCopy, kCopyNamePattern);
    windows_->browser.RestoreFrom(isCopy ? itemOrCopy
                                         : std::wstring_view(state_.defaultDestination));
    windows_->browser.ListRestoreFiles();
    windows_->browser.RestoredPath(isCopy ? CFileOrigin(itemOrCopy) : std::wstring(itemOrCopy));
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
