// What the exit code shows a scheduler: 0, or the first thing that went wrong.

#include <gmock/gmock.h>

#include "platform/NamedLock.h"
#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class ExitCode : public SystemTest {
  protected:
    const std::wstring letter = program.tree.File(L"Home\\Letter.txt", "Dear Sir");
    const std::wstring missingFile = program.tree.Path(L"Home\\Nobody.txt");
    const std::wstring missingFolder = program.tree.Path(L"Home\\Nowhere") + L"\\";

    std::wstring ListOf(std::vector<std::wstring> items) const {
        items.insert(items.begin(), L"BackupTo: " + vault);
        return program.List(L"List.vwl", items);
    }

    /// A file that another program uses and does not share, for as long as the result lives.
    [[nodiscard]] static FileHandle Lock(const std::wstring& path) {
        FileHandle file(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
        EXPECT_TRUE(file);
        return file;
    }
};

TEST_F(ExitCode, MissingFile_Is53) {
    RunsTo(53, L"/B " + ListOf({missingFile, letter}));
    EXPECT_THAT(lines, Contains(L"تأكد من توفر المجلد التالي"));
    EXPECT_THAT(lines, Contains(L"\tDone."));
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(errors, L"Not found: " + missingFile + L"\r\n");
}

TEST_F(ExitCode, MissingFolderOrRule_Is76) {
    RunsTo(76, L"/B " + ListOf({missingFolder, letter}));
    EXPECT_THAT(lines, Contains(L"\tDone."));
    EXPECT_THAT(boxes, IsEmpty());
    RunsTo(76, L"/B " + ListOf({missingFolder + L"*"}));
    EXPECT_THAT(lines, SizeIs(4));
}

// Its copies are shifted all the same, and then the copy fails.
TEST_F(ExitCode, VanishedFileWithCopies_Is53) {
    const std::wstring list = ListOf({letter});
    RunsTo(0, L"/B " + list);
    program.tree.Remove(L"Home\\Letter.txt");
    RunsTo(53, L"/B " + list);
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_THAT(errors, HasSubstr(letter));
    EXPECT_EQ(ReadBytes(vault + L"\\Letter«0002».txt"), "Dear Sir");
    EXPECT_FALSE(Exists(vault + L"\\Letter«0001».txt"));
}

TEST_F(ExitCode, RefusedItem_Is75) {
    const std::wstring inside = program.tree.File(L"Vault\\Inside.txt");
    const Tree before = ReadTree(vault);
    RunsTo(75, L"/B " + ListOf({inside}));
    EXPECT_THAT(lines, ElementsAre(StartsWith(L"Not backed up: "), inside,
                                   L"لا يمكن نسخ المسار التالي إلى المجلد المحدد", inside));
    RunsTo(75, L"/B " + ListOf({program.tree.Path() + L"\\"}));
    RunsTo(75, L"/B " + ListOf({vault + L"\\*"}));
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(ReadTree(vault), before);
}

TEST_F(ExitCode, FileInUse_Is70) {
    const FileHandle lock = Lock(letter);
    const std::wstring other = program.tree.File(L"Home\\Other.txt", "other");
    RunsTo(70, L"/B " + ListOf({letter, other}));
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_THAT(boxes[0].text, HasSubstr(L"Error 70 in line "));
    EXPECT_THAT(boxes[0].text, HasSubstr(L"in procedure BackupFile of Class Module CPackage"));
    EXPECT_THAT(boxes[0].text, HasSubstr(L"Permission denied\r\n" + letter));
    EXPECT_EQ(errors, boxes[0].text + L"\r\n");
    EXPECT_THAT(InVault(), ElementsAre(L"Other«0001».txt", L"Other«0001».txt.vwc"));
}

TEST_F(ExitCode, CountIsZero_Is1000) {
    RunsTo(1000, L"/B " + ListOf({L"Backages: 0", letter}));
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_THAT(boxes[0].text, HasSubstr(L"in procedure RenamePackages of Class Module CPackage"));
    EXPECT_EQ(ReadBytes(vault + L"\\Letter«0001».txt"), "Dear Sir");
}

TEST_F(ExitCode, SeveralFailures_IsTheFirst) {
    const FileHandle lock = Lock(program.tree.File(L"Home\\Locked.txt"));
    const std::wstring locked = program.tree.Path(L"Home\\Locked.txt");
    const std::wstring unplugged = L"BackupTo: " + program.tree.Path(L"Unplugged");
    RunsTo(53, L"/B " + ListOf({missingFile, locked, missingFolder}));
    RunsTo(70, L"/B " + ListOf({locked, missingFile}));
    RunsTo(76, L"/B " + ListOf({missingFolder, missingFile, locked}));
    RunsTo(53, L"/B " + ListOf({missingFile, unplugged, letter}));
}

TEST_F(ExitCode, IconIsClosedDuringTheWait_Is1223) {
    NamedLock busy(L"destination", vault);
    ASSERT_TRUE(busy.TryTake());
    ProgramRun run(program.With(L"/B " + ListOf({letter})));
    run.WaitForWindow(L"frmTrayIcon");
    EXPECT_TRUE(run.StaysFor(700));
    EXPECT_EQ(run.EndByIcon(), 1223U);
    EXPECT_THAT(run.Lines(), ElementsAre(L"Waiting for another backup in: " + vault,
                                         testing::EndsWith(L"0 failed, 1 cancelled")));
    EXPECT_THAT(InVault(), IsEmpty());
}

TEST_F(ExitCode, IconIsClosedDuringTheCopy_Is1223) {
    // As many as take longer than a run without an icon lasts.
    for (int i = 0; i < 5000; ++i) {
        program.tree.File(
            L"Home\\Docs\\" + std::to_wstring(i / 100) + L"\\" + std::to_wstring(i) + L".txt",
            std::to_string(i));
    }
    const std::wstring list = ListOf({program.tree.Path(L"Home\\Docs") + L"\\", letter});
    ProgramRun run(program.With(L"/B " + list));
    while (!run.HasEnded() && InVault().empty()) Sleep(1);
    EXPECT_EQ(run.EndByIcon(), 1223U);
    for (const std::wstring& name : InVault()) {
        EXPECT_EQ(name.find(L'«'), std::wstring::npos) << "a copy that is not whole: " << name;
    }

    RunsTo(0, L"/B " + list);
    EXPECT_EQ(ReadTree(vault + L"\\Docs«0001»"), ReadTree(program.tree.Path(L"Home\\Docs")));
    EXPECT_THAT(InVault(), ElementsAre(L"Docs«0001»", L"Docs«0001».vwc", L"Letter«0001».txt",
                                       L"Letter«0001».txt.vwc"));
}

}  // namespace
}  // namespace vw::test
