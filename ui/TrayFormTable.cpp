#include <array>

#include "ui/Forms.h"
#include "ui/resource.h"

namespace vw {

namespace {

constexpr std::array kControls{
    ControlData{.name = L"Timer1", .id = ID_Timer1, .kind = ControlKind::Timer, .interval = 1000},
    ControlData{.name = L"Image1",
                .index = 0,
                .id = ID_Image1_0,
                .kind = ControlKind::Images,
                .icon = IDI_Tray_0},
    ControlData{.name = L"Image1",
                .index = 1,
                .id = ID_Image1_1,
                .kind = ControlKind::Images,
                .icon = IDI_Tray_1},
    ControlData{.name = L"Image1",
                .index = 2,
                .id = ID_Image1_2,
                .kind = ControlKind::Images,
                .icon = IDI_Tray_2},
    ControlData{.name = L"Image1",
                .index = 3,
                .id = ID_Image1_3,
                .kind = ControlKind::Images,
                .icon = IDI_Tray_3},
    ControlData{.name = L"lblMsg1",
                .id = ID_lblMsg1,
                .text = {L"Please Wait Vaultwright In Use",
                         L"الرجاء الانتظار بينما تتم عملية النسخ الاحنياطي"},
                .hidden = true},
};

constexpr std::array kMenu{
    MenuItemData{.name = L"mnuProp1", .id = ID_mnuProp1, .caption = Both(L"prop1")},
    MenuItemData{.name = L"mnuProp1Maximize",
                 .id = ID_mnuProp1Maximize,
                 .caption = Both(L"Maximize"),
                 .level = 1},
    MenuItemData{
        .name = L"mnuProp1Cancel", .id = ID_mnuProp1Cancel, .caption = Both(L"Cancel"), .level = 1},
    MenuItemData{
        .name = L"mnuProp1Exit", .id = ID_mnuProp1Exit, .caption = Both(L"Exit"), .level = 1},
};

}  // namespace

const FormData& TrayForm() noexcept {
    static const FormData form{.name = L"frmTrayIcon",
                               .className = {L"frmTrayIconEn", L"frmTrayIconAr"},
                               .caption = Both(L"Vaultwright"),
                               .kind = FormKind::Hidden,
                               .icon = IDI_Tray_0,
                               .controls = kControls,
                               .menu = kMenu};
    return form;
}

}  // namespace vw
