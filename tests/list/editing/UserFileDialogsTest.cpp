// The system's own dialogs, answered from inside the process.

#include "list/editing/UserFileDialogs.h"

#include <functional>

#include "list/editing/Filter.h"
#include "platform/CurrentFolder.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/list/editing/ListFixture.h"
#include "tests/support/FileDialogHook.h"
// The dialogs' controls need the declarations of the window system first.
#include <dlgs.h>

namespace vw::test {
namespace {

std::wstring TextOf(HWND window) {
    std::wstring text(1000, L'\0');
    text.resize(static_cast<std::size_t>(
        SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

/// The file dialog that is open, as its user has it before him.
struct OpenDialog {
    HWND window = nullptr;
    HWND name = nullptr;

    static OpenDialog Find() {
        OpenDialog dialog{.window = GetForegroundWindow()};
        for (const int id : {cmb13, edt1}) {
            if (dialog.name == nullptr) dialog.name = GetDlgItem(dialog.window, id);
        }
        return dialog;
    }
    void Confirm(const std::wstring& typed) const {
        SetWindowTextW(name, typed.c_str());
        PostMessageW(window, WM_COMMAND, IDOK, 0);
    }
    void Cancel() const { PostMessageW(window, WM_COMMAND, IDCANCEL, 0); }
};

std::function<void(const OpenDialog&)> answer;

void CALLBACK AnswerOnce(HWND, UINT, UINT_PTR timer, DWORD) {
    const OpenDialog dialog = OpenDialog::Find();
    if (dialog.name == nullptr) return;
    KillTimer(nullptr, timer);
    answer(dialog);
}

class UserFileDialogs : public ListFixture {
  protected:
    UserFileDialogs() { main.form.Show(); }

    /// Does this with the next dialog, once it is open.
    static void Answer(std::function<void(const OpenDialog&)> how) {
        answer = std::move(how);
        SetTimer(nullptr, 0, 200, AnswerOnce);
    }
    static void Confirm(const std::wstring& typed) {
        Answer([typed](const OpenDialog& dialog) { dialog.Confirm(typed); });
    }

    vw::UserFileDialogs system{main.form};
    FileDialogSetup setup;
};

TEST_F(UserFileDialogs, BeginsInTheFolderOfTheLastFile) {
    const std::wstring start = CurrentFolder();
    const std::wstring folder = tree.Folder(L"On a stick");
    const std::wstring file = tree.File(L"On a stick\\Mine.vwl");
    MRecentFiles::Filter(setup, FileDialogKind::OpenList, L"");
    EXPECT_EQ(setup.initialFolder, start);
    Confirm(file);
    EXPECT_EQ(system.ShowOpen(setup), file);
    EXPECT_EQ(setup.lastFolder, folder);
    EXPECT_EQ(CurrentFolder(), start) << "a stick must not be held by the program";
    MRecentFiles::Filter(setup, FileDialogKind::OpenList, L"");
    EXPECT_EQ(setup.initialFolder, folder);
}

TEST_F(UserFileDialogs, ShowsTitleNameAndFilter_CancelGivesNothing) {
    MRecentFiles::Filter(setup, FileDialogKind::AddFolder, L"");
    setup.filter = L"Lists (*.vwl)|*.vwl|Texts (*.txt)|*.txt";
    std::wstring title;
    std::wstring name;
    std::wstring filter;
    HWND owner = nullptr;
    Answer([&](const OpenDialog& dialog) {
        title = TextOf(dialog.window);
        name = TextOf(dialog.name);
        filter = TextOf(GetDlgItem(dialog.window, cmb1));
        owner = GetWindow(dialog.window, GW_OWNER);
        dialog.Cancel();
    });
    EXPECT_EQ(system.ShowSave(setup), std::nullopt);
    EXPECT_EQ(title, setup.title);
    EXPECT_EQ(name, setup.fileName);
    EXPECT_EQ(filter, L"Lists (*.vwl)");
    EXPECT_EQ(owner, main.form.Handle());
}

TEST_F(UserFileDialogs, SeveralFiles_FolderThenNames) {
    tree.File(L"Sub\\a.txt");
    tree.File(L"Sub\\b.txt");
    MRecentFiles::Filter(setup, FileDialogKind::AddFiles, L"");
    setup.initialFolder = Path(L"Sub");
    Confirm(L"\"a.txt\" \"b.txt\"");
    EXPECT_EQ(system.ShowOpen(setup), Path(L"Sub") + L'\0' + L"a.txt" + L'\0' + L"b.txt");
    EXPECT_EQ(setup.lastFolder, Path(L"Sub"));
}

TEST_F(UserFileDialogs, NameWithoutExtension_GetsThatOfLists) {
    MRecentFiles::Filter(setup, FileDialogKind::SaveList, L"");
    setup.initialFolder = tree.Path();
    Confirm(L"Mine");
    EXPECT_EQ(system.ShowSave(setup), Path(L"Mine.vwl"));
}

TEST_F(UserFileDialogs, FileInTheRootOfADrive_NextDialogBeginsInTheRoot) {
    MRecentFiles::Filter(setup, FileDialogKind::SaveList, L"");
    Confirm(L"C:\\Nobody's list.vwl");
    EXPECT_EQ(system.ShowSave(setup), L"C:\\Nobody's list.vwl");
    EXPECT_EQ(setup.lastFolder, L"C:\\");
}

/// Dialogs that end as no user can make them end.
class HookedFileDialog : public UserFileDialogs {
  protected:
    /// The error that the program makes of one of the system's dialog.
    int ErrorFor(DWORD error) {
        dialog.error = error;
        try {
            static_cast<void>(system.ShowOpen(setup));
        } catch (const RuntimeError& raised) {
            return raised.Number();
        }
        return 0;
    }

    FileDialogHook dialog;
};

TEST_F(HookedFileDialog, SystemGetsTheFlagsAndAnEnabledOwner) {
    MRecentFiles::Filter(setup, FileDialogKind::AddFiles, L"");
    EnableWindow(main.form.Handle(), FALSE);
    EXPECT_EQ(system.ShowOpen(setup), std::nullopt);
    EXPECT_NE(dialog.flags, 0U);
    EXPECT_EQ(dialog.flags, setup.flags);
    EXPECT_TRUE(dialog.isOwnerEnabled) << "only such an owner gets the keyboard back";
    EXPECT_FALSE(IsWindowEnabled(main.form.Handle()));
}

TEST_F(HookedFileDialog, DialogMovesTheCurrentFolder_ItIsMovedBack) {
    const std::wstring start = CurrentFolder();
    dialog.movesTo = tree.Folder(L"On a stick");
    EXPECT_EQ(system.ShowOpen(setup), std::nullopt);
    EXPECT_EQ(CurrentFolder(), start);
}

// One NUL ends a path that is chosen alone; behind it the rest of the proposal may be left.
TEST_F(HookedFileDialog, PathIsShorterThanTheProposal_IsTakenAlone) {
    dialog.answer = Path(L"a.txt");
    setup.fileName.assign(dialog.answer.size() + 10, L'x');
    EXPECT_EQ(system.ShowOpen(setup), dialog.answer);
    EXPECT_EQ(setup.lastFolder, tree.Path());
}

TEST_F(HookedFileDialog, AnswerWithoutAFolder_HasNoLastFolder) {
    dialog.answer = L"Mine.vwl";
    EXPECT_EQ(system.ShowOpen(setup), dialog.answer);
    EXPECT_EQ(setup.lastFolder, L"");
}

TEST_F(HookedFileDialog, ErrorOfTheSystem_IsRaised) {
    EXPECT_EQ(ErrorFor(FNERR_INVALIDFILENAME), error_number::kBadName);
    EXPECT_EQ(ErrorFor(FNERR_BUFFERTOOSMALL), error_number::kOutOfMemory);
    EXPECT_EQ(ErrorFor(CDERR_DIALOGFAILURE), error_number::kInvalidCall);
}

}  // namespace
}  // namespace vw::test
