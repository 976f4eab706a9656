// What a virus scanner, an indexer or a window of Explorer has open for a while is waited for. The
// clock is the test's own: nothing here takes real time.

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "platform/SystemError.h"
#include "platform/WindowsHeader.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"

namespace vw::test {
namespace {

/// A disk on which calls that `isHeld` picks fail with a code of the system until the clock shows
/// `until`.
class ScannedDisk final : public ForwardingFileSystem {
  public:
    ScannedDisk(FileSystem& inner, const Clock& clock)
        : ForwardingFileSystem(inner), clock_(clock) {}

    void Rename(std::wstring_view from, std::wstring_view to) override {
        Refuse(FileCall::Rename, from, to);
        Inner().Rename(from, to);
    }
    void Replace(std::wstring_view from, std::wstring_view to) override {
        Refuse(FileCall::Replace, from, to);
        Inner().Replace(from, to);
    }
    void RemoveFolder(std::wstring_view path) override {
        Refuse(FileCall::RemoveFolder, path, {});
        Inner().RemoveFolder(path);
    }

    void HoldFor(std::uint64_t milliseconds, std::function<bool(const FileOperation&)> isHeld,
                 DWORD code = ERROR_ACCESS_DENIED) {
        until_ = clock_.Milliseconds() + milliseconds;
        isHeld_ = std::move(isHeld);
        code_ = code;
    }

  private:
    void Refuse(FileCall call, std::wstring_view path, std::wstring_view to) {
        if (clock_.Milliseconds() >= until_) return;
        if (isHeld_({call, std::wstring(path), std::wstring(to)})) RaiseCode(code_, path);
    }

    const Clock& clock_;
    std::uint64_t until_ = 0;
    DWORD code_ = 0;
    std::function<bool(const FileOperation&)> isHeld_;
};

class Scanner : public testing::Test {
  protected:
    void Version(int number) const {
        world.tree.File(L"a.txt", std::to_string(number), Day(number));
        world.List({L"a.txt"});
    }

    /// Frees what `handle` holds when the run has waited so long.
    void FreeAfter(std::uint64_t milliseconds, FileHandle& handle) {
        world.pump.AtEachYield([this, milliseconds, &handle] {
            if (world.pump.Waited() >= milliseconds) handle.Reset();
        });
    }

    EngineFixture world;
    ScannedDisk disk{world.drive, world.clock};

    RunResult RunOnScannedDisk() {
        world.host.log.clear();
        System scanned{disk,        world.pump,       world.boxes,
                       world.host,  world.exitStatus, world.programEnd,
                       world.clock, world.ansi};
        CPackage engine(scanned, world.state, world.host, world.host);
        engine.BackupAll();
        RunResult result;
        result.lines = world.host.log;
        result.errors = world.errors.Take();
        result.exitCode = world.exitStatus.Code();
        return result;
    }
};

TEST_F(Scanner, HoldsAFinishedCopyForHalfAMinute_CopyIsMade) {
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.List({L"Work\\"});
    disk.HoldFor(29'000, [](const FileOperation& operation) {
        return operation.to.find(L".vwready-") != std::wstring::npos;
    });
    const RunResult result = RunOnScannedDisk();
    EXPECT_EQ(result.exitCode, 0) << Joined(result.lines);
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder}, {L"Work«0001»\\a.txt", "a"}}));
}

TEST_F(Scanner, HoldsAnOldCopyForSeconds_CopiesRotate) {
    Version(1);
    EXPECT_EQ(world.Run().exitCode, 0);
    Version(2);
    FileHandle reader = HoldInPlace(world.Store(L"a«0001».txt"));
    FreeAfter(9000, reader);
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "2"}, {L"a«0002».txt", "1"}}));
}

TEST_F(Scanner, HoldsACommentForSeconds_ItIsReadAndReplaced) {
    Version(1);
    EXPECT_EQ(world.Run().exitCode, 0);
    {
        FileHandle reader = HoldOpen(world.Store(L"a«0001».txt.vwc"));
        FreeAfter(5000, reader);
        world.ExpectRun(NoChange(L"~\\a.txt"));
    }
    world.pump.Restart();
    Version(2);
    FileHandle reader = HoldInPlace(world.Store(L"a«0001».txt.vwc"));
    FreeAfter(5000, reader);
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_TRUE(world.Comment(L"a«0001».txt").find("01/01/2010-00:02:02") != std::string::npos);
}

// Whatever comes next: a run, a single item, or work of the copies browser.
TEST_F(Scanner, HoldsACopyForGood_NextWorkWaitsAgain) {
    Version(1);
    EXPECT_EQ(world.Run().exitCode, 0);
    Version(2);
    const std::wstring copy = world.Store(L"a«0001».txt");
    const FileHandle reader = HoldInPlace(copy);
    world.With([&](CPackage& engine) {
        const std::function<void()> works[] = {
            [&] { engine.BackupAll(); }, [&] { engine.BackupAll(); },
            [&] { engine.BackupPath(world.Path(L"a.txt"), 0, false, false); },
            [&] {
                EXPECT_TRUE(engine.InDestination(
                    world.Store(), [&] { EXPECT_THROW(engine.DeleteCopy(copy), RuntimeError); }));
            }};
        for (const auto& work : works) {
            const std::uint64_t before = world.pump.Waited();
            work();
            EXPECT_GE(world.pump.Waited() - before, 10'000U);
        }
    });
}

TEST_F(Scanner, HoldsCopiesForGood_OnlyTheFirstIsWaitedForLong) {
    const Lines items{L"a.txt", L"b.txt", L"c.txt", L"d.txt"};
    world.List(items);
    std::vector<FileHandle> readers;
    for (const std::wstring& item : items) world.tree.File(item, "1", Day(1));
    EXPECT_EQ(world.Run().exitCode, 0);
    for (const std::wstring& item : items) {
        world.tree.File(item, "2", Day(2));
        readers.push_back(HoldInPlace(world.Store(item.substr(0, 1) + L"«0001».txt")));
    }
    EXPECT_EQ(world.Run().exitCode, error_number::kPermissionDenied);
    EXPECT_GE(world.pump.Waited(), 10'000U);
    EXPECT_LT(world.pump.Waited(), 10'000U + 3 * 1000U);
    // The new copies wait beside the old ones; the next run puts them in their places.
    EXPECT_EQ(world.Copies().size(), 2 * items.size());
    readers.clear();
    EXPECT_EQ(world.Run().exitCode, 0);
    for (const std::wstring& item : items) {
        EXPECT_EQ(ReadBytes(world.Store(item.substr(0, 1) + L"«0001».txt")), "2");
    }
}

TEST_F(Scanner, KeepsWhatWasRemovedInItsFolder_FolderGoesToo) {
    world.List({L"Work\\"}, 1);
    world.tree.File(L"Work\\a.txt", "1", Day(1));
    EXPECT_EQ(world.Run().exitCode, 0);
    world.tree.File(L"Work\\a.txt", "2", Day(2));
    disk.HoldFor(
        5000,
        [](const FileOperation& operation) { return operation.call == FileCall::RemoveFolder; },
        ERROR_DIR_NOT_EMPTY);
    EXPECT_EQ(RunOnScannedDisk().exitCode, 0);
    EXPECT_TRUE(LeftOvers(world).empty());
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder}, {L"Work«0001»\\a.txt", "2"}}));
}

TEST_F(Scanner, HoldsTheFileThatARestoreReplaces_ItIsRestored) {
    Version(1);
    EXPECT_EQ(world.Run().exitCode, 0);
    Version(2);
    FileHandle reader = HoldInPlace(world.Path(L"a.txt"));
    FreeAfter(9000, reader);
    const RunResult result = world.With([&](CPackage& engine) {
        engine.Extract(world.Store(L"a«0001».txt"), world.Path(), false);
    });
    EXPECT_TRUE(result.errors.empty());
    EXPECT_EQ(ReadBytes(world.Path(L"a.txt")), "1");
}

TEST_F(Scanner, Cancel_EndsTheWait) {
    Version(1);
    EXPECT_EQ(world.Run().exitCode, 0);
    Version(2);
    const FileHandle reader = HoldInPlace(world.Store(L"a«0001».txt"));
    world.pump.AtEachYield([&] {
        if (world.pump.Waited() >= 2000) world.state.cancel.Request();
    });
    EXPECT_FALSE(world.Run().errors.empty());
    EXPECT_LT(world.pump.Waited(), 4000U);
    // The new copy waits beside the old one.
    EXPECT_EQ(world.Copies().size(), 2U);
    EXPECT_EQ(ReadBytes(world.Store(L"a«0001».txt")), "1");
}

}  // namespace
}  // namespace vw::test
