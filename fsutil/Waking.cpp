#include "fsutil/Waking.h"

#include "platform/Clock.h"
#include "platform/MessagePump.h"

namespace vw {

namespace {

constexpr std::uint64_t kRecently = 60'000;
constexpr std::uint64_t kPatience = 10'000;
constexpr unsigned kPause = 250;

}  // namespace

bool IsThereAfterWaking(System& system, const CancelToken& cancel,
                        const std::function<bool()>& isThere) {
    if (isThere()) return true;
    const auto sinceWaking = system.clock.MillisecondsSinceWaking();
    if (!sinceWaking || *sinceWaking >= kRecently) return false;
    const std::uint64_t end = system.clock.Milliseconds() + kPatience;
    while (!cancel.IsRequested() && system.clock.Milliseconds() < end) {
        system.pump.WaitForMessages(kPause);
        if (isThere()) return true;
    }
    return false;
}

}  // namespace vw
