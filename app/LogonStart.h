#pragma once

#include <functional>

#include "list/format/Settings.h"
#include "platform/ErrorTrap.h"
#include "platform/System.h"

namespace vw {

class CCommonAPI;
struct ProgramState;

/// Whether Windows starts the program at log-on, for backups of the default list.
class LogonStart {
  public:
    /// Called after each request with what is stored now and whether it was switched on just now.
    using OnChange = std::function<void(bool isOn, bool isNew)>;

    LogonStart(System& system, CCommonAPI& api, MRecentFiles::SettingsStore& settings,
               const ProgramState& state, OnChange onChange);

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
    OnChange onChange_;
};

}  // namespace vw
