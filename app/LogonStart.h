#pragma once

#include "list/format/Settings.h"
#include "platform/ErrorTrap.h"

namespace vw {

class CCommonAPI;
struct ProgramState;
struct System;

/// The options entry "Activate Auto Backup" of the main window.
class AutoBackupMark {
  public:
    AutoBackupMark() = default;
    AutoBackupMark(const AutoBackupMark&) = delete;
    AutoBackupMark& operator=(const AutoBackupMark&) = delete;
    virtual ~AutoBackupMark() = default;

    /// Sets or clears the entry's check mark.
    virtual void CheckAutoBackup(bool on) = 0;

    /// Says what the entry does and what it does not do, once it was switched on.
    virtual void ExplainAutoBackup() = 0;
};

/// Whether Windows starts the program at log-on, for backups of the default list.
class LogonStart {
  public:
    LogonStart(System& system, CCommonAPI& api, MRecentFiles::SettingsStore& settings,
               const ProgramState& state, AutoBackupMark& mark);

    /// Whether start at log-on is enabled.
    [[nodiscard]] bool ApplicationSartup();

    /// Enables or disables start at log-on. Nothing happens while another list than the default
    /// one is in use; a program that does not lie on a hard drive is refused with a box. The check
    /// mark shows what is stored afterwards: the system takes the entry from administrators only.
    void ApplicationSartup(bool flag);

  private:
    void Switch(bool on);
    [[nodiscard]] bool ProgramIsOnFixedDrive() const;

    System& system_;
    ErrorTrap trap_{system_.errors, L"Module", L"MVaultwright"};
    CCommonAPI& api_;
    MRecentFiles::SettingsStore& settings_;
    const ProgramState& state_;
    AutoBackupMark& mark_;
};

}  // namespace vw
