// What a silent run writes for scripts and schedulers, and what it leaves alone.

#include <gmock/gmock.h>

#include <algorithm>

#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class Output : public SystemTest {
  protected:
    const std::wstring letter = program.tree.File(L"Home\\رسالة.txt", "salam");
    const std::wstring list =
        program.List(L"Letters.vwl", {L"BackupTo: " + vault, L"Backages: 3", letter});

    void ExpectLetterBackedUp() const {
        EXPECT_THAT(InVault(), ElementsAre(L"رسالة«0001».txt", L"رسالة«0001».txt.vwc"));
    }
};

TEST_F(Output, WritesUtf8WithoutAMark) {
    ProgramRun run(program.With(L"/B " + list));
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_EQ(run.OutputBytes().substr(0, 9), "Backing: ");
    EXPECT_NE(run.OutputBytes().find("\xD8\xB1\xD8\xB3\xD8\xA7\xD9\x84\xD8\xA9.txt\r\n"),
              std::string::npos);
}

TEST_F(Output, LongOutput_IsComplete) {
    constexpr int kItems = 600;  // far more text than a pipe holds
    std::string text;
    for (int i = 0; i < kItems; ++i) text += "No such folder\\" + std::to_string(i) + ".txt\r\n";
    ProgramStart start = program.With(L"/B " + program.tree.File(L"Long.vwl", text));
    RunsTo(53, start);
    ASSERT_THAT(lines, SizeIs(4 * kItems));
    EXPECT_EQ(lines.front(), L"تأكد من توفر المجلد التالي");
    EXPECT_EQ(lines.back(), L"No such folder\\599.txt");
}

TEST_F(Output, Errors_AreInReportOrderAndOnStandardErrorAlone) {
    const FileHandle lock(
        CreateFileW(letter.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ProgramRun run(program.With(L"/B " + list));
    EXPECT_EQ(run.WaitForEnd(), 70U);
    EXPECT_EQ(run.Errors().substr(0, 17), L"Error 70 in line ");
    const std::wstring expected =
        L"Backing: " + letter + L"\r\nBacking:: " + letter + L" - \r\n" + run.Errors();
    EXPECT_EQ(run.Output().substr(0, expected.size()), expected);
    EXPECT_TRUE(run.Output().ends_with(L": 0 copied, 0 unchanged, 1 failed\r\n"));
}

TEST_F(Output, NoOutput_RunSucceeds) {
    ProgramStart start = program.With(L"/B " + list);
    start.streams = ProgramStart::Streams::None;
    start.currentFolder = program.tree.Folder(L"Current");
    start.temporaryFolder = program.tree.Folder(L"Temporary");
    RunsTo(0, start);
    ExpectLetterBackedUp();
    EXPECT_THAT(boxes, IsEmpty());
    // No log file, neither beside the program nor where it was started.
    EXPECT_THAT(ReadTree(start.currentFolder), IsEmpty());
    EXPECT_THAT(ReadTree(start.temporaryFolder), IsEmpty());
    EXPECT_THAT(ReadTree(program.Folder()), SizeIs(1));
}

TEST_F(Output, BrokenPipe_RunSucceeds) {
    ProgramStart start = program.With(L"/B " + list);
    start.streams = ProgramStart::Streams::BrokenPipe;
    RunsTo(0, start);
    ExpectLetterBackedUp();
}

TEST_F(Output, Run_CreatesTheCopiesAndDefaultDestinationOnly) {
    const Tree before = ReadTree(program.tree.Path());
    RunsTo(0, L"/B " + list);
    Tree after = ReadTree(program.tree.Path());
    for (const wchar_t* const made :
         {L"Default vault", L"Vault\\رسالة«0001».txt", L"Vault\\رسالة«0001».txt.vwc"}) {
        EXPECT_EQ(after.erase(made), 1U) << made;
    }
    EXPECT_EQ(after, before);
}

TEST_F(Output, ArabicInterface_ReportsInArabic) {
    program.SetSetting(L"Arabic", L"-1");
    const std::wstring linked = program.tree.Path(L"Home\\Docs\\Linked");
    program.tree.File(L"Home\\Docs\\a.txt", "a");
    if (!program.tree.Link(L"Home\\Docs\\Linked", program.tree.Folder(L"Elsewhere"))) {
        GTEST_SKIP() << "no links here";
    }
    const std::wstring docs = program.List(
        L"Docs.vwl", {L"BackupTo: " + vault, program.tree.Path(L"Home\\Docs") + L"\\"});
    RunsTo(0, L"/B " + docs);
    const auto sentence = std::find(lines.begin(), lines.end(), L"تم تخطي الارتباط التالي");
    ASSERT_GE(lines.end() - sentence, 2);
    EXPECT_EQ(sentence[1], linked);

    program.SetSetting(L"Arabic", L"0");
    program.tree.File(L"Home\\Docs\\a.txt", "b", {2024, 5, 6, 7, 8, 9});
    RunsTo(0, L"/B " + docs);
    EXPECT_THAT(lines, Contains(L"Skipped link: " + linked));
}

}  // namespace
}  // namespace vw::test
