#include "tests/windows/DrivenProgram.h"

#include <algorithm>
#include <stdexcept>

#include "platform/Utf8.h"
#include "ui/resource.h"
// The common controls' declarations need those of the window system first.
#include <commctrl.h>
#include <dlgs.h>

namespace vw::test {
namespace {

// Far longer than anything takes, also on a machine that is busy with other tests.
constexpr ULONGLONG kPatience = 90'000;
constexpr DWORD kAnswerMilliseconds = 20000;

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kAnswerMilliseconds, &answer);
    return static_cast<LRESULT>(answer);
}

}  // namespace

HWND FindControl(HWND window, int id) {
    struct Search {
        int id;
        HWND found;
    } search{id, nullptr};
    EnumChildWindows(
        window,
        [](HWND child, LPARAM data) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(data);
            if (GetDlgCtrlID(child) != wanted.id) return TRUE;
            wanted.found = child;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::wstring WindowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
    const LRESULT length =
        Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

DrivenProgram::DrivenProgram(const ProgramStart& start) : run_(start) {
    WaitUntil(
        [this] {
            main_ = FindWindowOf(run_.ProcessId(), L"frmMain");
            return run_.HasEnded() || !BoxesOf(run_.ProcessId()).empty() ||
                   (main_ != nullptr && IsWindowVisible(main_) != 0);
        },
        "the main window does not come");
    for (const Box& box : BoxesOf(run_.ProcessId())) ADD_FAILURE() << ToUtf8(box.text);
    if (run_.HasEnded() || testing::Test::HasFailure()) {
        run_.Terminate();
        throw std::runtime_error("the main window did not open");
    }
    WaitUntilReady();
}

std::wstring DrivenProgram::Caption() const { return WindowText(main_); }

HWND DrivenProgram::ControlOf(HWND window, int id) {
    const HWND control = FindControl(window, id);
    EXPECT_NE(control, nullptr) << "no control " << id;
    return control;
}

std::wstring DrivenProgram::TextOf(int id) const { return WindowText(Control(id)); }

void DrivenProgram::Begin(int id) const { PostMessageW(main_, WM_COMMAND, MAKEWPARAM(id, 0), 0); }

void DrivenProgram::Choose(int id) {
    Begin(id);
    WaitUntilReady();
}

// Commands are posted, and what is posted behind them comes later: a colour that the toolbar keeps
// and never shows proves that they have been taken up. A window that is enabled then has no command
// that runs; asked twice, since the end of a dialog enables the window for a moment.
void DrivenProgram::WaitUntilReady() {
    const HWND bar = Control(ID_Toolbar1);
    const LPARAM mark = ++mark_;
    PostMessageW(bar, TB_SETINSERTMARKCOLOR, 0, mark);
    WaitUntil([&] { return Ask(bar, TB_GETINSERTMARKCOLOR, 0, 0) == mark; },
              "the program does not take up what it gets");
    const auto isEnabled = [this] {
        Ask(main_, WM_NULL, 0, 0);
        return IsWindowEnabled(main_) != 0;
    };
    // One command may follow the other; between them the window is given back for a moment.
    WaitUntil(
        [&] {
            const bool before = isEnabled();
            return isEnabled() && before;
        },
        "the main window stays disabled");
}

void DrivenProgram::WaitUntil(const std::function<bool()>& isSo, const char* what, DWORD poll) {
    const ULONGLONG start = GetTickCount64();
    while (!isSo()) {
        if (GetTickCount64() - start > kPatience) {
            std::string windows;
            for (const WindowFacts& window : WindowsOf(run_.ProcessId())) {
                if (window.visible) {
                    windows += "\n  " + ToUtf8(window.className) + ": " + ToUtf8(window.title);
                }
            }
            for (const Box& box : BoxesOf(run_.ProcessId())) windows += "\n" + ToUtf8(box.text);
            ADD_FAILURE() << what << "; shown:" << windows;
            return;
        }
        Sleep(poll);
    }
}

Box DrivenProgram::AnswerBox(std::wstring_view part, int button) {
    Box box = run_.WaitForBox();
    EXPECT_NE(box.text.find(part), std::wstring::npos)
        << "the box says: " << ToUtf8(box.text) << "\ninstead of: " << ToUtf8(part);
    run_.Answer(box, button);
    return box;
}

HWND DrivenProgram::WaitForFileDialog() {
    HWND dialog = nullptr;
    WaitUntil(
        [&] {
            for (const WindowFacts& window : WindowsOf(run_.ProcessId())) {
                if (window.visible && window.className == L"#32770" &&
                    (FindControl(window.handle, edt1) != nullptr ||
                     FindControl(window.handle, cmb13) != nullptr)) {
                    dialog = window.handle;
                }
            }
            return dialog != nullptr;
        },
        "no file dialog has come");
    return dialog;
}

std::wstring DrivenProgram::AnswerFileDialog(std::wstring_view name) {
    const HWND dialog = WaitForFileDialog();
    if (dialog == nullptr) return {};
    std::wstring title = WindowText(dialog);
    if (!name.empty()) {
        HWND field = FindControl(dialog, edt1);
        if (field == nullptr) field = FindControl(dialog, cmb13);
        Ask(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(std::wstring(name).c_str()));
    }
    const int button = name.empty() ? IDCANCEL : IDOK;
    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
    WaitUntil([&] { return IsWindow(dialog) == 0; }, "the file dialog stays");
    return title;
}

void DrivenProgram::ClickMoreCopies(int times) {
    const HWND bar = Control(ID_vsBackages);
    for (int i = 0; i < times; ++i) {
        PostMessageW(GetParent(bar), WM_VSCROLL, SB_LINEUP, reinterpret_cast<LPARAM>(bar));
    }
    WaitUntilReady();
}

HWND DrivenProgram::WaitForBusyDialog() { return run_.WaitForVisibleWindow(L"frmBusyDialog"); }

void DrivenProgram::WaitUntilBusyDialogIsGone() {
    WaitUntil([this] { return FindWindowOf(run_.ProcessId(), L"frmBusyDialog") == nullptr; },
              "the busy dialog stays");
}

DWORD DrivenProgram::Close() {
    PostMessageW(main_, WM_CLOSE, 0, 0);
    return run_.WaitForEnd();
}

std::wstring WindowsTest::WriteDefaultList(const std::vector<std::wstring>& items,
                                           int copies) const {
    std::vector<std::wstring> lines{L"BackupTo: " + Vault(),
                                    L"Backages: " + std::to_wstring(copies)};
    lines.insert(lines.end(), items.begin(), items.end());
    return program.List(L"Program\\FilesList.vwl", lines);
}

std::vector<std::wstring> WindowsTest::LinesOf(std::wstring_view list) {
    const std::string bytes = ReadBytes(list);
    const std::wstring text = bytes.starts_with("\xEF\xBB\xBF")
                                  ? FromUtf8(std::string_view(bytes).substr(3))
                                  : FromUtf8(bytes);
    std::vector<std::wstring> lines;
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = text.find(L"\r\n", begin)) != std::wstring::npos;) {
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 2;
    }
    return lines;
}

}  // namespace vw::test
