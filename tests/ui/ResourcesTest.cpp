// What the program holds beside its code: texts that Windows shows, pictures of the toolbar.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/WindowsHeader.h"
#include "ui/ToolBarTable.h"

namespace vw {
namespace {

using testing::ElementsAre;

// The text of a string table in one language; empty when it is not there.
std::wstring TableText(int id, WORD language) {
    const HMODULE module = GetModuleHandleW(nullptr);
    const HRSRC found =
        FindResourceExW(module, MAKEINTRESOURCEW(6), MAKEINTRESOURCEW(id / 16 + 1), language);
    if (found == nullptr) return {};
    // Sixteen texts, each with its length before it.
    const auto* units = static_cast<const wchar_t*>(LockResource(LoadResource(module, found)));
    for (int i = 0; i < id % 16; ++i) units += *units + 1;
    return {units + 1, *units};
}

TEST(Resources, ListTypeAndVerb_HaveBothLanguages) {
    const WORD english = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
    const WORD arabic = MAKELANGID(LANG_ARABIC, SUBLANG_NEUTRAL);
    EXPECT_EQ(TableText(IDS_ListType, english), L"Vaultwright backup list");
    EXPECT_EQ(TableText(IDS_ListType, arabic), L"قائمة نسخ احتياطي من Vaultwright");
    EXPECT_EQ(TableText(IDS_BackUpNow, english), L"Back up now");
    EXPECT_EQ(TableText(IDS_BackUpNow, arabic), L"نسخ احتياطي الآن");
}

// An arrow along the line and the arrangement of a view depend on the direction of reading; a clock
// does not.
TEST(Resources, MirroredPictures_AreThoseWithADirectionOfReading) {
    std::vector<std::wstring> mirrored;
    for (const ToolButtonData& button : kToolButtons) {
        if (button.arabicIcon != 0) mirrored.emplace_back(button.key);
    }
    EXPECT_THAT(mirrored, ElementsAre(L"FileExit", L"ViewLIcons", L"ViewSIcons", L"ViewList",
                                      L"ViewDetails", L"ActionOpen"));
}

TEST(Resources, ToolbarPictures_AreThere) {
    for (const ToolButtonData& button : kToolButtons) {
        for (const int icon : {button.icon, button.arabicIcon, button.accentIcon}) {
            if (icon == 0) continue;
            EXPECT_NE(FindResourceW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(icon),
                                    MAKEINTRESOURCEW(14)),
                      nullptr)
                << icon;
        }
    }
}

}  // namespace
}  // namespace vw
