// The tip of a menu entry, beside the open menu.

#include <gmock/gmock.h>

#include "tests/ui/FormFixture.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

using testing::HasSubstr;

class MenuTip : public testing::TestWithParam<Language> {
  protected:
    MenuTip() { main.form.Show(ShowHow::KeepFocus); }

    /// Highlights an entry as the system does while its menu is open.
    void Highlight(int id) {
        SendMessageW(main.Handle(), WM_MENUSELECT, MAKEWPARAM(id, MF_HILITE),
                     reinterpret_cast<LPARAM>(GetMenu(main.Handle())));
    }
    void CloseMenu() { SendMessageW(main.Handle(), WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0); }

    /// The tip of the form that is seen now; none is nullptr.
    [[nodiscard]] HWND Tip() const {
        for (HWND tip = FindWindowExW(nullptr, nullptr, TOOLTIPS_CLASSW, nullptr); tip != nullptr;
             tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) {
            if (GetWindow(tip, GW_OWNER) == main.Handle() && IsWindowVisible(tip) != 0) return tip;
        }
        return nullptr;
    }
    [[nodiscard]] std::wstring Text() const {
        std::wstring text(400, L'\0');
        TTTOOLINFOW tool{};
        tool.cbSize = sizeof tool;
        tool.hwnd = main.Handle();
        tool.lpszText = text.data();
        SendMessageW(Tip(), TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
        return text.c_str();
    }

    LoadedForm main{MainForm(), GetParam()};
};

TEST_P(MenuTip, ActivateAutoBackup_SaysWhatItDoesAndDoesNot) {
    EXPECT_EQ(Tip(), nullptr);
    Highlight(ID_mnuOptions_0);
    ASSERT_NE(Tip(), nullptr);
    EXPECT_THAT(Text(), HasSubstr(GetParam() == Language::English ? L"That alone backs nothing up"
                                                                  : L"لا يُنسخ شيء عندئذٍ"));
}

TEST_P(MenuTip, OtherEntryOrMenuClosed_IsHidden) {
    Highlight(ID_mnuOptions_0);
    Highlight(ID_mnuToolRepair);
    EXPECT_EQ(Tip(), nullptr);
    Highlight(ID_mnuOptions_0);
    EXPECT_NE(Tip(), nullptr);
    CloseMenu();
    EXPECT_EQ(Tip(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, MenuTip, testing::ValuesIn(kLanguages));

}  // namespace
}  // namespace vw::test
