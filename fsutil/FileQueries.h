#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "fsutil/CopyDates.h"
#include "fsutil/NewestDate.h"
#include "platform/Date.h"
#include "platform/FileSystem.h"
#include "platform/System.h"

namespace vw::MFileDosShell {

/// Whether a file or folder of that name exists.
[[nodiscard]] bool PathExist(System& system, std::wstring_view path);

/// Deletes the folder with all its contents, or the file, read-only ones too; nothing happens when
/// neither exists. Links below are removed, never what they show. Stops at the first failure.
void DeletePath(System& system, std::wstring_view path);

/// Bytes of a file; for a folder the files directly in it, or its whole tree; -1 for neither.
/// What cannot be read is left out.
[[nodiscard]] std::int64_t PathSize(System& system, std::wstring_view path, bool wholeTree = false);

/// Size as display text: the file, or the folder's whole tree; empty for neither.
[[nodiscard]] std::wstring CPathSize(System& system, std::wstring_view path);

/// Whether the drive that holds the folder is a fixed disk.
[[nodiscard]] bool FolderOnFixedDrive(System& system, std::wstring_view folder);

/// The folder for temporary files for an empty name; else its sub-folder `name`, made when it is
/// missing and, with `startEmpty`, emptied first.
[[nodiscard]] std::wstring TempPath(System& system, std::wstring_view name, bool startEmpty);

/// Free bytes of the folder's drive. Throws 1004 to the caller when they are fewer than needed.
double FolderFreeSpace(System& system, std::wstring_view folder, double bytesNeeded);

/// The last-modified date that decides whether an item changed: the file's own; for a folder the
/// newest of the files in its tree (kEmptyFolderDate without any); for a path that names a copy
/// the date stored with it; kMissingDate for nothing.
[[nodiscard]] Date PathDate(System& system, CopyDates& copyDates, std::wstring_view path);

/// What the lists show of an item.
struct SizeAndDate {
    bool isFolder = false;
    std::uint64_t size = 0;  ///< bytes; of a folder its whole tree
    Date date = kNoDate;     ///< that of PathDate
    /// False when the disk could not be asked: the item may or may not exist.
    bool isKnown = true;
};

/// Size and date of an item from one walk through its tree; nothing when it does not exist.
[[nodiscard]] std::optional<SizeAndDate> PathSizeAndDate(System& system, CopyDates& copyDates,
                                                         std::wstring_view path);

/// A size as display text, in the user's number format.
[[nodiscard]] std::wstring CSize(std::uint64_t bytes);

/// Like PathDate, but throws instead of reporting errors, also when a folder of the tree cannot be
/// read.
[[nodiscard]] NewestDates NewestDatesOf(System& system, CopyDates& copyDates,
                                        std::wstring_view path);

/// The same by the rules of the date's own year alone.
[[nodiscard]] Date NewestDateOf(System& system, CopyDates& copyDates, std::wstring_view path);

/// What a backup needs of an item for its decision.
struct ItemStats : NewestDates {
    struct Cloud {
        std::uint64_t files = 0;
        std::uint64_t bytes = 0;
    };

    std::int64_t bytes = 0;       ///< that of PathSize: of a folder the files directly in it
    std::uint64_t files = 0;      ///< the files that `bytes` belong to
    std::uint64_t treeFiles = 0;  ///< of a folder those of its whole tree
    std::uint64_t treeBytes = 0;

    /// Files whose bytes have to be downloaded, and whether any file is encrypted: directly in the
    /// folder, and in its whole tree.
    Cloud cloud;
    Cloud treeCloud;
    bool hasEncrypted = false;
    bool treeHasEncrypted = false;
};

/// Surveys an item, whose `facts` were just read, in one walk. A backup must not go on without
/// the date: throws what goes wrong with it.
[[nodiscard]] ItemStats GetItemStats(System& system, CopyDates& copyDates, std::wstring_view path,
                                     const std::optional<FileInfo>& facts);

}  // namespace vw::MFileDosShell
