#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/CopyComment.h"
#include "platform/FileSystem.h"
#include "restore/CopyGroup.h"

namespace vw {

class Console;

/// The comment of a copy; nothing when it has none. A damaged date is no date.
[[nodiscard]] std::optional<CopyComment> CommentOf(Console& console, std::wstring_view copyPath);

/// An entry directly in a destination.
struct DestinationEntry : FileInfo {
    std::wstring name;
};

/// What lies in a destination, from one listing that locks and changes nothing.
class DestinationView {
  public:
    /// Throws 76 when there is no such folder.
    DestinationView(Console& console, std::wstring_view folder);

    [[nodiscard]] const std::wstring& Folder() const noexcept { return folder_; }
    [[nodiscard]] const std::vector<DestinationEntry>& Entries() const noexcept { return entries_; }

    /// Its copies by item, in order of their names.
    [[nodiscard]] std::vector<CopyGroup> Series() const;

    /// Whether another listing would show something else by now.
    [[nodiscard]] bool HasChanged() const;

  private:
    [[nodiscard]] std::vector<DestinationEntry> Listed() const;

    Console& console_;
    std::wstring folder_;
    std::vector<DestinationEntry> entries_;
};

/// A copy to be shown: one of a series, or of an item below a folder with a point in its name.
struct ShownCopy {
    std::wstring item;  ///< the name of what it was made from
    int location = 0;
    int number = 0;
    std::wstring path;
    std::wstring commentOf;  ///< the copy of the item whose comment names its place; may be empty
};

/// The folder that a copy lies in as one of its copies: of an item below a folder with a point in
/// its name, the one around that folder's own copies. Nothing when no part of the path is named
/// like a copy.
[[nodiscard]] std::optional<std::wstring> StoreOf(std::wstring_view copyPath);

/// Every copy in a destination, in order of their items and numbers.
[[nodiscard]] std::vector<ShownCopy> CopiesIn(Console& console, const DestinationView& view);

}  // namespace vw
