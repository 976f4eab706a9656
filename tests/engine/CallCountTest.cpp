// What a run asks of the disk, counted at the edge to the system. These numbers are what makes a
// run fast: a call that is added has to be added here, with a reason.

#include <gtest/gtest.h>

#include "tests/engine/EngineFixture.h"
#include "tests/support/CallCounts.h"

namespace vw::test {
namespace {

/// A world whose runs are counted.
class CountedFixture : public EngineFixture {
  public:
    /// The folder item "Work" with `folders` sub-folders of `files` files each.
    CountedFixture& WithFolder(int folders, int files) {
        for (int folder = 0; folder < folders; ++folder) {
            const std::wstring path = L"Work\\Sub" + std::to_wstring(folder);
            tree.Folder(path);
            for (int file = 0; file < files; ++file) {
                tree.File(path + L"\\f" + std::to_wstring(file), "x", Day(1));
            }
        }
        List({L"Work\\"});
        return *this;
    }

    /// A list of `count` file items in one folder, of which this is version `version`.
    CountedFixture& WithFiles(int count, int version = 1) {
        Lines items;
        for (int file = 0; file < count; ++file) {
            items.push_back(L"Letter" + std::to_wstring(file) + L".txt");
            tree.File(items.back(), "x", Day(version));
        }
        List(items);
        return *this;
    }

    /// The calls of a run, which has to go well.
    CallCounts Calls() {
        files.Heal();
        const RunResult result = Run();
        EXPECT_EQ(result.exitCode, 0) << Joined(result.lines);
        return CallCounts(files.Operations());
    }
};

CallCounts FirstBackupOfFolder(int folders, int files) {
    return CountedFixture().WithFolder(folders, files).Calls();
}

CallCounts UnchangedFolder(int folders, int files) {
    CountedFixture world;
    world.WithFolder(folders, files).Calls();
    return world.Calls();
}

CallCounts UnchangedFiles(int count) {
    CountedFixture world;
    world.WithFiles(count).Calls();
    return world.Calls();
}

/// `copies` of each are there already.
CallCounts ChangedFiles(int count, int copies) {
    CountedFixture world;
    for (int version = 1; version <= copies; ++version) world.WithFiles(count, version).Calls();
    return world.WithFiles(count, copies + 1).Calls();
}

TEST(CallCount, EmptyList_CallsAreCounted) {
    EXPECT_EQ(CountedFixture().WithFiles(0).Calls().Text(), "Stat 2, Read 1");
}

TEST(CallCount, FirstBackupOfAFolder_CallsAreCounted) {
    const CallCounts smallest = FirstBackupOfFolder(1, 1);
    EXPECT_EQ(smallest.Text(),
              "Stat 8, List 6, Copy 1, CreateFolder 2, Rename 2, Replace 1, Read 1, Write 1, "
              "CopyFolderInfo 2, Hold 1, FreeSpace 1, DriveTypeOf 1");
    EXPECT_EQ((FirstBackupOfFolder(1, 11) - smallest).Text(), "Copy 10") << "for ten more files";
    EXPECT_EQ((FirstBackupOfFolder(2, 1) - smallest).Text(),
              "List 3, Copy 1, CreateFolder 1, CopyFolderInfo 1")
        << "for one more folder";
}

TEST(CallCount, UnchangedFolder_CallsAreCounted) {
    const CallCounts smallest = UnchangedFolder(1, 1);
    EXPECT_EQ(smallest.Text(), "Stat 6, List 3, Read 2, Hold 1, FreeSpace 1, DriveTypeOf 1");
    EXPECT_EQ((UnchangedFolder(1, 11) - smallest).Text(), "") << "for ten more files";
    EXPECT_EQ((UnchangedFolder(2, 1) - smallest).Text(), "List 1") << "for one more folder";
}

TEST(CallCount, FirstBackupOfFiles_CallsAreCounted) {
    EXPECT_EQ((ChangedFiles(2, 0) - ChangedFiles(1, 0)).Text(),
              "Stat 7, Copy 1, Rename 2, Replace 1, Write 1, FreeSpace 1")
        << "for one more file";
}

TEST(CallCount, UnchangedFiles_CallsAreCounted) {
    EXPECT_EQ((UnchangedFiles(2) - UnchangedFiles(1)).Text(), "Stat 2, Read 1")
        << "for one more file";
}

TEST(CallCount, ChangedFiles_CallsAreCounted) {
    EXPECT_EQ((ChangedFiles(2, 1) - ChangedFiles(1, 1)).Text(),
              "Stat 8, Copy 1, Rename 3, Replace 1, Read 1, Write 1, FreeSpace 1")
        << "for one more file";
    EXPECT_EQ((ChangedFiles(1, 2) - ChangedFiles(1, 1)).Text(), "Stat 2, Rename 1")
        << "for one more copy that moves up";
    EXPECT_EQ((ChangedFiles(1, 3) - ChangedFiles(1, 2)).Text(), "Stat 3, RemoveFile 1, Rename 1")
        << "for a copy that leaves";
}

}  // namespace
}  // namespace vw::test
