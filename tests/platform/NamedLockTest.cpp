#include "platform/NamedLock.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "platform/RuntimeError.h"
#include "platform/SecurityDescriptor.h"
#include "platform/WindowsHeader.h"
#include "tests/support/ImportHook.h"

namespace vw {
namespace {

// A mutex belongs to a thread, so another thread replaces another process here; the real
// thing is among the tests of the whole program.
bool OtherCanTake(std::wstring_view purpose, std::wstring_view path) {
    bool taken = false;
    std::thread([&] {
        NamedLock lock(purpose, path);
        taken = lock.TryTake();
    }).join();
    return taken;
}

TEST(NamedLockTest, TryTake_PathIsLocked_ReturnsFalse) {
    NamedLock lock(L"test", L"C:\\Store");
    ASSERT_TRUE(lock.TryTake());
    EXPECT_FALSE(OtherCanTake(L"test", L"C:\\Store"));
}

TEST(NamedLockTest, TryTake_OtherSpellingOfThePath_ReturnsFalse) {
    NamedLock lock(L"test", L"C:\\Store");
    ASSERT_TRUE(lock.TryTake());
    EXPECT_FALSE(OtherCanTake(L"test", L"c:/STORE\\"));
}

TEST(NamedLockTest, TryTake_OtherPathOrPurpose_ReturnsTrue) {
    NamedLock lock(L"test", L"C:\\Store");
    ASSERT_TRUE(lock.TryTake());
    EXPECT_TRUE(OtherCanTake(L"test", L"C:\\Store2"));
    EXPECT_TRUE(OtherCanTake(L"test2", L"C:\\Store"));
}

TEST(SecurityDescriptorTest, TextWithoutRights_Throws) {
    EXPECT_THROW(SecurityDescriptor(L"nonsense"), RuntimeError);
}

std::wstring lockName;
HANDLE WINAPI RefuseLock(LPSECURITY_ATTRIBUTES, LPCWSTR name, DWORD, DWORD) {
    lockName = name;
    SetLastError(ERROR_ACCESS_DENIED);
    return nullptr;
}

// Two versions of the program keep out of each other's way by this name.
TEST(NamedLockTest, Name_IsThatOfEveryVersion) {
    const test::ImportHook refuse("CreateMutexExW", &RefuseLock);
    EXPECT_THROW(NamedLock(L"destination", L"e:\\store\\"), RuntimeError);
    EXPECT_EQ(lockName, L"Global\\Vaultwright-destination-dceeedcbce2eec87");
}

TEST(NamedLockTest, TryTake_IsHeldAlready_ReturnsTrue) {
    NamedLock lock(L"test", L"C:\\again");
    EXPECT_TRUE(lock.TryTake());
    EXPECT_TRUE(lock.TryTake());
    EXPECT_FALSE(OtherCanTake(L"test", L"C:\\again"));
}

int mutexesClosed = 0;
const test::ImportHook* closing = nullptr;
BOOL WINAPI CountClosed(HANDLE handle) {
    ++mutexesClosed;
    return closing->Original<decltype(CloseHandle)>()(handle);
}

TEST(NamedLockTest, Destructor_ClosesTheMutex) {
    const test::ImportHook close("CloseHandle", &CountClosed);
    closing = &close;
    mutexesClosed = 0;
    { const NamedLock lock(L"test", L"C:\\closed"); }
    EXPECT_EQ(mutexesClosed, 1);
}

// A mutex that its thread has taken twice is free only when it was given back twice.
TEST(NamedLockTest, Destructor_LockWasTakenTwice_ReleasesIt) {
    NamedLock kept(L"test", L"C:\\twice");
    {
        NamedLock lock(L"test", L"C:\\twice");
        ASSERT_TRUE(lock.TryTake());
        ASSERT_TRUE(lock.TryTake());
    }
    EXPECT_TRUE(OtherCanTake(L"test", L"C:\\twice"));
}

TEST(NamedLockTest, Destructor_ReleasesTheLock) {
    auto lock = std::make_unique<NamedLock>(L"test", L"C:\\Store");
    ASSERT_TRUE(lock->TryTake());
    lock.reset();
    EXPECT_TRUE(OtherCanTake(L"test", L"C:\\Store"));
}

TEST(NamedLockTest, TakeWithin_LockIsReleasedMeanwhile_ReturnsTrue) {
    auto lock = std::make_unique<NamedLock>(L"test", L"C:\\Store");
    ASSERT_TRUE(lock->TryTake());
    bool taken = false;
    std::thread other([&] {
        NamedLock waiting(L"test", L"C:\\Store");
        EXPECT_FALSE(waiting.TakeWithin(1));
        taken = waiting.TakeWithin(60'000);
    });
    Sleep(50);
    lock.reset();
    other.join();
    EXPECT_TRUE(taken);
}

TEST(NamedLockTest, OwningThreadEnds_OthersCanTakeTheLock) {
    std::unique_ptr<NamedLock> left;
    std::thread([&] {
        left = std::make_unique<NamedLock>(L"test", L"C:\\Left");
        EXPECT_TRUE(left->TryTake());
    }).join();
    EXPECT_TRUE(OtherCanTake(L"test", L"C:\\Left"));
}

}  // namespace
}  // namespace vw
