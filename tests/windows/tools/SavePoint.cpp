// save_point LIST: works the main window of the program for tests/checks/save_points.sh, which
// starts the program and kills it while it saves that list, and for tests/checks/full_disk.sh,
// where there is no room to save it. Commands on standard input, one on a line, each answered with
// one line:
//
// wait      waits until the main window can be used: "ready"
// delete    takes the selected item off the list, and holds the program back as another window that
//           saves would: "held" once it waits
// save      lets it save and waits until that is done: "done", or "gone" when the program ended
// error     lets it save and waits for the box of an error, which is confirmed: the error's number
// close     closes the window: "gone"
//
// What never comes is answered with "late".

#include <cwchar>
#include <functional>
#include <iostream>
#include <optional>
#include <string>

#include "platform/NamedLock.h"
#include "platform/WindowsHeader.h"
#include "tests/system/ProgramWindows.h"
#include "ui/resource.h"

namespace {

constexpr ULONGLONG kPatience = 20000;
constexpr UINT kAnswerMilliseconds = 200;

HWND MainWindow() { return FindWindowW(L"frmMainEn", nullptr); }

bool Answers(HWND window) {
    DWORD_PTR answer = 0;
    return SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, kAnswerMilliseconds, &answer) !=
           0;
}

bool CanBeUsed(HWND window) {
    return Answers(window) && IsWindowVisible(window) != 0 && IsWindowEnabled(window) != 0;
}

/// `answer` once it is so; "gone" once a window that was open is not there any more.
const char* WhenSo(const char* answer, bool isOpen, const std::function<bool(HWND)>& isSo) {
    for (const ULONGLONG start = GetTickCount64(); GetTickCount64() - start < kPatience; Sleep(5)) {
        const HWND window = MainWindow();
        if (window == nullptr && isOpen) return "gone";
        if (window != nullptr && isSo(window)) return answer;
    }
    return "late";
}

// The number in the text of an error's box of this process ("Error 61 in line 12"), which is
// confirmed; 0 when there is no such box.
int ConfirmedError(HWND main) {
    DWORD process = 0;
    GetWindowThreadProcessId(main, &process);
    for (const vw::test::Box& box : vw::test::BoxesOf(process)) {
        int number = 0;
        if (std::swscanf(box.text.c_str(), L"Error %d", &number) != 1) continue;
        vw::test::Press(box, IDOK);
        return number;
    }
    return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 2) return 2;
    const std::wstring temporary = std::wstring(arguments[1]) + L".tmp";
    std::optional<vw::NamedLock> turn;
    for (std::string command; std::getline(std::cin, command);) {
        const char* answer = "unknown";
        if (command.starts_with("wait")) {
            answer = WhenSo("ready", false, CanBeUsed);
        } else if (command.starts_with("delete")) {
            turn.emplace(L"list", temporary);
            const bool taken = turn->TryTake();
            PostMessageW(MainWindow(), WM_COMMAND, ID_mnuDel, 0);
            answer = WhenSo("held", true, [&](HWND window) { return taken && !Answers(window); });
        } else if (command.starts_with("save")) {
            turn.reset();
            answer = WhenSo("done", true, CanBeUsed);
        } else if (command.starts_with("error")) {
            turn.reset();
            int number = 0;
            answer = WhenSo("", true, [&](HWND window) {
                number = ConfirmedError(window);
                return number != 0;
            });
            if (number != 0) std::cout << number;
        } else if (command.starts_with("close")) {
            PostMessageW(MainWindow(), WM_CLOSE, 0, 0);
            answer = WhenSo("late", true, [](HWND) { return false; });
        }
        std::cout << answer << std::endl;
    }
    return 0;
}
