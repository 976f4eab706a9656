#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "engine/CPackage.h"
#include "list/editing/FileDialogSetup.h"
#include "platform/ProgramState.h"
#include "restore/CopiesBrowser.h"
#include "restore/RestoreCommands.h"
#include "restore/RestoreHost.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestDrive.h"
#include "tests/support/TestWorld.h"
#include "tests/ui/FormFixture.h"

namespace vw::test {

/// A main window with the restore view: the real window, the real engine and a real drive of
/// copies.
class RestoreWorld : public testing::Test, private RestoreHost, private RunHost {
  protected:
    RestoreWorld() {
        tree.Folder(vault);
        state.BackupTo = vault;
        browser.RestoreFrom(vault);
    }

    /// Backs up one item as the list would; a final "\\" means a folder.
    void BackUp(std::wstring_view item) {
        const bool isFolder = item.ends_with(L'\\');
        engine.BackupPath(item, isFolder ? std::int16_t{0} : engine.LocationID(item), isFolder,
                          isFolder);
    }
    /// A browser that was told of no drive yet.
    [[nodiscard]] CopiesBrowser Unbound() {
        return {world.system, main.form, static_cast<RestoreHost&>(*this)};
    }
    /// What another engine of this test reports to.
    [[nodiscard]] RunHost& AsRunHost() { return static_cast<RunHost&>(*this); }
    /// The commands in another world of the same window.
    [[nodiscard]] RestoreCommands Commands(System& system) {
        return {
            system, state, main.form, browser, dialogs, dialog, static_cast<RestoreHost&>(*this)};
    }
    /// A file in the copy folder.
    std::wstring CopyFile(std::wstring_view name, std::string_view bytes = "x") {
        return tree.File(vault + L"\\" + std::wstring(name), bytes);
    }
    [[nodiscard]] std::vector<std::wstring> Column(ListView& list, std::wstring_view key) {
        std::vector<std::wstring> texts;
        texts.reserve(static_cast<std::size_t>(list.Count()));
        for (int row = 0; row < list.Count(); ++row) texts.push_back(list.SubItem(row, key));
        return texts;
    }
    [[nodiscard]] std::vector<std::wstring> Items() { return Column(browser.Items(), L"Name"); }
    [[nodiscard]] std::vector<std::wstring> Labels() { return Column(browser.Copies(), L"Name"); }
    void SelectItem(std::wstring_view name) {
        const int row = browser.Items().Find(L"Name", name);
        ASSERT_GE(row, 0);
        browser.Items().Select(row);
        browser.ListCopyes(row);
    }
    void SelectCopy(std::wstring_view label) {
        const int row = browser.Copies().Find(L"Name", label);
        ASSERT_GE(row, 0);
        browser.Copies().Select(row);
    }

    TestDrive drive;
    const std::wstring vault = drive.Backup();
    TempTree tree;
    TestWorld world;
    ProgramState state;
    LoadedForm main{MainForm(), Language::English};
    ScriptedDialogs dialogs;
    FileDialogSetup dialog;
    CPackage engine{world.system, state, static_cast<RunHost&>(*this)};
    CopiesBrowser browser{world.system, main.form, static_cast<RestoreHost&>(*this)};
    RestoreCommands commands{
        world.system, state, main.form, browser, dialogs, dialog, static_cast<RestoreHost&>(*this)};
    /// What the busy dialog was asked to show.
    std::vector<std::wstring> calls;
    std::vector<std::wstring> report;
    /// The notice in the status line.
    std::wstring status;
    /// Whether the busy dialog is there already.
    bool busyShown = false;
    /// Done when the busy dialog shows what is being restored.
    std::function<void()> onMsg;

  private:
    CPackage& Engine() override { return engine; }
    void ShowStatus(std::wstring_view text) override { status = text; }
    void Msg(std::wstring_view title, std::wstring_view message) override {
        calls.push_back(std::wstring(title) + std::wstring(message));
        if (onMsg) onMsg();
    }
    void BusyHide(bool pause) override {
        calls.emplace_back(pause ? L"BusyHide true" : L"BusyHide false");
    }
    [[nodiscard]] bool IsBusyShown() const override { return busyShown; }
    void Restoring(bool) override {}

    void Msg(std::wstring_view, std::wstring_view, std::wstring_view, bool, bool, bool) override {}
    void Report(std::wstring_view text, bool) override { report.emplace_back(text); }
    void Ready(bool) override {}
    void DuringCopy() override {}
    [[noreturn]] void EndAtOnce() override { throw ProgramEnded{76}; }
};

}  // namespace vw::test
