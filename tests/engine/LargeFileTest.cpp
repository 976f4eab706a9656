// Drives of the older formats call themselves full for a file of 4 GiB, however much room they
// have.

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

constexpr std::uint64_t kFourGigabytes = 0x1'0000'0000;

/// A folder with a film between two small files. The disk calls itself full for the film.
class LargeFile : public testing::Test {
  protected:
    LargeFile() {
        world.tree.File(L"Work\\a.txt", "a", Day(1));
        film = world.tree.File(L"Work\\b film.avi", "", Day(1));
        world.tree.File(L"Work\\c.txt", "c", Day(1));
        world.List({L"Work\\"});
        // The room is not asked for before the run.
        world.drive.kind = DriveType::Removable;
    }
    // What the run copies of the folder.
    [[nodiscard]] Listing CopiesOfFilm(std::uint64_t size, std::optional<std::uint64_t> freeBytes) {
        EXPECT_TRUE(MakeLong(film, size));
        if (freeBytes) world.drive.freeBytes[world.Store()] = *freeBytes;
        EXPECT_EQ(world.Run().exitCode, error_number::kDiskFull);
        return world.Copies();
    }
    [[nodiscard]] bool IsCopyOfFilm(const FileOperation& operation) const {
        return operation.call == FileCall::Copy && operation.path == film;
    }
    void RefuseFilm() {
        world.files.FailFrom(1, error_number::kDiskFull, [this](const FileOperation& operation) {
            return IsCopyOfFilm(operation);
        });
    }

    std::wstring film;
    EngineFixture world;
    const Listing kOthers{
        {L"Work«0001»", kFolder}, {L"Work«0001»\\a.txt", "a"}, {L"Work«0001»\\c.txt", "c"}};
};

TEST_F(LargeFile, DriveHasRoomForIt_OthersAreCopied) {
    RefuseFilm();
    EXPECT_EQ(CopiesOfFilm(kFourGigabytes, kFourGigabytes), kOthers);
}

TEST_F(LargeFile, DriveHasNoRoomForIt_IsFull) {
    RefuseFilm();
    EXPECT_EQ(CopiesOfFilm(kFourGigabytes, kFourGigabytes - 1), Listing());
}

TEST_F(LargeFile, LargestThatFitsEveryDrive_DriveIsFull) {
    RefuseFilm();
    EXPECT_EQ(CopiesOfFilm(kFourGigabytes - 1, 2 * kFourGigabytes), Listing());
}

TEST_F(LargeFile, RoomIsUnknown_DriveIsFull) {
    world.files.FailFrom(1, error_number::kDiskFull,
                         [this, isRefused = false](const FileOperation& operation) mutable {
                             isRefused = isRefused || IsCopyOfFilm(operation);
                             return IsCopyOfFilm(operation) ||
                                    (isRefused && operation.call == FileCall::FreeSpace);
                         });
    EXPECT_EQ(CopiesOfFilm(kFourGigabytes, std::nullopt), Listing());
}

}  // namespace
}  // namespace vw::test
