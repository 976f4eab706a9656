#include <array>

#include "ui/FontTable.h"
#include "ui/Forms.h"
#include "ui/resource.h"

namespace vw {

namespace {

constexpr Size kDesign{448, 288};
constexpr int kMargin = 24;
constexpr int kInner = kDesign.width - 2 * kMargin;
constexpr int kTextLeft = 96;
constexpr int kValueLeft = kTextLeft + 92;

constexpr std::array kControls{
    ControlData{
        .name = L"Label1", .id = ID_Label1, .place = {0, 0, kDesign.width, 6}, .accent = true},
    ControlData{.name = L"Picture1",
                .id = ID_Picture1,
                .kind = ControlKind::Picture,
                .place = {kMargin, 28, 48, 48},
                .icon = IDI_Program},
    ControlData{.name = L"lblTitle",
                .id = ID_lblTitle,
                .text = Both(L"Vaultwright"),
                .font = fonts::kTitle,
                .place = {kTextLeft, 13, kDesign.width - kMargin - kTextLeft, 53},
                .oneLine = true},
    ControlData{.name = L"lblVer_",
                .id = ID_lblVer_,
                .text = {L"Version:", L"رقم الإصدار:"},
                .font = fonts::kArial,
                .place = {kTextLeft, 68, 88, 18}},
    ControlData{.name = L"lblVer",
                .id = ID_lblVer,
                .font = fonts::kArial,
                .place = {kValueLeft, 68, 100, 18}},
    ControlData{.name = L"lblRevision_",
                .id = ID_lblRevision_,
                .text = {L"Rebuild:", L"معرف التنقيح:"},
                .font = fonts::kArial,
                .place = {kTextLeft, 88, 88, 18}},
    ControlData{.name = L"lblRevision",
                .id = ID_lblRevision,
                .font = fonts::kArial,
                .place = {kValueLeft, 88, 100, 18}},
    ControlData{
        .name = L"lblD",
        .id = ID_lblD,
        .text = {L"Do you have Important data on your PC?\r\n"
                 L"Do you forget to backup your data from time to time! \r\n"
                 L"Did you have a problem with restoring your data\r\n"
                 L"Vault Wright will save your data, accounts and your files in smart way?\r\n"
                 L"This will keep different backups on your PC and you will and you could choose "
                 L"which to restore\r\n"
                 L"The backup will took place whenever you start your PC",
                 L"هل تستخدم بيانات مهمة على حاسبك؟ هل تستخدم برنامج محاسبة على الكمبيوتر وتخشى "
                 L"على بياناتك من الضياع؟ هل تلفت الأقراص المرنة التي تحوي النسخة الاحتياطية؟ هل "
                 L"تنسى عمل نسخ احتياطية بشكل دوري؟\r\n"
                 L"Vaultwright يقوم بالعمل نيابة عنك! يجري نسخة احتياطية كلما شغلت الحاسب."},
        .font = fonts::kText,
        .place = {kMargin, 120, kInner, 144}},
    // No address is decided.
    ControlData{.name = L"lblWS",
                .id = ID_lblWS,
                .font = fonts::kArial,
                .place = {kMargin, 264, kInner, 20},
                .hidden = true},
    // The opening screen goes by itself and has no room for a button.
    ControlData{.name = L"cmdClose",
                .id = ID_cmdClose,
                .kind = ControlKind::Button,
                .text = {L"Close", L"إغلاق"},
                .font = fonts::kButton,
                .place = {kDesign.width - kMargin - 88, 276, 88, 26},
                .hidden = true,
                .firstFocus = true,
                .opens = 38},
};

}  // namespace

const FormData& AboutForm() noexcept {
    static const FormData form{.name = L"frmAbout",
                               .className = {L"frmAboutEn", L"frmAboutAr"},
                               .caption = Both(L"Vaultwright"),
                               .kind = FormKind::Box,
                               .design = kDesign,
                               .initial = kDesign,
                               .icon = IDI_Program,
                               .controls = kControls,
                               .defaultButton = L"cmdClose",
                               .escapeButton = L"cmdClose"};
    return form;
}

}  // namespace vw
