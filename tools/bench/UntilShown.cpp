// UntilShown CLASS PROGRAM [argument]: starts a program, waits until its window of this class is
// shown and painted, and ends the program at once. What it takes is what a user waits for the
// window; scripts/bench measures it. Exit code 0 when the window was seen.

#include <cstdio>
#include <string>

#include "platform/Handle.h"
#include "platform/WindowsHeader.h"

namespace vw::test {
namespace {

constexpr DWORD kPatience = 60'000;
constexpr UINT kAnswer = 1'000;

struct Search {
    DWORD process;
    const wchar_t* className;
    HWND found = nullptr;
};

BOOL CALLBACK SeeWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    wchar_t name[256] = L"";
    GetWindowThreadProcessId(window, &process);
    GetClassNameW(window, name, 256);
    if (process != search.process || lstrcmpiW(name, search.className) != 0) return TRUE;
    if (IsWindowVisible(window) == 0) return TRUE;
    search.found = window;
    return FALSE;
}

// A window paints when its program has nothing else to do: then it waits for input for the first
// time. That it answers as well shows that the wait is that of its own loop.
bool IsShown(HANDLE process, DWORD processId, const wchar_t* className) {
    Search search{processId, className};
    EnumWindows(SeeWindow, reinterpret_cast<LPARAM>(&search));
    DWORD_PTR answer = 0;
    return search.found != nullptr && WaitForInputIdle(process, kAnswer) == 0 &&
           SendMessageTimeoutW(search.found, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, kAnswer, &answer) !=
               0 &&
           GetUpdateRect(search.found, nullptr, FALSE) == 0;
}

int Run(const wchar_t* className, const std::wstring& program, const wchar_t* argument) {
    std::wstring commandLine = L"\"" + program + L"\"";
    if (argument != nullptr) commandLine += std::wstring(L" \"") + argument + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                       nullptr, &startup, &started) == 0) {
        std::fprintf(stderr, "the program did not start: %lu\n", GetLastError());
        return 2;
    }
    const KernelHandle process(started.hProcess);
    const KernelHandle thread(started.hThread);
    const ULONGLONG start = GetTickCount64();
    bool isShown = false;
    while (!isShown && GetTickCount64() - start < kPatience &&
           WaitForSingleObject(process.Get(), 1) == WAIT_TIMEOUT) {
        isShown = IsShown(process.Get(), started.dwProcessId, className);
    }
    TerminateProcess(process.Get(), 0);
    return isShown ? 0 : 1;
}

}  // namespace
}  // namespace vw::test

int wmain(int count, wchar_t** arguments) {
    if (count < 3) {
        std::fputs("usage: UntilShown CLASS PROGRAM [argument]\n", stderr);
        return 2;
    }
    return vw::test::Run(arguments[1], arguments[2], count > 3 ? arguments[3] : nullptr);
}
