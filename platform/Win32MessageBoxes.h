#pragma once

#include <functional>
#include <string_view>

#include "platform/MessageBoxes.h"
#include "platform/ProgramState.h"

namespace vw {

/// Real message boxes. In a silent run a box closes itself after five seconds with OK or No, and
/// only the first three are shown: who started the run by hand sees why nothing was backed up, and
/// a scheduled run is not held up. Every text of a silent run also goes to `echo`.
/// When the session ends no box is shown: the answer is OK or No at once.
class Win32MessageBoxes final : public MessageBoxes {
  public:
    using Echo = std::function<void(std::wstring_view)>;

    Win32MessageBoxes(const ProgramState& state, Echo echo);

    BoxAnswer Show(const MessageBoxRequest& content) override;

  private:
    BoxAnswer Silently(const MessageBoxRequest& content);

    const ProgramState& state_;
    Echo echo_;
    int shown_ = 0;
};

}  // namespace vw
