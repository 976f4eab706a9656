// What the program answers to its arguments alone.

#include "platform/Utf8.h"
#include "tests/console/VwTest.h"
#include "ui/VersionNumbers.h"

namespace vw::test {
namespace {

using VwArguments = VwTest;

TEST_F(VwArguments, Version_IsThatOfTheProject) {
    RunsTo(0, L"--version");
    EXPECT_EQ(lines, Texts{L"vw " + FromUtf8(VW_VERSION_TEXT)});
    EXPECT_EQ(errors, L"");
}

TEST_F(VwArguments, Help_NamesEveryVerb) {
    RunsTo(0, L"--help");
    std::wstring text;
    for (const std::wstring& line : lines) text += line + L"\n";
    for (const wchar_t* verb :
         {L"backup", L"preview", L"check", L"copies", L"restore", L"diff", L"schedule"}) {
        EXPECT_NE(text.find(std::wstring(L"  ") + verb), std::wstring::npos);
    }
    EXPECT_EQ(errors, L"");
}

TEST_F(VwArguments, HelpOfEachVerb_EndsWithZero) {
    for (const wchar_t* verb :
         {L"backup", L"preview", L"check", L"copies", L"restore", L"diff", L"schedule",
          L"schedule add", L"schedule list", L"schedule remove"}) {
        RunsTo(0, std::wstring(verb) + L" --help");
        EXPECT_FALSE(lines.empty());
    }
}

TEST_F(VwArguments, WrongArguments_EndWithTwoAndAReasonAndDoNothing) {
    MakeList({L"a.txt"});
    tree.File(L"a.txt");
    const std::wstring list = List();
    const Tree before = ReadTree(tree.Path());
    for (const std::wstring& arguments :
         Texts{L"",
               L"frobnicate",
               L"--frobnicate",
               L"backup",
               L"backup \"\"",
               L"backup " + list + L" --frobnicate",
               L"backup " + list + L" more",
               L"backup " + list + L" --keep 3",
               L"backup " + list + L" --log Logs --keep 0",
               L"backup " + list + L" --log Logs --keep x",
               L"backup " + list + L" --as-window --keep-missing",
               L"preview",
               L"check",
               L"check --content",
               L"restore a",
               L"restore --to b",
               L"restore " + list + L" --to b --as-of yesterday",
               L"restore " + list + L" --to b --as-of 2024-02-30",
               L"diff",
               L"schedule",
               L"schedule add " + list,
               L"schedule add " + list + L" --daily 25:00",
               L"schedule add " + list + L" --daily 19:00 --at-logon",
               L"schedule add " + list + L" --weekly 19:00",
               L"schedule add " + list + L" --weekly XXX 19:00",
               L"schedule add " + list + L" --weekly MON 24:00",
               L"schedule remove"}) {
        RunsTo(2, arguments);
        EXPECT_NE(errors, L"") << ToUtf8(arguments);
        EXPECT_TRUE(lines.empty()) << ToUtf8(arguments);
    }
    EXPECT_EQ(ReadTree(tree.Path()), before);
}

TEST_F(VwArguments, ListThatDoesNotExist_EndsWith4008AndNothingIsMade) {
    for (const wchar_t* verb : {L"backup", L"preview", L"check"}) {
        RunsTo(4008, std::wstring(verb) + L" gone.vwl");
        EXPECT_EQ(Short(errors), L"error: ~\\gone.vwl: There is no such backup list\r\n");
    }
    EXPECT_FALSE(Exists(tree.Path(L"gone.vwl")));
}

TEST_F(VwArguments, FileThatIsNoList_EndsWith13) {
    tree.File(L"picture.vwl", std::string("GIF89a\0\1\2", 9));
    tree.File(L"plan.txt", "C:\\Work\\\r\n");
    for (const wchar_t* verb : {L"backup", L"preview", L"check"}) {
        RunsTo(13, std::wstring(verb) + L" picture.vwl");
        EXPECT_EQ(Short(errors), L"error: ~\\picture.vwl: The file is no backup list (.vwl)\r\n");
        RunsTo(13, std::wstring(verb) + L" plan.txt");
    }
}

TEST_F(VwArguments, NamesBeyondAscii_GoThroughBothWays) {
    const std::wstring name = L"\u0645\u0644\u0641 \u00E9 \U0001F4C1";
    tree.File(name + L".txt", "1", Day(1));
    MakeList({name + L".txt"});
    MoveFileW(tree.Path(L"list.vwl").c_str(), tree.Path(name + L".vwl").c_str());
    RunsTo(0, L"backup " + InQuotes(name + L".vwl"));
    ASSERT_GE(lines.size(), 2U);
    EXPECT_EQ(Short(lines[1]), L"copied: ~\\" + name + L".txt (1 file, 1 byte)");
    RunsTo(4008, L"backup " + InQuotes(name + L"2.vwl"));
    EXPECT_EQ(Short(errors), L"error: ~\\" + name + L"2.vwl: There is no such backup list\r\n");
}

TEST_F(VwArguments, WildcardsOfAnArgument_StayAsTyped) {
    tree.File(L"one.vwl");
    RunsTo(4008, L"backup o*.vwl");
}

}  // namespace
}  // namespace vw::test
