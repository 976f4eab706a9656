#include "platform/CurrentFolder.h"

#include <gtest/gtest.h>

#include "platform/WindowsHeader.h"
#include "tests/support/ImportHook.h"
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

std::wstring folderOfTheSystem;
DWORD WINAPI AnswerFolder(DWORD size, LPWSTR folder) {
    const auto length = static_cast<DWORD>(folderOfTheSystem.size());
    if (length >= size) return length + 1;
    folderOfTheSystem.copy(folder, length);
    return length;
}

DWORD WINAPI AnswerAnotherFolder(DWORD size, LPWSTR) { return size == 0 ? 4 : 100; }

TEST(CurrentFolder, Folder_IsTheSystemsWithoutItsEndMark) {
    const ImportHook answer("GetCurrentDirectoryW", &AnswerFolder);
    folderOfTheSystem = L"C:\\Lists";
    EXPECT_EQ(CurrentFolder(), L"C:\\Lists");
}

TEST(CurrentFolder, ChangesWhileItIsAsked_IsEmpty) {
    const ImportHook answer("GetCurrentDirectoryW", &AnswerAnotherFolder);
    EXPECT_EQ(CurrentFolder(), L"");
}

}  // namespace
}  // namespace vw::test
