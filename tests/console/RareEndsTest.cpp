// Ends of a backup that no test can bring about with the real program in a short time.

#include "platform/RuntimeError.h"
#include "platform/Utf8.h"
#include "tests/console/VerbTest.h"
#include "tests/support/ImportHook.h"
#include "tests/support/OtherRun.h"

namespace vw::test {
namespace {

class VwRareEnds : public VerbTest {
  protected:
    VwRareEnds() {
        tree.File(L"a.txt", "123", Day(1));
        MakeList({L"a.txt"});
    }
};

TEST_F(VwRareEnds, FullDisk_EndsWith61AndThePath) {
    files.FillDiskFrom(1);
    EXPECT_EQ(RunBackup(), error_number::kDiskFull);
    const Texts said = ShortLines();
    ASSERT_EQ(said.size(), 4U);
    EXPECT_TRUE(said[1].starts_with(L"error: ~\\")) << ToUtf8(said[1]);
    EXPECT_TRUE(said[1].ends_with(L": " + DescriptionOf(error_number::kDiskFull)));
    EXPECT_EQ(said[2], L"failed: ~\\a.txt");
    EXPECT_FALSE(Exists(Stored(L"a«0001».txt")));
}

ULONGLONG WINAPI AMinuteLater() {
    constexpr ULONGLONG kMinute = 60'000;
    static ULONGLONG now = 0;
    now += kMinute;
    return now;
}

TEST_F(VwRareEnds, AnotherRunForTenMinutes_EndsWith170) {
    const OtherRun other(vault);
    const ImportHook clock("GetTickCount64", &AMinuteLater);
    EXPECT_EQ(RunBackup(), error_number::kDestinationBusy);
    Texts said = ShortLines();
    ASSERT_FALSE(said.empty());
    EXPECT_TRUE(said.back().starts_with(L"0 copied, 0 unchanged, 0 missing, 0 refused, 1 failed;"));
    said.pop_back();
    EXPECT_EQ(said, (Texts{L"Backing up ~\\list.vwl", L"Waiting for another backup in: ~\\Vault",
                           L"Skipped, another backup is using: ~\\Vault",
                           L"error: ~\\Vault: Another run is using the destination",
                           L"failed: ~\\a.txt"}));
    EXPECT_FALSE(Exists(Stored(L"a«0001».txt")));
}

}  // namespace
}  // namespace vw::test
