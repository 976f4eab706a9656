#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "app/LanguageChoice.h"
#include "app/LogonStart.h"
#include "app/WindowSet.h"
#include "app/Work.h"
#include "engine/CPackage.h"
#include "fsutil/Scripting.h"
#include "list/format/Settings.h"
#include "platform/CCommonAPI.h"
#include "platform/ProgramControl.h"
#include "platform/ProgramState.h"
#include "platform/System.h"

namespace vw {

class SilentReport;

/// The program apart from the real parts of System: its windows, its engine and its work.
class Application final : public ProgramControl {
  public:
    Application(System& system, ProgramState& state, MRecentFiles::SettingsStore& settings,
                CCommonAPI& api, SilentReport& report);

    /// Runs the start procedure on the process's command line.
    void Start(std::wstring_view processCommandLine);

    /// Does what is due between two messages: gives the user back windows that an error left
    /// locked, and ends a silent run that nothing but its icon has kept for a minute.
    void OnIdle();

    /// Whether a window is loaded: the program lives as long.
    [[nodiscard]] bool HasLoadedWindow() const;

    /// Creates the windows of a silent run once they are due.
    void ShowWindowsIfDue();

    /// Creates the windows of a silent run now, if they are not there.
    void ShowSilentWindows();

    /// Called for each box of a silent run: the run shows its icon, and stays for another minute
    /// when nothing else keeps it.
    void OnSilentBox();

    /// Makes the window set of the interface language; nothing is shown or loaded yet. Windows of
    /// the other language go, and the new main window is shown in their place.
    void MakeWindows();

    void ShowOpeningScreen();

    /// Loads the main window and shows it, except in a silent run.
    void ShowMainWindow();

    /// Cleans the temporary folders.
    void DeleteTemporaryFiles();

    /// The windows, once they are made.
    [[nodiscard]] WindowSet& Windows() noexcept { return *windows_; }

    /// The engine, which is made on first use.
    [[nodiscard]] CPackage& Engine();

    [[nodiscard]] Work& LongWork() noexcept { return work_; }

    void Ready(bool flag) override;
    void frmUnload() override;
    [[noreturn]] void EndAtOnce() override;

  private:
    System& system_;
    ProgramState& state_;
    MRecentFiles::SettingsStore& settings_;
    CCommonAPI& api_;
    MMyScripting::ScriptShell shell_;
    LanguageChoice language_;
    LogonStart logonStart_;
    Work work_;
    std::unique_ptr<CPackage> engine_;
    std::unique_ptr<WindowSet> windows_;
    /// Since when nothing but its icon keeps a silent run that failed in its command line.
    std::optional<std::uint64_t> lingersSince_;
    bool isUnloading_ = false;
    bool isRebuilding_ = false;
    bool isOpening_ = false;  ///< the opening screen is shown
};

}  // namespace vw
