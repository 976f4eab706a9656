#pragma once

#include <cstdint>

#include "platform/EventPump.h"

namespace vw {

/// The message queue of the program's one thread.
class WindowEventPump final : public EventPump {
  public:
    void DoEvents() override;
    void DoEventsIfDue() override;
    void WaitForEvents(unsigned milliseconds) override;

    /// Processes messages until `goOn()` says no; sleeps while none waits. The main loop.
    template <class GoOn>
    void RunWhile(GoOn goOn) {
        while (goOn()) WaitForEvents(kIdleMilliseconds);
    }

  private:
    static constexpr unsigned kIdleMilliseconds = 500;
    std::uint64_t lastPass_ = 0;
};

}  // namespace vw
