// The progress of the system's copying. Not every system that these tests run on reports it.

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "platform/RuntimeError.h"
#include "platform/Win32FileSystem.h"
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

}  // namespace
}  // namespace vw::test
