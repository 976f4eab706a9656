#include "restore/RestoreCommands.h"

#include <gmock/gmock.h>

#include <iostream>

#include "engine/CommentLine.h"
#include "platform/RuntimeError.h"
#include "tests/restore/RestoreWorld.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::wstring kQuestion =
    L"هل تريد بالتأكيد حذف الملف التالي واستبداله بالنسخة الاحتياطية:\r\n";

/// Report.doc in three states, each backed up: N03 is the first, N01 the third, which stands.
class Restore : public RestoreWorld {
  protected:
    Restore() {
        for (int state = 1; state <= 3; ++state) {
            tree.File(L"Docs\\Report.doc", "state " + std::to_string(state),
                      {2024, 1, state, 9, 0, 0});
            BackUp(document);
        }
        browser.ListRestoreFiles();
    }
    [[nodiscard]] std::string Safety(int number = 21) const {
        return ReadBytes(vault + L"\\Report«00" + std::to_wstring(number) + L"».doc");
    }
    [[nodiscard]] bool HasSafety(int number = 21) const {
        return Exists(vault + L"\\Report«00" + std::to_wstring(number) + L"».doc");
    }

    const std::wstring document = tree.Path(L"Docs\\Report.doc");
};

TEST_F(Restore, OverwritesWithoutASafetyCopyWhatACopyHas) {
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion + document, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 2");
    EXPECT_EQ(ReadDate(document), MakeDate({2024, 1, 2, 9, 0, 0}));
    EXPECT_FALSE(HasSafety());
    EXPECT_THAT(calls, ElementsAre(L"Restoring: " + document, L"BusyHide"));
    const BoxContent box = world.boxes.Shown().at(0);
    EXPECT_EQ(box.buttons, BoxButtons::YesNo);
    EXPECT_TRUE(box.rightToLeft);
    EXPECT_EQ(box.title, L"Vaultwright");
    EXPECT_EQ(browser.Copies().SubItem(browser.Copies().Selected(), L"Name"), L"N02");
}

TEST_F(Restore, FirstKeepsAStateThatNoCopyHas) {
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N03");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 1");
    EXPECT_EQ(Safety(), "unsaved");
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02", L"N03", L"U01"));
    EXPECT_EQ(state.BackupTo, vault) << "the list's destination is as before";
}

TEST_F(Restore, NumbersSafetyCopiesBehindTheHighest) {
    CopyFile(L"Report«0021».doc");
    CopyFile(L"Report«0023».doc");
    browser.ListRestoreFiles();
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N03");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(Safety(24), "unsaved");
}

TEST_F(Restore, GivesUpBeyondNumberNinetyNine) {
    CopyFile(L"Report«0099».doc");
    browser.ListRestoreFiles();
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N03");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kOverflow);
    EXPECT_EQ(ReadBytes(document), "unsaved");
}

TEST_F(Restore, NoLeavesTheFileAndTheBusyDialog) {
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::No);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 3");
    EXPECT_THAT(calls, ElementsAre(L"Restoring: " + document));
}

TEST_F(Restore, AsksNothingWhereNothingStands) {
    tree.Remove(L"Docs\\Report.doc");
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 3");
}

TEST_F(Restore, ToAChosenPlaceTakesTheFolderAndTheItemsOwnName) {
    tree.File(L"Elsewhere\\Typed.doc", "typed", {2024, 3, 1, 0, 0, 0});
    dialogs.Expect(tree.Path(L"Elsewhere\\Typed.doc"));
    world.boxes.Expect(kQuestion + tree.Path(L"Elsewhere\\Typed.doc"), BoxAnswer::Yes);
    SelectCopy(L"N01");
    commands.mnuRestoreToClick();
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Report.doc")), "state 3");
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Typed.doc")), "typed");
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_TRUE(dialogs.saving[0]);
    EXPECT_EQ(dialogs.shown[0].flags, 524294U);
    EXPECT_EQ(dialogs.shown[0].fileName, L"Report.doc");
    EXPECT_EQ(dialogs.shown[0].initialFolder, tree.Path(L"Docs"));
}

TEST_F(Restore, KeepsWhatStandsUnderTheRealNameThoughAnotherWasTyped) {
    tree.File(L"Elsewhere\\Report.doc", "somebody's", {2024, 3, 1, 0, 0, 0});
    dialogs.Expect(tree.Path(L"Elsewhere\\Typed.doc"));
    commands.mnuRestoreToClick();
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Report.doc")), "state 3");
    EXPECT_EQ(Safety(), "somebody's");
}

TEST_F(Restore, ACancelledDialogEndsItInSilence) {
    dialogs.Expect(std::nullopt);
    commands.mnuRestoreToClick();
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(ReadBytes(document), "state 3");
}

TEST_F(Restore, AnUnknownPlaceIsAskedForInDocuments) {
    for (const auto* comment : {"", "+Original Location:C:\\gone for ever\r\n"}) {
        tree.File(vault + L"\\Report«0001».doc.vwc", comment);
        browser.ListRestoreFiles();
        dialogs.Expect(std::nullopt);
        commands.mnuRestoreClick();
        EXPECT_EQ(dialogs.shown.back().initialFolder, L"C:\\My Documents");
    }
}

TEST_F(Restore, ARootIsAPlaceToo) {
    EXPECT_EQ(browser.Items().SubItem(0, L"Orginal Location"), tree.Path(L"Docs"));
}

TEST_F(Restore, AReadOnlyTargetIsNotOverwritten) {
    tree.SetAttributes(L"Docs\\Report.doc", FILE_ATTRIBUTE_READONLY);
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kPermissionDenied);
    EXPECT_EQ(error.procedure, L"Extract");
    EXPECT_EQ(error.container, L"CPackage");
    tree.SetAttributes(L"Docs\\Report.doc", FILE_ATTRIBUTE_READONLY, false);
    EXPECT_EQ(ReadTree(tree.Path(L"Docs")).size(), 1U) << "nothing is left beside it";
    EXPECT_EQ(ReadBytes(document), "state 3");
}

TEST_F(Restore, ALockedTargetIsNotOverwritten) {
    const FileHandle held(CreateFileW(document.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
    EXPECT_EQ(ReadTree(tree.Path(L"Docs")).size(), 1U);
}

TEST_F(Restore, ACopyThatIsGoneIsTold) {
    tree.Remove(vault + L"\\Report«0002».doc");
    SelectCopy(L"N02");
    commands.mnuRestoreClick();
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kFileNotFound);
    EXPECT_EQ(error.procedure, L"DoRestore");
    EXPECT_EQ(ReadBytes(document), "state 3");
}

TEST_F(Restore, ACancelDuringTheSafetyCopyOverwritesNothing) {
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N03");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    onMsg = [this] { world.pump.AtEachYield([this] { state.cancelRequested = true; }); };
    commands.mnuRestoreClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kAccessError);
    EXPECT_EQ(ReadBytes(document), "unsaved");
}

TEST_F(Restore, AMarkThatAnEarlierRunLeftDoesNotStopIt) {
    state.cancelRequested = true;
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N03");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 1");
    EXPECT_EQ(Safety(), "unsaved");
}

TEST_F(Restore, WithoutASelectionEveryCommandSaysSo) {
    const auto label = main.form.Text(L"lblNoRestore");
    browser.Copies().Select(-1);
    for (const auto& command :
         {&RestoreCommands::mnuRestoreClick, &RestoreCommands::mnuRestoreToClick,
          &RestoreCommands::mnuOpenCopyClick, &RestoreCommands::mnuDelCopyClick}) {
        world.boxes.Expect(label);
        (commands.*command)();
    }
    browser.Items().Select(-1);
    world.boxes.Expect(label);
    commands.mnuDelCopiesClick();
    EXPECT_EQ(ReadTree(vault).size(), 4U);
}

TEST_F(Restore, DeletingOneOfSeveralCopiesListsTheCopiesAnew) {
    SelectCopy(L"N02");
    world.boxes.Expect(L"هل تريد بالتأكيد حذف النسخة رقم [N02]من الملف:\r\nReport", BoxAnswer::Yes);
    commands.mnuDelCopyClick();
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N03"));
    EXPECT_FALSE(Exists(vault + L"\\Report«0002».doc"));
    // A no deletes nothing.
    SelectCopy(L"N01");
    world.boxes.Expect(L"[N01]", BoxAnswer::No);
    commands.mnuDelCopyClick();
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N03"));
}

TEST_F(Restore, DeletingTheOnlyCopyRemovesTheItemAndItsComment) {
    tree.Remove(vault + L"\\Report«0002».doc");
    tree.Remove(vault + L"\\Report«0003».doc");
    browser.ListRestoreFiles();
    world.boxes.Expect(L"[N01]", BoxAnswer::Yes);
    commands.mnuDelCopyClick();
    EXPECT_THAT(Items(), IsEmpty());
    EXPECT_THAT(ReadTree(vault), IsEmpty());
}

TEST_F(Restore, DeletingAllCopiesAsksOnceFromTheLastUp) {
    std::vector<std::wstring> erased;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::EraseFile) erased.push_back(operation.path);
    });
    world.boxes.Expect(L"هل تريد بالتأكيد حذف كافة النسخ الاحتياطية العائدة للملف:\r\nReport",
                       BoxAnswer::Yes);
    commands.mnuDelCopiesClick();
    EXPECT_THAT(ReadTree(vault), IsEmpty());
    EXPECT_THAT(Items(), IsEmpty());
    ASSERT_EQ(erased.size(), 4U);
    EXPECT_NE(erased[0].find(L"«0003»"), std::wstring::npos);
    EXPECT_NE(erased[2].find(L"«0001»"), std::wstring::npos);
}

TEST_F(Restore, ACopyThatCannotBeDeletedIsToldAndTheOthersGo) {
    const FileHandle held(CreateFileW((vault + L"\\Report«0002».doc").c_str(), GENERIC_READ,
                                      FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    world.boxes.Expect(L"Report", BoxAnswer::Yes);
    commands.mnuDelCopiesClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
    EXPECT_THAT(Labels(), ElementsAre(L"N02"));
}

TEST_F(Restore, DeletingACopyThatIsGoneIsToldAndTheListIsRight) {
    tree.Remove(vault + L"\\Report«0002».doc");
    SelectCopy(L"N02");
    world.boxes.Expect(L"[N02]", BoxAnswer::Yes);
    commands.mnuDelCopyClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kFileNotFound);
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N03"));
}

TEST_F(Restore, AFolderIsMergedAndItsOldStateKept) {
    const std::wstring work = tree.Folder(L"Work");
    tree.File(L"Work\\a.txt", "old a", {2024, 1, 1, 0, 0, 0});
    tree.File(L"Work\\Sub\\b.txt", "old b", {2024, 1, 2, 0, 0, 0});
    tree.Folder(L"Work\\Empty");
    BackUp(work + L"\\");
    tree.File(L"Work\\a.txt", "new a", {2024, 2, 1, 0, 0, 0});
    tree.File(L"Work\\c.txt", "only now", {2024, 2, 2, 0, 0, 0});
    tree.Remove(L"Work\\Sub");
    browser.ListRestoreFiles();
    browser.RestoredPath(work + L"\\");
    world.boxes.Expect(kQuestion + work, BoxAnswer::Yes);
    const Tree before = ReadTree(work);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(tree.Path(L"Work\\a.txt")), "old a");
    EXPECT_EQ(ReadBytes(tree.Path(L"Work\\Sub\\b.txt")), "old b");
    EXPECT_EQ(ReadBytes(tree.Path(L"Work\\c.txt")), "only now");
    EXPECT_EQ(ReadTree(vault + L"\\Work«0021»"), before);
}

TEST_F(Restore, OneLockedFileOfAFolderCostsNoOther) {
    const std::wstring work = tree.Folder(L"Work");
    for (const auto* name : {L"Work\\a.txt", L"Work\\b.txt", L"Work\\Sub\\c.txt"}) {
        tree.File(name, "old", {2024, 1, 1, 0, 0, 0});
    }
    BackUp(work + L"\\");
    for (const auto* name : {L"Work\\a.txt", L"Work\\b.txt", L"Work\\Sub\\c.txt"}) {
        tree.File(name, "new!", {2024, 1, 1, 0, 0, 0});
    }
    browser.ListRestoreFiles();
    browser.RestoredPath(work + L"\\");
    const FileHandle held(CreateFileW(tree.Path(L"Work\\a.txt").c_str(), GENERIC_READ,
                                      FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
    EXPECT_EQ(ReadBytes(tree.Path(L"Work\\a.txt")), "new!");
    EXPECT_EQ(ReadBytes(tree.Path(L"Work\\b.txt")), "old");
    EXPECT_EQ(ReadBytes(tree.Path(L"Work\\Sub\\c.txt")), "old");
    EXPECT_THAT(report, testing::Contains(testing::HasSubstr(L"a.txt")));
}

TEST_F(Restore, AnItemBelowAFolderWithAPointComesBackExactly) {
    const std::wstring docs = tree.Folder(L"j.smith\\Docs");
    tree.File(L"j.smith\\Docs\\a.txt", "a", {2024, 1, 1, 0, 0, 0});
    BackUp(docs + L"\\");
    tree.Remove(L"j.smith\\Docs");
    browser.ListRestoreFiles();
    SelectItem(L"Docs");
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(tree.Path(L"j.smith\\Docs\\a.txt")), "a");
}

// Whatever goes wrong during a restore, at any of its steps: the file that was to be overwritten
// or the restored one stands, whole; when it was overwritten, its safety copy stands.
TEST_F(Restore, SurvivesAFailureAndAKillAtEveryStep) {
    enum class Way { Fail, FailFrom, Die, Full, Truncate, Ignore };
    int points = 0;
    // Where a drive that does not answer gives way to, a folder stands ready.
    tree.Folder(L"C:\\Backup");
    for (const Way way :
         {Way::Fail, Way::FailFrom, Way::Die, Way::Full, Way::Truncate, Way::Ignore}) {
        for (int n = 1;; ++n) {
            SCOPED_TRACE(std::to_string(static_cast<int>(way)) + " at step " + std::to_string(n));
            tree.Remove(vault + L"\\Report«0021».doc");
            tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
            // A drive that failed to answer has given way to another.
            browser.RestoreFrom(vault);
            browser.ListRestoreFiles();
            SelectCopy(L"N03");
            ScriptedBoxes boxes;
            boxes.Expect(kQuestion, BoxAnswer::Yes);
            if (way == Way::Fail) world.files.FailNth(n, error_number::kPermissionDenied);
            if (way == Way::FailFrom) world.files.FailFrom(n, error_number::kDeviceError);
            if (way == Way::Die) world.files.DieAtNth(n);
            if (way == Way::Full) world.files.FillDiskFrom(n);
            if (way == Way::Truncate) world.files.TruncateNthCopy(n);
            if (way == Way::Ignore) world.files.IgnoreNth(n, OnlyChanges());
            System system{world.files,      world.pump,       boxes,       world.errors,
                          world.exitStatus, world.programEnd, world.clock, world.ansi};
            bool died = false;
            try {
                Commands(system).mnuRestoreClick();
            } catch (const Died&) {
                died = true;
            }
            const bool faulted = died || !world.files.Faults().empty();
            world.files.Heal();
            state.BackupTo = vault;
            if (boxes.Shown().empty()) {
                boxes.MsgBox({.text = kQuestion, .buttons = BoxButtons::YesNo});
            }
            const std::string now = ReadBytes(document);
            EXPECT_TRUE(now == "unsaved" || now == "state 1") << now;
            if (now == "state 1") {
                EXPECT_EQ(Safety(), "unsaved");
                EXPECT_EQ(ReadDate(document), MakeDate({2024, 1, 1, 9, 0, 0}));
            }
            static_cast<void>(world.errors.Take());
            for (const auto& [path, node] : ReadTree(tree.Path(L"Docs"))) {
                if (path != L"Report.doc") {
                    EXPECT_TRUE(died) << "left beside it";
                    tree.Remove(L"Docs\\" + path);
                }
            }
            if (!faulted) break;
            ++points;
        }
    }
    std::cout << points << " failures and kills of a restore tried\n";
    EXPECT_GT(points, 50);
}

}  // namespace
}  // namespace vw::test
