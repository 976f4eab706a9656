#pragma once

#include "platform/ProgramState.h"
#include "restore/RestoreHost.h"

namespace vw {

/// While it lives, a command works on copies: a user who closes the busy dialog cancels it, and the
/// dialog stays closed until the work has come to its end.
class RestoreWork {
  public:
    RestoreWork(RestoreHost& host, ProgramState& state) : host_(host) {
        // The mark of earlier work.
        state.cancelRequested = false;
        host_.Restoring(true);
    }
    ~RestoreWork() { host_.Restoring(false); }
    RestoreWork(const RestoreWork&) = delete;
    RestoreWork& operator=(const RestoreWork&) = delete;

  private:
    RestoreHost& host_;
};

}  // namespace vw
