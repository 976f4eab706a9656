// Copies whose comments mark them as incomplete: the restore view shows that, says it before they
// are used, and never takes them for copies that hold everything.

#include <gmock/gmock.h>

#include "platform/RuntimeError.h"
#include "tests/restore/RestoreFixture.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class IncompleteCopies : public Restore {
  protected:
    const std::wstring kSaid = L"This copy is incomplete";

    /// Marks a copy of the report; the first line of its comment stays.
    void Mark(std::wstring_view copy = L"Report«0001».doc") {
        const std::wstring comment = vault + L"\\" + std::wstring(copy) + L".vwc";
        const std::string line = Exists(comment) ? ReadBytes(comment) : "A comment\r\n";
        tree.File(comment, line + "Incomplete\r\n");
        browser.ListRestoreFiles();
    }
    [[nodiscard]] std::vector<std::wstring> Warnings() {
        std::vector<std::wstring> warnings;
        warnings.reserve(static_cast<std::size_t>(browser.Copies().Rows().Count()));
        for (int row = 0; row < browser.Copies().Rows().Count(); ++row) {
            warnings.push_back(browser.Copies().Rows().At(row).warning);
        }
        return warnings;
    }
    /// The cells of all rows.
    [[nodiscard]] std::vector<std::wstring> Texts() {
        std::vector<std::wstring> texts;
        for (const wchar_t* const key : {L"Name", L"Size", L"Date", L"BackupName"}) {
            for (const std::wstring& text : Column(browser.Copies(), key)) texts.push_back(text);
        }
        return texts;
    }
};

TEST_F(IncompleteCopies, Restore_DateOfAnIncompleteCopy_NeedsItsBytes) {
    Mark();
    tree.File(L"Docs\\Report.doc", "other bytes", {2024, 1, 3, 9, 0, 0});
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 2");
    EXPECT_EQ(Safety(), "other bytes");
}

TEST_F(IncompleteCopies, Restore_ContentOfAnIncompleteCopy_MakesNoSafetyCopy) {
    Mark();
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 2");
    EXPECT_FALSE(HasSafety());
}

TEST_F(IncompleteCopies, Listing_MarksTheRow_TextsStay) {
    const std::vector<std::wstring> before = Texts();
    Mark();
    EXPECT_EQ(Texts(), before);
    EXPECT_THAT(Warnings(), ElementsAre(testing::HasSubstr(kSaid), L"", L""));
}

TEST_F(IncompleteCopies, Listing_SortedOtherwise_MarksTheSameCopy) {
    Mark();
    browser.lsvRestore2ColumnClick(0);
    EXPECT_THAT(Labels(), ElementsAre(L"N03", L"N02", L"N01"));
    EXPECT_THAT(Warnings(), ElementsAre(L"", L"", testing::HasSubstr(kSaid)));
}

TEST_F(IncompleteCopies, Listing_AnotherItem_RemovesTheMark) {
    tree.File(vault + L"\\Zebra«0001».doc");
    Mark();
    SelectItem(L"Zebra");
    EXPECT_THAT(Warnings(), ElementsAre(L""));
    SelectItem(L"Report");
    EXPECT_THAT(Warnings(), ElementsAre(testing::HasSubstr(kSaid), L"", L""));
}

TEST_F(IncompleteCopies, Restore_SaysThatItIsIncompleteFirst) {
    Mark();
    tree.Remove(L"Docs\\Report.doc");
    SelectCopy(L"N01");
    world.boxes.Expect(kSaid);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 3");
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N01");
    world.boxes.Expect(kSaid);
    world.boxes.Expect(kQuestion, BoxAnswer::No);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "unsaved");
}

TEST_F(IncompleteCopies, RestoreTo_SaysThatItIsIncomplete) {
    Mark();
    tree.Folder(L"Elsewhere");
    SelectCopy(L"N01");
    dialogs.Expect(tree.Path(L"Elsewhere\\Report.doc"));
    world.boxes.Expect(kSaid);
    commands.mnuRestoreToClick();
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Report.doc")), "state 3");
}

TEST_F(IncompleteCopies, Open_SaysThatItIsIncomplete) {
    Mark();
    SelectCopy(L"N01");
    // So that no program of this machine opens it.
    world.boxes.OnBox([] { Throw(error_number::kInvalidCall); });
    commands.mnuOpenCopyClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kInvalidCall);
    ASSERT_EQ(world.boxes.Shown().size(), 1U);
    EXPECT_THAT(world.boxes.Shown()[0].text, testing::HasSubstr(kSaid));
}

TEST_F(IncompleteCopies, WholeCopyBesideOne_IsUsedWithoutAMessage) {
    Mark();
    tree.Remove(L"Docs\\Report.doc");
    SelectCopy(L"N02");
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 2");
    EXPECT_THAT(world.boxes.Shown(), IsEmpty());
}

}  // namespace
}  // namespace vw::test
