#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace vw {

/// Whether a text holds letters that are written from right to left.
[[nodiscard]] bool HasRightToLeft(std::wstring_view text) noexcept;

/// A path as it is drawn: folders follow each other from left to right, also when names are Arabic
/// or the window reads from right to left. `rightToLeft` tells the direction of the window. The
/// text carries invisible marks; it is for the screen only.
[[nodiscard]] std::wstring PathForDisplay(std::wstring_view path, bool rightToLeft);

/// Any other text as it is drawn in a window that reads from right to left: Latin names, dates and
/// sizes keep their own direction, so that "Report (1)" does not come out as "(Report (1".
[[nodiscard]] std::wstring TextForDisplay(std::wstring_view text, bool rightToLeft);

/// Whether a text is the path of a file or folder: it begins with a drive or a server.
[[nodiscard]] bool LooksLikePath(std::wstring_view text) noexcept;

/// How wide a text is, in any unit.
using Measure = std::function<int(std::wstring_view text)>;

/// A text that is at most `room` wide, with "…" for what was left out: of a path the folders before
/// the name, of anything else the end. A text that fits stays as it is; where not even the name of
/// a path fits, its end goes too.
[[nodiscard]] std::wstring Shortened(std::wstring_view text, int room, const Measure& widthOf);

}  // namespace vw
