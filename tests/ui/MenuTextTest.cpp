#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/ui/FormFixture.h"
#include "ui/resource.h"

// The menus as people know them, typed anew: what is in the windows is compared with this, entry by
// entry.

namespace vw {
namespace {

using test::LoadedForm;
using test::Narrow;

constexpr const wchar_t* kLine = nullptr;

struct Entry {
    const wchar_t* name;
    int index;
    int id;
    int level;
    const wchar_t* english;
    const wchar_t* arabic;
};

const Entry kMainMenu[]{
    {L"mnuMain", 0, ID_mnuMain_0, 0, L"File", L"ملف"},
    {L"mnuFileNew", -1, ID_mnuFileNew, 1, L"New", L"جديد"},
    {L"mnuFileOpen", -1, ID_mnuFileOpen, 1, L"Open", L"فتح"},
    {L"mnuFileSave", -1, ID_mnuFileSave, 1, L"Save", L"حفظ"},
    {L"mnuFileSaveAs", -1, ID_mnuFileSaveAs, 1, L"Save As", L"حفظ باسم"},
    {L"mnuFileClose", -1, ID_mnuFileClose, 1, L"Close", L"إغلاق"},
    {L"mnuFile", 6, ID_mnuFile_6, 1, kLine, kLine},
    {L"mnuRecentFile", 0, ID_mnuRecentFile_0, 1, L"Auto Backup Files", L"مهمة النسخ الدوري"},
    {L"mnuMain", 1, ID_mnuMain_1, 0, L"File To Backup", L"قائمة النسخ"},
    {L"mnuBackup", -1, ID_mnuBackup, 1, L"Backup now", L"النسخ الآن"},
    {L"mnulvs3", -1, ID_mnulvs3, 1, kLine, kLine},
    {L"mnuAddFile", -1, ID_mnuAddFile, 1, L"Add File", L"إضافة ملف"},
    {L"mnuAddFiles", -1, ID_mnuAddFiles, 1, L"Add may files", L"إضافة ملفات"},
    {L"mnuAddFolder", -1, ID_mnuAddFolder, 1, L"Add folder", L"إضافة مجلد"},
    {L"mnuEditS", -1, ID_mnuEditS, 1, kLine, kLine},
    {L"mnuDel", -1, ID_mnuDel, 1, L"Delelte file from list", L"حذف"},
    {L"mnuDelAll", -1, ID_mnuDelAll, 1, L"Clear all list", L"حذف الكل"},
    {L"mnulvs2", -1, ID_mnulvs2, 1, kLine, kLine},
    {L"mnuOpen", -1, ID_mnuOpen, 1, L"Open selected file", L"فتح الملف المحدد"},
    {L"mnuMain", 2, ID_mnuMain_2, 0, L"Restore List", L"قائمة الاستعادة"},
    {L"mnuRestore", -1, ID_mnuRestore, 1, L"Restore to orginal location",
     L"استعادة إلى الموقع الأصلي"},
    {L"mnuRestoreTo", -1, ID_mnuRestoreTo, 1, L"Restore to selected location",
     L"استعادة إلى موقع مختار"},
    {L"mnuOpenCopy", -1, ID_mnuOpenCopy, 1, L"Open selected file", L"فتح الملف المحدد"},
    {L"mnuDelCopy", -1, ID_mnuDelCopy, 1, L"Delete selected backup", L"حذف نسخة احتياطية"},
    {L"mnuDelCopies", -1, ID_mnuDelCopies, 1, L"Delete all backup for selected file",
     L"حذف النسخ الاحتياطية لملف محدد"},
    {L"mnuMain", 3, ID_mnuMain_3, 0, L"View", L"عرض"},
    {L"mnuViewMethod", 0, ID_mnuViewMethod_0, 1, L"Large Icons", L"رموز كبيرة"},
    {L"mnuViewMethod", 1, ID_mnuViewMethod_1, 1, L"Small Icons", L"رموز صغيرة"},
    {L"mnuViewMethod", 2, ID_mnuViewMethod_2, 1, L"List", L"قائمة"},
    {L"mnuViewMethod", 3, ID_mnuViewMethod_3, 1, L"Details", L"تفاصيل"},
    {L"mnuViewMethod", 4, ID_mnuViewMethod_4, 1, kLine, kLine},
    {L"mnuViewAlign", 0, ID_mnuViewAlign_0, 1, L"Alignment none", L"بدون محاذاة"},
    {L"mnuViewAlign", 1, ID_mnuViewAlign_1, 1, L"Alignment Left", L"محاذاة إلى يسار"},
    {L"mnuViewAlign", 2, ID_mnuViewAlign_2, 1, L"Alignment Top", L"محاذاة إلى أعلى"},
    {L"mnuMain", 4, ID_mnuMain_4, 0, L"Tools", L"أدوات"},
    {L"mnuOptions", 0, ID_mnuOptions_0, 1, L"Activate Auto Backup", L"تفعيل النسخ الدوري"},
    {L"mnuToolRepair", -1, ID_mnuToolRepair, 1, L"Computer Maintenance", L"صينانة الكمبيوتر"},
    {L"mnuToolsDelTemp", -1, ID_mnuToolsDelTemp, 1, L"Delete all temp files",
     L"حذف الملفات المؤقتة"},
    {L"mnuMain", 5, ID_mnuMain_5, 0, L"Help", L"تعليمات"},
    {L"mnuHelpHelp", -1, ID_mnuHelpHelp, 1, L"Help", L"تعليمات مساعدة"},
    {L"mnuHelpAbout", -1, ID_mnuHelpAbout, 1, L"About", L"نبذة حول البرنامج"},
    {L"munArEn|mnuArEn", -1, ID_munArEn, 0, L"Arabic", L"English"},
    {L"mnuToolEnAr", -1, ID_mnuToolEnAr, 1, L"Change the Language and CLOSE",
     L"Change the Language and CLOSE"},
};

struct Shown {
    int id;
    int level;
    bool line;
    std::wstring text;
};

// Gives the menu that the entry opens.
HMENU ReadEntry(HMENU menu, int place, int level, std::vector<Shown>& entries) {
    wchar_t text[128] = L"";
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_ID | MIIM_STRING | MIIM_SUBMENU;
    info.dwTypeData = text;
    info.cch = 128;
    EXPECT_NE(GetMenuItemInfoW(menu, static_cast<UINT>(place), TRUE, &info), 0);
    entries.push_back({static_cast<int>(info.wID), level, (info.fType & MFT_SEPARATOR) != 0, text});
    return info.hSubMenu;
}

std::vector<Shown> EntriesOf(HMENU bar) {
    std::vector<Shown> entries;
    for (int i = 0; i < GetMenuItemCount(bar); ++i) {
        const HMENU menu = ReadEntry(bar, i, 0, entries);
        for (int j = 0; j < GetMenuItemCount(menu); ++j) {
            EXPECT_EQ(ReadEntry(menu, j, 1, entries), nullptr) << "a menu in a menu";
        }
    }
    return entries;
}

class MenuText : public testing::TestWithParam<Language> {};

TEST_P(MenuText, EveryEntryOfTheMainWindow_IsInItsPlace) {
    const LoadedForm main(MainForm(), GetParam());
    const std::vector<Shown> shown = EntriesOf(GetMenu(main.Handle()));
    ASSERT_EQ(shown.size(), std::size(kMainMenu));
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const Entry& expected = kMainMenu[i];
        const wchar_t* text = GetParam() == Language::Arabic ? expected.arabic : expected.english;
        EXPECT_EQ(shown[i].id, expected.id) << i;
        EXPECT_EQ(shown[i].level, expected.level) << i;
        EXPECT_EQ(shown[i].line, text == kLine) << i;
        EXPECT_EQ(shown[i].text, text == kLine ? L"" : text) << i;
    }
}

TEST_P(MenuText, Entries_AreFoundByNameAndIndex) {
    LoadedForm main(MainForm(), GetParam());
    for (const Entry& entry : kMainMenu) {
        std::wstring name = entry.name;
        if (entry.id == ID_munArEn) {
            name = GetParam() == Language::Arabic ? L"mnuArEn" : L"munArEn";
        }
        const MenuItemData* found = main.form.Menus().Find(entry.id);
        ASSERT_NE(found, nullptr) << Narrow(name);
        EXPECT_EQ(main.form.Menus().NameOf(*found), name);
        EXPECT_EQ(found->index, entry.index) << Narrow(name);
    }
}

TEST_P(MenuText, RecentLists_FollowTheDefaultListInTheirOrder) {
    LoadedForm main(MainForm(), GetParam());
    Menu& menus = main.form.Menus();
    menus.SetText(L"mnuRecentFile", L"Third", 3);
    menus.Show(L"mnuRecentFile", true, 3);
    menus.SetText(L"mnuRecentFile", L"Work & home", 1);
    menus.Show(L"mnuRecentFile", true, 1);
    const std::vector<Shown> shown = EntriesOf(GetSubMenu(GetMenu(main.Handle()), 0));
    ASSERT_EQ(shown.size(), 9U);
    EXPECT_EQ(shown[6].id, ID_mnuRecentFile_0);
    EXPECT_EQ(shown[7].id, ID_mnuRecentFile_1);
    EXPECT_EQ(shown[7].text, L"Work && home") << "shows one &";
    EXPECT_EQ(shown[8].id, ID_mnuRecentFile_3);
    EXPECT_EQ(menus.Text(L"mnuRecentFile", 1), L"Work & home");
    EXPECT_FALSE(menus.IsShown(L"mnuRecentFile", 2));

    menus.Show(L"mnuRecentFile", false, 1);
    EXPECT_EQ(GetMenuItemCount(GetSubMenu(GetMenu(main.Handle()), 0)), 8);
}

TEST_P(MenuText, TrayMenu_IsEnglishInBothLanguages) {
    LoadedForm tray(TrayForm(), GetParam());
    Menu& menus = tray.form.Menus();
    EXPECT_EQ(GetMenu(tray.Handle()), nullptr);
    EXPECT_EQ(menus.Text(L"mnuProp1"), L"prop1");
    EXPECT_EQ(menus.Text(L"mnuProp1Maximize"), L"Maximize");
    EXPECT_EQ(menus.Text(L"mnuProp1Cancel"), L"Cancel");
    EXPECT_EQ(menus.Text(L"mnuProp1Exit"), L"Exit");
    EXPECT_EQ(tray.form.Data().menu.size(), 4U);
}

INSTANTIATE_TEST_SUITE_P(, MenuText, testing::ValuesIn(test::kLanguages), test::NameOfLanguage);

}  // namespace
}  // namespace vw
