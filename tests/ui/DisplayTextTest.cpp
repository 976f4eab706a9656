#include "ui/DisplayText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vw {
namespace {

using testing::ElementsAre;

// Every letter is one wide.
int Letters(std::wstring_view text) { return static_cast<int>(text.size()); }

TEST(DisplayText, PathPieces_ReturnsTheFoldersOfAPath) {
    EXPECT_THAT(PathPieces(L"C:\\a\\b.txt"), ElementsAre(L"C:\\", L"a\\", L"b.txt"));
    EXPECT_THAT(PathPieces(L"C:\\a\\"), ElementsAre(L"C:\\", L"a\\"));
    EXPECT_THAT(PathPieces(L"\\\\s\\x"), ElementsAre(L"\\", L"\\", L"s\\", L"x"));
    EXPECT_THAT(PathPieces(L""), ElementsAre());
}

TEST(DisplayText, Shorten_TextThatFits_IsUnchanged) {
    EXPECT_EQ(Shorten(L"C:\\a\\b.txt", 10, Letters), L"C:\\a\\b.txt");
    EXPECT_EQ(Shorten(L"", 0, Letters), L"");
}

TEST(DisplayText, Shorten_Path_OmitsItsMiddle) {
    EXPECT_EQ(Shorten(L"C:\\Users\\Mona\\Letters\\Diary.txt", 20, Letters),
              L"C:\\Users\\…\\Diary.txt");
    EXPECT_EQ(Shorten(L"C:\\Users\\Mona\\Letters\\", 15, Letters), L"C:\\Us…\\Letters\\");
}

TEST(DisplayText, Shorten_ArabicFolders_AreOmittedWhole) {
    EXPECT_EQ(Shorten(L"C:\\العمل\\الحسابات\\Plan.xlsx", 25, Letters), L"C:\\العمل\\…\\Plan.xlsx");
    EXPECT_EQ(Shorten(L"C:\\الحسابات\\Plan.xlsx", 18, Letters), L"C:\\…\\Plan.xlsx");
    EXPECT_EQ(Shorten(L"C:\\Docs\\Accounts\\الحسابات.xlsx", 23, Letters),
              L"C:\\Docs\\…\\الحسابات.xlsx");
}

TEST(DisplayText, Shorten_LittleRoom_KeepsTheFileName) {
    EXPECT_EQ(Shorten(L"C:\\Docs\\Diary.txt", 11, Letters), L"…\\Diary.txt");
    EXPECT_TRUE(IsShownAsPath(L"…\\Diary.txt"));
    EXPECT_TRUE(IsShownAsPath(L"C:\\Docs"));
    EXPECT_FALSE(IsShownAsPath(L"Diary…"));
    EXPECT_FALSE(IsShownAsPath(L"…"));
}

TEST(DisplayText, Shorten_LongName_OmitsItsEnd) {
    EXPECT_EQ(Shorten(L"C:\\a\\Diary of the long way.txt", 8, Letters), L"…\\Diary…");
    EXPECT_EQ(Shorten(L"Backing up everything", 8, Letters), L"Backing…");
    EXPECT_EQ(Shorten(L"Backing", 0, Letters), L"…");
}

TEST(DisplayText, Shorten_KeepsSurrogatePairsTogether) {
    const std::wstring text = {0xD83D, 0xDE00, 0xD83D, 0xDE00, 0xD83D, 0xDE00};
    const std::wstring expected = {0xD83D, 0xDE00, 0x2026};
    EXPECT_EQ(Shorten(text, 4, Letters), expected);
}

TEST(DisplayText, Wrapped_BreaksAtBlanks) {
    EXPECT_THAT(Wrapped(L"one two three", 7, Letters), ElementsAre(L"one two", L"three"));
    EXPECT_THAT(Wrapped(L"one two three", 100, Letters), ElementsAre(L"one two three"));
    EXPECT_THAT(Wrapped(L"one  two", 4, Letters), ElementsAre(L"one", L"two"));
    EXPECT_THAT(Wrapped(L"unbreakable word", 4, Letters), ElementsAre(L"unbreakable", L"word"));
}

TEST(DisplayText, Wrapped_KeepsTheLinesOfTheText) {
    EXPECT_THAT(Wrapped(L"a\r\nb c\nd", 9, Letters), ElementsAre(L"a", L"b c", L"d"));
    EXPECT_THAT(Wrapped(L"a\r\n\r\nb", 9, Letters), ElementsAre(L"a", L"", L"b"));
    EXPECT_THAT(Wrapped(L"", 9, Letters), ElementsAre());
    EXPECT_THAT(Wrapped(L"a ", 9, Letters), ElementsAre(L"a "));
}

}  // namespace
}  // namespace vw
