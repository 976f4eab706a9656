#include <gtest/gtest.h>

#include <algorithm>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

// Two good copies of a file and of a folder, and both changed since.
void MakeHistory(EngineFixture& world, int copies = 3) {
    world.List({L"a.txt", L"Work\\"}, copies);
    for (int step = 1; step <= 3; ++step) {
        const std::string content = std::to_string(step) + std::string(200, '.');
        world.tree.File(L"a.txt", content, Day(step));
        for (const wchar_t* file : {L"b.txt", L"c.txt", L"Sub\\d.txt"}) {
            world.tree.File(L"Work\\" + std::wstring(file), content, Day(step));
        }
        if (step < 3) {
            EXPECT_EQ(world.Run().exitCode, 0);
        }
    }
}

const Lines kWorkFiles{L"~\\Work\\b.txt", L"~\\Work\\c.txt", L"~\\Work\\Sub\\d.txt"};

TEST(FailedCopy, OneCopyIsKept_FailureLeavesIt) {
    EngineFixture world;
    MakeHistory(world, 1);
    const Tree before = ReadTree(world.Store());
    world.drive.copyCode = ERROR_CRC;
    world.Run();
    EXPECT_EQ(ReadTree(world.Store()), before);
}

TEST(FailedCopy, FileStaysLocked_KeepsAllCopies) {
    EngineFixture world;
    MakeHistory(world, 2);
    world.List({L"a.txt"}, 2);
    const Tree before = ReadTree(world.Store());
    {
        const FileHandle held = HoldOpen(world.Path(L"a.txt"));
        for (int run = 0; run < 4; ++run) {
            const RunResult result = world.Run();
            EXPECT_EQ(Joined(result.lines),
                      Joined({L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt",
                              L"! 70 BackupFile ~\\a.txt", L"[BusyHide true]"}));
            EXPECT_EQ(result.exitCode, error_number::kPermissionDenied);
            EXPECT_EQ(ReadTree(world.Store()), before);
        }
    }
    world.ExpectRun(BackedUp(L"~\\a.txt"));
}

TEST(FailedCopy, FileIsTruncated_CopyIsRemoved) {
    EngineFixture world;
    MakeHistory(world);
    const Tree before = ReadTree(world.Store());
    world.files.TruncateNthCopy(1);
    world.List({L"a.txt"});
    world.ExpectRun({L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt", L"! 57 BackupFile ~\\a.txt"});
    EXPECT_EQ(ReadTree(world.Store()), before);
    world.files.Heal();
    world.ExpectRun(BackedUp(L"~\\a.txt"));
}

TEST(FailedCopy, FileMissingAfterwards_IsReported) {
    EngineFixture world;
    MakeHistory(world);
    const Tree before = ReadTree(world.Store());
    world.files.IgnoreNth(1, OnlyCalls({FileCall::Copy}));
    world.List({L"a.txt"});
    world.ExpectRun({L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt", L"! 57 BackupFile ~\\a.txt"});
    EXPECT_EQ(ReadTree(world.Store()), before);
}

TEST(FailedCopy, CutShortByAFullDisk_IsReportedAsFull) {
    EngineFixture world;
    MakeHistory(world);
    const Tree before = ReadTree(world.Store());
    world.drive.kind = DriveType::Removable;
    world.drive.freeBytes[world.Store()] = 100;
    for (const wchar_t* item : {L"a.txt", L"Work\\"}) {
        world.files.TruncateNthCopy(1);
        world.List({item});
        const RunResult result = world.Run();
        ASSERT_EQ(result.errors.size(), 1U);
        EXPECT_EQ(result.errors[0].number, error_number::kDiskFull);
        EXPECT_EQ(ReadTree(world.Store()), before);
    }
}

TEST(FailedCopy, OneFileOfAFolder_OthersAreCopied) {
    EngineFixture world;
    MakeHistory(world);
    world.List({L"Work\\"});
    world.files.TruncateNthCopy(2);
    world.ExpectRun({L"Backing: ~\\Work\\", L"* Backing: ~\\Work\\b.txt",
                     L"* Backing: ~\\Work\\c.txt", L"! 57 BackupFile ~\\Work\\c.txt",
                     L"* Backing: ~\\Work\\Sub\\d.txt",
                     L"Files are missing, copy 1 is incomplete: ~\\Work\\", L"\tDone."});
    EXPECT_FALSE(Exists(world.Store(L"Work«0001»\\c.txt")));
    EXPECT_TRUE(Exists(world.Store(L"Work«0001»\\b.txt")));
    EXPECT_TRUE(Exists(world.Store(L"Work«0001»\\Sub\\d.txt")));
    EXPECT_TRUE(Exists(world.Store(L"Work«0003»\\c.txt")));
}

TEST(FailedCopy, EveryFileOfAFolder_KeepsTheSeries) {
    EngineFixture world;
    MakeHistory(world);
    world.List({L"Work\\"});
    const Tree before = ReadTree(world.Store());
    world.files.FailFrom(1, error_number::kPermissionDenied, OnlyCalls({FileCall::Copy}));
    const RunResult result = world.Run();
    EXPECT_EQ(result.errors.size(), 3U);
    EXPECT_EQ(result.lines.back(), L"[BusyHide true]");
    EXPECT_EQ(std::count(result.lines.begin(), result.lines.end(), L"\tDone."), 0);
    EXPECT_EQ(ReadTree(world.Store()), before);
}

TEST(FailedCopy, CutShortThoughItHasRoom_IsNotReportedAsFull) {
    EngineFixture world;
    MakeHistory(world);
    world.drive.kind = DriveType::Removable;
    world.drive.freeBytes[world.Store()] = 201;
    world.files.TruncateNthCopy(1);
    world.List({L"a.txt"});
    EXPECT_EQ(world.Run().exitCode, error_number::kDeviceError);
}

TEST(FailedCopy, FullDisk_EndsTheItemAndLeavesNothing) {
    for (int file = 1; file <= 3; ++file) {
        EngineFixture world;
        MakeHistory(world);
        world.tree.File(L"next.txt", "next", Day(1));
        world.List({L"Work\\", L"next.txt"});
        const Tree before = ReadTree(world.Store());
        world.files.FailNth(file, error_number::kDiskFull, OnlyCalls({FileCall::Copy}));
        Lines expected{L"Backing: ~\\Work\\"};
        for (int i = 0; i < file; ++i) {
            expected.push_back(L"* Backing: " + kWorkFiles[static_cast<std::size_t>(i)]);
        }
        const RunResult result = world.Run();
        ASSERT_EQ(result.errors.size(), 1U);
        const std::wstring& path = result.errors[0].path;
        expected.push_back(L"! 61 BackupFile " + world.host.Short(path));
        EXPECT_EQ(Joined(result.lines), Joined(expected + BackedUp(L"~\\next.txt") + kDone));
        EXPECT_EQ(result.exitCode, error_number::kDiskFull);
        world.tree.Remove(L"Store\\next«0001».txt");
        world.tree.Remove(L"Store\\next«0001».txt.vwc");
        EXPECT_EQ(ReadTree(world.Store()), before);
    }
}

TEST(FailedCopy, FullDiskAtASubFolder_LeavesNothing) {
    EngineFixture world;
    MakeHistory(world);
    world.tree.Folder(L"Work\\Zlast");
    world.List({L"Work\\"});
    const Tree before = ReadTree(world.Store());
    for (int folder = 1; folder <= 3; ++folder) {
        world.files.FailNth(folder, error_number::kDiskFull, OnlyCalls({FileCall::CreateFolder}));
        const RunResult result = world.Run();
        ASSERT_EQ(result.errors.size(), 1U);
        EXPECT_EQ(result.exitCode, error_number::kDiskFull);
        EXPECT_EQ(ReadTree(world.Store()), before) << folder;
    }
}

TEST(FailedCopy, FullDiskAndATruncatedFile_LeavesNothing) {
    EngineFixture world;
    world.List({L"Work\\"});
    world.tree.File(L"Work\\1 large.txt", std::string(5000, 'l'), Day(1));
    world.tree.File(L"Work\\2 small.txt", std::string(10, 's'), Day(1));
    world.tree.File(L"Work\\3.txt", "3", Day(1));
    world.drive.kind = DriveType::Removable;
    world.drive.freeBytes[world.Store()] = 1000;
    world.files.OnOperation([&](const FileOperation& operation) {
        // Both are cut short by hand, behind the copy: the listing that checks them comes next.
        if (operation.call != FileCall::List || !operation.path.ends_with(L'\\') ||
            operation.path.find(L".vwnew-") == std::wstring::npos) {
            return;
        }
        world.tree.File(operation.path + L"1 large.txt", "l");
        world.tree.File(operation.path + L"2 small.txt", "s");
    });
    const RunResult result = world.Run();
    EXPECT_EQ(result.exitCode, error_number::kDiskFull);
    EXPECT_EQ(world.Copies(), Listing()) << Joined(result.lines);
}

TEST(FailedCopy, CommentCannotBeWritten_KeepsTheSeries) {
    for (const int number : {error_number::kDiskFull, error_number::kAccessError}) {
        EngineFixture world;
        MakeHistory(world);
        const Tree before = ReadTree(world.Store());
        world.files.FailFrom(1, number, OnlyCalls({FileCall::Write}));
        const RunResult result = world.Run();
        EXPECT_EQ(result.errors.size(), 2U);
        EXPECT_EQ(result.exitCode, number);
        EXPECT_EQ(ReadTree(world.Store()), before);
    }
}

TEST(FailedCopy, UnreadableSubFolder_IsReportedWithItsPath) {
    EngineFixture world;
    MakeHistory(world);
    world.List({L"Work\\"});
    // The first listing of the sub-folder takes its dates, the second its files.
    world.files.FailNth(2, error_number::kPermissionDenied, [&](const FileOperation& operation) {
        return operation.call == FileCall::List &&
               operation.path.find(L"Work\\Sub") != std::wstring::npos;
    });
    world.ExpectRun({L"Backing: ~\\Work\\", L"* Backing: ~\\Work\\b.txt",
                     L"* Backing: ~\\Work\\c.txt", L"! 70 BackupFolder ~\\Work\\Sub\\",
                     L"Files are missing, copy 1 is incomplete: ~\\Work\\", L"\tDone."});
    EXPECT_FALSE(Exists(world.Store(L"Work«0001»\\Sub")));
}

// Where case decides in the source, "Data" and "data" have one place between them.
TEST(FailedCopy, SubFolderCannotBeMade_GetsNoMarks) {
    EngineFixture world;
    MakeHistory(world);
    world.List({L"Work\\"});
    world.files.FailNth(1, error_number::kPermissionDenied, [](const FileOperation& operation) {
        return operation.call == FileCall::CreateFolder && operation.path.ends_with(L"\\Sub\\");
    });
    EXPECT_EQ(world.Run().errors.size(), 1U);
    EXPECT_TRUE(std::ranges::none_of(world.files.Operations(), [](const FileOperation& operation) {
        return operation.call == FileCall::CopyFolderInfo && operation.to.ends_with(L"\\Sub\\");
    }));
}

TEST(FailedCopy, UnreadableItem_IsReported) {
    EngineFixture world;
    MakeHistory(world);
    world.List({L"Work\\"});
    const Tree before = ReadTree(world.Store());
    world.files.FailFrom(1, error_number::kPermissionDenied, [&](const FileOperation& operation) {
        return operation.call == FileCall::List && operation.path.starts_with(world.Path(L"Work"));
    });
    world.ExpectRun({L"Backing: ~\\Work\\", L"! 70 BackupFolder ~\\Work\\"});
    EXPECT_EQ(ReadTree(world.Store()), before);
}

TEST(FailedCopy, UncheckedFiles_CountAsFailed) {
    EngineFixture world;
    MakeHistory(world);
    world.List({L"Work\\"});
    const Tree before = ReadTree(world.Store());
    world.files.FailFrom(1, error_number::kDeviceError, [](const FileOperation& operation) {
        return operation.call == FileCall::List &&
               operation.path.find(L".vwnew-") != std::wstring::npos;
    });
    const RunResult result = world.Run();
    EXPECT_EQ(result.errors.size(), 2U) << Joined(result.lines);
    EXPECT_EQ(result.exitCode, error_number::kDeviceError);
    EXPECT_EQ(std::count(result.lines.begin(), result.lines.end(), L"\tDone."), 0);
    world.files.Heal();
    world.Run();
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0001»\\b.txt")).substr(0, 1), "3");
    EXPECT_NE(ReadTree(world.Store()), before);
}

TEST(FailedCopy, FileVanishedMeanwhile_IsReported) {
    EngineFixture world;
    MakeHistory(world);
    world.List({L"Work\\"});
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) world.tree.Remove(L"Work\\c.txt");
    });
    world.ExpectRun({L"Backing: ~\\Work\\", L"* Backing: ~\\Work\\b.txt",
                     L"* Backing: ~\\Work\\c.txt", L"! 53 BackupFile ~\\Work\\c.txt",
                     L"* Backing: ~\\Work\\Sub\\d.txt",
                     L"Files are missing, copy 1 is incomplete: ~\\Work\\", L"\tDone."});
}

// A source that grows while it is copied, as logs do.
void GrowWhileCopied(EngineFixture& world) {
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) {
            world.tree.File(operation.path, std::string(900, 'g'), Day(50));
        }
    });
}

TEST(ChangingSource, FileGrows_IsReported_CopyCounts) {
    EngineFixture world;
    MakeHistory(world);
    GrowWhileCopied(world);
    const RunResult result = world.Run();
    EXPECT_EQ(
        Joined(result.lines),
        Joined(Lines{L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt",
                     L"Changed while it was copied: ~\\a.txt", L"\tDone.", L"Backing: ~\\Work\\",
                     L"* Backing: ~\\Work\\b.txt", L"* Backing: ~\\Work\\c.txt",
                     L"Changed while it was copied: ~\\Work\\b.txt",
                     L"Changed while it was copied: ~\\Work\\c.txt",
                     L"* Backing: ~\\Work\\Sub\\d.txt",
                     L"Changed while it was copied: ~\\Work\\Sub\\d.txt", L"\tDone."} +
               kDone));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(ReadBytes(world.Store(L"a«0001».txt")).size(), 900U);
    EXPECT_EQ(ReadBytes(world.Store(L"a«0002».txt")).substr(0, 1), "2");
    // The date that decides is the one from before: the next run takes a calm copy.
    world.files.Heal();
    world.ExpectRun(BackedUp(L"~\\a.txt") + BackedUp(L"~\\Work\\", kWorkFiles));
    world.ExpectRun(NoChange(L"~\\a.txt") + NoChange(L"~\\Work\\"));
}

TEST(ChangingSource, Report_IsInTheLanguageOfTheWindow) {
    EngineFixture world;
    MakeHistory(world);
    world.state.language = Language::Arabic;
    world.List({L"a.txt"});
    GrowWhileCopied(world);
    const RunResult result = world.Run();
    ASSERT_GT(result.lines.size(), 2U);
    EXPECT_EQ(result.lines[2], L"تغيّر الملف التالي أثناء نسخه\r\n~\\a.txt");
}

TEST(ChangingSource, ReplacedByAShorterFile_CopyCounts) {
    EngineFixture world;
    MakeHistory(world);
    world.List({L"a.txt"});
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) world.tree.File(L"a.txt", "short", Day(50));
    });
    world.ExpectRun({L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt",
                     L"Changed while it was copied: ~\\a.txt", L"\tDone."});
    EXPECT_EQ(ReadBytes(world.Store(L"a«0001».txt")), "short");
}

// What a failed copy left is held, so that it cannot be removed yet when its item comes once more.
TEST(FailedCopy, RemainderIsHeld_NextCopyOfTheRunRemovesIt) {
    EngineFixture world;
    world.tree.File(L"a.txt", "12345678", Day(1));
    world.List({L"a.txt", L"a.txt"});
    FileHandle held;
    int copies = 0;
    int checked = 0;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) ++copies;
        const Lines& events = world.host.events;
        if (std::count(events.begin(), events.end(), L"started ~\\a.txt") == 2) held.Reset();
        if (copies == 1 && checked == 0 && operation.call == FileCall::Stat &&
            operation.path.find(L".vwnew-") != std::wstring::npos) {
            ++checked;
            world.tree.File(operation.path.substr(world.Path().size() + 1), "1234");
            held = HoldInPlace(operation.path);
        }
    });
    const RunResult result = world.Run();
    EXPECT_EQ(result.errors.size(), 1U) << Joined(result.lines);
    EXPECT_EQ(copies, 2);
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "12345678"}}));
}

// The disk cuts a file short and cannot list the folder: that is one failure, and no copy.
TEST(FailedCopy, OnlyFileIsCutShortUnlisted_MakesNoCopy) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "12345678", Day(1));
    world.List({L"Work\\"});
    const OperationFilter isListing = [](const FileOperation& operation) {
        return operation.call == FileCall::List &&
               operation.path.find(L".vwnew-") != std::wstring::npos &&
               operation.path.ends_with(L'\\');
    };
    world.files.FailNth(1, error_number::kDeviceError, isListing);
    world.files.OnOperation([&](const FileOperation& operation) {
        if (isListing(operation)) world.tree.File(operation.path + L"a.txt", "1234");
    });
    const RunResult result = world.Run();
    EXPECT_EQ(result.errors.size(), 1U) << Joined(result.lines);
    EXPECT_EQ(world.Copies(), Listing());
}

// The disk reports that the comment is written, and has nothing.
TEST(FailedCopy, CommentIsMissingAfterwards_LeavesTheSeriesAlone) {
    EngineFixture world;
    MakeHistory(world);
    world.List({L"a.txt"});
    const Tree before = ReadTree(world.Store());
    world.files.IgnoreNth(1, OnlyCalls({FileCall::Write}));
    EXPECT_EQ(world.Run().exitCode, error_number::kDeviceError);
    EXPECT_EQ(ReadTree(world.Store()), before);
}

}  // namespace
}  // namespace vw::test
