#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/FileSystem.h"

namespace vw {

/// What a walk through a tree is for.
struct TreeVisitor {
    /// Sees each file.
    std::function<void(const FolderEntry&)> file;
    /// Asked for each sub-folder whether the walk enters it; empty to enter all.
    std::function<bool(const std::wstring& path)> enters;
    /// Called after each entry.
    std::function<void()> yield;
    /// Called after the last entry of each folder; empty to do without.
    std::function<void()> left;
    /// Whether a folder that cannot be read ends the walk with its error; otherwise it is left out.
    bool raisesUnreadable = false;
};

/// Visits the files of `folder`, then those of its subfolders; the order is otherwise unspecified.
/// Lists each folder once. Links to folders below `folder` are not entered (`folder` itself may be
/// one), files that hold no data are left out. Folders that cannot be read are left out, or throw.
/// Entries of the program's own (see IsOwnEntry) are left out.
void WalkTree(FileSystem& files, std::wstring_view folder, const TreeVisitor& visitor);

}  // namespace vw
