#include "app/CommandLine.h"

#include <gtest/gtest.h>

namespace vw {
namespace {

TEST(CommandLine, BeginsAfterTheNameOfTheProgram) {
    struct Row {
        std::wstring_view commandLine;
        std::wstring_view arguments;
    };
    const Row rows[] = {
        {L"", L""},
        {L"v.exe", L""},
        {L"v.exe ", L""},
        {L"v.exe /B", L"/B"},
        {L"v.exe   /B  C:\\my list.vwl  ", L"/B  C:\\my list.vwl  "},  // only leading blanks go
        {L"v.exe\t/B", L"/B"},
        {L"\"C:\\Program Files\\v.exe\" /B", L"/B"},
        {L"\"C:\\Program Files\\v.exe\"", L""},
        {L"\"C:\\Program Files\\v.exe\"  \"C:\\a b.vwl\"", L"\"C:\\a b.vwl\""},
        {L"C:\\\"Program Files\"\\v.exe /B", L"/B"},
        {L"\"C:\\Program Files\\v.exe /B", L""},  // the quote never ends
        {L" /B", L"/B"},                          // started without a name
        {L"\"\" /B", L"/B"},
        {L"v.exe \"\"", L"\"\""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ArgumentText(row.commandLine), row.arguments)
            << testing::PrintToString(row.commandLine);
    }
}

TEST(CommandLine, StartsSilently_DependsOnTheFirstTwoCharacters) {
    struct Row {
        std::wstring_view arguments;
        bool isSilent;
    };
    const Row rows[] = {
        {L"/B", true},           {L"/b", true},         {L"/Backup", true},
        {L"/S", true},           {L"/s", true},         {L"/Startup", true},
        {L"/Startup now", true},  // no start at log-on, but its first two characters are "/S"
        {L"/R", true},           {L"/Restore x", true}, {L"/D", true},
        {L"/d", true},           {L"/Dele Temp", true}, {L"/Bogus", true},
        {L"/b C:\\x.VWL", true}, {L"", false},          {L"/", false},
        {L"/Author", false},     {L"/X", false},        {L"-B", false},
        {L"\\B", false},         {L" /B", false},       {L"B", false},
        {L"C:\\x.vwl", false},   {L"//B", false},       {L"\"/B\"", false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(StartsSilently(row.arguments), row.isSilent)
            << testing::PrintToString(row.arguments);
    }
}

TEST(CommandLine, Startup_WithAnArgument_IsNoSwitch) {
    struct Row {
        std::wstring_view arguments;
        bool isStartup;
    };
    const Row rows[] = {
        {L"/Startup", true},
        {L"/STARTUP", true},
        {L"/startup  ", true},
        {L"/Startup\t", true},
        {L"/Startup now", false},
        {L"/Startup /B", false},
        {L"/Start", false},
        {L"/Startups", false},
        {L" /Startup", false},
        {L"-Startup", false},
        {L"", false},
        {L"\"/Startup\"", false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(IsStartupCommand(row.arguments), row.isStartup)
            << testing::PrintToString(row.arguments);
    }
}

struct Row {
    std::wstring_view arguments;
    std::wstring_view switchWord;
    std::wstring_view argument;
    StartAction action;
};

void Check(const Row& row) {
    const CommandLine commandLine = SplitCommandLine(row.arguments);
    EXPECT_EQ(commandLine.switchWord, row.switchWord) << testing::PrintToString(row.arguments);
    EXPECT_EQ(commandLine.argument, row.argument) << testing::PrintToString(row.arguments);
    EXPECT_EQ(ActionFor(commandLine), row.action) << testing::PrintToString(row.arguments);
}

TEST(CommandLine, BackupSwitch_ListItemOrNothing_IsParsed) {
    using enum StartAction;
    const Row rows[] = {
        {L"/B C:\\x.vwl", L"/B", L"C:\\x.vwl", BackupList},
        {L"/b C:\\X.VWL", L"/b", L"C:\\X.VWL", BackupList},
        {L"/Backup C:\\x.vwl", L"/Backup", L"C:\\x.vwl", BackupList},
        {L"/BACKUP \"C:\\my list.vwl\"", L"/BACKUP", L"C:\\my list.vwl", BackupList},
        {L"/B C:\\my list.vwl", L"/B", L"C:\\my list.vwl", BackupList},
        {L"/B   C:\\x.vwl   ", L"/B", L"C:\\x.vwl", BackupList},
        {L"/B\tC:\\x.vwl", L"/B", L"C:\\x.vwl", BackupList},
        {L"/B .vwl", L"/B", L".vwl", BackupList},
        {L"/B C:\\x.vwl.txt", L"/B", L"C:\\x.vwl.txt", BackupItem},
        {L"/B C:\\Docs\\a.doc", L"/B", L"C:\\Docs\\a.doc", BackupItem},
        {L"/B C:\\Docs\\", L"/B", L"C:\\Docs\\", BackupItem},
        {L"/B \\\\server\\x", L"/B", L"\\\\server\\x", BackupItem},
        {L"/B \"\"", L"/B", L"\"\"", BackupItem},  // two quotes alone stay
        {L"/B", L"/B", L"", BackupDefaultList},
        {L"/Backup", L"/Backup", L"", BackupDefaultList},
        {L"/b   ", L"/b", L"", BackupDefaultList},
    };
    for (const Row& row : rows) Check(row);
}

TEST(CommandLine, OtherSwitches_AnyArgument_AreRecognised) {
    using enum StartAction;
    const Row rows[] = {
        {L"/R", L"/R", L"", Restore},
        {L"/Restore C:\\a.doc", L"/Restore", L"C:\\a.doc", Restore},
        {L"/r E:\\a«0001».doc", L"/r", L"E:\\a«0001».doc", Restore},
        {L"/R x.vwl", L"/R", L"x.vwl", Restore},
        {L"/Author", L"/Author", L"", Author},
        {L"/AUTHOR x.vwl", L"/AUTHOR", L"x.vwl", Author},
        {L"/D", L"/D", L"", DeleteTemporary},
        {L"/d x.vwl", L"/d", L"x.vwl", DeleteTemporary},
    };
    for (const Row& row : rows) Check(row);
}

TEST(CommandLine, OpensListsAndItemsWithoutASwitch) {
    using enum StartAction;
    const Row rows[] = {
        {L"", L"", L"", OpenDefaultList},
        {L"C:\\x.vwl", L"", L"C:\\x.vwl", OpenList},
        {L"\"C:\\my list.VWL\"", L"", L"C:\\my list.VWL", OpenList},
        {L"C:\\my list.vwl  ", L"", L"C:\\my list.vwl", OpenList},
        {L"C:\\Docs\\a.doc", L"", L"C:\\Docs\\a.doc", OpenItem},
        {L"\"\\\\server\\x\"", L"", L"\\\\server\\x", OpenItem},  // the quote comes first
        {L"\"/B\"", L"", L"/B", OpenItem},
        {L"B", L"", L"B", OpenItem},
    };
    for (const Row& row : rows) Check(row);
}

TEST(CommandLine, UnknownSwitch_IsIgnored) {
    using enum StartAction;
    const Row rows[] = {
        {L"/S", L"/S", L"", OpenDefaultList},
        {L"/X", L"/X", L"", OpenDefaultList},
        {L"/X file.vwl", L"/X", L"file.vwl", OpenList},
        {L"/X C:\\a.doc", L"/X", L"C:\\a.doc", OpenItem},
        {L"/Startup now", L"/Startup", L"now", OpenItem},
        {L"/Bx", L"/Bx", L"", OpenDefaultList},
        {L"/B\"C:\\a b.vwl\"", L"/B\"C:\\a", L"b.vwl\"", OpenItem},
        {L"-B", L"-B", L"", OpenDefaultList},
        {L"\\B", L"\\B", L"", OpenDefaultList},
        {L"-B C:\\x.vwl", L"-B", L"C:\\x.vwl", OpenList},
        {L"/", L"/", L"", OpenDefaultList},
        {L"-", L"-", L"", OpenDefaultList},
        // A network path begins like a switch and is taken for one unless it is in quotes.
        {L"\\\\server\\x.vwl", L"\\\\server\\x.vwl", L"", OpenDefaultList},
        {L"\\\\server\\a b.vwl", L"\\\\server\\a", L"b.vwl", OpenList},
    };
    for (const Row& row : rows) Check(row);
}

TEST(CommandLine, DeleTemp_IsAnItemCalledTemp) {
    // A switch ends at the first blank, so this is no way to clean the temporary folders.
    Check({L"/Dele Temp", L"/Dele", L"Temp", StartAction::OpenItem});
    Check({L"/Dele", L"/Dele", L"", StartAction::OpenDefaultList});
}

}  // namespace
}  // namespace vw
