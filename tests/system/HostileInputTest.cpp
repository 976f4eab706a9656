// What somebody who wishes us ill may have written: settings, lists, destinations, comments. The
// program ends by itself, in an orderly way, and touches nothing outside its task.

#include <gmock/gmock.h>

#include <array>
#include <iostream>
#include <random>

#include "platform/Utf8.h"
#include "tests/support/Histories.h"
#include "tests/support/ScratchRegistry.h"
#include "tests/support/WineBridge.h"
#include "tests/system/HostileValues.h"
#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::Contains;

class HostileInput : public SystemTest {
  protected:
    HostileInput() {
        program.tree.File(L"Precious\\Letter.txt", "precious", {2020, 1, 2, 3, 4, 5});
        program.tree.File(L"Precious\\Deep\\a.txt", "precious");
        // Links that lead to it, where copies and items are.
        links_ = program.tree.Link(L"Vault\\Link", precious) &&
                 program.tree.Link(L"Home\\Docs\\Link", precious);
    }

    void SetUp() override {
        if (UnderWine()) {
            ASSERT_TRUE(links_) << "nothing leads to the canaries";
        } else if (!links_) {
            std::cout << "without links: this user may make none\n";
        }
    }

    /// A run that may fail in any orderly way, or open a window, which is closed.
    void Survives(std::wstring_view arguments, const std::string& what) {
        ProgramStart start = program.With(arguments);
        start.currentFolder = current;
        ProgramRun run(start);
        const ULONGLONG begin = GetTickCount64();
        ULONGLONG quietSince = begin;
        bool opened = false;
        while (!run.HasEnded() && GetTickCount64() - begin < start.patience) {
            for (const Box& box : BoxesOf(run.ProcessId())) {
                Press(box, box.buttons.empty() ? IDOK : box.buttons.back());
                quietSince = GetTickCount64();
            }
            const HWND window = WindowToClose(run.ProcessId());
            if (window == nullptr) quietSince = GetTickCount64();
            if (GetTickCount64() - quietSince > 700) {
                opened = opened || ClassOf(window).starts_with(L"frmMain");
                PostMessageW(window, WM_CLOSE, 0, 0);
                quietSince = GetTickCount64();
            }
            // Takes what it writes, too.
            static_cast<void>(run.StaysFor(10));
        }
        const DWORD code = run.WaitForEnd();
        EXPECT_LT(code, 0x8000'0000U) << what << " crashed it";
        EXPECT_EQ(ReadTree(precious), preciousBefore()) << what;
        ++starts_;
        windows_ += opened ? 1 : 0;
    }

    const Tree& preciousBefore() {
        if (precious_.empty()) precious_ = ReadTree(precious);
        return precious_;
    }

    [[nodiscard]] int Starts() const noexcept { return starts_; }
    /// How many of them opened the main window.
    [[nodiscard]] int Windows() const noexcept { return windows_; }

    std::mt19937 random;
    const std::wstring letter = program.tree.File(L"Home\\Letter.txt", "letter");
    const std::wstring docs = program.tree.Folder(L"Home\\Docs");
    const std::wstring precious = program.tree.Folder(L"Precious");
    const std::wstring current = program.tree.Folder(L"Current");

  private:
    /// What the user sees: the main window, or the icon or the opening screen that a
    /// start with an error leaves.
    static HWND WindowToClose(DWORD process) {
        const HWND main = FindWindowOf(process, L"frmMain");
        if (main != nullptr && IsWindowVisible(main) != 0 && IsWindowEnabled(main) != 0) {
            return main;
        }
        const HWND icon = FindWindowOf(process, L"frmTrayIcon");
        return icon != nullptr ? icon : FindWindowOf(process, L"frmAbout");
    }

    Tree precious_;
    int starts_ = 0;
    int windows_ = 0;
    bool links_ = false;
};

TEST_F(HostileInput, SettingsListsAndDestinations_DoNotCrash) {
    preciousBefore();
    const auto histories = Histories::Usually(6);
    for (unsigned seed = histories.first; seed != histories.End() && !HasFailure(); ++seed) {
        random.seed(seed);
        SCOPED_TRACE("seed " + std::to_string(seed));
        const StoredValue value = HostileValue(random);
        const wchar_t* const name = HostileSettingName(random);
        WriteValue(HKEY_CURRENT_USER, program.SettingsKey(), name, value);
        std::string bytes = "BackupTo: " + HostileBytes(random) +
                            "\r\nBackages: " + HostileBytes(random) +
                            "\r\nBackupTo: " + ToBytes(vault) + "\r\n" + HostileBytes(random) +
                            "\r\n" + ToBytes(letter) + "\r\n" + ToBytes(docs) + "\\\r\n";
        if (seed % 3 == 0) bytes.insert(0, HostileBytes(random));
        const std::wstring list = program.tree.File(L"Odd.vwl", bytes);
        Survives(L"/B " + list, "a list or a setting");
        EXPECT_EQ(ReadBytes(list), bytes);
        Survives(seed % 2 == 0 ? L"/B" : L"/S", "a setting");
        program.SetSetting(name, std::nullopt);
        program.SetSetting(L"Arabic", L"0");
        program.SetSetting(L"BackupTo", program.DefaultDestination());
    }
    std::cout << Starts() << " hostile starts\n";
}

TEST_F(HostileInput, Arguments_DoNotCrash) {
    preciousBefore();
    const Tree home = ReadTree(program.tree.Path(L"Home"));
    const std::wstring list = program.List(L"Mine.vwl", {L"BackupTo: " + vault, letter, docs});
    const std::vector<std::wstring> paths{
        letter, docs,        docs + L"\\",        docs + L"\\Link", vault,
        list,   list + L"x", vault + L"\\Link\\", program.Path(),   vault + L"\\Letter«0001».txt"};
    // The copies go where a link leads to the canaries.
    program.SetSetting(L"BackupTo", vault);
    const auto histories = Histories::Usually(24);
    for (unsigned seed = histories.first; seed != histories.End() && !HasFailure(); ++seed) {
        random.seed(seed);
        const std::wstring arguments = HostileArguments(random, paths);
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + ToUtf8(arguments.substr(0, 300)));
        Survives(arguments, "a command line");
        EXPECT_EQ(ReadTree(program.tree.Path(L"Home")), home);
        EXPECT_EQ(ReadTree(current), Tree{});
    }
    std::cout << Starts() << " hostile command lines, " << Windows() << " windows\n";
}

TEST_F(HostileInput, CommentNamesAnotherFolder_FolderIsUnchanged) {
    preciousBefore();
    const std::wstring copy = program.tree.File(L"Vault\\Letter«0001».txt", "theirs");
    program.tree.File(L"Vault\\Letter«0001».txt.vwc",
                      "Backed Files Date Last Modified:02/01/2020-03:04:05+Original Location:" +
                          ToBytes(precious) + "\r\n");
    RunsTo(0, L"/B " + program.List(L"List.vwl", {L"BackupTo: " + vault, letter}));
    EXPECT_EQ(ReadBytes(copy), "theirs");
    EXPECT_THAT(InVault(), Contains(L"Letter«0101».txt"));
    EXPECT_EQ(ReadTree(precious), preciousBefore());
}

}  // namespace
}  // namespace vw::test
