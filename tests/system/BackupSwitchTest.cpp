// "/B" and "/Backup": a list, one item, or the default list is backed up without a window.

#include <gmock/gmock.h>

#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class BackupSwitch : public SystemTest {
  protected:
    const std::wstring letter = program.tree.File(L"Home\\Letter.txt", "Dear Sir");
    const std::wstring list =
        program.List(L"Letters.vwl", {L"BackupTo: " + vault, L"Backages: 3", letter});

    void ExpectLetterBackedUp() const {
        EXPECT_THAT(InVault(), ElementsAre(L"Letter«0001».txt", L"Letter«0001».txt.vwc"));
        EXPECT_EQ(ReadBytes(vault + L"\\Letter«0001».txt"), "Dear Sir");
        EXPECT_EQ(ReadDate(vault + L"\\Letter«0001».txt"), ReadDate(letter));
        EXPECT_THAT(boxes, IsEmpty());
        EXPECT_EQ(errors, L"");
    }
};

TEST_F(BackupSwitch, BacksUpAList) {
    RunsTo(0, L"/B " + list);
    ExpectLetterBackedUp();
    EXPECT_THAT(lines,
                ElementsAre(L"Backing: " + letter, L"Backing:: " + letter + L" - ", L"\tDone."));
    EXPECT_FALSE(Exists(program.DefaultList()));
    EXPECT_FALSE(Exists(program.SingleItemList()));
}

TEST_F(BackupSwitch, CopiesOnlyWhatChanged) {
    RunsTo(0, L"/B " + list);
    RunsTo(0, L"/B " + list);
    ExpectLetterBackedUp();
    EXPECT_THAT(lines, ElementsAre(L"No change since last backup for the path:", letter));

    program.tree.File(L"Home\\Letter.txt", "Dear Madam", {2024, 5, 6, 7, 8, 9});
    RunsTo(0, L"/B " + list);
    EXPECT_THAT(InVault(),
                ElementsAre(L"Letter«0001».txt", L"Letter«0001».txt.vwc", L"Letter«0002».txt"));
    EXPECT_EQ(ReadBytes(vault + L"\\Letter«0001».txt"), "Dear Madam");
    EXPECT_EQ(ReadBytes(vault + L"\\Letter«0002».txt"), "Dear Sir");
}

TEST_F(BackupSwitch, MakesAMissingDefaultListEmpty) {
    RunsTo(0, L"/Backup  ");
    EXPECT_EQ(ReadBytes(program.DefaultList()), "");
    EXPECT_THAT(lines, IsEmpty());
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_THAT(InVault(), IsEmpty());
}

TEST_F(BackupSwitch, BacksUpOneFileToTheDefaultDestination) {
    RunsTo(0, L"/B " + letter);
    EXPECT_EQ(ReadBytes(program.DefaultDestination() + L"\\Letter«0001».txt"), "Dear Sir");
    EXPECT_THAT(InVault(), IsEmpty());
    EXPECT_FALSE(Exists(program.DefaultList()));
}

TEST_F(BackupSwitch, OneFile_NoSetting_KeepsThreeCopies) {
    for (int day = 1; day <= 5; ++day) {
        program.tree.SetDate(L"Home\\Letter.txt", {2024, 5, day, 0, 0, 0});
        RunsTo(0, L"/B " + letter);
    }
    EXPECT_THAT(ReadTree(program.DefaultDestination()), SizeIs(4));
    EXPECT_TRUE(Exists(program.DefaultDestination() + L"\\Letter«0003».txt"));
}

// A folder that is named without a list is taken for a file.
TEST_F(BackupSwitch, FolderAsItem_FailsAsAFile) {
    RunsTo(53, L"/B " + program.tree.Path(L"Home"));
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_THAT(boxes[0].text, testing::HasSubstr(L"in procedure BackupFile of Class Module"));
    EXPECT_THAT(ReadTree(program.DefaultDestination()), IsEmpty());
}

TEST_F(BackupSwitch, FindsAListByARelativePath) {
    ProgramStart start = program.With(L"/B ..\\Letters.vwl");
    start.currentFolder = program.tree.Path(L"Home");
    RunsTo(0, start);
    ExpectLetterBackedUp();
}

TEST_F(BackupSwitch, AcceptsListPathsWithBlanksAndCommas) {
    const std::wstring odd = program.List(L"My lists, old\\Letters, and more.vwl",
                                          {L"BackupTo: " + vault, Quoted(letter)});
    RunsTo(0, L"/B " + Quoted(odd));
    ExpectLetterBackedUp();
}

TEST_F(BackupSwitch, ItemWithAComma_InQuotationMarks_IsBackedUp) {
    const std::wstring odd = program.tree.File(L"Home\\Letter, copy.txt", "Dear Sir, dear Madam");
    const std::wstring oddList =
        program.List(L"Odd.vwl", {L"BackupTo: " + vault, Quoted(odd), letter});
    RunsTo(0, L"/B " + oddList);
    EXPECT_EQ(ReadBytes(vault + L"\\Letter, copy«0001».txt"), "Dear Sir, dear Madam");
    EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
}

TEST_F(BackupSwitch, AcceptsArabicPaths) {
    const std::wstring arabic = program.tree.File(L"بيتي\\رسالة إلى العائلة.txt", "salam");
    const std::wstring arabicList =
        program.List(L"قوائم\\رسائلي.vwl", {L"BackupTo: " + vault, arabic});
    RunsTo(0, L"/B " + arabicList);
    EXPECT_THAT(lines, Contains(L"Backing: " + arabic));
    EXPECT_EQ(ReadBytes(vault + L"\\رسالة إلى العائلة«0001».txt"), "salam");

    RunsTo(0, L"/B " + Quoted(arabic));
    EXPECT_EQ(ReadBytes(program.DefaultDestination() + L"\\رسالة إلى العائلة«0001».txt"), "salam");

    RunsTo(0, L"/B " + Quoted(arabicList));
    EXPECT_THAT(lines, ElementsAre(L"No change since last backup for the path:", arabic));
}

TEST_F(BackupSwitch, BacksUpFoldersRulesAndFilesOfOneList) {
    program.tree.File(L"Home\\Docs\\a.txt", "a");
    program.tree.File(L"Home\\Docs\\Sub\\b.txt", "b");
    program.tree.Folder(L"Home\\Docs\\Empty");
    program.tree.File(L"Home\\Notes\\n.txt", "n");
    program.tree.File(L"Home\\Notes\\Sub\\not.txt", "not");
    const std::wstring all =
        program.List(L"All.vwl", {L"BackupTo: " + vault, program.tree.Path(L"Home\\Docs") + L"\\",
                                  program.tree.Path(L"Home\\Notes") + L"\\*", letter});
    RunsTo(0, L"/B " + all);
    EXPECT_EQ(ReadTree(vault + L"\\Docs«0001»"), ReadTree(program.tree.Path(L"Home\\Docs")));
    EXPECT_EQ(ReadBytes(vault + L"\\Notes«0001»\\n.txt"), "n");
    EXPECT_THAT(ReadTree(vault + L"\\Notes«0001»"), SizeIs(1));
    EXPECT_THAT(InVault(),
                ElementsAre(L"Docs«0001»", L"Docs«0001».vwc", L"Letter«0001».txt",
                            L"Letter«0001».txt.vwc", L"Notes«0001»", L"Notes«0001».vwc"));
}

}  // namespace
}  // namespace vw::test
