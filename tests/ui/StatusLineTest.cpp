#include <gtest/gtest.h>

#include <set>

#include "tests/ui/FormFixture.h"

// How the status line of the main window is drawn.

namespace vw {
namespace {

using test::LoadedForm;
using test::PlaceOf;

/// The colours of the status line, as the form draws it.
std::set<COLORREF> ColoursOf(const LoadedForm& main) {
    const test::DrawnLabel line(main, L"sbrStatus");
    std::set<COLORREF> colours;
    for (int y = 0; y < line.Height(); ++y) {
        for (int x = 0; x < line.Width(); ++x) colours.insert(line.ColourAt(x, y));
    }
    return colours;
}

class StatusLineLook : public testing::TestWithParam<Language> {};

TEST_P(StatusLineLook, Alert_HasColoursOfItsOwn) {
    LoadedForm main(MainForm(), GetParam());
    test::GiveInnerSize(main.form, 600, 600);
    main.form.SetText(L"sbrStatus", L"Backup of 21:12");
    const std::set<COLORREF> plain = ColoursOf(main);
    main.form.SetAlert(L"sbrStatus", true);
    const std::set<COLORREF> alert = ColoursOf(main);
    constexpr COLORREF kTriangle = RGB(0xFF, 0xC8, 0x3D);
    EXPECT_FALSE(plain.contains(kTriangle));
    EXPECT_TRUE(alert.contains(kTriangle)) << "no sign for those who see no colours";
    constexpr COLORREF kRed = RGB(0xA8, 0x1C, 0x1C);
    EXPECT_FALSE(plain.contains(kRed));
    EXPECT_TRUE(alert.contains(kRed));
}

TEST_P(StatusLineLook, Window_EveryWidth_LineLiesAlongLowerEdge) {
    LoadedForm main(MainForm(), GetParam());
    for (const int width : {848, 1270}) {
        test::GiveInnerSize(main.form, width, 700);
        const RECT place = PlaceOf(main.form, main.Control(L"sbrStatus"));
        EXPECT_EQ(place.left, 0);
        EXPECT_EQ(place.right, width);
        EXPECT_EQ(place.bottom, 700);
    }
}

INSTANTIATE_TEST_SUITE_P(, StatusLineLook, testing::ValuesIn(test::kLanguages));

}  // namespace
}  // namespace vw
