#pragma once

#include <string>
#include <string_view>

namespace vw {

/// Whether a name, date or size reads from right to left: its first letter decides, so that
/// "Report (1)" keeps its brackets in an Arabic window, and an Arabic name its own in an English
/// one.
[[nodiscard]] bool NameReadsFromRight(std::wstring_view name) noexcept;

/// Whether a sentence of an Arabic window does: any Arabic letter in it decides, also when it
/// begins with a Latin name.
[[nodiscard]] bool PhraseReadsFromRight(std::wstring_view phrase) noexcept;

/// Whether a text is the path of a file or folder: it begins with a drive or a server.
[[nodiscard]] bool IsPathLike(std::wstring_view text) noexcept;

// Invisible marks that give a text its direction. They are for what is shown only: a text with
// marks must never be stored, logged, compared or handed to the file system.

/// A path, or a name without right-to-left letters, as a text that reads from right to left has to
/// hold it: its parts then follow from left to right. Returns it unchanged when they do so without
/// marks.
[[nodiscard]] std::wstring MarkPath(std::wstring_view path);

/// A name inside a text of either direction: it keeps the order of its own first letter, as
/// NameReadsFromRight says.
[[nodiscard]] std::wstring MarkName(std::wstring_view name);

/// The text of a right-to-left message box: each line that is a path, that has no right-to-left
/// letters, or that is a name which reads from left to right, is marked as MarkPath does. A line
/// behind one that ends with a colon is such a name. All other lines stay as they are.
[[nodiscard]] std::wstring MarkLines(std::wstring_view text);

/// Lines of a text that reads from left to right, such as a report or an error: the folders of a
/// path keep their order, and a sentence with right-to-left letters is marked as MarkSentence does.
/// All other lines stay as they are.
[[nodiscard]] std::wstring MarkReport(std::wstring_view lines);

/// The lines of a tool tip, each a path, a name or a sentence, wherever it is shown. Names and
/// sentences keep the order of their first letter.
[[nodiscard]] std::wstring MarkTip(std::wstring_view lines);

/// The text without such marks, for what leaves the window: a path has to be the path again.
[[nodiscard]] std::wstring WithoutMarks(std::wstring_view text);

/// A sentence that reads from right to left wherever it is shown, also when a box breaks it.
/// Returns it unchanged when it has no right-to-left letters, or nothing else than such letters and
/// blanks.
[[nodiscard]] std::wstring MarkSentence(std::wstring_view sentence);

}  // namespace vw
