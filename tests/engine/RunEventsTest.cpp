// What a run reports of each item, besides the lines of the report.

#include <gtest/gtest.h>

#include "platform/DateText.h"
#include "platform/ExitStatus.h"
#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

class RunEvents : public testing::Test {
  protected:
    /// The events of one run of the list.
    Lines EventsOfRun() {
        world_.host.events.clear();
        world_.Run();
        return world_.host.events;
    }

    EngineFixture world_;
};

TEST_F(RunEvents, ChangedFolder_ReportsTotalsOfItsTreeAndEachFile) {
    world_.tree.File(L"Work\\a.txt", "12345", Day(1));
    world_.tree.File(L"Work\\Sub\\b.txt", "123", Day(1));
    world_.List({L"Work\\"});
    EXPECT_EQ(EventsOfRun(), (Lines{L"started ~\\Work\\", L"copying ~\\Work\\ 2 files 8 bytes",
                                    L"file 5", L"file 3", L"copied ~\\Work\\"}));
}

TEST_F(RunEvents, ChangedRule_ReportsTotalsOfTheFilesDirectlyInIt) {
    world_.tree.File(L"Work\\a.txt", "12345", Day(1));
    world_.tree.File(L"Work\\Sub\\b.txt", "123", Day(1));
    world_.List({L"Work\\*"});
    EXPECT_EQ(EventsOfRun(), (Lines{L"started ~\\Work\\*", L"copying ~\\Work 1 files 5 bytes",
                                    L"file 5", L"copied ~\\Work"}));
}

TEST_F(RunEvents, ChangedFile_ReportsItself) {
    world_.tree.File(L"a.txt", "1234", Day(1));
    world_.List({L"a.txt"});
    EXPECT_EQ(EventsOfRun(), (Lines{L"started ~\\a.txt", L"copying ~\\a.txt 1 files 4 bytes",
                                    L"file 4", L"copied ~\\a.txt"}));
}

TEST_F(RunEvents, UnchangedRefusedAndMissingItems_AreReportedAsSuch) {
    world_.tree.File(L"a.txt", "1", Day(1));
    world_.List({L"a.txt", L"Store\\", L"gone.txt"});
    world_.Run();
    EXPECT_EQ(EventsOfRun(),
              (Lines{L"started ~\\a.txt", L"unchanged ~\\a.txt", L"started ~\\Store\\",
                     L"refused ~\\Store\\", L"started ~\\gone.txt", L"missing ~\\gone.txt",
                     L"unchanged ~\\gone.txt"}));
}

TEST_F(RunEvents, LinkToAFile_CountsAsUnchanged) {
    world_.tree.File(L"link.txt");
    world_.drive.marks[L"link.txt"] = [](FileInfo& facts) { facts.isLink = true; };
    world_.List({L"link.txt"});
    EXPECT_EQ(EventsOfRun(), (Lines{L"started ~\\link.txt", L"unchanged ~\\link.txt"}));
}

TEST_F(RunEvents, IncompleteCopy_IsCompleted_CountsAsCopied) {
    const std::wstring used = world_.tree.File(L"Work\\a.txt", "1", Day(1));
    world_.tree.File(L"Work\\b.txt", "2", Day(1));
    world_.List({L"Work\\"});
    {
        const FileHandle held = HoldOpen(used);
        world_.Run();
    }
    const Lines events = EventsOfRun();
    EXPECT_EQ(events.back(), L"copied ~\\Work\\") << Joined(events);
}

TEST_F(RunEvents, MissingItem_KeepsItsCopiesWhenAsked) {
    world_.List({L"a.txt", L"Work\\"}, 3);
    for (int step = 1; step <= 3; ++step) {
        world_.tree.File(L"a.txt", std::to_string(step), Day(step));
        world_.tree.File(L"Work\\b.txt", std::to_string(step), Day(step));
        world_.Run();
    }
    const Listing before = world_.Copies();
    world_.tree.Remove(L"a.txt");
    world_.tree.Remove(L"Work");
    const RunResult run = world_.With([](CPackage& engine) {
        engine.KeepCopiesOfMissingItems(true);
        engine.BackupAll();
    });
    EXPECT_EQ(run.exitCode, error_number::kFileNotFound);
    EXPECT_TRUE(run.errors.empty());
    EXPECT_EQ(world_.Copies(), before);
    EXPECT_EQ(run.lines, Missing(L"~\\a.txt") + Missing(L"~\\Work\\") + kDone);
}

TEST_F(RunEvents, FileFolderAndRule_ReportSizeAndDateOfAllTheyHold) {
    world_.tree.File(L"Work\\a.txt", "12345", Day(1));
    world_.tree.File(L"Work\\Sub\\b.txt", "123", Day(2));
    world_.List({L"Work\\a.txt", L"Work\\", L"Work\\*", L"gone.txt"});
    world_.Run();
    const std::wstring first = DateText(MakeDate(Day(1)));
    const std::wstring second = DateText(MakeDate(Day(2)));
    EXPECT_EQ(world_.host.totals,
              (Lines{L"~\\Work\\a.txt 5 bytes " + first, L"~\\Work\\ 8 bytes " + second,
                     L"~\\Work 8 bytes " + second}));
}

}  // namespace
}  // namespace vw::test
