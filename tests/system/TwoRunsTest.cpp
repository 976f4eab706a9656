// Two runs of the program on one destination take turns.

#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "platform/NamedLock.h"
#include "tests/support/Histories.h"
#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class TwoRuns : public SystemTest {
  protected:
    ProgramCopy other;
    const std::wstring docs = program.tree.Folder(L"Home\\Docs");
    const std::wstring letter = program.tree.File(L"Home\\Letter.txt", "0");
    const std::wstring list =
        program.List(L"List.vwl", {L"BackupTo: " + vault, L"Backages: 3", docs + L"\\", letter});

    /// A new state of all sources.
    void Change(int number) const {
        const DateParts date{2024, 1, number, 12, 0, 0};
        program.tree.File(L"Home\\Letter.txt", std::to_string(number), date);
        for (int i = 0; i < 20; ++i) {
            program.tree.File(L"Home\\Docs\\" + std::to_wstring(i) + L".txt",
                              std::to_string(number), date);
        }
    }
};

TEST_F(TwoRuns, AtOnce_MakeOneCopyOfEachState) {
    for (int number = 1; number <= 5; ++number) {
        Change(number);
        ProgramRun first(program.With(L"/B " + list));
        ProgramRun second(other.With(L"/B " + list));
        ProgramRun::WaitForAll({&first, &second});
        EXPECT_EQ(first.WaitForEnd(), 0U);
        EXPECT_EQ(second.WaitForEnd(), 0U);
        EXPECT_THAT(first.Boxes(), IsEmpty());
        EXPECT_THAT(second.Boxes(), IsEmpty());
        EXPECT_EQ(ReadTree(vault + L"\\Docs«0001»"), ReadTree(docs));
        for (int copy = 1; copy <= std::min(number, 3); ++copy) {
            EXPECT_EQ(ReadBytes(vault + L"\\Letter«000" + std::to_wstring(copy) + L"».txt"),
                      std::to_string(number + 1 - copy));
            EXPECT_EQ(ReadBytes(vault + L"\\Docs«000" + std::to_wstring(copy) + L"»\\7.txt"),
                      std::to_string(number + 1 - copy));
        }
        EXPECT_THAT(InVault(), SizeIs(2 * std::min(number, 3) + 2));
    }
}

TEST_F(TwoRuns, SecondRun_WaitsAndReportsIt) {
    Change(1);
    // The test replaces the first run.
    std::optional<NamedLock> busy(std::in_place, L"destination", vault);
    ASSERT_TRUE(busy->TryTake());
    ProgramRun run(program.With(L"/B " + list));
    run.WaitForWindow(L"frmTrayIcon");
    EXPECT_TRUE(run.StaysFor(1000));
    EXPECT_THAT(InVault(), IsEmpty());
    busy.reset();
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_EQ(run.Lines().at(0), L"Waiting for another backup in: " + vault);
    EXPECT_THAT(run.Lines(), Contains(L"\tDone."));
    EXPECT_THAT(InVault(), SizeIs(4));
}

TEST_F(TwoRuns, OnOtherDestinations_DoNotWait) {
    Change(1);
    NamedLock busy(L"destination", program.tree.Folder(L"Other vault"));
    ASSERT_TRUE(busy.TryTake());
    RunsTo(0, L"/B " + list);
    EXPECT_THAT(InVault(), SizeIs(4));
}

TEST_F(TwoRuns, FirstRunIsKilled_SecondTakesItsLock) {
    Change(1);
    {
        ProgramRun killed(other.With(L"/B " + list));
        while (!killed.HasEnded() && InVault().empty()) Sleep(1);
        killed.Terminate();
    }
    RunsTo(0, L"/B " + list);
    EXPECT_THAT(InVault(), ElementsAre(L"Docs«0001»", L"Docs«0001».vwc", L"Letter«0001».txt",
                                       L"Letter«0001».txt.vwc"));
}

// A mapped letter, a share, a link: the mutex of the runs is another one for each name.
TEST_F(TwoRuns, OverTwoNamesOfOneFolder_LoseNothing) {
    const auto rounds = Histories::Usually(3);
    constexpr int kFiles = 30;
    if (!program.tree.Link(L"Second name", vault)) GTEST_SKIP() << "no links here";
    std::vector<std::wstring> items{L"BackupTo: " + vault, L"Backages: 3"};
    for (int i = 0; i < kFiles; ++i) {
        items.push_back(program.tree.Path(L"Home\\f" + std::to_wstring(i) + L".txt"));
    }
    const std::wstring one = program.List(L"One.vwl", items);
    items.front() = L"BackupTo: " + program.tree.Path(L"Second name");
    const std::wstring two = program.List(L"Two.vwl", items);
    for (int state = 1; state <= static_cast<int>(rounds.count) && !HasFailure(); ++state) {
        const DateParts date{2024, 1 + state / 28, 1 + state % 28, 12, 0, 0};
        for (int i = 0; i < kFiles; ++i) {
            program.tree.File(L"Home\\f" + std::to_wstring(i) + L".txt", std::to_string(state),
                              date);
        }
        ProgramRun first(program.With(L"/B " + one));
        ProgramRun second(other.With(L"/B " + two));
        ProgramRun::WaitForAll({&first, &second});
        EXPECT_EQ(first.WaitForEnd(), 0U);
        EXPECT_EQ(second.WaitForEnd(), 0U);
        const int copies = std::min(state, 3);
        for (int i = 0; i < kFiles; ++i) {
            for (int copy = 1; copy <= copies; ++copy) {
                EXPECT_EQ(ReadBytes(vault + L"\\f" + std::to_wstring(i) + L"«000" +
                                    std::to_wstring(copy) + L"».txt"),
                          std::to_string(state + 1 - copy));
            }
        }
        EXPECT_THAT(InVault(), SizeIs(kFiles * (copies + 1)));
    }
    program.tree.Remove(L"Second name");
    std::cout << 2 * rounds.count << " runs at once\n";
}

}  // namespace
}  // namespace vw::test
