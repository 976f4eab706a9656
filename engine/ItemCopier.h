#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/DestinationSession.h"
#include "engine/EnginePart.h"

namespace vw {

struct FolderListing;

/// What a backup has copied of its item.
struct CopyResult {
    std::wstring itemPath;
    bool isFolder = false;
    std::size_t copied = 0;
    std::size_t failed = 0;
    bool aborted = false;              ///< the disk is full or a drive is gone: no copy comes of it
    bool cancelled = false;            ///< a cancel left something out
    bool containsDestination = false;  ///< the copy would lie in what is copied
};

/// Copies one item and checks what it has copied.
class ItemCopier final : private EnginePart {
  public:
    ItemCopier(const EngineContext& context, DestinationSession& session);

    /// Copies a folder to the entry `copy`, without its subfolders for a rule. Errors are reported.
    void CopyFolder(const std::wstring& copy, const std::wstring& item, bool subFolders,
                    CopyResult& result);

    /// Copies one file. An error is reported.
    void BackupFile(std::wstring_view destination, std::wstring_view source, std::uint64_t size,
                    CopyResult& result);

    /// Compares the copy of a file with its source. Another length makes it a failed copy.
    void CheckFileCopy(const std::wstring& copy, const std::wstring& source,
                       std::uint64_t sourceSize, CopyResult& result);

    /// Whether the copying has to end before the next file or folder.
    [[nodiscard]] bool MustStop(CopyResult& result) const;

    /// Performs one step, which copies `size` bytes. False after an error, which has been reported.
    bool CopyStep(std::wstring_view procedure, std::uint64_t size, CopyResult& result,
                  const std::function<void()>& step);

  private:
    /// A folder whose subfolders are being copied.
    struct OpenFolder {
        std::wstring from;
        std::wstring to{};
        std::vector<std::wstring> folders{};
        std::size_t next = 0;
    };

    [[nodiscard]] bool CopyFiles(OpenFolder& level, const std::wstring& ownName,
                                 CopyResult& result);
    void AbortIfGone(CopyResult& result);
    [[nodiscard]] bool IsTooLargeForDrive(std::uint64_t size);
    void CheckFolderCopy(const std::wstring& copyFolder, const std::wstring& folder,
                         const FolderListing& source, CopyResult& result);

    DestinationSession& session_;
};

}  // namespace vw
