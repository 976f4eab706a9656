// Verbs while another run holds the destination, and while the destination changes under them.

#include <algorithm>
#include <atomic>
#include <optional>
#include <thread>

#include "platform/Utf8.h"
#include "tests/console/VwTest.h"
#include "tests/support/OtherRun.h"

namespace vw::test {
namespace {

class VwBesideARun : public VwTest {
  protected:
    VwBesideARun() {
        tree.File(L"a.txt", "123", Day(1));
        MakeList({L"a.txt"});
        RunsTo(0, L"backup " + List());
    }

    /// Starts the program, which must not end before the other run does.
    void WaitsForTheOtherRun(const std::wstring& arguments) {
        std::optional<OtherRun> other(vault);
        ProgramRun run(
            {.program = BuiltConsole(), .arguments = arguments, .currentFolder = tree.Path()});
        EXPECT_TRUE(run.StaysFor(700)) << ToUtf8(run.Errors());
        other.reset();
        EXPECT_EQ(run.WaitForEnd(), 0U) << ToUtf8(run.Errors());
        lines = run.Lines();
    }

    /// Runs the program while files come into the destination all the time; gives its lines.
    Texts RunWhileTheDestinationChanges(const std::wstring& arguments) {
        std::atomic<bool> isOver = false;
        std::thread writer([&] {
            for (int number = 0; !isOver; ++number) {
                tree.File(Stored(L"n" + std::to_wstring(number) + L".tmp"), std::to_string(number));
            }
        });
        ProgramRun run(
            {.program = BuiltConsole(), .arguments = arguments, .currentFolder = tree.Path()});
        run.WaitForEnd();
        isOver = true;
        writer.join();
        lines = run.Lines();
        return ShortLines();
    }
};

TEST_F(VwBesideARun, Restore_WaitsUntilTheDestinationIsFree) {
    WaitsForTheOtherRun(L"restore " + InQuotes(Stored(L"a«0001».txt")) + L" --to Back");
    EXPECT_EQ(ReadBytes(tree.Path(L"Back\\a.txt")), "123");
}

TEST_F(VwBesideARun, Backup_WaitsUntilTheDestinationIsFree) {
    tree.File(L"a.txt", "1234", Day(2));
    WaitsForTheOtherRun(L"backup " + List());
    EXPECT_EQ(ShortLines().at(1), L"Waiting for another backup in: ~\\Vault");
    EXPECT_EQ(ReadBytes(Stored(L"a«0001».txt")), "1234");
}

TEST_F(VwBesideARun, ReadingVerbs_DoNotWait) {
    const OtherRun other(vault);
    RunsTo(0, L"preview " + List());
    RunsTo(0, L"check --content " + List());
    RunsTo(0, L"copies " + List());
    RunsTo(0, L"diff " + InQuotes(Stored(L"a«0001».txt")));
}

TEST_F(VwBesideARun, CheckAndCopies_SayThatTheDestinationChanged) {
    for (int number = 0; number < 300; ++number) {
        tree.File(Stored(L"f" + std::to_wstring(number) + L"«0002».txt"));
    }
    const Texts checked = RunWhileTheDestinationChanges(L"check " + List());
    EXPECT_NE(std::ranges::find(checked,
                                L"changed: ~\\Vault (the destination changed during the "
                                L"check)"),
              checked.end());
    const Texts listed = RunWhileTheDestinationChanges(L"copies " + List());
    EXPECT_NE(std::ranges::find(listed, L"The destination changed while it was listed: ~\\Vault"),
              listed.end());
}

}  // namespace
}  // namespace vw::test
