#include "restore/RestoreCommands.h"

#include <gmock/gmock.h>

#include <utility>

#include "platform/RuntimeError.h"
#include "tests/restore/RestoreFixture.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(Restore, StateIsStored_OverwritesWithoutASafetyCopy) {
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion + document, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 2");
    EXPECT_EQ(ReadDate(document), MakeDate({2024, 1, 2, 9, 0, 0}));
    EXPECT_FALSE(HasSafety());
    EXPECT_THAT(calls, ElementsAre(L"Restoring: " + document, L"BusyHide true"));
    ExpectGivenQuestion(world.boxes.Shown().at(0));
    EXPECT_EQ(browser.Copies().Rows().SubItem(browser.Copies().Selected(), L"Name"), L"N02");
}

// A run of another process has rotated since the copies were listed: under the name of the one that
// the user chose is another.
TEST_F(Restore, CopyMovedMeanwhile_IsReported_NothingOverwritten) {
    SelectCopy(L"N02");
    tree.File(vault + L"\\Report«0002».doc", "another", {2024, 1, 5, 9, 0, 0});
    commands.mnuRestoreClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kFileNotFound);
    EXPECT_EQ(ReadBytes(document), "state 3");
}

TEST_F(Restore, CopyMovesDuringQuestion_NothingOverwritten) {
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    bool moved = false;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.path != document || std::exchange(moved, true)) return;
        tree.File(vault + L"\\Report«0002».doc", "another", {2024, 1, 5, 9, 0, 0});
    });
    commands.mnuRestoreClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kFileNotFound);
    EXPECT_EQ(ReadBytes(document), "state 3");
}

TEST_F(Restore, StateIsNotStored_MakesASafetyCopy) {
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N03");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 1");
    EXPECT_EQ(Safety(), "unsaved");
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02", L"N03", L"U01"));
    EXPECT_EQ(state.BackupTo, vault) << "the list's destination is as before";
}

TEST_F(Restore, SafetyCopy_HasTheNumberAfterTheHighest) {
    CopyFile(L"Report«0021».doc");
    CopyFile(L"Report«0023».doc");
    browser.ListRestoreFiles();
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N03");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(Safety(24), "unsaved");
}

TEST_F(Restore, AnswerIsNo_OverwritesNothing) {
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::No);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 3");
    EXPECT_THAT(calls, ElementsAre(L"Restoring: " + document));
}

TEST_F(Restore, NothingAtTheTarget_AsksNothing) {
    tree.Remove(L"Docs\\Report.doc");
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 3");
}

TEST_F(Restore, RestoreTo_UsesTheChosenFolderAndTheItemsName) {
    tree.File(L"Elsewhere\\Typed.doc", "typed", {2024, 3, 1, 0, 0, 0});
    dialogs.Expect(tree.Path(L"Elsewhere\\Typed.doc"));
    world.boxes.Expect(kQuestion + tree.Path(L"Elsewhere\\Typed.doc"), BoxAnswer::Yes);
    SelectCopy(L"N02");
    commands.mnuRestoreToClick();
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Report.doc")), "state 2");
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Typed.doc")), "typed");
    EXPECT_EQ(ReadBytes(document), "state 3");
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_TRUE(dialogs.saving[0]);
    EXPECT_EQ(dialogs.shown[0].flags, 524294U);
    EXPECT_NE(dialogs.shown[0].filter, L"");
    EXPECT_EQ(dialogs.shown[0].fileName, L"Report.doc");
    EXPECT_EQ(dialogs.shown[0].defaultExtension, L"");
    EXPECT_EQ(dialogs.shown[0].initialFolder, tree.Path(L"Docs"));
}

TEST_F(Restore, OtherNameTyped_ItemAtTheRealNameIsKept) {
    tree.File(L"Elsewhere\\Report.doc", "somebody's", {2024, 3, 1, 0, 0, 0});
    dialogs.Expect(tree.Path(L"Elsewhere\\Typed.doc"));
    commands.mnuRestoreToClick();
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Report.doc")), "state 3");
    EXPECT_EQ(Safety(), "somebody's");
}

TEST_F(Restore, RestoreTo_DialogCancelled_ChangesNothing) {
    dialogs.Expect(std::nullopt);
    commands.mnuRestoreToClick();
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(ReadBytes(document), "state 3");
}

TEST_F(Restore, UnknownLocation_DialogBeginsInDocuments) {
    for (const auto* comment : {"", "+Original Location:C:\\gone for ever\r\n"}) {
        tree.File(vault + L"\\Report«0001».doc.vwc", comment);
        browser.ListRestoreFiles();
        dialogs.Expect(std::nullopt);
        commands.mnuRestoreClick();
        EXPECT_EQ(dialogs.shown.back().initialFolder, L"C:\\My Documents");
    }
}

// A list view that is no table has no such column.
TEST_F(Restore, LocationColumnIsEmpty_DialogBeginsInDocuments) {
    BackUp(tree.Folder(L"Work") + L"\\");
    browser.Items().SetStyle(ViewStyle::LargeIcons);
    browser.ListRestoreFiles();
    SelectItem(L"Work");
    dialogs.Expect(std::nullopt);
    commands.mnuRestoreClick();
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(dialogs.shown[0].initialFolder, L"C:\\My Documents");
}

TEST_F(Restore, ItemOfAnotherLocation_SafetyCopyHasItsNumber) {
    const std::wstring other = tree.File(L"Other\\Report.doc", "other", {2024, 1, 1, 9, 0, 0});
    BackUp(other);
    browser.ListRestoreFiles();
    browser.RestoredPath(other);
    tree.File(L"Other\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(other), "other");
    EXPECT_EQ(ReadBytes(vault + L"\\Report«0121».doc"), "unsaved");
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"U01"));
}

TEST_F(Restore, TypedNameInOtherLetterCase_IsKeptOnce) {
    const std::size_t before = ReadTree(vault).size();
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    dialogs.Expect(tree.Path(L"Docs\\REPORT.DOC"));
    world.boxes.Expect(kQuestion + tree.Path(L"Docs\\REPORT.DOC"), BoxAnswer::Yes);
    SelectCopy(L"N03");
    commands.mnuRestoreToClick();
    EXPECT_EQ(ReadBytes(document), "state 1");
    EXPECT_EQ(Safety(), "unsaved");
    EXPECT_EQ(ReadTree(vault).size(), before + 2) << "one safety copy and its comment";
}

TEST_F(Restore, FileOfARoot_IsRestoredToTheRoot) {
    const std::wstring note = drive.Name() + L"\\Note.txt";
    world.disk.Write(note, "note", FileSystem::Flush::No);
    BackUp(note);
    world.disk.RemoveFile(note);
    browser.ListRestoreFiles();
    SelectItem(L"Note");
    SelectCopy(L"N01");
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(note), "note");
    world.disk.RemoveFile(note);
}

TEST_F(Restore, ReadOnlyTarget_IsNotOverwritten) {
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

TEST_F(Restore, TargetInUse_IsNotOverwritten) {
    const FileHandle held(CreateFileW(document.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
    EXPECT_EQ(ReadTree(tree.Path(L"Docs")).size(), 1U);
}

TEST_F(Restore, GoneCopy_IsReported) {
    tree.Remove(vault + L"\\Report«0002».doc");
    SelectCopy(L"N02");
    commands.mnuRestoreClick();
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kFileNotFound);
    EXPECT_EQ(error.procedure, L"DoRestore");
    EXPECT_EQ(ReadBytes(document), "state 3");
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N03"));
}

TEST_F(Restore, GoneDestination_IsReported_ListsAreEmpty) {
    tree.Remove(vault);
    SelectCopy(L"N02");
    commands.mnuRestoreClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kFileNotFound);
    EXPECT_EQ(ReadBytes(document), "state 3");
    EXPECT_THAT(Items(), IsEmpty());
    EXPECT_THAT(Labels(), IsEmpty());
}

TEST_F(Restore, CancelDuringTheSafetyCopy_OverwritesNothing) {
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N03");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    world.boxes.Expect(L"Nothing was overwritten");
    onMsg = [this] { world.pump.AtEachYield([this] { state.cancel.Request(); }); };
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "unsaved");
    EXPECT_THAT(calls, ElementsAre(L"Restoring: " + document, L"BusyHide false"));
    EXPECT_FALSE(world.boxes.Shown().back().rightToLeft) << "an English sentence";
}

TEST_F(Restore, EarlierRunWasCancelled_Restores) {
    state.cancel.Request();
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N03");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 1");
    EXPECT_EQ(Safety(), "unsaved");
}

TEST_F(Restore, Folder_IsMergedAndItsOldStateKept) {
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

TEST_F(Restore, OneFileOfAFolderInUse_OthersAreRestored) {
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

TEST_F(Restore, ItemBelowAFolderWithAPoint_IsRestored) {
    const std::wstring docs = tree.Folder(L"j.smith\\Docs");
    tree.File(L"j.smith\\Docs\\a.txt", "a", {2024, 1, 1, 0, 0, 0});
    BackUp(docs + L"\\");
    tree.Remove(L"j.smith\\Docs");
    browser.ListRestoreFiles();
    SelectItem(L"Docs");
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(tree.Path(L"j.smith\\Docs\\a.txt")), "a");
}

TEST_F(Restore, RestoresTheAttributes) {
    tree.File(L"Docs\\Report.doc", "state 4", {2024, 1, 4, 9, 0, 0});
    tree.SetAttributes(L"Docs\\Report.doc", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY);
    BackUp(document);
    browser.ListRestoreFiles();
    tree.Remove(L"Docs\\Report.doc");
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 4");
    const DWORD attributes = GetFileAttributesW(document.c_str());
    EXPECT_TRUE(attributes & FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(ReadTree(tree.Path(L"Docs")).size(), 1U);
}

// A drive that answers once more is used again: the failure of one safety copy is no reason to
// refuse the next one.
TEST_F(Restore, SafetyCopyFailed_NextAttemptRestores) {
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N03");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    world.files.FailNth(1, error_number::kPermissionDenied, OnlyCalls({FileCall::List}));
    commands.mnuRestoreClick();
    EXPECT_FALSE(world.errors.Take().empty());
    EXPECT_EQ(ReadBytes(document), "unsaved");
    world.files.Heal();
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 1");
    EXPECT_EQ(Safety(), "unsaved");
}

/// A drive that keeps even seconds only, as those of small devices do.
class CoarseDates final : public ForwardingFileSystem {
  public:
    CoarseDates(FileSystem& inner, std::wstring drive)
        : ForwardingFileSystem(inner), drive_(std::move(drive)) {}

    std::optional<FileInfo> Stat(std::wstring_view path) override {
        auto facts = Inner().Stat(path);
        if (facts && path.starts_with(drive_)) {
            facts->lastWrite += facts->lastWrite.time_since_epoch() % std::chrono::seconds{2};
        }
        return facts;
    }

  private:
    std::wstring drive_;
};

TEST_F(Restore, SafetyCopyOnADriveOfEvenSeconds_IsAccepted) {
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 1});
    SelectCopy(L"N03");
    CoarseDates coarse(world.disk, vault);
    System system = world.With(coarse);
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    Commands(system).mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 1");
    EXPECT_EQ(Safety(), "unsaved");
}

// Under the typed name the safety copy is that of another item, whose numbers the list does not
// show.
TEST_F(Restore, SafetyCopyOfThatNumberExists_NextNumberIsUsed) {
    for (int round = 0; round < 2; ++round) {
        tree.File(L"Elsewhere\\Typed.doc", "typed " + std::to_string(round),
                  {2024, 3, 1 + round, 0, 0, 0});
        tree.Remove(L"Elsewhere\\Report.doc");
        dialogs.Expect(tree.Path(L"Elsewhere\\Typed.doc"));
        world.boxes.Expect(kQuestion, BoxAnswer::Yes);
        commands.mnuRestoreToClick();
        EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Report.doc")), "state 3");
    }
    EXPECT_EQ(ReadBytes(vault + L"\\Typed«0021».doc"), "typed 0");
    EXPECT_EQ(ReadBytes(vault + L"\\Typed«0022».doc"), "typed 1");
}

}  // namespace
}  // namespace vw::test
