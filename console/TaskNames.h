#pragma once

#include <string>
#include <vector>

namespace vw {

/// The names of the scheduler's tasks that this user made with the program, kept in the registry:
/// not every scheduler can list its tasks, and other programs' tasks are not ours to show.
class TaskNames {
  public:
    /// Throws 75 when the registry refuses.
    static void Add(const std::wstring& name);
    static void Remove(const std::wstring& name);

    /// All of them, in alphabetical order.
    [[nodiscard]] static std::vector<std::wstring> All();
};

}  // namespace vw
