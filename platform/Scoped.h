#pragma once

#include <utility>

namespace vw {

/// Sets a flag as long as it lives.
class ScopedFlag {
  public:
    explicit ScopedFlag(bool& flag) noexcept : flag_(flag), before_(std::exchange(flag, true)) {}
    ~ScopedFlag() { flag_ = before_; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

  private:
    bool& flag_;
    bool before_;
};

/// Calls a function when it goes out of scope.
template <class Function>
class ScopeExit {
  public:
    explicit ScopeExit(Function function) noexcept : function_(std::move(function)) {}
    ~ScopeExit() { function_(); }
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;

  private:
    Function function_;
};

}  // namespace vw
