// An item whose date agrees with its comment by the rules of the present year is unchanged, though
// the rules of the date's own year give another date: comments of earlier versions stay valid.

#include <gtest/gtest.h>

#include "tests/engine/EngineFixture.h"
#include "tests/support/OtherRules.h"

namespace vw::test {
namespace {

class DateRules : public testing::Test {
  protected:
    DateRules() {
        world.tree.File(L"a.txt", "a", Day(1));
        world.tree.File(L"Work\\b.txt", "b", Day(2));
        world.tree.File(L"Work\\Sub\\c.txt", "c", Day(3));
        world.List({L"a.txt", L"Work\\"});
    }

    Lines RunByOwnYear() {
        world.host.log.clear();
        OtherRules disk(world.drive);
        System system{disk,        world.pump,       world.boxes,
                      world.host,  world.exitStatus, world.programEnd,
                      world.clock, world.ansi};
        CPackage(system, world.state, world.host, world.host).BackupAll();
        return world.host.log;
    }

    EngineFixture world;
    const Lines unchanged = NoChange(L"~\\a.txt") + NoChange(L"~\\Work\\") + kDone;
};

TEST_F(DateRules, CommentByThePresentYear_MeansNoChange) {
    world.Run();
    EXPECT_EQ(Joined(RunByOwnYear()), Joined(unchanged));
}

TEST_F(DateRules, CommentByTheOwnYear_MeansNoChange) {
    RunByOwnYear();
    EXPECT_EQ(Joined(RunByOwnYear()), Joined(unchanged));
}

TEST_F(DateRules, ChangedItem_IsCopiedUnderBothRules) {
    world.Run();
    world.tree.File(L"a.txt", "a2", Day(4));
    world.tree.File(L"Work\\Sub\\c.txt", "c2", Day(5));
    RunByOwnYear();
    EXPECT_EQ(ReadBytes(world.Store(L"a«0001».txt")), "a2");
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0001»\\Sub\\c.txt")), "c2");
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0002»\\Sub\\c.txt")), "c");
}

}  // namespace
}  // namespace vw::test
