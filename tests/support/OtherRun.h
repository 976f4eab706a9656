#pragma once

#include <gtest/gtest.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "platform/NamedLock.h"

namespace vw::test {

/// Another run that holds a destination, in a thread of its own as locks belong to threads.
class OtherRun {
  public:
    explicit OtherRun(const std::wstring& folder) : thread_([this, folder] { Hold(folder); }) {
        std::unique_lock guard(mutex_);
        changed_.wait(guard, [this] { return holding_ || failed_; });
        EXPECT_FALSE(failed_) << "the lock was not free";
    }
    OtherRun(const OtherRun&) = delete;
    OtherRun& operator=(const OtherRun&) = delete;
    ~OtherRun() { End(); }

    /// The other run ends in order.
    void End() { Leave(false); }
    /// The other run dies without giving the lock back.
    void Die() { Leave(true); }

  private:
    void Hold(const std::wstring& folder) {
        auto lock = std::make_unique<NamedLock>(L"destination", folder);
        std::unique_lock guard(mutex_);
        holding_ = lock->TryTake();
        failed_ = !holding_;
        changed_.notify_all();
        changed_.wait(guard, [this] { return leaving_; });
        // A dead run never comes to its destructors.
        if (dying_) static_cast<void>(lock.release());
    }

    void Leave(bool dying) {
        if (!thread_.joinable()) return;
        {
            const std::lock_guard guard(mutex_);
            leaving_ = true;
            dying_ = dying;
        }
        changed_.notify_all();
        thread_.join();
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    bool holding_ = false;
    bool failed_ = false;
    bool leaving_ = false;
    bool dying_ = false;
    std::thread thread_;
};

}  // namespace vw::test
