// The program is ended by the task manager in the middle of a run, at any moment.

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

#include "platform/Utf8.h"
#include "tests/system/KillWorld.h"
#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

class KilledRun : public SystemTest {
  protected:
    /// Kills `points` runs at moments spread by chance over the time that the run needs.
    void KillsRuns(KillWorld::History history, int points) {
        KillWorld world(program.tree.Path(L"World"), history);
        std::mt19937 random(std::random_device{}());
        DWORD longest = 40;
        int killed = 0;
        for (int point = 0; point < points; ++point) {
            world.Prepare();
            ProgramRun run(program.With(L"/B " + world.List()));
            while (!run.HasEnded() && !world.RunHasBegun()) Sleep(1);
            const DWORD moment = std::uniform_int_distribution<DWORD>(0, longest)(random);
            const ULONGLONG start = GetTickCount64();
            while (!run.HasEnded() && GetTickCount64() - start < moment) Sleep(1);
            const bool ended = run.HasEnded();
            // The next moments are spread over the time that this run took to its end.
            if (ended) longest = static_cast<DWORD>(GetTickCount64() - start) + 1;
            if (!ended) longest = std::max(longest, moment + moment / 4);
            run.Terminate();
            killed += ended ? 0 : 1;

            std::vector<std::wstring> faults = world.AfterKill();
            if (point % 3 == 0) world.ChangeSources();
            RunsTo(0, L"/B " + world.List());
            for (std::wstring& fault : world.AfterNextRun()) {
                faults.push_back(L"after the next run: " + std::move(fault));
            }
            EXPECT_THAT(faults, testing::IsEmpty())
                << "killed " << moment << " ms after it began to copy";
            if (HasFailure()) return;
        }
        RecordProperty("killed", killed);
        EXPECT_GT(killed, 0) << "every run was faster than the test";
    }
};

TEST_F(KilledRun, OfAFirstBackupLosesNothing) { KillsRuns(KillWorld::History::None, 15); }

TEST_F(KilledRun, OfALaterBackupLosesNothing) { KillsRuns(KillWorld::History::Full, 15); }

TEST_F(KilledRun, TheWorldItselfIsBackedUpAsItExpects) {
    for (const KillWorld::History history : {KillWorld::History::None, KillWorld::History::Full}) {
        KillWorld world(program.tree.Path(L"World"), history);
        world.Prepare();
        EXPECT_THAT(world.AfterKill(), testing::IsEmpty());
        RunsTo(0, L"/B " + world.List());
        EXPECT_THAT(world.AfterKill(), testing::IsEmpty());
        EXPECT_THAT(world.AfterNextRun(), testing::IsEmpty());
    }
}

}  // namespace
}  // namespace vw::test
