#include <gtest/gtest.h>

#include <thread>

#include "platform/NamedLock.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"
#include "tests/support/OtherRun.h"

namespace vw::test {
namespace {

constexpr std::uint64_t kMinute = 60'000;

/// Whether another run could enter the destination now.
bool IsFree(const std::wstring& folder) {
    bool free = false;
    std::thread([&] { free = NamedLock(L"destination", folder).TryTake(); }).join();
    return free;
}

const std::wstring kWaiting = L"Waiting for another backup in: ~\\Store";
const std::wstring kGivenUp = L"Skipped, another backup is using: ~\\Store";

TEST(DestinationLock, Run_HoldsTheLockUntilItsEnd) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    int asked = 0;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call != FileCall::Copy && operation.call != FileCall::Rename) return;
        ++asked;
        EXPECT_FALSE(IsFree(world.Store()));
        EXPECT_TRUE(IsFree(world.Path(L"Other")));
    });
    world.Run();
    EXPECT_EQ(asked, 3);
    EXPECT_TRUE(IsFree(world.Store()));
}

TEST(DestinationLock, DestinationChanges_FormerLockIsReleased) {
    EngineFixture world;
    world.tree.Folder(L"Second");
    world.tree.File(L"a.txt", "a", Day(1));
    world.ListText(L"~\\a.txt\r\nBackupTo: ~\\Second\r\n~\\a.txt\r\n");
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call != FileCall::Copy) return;
        const bool second = operation.to.find(L"Second") != std::wstring::npos;
        EXPECT_EQ(IsFree(world.Store()), second);
        EXPECT_EQ(IsFree(world.Path(L"Second")), !second);
    });
    EXPECT_EQ(world.Run().exitCode, 0);
}

TEST(DestinationLock, RunFailsOrEndsTheProgram_LockIsReleased) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.ListText(L"~\\a.txt\r\nBackupTo: ~\\Nowhere\r\n");
    world.boxes.Expect({});
    EXPECT_TRUE(world.Run().ended);
    EXPECT_TRUE(IsFree(world.Store()));

    world.List({L"a.txt"});
    world.tree.File(L"a.txt", "b", Day(2));
    world.files.DieAtNth(1, OnlyCalls({FileCall::Rename}));
    EXPECT_TRUE(world.Run().died);
    EXPECT_TRUE(IsFree(world.Store()));
}

TEST(DestinationLock, OtherSpellingOfTheFolder_IsTheSameLock) {
    EngineFixture world;
    const std::wstring folder = world.tree.Folder(L"مخزن Store");
    const OtherRun other(folder);
    world.tree.Folder(L"Other");
    for (const std::wstring& spelling :
         {folder + L"\\", world.Path(L"مخزن STORE"), world.Path(L"Other\\..\\مخزن store"),
          world.Path() + L"\\\\مخزن Store"}) {
        EXPECT_FALSE(IsFree(spelling));
    }
    EXPECT_TRUE(IsFree(world.Path(L"مخزن Store2")));
}

TEST(BusyDestination, OtherRunEnds_RunContinues) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    OtherRun other(world.Store());
    const int start = world.pump.Yields();
    world.pump.AtYield(start + 20, [&] { other.End(); });
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines), Joined(Lines{kWaiting} + BackedUp(L"~\\a.txt") + kDone));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_GT(world.pump.Waited(), 0U);
}

TEST(BusyDestination, DuringTheWait_IsNotListed) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    const std::wstring leftOver = LeftOverName(world, WorkingState::New, L"x", DeadProcess());
    world.tree.File(L"Store\\" + leftOver);
    OtherRun other(world.Store());
    world.pump.AtYield(20, [&] {
        EXPECT_EQ(LeftOvers(world).size(), 1U);
        for (const FileOperation& operation : world.files.Operations()) {
            EXPECT_NE(operation.call, FileCall::List) << Describe(operation);
        }
        other.End();
    });
    world.Run();
    EXPECT_TRUE(LeftOvers(world).empty());
}

TEST(BusyDestination, SilentRun_StopsAfterTenMinutes) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.tree.File(L"b.txt", "b", Day(1));
    world.List({L"a.txt", L"b.txt"});
    world.state.silentRun = true;
    const OtherRun other(world.Store());
    const RunResult result = world.Run();
    // Told once, not again for the second item.
    EXPECT_EQ(Joined(result.lines), Joined(Lines{kWaiting, kGivenUp} + kDone));
    EXPECT_EQ(result.exitCode, error_number::kDestinationBusy);
    EXPECT_EQ(world.pump.Waited(), 10 * kMinute);
    for (const FileOperation& operation : world.files.Operations()) {
        EXPECT_EQ(operation.path.find(L'«'), std::wstring::npos) << "no copy is asked about";
    }
    EXPECT_EQ(world.Copies(), Listing());
}

TEST(BusyDestination, ChosenBeforeAnItemBegins_IsNotEntered) {
    EngineFixture world;
    const std::wstring item = world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.state.silentRun = true;
    const std::wstring second = world.tree.Folder(L"Second");
    const OtherRun other(second);
    bool isEntered = false;
    world.files.OnOperation([&](const FileOperation& operation) {
        isEntered |= operation.call == FileCall::List;
        if (isEntered && operation.path == item) world.state.BackupTo = second;
    });
    EXPECT_EQ(world.Run().exitCode, error_number::kDestinationBusy);
    EXPECT_TRUE(isEntered);
    EXPECT_EQ(ReadTree(second), Tree());
}

TEST(BusyDestination, SilentRun_OtherDestinationsAreBackedUp) {
    EngineFixture world;
    const std::wstring second = world.tree.Folder(L"Second");
    world.tree.File(L"a.txt", "a", Day(1));
    world.ListText(L"~\\a.txt\r\nBackupTo: ~\\Second\r\n~\\a.txt\r\n");
    world.state.silentRun = true;
    const OtherRun other(world.Store());
    world.ExpectRun(Lines{kWaiting, kGivenUp} + BackedUp(L"~\\a.txt"));
    EXPECT_EQ(ReadBytes(second + L"\\a«0001».txt"), "a");
}

// Somebody who waits for the first destination need not wait for the second.
TEST(BusyDestination, FormerDestination_IsFreeMeanwhile) {
    EngineFixture world;
    world.tree.Folder(L"Second");
    world.tree.File(L"a.txt", "a", Day(1));
    world.ListText(L"~\\a.txt\r\nBackupTo: ~\\Second\r\n~\\a.txt\r\n");
    OtherRun other(world.Path(L"Second"));
    bool wasAsked = false;
    world.pump.AtEachYield([&] {
        if (wasAsked || world.host.log.empty() ||
            world.host.log.back() != L"Waiting for another backup in: ~\\Second") {
            return;
        }
        wasAsked = true;
        EXPECT_TRUE(IsFree(world.Store()));
        other.End();
    });
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_TRUE(wasAsked);
}

TEST(BusyDestination, NextRun_TriesAgain) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.state.silentRun = true;
    CPackage engine(world.system, world.state, world.host, world.host);
    {
        const OtherRun other(world.Store());
        engine.BackupAll();
    }
    world.host.log.clear();
    engine.BackupAll();
    EXPECT_EQ(Joined(world.host.log), Joined(BackedUp(L"~\\a.txt") + kDone));
}

TEST(BusyDestination, InteractiveRun_WaitsWithoutLimit) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    OtherRun other(world.Store());
    world.pump.AtEachYield([&] {
        if (world.pump.Waited() >= 60 * kMinute) other.End();
    });
    world.ExpectRun(Lines{kWaiting} + BackedUp(L"~\\a.txt"));
}

TEST(BusyDestination, Cancel_EndsTheWait) {
    for (const bool silent : {false, true}) {
        EngineFixture world;
        world.tree.File(L"a.txt", "a", Day(1));
        world.List({L"a.txt"});
        world.state.silentRun = silent;
        const OtherRun other(world.Store());
        world.pump.AtEachYield([&] {
            if (world.pump.Waited() >= kMinute) world.state.cancel.Request();
        });
        const RunResult result = world.Run();
        EXPECT_EQ(Joined(result.lines), Joined({kWaiting}));
        EXPECT_EQ(result.exitCode, error_number::kCancelled);
        EXPECT_LT(world.pump.Waited(), kMinute + 1000);
        EXPECT_EQ(world.Copies(), Listing());
    }
}

TEST(BusyDestination, Wait_IsReportedInTheLanguageOfTheWindow) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.state.silentRun = true;
    world.state.language = Language::Arabic;
    const OtherRun other(world.Store());
    EXPECT_EQ(
        Joined(world.Run().lines),
        Joined(Lines{L"في انتظار انتهاء عملية نسخ أخرى في المجلد التالي\r\n~\\Store",
                     L"لم يُنسخ شيء، لأن عملية نسخ أخرى ما زالت تستخدم المجلد التالي\r\n~\\Store"} +
               kDone));
}

TEST(BusyDestination, SingleItem_WaitsToo) {
    EngineFixture world;
    const std::wstring file = world.tree.File(L"a.txt", "a", Day(1));
    world.state.silentRun = true;
    const OtherRun other(world.Store());
    const RunResult result = world.With([&](CPackage& engine) { engine.BackupItem(file); });
    EXPECT_EQ(Joined(result.lines), Joined({kWaiting, kGivenUp}));
    EXPECT_EQ(result.exitCode, error_number::kDestinationBusy);
}

TEST(BusyDestination, RenamePackages_MovesNothing) {
    EngineFixture world;
    world.tree.File(L"Store\\a«0001».txt", "a");
    world.state.silentRun = true;
    const OtherRun other(world.Store());
    bool moved = true;
    world.With([&](CPackage& engine) { moved = engine.RenamePackages(world.Path(L"a.txt"), 0); });
    EXPECT_FALSE(moved);
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "a"}}));
}

TEST(BusyDestination, OwningThreadDied_LockIsTaken) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    OtherRun other(world.Store());
    other.Die();
    world.ExpectRun(BackedUp(L"~\\a.txt"));
}

constexpr const wchar_t* kHolderFolder = L"VW_TEST_LOCK_FOLDER";

// No test, but the other process of the next one: holds a destination until it is killed.
TEST(LockHolder, DISABLED_HoldsADestination) {
    wchar_t folder[MAX_PATH] = {};
    ASSERT_NE(GetEnvironmentVariableW(kHolderFolder, folder, MAX_PATH), 0U);
    NamedLock lock(L"destination", std::wstring(folder) + L"\\Store");
    ASSERT_TRUE(lock.TryTake());
    const FileHandle mark(CreateFileW((std::wstring(folder) + L"\\held").c_str(), GENERIC_WRITE, 0,
                                      nullptr, CREATE_ALWAYS, 0, nullptr));
    Sleep(60'000);
}

TEST(BusyDestination, OwningProcessDies_LockIsTaken) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring command = L"\"" + std::wstring(program) +
                           L"\" --gtest_also_run_disabled_tests "
                           L"--gtest_filter=LockHolder.DISABLED_HoldsADestination";
    SetEnvironmentVariableW(kHolderFolder, world.Path().c_str());
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION created{};
    ASSERT_NE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                             nullptr, nullptr, &startup, &created),
              0);
    const KernelHandle process(created.hProcess);
    const KernelHandle thread(created.hThread);
    for (int i = 0; i < 3000 && !Exists(world.Path(L"held")); ++i) Sleep(10);
    ASSERT_TRUE(Exists(world.Path(L"held")));

    world.pump.AtYield(20, [&] {
        TerminateProcess(process.Get(), 1);
        WaitForSingleObject(process.Get(), 10'000);
    });
    world.ExpectRun(Lines{kWaiting} + BackedUp(L"~\\a.txt"));
}

}  // namespace
}  // namespace vw::test
