#include "fsutil/Patience.h"

#include <algorithm>

#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

namespace vw {

namespace {

constexpr std::uint64_t kBrief = 500;
constexpr std::uint64_t kFirstPause = 25;
constexpr std::uint64_t kLongestPause = 1000;

// Removing or renaming what is open is refused in one of these ways. The second one also means
// missing rights, which no wait can change; that it costs one wait only is why patience ends.
bool MeansInUse(std::uint32_t code) {
    return code == ERROR_SHARING_VIOLATION || code == ERROR_ACCESS_DENIED;
}

}  // namespace

void RetryBriefly(const std::function<void()>& step) {
    for (std::uint64_t waited = 0;; waited += kFirstPause) {
        try {
            step();
            return;
        } catch (const RuntimeError& error) {
            if (waited >= kBrief || !MeansInUse(error.SystemCode())) throw;
        }
        Sleep(static_cast<DWORD>(kFirstPause));
    }
}

void Patience::Perform(const std::function<void()>& step, std::wstring_view target,
                       std::uint64_t limit) {
    const auto passes = [&](std::uint32_t code) {
        return MeansInUse(code) && (code != ERROR_ACCESS_DENIED || !IsReadOnly(target));
    };
    Retry(step, passes, limit);
}

void Patience::RemoveFolder(std::wstring_view path, bool emptiedByUs) {
    const auto passes = [&](std::uint32_t code) {
        if (code == ERROR_DIR_NOT_EMPTY) return emptiedByUs;
        return MeansInUse(code) && (code != ERROR_ACCESS_DENIED || !IsReadOnly(path));
    };
    Retry([&] { system_.files.RemoveFolder(path); }, passes, kUsual);
}

void Patience::Retry(const std::function<void()>& step,
                     const std::function<bool(std::uint32_t)>& passes, std::uint64_t limit) {
    const std::uint64_t start = system_.clock.Milliseconds();
    // Who has cancelled already waits for the end of the run.
    const bool wasCancelled = cancel_.IsRequested();
    if (waitedInVain_ || wasCancelled) limit = kBrief;
    for (std::uint64_t pause = kFirstPause;; pause = std::min(2 * pause, kLongestPause)) {
        const std::uint64_t waited = system_.clock.Milliseconds() - start;
        try {
            step();
            return;
        } catch (const RuntimeError& error) {
            if (!passes(error.SystemCode()) || (cancel_.IsRequested() && !wasCancelled)) throw;
            if (waited >= limit) {
                waitedInVain_ = true;
                throw;
            }
        }
        Pause(std::min(pause, limit - waited));
    }
}

// A message ends the system's wait early.
void Patience::Pause(std::uint64_t milliseconds) {
    const bool wasCancelled = cancel_.IsRequested();
    const std::uint64_t end = system_.clock.Milliseconds() + milliseconds;
    for (std::uint64_t now = end - milliseconds; now < end; now = system_.clock.Milliseconds()) {
        system_.pump.WaitForMessages(static_cast<unsigned>(end - now));
        if (cancel_.IsRequested() && !wasCancelled) return;
    }
}

bool Patience::IsReadOnly(std::wstring_view path) {
    if (path.empty()) return false;
    try {
        const auto facts = system_.files.Stat(path);
        return facts && facts->isReadOnly;
    } catch (const RuntimeError&) {
        return false;
    }
}

}  // namespace vw
