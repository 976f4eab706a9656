// The menu of the notification icon: at which side of the pointer it opens, and in which direction.

#include <gtest/gtest.h>

#include "tests/ui/FormFixture.h"

namespace vw::test {
namespace {

/// Looks at the menu that is open, and closes it.
struct OpenMenu {
    bool seen = false;
    bool mirrored = false;
    RECT place{};

    static OpenMenu& Last() {
        static OpenMenu last;
        return last;
    }
    static void CALLBACK Look(HWND window, UINT, UINT_PTR timer, DWORD) {
        const HWND menu = FindWindowW(L"#32768", nullptr);
        if (menu == nullptr || IsWindowVisible(menu) == 0) return;
        KillTimer(window, timer);
        OpenMenu& last = Last();
        last.seen = true;
        last.mirrored = (GetWindowLongW(menu, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
        GetWindowRect(menu, &last.place);
        EndMenu();
    }
};

/// The side of the pointer at which menus open, as long as it lives.
class DropAlignment {
  public:
    explicit DropAlignment(bool right) {
        SystemParametersInfoW(SPI_GETMENUDROPALIGNMENT, 0, &before_, 0);
        SystemParametersInfoW(SPI_SETMENUDROPALIGNMENT, right ? TRUE : FALSE, nullptr, 0);
    }
    ~DropAlignment() {
        SystemParametersInfoW(SPI_SETMENUDROPALIGNMENT, static_cast<UINT>(before_), nullptr, 0);
    }
    DropAlignment(const DropAlignment&) = delete;
    DropAlignment& operator=(const DropAlignment&) = delete;

  private:
    BOOL before_ = FALSE;
};

class PopUpMenuOf : public testing::TestWithParam<Language> {
  protected:
    OpenMenu Open() {
        OpenMenu::Last() = {};
        SetCursorPos(kPointer.x, kPointer.y);
        constexpr UINT kMilliseconds = 50;
        constexpr UINT_PTR kTimer = 0x7677;
        SetTimer(tray.Handle(), kTimer, kMilliseconds, OpenMenu::Look);
        tray.form.PopUpMenu(L"mnuProp1", L"mnuProp1Maximize");
        return OpenMenu::Last();
    }

    static constexpr POINT kPointer{500, 300};
    LoadedForm tray{TrayForm(), GetParam()};
};

TEST_P(PopUpMenuOf, NotificationIcon_ReadsAsItsLanguage) {
    const OpenMenu menu = Open();
    ASSERT_TRUE(menu.seen);
    EXPECT_EQ(menu.mirrored, GetParam() == Language::Arabic);
}

TEST_P(PopUpMenuOf, NotificationIcon_OpensAtTheSideThatTheUserChose) {
    for (const bool right : {false, true}) {
        const DropAlignment alignment(right);
        if ((GetSystemMetrics(SM_MENUDROPALIGNMENT) != 0) != right) {
            GTEST_SKIP() << "the system does not take the setting over";
        }
        const OpenMenu menu = Open();
        ASSERT_TRUE(menu.seen);
        const bool isLeftOfPointer = menu.place.right <= kPointer.x + 4;
        // In a mirrored menu the system changes the sides over.
        EXPECT_EQ(isLeftOfPointer, right != (GetParam() == Language::Arabic)) << right;
    }
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, PopUpMenuOf, testing::ValuesIn(kLanguages));

}  // namespace
}  // namespace vw::test
