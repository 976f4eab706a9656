// Folders come back as they were, with their dates and marks; a file that a restore replaces hands
// its access rights on.

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"
#include "tests/support/TestDrive.h"

namespace vw::test {
namespace {

class FolderKeeping : public testing::Test {
  protected:
    FolderKeeping() {
        world.tree.File(L"Work\\Sub\\Deep\\a.txt", "a", Day(1));
        world.tree.Folder(L"Work\\Empty");
        for (const wchar_t* folder : kFolders) world.tree.SetDate(folder, DateOf(folder));
        world.List({L"Work\\"});
    }

    static DateParts DateOf(std::wstring_view folder) {
        return Day(static_cast<int>(folder.size()));
    }

    void Extract() {
        const RunResult result = world.With([&](CPackage& engine) {
            engine.Extract(world.Store(L"Work«0001»"), world.Path(), false);
        });
        EXPECT_TRUE(result.errors.empty());
    }

    static constexpr const wchar_t* kFolders[] = {L"Work\\Sub\\Deep", L"Work\\Sub", L"Work\\Empty",
                                                  L"Work"};
    EngineFixture world;
};

TEST_F(FolderKeeping, Copy_HasTheDatesOfTheFolders) {
    EXPECT_EQ(world.Run().exitCode, 0);
    for (const std::wstring folder : kFolders) {
        EXPECT_EQ(ReadDate(world.Store(L"Work«0001»" + folder.substr(4))), MakeDate(DateOf(folder)))
            << folder.size();
    }
}

TEST_F(FolderKeeping, Restore_RestoresTheDates) {
    EXPECT_EQ(world.Run().exitCode, 0);
    for (const bool isThere : {true, false}) {
        if (isThere) {
            world.tree.File(L"Work\\Sub\\b.txt", "b", Day(2));
        } else {
            world.tree.Remove(L"Work");
        }
        Extract();
        for (const std::wstring folder : kFolders) {
            EXPECT_EQ(ReadDate(world.Path(folder)), MakeDate(DateOf(folder)))
                << folder.size() << isThere;
        }
    }
}

TEST_F(FolderKeeping, MarksOfFolders_AreRestored) {
    constexpr DWORD kMarks =
        FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY;
    const auto marksOf = [&](const std::wstring& path) {
        return GetFileAttributesW(path.c_str()) & kMarks;
    };
    world.tree.SetAttributes(L"Work\\Sub", kMarks);
    const DWORD marks = marksOf(world.Path(L"Work\\Sub"));
    if (marks == 0) GTEST_SKIP() << "this disk keeps no marks of folders";
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_EQ(marksOf(world.Store(L"Work«0001»\\Sub")), marks);
    EXPECT_EQ(marksOf(world.Store(L"Work«0001»")), 0U);
    world.tree.SetAttributes(L"Work\\Sub", kMarks, false);
    world.tree.Remove(L"Work");
    Extract();
    EXPECT_EQ(marksOf(world.Path(L"Work\\Sub")), marks);
    EXPECT_EQ(marksOf(world.Path(L"Work")), 0U);
}

TEST_F(FolderKeeping, DiskKeepsNoMarks_CopyIsMade) {
    world.files.FailFrom(1, error_number::kPermissionDenied, OnlyCalls({FileCall::CopyFolderInfo}));
    const RunResult result = world.Run();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(world.Copies().at(L"Work«0001»\\Sub\\Deep\\a.txt"), "a");
}

TEST_F(FolderKeeping, ReplacedFile_RightsAreCopiedBeforeTheReplace) {
    EXPECT_EQ(world.Run().exitCode, 0);
    world.tree.File(L"Work\\Sub\\Deep\\a.txt", "changed", Day(2));
    world.files.Heal();
    Extract();
    const auto& all = world.files.Operations();
    const std::wstring target = world.Path(L"Work\\Sub\\Deep\\a.txt");
    const auto rights = std::find_if(all.begin(), all.end(), [&](const FileOperation& operation) {
        return operation.call == FileCall::CopyAccessRights && operation.path == target;
    });
    const auto replace = std::find_if(all.begin(), all.end(), [&](const FileOperation& operation) {
        return operation.call == FileCall::Replace && operation.to == target;
    });
    ASSERT_NE(rights, all.end());
    ASSERT_NE(replace, all.end());
    EXPECT_LT(rights - all.begin(), replace - all.begin());
    EXPECT_EQ(rights->to, replace->path);
}

TEST_F(FolderKeeping, NewFile_HasTheRightsOfItsFolder) {
    EXPECT_EQ(world.Run().exitCode, 0);
    world.tree.Remove(L"Work");
    world.files.Heal();
    Extract();
    for (const FileOperation& operation : world.files.Operations()) {
        EXPECT_NE(operation.call, FileCall::CopyAccessRights);
    }
}

// The root of a drive is hidden on most disks; a copy that nobody sees would look lost.
TEST(FolderKeepingOfADrive, SafetyCopy_HasNoMarksOfTheRoot) {
    const TestDrive drive;
    EngineFixture world;
    const std::wstring root = drive.Name() + L"\\";
    world.tree.File(root + L"Kept\\a.txt", "a", Day(1));
    const RunResult result = world.With([&](CPackage& engine) {
        engine.BackupPath(root, 0, true, true, world.Store(L"Drive«0021»"));
    });
    world.tree.Remove(root + L"Kept");
    std::size_t kept = 0;
    for (const FileOperation& operation : world.files.Operations()) {
        if (operation.call != FileCall::CopyFolderInfo) continue;
        ++kept;
        EXPECT_NE(operation.path, root);
    }
    EXPECT_GT(kept, 0U) << Joined(result.lines);
}

}  // namespace
}  // namespace vw::test
