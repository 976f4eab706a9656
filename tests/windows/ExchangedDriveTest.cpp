// The drive of the copies is pulled out or exchanged under the open window: whatever the user goes
// on to click, no file gets the content of another item and no other item's copies are deleted.

#include <gmock/gmock.h>

#include "tests/support/CopiesOnC.h"
#include "tests/windows/BackupWindows.h"

namespace vw::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

constexpr int kPlace = 3;       // of the upper list
constexpr int kBackupName = 3;  // of the lower one

/// A letter with copies on the stick; another one of the same name has copies on C:.
class ExchangedDriveWindow : public BackupWindows {
  protected:
    ExchangedDriveWindow() {
        if (!copiesOnC_.MayBeUsed()) return;
        program.tree.Folder(L"Other");
        const std::string comment =
            "Backed Files Date Last Modified:05/05/2023-05:05:05+Original Location:";
        const std::wstring other = program.tree.Path(L"Other");
        program.tree.File(kOnC + L"\\Letter«0001».txt.vwc",
                          comment + std::string(other.begin(), other.end()) + "\r\n");
        for (const auto* name :
             {L"\\Letter«0001».txt", L"\\Letter«0002».txt", L"\\Letter«0021».txt"}) {
            program.tree.File(kOnC + name, "OTHER letter", {2023, 5, 5, 5, 5, 5});
        }
        onC = ReadTree(kOnC);
        WriteDefaultList({letter});
    }
    ~ExchangedDriveWindow() override { Stick().Insert(); }
    void SetUp() override {
        if (!copiesOnC_.MayBeUsed()) GTEST_SKIP() << "somebody keeps copies on C:";
    }

    void MakeCopies(DrivenProgram& window) {
        BackUp(window);
        program.tree.File(L"Home\\Letter.txt", "mine", {2024, 1, 2, 12, 0, 0});
        BackUp(window);
        onStick = ReadTree(Vault());
    }
    /// The lists agree on what they show: the copies of the other letter.
    void ExpectListsOfC(const DrivenProgram& window) const {
        EXPECT_THAT(window.List(ID_lsvRestore1).Column(kPlace),
                    ElementsAre(program.tree.Path(L"Other")));
        EXPECT_THAT(window.List(ID_lsvRestore2).Column(kBackupName),
                    Each(HasSubstr(L"C:\\Backup\\")));
    }

    const std::wstring kOnC = L"C:\\Backup";
    const CopiesOnC copiesOnC_;
    Tree onC;
    Tree onStick;
};

TEST_F(ExchangedDriveWindow, Commands_StickPulledOut_StopAndListAgain) {
    for (const int command : {ID_mnuRestore, ID_mnuDelCopies, ID_mnuDelCopy, ID_mnuOpenCopy}) {
        SCOPED_TRACE(command);
        Stick().Insert();
        program.tree.Remove(Vault());
        program.tree.Folder(Vault());
        program.tree.File(L"Home\\Letter.txt", "first", {2024, 1, 1, 12, 0, 0});
        DrivenProgram window(program.With(L""));
        MakeCopies(window);
        window.List(ID_lsvRestore2).Select(1);
        Stick().PullOut();
        window.Begin(command);
        window.AnswerBox(L"Error 53");
        window.WaitUntilReady();
        ExpectListsOfC(window);
        EXPECT_EQ(ReadTree(kOnC), onC);
        EXPECT_EQ(ReadBytes(letter), "mine");
        // The list of items names a drive that is gone now.
        Stick().Insert();
        EXPECT_EQ(ReadTree(Vault()), onStick);
        window.Close();
    }
}

TEST_F(ExchangedDriveWindow, RestoreTwice_StickPulledOut_WritesNothingIntoTheItem) {
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    Stick().PullOut();
    window.Begin(ID_mnuRestore);
    window.AnswerBox(L"Error 53");
    window.WaitUntilReady();
    // What is restored now is what both lists show: the other letter, to its own place.
    window.Begin(ID_mnuRestore);
    window.WaitForBusyDialog();
    window.WaitUntilBusyDialogIsGone();
    window.WaitUntilReady();
    EXPECT_EQ(ReadBytes(letter), "mine");
    EXPECT_EQ(ReadBytes(program.tree.Path(L"Other\\Letter.txt")), "OTHER letter");
    EXPECT_EQ(ReadTree(kOnC), onC);
    Stick().Insert();
    window.Close();
}

// Both sticks have copies of the same names and dates, so only the folder itself is another one.
TEST_F(ExchangedDriveWindow, Click_StickExchangedForItsTwin_ListsBothAgainWithoutABox) {
    for (const wchar_t* const stick : {L"", L"twin"}) {
        Stick().Insert(stick);
        program.tree.File(Vault() + L"\\Letter«0001».txt", "twin", {2024, 1, 1, 12, 0, 0});
        program.tree.File(Vault() + L"\\Second«0001».txt", "twin", {2024, 1, 1, 12, 0, 0});
    }
    Stick().Insert();
    WriteDefaultList({});
    DrivenProgram window(program.With(L""));
    ASSERT_THAT(window.List(ID_lsvRestore1).Column(kName), ElementsAre(L"Letter", L"Second"));
    Stick().Insert(L"twin");
    window.List(ID_lsvRestore1).Click(1);
    window.WaitUntilReady();
    EXPECT_THAT(window.TextOf(ID_sbrStatus), HasSubstr(L"exchanged"));
    EXPECT_THAT(window.Run().Boxes(), SizeIs(0));
    EXPECT_EQ(window.List(ID_lsvRestore1).Selected(), 1);
    window.Begin(ID_mnuDelCopies);
    window.AnswerBox(L"Second", IDYES);
    window.WaitUntilReady();
    EXPECT_FALSE(Exists(Vault() + L"\\Second«0001».txt"));
    EXPECT_TRUE(Exists(Vault() + L"\\Letter«0001».txt"));
    Stick().Insert();
    EXPECT_TRUE(Exists(Vault() + L"\\Second«0001».txt"));
    window.Close();
}

// The stick is away for a moment: the window does not turn to C: for that.
TEST_F(ExchangedDriveWindow, Click_StickAwayForAMoment_StaysOnIt) {
    program.tree.File(Vault() + L"\\Second«0001».txt", "second", {2024, 1, 1, 12, 0, 0});
    DrivenProgram window(program.With(L""));
    MakeCopies(window);
    Stick().PullOut();
    Stick().Insert();
    window.List(ID_lsvRestore1).Click(1);
    window.WaitUntilReady();
    EXPECT_EQ(window.TextOf(ID_cmbDestination), Drive());
    EXPECT_THAT(window.List(ID_lsvRestore2).Column(kBackupName),
                ElementsAre(Vault() + L"\\Second«0001».txt"));
    EXPECT_THAT(window.TextOf(ID_sbrStatus), testing::Not(HasSubstr(L"exchanged")));
    EXPECT_EQ(ReadTree(kOnC), onC);
    window.Close();
}

}  // namespace
}  // namespace vw::test
