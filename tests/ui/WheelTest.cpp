// The wheel over the number of copies.

#include <gtest/gtest.h>

#include "tests/ui/FormFixture.h"

namespace vw::test {
namespace {

class Wheel : public testing::TestWithParam<Language> {
  protected:
    Wheel() {
        main.form.SetValue(L"vsBackages", 10);
        main.form.Show();
    }
    /// Turns the wheel with the pointer in the middle of a control.
    void Turn(std::wstring_view control, int delta) {
        RECT area{};
        GetWindowRect(main.Control(control), &area);
        SendMessageW(main.Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, delta),
                     MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2));
    }
    [[nodiscard]] int Copies() const { return main.form.Value(L"vsBackages"); }

    LoadedForm main{MainForm(), GetParam()};
};

TEST_P(Wheel, SmallSteps_BelowANotch_ChangeNothing) {
    for (int i = 0; i < 19; ++i) Turn(L"vsBackages", -6);
    EXPECT_EQ(Copies(), 10);
    Turn(L"vsBackages", -6);
    EXPECT_EQ(Copies(), 9) << "twenty times six is a notch";
}

TEST_P(Wheel, NoStep_ChangesNothing) {
    Turn(L"vsBackages", 0);
    EXPECT_EQ(Copies(), 10);
}

TEST_P(Wheel, WholeNotches_OverTheNumberAndItsLabel_Count) {
    Turn(L"vsBackages", WHEEL_DELTA);
    EXPECT_EQ(Copies(), 11);
    Turn(L"lblBackages", -2 * WHEEL_DELTA);
    EXPECT_EQ(Copies(), 9);
}

TEST_P(Wheel, TurnedBack_BeginsANewNotch) {
    Turn(L"vsBackages", -100);
    Turn(L"vsBackages", 100);
    EXPECT_EQ(Copies(), 10);
    Turn(L"vsBackages", 20);
    EXPECT_EQ(Copies(), 11);
}

TEST_P(Wheel, PointerElsewhere_ChangesNothing) {
    SetFocus(main.Control(L"vsBackages"));
    for (const auto* control : {L"lsvBackupList", L"Label02", L"Toolbar1", L"cmbDestination"}) {
        Turn(control, -WHEEL_DELTA);
        EXPECT_EQ(Copies(), 10) << Narrow(control);
    }
    // What was turned before the pointer left does not count later.
    Turn(L"vsBackages", -100);
    Turn(L"lsvBackupList", -20);
    Turn(L"vsBackages", -20);
    EXPECT_EQ(Copies(), 10);
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, Wheel, testing::ValuesIn(kLanguages));

}  // namespace
}  // namespace vw::test
