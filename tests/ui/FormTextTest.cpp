#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/ui/FormFixture.h"
#include "ui/resource.h"

// Captions and texts of the forms, typed anew.

namespace vw {
namespace {

using test::LoadedForm;
using test::Narrow;

struct Row {
    const wchar_t* name;
    int id;
    const wchar_t* windowClass;
    const wchar_t* english;
    const wchar_t* arabic;
};

const Row kMain[]{
    {L"Label01", ID_Label01, L"Static", L"Store the copies in:", L"تخزين النسخ الإخطياطية في:"},
    {L"cmbDestination", ID_cmbDestination, L"ComboBox", L"", L""},
    {L"Label02", ID_Label02, L"Static", L"The new copy is number 1 and there copies count is:",
     L"النسخة الأحدث هي رقم: 1 والأقدم:"},
    {L"vsBackages", ID_vsBackages, L"ScrollBar", L"", L""},
    {L"lblBackages", ID_lblBackages, L"Static", L"", L""},
    {L"lsvBackupList", ID_lsvBackupList, L"SysListView32", L"", L""},
    {L"lsvRestore1", ID_lsvRestore1, L"SysListView32", L"", L""},
    {L"lsvRestore2", ID_lsvRestore2, L"SysListView32", L"", L""},
    {L"lblNoFileToBack", ID_lblNoFileToBack, L"Static", L"لا يوجد تحديد في قائمة النسخ",
     L"لا يوجد تحديد في قائمة النسخ"},
    {L"lblNoRestore", ID_lblNoRestore, L"Static", L"لا يوجد ملفات في قائمة الاستعادة",
     L"لا يوجد تحديد في قائمة الاستعادة"},
    {L"lblFilter", ID_lblFilter, L"Static", L"محدد الملف:", L"محدد الملف:"},
    {L"Toolbar1", ID_Toolbar1, L"ToolbarWindow32", L"", L""},
    {L"lblListHeading", ID_lblListHeading, L"Static", L"Items to back up",
     L"العناصر المطلوب نسخها"},
    {L"lblVaultHeading", ID_lblVaultHeading, L"Static", L"Copies in the vault", L"النسخ المحفوظة"},
    {L"lblCopiesHeading", ID_lblCopiesHeading, L"Static", L"Copies of the selected item",
     L"نسخ العنصر المحدد"},
    {L"sbrStatus", ID_sbrStatus, L"Static", L"", L""},
};

const Row kBusy[]{
    {L"ProgressBar1", ID_ProgressBar1, L"msctls_progress32", L"", L""},
    {L"chkDontHide", ID_chkDontHide, L"Button", L"Don't close report when finished",
     L"إبقاء التقرير معروضاً عند الانتهاء"},
    {L"cmdCancel", ID_cmdCancel, L"Button", L"Close", L"إغلاق"},
    {L"txtReport", ID_txtReport, L"Edit", L"", L""},
    {L"lblTitle", ID_lblTitle, L"Static", L"", L""},
    {L"lblMsg", ID_lblMsg, L"Static", L"", L""},
    {L"lblSubMsg", ID_lblSubMsg, L"Static", L"", L""},
};

const Row kTray[]{
    {L"lblMsg1", ID_lblMsg1, L"Static", L"Please Wait Vaultwright In Use",
     L"الرجاء الانتظار بينما تتم عملية النسخ الاحنياطي"},
};

const Row kAbout[]{
    {L"lblTitle", ID_lblTitle, L"Static", L"Vaultwright", L"Vaultwright"},
    {L"lblVer_", ID_lblVer_, L"Static", L"Version:", L"رقم الإصدار:"},
    {L"lblVer", ID_lblVer, L"Static", L"", L""},
    {L"lblRevision_", ID_lblRevision_, L"Static", L"Rebuild:", L"معرف التنقيح:"},
    {L"lblRevision", ID_lblRevision, L"Static", L"", L""},
    {L"lblD", ID_lblD, L"Static",
     L"Do you have Important data on your PC?\r\n"
     L"Do you forget to backup your data from time to time! \r\n"
     L"Did you have a problem with restoring your data\r\n"
     L"Vault Wright will save your data, accounts and your files in smart way?\r\n"
     L"This will keep different backups on your PC and you will and you could choose which to "
     L"restore\r\n"
     L"The backup will took place whenever you start your PC",
     L"هل تستخدم بيانات مهمة على حاسبك؟ هل تستخدم برنامج محاسبة على الكمبيوتر وتخشى على بياناتك "
     L"من الضياع؟ هل تلفت الأقراص المرنة التي تحوي النسخة الاحتياطية؟ هل تنسى عمل نسخ احتياطية "
     L"بشكل دوري؟\r\n"
     L"Vaultwright يقوم بالعمل نيابة عنك! يجري نسخة احتياطية كلما شغلت الحاسب."},
    {L"cmdClose", ID_cmdClose, L"Button", L"Close", L"إغلاق"},
    {L"Label1", ID_Label1, L"Static", L"", L""},
};

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    return name;
}

class FormText : public testing::TestWithParam<Language> {
  protected:
    template <std::size_t Count>
    void Compare(const FormData& data, const Row (&rows)[Count]) {
        const LoadedForm loaded(data, GetParam());
        for (const Row& row : rows) {
            const HWND control = loaded.Control(row.name);
            ASSERT_NE(control, nullptr) << Narrow(row.name);
            EXPECT_EQ(GetDlgCtrlID(control), row.id) << Narrow(row.name);
            EXPECT_EQ(ClassOf(control), row.windowClass) << Narrow(row.name);
            EXPECT_EQ(loaded.form.Text(row.name),
                      GetParam() == Language::Arabic ? row.arabic : row.english)
                << Narrow(row.name);
        }
    }

    void ExpectCaption(const FormData& data, const wchar_t* className, const wchar_t* caption) {
        const LoadedForm loaded(data, GetParam());
        EXPECT_EQ(ClassOf(loaded.Handle()), className);
        EXPECT_EQ(loaded.form.Caption(), caption);
    }
};

TEST_P(FormText, MainWindow_HasItsTexts) { Compare(MainForm(), kMain); }
TEST_P(FormText, BusyDialog_HasItsTexts) { Compare(BusyForm(), kBusy); }
TEST_P(FormText, TrayWindow_HasItsTexts) { Compare(TrayForm(), kTray); }
TEST_P(FormText, AboutBox_HasItsTexts) { Compare(AboutForm(), kAbout); }

TEST_P(FormText, ClassNamesAndCaptions_AreThoseOfTheLanguage) {
    if (GetParam() == Language::English) {
        ExpectCaption(MainForm(), L"frmMainEn", L"Vaultwright");
        ExpectCaption(BusyForm(), L"frmBusyDialogEn", L"Vault wright \x2013 please wait:");
        ExpectCaption(TrayForm(), L"frmTrayIconEn", L"Vaultwright");
        ExpectCaption(AboutForm(), L"frmAboutEn", L"Vaultwright");
    } else {
        ExpectCaption(MainForm(), L"frmMainAr", L"Vaultwright");
        ExpectCaption(BusyForm(), L"frmBusyDialogAr", L"Vaultwright - الرجاء الانتظار:");
        ExpectCaption(TrayForm(), L"frmTrayIconAr", L"Vaultwright");
        ExpectCaption(AboutForm(), L"frmAboutAr", L"Vaultwright");
    }
}

TEST_P(FormText, LabelsForBoxes_AreHidden) {
    const LoadedForm main(MainForm(), GetParam());
    for (const auto* name : {L"lblNoFileToBack", L"lblNoRestore", L"lblFilter"}) {
        EXPECT_FALSE(main.form.IsShown(name)) << Narrow(name);
    }
}

TEST_P(FormText, ReportAndCloseButton_AreHiddenAtFirst) {
    const LoadedForm busy(BusyForm(), GetParam());
    EXPECT_FALSE(busy.form.IsShown(L"txtReport"));
    const LoadedForm about(AboutForm(), GetParam());
    EXPECT_FALSE(about.form.IsShown(L"cmdClose"));
    EXPECT_FALSE(about.form.IsShown(L"lblWS")) << "no address is decided";
}

TEST_P(FormText, ToolbarButtons_AreInTheirOrderAndGroups) {
    const struct {
        const wchar_t* key;
        int id;
        bool beginsGroup;
    } expected[]{
        {L"FileNew", ID_Toolbar1_FileNew, false},
        {L"FileOpen", ID_Toolbar1_FileOpen, false},
        {L"FileSave", ID_Toolbar1_FileSave, false},
        {L"FileSaveAs", ID_Toolbar1_FileSaveAs, false},
        {L"FileExit", ID_Toolbar1_FileExit, false},
        {L"ViewLIcons", ID_Toolbar1_ViewLIcons, true},
        {L"ViewSIcons", ID_Toolbar1_ViewSIcons, false},
        {L"ViewList", ID_Toolbar1_ViewList, false},
        {L"ViewDetails", ID_Toolbar1_ViewDetails, false},
        {L"EditAddFile", ID_Toolbar1_EditAddFile, true},
        {L"EditAddFiles", ID_Toolbar1_EditAddFiles, false},
        {L"EditAddFolder", ID_Toolbar1_EditAddFolder, false},
        {L"Del", ID_Toolbar1_Del, false},
        {L"EditDelAll", ID_Toolbar1_EditDelAll, false},
        {L"ActionBackup", ID_Toolbar1_ActionBackup, true},
        {L"ActionOpen", ID_Toolbar1_ActionOpen, false},
        {L"ActionRestore", ID_Toolbar1_ActionRestore, false},
        {L"ActionRestoreTo", ID_Toolbar1_ActionRestoreTo, false},
    };
    LoadedForm main(MainForm(), GetParam());
    const HWND bar = main.Control(L"Toolbar1");
    WPARAM position = 0;
    for (const auto& row : expected) {
        TBBUTTON button{};
        SendMessageW(bar, TB_GETBUTTON, position, reinterpret_cast<LPARAM>(&button));
        if (row.beginsGroup) {
            EXPECT_NE(button.fsStyle & BTNS_SEP, 0) << Narrow(row.key);
            SendMessageW(bar, TB_GETBUTTON, ++position, reinterpret_cast<LPARAM>(&button));
        }
        EXPECT_EQ(button.idCommand, row.id) << Narrow(row.key);
        const ToolButtonData* data = main.form.Tools(L"Toolbar1").Find(row.id);
        ASSERT_NE(data, nullptr);
        EXPECT_EQ(data->key, row.key);
        EXPECT_FALSE(data->tip.In(GetParam()).empty()) << Narrow(row.key);
        ++position;
    }
    EXPECT_EQ(static_cast<WPARAM>(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0)), position);
}

TEST_P(FormText, Columns_HaveTheirKeys) {
    LoadedForm main(MainForm(), GetParam());
    const auto keys = [&](const wchar_t* name) {
        std::vector<std::wstring> found;
        ListView& list = main.form.List(name);
        for (int i = 0; !list.Rows().KeyOf(i).empty(); ++i)
            found.emplace_back(list.Rows().KeyOf(i));
        return found;
    };
    using Keys = std::vector<std::wstring>;
    EXPECT_EQ(keys(L"lsvBackupList"),
              (Keys{L"Name", L"Path", L"Type", L"Size", L"Date", L"SP", L"Location"}));
    EXPECT_EQ(keys(L"lsvRestore1"), (Keys{L"Name", L"Type", L"SP", L"Orginal Location"}));
    EXPECT_EQ(keys(L"lsvRestore2"), (Keys{L"Name", L"Size", L"Date", L"BackupName"}));
}

TEST_P(FormText, Columns_HaveTheirHeaders) {
    const LoadedForm main(MainForm(), GetParam());
    using Headers = std::vector<std::wstring>;
    const auto headers = [&](const wchar_t* name) {
        const HWND header =
            reinterpret_cast<HWND>(SendMessageW(main.Control(name), LVM_GETHEADER, 0, 0));
        Headers found(static_cast<std::size_t>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0)));
        for (std::size_t i = 0; i < found.size(); ++i) {
            wchar_t text[64] = L"";
            HDITEMW item{};
            item.mask = HDI_TEXT;
            item.pszText = text;
            item.cchTextMax = 64;
            SendMessageW(header, HDM_GETITEMW, i, reinterpret_cast<LPARAM>(&item));
            found[i] = text;
        }
        return found;
    };
    if (GetParam() == Language::Arabic) {
        EXPECT_EQ(headers(L"lsvBackupList"),
                  (Headers{L"الاسم", L"المسار", L"النوع", L"الحجم", L"التاريخ", L"SP", L"الموقع"}));
        EXPECT_EQ(headers(L"lsvRestore1"), (Headers{L"الاسم", L"النوع", L"SP", L"الموقع الأصلي"}));
        EXPECT_EQ(headers(L"lsvRestore2"),
                  (Headers{L"النسخة", L"الحجم", L"التاريخ", L"اسم النسخة"}));
        return;
    }
    EXPECT_EQ(headers(L"lsvBackupList"),
              (Headers{L"Name", L"Path", L"Type", L"Size", L"Date", L"SP", L"Location"}));
    EXPECT_EQ(headers(L"lsvRestore1"), (Headers{L"Name", L"Type", L"SP", L"Orginal Location"}));
    EXPECT_EQ(headers(L"lsvRestore2"), (Headers{L"Copy", L"Size", L"Date", L"BackupName"}));
}

INSTANTIATE_TEST_SUITE_P(, FormText, testing::ValuesIn(test::kLanguages), test::NameOfLanguage);

TEST(FormTables, EmptyLists_HaveAHintInBothLanguages) {
    for (const ControlData& data : MainForm().controls) {
        if (data.kind != ControlKind::ListView) continue;
        EXPECT_FALSE(data.emptyText.english.empty()) << Narrow(data.name);
        EXPECT_FALSE(data.emptyText.arabic.empty()) << Narrow(data.name);
        EXPECT_NE(data.emptyText.english, data.emptyText.arabic) << Narrow(data.name);
    }
}

TEST(FormTables, Controls_HaveUniqueNames) {
    for (const FormData* data : test::AllForms()) {
        std::set<std::pair<std::wstring_view, int>> names;
        for (const ControlData& control : data->controls) {
            EXPECT_TRUE(names.emplace(control.name, control.index).second) << Narrow(control.name);
        }
    }
}

TEST(FormTables, TimersAndPictures_Exist) {
    const auto find = [](const FormData& data, std::wstring_view name, int index) {
        for (const ControlData& control : data.controls) {
            if (control.name == name && control.index == index) return &control;
        }
        return static_cast<const ControlData*>(nullptr);
    };
    for (int i = 0; i < 4; ++i) EXPECT_NE(find(TrayForm(), L"Image1", i), nullptr) << i;
    for (int i = 0; i < 3; ++i) EXPECT_NE(find(MainForm(), L"ImageList", i), nullptr) << i;
    ASSERT_NE(find(TrayForm(), L"Timer1", kNoIndex), nullptr);
    EXPECT_EQ(find(TrayForm(), L"Timer1", kNoIndex)->interval, 1000);
    ASSERT_NE(find(BusyForm(), L"tmrBusy", kNoIndex), nullptr);
    EXPECT_EQ(find(BusyForm(), L"tmrBusy", kNoIndex)->interval, 500);
    EXPECT_NE(find(MainForm(), L"cdDialog", kNoIndex), nullptr);
}

}  // namespace
}  // namespace vw
