// What rows show after a run, and the warnings beside them.

#include <gmock/gmock.h>

#include "platform/DateText.h"
#include "tests/list/editing/ListFixture.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RefreshedRows : public ListFixture {
  protected:
    RefreshedRows() {
        list.GetList();
        for (const std::wstring& file : files) list.Rows().AddToList(file);
    }
    [[nodiscard]] std::vector<std::wstring> Column(std::wstring_view key) {
        std::vector<std::wstring> cells;
        for (int row = 0; row < View().Rows().Count(); ++row) {
            cells.push_back(View().Rows().SubItem(row, key));
        }
        return cells;
    }

    const DateParts day{2024, 5, 6, 7, 8, 9};
    const Date date = MakeDate(day);
    const Date later = MakeDate({2025, 5, 6, 7, 8, 9});
    const std::vector<std::wstring> files{tree.File(L"a.txt", "1", day),
                                          tree.File(L"b.txt", "12", day),
                                          tree.File(L"c.txt", "123", day)};
};

TEST_F(RefreshedRows, Refresh_AnyOrder_EachRowShowsItsOwnSizeAndDate) {
    list.Rows().Refresh(files[1], 20, later);
    list.Rows().Refresh(files[0], 10, date);
    list.Rows().Refresh(Path(L"C.TXT"), 30, later);
    EXPECT_THAT(Column(L"Size"), ElementsAre(L"10Byte", L"20Byte", L"30Byte"));
    EXPECT_THAT(Column(L"Date"), ElementsAre(DateText(date), DateText(later), DateText(later)));
}

TEST_F(RefreshedRows, ListIsReadAgain_FormerRowsAreForgotten) {
    ListFile(world.ansi.Encode(files[0]));
    list.GetList();
    EXPECT_EQ(View().Rows().At(0).tag, 0U);
}

TEST_F(RefreshedRows, Refresh_SameRowAgain_ShowsWhatItIsNow) {
    const auto shows = [&](std::uint64_t bytes, Date newest) {
        list.Rows().Refresh(files[1], bytes, newest);
        return std::pair(View().Rows().SubItem(1, L"Size"), View().Rows().SubItem(1, L"Date"));
    };
    EXPECT_EQ(shows(2, later), std::pair(std::wstring(L"2Byte"), DateText(later)));
    EXPECT_EQ(shows(7, later), std::pair(std::wstring(L"7Byte"), DateText(later)));
    EXPECT_EQ(shows(2, later), std::pair(std::wstring(L"2Byte"), DateText(later)));
    EXPECT_EQ(shows(2, date), std::pair(std::wstring(L"2Byte"), DateText(date)));
    EXPECT_EQ(shows(0, date), std::pair(std::wstring(L"0Byte"), DateText(date)));
}

TEST_F(RefreshedRows, Refresh_RowIsSortedByItsNewValues) {
    list.Rows().Refresh(files[0], 5000, later);
    for (const auto* column : {L"Size", L"Date"}) {
        editing.lsvBackupListColumnClick(View().Rows().ColumnOf(column));
        EXPECT_EQ(Paths().front(), files[0]) << column;
        editing.lsvBackupListColumnClick(View().Rows().ColumnOf(column));
    }
}

TEST_F(RefreshedRows, Refresh_OtherItem_ChangesNothing) {
    const auto before = Column(L"Size");
    list.Rows().Refresh(Path(L"other.txt"), 99, later);
    EXPECT_EQ(Column(L"Size"), before);
}

TEST_F(RefreshedRows, RowOf_OtherItem_ReturnsNone) {
    EXPECT_EQ(list.Rows().RowOf(Path(L"other.txt")), -1);
    EXPECT_EQ(list.Rows().RowOf(Path(L"B.TXT")), 1);
}

class RowsWithWarnings : public ListFixture {
  protected:
    [[nodiscard]] std::wstring Warning(int row) { return View().Rows().At(row).warning; }

    const std::wstring future = tree.File(L"future.txt", "x", {2099, 1, 1, 0, 0, 0});
    const std::wstring good = tree.File(L"good.txt");
};

TEST_F(RowsWithWarnings, Load_MarksTheItemsThatNeedOne) {
    ListFile(world.ansi.Encode(future + L"\r\n" + good + L"\r\n"));
    list.GetList();
    EXPECT_NE(Warning(0).find(L"lies in the future"), std::wstring::npos);
    EXPECT_EQ(Warning(1), L"");
    EXPECT_THAT(list.Rows().Warnings(), ElementsAre(Warning(0), future));
}

TEST_F(RowsWithWarnings, Save_MarksWhatWasAdded) {
    list.GetList();
    EXPECT_THAT(list.Rows().Warnings(), IsEmpty());
    editing.lsvBackupList_OLEDragDrop({good, future});
    EXPECT_THAT(list.Rows().Warnings(), ElementsAre(Warning(1), future));
    EXPECT_NE(Warning(1), L"");
}

}  // namespace
}  // namespace vw::test
