// A safety copy that did not become whole must not count as one when the user tries again.

#include <gmock/gmock.h>

#include "platform/RuntimeError.h"
#include "tests/restore/RestoreFixture.h"

namespace vw::test {
namespace {

class PartialSafety : public RestoreEnvironment {
  protected:
    PartialSafety() {
        WriteWork("old");
        BackUp(work + L"\\");
        WriteWork("unsaved");
        now = ReadTree(work);
        browser.ListRestoreFiles();
    }

    void WriteWork(const std::string& text) {
        const int month = text == "old" ? 1 : 2;
        tree.File(L"Work\\a.txt", text + " a", {2024, month, 2, 0, 0, 0});
        tree.File(L"Work\\b.txt", text + " b", {2024, month, 1, 0, 0, 0});
    }

    /// Lists the copies as a click on the item does, and restores the one of the backup.
    void RestoreWork(std::wstring_view box = {}) {
        browser.ListRestoreFiles();
        browser.RestoredPath(work + L"\\");
        SelectCopy(L"N01");
        world.boxes.Expect(kQuestion + work, BoxAnswer::Yes);
        if (!box.empty()) world.boxes.Expect(box);
        commands.mnuRestoreClick();
    }

    void ExpectWholeSafetyAndRestored() {
        RestoreWork();
        EXPECT_EQ(ReadBytes(tree.Path(L"Work\\a.txt")), "old a");
        bool kept = false;
        for (const auto* number : {L"21", L"22"}) {
            const std::wstring copy = vault + L"\\Work«00" + number + L"»";
            kept = kept || (Exists(copy) && ReadTree(copy) == now);
        }
        EXPECT_TRUE(kept) << "overwritten, and no copy has it";
    }

    const std::wstring work = tree.Path(L"Work");
    Tree now;
};

TEST_F(PartialSafety, FileInUse_IsRemovedAndMadeAgain) {
    world.files.FailNth(2, error_number::kPermissionDenied, OnlyCalls({FileCall::Copy}));
    RestoreWork();
    EXPECT_FALSE(world.errors.Take().empty());
    EXPECT_EQ(ReadTree(work), now);
    EXPECT_FALSE(Exists(vault + L"\\Work«0021»")) << "it would pass for a whole one";
    EXPECT_FALSE(Exists(vault + L"\\Work«0021».vwc"));
    world.files.Heal();
    ExpectWholeSafetyAndRestored();
}

TEST_F(PartialSafety, Cancelled_IsRemovedAndMadeAgain) {
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) state.cancel.Request();
    });
    RestoreWork(L"Nothing was overwritten");
    EXPECT_EQ(ReadTree(work), now);
    EXPECT_FALSE(Exists(vault + L"\\Work«0021»"));
    EXPECT_FALSE(Exists(vault + L"\\Work«0021».vwc"));
    world.files.Heal();
    ExpectWholeSafetyAndRestored();
}

TEST_F(PartialSafety, CannotBeRemoved_AnotherOneIsMade) {
    world.files.FailNth(2, error_number::kPermissionDenied, OnlyCalls({FileCall::Copy}));
    world.files.OnOperation([&](const FileOperation& operation) {
        // Somebody uses it as soon as it exists.
        if (operation.call == FileCall::Rename && operation.path.ends_with(L"Work«0021»")) {
            Throw(error_number::kPermissionDenied, operation.path);
        }
    });
    RestoreWork();
    EXPECT_FALSE(world.errors.Take().empty());
    EXPECT_EQ(ReadTree(work), now);
    EXPECT_THAT(Labels(), testing::Contains(L"U01")) << "the lists show what is there";
    world.files.Heal();
    ExpectWholeSafetyAndRestored();
}

TEST_F(Restore, OneSafetyNumberIsFree_IsUsed) {
    for (int number = 21; number < 99; ++number) {
        CopyFile(L"Report«00" + std::to_wstring(number) + L"».doc");
    }
    tree.File(L"Docs\\Report.doc", "edited", {2024, 1, 4, 9, 0, 0});
    browser.ListRestoreFiles();
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(Safety(99), "edited");
}

}  // namespace
}  // namespace vw::test
