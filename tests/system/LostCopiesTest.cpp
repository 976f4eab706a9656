// Sequences in which copies were lost, never made, or got the comment of another, end to end with
// the real program: one for each class. The engine's tests go through their variants.

#include <gmock/gmock.h>

#include "fsutil/WorkingName.h"
#include "platform/Handle.h"
#include "platform/Utf8.h"
#include "tests/support/DestinationChecker.h"
#include "tests/support/TestDrive.h"
#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class LostCopies : public SystemTest {
  protected:
    /// Backs up items relative to the test's folder; checks the exit code, the names and the
    /// comments in the destination.
    void BackUp(const std::vector<std::wstring>& items, DWORD exitCode = 0, int copies = 3) {
        std::vector<std::wstring> text{L"BackupTo: " + vault,
                                       L"Backages: " + std::to_wstring(copies)};
        for (const std::wstring& item : items) {
            text.push_back(program.tree.Path(item));
            checker.Learn(program.tree.Path(item));
        }
        RunsTo(exitCode, L"/B " + program.List(L"List.vwl", text));
        EXPECT_EQ(checker.Violations(), "");
    }
    void Write(std::wstring_view file, const std::string& text, int day) const {
        program.tree.File(file, text, {2024, 1, day, 12, 0, 0});
    }
    [[nodiscard]] std::string Copy(std::wstring_view name) const {
        const std::wstring path = vault + L"\\" + std::wstring(name);
        return Exists(path) ? ReadBytes(path) : "none";
    }
    /// Keeps a file from being renamed or removed by others, and from being used as not shared.
    [[nodiscard]] static FileHandle Hold(const std::wstring& path, DWORD shared = 0) {
        return FileHandle(
            CreateFileW(path.c_str(), GENERIC_READ, shared, nullptr, OPEN_EXISTING, 0, nullptr));
    }
    /// The name of what a process that is gone left for an item.
    [[nodiscard]] std::wstring LeftOver(WorkingState state, std::wstring_view item,
                                        std::wstring_view copy, Date date,
                                        Date made = kNoDate) const {
        const WorkingName name{
            state, NameKey(program.tree.Path(item)), NameKey(vault + L"\\" + std::wstring(copy)),
            date,  {ThisProcess().computer, 4, 1},   made};
        return L"Vault\\" + FormatWorkingName(name, L"x");
    }

    DestinationChecker checker{vault};
};

// Another computer stores a file of the same name while the run is busy.
TEST_F(LostCopies, OtherComputerStoresTheSameNameMeanwhile_BothKeepTheirContent) {
    std::string bytes;
    bytes.resize(60'000'000, 'b');
    const std::wstring big = program.tree.File(L"Home\\Big.bin", bytes);
    Write(L"Home\\b.txt", "ours", 2);
    const std::wstring list =
        program.List(L"List.vwl", {L"BackupTo: " + vault, big, program.tree.Path(L"Home\\b.txt")});
    const std::string comment =
        "Backed Files Date Last Modified:01/01/2024-12:00:00+Original Location:Z:\\Theirs\r\n";
    ProgramRun run(program.With(L"/B " + list));
    WIN32_FIND_DATAW entry{};
    while (!run.HasEnded() && !FindHandle(FindFirstFileW((vault + L"\\Big.vw*").c_str(), &entry))) {
        Sleep(1);
    }
    Write(L"Vault\\b«0001».txt", "theirs", 1);
    program.tree.File(L"Vault\\b«0001».txt.vwc", comment);
    const bool wasInTime = !Exists(vault + L"\\Big«0001».bin");
    EXPECT_EQ(run.WaitForEnd(), 58U);
    EXPECT_TRUE(wasInTime) << "the run was faster than the test";
    EXPECT_THAT(run.Errors(), HasSubstr(L"b«0001».txt"));
    EXPECT_EQ(Copy(L"b«0001».txt"), "theirs");
    EXPECT_EQ(Copy(L"b«0001».txt.vwc"), comment);
    // Ours takes a number of its own, now that theirs is known.
    RunsTo(0, L"/B " + list);
    EXPECT_EQ(Copy(L"b«0001».txt"), "theirs");
    EXPECT_EQ(Copy(L"b«0101».txt"), "ours");
}

TEST_F(LostCopies, DestinationIsADriveAlone_MeansItsRoot) {
    TestDrive drive;
    const std::wstring elsewhere = program.tree.Folder(drive.Name() + L"\\Elsewhere");
    const std::wstring rooted = program.tree.File(L"Home\\lostcopies.txt");
    const std::wstring copy = drive.Name() + L"\\lostcopies«000";
    const std::wstring list =
        program.List(L"List.vwl", {L"BackupTo: " + drive.Name(), L"Backages: 3", rooted});
    for (int day = 1; day <= 3; ++day) {
        Write(L"Home\\lostcopies.txt", std::to_string(day), day);
        ProgramStart start = program.With(L"/B " + list);
        start.currentFolder = elsewhere;
        RunsTo(0, start);
    }
    for (int number = 1; number <= 3; ++number) {
        const std::wstring path = copy + std::to_wstring(number) + L"».txt";
        EXPECT_EQ(Exists(path) ? ReadBytes(path) : "none", std::to_string(4 - number));
        program.tree.Remove(path);
    }
    program.tree.Remove(copy + L"1».txt.vwc");
    EXPECT_THAT(ReadTree(elsewhere), IsEmpty());
    program.tree.Remove(elsewhere);
}

TEST_F(LostCopies, FileIsGone_AnotherOfItsNameKeepsItsNumber) {
    for (int day = 1; day <= 3; ++day) {
        Write(L"A\\R.doc", "A" + std::to_string(day), day);
        Write(L"B\\R.doc", "B" + std::to_string(day), day);
        BackUp({L"A\\R.doc", L"B\\R.doc"});
    }
    program.tree.Remove(L"A\\R.doc");
    BackUp({L"A\\R.doc", L"B\\R.doc"}, 53);
    Write(L"B\\R.doc", "B4", 4);
    BackUp({L"B\\R.doc"});
    EXPECT_EQ(Copy(L"R«0002».doc"), "A3");
    EXPECT_EQ(Copy(L"R«0003».doc"), "A2");
    EXPECT_EQ(Copy(L"R«0101».doc"), "B4");
    EXPECT_EQ(Copy(L"R«0102».doc"), "B3");
}

TEST_F(LostCopies, NamesMeetBelowDottedFolders_OneIsRefused) {
    for (int day = 1; day <= 2; ++day) {
        Write(L"Data.old\\y.txt", "y" + std::to_string(day), day);
        Write(L"Data.old\\Data\\x.txt", "x" + std::to_string(day), day);
        Write(L"Work.old\\Data\\z.txt", "z" + std::to_string(day), day);
        BackUp({L"Data.old\\", L"Work.old\\Data\\"}, 75);
        EXPECT_THAT(lines, Contains(program.tree.Path(L"Work.old\\Data\\")));
    }
    EXPECT_EQ(ReadTree(vault + L"\\Data«0001».old"), ReadTree(program.tree.Path(L"Data.old")));
    EXPECT_EQ(Copy(L"Data«0002».old\\Data\\x.txt"), "x1");
}

TEST_F(LostCopies, CommentHasTheNameOfACopy_FileMovesOn) {
    Write(L"Home\\Notes.vwc", "of vwc", 1);
    Write(L"Home\\Notes", "plain", 2);
    for (int run = 0; run < 2; ++run) {
        BackUp({L"Home\\Notes.vwc", L"Home\\Notes"});
        EXPECT_EQ(Copy(L"Notes«0001».vwc"), "of vwc");
        EXPECT_EQ(Copy(L"Notes«0101»"), "plain");
    }
}

TEST_F(LostCopies, CopyCannotBePlaced_ChangedItemIsBackedUp) {
    Write(L"Home\\a.txt", "1", 1);
    BackUp({L"Home\\a.txt"});
    // What a killed run left ready cannot take the place: copy 1 is held for good.
    Write(L"Home\\a.txt", "2", 2);
    checker.Learn(program.tree.Path(L"Home\\a.txt"));
    const Date made = ReadDate(vault + L"\\a«0001».txt.vwc") + std::chrono::seconds{60};
    program.tree.File(LeftOver(WorkingState::Ready, L"Home\\a.txt", L"a«0001».txt",
                               MakeDate({2024, 1, 2, 12, 0, 0}), made),
                      "2", {2024, 1, 2, 12, 0, 0});
    Write(L"Home\\a.txt", "3", 3);
    {
        const FileHandle held = Hold(vault + L"\\a«0001».txt", FILE_SHARE_READ);
        BackUp({L"Home\\a.txt"}, 70);
        EXPECT_THAT(lines, Contains(L"Backing: " + program.tree.Path(L"Home\\a.txt")));
        EXPECT_EQ(Copy(L"a«0001».txt"), "1");
    }
    BackUp({L"Home\\a.txt"});
    EXPECT_EQ(Copy(L"a«0001».txt"), "3") << "the newest one that waited";
    EXPECT_EQ(Copy(L"a«0002».txt"), "1");
    EXPECT_THAT(InVault(), ElementsAre(L"a«0001».txt", L"a«0001».txt.vwc", L"a«0002».txt"));
}

TEST_F(LostCopies, CommentCannotBeRead_OtherFilesOfTheNameAreBackedUp) {
    for (const wchar_t* const folder : {L"A", L"B", L"C"}) {
        Write(std::wstring(folder) + L"\\R.doc", ToUtf8(folder) + "1", 1);
    }
    BackUp({L"A\\R.doc", L"B\\R.doc", L"C\\R.doc"});
    for (const wchar_t* const folder : {L"B", L"C"}) {
        Write(std::wstring(folder) + L"\\R.doc", ToUtf8(folder) + "2", 2);
    }
    const FileHandle held = Hold(vault + L"\\R«0001».doc.vwc");
    RunsTo(0, L"/B " + program.List(L"Other.vwl", {L"BackupTo: " + vault, L"Backages: 3",
                                                   program.tree.Path(L"B\\R.doc"),
                                                   program.tree.Path(L"C\\R.doc")}));
    EXPECT_EQ(Copy(L"R«0101».doc"), "B2");
    EXPECT_EQ(Copy(L"R«0201».doc"), "C2");
}

TEST_F(LostCopies, ReadyCopyOfAnOlderDate_IsFinished) {
    Write(L"Home\\a.txt", "day 9", 9);
    BackUp({L"Home\\a.txt"});
    // An older version of the file came back, was copied, and the run was killed.
    Write(L"Home\\a.txt", "day 3", 3);
    checker.Learn(program.tree.Path(L"Home\\a.txt"));
    const Date later = ReadDate(vault + L"\\a«0001».txt.vwc") + std::chrono::seconds{60};
    program.tree.File(LeftOver(WorkingState::Ready, L"Home\\a.txt", L"a«0001».txt",
                               MakeDate({2024, 1, 3, 12, 0, 0}), later),
                      "day 3", {2024, 1, 3, 12, 0, 0});
    program.tree.Remove(L"Home\\a.txt");
    BackUp({L"Home\\a.txt"}, 53);
    EXPECT_EQ(Copy(L"a«0002».txt"), "day 3");
    EXPECT_EQ(Copy(L"a«0003».txt"), "day 9");
}

TEST_F(LostCopies, RotationOfAVanishedItemIsCutOff_ItIsCompletedOnce) {
    for (int day = 1; day <= 3; ++day) {
        Write(L"Home\\a.txt", std::to_string(day), day);
        BackUp({L"Home\\a.txt"});
    }
    program.tree.Remove(L"Home\\a.txt");
    // Killed after copy 3 had left and copy 2 had become copy 3.
    program.tree.File(LeftOver(WorkingState::Old, L"Home\\a.txt", L"a«0003».txt", kNoDate), "1");
    program.tree.Remove(L"Vault\\a«0002».txt");
    Write(L"Vault\\a«0003».txt", "2", 2);
    BackUp({L"Home\\a.txt"}, 53);
    EXPECT_EQ(Copy(L"a«0002».txt"), "3");
    EXPECT_EQ(Copy(L"a«0003».txt"), "2");
}

TEST_F(LostCopies, ScannerHoldsACopyForSeconds_RunRetries) {
    Write(L"Home\\a.txt", "1", 1);
    BackUp({L"Home\\a.txt"});
    Write(L"Home\\a.txt", "2", 2);
    FileHandle held = Hold(vault + L"\\a«0001».txt");
    ProgramRun run(program.With(L"/B " + program.tree.Path(L"List.vwl")));
    EXPECT_TRUE(run.StaysFor(2000)) << "it gave the copy up";
    held.Reset();
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_EQ(Copy(L"a«0001».txt"), "2");
    EXPECT_EQ(Copy(L"a«0002».txt"), "1");
}

TEST_F(LostCopies, ItemWithAWildcardInItsName_IsMissingWithoutABox) {
    Write(L"Home\\a.txt", "1", 1);
    const std::wstring odd = program.tree.Path(L"Home\\b?.txt");
    RunsTo(53, L"/B " + program.List(L"List.vwl", {L"BackupTo: " + vault, odd,
                                                   program.tree.Path(L"Home\\a.txt")}));
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_THAT(lines, Contains(odd));
    EXPECT_EQ(Copy(L"a«0001».txt"), "1");
}

TEST_F(LostCopies, FileOfAFolderIsInUse_CopyIsMarkedAndCompleted) {
    Write(L"Home\\Work\\a.txt", "a", 1);
    Write(L"Home\\Work\\b.txt", "b", 2);
    {
        const FileHandle held = Hold(program.tree.Path(L"Home\\Work\\b.txt"));
        for (int run = 0; run < 2; ++run) {
            RunsTo(70, L"/B " + program.List(L"List.vwl", {L"BackupTo: " + vault,
                                                           program.tree.Path(L"Home\\Work\\")}));
            EXPECT_THAT(lines, Not(Contains(HasSubstr(L"No change"))));
            EXPECT_THAT(Copy(L"Work«0001».vwc"), HasSubstr("\r\nIncomplete\r\n"));
            EXPECT_EQ(Copy(L"Work«0001»\\b.txt"), "none");
        }
    }
    BackUp({L"Home\\Work\\"});
    EXPECT_EQ(ReadTree(vault + L"\\Work«0001»"), ReadTree(program.tree.Path(L"Home\\Work")));
    EXPECT_THAT(Copy(L"Work«0001».vwc"), Not(HasSubstr("Incomplete")));
    EXPECT_FALSE(Exists(vault + L"\\Work«0002»"));
}

TEST_F(LostCopies, FolderCopy_HasTheDatesOfItsFolders) {
    Write(L"Home\\Work\\Sub\\a.txt", "a", 1);
    program.tree.SetDate(L"Home\\Work\\Sub", {2020, 2, 3, 4, 5, 6});
    program.tree.SetDate(L"Home\\Work", {2020, 2, 3, 4, 5, 8});
    BackUp({L"Home\\Work\\"});
    EXPECT_EQ(ReadDate(vault + L"\\Work«0001»\\Sub"), MakeDate({2020, 2, 3, 4, 5, 6}));
    EXPECT_EQ(ReadDate(vault + L"\\Work«0001»"), MakeDate({2020, 2, 3, 4, 5, 8}));
}

}  // namespace
}  // namespace vw::test
