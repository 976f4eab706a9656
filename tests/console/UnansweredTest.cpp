// What the disk does not answer: a folder that cannot be listed, and a path about which the system
// refuses every question, never pass for something that is missing.

#include "platform/RuntimeError.h"
#include "tests/console/VerbTest.h"

namespace vw::test {
namespace {

class VwUnanswered : public VerbTest {
  protected:
    VwUnanswered() {
        tree.File(L"a.txt", "123", Day(1));
        tree.File(L"Work\\b.txt", "12345", Day(5));
        tree.File(L"Work\\Sub\\c.txt", "1", Day(2));
        tree.File(L"Work\\Sub\\d.txt", "12", Day(3));
        MakeList({L"a.txt", L"Work\\"});
        RunsTo(0, L"backup " + List());
    }

    /// Every question of this kind about this path fails from now on.
    void Refuse(FileCall call, const std::wstring& path) {
        files.FailFrom(1, error_number::kAccessError, [call, path](const FileOperation& operation) {
            return operation.call == call &&
                   (operation.path == path || operation.path == path + L"\\");
        });
    }

    const std::wstring accessDenied = DescriptionOf(error_number::kAccessError);
};

TEST_F(VwUnanswered, FolderOfTheItem_IsOneErrorAndHoldsNoMissingFiles) {
    Refuse(FileCall::List, tree.Path(L"Work\\Sub"));
    EXPECT_EQ(RunCheck(), error_number::kAccessError);
    EXPECT_EQ(ShortLines(),
              (Texts{L"error: ~\\Work\\Sub\\: " + accessDenied, L"2 items checked, 0 findings"}));
}

TEST_F(VwUnanswered, FolderOfTheCopy_IsOneErrorAndHoldsNoMissingFiles) {
    Refuse(FileCall::List, Stored(L"Work«0001»\\Sub"));
    EXPECT_EQ(RunCheck(), error_number::kAccessError);
    EXPECT_EQ(ShortLines(), (Texts{L"error: ~\\Vault\\Work«0001»\\Sub\\: " + accessDenied,
                                   L"2 items checked, 0 findings"}));
}

TEST_F(VwUnanswered, Item_IsAnErrorOfACheckAndNotMissing) {
    Refuse(FileCall::Stat, tree.Path(L"a.txt"));
    EXPECT_EQ(RunCheck(), error_number::kAccessError);
    EXPECT_EQ(ShortLines(),
              (Texts{L"error: ~\\a.txt: " + accessDenied, L"2 items checked, 0 findings"}));
}

TEST_F(VwUnanswered, MissingItem_IsAFindingOfACheck) {
    tree.Remove(L"a.txt");
    EXPECT_EQ(RunCheck(), 1);
    EXPECT_EQ(ShortLines().at(0), L"missing: ~\\a.txt (the item does not exist)");
}

// Both the check of the item and that of the destination ask about it.
TEST_F(VwUnanswered, Copy_IsOneErrorOfACheckAndNotAbsent) {
    Refuse(FileCall::Stat, Stored(L"a«0001».txt"));
    EXPECT_EQ(RunCheck(), error_number::kAccessError);
    const std::wstring error = L"error: ~\\Vault\\a«0001».txt: " + accessDenied;
    EXPECT_EQ(ShortLines(), (Texts{error, L"2 items checked, 0 findings"}));
}

TEST_F(VwUnanswered, Item_IsAnErrorOfAPreviewAndNotMissing) {
    Refuse(FileCall::Stat, tree.Path(L"a.txt"));
    const int code = RunVerb(
        [this](Console& console) { return Preview(console, {.list = tree.Path(L"list.vwl")}); });
    EXPECT_EQ(code, error_number::kAccessError);
    EXPECT_EQ(ShortLines().at(0), L"error: ~\\a.txt: " + accessDenied);
    EXPECT_EQ(ShortLines().at(1), L"unchanged: ~\\Work\\");
}

// Also where the copies of a missing item move up.
TEST_F(VwUnanswered, Item_IsAFailureOfABackupAndKeepsItsCopies) {
    const Tree before = ReadTree(vault);
    Refuse(FileCall::Stat, tree.Path(L"a.txt"));
    for (const bool keepMissing : {true, false}) {
        EXPECT_EQ(RunBackup(keepMissing), error_number::kAccessError);
        const Texts said = ShortLines();
        ASSERT_EQ(said.size(), 5U);
        EXPECT_EQ(said[1], L"error: ~\\a.txt: " + accessDenied);
        EXPECT_EQ(said[2], L"failed: ~\\a.txt");
        EXPECT_EQ(said[3], L"unchanged: ~\\Work\\");
        EXPECT_TRUE(said[4].starts_with(L"0 copied, 1 unchanged, 0 missing, 0 refused, 1 failed;"));
        EXPECT_EQ(ReadTree(vault), before);
    }
}

TEST_F(VwUnanswered, Destination_IsAnErrorAndNotMissing) {
    Refuse(FileCall::List, vault);
    EXPECT_EQ(RunCheck(), error_number::kAccessError);
    EXPECT_EQ(ShortLines(),
              (Texts{L"error: ~\\Vault: " + accessDenied, L"2 items checked, 0 findings"}));
}

// Each step that a cancel ends throws it once more.
TEST_F(VwUnanswered, CancelThatEndsSeveralSteps_IsWrittenAndCountedOnce) {
    const int code = RunVerb([](Console& console) {
        const auto step = [] { Throw(error_number::kCancelled); };
        EXPECT_FALSE(console.Try(step));
        EXPECT_FALSE(console.Try(step));
        EXPECT_EQ(console.Errors(), 1);
        step();
        return 0;
    });
    EXPECT_EQ(code, error_number::kCancelled);
    EXPECT_EQ(lines, Texts{L"error: " + DescriptionOf(error_number::kCancelled)});
}

}  // namespace
}  // namespace vw::test
