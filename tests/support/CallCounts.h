#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/support/FaultyFileSystem.h"

namespace vw::test {

/// How often each call reached a file system.
class CallCounts {
  public:
    CallCounts() = default;
    explicit CallCounts(const std::vector<FileOperation>& operations);

    /// "Look 2, List 1" in the order of FileCall; empty for none.
    [[nodiscard]] std::string Text() const;

    /// What the first of two runs asked more often than the second.
    friend CallCounts operator-(CallCounts more, const CallCounts& fewer);

  private:
    std::map<FileCall, int> counts_;
};

}  // namespace vw::test
