#include <gtest/gtest.h>

#include "tests/ui/FormFixture.h"

// The number of copies shows that it has the keyboard. Its scroll bar consists of two arrows, which
// look the same with and without it.

namespace vw {
namespace {

using test::LoadedForm;

class NumberFocus : public testing::TestWithParam<Language> {};

/// The colour of the frame, as the form draws it.
COLORREF FrameOf(const LoadedForm& main) {
    const test::DrawnLabel number(main, L"lblBackages");
    return number.ColourAt(0, number.Height() / 2);
}

TEST_P(NumberFocus, KeyboardIsThere_FrameIsMarked) {
    LoadedForm main(MainForm(), GetParam());
    main.form.Show();
    SetForegroundWindow(main.Handle());
    SetFocus(main.Control(L"lsvBackupList"));
    EXPECT_EQ(FrameOf(main), GetSysColor(COLOR_BTNSHADOW));
    SetFocus(main.Control(L"vsBackages"));
    EXPECT_EQ(FrameOf(main), GetSysColor(COLOR_HIGHLIGHT));
}

TEST_P(NumberFocus, FocusChanges_NumberIsRepainted) {
    LoadedForm main(MainForm(), GetParam());
    main.form.Show();
    SetForegroundWindow(main.Handle());
    SetFocus(main.Control(L"lsvBackupList"));
    const HWND number = main.Control(L"lblBackages");
    for (const auto* control : {L"vsBackages", L"lsvRestore1"}) {
        main.form.Repaint();
        ValidateRect(number, nullptr);
        SetFocus(main.Control(control));
        EXPECT_NE(GetUpdateRect(number, nullptr, FALSE), 0) << test::Narrow(control);
    }
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, NumberFocus, testing::ValuesIn(test::kLanguages));

}  // namespace
}  // namespace vw
