// A server that is down, a stick that was pulled: the item or the destination goes away while a
// copy is made. What was copied until then is no copy, and one word to the user is enough.

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"

namespace vw::test {
namespace {

const Lines kFiles{L"~\\Work\\b.txt", L"~\\Work\\c.txt", L"~\\Work\\Sub\\d.txt",
                   L"~\\Work\\Zlast\\e.txt"};

/// The n-th copying of a file.
OperationFilter CopyNumber(int n) {
    return [n, count = 0](const FileOperation& operation) mutable {
        return operation.call == FileCall::Copy && ++count == n;
    };
}

/// The listing of a folder of the copy in the making, `end` being the end of its path.
OperationFilter CheckOf(std::wstring end) {
    return [end = std::move(end)](const FileOperation& operation) {
        return operation.call == FileCall::List && operation.path.ends_with(end) &&
               operation.path.find(L".vwnew-") != std::wstring::npos;
    };
}

/// Whatever touches the folder, from the n-th copying of a file on.
OperationFilter TouchFromCopy(int n, std::wstring folder) {
    return [n, folder = std::move(folder), count = 0](const FileOperation& operation) mutable {
        if (operation.call == FileCall::Copy) ++count;
        return count >= n &&
               (operation.path.starts_with(folder) || operation.to.starts_with(folder));
    };
}

/// Two copies of the folder Work, which are all that are kept, and of a file; both have changed.
class GoneDrive : public testing::Test {
  protected:
    GoneDrive() {
        world_.List({L"Work\\", L"a.txt"}, 2);
        for (int step = 1; step <= 2; ++step) {
            Edit(step);
            EXPECT_EQ(world_.Run().exitCode, 0);
        }
        Edit(3);
        world_.List({L"Work\\"}, 2);
        before_ = Series();
    }

    void Edit(int step) const {
        const std::string content = std::to_string(step) + std::string(200, '.');
        for (const wchar_t* file : {L"Work\\b.txt", L"Work\\c.txt", L"Work\\Sub\\d.txt",
                                    L"Work\\Zlast\\e.txt", L"a.txt"}) {
            world_.tree.File(file, content, Day(step));
        }
    }

    /// The folder is nowhere from that moment on.
    void Unplug(const std::wstring& folder, const OperationFilter& moment) {
        unplugged_.clear();
        world_.files.OnOperation([=, this](const FileOperation& operation) {
            if (!unplugged_.empty() || !moment(operation)) return;
            unplugged_ = world_.Path(folder);
            world_.disk.Rename(unplugged_, unplugged_ + L" gone");
        });
    }
    void PlugIn() {
        world_.files.Heal();
        if (!unplugged_.empty()) world_.disk.Rename(unplugged_ + L" gone", unplugged_);
    }

    /// All that is in the destination but what another run will remove.
    [[nodiscard]] Tree Series() const {
        Tree series = ReadTree(world_.Store());
        // The system cannot delete the lock file of a drive that is gone.
        std::erase_if(series, [](const auto& node) {
            return node.first.find(L".vwnew-") != std::wstring::npos || node.first == kLockFileName;
        });
        return series;
    }

    /// What a run shows of Work that loses something at its n-th file.
    [[nodiscard]] Lines GoneAt(int n, const std::wstring& path) const {
        Lines lines{L"Backing: ~\\Work\\"};
        for (int file = 0; file < n; ++file) {
            lines.push_back(L"* Backing: " + kFiles[static_cast<std::size_t>(file)]);
        }
        return lines + Lines{L"! 76 BackupFile " + path};
    }

    void ExpectToldOnce(const RunResult& result, const std::wstring& path) const {
        ASSERT_EQ(result.errors.size(), 1U) << Joined(result.lines);
        EXPECT_EQ(result.errors.front().path, path);
        EXPECT_EQ(result.exitCode, error_number::kPathNotFound);
        EXPECT_EQ(std::count(result.lines.begin(), result.lines.end(), L"\tDone."), 0);
    }

    /// Nothing was lost, and the next run, with all in its place, makes the copy that is due.
    void ExpectRecovery() {
        EXPECT_EQ(Series(), before_);
        const Tree newest = ReadTree(world_.Store(L"Work«0001»"));
        EXPECT_EQ(world_.Run().exitCode, 0);
        EXPECT_EQ(ReadTree(world_.Store(L"Work«0001»")), ReadTree(world_.Path(L"Work")));
        EXPECT_EQ(ReadTree(world_.Store(L"Work«0002»")), newest);
        EXPECT_EQ(LeftOvers(world_), Lines());
    }

    /// Once more with the copies as they were before.
    void StartOver() {
        world_.tree.Remove(L"Store");
        world_.tree.Folder(L"Store");
        for (const auto& [path, node] : before_) {
            if (node.isFolder) {
                world_.tree.Folder(L"Store\\" + path);
            } else {
                world_.tree.File(L"Store\\" + path, node.bytes, PartsOf(node.date));
            }
        }
    }

    EngineFixture world_;
    Tree before_;
    std::wstring unplugged_;
};

TEST_F(GoneDrive, HoldsTheItem_IsReportedOnce_LosesNothing) {
    for (int file = 1; file <= 4; ++file) {
        SCOPED_TRACE(file);
        StartOver();
        Unplug(L"Work", CopyNumber(file));
        const RunResult result = world_.Run();
        EXPECT_EQ(Joined(result.lines), Joined(GoneAt(file, L"~\\Work\\") + kDone));
        ExpectToldOnce(result, world_.Path(L"Work\\"));
        EXPECT_EQ(LeftOvers(world_), Lines());
        PlugIn();
        ExpectRecovery();
    }
}

TEST_F(GoneDrive, HoldsTheItemAndThrows_IsReportedOnce_LosesNothing) {
    for (int file = 1; file <= 4; ++file) {
        SCOPED_TRACE(file);
        StartOver();
        world_.files.FailFrom(1, error_number::kDeviceError,
                              TouchFromCopy(file, world_.Path(L"Work")));
        const RunResult result = world_.Run();
        EXPECT_EQ(Joined(result.lines), Joined(GoneAt(file, L"~\\Work\\") + kDone));
        ExpectToldOnce(result, world_.Path(L"Work\\"));
        world_.files.Heal();
        ExpectRecovery();
    }
}

TEST_F(GoneDrive, HoldsTheDestination_IsReportedOnce_LosesNothing) {
    for (int file = 1; file <= 4; ++file) {
        SCOPED_TRACE(file);
        StartOver();
        Unplug(L"Store", CopyNumber(file));
        const RunResult result = world_.Run();
        EXPECT_EQ(Joined(result.lines), Joined(GoneAt(file, L"~\\Store") + kDone));
        ExpectToldOnce(result, world_.Store());
        PlugIn();
        ExpectRecovery();
    }
}

TEST_F(GoneDrive, HoldsTheDestinationAndThrows_IsReportedOnce) {
    for (int file = 1; file <= 4; ++file) {
        SCOPED_TRACE(file);
        StartOver();
        world_.files.FailFrom(1, error_number::kDeviceError, TouchFromCopy(file, world_.Store()));
        const RunResult result = world_.Run();
        EXPECT_EQ(Joined(result.lines), Joined(GoneAt(file, L"~\\Store") + kDone));
        ExpectToldOnce(result, world_.Store());
        world_.files.Heal();
        ExpectRecovery();
    }
}

TEST_F(GoneDrive, BetweenFoldersOfTheItem_IsReportedOnce) {
    // The first listing of the sub-folder takes its dates, the second its files.
    Unplug(L"Work", [count = 0](const FileOperation& operation) mutable {
        return operation.call == FileCall::List &&
               operation.path.find(L"Work\\Sub") != std::wstring::npos && ++count == 2;
    });
    const RunResult result = world_.Run();
    EXPECT_EQ(Joined(result.lines),
              Joined(Lines{L"Backing: ~\\Work\\", L"* Backing: ~\\Work\\b.txt",
                           L"* Backing: ~\\Work\\c.txt", L"! 76 BackupFolder ~\\Work\\"} +
                     kDone));
    ExpectToldOnce(result, world_.Path(L"Work\\"));
    PlugIn();
    ExpectRecovery();
}

TEST_F(GoneDrive, BetweenFoldersOfTheCopy_IsReportedOnce) {
    Unplug(L"Store", [](const FileOperation& operation) {
        return operation.call == FileCall::CreateFolder && operation.path.ends_with(L"\\Sub\\");
    });
    ExpectToldOnce(world_.Run(), world_.Store());
    PlugIn();
    ExpectRecovery();
}

TEST_F(GoneDrive, DuringTheCheckOfAFolder_IsReportedOnce) {
    // The sub-folder is the third that is checked, with a good copy of the first two files behind.
    for (const wchar_t* folder : {L"\\", L"\\Sub\\", L"\\Zlast\\"}) {
        StartOver();
        Unplug(L"Store", CheckOf(folder));
        ExpectToldOnce(world_.Run(), world_.Store());
        PlugIn();
        ExpectRecovery();
    }
}

TEST_F(GoneDrive, DuringTheCheckOfAFile_IsReportedOnce) {
    // All files are cut short, so that each is looked at.
    world_.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Stat && unplugged_.empty() &&
            operation.path.find(L".vwnew-") != std::wstring::npos &&
            operation.path.ends_with(L"b.txt")) {
            unplugged_ = world_.Store();
            world_.disk.Rename(unplugged_, unplugged_ + L" gone");
        }
        if (!CheckOf(L"\\")(operation) || !unplugged_.empty()) return;
        world_.tree.File(operation.path + L"b.txt", "short");
        world_.tree.File(operation.path + L"c.txt", "short");
    });
    ExpectToldOnce(world_.Run(), world_.Store());
    PlugIn();
    ExpectRecovery();
}

// The system's copy call may report success for what it could not read to the end.
TEST_F(GoneDrive, LastFileTruncatedUnnoticed_LosesNothing) {
    world_.files.TruncateNthCopy(4);
    Unplug(L"Work", CheckOf(L"\\Zlast\\"));
    const RunResult result = world_.Run();
    EXPECT_EQ(Joined(result.lines), Joined(GoneAt(4, L"~\\Work\\") + kDone));
    ExpectToldOnce(result, world_.Path(L"Work\\"));
    PlugIn();
    ExpectRecovery();
}

TEST_F(GoneDrive, FileItemTruncatedUnnoticed_LosesNothing) {
    world_.List({L"a.txt"}, 2);
    world_.files.TruncateNthCopy(1);
    Unplug(L"a.txt", [](const FileOperation& operation) {
        return operation.call == FileCall::Stat &&
               operation.path.find(L"a.vwnew-") != std::wstring::npos;
    });
    const RunResult result = world_.Run();
    EXPECT_EQ(Joined(result.lines), Joined(Lines{L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt",
                                                 L"! 53 BackupFile ~\\a.txt"} +
                                           kDone));
    PlugIn();
    EXPECT_EQ(Series(), before_);
    world_.ExpectRun(BackedUp(L"~\\a.txt"));
}

TEST_F(GoneDrive, HoldsTheDestination_FileItem_IsNamed) {
    world_.List({L"a.txt"}, 2);
    Unplug(L"Store", CopyNumber(1));
    const RunResult result = world_.Run();
    EXPECT_EQ(Joined(result.lines), Joined(Lines{L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt",
                                                 L"! 76 BackupFile ~\\Store"} +
                                           kDone));
    PlugIn();
    EXPECT_EQ(Series(), before_);
    world_.ExpectRun(BackedUp(L"~\\a.txt"));
}

TEST_F(GoneDrive, HoldsOneItem_NextIsBackedUp) {
    world_.List({L"Work\\", L"a.txt"}, 2);
    Unplug(L"Work", CopyNumber(2));
    EXPECT_EQ(Joined(world_.Run().lines),
              Joined(GoneAt(2, L"~\\Work\\") + BackedUp(L"~\\a.txt") + kDone));
}

TEST_F(GoneDrive, HoldsTheDestination_EndsTheRunAtTheNextItem) {
    world_.List({L"Work\\", L"a.txt"}, 2);
    Unplug(L"Store", CopyNumber(2));
    world_.boxes.Expect(world_.Store());
    const RunResult result = world_.Run();
    EXPECT_TRUE(result.ended);
    EXPECT_EQ(Joined(result.lines), Joined(GoneAt(2, L"~\\Store") + Lines{L"[EndAtOnce]"}));
    EXPECT_EQ(result.exitCode, error_number::kPathNotFound);
    PlugIn();
    EXPECT_EQ(Series(), before_);
}

TEST_F(GoneDrive, HoldsTheItem_GoneInEveryRun_KeepsAllCopies) {
    for (int run = 1; run <= 4; ++run) {
        Edit(2 + run);
        Unplug(L"Work", CopyNumber(run));
        ExpectToldOnce(world_.Run(), world_.Path(L"Work\\"));
        PlugIn();
        EXPECT_EQ(Series(), before_);
    }
}

// Where the item is, what cannot be read is left out, and the rest counts.
TEST_F(GoneDrive, UnreadableFile_OthersAreCopied) {
    world_.files.FailNth(2, error_number::kDeviceError, OnlyCalls({FileCall::Copy}));
    const RunResult result = world_.Run();
    ASSERT_EQ(result.errors.size(), 1U);
    EXPECT_EQ(result.errors.front().number, error_number::kDeviceError);
    EXPECT_EQ(result.errors.front().path, world_.Path(L"Work\\c.txt"));
    EXPECT_EQ(result.lines[result.lines.size() - 2], L"\tDone.");
    EXPECT_FALSE(Exists(world_.Store(L"Work«0001»\\c.txt")));
    EXPECT_EQ(ReadBytes(world_.Store(L"Work«0001»\\Zlast\\e.txt")).substr(0, 1), "3");
}

// A notebook that wakes gives the program its processor before its sticks and servers.
TEST_F(GoneDrive, Run_DestinationIsBackAfterWaking_MakesItsCopy) {
    const std::wstring store = world_.Store();
    world_.disk.Rename(store, store + L" gone");
    world_.clock.Wake();
    world_.pump.Restart();
    world_.pump.AtYield(8, [&] { world_.disk.Rename(store + L" gone", store); });
    const RunResult result = world_.Run();
    EXPECT_EQ(result.exitCode, 0) << Joined(result.lines);
    EXPECT_FALSE(result.ended);
    EXPECT_EQ(ReadTree(world_.Store(L"Work«0001»")), ReadTree(world_.Path(L"Work")));
}

TEST_F(GoneDrive, Run_DestinationStaysAwayAfterWaking_EndsAfterTenSeconds) {
    world_.tree.Remove(L"Store");
    world_.clock.Wake();
    world_.pump.Restart();
    world_.boxes.Expect(L"فشلت العملية بسبب عدم توفر مجلد النسخ إلى:");
    const RunResult result = world_.Run();
    EXPECT_TRUE(result.ended);
    EXPECT_GE(world_.pump.Waited(), 10'000U);
    EXPECT_LT(world_.pump.Waited(), 11'000U);
}

}  // namespace
}  // namespace vw::test
