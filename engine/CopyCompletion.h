#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/CommentStore.h"
#include "engine/CopySeries.h"
#include "engine/DestinationSession.h"
#include "engine/EnginePart.h"
#include "engine/ItemCopier.h"
#include "engine/PendingCopy.h"

namespace vw {

/// Differs: the incomplete copy is not of what the item holds now.
enum class Completion { Done, Differs };

/// Adds to an incomplete copy what it lacks of its item.
class CopyCompletion final : private EnginePart {
  public:
    CopyCompletion(const EngineContext& context, DestinationSession& session,
                   CommentStore& comments, CopySeries& series, ItemCopier& copier);

    /// Completes the copy in its place. Errors are reported.
    [[nodiscard]] Completion Complete(const PendingCopy& copy, bool subFolders);

  private:
    struct Plan;

    [[nodiscard]] bool Compare(const std::wstring& copyFolder, bool subFolders,
                               const std::wstring& itemPath, Plan& plan);
    [[nodiscard]] bool CompareFolder(const std::wstring& copyRoot, const std::wstring& relative,
                                     const std::wstring& itemPath, Plan& plan,
                                     std::vector<std::wstring>& below);
    void AddMissing(const PendingCopy& copy, const Plan& plan, CopyResult& result);
    void AddFile(const PendingCopy& copy, const std::wstring& source, const std::wstring& target,
                 std::uint64_t size, CopyResult& result);

    DestinationSession& session_;
    CommentStore& comments_;
    CopySeries& series_;
    ItemCopier& copier_;
};

}  // namespace vw
