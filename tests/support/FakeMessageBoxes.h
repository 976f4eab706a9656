#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/MessageBoxes.h"

namespace vw::test {

/// Message boxes that the test answers. A box that was not planned fails the test, and so does a
/// planned one that never came.
class FakeMessageBoxes : public MessageBoxes {
  public:
    ~FakeMessageBoxes() override;

    /// Plans the next box: its text must contain `part` (an empty part fits any text), and this is
    /// the button that closes it.
    void Expect(std::wstring_view part, BoxAnswer answer = BoxAnswer::Ok);

    /// Answers every box that was not planned: questions with `answer`, the others with OK.
    void AnswerAll(BoxAnswer answer) { answerOfAll_ = answer; }

    /// Done while each box is shown, before it is answered.
    void OnBox(std::function<void()> meanwhile) { meanwhile_ = std::move(meanwhile); }

    /// The boxes shown so far, in order, unplanned ones too.
    [[nodiscard]] const std::vector<MessageBoxRequest>& Shown() const noexcept { return shown_; }

    BoxAnswer Show(const MessageBoxRequest& content) override;

  private:
    struct Planned {
        std::wstring part;
        BoxAnswer answer;
    };

    std::deque<Planned> planned_;
    std::vector<MessageBoxRequest> shown_;
    std::optional<BoxAnswer> answerOfAll_;
    std::function<void()> meanwhile_;
};

}  // namespace vw::test
