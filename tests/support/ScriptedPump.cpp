#include "tests/support/ScriptedPump.h"

#include <algorithm>
#include <utility>

namespace vw::test {

void ScriptedPump::Restart() {
    callbacks_.clear();
    each_ = nullptr;
    yields_ = 0;
    longestWait_ = std::numeric_limits<unsigned>::max();
    waited_ = 0;
}

void ScriptedPump::WaitForMessages(unsigned milliseconds) {
    const unsigned waits = std::min(milliseconds, longestWait_);
    clock_.Advance(waits);
    waited_ += waits;
    Yield();
}

void ScriptedPump::Yield() {
    ++yields_;
    // Copied before they run: a callback may plan the next one or restart the pump.
    const auto planned = callbacks_.find(yields_);
    if (planned != callbacks_.end()) {
        const std::function<void()> callback = planned->second;
        callback();
    }
    if (each_) {
        const std::function<void()> callback = each_;
        callback();
    }
}

}  // namespace vw::test
