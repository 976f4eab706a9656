// Items below a folder with a point in its name: their copies are in folders that several items
// may share, and each item has its own row, whatever happened to its newest copy.

#include <gmock/gmock.h>

#include "platform/RuntimeError.h"
#include "tests/restore/RestoreEnvironment.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class NestedRows : public RestoreEnvironment {
  protected:
    /// Backs up folders called Docs below j.smith, in that many states.
    void BackUpDocs(const std::vector<std::wstring>& places, int states) {
        for (int state = 1; state <= states; ++state) {
            for (const std::wstring& place : places) {
                tree.File(Docs(place) + L"\\a.txt", "state " + std::to_string(state),
                          {2024, 1, state, 9, 0, 0});
                BackUp(tree.Path(Docs(place)) + L"\\");
            }
        }
        browser.ListRestoreFiles();
    }
    static std::wstring Docs(const std::wstring& place) {
        return L"j.smith\\" + place + (place.empty() ? L"Docs" : L"\\Docs");
    }
    [[nodiscard]] std::wstring Stored(int number, const std::wstring& below) const {
        return vault + L"\\Docs«000" + std::to_wstring(number) + L"».smith\\" + below;
    }
    [[nodiscard]] std::vector<std::wstring> Locations() {
        return Column(browser.Items(), L"Orginal Location");
    }
    [[nodiscard]] std::vector<std::wstring> Listed() {
        return Column(browser.Copies(), L"BackupName");
    }
};

TEST_F(NestedRows, ItemsInASharedFolder_HaveOneRowEach) {
    BackUpDocs({L"A", L"B"}, 2);
    EXPECT_THAT(Items(), ElementsAre(L"Docs", L"Docs"));
    EXPECT_THAT(Column(browser.Items(), L"Type"), ElementsAre(L"Folder", L"Folder"));
    EXPECT_THAT(Locations(), ElementsAre(tree.Path(L"j.smith\\A"), tree.Path(L"j.smith\\B")));
    browser.RestoredPath(tree.Path(Docs(L"A")) + L"\\");
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02"));
    EXPECT_THAT(Listed(), ElementsAre(Stored(1, L"A\\Docs"), Stored(2, L"A\\Docs")));
    browser.RestoredPath(tree.Path(Docs(L"B")) + L"\\");
    EXPECT_THAT(Listed(), ElementsAre(Stored(1, L"B\\Docs"), Stored(2, L"B\\Docs")));
}

TEST_F(NestedRows, CopiesOfOneDeleted_KeepsThoseOfTheOther) {
    BackUpDocs({L"A", L"B"}, 2);
    browser.RestoredPath(tree.Path(Docs(L"A")) + L"\\");
    SelectCopy(L"N01");
    world.boxes.Expect(L"[N01]", BoxAnswer::Yes);
    commands.mnuDelCopyClick();
    EXPECT_FALSE(Exists(Stored(1, L"A")));
    EXPECT_TRUE(Exists(Stored(1, L"B\\Docs\\a.txt")));
    EXPECT_THAT(Labels(), ElementsAre(L"N02"));
    world.boxes.Expect(L"Docs", BoxAnswer::Yes);
    commands.mnuDelCopiesClick();
    EXPECT_FALSE(Exists(Stored(2, L"A")));
    EXPECT_THAT(Locations(), ElementsAre(tree.Path(L"j.smith\\B")));
    EXPECT_THAT(Listed(), ElementsAre(Stored(1, L"B\\Docs"), Stored(2, L"B\\Docs")));
}

// The nightly run found nothing where the item was: its copies moved up, the comment stayed.
TEST_F(NestedRows, NoCopyOne_ListsTheOtherCopies) {
    BackUpDocs({L"A"}, 1);
    tree.Remove(L"j.smith\\A\\Docs");
    BackUp(tree.Path(Docs(L"A")) + L"\\");
    ASSERT_EQ(world.errors.Take().size(), 1U);
    ASSERT_FALSE(Exists(Stored(1, L"A\\Docs")));
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), ElementsAre(L"Docs"));
    EXPECT_THAT(Locations(), ElementsAre(tree.Path(L"j.smith\\A")));
    EXPECT_THAT(Listed(), ElementsAre(Stored(2, L"A\\Docs")));
    SelectCopy(L"N02");
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(tree.Path(Docs(L"A") + L"\\a.txt")), "state 1");
}

TEST_F(NestedRows, NewestCopyDeleted_IsRestoredUnderTheItemsName) {
    BackUpDocs({L"A"}, 2);
    const Tree stored = ReadTree(Stored(2, L"A\\Docs"));
    world.boxes.Expect(L"[N01]", BoxAnswer::Yes);
    commands.mnuDelCopyClick();
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), ElementsAre(L"Docs"));
    EXPECT_THAT(Locations(), ElementsAre(L"??"));
    EXPECT_THAT(Listed(), ElementsAre(Stored(2, L"A\\Docs")));
    tree.Folder(L"Elsewhere");
    dialogs.Expect(tree.Path(L"Elsewhere\\any name"));
    SelectCopy(L"N02");
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadTree(tree.Path(L"Elsewhere\\Docs")), stored);
}

// One is off the list and its newest copy is deleted, the other goes on.
TEST_F(NestedRows, OneWithoutComment_HasARowOfItsOwn) {
    BackUpDocs({L"A", L"Deep\\er"}, 2);
    browser.RestoredPath(tree.Path(Docs(L"A")) + L"\\");
    SelectCopy(L"N01");
    world.boxes.Expect(L"[N01]", BoxAnswer::Yes);
    commands.mnuDelCopyClick();
    browser.ListRestoreFiles();
    EXPECT_THAT(Locations(), UnorderedElementsAre(L"??", tree.Path(L"j.smith\\Deep\\er")));
    browser.Items().Select(browser.Items().Rows().Find(L"Orginal Location", L"??"));
    browser.ListCopyes(browser.Items().Selected());
    EXPECT_THAT(Listed(), ElementsAre(Stored(2, L"A\\Docs")));
}

// The copies of C:\j.smith\Docs\Old\Docs\ are in a folder called Docs, which is none of them.
TEST_F(NestedRows, ItemBelowFoldersOfItsName_ListsTheWholePath) {
    for (const wchar_t* place : {L"Docs\\Old", L"Docs\\Docs\\Old"}) {
        tree.Remove(vault);
        tree.Folder(vault);
        BackUpDocs({place}, 2);
        EXPECT_THAT(Locations(), ElementsAre(tree.Path(std::wstring(L"j.smith\\") + place)));
        const std::wstring copy = std::wstring(place) + L"\\Docs";
        EXPECT_THAT(Listed(), ElementsAre(Stored(1, copy), Stored(2, copy)));
    }
}

TEST_F(NestedRows, FileAndFolderOfOneName_HaveOneRowEach) {
    BackUpDocs({L"A"}, 1);
    BackUp(tree.File(L"j.smith\\File\\Docs", "a file", {2024, 1, 1, 9, 0, 0}));
    browser.ListRestoreFiles();
    EXPECT_THAT(Column(browser.Items(), L"Type"), UnorderedElementsAre(L"Folder", L""));
    browser.RestoredPath(tree.Path(L"j.smith\\File\\Docs"));
    EXPECT_THAT(Listed(), ElementsAre(Stored(1, L"File\\Docs")));
    EXPECT_EQ(browser.Copies().Rows().SubItem(0, L"Size"), L"6Byte");
}

// The folder Docs.smith itself is an item, whose newest copy was deleted: what is in its copies is
// the user's, also where it is called Docs.
TEST_F(NestedRows, FolderThatIsACopyItself_HasNoNestedRows) {
    for (int state = 1; state <= 2; ++state) {
        tree.File(L"Docs.smith\\read me.txt", "x", {2024, 1, state, 9, 0, 0});
        tree.File(L"Docs.smith\\Docs\\a.txt", "x", {2024, 1, state, 9, 0, 0});
        BackUp(tree.Path(L"Docs.smith") + L"\\");
    }
    browser.ListRestoreFiles();
    EXPECT_THAT(Listed(),
                ElementsAre(vault + L"\\Docs«0001».smith", vault + L"\\Docs«0002».smith"));
    world.boxes.Expect(L"[N01]", BoxAnswer::Yes);
    commands.mnuDelCopyClick();
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), ElementsAre(L"Docs"));
    EXPECT_THAT(Listed(), ElementsAre(vault + L"\\Docs«0002».smith"));
}

// Such a copy and those of an item below another folder of that ending share a series of names.
TEST_F(NestedRows, CopyOfTheFolderItself_IsDeletedAlone) {
    tree.File(vault + L"\\Docs«0002».smith\\read me.txt", "the folder's");
    BackUpDocs({L"A"}, 1);
    EXPECT_THAT(Locations(), UnorderedElementsAre(L"??", tree.Path(L"j.smith\\A")));
    browser.Items().Select(browser.Items().Rows().Find(L"Orginal Location", L"??"));
    browser.ListCopyes(browser.Items().Selected());
    EXPECT_THAT(Listed(), ElementsAre(vault + L"\\Docs«0002».smith"));
    world.boxes.Expect(L"Docs", BoxAnswer::Yes);
    commands.mnuDelCopiesClick();
    EXPECT_THAT(Locations(), ElementsAre(tree.Path(L"j.smith\\A")));
    EXPECT_THAT(Listed(), ElementsAre(Stored(1, L"A\\Docs")));
}

// Where both are in one folder, the item's copies are listed alone: deleting them leaves the rest.
TEST_F(NestedRows, ForeignFilesInTheFolder_AreKept) {
    for (const std::wstring& place : {std::wstring(), std::wstring(L"A")}) {
        tree.Remove(vault);
        tree.Folder(vault);
        const int last = place.empty() ? 1 : 2;
        const std::wstring mixed = vault + L"\\Docs«000" + std::to_wstring(last) + L"».smith";
        BackUpDocs({place}, last);
        tree.File(mixed + L"\\mine.txt", "mine");
        browser.ListRestoreFiles();
        EXPECT_THAT(Locations(),
                    ElementsAre(tree.Path(L"j.smith") + (place.empty() ? L"" : L"\\A")));
        EXPECT_EQ(browser.Copies().Rows().Count(), last);
        world.boxes.Expect(L"Docs", BoxAnswer::Yes);
        commands.mnuDelCopiesClick();
        EXPECT_EQ(ReadBytes(mixed + L"\\mine.txt"), "mine");
        EXPECT_THAT(Listed(), ElementsAre(mixed)) << "seen from now on";
    }
}

TEST_F(NestedRows, UnreadableFolder_OtherItemsAreListed) {
    CopyFile(L"Zebra«0001».txt");
    BackUpDocs({L"A"}, 1);
    world.files.FailNth(1, error_number::kPermissionDenied, [](const FileOperation& operation) {
        return operation.call == FileCall::List && operation.path.ends_with(L".smith\\A");
    });
    browser.ListRestoreFiles();
    EXPECT_EQ(world.errors.TakeOne().procedure, L"ListRestoreFiles");
    EXPECT_THAT(Items(), ElementsAre(L"Zebra"));
}

TEST_F(NestedRows, CommentWithoutCopies_HasNoRow) {
    BackUpDocs({L"A", L"B"}, 1);
    tree.Remove(Stored(1, L"A\\Docs"));
    browser.ListRestoreFiles();
    EXPECT_THAT(Locations(), ElementsAre(tree.Path(L"j.smith\\B")));
    tree.Remove(Stored(1, L"B\\Docs"));
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), IsEmpty());
}

}  // namespace
}  // namespace vw::test
