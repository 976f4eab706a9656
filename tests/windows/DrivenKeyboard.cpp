#include "tests/windows/Keyboard.h"
#include "ui/resource.h"

namespace vw::test {

namespace {

std::wstring ClassName(HWND window) {
    wchar_t name[64] = L"";
    if (window != nullptr) GetClassNameW(window, name, 64);
    return name;
}

INPUT Stroke(WORD key, bool up) {
    INPUT stroke{};
    stroke.type = INPUT_KEYBOARD;
    stroke.ki.wVk = key;
    stroke.ki.dwFlags = up ? DWORD{KEYEVENTF_KEYUP} : 0;
    return stroke;
}

void Send(const INPUT& stroke) {
    INPUT copy = stroke;
    EXPECT_EQ(SendInput(1, &copy, sizeof copy), 1U);
}

// Menus and dialogs take the keyboard over a moment after the key that opened them.
void Pause() { Sleep(30); }

}  // namespace

void Keyboard::Type(const std::vector<WORD>& keys) {
    for (const WORD key : keys) {
        Send(Stroke(key, false));
        Send(Stroke(key, true));
        Pause();
    }
}

void Keyboard::TypeWithControl(WORD key) {
    Send(Stroke(VK_CONTROL, false));
    Type({key});
    Send(Stroke(VK_CONTROL, true));
    Pause();
}

void Keyboard::Write(std::wstring_view text) {
    for (const wchar_t letter : text) {
        for (const DWORD up : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
            INPUT stroke{};
            stroke.type = INPUT_KEYBOARD;
            stroke.ki.wScan = letter;
            stroke.ki.dwFlags = KEYEVENTF_UNICODE | up;
            Send(stroke);
        }
    }
    Pause();
}

// Whether the arrow keys of a mirrored menu bar are mirrored too is the system's affair: the entry
// that opens About shows it. In the other direction the same keys choose a view.
KeyedProgram::KeyedProgram(const ProgramStart& start, bool arabic) : DrivenProgram(start) {
    SetForegroundWindow(Main());
    WaitForMain();
    if (!arabic) return;
    constexpr int kView = 3;
    constexpr int kDetails = 3;
    constexpr int kHelp = 5;
    constexpr int kAbout = 1;
    next_ = VK_LEFT;
    RunEntry(kHelp, kAbout);
    for (int i = 0; i < 40; ++i) {
        Sleep(50);
        if (!ClassName(GetForegroundWindow()).starts_with(L"frmAbout")) continue;
        Leave({VK_ESCAPE});
        return;
    }
    next_ = VK_RIGHT;
    RunEntry(kView, kDetails);
}

void KeyedProgram::RunEntry(int menu, int entry) {
    WaitForMain();
    std::vector<WORD> keys{VK_F10};
    keys.insert(keys.end(), static_cast<std::size_t>(menu), next_);
    keys.insert(keys.end(), static_cast<std::size_t>(entry) + 1, VK_DOWN);
    keys.push_back(VK_RETURN);
    Keyboard::Type(keys);
}

HWND KeyedProgram::FocusOfMain() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(Main(), nullptr), &info);
    return info.hwndFocus;
}

void KeyedProgram::GoTo(int id) {
    constexpr int kControls = 7;
    WaitForMain();
    const HWND control = Control(id);
    for (int i = 0; i < kControls && FocusOfMain() != control; ++i) {
        // A busy machine moves the keyboard later; another Tab would go past the control.
        const HWND before = FocusOfMain();
        Keyboard::Type({VK_TAB});
        WaitUntil([&] { return FocusOfMain() != before; }, "Tab does not move the keyboard");
    }
    EXPECT_EQ(FocusOfMain(), control) << "Tab does not reach the control " << id;
}

void KeyedProgram::PressButton(int position) {
    GoTo(ID_Toolbar1);
    const bool mirrored = (GetWindowLongW(Main(), GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
    std::vector<WORD> keys{VK_HOME};
    keys.insert(keys.end(), static_cast<std::size_t>(position),
                WORD{static_cast<WORD>(mirrored ? VK_LEFT : VK_RIGHT)});
    keys.push_back(VK_RETURN);
    Keyboard::Type(keys);
}

void KeyedProgram::SwitchBack() {
    WaitUntil(
        [this] {
            SetForegroundWindow(Main());
            return GetForegroundWindow() == Main();
        },
        "the main window does not come in front");
    WaitForMain();
}

void KeyedProgram::WaitForMain() {
    WaitUntilReady();
    WaitUntil([this] { return GetForegroundWindow() == Main(); },
              "the main window is not in front");
}

HWND KeyedProgram::WaitForFront(std::wstring_view classBeginning) {
    HWND front = nullptr;
    WaitUntil(
        [&] {
            front = GetForegroundWindow();
            return front != Main() && ClassName(front).starts_with(classBeginning) &&
                   IsWindowVisible(front) != 0;
        },
        "no such window comes in front");
    // It is in front before its controls take keys.
    Sleep(100);
    return front;
}

void KeyedProgram::LeaveFront(std::wstring_view classBeginning, const std::vector<WORD>& keys) {
    const HWND window = WaitForFront(classBeginning);
    Keyboard::Type(keys);
    WaitUntil([window] { return IsWindow(window) == 0 || IsWindowVisible(window) == 0; },
              "the keys do not leave the window");
}

void KeyedProgram::LeaveBox(const std::vector<WORD>& keys) { LeaveFront(L"#32770", keys); }

void KeyedProgram::Leave(const std::vector<WORD>& keys) {
    LeaveFront(L"", keys);
    WaitForMain();
}

}  // namespace vw::test
