// What a restore remembers of its target, so that it replaces nothing else.

#include "engine/TargetState.h"

#include <gtest/gtest.h>

#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

class TargetStateTest : public testing::Test {
  protected:
    [[nodiscard]] TargetState Read(std::wstring_view relative) {
        return {world_.disk, world_.pump, world_.Path(relative)};
    }
    [[nodiscard]] FileInfo Now(std::wstring_view relative) {
        return world_.disk.Stat(world_.Path(relative)).value();
    }

    EngineFixture world_;
};

TEST_F(TargetStateTest, NothingIsThere_HoldsNothing) {
    world_.tree.File(L"a.txt", "a", Day(1));
    const TargetState state = Read(L"gone");
    EXPECT_FALSE(state.Exists());
    EXPECT_FALSE(state.Holds({}, Now(L"a.txt")));
}

TEST_F(TargetStateTest, File_IsHeldWhileItsSizeAndDateStay) {
    world_.tree.File(L"a.txt", "a", Day(1));
    const TargetState state = Read(L"a.txt");
    EXPECT_TRUE(state.Exists());
    EXPECT_TRUE(state.Holds({}, Now(L"a.txt")));
    world_.tree.File(L"a.txt", "longer", Day(1));
    EXPECT_FALSE(state.Holds({}, Now(L"a.txt")));
    world_.tree.File(L"a.txt", "b", Day(2));
    EXPECT_FALSE(state.Holds({}, Now(L"a.txt")));
}

TEST_F(TargetStateTest, Folder_HoldsFilesOfAllLevelsInAnyCase) {
    world_.tree.File(L"Work\\a.txt", "a", Day(1));
    world_.tree.File(L"Work\\Sub\\b.txt", "bb", Day(2));
    const TargetState state = Read(L"Work");
    EXPECT_TRUE(state.Exists());
    EXPECT_TRUE(state.Holds(L"A.TXT", Now(L"Work\\a.txt")));
    EXPECT_TRUE(state.Holds(L"Sub\\b.txt", Now(L"Work\\Sub\\b.txt")));
    EXPECT_FALSE(state.Holds(L"b.txt", Now(L"Work\\Sub\\b.txt")));
    EXPECT_FALSE(state.Holds(L"Sub\\b.txt", Now(L"Work\\a.txt")));
}

TEST_F(TargetStateTest, Folder_YieldsAfterEachEntry) {
    constexpr int kFiles = 20;
    for (int i = 0; i < kFiles; ++i) world_.tree.File(L"Work\\" + std::to_wstring(i), "x");
    static_cast<void>(Read(L"Work"));
    EXPECT_GE(world_.pump.Yields(), kFiles);
}

}  // namespace
}  // namespace vw::test
