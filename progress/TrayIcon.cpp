#include "progress/TrayIcon.h"

#include <algorithm>
#include <string_view>

#include "platform/ErrorTrap.h"
#include "platform/MessageBoxes.h"
#include "platform/ProgramControl.h"
#include "platform/ProgramState.h"
#include "ui/ControlNames.h"
#include "ui/Forms.h"
#include "ui/resource.h"

namespace vw {

namespace {
constexpr UINT kIconId = 1;
// Notifications of the icon arrive as mouse moves over its window.
constexpr UINT kIconMessage = WM_MOUSEMOVE;
constexpr std::size_t kTipUnits = 64;
constexpr int kFrames = 4;

}  // namespace

TrayIcon::TrayIcon(System& system, ProgramState& state, Language language, ProgramControl& program,
                   Forms loadedForms, Shell shell)
    : system_(system),
      state_(state),
      program_(program),
      loadedForms_(std::move(loadedForms)),
      shell_(shell),
      form_(TrayForm(), language, *this) {}

void TrayIcon::Load() {
    if (form_.IsLoaded()) {
        HideWindows();
    } else {
        form_.Load();
    }
}

void TrayIcon::Unload() { form_.Unload(); }

void TrayIcon::OnLoad(Form& form) {
    trap_(L"Form_Load", [&] {
        form.Menus().Show(control::mnuProp1Cancel, !state_.silentRun);
        frame_ = 1;
        form.SetIcon(L"Image1", 0);
        cbAnimated_Click();
        form.EnableTimer(control::Timer1, true);
        HideWindows();
    });
}

// Without an icon nobody could bring a hidden window back.
void TrayIcon::HideWindows() {
    if (!added_) return;
    for (Form* loaded : loadedForms_()) loaded->Hide();
}

void TrayIcon::cbStatic_Click() {
    trap_(L"cbStatic_Click", [&] {
        animating_ = false;
        form_.SetIcon(L"Image1", 0);
        SetTip(kApplicationTitle);
        AddIcon();
    });
}

void TrayIcon::cbAnimated_Click() {
    trap_(L"cbAnimated_Click", [&] {
        animating_ = true;
        SetTip(form_.Text(control::lblMsg1));
        AddIcon();
    });
}

void TrayIcon::cbEnd_Click() {
    trap_(L"cbEnd_Click", [this] { form_.Unload(); });
}

void TrayIcon::mnuPropAction_Click() {
    trap_(L"mnuPropAction_Click", [this] { cbEnd_Click(); });
}

NOTIFYICONDATAW TrayIcon::InitIconStruct() const {
    NOTIFYICONDATAW record{};
    record.cbSize = NOTIFYICONDATAW_V1_SIZE;
    record.hWnd = form_.Handle();
    record.uID = kIconId;
    record.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    record.uCallbackMessage = kIconMessage;
    record.hIcon = form_.Icon();
    tip_.copy(record.szTip, std::min(tip_.size(), kTipUnits - 1));
    return record;
}

void TrayIcon::AddIcon() {
    NOTIFYICONDATAW record = InitIconStruct();
    lastStatus_ = shell_(NIM_ADD, &record) != 0;
    added_ = added_ || lastStatus_;
}

// The shell refuses an icon while it is busy, such as at log-on. An icon that it took all the same,
// after the answer was due, counts as added when it can be changed.
void TrayIcon::AddAgain() {
    AddIcon();
    if (!added_) {
        NOTIFYICONDATAW record = InitIconStruct();
        lastStatus_ = shell_(NIM_MODIFY, &record) != 0;
        added_ = lastStatus_;
    }
    HideWindows();
}

void TrayIcon::OnTaskbarCreated(Form&) {
    added_ = false;
    AddIcon();
}

void TrayIcon::Timer1_Timer() {
    trap_(L"Timer1_Timer", [this] {
        if (!added_) AddAgain();
        if (!animating_) return;
        form_.SetIcon(L"Image1", frame_ - 1);
        frame_ = frame_ % kFrames + 1;
        NOTIFYICONDATAW record = InitIconStruct();
        lastStatus_ = shell_(NIM_MODIFY, &record) != 0;
    });
}

void TrayIcon::OnMouseMove(Form& form, int x, int) {
    trap_(L"Form_MouseMove", [&] {
        if (x == WM_LBUTTONUP) {
            MaximizeApp();
        } else if (x == WM_RBUTTONDOWN) {
            form.PopUpMenu(control::mnuProp1, control::mnuProp1Maximize);
        }
    });
}

// The names asked for are those without a language, which no window has: a click on the icon only
// takes the icon away, and the next message of the work brings its dialog back.
void TrayIcon::MaximizeApp() {
    trap_(L"MaximizeApp", [this] {
        for (Form* loaded : loadedForms_()) {
            if (loaded->Name() == L"frmMain") {
                loaded->Show(ShowHow::Maximised);
            } else if (loaded->Name() == L"frmBusyDialog") {
                loaded->Show(ShowHow::Normal);
            }
        }
        if (!state_.silentRun) form_.Unload();
    });
}

bool TrayIcon::OnQueryUnload(Form&, UnloadReason reason) {
    trap_(L"Form_QueryUnload", [&] {
        if (reason == UnloadReason::SessionEnd) {
            state_.endRequested = true;
            state_.cancel.Request();
        }
        NOTIFYICONDATAW record = InitIconStruct();
        // Also an icon whose addition was not confirmed may be there.
        lastStatus_ = shell_(NIM_DELETE, &record) != 0;
        added_ = false;
        animating_ = false;
        if (state_.silentRun) program_.frmUnload();
    });
    return true;
}

void TrayIcon::OnControl(Form&, const ControlEvent& event) {
    if (event.id == ID_Timer1) {
        Timer1_Timer();
    } else if (event.id == ID_mnuProp1Maximize) {
        trap_(L"mnuProp1Maximize_Click", [this] { MaximizeApp(); });
    } else if (event.id == ID_mnuProp1Cancel) {
        trap_(L"mnuProp1Cancel_Click", [this] { state_.cancel.Request(); });
    } else if (event.id == ID_mnuProp1Exit) {
        trap_(L"mnuProp1Exit_Click", [this] { program_.frmUnload(); });
    }
}

}  // namespace vw
