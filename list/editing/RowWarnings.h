#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Date.h"
#include "platform/Language.h"

namespace vw {

/// Why an item will not be backed up the way its owner thinks.
enum class RowWarning {
    None,
    ReadAsTwo,         ///< a comma or a leading quotation mark: the list file means several items
    DriveRoot,         ///< whole drives are refused
    Overlaps,          ///< it and the destination overlap, or their paths begin alike: refused
    ImpossibleName,    ///< no disk takes the name of its copy
    SharedSeries,      ///< another row makes copies of the same name
    ApostropheFolder,  ///< a single file whose folder the comments of its copies cannot name
    FutureDate,        ///< its newest date lies in the future
};

/// What a row shows of its item.
struct RowFacts {
    std::wstring path;
    std::optional<Date> newest;  ///< when it is known
};

/// One warning for each row, the gravest that fits, in the order of the rows.
[[nodiscard]] std::vector<RowWarning> WarningsOf(const std::vector<RowFacts>& rows,
                                                 std::wstring_view destination, Date now);

/// A newest date that is later than `now`, by more than clocks of two computers differ.
[[nodiscard]] bool IsInFuture(Date newest, Date now) noexcept;

/// An item of a list with its warning.
struct ItemWarning {
    std::wstring path;
    RowWarning warning = RowWarning::None;
};

/// The warnings of a list file, which names no dates, in the order of its items. `destination` is
/// where items go before the list names another one. `exists` finds out whether a line with a comma
/// is the path of something that is there: the list then reads one item as several.
[[nodiscard]] std::vector<ItemWarning> WarningsOfList(
    std::wstring_view text, std::wstring_view destination,
    const std::function<bool(const std::wstring&)>& exists);

/// What a warning says to the user; empty for None.
[[nodiscard]] std::wstring_view WarningText(RowWarning warning, Language language);

}  // namespace vw
