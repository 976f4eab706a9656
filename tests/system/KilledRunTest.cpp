// The program is ended by the task manager in the middle of a run, at any moment.

#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>
#include <random>

#include "platform/Handle.h"
#include "platform/Utf8.h"
#include "tests/support/DestinationChecker.h"
#include "tests/support/Histories.h"
#include "tests/system/CrashScenario.h"
#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

bool HasWorkingEntry(const std::wstring& destination) {
    WIN32_FIND_DATAW entry{};
    const FindHandle find(FindFirstFileW((destination + L"\\*.vw*-*").c_str(), &entry));
    return static_cast<bool>(find);
}

class KilledRun : public SystemTest {
  protected:
    /// Kills a run of a list at a moment that chance chooses, counted from when it has begun.
    void KillOne(const std::wstring& list, const std::wstring& destination) {
        ProgramRun run(program.With(L"/B " + list));
        while (!run.HasEnded() && !HasWorkingEntry(destination)) Sleep(1);
        moment = std::uniform_int_distribution<DWORD>(0, longest_)(random_);
        const ULONGLONG start = GetTickCount64();
        while (!run.HasEnded() && GetTickCount64() - start < moment) Sleep(1);
        const bool ended = run.HasEnded();
        // The next moments are spread over the time that this run took to its end.
        if (ended) longest_ = static_cast<DWORD>(GetTickCount64() - start) + 1;
        if (!ended) longest_ = std::max(longest_, moment + moment / 4);
        run.Terminate();
        killed += ended ? 0 : 1;
    }
    /// Kills so many runs, more in a soak, at moments spread by chance over the time of a run.
    void KillsRuns(CrashScenario::History history, unsigned points) {
        CrashScenario world(program.tree.Path(L"World"), history);
        const auto histories = Histories::Usually(points);
        for (unsigned seed = histories.first; seed != histories.End(); ++seed) {
            Seed(seed);
            world.Prepare();
            KillOne(world.List(), world.Vault());
            std::vector<std::wstring> faults = world.AfterKill();
            if (seed % 3 == 0) world.ChangeSources();
            RunsTo(0, L"/B " + world.List());
            for (std::wstring& fault : world.AfterNextRun()) {
                faults.push_back(L"after the next run: " + std::move(fault));
            }
            EXPECT_THAT(faults, testing::IsEmpty())
                << "seed " << seed << ", killed " << moment << " ms after it began to copy";
            if (HasFailure()) return;
        }
        Count();
    }
    void Count() const {
        std::cout << killed << " kills of a run\n";
        RecordProperty("killed", killed);
        EXPECT_GT(killed, 0) << "every run was faster than the test";
    }
    void Seed(unsigned seed) { random_.seed(seed); }

    int killed = 0;
    DWORD moment = 0;  ///< of the last kill, in milliseconds

  private:
    std::mt19937 random_;
    DWORD longest_ = 40;
};

TEST_F(KilledRun, FirstBackup_LosesNothing) { KillsRuns(CrashScenario::History::None, 10); }

TEST_F(KilledRun, LaterBackup_LosesNothing) { KillsRuns(CrashScenario::History::Full, 10); }

TEST_F(KilledRun, Completion_LosesNothing) { KillsRuns(CrashScenario::History::Incomplete, 10); }

// The names of all these items meet in the destination, so that one of them is refused.
TEST_F(KilledRun, CollidingNames_KeepEveryCommentWithItsCopy) {
    const std::vector<std::wstring> files{
        L"A\\R.doc",           L"B\\R.doc",          L"Data.old\\y.txt", L"Data.old\\Data\\x.txt",
        L"X.old\\Data\\z.txt", L"j.smith\\D\\d.txt", L"j.smith\\README"};
    std::vector<std::wstring> items;
    for (const wchar_t* const item : {L"A\\R.doc", L"B\\R.doc", L"Data.old\\", L"X.old\\Data\\",
                                      L"j.smith\\D\\", L"j.smith\\README"}) {
        items.push_back(program.tree.Path(item));
    }
    std::vector<std::wstring> lines{L"BackupTo: " + vault, L"Backages: 3"};
    lines.insert(lines.end(), items.begin(), items.end());
    const std::wstring list = program.List(L"Meeting.vwl", lines);
    DestinationChecker checker(vault);
    const auto histories = Histories::Usually(8);
    for (unsigned seed = histories.first; seed != histories.End(); ++seed) {
        const auto state = static_cast<int>(seed - histories.first);
        for (const std::wstring& file : files) {
            program.tree.File(file, std::to_string(state) + " of " + ToUtf8(file),
                              {2024 + state / 336, state / 28 % 12 + 1, state % 28 + 1, 12, 0, 0});
        }
        checker.LearnAll(items);
        Seed(seed);
        KillOne(list, vault);
        SCOPED_TRACE("seed " + std::to_string(seed) + ", killed " + std::to_string(moment) +
                     " ms after it began");
        EXPECT_EQ(checker.Violations(), "");
        RunsTo(75, L"/B " + list);
        EXPECT_EQ(checker.Violations(), "");
        for (const std::wstring& entry : InVault()) {
            EXPECT_NE(entry.find(L"«0"), std::wstring::npos) << ToUtf8(entry) << " is left over";
        }
        if (HasFailure()) return;
    }
    Count();
}

TEST_F(KilledRun, CrashScenario_WithoutAKill_MeetsItsOwnExpectations) {
    for (const CrashScenario::History history :
         {CrashScenario::History::None, CrashScenario::History::Full,
          CrashScenario::History::Incomplete}) {
        CrashScenario world(program.tree.Path(L"World"), history);
        world.Prepare();
        EXPECT_THAT(world.AfterKill(), testing::IsEmpty());
        RunsTo(0, L"/B " + world.List());
        EXPECT_THAT(world.AfterKill(), testing::IsEmpty());
        EXPECT_THAT(world.AfterNextRun(), testing::IsEmpty());
    }
}

}  // namespace
}  // namespace vw::test
