// Verbs while another run holds the destination, and while the destination changes under them.

#include <algorithm>
#include <atomic>
#include <functional>
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

    // Their lines fill the output long before the last of them is compared.
    static constexpr int kFiles = 400;

    /// Makes a folder with a backup whose files all have other bytes than the item by now. A check
    /// of contents comes to a halt among them, since nobody takes what it writes.
    void MakeDifferingFiles() {
        const auto write = [this](const std::string& bytes) {
            for (int number = 0; number < kFiles; ++number)
                tree.File(NameOf(number), bytes, Day(1));
        };
        write("old");
        MakeList({L"Work\\"});
        RunsTo(0, L"backup " + List());
        write("new");
    }

    static std::wstring NameOf(int number) {
        std::wstring digits = std::to_wstring(number);
        return L"Work\\" + std::wstring(4 - digits.size(), L'0') + digits;
    }

    /// Starts a check, does `change` in the middle of it and keeps its lines and errors.
    DWORD CheckDuring(const std::function<void()>& change) {
        ProgramRun run({.program = BuiltConsole(),
                        .arguments = L"check --content " + List(),
                        .currentFolder = tree.Path()});
        run.WaitForFullOutput();
        change();
        const DWORD code = run.WaitForEnd();
        lines = run.Lines();
        errors = run.Errors();
        return code;
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

    /// The other writer may get no turn during a run as short as these.
    bool SaysInOneOfManyRuns(const std::wstring& arguments, const std::wstring& line) {
        for (int runs = 0; runs < 20; ++runs) {
            const Texts said = RunWhileTheDestinationChanges(arguments);
            if (std::ranges::find(said, line) != said.end()) return true;
        }
        return false;
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

TEST_F(VwBesideARun, CopyThatVanishesDuringACheck_IsOneError) {
    MakeDifferingFiles();
    const std::wstring copy = Stored(L"Work«0001»");
    const DWORD code = CheckDuring([&] {
        ASSERT_NE(MoveFileW(copy.c_str(), tree.Path(L"Away").c_str()), 0) << GetLastError();
    });
    EXPECT_EQ(code, 53U);
    EXPECT_EQ(Short(errors), L"error: ~\\Vault\\Work«0001»: It vanished while it was compared\r\n");
    EXPECT_TRUE(lines.back().ends_with(L" findings")) << ToUtf8(lines.back());
    EXPECT_FALSE(Exists(copy));
}

TEST_F(VwBesideARun, ItemThatVanishesDuringACheck_IsOneError) {
    MakeDifferingFiles();
    const DWORD code = CheckDuring(
        [&] { ASSERT_NE(MoveFileW(tree.Path(L"Work").c_str(), tree.Path(L"Away").c_str()), 0); });
    EXPECT_EQ(code, 53U);
    EXPECT_EQ(Short(errors), L"error: ~\\Work\\: It vanished while it was compared\r\n");
}

TEST_F(VwBesideARun, FilesThatChangeDuringACheck_AreNotedAndNoFindings) {
    MakeDifferingFiles();
    const std::string before = ReadBytes(Stored(L"Work«0001»\\0399"));
    const DWORD code = CheckDuring([&] {
        tree.File(NameOf(398), "longer than before", Day(9));
        tree.Remove(NameOf(399));
    });
    EXPECT_EQ(code, 1U);
    EXPECT_EQ(errors, L"");
    const Texts found = ShortLines();
    for (const wchar_t* name : {L"0398", L"0399"}) {
        const std::wstring file = std::wstring(L"~\\Work\\") + name;
        EXPECT_NE(
            std::ranges::find(found, L"changing: " + file + L" (changed while it was compared)"),
            found.end());
        EXPECT_EQ(std::ranges::find(found, L"content: ~\\Vault\\Work«0001»\\" + std::wstring(name) +
                                               L" (not the bytes of " + file + L")"),
                  found.end());
    }
    EXPECT_EQ(std::ranges::count_if(
                  found, [](const std::wstring& line) { return line.starts_with(L"content: "); }),
              kFiles - 2);
    EXPECT_EQ(ReadBytes(Stored(L"Work«0001»\\0399")), before);
}

TEST_F(VwBesideARun, CopyThatChangesDuringADiff_IsAnError) {
    MakeDifferingFiles();
    for (int number = 0; number < kFiles; ++number) tree.File(NameOf(number), "longer", Day(2));
    ProgramRun run({.program = BuiltConsole(),
                    .arguments = L"diff " + InQuotes(Stored(L"Work«0001»")),
                    .currentFolder = tree.Path()});
    run.WaitForFullOutput();
    tree.File(Stored(L"Work«0001»\\new"), "1", Day(3));
    EXPECT_EQ(run.WaitForEnd(), 70U);
    EXPECT_EQ(Short(run.Errors()),
              L"error: ~\\Vault\\Work«0001»: The copy changed while it was compared\r\n");
}

TEST_F(VwBesideARun, CheckAndCopies_SayThatTheDestinationChanged) {
    for (int number = 0; number < 300; ++number) {
        tree.File(Stored(L"f" + std::to_wstring(number) + L"«0002».txt"));
    }
    EXPECT_TRUE(SaysInOneOfManyRuns(L"check " + List(),
                                    L"changed: ~\\Vault (the destination changed during the "
                                    L"check)"));
    EXPECT_TRUE(SaysInOneOfManyRuns(L"copies " + List(),
                                    L"The destination changed while it was listed: ~\\Vault"));
}

}  // namespace
}  // namespace vw::test
