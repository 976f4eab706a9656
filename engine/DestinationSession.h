#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "engine/Destination.h"
#include "engine/EnginePart.h"
#include "fsutil/PathText.h"

namespace vw {

enum class Entrance { Entered, Cancelled, Refused };

/// The destination that the engine works in, locked against other runs while a Visit lives.
class DestinationSession final : private EnginePart {
  public:
    explicit DestinationSession(const EngineContext& context) : EnginePart(context) {}

    /// Leaves the destination, which gives its lock back, when the outermost visit ends.
    class Visit {
      public:
        explicit Visit(DestinationSession& session);
        ~Visit();
        Visit(const Visit&) = delete;
        Visit& operator=(const Visit&) = delete;

      private:
        DestinationSession& session_;
        bool isOutermost_;
    };

    /// While it lives, copies go to a folder that the list does not name.
    class TargetOverride {
      public:
        TargetOverride(DestinationSession& session, std::wstring_view folder);
        ~TargetOverride();
        TargetOverride(const TargetOverride&) = delete;
        TargetOverride& operator=(const TargetOverride&) = delete;

      private:
        DestinationSession& session_;
        std::wstring before_;
    };

    /// A new run tries a destination again that an earlier one could not enter, and reports once
    /// more what is unusual about it.
    void StartRun();
    /// Tries a destination again that could not be entered.
    void ForgetRefusal() { refusedDestination_.clear(); }

    /// Whether work in a destination is going on.
    [[nodiscard]] bool IsVisiting() const noexcept { return isVisiting_; }

    /// The destination in use, as the list names it.
    [[nodiscard]] const std::wstring& Target() const noexcept {
        return override_.empty() ? state_.BackupTo : override_;
    }
    /// The same as a folder of the disk.
    [[nodiscard]] std::wstring Folder() const { return MFileDosShell::DestinationFolder(Target()); }

    /// Reports a missing destination folder to the user and ends the program then.
    void RequireFolder();

    /// Enters the destination in use; waits for another run there.
    [[nodiscard]] Entrance Enter();

    [[nodiscard]] bool IsEntered() const noexcept { return destination_ != nullptr; }
    /// The destination that was entered.
    [[nodiscard]] Destination* operator->() const noexcept { return destination_.get(); }

    /// Whether the destination contains something at `copyPath`.
    [[nodiscard]] bool Contains(std::wstring_view copyPath);

    /// The same as far as this run knows, from its listing and its own changes. Serves the question
    /// whether an item changed, which the next run asks again; what is renamed or removed is
    /// preceded by Contains.
    [[nodiscard]] bool IsListed(std::wstring_view copyPath);

    /// Renames an entry of the destination. Waits while others have it open.
    void MoveEntry(std::wstring_view from, std::wstring_view to,
                   std::uint64_t patience = Patience::kUsual);

  private:
    [[nodiscard]] Entrance Wait();

    std::wstring override_;  ///< where copies go instead of the destination of the list
    bool isVisiting_ = false;
    std::unique_ptr<Destination> destination_;
    std::wstring refusedDestination_;
    std::wstring reportedUnlocked_;  ///< the destination without a lock file reported last
};

}  // namespace vw
