#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Date.h"
#include "platform/FileSystem.h"
#include "platform/System.h"

namespace vw {

/// What the comment file of a copy says.
struct CopyComment {
    std::optional<Date> date;  ///< newest date of the item; nothing when the comment has none
    std::wstring place;        ///< folder that the copy was made from; empty when it is not named
    bool isIncomplete = false;
};

/// What becomes of a date that is none: error 5, or a comment without a date.
enum class DamagedDate { Raise, LeaveOut };

/// What `read` gives of a comment file; nothing when there is none. Most copies have a comment, so
/// the disk is asked whether there is one only when the reading fails. Throws the error of `read`
/// when there is one.
[[nodiscard]] std::optional<std::string> ReadIfThere(FileSystem& files, const std::wstring& file,
                                                     const std::function<std::string()>& read);

/// Reads the comment of a copy; nothing when the copy has none. Throws the error of the disk.
[[nodiscard]] std::optional<CopyComment> ReadCopyComment(System& system, std::wstring_view copyPath,
                                                         DamagedDate damaged = DamagedDate::Raise);

}  // namespace vw
