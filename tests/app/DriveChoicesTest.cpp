#include "app/DriveChoices.h"

#include <gmock/gmock.h>

#include <map>

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
        if (found == room.end()) Raise(error_number::kNotReady, path);
        return found->second;
    }
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

TEST_F(Drives, AAndCAreOfferedWhateverTheyAre) {
    EXPECT_THAT(DriveChoices(files), ElementsAre(L"A:", L"C:"));
}

TEST_F(Drives, OthersNeedMoreThanAGibibyteOfRoom) {
    if (another.empty()) GTEST_SKIP() << "this machine has no other drive";
    files.room[another + L"\\"] = kGibibyte;
    EXPECT_THAT(DriveChoices(files), Not(Contains(another)));
    files.room[another + L"\\"] = kGibibyte + 1;
    EXPECT_THAT(DriveChoices(files), ElementsAre(L"A:", L"C:", another));
}

}  // namespace
}  // namespace vw::test
