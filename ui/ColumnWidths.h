#pragma once

#include <vector>

namespace vw {

/// When a column gets less than it would like.
enum class Shrinks { Never, First, Last };

/// What a column would like and what it can do with.
struct ColumnNeed {
    int ideal = 0;
    int least = 0;     ///< of one that shrinks
    int readable = 0;  ///< of one that shrinks first: columns that may hide do so for this width
    Shrinks shrinks = Shrinks::Never;
    bool mayHide = false;  ///< at the end of a list: may be left to the scroll bar
};

/// The widths of columns in a list of this width. Where there is too little room, the columns that
/// shrink first do so in proportion to what they can spare, then those that shrink last. Columns at
/// the end that may hide are left to the scroll bar while there is too little room for the others
/// or the first column that shrinks is narrower than readable. What is lacking even then is left to
/// the scroll bar, too. The edge of the list falls between two columns, where one that shrinks
/// first is seen.
[[nodiscard]] std::vector<int> FittedWidths(const std::vector<ColumnNeed>& needs, int room);

}  // namespace vw
