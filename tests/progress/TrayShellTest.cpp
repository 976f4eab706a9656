// What the user gets of the notification icon: its moving picture, its menu, and its end.

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <vector>

#include "platform/ProgramState.h"
#include "progress/TrayIcon.h"
#include "tests/support/QuietProgram.h"
#include "tests/support/TestEnvironment.h"
#include "tests/ui/FormFixture.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

/// The pixels of an icon's picture.
std::vector<std::uint32_t> PixelsOf(HICON icon) {
    ICONINFO info{};
    EXPECT_TRUE(GetIconInfo(icon, &info));
    BITMAP bitmap{};
    GetObjectW(info.hbmColor, sizeof bitmap, &bitmap);
    BITMAPINFO layout{};
    layout.bmiHeader = {
        sizeof(BITMAPINFOHEADER), bitmap.bmWidth, -bitmap.bmHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(bitmap.bmWidth * bitmap.bmHeight));
    const HDC screen = GetDC(nullptr);
    EXPECT_NE(GetDIBits(screen, info.hbmColor, 0, static_cast<UINT>(bitmap.bmHeight), pixels.data(),
                        &layout, DIB_RGB_COLORS),
              0);
    ReleaseDC(nullptr, screen);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    return pixels;
}

/// The pop-up menu that is open in this thread, and its bold entry; closes it.
struct OpenMenu {
    bool wasThere = false;
    UINT boldEntry = 0;
};
OpenMenu seenMenu;

void CALLBACK CloseMenu(HWND window, UINT, UINT_PTR timer, DWORD) {
    const HWND menu = FindWindowW(L"#32768", nullptr);
    if (menu == nullptr || !IsWindowVisible(menu)) return;
    constexpr UINT kGetMenu = 0x01E1;  // MN_GETHMENU
    const auto handle = reinterpret_cast<HMENU>(SendMessageW(menu, kGetMenu, 0, 0));
    seenMenu = {true, GetMenuDefaultItem(handle, FALSE, 0)};
    KillTimer(window, timer);
    EndMenu();
}

class TrayShell : public testing::TestWithParam<Language> {
  protected:
    void Notify(UINT code) { SendMessageW(icon.Window().Handle(), WM_MOUSEMOVE, 0, code); }
    void Tick() { SendMessageW(icon.Window().Handle(), WM_TIMER, ID_Timer1, 0); }

    TestEnvironment world;
    ProgramState state;
    QuietProgram program;
    TrayIcon icon{world.system, state, GetParam(), program, [] { return std::vector<Form*>{}; }};
};

INSTANTIATE_TEST_SUITE_P(Languages, TrayShell, testing::ValuesIn(kLanguages));

TEST_P(TrayShell, Tick_FourTimes_ShowsFourPicturesInTurn) {
    icon.Load();
    LoadedForm wanted(TrayForm(), GetParam());
    std::set<std::vector<std::uint32_t>> pictures;
    for (int i = 0; i < 8; ++i) {
        Tick();
        EXPECT_TRUE(icon.Icon().LastStatus());
        wanted.form.SetIcon(L"Image1", i % 4);
        const auto shown = PixelsOf(icon.Window().Icon());
        EXPECT_EQ(shown, PixelsOf(wanted.form.Icon())) << i;
        pictures.insert(shown);
    }
    EXPECT_EQ(pictures.size(), 4U);
}

TEST_P(TrayShell, LoadedAgain_BeginsWithTheFirstPicture) {
    for (int round = 0; round < 2; ++round) {
        icon.Load();
        const auto first = PixelsOf(icon.Window().Icon());
        Tick();
        EXPECT_EQ(PixelsOf(icon.Window().Icon()), first);
        Tick();
        icon.Unload();
    }
}

TEST_P(TrayShell, StaticIcon_HasTheFirstPicture) {
    icon.Load();
    const auto first = PixelsOf(icon.Window().Icon());
    for (int i = 0; i < 3; ++i) Tick();
    ASSERT_NE(PixelsOf(icon.Window().Icon()), first);
    icon.Icon().Remove();
    icon.cbStatic_Click();
    EXPECT_TRUE(icon.IsReachable());
    EXPECT_EQ(PixelsOf(icon.Window().Icon()), first);
}

TEST_P(TrayShell, RightButton_OpensTheMenuWithMaximizeInBold) {
    icon.Load();
    seenMenu = {};
    constexpr UINT_PTR kTimer = 77;
    SetTimer(icon.Window().Handle(), kTimer, 10, CloseMenu);
    Notify(WM_RBUTTONDOWN);
    KillTimer(icon.Window().Handle(), kTimer);
    EXPECT_TRUE(seenMenu.wasThere);
    EXPECT_EQ(seenMenu.boldEntry, static_cast<UINT>(ID_mnuProp1Maximize));
}

// The system drops the icon of a window that is gone by itself, after a while: what counts is that
// the shell was asked. Its answer is made to differ from the one before.
TEST_P(TrayShell, Unload_DeletesTheIconInTheShell) {
    icon.Load();
    NOTIFYICONDATAW record = icon.Icon().InitIconStruct();
    ASSERT_TRUE(Shell_NotifyIconW(NIM_DELETE, &record));
    Tick();
    ASSERT_FALSE(icon.Icon().LastStatus());
    ASSERT_TRUE(Shell_NotifyIconW(NIM_ADD, &record));
    icon.Unload();
    EXPECT_TRUE(icon.Icon().LastStatus());
}

}  // namespace
}  // namespace vw::test
