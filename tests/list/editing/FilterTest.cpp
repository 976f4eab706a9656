#include "list/editing/Filter.h"

#include <gtest/gtest.h>

#include "tests/support/CurrentFolder.h"
#include "tests/support/TempTree.h"

namespace vw::test {
namespace {

TEST(Filter, BeginsInTheCurrentFolder) {
    const TempTree tree;
    const std::wstring folder = tree.Folder(L"قوائم");
    const CurrentFolder here(folder);
    for (int kind = 0; kind <= 5; ++kind) {
        FileDialogSetup dialog;
        dialog.initialFolder = L"C:\\Old";
        MRecentFiles::Filter(dialog, static_cast<FileDialogKind>(kind), L"C:\\Default");
        EXPECT_EQ(dialog.initialFolder, folder);
        EXPECT_TRUE(dialog.cancelIsError);
        EXPECT_NE(dialog.flags, 0U);
    }
}

}  // namespace
}  // namespace vw::test
