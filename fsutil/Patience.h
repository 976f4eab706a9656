#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "platform/CancelToken.h"
#include "platform/System.h"

namespace vw {

/// Performs `step`, and again for up to half a second while somebody else has the file open.
/// Processes no messages: for short work that nothing may interrupt. Throws what the last attempt
/// threw.
void RetryBriefly(const std::function<void()>& step);

/// How long a run waits for what a virus scanner, an indexer or another window has open for a
/// while. Windows are served meanwhile, and a cancel ends the wait. Once it has waited in vain, the
/// rest of the run waits half a second only: what is held for longer is held for good.
class Patience {
  public:
    static constexpr std::uint64_t kUsual = 10'000;  ///< milliseconds
    static constexpr std::uint64_t kLong = 30'000;   ///< for the step that ends hours of work

    /// `cancel` is read during a wait; both have to outlive this object.
    Patience(System& system, const CancelToken& cancel) : system_(system), cancel_(cancel) {}

    /// A new run has its whole patience.
    void StartRun() noexcept { waitedInVain_ = false; }

    /// Performs `step`, and again after growing pauses while it fails because somebody else has
    /// something open. Throws what the last attempt threw. A denied access counts as long as
    /// `target` (what the step removes or replaces; empty for nothing) has no read-only mark.
    void Perform(const std::function<void()>& step, std::wstring_view target = {},
                 std::uint64_t limit = kUsual);

    /// Removes the empty folder `path`. With `emptiedByUs` a folder that is not empty counts too:
    /// some disks show what was removed until everybody has closed it.
    void RemoveFolder(std::wstring_view path, bool emptiedByUs);

  private:
    void Retry(const std::function<void()>& step, const std::function<bool(std::uint32_t)>& passes,
               std::uint64_t limit);
    void Pause(std::uint64_t milliseconds);
    [[nodiscard]] bool IsReadOnly(std::wstring_view path);

    System& system_;
    const CancelToken& cancel_;
    bool waitedInVain_ = false;
};

}  // namespace vw
