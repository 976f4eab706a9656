// Deleting and opening copies, and what every command says without a selection.

#include <gmock/gmock.h>

#include "platform/RuntimeError.h"
#include "tests/restore/RestoreFixture.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(Restore, NoSelection_EveryCommandShowsAMessage) {
    const auto label = main.form.Text(L"lblNoRestore");
    browser.Copies().Select(-1);
    for (const auto& command :
         {&RestoreCommands::mnuRestoreClick, &RestoreCommands::mnuRestoreToClick,
          &RestoreCommands::mnuOpenCopyClick, &RestoreCommands::mnuDelCopyClick}) {
        world.boxes.Expect(label);
        (commands.*command)();
    }
    EXPECT_EQ(ReadTree(vault).size(), 4U);
    tree.Remove(vault);
    browser.ListRestoreFiles();
    world.boxes.Expect(label);
    commands.mnuDelCopiesClick();
    for (const MessageBoxRequest& box : world.boxes.Shown()) {
        EXPECT_EQ(box.buttons, BoxButtons::Ok);
        EXPECT_EQ(box.icon, BoxIcon::None);
        EXPECT_TRUE(box.rightToLeft);
    }
}

TEST_F(Restore, BothDeletions_AnswerIsNo_DeleteNothing) {
    const Tree before = ReadTree(vault);
    world.boxes.AnswerAll(BoxAnswer::No);
    commands.mnuDelCopyClick();
    commands.mnuDelCopiesClick();
    ASSERT_EQ(world.boxes.Shown().size(), 2U);
    for (const MessageBoxRequest& box : world.boxes.Shown()) ExpectGivenQuestion(box);
    EXPECT_EQ(ReadTree(vault), before);
}

TEST_F(Restore, DeleteCopies_CountsAsWorkUntilItEnds) {
    world.boxes.AnswerAll(BoxAnswer::Yes);
    int removed = 0;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call != FileCall::RemoveFile) return;
        ++removed;
        EXPECT_TRUE(state.isWorking);
    });
    commands.mnuDelCopiesClick();
    EXPECT_GT(removed, 0);
    EXPECT_FALSE(state.isWorking);
}

// A run of another process has rotated: under the name that the question is about is another copy.
TEST_F(Restore, DeleteCopy_AnotherTookItsName_DeletesNothing) {
    SelectCopy(L"N02");
    world.boxes.Expect(L"[N02]", BoxAnswer::Yes);
    world.boxes.OnBox([this] {
        tree.File(vault + L"\\Report«0002».doc", "another", {2024, 1, 5, 9, 0, 0});
    });
    commands.mnuDelCopyClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kFileNotFound);
    EXPECT_EQ(ReadBytes(vault + L"\\Report«0002».doc"), "another");
}

TEST_F(Restore, DeleteCopy_AnotherOfItsDateTookItsName_DeletesNothing) {
    SelectCopy(L"N02");
    world.boxes.Expect(L"[N02]", BoxAnswer::Yes);
    world.boxes.OnBox([this] {
        tree.File(vault + L"\\Report«0002».doc", "longer than it was", {2024, 1, 2, 9, 0, 0});
    });
    commands.mnuDelCopyClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kFileNotFound);
    EXPECT_EQ(ReadBytes(vault + L"\\Report«0002».doc"), "longer than it was");
}

TEST_F(Restore, DeleteAllCopies_AnotherTookAName_StopsThere) {
    world.boxes.Expect(L"Report", BoxAnswer::Yes);
    world.boxes.OnBox([this] {
        tree.File(vault + L"\\Report«0002».doc", "another", {2024, 1, 5, 9, 0, 0});
    });
    commands.mnuDelCopiesClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kFileNotFound);
    EXPECT_FALSE(Exists(vault + L"\\Report«0003».doc"));
    EXPECT_EQ(ReadBytes(vault + L"\\Report«0002».doc"), "another");
    EXPECT_TRUE(Exists(vault + L"\\Report«0001».doc"));
}

TEST_F(Restore, DeleteCopy_OneOfSeveral_ListsTheRest) {
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

TEST_F(Restore, DeleteCopy_TheOnlyOne_RemovesItemAndComment) {
    tree.Remove(vault + L"\\Report«0002».doc");
    tree.Remove(vault + L"\\Report«0003».doc");
    browser.ListRestoreFiles();
    world.boxes.Expect(L"[N01]", BoxAnswer::Yes);
    commands.mnuDelCopyClick();
    EXPECT_THAT(Items(), IsEmpty());
    EXPECT_THAT(ReadTree(vault), IsEmpty());
}

TEST_F(Restore, DeleteAllCopies_AsksOnceAndBeginsWithTheLast) {
    std::vector<std::wstring> taken;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Rename) taken.push_back(operation.path);
    });
    world.boxes.Expect(L"هل تريد بالتأكيد حذف كافة النسخ الاحتياطية العائدة للملف:\r\nReport",
                       BoxAnswer::Yes);
    commands.mnuDelCopiesClick();
    EXPECT_THAT(ReadTree(vault), IsEmpty());
    EXPECT_THAT(Items(), IsEmpty());
    ASSERT_EQ(taken.size(), 3U);
    EXPECT_NE(taken[0].find(L"«0003»"), std::wstring::npos);
    EXPECT_NE(taken[2].find(L"«0001»"), std::wstring::npos);
}

TEST_F(Restore, DeleteAllCopies_OneFails_IsReportedOthersAreDeleted) {
    const FileHandle held(CreateFileW((vault + L"\\Report«0002».doc").c_str(), GENERIC_READ,
                                      FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    world.boxes.Expect(L"Report", BoxAnswer::Yes);
    commands.mnuDelCopiesClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
    EXPECT_THAT(Labels(), ElementsAre(L"N02"));
}

TEST_F(Restore, DeletingAGoneCopy_IsReported_ListIsRight) {
    tree.Remove(vault + L"\\Report«0002».doc");
    SelectCopy(L"N02");
    world.boxes.Expect(L"[N02]", BoxAnswer::Yes);
    commands.mnuDelCopyClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kFileNotFound);
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N03"));
}

TEST_F(Restore, DeleteCopy_Fails_KeepsItsComment) {
    const FileHandle held(CreateFileW((vault + L"\\Report«0001».doc").c_str(), GENERIC_READ,
                                      FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    world.boxes.Expect(L"[N01]", BoxAnswer::Yes);
    commands.mnuDelCopyClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
    EXPECT_TRUE(Exists(vault + L"\\Report«0001».doc.vwc"));
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02", L"N03"));
}

TEST_F(Restore, OpeningAGoneCopy_IsReported) {
    tree.Remove(vault + L"\\Report«0002».doc");
    SelectCopy(L"N02");
    commands.mnuOpenCopyClick();
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kFileNotFound);
    EXPECT_EQ(error.procedure, L"mnuOpenCopyClick");
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N03")) << "the list shows what is left";
}

TEST_F(Restore, DeleteCopies_BelowAFolderWithAPoint_LeavesNoFolders) {
    const std::wstring docs = tree.Folder(L"j.smith\\My\\Docs");
    for (int day = 1; day <= 3; ++day) {
        tree.File(L"j.smith\\My\\Docs\\a.txt", "a", {2024, 1, day, 0, 0, 0});
        BackUp(docs + L"\\");
    }
    browser.ListRestoreFiles();
    SelectItem(L"Docs");
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02", L"N03"));
    SelectCopy(L"N02");
    world.boxes.Expect(L"هل تريد بالتأكيد حذف النسخة رقم [N02]من المجلد:\r\nDocs", BoxAnswer::Yes);
    commands.mnuDelCopyClick();
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N03"));
    world.boxes.Expect(L"Docs", BoxAnswer::Yes);
    commands.mnuDelCopiesClick();
    EXPECT_THAT(Items(), ElementsAre(L"Report"));
    EXPECT_EQ(ReadTree(vault).size(), 4U) << "Report's three copies and its comment";
}

// The comment moves with the copies of its item: another place means another item.
TEST_F(Restore, DeleteCopy_CommentNamesOtherPlace_DeletesNothing) {
    const std::string comment = ReadBytes(vault + L"\\Report«0001».doc.vwc");
    const std::string place = world.ansi.Encode(tree.Path(L"Docs"));
    const std::size_t at = comment.find(place);
    ASSERT_NE(at, std::string::npos);
    SelectCopy(L"N02");
    world.boxes.Expect(L"[N02]", BoxAnswer::Yes);
    world.boxes.OnBox([&] {
        tree.File(vault + L"\\Report«0001».doc.vwc",
                  std::string(comment).replace(at, place.size(), place + "2"));
    });
    commands.mnuDelCopyClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kFileNotFound);
    EXPECT_EQ(ReadBytes(vault + L"\\Report«0002».doc"), "state 2");
}

// A safety copy has a comment of its own.
TEST_F(Restore, DeleteSafetyCopy_ItsCommentNamesOtherPlace_DeletesNothing) {
    const std::wstring safety = CopyFile(L"Report«0021».doc", "unsaved");
    const std::wstring comment = safety + L".vwc";
    const std::string text = ReadBytes(vault + L"\\Report«0001».doc.vwc");
    const std::string place = world.ansi.Encode(tree.Path(L"Docs"));
    tree.File(comment, text);
    browser.ListRestoreFiles();
    SelectCopy(L"U01");
    world.boxes.Expect(L"[U01]", BoxAnswer::Yes);
    world.boxes.OnBox([&] {
        tree.File(comment, std::string(text).replace(text.find(place), place.size(), place + "2"));
    });
    commands.mnuDelCopyClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kFileNotFound);
    EXPECT_EQ(ReadBytes(safety), "unsaved");
}

TEST_F(Restore, DeleteOnlyCopy_ItChanged_KeepsTheSelection) {
    const std::wstring zeta = tree.File(L"Docs\\Zeta.txt", "zeta");
    BackUp(zeta);
    browser.ListRestoreFiles();
    SelectItem(L"Zeta");
    SelectCopy(L"N01");
    world.boxes.Expect(L"[N01]", BoxAnswer::Yes);
    world.boxes.OnBox([this] { tree.File(vault + L"\\Zeta«0001».txt", "longer than it was"); });
    commands.mnuDelCopyClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kFileNotFound);
    EXPECT_EQ(browser.Items().Rows().SubItem(browser.Items().Selected(), L"Name"), L"Zeta");
}

}  // namespace
}  // namespace vw::test
