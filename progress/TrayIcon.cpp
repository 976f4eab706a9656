#include "progress/TrayIcon.h"

#include "platform/ErrorTrap.h"
#include "platform/MessageBoxes.h"
#include "platform/ProgramControl.h"
#include "platform/ProgramState.h"
#include "ui/ControlNames.h"
#include "ui/Forms.h"
#include "ui/resource.h"

namespace vw {

namespace {
constexpr int kFrames = 4;
}  // namespace

TrayIcon::TrayIcon(System& system, ProgramState& state, Language language, ProgramControl& program,
                   Forms loadedForms, ShellIcon::Shell shell)
    : system_(system),
      state_(state),
      program_(program),
      loadedForms_(std::move(loadedForms)),
      form_(TrayForm(), language, *this),
      icon_(form_, shell) {}

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
    if (!icon_.IsAdded()) return;
    for (Form* loaded : loadedForms_()) loaded->Hide();
}

void TrayIcon::cbStatic_Click() {
    trap_(L"cbStatic_Click", [&] {
        animating_ = false;
        form_.SetIcon(L"Image1", 0);
        icon_.SetTip(kApplicationTitle);
        icon_.Add();
    });
}

void TrayIcon::cbAnimated_Click() {
    trap_(L"cbAnimated_Click", [&] {
        animating_ = true;
        icon_.SetTip(form_.Text(control::lblMsg1));
        icon_.Add();
    });
}

void TrayIcon::cbEnd_Click() {
    trap_(L"cbEnd_Click", [this] { form_.Unload(); });
}

void TrayIcon::mnuPropAction_Click() {
    trap_(L"mnuPropAction_Click", [this] { cbEnd_Click(); });
}

void TrayIcon::OnTaskbarCreated(Form&) {
    icon_.OnLost();
    icon_.Add();
}

void TrayIcon::Timer1_Timer() {
    trap_(L"Timer1_Timer", [this] {
        if (!icon_.IsAdded()) {
            // The shell refuses an icon while it is busy, such as at log-on.
            icon_.AddAgain();
            HideWindows();
        }
        if (!animating_) return;
        form_.SetIcon(L"Image1", frame_ - 1);
        frame_ = frame_ % kFrames + 1;
        icon_.Modify();
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

// No window is shown here: the next message of the work brings its dialog back.
void TrayIcon::MaximizeApp() {
    trap_(L"MaximizeApp", [this] {
        if (!state_.silentRun) form_.Unload();
    });
}

bool TrayIcon::OnQueryUnload(Form&, UnloadReason reason) {
    trap_(L"Form_QueryUnload", [&] {
        if (reason == UnloadReason::SessionEnd) {
            state_.endRequested = true;
            state_.cancel.Request();
        }
        icon_.Remove();
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
