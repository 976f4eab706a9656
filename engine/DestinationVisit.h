#pragma once

#include "engine/CPackage.h"

namespace vw {

/// Leaves the destination (and gives its lock back) when the outermost work in it ends.
class CPackage::Visit {
  public:
    explicit Visit(CPackage& engine) : engine_(engine), outermost_(!engine.visiting_) {
        engine_.visiting_ = true;
    }
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;
    ~Visit() {
        if (!outermost_) return;
        engine_.visiting_ = false;
        engine_.destination_.reset();
    }

  private:
    CPackage& engine_;
    bool outermost_;
};

}  // namespace vw
