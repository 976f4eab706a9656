#pragma once

#include <string>
#include <vector>

#include "tests/support/ImportHook.h"

namespace vw::test {

/// The processes that the program would start: no process starts as long as this object lives. One
/// object at a time.
class StartedCommands {
  public:
    StartedCommands() { commands_.clear(); }

    /// Their command lines so far.
    [[nodiscard]] const std::vector<std::wstring>& Lines() const noexcept { return commands_; }

  private:
    static BOOL WINAPI Note(LPCWSTR, LPWSTR command, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES,
                            BOOL, DWORD, LPVOID, LPCWSTR, LPSTARTUPINFOW, LPPROCESS_INFORMATION) {
        commands_.emplace_back(command);
        return FALSE;
    }

    static inline std::vector<std::wstring> commands_;
    ImportHook hook_{"CreateProcessW", &Note};
};

}  // namespace vw::test
