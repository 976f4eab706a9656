#include "engine/CommentLine.h"

#include <gtest/gtest.h>

#include "engine/NameEncoding.h"
#include "platform/RuntimeError.h"
#include "tests/support/FakeCodePage.h"

namespace vw {
namespace {

using namespace std::chrono_literals;

const Date kSample = MakeDate({2005, 3, 5, 14, 7, 9});

TEST(CommentLine, ContainsDateAndFolder) {
    EXPECT_EQ(CommentLine(kSample, {}, L"C:\\Docs"),
              L"Backed Files Date Last Modified:05/03/2005-14:07:09+Original Location:C:\\Docs");
    EXPECT_EQ(CommentLine(kSample, {L'.', L'h'}, L""),
              L"Backed Files Date Last Modified:05.03.2005-14h07h09+Original Location:");
    EXPECT_EQ(kCommentExtension, L".vwc");
}

TEST(CommentText, ContainsTheLineAndItsMarks) {
    EXPECT_EQ(CommentText(L"line", Completeness::Whole), L"line\r\n");
    EXPECT_EQ(CommentText(L"line", Completeness::MissesFiles), L"line\r\nIncomplete\r\n");
    EXPECT_EQ(CommentText(L"line", Completeness::CutShort), L"line\r\nIncomplete\r\nCancelled\r\n");
    for (const Completeness completeness :
         {Completeness::Whole, Completeness::MissesFiles, Completeness::CutShort}) {
        EXPECT_EQ(CompletenessOf(CommentText(L"line", completeness)), completeness);
        EXPECT_EQ(FirstLine(CommentText(L"line", completeness)), L"line");
    }
}

TEST(CommentText, NoMark_MeansAWholeCopy) {
    for (const wchar_t* text : {L"", L"line", L"line\r\n", L"Incomplete", L"Incomplete\r\n",
                                L"line\r\nincomplete pages\r\n", L"line\r\n\r\nIncomplete\r\n"}) {
        EXPECT_EQ(CompletenessOf(text), Completeness::Whole) << text;
    }
}

TEST(CommentText, UnknownMark_MeansThatFilesAreMissing) {
    EXPECT_EQ(CompletenessOf(L"line\r\nIncomplete\r\nUnknown\r\n"), Completeness::MissesFiles);
    EXPECT_EQ(CompletenessOf(L"line\nIncomplete"), Completeness::MissesFiles);
}

TEST(CommentLine, WritesDatesInFullWidth) {
    struct Row {
        Date date;
        const wchar_t* text;
    };
    const Row rows[] = {
        {kSample, L"05/03/2005-14:07:09"},
        {kMissingDate, L"01/01/1000-00:00:00"},
        {kEmptyFolderDate, L"01/01/1900-00:00:00"},
        {kFirstDate, L"01/01/0100-00:00:00"},
        {kLastDate, L"31/12/9999-23:59:59"},
        // What another length would shift is held at the ends.
        {kFirstDate - 1s, L"01/01/0100-00:00:00"},
        {kLastDate + 1s, L"31/12/9999-23:59:59"},
        {Date::max(), L"31/12/9999-23:59:59"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(CommentDateText(row.date, {}), row.text);
    }
}

TEST(CommentLine, ReadsBackEveryDateThatItWrites) {
    const DateSeparators separators[] = {{}, {L'.', L'.'}, {L'-', L'h'}, {L'/', L'/'}};
    for (const DateSeparators& pair : separators) {
        for (Date date = kFirstDate; date <= kLastDate; date += 97 * 24h + 3661s) {
            ASSERT_EQ(ReadCommentDate(CommentDateText(date, pair)), date);
        }
    }
}

TEST(CommentLine, ReadsTheDateByPositionAlone) {
    struct Row {
        std::wstring_view field;
        DateParts parts;
    };
    const Row rows[] = {
        {L"05/03/2005-14:07:09+Original Location:C:\\Docs", {2005, 3, 5, 14, 7, 9}},
        {L"05.03.2005 14h07h09", {2005, 3, 5, 14, 7, 9}},
        {L"05x03x2005x14x07x09", {2005, 3, 5, 14, 7, 9}},
        {L"31912920209239599589", {2020, 12, 31, 23, 59, 58}},
        {L" 5/ 3/2005- 4: 7: 9", {2005, 3, 5, 4, 7, 9}},
        // damaged fields give what their digits give
        {L"05/03/2005", {2005, 3, 5}},
        {L"05/03/05  -14:07:09", {2005, 3, 5, 14, 7, 9}},
        {L"05/03/29", {2029, 3, 5}},
        {L"05/03/30", {1930, 3, 5}},
        {L"05/03", {2000, 3, 5}},
        {L"", {1999, 11, 30}},
        {L"garbage", {1999, 11, 30}},
        {L"5/3/2005-14:07:09", {2004, 12, 5, 0, 0, 0}},  // every position is another one
        {L"05/03/2005914:07:09", {2005, 3, 5, 14, 7, 9}},
        {L"05/03/2005-14:07:9", {2005, 3, 5, 14, 7, 9}},
        {L"31/02/2005-00:00:00", {2005, 3, 3}},
        {L"00/00/2005-00:00:00", {2004, 11, 30}},
        {L"01/13/2005-25:61:61", {2006, 1, 2, 2, 2, 1}},
        {L"05/03/200x-14:07:09", {200, 3, 5, 14, 7, 9}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(PartsOf(ReadCommentDate(row.field)), row.parts)
            << testing::PrintToString(row.field);
    }
}

TEST(CommentLine, NoDate_ThrowsError5) {
    for (const std::wstring_view field : {L"05/03/-999-14:07:09", L"99/99/9999-99:99:99"}) {
        try {
            (void)ReadCommentDate(field);
            ADD_FAILURE() << testing::PrintToString(field);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), 5);
        }
    }
}

TEST(CommentLine, FindsItsFieldsInAnyLetterCase) {
    const std::wstring line = CommentLine(kSample, {}, L"C:\\Docs");
    EXPECT_EQ(CommentDateField(line), L"05/03/2005-14:07:09+Original Location:C:\\Docs");
    EXPECT_EQ(CommentLocationField(line), L"C:\\Docs");

    EXPECT_EQ(CommentDateField(L"x backed files date last modified:7"), L"7");
    EXPECT_EQ(CommentLocationField(L"ORIGINAL LOCATION:D:"), L"D:");
    EXPECT_EQ(CommentLocationField(L"Original Location:"), L"");
    EXPECT_EQ(CommentLocationField(L"Original Location:a Original Location:b"),
              L"a Original Location:b");
}

TEST(CommentLine, NoLabels_ReturnsNoFields) {
    for (const std::wstring_view line :
         {L"", L"Backed Files Date Last Modified", L"Original Location", L"Original  Location:"}) {
        EXPECT_EQ(CommentDateField(line), std::nullopt) << testing::PrintToString(line);
        EXPECT_EQ(CommentLocationField(line), std::nullopt) << testing::PrintToString(line);
    }
}

TEST(CommentLine, ArabicFolder_IsReadBack) {
    const std::wstring folder = L"C:\\\u0645\u0644\u0641";
    for (const test::UpperHalf& page : {test::kArabic, test::kWestern}) {
        const test::FakeCodePage ansi(page);
        const std::wstring line = CommentLine(kSample, {}, EnglishNameFrom(folder, ansi));
        EXPECT_TRUE(ansi.Holds(line));
        EXPECT_EQ(EnglishNameOrigin(*CommentLocationField(line), ansi), folder);
        const std::wstring field = EnglishNameOrigin(*CommentDateField(line), ansi);
        EXPECT_EQ(ReadCommentDate(field), kSample);
    }
}

TEST(CommentLine, ReadsTheFirstLineOfAFile) {
    struct Row {
        std::wstring_view text;
        std::wstring_view line;
    };
    const Row rows[] = {
        {L"", L""},      {L"a", L"a"},    {L"a\r\n", L"a"}, {L"a\r\nb", L"a"},
        {L"a\nb", L"a"}, {L"a\rb", L"a"}, {L"\r\nb", L""},  {L"a b,c\r\n", L"a b,c"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(FirstLine(row.text), row.line) << testing::PrintToString(row.text);
    }
}

TEST(CommentLine, FindsOneCharacterToSeparateDates) {
    struct Row {
        std::wstring_view localeText;
        wchar_t separator;
    };
    const Row rows[] = {
        {L"/", L'/'},       {L".", L'.'},    {L"-", L'-'},
        {L". ", L'.'},                                           // Hungarian, Czech, Slovak
        {L"\u200F/", L'/'},                                      // Arabic
        {L" ", L'!'},       {L"", L'!'},     {L"\u5E74", L'!'},  // no 7-bit character
        {L"\u060D", L'!'},  {L"5", L'!'},    {L"0.", L'.'},
        {L"\u00A0-", L'-'}, {L"h", L'h'},    {L"'", L'!'},  // begins an encoded run
        {L"\r\n", L'!'},    {L"\x7F", L'!'}, {L"\u061C\u200E.", L'.'},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(OneCharacterSeparator(row.localeText, L'!'), row.separator)
            << testing::PrintToString(row.localeText);
    }
}

}  // namespace
}  // namespace vw
