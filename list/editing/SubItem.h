#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vw {

class ListView;

/// The text of a row in the column with this key. `index` counts from 1; without it the selected
/// row is meant. Empty when there is no such row.
[[nodiscard]] std::wstring SubItem(const ListView& list, std::wstring_view columnKey,
                                   std::optional<int> index = std::nullopt);

}  // namespace vw
