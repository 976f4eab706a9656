#include "engine/DisplacedCopies.h"

#include <gtest/gtest.h>

#include "fsutil/WorkingName.h"

namespace vw {
namespace {

class DisplacedCopiesTest : public testing::Test {
  protected:
    DisplacedCopiesTest() {
        Add(L"a2", L"D:\\a", L"E:\\a2");
        Add(L"a3", L"D:\\a", L"E:\\a3");
        Add(L"b2", L"D:\\b", L"E:\\b2");
    }
    void Add(std::wstring_view entry, std::wstring_view item, std::wstring_view copy) {
        displaced.Add(entry, NameKey(item), NameKey(copy));
    }

    std::vector<std::wstring> removed;
    DisplacedCopies displaced{[this](std::wstring_view name) { removed.emplace_back(name); }};
};

TEST_F(DisplacedCopiesTest, CopyOfAnotherItem_IsNotContained) {
    EXPECT_TRUE(displaced.Contains(L"D:\\a", L"E:\\a3"));
    EXPECT_FALSE(displaced.Contains(L"D:\\a", L"E:\\b2"));
    EXPECT_FALSE(displaced.Contains(L"D:\\b", L"E:\\a3"));
    EXPECT_FALSE(displaced.Contains(L"D:\\b", L"E:\\b3"));
}

TEST_F(DisplacedCopiesTest, CompletedItem_ItsEntriesAreRemovedOnce) {
    displaced.Remove(L"D:\\a");
    EXPECT_EQ(removed, (std::vector<std::wstring>{L"a2", L"a3"}));
    displaced.Remove(L"D:\\a");
    EXPECT_EQ(removed.size(), 2U);
    EXPECT_FALSE(displaced.Contains(L"D:\\a", L"E:\\a2"));
    EXPECT_TRUE(displaced.Contains(L"D:\\b", L"E:\\b2"));
}

TEST_F(DisplacedCopiesTest, KeptItem_StaysUntilItIsComplete) {
    displaced.Keep(L"D:\\a");
    displaced.RemoveAll();
    displaced.RemoveAll();
    EXPECT_EQ(removed, std::vector<std::wstring>{L"b2"});
    EXPECT_TRUE(displaced.Contains(L"D:\\a", L"E:\\a2"));
    displaced.Remove(L"D:\\a");
    EXPECT_EQ(removed.size(), 3U);
}

}  // namespace
}  // namespace vw
