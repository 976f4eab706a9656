#include "ui/ListViewRows.h"

#include <gtest/gtest.h>

#include <array>

#include "platform/RuntimeError.h"

namespace vw {
namespace {

constexpr std::array<ColumnData, 3> kColumns{
    {{.key = kNameColumn}, {.key = L"Path"}, {.key = L"Size"}}};

int CompareTexts(std::wstring_view first, std::wstring_view second) {
    return first.compare(second);
}

class ListViewRowsTest : public testing::Test {
  protected:
    void Add(std::wstring_view name, std::wstring_view path) {
        rows.Add(name, RowIcon::File, tag++);
        rows.SetSubItem(rows.Count() - 1, L"Path", {std::wstring(path), std::nullopt});
    }
    [[nodiscard]] std::wstring Names() const {
        std::wstring names;
        for (int row = 0; row < rows.Count(); ++row) names += rows.SubItem(row, kNameColumn) + L" ";
        return names;
    }

    ListViewRows rows{kColumns};
    std::size_t tag = 0;
};

TEST_F(ListViewRowsTest, SubItem_ReturnsWhatWasSet_AndNothingForOtherRows) {
    Add(L"a", L"C:\\a");
    EXPECT_EQ(rows.SubItem(0, kNameColumn), L"a");
    EXPECT_EQ(rows.SubItem(0, L"Path"), L"C:\\a");
    EXPECT_EQ(rows.SubItem(0, L"Size"), L"");
    EXPECT_EQ(rows.SubItem(1, L"Path"), L"");
    EXPECT_EQ(rows.SubItem(-1, L"Path"), L"");
}

TEST_F(ListViewRowsTest, UnknownKeyOrRow_Throws) {
    Add(L"a", L"C:\\a");
    EXPECT_THROW((void)rows.SubItem(0, L"Colour"), RuntimeError);
    EXPECT_THROW((void)rows.Find(L"Colour", L"a"), RuntimeError);
    EXPECT_THROW(rows.SetSubItem(1, L"Path", {}), RuntimeError);
    EXPECT_THROW(rows.SetSubItem(-1, L"Path", {}), RuntimeError);
}

TEST_F(ListViewRowsTest, At_RowDoesNotExist_ReturnsARowWithoutCells) {
    Add(L"a", L"C:\\a");
    EXPECT_EQ(rows.At(0).cells.size(), kColumns.size());
    EXPECT_TRUE(rows.At(1).cells.empty());
    EXPECT_TRUE(rows.At(-1).cells.empty());
    EXPECT_EQ(rows.At(-1).tag, ListViewRows::kNoTag);
}

TEST_F(ListViewRowsTest, ColumnOfAndKeyOf_AreInverse) {
    EXPECT_EQ(rows.ColumnOf(L"Size"), 2);
    EXPECT_EQ(rows.KeyOf(2), L"Size");
    EXPECT_EQ(rows.KeyOf(3), L"");
    EXPECT_EQ(rows.KeyOf(-1), L"");
}

TEST_F(ListViewRowsTest, Find_ComparesCodeUnits) {
    Add(L"a", L"C:\\a");
    Add(L"b", L"C:\\b");
    EXPECT_EQ(rows.Find(L"Path", L"C:\\b"), 1);
    EXPECT_EQ(rows.Find(kNameColumn, L"a"), 0);
    EXPECT_EQ(rows.Find(L"Path", L"c:\\B"), -1);
}

TEST_F(ListViewRowsTest, FindName_IgnoresLetterCase_WrapsOnlyWhenAsked) {
    EXPECT_EQ(rows.FindName(L"a", 0, false, true), -1) << "no rows";
    Add(L"Alpha", L"1");
    Add(L"beta", L"2");
    EXPECT_EQ(rows.FindName(L"al", 0, false, false), 0);
    EXPECT_EQ(rows.FindName(L"al", 1, false, false), -1);
    EXPECT_EQ(rows.FindName(L"al", 1, false, true), 0);
    EXPECT_EQ(rows.FindName(L"al", 2, false, true), 0);
    EXPECT_EQ(rows.FindName(L"BETA", -1, true, false), 1);
    EXPECT_EQ(rows.FindName(L"bet", 0, true, true), -1) << "not the whole name";
}

TEST_F(ListViewRowsTest, Sort_EqualRowsKeepTheirOrder_ReturnsWhereRowsWere) {
    Add(L"b", L"1");
    Add(L"a", L"1");
    Add(L"c", L"0");
    rows.SetWarning(2, L"about c");
    EXPECT_EQ(rows.Sort(L"Path", true, CompareTexts), (std::vector{2, 0, 1}));
    EXPECT_EQ(Names(), L"c b a ");
    EXPECT_EQ(rows.Sort(L"Path", false, CompareTexts), (std::vector{1, 2, 0}));
    EXPECT_EQ(Names(), L"b a c ");
    EXPECT_EQ(rows.At(2).tag, 2U) << "the tag moves with its row";
    EXPECT_EQ(rows.At(2).warning, L"about c");
}

TEST_F(ListViewRowsTest, Sort_RowsHaveValues_TextsDoNotCount) {
    Add(L"big", L"");
    Add(L"small", L"");
    Add(L"middle", L"");
    rows.SetSubItem(0, L"Size", {L"2 GB", 2147483648});
    rows.SetSubItem(1, L"Size", {L"900 KB", 921600});
    rows.SetSubItem(2, L"Size", {L"3 MB", 3145728});
    rows.Sort(L"Size", true, CompareTexts);
    EXPECT_EQ(Names(), L"small middle big ");
    rows.Sort(L"Size", false, CompareTexts);
    EXPECT_EQ(Names(), L"big middle small ");
}

TEST_F(ListViewRowsTest, Remove_LaterRowsMoveUpWithTheirWarnings) {
    Add(L"a", L"");
    Add(L"b", L"");
    rows.SetWarning(1, L"about b");
    rows.Remove(0);
    EXPECT_EQ(Names(), L"b ");
    EXPECT_EQ(rows.At(0).warning, L"about b");
    rows.Clear();
    EXPECT_EQ(rows.Count(), 0);
    EXPECT_EQ(rows.At(0).warning, L"");
}

}  // namespace
}  // namespace vw
