// Every switch but "/B", and starts without a switch.

#include <gmock/gmock.h>

#include "tests/support/WineBridge.h"
#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::SizeIs;

class OtherSwitches : public SystemTest {
  protected:
    const std::wstring letter = program.tree.File(L"Home\\Letter.txt", "Dear Sir");

    std::wstring WriteDefaultList() const {
        return program.List(L"Program\\FilesList.vwl",
                            {L"BackupTo: " + vault, L"Backages: 3", letter});
    }
};

class StartupSwitch : public OtherSwitches {};

TEST_F(StartupSwitch, LogonStartIsOn_BacksUpTheDefaultList) {
    WriteDefaultList();
    program.EnableLogonStart();
    for (const wchar_t* const arguments : {L"/Startup", L"/STARTUP", L"  /startup  "}) {
        RunsTo(0, arguments);
        EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt")) << arguments;
        EXPECT_THAT(lines, Contains(L"\tDone."));
        EXPECT_THAT(boxes, IsEmpty());
        program.tree.Remove(L"Vault");
        program.tree.Folder(L"Vault");
    }
}

TEST_F(StartupSwitch, LogonStartIsOff_ShowsItsIconAlone) {
    WriteDefaultList();
    ProgramRun run(program.With(L"/Startup"));
    EXPECT_NE(run.WaitForWindow(L"frmTrayIconEn"), nullptr);
    EXPECT_TRUE(run.StaysFor(700));
    EXPECT_EQ(run.EndByIcon(), 0U);
    EXPECT_EQ(run.OutputBytes(), "");
    EXPECT_THAT(run.Boxes(), IsEmpty());
    EXPECT_THAT(InVault(), IsEmpty());
}

// Silent because of its first letters, and then an item to open.
TEST_F(StartupSwitch, ArgumentFollows_IsAnItemToOpen) {
    WriteDefaultList();
    program.EnableLogonStart();
    program.tree.File(L"Program\\OneFileList.vwl", "an old item\r\n");
    RunsTo(0, L"/Startup " + letter);
    EXPECT_THAT(InVault(), IsEmpty());
    EXPECT_THAT(lines, IsEmpty());
    EXPECT_EQ(ReadBytes(program.SingleItemList()).find("an old item"), std::string::npos);
}

TEST_F(OtherSwitches, S_WithAList_BacksUpNothing) {
    const std::wstring list = program.List(L"Other.vwl", {L"BackupTo: " + vault, letter});
    const std::string before = ReadBytes(list);
    RunsTo(0, L"/S " + list);
    EXPECT_EQ(ReadBytes(list), before);
    EXPECT_FALSE(Exists(program.DefaultList()));
    EXPECT_THAT(InVault(), IsEmpty());
}

// With a folder for temporary files of its own, since it is emptied; so are folders of Windows,
// which is why a real one is spared.
TEST_F(OtherSwitches, D_CleansTheTemporaryFoldersAndEnds) {
    if (!UnderWine()) GTEST_SKIP() << "this would clean the machine's own temporary folders";
    for (const auto* folder : {L"Temp", L"prefetch"}) {
        program.tree.Folder(L"C:\\windows\\" + std::wstring(folder));
    }
    ProgramStart start = program.With(L"/D");
    start.temporaryFolder = program.tree.Folder(L"Temporary");
    program.tree.File(L"Temporary\\a.tmp");
    program.tree.File(L"Temporary\\VB1234.tmp");
    program.tree.File(L"Temporary\\Sub\\b.txt");
    RunsTo(0, start);
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_THAT(ReadTree(start.temporaryFolder), SizeIs(1));
    EXPECT_TRUE(Exists(start.temporaryFolder + L"\\VB1234.tmp"));
    EXPECT_TRUE(Exists(letter));
    EXPECT_THAT(lines, Contains(L"Deleting: a.tmp - "));
}

// The program was started from inside the temporary folder, or the environment names a wrong one.
TEST_F(OtherSwitches, D_TemporaryFolderHoldsTheUsersOwn_IsRefused) {
    if (!UnderWine()) GTEST_SKIP() << "this would clean the machine's own temporary folders";
    program.tree.Folder(L"C:\\windows\\prefetch");
    ProgramStart start = program.With(L"/D");
    start.temporaryFolder = program.tree.Path();
    RunsTo(70, start);
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_THAT(boxes[0].text, testing::HasSubstr(program.tree.Path()));
    EXPECT_TRUE(Exists(letter));
}

TEST_F(OtherSwitches, D_MissingFolder_IsReportedAndOthersAreCleaned) {
    if (!UnderWine()) GTEST_SKIP() << "this would clean the machine's own temporary folders";
    program.tree.Remove(L"C:\\windows\\prefetch");
    const std::wstring report = program.tree.File(L"C:\\windows\\report.tmp");
    const std::wstring kept = program.tree.File(L"C:\\windows\\report.tmp.bak");
    ProgramStart start = program.With(L"/D");
    start.temporaryFolder = program.tree.Folder(L"Temporary");
    RunsTo(76, start);
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_THAT(boxes[0].text,
                testing::HasSubstr(L"in procedure DellTemp of Module MFileDosShell"));
    EXPECT_FALSE(Exists(report));
    EXPECT_TRUE(Exists(kept));
    program.tree.Remove(kept);
}

TEST_F(OtherSwitches, R_WithAnItemOrACopy_ChangesNothing) {
    const std::wstring list = WriteDefaultList();
    const std::wstring copy = program.tree.File(L"Vault\\Letter«0001».txt", "Dear Sir");
    const Tree before = ReadTree(program.tree.Path());
    for (const std::wstring& argument :
         {letter, Quoted(letter), copy, Quoted(copy), vault + L"\\Nobody«0001».txt"}) {
        RunsTo(0, L"/R " + argument);
        EXPECT_THAT(boxes, IsEmpty());
        program.tree.Remove(L"Default vault");
        EXPECT_EQ(ReadTree(program.tree.Path()), before);
    }
}

TEST_F(OtherSwitches, R_MissingDestination_IsReported) {
    WriteDefaultList();
    program.tree.Remove(L"Vault");
    RunsTo(76, L"/Restore " + letter);
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_EQ(boxes[0].text, L"فشلت العملية بسبب عدم توفر مجلد النسخ إلى:\r\n" + vault);
}

TEST_F(OtherSwitches, Author_IsShownInABox) {
    ProgramRun run(program.With(L"/Author"));
    const Box box = run.WaitForBox();
    EXPECT_EQ(box.title, L"Vaultwright");
    EXPECT_EQ(box.text, L"Author name is 'Nadir Qasemi'");
    EXPECT_THAT(box.buttons, SizeIs(1));
    EXPECT_EQ(FindWindowOf(run.ProcessId(), L"frmTrayIcon"), nullptr);
    run.Answer(box);
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_FALSE(Exists(program.DefaultList()));
}

// A temporary-file cleaning that nobody can ask for: the switch is cut at the blank.
TEST_F(OtherSwitches, DeleTemp_IsAnItemCalledTemp) {
    ProgramStart start = program.With(L"/Dele Temp");
    start.currentFolder = program.tree.Folder(L"Current");
    start.temporaryFolder = program.tree.Folder(L"Temporary");
    const std::wstring kept = program.tree.File(L"Temporary\\kept.txt", "kept");
    {
        ProgramRun run(start);
        const Box box = run.WaitForBox();
        EXPECT_THAT(box.text, testing::HasSubstr(L"Error 4008 in line "));
        run.Answer(box);
        EXPECT_EQ(run.EndByIcon(), 4008U);
    }
    program.tree.Folder(L"Current\\Temp");
    RunsTo(0, start);
    EXPECT_TRUE(Exists(program.SingleItemList()));
    EXPECT_TRUE(Exists(kept));
}

}  // namespace
}  // namespace vw::test
