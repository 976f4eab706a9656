#include "fsutil/WorkingName.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/Utf8.h"
#include "platform/Wildcards.h"

namespace vw {

void PrintTo(const WorkingName& name, std::ostream* out) {
    *out << static_cast<int>(name.state) << ' ' << name.item << ' ' << name.copy << ' '
         << name.date.time_since_epoch().count() << ' ' << name.owner.computer << ' '
         << name.owner.processId << ' ' << name.owner.processStart;
}

namespace {

using namespace std::chrono_literals;

WorkingName Sample() {
    WorkingName name;
    name.state = WorkingState::Ready;
    name.item = 0x0123456789ABCDEF;
    name.copy = 0xFEDCBA9876543210;
    name.date = MakeDate({2005, 3, 5, 14, 7, 9});
    name.owner = {0x89ABCDEF, 0x00001234, 0x01D5000000000001};
    return name;
}

constexpr std::wstring_view kSampleTail =
    L".vwready-0123456789abcdef-fedcba9876543210-20050305140709-89abcdef-00001234-"
    L"01d5000000000001";

std::wstring SampleText(std::wstring_view firstName) {
    return std::wstring(firstName).append(kSampleTail);
}

TEST(WorkingName, Parsed_HasItemCopyDateAndProcess) {
    EXPECT_EQ(FormatWorkingName(Sample(), L"Report"), SampleText(L"Report"));
    EXPECT_EQ(ParseWorkingName(SampleText(L"Report")), Sample());
}

// The parser of the versions before takes fields of fixed lengths from the right end, and three
// state words.
TEST(WorkingName, Format_ReadyCopy_HasItsTimeAndCompleteness) {
    WorkingName name = Sample();
    name.made = MakeDate({2005, 3, 5, 15, 0, 1});
    for (const auto& [completeness, word] : {std::pair{Completeness::Whole, L".vwready-"},
                                             {Completeness::MissesFiles, L".vwpart-"},
                                             {Completeness::CutShort, L".vwcut-"}}) {
        name.completeness = completeness;
        const std::wstring text = FormatWorkingName(name, L"Report");
        EXPECT_EQ(text, L"Report" + std::wstring(word) +
                            L"0123456789abcdef-fedcba9876543210-20050305140709-20050305150001-"
                            L"89abcdef-00001234-01d5000000000001");
        EXPECT_EQ(ParseWorkingName(text), name);
    }
}

TEST(WorkingName, Parse_OtherStateWithATime_IsRefused) {
    for (const wchar_t* word : {L".vwnew-", L".vwold-"}) {
        EXPECT_FALSE(ParseWorkingName(
            L"a" + std::wstring(word) +
            L"0123456789abcdef-fedcba9876543210-20050305140709-20050305150001-89abcdef-00001234-"
            L"01d5000000000001"));
    }
    // Whether the copy is whole is only known with the time.
    EXPECT_FALSE(ParseWorkingName(
        L"a.vwpart-0123456789abcdef-fedcba9876543210-20050305140709-89abcdef-00001234-"
        L"01d5000000000001"));
}

TEST(WorkingName, FormatThenParse_ReturnsTheSameName) {
    constexpr std::uint64_t kAll = 0xFFFFFFFFFFFFFFFF;
    WorkingName most;
    most.item = most.copy = kAll;
    most.date = kLastDate;
    most.owner = {0xFFFFFFFF, 0xFFFFFFFF, kAll};
    for (WorkingName name : {WorkingName(), Sample(), most}) {
        for (const WorkingState state :
             {WorkingState::New, WorkingState::Ready, WorkingState::Old}) {
            for (const Date date : {kNoDate, kFirstDate, kMissingDate, kEmptyFolderDate,
                                    kNoDate + 1s, kNoDate - 1s, Date{}, name.date, kLastDate}) {
                name.state = state;
                name.date = date;
                for (const wchar_t* firstName :
                     {L"", L"Report", L"a.vwnew-1", L"x-y.z", L"\u0645"}) {
                    EXPECT_EQ(ParseWorkingName(FormatWorkingName(name, firstName)), name);
                }
            }
        }
    }
}

TEST(WorkingName, ClampsDatesToThoseOfAComment) {
    WorkingName name;
    name.date = kLastDate + 1s;
    EXPECT_EQ(ParseWorkingName(FormatWorkingName(name, L"a"))->date, kLastDate);
    name.date = kFirstDate - 1s;
    EXPECT_EQ(ParseWorkingName(FormatWorkingName(name, L"a"))->date, kFirstDate);
}

TEST(WorkingName, Format_MakesTheFirstNameValid) {
    const std::wstring most(32, L'x');
    const std::wstring high(1, static_cast<wchar_t>(0xD83D));
    const std::wstring low(1, static_cast<wchar_t>(0xDE00));
    struct Row {
        std::wstring firstName;
        std::wstring beginning;
    };
    const Row rows[] = {
        {L"", L""},
        {L"Report", L"Report"},
        {most, most},
        {most + L"y", most},
        {std::wstring(20, L'\u0645'), std::wstring(16, L'\u0645')},     // two bytes each
        {std::wstring(20, L'\u4E2D'), std::wstring(10, L'\u4E2D')},     // three bytes each
        {std::wstring(30, L'x') + high + low, std::wstring(30, L'x')},  // a pair is not cut
        {std::wstring(28, L'x') + high + low, std::wstring(28, L'x') + high + low},
        {std::wstring(30, L'x') + L"\xD800\xDC00", std::wstring(30, L'x')},
        {std::wstring(30, L'x') + L"\xDBFF\xDC00", std::wstring(30, L'x')},
        {std::wstring(30, L'x') + high, std::wstring(30, L'x') + high},  // was half before
        {std::wstring(28, L'x') + L"\xD800\xDFFF", std::wstring(28, L'x') + L"\xD800\xDFFF"},
        {std::wstring(31, L'x') + L"\u0080", std::wstring(31, L'x')},
        {std::wstring(30, L'x') + L"\u0800", std::wstring(30, L'x')},
        {L"a«0001»b", L"a_0001_b"},
        {L"a. .", L"a___"},
        {L"...", L"___"},
        {L".a", L".a"},
        {std::wstring(30, L'x') + L". y", std::wstring(30, L'x') + L"__"},
        {L"C:", L"C_"},
        {L"a\\b/c*d?e\"f<g>h|i\nj", L"a_b_c_d_e_f_g_h_i_j"},
    };
    for (const Row& row : rows) {
        const std::wstring name = FormatWorkingName(Sample(), row.firstName);
        EXPECT_EQ(name, SampleText(row.beginning));
        EXPECT_EQ(ParseWorkingName(name), Sample());
    }
}

// Shares that encrypt names take 143 bytes; longer names failed there with "name too long".
TEST(WorkingName, FitsWithItsCommentInto143Bytes) {
    WorkingName name = Sample();
    name.made = name.date;
    for (const wchar_t letter : {L'x', L'\u0645', L'\u4E2D'}) {
        const std::wstring text = FormatWorkingName(name, std::wstring(200, letter));
        EXPECT_LE(ToUtf8(text + std::wstring(kCommentExtension)).size(), 143U);
    }
}

TEST(WorkingName, Parse_NameOfAnEarlierVersion_IsRead) {
    EXPECT_EQ(ParseWorkingName(SampleText(std::wstring(60, L'x'))), Sample());
    EXPECT_EQ(ParseWorkingName(SampleText(std::wstring(61, L'x'))), std::nullopt);
}

TEST(WorkingName, ContainsNoMarksOfACopy) {
    for (const wchar_t* firstName : {L"Report«0001»", L"«0001»", L"«????»"}) {
        const std::wstring name = FormatWorkingName(Sample(), firstName);
        EXPECT_FALSE(MatchesWildcard(name, L"*«*")) << testing::PrintToString(name);
        EXPECT_FALSE(MatchesWildcard(name, L"*»*")) << testing::PrintToString(name);
    }
}

TEST(WorkingName, Parse_OtherName_IsRefused) {
    const std::wstring good = SampleText(L"Report");
    std::vector<std::wstring> names{
        L"",
        L"Report.doc",
        L"Report«0001».doc",
        good + L"0",
        good + L" ",
        good.substr(0, good.size() - 1),
        std::wstring(kSampleTail.substr(1)),
        SampleText(L"a«b"),
        SampleText(L"Report«0001»"),  // the copy of a file that is named like a working entry
        SampleText(L"a\\b"),
        SampleText(L"a."),
        SampleText(L"a "),
        SampleText(std::wstring(61, L'x')),
    };
    const auto changed = [&good](std::wstring_view from, std::wstring_view to) {
        std::wstring name = good;
        return name.replace(name.find(from), from.size(), to);
    };
    names.push_back(changed(L".vwready", L".vwdone"));
    names.push_back(changed(L".vwready", L".VWREADY"));
    names.push_back(changed(L".vwready", L".vwReady"));
    names.push_back(changed(L".vwready", L"vwready"));
    names.push_back(changed(L"89abcdef-", L"89ABCDEF-"));
    names.push_back(changed(L"89abcdef-", L"89abcdeg-"));
    names.push_back(changed(L"89abcdef-", L"89abcdef_"));
    names.push_back(changed(L"01d5", L"+1d5"));
    names.push_back(changed(L"20050305140709", L"2005030514070x"));
    names.push_back(changed(L"20050305140709", L"20051305140709"));
    names.push_back(changed(L"20050305140709", L"20050005140709"));
    names.push_back(changed(L"20050305140709", L"20050230140709"));
    names.push_back(changed(L"20050305140709", L"20050300140709"));
    names.push_back(changed(L"20050305140709", L"20050305240709"));
    names.push_back(changed(L"20050305140709", L"20050305146009"));
    names.push_back(changed(L"20050305140709", L"20050305140760"));
    names.push_back(changed(L"20050305140709", L"00050305140709"));
    names.push_back(changed(L"20050305140709", L"99999999999999"));
    names.push_back(changed(L"20050305140709", L"01000001000000"));  // before the first year
    names.push_back(changed(L"20050305140709", L"01000100000000"));
    names.push_back(changed(L"20050305140709", L"99991301000000"));  // beyond the last year
    names.push_back(changed(L"20050305140709", L"99991232000000"));
    names.push_back(changed(L"20050305140709", L"99991231240000"));
    names.push_back(changed(L"20050305140709", L"99991231236000"));
    names.push_back(changed(L"20050305140709", L"99991231235960"));
    names.push_back(changed(L"20050305140709", L"16010101000000"));  // is written as zeros
    names.push_back(changed(L"20050305140709", L"2005-305140709"));
    names.push_back(changed(L"20050305140709", L"zzzz0305140709"));  // no year of the calendar
    for (const std::wstring& name : names) {
        EXPECT_EQ(ParseWorkingName(name), std::nullopt) << testing::PrintToString(name);
    }
}

TEST(WorkingName, Parse_AnyCharacterMissing_IsRefused) {
    const std::wstring good = SampleText(L"Report");
    for (std::size_t i = std::wstring_view(L"Report").size(); i < good.size(); ++i) {
        std::wstring name = good;
        name.erase(i, 1);
        EXPECT_EQ(ParseWorkingName(name), std::nullopt) << testing::PrintToString(name);
    }
}

TEST(NameKey, IgnoresLetterCaseAndOneFinalSeparator) {
    EXPECT_EQ(NameKey(L"C:\\Docs\\r\u00E9sum\u00E9"), NameKey(L"c:\\DOCS\\R\u00C9SUM\u00C9"));
    EXPECT_EQ(NameKey(L"C:\\Docs\\"), NameKey(L"C:\\Docs"));
    EXPECT_NE(NameKey(L"C:\\Docs\\\\"), NameKey(L"C:\\Docs"));
    EXPECT_NE(NameKey(L"C:\\Docs"), NameKey(L"C:\\Doc"));
    EXPECT_NE(NameKey(L"ab"), NameKey(L"ba"));
    EXPECT_NE(NameKey(L"\u0100"), NameKey(std::wstring{L'\x01', L'\0'}));
}

TEST(NameKey, KnownNames_HaveTheKeysOfEarlierRuns) {
    // Entries of earlier runs are found by it: these are the sums over the bytes of the text.
    EXPECT_EQ(NameKey(L""), 0xCBF29CE484222325U);
    EXPECT_EQ(NameKey(L"\\"), 0xCBF29CE484222325U);
    EXPECT_EQ(NameKey(L"A"), 0x0908A207B5A15704U);
    EXPECT_EQ(NameKey(L"E:\\Store\\Report\u00AB0001\u00BB.doc"), 0x854091DA495FD57CU);
}

TEST(IsOwnEntry, AcceptsWorkingEntriesTheirCommentsAndLocks) {
    const std::wstring working = FormatWorkingName(Sample(), L"Letter");
    for (const std::wstring& name : {working, working + L".vwc", std::wstring(kLockFileName),
                                     std::wstring(kLockFileName) + L"-1234-5"}) {
        EXPECT_TRUE(IsOwnEntry(name)) << name.c_str();
    }
}

TEST(IsOwnEntry, RefusesNamesOfUsers) {
    const std::wstring working = FormatWorkingName(Sample(), L"Letter");
    for (const std::wstring& name :
         {std::wstring(L"Letter.txt"), std::wstring(L"Letter«0001».txt"),
          std::wstring(L"Letter«0001».txt.vwc"), std::wstring(L"list.vwl"),
          std::wstring(L"Letter.vwnew-1"), std::wstring(L"Vaultwright.exe"), working + L".txt",
          std::wstring(L"My Vaultwright.vwlock"), working.substr(0, working.size() - 1),
          std::wstring()}) {
        EXPECT_FALSE(IsOwnEntry(name)) << name.c_str();
    }
}

}  // namespace
}  // namespace vw
