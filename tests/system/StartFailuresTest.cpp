// What can go wrong between the start of the program and its work.

#include <gmock/gmock.h>

#include <cstdio>

#include "platform/Handle.h"
#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class StartFailures : public SystemTest {
  protected:
    const std::wstring letter = program.tree.File(L"Home\\Letter.txt", "Dear Sir");

    /// A silent run whose start procedure ends by an error keeps its icon until that is closed, and
    /// then reports the error in the exit code.
    void FailsInMain(int error, const ProgramStart& start, std::wstring_view details) {
        ProgramRun run(start);
        const Box box = run.WaitForBox();
        EXPECT_EQ(box.title, L"Vaultwright");
        ExpectErrorOfMain(box.text, error, details);
        run.Answer(box);
        EXPECT_TRUE(run.StaysFor(300));
        EXPECT_EQ(run.EndByIcon(), static_cast<DWORD>(error));
        EXPECT_EQ(run.Errors(), box.text + L"\r\n");
        EXPECT_EQ(run.Output(), box.text + L"\r\n");
        EXPECT_THAT(run.Boxes(), SizeIs(1));
        EXPECT_THAT(InVault(), IsEmpty());
    }
    void FailsInMain(int error, std::wstring_view arguments, std::wstring_view details) {
        FailsInMain(error, program.With(arguments), details);
    }

    static void ExpectErrorOfMain(const std::wstring& text, int error, std::wstring_view details) {
        int number = 0;
        int line = 0;
        int length = 0;
        EXPECT_EQ(std::swscanf(text.c_str(), L"Error %d in line %d\r\n%n", &number, &line, &length),
                  2)
            << text;
        EXPECT_EQ(number, error);
        EXPECT_GT(line, 0);
        // One sentence of advice follows.
        const std::wstring expected =
            L"in procedure Main of Module MVaultwright\r\n\r\n" + std::wstring(details);
        const std::wstring rest = text.substr(text.find(L"in procedure"));
        EXPECT_EQ(rest.substr(0, expected.size()), expected);
        EXPECT_EQ(rest.substr(expected.size(), 4), L"\r\n\r\n");
        EXPECT_TRUE(rest.ends_with(L" and try again."));
    }
};

TEST_F(StartFailures, MissingList_IsReported_IconStays) {
    const std::wstring missing = program.tree.Path(L"Missing.vwl");
    FailsInMain(4008, L"/B " + missing, L"Path not found\r\n" + missing);
    EXPECT_FALSE(Exists(missing));
    EXPECT_FALSE(Exists(program.DefaultList()));
}

TEST_F(StartFailures, MissingList_AnySilentSwitch_IsReported) {
    const std::wstring missing = program.tree.Path(L"No folder\\Missing.VWL");
    FailsInMain(4008, L"/backup " + Quoted(missing), L"Path not found\r\n" + missing);
    FailsInMain(4008, L"/S " + missing, L"Path not found\r\n" + missing);
    FailsInMain(4008, L"/Startup x.vwl", L"Path not found\r\nx.vwl");
}

TEST_F(StartFailures, CopiesCountThatIsNoNumber_IsReported) {
    program.SetSetting(L"Backages", L"x");
    const std::wstring list = program.List(L"Letters.vwl", {L"BackupTo: " + vault, letter});
    FailsInMain(13, L"/B " + list, L"Type mismatch");
    program.SetSetting(L"Backages", L"40000");
    FailsInMain(6, L"/B " + list, L"Overflow");
}

TEST_F(StartFailures, LanguageIsNoYesOrNo_EndsTheProcess) {
    program.SetSetting(L"Arabic", L"maybe");
    const std::wstring list = program.List(L"Letters.vwl", {L"BackupTo: " + vault, letter});
    for (const std::wstring& arguments : {L"/B " + list, std::wstring(L"/Author")}) {
        ProgramRun run(program.With(arguments));
        const Box box = run.WaitForBox();
        ExpectErrorOfMain(box.text, 13, L"Type mismatch");
        run.Answer(box);
        EXPECT_EQ(run.WaitForEnd(), 13U);
        EXPECT_THAT(run.Boxes(), SizeIs(1));
    }
    EXPECT_THAT(InVault(), IsEmpty());
    EXPECT_EQ(program.Setting(L"Arabic"), L"maybe");
}

TEST_F(StartFailures, MissingDestination_EndsTheRunAtOnce) {
    const std::wstring missing = program.tree.Path(L"Unplugged");
    const std::wstring list = program.List(
        L"Letters.vwl", {L"BackupTo: " + missing, letter, L"BackupTo: " + vault, letter});
    const std::string before = ReadBytes(list);
    RunsTo(76, L"/B " + list);
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_EQ(boxes[0].title, L"Vaultwright");
    EXPECT_EQ(boxes[0].text, L"فشلت العملية بسبب عدم توفر مجلد النسخ إلى:\r\n" + missing);
    EXPECT_EQ(errors, boxes[0].text + L"\r\n");
    EXPECT_THAT(InVault(), IsEmpty());
    EXPECT_FALSE(Exists(missing));
    EXPECT_EQ(ReadBytes(list), before);
}

// The missing folder itself is made, not its parents.
TEST_F(StartFailures, DefaultDestination_IsMadeOneLevelDeep) {
    const std::wstring shallow = program.tree.Path(L"New vault");
    program.SetSetting(L"BackupTo", shallow);
    RunsTo(0, L"/S");
    EXPECT_TRUE(Exists(shallow));

    const std::wstring deep = program.tree.Path(L"Newer\\Vault");
    program.SetSetting(L"BackupTo", deep);
    RunsTo(0, L"/S");
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_FALSE(Exists(program.tree.Path(L"Newer")));
    EXPECT_EQ(program.Setting(L"BackupTo"), deep);

    RunsTo(76, L"/B " + letter);
    EXPECT_THAT(boxes, SizeIs(1));
}

TEST_F(StartFailures, DefaultDestination_IsMadeInAnyRun) {
    ProgramRun run(program.With(L"/Author"));
    run.WaitForBox();
    EXPECT_TRUE(Exists(program.DefaultDestination()));
}

TEST_F(StartFailures, DefaultDestination_NoSetting_IsBackupOnTheSystemDrive) {
    const bool wasThere = Exists(L"C:\\Backup");
    program.SetSetting(L"BackupTo", std::nullopt);
    RunsTo(0, L"/S");
    EXPECT_TRUE(Exists(L"C:\\Backup"));
    EXPECT_EQ(program.Setting(L"BackupTo"), std::nullopt);
    if (!wasThere) RemoveDirectoryW(L"C:\\Backup");
}

// The boxes of all these runs close at the same time, since each takes its five seconds.
TEST_F(StartFailures, BoxesOfSilentRuns_CloseThemselves_OthersStay) {
    std::vector<std::wstring> items{L"BackupTo: " + vault};
    std::vector<FileHandle> locks;
    for (const wchar_t* const name : {L"Home\\1", L"Home\\2", L"Home\\3", L"Home\\4", L"Home\\5"}) {
        items.push_back(program.tree.File(name));
        locks.emplace_back(
            CreateFileW(items.back().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    }
    const std::wstring locked = program.List(L"Locked.vwl", items);
    const std::wstring unplugged =
        program.List(L"Unplugged.vwl", {L"BackupTo: " + program.tree.Path(L"Unplugged"), letter});
    ProgramCopy badLanguage;
    badLanguage.SetSetting(L"Arabic", L"maybe");

    ProgramRun author(program.With(L"/Author"));
    const Box authorBox = author.WaitForBox();
    ProgramRun manyErrors(program.With(L"/B " + locked));
    manyErrors.Answer(manyErrors.WaitForBox());
    manyErrors.Answer(manyErrors.WaitForBox());
    const ULONGLONG start = GetTickCount64();
    ProgramRun missingList(program.With(L"/B " + program.tree.Path(L"Missing.vwl")));
    ProgramRun missingDestination(program.With(L"/B " + unplugged));
    ProgramRun noLanguage(badLanguage.With(L"/B"));
    for (ProgramRun* const run : {&manyErrors, &missingList, &missingDestination, &noLanguage}) {
        run->WaitForBox();
    }

    EXPECT_EQ(missingDestination.WaitForEnd(false), 76U);
    EXPECT_EQ(noLanguage.WaitForEnd(false), 13U);
    // The third box was its last: the two further errors are only written.
    EXPECT_EQ(manyErrors.WaitForEnd(false), 70U);
    EXPECT_THAT(manyErrors.Boxes(), SizeIs(3));
    EXPECT_THAT(manyErrors.Errors(), HasSubstr(program.tree.Path(L"Home\\5")));
    while (!BoxesOf(missingList.ProcessId()).empty()) ASSERT_TRUE(missingList.StaysFor(10));
    const ULONGLONG taken = GetTickCount64() - start;
    EXPECT_THAT(BoxesOf(author.ProcessId()), SizeIs(1));
    author.Answer(authorBox);
    EXPECT_EQ(author.WaitForEnd(), 0U);
    EXPECT_GE(taken, 4500U);
    EXPECT_LE(taken, 15000U) << "a scheduled run may not be held up";
    EXPECT_TRUE(missingList.StaysFor(300));
    EXPECT_EQ(missingList.EndByIcon(), 4008U);
}

}  // namespace
}  // namespace vw::test
