#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/LanguageChoice.h"
#include "app/LogonStart.h"
#include "app/MainHost.h"
#include "app/RunRecord.h"
#include "app/StartCommands.h"
#include "app/WindowSet.h"
#include "engine/CPackage.h"
#include "engine/RunHost.h"
#include "fsutil/Scripting.h"
#include "fsutil/TempCleaning.h"
#include "list/editing/ListHost.h"
#include "list/editing/RecentFilesHost.h"
#include "list/format/Settings.h"
#include "platform/CCommonAPI.h"
#include "platform/Date.h"
#include "platform/ProgramState.h"
#include "platform/System.h"
#include "progress/BusyHost.h"
#include "restore/RestoreHost.h"

namespace vw {

class SilentReport;

/// The program apart from the world it lives in: its windows, its engine and what they do together.
/// What a lower room asks of those above it is answered here.
class Application final : private StartCommands,
                          private RunHost,
                          private MainHost,
                          private BusyHost,
                          private TrayHost,
                          private ListHost,
                          private RecentFilesHost,
                          private RestoreHost,
                          private CleaningHost,
                          private AutoBackupMark {
  public:
    Application(System& system, ProgramState& state, MRecentFiles::SettingsStore& settings,
                CCommonAPI& api, SilentReport& report);

    /// Runs the start procedure on the process's command line.
    void Start(std::wstring_view processCommandLine);

    /// Whether a window is loaded: the program lives as long. To be asked between two messages.
    [[nodiscard]] bool IsAlive();

    /// Creates the windows of a silent run once they are due. Returns whether any window can
    /// receive messages.
    [[nodiscard]] bool HasMessages();

    /// Ends the program as its main window would if it were closed.
    void Quit() { frmUnload(); }

    /// A silent run shows its icon now, if it has not done so yet.
    void AppearInSilentRun();

    /// Puts an error into the report of the run that it came in. What a silent run tells goes to
    /// its standard streams.
    void NoteError(std::wstring_view details);

    /// Called for each box of a silent run: the run shows its icon, and stays for another minute
    /// when nothing else keeps it.
    void OnSilentBox();

    /// The windows, once they are made.
    [[nodiscard]] WindowSet& Windows() noexcept { return *windows_; }

  private:
    // The start procedure (ApplicationJobs.cpp).
    void MakeWindows() override;
    void LoadTrayIcon() override;
    void ShowOpeningScreen() override;
    void ShowMainWindow() override;
    void BackUpCurrentList() override;
    void BackUpItem(std::wstring_view path) override;
    void ShowCopies(std::wstring_view itemOrCopy) override;
    void DeleteTemporaryFiles() override;
    void LoadCurrentList() override;
    void LoadSingleItem(std::wstring_view path) override;
    void EndProcess() override;

    // The run and the busy dialog.
    void Msg(std::wstring_view title, std::wstring_view message, std::wstring_view subMessage,
             bool wait, bool close, bool showReport) override;
    void Msg(std::wstring_view title, std::wstring_view message) override;
    void Report(std::wstring_view text, bool wait) override;
    void Failure(std::wstring_view text) override;
    void OnItem(ItemEvent event, std::wstring_view path, const ItemSize& size) override;
    void OnSurveyed(std::wstring_view path, std::uint64_t bytes, Date newest) override;
    void BusyHide(bool pause) override;
    void BusyHide() override { BusyHide(true); }
    void EndBusy() override { BusyHide(false); }
    void DuringCopy() override;
    void AbortRun() override;
    [[nodiscard]] bool IsRunning() const override { return working_ || restoring_; }
    [[nodiscard]] bool IsBusyShown() const override;
    void Restoring(bool works) override { restoring_ = works; }

    // The windows.
    void Ready(bool flag) override;
    void UnloadTrayIcon() override;
    [[nodiscard]] std::vector<Form*> LoadedForms() override;
    void AsAbout() override;
    void ShowLastReport() override;
    void UnloadOpeningScreen() override;
    void SetCaption() override;
    void ShowStatus(std::wstring_view text) override;
    void CheckAutoBackup(bool on) override;
    void ExplainAutoBackup() override;
    void ShowRecentFiles(const RecentFileMenu& menu) override;

    // The list and the copies.
    void FileOpen(std::wstring_view path) override;
    void OpenDefaultList() override;
    void ApplicationSartup(bool flag) override;
    [[nodiscard]] std::int16_t LocationID(std::wstring_view path) override;
    [[nodiscard]] CopyDates& StoredDates() override { return Engine(); }
    void ListLoaded() override;
    void ListRestoreFiles() override;
    void RestoredPath(std::wstring_view path) override;
    [[nodiscard]] CPackage& Engine() override;

    // The end.
    void frmUnload() override;
    [[noreturn]] void EndAtOnce() override;

    template <class Work>
    void Working(Work&& work);
    template <class Work>
    void BackUp(std::wstring_view path, int items, Work&& work);
    void ReportWarningsOfList();
    void EndRun();
    void EndErrors();

    System& system_;
    ProgramState& state_;
    MRecentFiles::SettingsStore& settings_;
    CCommonAPI& api_;
    SilentReport& report_;
    MMyScripting::ScriptShell shell_;
    LanguageChoice language_;
    LogonStart logonStart_;
    std::unique_ptr<CPackage> engine_;
    std::unique_ptr<WindowSet> windows_;
    RunRecord run_;
    Date runBegan_ = 0;
    std::optional<BoxLimit> boxLimit_;  ///< of the work that goes on
    /// Since when nothing but its icon keeps a silent run that failed in its command line.
    std::optional<std::uint64_t> lingersSince_;
    bool working_ = false;
    bool restoring_ = false;
    bool noting_ = false;
    std::uint64_t nextPainting_ = 0;
    bool unloading_ = false;
    bool rebuilding_ = false;
    bool openingScreenEnds_ = false;
};

}  // namespace vw
