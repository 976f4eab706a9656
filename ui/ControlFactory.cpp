#include "ui/ControlFactory.h"

// The common controls' declarations need those of the window system first.
#include <commctrl.h>
#include <uxtheme.h>

#include <string>

#include "platform/SystemError.h"
#include "ui/ReportBox.h"
#include "ui/ScrollBar.h"
#include "ui/Subclass.h"

namespace vw {

namespace {

struct Making {
    const wchar_t* className = L"";
    DWORD style = 0;
    DWORD extendedStyle = 0;
};

Making HowToMake(const ControlData& data) noexcept {
    switch (data.kind) {
        case ControlKind::Label:
        case ControlKind::Heading:
            // Drawn by the form, which finds the direction of a text. They report clicks.
            return {WC_STATICW, SS_OWNERDRAW | SS_NOTIFY, 0};
        case ControlKind::Picture:
            return {WC_STATICW, SS_ICON | SS_CENTERIMAGE | SS_NOTIFY, 0};
        case ControlKind::Button:
            return {WC_BUTTONW, BS_PUSHBUTTON | WS_TABSTOP, 0};
        case ControlKind::CheckBox:
            return {WC_BUTTONW, BS_AUTOCHECKBOX | WS_TABSTOP, 0};
        case ControlKind::DropDown:
            return {
                WC_COMBOBOXW,
                CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | WS_VSCROLL | WS_TABSTOP,
                0};
        case ControlKind::ListView:
            return {WC_LISTVIEWW,
                    // The rows are kept in ListView: the control asks for those that it shows.
                    LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_SINGLESEL |
                        LVS_SHAREIMAGELISTS | LVS_AUTOARRANGE | WS_TABSTOP,
                    WS_EX_CLIENTEDGE | (data.acceptsFiles ? DWORD{WS_EX_ACCEPTFILES} : 0)};
        case ControlKind::ScrollBar:
            return {WC_SCROLLBARW, SBS_VERT | WS_TABSTOP, 0};
        case ControlKind::ToolBar:
            return {TOOLBARCLASSNAMEW,
                    TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | TBSTYLE_TRANSPARENT |
                        CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER | WS_TABSTOP,
                    0};
        case ControlKind::ProgressBar:
            return {PROGRESS_CLASSW, PBS_SMOOTH, 0};
        case ControlKind::Report:
            return {WC_EDITW,
                    ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL | WS_VSCROLL |
                        WS_HSCROLL | WS_TABSTOP,
                    WS_EX_CLIENTEDGE};
        default:
            return {};
    }
}

/// While it lives, children of a mirrored form are not mirrored.
class NoInheritance {
  public:
    explicit NoInheritance(HWND form) : form_(form), style_(GetWindowLongW(form, GWL_EXSTYLE)) {
        SetWindowLongW(form_, GWL_EXSTYLE, style_ | WS_EX_NOINHERITLAYOUT);
    }
    ~NoInheritance() { SetWindowLongW(form_, GWL_EXSTYLE, style_); }
    NoInheritance(const NoInheritance&) = delete;
    NoInheritance& operator=(const NoInheritance&) = delete;

  private:
    HWND form_;
    LONG style_;
};

// Messages of the control in a frame go to the form.
LRESULT PassOn(HWND frame, UINT message, WPARAM wParam, LPARAM lParam, void*) {
    switch (message) {
        case WM_COMMAND:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLOREDIT:
        case WM_CLOSE:
        case WM_NEXTDLGCTL:
            return SendMessageW(GetParent(frame), message, wParam, lParam);
        default:
            break;
    }
    return CallControl(frame, message, wParam, lParam);
}

// A label has no frame to paint, and the dc that the system opens to do so costs as much as
// the one for its text.
LRESULT LeaveOutFrame(HWND label, UINT message, WPARAM wParam, LPARAM lParam, void*) {
    return message == WM_NCPAINT ? 0 : CallControl(label, message, wParam, lParam);
}

// A program with more rights than the desktop gets no drops without asking for them.
void AllowDropsFromDesktop(HWND control) {
    constexpr UINT kCopyGlobalData = 0x0049;
    for (const UINT message : {UINT{WM_DROPFILES}, UINT{WM_COPYDATA}, kCopyGlobalData}) {
        ChangeWindowMessageFilterEx(control, message, MSGFLT_ALLOW, nullptr);
    }
}

void Prepare(HWND control, const ControlData& data) {
    switch (data.kind) {
        case ControlKind::Label:
        case ControlKind::Heading:
        case ControlKind::Picture:
            Subclass(control, LeaveOutFrame, nullptr);
            break;
        case ControlKind::ListView:
            SetWindowTheme(control, L"Explorer", nullptr);
            if (data.acceptsFiles) AllowDropsFromDesktop(control);
            break;
        case ControlKind::ScrollBar:
            ScrollBar::SetValue(control, 0, data.lowest, data.highest);
            break;
        case ControlKind::Report:
            ReportBox::Prepare(control);
            break;
        case ControlKind::ProgressBar:
            SendMessageW(control, PBM_SETRANGE32, 0, kProgressMaximum);
            break;
        default:
            break;
    }
}

}  // namespace

bool HasWindow(ControlKind kind) noexcept { return kind < ControlKind::Timer; }

HWND MakeFrame(HWND form, const ControlData& data) {
    const NoInheritance fromLeft(form);
    DWORD style = WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
    if (!data.hidden) style |= WS_VISIBLE;
    const HWND frame = CreateWindowExW(WS_EX_CONTROLPARENT, WC_STATICW, L"", style, 0, 0, 0, 0,
                                       form, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (frame == nullptr) RaiseLast({});
    Subclass(frame, PassOn, nullptr);
    return frame;
}

HWND MakeControl(HWND parent, const ControlData& data, Language language) {
    const Making making = HowToMake(data);
    DWORD style = making.style | WS_CHILD | WS_CLIPSIBLINGS;
    if (!data.hidden) style |= WS_VISIBLE;
    const std::wstring text(data.text.In(language));
    const HWND control = CreateWindowExW(
        making.extendedStyle, making.className, text.c_str(), style, 0, 0, 0, 0, parent,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(data.id)), GetModuleHandleW(nullptr), nullptr);
    if (control == nullptr) RaiseLast({});
    Prepare(control, data);
    return control;
}

}  // namespace vw
