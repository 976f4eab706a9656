#include "restore/CopiesIndex.h"

#include <gtest/gtest.h>

namespace vw {
namespace {

TEST(CopiesIndex, LabelsTellRotatingCopiesFromSafetyCopies) {
    const struct {
        int number;
        const wchar_t* label;
    } rows[]{{0, L"N00"}, {1, L"N01"}, {9, L"N09"}, {20, L"N20"}, {21, L"U01"}, {99, L"U79"}};
    for (const auto& row : rows) {
        EXPECT_EQ(CopyLabel(row.number), row.label);
        EXPECT_EQ(NumberOfLabel(row.label), row.number);
    }
}

TEST(CopiesIndex, ASafetyCopyFollowsTheHighestNumber) {
    EXPECT_EQ(NextSafetyNumber(0), 21);
    EXPECT_EQ(NextSafetyNumber(5), 21);
    EXPECT_EQ(NextSafetyNumber(20), 21);
    EXPECT_EQ(NextSafetyNumber(21), 22);
    EXPECT_EQ(NextSafetyNumber(23), 24);
}

TEST(CopiesIndex, KnowsTheNamesOfCopies) {
    for (const auto* name :
         {L"a\u00AB0001\u00BB.txt", L"\u00AB0001\u00BB", L"x\u00ABabcd\u00BB.txt"}) {
        EXPECT_TRUE(IsCopyName(name));
    }
    for (const auto* name :
         {L"a.txt", L"a\u00AB001\u00BB.txt", L"a\u00AB00001\u00BB.txt",
          L"a\u00AB0001\u00BB.txt.vwc", L"a\u00AB0001\u00BB.txt.VWC", L"", L"\u00AB\u00BB"}) {
        EXPECT_FALSE(IsCopyName(name));
    }
}

TEST(CopiesIndex, FindsTheCopiesOfAnItemByNameAlone) {
    const CopiesOfItem copies(L"Report #1 [new].doc", 1);
    EXPECT_TRUE(copies.Contains(L"Report #1 [new]\u00AB0101\u00BB.doc"));
    EXPECT_TRUE(copies.Contains(L"REPORT #1 [NEW]\u00AB0121\u00BB.DOC"));
    EXPECT_FALSE(copies.Contains(L"Report 71 n\u00AB0101\u00BB.doc"));
    EXPECT_FALSE(copies.Contains(L"Report #1 [new]\u00AB0001\u00BB.doc"));
    EXPECT_FALSE(copies.Contains(L"Report #1 [new]\u00AB0101\u00BB.docx"));
    EXPECT_FALSE(copies.Contains(L"Report #1 [new]\u00AB01\u00BB.doc"));
    EXPECT_FALSE(copies.Contains(L""));
}

TEST(CopiesIndex, TheFolderOfACopyIsTheOneWithTheMarks) {
    EXPECT_EQ(CopyFolderOf(L"E:\\Backup\\a\u00AB0001\u00BB.txt"), L"E:\\Backup");
    EXPECT_EQ(CopyFolderOf(L"E:\\Backup\\Docs\u00AB0001\u00BB.smith\\My\\Docs"), L"E:\\Backup");
    EXPECT_EQ(CopyFolderOf(L"a\u00AB0001\u00BB.txt"), L"");
}

}  // namespace
}  // namespace vw
