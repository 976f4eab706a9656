#pragma once

#include <string_view>

namespace vw {

/// Whether a destination takes no copy of an item: one lies in the other, or the path of one begins
/// with that of the other. Both act as wildcard patterns. `path` is without the "\*" of a rule.
[[nodiscard]] bool OverlapsDestination(std::wstring_view path, std::wstring_view destination);

/// Whether no disk takes a copy of this path: its name, or that of its comment, is too long or
/// holds a character that names cannot have.
[[nodiscard]] bool HasImpossibleName(std::wstring_view copyPath);

}  // namespace vw
