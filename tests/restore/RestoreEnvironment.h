#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "engine/CPackage.h"
#include "list/editing/FileDialogSetup.h"
#include "platform/ProgramControl.h"
#include "platform/ProgramState.h"
#include "platform/ProgressReporter.h"
#include "restore/CopiesBrowser.h"
#include "restore/RestoreCommands.h"
#include "tests/support/QuietProgress.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestDrive.h"
#include "tests/support/TestEnvironment.h"
#include "tests/ui/FormFixture.h"
#include "ui/StatusLine.h"

namespace vw::test {

/// A main window with the restore view: the real window, the real engine and a real drive of
/// copies.
class RestoreEnvironment : public testing::Test, private ProgressReporter, private ProgramControl {
  protected:
    RestoreEnvironment() {
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
    /// A browser without a chosen drive.
    [[nodiscard]] CopiesBrowser Unbound() {
        return {world.system, main.form, statusLine, Engine()};
    }
    /// What another engine of this test reports to.
    [[nodiscard]] ProgressReporter& AsProgress() { return *this; }
    [[nodiscard]] ProgramControl& AsProgram() { return *this; }
    [[nodiscard]] EngineProvider Engine() {
        return [this]() -> CPackage& { return engine; };
    }
    /// The notice in the status line.
    [[nodiscard]] std::wstring Status() const { return main.form.Text(L"sbrStatus"); }
    /// The commands in another world of the same window.
    [[nodiscard]] RestoreCommands Commands(System& system) {
        return {system, state, main.form, browser, dialogs, dialog, AsProgress(), Engine()};
    }
    /// A file in the copy folder.
    std::wstring CopyFile(std::wstring_view name, std::string_view bytes = "x") {
        return tree.File(vault + L"\\" + std::wstring(name), bytes);
    }
    [[nodiscard]] std::vector<std::wstring> Column(ListView& list, std::wstring_view key) {
        std::vector<std::wstring> texts;
        texts.reserve(static_cast<std::size_t>(list.Rows().Count()));
        for (int row = 0; row < list.Rows().Count(); ++row)
            texts.push_back(list.Rows().SubItem(row, key));
        return texts;
    }
    [[nodiscard]] std::vector<std::wstring> Items() { return Column(browser.Items(), L"Name"); }
    [[nodiscard]] std::vector<std::wstring> Labels() { return Column(browser.Copies(), L"Name"); }
    void SelectItem(std::wstring_view name) {
        const int row = browser.Items().Rows().Find(L"Name", name);
        ASSERT_GE(row, 0);
        browser.Items().Select(row);
        browser.ListCopyes(row);
    }
    void SelectCopy(std::wstring_view label) {
        const int row = browser.Copies().Rows().Find(L"Name", label);
        ASSERT_GE(row, 0);
        browser.Copies().Select(row);
    }

    TestDrive drive;
    const std::wstring vault = drive.Backup();
    TempTree tree;
    TestEnvironment world;
    ProgramState state;
    LoadedForm main{MainForm(), Language::English};
    ScriptedDialogs dialogs;
    FileDialogSetup dialog;
    QuietProgress engineProgress;
    /// The lines of the engine's report.
    std::vector<std::wstring>& report = engineProgress.report;
    CPackage engine{world.system, state, engineProgress, AsProgram()};
    StatusLine statusLine{main.form};
    CopiesBrowser browser{world.system, main.form, statusLine, Engine()};
    RestoreCommands commands{world.system, state,  main.form,    browser,
                             dialogs,      dialog, AsProgress(), Engine()};
    /// What the busy dialog was asked to show.
    std::vector<std::wstring> calls;
    /// Whether the busy dialog is there already.
    bool busyShown = false;
    /// Done when the busy dialog shows what is being restored.
    std::function<void()> onMsg;

  private:
    void Msg(std::wstring_view title, std::wstring_view message) override {
        calls.push_back(std::wstring(title) + std::wstring(message));
        if (onMsg) onMsg();
    }
    void Report(std::wstring_view, bool wait) override {
        EXPECT_FALSE(wait) << "the user waits for the end alone";
    }
    void BusyHide(bool pause) override {
        calls.emplace_back(pause ? L"BusyHide true" : L"BusyHide false");
    }
    [[nodiscard]] bool IsShown() const override { return busyShown; }
    void Ready(bool) override {}
    void frmUnload() override {}
    [[noreturn]] void EndAtOnce() override { throw ProgramEnded{76}; }
};

}  // namespace vw::test
