#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/TestDrive.h"
#include "tests/system/ProgramCopy.h"
#include "tests/windows/DrivenList.h"

namespace vw::test {

/// The real program, worked from outside as a user works it: by its menus, buttons, lists, boxes
/// and dialogs.
class DrivenProgram {
  public:
    /// Starts it and waits until the main window is open and can be used.
    explicit DrivenProgram(const ProgramStart& start);

    [[nodiscard]] ProgramRun& Run() noexcept { return run_; }
    [[nodiscard]] HWND Main() const noexcept { return main_; }
    [[nodiscard]] std::wstring Caption() const;

    /// A control of the main window.
    [[nodiscard]] HWND Control(int id) const { return ControlOf(main_, id); }
    [[nodiscard]] std::wstring TextOf(int id) const;
    [[nodiscard]] DrivenList List(int id) const { return DrivenList(Control(id)); }

    /// Chooses a menu entry or presses a button of the toolbar, and waits until the command is
    /// over. Boxes and dialogs that it opens are for the test to answer, with Begin.
    void Choose(int id);
    /// The same without waiting.
    void Begin(int id) const;
    /// Waits until the main window can be used again.
    void WaitUntilReady();

    /// Waits for a message box, checks that it says this and presses a button.
    Box AnswerBox(std::wstring_view part, int button = IDOK);

    /// Waits for the system's file dialog, types a name into it and confirms it, or cancels it for
    /// an empty name. Gives the dialog's title.
    std::wstring AnswerFileDialog(std::wstring_view name);

    /// Clicks the upper arrow of the copies count this often.
    void ClickMoreCopies(int times);

    /// Waits until something is so, looking every `poll` milliseconds; fails the test when it never
    /// is.
    void WaitUntil(const std::function<bool()>& isSo, const char* what, DWORD poll = 20);

    /// The busy dialog, once it is shown.
    HWND WaitForBusyDialog();
    void WaitUntilBusyDialogIsGone();

    /// Closes the main window; gives the exit code.
    DWORD Close();

  private:
    [[nodiscard]] static HWND ControlOf(HWND window, int id);
    [[nodiscard]] HWND WaitForFileDialog();

    ProgramRun run_;
    HWND main_ = nullptr;
    LPARAM mark_ = 0;
};

/// A child window at any depth, by its id.
[[nodiscard]] HWND FindControl(HWND window, int id);

/// A window's text, also of another process.
[[nodiscard]] std::wstring WindowText(HWND window);

/// A test that works the real windows. `program` is its own copy of the program; its list and its
/// copies lie in its own tree, on a drive of their own.
class WindowsTest : public testing::Test {
  protected:
    /// The drive that copies go to, and their folder on it.
    [[nodiscard]] std::wstring Drive() const { return drive_.Name(); }
    [[nodiscard]] std::wstring Vault() const { return drive_.Backup(); }
    /// The drive itself, to be pulled out and exchanged.
    [[nodiscard]] TestDrive& Stick() noexcept { return drive_; }
    /// Writes the program's default list with that folder as its destination.
    std::wstring WriteDefaultList(const std::vector<std::wstring>& items, int copies = 3) const;
    /// The lines of a list file.
    [[nodiscard]] static std::vector<std::wstring> LinesOf(std::wstring_view list);

    ProgramCopy program;

  private:
    TestDrive drive_;
};

}  // namespace vw::test
