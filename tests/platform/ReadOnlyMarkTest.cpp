#include "platform/ReadOnlyMark.h"

#include <gtest/gtest.h>

#include "platform/WindowsHeader.h"
#include "tests/support/ImportHook.h"
#include "tests/support/TempTree.h"

namespace vw::test {
namespace {

DWORD attributesBefore = 0;
DWORD attributesGiven = 0;
BOOL isGiven = TRUE;

DWORD WINAPI AnswerAttributes(LPCWSTR) { return attributesBefore; }

BOOL WINAPI NoteAttributes(LPCWSTR, DWORD attributes) {
    attributesGiven = attributes;
    return isGiven;
}

/// Attributes as a disk that keeps them all gives and takes them.
class ReadOnlyMark : public testing::Test {
  protected:
    static bool Clear(DWORD before) {
        attributesBefore = before;
        attributesGiven = 0;
        return ClearReadOnly(L"C:\\a");
    }

    const ImportHook answer{"GetFileAttributesW", &AnswerAttributes};
    const ImportHook note{"SetFileAttributesW", &NoteAttributes};
};

TEST_F(ReadOnlyMark, OtherMarks_AreKept) {
    EXPECT_TRUE(Clear(FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN));
    EXPECT_EQ(attributesGiven, DWORD{FILE_ATTRIBUTE_HIDDEN});
    EXPECT_TRUE(Clear(FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(attributesGiven, DWORD{FILE_ATTRIBUTE_NORMAL}) << "none at all would change nothing";
}

TEST_F(ReadOnlyMark, NoMark_ChangesNothing) {
    EXPECT_FALSE(Clear(FILE_ATTRIBUTE_HIDDEN));
    EXPECT_EQ(attributesGiven, 0U);
}

TEST_F(ReadOnlyMark, NothingThere_ChangesNothing) {
    EXPECT_FALSE(Clear(INVALID_FILE_ATTRIBUTES));
    EXPECT_EQ(attributesGiven, 0U);
}

TEST_F(ReadOnlyMark, SystemRefuses_ReturnsFalse) {
    isGiven = FALSE;
    EXPECT_FALSE(Clear(FILE_ATTRIBUTE_READONLY));
    isGiven = TRUE;
}

TEST(ReadOnlyMarkOfAFile, ClearReadOnly_MarkIsGone) {
    const TempTree tree;
    const std::wstring file = tree.File(L"a.txt");
    tree.SetAttributes(L"a.txt", FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(ClearReadOnly(file));
    EXPECT_EQ(GetFileAttributesW(file.c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
}

}  // namespace
}  // namespace vw::test
