#pragma once

#include <string_view>

namespace vw {

/// Whether `text` matches `pattern` as a whole, without regard to case. "?" matches any one
/// character, "*" for any run of them (also none), "#" for one digit 0-9, "[list]" for one of the
/// characters or ranges listed, "[!list]" for one that is not.
///
/// In a list "-" is itself at the beginning and at the end, "[]" matches nothing at all, "[!]"
/// for "!". "[" without its "]" is itself: paths are used as patterns and must never fail.
/// The time grows at the most with the length of the text times that of the pattern.
[[nodiscard]] bool MatchesWildcard(std::wstring_view text, std::wstring_view pattern);

}  // namespace vw
