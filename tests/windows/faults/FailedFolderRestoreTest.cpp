// The disk fails in the middle of the restore of a folder, at any of its calls: every file of the
// folder is the old or the restored one, whole; nothing of it is overwritten before all of it
// is a safety copy, whole; what could not be done is reported; and the next attempt does it all.

#include <gtest/gtest.h>

#include <iostream>
#include <optional>
#include <random>

#include "tests/support/Histories.h"
#include "tests/windows/WorkFolder.h"
#include "tests/windows/faults/FailingRestore.h"

namespace vw::test {
namespace {

class FailedFolderRestore : public FailingRestore {
  protected:
    void Prepare() {
        work.Prepare();
        WriteDefaultList({work.Path() + L"\\"});
    }

    void Judge(const Outcome& outcome) const {
        SCOPED_TRACE(outcome.failed);
        SCOPED_TRACE(outcome.AllTold());
        work.Judge(false);
        EXPECT_TRUE(work.IsRestored() || !outcome.told.empty()) << "not done, and nobody says so";
        EXPECT_TRUE(!work.HasSafetyCopy() || work.HasWholeSafetyCopy()) << "half a safety copy";
    }

    WorkFolder work{program.tree, Home(), Vault(), 30000};
};

TEST_F(FailedFolderRestore, AtAnyCall_LosesNoFile_NextAttemptCompletes) {
    const auto points = Histories::Usually(2);
    Prepare();
    const Outcome whole = Restore(0, 0);
    ASSERT_TRUE(work.IsRestored()) << whole.AllTold();
    ASSERT_TRUE(work.HasWholeSafetyCopy());
    ASSERT_GT(whole.calls, 60) << "the calls of a restore were not found";
    std::mt19937 random(points.first);
    int failed = 0;
    int told = 0;
    for (unsigned point = 0; point != points.count && !HasFailure(); ++point) {
        const int at = CallAt(point, points.count, whole.calls, random());
        Prepare();
        std::optional<DrivenProgram> window(std::in_place, program.With(L""));
        const Outcome outcome = RestoreIn(*window, at, random() % 2 != 0 ? kNoSpace : kBroken);
        Judge(outcome);
        if (!outcome.failed.empty()) ++failed;
        if (!outcome.told.empty()) ++told;
        // The user tries again, over what the failure left; every other time on another day.
        SCOPED_TRACE("the next restore, after " + outcome.failed);
        if (point % 2 != 0) {
            window->Close();
            window.emplace(program.With(L""));
        }
        RestoreIn(*window, 0, 0);
        window->Close();
        work.Judge(false);
        EXPECT_TRUE(work.IsRestored());
        EXPECT_TRUE(work.HasWholeSafetyCopy());
    }
    EXPECT_GT(2 * failed, static_cast<int>(points.count));
    std::cout << points.count << " points of " << whole.calls << " calls tried, " << failed
              << " calls failed in a folder's restore, " << told << " of them told\n";
}

}  // namespace
}  // namespace vw::test
