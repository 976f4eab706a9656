#pragma once

#include <vector>

namespace vw {

/// When a column gets less than it would like.
enum class GivesWay { Never, First, Last };

/// What a column would like and what it can do with.
struct ColumnNeed {
    int ideal = 0;
    int least = 0;  ///< of one that gives way
    GivesWay givesWay = GivesWay::Never;
};

/// The widths of columns in a list of this width. Where there is too little room, the columns that
/// give way first lose in proportion to what they can spare, then those that do so last. What is
/// lacking even then is left to the scroll bar: the edge of the list then falls between two
/// columns, where one that gives way first is seen.
[[nodiscard]] std::vector<int> FittedWidths(const std::vector<ColumnNeed>& needs, int room);

}  // namespace vw
