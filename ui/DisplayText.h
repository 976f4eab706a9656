#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vw {

/// The pieces of a path, each with the "\" behind it. Drawn one after the other from left to right,
/// folders keep their order also when their names are Arabic.
[[nodiscard]] std::vector<std::wstring_view> PathPieces(std::wstring_view path);

/// How wide a text is, in any unit.
using Measure = std::function<int(std::wstring_view text)>;

/// A text that is at most `room` wide, with "…" for what was left out: of a path the folders before
/// the name, of anything else the end. A text that fits stays as it is; where not even the name of
/// a path fits, the name loses its end. Folders with right-to-left names are left out as a whole.
[[nodiscard]] std::wstring Shorten(std::wstring_view text, int room, const Measure& widthOf);

/// Whether a text is a path, also one that was shortened to its name.
[[nodiscard]] bool IsShownAsPath(std::wstring_view text) noexcept;

/// The lines that a text takes in a space `room` wide: its own, and those that its words wrap into.
/// A word wider than the space has a line of its own. Blanks where a line is broken are left out.
[[nodiscard]] std::vector<std::wstring> Wrapped(std::wstring_view text, int room,
                                                const Measure& widthOf);

}  // namespace vw
