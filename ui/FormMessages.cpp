#include <algorithm>

#include "ui/ControlFactory.h"
#include "ui/Form.h"
#include "ui/PrivateMessages.h"
// The shell's declarations need those of the window system first.
#include <shellapi.h>
#include <windowsx.h>

// Turns the messages of the system into events of the form. After an event the form may be
// unloaded: nothing of it is touched any more.

namespace vw {

namespace {

// Most settings that are broadcast, such as the environment or the wallpaper, change nothing here.
bool ChangesLooks(UINT message, WPARAM setting, LPARAM area) noexcept {
    if (message == WM_SYSCOLORCHANGE) return true;
    switch (setting) {
        case SPI_SETNONCLIENTMETRICS:
        case SPI_SETHIGHCONTRAST:
        case SPI_SETFONTSMOOTHING:
        case SPI_SETFONTSMOOTHINGTYPE:
            return true;
        default:
            break;
    }
    const auto* name = reinterpret_cast<const wchar_t*>(area);
    return name != nullptr && (std::wstring_view(name) == L"ImmersiveColorSet" ||
                               std::wstring_view(name) == L"WindowsThemeElement");
}

}  // namespace

LRESULT Form::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == taskbarCreated_) {
        events_.OnTaskbarCreated(*this);
        return 0;
    }
    if (message == taskbarButtonCreated_) {
        events_.OnTaskbarButtonCreated(*this);
        return 0;
    }
    if (const auto result = OnWindowMessage(message, wParam, lParam)) return *result;
    if (const auto result = OnControlMessage(message, wParam, lParam)) return *result;
    return Window::OnMessage(message, wParam, lParam);
}

void Form::OnEscaped(const std::exception_ptr& error) noexcept { events_.OnEscaped(*this, error); }

std::optional<LRESULT> Form::OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_DESTROY:
            for (const Part& part : parts_) {
                if (part.list) part.list->Tips().Detach();
            }
            names_.reset();
            return std::nullopt;
        case WM_CLOSE:
            Unload(UnloadReason::User);
            return 0;
        case WM_QUERYENDSESSION:
            return TRUE;
        case WM_ENDSESSION:
            if (wParam != FALSE) Unload(UnloadReason::SessionEnd);
            return 0;
        case WM_SIZE:
            if (parts_.empty()) return 0;
            if (wParam != SIZE_MINIMIZED) OnSize();
            events_.OnResize(*this, State());
            return 0;
        case WM_GETMINMAXINFO: {
            const Size least = LeastSize();
            auto* info = reinterpret_cast<MINMAXINFO*>(lParam);
            info->ptMinTrackSize = {least.width, least.height};
            return 0;
        }
        case WM_DPICHANGED: {
            const auto* place = reinterpret_cast<const RECT*>(lParam);
            dpi_ = HIWORD(wParam);
            SetWindowPos(Handle(), nullptr, place->left, place->top, place->right - place->left,
                         place->bottom - place->top, SWP_NOZORDER | SWP_NOACTIVATE);
            UseDpi(HIWORD(wParam));
            return 0;
        }
        case WM_SETTINGCHANGE:
        case WM_SYSCOLORCHANGE:
            for (const Part& part : parts_) {
                if (part.window != nullptr) SendMessageW(part.window, message, wParam, lParam);
            }
            if (!parts_.empty() && ChangesLooks(message, wParam, lParam)) {
                UseDpi(dpi_);
                InvalidateRect(Handle(), nullptr, TRUE);
            }
            return std::nullopt;
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE) {
                const HWND focus = GetFocus();
                if (focus != nullptr && IsChild(Handle(), focus) != 0) focus_ = focus;
            } else if (HIWORD(wParam) == 0) {
                GiveFocus();
            }
            events_.OnActivate(*this, LOWORD(wParam) != WA_INACTIVE);
            return 0;
        case WM_SETFOCUS:
            GiveFocus();
            return 0;
        case WM_MENUSELECT:
            OnMenuSelect(wParam, reinterpret_cast<HMENU>(lParam));
            return 0;
        case WM_SETCURSOR: {
            OnMouseCame();
            const auto hit = static_cast<SHORT>(LOWORD(lParam));
            if (pointer_ != MousePointer::Hourglass || (hit != HTCLIENT && hit != HTERROR)) {
                return std::nullopt;
            }
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        }
        case WM_MOUSEMOVE:
            events_.OnMouseMove(*this, LOWORD(lParam), HIWORD(lParam));
            return 0;
        case WM_LBUTTONUP:
            events_.OnControl(*this, {.control = {}, .kind = EventKind::Click});
            return 0;
        default:
            return std::nullopt;
    }
}

std::optional<LRESULT> Form::OnControlMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            OnCommand(LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HWND>(lParam));
            return 0;
        case WM_NOTIFY:
            return OnNotify(*reinterpret_cast<NMHDR*>(lParam));
        case WM_VSCROLL:
            OnScroll(reinterpret_cast<HWND>(lParam), wParam);
            return 0;
        case WM_MOUSEWHEEL:
            OnWheel(GET_WHEEL_DELTA_WPARAM(wParam), {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
            return 0;
        case WM_TIMER:
            OnTimer(static_cast<int>(wParam));
            return 0;
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLOREDIT:
            return OnColour(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
        case WM_DRAWITEM:
            OnDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            return TRUE;
        case DM_GETDEFID: {
            const Part* button = defaultButton_.empty() ? nullptr : Find(defaultButton_);
            return button == nullptr ? 0 : MAKELRESULT(button->data->id, DC_HASDEFID);
        }
        case WM_NEXTDLGCTL: {
            const HWND next = LOWORD(lParam) != 0
                                  ? reinterpret_cast<HWND>(wParam)
                                  : GetNextDlgTabItem(Handle(), GetFocus(), wParam != 0);
            if (next != nullptr) SetFocus(next);
            return 0;
        }
        case kListKeyUp:
            if (const Part* part = FindByWindow(reinterpret_cast<HWND>(lParam))) {
                Notify(*part->data, EventKind::KeyUp, static_cast<int>(wParam));
            }
            return 0;
        case kListDrop:
            OnDrop(reinterpret_cast<HWND>(lParam), wParam);
            return 0;
        case kDropDownClosed: {
            const Part* part = FindByWindow(reinterpret_cast<HWND>(lParam));
            if (part != nullptr && part->dropDown && part->dropDown->OnClosed()) {
                Notify(*part->data, EventKind::Selection);
            }
            return 0;
        }
        default:
            return std::nullopt;
    }
}

void Form::Notify(const ControlData& data, EventKind kind, int value, std::wstring_view key) {
    events_.OnControl(*this, {.control = data.name,
                              .index = data.index,
                              .kind = kind,
                              .key = key,
                              .value = value,
                              .id = data.id});
}

void Form::OnCommand(int id, int code, HWND control) {
    if (id == IDOK || id == IDCANCEL) {
        OnDialogKey(id);
        return;
    }
    const Part* part = FindByWindow(control);
    if (part == nullptr || part->toolBar) {
        OnMenuOrButton(id);
        return;
    }
    switch (part->data->kind) {
        case ControlKind::Button:
        case ControlKind::CheckBox:
        case ControlKind::Label:
        case ControlKind::Heading:
        case ControlKind::Picture:
            // The code of a clicked button is that of a clicked label too.
            static_assert(BN_CLICKED == STN_CLICKED);
            if (code == BN_CLICKED) Notify(*part->data, EventKind::Click);
            break;
        case ControlKind::DropDown:
            if (part->dropDown->OnNotification(code)) Notify(*part->data, EventKind::Selection);
            break;
        default:
            break;
    }
}

// Commands may come from outside too; what the user could not choose is not done.
void Form::OnMenuOrButton(int id) {
    const MenuItemData* item = menu_ ? menu_->Find(id) : nullptr;
    if (item != nullptr) {
        if (!menu_->IsAvailable(*item)) return;
        events_.OnControl(*this, {.control = menu_->NameOf(*item),
                                  .index = item->index,
                                  .kind = EventKind::Click,
                                  .id = id});
        return;
    }
    for (const Part& part : parts_) {
        const ToolButtonData* button = part.toolBar ? part.toolBar->Find(id) : nullptr;
        if (button == nullptr) continue;
        if (part.toolBar->IsEnabled(button->key)) {
            events_.OnControl(*this, {.control = part.data->name,
                                      .kind = EventKind::Click,
                                      .key = button->key,
                                      .value = id,
                                      .id = id});
        }
        return;
    }
    // A key replaces a click on the status line, which takes no keyboard.
    for (const Part& part : parts_) {
        if (part.data->id != id || !part.data->statusLine) continue;
        Notify(*part.data, EventKind::Click);
        return;
    }
}

void Form::OnDialogKey(int id) {
    const auto name = id == IDOK ? defaultButton_ : data_.escapeButton;
    if (!name.empty() && IsShown(name) && IsEnabled(name)) {
        Notify(*Find(name)->data, EventKind::Click);
    } else if (id == IDCANCEL && data_.kind == FormKind::Box) {
        Unload(UnloadReason::User);
    }
}

void Form::OnDrop(HWND list, WPARAM drop) {
    const auto files = reinterpret_cast<HDROP>(drop);
    ControlEvent event{.control = {}, .kind = EventKind::DropFiles};
    const UINT count = DragQueryFileW(files, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(DragQueryFileW(files, i, nullptr, 0), L'\0');
        DragQueryFileW(files, i, path.data(), static_cast<UINT>(path.size()) + 1);
        event.files.push_back(std::move(path));
    }
    DragFinish(files);
    const Part* part = FindByWindow(list);
    if (part == nullptr) return;
    event.control = part->data->name;
    event.id = part->data->id;
    events_.OnControl(*this, event);
}

void Form::OnTimer(int id) {
    if (id == kShownTimer) {
        KillTimer(Handle(), kShownTimer);
        isInUse_ = true;
        names_->Begin();
        return;
    }
    for (const Part& part : parts_) {
        if (part.data->kind == ControlKind::Timer && part.data->id == id && part.ticking) {
            Notify(*part.data, EventKind::Timer);
            return;
        }
    }
}

LRESULT Form::OnNotify(NMHDR& header) {
    if (tips_ && header.hwndFrom == tips_->Handle()) {
        if (header.code == TTN_GETDISPINFOW) OnTipAsked(reinterpret_cast<NMTTDISPINFOW&>(header));
        return 0;
    }
    Part* part = FindByWindow(header.hwndFrom);
    if (part == nullptr) return 0;
    if (part->toolBar) return part->toolBar->OnNotify(header).value_or(0);
    return part->list ? OnListNotify(*part, header) : 0;
}

LRESULT Form::OnListNotify(Part& part, NMHDR& header) {
    if (const auto answer = part.list->OnNotify(header)) return *answer;
    const ControlData& data = *part.data;
    switch (header.code) {
        case NM_CLICK:
            Notify(data, EventKind::Click, reinterpret_cast<const NMITEMACTIVATE&>(header).iItem);
            break;
        case LVN_ITEMACTIVATE:
            Notify(data, EventKind::ItemActivate,
                   reinterpret_cast<const NMITEMACTIVATE&>(header).iItem);
            break;
        case LVN_ITEMCHANGED: {
            const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
            const UINT gained = change.uNewState & ~change.uOldState;
            // Row -1 means all rows.
            const bool selected = change.iItem >= 0 && (change.uChanged & LVIF_STATE) != 0 &&
                                  (gained & LVIS_SELECTED) != 0;
            if (selected) Notify(data, EventKind::Selection, change.iItem);
            break;
        }
        case LVN_COLUMNCLICK: {
            const int column = reinterpret_cast<const NMLISTVIEW&>(header).iSubItem;
            Notify(data, EventKind::ColumnClick, column, part.list->Rows().KeyOf(column));
            break;
        }
        default:
            break;
    }
    return 0;
}

void Form::GiveFocus() {
    const auto takesFocus = [](HWND control) {
        return control != nullptr && IsWindowEnabled(control) != 0 &&
               (GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE) != 0;
    };
    if (!takesFocus(focus_)) {
        const auto first = std::find_if(parts_.begin(), parts_.end(), [&](const Part& part) {
            return part.data->firstFocus && takesFocus(part.window);
        });
        focus_ =
            first == parts_.end() ? GetNextDlgTabItem(Handle(), nullptr, FALSE) : first->window;
    }
    if (focus_ != nullptr) SetFocus(focus_);
}

void Form::PopUpMenu(std::wstring_view name, std::wstring_view defaultName) {
    const int chosen = menu_ ? menu_->PopUp(Handle(), name, defaultName) : 0;
    if (chosen != 0) OnMenuOrButton(chosen);
}

bool Form::Translate(MSG& message) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
    if (accelerators_ && TranslateAcceleratorW(Handle(), accelerators_.Get(), &message) != 0) {
        return true;
    }
    return IsDialogMessageW(Handle(), &message) != 0;
}

}  // namespace vw
