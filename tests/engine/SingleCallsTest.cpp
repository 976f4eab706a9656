// Calls of the engine outside a run over a list, and what a run does at single steps.

#include <gmock/gmock.h>

#include <utility>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"
#include "tests/support/OtherRun.h"
#include "tests/support/YieldWatch.h"

namespace vw::test {
namespace {

using testing::Contains;

TEST(SingleCall, AfterACancel_BacksUp) {
    for (const bool byPath : {false, true}) {
        EngineFixture world;
        const std::wstring item = world.tree.File(L"Work\\a.txt", "1", Day(1));
        world.List({});
        world.state.cancel.Request();
        world.With([&](CPackage& engine) {
            byPath ? engine.BackupPath(world.Path(L"Work\\"), 0, true, true)
                   : engine.BackupItem(item);
        });
        EXPECT_EQ(ReadBytes(world.Store(byPath ? L"Work«0001»\\a.txt" : L"a«0001».txt")), "1");
    }
}

TEST(SingleCall, BackupPath_WindowAnswersBeforeTheDiskIsAsked) {
    EngineFixture world;
    const std::wstring item = world.tree.File(L"a.txt", "1", Day(1));
    bool isAsked = false;
    world.With([&](CPackage& engine) {
        world.pump.Restart();
        world.files.OnOperation([&](const FileOperation&) {
            if (std::exchange(isAsked, true)) return;
            EXPECT_EQ(world.pump.Yields(), 1);
        });
        engine.BackupPath(item, 0, false, false);
    });
    EXPECT_TRUE(isAsked);
}

TEST(SingleCall, WorkOfTheBrowserAfterACancel_IsNotCancelled) {
    EngineFixture world;
    world.state.cancel.Request();
    world.With([&](CPackage& engine) {
        EXPECT_TRUE(engine.InDestination(world.Store(),
                                         [&] { EXPECT_FALSE(world.state.cancel.IsRequested()); }));
    });
}

TEST(SingleCall, Extract_ShowsTheCopyOnRequest) {
    EngineFixture world;
    const std::wstring copy = world.tree.File(L"Store\\a«0001».txt", "a");
    for (const bool showMessage : {false, true}) {
        const RunResult result =
            world.With([&](CPackage& engine) { engine.Extract(copy, world.Path(), showMessage); });
        EXPECT_EQ(Joined(result.lines),
                  showMessage ? Joined({L"* Restoring:  ~\\Store\\a«0001».txt"}) : "");
    }
}

// The destination that was in use until now may be free.
TEST(SingleCall, AfterARefusedDestination_TriesItAgain) {
    for (const bool byPath : {false, true}) {
        EngineFixture world;
        const std::wstring item = world.tree.File(L"a.txt", "1", Day(1));
        world.List({});
        world.state.silentRun = true;
        OtherRun other(world.Store());
        world.With([&](CPackage& engine) {
            const auto backUp = [&] {
                byPath ? engine.BackupPath(item, 0, false, false) : engine.BackupItem(item);
            };
            backUp();
            EXPECT_EQ(world.Copies(), Listing{}) << byPath;
            other.End();
            backUp();
        });
        EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "1"}})) << byPath;
    }
}

TEST(SingleCall, DestinationIsNotThere_EndsTheProgram) {
    for (const bool byPath : {false, true}) {
        EngineFixture world;
        const std::wstring item = world.tree.File(L"a.txt", "1", Day(1));
        world.List({});
        world.tree.Remove(L"Store");
        world.boxes.Expect(world.Store());
        const RunResult result = world.With([&](CPackage& engine) {
            byPath ? engine.BackupPath(item, 0, false, false) : engine.BackupItem(item);
        });
        EXPECT_TRUE(result.ended) << byPath;
    }
}

// A restore works in the folder of the copies that are shown, whatever the list's own one is.
TEST(SingleCall, InAnotherDestination_AsksForThatOneOnly) {
    EngineFixture world;
    const std::wstring item = world.tree.File(L"a.txt", "1", Day(1));
    const std::wstring shown = world.tree.Folder(L"Shown");
    world.state.BackupTo = world.Path(L"not there");
    const RunResult result = world.With([&](CPackage& engine) {
        EXPECT_TRUE(engine.InDestination(
            shown, [&] { engine.BackupPath(item, 0, false, false, shown + L"\\a«0021».txt"); }));
    });
    EXPECT_FALSE(result.ended);
    EXPECT_EQ(ReadBytes(shown + L"\\a«0021».txt"), "1");
}

TEST(SingleCall, AfterAnotherDestination_UsesTheListsOwn) {
    EngineFixture world;
    const std::wstring item = world.tree.File(L"a.txt", "1", Day(1));
    const std::wstring shown = world.tree.Folder(L"Shown");
    world.With([&](CPackage& engine) {
        EXPECT_TRUE(engine.InDestination(shown, [] {}));
        engine.BackupItem(item);
    });
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "1"}}));
}

TEST(SingleCall, RotationAfterARun_MovesTheCopies) {
    EngineFixture world;
    const std::wstring item = world.tree.File(L"a.txt", "1", Day(1));
    world.List({L"a.txt"});
    world.With([&](CPackage& engine) {
        engine.BackupAll();
        EXPECT_TRUE(engine.RenamePackages(item, 0));
    });
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0002».txt", "1"}}));
}

TEST(SingleCall, OriginalLocation_CommentCannotBeRead_IsUnknown) {
    EngineFixture world;
    world.tree.File(L"Store\\a«0001».txt.vwc", "Original Location:C:\\");
    world.files.FailFrom(1, error_number::kDeviceError, OnlyCalls({FileCall::Read}));
    const RunResult result = world.With([&](CPackage& engine) {
        EXPECT_EQ(engine.PackageOriginalLocation(world.Store(L"a«0001».txt")), L"??");
    });
    ASSERT_EQ(result.errors.size(), 1U);
    EXPECT_EQ(result.errors[0].procedure, L"PackageOriginalLocation");
}

TEST(SingleCall, LocationNumber_FolderOfTheItemIsGone_SkipsItsCopy) {
    EngineFixture world;
    world.tree.File(L"Store\\a«0001».txt");
    world.tree.File(L"Store\\a«0001».txt.vwc",
                    "Original Location:" + world.ansi.Encode(world.Path(L"Docs")) + "\r\n");
    world.With([&](CPackage& engine) {
        EXPECT_EQ(engine.LocationID(world.Path(L"Docs\\a.txt")), 1);
        world.tree.Folder(L"Docs");
        EXPECT_EQ(engine.LocationID(world.Path(L"Docs\\a.txt")), 0);
    });
}

TEST(SingleCall, LocationNumber_FolderInPlaceOfTheComment_IsSkipped) {
    EngineFixture world;
    world.tree.Folder(L"Store\\a«0001».txt.vwc");
    world.With([&](CPackage& engine) { EXPECT_EQ(engine.LocationID(world.Path(L"a.txt")), 1); });
}

TEST(SingleCall, StoredDate_InBytes_IsDecoded) {
    EngineFixture world;
    world.tree.File(L"Store\\a«0001».txt.vwc",
                    "Backed Files Date Last Modified:'30312F30312F323031302D30303A30343A3034");
    world.With([&](CPackage& engine) {
        EXPECT_EQ(engine.PackageDate(world.Store(L"a«0001».txt")), MakeDate({2010, 1, 1, 0, 4, 4}));
    });
}

TEST(FreeSpaceOfAFolder, NamedLikeACopy_CountsItsFiles) {
    EngineFixture world;
    world.tree.File(L"Old«0001»\\a.txt", "12345", Day(1));
    world.List({L"Old«0001»\\"});
    world.drive.kind = DriveType::Fixed;
    world.drive.freeBytes[world.Store()] = 52'428'800 + 4;
    const RunResult result = world.Run();
    ASSERT_EQ(result.errors.size(), 1U);
    EXPECT_EQ(result.errors[0].number, error_number::kNotEnoughSpace);
    EXPECT_EQ(world.Copies(), Listing{});
}

TEST(Yields, SubFolder_YieldsAfterEach) {
    EngineFixture world;
    for (int i = 0; i < 5; ++i) world.tree.Folder(L"Work\\" + std::to_wstring(i));
    world.List({L"Work\\"});
    int made = 0;
    std::vector<int> seen;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::CreateFolder) ++made;
    });
    world.pump.AtEachYield([&] { seen.push_back(made); });
    world.Run();
    // The first one is the copy itself.
    for (int folders = 2; folders <= 6; ++folders) EXPECT_THAT(seen, Contains(folders));
}

TEST(Yields, EmptyFolderInEmptyFolder_YieldsAfterEach) {
    EngineFixture world;
    constexpr int kFolders = 30;
    std::wstring folder = L"Work";
    for (int i = 0; i < kFolders; ++i) folder += L"\\" + std::to_wstring(i);
    world.tree.Folder(folder);
    world.List({L"Work\\"});
    YieldWatch watch(world.files, world.pump);
    world.Run();
    EXPECT_LT(watch.MostOperations(), kFolders / 2);
}

// Copy 2 can neither move up nor can copy 3, which left for it, come back.
TEST(BrokenRotation, CannotBeUndone_PlaceIsEmptyAndNewCopyReady) {
    EngineFixture world;
    world.tree.File(L"Store\\a«0002».txt", "2", Day(2));
    world.tree.File(L"Store\\a«0003».txt", "1", Day(1));
    world.tree.File(L"a.txt", "3", Day(3));
    world.List({L"a.txt"}, 3);
    world.files.FailFrom(1, error_number::kPermissionDenied, [&](const FileOperation& operation) {
        return operation.call == FileCall::Rename &&
               (operation.path == world.Store(L"a«0002».txt") ||
                operation.to == world.Store(L"a«0003».txt"));
    });
    EXPECT_FALSE(world.Run().errors.empty());
    EXPECT_FALSE(Exists(world.Store(L"a«0001».txt"))) << "the series has a hole";
    EXPECT_EQ(ReadBytes(world.Store(L"a«0002».txt")), "2");
    world.files.Heal();
    UpdateControls(world, DeadProcess());
    world.Run();
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "3"}, {L"a«0002».txt", "2"}}));
    EXPECT_THAT(LeftOvers(world), testing::IsEmpty());
}

TEST(TwoReadyCopies, SameItem_TheNewerIsFinished) {
    for (const int first : {4, 5}) {
        EngineFixture world;
        world.tree.File(L"a.txt", "5", Day(5));
        world.List({L"a.txt"}, 3);
        const ProcessTag dead = DeadProcess();
        for (const int step : {first, 9 - first}) {
            world.tree.File(L"Store\\" + LeftOverName(world, WorkingState::Ready, L"a.txt", dead,
                                                      MakeDate(Day(step))),
                            std::to_string(step));
        }
        world.Run();
        EXPECT_EQ(ReadBytes(world.Store(L"a«0001».txt")), "5");
        EXPECT_FALSE(Exists(world.Store(L"a«0002».txt"))) << "not the older one first";
    }
}

TEST(TwoReadyCopies, SameDates_TheOneThatHoldsMoreIsFinished) {
    for (const bool wholeFirst : {true, false}) {
        EngineFixture world;
        world.tree.File(L"Work\\a.txt", "a", Day(1));
        world.List({L"Work\\"});
        const std::wstring path = world.Path(L"Work\\");
        WorkingName ready{WorkingState::Ready, NameKey(path), NameKey(world.Store(L"Work«0001»")),
                          MakeDate(Day(1)),    DeadProcess(), MakeDate(Day(1))};
        // The folder is listed in the order of the names.
        const std::wstring whole = FormatWorkingName(ready, wholeFirst ? L"1" : L"2");
        ready.completeness = Completeness::MissesFiles;
        const std::wstring part = FormatWorkingName(ready, wholeFirst ? L"2" : L"1");
        world.tree.File(L"Store\\" + whole + L"\\a.txt", "whole", Day(1));
        world.tree.File(L"Store\\" + part + L"\\b.txt", "part", Day(1));
        world.Run();
        EXPECT_EQ(ReadBytes(world.Store(L"Work«0001»\\a.txt")), "whole") << wholeFirst;
        EXPECT_FALSE(Exists(world.Store(L"Work«0001»\\b.txt"))) << wholeFirst;
    }
}

/// Long work with one folder of many files.
class LongWork : public testing::Test {
  protected:
    static constexpr int kFiles = 30;

    void MakeFiles(const std::wstring& folder) const {
        for (int i = 0; i < kFiles; ++i) {
            world.tree.File(folder + L"\\" + std::to_wstring(i), "x", Day(1));
        }
    }

    EngineFixture world;
};

TEST_F(LongWork, OldestCopyIsRemoved_WindowsKeepWorking) {
    MakeFiles(L"Store\\Work«0001»");
    world.tree.File(L"Work\\a.txt", "a", Day(2));
    world.List({L"Work\\"}, 1);
    YieldWatch watch(world.files, world.pump);
    world.Run();
    EXPECT_LT(watch.MostOperations(), kFiles);
    EXPECT_EQ(world.Copies().size(), 2U);
}

TEST_F(LongWork, LeftOverIsRemoved_WindowsKeepWorking) {
    MakeFiles(L"Store\\" + LeftOverName(world, WorkingState::New, L"Work\\", DeadProcess()));
    world.tree.File(L"a.txt", "a", Day(2));
    world.List({L"a.txt"});
    YieldWatch watch(world.files, world.pump);
    world.Run();
    EXPECT_LT(watch.MostOperations(), kFiles);
    EXPECT_EQ(LeftOvers(world), Lines());
}

TEST_F(LongWork, DateOfACopyWithoutAComment_WindowsKeepWorking) {
    MakeFiles(L"Store\\Work«0001»");
    YieldWatch watch(world.files, world.pump, [](const FileOperation& operation) {
        return operation.call == FileCall::List;
    });
    world.With([&](CPackage& engine) {
        EXPECT_EQ(engine.PackageDate(world.Store(L"Work«0001»")), MakeDate(Day(1)));
        static_cast<void>(world.files.Stat(world.Path()));
    });
    EXPECT_GE(watch.YieldsBehind(), kFiles);
}

TEST_F(LongWork, ManyItemsHaveTheName_WindowsKeepWorking) {
    for (int i = 0; i < kFiles; ++i) {
        const std::wstring copy =
            L"Store\\a«" + std::wstring(i < 10 ? L"0" : L"") + std::to_wstring(i) + L"01».txt";
        world.tree.File(copy, "x");
        world.tree.File(copy + L".vwc", "Original Location:C:\\Elsewhere\r\n");
    }
    const std::wstring item = world.tree.File(L"a.txt", "a");
    YieldWatch watch(world.files, world.pump);
    world.With([&](CPackage& engine) { EXPECT_EQ(engine.LocationID(item), kFiles); });
    EXPECT_LT(watch.MostOperations(), kFiles);
}

}  // namespace
}  // namespace vw::test
