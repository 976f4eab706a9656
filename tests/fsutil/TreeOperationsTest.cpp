#include "fsutil/TreeOperations.h"

#include <gtest/gtest.h>

#include <map>

#include "fsutil/Patience.h"
#include "platform/RuntimeError.h"
#include "platform/SystemError.h"
#include "platform/WindowsHeader.h"
#include "tests/support/DiskTest.h"
#include "tests/support/EndlessFolders.h"
#include "tests/support/ErrorNumber.h"
#include "tests/support/WineBridge.h"

namespace vw {
namespace {

using test::Exists;
using test::FileCall;
using test::NumberOf;
using test::OnlyCalls;
using test::OnlyChanges;
using test::TestEnvironment;

using CreateFoldersTest = test::DiskTest;
using DeleteTreeTest = test::DiskTest;
using RemoveEmptyFoldersTest = test::DiskTest;

TEST(IsRoot, RecognisesDrivesAndSharesInEveryForm) {
    TestEnvironment world;
    for (const wchar_t* root :
         {L"C:\\", L"\\\\?\\C:\\", L"\\\\server\\share", L"\\\\server\\share\\", L"\\\\server",
          L"\\\\?\\UNC\\server\\share", L"\\\\?\\UNC\\server\\share\\", L"\\\\?\\UNC\\server"}) {
        EXPECT_TRUE(IsRoot(world.files, root)) << root;
    }
    for (const wchar_t* folder : {L"C:\\a", L"\\\\?\\C:\\a", L"\\\\server\\share\\a",
                                  L"\\\\?\\UNC\\server\\share\\a", L"C:\\a\\"}) {
        EXPECT_FALSE(IsRoot(world.files, folder)) << folder;
    }
}

/// A server that answers that it has nothing.
class EmptyServer final : public test::ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    std::optional<FileInfo> Stat(std::wstring_view) override { return std::nullopt; }
};

TEST_F(DeleteTreeTest, DeletesTreesOfThousandsOfLevels) {
    test::EndlessFolders disk(world.disk, 5000, kNoDate);
    DeleteTree(disk, L"X:\\d", {});
    EXPECT_EQ(disk.deepestListed, 5000);
    EXPECT_EQ(disk.erasedFiles, 5000);
    EXPECT_FALSE(disk.wrongOrder);
    EXPECT_FALSE(disk.Stat(L"X:\\d"));
}

TEST_F(DeleteTreeTest, ListsEachFolderOnce) {
    for (int i = 0; i < 5; ++i) tree.File(L"Top\\Sub\\" + std::to_wstring(i));
    tree.File(L"Top\\a");
    DeleteTree(world.files, tree.Path(L"Top"), {});
    int lists = 0;
    int looks = 0;
    for (const auto& operation : world.files.Operations()) {
        lists += operation.call == FileCall::List ? 1 : 0;
        looks += operation.call == FileCall::Stat ? 1 : 0;
    }
    EXPECT_EQ(lists, 2);
    EXPECT_EQ(looks, 2) << "one before and one after, for the top alone";
}

TEST_F(DeleteTreeTest, DeletesAFolderOfManyFiles) {
    for (int i = 0; i < 1500; ++i) tree.File(L"Top\\file " + std::to_wstring(i), "");
    int yields = 0;
    DeleteTree(world.files, tree.Path(L"Top"), [&] { ++yields; });
    EXPECT_FALSE(Exists(tree.Path(L"Top")));
    EXPECT_EQ(yields, 1501);
}

TEST_F(CreateFoldersTest, CreatesEveryMissingParent) {
    CreateFolders(world.files, tree.Path(L"a\\ب\\c.d\\«0001»\\"));
    EXPECT_TRUE(Exists(tree.Path(L"a\\ب\\c.d\\«0001»")));
    CreateFolders(world.files, tree.Path(L"a/ب//second"));
    EXPECT_TRUE(Exists(tree.Path(L"a\\ب\\second")));
}

TEST_F(RemoveEmptyFoldersTest, EmptyParents_AreRemovedUpToTheTop) {
    tree.Folder(L"Top\\a\\b\\c");
    RemoveEmptyFolders(world.files, tree.Path(L"Top\\a\\b\\c"), tree.Path(L"Top"));
    EXPECT_FALSE(Exists(tree.Path(L"Top\\a")));
    EXPECT_TRUE(Exists(tree.Path(L"Top")));
}

TEST_F(RemoveEmptyFoldersTest, ParentWithAFile_Stays) {
    tree.File(L"Top\\a\\file");
    tree.Folder(L"Top\\a\\b\\c");
    RemoveEmptyFolders(world.files, tree.Path(L"Top\\a\\b\\c"), tree.Path(L"Top"));
    EXPECT_FALSE(Exists(tree.Path(L"Top\\a\\b")));
    EXPECT_TRUE(Exists(tree.Path(L"Top\\a\\file")));
}

TEST_F(CreateFoldersTest, KeepsAnExistingFolder) {
    tree.File(L"a\\b\\f.txt");
    world.files.DieAtNth(1, OnlyChanges());
    CreateFolders(world.files, tree.Path(L"a\\b"));
    CreateFolders(world.files, tree.Path() + L"\\");
    CreateFolders(world.files, L"C:\\");
    EXPECT_TRUE(Exists(tree.Path(L"a\\b\\f.txt")));
}

TEST_F(CreateFoldersTest, FileInTheWay_Throws) {
    const std::wstring file = tree.File(L"a\\file");
    EXPECT_EQ(NumberOf([&] { CreateFolders(world.files, file); }), 58);
    EXPECT_EQ(NumberOf([&] { CreateFolders(world.files, file + L"\\b\\c"); }), 58);
}

TEST_F(CreateFoldersTest, MissingDrive_Throws) {
    EXPECT_EQ(NumberOf([&] { CreateFolders(world.files, L"Q:\\"); }), 76);
    EXPECT_EQ(NumberOf([&] { CreateFolders(world.files, L"Q:\\a\\b"); }), 76);
}

TEST_F(CreateFoldersTest, FolderMadeMeanwhile_IsAccepted) {
    world.files.OnOperation([&](const test::FileOperation& operation) {
        if (operation.call == FileCall::CreateFolder) tree.Folder(operation.path);
    });
    CreateFolders(world.files, tree.Path(L"a\\b"));
    EXPECT_TRUE(Exists(tree.Path(L"a\\b")));
}

TEST_F(CreateFoldersTest, FirstFailure_IsThrownWithItsPath) {
    world.files.FailNth(2, error_number::kDiskFull, OnlyCalls({FileCall::CreateFolder}));
    const RuntimeError error =
        test::ErrorOf([&] { CreateFolders(world.files, tree.Path(L"a\\b\\c")); });
    EXPECT_EQ(error.Number(), 61);
    EXPECT_EQ(error.Path(), tree.Path(L"a\\b"));
    EXPECT_FALSE(Exists(tree.Path(L"a\\b")));
}

TEST_F(CreateFoldersTest, CreatesPathsBeyond260Characters) {
    std::wstring relative = L"Top";
    for (int i = 0; i < 40; ++i) relative += L"\\a rather long folder";
    CreateFolders(world.files, tree.Path(relative));
    EXPECT_TRUE(Exists(tree.Path(relative)));
}

TEST_F(CreateFoldersTest, MissingShare_ThrowsWithItsName) {
    EmptyServer disk(world.disk);
    const RuntimeError error =
        test::ErrorOf([&] { CreateFolders(disk, L"\\\\server\\share\\a\\b"); });
    EXPECT_EQ(error.Number(), error_number::kPathNotFound);
    EXPECT_EQ(error.Path(), L"\\\\server\\share\\");
}

TEST_F(CreateFoldersTest, FileCreatedMeanwhile_Throws) {
    world.files.OnOperation([&](const test::FileOperation& operation) {
        if (operation.call == FileCall::CreateFolder) tree.File(L"a");
    });
    EXPECT_EQ(NumberOf([&] { CreateFolders(world.files, tree.Path(L"a")); }),
              error_number::kAlreadyExists);
}

TEST_F(CreateFoldersTest, FolderVanishedAgain_Throws) {
    world.files.FailNth(1, error_number::kAlreadyExists, OnlyCalls({FileCall::CreateFolder}));
    EXPECT_EQ(NumberOf([&] { CreateFolders(world.files, tree.Path(L"a")); }),
              error_number::kAlreadyExists);
}

TEST_F(DeleteTreeTest, SingleFile_YieldsOnceAndNeedsNoYield) {
    int yields = 0;
    DeleteTree(world.files, tree.File(L"a"), [&] { ++yields; });
    EXPECT_EQ(yields, 1);
    DeleteTree(world.files, tree.File(L"a"), {});
    EXPECT_FALSE(Exists(tree.Path(L"a")));
}

/// A disk on which a folder stays "not empty" until three seconds after the first attempt to remove
/// it, as where somebody else still reads what was removed from it.
class SlowFolders final : public test::ForwardingFileSystem {
  public:
    SlowFolders(FileSystem& inner, const Clock& clock)
        : ForwardingFileSystem(inner), clock_(clock) {}

    void RemoveFolder(std::wstring_view path) override {
        const bool isLink =
            (GetFileAttributesW(std::wstring(path).c_str()) & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
        const auto first = first_.try_emplace(std::wstring(path), clock_.Milliseconds()).first;
        if ((!isLink || linksAreSlow) && clock_.Milliseconds() < first->second + 3000) {
            RaiseCode(ERROR_DIR_NOT_EMPTY, path);
        }
        if (isLink) {
            test::RemoveLink(path);
        } else {
            ForwardingFileSystem::RemoveFolder(path);
        }
    }

    bool linksAreSlow = true;

  private:
    const Clock& clock_;
    std::map<std::wstring, std::uint64_t> first_;
};

class PatientDeleteTree : public test::DiskTest {
  protected:
    /// The number of the error, 0 for none.
    int Delete(std::wstring_view relative) {
        const std::wstring path = tree.Path(relative);
        return NumberOf([&] {
            DeleteTree(
                disk, path, [this] { ++yields; }, &patience);
        });
    }

    SlowFolders disk{world.files, world.clock};
    System system = world.With(disk);
    CancelToken cancel;
    Patience patience{system, cancel};
    int yields = 0;
};

TEST_F(PatientDeleteTree, FolderWithFiles_IsRetried) {
    tree.File(L"Top\\a");
    EXPECT_EQ(Delete(L"Top"), 0);
    EXPECT_FALSE(Exists(tree.Path(L"Top")));
}

TEST_F(PatientDeleteTree, FolderThatWasEmpty_IsNotRetried) {
    tree.Folder(L"Top");
    EXPECT_EQ(Delete(L"Top"), error_number::kAccessError);
    EXPECT_EQ(world.clock.Milliseconds(), TestEnvironment().clock.Milliseconds());
}

TEST_F(PatientDeleteTree, FolderWithFolders_IsRetried) {
    tree.File(L"Top\\Sub\\a");
    EXPECT_EQ(Delete(L"Top"), 0);
    EXPECT_FALSE(Exists(tree.Path(L"Top")));
    EXPECT_EQ(yields, 3);
}

TEST_F(PatientDeleteTree, File_IsDeleted) {
    EXPECT_EQ(Delete((tree.File(L"a"), L"a")), 0);
    EXPECT_FALSE(Exists(tree.Path(L"a")));
}

TEST_F(PatientDeleteTree, FolderWithALink_IsRetried) {
    tree.Folder(L"Shown");
    tree.Folder(L"Top");
    if (!tree.Link(L"Top\\Link", L"Shown")) GTEST_SKIP() << "this system makes no links";
    disk.linksAreSlow = false;
    EXPECT_EQ(Delete(L"Top"), 0);
    EXPECT_FALSE(Exists(tree.Path(L"Top")));
    EXPECT_EQ(yields, 2);
}

TEST_F(PatientDeleteTree, LinkThatIsNotEmpty_IsNotRetried) {
    tree.Folder(L"Shown");
    tree.Folder(L"Top");
    if (!tree.Link(L"Top\\Link", L"Shown")) GTEST_SKIP() << "this system makes no links";
    EXPECT_EQ(Delete(L"Top"), error_number::kAccessError);
    EXPECT_EQ(Delete(L"Top\\Link"), error_number::kAccessError);
    EXPECT_EQ(world.clock.Milliseconds(), TestEnvironment().clock.Milliseconds());
}

}  // namespace
}  // namespace vw
