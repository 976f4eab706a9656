// Listings that the system refuses or breaks off, which no folder of a test does.

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "platform/RuntimeError.h"
#include "platform/Win32FileSystem.h"
#include "tests/support/ErrorNumber.h"
#include "tests/support/ImportHook.h"
#include "tests/support/TempTree.h"

namespace vw::test {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

DWORD failure = 0;

HANDLE WINAPI Refuse(LPCWSTR, FINDEX_INFO_LEVELS, LPVOID, FINDEX_SEARCH_OPS, LPVOID, DWORD) {
    SetLastError(failure);
    return INVALID_HANDLE_VALUE;
}

const ImportHook* next = nullptr;
int entriesToCome = 0;
BOOL WINAPI BreakOff(HANDLE search, LPWIN32_FIND_DATAW entry) {
    if (entriesToCome-- > 0) return next->Original<decltype(FindNextFileW)>()(search, entry);
    SetLastError(failure);
    return FALSE;
}

class FailedListing : public testing::Test {
  protected:
    /// Lists a path; gives the number of the error, or 0.
    int List(std::wstring_view path) {
        names.clear();
        const RuntimeError error = ErrorOf([&] {
            files.List(path, [this](const FolderEntry& entry) { names.emplace_back(entry.name); });
        });
        EXPECT_EQ(error.Path(), error.Number() == 0 ? L"" : path);
        return error.Number();
    }
    int RefusedWith(DWORD code, std::wstring_view path) {
        const ImportHook hook("FindFirstFileExW", &Refuse);
        failure = code;
        return List(path);
    }

    const TempTree tree;
    Win32FileSystem files;
    std::vector<std::wstring> names;
};

// The root of a drive has no entries "." and "..".
TEST_F(FailedListing, EmptyRootOfADrive_ListsNothing) {
    EXPECT_EQ(RefusedWith(ERROR_FILE_NOT_FOUND, tree.Path()), 0);
    EXPECT_THAT(names, IsEmpty());
}

TEST_F(FailedListing, NothingThere_IsPathNotFound) {
    const std::wstring none = tree.Path(L"none");
    EXPECT_EQ(RefusedWith(ERROR_FILE_NOT_FOUND, none), error_number::kPathNotFound);
    EXPECT_EQ(RefusedWith(ERROR_PATH_NOT_FOUND, none), error_number::kPathNotFound);
}

TEST_F(FailedListing, File_IsPathNotFoundWhateverTheCode) {
    const std::wstring file = tree.File(L"file");
    for (const DWORD code : {ERROR_DIRECTORY, ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED}) {
        EXPECT_EQ(RefusedWith(code, file), error_number::kPathNotFound) << code;
    }
}

TEST_F(FailedListing, FolderThatMayNotBeRead_IsPermissionDenied) {
    EXPECT_EQ(RefusedWith(ERROR_ACCESS_DENIED, tree.Path()), error_number::kPermissionDenied);
}

TEST_F(FailedListing, FolderThatWentAway_IsPathNotFound) {
    EXPECT_EQ(RefusedWith(ERROR_PATH_NOT_FOUND, tree.Path()), error_number::kPathNotFound);
}

TEST_F(FailedListing, BrokenOff_IsAnErrorBehindTheFirstEntries) {
    for (const wchar_t* name : {L"a.txt", L"b.txt", L"c.txt", L"d.txt"}) tree.File(name);
    const ImportHook hook("FindNextFileW", &BreakOff);
    next = &hook;
    for (const DWORD code : {ERROR_CRC, ERROR_NO_MORE_FILES}) {
        failure = code;
        entriesToCome = 3;
        EXPECT_EQ(List(tree.Path()), code == ERROR_CRC ? error_number::kDeviceError : 0);
        EXPECT_THAT(names, SizeIs(2)) << "behind those of the folder itself";
    }
}

}  // namespace
}  // namespace vw::test
