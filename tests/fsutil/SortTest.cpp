#include "fsutil/Sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "platform/TextCase.h"
#include "tests/support/TestEnvironment.h"

namespace vw::MFileDosShell {
namespace {

using test::TestEnvironment;
using Texts = std::vector<std::wstring>;

Texts Sorted(Texts texts) {
    TestEnvironment world;
    Sort(texts, world.pump);
    return texts;
}

TEST(Sort, SortsAscendingWithoutRegardToCase) {
    EXPECT_EQ(Sorted({L"b", L"C", L"a"}), (Texts{L"a", L"b", L"C"}));
    EXPECT_EQ(Sorted({L"Zebra", L"apple", L"Mango"}), (Texts{L"apple", L"Mango", L"Zebra"}));
    EXPECT_EQ(Sorted({L"é", L"É2", L"É1"}), (Texts{L"é", L"É1", L"É2"}));
    EXPECT_EQ(Sorted({L"ملف", L"بيت", L"A"}), (Texts{L"A", L"بيت", L"ملف"}));
    EXPECT_EQ(Sorted({L"ab", L"a", L""}), (Texts{L"", L"a", L"ab"}));
}

TEST(Sort, KeepsAnEmptyListAndASingleText) {
    EXPECT_EQ(Sorted({}), Texts{});
    EXPECT_EQ(Sorted({L"One"}), Texts{L"One"});
}

TEST(Sort, KeepsEveryText) {
    EXPECT_EQ(Sorted({L"a", L"b", L"a", L"a"}), (Texts{L"a", L"a", L"a", L"b"}));
    Texts mixed = Sorted({L"x", L"X", L"x"});
    std::sort(mixed.begin(), mixed.end());
    EXPECT_EQ(mixed, (Texts{L"X", L"x", L"x"}));
}

TEST(Sort, SortsUnitByUnitIgnoringCase) {
    std::mt19937 random(20240101);
    Texts texts;
    for (int i = 0; i < 2000; ++i) {
        std::wstring text;
        for (unsigned length = random() % 6; length > 0; --length) {
            text += L"aAbB_[]^zZéÉ«»مل"[random() % 16];
        }
        texts.push_back(text);
    }
    const Texts sorted = Sorted(texts);
    for (std::size_t i = 1; i < sorted.size(); ++i) {
        EXPECT_LE(UpperCase(sorted[i - 1]), UpperCase(sorted[i]));
    }
    EXPECT_TRUE(std::is_permutation(sorted.begin(), sorted.end(), texts.begin(), texts.end()));
}

TEST(Sort, FiftyThousandPaths_SortsQuicklyAndYields) {
    std::mt19937 random(7);
    Texts texts;
    for (int i = 0; i < 50'000; ++i) {
        texts.push_back(L"C:\\Users\\Someone\\Documents\\file " + std::to_wstring(random()));
    }
    TestEnvironment world;
    Sort(texts, world.pump);
    EXPECT_TRUE(std::is_sorted(texts.begin(), texts.end()));
    EXPECT_GE(world.pump.Yields(), 50'000);
    // There is a yield in 64 comparisons: comparing each text with each would give millions.
    EXPECT_LT(world.pump.Yields(), 100'000);
}

TEST(Sort, ReaderDuringTheSort_SeesWholeTexts) {
    Texts texts;
    for (int i = 500; i > 0; --i) texts.push_back(L"text " + std::to_wstring(i));
    const Texts before = texts;
    TestEnvironment world;
    int looks = 0;
    world.pump.AtEachYield([&] {
        ++looks;
        ASSERT_EQ(texts, before);
    });
    Sort(texts, world.pump);
    EXPECT_GT(looks, 500) << "also while it compares";
    EXPECT_NE(texts, before);
}

}  // namespace
}  // namespace vw::MFileDosShell
