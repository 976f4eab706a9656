#pragma once

namespace vw {

/// Lets the windows live while work is going on: the program has one thread.
class EventPump {
  public:
    EventPump() = default;
    EventPump(const EventPump&) = delete;
    EventPump& operator=(const EventPump&) = delete;
    virtual ~EventPump() = default;

    /// Processes every window message that waits, then returns.
    virtual void DoEvents() = 0;

    /// The same between the steps of a long walk: does nothing when messages were processed less
    /// than 30 ms ago, so that it may be called for each of 50,000 files.
    virtual void DoEventsIfDue() = 0;

    /// Sleeps until a message waits or the time is over, then processes what waits.
    virtual void WaitForEvents(unsigned milliseconds) = 0;
};

}  // namespace vw
