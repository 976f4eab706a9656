#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "app/Application.h"
#include "platform/CCommonAPI.h"
#include "platform/DebugOutput.h"
#include "platform/StandardStreams.h"
#include "platform/SystemCodePage.h"
#include "progress/SilentReport.h"
#include "tests/support/ScratchRegistry.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestDrive.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {

/// The whole application with its real windows, in a world whose clock, boxes, event pump and end
/// the tests decide.
class App : public testing::Test {
  protected:
    static inline const std::wstring kBaseName = L"VaultwrightTests-App";

    App() {
        settings.SaveSetting(setting::kArabic, L"0");
        settings.SaveSetting(setting::kBackupTo, tree.Path(L"Default vault"));
        state.applicationFolder = tree.Folder(L"Program");
        state.executableBaseName = kBaseName;
    }

    void Start(std::wstring_view arguments = {}) {
        try {
            application.Start(L"program.exe " + std::wstring(arguments));
        } catch (const ProgramEnded&) {
            // It came out of the call itself.
            static_cast<void>(world.programEnd.Take());
            throw;
        }
    }
    void WriteDefaultList(const std::vector<std::wstring>& items, int copies = 3) {
        std::wstring text =
            L"BackupTo: " + drive.Backup() + L"\r\nBackages: " + std::to_wstring(copies) + L"\r\n";
        for (const std::wstring& item : items) text += item + L"\r\n";
        tree.Folder(drive.Backup());
        tree.File(state.DefaultListPath(), world.ansi.Encode(text));
    }
    WindowSet& Windows() { return application.Windows(); }
    Form& Main() { return Windows().frmMain; }
    /// Whether the program asks the computer not to sleep.
    [[nodiscard]] static bool IsKeptAwake() {
        // The call gives what was asked for before.
        const EXECUTION_STATE before = SetThreadExecutionState(ES_CONTINUOUS);
        SetThreadExecutionState(before);
        return (before & ES_SYSTEM_REQUIRED) != 0;
    }
    /// Whether the program goes on after a moment without messages.
    [[nodiscard]] bool IsAlive() {
        application.OnIdle();
        return application.HasLoadedWindow();
    }
    /// A command of a menu or button. The end of the program comes out.
    void Choose(int id) {
        static_cast<void>(world.programEnd.Take());
        SendMessageW(Main().Handle(), WM_COMMAND, static_cast<WPARAM>(id), 0);
        Rethrow();
    }
    void Close() {
        SendMessageW(Main().Handle(), WM_CLOSE, 0, 0);
        Rethrow();
    }
    void Rethrow() {
        if (const auto exitCode = world.programEnd.Take()) world.programEnd.End(*exitCode);
    }
    [[nodiscard]] std::vector<std::wstring> Paths() { return Windows().list.Rows().Paths(); }

    TempTree tree;
    TestDrive drive;
    TestEnvironment world;
    ProgramState state;
    ScratchKey key{HKEY_CURRENT_USER, L"Software\\Tallowmere.Net\\" + kBaseName};
    SavedValue logon{HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run",
                     kBaseName};
    MRecentFiles::SettingsStore settings{world.errors, kBaseName};
    SystemRegistry registry;
    DebugOutput faults;
    CodePage page{CP_ACP};
    CCommonAPI api{registry, page, world.boxes, faults};
    StandardStreams streams;
    SilentReport report{streams};
    Application application{world.system, state, settings, api, report};

    const std::wstring letter = tree.File(L"Home\\Letter.txt", "Dear Sir");
};

}  // namespace vw::test
