#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "platform/Date.h"
#include "platform/FileSystem.h"

namespace vw {

class MessagePump;

/// What was at the target of a restore when the user was asked about it and a copy kept it. A
/// restore replaces these files only, and only while they are as they were.
class TargetState {
  public:
    /// Nothing was there.
    TargetState() = default;

    /// Reads what is at a path; of a folder, its whole tree without links to folders. Throws the
    /// error of any part that cannot be read.
    TargetState(FileSystem& files, MessagePump& pump, std::wstring_view path);

    /// Whether anything was there.
    [[nodiscard]] bool Exists() const noexcept { return exists_; }

    /// Whether a file was at a place below the target (empty: at the target itself).
    [[nodiscard]] bool Contains(std::wstring_view below) const;

    /// Whether a file at a place below the target (empty: at the target itself) is the
    /// one that was there.
    [[nodiscard]] bool Holds(std::wstring_view below, const FileInfo& file) const;

  private:
    struct Known {
        std::uint64_t size = 0;
        Date lastWrite = kNoDate;
    };

    bool exists_ = false;
    std::map<std::wstring, Known> files_;  ///< by their places below the target, in capitals
};

}  // namespace vw
