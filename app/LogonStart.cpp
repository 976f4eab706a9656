#include "app/LogonStart.h"

#include <string>
#include <string_view>
#include <utility>

#include "platform/AnsiCodec.h"
#include "platform/CCommonAPI.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"
#include "platform/ProgramState.h"
#include "platform/System.h"
#include "platform/TextCase.h"

namespace vw {
namespace {

constexpr std::wstring_view kNoSuchLettersEnglish =
    L"The start at log-on cannot hold all letters of the program's path. Move the program to a "
    L"folder "
    L"with Latin letters, and try again.";
constexpr std::wstring_view kNoSuchLettersArabic =
    L"لا يمكن كتابة كل حروف مسار البرنامج في أمر التشغيل عند تسجيل الدخول. انقل البرنامج إلى مجلد "
    L"اسمه بحروف لاتينية، ثم أعد المحاولة.";

}  // namespace

LogonStart::LogonStart(System& system, CCommonAPI& api, MRecentFiles::SettingsStore& settings,
                       const ProgramState& state, OnChange onChange)
    : system_(system),
      api_(api),
      settings_(settings),
      state_(state),
      onChange_(std::move(onChange)) {}

bool LogonStart::ApplicationSartup() { return api_.ApplicationSartup(state_.executableBaseName); }

void LogonStart::ApplicationSartup(bool flag) {
    trap_(L"ApplicationSartup", [&] {
        if (!EqualNoCase(state_.currentListPath, state_.DefaultListPath())) return;
        const bool before = ApplicationSartup();
        if (flag != before) Switch(flag);
        const bool now = ApplicationSartup();
        onChange_(now, now && !before);
    });
}

void LogonStart::Switch(bool on) {
    if (!ProgramIsOnFixedDrive()) {
        system_.boxes.Show({.text = L"Run this Application from your hard drive"});
        return;
    }
    // Without quotation marks, also for a folder with blanks.
    const std::wstring command =
        state_.applicationFolder + L"\\" + state_.executableBaseName + L".exe /S";
    // The entry is written in the ANSI code page. One with "?" in it would start nothing.
    if (on && !system_.ansi.Holds(command)) {
        system_.boxes.Show(
            {.text = std::wstring(state_.IsArabic() ? kNoSuchLettersArabic : kNoSuchLettersEnglish),
             .rightToLeft = state_.IsArabic()});
        return;
    }
    api_.ApplicationSartup(state_.executableBaseName, command, on);
    settings_.SaveSetting(setting::kStartup, SettingText(on));
}

bool LogonStart::ProgramIsOnFixedDrive() const {
    const std::wstring drive = state_.applicationFolder.substr(0, 2);
    // A program on another machine has no drive letter; its folder decides.
    const std::wstring place = drive.ends_with(L':') ? drive + L"\\" : state_.applicationFolder;
    return system_.files.DriveTypeOf(place) == DriveType::Fixed;
}

}  // namespace vw
