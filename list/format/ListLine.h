#pragma once

#include <string>
#include <string_view>

namespace vw {

/// Keys of the two lines of a backup list that are no items; also names of settings.
inline constexpr std::wstring_view kBackupToKey = L"BackupTo";
inline constexpr std::wstring_view kBackagesKey = L"Backages";

enum class ListLineKind { Empty, Destination, CopiesCount, Item };

/// What one field of a backup list says. `value` is the text after the key, its colon and one more
/// character, whatever that is ("BackupTo:C:\X" gives ":\X"); the whole field for an item.
struct ListLine {
    ListLineKind kind = ListLineKind::Empty;
    std::wstring value;
};

/// Tells the kind of a field; the keys are recognised in any letter case.
[[nodiscard]] ListLine ReadListLine(std::wstring_view field);

/// How a backup takes an item, given by the last character of its path.
enum class ItemKind {
    File,    ///< one file
    Folder,  ///< "\": a folder with all its subfolders
    Rule,    ///< "*": the files directly in a folder
};

[[nodiscard]] ItemKind ItemKindOf(std::wstring_view path) noexcept;

/// A destination as the main window and restoring take it: a value shorter than three characters
/// (a bare drive such as "D:") means its "\Backup" folder.
[[nodiscard]] std::wstring CompleteDestination(std::wstring_view value);

}  // namespace vw
