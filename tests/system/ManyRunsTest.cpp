// Four runs of the program at once on one destination and one list, and one of them killed.

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <memory>
#include <random>

#include "tests/support/Histories.h"
#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::SizeIs;

constexpr int kKept = 3;

class ManyRuns : public SystemTest {
  protected:
    void Change(int state) const {
        const DateParts date{2024, 1 + state / 28, 1 + state % 28, 12, 0, 0};
        program.tree.File(L"Home\\Letter.txt", std::to_string(state), date);
        for (int i = 0; i < 20; ++i) {
            program.tree.File(L"Home\\Docs\\" + std::to_wstring(i) + L".txt",
                              std::to_string(state) + std::string(3000, 'x'), date);
        }
    }

    /// Copies 1, 2, 3 hold this state and those before it, whole; nothing else is there.
    void ExpectCopies(int state) const {
        const int copies = std::min(state, kKept);
        for (int copy = 1; copy <= copies; ++copy) {
            const std::string content = std::to_string(state + 1 - copy);
            const std::wstring number = L"«000" + std::to_wstring(copy) + L"»";
            EXPECT_EQ(ReadBytes(vault + L"\\Letter" + number + L".txt"), content);
            const Tree folder = ReadTree(vault + L"\\Docs" + number);
            EXPECT_THAT(folder, SizeIs(20));
            for (const auto& [name, node] : folder) {
                EXPECT_EQ(node.bytes, content + std::string(3000, 'x'));
            }
        }
        EXPECT_THAT(InVault(), SizeIs(2 * copies + 2));
    }

    std::array<ProgramCopy, 4> programs;
    const std::wstring letter = program.tree.File(L"Home\\Letter.txt", "0");
    const std::wstring docs = program.tree.Folder(L"Home\\Docs");
    const std::wstring list = program.List(
        L"List.vwl",
        {L"BackupTo: " + vault, L"Backages: " + std::to_wstring(kKept), docs + L"\\", letter});
};

TEST_F(ManyRuns, FourAtOnce_OneKilled_MakeOneCopyOfEachState) {
    const auto histories = Histories::Usually(4);
    std::mt19937 random(histories.first);
    int killed = 0;
    for (int state = 1; state <= static_cast<int>(histories.count) && !HasFailure(); ++state) {
        SCOPED_TRACE("first seed " + std::to_string(histories.first) + ", state " +
                     std::to_string(state));
        Change(state);
        std::vector<std::unique_ptr<ProgramRun>> runs;
        for (const ProgramCopy& one : programs) {
            runs.push_back(std::make_unique<ProgramRun>(one.With(L"/B " + list)));
        }
        const bool kills = state % 2 == 0;
        if (kills) {
            Sleep(std::uniform_int_distribution<DWORD>(0, 700)(random));
            ProgramRun& one = *runs[std::uniform_int_distribution<std::size_t>(0, 3)(random)];
            if (!one.HasEnded()) ++killed;
            one.Terminate();
        }
        ProgramRun::WaitForAll({runs[0].get(), runs[1].get(), runs[2].get(), runs[3].get()});
        int ended = 0;
        for (const auto& run : runs) {
            const DWORD code = run->WaitForEnd();
            if (code == 0) ++ended;
            EXPECT_TRUE(code == 0 || kills) << code;
        }
        EXPECT_GE(ended, 3);
        ExpectCopies(state);
    }
    std::cout << 4 * histories.count << " runs at once, " << killed << " of them killed\n";
}

}  // namespace
}  // namespace vw::test
