#pragma once

#include <memory>
#include <string_view>

namespace vw {

/// A lock that all processes of this computer share by name; held from a successful TryTake until
/// it is destroyed. A dead process's lock is taken over.
class NamedLock {
  public:
    /// `purpose` distinguishes kinds of locks; `path` is compared without regard to case.
    NamedLock(std::wstring_view purpose, std::wstring_view path);
    NamedLock(const NamedLock&) = delete;
    NamedLock& operator=(const NamedLock&) = delete;
    ~NamedLock();

    /// Takes the lock when nobody holds it; never waits.
    [[nodiscard]] bool TryTake() { return TakeWithin(0); }

    /// Takes the lock as soon as nobody holds it, but waits no longer than this.
    [[nodiscard]] bool TakeWithin(unsigned milliseconds);

  private:
    // Not KernelHandle, whose header would bring the system's own into every file of the engine.
    struct CloseMutex {
        void operator()(void* mutex) const noexcept;
    };
    std::unique_ptr<void, CloseMutex> mutex_;
    bool held_ = false;
};

}  // namespace vw
