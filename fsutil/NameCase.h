#pragma once

#include <string>
#include <string_view>

#include "platform/System.h"

namespace vw {

/// `text` in lower case by the system's language-independent table.
[[nodiscard]] std::wstring LowerCase(std::wstring_view text);

}  // namespace vw

namespace vw::MFileDosShell {

/// Gives the folder its lower-case name, by way of the same name with "@". The folders above it
/// keep theirs. A failure is passed over and leaves the folder with its old name.
void FolderNameLower(System& system, std::wstring_view folder);

/// Gives the file its lower-case name, by way of that name with "@". A failure is passed over and
/// leaves the file with its old name. `path` ends up in lower case, as a whole, in any case.
void FileNameLower(System& system, std::wstring& path);

/// Gives the folder and everything below it lower-case names. Links are renamed, not entered.
/// Messages are processed after each file and sub-folder.
void TreeNamesLower(System& system, std::wstring_view folder);

}  // namespace vw::MFileDosShell
