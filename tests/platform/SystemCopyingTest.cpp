// What the system's copying reports and how it fails. Not every system that these tests run on
// reports its progress, and none fails when a test wants it.

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

using testing::ElementsAre;

std::vector<DWORD> answers;

/// Copies as the system does, with three reports of progress.
BOOL WINAPI CopyInThreeParts(LPCWSTR from, LPCWSTR to, LPPROGRESS_ROUTINE progress, LPVOID data,
                             LPBOOL, DWORD) {
    for (int part = 0; part < 3 && progress != nullptr; ++part) {
        answers.push_back(
            progress({}, {}, {}, {}, 1, CALLBACK_CHUNK_FINISHED, nullptr, nullptr, data));
        if (answers.back() == PROGRESS_QUIET) break;
        if (answers.back() != PROGRESS_CONTINUE) {
            SetLastError(ERROR_REQUEST_ABORTED);
            return FALSE;
        }
    }
    return CopyFileW(from, to, TRUE);
}

class CopyProgress : public testing::Test {
  protected:
    CopyProgress() { answers.clear(); }

    const TempTree tree;
    const std::wstring from = tree.File(L"from.txt", "bytes");
    const std::wstring to = tree.Path(L"to.txt");
    const ImportHook hook{"CopyFileExW", &CopyInThreeParts};
    Win32FileSystem files;
};

TEST_F(CopyProgress, EachReport_CallsBackAndContinues) {
    int calls = 0;
    files.Copy(from, to, [&] { ++calls; });
    EXPECT_EQ(calls, 3);
    EXPECT_THAT(answers, ElementsAre(PROGRESS_CONTINUE, PROGRESS_CONTINUE, PROGRESS_CONTINUE));
    EXPECT_EQ(ReadBytes(to), "bytes");
}

TEST_F(CopyProgress, CallbackThrows_FinishesTheCopyQuietlyAndThrows) {
    int calls = 0;
    EXPECT_THROW(files.Copy(from, to,
                            [&] {
                                ++calls;
                                Throw(error_number::kDiskFull, L"text");
                            }),
                 RuntimeError);
    EXPECT_EQ(calls, 1);
    EXPECT_THAT(answers, ElementsAre(PROGRESS_CONTINUE, PROGRESS_QUIET));
    EXPECT_EQ(ReadBytes(to), "bytes");
}

TEST_F(CopyProgress, NoCallback_AsksForNoReports) {
    files.Copy(from, to, {});
    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(ReadBytes(to), "bytes");
}

DWORD failure = 0;

/// Leaves the beginning of a copy, where nothing is in its place, and fails.
BOOL WINAPI BreakOff(LPCWSTR from, LPCWSTR to, LPPROGRESS_ROUTINE, LPVOID, LPBOOL, DWORD) {
    CopyFileW(from, to, TRUE);
    SetLastError(failure);
    return FALSE;
}

class FailedCopying : public testing::Test {
  protected:
    /// The error of a copying that fails with this code.
    RuntimeError ErrorOf(DWORD code) {
        failure = code;
        return test::ErrorOf([&] { files.Copy(from, to, {}); });
    }

    const TempTree tree;
    const std::wstring from = tree.File(L"from.txt", "bytes");
    const std::wstring to = tree.Path(L"to.txt");
    const ImportHook hook{"CopyFileExW", &BreakOff};
    Win32FileSystem files;
};

TEST_F(FailedCopying, BeginningOfACopy_IsRemoved) {
    const RuntimeError error = ErrorOf(ERROR_CRC);
    EXPECT_EQ(error.Number(), error_number::kDeviceError);
    EXPECT_EQ(error.Path(), from);
    EXPECT_FALSE(Exists(to));
}

TEST_F(FailedCopying, BeginningOfAReadOnlyCopy_IsRemoved) {
    tree.SetAttributes(L"from.txt", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(ErrorOf(ERROR_HANDLE_DISK_FULL).Number(), error_number::kDiskFull);
    EXPECT_FALSE(Exists(to));
    EXPECT_TRUE(files.Stat(from)->isReadOnly);
}

TEST_F(FailedCopying, AccessDenied_NoFolderThere_IsPermissionDenied) {
    const RuntimeError error = ErrorOf(ERROR_ACCESS_DENIED);
    EXPECT_EQ(error.Number(), error_number::kPermissionDenied);
    EXPECT_EQ(error.Path(), from);
}

TEST_F(FailedCopying, AccessDenied_FolderThere_IsFileExists) {
    tree.Folder(L"to.txt");
    const RuntimeError error = ErrorOf(ERROR_ACCESS_DENIED);
    EXPECT_EQ(error.Number(), error_number::kAlreadyExists);
    EXPECT_EQ(error.Path(), to);
}

int deletions = 0;
BOOL WINAPI CountDeletion(LPCWSTR) {
    ++deletions;
    return FALSE;
}

TEST_F(FailedCopying, OtherFailure_FolderThere_IsNotTouched) {
    tree.Folder(L"to.txt");
    const ImportHook count("DeleteFileW", &CountDeletion);
    EXPECT_EQ(ErrorOf(ERROR_CRC).Number(), error_number::kDeviceError);
    EXPECT_TRUE(Exists(to));
    EXPECT_EQ(deletions, 0);
}

}  // namespace
}  // namespace vw::test
