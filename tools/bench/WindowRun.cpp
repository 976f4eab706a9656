// WindowRun PROGRAM LIST: opens a list in the program's window, backs it up there with the wish to
// keep the report, and closes everything. Prints
//     MICROSECONDS PEAK_KIB
// the time from the command until the report is complete, and the program's peak memory;
// scripts/bench measures with it what the windows cost a run. Exit code 0 when all of it was seen.

#include <cstdio>
#include <string>

#include "platform/Handle.h"
#include "platform/WindowsHeader.h"
#include "ui/FormData.h"
#include "ui/resource.h"
// Their declarations need those of the window system first.
#include <commctrl.h>
#include <psapi.h>

namespace vw::test {
namespace {

constexpr DWORD kPatience = 300'000;
constexpr DWORD kLook = 2;
constexpr UINT kAnswer = 10'000;
// The window is painted long before a hand gets to its commands.
constexpr DWORD kFirstLook = 500;

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0) {
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(window, message, wParam, 0, SMTO_NORMAL, kAnswer, &answer);
    return static_cast<LRESULT>(answer);
}

/// A running program and its windows by their classes.
class Driven {
  public:
    Driven(const std::wstring& program, const std::wstring& list) {
        std::wstring commandLine = L"\"" + program + L"\" \"" + list + L"\"";
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION started{};
        if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                           nullptr, &startup, &started) == 0) {
            return;
        }
        process_ = KernelHandle(started.hProcess);
        CloseHandle(started.hThread);
        id_ = started.dwProcessId;
    }
    Driven(const Driven&) = delete;
    Driven& operator=(const Driven&) = delete;
    ~Driven() {
        if (process_) TerminateProcess(process_.Get(), 1);
    }

    /// Looks until `seen` says yes; false when the program ends, or it takes too long.
    template <class Seen>
    [[nodiscard]] bool WaitUntil(Seen seen) const {
        const ULONGLONG start = GetTickCount64();
        while (process_ && GetTickCount64() - start < kPatience) {
            if (seen()) return true;
            if (WaitForSingleObject(process_.Get(), kLook) != WAIT_TIMEOUT) return false;
        }
        return false;
    }

    [[nodiscard]] HWND ShownWindow(const wchar_t* className) const {
        const HWND window = FindWindowW(className, nullptr);
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        return window != nullptr && owner == id_ && IsWindowVisible(window) != 0 ? window : nullptr;
    }

    [[nodiscard]] bool EndsWhenClosed(HWND main) {
        PostMessageW(main, WM_CLOSE, 0, 0);
        return WaitForSingleObject(process_.Get(), kPatience) == WAIT_OBJECT_0;
    }

    [[nodiscard]] SIZE_T PeakKib() const {
        PROCESS_MEMORY_COUNTERS counters{};
        K32GetProcessMemoryInfo(process_.Get(), &counters, sizeof counters);
        return counters.PeakWorkingSetSize / 1024;
    }

  private:
    KernelHandle process_;
    DWORD id_ = 0;
};

long long Microseconds() {
    LARGE_INTEGER now{};
    LARGE_INTEGER second{};
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&second);
    return now.QuadPart * 1'000'000 / second.QuadPart;
}

// The bar is full when the last line is in the report, and never before.
bool IsComplete(HWND busy) {
    return Ask(GetDlgItem(busy, ID_ProgressBar1), PBM_GETPOS) == kProgressMaximum;
}

int Run(const std::wstring& program, const std::wstring& list) {
    Driven driven(program, list);
    HWND main = nullptr;
    const bool opened = driven.WaitUntil([&] {
        main = driven.ShownWindow(L"frmMainEn");
        return main != nullptr && IsWindowEnabled(main) != 0 && Ask(main, WM_NULL) == 0;
    });
    if (!opened) return 3;
    Sleep(kFirstLook);
    const long long begin = Microseconds();
    PostMessageW(main, WM_COMMAND, ID_mnuBackup, 0);
    HWND busy = nullptr;
    if (!driven.WaitUntil([&] { return (busy = driven.ShownWindow(L"frmBusyDialogEn")); }))
        return 4;
    Ask(GetDlgItem(busy, ID_chkDontHide), BM_SETCHECK, BST_CHECKED);
    if (!driven.WaitUntil([&] { return IsComplete(busy); })) return 5;
    const long long took = Microseconds() - begin;
    std::printf("%lld %llu\n", took, static_cast<unsigned long long>(driven.PeakKib()));
    const bool kept =
        driven.WaitUntil([&] { return IsComplete(busy); }) && IsWindowVisible(busy) != 0;
    return kept && driven.EndsWhenClosed(main) ? 0 : 6;
}

}  // namespace
}  // namespace vw::test

int wmain(int count, wchar_t** arguments) {
    if (count != 3) {
        std::fputs("usage: WindowRun PROGRAM LIST\n", stderr);
        return 2;
    }
    return vw::test::Run(arguments[1], arguments[2]);
}
