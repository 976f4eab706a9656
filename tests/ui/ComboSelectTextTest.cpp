#include "ui/ComboSelectText.h"

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"

namespace vw::MFileDosShell {
namespace {

// A real combo box on a window of its own, with an edit field or without.
class ComboSelectTextTest : public testing::Test {
  protected:
    ComboSelectTextTest() { Make(CBS_DROPDOWN); }
    ~ComboSelectTextTest() override { DestroyWindow(combo_); }

    void Make(DWORD style) {
        if (combo_ != nullptr) DestroyWindow(combo_);
        combo_ = CreateWindowExW(0, L"COMBOBOX", L"", WS_POPUP | style, 0, 0, 200, 200, nullptr,
                                 nullptr, GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(combo_, nullptr);
    }
    void Add(const wchar_t* text) {
        SendMessageW(combo_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    }
    [[nodiscard]] LRESULT Selected() const { return SendMessageW(combo_, CB_GETCURSEL, 0, 0); }

    HWND combo_ = nullptr;
};

TEST_F(ComboSelectTextTest, SelectsTheEntryOfThatText) {
    Add(L"C:");
    Add(L"ملفات");
    Add(L"E: [Store]");
    ComboSelectText(combo_, L"ملفات", true);
    EXPECT_EQ(Selected(), 1);
    ComboSelectText(combo_, L"E: [Store]", false);
    EXPECT_EQ(Selected(), 2);
}

TEST_F(ComboSelectTextTest, DistinguishesLetterCase) {
    Add(L"store");
    Add(L"Store");
    Add(L"STORE");
    ComboSelectText(combo_, L"Store", true);
    EXPECT_EQ(Selected(), 1);
    EXPECT_THROW(ComboSelectText(combo_, L"sTORE", true), RuntimeError);
}

TEST_F(ComboSelectTextTest, SelectsTheFirstEqualEntryByItsWholeText) {
    Add(L"Storehouse");
    Add(L"Store");
    Add(L"Store");
    ComboSelectText(combo_, L"Store", true);
    EXPECT_EQ(Selected(), 1);
}

TEST_F(ComboSelectTextTest, NoMatch_KeepsTheSelection) {
    Add(L"a");
    Add(L"b");
    SendMessageW(combo_, CB_SETCURSEL, 1, 0);
    ComboSelectText(combo_, L"c", false);
    EXPECT_EQ(Selected(), 1);
}

TEST_F(ComboSelectTextTest, MatchIsRequired_OtherEditText_Throws) {
    Add(L"a");
    SetWindowTextW(combo_, L"something else");
    try {
        ComboSelectText(combo_, L"c", true);
        FAIL() << "nothing was raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 5);
    }
}

TEST_F(ComboSelectTextTest, MatchIsRequired_EqualEditText_IsAccepted) {
    Add(L"a");
    SetWindowTextW(combo_, L"c");
    EXPECT_NO_THROW(ComboSelectText(combo_, L"c", true));
    EXPECT_THROW(ComboSelectText(combo_, L"C", true), RuntimeError);
}

TEST_F(ComboSelectTextTest, EmptyBoxAndDropList_SelectAndThrowAlike) {
    EXPECT_NO_THROW(ComboSelectText(combo_, L"", true));
    EXPECT_THROW(ComboSelectText(combo_, L"x", true), RuntimeError);
    Make(CBS_DROPDOWNLIST);
    Add(L"x");
    ComboSelectText(combo_, L"x", true);
    EXPECT_EQ(Selected(), 0);
    EXPECT_THROW(ComboSelectText(combo_, L"y", true), RuntimeError);
}

}  // namespace
}  // namespace vw::MFileDosShell
