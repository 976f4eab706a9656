// How a restore looks for a copy of what it is about to replace.

#include <gtest/gtest.h>

#include "tests/restore/RestoreFixture.h"
#include "tests/support/ForwardingFileSystem.h"

namespace vw::test {
namespace {

/// A disk on which something happens while the bytes of two files are compared.
class SlowComparison final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    bool HaveSameBytes(std::wstring_view first, std::wstring_view second,
                       const CopyProgress& progress) override {
        ++comparisons;
        meanwhile(progress);
        return Inner().HaveSameBytes(first, second, progress);
    }

    std::function<void(const CopyProgress&)> meanwhile;
    int comparisons = 0;
};

/// A file of a copy's length and date is in the way, so that bytes are compared.
class RestoreOverUnaskedFile : public Restore {
  protected:
    RestoreOverUnaskedFile() {
        tree.File(L"Elsewhere\\Report.doc", "STATE 3", {2024, 1, 3, 9, 0, 0});
        dialogs.Expect(tree.Path(L"Elsewhere\\Typed.doc"));
    }
    void RestoreTo() {
        System system = world.With(disk);
        Commands(system).mnuRestoreToClick();
    }

    SlowComparison disk{world.files};
};

TEST_F(RestoreOverUnaskedFile, BytesAreCompared_WindowsKeepWorking) {
    int yields = 0;
    disk.meanwhile = [&](const FileSystem::CopyProgress& progress) {
        const int before = world.pump.Yields();
        progress();
        yields += world.pump.Yields() - before;
    };
    RestoreTo();
    EXPECT_GT(disk.comparisons, 0);
    EXPECT_GE(yields, disk.comparisons);
}

TEST_F(RestoreOverUnaskedFile, CancelDuringAComparison_ComparesNoMore) {
    tree.SetDate(vault + L"\\Report«0002».doc", {2024, 1, 3, 9, 0, 0});
    disk.meanwhile = [&](const FileSystem::CopyProgress&) { state.cancel.Request(); };
    world.boxes.Expect(L"The restore was cancelled. Nothing was overwritten.");
    RestoreTo();
    EXPECT_EQ(disk.comparisons, 1);
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Report.doc")), "STATE 3");
}

// The date of what is in the way is that of a copy, but a folder is no file.
TEST_F(Restore, FolderIsInTheWay_IsKeptWhole) {
    tree.File(L"Elsewhere\\Report.doc\\mine.txt", "mine", {2024, 1, 3, 9, 0, 0});
    dialogs.Expect(tree.Path(L"Elsewhere\\Report.doc"));
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreToClick();
    EXPECT_FALSE(world.errors.Take().empty());
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Report.doc\\mine.txt")), "mine");
    EXPECT_EQ(ReadBytes(vault + L"\\Report«0021».doc\\mine.txt"), "mine");
}

}  // namespace
}  // namespace vw::test
