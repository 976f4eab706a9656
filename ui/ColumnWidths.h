#pragma once

#include <vector>

namespace vw {

/// When a column gets less than it would like.
enum class Shrinks { Never, First, Last };

/// What a column would like and what it can do with.
struct ColumnNeed {
    int ideal = 0;
    int least = 0;     ///< of one that shrinks
    int readable = 0;  ///< of one that shrinks first: others shrink or hide for this width
    Shrinks shrinks = Shrinks::Never;
    bool mayHide = false;  ///< at the end of a list: may be left to the scroll bar
};

/// The widths of columns in a list of this width. Where there is too little room, the columns that
/// shrink first do so in proportion to what they can spare, down to where they are readable; then
/// columns at the end that may hide are left to the scroll bar; then those that shrink last do so,
/// and the first ones down to their least. Columns that do not fit even then are left to the scroll
/// bar as well. The edge of the list falls between two columns, where one that shrinks first is
/// seen.
[[nodiscard]] std::vector<int> FittedWidths(const std::vector<ColumnNeed>& needs, int room);

}  // namespace vw
