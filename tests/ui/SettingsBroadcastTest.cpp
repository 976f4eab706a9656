// What a form makes of settings that the system broadcasts.

#include <gtest/gtest.h>

#include <utility>

#include "tests/ui/FormFixture.h"

namespace vw::test {
namespace {

class SettingsBroadcast : public testing::TestWithParam<Language> {
  protected:
    SettingsBroadcast() { list.Add(L"a", RowIcon::File); }
    void Broadcast(WPARAM setting, const wchar_t* area) {
        SendMessageW(main.Handle(), WM_SETTINGCHANGE, setting, reinterpret_cast<LPARAM>(area));
    }
    [[nodiscard]] HFONT FontOfList() const {
        return reinterpret_cast<HFONT>(SendMessageW(list.Handle(), WM_GETFONT, 0, 0));
    }

    LoadedForm main{MainForm(), GetParam()};
    ListView& list = main.form.List(L"lsvBackupList");
};

TEST_P(SettingsBroadcast, OtherSetting_KeepsWidthsAndFonts) {
    DragColumn(list, 1, 333);
    const HFONT font = FontOfList();
    Broadcast(0, L"Environment");
    Broadcast(0, L"Policy");
    Broadcast(SPI_SETDESKWALLPAPER, nullptr);
    EXPECT_EQ(SendMessageW(list.Handle(), LVM_GETCOLUMNWIDTH, 1, 0), 333);
    EXPECT_EQ(FontOfList(), font);
}

TEST_P(SettingsBroadcast, FontsOrThemes_RecreatesTheFonts) {
    HFONT font = FontOfList();
    const auto isNew = [&] {
        const HFONT before = std::exchange(font, FontOfList());
        return font != before;
    };
    Broadcast(SPI_SETNONCLIENTMETRICS, L"WindowMetrics");
    EXPECT_TRUE(isNew());
    Broadcast(0, L"ImmersiveColorSet");
    EXPECT_TRUE(isNew());
    SendMessageW(main.Handle(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_TRUE(isNew());
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, SettingsBroadcast, testing::ValuesIn(kLanguages));

// The rows of the Arabic list have no buffer; each paints its background itself.
TEST(ArabicList, Erased_KeepsItsRows) {
    LoadedForm main(MainForm(), Language::Arabic);
    ListView& list = main.form.List(L"lsvBackupList");
    list.Add(L"a", RowIcon::File);
    main.form.Show(ShowHow::KeepFocus);
    const COLORREF mark = RGB(1, 2, 3);
    RECT client{};
    GetClientRect(list.Handle(), &client);
    const HDC screen = GetDC(list.Handle());
    const HDC dc = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, client.right, client.bottom);
    const HGDIOBJ before = SelectObject(dc, bitmap);
    SetDCBrushColor(dc, mark);
    FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    SendMessageW(list.Handle(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
    RECT row{};
    row.left = LVIR_BOUNDS;
    SendMessageW(list.Handle(), LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    const int middle = (row.left + row.right) / 2;
    EXPECT_EQ(GetPixel(dc, middle, (row.top + row.bottom) / 2), mark);
    EXPECT_NE(GetPixel(dc, middle, row.bottom + 3), mark) << "below the rows it is erased";
    SelectObject(dc, before);
    DeleteObject(bitmap);
    DeleteDC(dc);
    ReleaseDC(list.Handle(), screen);
}

}  // namespace
}  // namespace vw::test
