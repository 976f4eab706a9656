// A restore that is refused at its target names the target: the copy is in order, and it is the
// target that the user has to look at.

#include <gmock/gmock.h>

#include "platform/RuntimeError.h"
#include "tests/restore/RestoreFixture.h"

namespace vw::test {
namespace {

class RefusedTarget : public Restore {
  protected:
    /// Restores N02 over the report; gives the one error that is reported.
    ToldError RestoreOver() {
        SelectCopy(L"N02");
        world.boxes.Expect(kQuestion, BoxAnswer::Yes);
        commands.mnuRestoreClick();
        EXPECT_EQ(ReadTree(tree.Path(L"Docs")).size(), 1U) << "nothing is left beside it";
        return world.errors.TakeOne();
    }
    [[nodiscard]] bool IsAtTarget(const std::wstring& path) const {
        return path.starts_with(tree.Path(L"Docs"));
    }
    const std::wstring copy = vault + L"\\Report«0002».doc";
};

TEST_F(RefusedTarget, FolderIsMissing_NamesTheTarget) {
    SelectCopy(L"N02");
    dialogs.Expect(tree.Path(L"Nowhere\\Report.doc"));
    commands.mnuRestoreToClick();
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kPathNotFound);
    EXPECT_EQ(error.path, tree.Path(L"Nowhere\\Report.doc"));
}

TEST_F(RefusedTarget, FileIsReadOnly_NamesTheTarget) {
    tree.SetAttributes(L"Docs\\Report.doc", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(RestoreOver().path, document);
    tree.SetAttributes(L"Docs\\Report.doc", FILE_ATTRIBUTE_READONLY, false);
}

TEST_F(RefusedTarget, FileIsInUse_NamesTheTarget) {
    const FileHandle held(CreateFileW(document.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(RestoreOver().path, document);
}

// A folder without the right to write, or a write-protected drive.
TEST_F(RefusedTarget, FolderTakesNoFiles_NamesTheTarget) {
    world.files.FailFrom(
        1, error_number::kPermissionDenied, [this](const FileOperation& operation) {
            return (operation.call == FileCall::Copy && IsAtTarget(operation.to)) ||
                   (operation.call == FileCall::Write && IsAtTarget(operation.path));
        });
    const ToldError error = RestoreOver();
    EXPECT_EQ(error.number, error_number::kPermissionDenied);
    EXPECT_EQ(error.path, document);
    EXPECT_EQ(ReadBytes(document), "state 3");
}

TEST_F(RefusedTarget, DiskIsFull_NamesTheTarget) {
    world.files.FailNth(1, error_number::kDiskFull, [this](const FileOperation& operation) {
        return operation.call == FileCall::Copy && IsAtTarget(operation.to);
    });
    const ToldError error = RestoreOver();
    EXPECT_EQ(error.number, error_number::kDiskFull);
    EXPECT_EQ(error.path, document);
}

TEST_F(RefusedTarget, PlaceIsTakenBeforeTheRename_NamesTheTarget) {
    tree.Remove(L"Docs\\Report.doc");
    world.files.FailNth(1, error_number::kAlreadyExists, OnlyCalls({FileCall::Rename}));
    SelectCopy(L"N02");
    commands.mnuRestoreClick();
    EXPECT_EQ(world.errors.TakeOne().path, document);
}

TEST_F(RefusedTarget, OtherFileComesAfterTheOldOneIsGone_IsKept) {
    world.files.OnOperation([this](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) tree.Remove(L"Docs\\Report.doc");
        if (operation.call == FileCall::Rename || operation.call == FileCall::Replace) {
            tree.File(L"Docs\\Report.doc", "somebody's");
        }
    });
    EXPECT_EQ(RestoreOver().path, document);
    EXPECT_EQ(ReadBytes(document), "somebody's");
}

TEST_F(RefusedTarget, OneFileOfAFolderIsInUse_NamesThatFile) {
    const std::wstring work = tree.Folder(L"Work");
    for (int state = 1; state <= 2; ++state) {
        for (const wchar_t* const file : {L"Work\\a.txt", L"Work\\Sub\\b.txt"}) {
            tree.File(file, std::to_string(state), {2024, 1, state, 0, 0, 0});
        }
        BackUp(work + L"\\");
    }
    browser.ListRestoreFiles();
    browser.RestoredPath(work + L"\\");
    SelectCopy(L"N02");
    const FileHandle held(CreateFileW(tree.Path(L"Work\\Sub\\b.txt").c_str(), GENERIC_READ,
                                      FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(world.errors.TakeOne().path, tree.Path(L"Work\\Sub\\b.txt"));
    EXPECT_EQ(ReadBytes(tree.Path(L"Work\\a.txt")), "1");
}

TEST_F(RefusedTarget, CopyCannotBeRead_NamesTheCopy) {
    world.files.FailNth(1, error_number::kDeviceError, [this](const FileOperation& operation) {
        return operation.call == FileCall::Copy && IsAtTarget(operation.to);
    });
    const ToldError error = RestoreOver();
    EXPECT_EQ(error.number, error_number::kDeviceError);
    EXPECT_EQ(error.path, copy);
    EXPECT_EQ(ReadBytes(document), "state 3");
}

TEST_F(RefusedTarget, CopyIsGone_NamesTheCopy) {
    tree.Remove(copy);
    engine.Extract(copy, tree.Path(L"Docs"), false);
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kFileNotFound);
    EXPECT_EQ(error.path, copy);
}

/// A folder that is gone and comes back under a working name.
class RefusedNewFolder : public Restore {
  protected:
    RefusedNewFolder() {
        BackUp(tree.Path(L"Work") + L"\\");
        tree.Remove(L"Work");
        browser.ListRestoreFiles();
        SelectItem(L"Work");
    }
    ToldError RestoreWith(int errorNumber, std::initializer_list<FileCall> failing) {
        world.files.FailFrom(1, errorNumber, OnlyCalls(failing));
        commands.mnuRestoreClick();
        return world.errors.TakeOne();
    }

    const std::wstring file = tree.File(L"Work\\a.txt");
    const std::wstring fileBelow = tree.File(L"Work\\Sub\\b.txt");
};

TEST_F(RefusedNewFolder, DiskIsFull_NamesTheFile) {
    EXPECT_EQ(RestoreWith(error_number::kDiskFull, {FileCall::Copy}).path, file);
}

TEST_F(RefusedNewFolder, CopyCannotBeRead_NamesTheCopy) {
    EXPECT_EQ(RestoreWith(error_number::kDeviceError, {FileCall::Copy}).path,
              vault + L"\\Work«0001»\\a.txt");
}

TEST_F(RefusedNewFolder, NothingCanBeWrittenBeside_NamesTheFile) {
    EXPECT_EQ(RestoreWith(error_number::kDeviceError, {FileCall::Copy, FileCall::Write}).path,
              file);
}

TEST_F(RefusedNewFolder, SubFolderCannotBeListed_IsReported_OthersAreRestored) {
    const std::wstring subFolder = vault + L"\\Work«0001»\\Sub";
    world.files.FailNth(1, error_number::kPermissionDenied, [&](const FileOperation& operation) {
        return operation.call == FileCall::List && operation.path.starts_with(subFolder);
    });
    commands.mnuRestoreClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
    EXPECT_TRUE(Exists(file));
    EXPECT_FALSE(Exists(fileBelow));
}

TEST_F(RefusedNewFolder, WorkingNameIsRefused_IsRestoredInItsPlace) {
    world.files.FailNth(1, error_number::kPermissionDenied, OnlyCalls({FileCall::CreateFolder}));
    commands.mnuRestoreClick();
    EXPECT_THAT(world.errors.Take(), testing::IsEmpty());
    EXPECT_TRUE(Exists(file));
}

TEST_F(RefusedNewFolder, NothingRefused_AppearsWhenItIsComplete) {
    int copies = 0;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call != FileCall::Copy) return;
        ++copies;
        EXPECT_FALSE(Exists(tree.Path(L"Work")));
    });
    commands.mnuRestoreClick();
    EXPECT_EQ(copies, 2);
    EXPECT_TRUE(Exists(file) && Exists(fileBelow));
}

}  // namespace
}  // namespace vw::test
