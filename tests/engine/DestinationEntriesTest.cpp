// What a run knows of the entries of its destination without asking the disk.

#include <gtest/gtest.h>

#include "engine/Destination.h"
#include "fsutil/Patience.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

class DestinationEntries : public testing::Test {
  protected:
    DestinationEntries() {
        world.tree.File(L"Store\\a«0001».txt");
        EXPECT_TRUE(destination.TryEnter());
    }

    EngineFixture world;
    Patience patience{world.system, world.state.cancel};
    Destination destination{world.system, world.Store(), patience};
    const std::wstring copy = world.Store(L"a«0001».txt");
};

TEST_F(DestinationEntries, MayContain_TopmostFolderDecides) {
    EXPECT_TRUE(destination.MayContain(copy));
    EXPECT_TRUE(destination.MayContain(copy + L"\\deeper"));
    EXPECT_FALSE(destination.MayContain(world.Store(L"b")));
    EXPECT_FALSE(destination.MayContain(world.Store(L"b\\a«0001».txt")));
    for (const wchar_t* const end : {L"", L"\\"}) {
        EXPECT_TRUE(destination.MayContain(world.Store() + end)) << "no entry: the disk decides";
    }
}

TEST_F(DestinationEntries, IsTopEntry_NothingDeeper) {
    EXPECT_TRUE(destination.IsTopEntry(copy));
    EXPECT_FALSE(destination.IsTopEntry(copy + L"\\deeper"));
    EXPECT_FALSE(destination.IsTopEntry(world.Store()));
    EXPECT_FALSE(destination.IsTopEntry(world.Store() + L"\\"));
}

TEST_F(DestinationEntries, AddedAndRemoved_AreKnown) {
    destination.OnAdded(world.Store(L"Work«0001»\\x.txt"));
    EXPECT_TRUE(destination.MayContain(world.Store(L"Work«0001»")));
    destination.OnRemoved(world.Store(L"Work«0001»\\x.txt"));
    EXPECT_TRUE(destination.MayContain(world.Store(L"Work«0001»"))) << "the folder stays";
    destination.OnRemoved(world.Store(L"Work«0001»"));
    EXPECT_FALSE(destination.MayContain(world.Store(L"Work«0001»")));
}

TEST_F(DestinationEntries, CachedComment_IsTakenOnceUnlessSomethingWasAdded) {
    destination.CacheComment(copy, L"comment");
    EXPECT_EQ(destination.TakeCachedComment(world.Store(L"b")), std::nullopt);
    EXPECT_EQ(destination.TakeCachedComment(copy), L"comment");
    EXPECT_EQ(destination.TakeCachedComment(copy), std::nullopt);
    destination.CacheComment(copy, L"comment");
    destination.OnAdded(world.Store(L"b"));
    EXPECT_EQ(destination.TakeCachedComment(copy), std::nullopt);
}

TEST_F(DestinationEntries, ReadyCopy_ReservesItsPlace) {
    const std::wstring item = world.Path(L"a.txt");
    const std::wstring other = world.Path(L"Other\\a.txt");
    destination.AddPending(item, copy, {.path = world.Store(L"ready")});
    ASSERT_NE(destination.ReadyOf(item), nullptr);
    EXPECT_EQ(destination.ReadyOf(item)->path, world.Store(L"ready"));
    EXPECT_EQ(destination.ReadyOf(other), nullptr);
    EXPECT_TRUE(destination.IsReservedForOther(copy, other));
    EXPECT_FALSE(destination.IsReservedForOther(copy, item));
    EXPECT_FALSE(destination.IsReservedForOther(world.Store(L"b"), other));
    destination.RemovePending(item);
    EXPECT_FALSE(destination.IsReservedForOther(copy, other));
}

}  // namespace
}  // namespace vw::test
