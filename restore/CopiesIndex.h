#pragma once

#include <string>
#include <string_view>

namespace vw {

/// The label of a copy: N01 to N20 for the copies that rotate, U01 and up for the safety copies
/// that a restore makes (21 and up). N00 for a name without a number.
[[nodiscard]] std::wstring CopyLabel(int copyNumber);

/// Whether a label is that of a safety copy.
[[nodiscard]] bool IsSafetyLabel(std::wstring_view label) noexcept;

/// The copy number of a label: its last two characters, and 20 more behind a "U".
[[nodiscard]] int NumberOfLabel(std::wstring_view label);

/// The lowest and the highest number of a safety copy: U01 and U79. More digits could not be read
/// back from a name.
inline constexpr int kLowestSafetyNumber = 21;
inline constexpr int kHighestSafetyNumber = 99;

/// The number that the next safety copy gets when `highest` is the highest in use; it may be one
/// more than kHighestSafetyNumber.
[[nodiscard]] int NextSafetyNumber(int highest) noexcept;

/// Whether an entry of the copy folder is named like a copy and is no comment file.
[[nodiscard]] bool IsCopyName(std::wstring_view name);

/// Whether an entry of the copy folder is named like the comment file of a copy.
[[nodiscard]] bool IsCommentName(std::wstring_view name);

/// The folder that the copies lie in, from the path of one of them: that of the component with the
/// marks, also when the item's own copy lies deeper.
[[nodiscard]] std::wstring CopyFolderOf(std::wstring_view copyPath);

/// Whether a name is that of some copy of one item: first name, "«", the location number, any two
/// characters, "»" and the extension, in any letter case. Everything else counts as it stands, also
/// characters that are wildcards elsewhere.
class CopiesOfItem {
  public:
    CopiesOfItem(std::wstring_view itemName, int location);

    [[nodiscard]] bool Contains(std::wstring_view name) const;

  private:
    std::wstring begin_;
    std::wstring end_;
};

}  // namespace vw
