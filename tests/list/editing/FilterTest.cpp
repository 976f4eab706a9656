#include "list/editing/Filter.h"

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/support/TempTree.h"

namespace vw::test {
namespace {

/// Puts the program's current folder back.
class Filter : public testing::Test {
  protected:
    wchar_t before[MAX_PATH]{};

    void SetUp() override { GetCurrentDirectoryW(MAX_PATH, before); }
    void TearDown() override { SetCurrentDirectoryW(before); }
};

TEST_F(Filter, BeginsInTheCurrentFolder) {
    const TempTree tree;
    const std::wstring folder = tree.Folder(L"قوائم");
    SetCurrentDirectoryW(folder.c_str());
    for (int kind = 0; kind <= 5; ++kind) {
        FileDialogSetup dialog;
        dialog.initialFolder = L"C:\\Old";
        MRecentFiles::Filter(dialog, static_cast<FileDialogKind>(kind), L"C:\\Default");
        EXPECT_EQ(dialog.initialFolder, folder);
        EXPECT_TRUE(dialog.cancelIsError);
        EXPECT_NE(dialog.flags, 0U);
    }
    SetCurrentDirectoryW(before);
}

TEST_F(Filter, UnknownKind_ThrowsError1000) {
    FileDialogSetup dialog;
    try {
        MRecentFiles::Filter(dialog, static_cast<FileDialogKind>(6), L"");
        FAIL() << "taken";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), error_number::kUnknownDialogKind);
    }
    EXPECT_EQ(dialog.initialFolder, before);
}

}  // namespace
}  // namespace vw::test
