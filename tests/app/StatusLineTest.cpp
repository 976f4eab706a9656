#include <gtest/gtest.h>

#include "tests/ui/FormFixture.h"
#include "ui/StatusLine.h"

namespace vw {
namespace {

class StatusLineText : public testing::Test {
  protected:
    [[nodiscard]] std::wstring Shown() const { return main.form.Text(L"sbrStatus"); }

    test::LoadedForm main{MainForm(), Language::English};
    StatusLine status{main.form};
};

TEST_F(StatusLineText, Notice_Withdrawn_OutcomeIsShownAgain) {
    status.ShowOutcome(L"outcome", true);
    EXPECT_EQ(Shown(), L"outcome");
    status.ShowNotice(L"notice");
    EXPECT_EQ(Shown(), L"notice");
    status.ShowNotice({});
    EXPECT_EQ(Shown(), L"outcome");
}

TEST_F(StatusLineText, Outcome_ReplacesNotice) {
    status.ShowNotice(L"notice");
    status.ShowOutcome(L"outcome", false);
    EXPECT_EQ(Shown(), L"outcome");
}

}  // namespace
}  // namespace vw
