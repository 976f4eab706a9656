#pragma once

#include <future>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/System.h"

namespace vw {

/// Finds out which network drives and shares answer. The system keeps the letter of a drive whose
/// server went away, and a question to it takes as long as the network's own patience: the window
/// would be dead meanwhile.
class NetworkProbe {
  public:
    explicit NetworkProbe(System& system) : system_(system) {}

    /// Asks the drive or share of each path, on threads of their own. Returns when all of them have
    /// answered, at the latest after a second, and processes messages until then. What was asked
    /// before is forgotten. The file system has to live as long as a question is open.
    void Ask(const std::vector<std::wstring>& paths);

    /// False for a path whose drive or share was asked and has not answered yet.
    [[nodiscard]] bool MayAnswer(std::wstring_view path) const;

    /// Throws 75 for a path that MayAnswer says no of.
    void Require(std::wstring_view path) const;

  private:
    System& system_;
    std::map<std::wstring, std::shared_future<void>> roots_;
};

}  // namespace vw
