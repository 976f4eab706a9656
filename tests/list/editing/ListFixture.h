#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/CPackage.h"
#include "list/editing/BackupList.h"
#include "list/editing/ListContext.h"
#include "list/editing/ListEditing.h"
#include "list/editing/RecentFiles.h"
#include "list/editing/RestoreView.h"
#include "list/format/ListText.h"
#include "platform/ProgramControl.h"
#include "platform/ProgramState.h"
#include "platform/ProgressReporter.h"
#include "tests/support/QuietProgress.h"
#include "tests/support/ScratchRegistry.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestEnvironment.h"
#include "tests/ui/FormFixture.h"
#include "ui/StatusLine.h"

namespace vw::test {

/// A main window with a backup list: the real window, the real disk and a real list file.
class ListFixture : public testing::Test,
                    private ProgressReporter,
                    private ProgramControl,
                    private RestoreView {
  protected:
    static inline const std::wstring kBaseName = L"VaultwrightTests-Lists";

    ListFixture() {
        tree.Folder(L"Program");
        state.applicationFolder = tree.Path(L"Program");
        state.executableBaseName = kBaseName;
        state.currentListPath = tree.Path(L"List.vwl");
        state.temporaryListPath = state.DefaultListPath() + L".tmp";
        state.BackupTo = L"C:\\Vault of nobody";
        main.events.onControl = [this](Form&, const ControlEvent& event) {
            if (event.control != L"vsBackages") return;
            calls.push_back(L"count " + std::to_wstring(event.value));
        };
    }

    std::wstring ListFile(std::string_view bytes) { return tree.File(L"List.vwl", bytes); }
    [[nodiscard]] std::string Saved() const { return ReadBytes(state.currentListPath); }
    /// What the list file should be with these items.
    [[nodiscard]] std::string Expected(const std::vector<std::wstring>& items) const {
        return EncodeList(state.BackupTo, state.copiesCount, items, world.ansi);
    }
    /// The notice in the status line.
    [[nodiscard]] std::wstring Status() const { return main.form.Text(L"sbrStatus"); }
    [[nodiscard]] ListView& View() { return main.form.List(L"lsvBackupList"); }
    [[nodiscard]] std::vector<std::wstring> Paths() { return list.Rows().Paths(); }
    std::wstring Path(std::wstring_view relative) const { return tree.Path(relative); }
    /// What the end of the session saves in the middle of a command, when the list has one row.
    template <class Command>
    std::string SavedBehindTheFirstRow(Command&& command) {
        std::string saved;
        world.pump.Restart();
        world.pump.AtEachYield([&] {
            if (View().Rows().Count() != 1) return;
            list.FileSave();
            saved = Saved();
        });
        command();
        world.pump.Restart();
        return saved;
    }

    TempTree tree;
    TestEnvironment world;
    ProgramState state;
    ScratchKey key{HKEY_CURRENT_USER, L"Software\\Tallowmere.Net\\" + kBaseName};
    MRecentFiles::SettingsStore settings{world.errors, kBaseName};
    LoadedForm main{MainForm(), Language::English};
    ScriptedDialogs dialogs;
    QuietProgress engineProgress;
    CPackage engine{world.system, state, engineProgress, AsProgram()};
    StatusLine statusLine{main.form};
    ListContext context{
        .progress = AsProgress(),
        .program = AsProgram(),
        .copies = static_cast<RestoreView&>(*this),
        .status = statusLine,
        .engine = [this]() -> CPackage& { return engine; },
        .showCaption = [this] { calls.emplace_back(L"SetCaption"); },
        .startAtLogon =
            [this](bool on) { calls.emplace_back(on ? L"startup on" : L"startup off"); }};
    MRecentFiles::RecentFiles recent{
        world.errors,
        settings,
        state,
        {.ready = [this](bool flag) { Ready(flag); },
         .open = [this](std::wstring_view path) { list.FileOpen(path); },
         .openDefault = [this] { list.OpenDefaultList(); },
         .showCaption = context.showCaption,
         .showMenu = [](const RecentFileMenu&) {}}};
    BackupList list{world.system, state, main.form, dialogs, settings, recent, context};
    ListEditing editing{world.system, state, main.form, dialogs, list, context};
    /// What was asked of the window and of the program, in order.
    std::vector<std::wstring> calls;
    /// Done at each message of the busy dialog.
    std::function<void()> onMsg;
    /// Done when the copies of a destination are listed.
    std::function<void()> onCopiesListed;

  private:
    [[nodiscard]] ProgressReporter& AsProgress() { return *this; }
    [[nodiscard]] ProgramControl& AsProgram() { return *this; }

    void Ready(bool flag) override { calls.emplace_back(flag ? L"Ready(true)" : L"Ready(false)"); }
    void frmUnload() override { calls.emplace_back(L"frmUnload"); }
    [[noreturn]] void EndAtOnce() override { throw ProgramEnded{76}; }

    void Msg(std::wstring_view title, std::wstring_view message) override {
        calls.push_back(std::wstring(title) + L" " + std::wstring(message));
        if (onMsg) onMsg();
    }
    void Report(std::wstring_view, bool) override {}
    void BusyHide(bool close) override {
        calls.emplace_back(close ? L"BusyHide(true)" : L"BusyHide(false)");
    }

    void ListLoaded(std::wstring_view destination) override {
        calls.push_back(L"ListLoaded " + std::wstring(destination));
        if (onCopiesListed) onCopiesListed();
    }
    void ListRestoreFiles() override {
        calls.emplace_back(L"ListRestoreFiles");
        if (onCopiesListed) onCopiesListed();
    }
    void RestoredPath(std::wstring_view path) override {
        calls.push_back(L"RestoredPath " + std::wstring(path));
    }
};

}  // namespace vw::test
