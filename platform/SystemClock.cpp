#include "platform/SystemClock.h"

#include "platform/WindowsHeader.h"
// The declarations of power management need those of the system first.
#include <powrprof.h>

namespace vw {

std::uint64_t SystemClock::Milliseconds() const { return GetTickCount64(); }

// The library is loaded when the question comes up, which is hardly ever.
std::optional<std::uint64_t> SystemClock::MillisecondsSinceWaking() const {
    constexpr std::uint64_t kUnitsPerMillisecond = 10'000;
    const HMODULE library = LoadLibraryExW(L"powrprof.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library == nullptr) return std::nullopt;
    const auto ask = reinterpret_cast<decltype(&CallNtPowerInformation)>(
        reinterpret_cast<void*>(GetProcAddress(library, "CallNtPowerInformation")));
    std::uint64_t lastWake = 0;
    const bool isKnown = ask != nullptr &&
                         ask(LastWakeTime, nullptr, 0, &lastWake, sizeof lastWake) == 0 &&
                         lastWake != 0;
    FreeLibrary(library);
    const std::uint64_t wokeAt = lastWake / kUnitsPerMillisecond;
    const std::uint64_t now = Milliseconds();
    if (!isKnown || wokeAt > now) return std::nullopt;
    return now - wokeAt;
}

}  // namespace vw
