// What a restore overwrites has to be in a copy with all that it holds: an equal date is not enough
// where the user was not asked about that very file.

#include <gmock/gmock.h>

#include <algorithm>
#include <vector>

#include "platform/RuntimeError.h"
#include "tests/restore/RestoreFixture.h"

namespace vw::test {
namespace {

using testing::IsEmpty;
using testing::Not;

/// A folder with two stored states, N02 of January and N01 of February.
class KeptContent : public RestoreEnvironment {
  protected:
    KeptContent() {
        Fill("first", 1);
        BackUp(work + L"\\");
        Fill("second", 2);
        BackUp(work + L"\\");
        browser.ListRestoreFiles();
    }
    void Fill(const std::string& text, int month) {
        tree.File(L"Work\\a.txt", text + " a", {2024, month, 1, 0, 0, 0});
        tree.File(L"Work\\Sub\\b.txt", text + " b", {2024, month, 1, 0, 0, 0});
    }
    void RestoreWork(std::wstring_view label) {
        browser.ListRestoreFiles();
        browser.RestoredPath(work + L"\\");
        SelectCopy(label);
        world.boxes.Expect(kQuestion + work, BoxAnswer::Yes);
        commands.mnuRestoreClick();
    }
    [[nodiscard]] Tree Safety() const { return ReadTree(vault + L"\\Work«0021»"); }

    const std::wstring work = tree.Path(L"Work");
};

TEST_F(KeptContent, Restore_ListingFailsOnce_OverwritesNothingUnkept) {
    tree.File(L"Work\\Sub\\b.txt", "unsaved", {2024, 3, 1, 0, 0, 0});
    const Tree before = ReadTree(work);
    world.boxes.Expect(kQuestion + work, BoxAnswer::Yes);
    world.files.FailNth(1, error_number::kPermissionDenied, [&](const FileOperation& operation) {
        return operation.call == FileCall::List && operation.path == work + L"\\Sub";
    });
    SelectCopy(L"N02");
    commands.mnuRestoreClick();
    EXPECT_THAT(world.errors.Take(), Not(IsEmpty()));
    EXPECT_EQ(ReadTree(work), before);
}

TEST_F(KeptContent, Restore_NewestCopyLacksAFile_KeepsTheFolder) {
    // A backup that was cancelled after a.txt.
    Fill("third", 3);
    BackUp(work + L"\\");
    tree.Remove(vault + L"\\Work«0001»\\Sub");
    const Tree before = ReadTree(work);
    RestoreWork(L"N02");
    EXPECT_EQ(ReadBytes(tree.Path(L"Work\\Sub\\b.txt")), "second b");
    EXPECT_EQ(Safety(), before);
}

TEST_F(KeptContent, Restore_OldDatedFileInFolder_IsKept) {
    // As an archive unpacks it: no date of the folder changes.
    tree.File(L"Work\\Sub\\b.txt", "unpacked over it", {2020, 1, 1, 0, 0, 0});
    const Tree before = ReadTree(work);
    RestoreWork(L"N01");
    EXPECT_EQ(ReadBytes(tree.Path(L"Work\\Sub\\b.txt")), "second b");
    EXPECT_EQ(Safety(), before);
}

TEST_F(KeptContent, Restore_WholeStateIsACopy_MakesNoSafetyCopy) {
    RestoreWork(L"N02");
    EXPECT_EQ(ReadBytes(tree.Path(L"Work\\a.txt")), "first a");
    EXPECT_THAT(Safety(), IsEmpty());
}

// With its folder, which is not there at first, or alone.
TEST_F(KeptContent, Restore_FileAppearsDuringIt_IsNotOverwritten) {
    for (const auto* const missing : {L"Work\\Sub", L"Work\\Sub\\b.txt"}) {
        tree.Remove(missing);
        bool appeared = false;
        world.files.OnOperation([&](const FileOperation& operation) {
            if (appeared || operation.call != FileCall::Copy ||
                !operation.path.starts_with(vault) || !operation.path.ends_with(L"\\Sub\\b.txt")) {
                return;
            }
            appeared = true;
            tree.File(L"Work\\Sub\\b.txt", "somebody's", {2024, 5, 1, 0, 0, 0});
        });
        RestoreWork(L"N01");
        EXPECT_TRUE(appeared);
        EXPECT_THAT(world.errors.Take(), Not(IsEmpty()));
        EXPECT_EQ(ReadBytes(tree.Path(L"Work\\Sub\\b.txt")), "somebody's");
        EXPECT_EQ(ReadTree(work).size(), 3U) << "nothing is left beside it";
    }
}

TEST_F(KeptContent, Restore_FileChangesDuringIt_IsNotOverwritten) {
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Copy && operation.to.starts_with(work + L"\\Sub\\")) {
            tree.File(L"Work\\Sub\\b.txt", "edited just now", {2024, 5, 1, 0, 0, 0});
        }
    });
    RestoreWork(L"N02");
    EXPECT_THAT(world.errors.Take(), Not(IsEmpty()));
    EXPECT_EQ(ReadBytes(tree.Path(L"Work\\Sub\\b.txt")), "edited just now");
    EXPECT_EQ(ReadBytes(tree.Path(L"Work\\a.txt")), "first a");
}

TEST_F(Restore, UnaskedTarget_OtherContentOfACopysDate_IsKept) {
    tree.File(L"Elsewhere\\Report.doc", "quite another file", {2024, 1, 3, 9, 0, 0});
    dialogs.Expect(tree.Path(L"Elsewhere\\Typed.doc"));
    commands.mnuRestoreToClick();
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Report.doc")), "state 3");
    EXPECT_EQ(Safety(), "quite another file");
}

TEST_F(Restore, UnaskedTarget_SameLengthAndDate_IsKeptByItsBytes) {
    tree.File(L"Elsewhere\\Report.doc", "STATE 3", {2024, 1, 3, 9, 0, 0});
    dialogs.Expect(tree.Path(L"Elsewhere\\Typed.doc"));
    commands.mnuRestoreToClick();
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Report.doc")), "state 3");
    EXPECT_EQ(Safety(), "STATE 3");
}

TEST_F(Restore, UnaskedTarget_StoredAsItIs_MakesNoSafetyCopy) {
    SelectCopy(L"N03");
    dialogs.Expect(tree.Path(L"Docs\\Keep both.doc"));
    commands.mnuRestoreToClick();
    EXPECT_EQ(ReadBytes(document), "state 1");
    EXPECT_FALSE(HasSafety());
}

TEST_F(Restore, AskedTarget_DateOfACopy_DecidesAlone) {
    tree.File(L"Docs\\Report.doc", "other bytes", {2024, 1, 3, 9, 0, 0});
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 2");
    EXPECT_FALSE(HasSafety());
}

TEST_F(Restore, AskedTarget_DateOfASafetyCopyOnly_NeedsItsBytes) {
    CopyFile(L"Report«0021».doc", "state U");
    tree.SetDate(vault + L"\\Report«0021».doc", {2024, 1, 9, 9, 0, 0});
    tree.File(L"Docs\\Report.doc", "STATE u", {2024, 1, 9, 9, 0, 0});
    browser.ListRestoreFiles();
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 2");
    EXPECT_EQ(Safety(22), "STATE u");
}

/// A share that says three times that nothing is there, and then shows the file.
class LateShare final : public ForwardingFileSystem {
  public:
    LateShare(FileSystem& inner, std::wstring path, int times)
        : ForwardingFileSystem(inner), path_(std::move(path)), times_(times) {}

    std::optional<FileInfo> Stat(std::wstring_view path) override {
        if (path == path_ && times_-- > 0) return std::nullopt;
        return Inner().Stat(path);
    }

  private:
    std::wstring path_;
    int times_;
};

TEST_F(Restore, TargetUnseenAtFirst_IsNotOverwritten) {
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    for (int times = 1; times <= 6; ++times) {
        LateShare late(world.disk, document, times);
        System system = world.With(late);
        SelectCopy(L"N02");
        Commands(system).mnuRestoreClick();
        EXPECT_THAT(world.errors.Take(), Not(IsEmpty())) << times;
        EXPECT_EQ(ReadBytes(document), "unsaved") << times;
        EXPECT_EQ(ReadTree(tree.Path(L"Docs")).size(), 1U) << "nothing is left beside it";
    }
}

TEST_F(Restore, TargetMadeAfterTheQuestion_IsNotOverwritten) {
    tree.Remove(L"Docs\\Report.doc");
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) tree.File(L"Docs\\Report.doc", "somebody's");
    });
    commands.mnuRestoreClick();
    EXPECT_THAT(world.errors.Take(), Not(IsEmpty()));
    EXPECT_EQ(ReadBytes(document), "somebody's");
}

TEST_F(Restore, TargetChangedAfterItWasKept_IsNotOverwritten) {
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) tree.File(L"Docs\\Report.doc", "edited just now");
    });
    commands.mnuRestoreClick();
    EXPECT_THAT(world.errors.Take(), Not(IsEmpty()));
    EXPECT_EQ(ReadBytes(document), "edited just now");
}

TEST_F(Restore, IntoAStoredCopy_IsRefused) {
    const std::wstring work = tree.Folder(L"Work");
    tree.File(L"Work\\Sub\\a.txt");
    BackUp(work + L"\\");
    browser.ListRestoreFiles();
    SelectItem(L"Work");
    for (const std::wstring& target :
         {vault + L"\\Work«0001»", vault + L"\\Work«0001»\\Sub", vault + L"\\WORK«0001»\\Sub\\..",
          vault + L"\\Report«0001».doc"}) {
        const Tree before = ReadTree(vault);
        dialogs.Expect(target + L"\\Work");
        commands.mnuRestoreToClick();
        EXPECT_EQ(world.errors.TakeOne().number, error_number::kAccessError);
        EXPECT_EQ(ReadTree(vault), before);
    }
}

TEST_F(Restore, IntoAStoredCopyByALink_IsRefused) {
    const std::wstring work = tree.Folder(L"Work");
    tree.File(L"Work\\Sub\\a.txt");
    BackUp(work + L"\\");
    if (!tree.Link(L"Way", vault + L"\\Work«0001»")) GTEST_SKIP() << "no links here";
    browser.ListRestoreFiles();
    SelectItem(L"Work");
    const Tree before = ReadTree(vault);
    dialogs.Expect(tree.Path(L"Way\\Sub\\Work"));
    commands.mnuRestoreToClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kAccessError);
    EXPECT_EQ(ReadTree(vault), before);
}

TEST_F(Restore, Folder_AnyDepth_IsRestored) {
    std::wstring deep = L"Work";
    for (int level = 0; level < 60; ++level) deep += L"\\d";
    tree.File(deep + L"\\a.txt", "deep", {2024, 1, 1, 0, 0, 0});
    const std::wstring work = tree.Path(L"Work");
    BackUp(work + L"\\");
    const Tree before = ReadTree(work);
    tree.Remove(L"Work");
    browser.ListRestoreFiles();
    SelectItem(L"Work");
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadTree(work), before);
}

// The copying reports success all the same.
TEST_F(Restore, MissingFolder_FileIsTruncated_IsRemovedAndReported) {
    tree.File(L"Work\\a.txt", "stored", {2024, 1, 1, 0, 0, 0});
    tree.File(L"Work\\Sub\\b.txt", "stored", {2024, 1, 1, 0, 0, 0});
    const std::wstring work = tree.Path(L"Work");
    BackUp(work + L"\\");
    browser.ListRestoreFiles();
    for (const bool isIgnored : {false, true}) {
        tree.Remove(L"Work");
        SelectItem(L"Work");
        if (isIgnored) {
            world.files.IgnoreNth(1, OnlyCalls({FileCall::Copy}));
        } else {
            world.files.TruncateNthCopy(1);
        }
        commands.mnuRestoreClick();
        world.files.Heal();
        EXPECT_EQ(world.errors.TakeOne().number, error_number::kDeviceError);
        EXPECT_FALSE(Exists(work + L"\\a.txt"));
        EXPECT_EQ(ReadBytes(work + L"\\Sub\\b.txt"), "stored");
    }
}

TEST_F(Restore, SafetyNumbers_LastOneTaken_LowestFreeIsUsed) {
    CopyFile(L"Report«0099».doc");
    CopyFile(L"Report«0021».doc");
    browser.ListRestoreFiles();
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N03");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "state 1");
    EXPECT_EQ(Safety(22), "unsaved");
}

TEST_F(Restore, SafetyNumbers_AllUsed_StopsWithASentence) {
    for (int number = 21; number <= 99; ++number) {
        CopyFile(L"Report«00" + std::to_wstring(number) + L"».doc");
    }
    browser.ListRestoreFiles();
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N03");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kOverflow);
    EXPECT_THAT(error.description, testing::HasSubstr(L"U79"));
    EXPECT_EQ(ReadBytes(document), "unsaved");
}

TEST_F(Restore, CancelDuringSafetyCopy_OverwritesNothingAndReportsIt) {
    tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
    SelectCopy(L"N03");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    world.boxes.Expect(L"cancelled");
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) state.cancel.Request();
    });
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(document), "unsaved");
    EXPECT_FALSE(HasSafety());
    EXPECT_THAT(report, Not(testing::Contains(testing::HasSubstr(L"copy 1"))));
}

// Some disks report a success without an effect.
TEST_F(Restore, DiskIgnoresTheLastStep_IsReported_NothingIsLeft) {
    for (const bool isThere : {true, false}) {
        if (isThere) {
            world.boxes.Expect(kQuestion, BoxAnswer::Yes);
        } else {
            tree.Remove(L"Docs\\Report.doc");
        }
        const Tree before = ReadTree(tree.Path(L"Docs"));
        SelectCopy(L"N02");
        world.files.IgnoreNth(
            1, [&](const FileOperation& operation) { return operation.to == document; });
        commands.mnuRestoreClick();
        const ToldError error = world.errors.TakeOne();
        EXPECT_EQ(error.number, error_number::kDeviceError);
        EXPECT_EQ(error.path, document);
        EXPECT_EQ(ReadTree(tree.Path(L"Docs")), before);
    }
}

TEST_F(Restore, DiskIgnoresAStepInAFolder_IsReported_RestIsThere) {
    const std::wstring work = tree.Folder(L"Work");
    for (const wchar_t* name : {L"a.txt", L"b.txt", L"c.txt"}) {
        tree.File(L"Work\\" + std::wstring(name), "kept", {2024, 1, 1, 0, 0, 0});
    }
    BackUp(work + L"\\");
    browser.ListRestoreFiles();
    tree.Remove(L"Work\\a.txt");
    tree.Remove(L"Work\\b.txt");
    SelectItem(L"Work");
    SelectCopy(L"N01");
    world.boxes.Expect(L"", BoxAnswer::Yes);
    const std::wstring ignored = work + L"\\a.txt";
    world.files.IgnoreNth(1,
                          [&](const FileOperation& operation) { return operation.to == ignored; });
    commands.mnuRestoreClick();
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kDeviceError);
    EXPECT_EQ(error.path, ignored);
    std::vector<std::wstring> left;
    for (const auto& [path, node] : ReadTree(work)) left.push_back(path);
    EXPECT_THAT(left, testing::ElementsAre(L"b.txt", L"c.txt"));
}

TEST_F(Restore, DiskCutsTheFileShort_IsReported_OldFileStays) {
    const Tree before = ReadTree(tree.Path(L"Docs"));
    SelectCopy(L"N02");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    world.files.TruncateNthCopy(1);
    commands.mnuRestoreClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kDeviceError);
    EXPECT_EQ(ReadTree(tree.Path(L"Docs")), before);
}

TEST_F(Restore, FilesOfAFolder_YieldsBetweenThem) {
    constexpr int kFiles = 5;
    const std::wstring work = tree.Folder(L"Work");
    for (int i = 0; i < kFiles; ++i) tree.File(L"Work\\" + std::to_wstring(i), "x");
    BackUp(work + L"\\");
    browser.ListRestoreFiles();
    for (const bool isThere : {true, false}) {
        tree.Remove(L"Work");
        if (isThere) {
            tree.Folder(L"Work");
            world.boxes.Expect(L"", BoxAnswer::Yes);
        }
        SelectItem(L"Work");
        SelectCopy(L"N01");
        std::vector<int> yields;
        world.files.OnOperation([&](const FileOperation& operation) {
            if (operation.call == FileCall::Copy) yields.push_back(world.pump.Yields());
        });
        commands.mnuRestoreClick();
        ASSERT_EQ(yields.size(), static_cast<std::size_t>(kFiles)) << isThere;
        EXPECT_EQ(std::ranges::adjacent_find(yields), yields.end()) << isThere;
    }
}

}  // namespace
}  // namespace vw::test
