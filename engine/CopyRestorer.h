#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "engine/EnginePart.h"

namespace vw {

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
    void RestoreFolder(const std::wstring& copy, const std::wstring& target,
                       const TargetState& before);
    bool EnterTarget(const std::wstring& target, const TargetState* before);
    void RestoreFile(const std::wstring& copy, const std::wstring& target, std::uint64_t size,
                     const std::function<bool(const FileInfo&)>& mayReplace);
};

}  // namespace vw
