// The two symbols that code compiled with a stack protector needs. The MinGW toolchain brings its
// own, whose start-up code loads the system's old cryptography for eight random bytes: 4 of the 33
// milliseconds that a run takes that finds nothing to do, measured under Wine.

#ifdef __MINGW32__

#include <cstdint>

#include "platform/WindowsHeader.h"
// Needs the declarations of the system first.
#include <ntsecapi.h>

namespace {

std::uintptr_t RandomGuard() noexcept {
    std::uintptr_t guard = 0;
    if (RtlGenRandom(&guard, sizeof guard) != FALSE) return guard;
    // Where a program and its stack lie is random too.
    LARGE_INTEGER counter{};
    QueryPerformanceCounter(&counter);
    return reinterpret_cast<std::uintptr_t>(&counter) * 2654435761U ^
           static_cast<std::uintptr_t>(counter.QuadPart);
}

constexpr UINT kStackBufferOverrun = 0xC0000409;
constexpr char kMessage[] = "*** stack smashing detected ***\r\n";

}  // namespace

// NOLINTBEGIN(clang-diagnostic-reserved-identifier): the compiler decides the names.
extern "C" {

// Set before any protected function of ours runs; this file is compiled without protection.
extern std::uintptr_t __stack_chk_guard;
std::uintptr_t __stack_chk_guard = RandomGuard();

// The stack is not to be trusted any more: no handler of ours runs.
[[noreturn]] void __stack_chk_fail() {
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), kMessage, sizeof kMessage - 1, &written, nullptr);
    TerminateProcess(GetCurrentProcess(), kStackBufferOverrun);
    for (;;) Sleep(INFINITE);
}
}
// NOLINTEND(clang-diagnostic-reserved-identifier)

#endif
