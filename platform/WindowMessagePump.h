#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "platform/MessagePump.h"

struct tagMSG;

namespace vw {

/// The message queue of the program's one thread.
class WindowMessagePump final : public MessagePump {
  public:
    void ProcessMessages() override;
    void ProcessMessagesIfDue() override;
    void WaitForMessages(unsigned milliseconds) override;

    /// Takes a message before its window gets it; true when it is done with. The keys of forms
    /// (Tab, Enter, accelerators) come in here.
    using Filter = std::function<bool(const tagMSG& message)>;

    /// Sets the filter of every message from now on; an empty one takes it away.
    void SetFilter(Filter filter) { filter_ = std::move(filter); }

    /// Asked before messages are processed; false when there can be none. The first look for
    /// messages connects a process to its display, which a run without windows can do without.
    using Gate = std::function<bool()>;

    /// Sets the gate from now on; an empty one takes it away.
    void SetGate(Gate gate) { gate_ = std::move(gate); }

    /// Called on WM_QUIT, which is posted to the thread and not to a window.
    using Quit = std::function<void()>;

    /// Sets the function to call from now on; with an empty one such messages are ignored.
    void SetQuit(Quit quit) { quit_ = std::move(quit); }

    /// Processes messages until `goOn()` says no; sleeps while none waits. The main loop.
    template <class GoOn>
    void RunWhile(GoOn goOn) {
        while (goOn()) WaitForMessages(kIdleMilliseconds);
    }

  private:
    void EmptyQueue();

    static constexpr unsigned kIdleMilliseconds = 500;
    Filter filter_;
    Gate gate_;
    Quit quit_;
    std::uint64_t lastPass_ = 0;
};

}  // namespace vw
