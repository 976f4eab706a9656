// What a list shows beyond its texts: widths, warnings, tips and the selected row.

#include <gtest/gtest.h>

#include "tests/ui/FormFixture.h"
#include "ui/Painting.h"

namespace vw {
namespace {

using test::LoadedForm;

class ListLooks : public testing::TestWithParam<Language> {
  protected:
    ListLooks() {
        // The inner size of a maximised window on a screen of 1280.
        test::GiveInnerSize(main.form, 1280, 900);
    }

    int Add(const std::wstring& path) {
        const int row = list.Add(path.substr(path.rfind(L'\\') + 1), RowIcon::File);
        list.SetSubItem(row, L"Path", path);
        list.SetSubItem(row, L"Type", L".docx");
        list.SetSubItem(row, L"Size", L"1,234.5KByte", 1264128);
        list.SetSubItem(row, L"Date", L"11/19/2026 10:05:31 PM", 5);
        list.SetSubItem(row, L"SP", L"00");
        list.SetSubItem(row, L"Location", path.substr(0, path.rfind(L'\\')));
        return row;
    }
    [[nodiscard]] int Width(std::wstring_view key) const {
        return static_cast<int>(SendMessageW(list.Handle(), LVM_GETCOLUMNWIDTH,
                                             static_cast<WPARAM>(list.Rows().ColumnOf(key)), 0));
    }
    [[nodiscard]] POINT MiddleOf(int row, std::wstring_view key) const {
        RECT area{};
        area.left = LVIR_LABEL;
        area.top = list.Rows().ColumnOf(key);
        SendMessageW(list.Handle(), LVM_GETSUBITEMRECT, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&area));
        return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
    }

    const std::wstring longPath =
        L"C:\\Users\\Mona\\Documents\\Letters and other papers\\2026\\November\\Landlord.docx";
    LoadedForm main{MainForm(), GetParam()};
    ListView& list = main.form.List(L"lsvBackupList");
};

TEST_P(ListLooks, MaximisedWindow_ColumnsOfAnItem_FitWithoutScrolling) {
    Add(longPath);
    list.Columns().Fit();
    RECT area{};
    GetClientRect(list.Handle(), &area);
    int used = 0;
    for (const wchar_t* key : {L"Name", L"Path", L"Type", L"Size", L"Date"}) used += Width(key);
    EXPECT_LE(used, area.right);
    EXPECT_GE(Width(L"Path"), 140) << "the location, which repeats it, has taken its room";
}

// A number that is "00" nearly everywhere is of less use than a path that can be read.
TEST_P(ListLooks, LittleRoom_NumberIsLeftToTheScrollBar_PathStaysReadable) {
    test::GiveInnerSize(main.form, 1090, 700);
    const int row = Add(longPath);
    list.SetSubItem(row, L"Size", L"46.9KByte", 46900);
    list.Columns().Fit();
    RECT area{};
    GetClientRect(list.Handle(), &area);
    int used = 0;
    for (const wchar_t* key : {L"Name", L"Path", L"Type", L"Size", L"Date"}) used += Width(key);
    EXPECT_EQ(used, area.right) << "the date ends at the edge";
    EXPECT_GT(Width(L"Path"), 110);
}

TEST_P(ListLooks, WindowGrows_ColumnsUseTheRoom) {
    Add(longPath);
    list.Columns().Fit();
    const int before = Width(L"Path");
    test::GiveInnerSize(main.form, 1800, 900);
    EXPECT_GT(Width(L"Path"), before);
}

TEST_P(ListLooks, WidthOfTheUser_IsKept) {
    Add(longPath);
    list.Columns().Fit();
    test::DragColumn(list, list.Rows().ColumnOf(L"Type"), 233);
    list.Columns().Fit();
    EXPECT_EQ(Width(L"Type"), 233);
    test::GiveInnerSize(main.form, 1400, 900);
    EXPECT_EQ(Width(L"Type"), 233);
}

TEST_P(ListLooks, ShortenedCell_TipIsTheWholeText) {
    const int row = Add(longPath);
    list.Columns().Fit();
    EXPECT_EQ(list.Tips().TipAt(MiddleOf(row, L"Path")), longPath);
    EXPECT_EQ(list.Tips().TipAt(MiddleOf(row, L"Type")), L"") << "all of it is seen";
    EXPECT_EQ(list.Tips().TipAt({5, 800}), L"") << "there is no row";
}

TEST_P(ListLooks, RowWithWarning_TipSaysIt_TextsStayExact) {
    Add(L"C:\\a.docx");
    Add(L"C:\\b, c.docx");
    list.ShowWarnings({L"", L"Two items."});
    list.Columns().Fit();
    EXPECT_EQ(list.Tips().TipAt(MiddleOf(0, L"Type")), L"");
    EXPECT_EQ(list.Tips().TipAt(MiddleOf(1, L"Type")), L"Two items.");
    EXPECT_EQ(list.Rows().SubItem(1, kNameColumn), L"b, c.docx");
    const auto overlay = [&](int row) {
        return SendMessageW(list.Handle(), LVM_GETITEMSTATE, static_cast<WPARAM>(row),
                            LVIS_OVERLAYMASK);
    };
    EXPECT_EQ(overlay(0), 0);
    EXPECT_EQ(overlay(1), INDEXTOOVERLAYMASK(kWarningOverlay));
    list.ShowWarnings({});
    EXPECT_EQ(overlay(1), 0);
    EXPECT_EQ(list.Rows().At(1).warning, L"");
}

// The control invalidates less than is drawn here.
TEST_P(ListLooks, SelectionMoves_WholeRowIsRepainted) {
    const int row = Add(longPath);
    list.Select(row);
    main.form.Show(ShowHow::KeepFocus);
    main.form.Repaint();
    ValidateRect(list.Handle(), nullptr);
    list.Select(-1);
    RECT area{};
    area.left = LVIR_BOUNDS;
    SendMessageW(list.Handle(), LVM_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&area));
    RECT client{};
    GetClientRect(list.Handle(), &client);
    RECT update{};
    GetUpdateRect(list.Handle(), &update, FALSE);
    EXPECT_LE(update.left, 0);
    EXPECT_GE(update.right, client.right);
    EXPECT_LE(update.top, area.top);
    EXPECT_GE(update.bottom, area.bottom);
}

// The control would move what it has painted to the new places, with paths of the old width.
TEST_P(ListLooks, WidthsChange_WholeListIsRepainted) {
    Add(longPath);
    list.Columns().Fit();
    main.form.Show(ShowHow::KeepFocus);
    main.form.Repaint();
    ValidateRect(list.Handle(), nullptr);
    list.Columns().Fit();
    EXPECT_FALSE(GetUpdateRect(list.Handle(), nullptr, FALSE)) << "nothing has changed";
    list.SetSubItem(0, L"Type", L".a-longer-extension");
    ValidateRect(list.Handle(), nullptr);
    list.Columns().Fit();
    RECT client{};
    GetClientRect(list.Handle(), &client);
    RECT update{};
    GetUpdateRect(list.Handle(), &update, FALSE);
    EXPECT_EQ(update.left, client.left);
    EXPECT_EQ(update.right, client.right);
    EXPECT_EQ(update.bottom, client.bottom);
}

INSTANTIATE_TEST_SUITE_P(, ListLooks, testing::ValuesIn(test::kLanguages));

TEST(RowColours, SelectedRow_WithoutTheFocus_IsClearAndReadable) {
    const RowColours others = ColoursOfRow(false, false);
    const RowColours selected = ColoursOfRow(true, false);
    EXPECT_GE(ContrastOf(selected.background, others.background), 3.0);
    EXPECT_GE(ContrastOf(selected.text, selected.background), 4.5);
}

TEST(RowColours, SelectedRow_WithTheFocus_HasTheColoursOfTheSystem) {
    const RowColours selected = ColoursOfRow(true, true);
    EXPECT_EQ(selected.background, GetSysColor(COLOR_HIGHLIGHT));
    EXPECT_EQ(selected.text, GetSysColor(COLOR_HIGHLIGHTTEXT));
    EXPECT_GE(ContrastOf(selected.background, ColoursOfRow(false, true).background), 3.0);
}

TEST(RowColours, HintOfAnEmptyList_IsReadable) {
    const COLORREF window = ColoursOfRow(false, false).background;
    EXPECT_GE(ContrastOf(HintColour(), window), 4.5);
    EXPECT_LT(ContrastOf(HintColour(), window),
              ContrastOf(ColoursOfRow(false, false).text, window));
}
TEST(RowColours, Contrast_BlackAndWhite_Is21) {
    EXPECT_NEAR(ContrastOf(RGB(0, 0, 0), RGB(255, 255, 255)), 21.0, 0.01);
    EXPECT_NEAR(ContrastOf(RGB(9, 9, 9), RGB(9, 9, 9)), 1.0, 0.01);
}

}  // namespace
}  // namespace vw
