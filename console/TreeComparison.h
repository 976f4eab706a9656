#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"

namespace vw {

class RuntimeError;

/// An entry of one of two compared folders.
struct ComparedEntry : FileInfo {
    std::wstring name;
};

/// Two entries of one name.
struct ComparedPair {
    ComparedEntry first;
    ComparedEntry second;
};

/// What two folders of one place in their trees hold. Folders that both have, and links, are left
/// out; a folder that only one of them has is listed by its files, or by itself when it holds
/// none.
struct ComparedFolder {
    std::wstring below;  ///< path below the roots with a final "\"; empty for the roots
    std::vector<ComparedEntry> onlyFirst;
    std::vector<ComparedEntry> onlySecond;
    std::vector<ComparedPair> both;
};

struct ComparisonVisitor {
    std::function<void(const ComparedFolder&)> folder;
    /// Gets the error of a folder that could not be listed. It is left out, and the rest is
    /// compared. What `failed` throws ends the comparison.
    std::function<void(const RuntimeError&)> failed;
    /// Called for every entry.
    std::function<void()> yield;
};

/// Compares two folders, with all that is below them when `subFolders`. Names are compared without
/// regard to case.
void CompareTrees(FileSystem& files, std::wstring_view first, std::wstring_view second,
                  bool subFolders, const ComparisonVisitor& visitor);

}  // namespace vw
