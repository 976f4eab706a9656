#pragma once

#include <functional>
#include <limits>
#include <map>

#include "platform/MessagePump.h"
#include "tests/support/TestClock.h"

namespace vw::test {

/// An event pump without windows. Every call counts as one yield; a test can act at the k-th one,
/// as a user does who presses Cancel in the middle of a run. Waiting takes no time: it moves the
/// test's clock on.
class ScriptedPump : public MessagePump {
  public:
    explicit ScriptedPump(TestClock& clock) : clock_(clock) {}

    /// Runs `callback` at the k-th yield (from 1) since the last Restart. What the callback throws
    /// goes on to the caller that yielded.
    void AtYield(int k, std::function<void()> callback) { callbacks_[k] = std::move(callback); }

    /// Runs `callback` at every yield, after the one of AtYield.
    void AtEachYield(std::function<void()> callback) { each_ = std::move(callback); }

    /// Forgets the callbacks and counts from 1 again.
    void Restart();

    /// From now on a message ends every wait after so many milliseconds.
    void MessageEvery(unsigned milliseconds) { longestWait_ = milliseconds; }

    /// Yields so far, of all three kinds.
    [[nodiscard]] int Yields() const noexcept { return yields_; }

    /// Milliseconds that WaitForMessages was asked to wait, all in all.
    [[nodiscard]] std::uint64_t Waited() const noexcept { return waited_; }

    void ProcessMessages() override { Yield(); }
    void ProcessMessagesIfDue() override { Yield(); }
    void WaitForMessages(unsigned milliseconds) override;

  private:
    void Yield();

    TestClock& clock_;
    std::map<int, std::function<void()>> callbacks_;
    std::function<void()> each_;
    int yields_ = 0;
    unsigned longestWait_ = std::numeric_limits<unsigned>::max();
    std::uint64_t waited_ = 0;
};

}  // namespace vw::test
