#pragma once

#include <string>
#include <string_view>

namespace vw {

/// `folder` & "\" & `name`, for any way in which a folder is typed: with or without a final
/// separator, a drive root.
[[nodiscard]] std::wstring JoinPath(std::wstring_view folder, std::wstring_view name);

}  // namespace vw

namespace vw::MFileDosShell {

/// The last component of a path: C:\A\B\ and C:\A\B give B, C:\ gives C:.
[[nodiscard]] std::wstring CFileName(std::wstring_view path);

/// The parent folder without a final "\": C:\A\B\ gives C:\A; empty for a path without "\".
[[nodiscard]] std::wstring CFileLocation(std::wstring_view path);

/// The folder that a destination names: for "X:" the root of the drive, not the current folder
/// there; for any other text that text.
[[nodiscard]] std::wstring DestinationFolder(std::wstring_view destination);

/// From the last "." of the whole path to its end, dot included; empty without a dot. The whole
/// path on purpose: copies of an item below a dotted folder are named by this rule.
[[nodiscard]] std::wstring CFileExt(std::wstring_view path);

/// The last component without its final extension: C:\A\f.tar.gz gives f.tar.
[[nodiscard]] std::wstring CFileFirstName(std::wstring_view path);

/// A path with a final "\": lists distinguish folder items from files by it.
[[nodiscard]] std::wstring WithSeparator(std::wstring_view path);

/// Takes off the enclosing double quotes of a text longer than two characters, in place.
std::wstring& QuoteRmove(std::wstring& text);

/// Encloses a text in double quotes unless it already begins with one, in place.
std::wstring& Quote(std::wstring& text);

}  // namespace vw::MFileDosShell
