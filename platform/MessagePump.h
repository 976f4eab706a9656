#pragma once

namespace vw {

/// Lets the windows live while work is going on: the program has one thread.
class MessagePump {
  public:
    MessagePump() = default;
    MessagePump(const MessagePump&) = delete;
    MessagePump& operator=(const MessagePump&) = delete;
    virtual ~MessagePump() = default;

    /// Processes every window message that waits, then returns.
    virtual void ProcessMessages() = 0;

    /// The same between the steps of a long walk: does nothing when messages were processed less
    /// than 30 ms ago, so that it may be called for each of 50,000 files.
    virtual void ProcessMessagesIfDue() = 0;

    /// Sleeps until a message waits or the time is over, then processes what waits.
    virtual void WaitForMessages(unsigned milliseconds) = 0;
};

}  // namespace vw
