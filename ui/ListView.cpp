#include "ui/ListView.h"

#include <algorithm>
#include <array>
#include <utility>

#include "ui/Gdi.h"
#include "ui/PrivateMessages.h"
#include "ui/Subclass.h"

namespace vw {

namespace {

constexpr std::array kTypes{LVS_ICON, LVS_SMALLICON, LVS_LIST, LVS_REPORT};  // by ViewStyle

// The row whose name begins with the letters that the user has typed, from a row on; -1 when there
// is none.
int FindForKeys(const ListViewRows& rows, const NMLVFINDITEMW& wanted) {
    const UINT flags = wanted.lvfi.flags;
    if ((flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || wanted.lvfi.psz == nullptr) return -1;
    return rows.FindName(wanted.lvfi.psz, wanted.iStart, (flags & LVFI_PARTIAL) == 0,
                         (flags & LVFI_WRAP) != 0);
}

}  // namespace

ListView::ListView(HWND control, const ControlData& data, Language language)
    : control_(control),
      rows_(data.columns),
      columns_(control_, rows_, data, language),
      painter_(control_, rows_, data, language),
      tips_(control_, rows_) {
    // Some systems show the buffer of a mirrored list as in a looking-glass.
    const LPARAM buffer = language == Language::Arabic ? 0 : LVS_EX_DOUBLEBUFFER;
    control_.Send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | buffer);
    // The control asks for the warning sign as well.
    control_.Send(LVM_SETCALLBACKMASK, LVIS_OVERLAYMASK);
    Subclass(control, OnControlMessage, this);
}

ListView::~ListView() {
    if (Handle() != nullptr) Unsubclass(Handle());
}

int ListView::Add(std::wstring_view text, RowIcon icon, std::size_t tag) {
    rows_.Add(text, icon, tag);
    if (!control_.IsPaused()) control_.ShowCount(rows_.Count());
    return rows_.Count() - 1;
}

// The control may ask for a row as long as it has its number, and others may ask the control: the
// number goes first. The message moves the marks of selection and focus up with their rows; whether
// it counts the row down depends on the system.
void ListView::Remove(int row) {
    if (row < 0 || row >= rows_.Count()) return;
    control_.ShowCount(rows_.Count());
    control_.Send(LVM_DELETEITEM, row);
    rows_.Remove(row);
    control_.ShowCount(rows_.Count());
    control_.Repaint();
    tips_.DescribeRows();
}

void ListView::Clear() {
    // What screen readers say belongs to positions, which the next rows have too.
    ShowWarnings({});
    control_.Send(LVM_DELETEALLITEMS);
    rows_.Clear();
    control_.ShowCount(0);
}

void ListView::SetSubItem(int row, std::wstring_view key, std::wstring_view text,
                          std::optional<ListViewRows::Value> value) {
    rows_.SetSubItem(row, key, {std::wstring(text), value});
    control_.RepaintRow(row);
}

void ListView::ShowWarnings(const std::vector<std::wstring>& warnings) {
    bool changed = false;
    for (int row = 0; row < rows_.Count(); ++row) {
        const auto position = static_cast<std::size_t>(row);
        const std::wstring& text = position < warnings.size() ? warnings[position] : std::wstring();
        if (rows_.At(row).warning == text) continue;
        rows_.SetWarning(row, text);
        control_.RepaintRow(row);
        changed = true;
    }
    if (changed) tips_.DescribeRows();
}

void ListView::Sort(std::wstring_view key, bool ascending, const ListViewRows::Compare& compare) {
    const int selected = Selected();
    const int focused = control_.Send(LVM_GETNEXTITEM, -1, LVNI_FOCUSED);
    const std::vector<int> order = rows_.Sort(key, ascending, compare);
    // The control keeps its marks by position.
    const auto placeOf = [&](int row) {
        const auto place = std::ranges::find(order, row);
        return place == order.end() ? -1 : static_cast<int>(place - order.begin());
    };
    if (selected >= 0 || focused >= 0) control_.SetMarks(placeOf(selected), placeOf(focused));
    control_.Repaint();
    tips_.DescribeRows();
    columns_.MarkSorted(rows_.ColumnOf(key), ascending);
}

int ListView::Selected() const noexcept {
    return control_.Send(LVM_GETNEXTITEM, -1, LVNI_SELECTED);
}

void ListView::Select(int row) {
    control_.ShowCount(rows_.Count());
    control_.SetMarks(row, row);
    // Shift and the arrow keys go on from here.
    if (row >= 0) control_.Send(LVM_SETSELECTIONMARK, 0, row);
}

void ListView::EnsureVisible(int row) {
    control_.ShowCount(rows_.Count());
    control_.Send(LVM_ENSUREVISIBLE, row);
}

void ListView::SetRedraw(bool on) {
    control_.SetRedraw(on);
    if (!on) return;
    control_.ShowCount(rows_.Count());
    columns_.Fit();
    control_.Repaint();
}

ViewStyle ListView::Style() const noexcept {
    const LONG type = GetWindowLongW(Handle(), GWL_STYLE) & LVS_TYPEMASK;
    return static_cast<ViewStyle>(std::ranges::find(kTypes, type) - kTypes.begin());
}

void ListView::SetStyle(ViewStyle style) {
    painter_.TakeLargePictures(style == ViewStyle::LargeIcons);
    const LONG rest = GetWindowLongW(Handle(), GWL_STYLE) & ~LVS_TYPEMASK;
    SetWindowLongW(Handle(), GWL_STYLE, rest | kTypes[static_cast<std::size_t>(style)]);
    control_.Repaint();
}

void ListView::SetArrange(ViewArrange arrange) {
    LONG style = GetWindowLongW(Handle(), GWL_STYLE) & ~(LVS_ALIGNMASK | LVS_AUTOARRANGE);
    if (arrange == ViewArrange::Left) style |= LVS_ALIGNLEFT | LVS_AUTOARRANGE;
    if (arrange == ViewArrange::Top) style |= LVS_ALIGNTOP | LVS_AUTOARRANGE;
    SetWindowLongW(Handle(), GWL_STYLE, style);
    if (arrange != ViewArrange::None) control_.Send(LVM_ARRANGE, LVA_DEFAULT);
}

void ListView::SetPictures(RowPictures& pictures, HFONT font, int dpi) {
    control_.SetDpi(dpi);
    control_.Send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    control_.Send(LVM_SETIMAGELIST, LVSIL_SMALL, pictures.small.Get());
    painter_.SetPictures(pictures);
    painter_.TakeLargePictures(Style() == ViewStyle::LargeIcons);
    columns_.Fit();
}

std::optional<LRESULT> ListView::OnNotify(NMHDR& header) {
    switch (header.code) {
        case LVN_GETDISPINFOW:
            painter_.Answer(reinterpret_cast<NMLVDISPINFOW&>(header));
            return 0;
        case LVN_ODFINDITEMW:
            return FindForKeys(rows_, reinterpret_cast<const NMLVFINDITEMW&>(header));
        case LVN_ODSTATECHANGED:
            InvalidateRect(Handle(), nullptr, FALSE);
            return 0;
        case LVN_ITEMCHANGED: {
            // Row -1 means all rows.
            const int row = reinterpret_cast<const NMLISTVIEW&>(header).iItem;
            if (row < 0) InvalidateRect(Handle(), nullptr, FALSE);
            control_.RepaintRow(row);
            if (control_.IsSettingMarks()) return 0;
            return std::nullopt;
        }
        case NM_CUSTOMDRAW:
            return painter_.OnCustomDraw(reinterpret_cast<const NMLVCUSTOMDRAW&>(header));
        default:
            return std::nullopt;
    }
}

LRESULT ListView::OnControlMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   void* data) {
    auto* self = static_cast<ListView*>(data);
    self->tips_.OnControlMessage(message, wParam, lParam);
    switch (message) {
        case WM_ERASEBKGND: {
            const auto dc = reinterpret_cast<HDC>(wParam);
            const SavedDc saved(dc);
            self->painter_.KeepRows(dc);
            return CallControl(window, message, wParam, lParam);
        }
        case WM_SIZE: {
            if (self->rows_.Count() == 0) self->control_.Repaint();
            const LRESULT result = CallControl(window, message, wParam, lParam);
            if (wParam != SIZE_MINIMIZED) self->columns_.FitToSize();
            return result;
        }
        case WM_NOTIFY: {
            const LRESULT result = CallControl(window, message, wParam, lParam);
            self->columns_.OnHeaderNotify(*reinterpret_cast<const NMHEADERW*>(lParam));
            return result;
        }
        case WM_GETDLGCODE: {
            // Enter opens a row here; everywhere else it presses the default button.
            const auto* key = reinterpret_cast<const MSG*>(lParam);
            const LRESULT codes = CallControl(window, message, wParam, lParam);
            const bool enter = key != nullptr && key->wParam == VK_RETURN;
            return enter ? codes | DLGC_WANTMESSAGE : codes;
        }
        case WM_KEYDOWN:
            if (self->columns_.OnKeyDown(wParam)) return 0;
            self->keyDown_ = wParam;
            break;
        case WM_KEYUP: {
            // A key that was pressed in a box, and let go when the box was gone, is not meant here.
            const LRESULT result = CallControl(window, message, wParam, lParam);
            if (std::exchange(self->keyDown_, 0) == wParam) {
                SendMessageW(GetParent(window), kListKeyUp, wParam,
                             reinterpret_cast<LPARAM>(window));
            }
            return result;
        }
        case WM_SETFOCUS:
            self->control_.RepaintRow(self->Selected());
            break;
        case WM_KILLFOCUS:
            self->control_.RepaintRow(self->Selected());
            self->keyDown_ = 0;
            break;
        case WM_DROPFILES:
            SendMessageW(GetParent(window), kListDrop, wParam, reinterpret_cast<LPARAM>(window));
            return 0;
        case WM_NCDESTROY:
            self->control_.Forget();
            break;
        default:
            break;
    }
    return CallControl(window, message, wParam, lParam);
}

}  // namespace vw
