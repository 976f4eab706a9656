#include <algorithm>

#include "platform/RuntimeError.h"
#include "ui/ControlFactory.h"
#include "ui/Form.h"
#include "ui/ReportBox.h"
#include "ui/ScrollBar.h"

// How the program reaches the controls of a form.

namespace vw {

namespace {

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

}  // namespace

// Whether a name exists is decided by the data, so that a misspelt one is found in every state.
const Form::Part* Form::Find(std::wstring_view name) const {
    const auto& controls = data_.controls;
    const auto data = std::find_if(controls.begin(), controls.end(),
                                   [&](const ControlData& row) { return row.name == name; });
    if (data == controls.end()) vw::Throw(error_number::kInvalidCall, name);
    const auto position = static_cast<std::size_t>(data - controls.begin());
    return position < parts_.size() ? &parts_[position] : nullptr;
}

const Form::Part* Form::Find(std::wstring_view name, ControlKind kind) const {
    const Part* part = Find(name);
    if (part != nullptr && part->data->kind != kind) vw::Throw(error_number::kInvalidCall, name);
    return part;
}

Form::Part* Form::FindByWindow(HWND window) noexcept {
    const auto found = std::find_if(parts_.begin(), parts_.end(), [&](const Part& part) {
        return window != nullptr && part.window == window;
    });
    return found == parts_.end() ? nullptr : &*found;
}

std::wstring Form::Caption() const { return IsLoaded() ? TextOf(Handle()) : std::wstring(); }

void Form::SetCaption(std::wstring_view text) {
    if (IsLoaded()) SetWindowTextW(Handle(), std::wstring(text).c_str());
}

bool Form::IsFormEnabled() const noexcept { return IsWindowEnabled(Handle()) != 0; }

void Form::EnableForm(bool on) {
    if (!IsLoaded()) return;
    // What is marked in an open list is no choice of a command that begins now.
    for (const Part& part : parts_) {
        if (!on && part.dropDown) SendMessageW(part.window, CB_SHOWDROPDOWN, FALSE, 0);
    }
    EnableWindow(Handle(), on ? TRUE : FALSE);
}

void Form::SetMousePointer(MousePointer pointer) {
    pointer_ = pointer;
    if (!IsVisible()) return;
    // The pointer changes when the mouse moves; until then it is set here.
    POINT mouse{};
    GetCursorPos(&mouse);
    const HWND below = WindowFromPoint(mouse);
    if (below == Handle() || IsChild(Handle(), below) != 0) {
        SetCursor(LoadCursorW(nullptr, pointer == MousePointer::Hourglass ? IDC_WAIT : IDC_ARROW));
    }
}

void Form::Repaint() noexcept {
    if (IsVisible()) RedrawWindow(Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

HWND Form::Control(std::wstring_view name) const {
    const Part* part = Find(name);
    return part == nullptr ? nullptr : part->window;
}

// What has no window, such as the tip of an icon, keeps the text of the data.
std::wstring Form::Text(std::wstring_view name) const {
    const Part* part = Find(name);
    if (part == nullptr) return {};
    if (part->window == nullptr) return std::wstring(part->data->text.In(language_));
    return TextOf(part->window);
}

void Form::SetText(std::wstring_view name, std::wstring_view text) {
    const Part* part = Find(name);
    if (part == nullptr || part->window == nullptr) return;
    // Writing the same text again would make it flicker.
    if (part->data->kind != ControlKind::Report && TextOf(part->window) == text) return;
    SetWindowTextW(part->window, std::wstring(text).c_str());
    if (IsLabel(part->data->kind)) InvalidateRect(part->window, nullptr, TRUE);
}

void Form::ResetText(std::wstring_view label) {
    const Part* part = Find(label);
    if (part != nullptr) SetText(label, part->data->text.In(language_));
}

void Form::SetAlert(std::wstring_view statusLine, bool on) {
    Part* part = const_cast<Part*>(Find(statusLine, ControlKind::Label));
    if (part == nullptr || part->alert == on) return;
    part->alert = on;
    InvalidateRect(part->window, nullptr, TRUE);
}

bool Form::IsEnabled(std::wstring_view name) const { return IsWindowEnabled(Control(name)) != 0; }

// It changes the form, though not this object.
// NOLINTNEXTLINE(readability-make-member-function-const)
void Form::Enable(std::wstring_view name, bool on) {
    if (const HWND control = Control(name)) EnableWindow(control, on ? TRUE : FALSE);
}

bool Form::IsShown(std::wstring_view name) const {
    const HWND control = Control(name);
    return control != nullptr && (GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE) != 0;
}

void Form::ShowControl(std::wstring_view name, bool on) {
    const Part* part = Find(name);
    if (part == nullptr || part->window == nullptr || IsShown(name) == on) return;
    const int height = part->data->opens;
    // What opens the form shows when there is room for it, and goes before the room does.
    if (height != 0 && on) GrowBy(height);
    if (part->frame != nullptr) ShowWindow(part->frame, on ? SW_SHOWNA : SW_HIDE);
    ShowWindow(part->window, on ? SW_SHOWNA : SW_HIDE);
    if (height != 0) on ? Arrange(ClientSize()) : GrowBy(-height);
}

void Form::SetDefaultButton(std::wstring_view name) {
    if (!IsLoaded() || defaultButton_ == name) return;
    const auto setStyle = [this](std::wstring_view button, WPARAM style) {
        if (!button.empty()) SendMessageW(Control(button), BM_SETSTYLE, style, TRUE);
    };
    setStyle(defaultButton_, BS_PUSHBUTTON);
    setStyle(name, BS_DEFPUSHBUTTON);
    defaultButton_ = name.empty() ? std::wstring_view() : Find(name)->data->name;
}

bool Form::IsChecked(std::wstring_view checkBox) const {
    const Part* part = Find(checkBox, ControlKind::CheckBox);
    return part != nullptr && SendMessageW(part->window, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void Form::Check(std::wstring_view checkBox, bool on) {
    const Part* part = Find(checkBox, ControlKind::CheckBox);
    if (part == nullptr) return;
    SendMessageW(part->window, BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
}

std::vector<std::wstring> Form::Choices(std::wstring_view dropDown) const {
    const Part* part = Find(dropDown, ControlKind::DropDown);
    std::vector<std::wstring> choices;
    if (part == nullptr) return choices;
    const auto count = SendMessageW(part->window, CB_GETCOUNT, 0, 0);
    for (WPARAM i = 0; i < static_cast<WPARAM>(count); ++i) {
        const auto length = SendMessageW(part->window, CB_GETLBTEXTLEN, i, 0);
        std::wstring text(static_cast<std::size_t>(length), L'\0');
        SendMessageW(part->window, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()));
        choices.push_back(std::move(text));
    }
    return choices;
}

void Form::SetChoices(std::wstring_view dropDown, const std::vector<std::wstring>& choices) {
    const Part* part = Find(dropDown, ControlKind::DropDown);
    if (part == nullptr) return;
    SendMessageW(part->window, CB_RESETCONTENT, 0, 0);
    for (const std::wstring& choice : choices) {
        SendMessageW(part->window, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(choice.c_str()));
    }
}

void Form::Choose(std::wstring_view dropDown, std::wstring_view text) {
    const Part* part = Find(dropDown, ControlKind::DropDown);
    if (part == nullptr) return;
    const std::wstring wanted(text);
    const auto textParameter = reinterpret_cast<LPARAM>(wanted.c_str());
    LRESULT entry =
        SendMessageW(part->window, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), textParameter);
    if (entry == CB_ERR) entry = SendMessageW(part->window, CB_ADDSTRING, 0, textParameter);
    SendMessageW(part->window, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
}

int Form::Value(std::wstring_view scrollBar) const {
    const Part* part = Find(scrollBar, ControlKind::ScrollBar);
    return part == nullptr ? 0 : ScrollBar::Value(part->window);
}

void Form::SetValue(std::wstring_view scrollBar, int value) {
    const Part* part = Find(scrollBar, ControlKind::ScrollBar);
    if (part == nullptr) return;
    const ControlData& data = *part->data;
    // Its position counts from the other end, in hundredths.
    names_->SetValue(part->window, std::to_wstring(value));
    if (ScrollBar::SetValue(part->window, value, data.lowest, data.highest)) {
        Notify(data, EventKind::Change, value);
    }
}

int Form::Progress(std::wstring_view bar) const {
    const Part* part = Find(bar, ControlKind::ProgressBar);
    if (part == nullptr) return 0;
    return static_cast<int>(SendMessageW(part->window, PBM_GETPOS, 0, 0));
}

void Form::SetProgress(std::wstring_view bar, int value) {
    const Part* part = Find(bar, ControlKind::ProgressBar);
    if (part == nullptr) return;
    SendMessageW(part->window, PBM_SETPOS, static_cast<WPARAM>(value), 0);
}

void Form::Append(std::wstring_view report, std::wstring_view text) {
    const Part* part = Find(report, ControlKind::Report);
    if (part == nullptr) return;
    ReportBox::Append(part->window, text, language_);
}

void Form::EnableTimer(std::wstring_view timer, bool on) {
    Part* part = const_cast<Part*>(Find(timer, ControlKind::Timer));
    if (part == nullptr || part->ticking == on) return;
    part->ticking = on;
    const auto id = static_cast<UINT_PTR>(part->data->id);
    if (on) {
        SetTimer(Handle(), id, static_cast<UINT>(part->data->interval), nullptr);
    } else {
        KillTimer(Handle(), id);
    }
}

bool Form::IsTimerEnabled(std::wstring_view timer) const {
    const Part* part = Find(timer, ControlKind::Timer);
    return part != nullptr && part->ticking;
}

ListView& Form::List(std::wstring_view listView) {
    const Part* part = Find(listView, ControlKind::ListView);
    if (part == nullptr) vw::Throw(error_number::kInvalidCall, listView);
    return *part->list;
}

Menu& Form::Menus() {
    if (!menu_) vw::Throw(error_number::kInvalidCall);
    return *menu_;
}

ToolBar& Form::Tools(std::wstring_view toolBar) {
    const Part* part = Find(toolBar, ControlKind::ToolBar);
    if (part == nullptr) vw::Throw(error_number::kInvalidCall, toolBar);
    return *part->toolBar;
}

}  // namespace vw
