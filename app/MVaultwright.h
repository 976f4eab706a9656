#pragma once

#include <string>
#include <string_view>

#include "app/CommandLine.h"
#include "list/format/Settings.h"
#include "platform/ErrorTrap.h"
#include "platform/System.h"

namespace vw {

class Application;
class LanguageChoice;
class LogonStart;
struct ProgramState;

/// The start procedure: decides the language, reads the command line, then opens the main window
/// or does one job silently.
class MVaultwright {
  public:
    MVaultwright(System& system, ProgramState& state, MRecentFiles::SettingsStore& settings,
                 LanguageChoice& language, LogonStart& logonStart, Application& application);

    /// Runs the start procedure on the process's whole command line. An error ends it where it
    /// happened, after it was reported.
    void Main(std::wstring_view processCommandLine);

    /// The default destination folder, made (one level) when it is missing.
    [[nodiscard]] std::wstring BackupToDefault();

  private:
    void Start(std::wstring arguments);
    void Dispatch(const CommandLine& commandLine);
    void ShowCopies(std::wstring_view itemOrCopy);
    void LoadCurrentList();
    void LoadSingleItem(std::wstring_view path);
    [[nodiscard]] bool RefusedAsDrive(std::wstring_view path);
    [[nodiscard]] std::wstring ExistingList(std::wstring_view argument);
    [[nodiscard]] std::wstring CompleteIfPresent(const std::wstring& path);

    System& system_;
    ErrorTrap trap_{system_.errors, L"Module", L"MVaultwright"};
    ProgramState& state_;
    MRecentFiles::SettingsStore& settings_;
    LanguageChoice& language_;
    LogonStart& logonStart_;
    Application& application_;
};

}  // namespace vw
