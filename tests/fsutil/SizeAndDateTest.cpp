// What the lists show of an item, and what a backup asks of it: one walk each.

#include <gtest/gtest.h>

#include "fsutil/FileQueries.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "tests/fsutil/StoredDates.h"
#include "tests/support/DiskTest.h"

namespace vw::MFileDosShell {
namespace {

constexpr DateParts kOld{2001, 2, 3, 4, 5, 6};
constexpr DateParts kMiddle{2015, 6, 30, 12, 0, 0};
constexpr DateParts kNew{2024, 12, 31, 23, 59, 59};

class SizeAndDateOf : public test::DiskTest {
  protected:
    std::optional<SizeAndDate> Of(std::wstring_view relative) {
        return PathSizeAndDate(world.system, stored, tree.Path(relative));
    }
    void ExpectItem(std::wstring_view relative, bool isFolder, std::uint64_t size, Date date) {
        const auto found = Of(relative);
        ASSERT_TRUE(found);
        EXPECT_TRUE(found->isKnown);
        EXPECT_EQ(found->isFolder, isFolder);
        EXPECT_EQ(found->size, size);
        EXPECT_EQ(found->date, date);
    }

    test::StoredDates stored;
};

TEST_F(SizeAndDateOf, Nothing_IsNothing) {
    tree.Folder(L"Docs");
    EXPECT_FALSE(Of(L"missing"));
    EXPECT_FALSE(Of(L"missing«0101».txt"));
    EXPECT_TRUE(stored.asked.empty());
}

TEST_F(SizeAndDateOf, File_AreItsOwn) {
    tree.File(L"a.txt", "12345", kMiddle);
    ExpectItem(L"a.txt", false, 5, MakeDate(kMiddle));
}

TEST_F(SizeAndDateOf, Folder_AreThoseOfItsTree) {
    tree.File(L"Docs\\a", "1", kOld);
    tree.File(L"Docs\\Sub\\b", "22", kMiddle);
    tree.SetDate(L"Docs\\Sub", kNew);
    tree.SetDate(L"Docs", kNew);
    ExpectItem(L"Docs", true, 3, MakeDate(kMiddle));
    ExpectItem(L"Docs\\Sub", true, 2, MakeDate(kMiddle));
}

TEST_F(SizeAndDateOf, FolderWithoutFiles_HasTheDateOfAnEmptyOne) {
    tree.Folder(L"Docs\\Sub");
    ExpectItem(L"Docs", true, 0, kEmptyFolderDate);
}

TEST_F(SizeAndDateOf, FolderWithACopy_CountsItsTreeAndStoredDate) {
    tree.File(L"Docs\\a", "1", kOld);
    tree.File(L"Docs\\Sub«0101»\\Deep\\b", "22", kNew);
    stored.dates[tree.Path(L"Docs\\Sub«0101»")] = MakeDate(kMiddle);
    ExpectItem(L"Docs", true, 3, MakeDate(kMiddle));
}

TEST_F(SizeAndDateOf, Copy_HasItsTreeAndTheStoredDate) {
    const std::wstring file = tree.File(L"f«0101».txt", "12345", kNew);
    tree.File(L"Docs«0203»\\a", "1", kNew);
    tree.File(L"Docs«0203»\\Sub\\b", "22", kNew);
    stored.dates[file] = MakeDate(kOld);
    stored.dates[tree.Path(L"Docs«0203»")] = MakeDate(kMiddle);
    ExpectItem(L"f«0101».txt", false, 5, MakeDate(kOld));
    ExpectItem(L"Docs«0203»", true, 3, MakeDate(kMiddle));
}

TEST_F(SizeAndDateOf, DiskCannotAnswer_AreUnknownAndReported) {
    tree.File(L"a.txt");
    world.files.FailNth(1, error_number::kNotReady);
    const auto found = Of(L"a.txt");
    ASSERT_TRUE(found);
    EXPECT_FALSE(found->isKnown);
    EXPECT_EQ(world.errors.TakeOne().procedure, L"PathDate");
}

TEST_F(SizeAndDateOf, StoredDateCannotBeRead_AreWhatWasFound) {
    tree.File(L"Docs\\a", "1", kMiddle);
    tree.File(L"Docs\\Sub«0101»\\b", "22", kNew);
    stored.fails = true;
    ExpectItem(L"Docs", true, 3, MakeDate(kMiddle));
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kInvalidCall);
}

/// A disk with files that are only in the cloud or encrypted, as their names say.
class MarkedFiles final : public test::ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    std::optional<FileInfo> Stat(std::wstring_view path) override {
        auto info = ForwardingFileSystem::Stat(path);
        if (info) Mark(*info, path);
        return info;
    }
    void List(std::wstring_view folder, const EntryVisitor& visitor) override {
        ForwardingFileSystem::List(folder, [&](const FolderEntry& entry) {
            FolderEntry marked = entry;
            Mark(marked, entry.name);
            visitor(marked);
        });
    }

  private:
    static void Mark(FileInfo& info, std::wstring_view name) {
        info.isOnlyInCloud = !info.isFolder && name.ends_with(L".cloud");
        info.isEncrypted = !info.isFolder && name.ends_with(L".secret");
    }
};

class ItemStatsOf : public test::DiskTest {
  protected:
    ItemStats Of(std::wstring_view relative) {
        System system = world.With(disk);
        const std::wstring path = tree.Path(relative);
        return GetItemStats(system, stored, path, disk.Stat(path));
    }

    MarkedFiles disk{world.files};
    test::StoredDates stored;
};

TEST_F(ItemStatsOf, Nothing_HaveNoSizeAndNoDate) {
    const ItemStats stats = Of(L"missing");
    EXPECT_EQ(stats.bytes, -1);
    EXPECT_EQ(stats.newest, kMissingDate);
}

TEST_F(ItemStatsOf, File_CountItAlone) {
    tree.File(L"a.cloud", "12345", kMiddle);
    const ItemStats stats = Of(L"a.cloud");
    EXPECT_EQ(stats.bytes, 5);
    EXPECT_EQ(stats.files, 1U);
    EXPECT_EQ(stats.treeFiles, 1U);
    EXPECT_EQ(stats.treeBytes, 5U);
    EXPECT_EQ(stats.newest, MakeDate(kMiddle));
    EXPECT_EQ(stats.cloud.files, 1U);
    EXPECT_EQ(stats.cloud.bytes, 5U);
    EXPECT_EQ(stats.treeCloud.files, 1U);
    EXPECT_EQ(stats.treeCloud.bytes, 5U);
    EXPECT_FALSE(stats.hasEncrypted);
    EXPECT_FALSE(stats.treeHasEncrypted);
}

TEST_F(ItemStatsOf, EncryptedFile_SayThatItIs) {
    tree.File(L"a.secret");
    const ItemStats stats = Of(L"a.secret");
    EXPECT_TRUE(stats.hasEncrypted);
    EXPECT_TRUE(stats.treeHasEncrypted);
    EXPECT_EQ(stats.cloud.files, 0U);
}

TEST_F(ItemStatsOf, Folder_CountItsOwnFilesAndThoseOfTheTree) {
    tree.File(L"Docs\\a", "1", kOld);
    tree.File(L"Docs\\b.cloud", "22", kOld);
    tree.File(L"Docs\\Sub\\c.cloud", "333", kNew);
    tree.File(L"Docs\\Sub\\Deep\\d.secret", "4444", kMiddle);
    const ItemStats stats = Of(L"Docs");
    EXPECT_EQ(stats.bytes, 3);
    EXPECT_EQ(stats.files, 2U);
    EXPECT_EQ(stats.treeFiles, 4U);
    EXPECT_EQ(stats.treeBytes, 10U);
    EXPECT_EQ(stats.newest, MakeDate(kNew));
    EXPECT_EQ(stats.cloud.files, 1U);
    EXPECT_EQ(stats.cloud.bytes, 2U);
    EXPECT_EQ(stats.treeCloud.files, 2U);
    EXPECT_EQ(stats.treeCloud.bytes, 5U);
    EXPECT_FALSE(stats.hasEncrypted);
    EXPECT_TRUE(stats.treeHasEncrypted);
}

TEST_F(ItemStatsOf, FolderWithAnEncryptedFile_SayThatItHasOne) {
    tree.File(L"Docs\\a.secret");
    tree.File(L"Docs\\b");
    const ItemStats stats = Of(L"Docs");
    EXPECT_TRUE(stats.hasEncrypted);
    EXPECT_TRUE(stats.treeHasEncrypted);
}

TEST_F(ItemStatsOf, FolderWithACopy_CountItAsAFileOfTheTree) {
    tree.File(L"Docs\\Sub\\Old«0101»\\a", "1", kNew);
    tree.File(L"Docs\\Sub\\Old«0101»\\Deep\\b", "22", kNew);
    stored.dates[tree.Path(L"Docs\\Sub\\Old«0101»")] = MakeDate(kMiddle);
    const ItemStats stats = Of(L"Docs");
    EXPECT_EQ(stats.treeFiles, 1U);
    EXPECT_EQ(stats.treeBytes, 3U);
    EXPECT_EQ(stats.files, 0U);
    EXPECT_EQ(stats.newest, MakeDate(kMiddle));
    EXPECT_EQ(stats.newestByPresentRules, MakeDate(kMiddle));
}

TEST_F(ItemStatsOf, Copy_HaveItsOwnFilesAndTheStoredDate) {
    tree.File(L"Docs«0101»\\a", "1", kNew);
    tree.File(L"Docs«0101»\\Sub\\b", "22", kNew);
    stored.dates[tree.Path(L"Docs«0101»")] = MakeDate(kMiddle);
    const ItemStats stats = Of(L"Docs«0101»");
    EXPECT_EQ(stats.bytes, 1);
    EXPECT_EQ(stats.newest, MakeDate(kMiddle));
}

}  // namespace
}  // namespace vw::MFileDosShell
