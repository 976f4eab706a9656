#include "tests/support/FakeMessageBoxes.h"

#include <gtest/gtest.h>

#include <utility>

#include "platform/Utf8.h"

namespace vw::test {

FakeMessageBoxes::~FakeMessageBoxes() {
    for (const Planned& box : planned_) {
        ADD_FAILURE() << "this planned box was never shown: " << ToUtf8(box.part);
    }
}

void FakeMessageBoxes::Expect(std::wstring_view part, BoxAnswer answer) {
    planned_.push_back({std::wstring(part), answer});
}

BoxAnswer FakeMessageBoxes::Show(const MessageBoxRequest& content) {
    shown_.push_back(content);
    if (meanwhile_) meanwhile_();
    if (planned_.empty()) {
        if (answerOfAll_) {
            return content.buttons == BoxButtons::YesNo ? *answerOfAll_ : BoxAnswer::Ok;
        }
        ADD_FAILURE() << "an unplanned box: " << ToUtf8(content.text);
        return content.buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
    }
    const Planned next = std::move(planned_.front());
    planned_.pop_front();
    if (content.text.find(next.part) == std::wstring::npos) {
        ADD_FAILURE() << "a box with \"" << ToUtf8(next.part)
                      << "\" was planned, this one came: " << ToUtf8(content.text);
    }
    const bool isQuestion = content.buttons == BoxButtons::YesNo;
    if (isQuestion == (next.answer == BoxAnswer::Ok)) {
        ADD_FAILURE() << "the planned answer is no button of this box: " << ToUtf8(content.text);
    }
    return next.answer;
}

}  // namespace vw::test
