#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/ui/FormFixture.h"

namespace vw {
namespace {

using test::LoadedForm;

int CompareTexts(std::wstring_view first, std::wstring_view second) {
    return first.compare(second);
}

class ListViewOf : public testing::TestWithParam<Language> {
  protected:
    LoadedForm main{MainForm(), GetParam()};
    ListView& list = main.form.List(L"lsvBackupList");

    int Add(const wchar_t* name, const wchar_t* path) {
        const int row = list.Add(name, RowIcon::File);
        list.SetSubItem(row, L"Path", path);
        return row;
    }

    std::vector<std::wstring> Names() {
        std::vector<std::wstring> names;
        names.reserve(static_cast<std::size_t>(list.Rows().Count()));
        for (int row = 0; row < list.Rows().Count(); ++row) {
            names.push_back(list.Rows().SubItem(row, kNameColumn));
        }
        return names;
    }

    int CountOfControl() {
        return static_cast<int>(SendMessageW(list.Handle(), LVM_GETITEMCOUNT, 0, 0));
    }

    // What another program, such as a screen reader, is told.
    std::wstring Told(int row, int column) {
        wchar_t text[512] = L"";
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = 512;
        SendMessageW(list.Handle(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
        return text;
    }
};

TEST_P(ListViewOf, SubItems_AreReadBackExactly) {
    const std::wstring path = L"C:\\العمل\\(new) رسالة إلى العائلة.docx";
    const int row = list.Add(L"رسالة (1)", RowIcon::Folder);
    EXPECT_EQ(row, 0);
    list.SetSubItem(row, L"Path", path);
    list.SetSubItem(row, L"Size", L"31 KB", 31744);
    EXPECT_EQ(list.Rows().SubItem(0, L"Path"), path);
    EXPECT_EQ(list.Rows().SubItem(0, kNameColumn), L"رسالة (1)");
    EXPECT_EQ(list.Rows().SubItem(0, L"Type"), L"");
    EXPECT_EQ(list.Rows().At(0).icon, RowIcon::Folder);
    EXPECT_EQ(Told(0, 0), L"رسالة (1)");
    EXPECT_EQ(Told(0, list.Rows().ColumnOf(L"Path")), path);
    EXPECT_EQ(Told(0, list.Rows().ColumnOf(L"Size")), L"31 KB");
    main.form.Show(ShowHow::KeepFocus);
    UpdateWindow(list.Handle());
    EXPECT_EQ(Told(0, list.Rows().ColumnOf(L"Path")), path) << "painting changes nothing";
}

TEST_P(ListViewOf, Rows_AreAddedRemovedAndCleared) {
    Add(L"a", L"C:\\a");
    Add(L"b", L"C:\\b");
    Add(L"c", L"C:\\c");
    EXPECT_EQ(list.Rows().Count(), 3);
    list.Remove(0);
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"b", L"c"}));
    EXPECT_EQ(list.Rows().SubItem(1, L"Path"), L"C:\\c");
    EXPECT_EQ(CountOfControl(), 2);
    list.Remove(5);
    list.Remove(-1);
    EXPECT_EQ(list.Rows().Count(), 2);
    list.Clear();
    EXPECT_EQ(list.Rows().Count(), 0);
    EXPECT_EQ(CountOfControl(), 0);
    EXPECT_EQ(list.Rows().SubItem(0, L"Path"), L"");
    EXPECT_EQ(list.Rows().SubItem(-1, L"Path"), L"");
    EXPECT_EQ(Add(L"d", L"C:\\d"), 0);
}

TEST_P(ListViewOf, Selection_ByTheUserOnly_RaisesAnEvent) {
    Add(L"a", L"C:\\a");
    Add(L"b", L"C:\\b");
    EXPECT_EQ(list.Selected(), -1);
    list.Select(1);
    EXPECT_EQ(list.Selected(), 1);
    list.Select(-1);
    EXPECT_EQ(list.Selected(), -1);
    EXPECT_TRUE(main.events.events.empty());
    list.Select(0);
    SendMessageW(list.Handle(), WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_EQ(list.Selected(), 1);
    ASSERT_EQ(main.events.events.size(), 1U);
    EXPECT_EQ(main.events.Last().control, L"lsvBackupList");
    EXPECT_EQ(main.events.Last().kind, EventKind::Selection);
    EXPECT_EQ(main.events.Last().value, 1);
}

TEST_P(ListViewOf, Clear_RaisesNoSelectionEvent) {
    Add(L"a", L"C:\\a");
    list.Select(0);
    list.Clear();
    EXPECT_TRUE(main.events.events.empty());
}

TEST_P(ListViewOf, SortsByTextAndKeepsEqualRowsInOrder) {
    Add(L"b", L"1");
    Add(L"a", L"1");
    Add(L"c", L"0");
    list.Select(0);
    list.Sort(L"Path", true, CompareTexts);
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"c", L"b", L"a"}));
    EXPECT_EQ(list.Selected(), 1) << "the same row as before";
    list.Sort(kNameColumn, false, CompareTexts);
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"c", L"b", L"a"}));
    list.Sort(kNameColumn, true, CompareTexts);
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"a", L"b", L"c"}));
    EXPECT_EQ(list.Rows().SubItem(0, L"Path"), L"1");
}

TEST_P(ListViewOf, Header_ShowsTheDirectionOfTheSort) {
    const auto formatOf = [&](int column) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        const auto header =
            reinterpret_cast<HWND>(SendMessageW(list.Handle(), LVM_GETHEADER, 0, 0));
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&item));
        return item.fmt & (HDF_SORTUP | HDF_SORTDOWN);
    };
    Add(L"a", L"C:\\a");
    list.Sort(L"Type", true, CompareTexts);
    EXPECT_EQ(formatOf(list.Rows().ColumnOf(L"Type")), HDF_SORTUP);
    list.Sort(L"Size", false, CompareTexts);
    EXPECT_EQ(formatOf(list.Rows().ColumnOf(L"Type")), 0);
    EXPECT_EQ(formatOf(list.Rows().ColumnOf(L"Size")), HDF_SORTDOWN);
    list.Columns().ClearSortMark();
    EXPECT_EQ(formatOf(list.Rows().ColumnOf(L"Size")), 0);
}

TEST_P(ListViewOf, ColumnHeader_RaisesClickWithItsKey) {
    NMLISTVIEW click{};
    click.hdr = {list.Handle(), 0, static_cast<UINT>(LVN_COLUMNCLICK)};
    click.iItem = -1;
    click.iSubItem = list.Rows().ColumnOf(L"Date");
    SendMessageW(main.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&click));
    EXPECT_EQ(main.events.Last().kind, EventKind::ColumnClick);
    EXPECT_EQ(main.events.Last().key, L"Date");
    EXPECT_EQ(main.events.Last().value, 4);
}

class ColumnWidths : public ListViewOf {
  protected:
    // In a narrow list the paths give way to the other columns.
    ColumnWidths() { test::GiveInnerSize(main.form, 1800, 700); }

    void AddWhileRedrawingIsOff(const wchar_t* path) {
        const RedrawPause pause(list);
        list.Clear();
        Add(L"a", path);
    }
    int WidthOfPath() {
        return static_cast<int>(SendMessageW(list.Handle(), LVM_GETCOLUMNWIDTH,
                                             static_cast<WPARAM>(list.Rows().ColumnOf(L"Path")),
                                             0));
    }

    static constexpr const wchar_t* kLong = L"C:\\Users\\Mona\\Documents\\Letters\\Landlord.txt";
    const int needed = static_cast<int>(
        SendMessageW(list.Handle(), LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(kLong)));
};

TEST_P(ColumnWidths, RedrawingComesOn_AreAsWideAsTheirTexts) {
    main.form.Show(ShowHow::KeepFocus);
    main.form.Repaint();
    AddWhileRedrawingIsOff(kLong);
    const int before = WidthOfPath();
    EXPECT_GE(before, needed + Scaled(12, main.form.Dpi()));
    EXPECT_LT(before, needed + Scaled(24, main.form.Dpi()));
    AddWhileRedrawingIsOff(L"C:\\a");
    EXPECT_LT(WidthOfPath(), before);
}

TEST_P(ListViewOf, Numbers_AreAlignedToTheRightInBothLanguages) {
    LVCOLUMNW column{};
    column.mask = LVCF_FMT;
    SendMessageW(list.Handle(), LVM_GETCOLUMNW, static_cast<WPARAM>(list.Rows().ColumnOf(L"Size")),
                 reinterpret_cast<LPARAM>(&column));
    // In a mirrored list the left of the format is the right of the screen.
    EXPECT_EQ(column.fmt & LVCFMT_JUSTIFYMASK,
              GetParam() == Language::Arabic ? LVCFMT_LEFT : LVCFMT_RIGHT);
}

TEST_P(ListViewOf, ViewsAndArrangements_SetTheStyleOfTheControl) {
    const auto style = [&] { return GetWindowLongW(list.Handle(), GWL_STYLE); };
    EXPECT_EQ(list.Style(), ViewStyle::Details);
    list.SetStyle(ViewStyle::LargeIcons);
    EXPECT_EQ(style() & LVS_TYPEMASK, LVS_ICON);
    list.SetStyle(ViewStyle::SmallIcons);
    EXPECT_EQ(style() & LVS_TYPEMASK, LVS_SMALLICON);
    list.SetStyle(ViewStyle::List);
    EXPECT_EQ(style() & LVS_TYPEMASK, LVS_LIST);
    EXPECT_EQ(list.Style(), ViewStyle::List);
    list.SetArrange(ViewArrange::Left);
    EXPECT_EQ(style() & LVS_ALIGNMASK, LVS_ALIGNLEFT);
    list.SetArrange(ViewArrange::Top);
    EXPECT_EQ(style() & (LVS_ALIGNMASK | LVS_AUTOARRANGE), LVS_ALIGNTOP | LVS_AUTOARRANGE);
    list.SetArrange(ViewArrange::None);
    EXPECT_EQ(style() & LVS_AUTOARRANGE, 0);
    list.SetStyle(ViewStyle::Details);
    EXPECT_EQ(list.Style(), ViewStyle::Details);
}

TEST_P(ListViewOf, Rows_AreHighEnoughToRead) {
    Add(L"a", L"C:\\a");
    RECT row{};
    row.left = LVIR_BOUNDS;
    SendMessageW(list.Handle(), LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    EXPECT_GE(row.bottom - row.top, Scaled(20, main.form.Dpi()));
}

/// Counts the messages to a window.
class MessageCounter {
  public:
    explicit MessageCounter(HWND window) : window_(window) {
        SetWindowSubclass(window, Subclass, 77, reinterpret_cast<DWORD_PTR>(this));
    }
    ~MessageCounter() { RemoveWindowSubclass(window_, Subclass, 77); }
    MessageCounter(const MessageCounter&) = delete;
    MessageCounter& operator=(const MessageCounter&) = delete;

    int count = 0;

  private:
    static LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR, DWORD_PTR data) {
        ++reinterpret_cast<MessageCounter*>(data)->count;
        return DefSubclassProc(window, message, wParam, lParam);
    }
    HWND window_;
};

// Ten thousand copies are shown at once, and each message takes longer than all else of a row.
TEST_P(ListViewOf, RowsAddedWhileRedrawingIsOff_NeedNoMessages) {
    list.SetRedraw(false);
    {
        const MessageCounter messages(list.Handle());
        for (int i = 0; i < 5000; ++i) {
            Add(std::to_wstring(i).c_str(), (L"C:\\" + std::to_wstring(i)).c_str());
        }
        EXPECT_EQ(messages.count, 0);
    }
    list.SetRedraw(true);
    EXPECT_EQ(list.Rows().Count(), 5000);
    EXPECT_EQ(CountOfControl(), 5000);
    EXPECT_EQ(list.Rows().SubItem(4999, L"Path"), L"C:\\4999");
    EXPECT_EQ(Told(4999, list.Rows().ColumnOf(L"Path")), L"C:\\4999");
}

TEST_P(ListViewOf, RowAddedWhileRedrawingIsOff_CanBeSelected) {
    list.SetRedraw(false);
    Add(L"a", L"C:\\a");
    Add(L"b", L"C:\\b");
    list.Select(1);
    EXPECT_EQ(list.Selected(), 1);
    list.EnsureVisible(1);
    list.SetRedraw(true);
    EXPECT_EQ(list.Selected(), 1);
}

TEST_P(ListViewOf, RemoveAboveTheSelection_SelectionStaysWithItsRow) {
    Add(L"a", L"C:\\a");
    Add(L"b", L"C:\\b");
    Add(L"c", L"C:\\c");
    list.Select(2);
    list.Remove(0);
    EXPECT_EQ(list.Selected(), 1);
    list.Remove(1);
    EXPECT_EQ(list.Selected(), -1) << "the selected row is gone";
    EXPECT_TRUE(main.events.events.empty());
}

TEST_P(ListViewOf, Sort_RowHasOnlyTheFocus_KeepsItAndSelectsNothing) {
    Add(L"b", L"1");
    Add(L"a", L"0");
    LVITEMW item{};
    item.stateMask = item.state = LVIS_FOCUSED;
    SendMessageW(list.Handle(), LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&item));
    main.events.events.clear();
    list.Sort(kNameColumn, true, CompareTexts);
    EXPECT_EQ(SendMessageW(list.Handle(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED),
              1);
    EXPECT_EQ(list.Selected(), -1);
    EXPECT_TRUE(main.events.events.empty());
}

TEST_P(ListViewOf, TypedLetters_SelectTheNextRowThatBeginsWithThem) {
    Add(L"Alpha", L"1");
    Add(L"beta", L"2");
    Add(L"Berta", L"3");
    list.Select(0);
    SendMessageW(list.Handle(), WM_CHAR, L'B', 1);
    EXPECT_EQ(list.Selected(), 1);
    SendMessageW(list.Handle(), WM_CHAR, L'e', 1);
    SendMessageW(list.Handle(), WM_CHAR, L'r', 1);
    EXPECT_EQ(list.Selected(), 2);
}

TEST_P(ListViewOf, SearchForLetters_WrapsAroundOnlyWhereAsked) {
    Add(L"Alpha", L"1");
    Add(L"beta", L"2");
    const auto find = [&](const wchar_t* letters, int start, UINT flags) {
        NMLVFINDITEMW wanted{};
        wanted.hdr = {list.Handle(), 0, static_cast<UINT>(LVN_ODFINDITEMW)};
        wanted.iStart = start;
        wanted.lvfi.flags = flags;
        wanted.lvfi.psz = letters;
        return static_cast<int>(
            SendMessageW(main.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&wanted)));
    };
    constexpr UINT kPart = LVFI_STRING | LVFI_PARTIAL;
    EXPECT_EQ(find(L"al", 0, kPart), 0);
    EXPECT_EQ(find(L"al", 1, kPart), -1);
    EXPECT_EQ(find(L"al", 1, kPart | LVFI_WRAP), 0);
    EXPECT_EQ(find(L"al", 2, kPart | LVFI_WRAP), 0);
    EXPECT_EQ(find(L"BETA", -1, LVFI_STRING), 1);
    EXPECT_EQ(find(L"bet", 0, LVFI_STRING), -1) << "not the whole name";
    EXPECT_EQ(find(L"x", 0, kPart | LVFI_WRAP), -1);
    EXPECT_EQ(find(nullptr, 0, kPart), -1);
    EXPECT_EQ(find(L"al", 0, LVFI_PARAM), -1);
}

INSTANTIATE_TEST_SUITE_P(, ListViewOf, testing::ValuesIn(test::kLanguages), test::NameOfLanguage);
INSTANTIATE_TEST_SUITE_P(, ColumnWidths, testing::ValuesIn(test::kLanguages), test::NameOfLanguage);

}  // namespace
}  // namespace vw
