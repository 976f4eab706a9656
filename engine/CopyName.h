#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vw {

/// Pattern of a copy's name as the copies browser and "/R" recognise it.
inline constexpr std::wstring_view kCopyNamePattern = L"*\u00AB????\u00BB*";

/// The folder of a drive that the window keeps copies in.
inline constexpr std::wstring_view kBackupFolder = L"\\Backup";

/// The original location of an item whose folder is unknown or gone.
inline constexpr std::wstring_view kUnknownLocation = L"??";

/// Copy number that means all of them: the name becomes a pattern with "??".
inline constexpr int kAnyCopyNumber = -1;

/// The highest number of the copies that a run looks for where it does not know their count: that
/// of two digits.
inline constexpr int kHighestCopyNumber = 99;

/// The full path of a copy: destination, "\", first name, "«", location number and copy number
/// with at least two digits each, "»", extension. Throws error 1000 for copy number 0.
[[nodiscard]] std::wstring CFilePackageName(std::wstring_view itemPath, int copyNumber,
                                            int locationNumber, std::wstring_view destination);

/// The copy number in a copy's name; 0 when there is none. Never fails.
[[nodiscard]] int CFileBackNumber(std::wstring_view copyName) noexcept;

/// The location number in a copy's name, the two characters as they are; empty when there is
/// none. Never fails.
[[nodiscard]] std::wstring CFileSP(std::wstring_view copyName);

/// The name of the item that a copy was made from: Report«0102».doc gives Report.doc; empty for a
/// name without "«". Works on the whole text passed.
[[nodiscard]] std::wstring CFileOrigin(std::wstring_view copyName);

/// Where the mark of a copy lies in its name.
struct CopyMark {
    std::size_t open = 0;   ///< index of its "«"
    std::size_t close = 0;  ///< index of its "»"
};

/// The last "«", four digits, "»" in a name; nothing when there is none. An item's own name may
/// have marks too: its copies are marked behind them.
[[nodiscard]] std::optional<CopyMark> FindCopyMark(std::wstring_view name) noexcept;

/// A copy's name taken apart.
struct CopyNameParts {
    std::wstring origin;  ///< name of the item
    int location = 0;
    int number = 0;  ///< 0 when it has none
};

/// Takes the name of an entry of the copy folder apart by the mark of FindCopyMark; a name without
/// one as CFileOrigin, CFileSP and CFileBackNumber read it. Never fails.
[[nodiscard]] CopyNameParts ParseCopyName(std::wstring_view name);

/// The name of the item that a stored copy was made from, from the copy's whole path. The copy of
/// an item below a folder with a point in its name has the item's name already.
[[nodiscard]] std::wstring ItemNameOf(std::wstring_view copyPath);

/// Whether an entry of the copy folder is named like a copy and is no comment file.
[[nodiscard]] bool IsCopyName(std::wstring_view name);

/// Whether an entry of the copy folder is named like the comment file of a copy.
[[nodiscard]] bool IsCommentName(std::wstring_view name);

/// Whether a name is that of some copy of one item: first name, "«", the location number, any two
/// characters, "»" and the extension, in any letter case. All other characters are taken literally,
/// also characters that are wildcards elsewhere.
class CopiesOfItem {
  public:
    CopiesOfItem(std::wstring_view itemName, int location);

    [[nodiscard]] bool Contains(std::wstring_view name) const;

  private:
    std::wstring begin_;
    std::wstring end_;
};

}  // namespace vw
