#pragma once

#include <string_view>
#include <vector>

#include "tests/windows/DrivenProgram.h"

namespace vw::test {

/// The keyboard of the computer: its keys reach the window in front, whatever it belongs to.
class Keyboard {
  public:
    /// Presses and releases keys one after another, as fast as a window accepts them.
    static void Type(const std::vector<WORD>& keys);
    /// The same while Ctrl is held.
    static void TypeWithControl(WORD key);
    /// Types a text, each letter as it is.
    static void Write(std::wstring_view text);
};

/// The places of menus and buttons, from the leading edge.
enum Menus { kFile, kItems, kCopies, kView, kTools, kHelp, kLanguage };
enum Buttons {
    kNew,
    kOpen,
    kSave,
    kSaveAs,
    kExit,
    kLarge,
    kSmall,
    kList,
    kDetails,
    kAddFile,
    kAddFiles,
    kAddFolder,
    kDelete,
    kDeleteAll,
    kBackup,
    kOpenItem,
    kRestore,
    kRestoreTo
};

/// The main window of a program that is worked by keys alone.
class KeyedProgram : public DrivenProgram {
  public:
    KeyedProgram(const ProgramStart& start, bool arabic);

    /// Runs an entry of the menu bar by F10, the arrow keys and Enter. Separators are not counted.
    void RunEntry(int menu, int entry);
    /// Presses a button of the toolbar by Tab, the arrow keys and Enter.
    void PressButton(int position);
    /// Goes on with Tab until a control has the keyboard.
    void GoTo(int id);
    /// Brings the main window back in front of the program that opened a file, as Alt+Tab does.
    void SwitchBack();
    /// Waits until the main window is in front and can be used.
    void WaitForMain();
    /// Waits until a window is in front whose class begins like this, and gives it.
    HWND WaitForFront(std::wstring_view classBeginning);
    /// Waits for a box in front and leaves it with these keys.
    void LeaveBox(const std::vector<WORD>& keys);
    /// The same for any window, after which the main window is in front.
    void Leave(const std::vector<WORD>& keys);

  private:
    [[nodiscard]] HWND FocusOfMain() const;
    void LeaveFront(std::wstring_view classBeginning, const std::vector<WORD>& keys);

    WORD next_ = VK_RIGHT;
};

}  // namespace vw::test
