#include "restore/ShownFolder.h"

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {
namespace {

TEST(ShownFolder, NextOneCannotBeRead_ShowsNone) {
    TempTree tree;
    TestEnvironment world;
    ShownFolder shown;
    shown.Take(world.disk, tree.Folder(L"Copies"));
    EXPECT_TRUE(shown.IsStillThere(world.disk));
    EXPECT_THROW(shown.Take(world.disk, tree.Path(L"Gone")), RuntimeError);
    EXPECT_FALSE(shown.IsStillThere(world.disk));
    EXPECT_EQ(shown.Path(), L"");
}

}  // namespace
}  // namespace vw::test
