#include "app/LogonStart.h"

#include <string>

#include "platform/CCommonAPI.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/MsgBox.h"
#include "platform/ProgramState.h"
#include "platform/System.h"
#include "platform/TextCase.h"

namespace vw {
namespace {

constexpr Procedure kApplicationSartup{L"ApplicationSartup", L"Module", L"MVaultwright"};

}  // namespace

LogonStart::LogonStart(System& system, CCommonAPI& api, MRecentFiles::SettingsStore& settings,
                       const ProgramState& state, AutoBackupMark& mark)
    : system_(system), api_(api), settings_(settings), state_(state), mark_(mark) {}

bool LogonStart::ApplicationSartup() { return api_.ApplicationSartup(state_.executableBaseName); }

void LogonStart::ApplicationSartup(bool flag) {
    Trapped(system_.errors, kApplicationSartup, [&] {
        if (!EqualNoCase(state_.currentListPath, state_.DefaultListPath())) return;
        if (flag == ApplicationSartup()) return;
        if (!ProgramIsOnFixedDrive()) {
            system_.boxes.MsgBox({.text = L"Run this Application from your hard drive"});
            return;
        }
        // Without quotation marks, also for a folder with blanks.
        api_.ApplicationSartup(
            state_.executableBaseName,
            state_.applicationFolder + L"\\" + state_.executableBaseName + L".exe /S", flag);
        settings_.SaveSetting(setting::kStartup, SettingText(flag));
        mark_.CheckAutoBackup(flag);
    });
}

bool LogonStart::ProgramIsOnFixedDrive() const {
    const std::wstring drive = state_.applicationFolder.substr(0, 2);
    // A program on another machine has no drive letter; its folder tells.
    const std::wstring place = drive.ends_with(L':') ? drive + L"\\" : state_.applicationFolder;
    return system_.files.KindOfDrive(place) == DriveKind::Fixed;
}

}  // namespace vw
