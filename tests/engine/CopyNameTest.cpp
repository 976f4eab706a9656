#include "engine/CopyName.h"

#include <gtest/gtest.h>

#include "fsutil/PathText.h"
#include "platform/RuntimeError.h"
#include "platform/Wildcards.h"

namespace vw {
namespace {

TEST(CopyName, ReturnsTheNamesOfTheCopiesOfAnItem) {
    struct Row {
        std::wstring_view item;
        int copyNumber;
        int locationNumber;
        std::wstring_view name;
    };
    const Row rows[] = {
        {L"C:\\Docs\\Report.doc", 1, 0, L"E:\\Store\\Report«0001».doc"},
        {L"C:\\Work\\", 3, 0, L"E:\\Store\\Work«0003»"},
        {L"C:\\Docs\\f.tar.gz", 2, 7, L"E:\\Store\\f.tar«0702».gz"},
        {L"C:\\Docs\\README", 1, 0, L"E:\\Store\\README«0001»"},  // ends in "»"
        {L"C:\\Docs\\.profile", 1, 0, L"E:\\Store\\«0001».profile"},
        {L"C:\\Docs\\Report.doc", 21, 99, L"E:\\Store\\Report«9921».doc"},
        // -1 means all copies
        {L"C:\\Docs\\Report.doc", kAnyCopyNumber, 0, L"E:\\Store\\Report«00??».doc"},
        {L"C:\\Docs\\Report.doc", kAnyCopyNumber, 12, L"E:\\Store\\Report«12??».doc"},
        // the last dot of the whole path, even in a folder's name
        {L"C:\\Old.Files\\Work\\", 1, 0, L"E:\\Store\\Work«0001».Files\\Work\\"},
        {L"C:\\Users\\j.smith\\Docs\\", 1, 0, L"E:\\Store\\Docs«0001».smith\\Docs\\"},
        {L"C:\\Data.bak\\Report", 1, 0, L"E:\\Store\\Report«0001».bak\\Report"},
        // names beyond two digits
        {L"C:\\Docs\\Report.doc", 1, 100, L"E:\\Store\\Report«10001».doc"},
        {L"C:\\Docs\\Report.doc", 100, 0, L"E:\\Store\\Report«00100».doc"},
        {L"C:\\Docs\\Report.doc", 1, 32767, L"E:\\Store\\Report«3276701».doc"},
        // items that the file system may not hold a copy of: the name is made all the same
        {L"C:\\", 1, 0, L"E:\\Store\\C:«0001»"},
        {L"C:\\Docs\\*", 1, 0, L"E:\\Store\\*«0001»"},
        {L"", 1, 0, L"E:\\Store\\«0001»"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(CFilePackageName(row.item, row.copyNumber, row.locationNumber, L"E:\\Store"),
                  row.name);
    }
}

TEST(CopyName, AddsASeparatorAfterTheDestination) {
    EXPECT_EQ(CFilePackageName(L"C:\\a.txt", 1, 0, L"D:\\"), L"D:\\\\a«0001».txt");
    EXPECT_EQ(CFilePackageName(L"C:\\a.txt", 1, 0, L"D:"), L"D:\\a«0001».txt");
}

TEST(CopyName, RefusesCopyNumberZero) {
    try {
        (void)CFilePackageName(L"C:\\a.txt", 0, 0, L"E:\\Store");
        FAIL() << "nothing was raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 1000);
        EXPECT_EQ(error.Path(), L"C:\\a.txt");
    }
}

TEST(CopyName, ReadsTheFieldsOfAName) {
    struct Row {
        std::wstring_view name;
        int copyNumber;
        std::wstring_view location;
        std::wstring_view origin;
    };
    const Row rows[] = {
        {L"Report«0102».doc", 2, L"01", L"Report.doc"},
        {L"E:\\Store\\Report«0102».doc", 2, L"01", L"E:\\Store\\Report.doc"},
        {L"Work«0003»", 3, L"00", L"Work"},
        {L"Work«0001».Files\\Work\\", 1, L"00", L"Work.Files\\Work\\"},
        {L"«0001».profile", 1, L"00", L".profile"},
        {L"Report«9921».doc", 21, L"99", L"Report.doc"},
        {L"Report«10001».doc", 1, L"00", L"Report.doc"},  // only two digits of each are read
        {L"Report«00??».doc", 0, L"00", L"Report.doc"},
        {L"Report«ab5x».doc", 0, L"ab", L"Report.doc"},
        {L"Report«00 5».doc", 0, L"00", L"Report.doc"},
        {L"Report«00-1».doc", 0, L"00", L"Report.doc"},
        // short runs: the characters before them are taken
        {L"Report«01».doc", 1, L"t«", L"Report.doc"},
        {L"Report«».doc", 0, L"or", L"Report.doc"},
        {L"«»", 0, L"", L""},
        {L"«1»", 0, L"", L""},
        {L"«12»", 12, L"", L""},
        {L"a«12»", 12, L"a«", L"a"},
        {L"12»", 12, L"", L""},
        {L"1»", 0, L"", L""},
        {L"»", 0, L"", L""},
        {L"4512»x", 12, L"45", L""},
        // no "»": the whole text follows
        {L"Report«0102.doc", 0, L"", L"ReportReport«0102.doc"},
        {L"«", 0, L"", L"«"},
        // the first "«" and the last "»" count
        {L"a«b»c«0102».doc", 2, L"01", L"a.doc"},
        {L"a«0102».b»c", 0, L"2»", L"ac"},
        {L"a»b«c", 0, L"", L"a»bb«c"},
        {L"Report.doc", 0, L"", L""},
        {L"", 0, L"", L""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(CFileBackNumber(row.name), row.copyNumber) << testing::PrintToString(row.name);
        EXPECT_EQ(CFileSP(row.name), row.location) << testing::PrintToString(row.name);
        EXPECT_EQ(CFileOrigin(row.name), row.origin) << testing::PrintToString(row.name);
    }
}

TEST(CopyName, ReadsBackWhatWasWrittenBelowAHundred) {
    for (int location = 0; location < 100; ++location) {
        for (int number = 1; number < 100; ++number) {
            const std::wstring name =
                CFilePackageName(L"C:\\Docs\\Report.doc", number, location, L"E:\\Store");
            ASSERT_EQ(CFileBackNumber(name), number) << testing::PrintToString(name);
            ASSERT_EQ(std::stoi(CFileSP(name)), location) << testing::PrintToString(name);
            ASSERT_EQ(MFileDosShell::CFileName(CFileOrigin(name)), L"Report.doc");
            ASSERT_TRUE(MatchesWildcard(name, kCopyNamePattern)) << testing::PrintToString(name);
        }
    }
}

TEST(CopyName, ThreeDigitNumber_IsHiddenFromTheBrowser) {
    const std::wstring name = CFilePackageName(L"C:\\Docs\\Report.doc", 1, 100, L"E:\\Store");
    EXPECT_FALSE(MatchesWildcard(name, kCopyNamePattern));
    EXPECT_TRUE(MatchesWildcard(name, L"*«*»*"));
}

TEST(CopyName, AnyNumber_MatchesAllCopies) {
    const std::wstring any =
        CFilePackageName(L"C:\\Docs\\Report.doc", kAnyCopyNumber, 4, L"E:\\Store");
    for (int number = 1; number < 100; ++number) {
        EXPECT_TRUE(MatchesWildcard(
            CFilePackageName(L"C:\\Docs\\Report.doc", number, 4, L"E:\\Store"), any));
    }
    EXPECT_FALSE(
        MatchesWildcard(CFilePackageName(L"C:\\Docs\\Report.doc", 1, 5, L"E:\\Store"), any));
}

TEST(ParseCopyName, NameWithoutOwnMarks_ReadsAsEver) {
    const struct {
        const wchar_t* name;
        const wchar_t* origin;
        int location;
        int number;
    } rows[] = {
        {L"Report\u00AB0102\u00BB.doc", L"Report.doc", 1, 2},
        {L"Letters\u00AB1299\u00BB", L"Letters", 12, 99},
        {L"x\u00ABabcd\u00BB.txt", L"x.txt", 0, 0},
        {L"five\u00AB00010\u00BB.txt", L"five.txt", 0, 10},
        {L"\u00AB0001\u00BB", L"", 0, 1},
        {L"\u00AB0102\u00BB.txt", L".txt", 1, 2},
        {L"Report.doc", L"", 0, 0},
    };
    for (const auto& row : rows) {
        const CopyNameParts parts = ParseCopyName(row.name);
        EXPECT_EQ(parts.origin, row.origin) << testing::PrintToString(row.name);
        EXPECT_EQ(parts.origin, CFileOrigin(row.name));
        EXPECT_EQ(parts.location, row.location);
        EXPECT_EQ(parts.number, row.number);
    }
}

TEST(ParseCopyName, NameWithOwnMarks_CountsTheLastCopyMark) {
    for (const wchar_t* origin : {L"Rapport \u00ABfinal\u00BB.doc", L"Plan \u00AB2024\u00BB.doc",
                                  L"x\u00AB.txt", L"y\u00BB.txt", L"\u00AB\u00BB",
                                  L"Note 1.\u00ABvieux\u00BB", L"a\u00AB0001\u00BBb.txt"}) {
        const std::wstring path = std::wstring(L"C:\\Docs\\") + origin;
        const std::wstring copy = CFilePackageName(path, 23, 4, L"E:\\Backup");
        const CopyNameParts parts = ParseCopyName(MFileDosShell::CFileName(copy));
        EXPECT_EQ(parts.origin, origin) << testing::PrintToString(origin);
        EXPECT_EQ(parts.location, 4);
        EXPECT_EQ(parts.number, 23);
        EXPECT_EQ(ItemNameOf(copy), origin);
    }
}

TEST(ItemNameOf, CopyInFoldersOfItsOwn_HasTheItemsName) {
    for (const wchar_t* item :
         {L"C:\\j.smith\\My\\Docs", L"C:\\j.smith\\Dossier \u00ABvieux\u00BB"}) {
        const std::wstring copy = CFilePackageName(item, 1, 0, L"E:\\Backup");
        EXPECT_EQ(ItemNameOf(copy), MFileDosShell::CFileName(item));
    }
}

TEST(IsCopyName, CommentsAndUnmarkedNames_AreNoCopies) {
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

TEST(CopiesOfItem, WildcardsInTheName_AreLiteral) {
    const CopiesOfItem copies(L"Report #1 [new].doc", 1);
    EXPECT_TRUE(copies.Contains(L"Report #1 [new]\u00AB0101\u00BB.doc"));
    EXPECT_TRUE(copies.Contains(L"REPORT #1 [NEW]\u00AB0121\u00BB.DOC"));
    EXPECT_FALSE(copies.Contains(L"Report 71 n\u00AB0101\u00BB.doc"));
    EXPECT_FALSE(copies.Contains(L"Report #1 [new]\u00AB0001\u00BB.doc"));
    EXPECT_FALSE(copies.Contains(L"Report #1 [new]\u00AB0101\u00BB.docx"));
    EXPECT_FALSE(copies.Contains(L"Report #1 [new]\u00AB01\u00BB.doc"));
    EXPECT_FALSE(copies.Contains(L""));
}

TEST(FindCopyMark, NameWithoutACompleteMark_HasNone) {
    const std::wstring_view name = L"a\u00AB0001\u00BB";
    EXPECT_TRUE(FindCopyMark(name));
    EXPECT_FALSE(FindCopyMark(name.substr(0, name.size() - 1)));
    EXPECT_FALSE(FindCopyMark(L"\u00ABvieux\u00BB"));
}

TEST(ParseCopyName, MarkIsFollowedByAnotherClose_IsPartOfTheName) {
    const CopyNameParts parts = ParseCopyName(L"a\u00AB0102\u00BB\u00BBb");
    EXPECT_EQ(parts.origin, L"a\u00BBb");
    EXPECT_EQ(parts.location, 1);
    EXPECT_EQ(parts.number, 2);
}

TEST(IsCommentName, OtherFiles_AreNoComments) {
    EXPECT_TRUE(IsCommentName(L"a\u00AB0001\u00BB.txt.vwc"));
    EXPECT_FALSE(IsCommentName(L"a\u00AB0001\u00BB.txt"));
    EXPECT_FALSE(IsCommentName(L"a.vwc"));
}

}  // namespace
}  // namespace vw
