#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/EnginePart.h"
#include "platform/RuntimeError.h"

namespace vw {

struct FolderListing;
class TargetState;

/// Copies a stored copy back.
class CopyRestorer final : private EnginePart {
  public:
    explicit CopyRestorer(const EngineContext& context) : EnginePart(context) {}

    /// Copies it to the exact path `target`. Files that are not as `before` has them are not
    /// replaced, nor is anything where nothing was: kAlreadyExists. A file of a folder that cannot
    /// be restored is reported; the first such error is thrown at the end.
    void Restore(std::wstring_view copyPath, const std::wstring& target, const TargetState& before);

  private:
    struct FolderRestore;
    struct FilePlace;
    struct NewFolder;

    void RestoreFolder(FolderRestore& restore);
    bool IsThere(const FolderRestore& restore, const std::wstring& folder);
    bool RestoreWhole(FolderRestore& restore, const std::wstring& folder,
                      const FolderListing& source);
    void FillFolder(NewFolder& whole, const std::wstring& below, const FolderListing& source);
    void RestoreInto(FolderRestore& restore, const std::wstring& folder,
                     const FolderListing& source);
    void CheckThatItMoved(const FilePlace& place);
    bool IsReplaceable(const FilePlace& place, const TargetState& before);
    void CopyAside(FilePlace& place);
    void RestoreFile(FilePlace& place, const TargetState& before, std::string& usualRights);
};

}  // namespace vw
