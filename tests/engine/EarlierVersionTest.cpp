// Old and new versions of the program in one destination: what the one leaves, the other finishes,
// removes or leaves alone, and each reads the other's comments.

#include <gtest/gtest.h>

#include <set>

#include "engine/CommentLine.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "platform/Utf8.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"
#include "tests/support/EarlierWorkingName.h"

namespace vw::test {
namespace {

constexpr WorkingState kStates[]{WorkingState::New, WorkingState::Ready, WorkingState::Old};

/// The name of an entry that the earlier version left for an item of the world.
std::wstring EarlierName(const EngineFixture& world, WorkingState state, std::wstring_view item,
                         const ProcessTag& owner, Date date = kNoDate) {
    const std::wstring path = world.Path(item);
    const WorkingName name{state, NameKey(path),
                           NameKey(CFilePackageName(path, 1, 0, world.Store())), date, owner};
    return earlier::FormatWorkingName(name, MFileDosShell::CFileFirstName(path));
}

TEST(EntryOfAnEarlierVersion, Name_IsReadAndWrittenAsBefore) {
    for (const WorkingState state : kStates) {
        for (const wchar_t* const firstName : {L"Report", L"", L"a«0001»b", L"x.vwready-1. "}) {
            const WorkingName name{state,
                                   0x0123456789ABCDEF,
                                   0xFEDCBA9876543210,
                                   MakeDate({2005, 3, 5, 14, 7, 9}),
                                   {0x89ABCDEF, 0x1234, 7}};
            const std::wstring text = earlier::FormatWorkingName(name, firstName);
            EXPECT_EQ(ParseWorkingName(text), name) << ToUtf8(text);
            EXPECT_EQ(FormatWorkingName(name, firstName), text) << "written as before";
        }
    }
}

TEST(EntryOfAnEarlierVersion, DeadProcess_IsFinishedOrRemoved) {
    EngineFixture world;
    world.List({L"a.txt", L"Work\\"}, 3);
    for (int step = 1; step <= 2; ++step) {
        world.tree.File(L"a.txt", std::to_string(step), Day(step));
        world.tree.File(L"Work\\b.txt", std::to_string(step), Day(step));
        if (step == 1) world.Run();
    }
    const ProcessTag dead = DeadProcess();
    const Date newest = MakeDate(Day(2));
    const std::wstring store = L"Store\\";
    world.tree.File(store + EarlierName(world, WorkingState::Ready, L"a.txt", dead, newest), "2");
    world.tree.File(
        store + EarlierName(world, WorkingState::Ready, L"Work", dead, newest) + L"\\b.txt", "2",
        Day(2));
    world.tree.File(store + EarlierName(world, WorkingState::New, L"a.txt", dead), "half");
    world.tree.File(store + EarlierName(world, WorkingState::New, L"a.txt", dead) + L".vwc",
                    "half");
    world.tree.File(store + EarlierName(world, WorkingState::Old, L"c.txt", dead), "left");
    const RunResult result = world.Run();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "2"},
                                       {L"a«0002».txt", "1"},
                                       {L"Work«0001»", "<folder>"},
                                       {L"Work«0001»\\b.txt", "2"},
                                       {L"Work«0002»", "<folder>"},
                                       {L"Work«0002»\\b.txt", "1"}}));
    EXPECT_EQ(LeftOvers(world), Lines());
}

TEST(EntryOfAnEarlierVersion, LivingProcessOrAnotherComputer_IsKept) {
    EngineFixture world;
    world.List({L"a.txt"}, 3);
    world.tree.File(L"a.txt", "1", Day(1));
    const LivingProcess living;
    std::set<std::wstring> expected;
    for (const ProcessTag& owner : {living.Tag(), ProcessElsewhere()}) {
        for (const WorkingState state : kStates) {
            const std::wstring name = EarlierName(world, state, L"b.txt", owner);
            world.tree.File(L"Store\\" + name, "theirs");
            expected.insert(name);
        }
    }
    world.Run();
    const Lines left = LeftOvers(world);
    EXPECT_EQ(std::set<std::wstring>(left.begin(), left.end()), expected);
}

// A run of this version is killed at each of its changes. What it leaves is, for the earlier one,
// worthless, an old copy that has left its series, or a name that it does not parse.
TEST(EntryOfThisVersion, KilledAtAnyChange_EarlierVersionFinishesNothing) {
    std::set<std::wstring> words;
    for (const Completeness completeness :
         {Completeness::Whole, Completeness::MissesFiles, Completeness::CutShort}) {
        for (int n = 1;; ++n) {
            EngineFixture world;
            world.List({L"Work\\"}, 1);
            for (const wchar_t* const file : {L"Work\\a.txt", L"Work\\b.txt"}) {
                world.tree.File(file, "1", Day(1));
            }
            world.Run();
            for (const wchar_t* const file : {L"Work\\a.txt", L"Work\\b.txt"}) {
                world.tree.File(file, "2", Day(2));
            }
            FileHandle held;
            if (completeness == Completeness::MissesFiles) {
                held = HoldOpen(world.Path(L"Work\\b.txt"));
            }
            world.files.DieAtNth(n, OnlyChanges());
            world.files.OnOperation([&](const FileOperation& operation) {
                if (completeness == Completeness::CutShort && operation.call == FileCall::Copy) {
                    world.state.cancel.Request();
                }
            });
            world.Run();
            const bool died = !world.files.Faults().empty();
            world.files.Heal();
            for (std::wstring name : LeftOvers(world)) {
                SCOPED_TRACE(ToUtf8(name));
                if (name.ends_with(kCommentExtension)) name.resize(name.size() - 4);
                const auto known = earlier::ParseWorkingName(name);
                EXPECT_TRUE(!known || known->state != WorkingState::Ready);
                for (const wchar_t* const word :
                     {L".vwnew", L".vwold", L".vwready", L".vwpart", L".vwcut"}) {
                    if (name.find(word) == name.npos) continue;
                    words.insert(word);
                    const bool isOfBoth =
                        word == std::wstring(L".vwnew") || word == std::wstring(L".vwold");
                    EXPECT_EQ(known.has_value(), isOfBoth);
                }
            }
            if (!died) break;
        }
    }
    EXPECT_EQ(words,
              (std::set<std::wstring>{L".vwnew", L".vwold", L".vwready", L".vwpart", L".vwcut"}));
}

// Both versions read the first line.
TEST(CommentOfThisVersion, IncompleteCopy_HasTheLineOfAnEarlierVersion) {
    EngineFixture world;
    world.List({L"Work\\"}, 3);
    for (const wchar_t* const file : {L"Work\\a.txt", L"Work\\b.txt"}) {
        world.tree.File(file, "1", Day(1));
    }
    {
        const FileHandle held = HoldOpen(world.Path(L"Work\\b.txt"));
        world.Run();
    }
    const std::wstring comment = world.Store(L"Work«0001».vwc");
    const std::string incomplete = ReadBytes(comment);
    world.Run();
    const std::string whole = ReadBytes(comment);
    EXPECT_EQ(incomplete, whole + "Incomplete\r\n");
    EXPECT_EQ(whole, "Backed Files Date Last Modified:01/01/2010-00:01:01+Original Location:" +
                         world.ansi.Encode(world.Path()) + "\r\n");
}

}  // namespace
}  // namespace vw::test
