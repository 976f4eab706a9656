#include "engine/ItemChecks.h"

#include <gtest/gtest.h>

#include <string>

namespace vw {
namespace {

// The comment of a copy has the name of the copy and ".vwc".
constexpr std::size_t kLongestCopyName = 251;

TEST(HasImpossibleName, OneCharacterTooMany_IsImpossible) {
    const std::wstring longest(kLongestCopyName, L'x');
    for (const std::wstring folder : {L"D:\\", L"D:\\Vault\\"}) {
        EXPECT_FALSE(HasImpossibleName(folder + longest));
        EXPECT_TRUE(HasImpossibleName(folder + longest + L'x'));
    }
    // Folders of a copy have no comments of their own.
    EXPECT_FALSE(HasImpossibleName(L"D:\\" + longest + L"1234\\a"));
    EXPECT_TRUE(HasImpossibleName(L"D:\\" + longest + L"12345\\a"));
}

TEST(HasImpossibleName, CharacterThatNoDiskTakes_IsImpossible) {
    for (const wchar_t character : std::wstring(L"*?\"<>|:")) {
        EXPECT_TRUE(HasImpossibleName(std::wstring(L"D:\\a") + character + L"b"));
    }
    EXPECT_TRUE(HasImpossibleName(L"D::a"));
    EXPECT_FALSE(HasImpossibleName(L"D:\\a'b;c"));
}

// "[" and "]" would be a pattern: the names themselves decide then.
TEST(OverlapsDestination, NamesWithBrackets_AreCompared) {
    EXPECT_TRUE(OverlapsDestination(L"C:\\[a]\\Store\\Sub\\", L"C:\\[a]\\Store"));
    EXPECT_TRUE(OverlapsDestination(L"C:\\[a]\\", L"C:\\[a]\\Store"));
    EXPECT_FALSE(OverlapsDestination(L"C:\\[a]\\Work\\", L"C:\\[a]\\Store"));
}

}  // namespace
}  // namespace vw
