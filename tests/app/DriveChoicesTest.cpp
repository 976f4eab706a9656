#include "app/DriveChoices.h"

#include <gmock/gmock.h>

#include <atomic>
#include <map>
#include <thread>

#include "platform/Handle.h"
#include "platform/RuntimeError.h"
#include "platform/Win32FileSystem.h"
#include "tests/support/ForwardingFileSystem.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr std::uint64_t kGibibyte = 1073741824;

/// Drives with the free space that a test says; those that it does not name are not ready.
class DrivesWithRoom final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    std::map<std::wstring, std::uint64_t> room;

    std::uint64_t FreeSpace(std::wstring_view path) override {
        const auto found = room.find(std::wstring(path));
        if (found == room.end()) Throw(error_number::kNotReady, path);
        return found->second;
    }
};

/// Network drives whose server is gone: they answer when the test lets them.
class DeadDrives final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    DriveType DriveTypeOf(std::wstring_view) override {
        ++questions;
        return DriveType::Network;
    }
    std::uint64_t FreeSpace(std::wstring_view) override {
        constexpr DWORD kLongest = 20000;
        WaitForSingleObject(release.Get(), kLongest);
        ++answered;
        return kGibibyte + 1;
    }

    KernelHandle release{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    int questions = 0;
    std::atomic<int> answered = 0;
};

class Drives : public testing::Test {
  protected:
    /// A drive behind C: that this machine has.
    static std::wstring Another() {
        const DWORD present = GetLogicalDrives();
        for (wchar_t letter = L'Z'; letter > L'C'; --letter) {
            if ((present >> (letter - L'A') & 1U) != 0) return {letter, L':'};
        }
        return {};
    }

    Win32FileSystem disk;
    DrivesWithRoom files{disk};
    const std::wstring another = Another();
};

TEST_F(Drives, OffersAAndCOfAnyKind) {
    EXPECT_THAT(DriveChoices(files), ElementsAre(L"A:", L"C:"));
}

TEST_F(Drives, OtherDrive_MoreThanAGibibyteFree_IsOffered) {
    if (another.empty()) GTEST_SKIP() << "this machine has no other drive";
    files.room[another + L"\\"] = kGibibyte;
    EXPECT_THAT(DriveChoices(files), Not(Contains(another)));
    files.room[another + L"\\"] = kGibibyte + 1;
    EXPECT_THAT(DriveChoices(files), ElementsAre(L"A:", L"C:", another));
}

TEST_F(Drives, NetworkDriveThatDoesNotAnswer_IsLeftOut) {
    if (another.empty()) GTEST_SKIP() << "this machine has no other drive";
    DeadDrives dead(disk);
    EXPECT_THAT(DriveChoices(dead), ElementsAre(L"A:", L"C:"));
    SetEvent(dead.release.Get());
    EXPECT_GT(dead.questions, 0);
    while (dead.answered < dead.questions) Sleep(1);
}

TEST_F(Drives, NetworkDriveThatAnswersInTime_IsOffered) {
    if (another.empty()) GTEST_SKIP() << "this machine has no other drive";
    DeadDrives slow(disk);
    std::thread answer([&] {
        Sleep(50);
        SetEvent(slow.release.Get());
    });
    EXPECT_THAT(DriveChoices(slow), Contains(another));
    answer.join();
}

}  // namespace
}  // namespace vw::test
