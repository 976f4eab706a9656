// What the commands do when the selection of the upper list has moved on without the lower one, as
// it can while a command runs: they work on what both lists show, or not at all.

#include <gmock/gmock.h>

#include <functional>
#include <utility>

#include "tests/restore/RestoreFixture.h"

namespace vw::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;

/// Somebody who works on with the lists before the question is answered with Yes.
class LateYes final : public MessageBoxes {
  public:
    explicit LateYes(std::function<void()> meanwhile) : meanwhile_(std::move(meanwhile)) {}

    BoxAnswer Show(const MessageBoxRequest& content) override {
        asked.push_back(content.text);
        meanwhile_();
        return BoxAnswer::Yes;
    }

    std::vector<std::wstring> asked;

  private:
    std::function<void()> meanwhile_;
};

class Selection : public Restore {
  protected:
    Selection() {
        BackUp(tree.File(L"Docs\\Letter.txt", "letter", {2024, 1, 1, 9, 0, 0}));
        browser.ListRestoreFiles();
        SelectItem(L"Report");
    }
    /// As the list view does on a click that raises no event.
    void ClickUnheard(std::wstring_view item) {
        browser.Items().Select(browser.Items().Rows().Find(L"Name", item));
    }
    [[nodiscard]] std::vector<std::wstring> Listed() {
        return Column(browser.Copies(), L"BackupName");
    }
    /// Gives a command, answers Yes and does something before that; gives the question.
    std::wstring Give(void (RestoreCommands::*command)(), std::function<void()> meanwhile) {
        LateYes boxes(std::move(meanwhile));
        System system{world.files,      world.pump,       boxes,       world.errors,
                      world.exitStatus, world.programEnd, world.clock, world.ansi};
        RestoreCommands commandsHere = Commands(system);
        (commandsHere.*command)();
        return boxes.asked.size() == 1 ? boxes.asked[0] : L"";
    }
};

TEST_F(Selection, OtherItemIsSelected_CommandStopsAndListsItsCopies) {
    for (const auto& command :
         {&RestoreCommands::mnuDelCopiesClick, &RestoreCommands::mnuDelCopyClick,
          &RestoreCommands::mnuRestoreClick, &RestoreCommands::mnuRestoreToClick,
          &RestoreCommands::mnuOpenCopyClick}) {
        SelectItem(L"Report");
        const Tree before = ReadTree(vault);
        ClickUnheard(L"Letter");
        (commands.*command)();
        EXPECT_EQ(ReadTree(vault), before);
        EXPECT_THAT(Listed(), ElementsAre(vault + L"\\Letter«0001».txt"));
    }
    EXPECT_EQ(world.boxes.Shown().size(), 0U);
    EXPECT_EQ(ReadBytes(document), "state 3");
}

// What was asked is what is done.
TEST_F(Selection, MovesDuringQuestion_AnswerCountsForTheFirst) {
    SelectCopy(L"N02");
    const std::wstring one = Give(&RestoreCommands::mnuDelCopyClick, [this] {
        SelectCopy(L"N03");
        ClickUnheard(L"Letter");
    });
    EXPECT_THAT(one, HasSubstr(L"[N02]"));
    EXPECT_FALSE(Exists(vault + L"\\Report«0002».doc"));
    EXPECT_TRUE(Exists(vault + L"\\Report«0003».doc"));
    EXPECT_TRUE(Exists(vault + L"\\Letter«0001».txt"));
    static_cast<void>(browser.FollowSelection());
    EXPECT_THAT(Listed(), ElementsAre(vault + L"\\Letter«0001».txt"));

    SelectItem(L"Report");
    const std::wstring all =
        Give(&RestoreCommands::mnuDelCopiesClick, [this] { ClickUnheard(L"Letter"); });
    EXPECT_THAT(all, HasSubstr(L"Report"));
    EXPECT_THAT(Items(), ElementsAre(L"Letter"));
    EXPECT_TRUE(Exists(vault + L"\\Letter«0001».txt"));
}

TEST_F(Selection, AnotherFolderIsShownDuringQuestion_NothingIsRestored) {
    SelectCopy(L"N02");
    Give(&RestoreCommands::mnuRestoreClick, [this] { browser.RestoreFrom(L"C:\\Backup"); });
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kFileNotFound);
    EXPECT_EQ(ReadBytes(document), "state 3");
}

TEST_F(Selection, MovesDuringARestore_SafetyCopyIsOfItsOwnItem) {
    BackUp(tree.File(L"Other\\Report.doc", "other", {2024, 1, 1, 9, 0, 0}));
    browser.ListRestoreFiles();
    browser.RestoredPath(document);
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 2, 1, 9, 0, 0});
    Give(&RestoreCommands::mnuRestoreClick,
         [this] { browser.Items().Select(browser.Items().Rows().Find(L"SP", L"1")); });
    EXPECT_EQ(ReadBytes(document), "state 3");
    EXPECT_EQ(Safety(), "unsaved") << "beside the copies of its own item";
}

TEST_F(Selection, FollowSelection_Changed_ListsTheCopiesOnce) {
    EXPECT_TRUE(browser.FollowSelection());
    ClickUnheard(L"Letter");
    EXPECT_FALSE(browser.FollowSelection());
    EXPECT_THAT(Listed(), Each(HasSubstr(L"Letter")));
    EXPECT_TRUE(browser.FollowSelection());
    // A click beside the rows selects nothing, and the copies stay.
    browser.Items().Select(-1);
    EXPECT_TRUE(browser.FollowSelection());
    EXPECT_EQ(browser.Copies().Rows().Count(), 1);
}

}  // namespace
}  // namespace vw::test
