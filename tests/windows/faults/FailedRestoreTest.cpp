// The disk fails in the middle of a restore, at any of its calls: the file that was to be
// overwritten or the restored one is there, whole; what was overwritten is a safety copy,
// whole; and what could not be done is reported. tests/checks/restore_faults.sh makes the calls
// fail.

#include <gtest/gtest.h>

#include <iostream>
#include <random>

#include "tests/support/Histories.h"
#include "tests/windows/faults/FailingRestore.h"

namespace vw::test {
namespace {

class FailedRestore : public FailingRestore {
  protected:
    void Prepare() {
        program.tree.Remove(Vault());
        program.tree.File(Vault() + L"\\Letter«0001».txt", stored, {2024, 1, 2, 3, 4, 5});
        program.tree.File(Vault() + L"\\Letter«0001».txt.vwc", Comment());
        program.tree.File(letter, unsaved, {2024, 5, 5, 5, 5, 5});
        WriteDefaultList({letter});
    }

    void Judge(const Outcome& outcome) const {
        SCOPED_TRACE(outcome.failed);
        SCOPED_TRACE(outcome.AllTold());
        const std::string now = ReadBytes(letter);
        EXPECT_TRUE(now == unsaved || now == stored) << now.size() << " bytes";
        EXPECT_TRUE(now == stored || !outcome.told.empty()) << "not restored, and nobody says so";
        const bool safe = Exists(safety);
        EXPECT_TRUE(safe || now == unsaved) << "overwritten without a safety copy";
        EXPECT_TRUE(!safe || ReadBytes(safety) == unsaved) << "half a safety copy";
        EXPECT_EQ(ReadBytes(Vault() + L"\\Letter«0001».txt"), stored) << "the copy itself";
    }

    const std::string stored = std::string(150000, 's');
    const std::string unsaved = std::string(170000, 'u');
    const std::wstring letter = Home() + L"\\Letter.txt";
    const std::wstring safety = Vault() + L"\\Letter«0021».txt";
};

TEST_F(FailedRestore, AtAnyCall_LosesNeitherTheFileNorItsSafetyCopy) {
    const auto points = Histories::Usually(5);
    Prepare();
    const Outcome whole = Restore(0, 0);
    ASSERT_EQ(ReadBytes(letter), stored);
    ASSERT_EQ(ReadBytes(safety), unsaved);
    ASSERT_GT(whole.calls, 20) << "the calls of a restore were not found";
    std::mt19937 random(points.first);
    int failed = 0;
    int told = 0;
    for (unsigned point = 0; point != points.count && !HasFailure(); ++point) {
        const int at = CallAt(point, points.count, whole.calls, random());
        Prepare();
        const Outcome outcome = Restore(at, random() % 2 != 0 ? kNoSpace : kBroken);
        Judge(outcome);
        if (!outcome.failed.empty()) ++failed;
        if (!outcome.told.empty()) ++told;
        // What a failure left must not hinder the next restore.
        program.tree.File(letter, unsaved, {2024, 5, 5, 5, 5, 5});
        Restore(0, 0);
        EXPECT_EQ(ReadBytes(letter), stored) << "the next restore, after " << outcome.failed;
        EXPECT_EQ(ReadBytes(safety), unsaved);
    }
    EXPECT_GT(2 * failed, static_cast<int>(points.count));
    std::cout << points.count << " points of " << whole.calls << " calls tried, " << failed
              << " calls failed in a restore, " << told << " of them told\n";
}

}  // namespace
}  // namespace vw::test
