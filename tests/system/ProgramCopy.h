#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/ScratchRegistry.h"
#include "tests/support/TempTree.h"
#include "tests/system/ProgramRun.h"

namespace vw::test {

/// The program as the build made it (environment variable VW_PROGRAM, else beside the tests).
[[nodiscard]] std::wstring BuiltProgram();

/// A copy of the program that belongs to one test: in a folder of its own, so that the default list
/// is its own, and under a name of its own, so that its settings and its log-on entry are its own.
/// All of it is gone at the end. The language is English and was asked for, and the default
/// destination lies in the test's own tree, unless the test says otherwise.
class ProgramCopy {
  public:
    ProgramCopy();

    TempTree tree;

    /// The folder of the program, and the lists that it keeps there.
    [[nodiscard]] const std::wstring& Folder() const noexcept { return folder_; }
    [[nodiscard]] std::wstring Path() const { return folder_ + L"\\" + baseName_ + L".exe"; }
    [[nodiscard]] std::wstring DefaultList() const { return folder_ + L"\\FilesList.vwl"; }
    [[nodiscard]] std::wstring SingleItemList() const { return folder_ + L"\\OneFileList.vwl"; }
    [[nodiscard]] std::wstring DefaultDestination() const { return tree.Path(L"Default vault"); }

    /// The key of its settings, below HKEY_CURRENT_USER.
    [[nodiscard]] const std::wstring& SettingsKey() const noexcept { return settings_.Path(); }

    /// A setting of the program; SetSetting without a value removes it.
    [[nodiscard]] std::optional<std::wstring> Setting(const std::wstring& name) const;
    void SetSetting(const std::wstring& name, std::optional<std::wstring_view> value) const;

    /// Switches the log-on entry on, as an administrator's start would; it is gone at the end.
    void EnableLogonStart() const;

    /// The command of its log-on entry; nothing while start at log-on is off.
    [[nodiscard]] std::optional<std::wstring> LogonCommand() const;

    /// Writes a list of these lines; gives its path.
    std::wstring List(std::wstring_view relative, const std::vector<std::wstring>& lines) const;

    /// How to start the program with these arguments, for changes before Start.
    [[nodiscard]] ProgramStart With(std::wstring_view arguments) const;

  private:
    std::wstring baseName_;
    std::wstring folder_;
    ScratchKey settings_;
    SavedValue logonEntry_;
};

/// A path in double quotes, as it is on a command line.
[[nodiscard]] std::wstring Quoted(std::wstring_view path);

/// A test of the whole program.
class SystemTest : public testing::Test {
  protected:
    ProgramCopy program;

    /// Where lists of the tests send their copies; exists from the start.
    const std::wstring vault = program.tree.Folder(L"Vault");

    /// Runs the program to its end, answering its boxes; checks the exit code.
    void RunsTo(DWORD exitCode, std::wstring_view arguments);
    void RunsTo(DWORD exitCode, const ProgramStart& start);

    /// Names of all that is directly in `vault`, sorted.
    [[nodiscard]] std::vector<std::wstring> InVault() const;

    /// What the last RunsTo wrote and showed.
    std::vector<std::wstring> lines;  ///< of the report, without its last one
    std::wstring outcome;             ///< that one: list, time and counts
    std::wstring errors;
    std::vector<Box> boxes;
};

}  // namespace vw::test
