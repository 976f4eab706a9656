#include <gtest/gtest.h>

#include <iostream>
#include <vector>

#include "platform/RuntimeError.h"
#include "tests/restore/RestoreFixture.h"

namespace vw::test {
namespace {

class RestoreFaults : public Restore {
  protected:
    enum class Way { Fail, FailFrom, Die, Full, Truncate, Ignore };

    struct Attempt {
        bool died = false;
        bool faulted = false;  ///< otherwise it came to its end before that step
        std::vector<ToldError> told;
    };

    /// Removes what came into the vault since it was read.
    void ForgetCopiesSince(const Tree& before) {
        for (const auto& [path, node] : ReadTree(vault)) {
            if (!before.contains(path)) tree.Remove(vault + L"\\" + path);
        }
    }

    /// Restores what is selected, answering Yes, while the n-th operation of the disk goes wrong.
    Attempt RestoreUnder(Way way, int n) {
        FakeMessageBoxes boxes;
        boxes.Expect(kQuestion, BoxAnswer::Yes);
        if (way == Way::Fail) world.files.FailNth(n, error_number::kPermissionDenied);
        if (way == Way::FailFrom) world.files.FailFrom(n, error_number::kDeviceError);
        if (way == Way::Die) world.files.DieAtNth(n);
        if (way == Way::Full) world.files.FillDiskFrom(n);
        if (way == Way::Truncate) world.files.TruncateNthCopy(n);
        if (way == Way::Ignore) world.files.IgnoreNth(n, OnlyChanges());
        System system{world.files,      world.pump,       boxes,       world.errors,
                      world.exitStatus, world.programEnd, world.clock, world.ansi};
        Attempt attempt;
        try {
            Commands(system).mnuRestoreClick();
        } catch (const Died&) {
            attempt.died = true;
        }
        attempt.faulted = attempt.died || !world.files.Faults().empty();
        attempt.told = world.errors.Take();
        world.files.Heal();
        state.BackupTo = vault;
        // A fault before the question leaves its answer unused.
        if (boxes.Shown().empty()) {
            boxes.Show({.text = kQuestion, .buttons = BoxButtons::YesNo});
        }
        return attempt;
    }
};

// Whatever goes wrong during a restore, at any of its steps: the file that was to be overwritten
// or the restored one is there, whole; when it was overwritten, its safety copy exists.
TEST_F(RestoreFaults, FaultAtAnyStep_LosesNothing) {
    int points = 0;
    const Tree atFirst = ReadTree(vault);
    // The fallback of a drive that does not answer has a folder.
    tree.Folder(L"C:\\Backup");
    for (const Way way :
         {Way::Fail, Way::FailFrom, Way::Die, Way::Full, Way::Truncate, Way::Ignore}) {
        for (int n = 1;; ++n) {
            SCOPED_TRACE(std::to_string(static_cast<int>(way)) + " at step " + std::to_string(n));
            // Each step is that of a world in which nothing has failed yet.
            ForgetCopiesSince(atFirst);
            tree.File(L"Docs\\Report.doc", "unsaved", {2024, 1, 9, 9, 0, 0});
            // A drive that failed to answer has given way to another.
            browser.RestoreFrom(vault);
            browser.ListRestoreFiles();
            SelectCopy(L"N03");
            const Attempt attempt = RestoreUnder(way, n);
            const std::string now = ReadBytes(document);
            EXPECT_TRUE(now == "unsaved" || now == "state 1") << now;
            if (now == "state 1") {
                EXPECT_EQ(Safety(), "unsaved");
                EXPECT_EQ(ReadDate(document), MakeDate({2024, 1, 1, 9, 0, 0}));
            }
            for (const auto& [path, node] : ReadTree(tree.Path(L"Docs"))) {
                if (path != L"Report.doc") {
                    EXPECT_TRUE(attempt.died || way == Way::FailFrom) << "left beside it";
                    tree.Remove(L"Docs\\" + path);
                }
            }
            if (!attempt.faulted) {
                // The way without a fault is the whole way.
                EXPECT_EQ(now, "state 1");
                break;
            }
            ++points;
        }
    }
    std::cout << points << " failures and kills of a restore tried\n";
    EXPECT_GT(points, 140);
}

// The same for a folder: each of its files is the old or the restored one, whole, and as soon as
// one is the restored one the safety copy of all exists.
TEST_F(RestoreFaults, Folder_FaultAtAnyStep_LosesNothing) {
    const std::wstring work = tree.Folder(L"Work");
    const auto fill = [&](const std::string& bytes, int day) {
        tree.Remove(L"Work");
        for (const auto* name : {L"Work\\a.txt", L"Work\\b.txt", L"Work\\Sub\\c.txt"}) {
            tree.File(name, bytes, {2024, 1, day, 0, 0, 0});
        }
        return ReadTree(work);
    };
    const Tree stored = fill("stored", 1);
    BackUp(work + L"\\");
    const Tree unsaved = fill("not stored", 9);
    const Tree atFirst = ReadTree(vault);
    tree.Folder(L"C:\\Backup");
    int points = 0;
    for (const Way way : {Way::Fail, Way::Die, Way::Full, Way::Truncate, Way::Ignore}) {
        for (int n = 1;; ++n) {
            SCOPED_TRACE(std::to_string(static_cast<int>(way)) + " at step " + std::to_string(n));
            ForgetCopiesSince(atFirst);
            ASSERT_EQ(fill("not stored", 9), unsaved);
            browser.RestoreFrom(vault);
            browser.ListRestoreFiles();
            browser.RestoredPath(work + L"\\");
            const Attempt attempt = RestoreUnder(way, n);
            Tree now = ReadTree(work);
            bool isRestored = true;
            bool isTouched = false;
            for (const auto& [path, node] : stored) {
                ASSERT_TRUE(now.contains(path));
                const bool same = now.at(path) == node;
                EXPECT_TRUE(same || now.at(path) == unsaved.at(path));
                isRestored = isRestored && same;
                isTouched = isTouched || (same && node != unsaved.at(path));
                now.erase(path);
            }
            EXPECT_TRUE(attempt.died || now.empty()) << "left beside it";
            if (isTouched) {
                EXPECT_EQ(ReadTree(vault + L"\\Work«0021»"), unsaved);
            }
            if (!isRestored && !attempt.died) {
                EXPECT_FALSE(attempt.told.empty()) << "not restored and not told";
            }
            if (!attempt.faulted) {
                EXPECT_TRUE(isRestored);
                break;
            }
            ++points;
        }
    }
    std::cout << points << " failures and kills of a folder's restore tried\n";
    EXPECT_GT(points, 100);
}

// A folder that is not there, the item itself or one below it, comes with whole files under their
// names; only a kill or a drive that is gone leaves something beside it.
TEST_F(RestoreFaults, MissingFolder_FaultAtAnyStep_LeavesWholeFiles) {
    const std::wstring home = tree.Folder(L"Home");
    const auto fill = [&](const std::string& bytes, int day) {
        tree.Remove(L"Home\\Work");
        for (const auto* name :
             {L"Home\\Work\\a.txt", L"Home\\Work\\Sub\\b.txt", L"Home\\Work\\Sub\\Deep\\c.txt"}) {
            tree.File(name, bytes, {2024, 1, day, 0, 0, 0});
        }
        return ReadTree(home);
    };
    const Tree stored = fill("stored", 1);
    BackUp(home + L"\\Work\\");
    const Tree unsaved = fill("not stored", 9);
    const Tree atFirst = ReadTree(vault);
    tree.Folder(L"C:\\Backup");
    int points = 0;
    for (const auto* const missing : {L"Home\\Work", L"Home\\Work\\Sub"}) {
        for (const Way way :
             {Way::Fail, Way::FailFrom, Way::Die, Way::Full, Way::Truncate, Way::Ignore}) {
            for (int n = 1;; ++n) {
                SCOPED_TRACE(std::to_string(static_cast<int>(way)) + " at step " +
                             std::to_string(n));
                ForgetCopiesSince(atFirst);
                tree.Remove(L"Home");
                fill("not stored", 9);
                tree.Remove(missing);
                browser.RestoreFrom(vault);
                browser.ListRestoreFiles();
                browser.RestoredPath(home + L"\\Work\\");
                const Attempt attempt = RestoreUnder(way, n);
                Tree now = ReadTree(home);
                bool isRestored = true;
                for (const auto& [path, node] : stored) {
                    const auto found = now.find(path);
                    const bool same = found != now.end() && found->second == node;
                    isRestored = isRestored && same;
                    if (found == now.end()) continue;
                    EXPECT_TRUE(same || found->second == unsaved.at(path));
                    now.erase(found);
                }
                EXPECT_TRUE(attempt.died || way == Way::FailFrom || now.empty())
                    << "left beside it";
                if (!isRestored && !attempt.died) {
                    EXPECT_FALSE(attempt.told.empty()) << "not restored and not told";
                }
                if (!attempt.faulted) {
                    EXPECT_TRUE(isRestored);
                    break;
                }
                ++points;
            }
        }
    }
    std::cout << points << " failures and kills of a missing folder's restore tried\n";
    EXPECT_GT(points, 200);
}

}  // namespace
}  // namespace vw::test
