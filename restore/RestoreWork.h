#pragma once

#include "platform/ProgramState.h"
#include "platform/Scoped.h"

namespace vw {

/// While it lives, a command works on copies: a user who closes the busy dialog cancels it, and the
/// dialog stays closed until the work has come to its end.
class RestoreWork {
  public:
    explicit RestoreWork(ProgramState& state) : working_(state.isWorking) {
        // Of earlier work.
        state.cancel.Begin();
    }

  private:
    ScopedFlag working_;
};

}  // namespace vw
