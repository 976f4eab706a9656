#pragma once

#include <array>
#include <string>
#include <string_view>

namespace vw {

/// The recently opened lists, most recent first; empty texts where there are fewer. One more than
/// the menu shows, so that the fourth comes back when a shown one is opened again.
using RecentPaths = std::array<std::wstring, 4>;

/// Position (1 to 4) of a path in the list without regard to case, 0 when it is not there.
[[nodiscard]] int RecentPosition(const RecentPaths& paths, std::wstring_view path);

/// The list after `path` was opened: it comes first, those above it move down by one,
/// those below stay. A new one pushes the fourth out.
[[nodiscard]] RecentPaths WithRecentPath(const RecentPaths& paths, std::wstring_view path);

}  // namespace vw
