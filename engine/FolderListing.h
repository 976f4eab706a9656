#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Date.h"
#include "platform/FileSystem.h"

namespace vw {

/// A file of a folder, as its listing describes it.
struct ListedFile {
    std::wstring name;
    std::uint64_t size = 0;
    Date lastWrite = kNoDate;
    bool copied = false;
};

/// What a folder holds, for a backup or a restore.
struct FolderListing {
    std::vector<ListedFile> files;
    std::vector<std::wstring> folders;
    std::vector<std::wstring> links;  ///< what FileInfo::isLink marks: a backup leaves it out
    bool holdsCopyInTheMaking = false;
};

/// Lists a folder once, without the entries of the program's own (see IsOwnEntry). Throws what
/// FileSystem::List throws.
/// `copyInTheMaking` is the name of the entry that the folder is being copied to.
[[nodiscard]] FolderListing ListFolder(FileSystem& files, std::wstring_view folder,
                                       std::wstring_view copyInTheMaking = {});

}  // namespace vw
