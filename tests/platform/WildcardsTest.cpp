#include "platform/Wildcards.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace vw {
namespace {

struct Row {
    std::wstring_view text;
    std::wstring_view pattern;
    bool matches;
};

void Check(const Row& row) {
    EXPECT_EQ(MatchesWildcard(row.text, row.pattern), row.matches)
        << "text " << testing::PrintToString(row.text) << ", pattern "
        << testing::PrintToString(row.pattern);
}

TEST(MatchesWildcard, MatchesPlainTextWithoutRegardToCase) {
    const Row rows[] = {
        {L"", L"", true},
        {L"a", L"", false},
        {L"", L"a", false},
        {L"Report.doc", L"rEPORT.DOC", true},
        {L"Report.doc", L"Report.do", false},
        {L"Report.do", L"Report.doc", false},
        {L"\u00C4\u0416", L"\u00E4\u0436", true},  // Latin and Cyrillic letters beyond ASCII
        {L"\u0645\u0644\u0641", L"\u0645\u0644\u0641", true},
    };
    for (const Row& row : rows) Check(row);
}

TEST(MatchesWildcard, AnyCharacterAnyRunAndDigits_Match) {
    const Row rows[] = {
        {L"a", L"?", true},
        {L"", L"?", false},
        {L"ab", L"?", false},
        {L"abc", L"a?c", true},
        {L"", L"*", true},
        {L"anything", L"*", true},
        {L"", L"**", true},
        {L"abc", L"*c", true},
        {L"abc", L"*b", false},
        {L"abc", L"a*", true},
        {L"abcbc", L"a*bc", true},
        {L"abcbd", L"a*bc", false},
        {L"aXbXc", L"a*b*c", true},
        {L"acb", L"a*b*c", false},
        {L"mississippi", L"*iss*ip*i", true},
        {L"mississippi", L"*iss*iss*iss*", false},
        {L"5", L"#", true},
        {L"x", L"#", false},
        {L"12", L"##", true},
        {L"1", L"##", false},
        {L"\u0661", L"#", false},  // an Arabic digit is none of 0-9
        {L"ab", L"?*?", true},
        {L"a", L"?*?", false},
        {L"#", L"?", true},
        {L"*", L"a", false},
    };
    for (const Row& row : rows) Check(row);
}

TEST(MatchesWildcard, ListsRangesAndTheirNegation_Match) {
    const Row rows[] = {
        {L"b", L"[abc]", true},     {L"B", L"[abc]", true},
        {L"b", L"[ABC]", true},     {L"d", L"[abc]", false},
        {L"", L"[abc]", false},     {L"ab", L"[abc]", false},
        {L"m", L"[a-z]", true},     {L"M", L"[a-z]", true},
        {L"m", L"[A-Z]", true},     {L"5", L"[a-z]", false},
        {L"5", L"[a-z0-9]", true},  {L"5", L"[!a-z]", true},
        {L"m", L"[!a-z]", false},   {L"M", L"[!a-z]", false},
        {L"", L"[!a]", false},      {L"!", L"[!a]", true},
        {L"x", L"[z-a]", false},    {L"a1c", L"a[0-9]c", true},
        {L"a*c", L"a[*]c", true},   {L"abc", L"a[*]c", false},
        {L"a?c", L"a[?]c", true},   {L"a#c", L"a[#]c", true},
        {L"a5c", L"a[#]c", false},  {L"[", L"[[]", true},
        {L"x[1]", L"x[[]1]", true}, {L"\u00E9", L"[\u00C0-\u00DE]", true},
    };
    for (const Row& row : rows) Check(row);
}

TEST(MatchesWildcard, HyphenAtEitherEndOfAList_IsItself) {
    const Row rows[] = {
        {L"-", L"[-a]", true},   {L"a", L"[-a]", true},   {L"b", L"[-a]", false},
        {L"-", L"[a-]", true},   {L"a", L"[a-]", true},   {L"b", L"[a-]", false},
        {L"-", L"[!-a]", false}, {L"b", L"[!-a]", true},  {L"-", L"[-]", true},
        {L"a", L"[-]", false},   {L"-", L"[a-c-]", true}, {L"b", L"[a-c-]", true},
    };
    for (const Row& row : rows) Check(row);
}

TEST(MatchesWildcard, EmptyList_MatchesNoCharacter) {
    const Row rows[] = {
        {L"", L"[]", true},        {L"a", L"[]", false},  {L"ab", L"a[]b", true},
        {L"a[]b", L"a[]b", false}, {L"ab", L"*[]", true}, {L"ab", L"[][]a[]*", true},
        {L"!", L"[!]", true},      {L"a", L"[!]", false},
    };
    for (const Row& row : rows) Check(row);
}

TEST(MatchesWildcard, BracketWithoutItsEnd_IsItself) {
    const Row rows[] = {
        {L"[", L"[", true},
        {L"a", L"[", false},
        {L"a[b", L"a[b", true},
        {L"ab", L"a[b", false},
        {L"C:\\x[1", L"C:\\x[*", true},
        {L"]", L"]", true},
        {L"a]b", L"a]b", true},
        {L"[[", L"[[", true},
        {L"][", L"][", true},
        {L"[!a", L"[!a", true},
    };
    for (const Row& row : rows) Check(row);
}

TEST(MatchesWildcard, MatchesPathsAsPatterns) {
    const Row rows[] = {
        {L"C:\\Store\\Docs\\", L"C:\\Store*", true},
        {L"c:\\STORE", L"C:\\Store*", true},
        {L"C:\\Storeroom", L"C:\\Store*", true},
        {L"C:\\Work", L"C:\\Store*", false},
        // Brackets in a folder's name are a list, so such a folder does not match itself.
        {L"C:\\a[1]\\x", L"C:\\a[1]*", false},
        {L"C:\\a1\\x", L"C:\\a[1]*", true},
        {L"\\\\server\\share\\x", L"\\\\SERVER\\share*", true},
        {L"D:\\Work", L"?:\\*", true},
        {L"\\\\server\\x", L"?:\\*", false},
        {L"task.VWL", L"*.vwl", true},
        {L".vwl", L"*.vwl", true},
        {L"task.vwl.txt", L"*.vwl", false},
    };
    for (const Row& row : rows) Check(row);
}

TEST(MatchesWildcard, RecognisesCopyNames) {
    const std::wstring_view copy = L"*«????»*";
    const Row rows[] = {
        {L"E:\\Store\\Report«0001».doc", copy, true},
        {L"«0001»", copy, true},
        {L"Report«00??».doc", copy, true},
        {L"Report«10001».doc", copy, false},
        {L"Report«001».doc", copy, false},
        {L"Report0001.doc", copy, false},
        {L"Report«10001».doc", L"*«*»*", true},
        {L"»«", L"*«*»*", false},
    };
    for (const Row& row : rows) Check(row);
}

TEST(MatchesWildcard, EndsSoonForEveryPattern) {
    const auto begin = std::chrono::steady_clock::now();

    const std::wstring text(10000, L'a');
    std::wstring stars;
    for (int i = 0; i < 1000; ++i) stars += L"*a";
    EXPECT_TRUE(MatchesWildcard(text, stars));
    EXPECT_FALSE(MatchesWildcard(text, stars + L"b"));
    EXPECT_TRUE(MatchesWildcard(text, std::wstring(1000, L'*')));
    EXPECT_FALSE(MatchesWildcard(text, std::wstring(1000, L'*') + L"b"));
    EXPECT_FALSE(MatchesWildcard(text, L"*" + std::wstring(1000, L'a') + L"b"));
    EXPECT_FALSE(MatchesWildcard(text, L"*" + std::wstring(5000, L'[')));
    EXPECT_FALSE(
        MatchesWildcard(std::wstring(10000, L'['), L"*" + std::wstring(1000, L'[') + L"x"));

    const auto end = std::chrono::steady_clock::now();
    EXPECT_LT(end - begin, std::chrono::seconds(10));  // thousands of years when it backtracks
}

}  // namespace
}  // namespace vw
