// The program is killed while it restores a copy: the file that was to be overwritten or the
// restored one is there, whole, and what was overwritten is a safety copy. The same for each
// file of a folder.

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <iostream>
#include <random>

#include "tests/support/DestinationChecker.h"
#include "tests/support/Histories.h"
#include "tests/windows/DrivenProgram.h"
#include "tests/windows/WorkFolder.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

class KilledRestore : public WindowsTest {
  protected:
    /// Begins a restore, says yes to its question, and kills the program at some moment within
    /// `microseconds` from then, or from when something is so.
    void KillIn(
        int microseconds, std::mt19937& random,
        const std::function<bool()>& isSo = [] { return true; }) {
        DrivenProgram window(program.With(L""));
        window.Begin(ID_mnuRestore);
        Press(window.Run().WaitForBox(), IDYES);
        window.WaitUntil(isSo, "the restore does not come to it", 1);
        const auto end =
            std::chrono::steady_clock::now() +
            std::chrono::microseconds(std::uniform_int_distribution<int>(0, microseconds)(random));
        while (std::chrono::steady_clock::now() < end) SwitchToThread();
        window.Run().Terminate();
    }
};

TEST_F(KilledRestore, SoakFile_LosesNeitherItNorItsSafetyCopy) {
    const std::string stored(1500000, 's');
    const std::string unsaved(1700000, 'u');
    const std::wstring letter = program.tree.Path(L"Home\\Letter.txt");
    const std::wstring safety = Vault() + L"\\Letter«0021».txt";
    const auto histories = Histories::Usually(12);
    int restored = 0;
    int kept = 0;
    for (unsigned seed = histories.first; seed != histories.End() && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        program.tree.Remove(Vault());
        program.tree.File(Vault() + L"\\Letter«0001».txt", stored, {2024, 1, 2, 3, 4, 5});
        std::string location;
        for (const wchar_t unit : program.tree.Path(L"Home")) location += static_cast<char>(unit);
        program.tree.File(Vault() + L"\\Letter«0001».txt.vwc",
                          "Backed Files Date Last Modified:02/01/2024-03:04:05+Original Location:" +
                              location + "\r\n");
        program.tree.File(L"Home\\Letter.txt", unsaved, {2024, 5, 5, 5, 5, 5});
        WriteDefaultList({letter});
        KillIn(25000, random);
        const std::string now = ReadBytes(letter);
        EXPECT_TRUE(now == unsaved || now == stored) << now.size() << " bytes";
        const bool safe = Exists(safety);
        if (safe) {
            ++kept;
            EXPECT_EQ(ReadBytes(safety), unsaved) << "half a safety copy";
        }
        if (now == stored) {
            ++restored;
            EXPECT_TRUE(safe);
        }
    }
    std::cout << histories.count << " steps in the windows: kills of a restore, " << kept
              << " behind the safety copy, " << restored << " behind the restore\n";
    RecordProperty("kills", static_cast<int>(histories.count));
}

TEST_F(KilledRestore, SoakFolder_LosesNoFile_NextRestoreCompletes) {
    const auto histories = Histories::Usually(4);
    int restored = 0;
    int half = 0;
    int kept = 0;
    for (unsigned seed = histories.first; seed != histories.End() && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        WorkFolder work(program.tree, program.tree.Path(seed % 4 < 2 ? L"Home" : L"j.smith"),
                        Vault(), 300000);
        WriteDefaultList({work.Path() + L"\\"});
        work.Prepare();
        DestinationChecker checker(Vault());
        checker.Learn(work.Path() + L"\\");
        checker.LearnState(work.Path() + L"\\", ReadTree(work.Copy(1)), kNoDate);
        // Half of them in the middle of the folder.
        if (seed % 2 != 0) {
            KillIn(60000, random);
        } else {
            KillIn(20000, random, [&] { return work.HasSafetyCopy(); });
        }
        work.Judge(true);
        EXPECT_EQ(checker.Violations(), "");
        EXPECT_TRUE(!work.HasSafetyCopy() || work.HasWholeSafetyCopy()) << "half a safety copy";
        if (work.HasSafetyCopy()) ++kept;
        if (work.IsTouched()) ++(work.IsRestored() ? restored : half);
        if (seed % 8 > 3) continue;
        // The user starts it again, and tries again over what the kill left.
        checker.Learn(work.Path() + L"\\");
        DrivenProgram window(program.With(L""));
        window.Begin(ID_mnuRestore);
        window.AnswerBox(work.Path(), IDYES);
        window.WaitUntilBusyDialogIsGone();
        window.WaitUntilReady();
        window.Close();
        work.Judge(true);
        EXPECT_EQ(checker.Violations(), "");
        EXPECT_TRUE(work.HasWholeSafetyCopy());
        EXPECT_TRUE(work.IsRestored()) << "the next restore";
    }
    std::cout << histories.count << " steps in the windows: kills of a folder's restore, " << kept
              << " behind the safety copy, " << half << " in the middle of the folder, " << restored
              << " behind the restore\n";
    RecordProperty("kills", static_cast<int>(histories.count));
}

}  // namespace
}  // namespace vw::test
