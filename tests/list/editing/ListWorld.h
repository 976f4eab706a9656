#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/CPackage.h"
#include "list/editing/BackupList.h"
#include "list/editing/ListEditing.h"
#include "list/editing/ListHost.h"
#include "list/editing/RecentFiles.h"
#include "list/editing/RecentFilesHost.h"
#include "list/format/ListText.h"
#include "platform/ProgramState.h"
#include "tests/support/ScratchRegistry.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestWorld.h"
#include "tests/ui/FormFixture.h"

namespace vw::test {

/// A main window with a backup list: the real window, the real disk and a real list file.
class ListWorld : public testing::Test, private ListHost, private RecentFilesHost, private RunHost {
  protected:
    static inline const std::wstring kBaseName = L"VaultwrightTests-Lists";

    ListWorld() {
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
    [[nodiscard]] ListView& View() { return main.form.List(L"lsvBackupList"); }
    [[nodiscard]] std::vector<std::wstring> Paths() { return list.Rows().Paths(); }
    std::wstring Path(std::wstring_view relative) const { return tree.Path(relative); }

    TempTree tree;
    TestWorld world;
    ProgramState state;
    ScratchKey key{HKEY_CURRENT_USER, L"Software\\Tallowmere.Net\\" + kBaseName};
    MRecentFiles::SettingsStore settings{world.errors, kBaseName};
    LoadedForm main{MainForm(), Language::English};
    ScriptedDialogs dialogs;
    CPackage engine{world.system, state, static_cast<RunHost&>(*this)};
    MRecentFiles::RecentFiles recent{world.errors, settings, state,
                                     static_cast<RecentFilesHost&>(*this)};
    BackupList list{
        world.system, state, main.form, dialogs, settings, recent, static_cast<ListHost&>(*this)};
    ListEditing editing{world.system, state, main.form,
                        dialogs,      list,  static_cast<ListHost&>(*this)};
    /// What was asked of the window and of the program, in order.
    std::vector<std::wstring> calls;
    /// The notice in the status line.
    std::wstring status;
    /// Done at each message of the busy dialog.
    std::function<void()> onMsg;

  private:
    void Ready(bool flag) override { calls.emplace_back(flag ? L"Ready(true)" : L"Ready(false)"); }
    void SetCaption() override { calls.emplace_back(L"SetCaption"); }
    void ShowStatus(std::wstring_view text) override { status = text; }
    void ApplicationSartup(bool flag) override {
        calls.emplace_back(flag ? L"startup on" : L"startup off");
    }
    std::int16_t LocationID(std::wstring_view path) override { return engine.LocationID(path); }
    CopyDates& StoredDates() override { return engine; }
    void Msg(std::wstring_view title, std::wstring_view message) override {
        calls.push_back(std::wstring(title) + L" " + std::wstring(message));
        if (onMsg) onMsg();
    }
    void BusyHide() override { calls.emplace_back(L"BusyHide"); }
    void ListLoaded() override { calls.emplace_back(L"ListLoaded"); }
    void ListRestoreFiles() override { calls.emplace_back(L"ListRestoreFiles"); }
    void RestoredPath(std::wstring_view path) override {
        calls.push_back(L"RestoredPath " + std::wstring(path));
    }
    void frmUnload() override { calls.emplace_back(L"frmUnload"); }
    void FileOpen(std::wstring_view path) override { list.FileOpen(path); }
    void OpenDefaultList() override { list.OpenDefaultList(); }
    void ShowRecentFiles(const RecentFileMenu&) override {}

    void Msg(std::wstring_view, std::wstring_view, std::wstring_view, bool, bool, bool) override {}
    void Report(std::wstring_view, bool) override {}
    void BusyHide(bool) override {}
    void DuringCopy() override {}
    [[noreturn]] void EndAtOnce() override { throw ProgramEnded{76}; }
};

}  // namespace vw::test
