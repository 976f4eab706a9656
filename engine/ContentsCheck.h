#pragma once

#include <string_view>

#include "engine/EnginePart.h"

namespace vw {

namespace MFileDosShell {
struct ItemStats;
}  // namespace MFileDosShell

/// Reports files whose bytes are not readily available: those in the cloud alone and encrypted
/// ones.
class ContentsCheck final : private EnginePart {
  public:
    explicit ContentsCheck(const EngineContext& context) : EnginePart(context) {}

    /// Whether an item may be copied. A large download needs the consent of the user unless the run
    /// is silent; a refusal is noted in the exit code.
    [[nodiscard]] bool MayCopy(std::wstring_view path, const MFileDosShell::ItemStats& stats,
                               bool subFolders);
};

}  // namespace vw
