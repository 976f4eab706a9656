#include <gtest/gtest.h>

#include <algorithm>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

const std::wstring kIncomplete = L"Cancelled, copy 1 is incomplete: ~\\Work\\";

void MakeSources(const EngineFixture& world, int step) {
    const std::string content = std::to_string(step);
    world.tree.File(L"a.txt", content, Day(step));
    for (const wchar_t* file : {L"b.txt", L"c.txt", L"Sub\\d.txt"}) {
        world.tree.File(L"Work\\" + std::wstring(file), content, Day(step));
    }
    world.tree.File(L"e.txt", content, Day(step));
}

// Cancels as the busy dialog does, right before the n-th disk operation of a kind.
void CancelBefore(EngineFixture& world, FileCall call, int n, std::wstring_view part) {
    auto count = std::make_shared<int>(0);
    world.files.OnOperation([&world, count, call, n, part](const FileOperation& operation) {
        if (operation.call != call || operation.path.find(part) == std::wstring::npos) return;
        if (++*count == n) world.state.cancel.Request();
    });
}

bool Holds(const Lines& lines, const std::wstring& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

TEST(Cancel, Abort_RequestsACancel) {
    EngineFixture world;
    world.With([&](CPackage& engine) {
        engine.Abort();
        EXPECT_TRUE(world.state.cancel.IsRequested());
    });
}

TEST(Cancel, BetweenItems_EnablesTheMainWindow) {
    EngineFixture world;
    MakeSources(world, 1);
    world.List({L"a.txt", L"e.txt"});
    // The yields at the lines of destination, count and first item go by.
    world.pump.AtYield(1, [&] { world.state.cancel.Request(); });
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines), Joined({L"[Ready true]"}));
    EXPECT_EQ(result.exitCode, error_number::kCancelled);
    EXPECT_EQ(world.Copies(), Listing());
    // The request is forgotten with the run.
    world.pump.Restart();
    world.ExpectRun(BackedUp(L"~\\a.txt") + BackedUp(L"~\\e.txt"));
}

TEST(Cancel, InAFolder_StopsAtTheNextFile) {
    EngineFixture world;
    world.List({L"a.txt", L"Work\\", L"e.txt"});
    MakeSources(world, 1);
    world.Run();
    MakeSources(world, 2);
    CancelBefore(world, FileCall::Copy, 1, L"b.txt");
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines),
              Joined(BackedUp(L"~\\a.txt") +
                     Lines{L"Backing: ~\\Work\\", L"* Backing: ~\\Work\\b.txt", kIncomplete}));
    EXPECT_EQ(result.exitCode, error_number::kCancelled);
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "2"},
                                       {L"a«0002».txt", "1"},
                                       {L"e«0001».txt", "1"},
                                       {L"Work«0001»", kFolder},
                                       {L"Work«0001»\\b.txt", "2"},
                                       {L"Work«0002»", kFolder},
                                       {L"Work«0002»\\b.txt", "1"},
                                       {L"Work«0002»\\c.txt", "1"},
                                       {L"Work«0002»\\Sub", kFolder},
                                       {L"Work«0002»\\Sub\\d.txt", "1"}}));
    // The next run completes the copy.
    world.files.Heal();
    world.ExpectRun(NoChange(L"~\\a.txt") +
                    BackedUp(L"~\\Work\\", {L"~\\Work\\c.txt", L"~\\Work\\Sub\\d.txt"}) +
                    BackedUp(L"~\\e.txt"));
    EXPECT_EQ(ReadTree(world.Store(L"Work«0001»")), ReadTree(world.Path(L"Work")));
}

TEST(Cancel, InAFolder_IsReportedInTheLanguageOfTheWindow) {
    EngineFixture world;
    world.List({L"Work\\"});
    MakeSources(world, 1);
    world.state.language = Language::Arabic;
    CancelBefore(world, FileCall::Copy, 1, L"b.txt");
    EXPECT_EQ(world.Run().lines.back(), L"أُلغيت العملية، والنسخة رقم 1 غير كاملة\r\n~\\Work\\");
}

TEST(Cancel, BeforeTheSubFolders_DoesNotCopyThem) {
    EngineFixture world;
    world.List({L"Work\\"});
    MakeSources(world, 1);
    CancelBefore(world, FileCall::Copy, 1, L"c.txt");
    const RunResult result = world.Run();
    EXPECT_TRUE(Holds(result.lines, kIncomplete));
    EXPECT_FALSE(Exists(world.Store(L"Work«0001»\\Sub")));
    EXPECT_TRUE(Exists(world.Store(L"Work«0001»\\c.txt")));
}

TEST(Cancel, BeforeTheFirstFileOfAFolder_MakesNoCopy) {
    EngineFixture world;
    world.List({L"Work\\"});
    MakeSources(world, 1);
    world.Run();
    const Tree before = ReadTree(world.Store());
    MakeSources(world, 2);
    CancelBefore(world, FileCall::CreateFolder, 1, L".vwnew-");
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines), Joined({L"Backing: ~\\Work\\"}));
    EXPECT_EQ(result.exitCode, error_number::kCancelled);
    EXPECT_EQ(ReadTree(world.Store()), before);
    world.files.Heal();
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0001»\\Sub\\d.txt")), "2");
}

TEST(Cancel, InTheLastFileOfAFolder_CopyIsWhole) {
    EngineFixture world;
    world.List({L"Work\\"});
    MakeSources(world, 1);
    CancelBefore(world, FileCall::Copy, 1, L"d.txt");
    const RunResult result = world.Run();
    // Nothing was left out, so nothing is reported missing; the run ends all the same.
    EXPECT_EQ(Joined(result.lines),
              Joined({L"Backing: ~\\Work\\", L"* Backing: ~\\Work\\b.txt",
                      L"* Backing: ~\\Work\\c.txt", L"* Backing: ~\\Work\\Sub\\d.txt"}));
    EXPECT_EQ(result.exitCode, error_number::kCancelled);
    EXPECT_EQ(ReadTree(world.Store(L"Work«0001»")), ReadTree(world.Path(L"Work")));
}

TEST(Cancel, InAFileItem_CopyIsWhole) {
    EngineFixture world;
    world.List({L"a.txt", L"e.txt"});
    MakeSources(world, 1);
    CancelBefore(world, FileCall::Copy, 1, L"a.txt");
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines), Joined({L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt"}));
    EXPECT_EQ(result.exitCode, error_number::kCancelled);
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "1"}}));
    world.files.Heal();
    world.ExpectRun(NoChange(L"~\\a.txt") + BackedUp(L"~\\e.txt"));
}

TEST(Cancel, InTheLastItem_DoesNotHideTheDialog) {
    EngineFixture world;
    world.List({L"a.txt"});
    MakeSources(world, 1);
    CancelBefore(world, FileCall::Copy, 1, L"a.txt");
    EXPECT_EQ(Joined(world.Run().lines), Joined({L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt"}));
}

TEST(Cancel, DuringTheLookUpOfTheLocation_StopsTheRun) {
    EngineFixture world;
    world.List({L"a.txt", L"e.txt"});
    MakeSources(world, 1);
    // The look-up of the location is the first to read the comment.
    world.Run();
    MakeSources(world, 2);
    CancelBefore(world, FileCall::Read, 1, L"a«0001».txt.vwc");
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines), "");
    EXPECT_EQ(result.exitCode, error_number::kCancelled);
    EXPECT_EQ(ReadBytes(world.Store(L"a«0001».txt")), "1");
}

TEST(Cancel, InAnUnchangedItem_EndsTheRun) {
    EngineFixture world;
    world.List({L"a.txt", L"e.txt"});
    MakeSources(world, 1);
    world.Run();
    MakeSources(world, 1);
    CancelBefore(world, FileCall::FreeSpace, 1, L"");
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines), Joined(NoChange(L"~\\a.txt")));
    EXPECT_EQ(result.exitCode, error_number::kCancelled);
}

TEST(Cancel, DuringTheRotation_CompletesTheCopy) {
    EngineFixture world;
    world.List({L"a.txt"}, 1);
    MakeSources(world, 1);
    world.Run();
    MakeSources(world, 2);
    CancelBefore(world, FileCall::Rename, 2, L"Store");
    EXPECT_EQ(Joined(world.Run().lines), Joined({L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt"}));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "2"}}));
}

TEST(Cancel, SingleItem_SetsTheExitCode) {
    EngineFixture world;
    MakeSources(world, 1);
    CancelBefore(world, FileCall::Copy, 1, L"a.txt");
    const RunResult result =
        world.With([&](CPackage& engine) { engine.BackupItem(world.Path(L"a.txt")); });
    EXPECT_EQ(result.exitCode, error_number::kCancelled);
}

// The user presses Cancel at one yield after the other. Wherever it is: the run ends, the exit
// code says so, older copies stay, and what is not whole is reported.
TEST(Cancel, AtAnyYield_IsReportedAndLosesNothing) {
    int yields = 0;
    for (int k = 1;; ++k) {
        EngineFixture world;
        world.List({L"a.txt", L"Work\\", L"e.txt"}, 2);
        for (int step = 1; step <= 2; ++step) {
            MakeSources(world, step);
            world.Run();
        }
        MakeSources(world, 3);
        bool pressed = false;
        world.pump.Restart();
        world.pump.AtYield(k, [&] {
            pressed = true;
            world.state.cancel.Request();
        });
        const RunResult result = world.Run();
        world.pump.Restart();
        if (!pressed) break;
        ++yields;
        SCOPED_TRACE("cancelled at yield " + std::to_string(k) + "\n" + Joined(result.lines));
        EXPECT_EQ(result.exitCode, error_number::kCancelled);
        EXPECT_FALSE(Holds(result.lines, L"[BusyHide true]"));
        EXPECT_TRUE(result.errors.empty());
        Listing copies = world.Copies();
        for (const wchar_t* file : {L"a", L"e"}) {
            const std::wstring first = std::wstring(file) + L"«0001».txt";
            const std::wstring second = std::wstring(file) + L"«0002».txt";
            const bool made = copies[first] == "3";
            EXPECT_EQ(copies[first], made ? "3" : "2");
            EXPECT_EQ(copies[second], made ? "2" : "1");
        }
        const bool madeFolder = copies[L"Work«0001»\\b.txt"] == "3";
        EXPECT_EQ(copies[L"Work«0002»\\Sub\\d.txt"], madeFolder ? "2" : "1");
        const bool whole = !madeFolder || copies[L"Work«0001»\\Sub\\d.txt"] == "3";
        EXPECT_EQ(Holds(result.lines, kIncomplete), !whole);
        // The next run takes up what is left.
        const RunResult next = world.Run();
        EXPECT_EQ(next.exitCode, 0);
        copies = world.Copies();
        EXPECT_EQ(copies[L"a«0001».txt"], "3");
        EXPECT_EQ(copies[L"e«0001».txt"], "3");
        EXPECT_EQ(copies[L"Work«0001»\\b.txt"], "3");
        for (const auto& [name, content] : copies) {
            EXPECT_EQ(name.find(L".vw"), std::wstring::npos) << content;
        }
    }
    RecordProperty("yields", yields);
    EXPECT_GT(yields, 20);
}

TEST(Cancel, SafetyCopyOfAFolder_MakesNoCopy) {
    EngineFixture world;
    const std::wstring item = world.tree.Folder(L"Work") + L"\\";
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.tree.File(L"Work\\b.txt", "b", Day(1));
    const std::wstring safety = world.Store(L"Work«0021»");
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) world.state.cancel.Request();
    });
    world.With([&](CPackage& engine) { engine.BackupPath(item, 0, true, true, safety); });
    EXPECT_EQ(world.Copies(), Listing());
    EXPECT_EQ(world.Comments(), std::set<std::wstring>());
}

}  // namespace
}  // namespace vw::test
