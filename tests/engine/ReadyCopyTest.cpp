#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"

// What runs that were killed left in a destination, state by state, and what the next run makes of
// it.

namespace vw::test {
namespace {

const Lines kCompleted{L"Completed an interrupted copy: ~\\a.txt"};

// Copies 1 to 3 hold "3", "2", "1"; the item is "4" by now.
void MakeSeries(EngineFixture& world) {
    world.List({L"a.txt"}, 3);
    for (int step = 1; step <= 4; ++step) {
        world.tree.File(L"a.txt", std::to_string(step), Day(step));
        if (step < 4) world.Run();
    }
}

void MoveInStore(const EngineFixture& world, const std::wstring& from, const std::wstring& to) {
    world.tree.File(L"Store\\" + to, ReadBytes(world.Store(from)));
    world.tree.Remove(L"Store\\" + from);
}

const Listing kFinished{{L"a«0001».txt", "4"}, {L"a«0002».txt", "3"}, {L"a«0003».txt", "2"}};

// A killed run had the new copy ready and got so many steps further.
class ReadyCopy : public testing::TestWithParam<int> {};

TEST_P(ReadyCopy, AnyStateOfTheRotation_IsFinished) {
    EngineFixture world;
    MakeSeries(world);
    const ProcessTag dead = DeadProcess();
    const int steps = GetParam();
    world.tree.File(
        L"Store\\" + LeftOverName(world, WorkingState::Ready, L"a.txt", dead, MakeDate(Day(4))),
        "4");
    world.tree.File(L"Store\\" + LeftOverName(world, WorkingState::New, L"a.txt", dead) + L".vwc",
                    "half a comm");
    if (steps >= 1) {
        MoveInStore(world, L"a«0003».txt", LeftOverName(world, WorkingState::Old, L"a.txt", dead));
    }
    if (steps >= 2) MoveInStore(world, L"a«0002».txt", L"a«0003».txt");
    if (steps >= 3) MoveInStore(world, L"a«0001».txt", L"a«0002».txt");
    if (steps >= 4) {
        world.tree.Remove(L"Store\\" + LeftOverName(world, WorkingState::Old, L"a.txt", dead));
    }
    if (steps >= 5) {
        world.tree.Remove(L"Store\\a«0001».txt.vwc");
        world.tree.File(L"Store\\a«0001».txt.vwc",
                        "Backed Files Date Last Modified:01/01/2010-00:04:04+Original Location:" +
                            world.ansi.Encode(world.Path()) + "\r\n");
    }
    world.ExpectRun(kCompleted + NoChange(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), kFinished);
    EXPECT_EQ(world.Comments(), std::set<std::wstring>{L"a«0001».txt.vwc"});
    world.ExpectRun(NoChange(L"~\\a.txt"));
}

INSTANTIATE_TEST_SUITE_P(AfterSteps, ReadyCopy, testing::Range(0, 6));

// The comment of the first letter cannot be replaced, after its old copies made room. Its place is
// empty then, but the other letter must not take it and drive out the copies of the first.
TEST(ReadyCopyOfThisRun, AnotherItemOfItsName_KeepsItsPlace) {
    EngineFixture world;
    world.List({L"a.txt", L"Old\\a.txt"}, 3);
    for (int step = 1; step <= 4; ++step) {
        world.tree.File(L"a.txt", std::to_string(step), Day(step));
        world.tree.File(L"Old\\a.txt", "old " + std::to_string(step), Day(step));
        if (step < 4) world.Run();
    }
    world.files.FailNth(1, error_number::kDeviceError, OnlyCalls({FileCall::Replace}));
    EXPECT_EQ(world.Run().exitCode, error_number::kDeviceError);
    world.files.Heal();
    const Listing old{
        {L"a«0101».txt", "old 4"}, {L"a«0102».txt", "old 3"}, {L"a«0103».txt", "old 2"}};
    Listing broken = old;
    broken.insert({{L"a«0002».txt", "3"}, {L"a«0003».txt", "2"}});
    Listing now = world.Copies();
    EXPECT_EQ(std::erase_if(now,
                            [](const auto& copy) {
                                return copy.first.find(L".vwready-") != std::wstring::npos;
                            }),
              1U);
    EXPECT_EQ(now, broken);
    world.ExpectRun(kCompleted + NoChange(L"~\\a.txt") + NoChange(L"~\\Old\\a.txt"));
    Listing whole = old;
    whole.insert({{L"a«0001».txt", "4"}, {L"a«0002».txt", "3"}, {L"a«0003».txt", "2"}});
    EXPECT_EQ(world.Copies(), whole);
}

TEST(ReadyCopyOfAKilledRun, ItemChangedSince_IsFinishedAndANewOneMade) {
    EngineFixture world;
    MakeSeries(world);
    world.tree.File(L"Store\\" + LeftOverName(world, WorkingState::Ready, L"a.txt", DeadProcess(),
                                              MakeDate(Day(4))),
                    "4");
    world.tree.File(L"a.txt", "5", Day(5));
    world.ExpectRun(kCompleted + BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(),
              (Listing{{L"a«0001».txt", "5"}, {L"a«0002».txt", "4"}, {L"a«0003».txt", "3"}}));
}

TEST(ReadyCopyOfAKilledRun, VanishedItem_IsFinished) {
    EngineFixture world;
    MakeSeries(world);
    world.tree.File(L"Store\\" + LeftOverName(world, WorkingState::Ready, L"a.txt", DeadProcess(),
                                              MakeDate(Day(4))),
                    "4");
    world.tree.Remove(L"a.txt");
    world.ExpectRun(
        Missing(L"~\\a.txt") + kCompleted +
        Lines{L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt", L"! 53 BackupFile ~\\a.txt"});
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0002».txt", "4"}, {L"a«0003».txt", "3"}}));
}

TEST(ReadyCopyOfAKilledRun, Report_IsInTheLanguageOfTheWindow) {
    EngineFixture world;
    MakeSeries(world);
    world.state.language = Language::Arabic;
    world.tree.File(L"Store\\" + LeftOverName(world, WorkingState::Ready, L"a.txt", DeadProcess(),
                                              MakeDate(Day(4))),
                    "4");
    EXPECT_EQ(world.Run().lines.front(), L"اكتملت نسخة من عملية نسخ سابقة انقطعت\r\n~\\a.txt");
}

TEST(ReadyCopyOfAKilledRun, GapInTheSeries_MovesTheCopiesBelowItOnly) {
    EngineFixture world;
    MakeSeries(world);
    world.List({L"a.txt"}, 5);
    MoveInStore(world, L"a«0003».txt", L"a«0004».txt");
    world.tree.File(L"Store\\" + LeftOverName(world, WorkingState::Ready, L"a.txt", DeadProcess(),
                                              MakeDate(Day(4))),
                    "4");
    world.ExpectRun(kCompleted + NoChange(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "4"},
                                       {L"a«0002».txt", "3"},
                                       {L"a«0003».txt", "2"},
                                       {L"a«0004».txt", "1"}}));
}

// The ready copy cannot take its place at first; the series has nothing to move for it.
TEST(ReadyCopyOfAKilledRun, WholeOneIsStuck_CutShortOneIsNotRotated) {
    EngineFixture world;
    world.List({L"Work\\"});
    world.tree.File(L"Work\\a.txt", "old", Day(1));
    world.tree.File(L"Work\\b.txt", "old", Day(1));
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) world.state.cancel.Request();
    });
    world.Run();
    ASSERT_TRUE(Exists(world.Store(L"Work«0001»\\a.txt")));
    const std::wstring ready =
        LeftOverName(world, WorkingState::Ready, L"Work\\", DeadProcess(), MakeDate(Day(2)));
    world.tree.File(L"Store\\" + ready + L"\\a.txt", "whole", Day(2));
    world.tree.Remove(L"Work");
    world.tree.File(L"Work\\a.txt", "whole", Day(2));
    world.files.OnOperation({});
    world.files.FailNth(1, error_number::kPermissionDenied, [&](const FileOperation& operation) {
        return operation.call == FileCall::Rename && operation.to == world.Store(L"Work«0001»");
    });
    EXPECT_EQ(world.Run().exitCode, error_number::kPermissionDenied);
    world.files.Heal();
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder}, {L"Work«0001»\\a.txt", "whole"}}));
}

TEST(ReadyCopyOfAKilledRun, CountIsZero_ReplacesCopyOne) {
    EngineFixture world;
    MakeSeries(world);
    world.List({L"a.txt"}, 0);
    world.tree.File(L"Store\\" + LeftOverName(world, WorkingState::Ready, L"a.txt", DeadProcess(),
                                              MakeDate(Day(4))),
                    "4");
    world.ExpectRun(kCompleted + NoChange(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(),
              (Listing{{L"a«0001».txt", "4"}, {L"a«0002».txt", "2"}, {L"a«0003».txt", "1"}}));
}

TEST(ReadyCopyOfAKilledRun, HeldCopy_StaysUntilItIsReleased) {
    EngineFixture world;
    MakeSeries(world);
    world.tree.File(L"Store\\" + LeftOverName(world, WorkingState::Ready, L"a.txt", DeadProcess(),
                                              MakeDate(Day(4))),
                    "4");
    const Tree before = ReadTree(world.Store());
    {
        const FileHandle held = HoldInPlace(world.Store(L"a«0001».txt"));
        for (int run = 0; run < 3; ++run) {
            world.ExpectRun({L"! 70 BackupPath ~\\Store\\a«0001».txt"});
            Tree after = ReadTree(world.Store());
            for (const std::wstring& name : LeftOvers(world)) {
                if (name.ends_with(L".vwc")) after.erase(name);
            }
            EXPECT_EQ(after, before);
        }
    }
    world.ExpectRun(kCompleted + NoChange(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), kFinished);
}

TEST(ReadyCopyOfAKilledRun, FolderBelowADottedFolder_IsFinished) {
    EngineFixture world;
    const std::wstring item = L"Old.Files\\Work\\";
    world.List({item}, 2);
    for (int step = 1; step <= 3; ++step) {
        world.tree.File(item + L"a.txt", std::to_string(step), Day(step));
        if (step < 3) world.Run();
    }
    const std::wstring ready =
        LeftOverName(world, WorkingState::Ready, item, DeadProcess(), MakeDate(Day(3)));
    world.tree.File(L"Store\\" + ready + L"\\a.txt", "3", Day(3));
    world.ExpectRun(Lines{L"Completed an interrupted copy: ~\\Old.Files\\Work\\"} +
                    NoChange(L"~\\Old.Files\\Work\\"));
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001».Files", kFolder},
                                       {L"Work«0001».Files\\Work", kFolder},
                                       {L"Work«0001».Files\\Work\\a.txt", "3"},
                                       {L"Work«0002».Files", kFolder},
                                       {L"Work«0002».Files\\Work", kFolder},
                                       {L"Work«0002».Files\\Work\\a.txt", "2"}}));
}

TEST(ReadyCopyOfAKilledRun, Rule_IsFinished) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.List({L"Work\\*"});
    const std::wstring ready =
        LeftOverName(world, WorkingState::Ready, L"Work", DeadProcess(), MakeDate(Day(1)));
    world.tree.File(L"Store\\" + ready + L"\\a.txt", "a", Day(1));
    world.ExpectRun(Lines{L"Completed an interrupted copy: ~\\Work"} + NoChange(L"~\\Work"));
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder}, {L"Work«0001»\\a.txt", "a"}}));
}

TEST(ReadyCopyOfAKilledRun, ItemIsNotInTheList_IsKept) {
    EngineFixture world;
    world.tree.File(L"A\\a.txt", "A", Day(1));
    world.tree.File(L"B\\a.txt", "B", Day(1));
    const std::wstring ready =
        LeftOverName(world, WorkingState::Ready, L"A\\a.txt", DeadProcess(), MakeDate(Day(1)));
    world.tree.File(L"Store\\" + ready, "A");
    // The other item of that name may not take the place that is waited for.
    world.List({L"B\\a.txt"});
    world.ExpectRun(BackedUp(L"~\\B\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{ready, "A"}, {L"a«0101».txt", "B"}}));
    world.List({L"B\\a.txt", L"A\\a.txt"});
    world.ExpectRun(NoChange(L"~\\B\\a.txt") +
                    Lines{L"Completed an interrupted copy: ~\\A\\a.txt"} +
                    NoChange(L"~\\A\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "A"}, {L"a«0101».txt", "B"}}));
}

TEST(ReadyCopyOfAKilledRun, KeepsTheDateThatTheItemHad) {
    EngineFixture world;
    world.tree.File(L"a.txt", "1", Day(7));
    world.List({L"a.txt"});  // the copy's own date proves nothing
    world.tree.File(L"Store\\" + LeftOverName(world, WorkingState::Ready, L"a.txt", DeadProcess(),
                                              MakeDate(Day(7))),
                    "1", Day(50));
    world.ExpectRun(kCompleted + NoChange(L"~\\a.txt"));
}

// Whose left-overs a run may touch.
struct Owner {
    const char* name;
    bool gone;
};

class LeftOver : public testing::TestWithParam<Owner> {
  protected:
    ProcessTag Tag() {
        const std::string name = GetParam().name;
        if (name == "Living") return living_.Tag();
        if (name == "Elsewhere") return ProcessElsewhere();
        if (name == "Dead") return DeadProcess();
        if (name == "Own") return ThisProcess();
        // Its number was given to another process since.
        ProcessTag tag = living_.Tag();
        --tag.processStart;
        return tag;
    }

  private:
    LivingProcess living_;
};

TEST_P(LeftOver, ProcessIsGone_IsRemoved) {
    EngineFixture world;
    world.tree.File(L"other.txt", "x", Day(1));
    world.List({L"other.txt"});
    for (const WorkingState state : {WorkingState::New, WorkingState::Old}) {
        const std::wstring file = LeftOverName(world, state, L"a.txt", Tag());
        const std::wstring folder = LeftOverName(world, state, L"Work\\", Tag());
        world.tree.File(L"Store\\" + file, "half");
        world.tree.File(L"Store\\" + file + L".vwc", "comment");
        world.tree.File(L"Store\\" + folder + L"\\Sub\\b.txt", "half");
    }
    const std::size_t count = LeftOvers(world).size();
    EXPECT_EQ(count, 6U);
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_EQ(LeftOvers(world).size(), GetParam().gone ? 0U : count);
}

TEST_P(LeftOver, ReadyAndProcessIsGone_IsFinished) {
    EngineFixture world;
    MakeSeries(world);
    const std::wstring ready =
        LeftOverName(world, WorkingState::Ready, L"a.txt", Tag(), MakeDate(Day(4)));
    world.tree.File(L"Store\\" + ready, "4");
    world.ExpectRun(GetParam().gone ? kCompleted + NoChange(L"~\\a.txt") : BackedUp(L"~\\a.txt"));
    Listing expected = kFinished;
    if (!GetParam().gone) expected[ready] = "4";
    EXPECT_EQ(world.Copies(), expected);
}

INSTANTIATE_TEST_SUITE_P(OfAProcess, LeftOver,
                         testing::Values(Owner{"Living", false}, Owner{"Elsewhere", false},
                                         Owner{"Dead", true}, Owner{"Reused", true},
                                         Owner{"Own", true}),
                         [](const auto& info) { return std::string(info.param.name); });

// A held copy keeps a new one out. While a newer one takes its turn the process dies at one point
// after the other: half of a copy must not be taken for one that is ready.
TEST(CopyThatIsGivenUp, KilledAtAnyChange_IsNeverFinishedFromItsRest) {
    int points = 0;
    for (int n = 1;; ++n) {
        EngineFixture world;
        world.List({L"Work\\"}, 2);
        const auto edit = [&](int step) {
            for (const wchar_t* file : {L"a.txt", L"b.txt", L"Sub\\c.txt"}) {
                world.tree.File(L"Work\\" + std::wstring(file), std::to_string(step), Day(step));
            }
        };
        edit(1);
        world.Run();
        world.tree.File(L"Store\\Work«0002»\\x.txt", "0");
        world.drive.held = {world.Store(L"Work«0002»")};
        edit(2);
        world.Run();
        ASSERT_EQ(LeftOvers(world).size(), 1U);
        edit(3);
        world.files.DieAtNth(n, OnlyChanges());
        world.Run();
        const bool died = !world.files.Faults().empty();
        world.files.Heal();
        world.drive.held.clear();
        if (!died) break;
        ++points;
        SCOPED_TRACE("killed at change " + std::to_string(n));
        UpdateControls(world, DeadProcess());
        EXPECT_EQ(world.Run().exitCode, 0);
        EXPECT_EQ(ReadTree(world.Store(L"Work«0001»")), ReadTree(world.Path(L"Work")));
        const std::string second = ReadBytes(world.Store(L"Work«0002»\\b.txt"));
        EXPECT_TRUE(second == "1" || second == "2") << second;
        EXPECT_EQ(ReadBytes(world.Store(L"Work«0002»\\Sub\\c.txt")), second);
    }
    EXPECT_GT(points, 10);
}

// Another computer works in the same shared folder and halts at one point after the other:
// our run neither needs nor touches what is there of it.
TEST(RunOfAnotherComputer, StoppedAtAnyChange_ItsEntriesAreKept) {
    int points = 0;
    for (int n = 1;; ++n) {
        EngineFixture world;
        MakeSeries(world);
        world.files.DieAtNth(n, OnlyChanges());
        world.Run();
        const bool died = !world.files.Faults().empty();
        world.files.Heal();
        if (!died) break;
        ++points;
        SCOPED_TRACE("stands still at change " + std::to_string(n));
        UpdateControls(world, ProcessElsewhere());
        const Lines theirs = LeftOvers(world);
        EXPECT_EQ(world.Run().exitCode, 0);
        EXPECT_EQ(LeftOvers(world), theirs);
        EXPECT_EQ(ReadBytes(world.Store(L"a«0001».txt")), "4");
        EXPECT_FALSE(Exists(world.Store(L"a«0004».txt")));
    }
    EXPECT_GE(points, 7);
}

}  // namespace
}  // namespace vw::test
