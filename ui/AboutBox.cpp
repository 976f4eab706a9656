#include "ui/AboutBox.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "fsutil/Scripting.h"
#include "platform/ErrorTrap.h"
#include "ui/Forms.h"
#include "ui/ProgramVersion.h"

namespace vw {

namespace {
// The form itself has no name.
constexpr std::array<std::wstring_view, 4> kCloseOnClick{L"", L"Label1", L"lblTitle",
                                                         L"lblRevision"};

}  // namespace

AboutBox::AboutBox(System& system, Language language)
    : system_(system), form_(AboutForm(), language, *this) {}

void AboutBox::AsAbout(Form& owner) {
    trap_(L"AsAbout", [&] {
        form_.Load(owner.Handle());
        form_.ShowControl(L"cmdClose", true);
        form_.ShowModal(system_.pump, owner.Handle());
    });
}

void AboutBox::ShowOpeningScreen() {
    trap_(L"Form_Load", [this] { form_.Show(); });
}

void AboutBox::Unload() { form_.Unload(); }

void AboutBox::OnLoad(Form& form) {
    trap_(L"Form_Load", [&] {
        openedFromAnother_ = Form::FromWindow(GetActiveWindow()) != nullptr;
        const ProgramVersion version = OwnVersion();
        form.SetText(L"lblVer",
                     std::to_wstring(version.major) + L"." + std::to_wstring(version.minor));
        form.SetText(L"lblRevision", std::to_wstring(version.revision));
    });
}

void AboutBox::OnControl(Form& form, const ControlEvent& event) {
    if (event.kind != EventKind::Click) return;
    if (event.control == L"cmdClose") {
        trap_(L"cmdClose_Click", [&] { form.Unload(); });
    } else if (event.control == L"lblWS") {
        lblWS_Click();
    } else if (std::find(kCloseOnClick.begin(), kCloseOnClick.end(), event.control) !=
               kCloseOnClick.end()) {
        trap_(L"Form_Click", [&] {
            if (openedFromAnother_) form.Unload();
        });
    }
}

void AboutBox::lblWS_Click() {
    trap_(L"lblWS_Click", [this] { MMyScripting::ShellPath(system_, form_.Text(L"lblWS")); });
}

void AboutBox::OnEscaped(Form&, const std::exception_ptr& error) noexcept {
    ReportEscaped(error, trap_);
}

}  // namespace vw
