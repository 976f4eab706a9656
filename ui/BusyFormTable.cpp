#include <array>

#include "ui/FontTable.h"
#include "ui/Forms.h"
#include "ui/resource.h"

namespace vw {

namespace {

constexpr Size kDesign{480, 166};
constexpr int kMargin = 12;
constexpr int kInner = kDesign.width - 2 * kMargin;
constexpr int kButtonWidth = 88;
// What the report adds: its own height and a gap.
constexpr int kReportOpens = 192;

constexpr std::array kControls{
    ControlData{.name = L"lblTitle",
                .id = ID_lblTitle,
                .font = fonts::kBoldText,
                .place = {kMargin, 10, kInner, 24},
                .flow = {.growX = 100},
                .path = true},
    ControlData{.name = L"lblMsg",
                .id = ID_lblMsg,
                .font = fonts::kText,
                .place = {kMargin, 34, kInner, 24},
                .flow = {.growX = 100},
                .path = true},
    ControlData{.name = L"lblSubMsg",
                .id = ID_lblSubMsg,
                .font = fonts::kText,
                .place = {kMargin, 58, kInner, 24},
                .flow = {.growX = 100},
                .path = true},
    ControlData{.name = L"ProgressBar1",
                .id = ID_ProgressBar1,
                .kind = ControlKind::ProgressBar,
                .place = {kMargin, 88, kInner, 16},
                .flow = {.growX = 100},
                .spokenName = {L"Progress", L"التقدم"}},
    ControlData{.name = L"txtReport",
                .id = ID_txtReport,
                .kind = ControlKind::Report,
                .font = fonts::kReport,
                .place = {kMargin, 116, kInner, 0},
                .flow = {.growX = 100, .growY = 100},
                .hidden = true,
                .opens = kReportOpens,
                .spokenName = {L"Report", L"التقرير"}},
    ControlData{.name = L"chkDontHide",
                .id = ID_chkDontHide,
                .kind = ControlKind::CheckBox,
                .text = {L"Don't close report when finished", L"إبقاء التقرير معروضاً عند الانتهاء"},
                .font = fonts::kText,
                .place = {kMargin, 128, kInner - kButtonWidth - 8, 26},
                .flow = {.moveY = 100}},
    ControlData{.name = L"cmdCancel",
                .id = ID_cmdCancel,
                .kind = ControlKind::Button,
                .text = {L"Close", L"إغلاق"},
                .font = fonts::kText,
                .place = {kDesign.width - kMargin - kButtonWidth, 128, kButtonWidth, 26},
                .flow = {.moveX = 100, .moveY = 100},
                .firstFocus = true},
    ControlData{.name = L"tmrBusy", .id = ID_tmrBusy, .kind = ControlKind::Timer, .interval = 500},
};

}  // namespace

const FormData& BusyForm() noexcept {
    static const FormData form{
        .name = L"frmBusyDialog",
        .className = {L"frmBusyDialogEn", L"frmBusyDialogAr"},
        .caption = {L"Vault wright – please wait:", L"Vaultwright - الرجاء الانتظار:"},
        .kind = FormKind::Dialog,
        .design = kDesign,
        .initial = kDesign,
        .icon = IDI_Program,
        .controls = kControls,
        .escapeButton = L"cmdCancel"};
    return form;
}

}  // namespace vw
