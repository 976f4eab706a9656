#pragma once

#include <string>
#include <string_view>

#include "platform/FileSystem.h"

namespace vw {

/// The folder whose copies the lists show. The same path may mean another folder later: of another
/// stick, or of a share that was mapped anew.
class ShownFolder {
  public:
    /// Takes the folder at a path. Throws the error of the disk.
    void Take(FileSystem& files, std::wstring_view path);

    /// No folder is shown.
    void Clear();

    /// Empty when no folder is shown.
    [[nodiscard]] const std::wstring& Path() const noexcept { return path_; }

    /// Whether the path still means the folder that was taken. False when there is none any more;
    /// throws when the disk cannot answer now.
    [[nodiscard]] bool IsStillThere(FileSystem& files) const;

  private:
    std::wstring path_;
    FolderIdentity identity_;
};

}  // namespace vw
