// The whole program by keyboard alone: every menu entry, every button of the
// toolbar, the commands of the lists, and every dialog and box that they open.

#include <gmock/gmock.h>

#include "tests/support/OpenedFiles.h"
#include "tests/support/WineBridge.h"
#include "tests/windows/BackupWindows.h"
#include "tests/windows/Keyboard.h"
// The common controls' declarations need those of the window system first.
#include <commctrl.h>

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;

// How a window is left.
const std::vector<WORD> kEscape{VK_ESCAPE};
const std::vector<WORD> kEnter{VK_RETURN};
// Of a question: the button beside the default one.
const std::vector<WORD> kOther{VK_TAB, VK_RETURN};

class KeyboardWindows : public BackupWindows {
  protected:
    explicit KeyboardWindows(bool isArabic) : isArabic_(isArabic) {
        program.SetSetting(L"Arabic", isArabic ? L"-1" : L"0");
        program.SetSetting(L"ArabicPrepared", L"-1");
    }
    ProgramStart StartOfProgram() {
        ProgramStart start = program.With(L"");
        start.temporaryFolder = program.tree.Folder(L"Temporary");
        return start;
    }
    static void BackUpByKey(KeyedProgram& window) {
        Keyboard::Type({VK_F5});
        window.WaitForBusyDialog();
        window.WaitUntilBusyDialogIsGone();
        window.WaitForMain();
    }
    /// The keyboard is in the list of items when the window opens and after its commands.
    static LONG StyleOfItems(const KeyedProgram& window) {
        return GetWindowLongW(window.Control(ID_lsvBackupList), GWL_STYLE);
    }

    const bool isArabic_;
    const OpenedFiles opened{program.tree, L".opens"};
    const std::wstring note = program.tree.File(L"Home\\Note.opens", "note|");
};

/// What the direction of writing changes: the way through the menus and the toolbar.
class KeyboardAlone : public KeyboardWindows, public testing::WithParamInterface<bool> {
  protected:
    KeyboardAlone() : KeyboardWindows(GetParam()) {}
};

/// What is the same in both.
class KeyboardInEnglish : public KeyboardWindows {
  protected:
    KeyboardInEnglish() : KeyboardWindows(false) {}
};

TEST_P(KeyboardAlone, FileMenu_EveryEntry) {
    WriteDefaultList({note, letter});
    KeyedProgram window(StartOfProgram(), isArabic_);
    for (const int entry : {0, 1, 3}) {
        window.RunEntry(kFile, entry);
        window.WaitForFront(L"#32770");
        window.Leave(kEscape);
    }
    window.GoTo(ID_vsBackages);
    Keyboard::Type({VK_UP});
    window.RunEntry(kFile, 2);
    window.WaitForMain();
    window.WaitUntil(
        [&] { return testing::Value(LinesOf(program.DefaultList()), Contains(L"Backages: 4")); },
        "the number of copies is not saved");
    // A name that is typed makes a list; the entry of the default list brings that one back.
    window.RunEntry(kFile, 0);
    window.WaitForFront(L"#32770");
    Keyboard::TypeWithControl(L'A');
    Keyboard::Write(program.tree.Path(L"Mine.vwl"));
    window.Leave(kEnter);
    EXPECT_TRUE(Exists(program.tree.Path(L"Mine.vwl")));
    EXPECT_EQ(window.List(ID_lsvBackupList).Count(), 0);
    window.RunEntry(kFile, 5);
    window.WaitForMain();
    EXPECT_EQ(window.List(ID_lsvBackupList).Count(), 2);
    window.RunEntry(kFile, 4);
    EXPECT_EQ(window.Run().WaitForEnd(), 0U);
}

TEST_F(KeyboardInEnglish, ItemsMenu_EveryEntry) {
    const std::wstring plan = program.tree.File(L"Home\\Plan.opens", "plan|");
    WriteDefaultList({note, letter});
    KeyedProgram window(StartOfProgram(), isArabic_);
    const DrivenList items = window.List(ID_lsvBackupList);
    window.RunEntry(kItems, 0);
    window.WaitForBusyDialog();
    window.WaitUntilBusyDialogIsGone();
    window.WaitForMain();
    EXPECT_EQ(window.List(ID_lsvRestore1).Count(), 2);
    for (const int entry : {1, 2, 3}) {
        window.RunEntry(kItems, entry);
        window.WaitForFront(L"#32770");
        window.Leave(kEscape);
    }
    EXPECT_EQ(items.Count(), 2);
    window.RunEntry(kItems, 1);
    window.WaitForFront(L"#32770");
    Keyboard::TypeWithControl(L'A');
    Keyboard::Write(plan);
    window.Leave(kEnter);
    EXPECT_EQ(items.Count(), 3);
    window.RunEntry(kItems, 6);
    EXPECT_EQ(opened.WaitFor(5), "plan|");
    window.SwitchBack();
    window.RunEntry(kItems, 4);
    window.WaitForMain();
    EXPECT_EQ(items.Count(), 2);
    window.RunEntry(kItems, 5);
    window.WaitForMain();
    EXPECT_EQ(items.Count(), 0);
    // The box of a list without items.
    window.RunEntry(kItems, 0);
    window.WaitForFront(L"#32770");
    window.Leave(kEscape);
    window.Close();
}

TEST_F(KeyboardInEnglish, CopiesMenu_EveryEntry) {
    WriteDefaultList({note});
    KeyedProgram window(StartOfProgram(), isArabic_);
    window.RunEntry(kCopies, 0);
    window.WaitForFront(L"#32770");
    window.Leave(kEnter);  // nothing is selected
    BackUpByKey(window);
    program.tree.File(L"Home\\Note.opens", "a newer note|");
    window.RunEntry(kCopies, 0);
    window.LeaveBox(kOther);
    EXPECT_EQ(ReadBytes(note), "a newer note|");
    window.WaitForFront(L"frmBusyDialog");
    window.Leave(kEscape);
    window.RunEntry(kCopies, 1);
    window.WaitForFront(L"#32770");
    window.Leave(kEscape);
    window.RunEntry(kCopies, 2);
    EXPECT_EQ(opened.WaitFor(5), "note|");
    window.SwitchBack();
    for (const int entry : {3, 4}) {
        window.RunEntry(kCopies, entry);
        window.Leave(kOther);
        EXPECT_TRUE(Exists(Vault() + L"\\Note«0001».opens"));
    }
    window.RunEntry(kCopies, 3);
    window.Leave(kEnter);
    window.WaitForMain();
    EXPECT_FALSE(Exists(Vault() + L"\\Note«0001».opens"));
    window.Close();
}

TEST_F(KeyboardInEnglish, ViewMenu_EveryEntry) {
    WriteDefaultList({note});
    KeyedProgram window(StartOfProgram(), isArabic_);
    const LONG views[]{LVS_ICON, LVS_SMALLICON, LVS_LIST, LVS_REPORT};
    for (int entry = 0; entry < 4; ++entry) {
        window.RunEntry(kView, entry);
        window.WaitForMain();
        EXPECT_EQ(StyleOfItems(window) & LVS_TYPEMASK, views[entry]) << entry;
    }
    const LONG arranged[]{0, LVS_ALIGNLEFT | LVS_AUTOARRANGE, LVS_ALIGNTOP | LVS_AUTOARRANGE};
    for (int entry = 0; entry < 3; ++entry) {
        window.RunEntry(kView, 4 + entry);
        window.WaitForMain();
        EXPECT_EQ(StyleOfItems(window) & (LVS_ALIGNMASK | LVS_AUTOARRANGE), arranged[entry])
            << entry;
    }
    window.Close();
}

TEST_P(KeyboardAlone, ToolsAndHelp_EveryEntry) {
    if (!UnderWine()) GTEST_SKIP() << "this would change the machine";
    for (const auto* folder : {L"Temp", L"prefetch"}) {
        program.tree.Folder(L"C:\\windows\\" + std::wstring(folder));
    }
    program.tree.File(L"Temporary\\Old.tmp");
    const OpenedFiles pages(program.tree, L".htm");
    const std::wstring name = program.Path().substr(program.Folder().size());
    program.tree.File(program.Folder() + (isArabic_ ? L"\\Help" : L"\\Help\\en") +
                          name.substr(0, name.rfind(L'.')) + L".htm",
                      "page|");
    WriteDefaultList({note});
    KeyedProgram window(StartOfProgram(), isArabic_);
    for (const auto* setting : {L"-1", L"0"}) {
        window.RunEntry(kTools, 0);
        window.WaitForMain();
        EXPECT_EQ(program.Setting(L"Startup"), setting);
    }
    window.RunEntry(kTools, 1);
    window.WaitForFront(L"#32770");
    window.Leave(kEscape);
    window.RunEntry(kTools, 2);
    window.WaitForBusyDialog();
    window.WaitUntilBusyDialogIsGone();
    EXPECT_FALSE(Exists(program.tree.Path(L"Temporary\\Old.tmp")));
    window.RunEntry(kHelp, 0);
    EXPECT_EQ(pages.WaitFor(5), "page|");
    window.SwitchBack();
    for (const auto& keys : {kEscape, kEnter}) {
        window.RunEntry(kHelp, 1);
        window.WaitForFront(L"frmAbout");
        window.Leave(keys);
    }
    window.RunEntry(kLanguage, 0);
    EXPECT_EQ(window.Run().WaitForEnd(), 0U);
    EXPECT_EQ(program.Setting(L"Arabic"), GetParam() ? L"0" : L"-1");
}

TEST_P(KeyboardAlone, Toolbar_EveryButton) {
    WriteDefaultList({note, letter});
    KeyedProgram window(StartOfProgram(), isArabic_);
    const DrivenList items = window.List(ID_lsvBackupList);
    for (const int button : {kNew, kOpen, kSaveAs, kAddFile, kAddFiles, kAddFolder}) {
        window.PressButton(button);
        window.WaitForFront(L"#32770");
        window.Leave(kEscape);
    }
    window.GoTo(ID_vsBackages);
    Keyboard::Type({VK_UP});
    window.PressButton(kSave);
    window.WaitForMain();
    EXPECT_THAT(LinesOf(program.DefaultList()), Contains(L"Backages: 4"));
    const LONG views[]{LVS_ICON, LVS_SMALLICON, LVS_LIST, LVS_REPORT};
    for (int view = 0; view < 4; ++view) {
        window.PressButton(kLarge + view);
        window.WaitForMain();
        EXPECT_EQ(StyleOfItems(window) & LVS_TYPEMASK, views[view]) << view;
    }
    window.PressButton(kBackup);
    window.WaitForBusyDialog();
    window.WaitUntilBusyDialogIsGone();
    window.WaitForMain();
    EXPECT_EQ(window.List(ID_lsvRestore1).Count(), 2);
    program.tree.File(L"Home\\Note.opens", "a newer note|");
    window.PressButton(kRestore);
    window.LeaveBox(kOther);
    window.WaitForFront(L"frmBusyDialog");
    window.Leave(kEscape);
    window.PressButton(kRestoreTo);
    window.WaitForFront(L"#32770");
    window.Leave(kEscape);
    window.PressButton(kOpenItem);
    EXPECT_EQ(opened.WaitFor(13), "a newer note|");
    window.SwitchBack();
    window.PressButton(kDelete);
    window.WaitForMain();
    EXPECT_EQ(items.Count(), 1);
    window.PressButton(kDeleteAll);
    window.WaitForMain();
    EXPECT_EQ(items.Count(), 0);
    window.PressButton(kExit);
    EXPECT_EQ(window.Run().WaitForEnd(), 0U);
}

TEST_F(KeyboardInEnglish, Lists_SelectOpenSortAndDelete) {
    WriteDefaultList({letter, note});
    KeyedProgram window(StartOfProgram(), isArabic_);
    const DrivenList items = window.List(ID_lsvBackupList);
    const DrivenList stored = window.List(ID_lsvRestore1);
    const DrivenList copies = window.List(ID_lsvRestore2);
    BackUpByKey(window);
    window.GoTo(ID_lsvBackupList);
    Keyboard::TypeWithControl(L'1');
    window.WaitForMain();
    EXPECT_THAT(items.Column(kName), ElementsAre(L"Note", L"Letter"));
    Keyboard::TypeWithControl(L'1');
    window.WaitForMain();
    EXPECT_THAT(items.Column(kName), ElementsAre(L"Letter", L"Note"));
    Keyboard::Type({VK_END});
    window.WaitForMain();
    Keyboard::Type({VK_RETURN});
    EXPECT_EQ(opened.WaitFor(5), "note|");
    window.SwitchBack();
    window.GoTo(ID_lsvRestore1);
    Keyboard::Type({VK_END});
    window.WaitUntil(
        [&] { return copies.Column(3) == std::vector{Vault() + L"\\Note«0001».opens"}; },
        "the copies of the other item");
    window.GoTo(ID_lsvRestore2);
    Keyboard::Type({VK_HOME});
    window.WaitForMain();
    Keyboard::Type({VK_RETURN});
    EXPECT_EQ(opened.WaitFor(10), "note|note|");
    window.SwitchBack();
    Keyboard::Type({VK_DELETE});
    window.Leave(kEnter);
    EXPECT_EQ(stored.Count(), 1);
    window.GoTo(ID_lsvRestore1);
    Keyboard::Type({VK_HOME});
    window.WaitForMain();
    Keyboard::Type({VK_DELETE});
    window.Leave(kOther);
    EXPECT_EQ(stored.Count(), 1);
    window.GoTo(ID_lsvBackupList);
    Keyboard::Type({VK_HOME});
    window.WaitForMain();
    Keyboard::Type({VK_DELETE});
    window.WaitUntil([&] { return items.Count() == 1; }, "the key does not take the item off");
    window.WaitForMain();
    window.Close();
}

TEST_F(KeyboardInEnglish, BusyDialog_EnterClosesItWhenTheRunIsOver) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many\\")});
    KeyedProgram window(StartOfProgram(), isArabic_);
    Keyboard::Type({VK_F5});
    const HWND busy = window.WaitForFront(L"frmBusyDialog");
    // The check box keeps the report.
    Keyboard::Type({VK_TAB});
    const HWND keep = FindControl(busy, ID_chkDontHide);
    for (int i = 0; i < 3 && SendMessageW(keep, BM_GETCHECK, 0, 0) != BST_CHECKED; ++i) {
        Keyboard::Type({VK_SPACE});
        if (SendMessageW(keep, BM_GETCHECK, 0, 0) != BST_CHECKED) Keyboard::Type({VK_TAB});
    }
    ASSERT_EQ(SendMessageW(keep, BM_GETCHECK, 0, 0), BST_CHECKED);
    const HWND report = FindControl(busy, ID_txtReport);
    window.WaitUntil([&] { return WindowText(report).ends_with(L"Done:  - \r\n"); }, "no end");
    EXPECT_TRUE(Exists(Vault() + L"\\Many«0001»\\f399.txt"));
    // The report is kept for two seconds in any case; then it is the user's.
    window.WaitUntil(
        [&] { return WindowText(report).find(L"Done:  - \r\nDone:") != std::wstring::npos; },
        "the command does not end");
    Keyboard::Type({VK_RETURN});
    window.WaitUntilBusyDialogIsGone();
    window.WaitForMain();
    // The status line brings the report back.
    Keyboard::TypeWithControl(L'R');
    window.WaitForFront(L"frmBusyDialog");
    window.Leave(kEnter);
    window.Close();
}

TEST_F(KeyboardInEnglish, BusyDialog_EscapeCancels) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many\\")});
    KeyedProgram window(StartOfProgram(), isArabic_);
    Keyboard::Type({VK_F5});
    window.WaitForBusyDialog();
    Keyboard::Type({VK_ESCAPE});
    window.WaitUntilBusyDialogIsGone();
    window.WaitForMain();
    EXPECT_FALSE(Exists(Vault() + L"\\Many«0001»\\f399.txt"));
    window.Close();
}

TEST_F(KeyboardInEnglish, BoxOfDrives_OpensChoosesAndCancels) {
    WriteDefaultList({note});
    KeyedProgram window(StartOfProgram(), isArabic_);
    window.GoTo(ID_cmbDestination);
    const HWND box = window.Control(ID_cmbDestination);
    const auto isOpen = [&] { return SendMessageW(box, CB_GETDROPPEDSTATE, 0, 0) != 0; };
    Keyboard::Type({VK_DOWN});
    window.WaitUntil(isOpen, "the list of drives does not open");
    Keyboard::Type({VK_UP, VK_ESCAPE});
    window.WaitUntil([&] { return !isOpen(); }, "Esc does not close the list of drives");
    EXPECT_EQ(window.TextOf(ID_cmbDestination), Drive());
    Keyboard::Type({VK_DOWN});
    window.WaitUntil(isOpen, "the list of drives does not open");
    // A drive that is not ready is refused without a box.
    Keyboard::Type({L'A', VK_RETURN});
    window.WaitForMain();
    EXPECT_EQ(window.TextOf(ID_cmbDestination), Drive());
    EXPECT_NE(window.TextOf(ID_sbrStatus).find(L"A:"), std::wstring::npos);
    window.GoTo(ID_vsBackages);
    window.Close();
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, KeyboardAlone, testing::Bool());

}  // namespace
}  // namespace vw::test
