#pragma once

#include <algorithm>

#include "tests/support/FaultyFileSystem.h"
#include "tests/support/ScriptedPump.h"

namespace vw::test {

/// Whether the windows can work during long work: how many operations of the disk the work does
/// between two yields, and how often it yields between one operation and the next. It replaces the
/// callbacks of the disk and of the yields, so it has to outlive the work.
class YieldWatch {
  public:
    /// `isChosen` finds the operation behind which the yields are counted.
    YieldWatch(
        FaultyFileSystem& files, ScriptedPump& pump,
        OperationFilter isChosen = [](const FileOperation&) { return false; }) {
        pump.AtEachYield([this] {
            operations_ = 0;
            if (isCounting_) ++yieldsBehind_;
        });
        files.OnOperation([this, isChosen = std::move(isChosen)](const FileOperation& operation) {
            mostOperations_ = std::max(mostOperations_, ++operations_);
            isCounting_ = yieldsBehind_ == 0 && isChosen(operation);
        });
    }
    YieldWatch(const YieldWatch&) = delete;
    YieldWatch& operator=(const YieldWatch&) = delete;

    /// The longest row of operations without a yield.
    [[nodiscard]] int MostOperations() const noexcept { return mostOperations_; }

    /// The yields between the first chosen operation that is followed by one, and the next
    /// operation.
    [[nodiscard]] int YieldsBehind() const noexcept { return yieldsBehind_; }

  private:
    int operations_ = 0;
    int mostOperations_ = 0;
    int yieldsBehind_ = 0;
    bool isCounting_ = false;
};

}  // namespace vw::test
