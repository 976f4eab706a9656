#include <gtest/gtest.h>

#include <algorithm>

#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

constexpr const char* kNoLinks = "this system makes no links here";

// A folder with a file and a link to another folder in it.
bool MakeLinkedWork(const EngineFixture& world) {
    world.tree.File(L"Elsewhere\\secret.txt", "secret", Day(50));
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.tree.File(L"Work\\Sub\\b.txt", "b", Day(1));
    return world.tree.Link(L"Work\\Sub\\link", L"Elsewhere");
}

TEST(Links, ToFolders_AreSkippedAndReported) {
    EngineFixture world;
    if (!MakeLinkedWork(world)) GTEST_SKIP() << kNoLinks;
    world.List({L"Work\\"});
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines),
              Joined(Lines{L"Backing: ~\\Work\\", L"* Backing: ~\\Work\\a.txt",
                           L"Skipped link: ~\\Work\\Sub\\link", L"* Backing: ~\\Work\\Sub\\b.txt",
                           L"\tDone."} +
                     kDone));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder},
                                       {L"Work«0001»\\a.txt", "a"},
                                       {L"Work«0001»\\Sub", kFolder},
                                       {L"Work«0001»\\Sub\\b.txt", "b"}}));
}

TEST(Links, SkippedLink_IsReportedInTheLanguageOfTheWindow) {
    EngineFixture world;
    if (!MakeLinkedWork(world)) GTEST_SKIP() << kNoLinks;
    world.state.language = Language::Arabic;
    world.List({L"Work\\"});
    const RunResult result = world.Run();
    EXPECT_NE(std::find(result.lines.begin(), result.lines.end(),
                        L"تم تخطي الارتباط التالي\r\n~\\Work\\Sub\\link"),
              result.lines.end());
}

TEST(Links, TargetChanges_ItemIsUnchanged) {
    EngineFixture world;
    if (!MakeLinkedWork(world)) GTEST_SKIP() << kNoLinks;
    world.List({L"Work\\"});
    world.Run();
    world.tree.File(L"Elsewhere\\secret.txt", "newer", Day(99));
    world.ExpectRun(NoChange(L"~\\Work\\"));
}

TEST(Links, LinkToItsOwnParent_IsSkipped) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    if (!world.tree.Link(L"Work\\loop", L"Work")) GTEST_SKIP() << kNoLinks;
    world.List({L"Work\\"});
    world.ExpectRun({L"Backing: ~\\Work\\", L"Skipped link: ~\\Work\\loop",
                     L"* Backing: ~\\Work\\a.txt", L"\tDone."});
}

TEST(Links, ToFiles_AreCopiedAsTheirTargets) {
    EngineFixture world;
    world.tree.File(L"Elsewhere\\real.txt", "real content", Day(1));
    world.tree.Folder(L"Work");
    if (!world.tree.Link(L"Work\\link.txt", L"Elsewhere\\real.txt")) GTEST_SKIP() << kNoLinks;
    world.List({L"Work\\", L"Work\\link.txt"});
    world.ExpectRun(BackedUp(L"~\\Work\\", {L"~\\Work\\link.txt"}) +
                    BackedUp(L"~\\Work\\link.txt"));
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0001»\\link.txt")), "real content");
    EXPECT_EQ(ReadBytes(world.Store(L"link«0001».txt")), "real content");
    // The copies are files of their own.
    world.tree.File(L"Elsewhere\\real.txt", "changed", Day(2));
    EXPECT_EQ(ReadBytes(world.Store(L"link«0001».txt")), "real content");
    world.ExpectRun(BackedUp(L"~\\Work\\", {L"~\\Work\\link.txt"}) +
                    BackedUp(L"~\\Work\\link.txt"));
}

TEST(Links, AsItem_AreFollowed) {
    EngineFixture world;
    world.tree.File(L"Elsewhere\\a.txt", "a", Day(1));
    if (!world.tree.Link(L"Work", L"Elsewhere")) GTEST_SKIP() << kNoLinks;
    world.List({L"Work\\", L"Work\\*"});
    world.ExpectRun(BackedUp(L"~\\Work\\", {L"~\\Work\\a.txt"}) + NoChange(L"~\\Work"));
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder}, {L"Work«0001»\\a.txt", "a"}}));
}

TEST(Links, InACopy_AreRemovedWithoutTheirTargets) {
    EngineFixture world;
    world.tree.File(L"Elsewhere\\secret.txt", "secret", Day(1));
    world.List({L"Work\\"}, 1);
    world.tree.File(L"Work\\a.txt", "1", Day(1));
    world.Run();
    if (!world.tree.Link(L"Store\\Work«0001»\\link", L"Elsewhere")) GTEST_SKIP() << kNoLinks;
    world.tree.File(L"Work\\a.txt", "2", Day(2));
    world.Run();
    EXPECT_EQ(ReadBytes(world.Path(L"Elsewhere\\secret.txt")), "secret");
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0001»\\a.txt")), "2");
}

TEST(Links, ToTheDestination_AreFollowed) {
    EngineFixture world;
    world.tree.Folder(L"Real store");
    if (!world.tree.Link(L"Vault", L"Real store")) GTEST_SKIP() << kNoLinks;
    world.state.BackupTo = world.Path(L"Vault");
    world.tree.File(L"a.txt", "a", Day(1));
    world.ListText(L"~\\a.txt\r\n");
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(ReadBytes(world.Path(L"Real store\\a«0001».txt")), "a");
}

}  // namespace
}  // namespace vw::test
