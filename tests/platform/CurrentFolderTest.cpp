#include "platform/CurrentFolder.h"

#include <gtest/gtest.h>

#include "platform/WindowsHeader.h"
#include "tests/support/TempTree.h"

namespace vw::test {
namespace {

TEST(CurrentFolder, CurrentFolderKeeper_RestoresTheCurrentFolder) {
    const TempTree tree;
    const std::wstring before = CurrentFolder();
    {
        const CurrentFolderKeeper start;
        ASSERT_NE(SetCurrentDirectoryW(tree.Folder(L"On a stick").c_str()), 0);
        EXPECT_NE(CurrentFolder(), before);
    }
    EXPECT_EQ(CurrentFolder(), before) << "the stick cannot be taken out";
}

}  // namespace
}  // namespace vw::test
