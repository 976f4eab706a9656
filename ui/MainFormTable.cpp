#include <array>

#include "ui/FontTable.h"
#include "ui/Forms.h"
#include "ui/MainMenuTable.h"
#include "ui/ToolBarTable.h"
#include "ui/resource.h"

namespace vw {

namespace {

// The measures of the window: margins and gaps of 12, fields of 26, headings of 20 above the lists,
// 8 between the lists and the status line.
constexpr Size kDesign{848, 564};
constexpr int kMargin = 12;
constexpr int kField = 26;
constexpr int kHeading = 20;
constexpr int kStatusLine = 28;
constexpr int kColumn = (kDesign.width - 3 * kMargin) / 2;
constexpr int kSecondColumn = kMargin + kColumn + kMargin;
constexpr int kFieldWidth = 64;
constexpr int kScrollWidth = 20;
constexpr int kFieldLeft = kMargin + kColumn - kFieldWidth;
constexpr int kLabelWidth = kColumn - kFieldWidth - 8;

constexpr ResizeWeights kListFlow{.growX = 50, .growY = 100};
constexpr ResizeWeights kUpperFlow{.moveX = 50, .growX = 50, .growY = 50};
constexpr ResizeWeights kLowerFlow{.moveX = 50, .moveY = 50, .growX = 50, .growY = 50};

constexpr Texts kName{L"Name", L"الاسم"};
constexpr Texts kType{L"Type", L"النوع"};
constexpr Texts kSize{L"Size", L"الحجم"};
constexpr Texts kDate{L"Date", L"التاريخ"};
constexpr Texts kLocationNumber{L"SP", L"SP"};

constexpr std::array kItemColumns{
    ColumnData{.key = L"Name", .header = kName, .width = 90},
    ColumnData{
        .key = L"Path", .header = {L"Path", L"المسار"}, .kind = ColumnKind::Path, .width = 90},
    ColumnData{.key = L"Type", .header = kType, .width = 44},
    ColumnData{.key = L"Size", .header = kSize, .kind = ColumnKind::Number, .width = 44},
    ColumnData{.key = L"Date", .header = kDate, .width = 44},
    ColumnData{.key = L"SP",
               .header = kLocationNumber,
               .kind = ColumnKind::Number,
               .width = 30,
               .mayHide = true},
    ColumnData{.key = L"Location",
               .header = {L"Location", L"الموقع"},
               .kind = ColumnKind::Path,
               .width = 60,
               .mayHide = true},
};

constexpr std::array kVaultColumns{
    ColumnData{.key = L"Name", .header = kName, .width = 140},
    ColumnData{.key = L"Type", .header = kType, .width = 60},
    ColumnData{.key = L"SP", .header = kLocationNumber, .kind = ColumnKind::Number, .width = 50},
    ColumnData{.key = L"Orginal Location",
               .header = {L"Orginal Location", L"الموقع الأصلي"},
               .kind = ColumnKind::Path,
               .width = 140},
};

constexpr std::array kCopyColumns{
    ColumnData{.key = L"Name", .header = {L"Copy", L"النسخة"}, .width = 70},
    ColumnData{.key = L"Size", .header = kSize, .kind = ColumnKind::Number, .width = 80},
    ColumnData{.key = L"Date", .header = kDate, .width = 120},
    ColumnData{.key = L"BackupName",
               .header = {L"BackupName", L"اسم النسخة"},
               .kind = ColumnKind::Path,
               .width = 120},
};

constexpr std::array kControls{
    ControlData{.name = L"Toolbar1",
                .id = ID_Toolbar1,
                .kind = ControlKind::ToolBar,
                .font = fonts::kSystem,
                .place = {6, 4, kDesign.width - 46, 36},
                .flow = {.growX = 100},
                .spokenName = {L"Commands", L"الأوامر"},
                .buttons = kToolButtons},
    ControlData{.name = L"Picture1",
                .id = ID_Picture1,
                .kind = ControlKind::Picture,
                .place = {kDesign.width - kMargin - 24, 10, 24, 24},
                .flow = {.moveX = 100},
                .icon = IDI_Program},
    ControlData{.name = L"Label01",
                .id = ID_Label01,
                .text = {L"Store the copies in:", L"تخزين النسخ الإخطياطية في:"},
                .font = fonts::kLabel,
                .place = {kMargin, 50, kLabelWidth, kField},
                .oneLine = true},
    ControlData{.name = L"cmbDestination",
                .id = ID_cmbDestination,
                .kind = ControlKind::DropDown,
                .font = fonts::kTimes,
                .place = {kFieldLeft, 50, kFieldWidth, kField}},
    ControlData{.name = L"Label02",
                .id = ID_Label02,
                .text = {L"The new copy is number 1 and there copies count is:",
                         L"النسخة الأحدث هي رقم: 1 والأقدم:"},
                .font = fonts::kLabel,
                .place = {kMargin, 84, kLabelWidth, kField},
                .oneLine = true},
    ControlData{.name = L"vsBackages",
                .id = ID_vsBackages,
                .kind = ControlKind::ScrollBar,
                .place = {kFieldLeft + kFieldWidth - kScrollWidth, 84, kScrollWidth, kField},
                .lowest = 1,
                .highest = 20,
                .wheelLabel = L"lblBackages",
                .spokenName = {L"Number of copies", L"عدد النسخ"}},
    ControlData{.name = L"lblBackages",
                .id = ID_lblBackages,
                .font = fonts::kTimes,
                .place = {kFieldLeft, 84, kFieldWidth - kScrollWidth, kField},
                .centred = true,
                .oneLine = true,
                .framed = true},
    ControlData{.name = L"lblListHeading",
                .id = ID_lblListHeading,
                .kind = ControlKind::Heading,
                .text = {L"Items to back up", L"العناصر المطلوب نسخها"},
                .font = fonts::kArial,
                .place = {kMargin, 118, kColumn, kHeading},
                .flow = {.growX = 50}},
    ControlData{.name = L"lsvBackupList",
                .id = ID_lsvBackupList,
                .kind = ControlKind::ListView,
                .font = fonts::kTimes,
                .place = {kMargin, 140, kColumn, 388},
                .flow = kListFlow,
                .acceptsFiles = true,
                .firstFocus = true,
                .emptyText = {L"Nothing to back up yet. Add files or folders with the buttons "
                              L"above, or drop them here.",
                              L"لا توجد عناصر للنسخ الاحتياطي بعد. أضف ملفات أو مجلدات باستخدام "
                              L"الأزرار أعلاه، أو اسحبها وأفلتها هنا."},
                .columns = kItemColumns},
    ControlData{.name = L"lblVaultHeading",
                .id = ID_lblVaultHeading,
                .kind = ControlKind::Heading,
                .text = {L"Copies in the vault", L"النسخ المحفوظة"},
                .font = fonts::kArial,
                .place = {kSecondColumn, 50, kColumn, kHeading},
                .flow = {.moveX = 50, .growX = 50}},
    ControlData{
        .name = L"lsvRestore1",
        .id = ID_lsvRestore1,
        .kind = ControlKind::ListView,
        .font = fonts::kTimes,
        .place = {kSecondColumn, 72, kColumn, 212},
        .flow = kUpperFlow,
        .emptyText =
            {L"No copies on this drive yet. “Backup now” makes the first ones.",
             L"لا توجد نسخ احتياطية على هذا القرص بعد. اضغط «النسخ الآن» لإنشاء أولى النسخ."},
        .columns = kVaultColumns},
    ControlData{.name = L"lblCopiesHeading",
                .id = ID_lblCopiesHeading,
                .kind = ControlKind::Heading,
                .text = {L"Copies of the selected item", L"نسخ العنصر المحدد"},
                .font = fonts::kArial,
                .place = {kSecondColumn, 296, kColumn, kHeading},
                .flow = {.moveX = 50, .moveY = 50, .growX = 50},
                .path = true},
    ControlData{.name = L"lsvRestore2",
                .id = ID_lsvRestore2,
                .kind = ControlKind::ListView,
                .font = fonts::kTimes,
                .place = {kSecondColumn, 318, kColumn, 210},
                .flow = kLowerFlow,
                .emptyText = {L"Choose an item above to see its copies here.",
                              L"حدّد عنصراً أعلاه لعرض نسخه هنا."},
                .columns = kCopyColumns},
    // Free of margins: it lies along the lower edge like the status bar of any other window.
    ControlData{.name = L"sbrStatus",
                .id = ID_sbrStatus,
                .font = fonts::kArial,
                .place = {0, kDesign.height - kStatusLine, kDesign.width, kStatusLine},
                .flow = {.moveY = 100, .growX = 100},
                .path = true,
                .statusLine = true},
    // Never shown: they hold what message boxes say, in Arabic in both windows.
    ControlData{.name = L"lblNoFileToBack",
                .id = ID_lblNoFileToBack,
                .text = Both(L"لا يوجد تحديد في قائمة النسخ"),
                .hidden = true},
    ControlData{.name = L"lblNoRestore",
                .id = ID_lblNoRestore,
                .text = {L"لا يوجد ملفات في قائمة الاستعادة", L"لا يوجد تحديد في قائمة الاستعادة"},
                .hidden = true},
    ControlData{.name = L"lblFilter",
                .id = ID_lblFilter,
                .text = Both(L"محدد الملف:"),
                .font = fonts::kArial,
                .hidden = true},
    // Pictures of the toolbar, small and large ones of the lists: made with the form.
    ControlData{
        .name = L"ImageList", .index = 0, .id = ID_ImageList_0, .kind = ControlKind::Images},
    ControlData{
        .name = L"ImageList", .index = 1, .id = ID_ImageList_1, .kind = ControlKind::Images},
    ControlData{
        .name = L"ImageList", .index = 2, .id = ID_ImageList_2, .kind = ControlKind::Images},
    ControlData{.name = L"cdDialog", .id = ID_cdDialog, .kind = ControlKind::FileDialog},
};

constexpr std::array kAccelerators{
    AcceleratorData{.key = u'N', .control = true, .id = ID_mnuFileNew},
    AcceleratorData{.key = u'O', .control = true, .id = ID_mnuFileOpen},
    AcceleratorData{.key = u'S', .control = true, .id = ID_mnuFileSave},
    AcceleratorData{.key = u'R', .control = true, .id = ID_sbrStatus},
    AcceleratorData{.key = FunctionKey(1), .id = ID_mnuHelpHelp},
    AcceleratorData{.key = FunctionKey(5), .id = ID_mnuBackup},
};

}  // namespace

const FormData& MainForm() noexcept {
    static const FormData form{.name = L"frmMain",
                               .className = {L"frmMainEn", L"frmMainAr"},
                               .caption = Both(L"Vaultwright"),
                               .kind = FormKind::Main,
                               .design = kDesign,
                               .initial = {1000, 664},
                               .icon = IDI_Program,
                               .controls = kControls,
                               .menu = MainMenu(),
                               .menuBar = true,
                               .accelerators = kAccelerators};
    return form;
}

}  // namespace vw
