// Files whose writing, reading or opening the system breaks off or refuses.

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "platform/HeldFile.h"
#include "platform/RuntimeError.h"
#include "platform/Win32FileSystem.h"
#include "tests/support/ErrorNumber.h"
#include "tests/support/ImportHook.h"
#include "tests/support/TempTree.h"

namespace vw::test {
namespace {

const ImportHook* original = nullptr;
DWORD failure = 0;
std::wstring written;
bool couldBeRead = false;

/// Takes a few bytes, as a disk that is getting full; then none, or fails with `failure`.
BOOL WINAPI WriteLittle(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD count, LPOVERLAPPED later) {
    const HANDLE reader =
        CreateFileW(written.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, 0, nullptr);
    couldBeRead = reader != INVALID_HANDLE_VALUE;
    if (couldBeRead) CloseHandle(reader);
    if (size > 5) {
        return original->Original<decltype(WriteFile)>()(file, bytes, 5, count, later);
    }
    *count = 0;
    SetLastError(failure);
    return failure == 0 ? TRUE : FALSE;
}

BOOL WINAPI RefuseFlush(HANDLE) {
    SetLastError(ERROR_CRC);
    return FALSE;
}

class FailingWriting : public testing::Test {
  protected:
    FailingWriting() { written = path; }

    int Write(FileSystem::Flush flush = FileSystem::Flush::No) {
        return NumberOf([&] { files.Write(path, "0123456789", flush); });
    }

    const TempTree tree;
    const std::wstring path = tree.Path(L"a.txt");
    Win32FileSystem files;
};

TEST_F(FailingWriting, BrokenOff_ThrowsAndLeavesNoFile) {
    const ImportHook write("WriteFile", &WriteLittle);
    original = &write;
    failure = ERROR_CRC;
    EXPECT_EQ(Write(), error_number::kDeviceError);
    EXPECT_FALSE(Exists(path));
    EXPECT_FALSE(couldBeRead) << "half of a file is nobody's to read";
}

TEST_F(FailingWriting, DiskTakesNothingMore_IsDiskFull) {
    const ImportHook write("WriteFile", &WriteLittle);
    original = &write;
    failure = 0;
    EXPECT_EQ(Write(), error_number::kDiskFull);
    EXPECT_FALSE(Exists(path));
}

TEST_F(FailingWriting, FlushRefused_ThrowsAndLeavesNoFile) {
    const ImportHook flush("FlushFileBuffers", &RefuseFlush);
    EXPECT_EQ(Write(FileSystem::Flush::Yes), error_number::kDeviceError);
    EXPECT_FALSE(Exists(path));
    EXPECT_EQ(Write(FileSystem::Flush::No), 0) << "without a wish it is not asked";
    EXPECT_EQ(ReadBytes(path), "0123456789");
}

/// Reads at most 100,000 bytes at a time, as pipes and servers may.
BOOL WINAPI ReadLittle(HANDLE file, LPVOID bytes, DWORD size, LPDWORD count, LPOVERLAPPED later) {
    return original->Original<decltype(ReadFile)>()(file, bytes, std::min<DWORD>(size, 100'000),
                                                    count, later);
}

BOOL WINAPI RefuseRead(HANDLE, LPVOID, DWORD, LPDWORD count, LPOVERLAPPED) {
    *count = 0;
    SetLastError(ERROR_CRC);
    return FALSE;
}

TEST(ReadingInSmallParts, Comparison_ComparesEveryByte) {
    const TempTree tree;
    std::string bytes(600'000, 'x');
    for (std::size_t i = 0; i < bytes.size(); i += 1000) bytes[i] = static_cast<char>('a' + i % 23);
    std::string changed = bytes;
    changed[300'000] = 'A';
    const std::wstring first = tree.File(L"a", bytes);
    const ImportHook read("ReadFile", &ReadLittle);
    original = &read;
    Win32FileSystem files;
    EXPECT_TRUE(files.HaveSameBytes(first, tree.File(L"b", bytes), {}));
    EXPECT_FALSE(files.HaveSameBytes(first, tree.File(L"c", changed), {}));
}

TEST(FailingReading, ReadAndComparison_Throw) {
    const TempTree tree;
    const std::wstring path = tree.File(L"a", "bytes");
    const ImportHook read("ReadFile", &RefuseRead);
    Win32FileSystem files;
    EXPECT_EQ(NumberOf([&] { return files.Read(path); }), error_number::kDeviceError);
    EXPECT_EQ(NumberOf([&] { return files.HaveSameBytes(path, path, {}); }),
              error_number::kDeviceError);
}

/// How each try to open a file ends: a code, or nothing for success.
std::vector<std::optional<DWORD>> ends;
std::vector<bool> hadRights;

HANDLE WINAPI OpenAsPlanned(LPCWSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES rights,
                            DWORD how, DWORD flags, HANDLE like) {
    EXPECT_EQ(sharing, 0U);
    hadRights.push_back(rights != nullptr);
    const std::optional<DWORD> end = ends.at(hadRights.size() - 1);
    if (!end) {
        return original->Original<decltype(CreateFileW)>()(path, access, sharing, rights, how,
                                                           flags, like);
    }
    SetLastError(*end);
    return INVALID_HANDLE_VALUE;
}

class RefusedHolding : public testing::Test {
  protected:
    /// Holds a file whose opening ends in these ways; gives the number of the error, or 0.
    int Hold(const std::vector<std::optional<DWORD>>& planned) {
        ends = planned;
        hadRights.clear();
        const ImportHook open("CreateFileW", &OpenAsPlanned);
        original = &open;
        return NumberOf([&] { held = HoldFile(path); });
    }

    const TempTree tree;
    const std::wstring path = tree.Path(L"lock");
    std::unique_ptr<HeldFile> held;
};

using Tries = std::vector<bool>;

TEST_F(RefusedHolding, DiskWithoutRights_IsHeldWithoutThem) {
    for (const DWORD code : {ERROR_NOT_SUPPORTED, ERROR_INVALID_PARAMETER, ERROR_ACCESS_DENIED}) {
        EXPECT_EQ(Hold({code, std::nullopt}), 0) << code;
        EXPECT_EQ(hadRights, (Tries{true, false}));
        EXPECT_TRUE(Exists(path));
        held.reset();
        EXPECT_FALSE(Exists(path));
    }
}

TEST_F(RefusedHolding, ReadOnlyFile_IsHeldOnceItsMarkIsGone) {
    tree.File(L"lock");
    tree.SetAttributes(L"lock", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Hold({DWORD{ERROR_ACCESS_DENIED}, std::nullopt}), 0);
    EXPECT_EQ(hadRights, (Tries{true, true}));
}

TEST_F(RefusedHolding, HeldByAnother_IsTriedOnce) {
    EXPECT_EQ(Hold({DWORD{ERROR_SHARING_VIOLATION}}), error_number::kPermissionDenied);
    EXPECT_EQ(hadRights, (Tries{true}));
}

TEST_F(RefusedHolding, ReadOnlyFileOfAnother_HasTheLastError) {
    tree.File(L"lock");
    tree.SetAttributes(L"lock", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Hold({DWORD{ERROR_ACCESS_DENIED}, DWORD{ERROR_DISK_FULL}}), error_number::kDiskFull);
    EXPECT_EQ(hadRights, (Tries{true, true}));
}

TEST_F(RefusedHolding, DiskWithoutRights_Full_HasTheLastError) {
    EXPECT_EQ(Hold({DWORD{ERROR_NOT_SUPPORTED}, DWORD{ERROR_DISK_FULL}}), error_number::kDiskFull);
}

}  // namespace
}  // namespace vw::test
