// A copy that misses a file, in the real windows of both languages: its row carries a sign, and
// restoring and opening say what it is, until a run completes it.

#include <gmock/gmock.h>

#include "tests/support/OpenedFiles.h"
#include "tests/windows/BackupWindows.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int kBackupName = 3;

class IncompleteCopyWindow : public BackupWindows, public testing::WithParamInterface<bool> {
  protected:
    IncompleteCopyWindow() {
        program.SetSetting(L"Arabic", IsArabic() ? L"-1" : L"0");
        program.SetSetting(L"ArabicPrepared", L"-1");
    }
    [[nodiscard]] bool IsArabic() const { return GetParam(); }
    [[nodiscard]] std::wstring Said() const {
        return IsArabic() ? L"هذه النسخة غير كاملة" : L"This copy is incomplete";
    }
    void EndBusyDialog(DrivenProgram& window) {
        window.WaitUntilBusyDialogIsGone();
        window.WaitUntilReady();
    }

    const std::wstring work = Home(L"Work");
    const std::wstring copy = Vault() + L"\\Work«0001»";
};

TEST_P(IncompleteCopyWindow, LockedFile_RowIsMarkedUntilTheCopyIsWhole) {
    program.tree.File(L"Home\\Work\\a.txt", "free", {2024, 1, 1, 12, 0, 0});
    program.tree.File(L"Home\\Work\\b.txt", "locked", {2024, 1, 1, 12, 0, 0});
    WriteDefaultList({work + L"\\"});
    DrivenProgram window(program.With(L""));
    {
        const FileHandle held(CreateFileW((work + L"\\b.txt").c_str(), GENERIC_READ, 0, nullptr,
                                          OPEN_EXISTING, 0, nullptr));
        window.Begin(ID_mnuBackup);
        window.AnswerBox(L"Error 70");
        EndBusyDialog(window);
    }
    const DrivenList copies = window.List(ID_lsvRestore2);
    ASSERT_THAT(copies.Column(kName), ElementsAre(L"N01"));
    EXPECT_THAT(copies.Column(kBackupName), ElementsAre(copy)) << "the texts say nothing of it";
    EXPECT_TRUE(copies.HasWarning(0));

    copies.Select(0);
    window.Begin(ID_mnuRestore);
    window.AnswerBox(Said());
    window.AnswerBox(work, IDYES);
    EndBusyDialog(window);
    EXPECT_EQ(ReadBytes(work + L"\\b.txt"), "locked");

    BackUp(window);
    EXPECT_EQ(ReadTree(copy), ReadTree(work));
    EXPECT_FALSE(window.List(ID_lsvRestore2).HasWarning(0));
    window.Begin(ID_mnuRestore);
    window.AnswerBox(work, IDYES);
    EndBusyDialog(window);
    window.Close();
}

TEST_P(IncompleteCopyWindow, Open_SaysWhatItIsFirst) {
    const OpenedFiles opened(program.tree, L".opens");
    const std::wstring note =
        program.tree.File(L"Home\\Note.opens", "the note|", {2024, 1, 1, 12, 0, 0});
    WriteDefaultList({note});
    DrivenProgram window(program.With(L""));
    BackUp(window);
    // No run makes such a copy of a single file; a later version may.
    const std::wstring comment = Vault() + L"\\Note«0001».opens.vwc";
    program.tree.File(comment, ReadBytes(comment) + "Incomplete\r\n");
    BackUp(window);
    EXPECT_TRUE(window.List(ID_lsvRestore2).HasWarning(0));
    window.List(ID_lsvRestore2).Click(0);
    window.Begin(ID_Toolbar1_ActionOpen);
    window.AnswerBox(Said());
    EXPECT_EQ(opened.WaitFor(9), "the note|");
    window.WaitUntilReady();
    window.Close();
}

INSTANTIATE_TEST_SUITE_P(BothLanguages, IncompleteCopyWindow, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& variant) {
                             return variant.param ? "Arabic" : "English";
                         });

}  // namespace
}  // namespace vw::test
