#include "restore/StoredCopyPath.h"

#include <gtest/gtest.h>

#include "tests/support/TempTree.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {
namespace {

TEST(IsInStoredCopy, CopyFolderIsALink_CountsByItsRealPath) {
    TempTree tree;
    TestEnvironment world;
    const std::wstring copy = tree.Folder(L"Real store\\Work«0001»");
    if (!tree.Link(L"Vault", L"Real store")) GTEST_SKIP() << "no links here";
    const std::wstring vault = tree.Path(L"Vault");
    EXPECT_TRUE(IsInStoredCopy(world.disk, copy, L"Work", vault));
    EXPECT_TRUE(IsInStoredCopy(world.disk, vault + L"\\Work«0001»", L"Work", vault));
    EXPECT_FALSE(IsInStoredCopy(world.disk, tree.Path(L"Real store"), L"Work", vault));
}

TEST(IsInStoredCopy, MissingFolderBelowALinkToACopy_IsInIt) {
    TempTree tree;
    TestEnvironment world;
    const std::wstring vault = tree.Folder(L"Vault");
    tree.Folder(L"Vault\\Work«0001»");
    if (!tree.Link(L"Way", L"Vault\\Work«0001»")) GTEST_SKIP() << "no links here";
    EXPECT_TRUE(IsInStoredCopy(world.disk, tree.Path(L"Way\\New\\Newer"), L"Work", vault));
    EXPECT_FALSE(IsInStoredCopy(world.disk, tree.Path(L"New\\Newer"), L"Work", vault));
}

TEST(IsInStoredCopy, DriveIsGone_IsAskedByItsName) {
    TestEnvironment world;
    EXPECT_TRUE(IsInStoredCopy(world.disk, L"Q:\\Store\\Work«0001»", L"Work", L"Q:\\Store"));
    EXPECT_FALSE(IsInStoredCopy(world.disk, L"Q:\\Other", L"Work", L"Q:\\Store"));
}

TEST(IsInStoredCopy, MarkedNameBelowAnotherFolder_IsNotACopy) {
    TempTree tree;
    TestEnvironment world;
    const std::wstring vault = tree.Folder(L"Vault");
    const std::wstring other = tree.Folder(L"Vault\\Plain");
    EXPECT_TRUE(IsInStoredCopy(world.disk, vault, L"Work«0001»", vault));
    EXPECT_FALSE(IsInStoredCopy(world.disk, other, L"Work«0001»", vault));
}

}  // namespace
}  // namespace vw::test
